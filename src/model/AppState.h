#pragma once

#include "DeviceAppBinding.h"
#include "USBDevice.h"
#include "WiFiAppBinding.h"
#include "WiFiNetwork.h"

#include <QList>
#include <QObject>
#include <QSet>

#include <optional>

class BindingPersisting;
class BindingEvaluating;

// The one observable state that the windows and the rule engine share. It is the only writer of
// the rule lists: every change is stored at once, and additions and changes are evaluated.
class AppState : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isMonitoring READ isMonitoring WRITE setIsMonitoring NOTIFY isMonitoringChanged)
    Q_PROPERTY(bool isWiFiMonitoring READ isWiFiMonitoring WRITE setIsWiFiMonitoring NOTIFY
                   isWiFiMonitoringChanged)
public:
    // `bindingEvaluator` null: the shared rule engine evaluates.
    AppState(BindingPersisting& persistence, BindingEvaluating* bindingEvaluator,
             bool isMonitoring = true, bool isWiFiMonitoring = true);
    static AppState& shared();

    // Follows "usbDevicesChanged" and "wifiNetworkChanged"; the shared state does this at creation.
    void installObservers();

    const QList<USBDevice>& connectedDevices() const { return m_connectedDevices; }
    void setConnectedDevices(const QList<USBDevice>& devices);
    const QList<DeviceAppBinding>& bindings() const { return m_bindings; }
    void setBindings(const QList<DeviceAppBinding>& bindings);
    bool isMonitoring() const { return m_isMonitoring; }
    void setIsMonitoring(bool value);
    const std::optional<WiFiNetwork>& currentWiFiNetwork() const { return m_currentWiFiNetwork; }
    void setCurrentWiFiNetwork(const std::optional<WiFiNetwork>& network);
    const QList<WiFiAppBinding>& wifiBindings() const { return m_wifiBindings; }
    void setWifiBindings(const QList<WiFiAppBinding>& bindings);
    bool isWiFiMonitoring() const { return m_isWiFiMonitoring; }
    void setIsWiFiMonitoring(bool value);

    void addBinding(const DeviceAppBinding& binding);
    void updateBinding(const DeviceAppBinding& binding);
    void removeBindings(const QSet<int>& offsets);
    void removeBinding(const DeviceAppBinding& binding);

    void addWiFiBinding(const WiFiAppBinding& binding);
    void updateWiFiBinding(const WiFiAppBinding& binding);
    void removeWiFiBindings(const QSet<int>& offsets);
    void removeWiFiBinding(const WiFiAppBinding& binding);

    void seedUITestRules();

Q_SIGNALS:
    void connectedDevicesChanged();
    void bindingsChanged();
    void isMonitoringChanged();
    void currentWiFiNetworkChanged();
    void wifiBindingsChanged();
    void isWiFiMonitoringChanged();

private:
    BindingEvaluating& evaluator() const;

    QList<USBDevice> m_connectedDevices;
    QList<DeviceAppBinding> m_bindings;
    bool m_isMonitoring = true;
    std::optional<WiFiNetwork> m_currentWiFiNetwork;
    QList<WiFiAppBinding> m_wifiBindings;
    bool m_isWiFiMonitoring = true;
    BindingPersisting& m_persistence;
    BindingEvaluating* m_bindingEvaluator = nullptr;
};
