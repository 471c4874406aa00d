#pragma once

#include <QHash>
#include <QSet>
#include <QString>

// Names that override what devices report, and the controllers and hubs never listed.
namespace USBDeviceTables {

// "%04x:%04x" of the vendor and product id, e.g. "0fd9:006d".
QString vendorProductKey(qint64 vendorID, qint64 productID);

const QHash<qint64, QString>& knownVendorNames();
const QHash<QString, QString>& knownProductNames();
const QSet<qint64>& excludedVendorIDs();
const QSet<QString>& excludedHubIDs();

} // namespace USBDeviceTables
