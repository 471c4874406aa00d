#include "engine/AppController.h"
#include "monitors/USBMonitoring.h"
#include "monitors/WiFiMonitoring.h"
#include "platform/RunningApplications.h"
#include "shortcuts/ShortcutsManaging.h"

#include "LogCapture.h"

#include <QTest>

namespace {

// Every collaborator of the engine, answering from its fields and recording what it is asked.
struct Fakes : USBMonitoring,
               WiFiMonitoring,
               RunningApplications,
               ApplicationLaunching,
               ShortcutsManaging
{
    QList<USBDevice> devices;
    std::optional<QString> ssid;
    QSet<QString> running;
    int refreshes = 0;
    QStringList calls;
    QStringList runs;

    QList<USBDevice> connectedDevices() const override { return devices; }
    void startMonitoring() override {}
    void scanDevices() override {}
    void stopMonitoring() override {}
    std::optional<WiFiNetwork> currentNetwork() const override { return std::nullopt; }
    std::optional<QString> currentSSID() const override { return ssid; }
    void refresh() override { ++refreshes; }
    QList<Instance> instances(const QString& id) override
    {
        return running.contains(id) ? QList<Instance>{Instance{42, 1}} : QList<Instance>{};
    }
    void launchApplication(const RuleContext& c) override
    {
        calls << "launch " + c.appName + " " + c.startReason;
    }
    void terminateApplication(const RuleContext& c, bool force) override
    {
        calls << QStringLiteral("terminate %1 %2 %3").arg(c.appName, c.stopReason).arg(force);
    }
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
    rule.launchOnConnect = rule.killOnDisconnect = true;
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

    Fakes fakes;
    QList<DeviceAppBinding> rules;
    QList<WiFiAppBinding> wifiRules;
    bool monitoring = true;

    AppController controller()
    {
        return AppController({&fakes, &fakes, [this] { return std::make_pair(rules, monitoring); },
                              [this] { return std::make_pair(wifiRules, monitoring); }, &fakes,
                              &fakes, &fakes});
    }

private Q_SLOTS:
    void init()
    {
        fakes = Fakes();
        rules.clear();
        wifiRules.clear();
        monitoring = true;
    }

    void fullEvaluationLog()
    {
        fakes.devices = {device(1452, 591, "Keyboard")};
        DeviceAppBinding disabled = usbRule(1, 1, "Off", "Nothing");
        disabled.isEnabled = false;
        rules = {usbRule(1452, 591, "Apple Keyboard", "Editor"), disabled,
                 usbRule(0x0fd9, 0x6d, "Deck", "Stream")};
        fakes.running = {"org.example.Stream"};
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
        QCOMPARE(fakes.calls,
                 (QStringList{"launch Editor because Apple Keyboard is connected.",
                              "terminate Stream because Deck is no longer connected. 0"}));
        QCOMPARE(fakes.refreshes, 1); // once per evaluation, not per rule
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
        QFETCH(bool, isRunning);
        QFETCH(QString, line);
        if (connected)
            fakes.devices = {device(5, 6, "X")};
        rules = {usbRule(5, 6, "X", "App")};
        QFETCH(bool, launch);
        QFETCH(bool, kill);
        rules[0].launchOnConnect = launch;
        rules[0].killOnDisconnect = kill;
        if (isRunning)
            fakes.running = {"org.example.App"};
        LogCapture log;
        controller().evaluateAllBindings();
        QVERIFY(log.take().contains(line));
        QVERIFY(fakes.calls.isEmpty());
    }

    void monitoringOffRunsNothing()
    {
        monitoring = false;
        rules = {usbRule(5, 6, "X", "App")};
        rules[0].shortcuts.shortcutsOnDisconnect = {"s"};
        LogCapture log;
        controller().evaluateAllBindings();
        QCOMPARE(log.take().size(), 3);
        QCoreApplication::processEvents();
        QVERIFY(fakes.runs.isEmpty() && fakes.calls.isEmpty());
    }

    void shortcutsOnlyRuleHandsOverAfterTheEvaluation()
    {
        fakes.devices = {device(5, 6, "X")};
        rules = {usbRule(5, 6, "Pedal", "")};
        rules[0].shortcuts.shortcutsOnConnect = {"one", "two"};
        LogCapture log;
        controller().evaluateAllBindings();
        const QStringList lines = log.take();
        QVERIFY(lines.contains("      No app configured (shortcuts only)"));
        QVERIFY(!lines.join('\n').contains("Action:"));
        QVERIFY(fakes.runs.isEmpty()); // the evaluation does not wait for the runner
        QTRY_COMPARE_WITH_TIMEOUT(fakes.runs, QStringList{"Pedal 1 one,two"}, 2000);
    }

    // Names compared byte for byte are the NetworkManager scenarios' part.
    void wifiRulesLaunchAndHandOverShortcutsUnderTheNetworksName()
    {
        fakes.ssid = "Home";
        WiFiAppBinding home;
        home.id = QUuid::createUuid();
        home.ssid = "Home";
        home.appName = "Mail";
        home.appBundleIdentifier = "org.example.Mail";
        home.launchOnConnect = home.killOnDisconnect = true;
        WiFiAppBinding blank = home;
        blank.ssid = "Home ";
        blank.shortcuts.shortcutsOnDisconnect = {"x"};
        wifiRules = {home, blank};
        LogCapture log;
        controller().evaluateAllWiFiBindings();
        QCOMPARE(fakes.calls, QStringList{"launch Mail because you connected to 'Home'."});
        QTRY_COMPARE_WITH_TIMEOUT(fakes.runs, QStringList{"WiFi 'Home ' 0 "}, 2000);
    }
};

QTEST_GUILESS_MAIN(TestAppController)
#include "test_appcontroller.moc"
