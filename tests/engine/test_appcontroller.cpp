#include "engine/AppController.h"
#include "monitors/USBMonitoring.h"
#include "monitors/WiFiMonitoring.h"
#include "platform/RunningApplications.h"
#include "shortcuts/ShortcutsManaging.h"

#include "LogCapture.h"

#include <QTest>

namespace {

struct FakeUsb : USBMonitoring
{
    QList<USBDevice> devices;
    QList<USBDevice> connectedDevices() const override { return devices; }
    void startMonitoring() override {}
    void scanDevices() override {}
    void stopMonitoring() override {}
};

struct FakeWiFi : WiFiMonitoring
{
    std::optional<QString> ssid;
    std::optional<WiFiNetwork> currentNetwork() const override { return std::nullopt; }
    std::optional<QString> currentSSID() const override { return ssid; }
    void startMonitoring() override {}
    void stopMonitoring() override {}
};

struct FakeRunning : RunningApplications
{
    QSet<QString> running;
    int refreshes = 0;
    void refresh() override { ++refreshes; }
    QList<Instance> instances(const QString& id) override
    {
        return running.contains(id) ? QList<Instance>{Instance{42, 1}} : QList<Instance>{};
    }
};

struct FakeApplications : ApplicationLaunching
{
    QStringList calls;
    void launchApplication(const RuleContext& c) override
    {
        calls << "launch " + c.appName + " " + c.startReason;
    }
    void terminateApplication(const RuleContext& c, bool force) override
    {
        calls << QStringLiteral("terminate %1 %2 %3").arg(c.appName, c.stopReason).arg(force);
    }
};

struct FakeShortcuts : ShortcutsManaging
{
    QStringList runs;
    void runConfiguredShortcuts(const ShortcutConfiguration& c, bool connected,
                                const QString& name) override
    {
        runs << QStringLiteral("%1 %2 %3")
                    .arg(name)
                    .arg(connected)
                    .arg(c.shortcutsOnConnect.join(','));
    }
};

DeviceAppBinding usbRule(qint64 vendor, qint64 product, const QString& device, const QString& app)
{
    DeviceAppBinding rule;
    rule.id = QUuid::createUuid();
    rule.deviceVendorID = vendor;
    rule.deviceProductID = product;
    rule.deviceName = device;
    rule.appName = app;
    rule.appBundleIdentifier = app.isEmpty() ? QString() : "org.example." + app;
    rule.launchOnConnect = true;
    rule.killOnDisconnect = true;
    return rule;
}

USBDevice device(qint64 vendor, qint64 product, const QString& name)
{
    USBDevice d;
    d.vendorID = vendor;
    d.productID = product;
    d.productName = name;
    return d;
}

} // namespace

class TestAppController : public QObject
{
    Q_OBJECT

    FakeUsb usb;
    FakeWiFi wifi;
    FakeRunning running;
    FakeApplications applications;
    FakeShortcuts shortcuts;
    QList<DeviceAppBinding> rules;
    QList<WiFiAppBinding> wifiRules;
    bool monitoring = true;

    AppController controller()
    {
        AppController::Collaborators c;
        c.usbMonitor = &usb;
        c.wifiMonitor = &wifi;
        c.appStateProvider = [this] { return std::make_pair(rules, monitoring); };
        c.wifiStateProvider = [this] { return std::make_pair(wifiRules, monitoring); };
        c.runningApplications = &running;
        c.applications = &applications;
        c.shortcuts = &shortcuts;
        return AppController(c);
    }

private Q_SLOTS:
    void init()
    {
        usb.devices.clear();
        wifi.ssid.reset();
        running = {};
        applications.calls.clear();
        shortcuts.runs.clear();
        rules.clear();
        wifiRules.clear();
        monitoring = true;
    }

    void fullEvaluationLog()
    {
        usb.devices = {device(1452, 591, "Keyboard")};
        rules = {usbRule(1452, 591, "Apple Keyboard", "Editor"),
                 usbRule(0x0fd9, 0x6d, "Deck", "Stream")};
        DeviceAppBinding disabled = usbRule(1, 1, "Off", "Nothing");
        disabled.isEnabled = false;
        rules.insert(1, disabled);
        running.running = {"org.example.Stream"};
        LogCapture log;
        controller().evaluateAllBindings();
        QCOMPARE(log.take(), (QStringList{
                                 "🔍 [AppController] Evaluating all bindings...",
                                 "   Monitoring enabled: true",
                                 "   📱 Connected devices: 1",
                                 "      - Keyboard (VID: 0x05AC, PID: 0x024F)",
                                 "   📋 Active bindings: 2",
                                 "   🔗 Evaluating: Apple Keyboard → Editor",
                                 "      Device VID:PID = 0x05AC:0x024F",
                                 "      Device connected: true",
                                 "      Launch on connect: true",
                                 "      Kill on disconnect: true",
                                 "      App running: false",
                                 "      ✅ Device CONNECTED",
                                 "      🚀 Action: LAUNCH Editor",
                                 "   🔗 Evaluating: Deck → Stream",
                                 "      Device VID:PID = 0x0FD9:0x006D",
                                 "      Device connected: false",
                                 "      Launch on connect: true",
                                 "      Kill on disconnect: true",
                                 "      App running: true",
                                 "      ❌ Device DISCONNECTED",
                                 "      💀 Action: TERMINATE Stream",
                                 "✅ [AppController] Evaluation complete\n",
                             }));
        QCOMPARE(applications.calls,
                 (QStringList{"launch Editor because Apple Keyboard is connected.",
                              "terminate Stream because Deck is no longer connected. 0"}));
        QCOMPARE(running.refreshes, 1); // once per evaluation, not per rule
    }

    void decisionTableSkips_data()
    {
        QTest::addColumn<bool>("connected");
        QTest::addColumn<bool>("launch");
        QTest::addColumn<bool>("kill");
        QTest::addColumn<bool>("isRunning");
        QTest::addColumn<QString>("line");
        QTest::newRow("running") << true << true << true << true
                                 << "      ⏭️ Action: SKIP (already running)";
        QTest::newRow("no launch") << true << false << true << false
                                   << "      ⏭️ Action: SKIP (launch on connect disabled)";
        QTest::newRow("stopped") << false << true << true << false
                                 << "      ⏭️ Action: SKIP (already stopped)";
        QTest::newRow("no kill") << false << true << false << true
                                 << "      ⏭️ Action: SKIP (kill on disconnect disabled)";
    }

    void decisionTableSkips()
    {
        QFETCH(bool, connected);
        QFETCH(bool, launch);
        QFETCH(bool, kill);
        QFETCH(bool, isRunning);
        QFETCH(QString, line);
        if (connected)
            usb.devices = {device(5, 6, "X")};
        DeviceAppBinding rule = usbRule(5, 6, "X", "App");
        rule.launchOnConnect = launch;
        rule.killOnDisconnect = kill;
        rules = {rule};
        if (isRunning)
            running.running = {"org.example.App"};
        LogCapture log;
        controller().evaluateAllBindings();
        QVERIFY(log.take().contains(line));
        QVERIFY(applications.calls.isEmpty());
    }

    void monitoringOffLogsThreeLinesAndRunsNothing()
    {
        monitoring = false;
        DeviceAppBinding rule = usbRule(5, 6, "X", "");
        rule.shortcuts.shortcutsOnDisconnect = {"s"};
        rules = {rule};
        LogCapture log;
        controller().evaluateAllBindings();
        QCOMPARE(log.take(), (QStringList{"🔍 [AppController] Evaluating all bindings...",
                                          "   Monitoring enabled: false",
                                          "   ⏸️ Monitoring disabled, skipping evaluation"}));
        QCoreApplication::processEvents();
        QVERIFY(shortcuts.runs.isEmpty());
    }

    void shortcutsOnlyRuleHandsOverAfterTheEvaluation()
    {
        usb.devices = {device(5, 6, "X")};
        DeviceAppBinding rule = usbRule(5, 6, "Pedal", "");
        rule.shortcuts.shortcutsOnConnect = {"one", "two"};
        rules = {rule};
        LogCapture log;
        controller().evaluateAllBindings();
        const QStringList lines = log.take();
        QVERIFY(lines.contains("      No app configured (shortcuts only)"));
        QVERIFY(!lines.join('\n').contains("Action:"));
        QVERIFY(shortcuts.runs.isEmpty()); // the evaluation does not wait for the runner
        QTRY_COMPARE_WITH_TIMEOUT(shortcuts.runs, QStringList{"Pedal 1 one,two"}, 2000);
    }

    void wifiComparesExactText()
    {
        wifi.ssid = "Home";
        WiFiAppBinding home;
        home.id = QUuid::createUuid();
        home.ssid = "Home";
        home.appName = "Mail";
        home.appBundleIdentifier = "org.example.Mail";
        home.launchOnConnect = home.killOnDisconnect = true;
        WiFiAppBinding lower = home;
        lower.ssid = "home";
        WiFiAppBinding blank = home;
        blank.ssid = "Home ";
        blank.shortcuts.shortcutsOnDisconnect = {"x"};
        wifiRules = {home, lower, blank};
        LogCapture log;
        controller().evaluateAllWiFiBindings();
        const QStringList lines = log.take();
        QCOMPARE(lines.mid(0, 5),
                 (QStringList{"📶 [AppController] Evaluating all WiFi bindings...",
                              "   WiFi monitoring enabled: true", "   📶 Current SSID: 'Home'",
                              "   📋 Active WiFi bindings: 3", "   🔗 Evaluating: 'Home' → Mail"}));
        QCOMPARE(lines.count("      ✅ Network CONNECTED"), 1);
        QCOMPARE(lines.count("      ❌ Network DISCONNECTED"), 2);
        QCOMPARE(applications.calls, QStringList{"launch Mail because you connected to 'Home'."});
        QTRY_COMPARE_WITH_TIMEOUT(shortcuts.runs, QStringList{"WiFi 'Home ' 0 "}, 2000);

        wifi.ssid.reset();
        controller().evaluateAllWiFiBindings();
        QVERIFY(log.take().contains("   📶 Current SSID: 'none'"));
    }
};

QTEST_GUILESS_MAIN(TestAppController)
#include "test_appcontroller.moc"
