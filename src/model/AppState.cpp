#include "AppState.h"

#include "BindingPersisting.h"
#include "PersistenceManager.h"
#include "engine/AppController.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"

#include <QPointer>
#include <QVariant>

#include <algorithm>

namespace {

template <typename Rule> qsizetype indexOfId(const QList<Rule>& rules, const QUuid& id)
{
    const auto found = std::find_if(rules.cbegin(), rules.cend(),
                                    [&id](const Rule& rule) { return rule.id == id; });
    return found == rules.cend() ? -1 : found - rules.cbegin();
}

template <typename Rule>
QList<Rule> withoutOffsets(const QList<Rule>& rules, const QSet<int>& offsets)
{
    QList<Rule> kept;
    for (qsizetype i = 0; i < rules.size(); ++i) {
        if (!offsets.contains(int(i)))
            kept.append(rules.at(i));
    }
    return kept;
}

} // namespace

AppState::AppState(BindingPersisting& persistence, BindingEvaluating* bindingEvaluator,
                   bool isMonitoring, bool isWiFiMonitoring)
    : m_isMonitoring(isMonitoring), m_isWiFiMonitoring(isWiFiMonitoring),
      m_persistence(persistence), m_bindingEvaluator(bindingEvaluator)
{
    m_bindings = m_persistence.loadBindings();
    m_wifiBindings = m_persistence.loadWiFiBindings();
}

AppState& AppState::shared()
{
    static AppState* state = [] {
        PersistenceManager& persistence = PersistenceManager::shared();
        // A switch turned off stays off after a restart.
        auto* created = new AppState(persistence, nullptr, persistence.monitoringEnabled(),
                                     persistence.wifiMonitoringEnabled());
        created->installObservers();
        return created;
    }();
    return *state;
}

void AppState::installObservers()
{
    QPointer<AppState> weak(this);
    connect(&NotificationCenter::defaultCenter(), &NotificationCenter::posted, this,
            [weak](const QString& name, const QVariantMap& userInfo) {
                if (name == QLatin1String("usbDevicesChanged")) {
                    MainQueue::async([weak, userInfo] {
                        const QVariant devices = userInfo.value(QStringLiteral("devices"));
                        if (!devices.canConvert<QList<USBDevice>>() || !weak)
                            return;
                        weak->setConnectedDevices(devices.value<QList<USBDevice>>());
                    });
                } else if (name == QLatin1String("wifiNetworkChanged")) {
                    MainQueue::async([weak, userInfo] {
                        if (!weak)
                            return;
                        const QVariant network = userInfo.value(QStringLiteral("network"));
                        weak->setCurrentWiFiNetwork(
                            network.canConvert<WiFiNetwork>()
                                ? std::optional<WiFiNetwork>(network.value<WiFiNetwork>())
                                : std::nullopt);
                        if (weak)
                            weak->evaluator().evaluateAllWiFiBindings();
                    });
                }
            });
}

BindingEvaluating& AppState::evaluator() const
{
    return m_bindingEvaluator ? *m_bindingEvaluator : AppController::shared();
}

void AppState::setConnectedDevices(const QList<USBDevice>& devices)
{
    m_connectedDevices = devices;
    Q_EMIT connectedDevicesChanged();
}

void AppState::setBindings(const QList<DeviceAppBinding>& bindings)
{
    m_bindings = bindings;
    Q_EMIT bindingsChanged();
}

void AppState::setIsMonitoring(bool value)
{
    m_isMonitoring = value;
    Q_EMIT isMonitoringChanged();
}

void AppState::setCurrentWiFiNetwork(const std::optional<WiFiNetwork>& network)
{
    m_currentWiFiNetwork = network;
    Q_EMIT currentWiFiNetworkChanged();
}

void AppState::setWifiBindings(const QList<WiFiAppBinding>& bindings)
{
    m_wifiBindings = bindings;
    Q_EMIT wifiBindingsChanged();
}

void AppState::setIsWiFiMonitoring(bool value)
{
    m_isWiFiMonitoring = value;
    Q_EMIT isWiFiMonitoringChanged();
}

void AppState::addBinding(const DeviceAppBinding& binding)
{
    setBindings(m_bindings + QList<DeviceAppBinding>{binding});
    m_persistence.saveBindings(m_bindings);
    evaluator().evaluateAllBindings();
}

void AppState::updateBinding(const DeviceAppBinding& binding)
{
    const qsizetype index = indexOfId(m_bindings, binding.id);
    if (index < 0)
        return;
    QList<DeviceAppBinding> changed = m_bindings;
    changed[index] = binding;
    setBindings(changed);
    m_persistence.saveBindings(m_bindings);
    evaluator().evaluateAllBindings();
}

void AppState::removeBindings(const QSet<int>& offsets)
{
    setBindings(withoutOffsets(m_bindings, offsets));
    m_persistence.saveBindings(m_bindings);
}

void AppState::removeBinding(const DeviceAppBinding& binding)
{
    const qsizetype index = indexOfId(m_bindings, binding.id);
    if (index >= 0)
        removeBindings({int(index)});
}

void AppState::addWiFiBinding(const WiFiAppBinding& binding)
{
    setWifiBindings(m_wifiBindings + QList<WiFiAppBinding>{binding});
    m_persistence.saveWiFiBindings(m_wifiBindings);
    evaluator().evaluateAllWiFiBindings();
}

void AppState::updateWiFiBinding(const WiFiAppBinding& binding)
{
    const qsizetype index = indexOfId(m_wifiBindings, binding.id);
    if (index < 0)
        return;
    QList<WiFiAppBinding> changed = m_wifiBindings;
    changed[index] = binding;
    setWifiBindings(changed);
    m_persistence.saveWiFiBindings(m_wifiBindings);
    evaluator().evaluateAllWiFiBindings();
}

void AppState::removeWiFiBindings(const QSet<int>& offsets)
{
    setWifiBindings(withoutOffsets(m_wifiBindings, offsets));
    m_persistence.saveWiFiBindings(m_wifiBindings);
}

void AppState::removeWiFiBinding(const WiFiAppBinding& binding)
{
    const qsizetype index = indexOfId(m_wifiBindings, binding.id);
    if (index >= 0)
        removeWiFiBindings({int(index)});
}

void AppState::seedUITestRules()
{
    if (!m_bindings.isEmpty())
        return;
    DeviceAppBinding example;
    example.id = QUuid::createUuid();
    example.deviceVendorID = 0x1234;
    example.deviceProductID = 0x5678;
    example.deviceName = QStringLiteral("Test USB Device");
    example.appBundleIdentifier = QStringLiteral("com.apple.TextEdit");
    example.appName = QStringLiteral("TextEdit");
    example.appPath = QStringLiteral("/Applications/TextEdit.app");
    example.isEnabled = true;
    example.killOnDisconnect = true;
    example.launchOnConnect = true;
    setBindings({example});
}
