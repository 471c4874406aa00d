#pragma once

#include <QJsonObject>
#include <QList>
#include <QMetaType>
#include <QString>

#include <optional>

// One connected USB device. Two devices are equal when their vendor and product ids are.
struct USBDevice
{
    QString id;
    qint64 vendorID = 0;
    qint64 productID = 0;
    QString vendorName;
    QString productName;
    std::optional<QString> serialNumber;
    quint32 locationID = 0;

    QString displayName() const;
    bool operator==(const USBDevice& other) const
    {
        return vendorID == other.vendorID && productID == other.productID;
    }

    QJsonObject toJson() const;
};

inline size_t qHash(const USBDevice& device, size_t seed = 0)
{
    return qHashMulti(seed, device.vendorID, device.productID);
}

Q_DECLARE_METATYPE(USBDevice)
Q_DECLARE_METATYPE(QList<USBDevice>)
