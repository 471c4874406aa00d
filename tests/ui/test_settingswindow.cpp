#include "LogCapture.h"
#include "UITestSupport.h"
#include "model/AppState.h"
#include "model/PersistenceManager.h"
#include "platform/UserDefaults.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickItem>
#include <QQuickWindow>
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

bool isOn(QQuickWindow* window, const QString& toggle)
{
    QQuickItem* found = item(window, toggle);
    return found && found->property("checked").toBool();
}

} // namespace

class SettingsWindowTest : public QObject
{
    Q_OBJECT
public:
    static void initMain() { useTemporaryHome(); }

private Q_SLOTS:
    void init()
    {
        QFile::remove(UserDefaults::standard().filePath());
        AppState::shared().setIsMonitoring(true);
        AppState::shared().setIsWiFiMonitoring(true);
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
};

QTEST_MAIN(SettingsWindowTest)
#include "test_settingswindow.moc"
