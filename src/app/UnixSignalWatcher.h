#pragma once

#include <QObject>

#include <initializer_list>

class QSocketNotifier;

// Turns SIGTERM, SIGINT and SIGHUP into a Qt signal on the event loop: the handler only writes a
// byte to a socket pair, everything else happens outside signal context.
class UnixSignalWatcher : public QObject
{
    Q_OBJECT
public:
    explicit UnixSignalWatcher(std::initializer_list<int> signalNumbers, QObject* parent = nullptr);

Q_SIGNALS:
    void received(int signalNumber);

private:
    void readSignal();
    static void handle(int signalNumber);

    QSocketNotifier* m_notifier = nullptr;
};
