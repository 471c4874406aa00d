#include "engine/BindingEvaluating.h"
#include "model/AppState.h"
#include "model/BindingPersisting.h"
#include "platform/NotificationCenter.h"

#include <QSignalSpy>
#include <QTest>

namespace {

struct FakePersistence : BindingPersisting
{
    QList<DeviceAppBinding> stored;
    QList<WiFiAppBinding> storedWiFi;
    int saves = 0;
    QList<DeviceAppBinding> loadBindings() override { return stored; }
    QList<WiFiAppBinding> loadWiFiBindings() override { return storedWiFi; }
    void saveBindings(const QList<DeviceAppBinding>& b) override { stored = b, ++saves; }
    void saveWiFiBindings(const QList<WiFiAppBinding>& b) override { storedWiFi = b, ++saves; }
};

struct FakeEvaluator : BindingEvaluating
{
    int usb = 0;
    int wifi = 0;
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
        FakePersistence persistence;
        FakeEvaluator evaluator;
        AppState state(persistence, &evaluator);
        QSignalSpy changed(&state, &AppState::bindingsChanged);

        state.addBinding(rule("a"));
        state.addBinding(rule("b"));
        QCOMPARE(persistence.stored.size(), 2);
        QCOMPARE(evaluator.usb, 2);

        DeviceAppBinding renamed = state.bindings().at(1);
        renamed.deviceName = "B";
        renamed.isEnabled = false;
        state.updateBinding(renamed);
        QCOMPARE(persistence.stored.at(1).deviceName, QStringLiteral("B"));
        QCOMPARE(persistence.stored.at(1).isEnabled, false);
        QCOMPARE(evaluator.usb, 3);

        // Unknown id: nothing stored, nothing evaluated.
        const int saves = persistence.saves;
        state.updateBinding(rule("stranger"));
        state.removeBinding(rule("stranger"));
        QCOMPARE(persistence.saves, saves);
        QCOMPARE(evaluator.usb, 3);

        // Removal stores, never evaluates; removing the last rule stores an empty list.
        state.removeBindings({0, 1});
        QVERIFY(persistence.stored.isEmpty());
        QCOMPARE(evaluator.usb, 3);
        QCOMPARE(changed.count(), 4);
    }

    void duplicateIdsTouchTheFirstOnly()
    {
        FakePersistence persistence;
        const QUuid id = QUuid::createUuid();
        persistence.stored = {rule("first", id), rule("middle"), rule("second", id)};
        FakeEvaluator evaluator;
        AppState state(persistence, &evaluator);
        state.updateBinding(rule("updated", id));
        QCOMPARE(state.bindings().at(0).deviceName, QStringLiteral("updated"));
        QCOMPARE(state.bindings().at(2).deviceName, QStringLiteral("second"));
        state.removeBinding(rule("any", id));
        QCOMPARE(state.bindings().size(), 2);
        QCOMPARE(state.bindings().at(1).deviceName, QStringLiteral("second"));
    }

    void wifiOperationsEvaluateWiFiRules()
    {
        FakePersistence persistence;
        FakeEvaluator evaluator;
        AppState state(persistence, &evaluator);
        WiFiAppBinding wifi;
        wifi.id = QUuid::createUuid();
        wifi.ssid = "Home";
        state.addWiFiBinding(wifi);
        state.removeWiFiBinding(wifi);
        QCOMPARE(evaluator.wifi, 1);
        QCOMPARE(evaluator.usb, 0);
        QVERIFY(persistence.storedWiFi.isEmpty());
    }

    void seedingAddsOneUnstoredRuleOnlyWhenEmpty()
    {
        FakePersistence persistence;
        FakeEvaluator evaluator;
        AppState state(persistence, &evaluator);
        state.seedUITestRules();
        QCOMPARE(state.bindings().size(), 1);
        QCOMPARE(state.bindings().first().deviceName, QStringLiteral("Test USB Device"));
        QCOMPARE(state.bindings().first().deviceVendorID, 0x1234);
        QCOMPARE(persistence.saves, 0);
        state.seedUITestRules();
        QCOMPARE(state.bindings().size(), 1);
        state.addBinding(rule("next"));
        QCOMPARE(persistence.stored.size(), 2);
    }

    void observersFollowTheMonitorsLater()
    {
        FakePersistence persistence;
        FakeEvaluator evaluator;
        AppState state(persistence, &evaluator);
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
        QTRY_COMPARE_WITH_TIMEOUT(evaluator.wifi, 1, 2000);
        QCOMPARE(state.currentWiFiNetwork()->ssid, QStringLiteral("Home"));
        center.post("wifiNetworkChanged", {{"network", "not a network"}});
        QTRY_COMPARE_WITH_TIMEOUT(evaluator.wifi, 2, 2000);
        QVERIFY(!state.currentWiFiNetwork());
    }
};

QTEST_GUILESS_MAIN(TestAppState)
#include "test_appstate.moc"
