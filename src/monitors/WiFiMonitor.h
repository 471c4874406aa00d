#pragma once

#include "WiFiMonitoring.h"
#include "platform/WiFiBackend.h"

#include <QObject>

class QTimer;

// Knows the network the WiFi interface is joined to and announces every change through
// "wifiNetworkChanged". Learns of changes from SSID-change events, from link-change events (a
// check one second later) and from a poll every five seconds. All checks run on the main thread,
// so they never overlap.
class WiFiMonitor : public QObject, public WiFiMonitoring
{
    Q_OBJECT
public:
    explicit WiFiMonitor(WiFiBackend& backend);
    static WiFiMonitor& shared();

    std::optional<WiFiNetwork> currentNetwork() const override { return m_currentNetwork; }
    std::optional<QString> currentSSID() const override;
    void startMonitoring() override;
    void stopMonitoring() override;

    void checkLocationAuthorization();
    void checkCurrentNetwork();
    void checkForSSIDChange();

    static constexpr int kPollIntervalMs = 5000;
    static constexpr int kLinkChangeDelayMs = 1000;

private:
    void interfaceDidChange();
    void logInterface();
    void startPolling();
    void startEventMonitoring();
    void ssidDidChange();
    void linkDidChange();
    void locationManagerDidChangeAuthorization();
    void postNetworkChanged(const std::optional<QString>& previousSSID,
                            const std::optional<QString>& currentSSID);

    WiFiBackend& m_backend;
    // Absent when there is no WiFi interface.
    std::optional<QString> m_interfaceName;
    std::optional<QString> m_previousSSID;
    QTimer* m_monitoringTimer = nullptr;
    std::optional<WiFiNetwork> m_currentNetwork;
    QList<QMetaObject::Connection> m_eventConnections;
};
