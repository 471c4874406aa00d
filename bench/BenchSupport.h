#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QString>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <sys/types.h>

// Every benchmark prints its figures as "RESULT <name> <value> <unit> <target>" lines, which
// bench/run-all.sh gathers into one table.
namespace Bench {

inline void result(const char* name, double value, const char* unit, const char* target)
{
    std::fprintf(stderr, "RESULT %s %.3f %s %s\n", name, value, unit, target);
}

// The median of `runs` timings of `work`, in milliseconds.
inline double medianMs(int runs, const std::function<void()>& work)
{
    QList<double> times;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.append(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times.at(times.size() / 2);
}

// Children that sleep until `stop`, so that /proc holds a known number of the user's processes.
class SleepingChildren
{
public:
    explicit SleepingChildren(int count);
    ~SleepingChildren();
    const QList<pid_t>& pids() const { return m_pids; }

private:
    QList<pid_t> m_pids;
};

} // namespace Bench
