#include "MenuBarContent.h"

#include "model/AppState.h"
#include "monitors/USBDeviceTables.h"
#include "platform/Log.h"

#include <algorithm>

MenuBarContent::MenuBarContent(AppState& appState, QObject* parent)
    : QObject(parent), m_appState(appState)
{
    connect(&appState, &AppState::isMonitoringChanged, this, &MenuBarContent::changed);
    connect(&appState, &AppState::connectedDevicesChanged, this, &MenuBarContent::changed);
    connect(&appState, &AppState::bindingsChanged, this, &MenuBarContent::changed);
}

bool MenuBarContent::isMonitoring() const
{
    return m_appState.isMonitoring();
}

QVariantList MenuBarContent::devices() const
{
    QVariantList rows;
    for (const USBDevice& device : m_appState.connectedDevices().first(
             std::min<qsizetype>(maxDevices, m_appState.connectedDevices().size()))) {
        rows.append(QVariantMap{{QStringLiteral("displayName"), device.displayName()},
                                {QStringLiteral("detail"), deviceDetail(device)}});
    }
    return rows;
}

int MenuBarContent::moreDevices() const
{
    return std::max<int>(0, int(m_appState.connectedDevices().size()) - maxDevices);
}

QVariantList MenuBarContent::rules() const
{
    const QList<USBDevice>& connected = m_appState.connectedDevices();
    QVariantList rows;
    for (const DeviceAppBinding& rule : m_appState.bindings()) {
        if (!rule.isEnabled)
            continue;
        if (rows.size() == maxRules)
            break;
        const bool isDeviceConnected =
            std::any_of(connected.cbegin(), connected.cend(), [&rule](const USBDevice& device) {
                return device.vendorID == rule.deviceVendorID &&
                       device.productID == rule.deviceProductID;
            });
        rows.append(QVariantMap{{QStringLiteral("appName"), rule.appName},
                                {QStringLiteral("deviceName"), rule.deviceName},
                                {QStringLiteral("isDeviceConnected"), isDeviceConnected}});
    }
    return rows;
}

int MenuBarContent::moreRules() const
{
    const QList<DeviceAppBinding>& rules = m_appState.bindings();
    const auto enabled = std::count_if(rules.cbegin(), rules.cend(),
                                       [](const DeviceAppBinding& rule) { return rule.isEnabled; });
    return std::max<int>(0, int(enabled) - maxRules);
}

QString MenuBarContent::deviceDetail(const USBDevice& device)
{
    const QString vendor =
        USBDeviceTables::knownVendorNames().value(device.vendorID, device.vendorName);
    return QStringLiteral("%1 • %2:%3")
        .arg(vendor, Log::hexId(device.vendorID), Log::hexId(device.productID));
}

QString MenuBarContent::moreText(int count)
{
    return QStringLiteral("+%1 more...").arg(count);
}
