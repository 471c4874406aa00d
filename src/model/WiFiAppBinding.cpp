#include "WiFiAppBinding.h"

#include "JsonFieldReader.h"
#include "RuleJson.h"

QJsonObject WiFiAppBinding::toJson() const
{
    return QJsonObject{
        {QStringLiteral("id"), RuleJson::uuidText(id)},
        {QStringLiteral("ssid"), ssid},
        {QStringLiteral("appBundleIdentifier"), appBundleIdentifier},
        {QStringLiteral("appName"), appName},
        {QStringLiteral("appPath"), appPath},
        {QStringLiteral("isEnabled"), isEnabled},
        {QStringLiteral("launchOnConnect"), launchOnConnect},
        {QStringLiteral("killOnDisconnect"), killOnDisconnect},
        {QStringLiteral("forceQuitAllowed"), forceQuitAllowed},
        {QStringLiteral("forceQuitTimeout"), forceQuitTimeout},
        {QStringLiteral("shortcuts"), shortcuts.toJson()},
    };
}

std::optional<WiFiAppBinding> WiFiAppBinding::fromJson(const QJsonObject& object)
{
    JsonFieldReader reader(object);
    WiFiAppBinding rule;
    rule.id = reader.uuid(QStringLiteral("id"));
    rule.ssid = reader.string(QStringLiteral("ssid"));
    rule.appBundleIdentifier = reader.optionalString(QStringLiteral("appBundleIdentifier"), {});
    rule.appName = reader.optionalString(QStringLiteral("appName"), {});
    rule.appPath = reader.optionalString(QStringLiteral("appPath"), {});
    rule.isEnabled = reader.boolean(QStringLiteral("isEnabled"));
    rule.launchOnConnect = reader.boolean(QStringLiteral("launchOnConnect"));
    rule.killOnDisconnect = reader.boolean(QStringLiteral("killOnDisconnect"));
    rule.forceQuitAllowed = reader.optionalBoolean(QStringLiteral("forceQuitAllowed"), false);
    rule.forceQuitTimeout = reader.optionalNumber(QStringLiteral("forceQuitTimeout"), 1.0);
    const auto shortcuts = ShortcutConfiguration::fromRule(object);
    if (!reader.ok() || !shortcuts)
        return std::nullopt;
    rule.shortcuts = *shortcuts;
    return rule;
}
