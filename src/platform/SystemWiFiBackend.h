#pragma once

#include "WiFiBackend.h"

#include <QDBusConnection>

class QDBusServiceWatcher;
class WiFiService;

// The WiFi interface on the system bus: NetworkManager's WiFi device where it has one, otherwise
// iwd's station. Both names are watched, so a service that starts late or restarts is picked up.
// Nothing gates reading the network on Linux, so the authorisation status is always 3.
class SystemWiFiBackend : public WiFiBackend
{
    Q_OBJECT
public:
    explicit SystemWiFiBackend(QObject* parent = nullptr);

    std::optional<QString> interfaceName() const override;
    std::optional<QString> ssid() override;
    std::optional<QString> bssid() override;

    int authorizationStatus() const override { return 3; }
    void requestAuthorization() override {}

    bool startEvents(QString& error) override;
    bool stopEvents(QString& error) override;

private:
    void selectService();

    QDBusConnection m_bus;
    WiFiService* m_networkManager;
    WiFiService* m_iwd;
    WiFiService* m_active = nullptr;
    bool m_eventsOn = false;
};
