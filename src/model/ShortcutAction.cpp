#include "ShortcutAction.h"

#include "JsonFieldReader.h"

std::optional<ShortcutAction> ShortcutAction::fromJson(const QJsonObject& object)
{
    JsonFieldReader reader(object);
    ShortcutAction action;
    action.shortcutName = reader.string(QStringLiteral("shortcutName"));
    action.executeOnConnect = reader.boolean(QStringLiteral("executeOnConnect"));
    action.executeOnDisconnect = reader.boolean(QStringLiteral("executeOnDisconnect"));
    if (!reader.ok())
        return std::nullopt;
    return action;
}

ShortcutConfiguration ShortcutAction::toConfiguration() const
{
    ShortcutConfiguration configuration;
    if (executeOnConnect)
        configuration.shortcutsOnConnect = {shortcutName};
    if (executeOnDisconnect)
        configuration.shortcutsOnDisconnect = {shortcutName};
    return configuration;
}
