#pragma once

#include "WiFiService.h"

#include <QDBusConnection>

class QDBusMessage;

// The WiFi interface through iwd: the first Station, its State and ConnectedNetwork, and that
// network's Name. iwd names no BSSID for the connected network.
class IwdWiFi : public WiFiService
{
    Q_OBJECT
public:
    explicit IwdWiFi(const QDBusConnection& bus, QObject* parent = nullptr);

    QString serviceName() const override;
    void resolve() override;
    void forget() override;

    std::optional<QString> interfaceName() const override { return m_interfaceName; }
    std::optional<QString> ssid() override;
    std::optional<QString> bssid() override { return std::nullopt; }

private Q_SLOTS:
    void onInterfacesChanged(const QDBusMessage& message);
    void onStationPropertiesChanged(const QDBusMessage& message);

private:
    void watchStation(bool on);
    void report(const QString& line);

    QDBusConnection m_bus;
    QString m_stationPath;
    std::optional<QString> m_interfaceName;
    QString m_lastError;
};
