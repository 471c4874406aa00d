#pragma once

#include <QJsonObject>
#include <QStringList>

#include <optional>

// The shortcut names a rule runs when its device or network comes and when it goes.
struct ShortcutConfiguration
{
    QStringList shortcutsOnConnect;
    QStringList shortcutsOnDisconnect;

    bool isEmpty() const { return shortcutsOnConnect.isEmpty() && shortcutsOnDisconnect.isEmpty(); }
    bool operator==(const ShortcutConfiguration&) const = default;

    QJsonObject toJson() const;
    static std::optional<ShortcutConfiguration> fromJson(const QJsonObject& object);
    // Reads a rule's "shortcuts", or upgrades its older "shortcutAction"; nullopt when malformed.
    static std::optional<ShortcutConfiguration> fromRule(const QJsonObject& rule);
};
