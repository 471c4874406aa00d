#include "PidfdProcessControl.h"

#include "PidfdProcess.h"

#include <QByteArray>
#include <QFile>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

quint64 startTimeOf(pid_t pid)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray stat = file.readAll();
    const qsizetype close = stat.lastIndexOf(')');
    if (close < 0)
        return 0;
    return stat.mid(close + 2).split(' ').value(19).toULongLong();
}

} // namespace

std::shared_ptr<ProcessHandle>
PidfdProcessControl::open(const RunningApplications::Instance& instance)
{
    int fd = int(::syscall(SYS_pidfd_open, instance.pid, 0));
    // Opened after the process table was read: make sure the PID still names that process.
    if (fd >= 0 && startTimeOf(instance.pid) != instance.startTime) {
        ::close(fd);
        fd = -1;
    }
    return std::make_shared<PidfdProcess>(instance.pid, fd);
}
