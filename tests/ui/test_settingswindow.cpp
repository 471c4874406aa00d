#include "LogCapture.h"
#include "UITestSupport.h"
#include "model/AppState.h"
#include "model/PersistenceManager.h"
#include "platform/UserDefaults.h"

#include <QAccessible>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

using namespace UITestSupport;

class SettingsWindowTest : public QObject
{
    Q_OBJECT
public:
    static void initMain() { useTemporaryHome(); }

private:
    static QJsonObject storedSettings()
    {
        QFile file(UserDefaults::standard().filePath());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QJsonDocument::fromJson(file.readAll()).object();
    }

    static QQuickWindow* openGeneralTab(TestShell& shell)
    {
        shell.host.showSettings();
        QQuickWindow* window = shell.host.settingsWindow();
        if (!window || !click(window, QStringLiteral("GeneralTabItem")))
            return nullptr;
        return window;
    }

    static bool isOn(QQuickWindow* window, const QString& toggle)
    {
        QQuickItem* found = item(window, toggle);
        return found && found->property("checked").toBool();
    }

private Q_SLOTS:
    void init()
    {
        QFile::remove(UserDefaults::standard().filePath());
        AppState::shared().setIsMonitoring(true);
        AppState::shared().setIsWiFiMonitoring(true);
    }

    void windowHasItsTitleSizeAndTabsInOrder()
    {
        TestShell shell;
        shell.host.showSettings();
        QQuickWindow* window = shell.host.settingsWindow();
        QVERIFY(window);
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QCOMPARE(window->title(), QStringLiteral("Settings"));
        QCOMPARE(window->size(), QSize(650, 500));
        QCOMPARE(window->minimumSize(), QSize(600, 450));
        const QStringList identifiers{
            QStringLiteral("SettingsView"),     QStringLiteral("SettingsTabView"),
            QStringLiteral("RulesTabItem"),     QStringLiteral("RulesTab"),
            QStringLiteral("WiFiRulesTabItem"), QStringLiteral("WiFiRulesTab"),
            QStringLiteral("DevicesTabItem"),   QStringLiteral("DevicesTab"),
            QStringLiteral("GeneralTabItem"),   QStringLiteral("GeneralTab")};
        for (const QString& id : identifiers) {
            QQuickItem* found = item(window, id);
            QVERIFY2(found, qPrintable(id));
            QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(found);
            QVERIFY2(accessible, qPrintable(id));
            QCOMPARE(accessible->text(QAccessible::Name), id);
        }

        const QList<std::pair<QString, QString>> tabs{
            {QStringLiteral("RulesTabItem"), QStringLiteral("USB Rules")},
            {QStringLiteral("WiFiRulesTabItem"), QStringLiteral("WiFi Rules")},
            {QStringLiteral("DevicesTabItem"), QStringLiteral("Devices")},
            {QStringLiteral("GeneralTabItem"), QStringLiteral("General")}};
        const QStringList contents{QStringLiteral("RulesTab"), QStringLiteral("WiFiRulesTab"),
                                   QStringLiteral("DevicesTab"), QStringLiteral("GeneralTab")};
        qreal previousX = -1;
        for (const auto& [id, label] : tabs) {
            QQuickItem* button = item(window, id);
            QVERIFY2(button, qPrintable(id));
            QCOMPARE(button->property("text").toString(), label);
            const qreal x = button->mapToScene(QPointF()).x();
            QVERIFY2(x > previousX, qPrintable(id + QStringLiteral(" is out of order")));
            previousX = x;
        }
        // The first tab is shown on opening; each tab button shows its own content.
        QVERIFY(item(window, QStringLiteral("RulesTab"))->isVisible());
        for (qsizetype i = tabs.size() - 1; i >= 0; --i) {
            QVERIFY(click(window, tabs.at(i).first));
            for (qsizetype j = 0; j < contents.size(); ++j)
                QCOMPARE(item(window, contents.at(j))->isVisible(), i == j);
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

    void generalTabShowsTheStoredSwitchesAndVersion()
    {
        PersistenceManager::shared().setLaunchAtLogin(true);
        PersistenceManager::shared().setShowNotifications(false);
        PersistenceManager::shared().setWifiMonitoringEnabled(false);
        TestShell shell;
        QQuickWindow* window = openGeneralTab(shell);
        QVERIFY(window);
        QVERIFY(isOn(window, QStringLiteral("LaunchAtLoginToggle")));
        QVERIFY(!isOn(window, QStringLiteral("ShowNotificationsToggle")));
        QVERIFY(isOn(window, QStringLiteral("MonitoringEnabledToggle")));
        QVERIFY(!isOn(window, QStringLiteral("WiFiMonitoringEnabledToggle")));
        QCOMPARE(item(window, QStringLiteral("VersionText"))->property("text").toString(),
                 QStringLiteral(OBRINTA_VERSION));
        QCOMPARE(item(window, QStringLiteral("BuildText"))->property("text").toString(),
                 QStringLiteral(OBRINTA_BUILD));
        // Showing the stored values is no change: nothing is written or registered.
        QVERIFY(shell.loginItem.requests.isEmpty());
        QVERIFY(AppState::shared().isWiFiMonitoring());
    }

    void monitoringTogglesStoreAtOnceAndReachTheStateOnTheNextTurn()
    {
        TestShell shell;
        QQuickWindow* window = openGeneralTab(shell);
        QVERIFY(window);

        // The state follows after the handler has returned.
        shell.general.setMonitoringEnabled(false);
        QVERIFY(AppState::shared().isMonitoring());
        QTRY_VERIFY_WITH_TIMEOUT(!AppState::shared().isMonitoring(), 2000);
        shell.general.setMonitoringEnabled(true);
        QTRY_VERIFY_WITH_TIMEOUT(AppState::shared().isMonitoring(), 2000);

        QVERIFY(click(window, QStringLiteral("MonitoringEnabledToggle")));
        QCOMPARE(storedSettings().value(QStringLiteral("monitoringEnabled")), QJsonValue(false));
        QTRY_VERIFY_WITH_TIMEOUT(!AppState::shared().isMonitoring(), 2000);

        QVERIFY(click(window, QStringLiteral("WiFiMonitoringEnabledToggle")));
        QCOMPARE(storedSettings().value(QStringLiteral("wifiMonitoringEnabled")),
                 QJsonValue(false));
        QTRY_VERIFY_WITH_TIMEOUT(!AppState::shared().isWiFiMonitoring(), 2000);
        QVERIFY(!AppState::shared().isMonitoring());

        QVERIFY(click(window, QStringLiteral("MonitoringEnabledToggle")));
        QCOMPARE(storedSettings().value(QStringLiteral("monitoringEnabled")), QJsonValue(true));
        QTRY_VERIFY_WITH_TIMEOUT(AppState::shared().isMonitoring(), 2000);
        QVERIFY(!AppState::shared().isWiFiMonitoring());

        QVERIFY(click(window, QStringLiteral("ShowNotificationsToggle")));
        QCOMPARE(storedSettings().value(QStringLiteral("showNotifications")), QJsonValue(false));
        QVERIFY(!PersistenceManager::shared().showNotifications());
    }

    void refusedLoginItemKeepsTheToggleAndTheStoredFlagOn()
    {
        LogCapture log;
        TestShell shell;
        shell.loginItem.error = QStringLiteral("Permission denied");
        shell.host.setReleaseDelay(100);
        QQuickWindow* window = openGeneralTab(shell);
        QVERIFY(window);

        QVERIFY(click(window, QStringLiteral("LaunchAtLoginToggle")));
        QCOMPARE(shell.loginItem.requests, QList<bool>{true});
        QCOMPARE(log.take(),
                 QStringList{QStringLiteral("Failed to update login item: Permission denied")});
        QVERIFY(isOn(window, QStringLiteral("LaunchAtLoginToggle")));
        QCOMPARE(storedSettings().value(QStringLiteral("launchAtLogin")), QJsonValue(true));

        // A new window reads the stored flag, not the registration.
        window->close();
        QTRY_VERIFY_WITH_TIMEOUT(!shell.host.hasEngine(), 5000);
        window = openGeneralTab(shell);
        QVERIFY(window);
        QVERIFY(isOn(window, QStringLiteral("LaunchAtLoginToggle")));

        shell.loginItem.error.reset();
        QVERIFY(click(window, QStringLiteral("LaunchAtLoginToggle")));
        QCOMPARE(shell.loginItem.requests, (QList<bool>{true, false}));
        QVERIFY(log.take().isEmpty());
        QCOMPARE(storedSettings().value(QStringLiteral("launchAtLogin")), QJsonValue(false));
    }
};

QTEST_MAIN(SettingsWindowTest)
#include "test_settingswindow.moc"
