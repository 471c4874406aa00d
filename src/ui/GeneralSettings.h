#pragma once

#include <QObject>
#include <QVariantMap>

class AppState;
class LoginItemRegistering;
class PersistenceManager;

// The General tab's four switches: each change is stored at once and then takes effect.
class GeneralSettings : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString build READ build CONSTANT)
public:
    GeneralSettings(PersistenceManager& persistence, AppState& appState,
                    LoginItemRegistering& loginItem, QObject* parent = nullptr);

    // The stored values, read when the tab is made: "launchAtLogin", "showNotifications",
    // "monitoringEnabled", "wifiMonitoringEnabled".
    Q_INVOKABLE QVariantMap storedValues() const;

    Q_INVOKABLE void setLaunchAtLogin(bool value);
    Q_INVOKABLE void setShowNotifications(bool value);
    Q_INVOKABLE void setMonitoringEnabled(bool value);
    Q_INVOKABLE void setWifiMonitoringEnabled(bool value);

    QString version() const;
    QString build() const;

private:
    PersistenceManager& m_persistence;
    AppState& m_appState;
    LoginItemRegistering& m_loginItem;
};
