#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

// The process-wide centre for in-process notifications ("usbDevicesChanged",
// "wifiNetworkChanged"). Observers connect to `posted` and filter by name.
class NotificationCenter : public QObject
{
    Q_OBJECT
public:
    static NotificationCenter& defaultCenter();

    // Delivers at once, on the calling (main) thread.
    void post(const QString& name, const QVariantMap& userInfo = {});

Q_SIGNALS:
    void posted(const QString& name, const QVariantMap& userInfo);
};
