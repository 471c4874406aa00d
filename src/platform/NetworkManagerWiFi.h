#pragma once

#include "WiFiService.h"

#include <QDBusConnection>

class QDBusMessage;

// The WiFi interface through NetworkManager: the device of DeviceType 2 and the Ssid and
// HwAddress of its ActiveAccessPoint.
class NetworkManagerWiFi : public WiFiService
{
    Q_OBJECT
public:
    explicit NetworkManagerWiFi(const QDBusConnection& bus, QObject* parent = nullptr);

    QString serviceName() const override;
    void resolve() override;
    void forget() override;

    std::optional<QString> interfaceName() const override { return m_interfaceName; }
    std::optional<QString> ssid() override;
    std::optional<QString> bssid() override;

private Q_SLOTS:
    void onDeviceAdded();
    void onDeviceRemoved(const QDBusMessage& message);
    void onDevicePropertiesChanged(const QDBusMessage& message);
    void onDeviceStateChanged();

private:
    void watchDevice(bool on);
    void resolveAndAnnounce();
    // Absent when it cannot be read; empty when the device is not joined.
    std::optional<QString> activeAccessPoint();
    std::optional<QVariant> read(const QString& path, const QString& interface,
                                 const QString& name);
    void report(const QString& line);

    QDBusConnection m_bus;
    QString m_devicePath;
    std::optional<QString> m_interfaceName;
    QString m_lastError;
};
