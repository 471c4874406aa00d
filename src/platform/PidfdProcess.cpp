#include "PidfdProcess.h"

#include <QSocketNotifier>

#include <csignal>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

PidfdProcess::PidfdProcess(pid_t pid, int fd) : m_pid(pid), m_fd(fd) {}

PidfdProcess::~PidfdProcess()
{
    delete m_notifier;
    if (m_fd >= 0)
        ::close(m_fd);
}

bool PidfdProcess::send(int signalNumber)
{
    return m_fd >= 0 && ::syscall(SYS_pidfd_send_signal, m_fd, signalNumber, nullptr, 0) == 0;
}

bool PidfdProcess::terminate()
{
    return send(SIGTERM);
}

bool PidfdProcess::forceTerminate()
{
    return send(SIGKILL);
}

bool PidfdProcess::isTerminated()
{
    if (m_fd < 0)
        return true;
    // A pidfd becomes readable when its process ends.
    pollfd entry{m_fd, POLLIN, 0};
    return ::poll(&entry, 1, 0) > 0;
}

void PidfdProcess::watchExit(std::function<void()> ended)
{
    if (isTerminated()) {
        ended();
        return;
    }
    m_watchers.append(std::move(ended));
    if (m_notifier)
        return;
    m_notifier = new QSocketNotifier(m_fd, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        m_notifier->setEnabled(false);
        const auto watchers = std::exchange(m_watchers, {});
        for (const auto& watcher : watchers)
            watcher();
    });
}
