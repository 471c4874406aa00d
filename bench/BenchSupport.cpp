#include "BenchSupport.h"

#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Bench {

SleepingChildren::SleepingChildren(int count)
{
    for (int i = 0; i < count; ++i) {
        const pid_t pid = ::fork();
        if (pid == 0) {
            // Even a benchmark that is killed takes its sleepers with it.
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::execl("/bin/sleep", "sleep", "600", static_cast<char*>(nullptr));
            ::_exit(127);
        }
        if (pid > 0)
            m_pids.append(pid);
    }
}

SleepingChildren::~SleepingChildren()
{
    for (pid_t pid : m_pids)
        ::kill(pid, SIGKILL);
    for (pid_t pid : m_pids)
        ::waitpid(pid, nullptr, 0);
}

} // namespace Bench
