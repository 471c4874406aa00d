#include "SystemWiFiBackend.h"

#include "IwdWiFi.h"
#include "NetworkManagerWiFi.h"

#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>

SystemWiFiBackend::SystemWiFiBackend(QObject* parent)
    : WiFiBackend(parent), m_bus(QDBusConnection::systemBus()),
      m_networkManager(new NetworkManagerWiFi(m_bus, this)), m_iwd(new IwdWiFi(m_bus, this))
{
    for (WiFiService* service : {m_networkManager, m_iwd}) {
        connect(service, &WiFiService::ssidDidChange, this, [this, service] {
            if (m_eventsOn && service == m_active)
                Q_EMIT ssidDidChange();
        });
        connect(service, &WiFiService::linkDidChange, this, [this, service] {
            if (m_eventsOn && service == m_active)
                Q_EMIT linkDidChange();
        });
        connect(service, &WiFiService::interfaceDidChange, this, [this] {
            selectService();
            Q_EMIT interfaceDidChange();
        });
    }
    if (!m_bus.isConnected())
        return;
    auto* watcher = new QDBusServiceWatcher(this);
    watcher->setConnection(m_bus);
    watcher->setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& name, const QString&, const QString& newOwner) {
                WiFiService* service =
                    name == m_networkManager->serviceName() ? m_networkManager : m_iwd;
                if (newOwner.isEmpty())
                    service->forget();
                else
                    service->resolve();
                selectService();
                Q_EMIT interfaceDidChange();
            });
    QDBusConnectionInterface* bus = m_bus.interface();
    for (WiFiService* service : {m_networkManager, m_iwd}) {
        watcher->addWatchedService(service->serviceName());
        if (bus && bus->isServiceRegistered(service->serviceName()).value())
            service->resolve();
    }
    selectService();
}

void SystemWiFiBackend::selectService()
{
    // NetworkManager wins when it has a WiFi device; it may also drive iwd itself.
    if (m_networkManager->interfaceName())
        m_active = m_networkManager;
    else if (m_iwd->interfaceName())
        m_active = m_iwd;
    else
        m_active = nullptr;
}

std::optional<QString> SystemWiFiBackend::interfaceName() const
{
    return m_active ? m_active->interfaceName() : std::nullopt;
}

std::optional<QString> SystemWiFiBackend::ssid()
{
    return m_active ? m_active->ssid() : std::nullopt;
}

std::optional<QString> SystemWiFiBackend::bssid()
{
    return m_active ? m_active->bssid() : std::nullopt;
}

bool SystemWiFiBackend::startEvents(QString& error)
{
    if (!m_bus.isConnected()) {
        error = m_bus.lastError().message();
        if (error.isEmpty())
            error = QStringLiteral("The system bus is not available");
        return false;
    }
    m_eventsOn = true;
    return true;
}

bool SystemWiFiBackend::stopEvents(QString&)
{
    m_eventsOn = false;
    return true;
}
