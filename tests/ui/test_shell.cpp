#include "LogCapture.h"
#include "UITestSupport.h"
#include "model/AppState.h"
#include "model/PersistenceManager.h"
#include "platform/UserDefaults.h"
#include "ui/SymbolIcons.h"
#include "ui/TrayIcon.h"

#include <QAction>
#include <QDirIterator>
#include <QIcon>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace UITestSupport;

namespace {

QJsonValue stored(const QString& key)
{
    QFile file(UserDefaults::standard().filePath());
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll())[key]
                                          : QJsonValue();
}

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

// Pixels that are not fully transparent.
int paintedPixels(const QPixmap& pixmap)
{
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    int painted = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            painted += qAlpha(image.pixel(x, y)) > 0;
    }
    return painted;
}

// Every symbol name that the windows ask for.
QSet<QString> symbolsUsedByTheWindows()
{
    static const QRegularExpression patterns[] = {
        QRegularExpression("image://symbol/([A-Za-z0-9.]+)\""),
        QRegularExpression("(?<![.\\w])(?:name|symbol): \"([A-Za-z0-9.]+)\""),
        QRegularExpression("\\? \"([A-Za-z0-9.]+)\" : \"([A-Za-z0-9.]+)\"")};
    QSet<QString> names;
    QDirIterator files(":/obrinta/qml", {"*.qml"});
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        for (const QRegularExpression& pattern : patterns) {
            for (const QRegularExpressionMatch& match : pattern.globalMatch(text)) {
                for (int group = 1; group <= match.lastCapturedIndex(); ++group)
                    names.insert(match.captured(group));
            }
        }
    }
    return names;
}

} // namespace

// The tray menu, its panel and the settings window over the shared state, and the symbols they
// draw.
class ShellTest : public QObject
{
    Q_OBJECT
public:
    static void initMain() { useTemporaryHome(); }

private Q_SLOTS:
    void initTestCase() { QIcon::setThemeName("no-such-theme"); }

    void init()
    {
        QFile::remove(UserDefaults::standard().filePath());
        clearState();
        AppState::shared().setIsMonitoring(true);
        AppState::shared().setIsWiFiMonitoring(true);
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
        QCOMPARE(text(panel, "MoreDevicesText"), "+2 more...");
        QVERIFY(!item(panel, "MoreRulesText"));

        QQuickItem* dot = item(panel, "MonitoringStatusDot");
        QCOMPARE(dot->property("color").value<QColor>(), QColor(0x34, 0xC7, 0x59));
        AppState::shared().setIsMonitoring(false);
        QCOMPARE(dot->property("color").value<QColor>(), QColor(0xFF, 0x95, 0x00));

        QVERIFY(click(panel, "SettingsButton"));
        QCOMPARE(shell.openSettingsCount, 1);
        QVERIFY(!panel->isVisible());
    }

    void eachTabButtonShowsItsOwnContent()
    {
        TestShell shell;
        shell.host.showSettings();
        QQuickWindow* window = shell.host.settingsWindow();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        // The first tab is shown on opening.
        QVERIFY(item(window, "RulesTab") && !item(window, "GeneralTab"));
        const QStringList tabs{"RulesTab", "WiFiRulesTab", "DevicesTab", "GeneralTab"};
        for (qsizetype i = tabs.size() - 1; i >= 0; --i) {
            QVERIFY(click(window, tabs[i] + "Item"));
            for (qsizetype j = 0; j < tabs.size(); ++j)
                QCOMPARE(item(window, tabs[j]) != nullptr, i == j);
        }
    }

    void interfaceTestsSettingsCommandAsksForTheSettingsWindow()
    {
        TestShell shell;
        shell.host.showSettings();
        QQuickWindow* window = shell.host.settingsWindow();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        window->requestActivate();
        QTest::keyClick(window, Qt::Key_Comma, Qt::ControlModifier);
        QTRY_COMPARE_WITH_TIMEOUT(shell.openSettingsCount, 1, 2000);
    }

    void reopeningShowsTheSameWindowUntilTheEngineIsReleased()
    {
        TestShell shell;
        shell.host.setReleaseDelay(200);
        QVERIFY(!shell.host.hasEngine());
        shell.host.showSettings();
        QPointer<QQuickWindow> first = shell.host.settingsWindow();
        QVERIFY(QTest::qWaitForWindowExposed(first));
        QSignalSpy hidden(&shell.host, &WindowHost::settingsWindowHidden);
        first->close();
        QCOMPARE(hidden.count(), 1);
        shell.host.showSettings();
        QCOMPARE(shell.host.settingsWindow(), first.data());
        QVERIFY(first->isVisible());

        first->close();
        QTRY_VERIFY_WITH_TIMEOUT(!shell.host.hasEngine(), 5000);
        QVERIFY(first.isNull());
        shell.host.showSettings();
        QVERIFY(shell.host.settingsWindow());
        QVERIFY(shell.host.hasEngine());
    }

    void keptWindowsOutliveTheReleaseDelay()
    {
        TestShell shell;
        shell.host.setReleaseDelay(50);
        shell.host.keepWindows();
        shell.host.showSettings();
        QPointer<QQuickWindow> first = shell.host.settingsWindow();
        QVERIFY(QTest::qWaitForWindowExposed(first));
        first->close();
        QTest::qWait(300);
        QVERIFY(shell.host.hasEngine());
        shell.host.showSettings();
        QCOMPARE(shell.host.settingsWindow(), first.data());
    }

    void generalTabShowsTheStoredSwitchesWithoutChangingThem()
    {
        PersistenceManager::shared().setLaunchAtLogin(true);
        PersistenceManager::shared().setShowNotifications(false);
        PersistenceManager::shared().setWifiMonitoringEnabled(false);
        TestShell shell;
        QQuickWindow* window = shell.settings("GeneralTabItem");
        QVERIFY(window);
        QVERIFY(isOn(window, "LaunchAtLoginToggle"));
        QVERIFY(!isOn(window, "ShowNotificationsToggle"));
        QVERIFY(isOn(window, "MonitoringEnabledToggle"));
        QVERIFY(!isOn(window, "WiFiMonitoringEnabledToggle"));
        // Showing the stored values is no change: nothing is written or registered.
        QVERIFY(shell.loginItem.requests.isEmpty());
        QVERIFY(AppState::shared().isWiFiMonitoring());
    }

    void monitoringTogglesStoreAtOnceAndReachTheStateOnTheNextTurn()
    {
        TestShell shell;
        QQuickWindow* window = shell.settings("GeneralTabItem");
        QVERIFY(window);
        // The state follows after the handler has returned.
        shell.general.setMonitoringEnabled(false);
        QVERIFY(AppState::shared().isMonitoring());
        QTRY_VERIFY_WITH_TIMEOUT(!AppState::shared().isMonitoring(), 2000);
        shell.general.setMonitoringEnabled(true);
        QTRY_VERIFY_WITH_TIMEOUT(AppState::shared().isMonitoring(), 2000);

        QVERIFY(click(window, "MonitoringEnabledToggle"));
        QCOMPARE(stored("monitoringEnabled"), QJsonValue(false));
        QTRY_VERIFY_WITH_TIMEOUT(!AppState::shared().isMonitoring(), 2000);
        QVERIFY(click(window, "WiFiMonitoringEnabledToggle"));
        QCOMPARE(stored("wifiMonitoringEnabled"), QJsonValue(false));
        QTRY_VERIFY_WITH_TIMEOUT(!AppState::shared().isWiFiMonitoring(), 2000);
        QVERIFY(!AppState::shared().isMonitoring());
        QVERIFY(click(window, "MonitoringEnabledToggle"));
        QCOMPARE(stored("monitoringEnabled"), QJsonValue(true));
        QTRY_VERIFY_WITH_TIMEOUT(AppState::shared().isMonitoring(), 2000);
        QVERIFY(!AppState::shared().isWiFiMonitoring());

        QVERIFY(click(window, "ShowNotificationsToggle"));
        QCOMPARE(stored("showNotifications"), QJsonValue(false));
        QVERIFY(!PersistenceManager::shared().showNotifications());
    }

    void refusedLoginItemKeepsTheToggleAndTheStoredFlagOn()
    {
        LogCapture log;
        TestShell shell;
        shell.loginItem.error = "Permission denied";
        shell.host.setReleaseDelay(100);
        QQuickWindow* window = shell.settings("GeneralTabItem");
        QVERIFY(window);
        QVERIFY(click(window, "LaunchAtLoginToggle"));
        QCOMPARE(shell.loginItem.requests, QList<bool>{true});
        QCOMPARE(log.take(), QStringList{"Failed to update login item: Permission denied"});
        QVERIFY(isOn(window, "LaunchAtLoginToggle"));
        QCOMPARE(stored("launchAtLogin"), QJsonValue(true));

        // A new window reads the stored flag, not the registration.
        window->close();
        QTRY_VERIFY_WITH_TIMEOUT(!shell.host.hasEngine(), 5000);
        window = shell.settings("GeneralTabItem");
        QVERIFY(window);
        QVERIFY(isOn(window, "LaunchAtLoginToggle"));

        shell.loginItem.error.reset();
        QVERIFY(click(window, "LaunchAtLoginToggle"));
        QCOMPARE(shell.loginItem.requests, (QList<bool>{true, false}));
        QVERIFY(log.take().isEmpty());
        QCOMPARE(stored("launchAtLogin"), QJsonValue(false));
    }

    void everySymbolShowsWithoutAnIconTheme()
    {
        const QSet<QString> used = symbolsUsedByTheWindows();
        QVERIFY(used.contains("figure.run"));
        QVERIFY(used.contains("checkmark.circle.fill"));
        for (const QString& name : used) {
            QVERIFY2(!SymbolIcons::bundledPath(name).isEmpty(), qPrintable(name));
            QVERIFY2(paintedPixels(SymbolIcons::pixmap(name, QSize(16, 16), QColor())) > 8,
                     qPrintable(name));
        }
        QVERIFY(paintedPixels(SymbolIcons::applicationIcon().pixmap(22, 22)) > 50);
        QDirIterator bundled(":/obrinta/icons");
        while (bundled.hasNext()) {
            const QString name = bundled.next().section('/', -1).chopped(4);
            QVERIFY2(!SymbolIcons::icon(name).isNull(), qPrintable(name));
        }
    }

    void tintFillsTheDrawing()
    {
        const QImage image =
            SymbolIcons::pixmap("stop.fill", QSize(16, 16), QColor(0x34, 0xC7, 0x59)).toImage();
        QCOMPARE(QColor(image.pixel(8, 8)), QColor(0x34, 0xC7, 0x59));
        QVERIFY(paintedPixels(SymbolIcons::pixmap("3.circle.fill", QSize(16, 16), Qt::blue)) > 50);
        QVERIFY(SymbolIcons::pixmap("no.such.symbol", QSize(16, 16), QColor()).isNull());
    }
};

QTEST_MAIN(ShellTest)
#include "test_shell.moc"
