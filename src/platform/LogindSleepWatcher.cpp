#include "LogindSleepWatcher.h"

#include "Log.h"

#include <QDBusConnection>
#include <QDBusError>

LogindSleepWatcher::LogindSleepWatcher(QObject* parent) : QObject(parent) {}

bool LogindSleepWatcher::start()
{
    QDBusConnection bus = QDBusConnection::systemBus();
    const bool subscribed =
        bus.isConnected() &&
        bus.connect(QStringLiteral("org.freedesktop.login1"),
                    QStringLiteral("/org/freedesktop/login1"),
                    QStringLiteral("org.freedesktop.login1.Manager"),
                    QStringLiteral("PrepareForSleep"), this, SLOT(onPrepareForSleep(bool)));
    if (!subscribed)
        Log::info(
            QStringLiteral("⚠️ [Obrinta] Wake from sleep is not watched (no system bus): ") +
            bus.lastError().message());
    return subscribed;
}

void LogindSleepWatcher::onPrepareForSleep(bool goingToSleep)
{
    if (!goingToSleep)
        Q_EMIT didWake();
}
