#pragma once

#include "BindingPersisting.h"

#include <QString>

class UserDefaults;

// Keeps the two rule lists in "bindings.json" and "wifi-bindings.json" (with a compact fallback
// copy in the user-defaults store) and the four switches in the user-defaults store.
class PersistenceManager : public BindingPersisting
{
public:
    explicit PersistenceManager(UserDefaults& userDefaults);
    static PersistenceManager& shared();

    const QString bindingsKey = QStringLiteral("deviceAppBindings");
    const QString wifiBindingsKey = QStringLiteral("wifiAppBindings");

    QList<DeviceAppBinding> loadBindings() override;
    QList<WiFiAppBinding> loadWiFiBindings() override;
    void saveBindings(const QList<DeviceAppBinding>& bindings) override;
    void saveWiFiBindings(const QList<WiFiAppBinding>& bindings) override;

    bool launchAtLogin() const;
    void setLaunchAtLogin(bool value);
    bool showNotifications() const;
    void setShowNotifications(bool value);
    bool monitoringEnabled() const;
    void setMonitoringEnabled(bool value);
    bool wifiMonitoringEnabled() const;
    void setWifiMonitoringEnabled(bool value);

    QString storageDirectory() const;
    UserDefaults& userDefaults() const { return m_userDefaults; }

private:
    template <typename Rule> QList<Rule> load(const QString& fileName, const QString& key);
    template <typename Rule>
    void save(const QList<Rule>& rules, const QString& fileName, const QString& key,
              const QString& failurePrefix);
    bool switchValue(const QString& key) const;

    UserDefaults& m_userDefaults;
};
