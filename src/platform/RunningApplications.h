#pragma once

#include <QList>
#include <QString>

#include <sys/types.h>

// The running instances of a desktop entry: one top-level process of the user's per instance.
class RunningApplications
{
public:
    struct Instance
    {
        pid_t pid = 0;
        // Start time in clock ticks since boot, so that a reused PID is never taken for this one.
        quint64 startTime = 0;
    };

    virtual ~RunningApplications() = default;
    // Reads the process table once; `instances` answers from that reading.
    virtual void refresh() = 0;
    virtual QList<Instance> instances(const QString& desktopId) = 0;
};
