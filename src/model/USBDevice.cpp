#include "USBDevice.h"

#include "platform/Log.h"

QString USBDevice::displayName() const
{
    const QString unknown = QStringLiteral("Unknown");
    if (!productName.isEmpty() && productName != unknown)
        return productName;
    if (!vendorName.isEmpty() && vendorName != unknown)
        return vendorName + QStringLiteral(" Device");
    return QStringLiteral("USB Device (%1:%2)").arg(Log::hexId(vendorID), Log::hexId(productID));
}

QJsonObject USBDevice::toJson() const
{
    QJsonObject object{
        {QStringLiteral("id"), id},
        {QStringLiteral("vendorID"), vendorID},
        {QStringLiteral("productID"), productID},
        {QStringLiteral("vendorName"), vendorName},
        {QStringLiteral("productName"), productName},
        {QStringLiteral("locationID"), qint64(locationID)},
    };
    if (serialNumber)
        object.insert(QStringLiteral("serialNumber"), *serialNumber);
    return object;
}
