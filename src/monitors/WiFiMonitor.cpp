#include "WiFiMonitor.h"

#include "platform/Log.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/SystemWiFiBackend.h"

#include <QPointer>
#include <QTimer>
#include <QVariant>

WiFiMonitor::WiFiMonitor(WiFiBackend& backend) : m_backend(backend)
{
    m_interfaceName = m_backend.interfaceName();
    logInterface();
    connect(&m_backend, &WiFiBackend::interfaceDidChange, this, &WiFiMonitor::interfaceDidChange);
    connect(&m_backend, &WiFiBackend::authorizationDidChange, this,
            &WiFiMonitor::locationManagerDidChangeAuthorization);
}

WiFiMonitor& WiFiMonitor::shared()
{
    static WiFiMonitor* monitor = new WiFiMonitor(*new SystemWiFiBackend);
    return *monitor;
}

std::optional<QString> WiFiMonitor::currentSSID() const
{
    if (!m_backend.interfaceName())
        return std::nullopt;
    std::optional<QString> ssid = m_backend.ssid();
    // An empty SSID is no network.
    if (ssid && ssid->isEmpty())
        return std::nullopt;
    return ssid;
}

void WiFiMonitor::startMonitoring()
{
    debugLog(QStringLiteral("📶 [WiFiMonitor] Starting WiFi monitoring..."));
    checkLocationAuthorization();
    checkCurrentNetwork();
    startPolling();
    startEventMonitoring();
    debugLog(QStringLiteral("📶 [WiFiMonitor] WiFi monitoring started"));
}

void WiFiMonitor::stopMonitoring()
{
    debugLog(QStringLiteral("📶 [WiFiMonitor] Stopping WiFi monitoring..."));
    delete m_monitoringTimer;
    m_monitoringTimer = nullptr;
    QString error;
    if (!m_backend.stopEvents(error))
        debugLog(QStringLiteral("⚠️ [WiFiMonitor] Failed to stop CoreWLAN monitoring: ") +
                 error);
    for (const QMetaObject::Connection& connection : std::as_const(m_eventConnections))
        disconnect(connection);
    m_eventConnections.clear();
    debugLog(QStringLiteral("📶 [WiFiMonitor] WiFi monitoring stopped"));
}

void WiFiMonitor::checkLocationAuthorization()
{
    const int status = m_backend.authorizationStatus();
    debugLog(QStringLiteral("📍 [WiFiMonitor] Location authorization status: %1").arg(status));
    switch (status) {
    case 0:
        debugLog(QStringLiteral("📍 [WiFiMonitor] Requesting location authorization..."));
        m_backend.requestAuthorization();
        break;
    case 1:
    case 2:
        debugLog(QStringLiteral(
            "⚠️ [WiFiMonitor] Location access denied - WiFi SSID detection will not work"));
        debugLog(QStringLiteral("📍 [WiFiMonitor] Please enable Location Services for this app in "
                                "System Settings > Privacy & Security > Location Services"));
        break;
    case 3:
        debugLog(QStringLiteral("✅ [WiFiMonitor] Location access authorized (always)"));
        checkCurrentNetwork();
        break;
    default:
        debugLog(QStringLiteral("⚠️ [WiFiMonitor] Unknown location authorization status"));
        break;
    }
}

void WiFiMonitor::checkCurrentNetwork()
{
    const std::optional<QString> ssid = currentSSID();
    if (!ssid) {
        debugLog(QStringLiteral("📶 [WiFiMonitor] No WiFi network connected"));
        m_currentNetwork.reset();
        m_previousSSID.reset();
        return;
    }
    const std::optional<QString> bssid = m_backend.bssid();
    m_currentNetwork = WiFiNetwork{*ssid, *ssid, bssid};
    m_previousSSID = ssid;
    debugLog(QStringLiteral("📶 [WiFiMonitor] Current network: '") + *ssid +
             QStringLiteral("' (BSSID: ") + bssid.value_or(QStringLiteral("unknown")) +
             QStringLiteral(")"));
    postNetworkChanged(std::nullopt, ssid);
}

void WiFiMonitor::checkForSSIDChange()
{
    const std::optional<QString> current = currentSSID();
    const std::optional<QString> previous = m_previousSSID;
    if (current == previous)
        return;
    m_previousSSID = current;
    const QString none = QStringLiteral("none");
    debugLog(QStringLiteral("📶 [WiFiMonitor] SSID changed: '") + previous.value_or(none) +
             QStringLiteral("' → '") + current.value_or(none) + QStringLiteral("'"));
    checkCurrentNetwork();
    postNetworkChanged(previous, current);
}

void WiFiMonitor::startPolling()
{
    if (!m_monitoringTimer) {
        m_monitoringTimer = new QTimer(this);
        connect(m_monitoringTimer, &QTimer::timeout, this, &WiFiMonitor::checkForSSIDChange);
    }
    m_monitoringTimer->start(kPollIntervalMs);
    checkForSSIDChange();
}

void WiFiMonitor::startEventMonitoring()
{
    QString error;
    if (!m_backend.startEvents(error)) {
        debugLog(
            QStringLiteral("⚠️ [WiFiMonitor] Could not start CoreWLAN event monitoring: ") +
            error);
        debugLog(QStringLiteral("📶 [WiFiMonitor] Falling back to polling only"));
        return;
    }
    for (const QMetaObject::Connection& connection : std::as_const(m_eventConnections))
        disconnect(connection);
    m_eventConnections = {
        connect(&m_backend, &WiFiBackend::ssidDidChange, this, &WiFiMonitor::ssidDidChange),
        connect(&m_backend, &WiFiBackend::linkDidChange, this, &WiFiMonitor::linkDidChange),
    };
    debugLog(QStringLiteral("📶 [WiFiMonitor] CoreWLAN delegate monitoring enabled"));
}

void WiFiMonitor::ssidDidChange()
{
    debugLog(QStringLiteral("📶 [WiFiMonitor] CoreWLAN ssidDidChange event received"));
    checkForSSIDChange();
}

void WiFiMonitor::linkDidChange()
{
    debugLog(QStringLiteral("📶 [WiFiMonitor] CoreWLAN linkDidChange event received"));
    QPointer<WiFiMonitor> weak(this);
    MainQueue::after(kLinkChangeDelayMs, [weak] {
        if (weak)
            weak->checkForSSIDChange();
    });
}

void WiFiMonitor::locationManagerDidChangeAuthorization()
{
    const int status = m_backend.authorizationStatus();
    debugLog(QStringLiteral("📍 [WiFiMonitor] Location authorization changed to: %1").arg(status));
    switch (status) {
    case 0:
        debugLog(QStringLiteral("📍 [WiFiMonitor] Location authorization not yet determined"));
        break;
    case 1:
    case 2:
        debugLog(QStringLiteral(
            "⚠️ [WiFiMonitor] Location access denied - WiFi SSID detection unavailable"));
        m_currentNetwork.reset();
        break;
    case 3:
        debugLog(QStringLiteral("✅ [WiFiMonitor] Location access granted - refreshing WiFi state"));
        checkCurrentNetwork();
        checkForSSIDChange();
        break;
    default:
        debugLog(QStringLiteral("⚠️ [WiFiMonitor] Unknown location authorization status: %1")
                     .arg(status));
        break;
    }
}

void WiFiMonitor::interfaceDidChange()
{
    const std::optional<QString> before = m_interfaceName;
    m_interfaceName = m_backend.interfaceName();
    if (m_interfaceName != before)
        logInterface();
    // A service that just appeared may already be joined. A vanished one is left to the poll, so
    // that a quick restart of the service does not read as leaving the network.
    if (m_interfaceName && m_monitoringTimer)
        checkForSSIDChange();
}

void WiFiMonitor::logInterface()
{
    if (!m_interfaceName) {
        debugLog(QStringLiteral("⚠️ [WiFiMonitor] No WiFi interface available"));
        return;
    }
    debugLog(QStringLiteral("📶 [WiFiMonitor] WiFi interface found: ") +
             (m_interfaceName->isEmpty() ? QStringLiteral("unknown") : *m_interfaceName));
}

void WiFiMonitor::postNetworkChanged(const std::optional<QString>& previousSSID,
                                     const std::optional<QString>& currentSSID)
{
    const auto text = [](const std::optional<QString>& ssid) {
        return ssid ? QVariant(*ssid) : QVariant();
    };
    QPointer<WiFiMonitor> weak(this);
    MainQueue::async([weak, previous = text(previousSSID), current = text(currentSSID)] {
        // The network as it is when this runs, not when it was queued.
        const std::optional<WiFiNetwork> network = weak ? weak->m_currentNetwork : std::nullopt;
        NotificationCenter::defaultCenter().post(
            QStringLiteral("wifiNetworkChanged"),
            {{QStringLiteral("previousSSID"), previous},
             {QStringLiteral("currentSSID"), current},
             {QStringLiteral("network"), network ? QVariant::fromValue(*network) : QVariant()}});
    });
}
