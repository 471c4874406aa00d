#pragma once

#include "ProcessControl.h"

#include <QObject>

class QSocketNotifier;

class PidfdProcess : public QObject, public ProcessHandle
{
    Q_OBJECT
public:
    // `fd` is a pidfd, or -1 for a process that had already ended when it was opened.
    PidfdProcess(pid_t pid, int fd);
    ~PidfdProcess() override;

    pid_t pid() const override { return m_pid; }
    bool terminate() override;
    bool forceTerminate() override;
    bool isTerminated() override;
    void watchExit(std::function<void()> ended) override;

private:
    bool send(int signalNumber);

    pid_t m_pid;
    int m_fd;
    QSocketNotifier* m_notifier = nullptr;
    QList<std::function<void()>> m_watchers;
};
