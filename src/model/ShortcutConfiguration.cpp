#include "ShortcutConfiguration.h"

#include "JsonFieldReader.h"
#include "ShortcutAction.h"

#include <QJsonArray>

QJsonObject ShortcutConfiguration::toJson() const
{
    return QJsonObject{
        {QStringLiteral("shortcutsOnConnect"), QJsonArray::fromStringList(shortcutsOnConnect)},
        {QStringLiteral("shortcutsOnDisconnect"),
         QJsonArray::fromStringList(shortcutsOnDisconnect)},
    };
}

std::optional<ShortcutConfiguration> ShortcutConfiguration::fromJson(const QJsonObject& object)
{
    JsonFieldReader reader(object);
    ShortcutConfiguration configuration;
    configuration.shortcutsOnConnect = reader.stringList(QStringLiteral("shortcutsOnConnect"));
    configuration.shortcutsOnDisconnect =
        reader.stringList(QStringLiteral("shortcutsOnDisconnect"));
    if (!reader.ok())
        return std::nullopt;
    return configuration;
}

std::optional<ShortcutConfiguration> ShortcutConfiguration::fromRule(const QJsonObject& rule)
{
    JsonFieldReader reader(rule);
    if (reader.has(QStringLiteral("shortcuts"))) {
        const QJsonValue value = rule.value(QStringLiteral("shortcuts"));
        if (!value.isObject())
            return std::nullopt;
        return fromJson(value.toObject());
    }
    if (reader.has(QStringLiteral("shortcutAction"))) {
        const QJsonValue value = rule.value(QStringLiteral("shortcutAction"));
        if (!value.isObject())
            return std::nullopt;
        const auto action = ShortcutAction::fromJson(value.toObject());
        if (!action)
            return std::nullopt;
        return action->toConfiguration();
    }
    return ShortcutConfiguration{};
}
