#pragma once

#include "ShortcutConfiguration.h"

#include <QJsonObject>
#include <QString>

#include <optional>

// The older single-shortcut form of a rule's shortcuts; read only, never written.
struct ShortcutAction
{
    QString shortcutName;
    bool executeOnConnect = false;
    bool executeOnDisconnect = false;

    bool operator==(const ShortcutAction&) const = default;

    static std::optional<ShortcutAction> fromJson(const QJsonObject& object);
    ShortcutConfiguration toConfiguration() const;
};
