#pragma once

#include "NotificationPosting.h"

#include <QObject>
#include <QSet>

#include <functional>

// Desktop notifications over org.freedesktop.Notifications. A click on one of ours (its
// "default" action) asks the shell to open the settings window.
class NotificationService : public QObject, public NotificationPosting
{
    Q_OBJECT
public:
    // `enabled` is asked before every post ("showNotifications").
    explicit NotificationService(std::function<bool()> enabled);
    static NotificationService& shared();

    void postNotification(const QString& title, const QString& body, bool isError) override;
    // Stands in for the permission request: asks the server who it is, once, at start.
    void requestAuthorization();

Q_SIGNALS:
    void openSettingsRequested();

private Q_SLOTS:
    void onActionInvoked(uint id, const QString& actionKey);
    void onNotificationClosed(uint id, uint reason);

private:
    std::function<bool()> m_enabled;
    QSet<uint> m_posted;
};
