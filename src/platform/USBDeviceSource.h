#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <optional>

// Where USB devices come from: enumeration of the present ones and arrival/removal events.
class USBDeviceSource
{
public:
    // The properties of one device as the system reports them; absent when missing or unreadable.
    struct Properties
    {
        std::optional<qint64> idVendor;
        std::optional<qint64> idProduct;
        std::optional<QString> vendorString;
        std::optional<QString> productString;
        std::optional<QString> serialNumberString;
        std::optional<quint32> locationID;
    };

    enum class Event
    {
        Added,
        Removed,
        Overflow
    };

    virtual ~USBDeviceSource() = default;

    // 0 and the devices in enumeration order, or a negative error code.
    virtual int enumerate(QList<Properties>& devices) = 0;
    // Each event reaches `handler` on the main thread. Returns false, having logged why, when
    // events cannot be had.
    virtual bool startWatching(std::function<void(Event)> handler) = 0;
    virtual void stopWatching() = 0;
};
