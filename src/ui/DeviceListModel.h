#pragma once

#include "RecordListModel.h"

struct USBDevice;

// The connected USB devices in the state's order, for the "Devices" tab and the device choice
// of the rule sheet. Follows the application state.
class DeviceListModel : public RecordListModel
{
    Q_OBJECT
public:
    explicit DeviceListModel(QObject* parent = nullptr);

    // Asks the USB monitor for a rescan; the new list arrives through the state.
    Q_INVOKABLE void scan();

    // The known name of the device's vendor, else the name the device reports.
    static QString vendorText(const USBDevice& device);
    // The symbol that a device's vendor text picks ("keyboard", "key.fill", ...).
    static QString symbolForVendor(const QString& vendorText);
    // The identity of a device choice: vendor and product id in decimal, "1133:49707".
    static QString deviceKey(const USBDevice& device);

private:
    void reload();
};
