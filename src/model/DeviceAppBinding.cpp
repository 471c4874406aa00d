#include "DeviceAppBinding.h"

#include "JsonFieldReader.h"
#include "RuleJson.h"

QJsonObject DeviceAppBinding::toJson() const
{
    return QJsonObject{
        {QStringLiteral("id"), RuleJson::uuidText(id)},
        {QStringLiteral("deviceVendorID"), deviceVendorID},
        {QStringLiteral("deviceProductID"), deviceProductID},
        {QStringLiteral("deviceName"), deviceName},
        {QStringLiteral("appBundleIdentifier"), appBundleIdentifier},
        {QStringLiteral("appName"), appName},
        {QStringLiteral("appPath"), appPath},
        {QStringLiteral("isEnabled"), isEnabled},
        {QStringLiteral("killOnDisconnect"), killOnDisconnect},
        {QStringLiteral("launchOnConnect"), launchOnConnect},
        {QStringLiteral("forceQuitAllowed"), forceQuitAllowed},
        {QStringLiteral("forceQuitTimeout"), forceQuitTimeout},
        {QStringLiteral("shortcuts"), shortcuts.toJson()},
    };
}

std::optional<DeviceAppBinding> DeviceAppBinding::fromJson(const QJsonObject& object)
{
    JsonFieldReader reader(object);
    DeviceAppBinding rule;
    rule.id = reader.uuid(QStringLiteral("id"));
    rule.deviceVendorID = reader.integer(QStringLiteral("deviceVendorID"));
    rule.deviceProductID = reader.integer(QStringLiteral("deviceProductID"));
    rule.deviceName = reader.string(QStringLiteral("deviceName"));
    rule.appBundleIdentifier = reader.optionalString(QStringLiteral("appBundleIdentifier"), {});
    rule.appName = reader.optionalString(QStringLiteral("appName"), {});
    rule.appPath = reader.optionalString(QStringLiteral("appPath"), {});
    rule.isEnabled = reader.boolean(QStringLiteral("isEnabled"));
    rule.killOnDisconnect = reader.boolean(QStringLiteral("killOnDisconnect"));
    rule.launchOnConnect = reader.boolean(QStringLiteral("launchOnConnect"));
    rule.forceQuitAllowed = reader.optionalBoolean(QStringLiteral("forceQuitAllowed"), false);
    rule.forceQuitTimeout = reader.optionalNumber(QStringLiteral("forceQuitTimeout"), 1.0);
    const auto shortcuts = ShortcutConfiguration::fromRule(object);
    if (!reader.ok() || !shortcuts)
        return std::nullopt;
    rule.shortcuts = *shortcuts;
    return rule;
}
