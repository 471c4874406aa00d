#include "UITestSupport.h"
#include "model/AppState.h"
#include "ui/TrayIcon.h"

#include <QAction>
#include <QMenu>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

using namespace UITestSupport;

namespace {

QList<USBDevice> devices(int count)
{
    QList<USBDevice> made;
    for (int i = 0; i < count; ++i)
        made.append(device(0x2000 + i, 0x0001, "Vendor", QStringLiteral("Device %1").arg(i)));
    return made;
}

QList<DeviceAppBinding> rules(int enabled, int disabled = 0)
{
    QList<DeviceAppBinding> made;
    for (int i = 0; i < disabled; ++i)
        made.append(rule(QStringLiteral("Off%1").arg(i), "Pad", 0x3000, i, false));
    for (int i = 0; i < enabled; ++i)
        made.append(rule(QStringLiteral("App%1").arg(i), "Pad", 0x3000, i));
    return made;
}

QStringList menuTexts(QMenu* menu)
{
    QStringList texts;
    for (QAction* action : menu->actions()) {
        if (!action->isSeparator())
            texts.append(action->text());
    }
    return texts;
}

} // namespace

class MenuBarTest : public QObject
{
    Q_OBJECT
public:
    static void initMain() { useTemporaryHome(); }

private Q_SLOTS:
    void init()
    {
        clearState();
        AppState::shared().setIsMonitoring(true);
    }

    void listsAreCutAtFiveDevicesAndThreeEnabledRules_data()
    {
        for (const char* column : {"deviceCount", "enabledRules", "disabledRules", "shownDevices",
                                   "moreDevices", "shownRules", "moreRules"})
            QTest::addColumn<int>(column);
        QTest::newRow("nothing") << 0 << 0 << 0 << 0 << 0 << 0 << 0;
        QTest::newRow("exactly five and three") << 5 << 3 << 0 << 5 << 0 << 3 << 0;
        QTest::newRow("one over each") << 6 << 4 << 0 << 5 << 1 << 3 << 1;
        QTest::newRow("seven devices") << 7 << 1 << 0 << 5 << 2 << 1 << 0;
        QTest::newRow("only disabled rules") << 1 << 0 << 10 << 1 << 0 << 0 << 0;
        QTest::newRow("disabled rules are not counted") << 0 << 4 << 6 << 0 << 0 << 3 << 1;
    }

    void listsAreCutAtFiveDevicesAndThreeEnabledRules()
    {
        QFETCH(int, deviceCount);
        QFETCH(int, enabledRules);
        QFETCH(int, disabledRules);
        AppState::shared().setConnectedDevices(devices(deviceCount));
        AppState::shared().setBindings(rules(enabledRules, disabledRules));
        MenuBarContent content(AppState::shared());
        QTEST(int(content.devices().size()), "shownDevices");
        QTEST(content.moreDevices(), "moreDevices");
        QTEST(int(content.rules().size()), "shownRules");
        QTEST(content.moreRules(), "moreRules");
        for (const QVariant& row : content.rules())
            QVERIFY(row.toMap().value("appName").toString().startsWith("App"));
    }

    void rowsShowKnownVendorNamesAndMatchRulesByIds()
    {
        USBDevice receiver = device(0x046D, 0xC52B, "Some Vendor Inc.", "Receiver");
        receiver.serialNumber = "OTHER-SERIAL";
        receiver.locationID = 0x01400000;
        AppState::shared().setConnectedDevices({receiver});
        AppState::shared().setBindings({rule("Solaar", "Receiver", 0x046D, 0xC52B),
                                        rule("Other", "Receiver", 0x046D, 0xC52C)});
        MenuBarContent content(AppState::shared());
        QCOMPARE(content.devices().at(0).toMap().value("detail").toString(),
                 "Logitech • 0x046D:0xC52B");
        QCOMPARE(content.rules().at(0).toMap().value("isDeviceConnected"), QVariant(true));
        QCOMPARE(content.rules().at(1).toMap().value("isDeviceConnected"), QVariant(false));
    }

    void trayMenuFollowsTheState()
    {
        TestShell shell;
        TrayIcon tray(shell.content, shell.commands);
        QCOMPARE(menuTexts(tray.menu()),
                 (QStringList{"Obrinta: USB monitoring on", "Connected Devices",
                              "No USB devices detected", "Active Rules", "No rules configured",
                              "Refresh", "Settings", "Quit"}));

        AppState::shared().setIsMonitoring(false);
        AppState::shared().setConnectedDevices(devices(6));
        AppState::shared().setBindings(rules(1, 1));
        QTRY_VERIFY_WITH_TIMEOUT(menuTexts(tray.menu()).contains("+1 more..."), 2000);
        const QStringList texts = menuTexts(tray.menu());
        QCOMPARE(texts.first(), "Obrinta: USB monitoring off");
        QVERIFY(texts.contains("Device 4 — Vendor • 0x2004:0x0001"));
        QVERIFY(!texts.contains("Device 5 — Vendor • 0x2005:0x0001"));
        QVERIFY(texts.contains("App0 — Pad"));
        QVERIFY(!texts.contains("Off0 — Pad"));

        for (QAction* action : tray.menu()->actions()) {
            if (action->text() == "Settings")
                action->trigger();
        }
        QCOMPARE(shell.openSettingsCount, 1);
    }

    void panelShowsTheContentAndFollowsMonitoring()
    {
        AppState::shared().setConnectedDevices(devices(7));
        AppState::shared().setBindings(rules(3));
        TestShell shell;
        shell.host.showPanel(QRect(100, 0, 20, 20));
        QQuickWindow* panel = shell.host.panelWindow();
        QVERIFY(QTest::qWaitForWindowExposed(panel));
        QCOMPARE(item(panel, "MoreDevicesText")->property("text").toString(), "+2 more...");
        QVERIFY(!item(panel, "MoreRulesText"));

        QQuickItem* dot = item(panel, "MonitoringStatusDot");
        QCOMPARE(dot->property("color").value<QColor>(), QColor(0x34, 0xC7, 0x59));
        AppState::shared().setIsMonitoring(false);
        QCOMPARE(dot->property("color").value<QColor>(), QColor(0xFF, 0x95, 0x00));

        QVERIFY(click(panel, "SettingsButton"));
        QCOMPARE(shell.openSettingsCount, 1);
        QVERIFY(!panel->isVisible());
    }
};

QTEST_MAIN(MenuBarTest)
#include "test_menubar.moc"
