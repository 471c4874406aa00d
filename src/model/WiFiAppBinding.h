#pragma once

#include "ShortcutConfiguration.h"

#include <QJsonObject>
#include <QString>
#include <QUuid>

#include <optional>

// A WiFi rule: one network name (SSID) bound to one application.
struct WiFiAppBinding
{
    QUuid id;
    QString ssid;
    QString appBundleIdentifier;
    QString appName;
    QString appPath;
    bool isEnabled = true;
    bool launchOnConnect = false;
    bool killOnDisconnect = false;
    bool forceQuitAllowed = false;
    double forceQuitTimeout = 1.0;
    ShortcutConfiguration shortcuts;

    QJsonObject toJson() const;
    static std::optional<WiFiAppBinding> fromJson(const QJsonObject& object);
};
