#include "NotificationService.h"

#include "model/PersistenceManager.h"
#include "platform/Log.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

namespace {
const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kInterface = QStringLiteral("org.freedesktop.Notifications");
} // namespace

NotificationService::NotificationService(std::function<bool()> enabled)
    : m_enabled(std::move(enabled))
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(kService, kPath, kInterface, QStringLiteral("ActionInvoked"), this,
                SLOT(onActionInvoked(uint, QString)));
    bus.connect(kService, kPath, kInterface, QStringLiteral("NotificationClosed"), this,
                SLOT(onNotificationClosed(uint, uint)));
}

NotificationService& NotificationService::shared()
{
    static NotificationService* service =
        new NotificationService([] { return PersistenceManager::shared().showNotifications(); });
    return *service;
}

void NotificationService::requestAuthorization()
{
    if (!QDBusConnection::sessionBus().isConnected()) {
        Log::info(QStringLiteral("Notification permission error: ") +
                  QDBusConnection::sessionBus().lastError().message());
        return;
    }
    const QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kInterface,
                                                             QStringLiteral("GetCapabilities"));
    auto* watcher =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [](QDBusPendingCallWatcher* w) {
        const QDBusPendingReply<QStringList> reply = *w;
        if (reply.isError())
            Log::info(QStringLiteral("Notification permission error: ") + reply.error().message());
        else
            Log::info(QStringLiteral("Notification permission granted: true"));
        w->deleteLater();
    });
}

void NotificationService::postNotification(const QString& title, const QString& body, bool isError)
{
    if (m_enabled && !m_enabled())
        return;
    QVariantMap hints{
        {QStringLiteral("urgency"), QVariant::fromValue(uchar(isError ? 2 : 1))},
        {QStringLiteral("sound-name"),
         isError ? QStringLiteral("dialog-error") : QStringLiteral("message-new-instant")},
        {QStringLiteral("desktop-entry"), QStringLiteral("obrinta")},
        {QStringLiteral("category"), isError ? QStringLiteral("ERROR") : QStringLiteral("INFO")},
    };
    QDBusMessage call =
        QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Notify"));
    call << QStringLiteral("Obrinta") << uint(0) << QStringLiteral("obrinta") << title << body
         << QStringList{QStringLiteral("default"), QStringLiteral("Open Settings")} << hints
         << int(-1);
    auto* watcher =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* w) {
        const QDBusPendingReply<uint> reply = *w;
        if (reply.isError())
            Log::info(QStringLiteral("Failed to post notification: ") + reply.error().message());
        else
            m_posted.insert(reply.value());
        w->deleteLater();
    });
}

void NotificationService::onActionInvoked(uint id, const QString& actionKey)
{
    if (actionKey != QLatin1String("default") || !m_posted.contains(id))
        return;
    Q_EMIT openSettingsRequested();
}

void NotificationService::onNotificationClosed(uint id, uint)
{
    m_posted.remove(id);
}
