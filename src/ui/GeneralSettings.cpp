#include "GeneralSettings.h"

#include "model/AppState.h"
#include "model/PersistenceManager.h"
#include "platform/Log.h"
#include "platform/LoginItemRegistering.h"
#include "platform/MainQueue.h"

#include <QPointer>

GeneralSettings::GeneralSettings(PersistenceManager& persistence, AppState& appState,
                                 LoginItemRegistering& loginItem, QObject* parent)
    : QObject(parent), m_persistence(persistence), m_appState(appState), m_loginItem(loginItem)
{
}

QVariantMap GeneralSettings::storedValues() const
{
    return {{QStringLiteral("launchAtLogin"), m_persistence.launchAtLogin()},
            {QStringLiteral("showNotifications"), m_persistence.showNotifications()},
            {QStringLiteral("monitoringEnabled"), m_persistence.monitoringEnabled()},
            {QStringLiteral("wifiMonitoringEnabled"), m_persistence.wifiMonitoringEnabled()}};
}

void GeneralSettings::setLaunchAtLogin(bool value)
{
    m_persistence.setLaunchAtLogin(value);
    if (const std::optional<QString> error = m_loginItem.update(value))
        Log::info(QStringLiteral("Failed to update login item: ") + *error);
}

void GeneralSettings::setShowNotifications(bool value)
{
    m_persistence.setShowNotifications(value);
}

void GeneralSettings::setMonitoringEnabled(bool value)
{
    m_persistence.setMonitoringEnabled(value);
    QPointer<AppState> state(&m_appState);
    MainQueue::async([state, value] {
        if (state)
            state->setIsMonitoring(value);
    });
}

void GeneralSettings::setWifiMonitoringEnabled(bool value)
{
    m_persistence.setWifiMonitoringEnabled(value);
    QPointer<AppState> state(&m_appState);
    MainQueue::async([state, value] {
        if (state)
            state->setIsWiFiMonitoring(value);
    });
}

QString GeneralSettings::version() const
{
    return QStringLiteral(OBRINTA_VERSION);
}

QString GeneralSettings::build() const
{
    return QStringLiteral(OBRINTA_BUILD);
}
