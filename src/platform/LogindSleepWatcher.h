#pragma once

#include <QObject>

// Tells when the machine wakes from sleep: logind's PrepareForSleep(false) on the system bus.
class LogindSleepWatcher : public QObject
{
    Q_OBJECT
public:
    explicit LogindSleepWatcher(QObject* parent = nullptr);

    // Subscribes; without a system bus logs one line and returns false.
    bool start();

Q_SIGNALS:
    void didWake();

private Q_SLOTS:
    void onPrepareForSleep(bool goingToSleep);
};
