#include "DeviceListModel.h"

#include "MenuBarContent.h"
#include "model/AppState.h"
#include "monitors/USBDeviceTables.h"
#include "monitors/USBMonitor.h"
#include "platform/Log.h"

DeviceListModel::DeviceListModel(QObject* parent)
    : RecordListModel(
          {"key", "displayName", "vendorText", "symbol", "idsText", "serialText", "detail"}, parent)
{
    connect(&AppState::shared(), &AppState::connectedDevicesChanged, this,
            &DeviceListModel::reload);
    reload();
}

void DeviceListModel::reload()
{
    QList<QVariantMap> rows;
    for (const USBDevice& device : AppState::shared().connectedDevices()) {
        const QString vendor = vendorText(device);
        rows.append({{QStringLiteral("key"), deviceKey(device)},
                     {QStringLiteral("displayName"), device.displayName()},
                     {QStringLiteral("vendorText"), vendor},
                     {QStringLiteral("symbol"), symbolForVendor(vendor)},
                     {QStringLiteral("idsText"), Log::hexId(device.vendorID) + QLatin1Char(':') +
                                                     Log::hexId(device.productID)},
                     {QStringLiteral("serialText"), device.serialNumber.value_or(QString())},
                     {QStringLiteral("detail"), MenuBarContent::deviceDetail(device)}});
    }
    setRows(rows);
}

void DeviceListModel::scan()
{
    USBMonitor::shared().scanDevices();
}

QString DeviceListModel::vendorText(const USBDevice& device)
{
    return USBDeviceTables::knownVendorNames().value(device.vendorID, device.vendorName);
}

QString DeviceListModel::symbolForVendor(const QString& vendorText)
{
    static const QList<std::pair<QString, QString>> symbols{
        {QStringLiteral("elgato"), QStringLiteral("keyboard")},
        {QStringLiteral("logitech"), QStringLiteral("computermouse")},
        {QStringLiteral("yubico"), QStringLiteral("key.fill")},
        {QStringLiteral("apple"), QStringLiteral("apple.logo")},
    };
    const QString lowered = vendorText.toLower();
    for (const auto& [word, symbol] : symbols) {
        if (lowered.contains(word))
            return symbol;
    }
    return QStringLiteral("cable.connector.horizontal");
}

QString DeviceListModel::deviceKey(const USBDevice& device)
{
    return QStringLiteral("%1:%2").arg(device.vendorID).arg(device.productID);
}
