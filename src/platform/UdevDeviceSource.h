#pragma once

#include "USBDeviceSource.h"

#include <QObject>

#include <memory>

struct udev;
struct udev_monitor;
struct udev_device;
class QSocketNotifier;

// USB devices through libudev: subsystem "usb", devtype "usb_device".
class UdevDeviceSource : public QObject, public USBDeviceSource
{
    Q_OBJECT
public:
    UdevDeviceSource();
    ~UdevDeviceSource() override;

    int enumerate(QList<Properties>& devices) override;
    bool startWatching(std::function<void(Event)> handler) override;
    void stopWatching() override;

    static Properties readProperties(udev_device* device);
    // Bus number in the top 8 bits, then one nibble per port of the device path, top down.
    static std::optional<quint32> locationID(const QString& sysname);
    // Device strings are untrusted bytes: lossy UTF-8, control characters replaced, length capped.
    static QString deviceText(const char* bytes);

private:
    void receive();

    udev* m_udev = nullptr;
    udev_monitor* m_monitor = nullptr;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::function<void(Event)> m_handler;
};
