#include "engine/BindingEvaluating.h"
#include "model/AppState.h"
#include "model/BindingPersisting.h"
#include "platform/NotificationCenter.h"

#include <QSignalSpy>
#include <QTest>

namespace {

// The rule files and the engine, counting saves and evaluations.
struct Fakes : BindingPersisting, BindingEvaluating
{
    QList<DeviceAppBinding> stored;
    QList<WiFiAppBinding> storedWiFi;
    int saves = 0;
    int usb = 0;
    int wifi = 0;
    QList<DeviceAppBinding> loadBindings() override { return stored; }
    QList<WiFiAppBinding> loadWiFiBindings() override { return storedWiFi; }
    void saveBindings(const QList<DeviceAppBinding>& b) override { stored = b, ++saves; }
    void saveWiFiBindings(const QList<WiFiAppBinding>& b) override { storedWiFi = b, ++saves; }
    void evaluateAllBindings() override { ++usb; }
    void evaluateAllWiFiBindings() override { ++wifi; }
};

DeviceAppBinding rule(const QString& name, QUuid id = QUuid::createUuid())
{
    DeviceAppBinding binding;
    binding.id = id;
    binding.deviceName = name;
    return binding;
}

} // namespace

class TestAppState : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void operationsStoreAndEvaluate()
    {
        Fakes fakes;
        AppState state(fakes, &fakes);
        QSignalSpy changed(&state, &AppState::bindingsChanged);

        state.addBinding(rule("a"));
        state.addBinding(rule("b"));
        QCOMPARE(fakes.stored.size(), 2);
        QCOMPARE(fakes.usb, 2);

        DeviceAppBinding renamed = state.bindings().at(1);
        renamed.deviceName = "B";
        renamed.isEnabled = false;
        state.updateBinding(renamed);
        QCOMPARE(fakes.stored.at(1).deviceName, "B");
        QCOMPARE(fakes.stored.at(1).isEnabled, false);
        QCOMPARE(fakes.usb, 3);

        // Unknown id: nothing stored, nothing evaluated.
        const int saves = fakes.saves;
        state.updateBinding(rule("stranger"));
        state.removeBinding(rule("stranger"));
        QCOMPARE(fakes.saves, saves);
        QCOMPARE(fakes.usb, 3);

        // Removal stores, never evaluates; removing the last rule stores an empty list.
        state.removeBindings({0, 1});
        QVERIFY(fakes.stored.isEmpty());
        QCOMPARE(fakes.usb, 3);
        QCOMPARE(changed.count(), 4);
    }

    void duplicateIdsTouchTheFirstOnly()
    {
        Fakes fakes;
        const QUuid id = QUuid::createUuid();
        fakes.stored = {rule("first", id), rule("middle"), rule("second", id)};
        AppState state(fakes, &fakes);
        state.updateBinding(rule("updated", id));
        QCOMPARE(state.bindings().at(0).deviceName, "updated");
        QCOMPARE(state.bindings().at(2).deviceName, "second");
        state.removeBinding(rule("any", id));
        QCOMPARE(state.bindings().size(), 2);
        QCOMPARE(state.bindings().at(1).deviceName, "second");
    }

    void wifiOperationsEvaluateWiFiRules()
    {
        Fakes fakes;
        AppState state(fakes, &fakes);
        WiFiAppBinding wifi;
        wifi.id = QUuid::createUuid();
        wifi.ssid = "Home";
        state.addWiFiBinding(wifi);
        state.removeWiFiBinding(wifi);
        QCOMPARE(fakes.wifi, 1);
        QCOMPARE(fakes.usb, 0);
        QVERIFY(fakes.storedWiFi.isEmpty());
    }

    void seedingAddsOneUnstoredRuleOnlyWhenEmpty()
    {
        Fakes fakes;
        AppState state(fakes, &fakes);
        state.seedUITestRules();
        QCOMPARE(state.bindings().size(), 1);
        QCOMPARE(fakes.saves, 0);
        state.seedUITestRules();
        QCOMPARE(state.bindings().size(), 1);
        state.addBinding(rule("next"));
        QCOMPARE(fakes.stored.size(), 2);
    }

    void observersFollowTheMonitorsLater()
    {
        Fakes fakes;
        AppState state(fakes, &fakes);
        state.installObservers();
        NotificationCenter& center = NotificationCenter::defaultCenter();

        USBDevice device;
        device.vendorID = 1;
        center.post("usbDevicesChanged",
                    {{"devices", QVariant::fromValue(QList<USBDevice>{device})}});
        QVERIFY(state.connectedDevices().isEmpty()); // deferred to the next turn
        QTRY_COMPARE_WITH_TIMEOUT(state.connectedDevices().size(), 1, 2000);

        center.post("usbDevicesChanged", {}); // no "devices": unchanged
        center.post("usbDevicesChanged", {{"devices", QVariant::fromValue(QList<USBDevice>{})}});
        QTRY_VERIFY_WITH_TIMEOUT(state.connectedDevices().isEmpty(), 2000);

        WiFiNetwork home{"Home", "Home", std::nullopt};
        center.post("wifiNetworkChanged", {{"network", QVariant::fromValue(home)}});
        QTRY_COMPARE_WITH_TIMEOUT(fakes.wifi, 1, 2000);
        QCOMPARE(state.currentWiFiNetwork()->ssid, "Home");
        center.post("wifiNetworkChanged", {{"network", "not a network"}});
        QTRY_COMPARE_WITH_TIMEOUT(fakes.wifi, 2, 2000);
        QVERIFY(!state.currentWiFiNetwork());
    }
};

QTEST_GUILESS_MAIN(TestAppState)
#include "test_appstate.moc"
