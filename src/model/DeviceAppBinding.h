#pragma once

#include "ShortcutConfiguration.h"

#include <QJsonObject>
#include <QString>
#include <QUuid>

#include <optional>

// A USB rule: one device (vendor id, product id) bound to one application.
struct DeviceAppBinding
{
    QUuid id;
    qint64 deviceVendorID = 0;
    qint64 deviceProductID = 0;
    QString deviceName;
    QString appBundleIdentifier;
    QString appName;
    QString appPath;
    bool isEnabled = true;
    bool killOnDisconnect = false;
    bool launchOnConnect = false;
    bool forceQuitAllowed = false;
    double forceQuitTimeout = 1.0;
    ShortcutConfiguration shortcuts;

    QJsonObject toJson() const;
    static std::optional<DeviceAppBinding> fromJson(const QJsonObject& object);
};
