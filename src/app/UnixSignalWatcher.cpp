#include "UnixSignalWatcher.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {
int g_socketPair[2] = {-1, -1};
}

UnixSignalWatcher::UnixSignalWatcher(std::initializer_list<int> signalNumbers, QObject* parent)
    : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, g_socketPair) != 0)
        return;
    m_notifier = new QSocketNotifier(g_socketPair[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &UnixSignalWatcher::readSignal);
    for (int number : signalNumbers) {
        struct sigaction action
        {
        };
        action.sa_handler = &UnixSignalWatcher::handle;
        sigemptyset(&action.sa_mask);
        action.sa_flags = SA_RESTART;
        ::sigaction(number, &action, nullptr);
    }
}

void UnixSignalWatcher::handle(int signalNumber)
{
    const char byte = char(signalNumber);
    [[maybe_unused]] const ssize_t written = ::write(g_socketPair[0], &byte, 1);
}

void UnixSignalWatcher::readSignal()
{
    char byte = 0;
    if (::read(g_socketPair[1], &byte, 1) == 1)
        Q_EMIT received(int(byte));
}
