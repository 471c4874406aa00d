#include "RulesTestSupport.h"
#include "UITestSupport.h"
#include "model/AppState.h"
#include "platform/NotificationCenter.h"

#include <QJsonObject>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

// The "USB Rules", "WiFi Rules" and "Devices" tabs of a real settings window over the shared
// state, with the rule files in temporary XDG folders.
class RuleListsTest : public QObject
{
    Q_OBJECT
public:
    static void initMain() { UITestSupport::useTemporaryHome(); }

private:
    std::unique_ptr<TestShell> m_shell;

    QQuickWindow* openTab(const QString& tabItem)
    {
        m_shell->host.showSettings();
        QQuickWindow* window = m_shell->host.settingsWindow();
        if (!window || !UITestSupport::click(window, tabItem))
            return nullptr;
        return window;
    }

    static QList<QQuickItem*> rows(QQuickWindow* window, const QString& rowName = "RuleRow")
    {
        return RulesTestSupport::items(window->contentItem(), rowName);
    }

    static QColor dotColor(QQuickItem* row)
    {
        return RulesTestSupport::items(row, QStringLiteral("RuleStatusDot"))
            .value(0)
            ->property("color")
            .value<QColor>();
    }

    static bool hasDisabledBadge(QQuickItem* row)
    {
        return !RulesTestSupport::items(row, QStringLiteral("DisabledBadge")).isEmpty();
    }

    static QString text(QQuickWindow* window, const QString& objectName)
    {
        QQuickItem* found = RulesTestSupport::item(window, objectName);
        return found ? found->property("text").toString() : QString();
    }

    static const inline QColor green{QStringLiteral("#34c759")};
    static const inline QColor orange{QStringLiteral("#ff9500")};
    static const inline QColor grey{QStringLiteral("#8e8e93")};

private Q_SLOTS:
    void init()
    {
        AppState& state = AppState::shared();
        // No rule is to act on this machine while the lists are tried.
        state.setIsMonitoring(false);
        state.setIsWiFiMonitoring(false);
        state.setConnectedDevices({});
        state.setBindings({});
        state.setWifiBindings({});
        state.setCurrentWiFiNetwork(std::nullopt);
        m_shell = std::make_unique<TestShell>();
    }

    void cleanup() { m_shell.reset(); }

    void usbRulesShowDotsBadgesAndSwitchesThatStore()
    {
        QQuickWindow* window = openTab(QStringLiteral("RulesTabItem"));
        QVERIFY(window);
        QVERIFY(RulesTestSupport::item(window, QStringLiteral("RulesEmptyState")));
        QCOMPARE(text(window, QStringLiteral("NoRulesConfiguredText")),
                 QStringLiteral("No Rules Configured"));
        QVERIFY(RulesTestSupport::item(window, QStringLiteral("AddFirstRuleButton")));

        AppState& state = AppState::shared();
        state.setConnectedDevices({UITestSupport::device(0x046D, 0xC52B, QStringLiteral("Logitech"),
                                                         QStringLiteral("Receiver"))});
        DeviceAppBinding launches = UITestSupport::rule(QStringLiteral("Mouse Tool"),
                                                        QStringLiteral("Receiver"), 0x046D, 0xC52B);
        launches.launchOnConnect = true;
        launches.killOnDisconnect = true;
        const DeviceAppBinding off = UITestSupport::rule(
            QStringLiteral("Off Tool"), QStringLiteral("Receiver"), 0x046D, 0xC52B, false);
        const DeviceAppBinding away =
            UITestSupport::rule(QStringLiteral("Away"), QStringLiteral("Card"), 0x05E3, 0x0751);
        state.setBindings({launches, off, away});

        QTRY_COMPARE_WITH_TIMEOUT(rows(window).size(), 3, 2000);
        QVERIFY(!RulesTestSupport::item(window, QStringLiteral("RulesEmptyState")));
        QVERIFY(RulesTestSupport::item(window, QStringLiteral("RulesList")));
        const QList<QQuickItem*> shown = rows(window);
        QCOMPARE(dotColor(shown[0]), green);
        QCOMPARE(dotColor(shown[1]), grey);
        QCOMPARE(dotColor(shown[2]), orange);
        QCOMPARE(QList<bool>({hasDisabledBadge(shown[0]), hasDisabledBadge(shown[1]),
                              hasDisabledBadge(shown[2])}),
                 QList<bool>({false, true, false}));
        QCOMPARE(RulesTestSupport::items(shown[0], QStringLiteral("RuleStatusDot")).size(), 1);

        // Switching the disabled rule on stores it and turns its dot green.
        QVERIFY(RulesTestSupport::click(
            RulesTestSupport::items(shown[1], QStringLiteral("RuleEnabledSwitch")).value(0)));
        QTRY_VERIFY_WITH_TIMEOUT(!hasDisabledBadge(rows(window)[1]), 2000);
        QCOMPARE(dotColor(rows(window)[1]), green);
        QVERIFY(state.bindings().at(1).isEnabled);
        QCOMPARE(state.bindings().at(1).id, off.id);
        QCOMPARE(RulesTestSupport::storedRules(QStringLiteral("bindings.json"))
                     .at(1)
                     .toObject()
                     .value(QStringLiteral("isEnabled")),
                 QJsonValue(true));

        // And off again, from the other state.
        QVERIFY(RulesTestSupport::click(
            RulesTestSupport::items(rows(window)[0], QStringLiteral("RuleEnabledSwitch"))
                .value(0)));
        QTRY_COMPARE_WITH_TIMEOUT(dotColor(rows(window)[0]), grey, 2000);
        QVERIFY(!state.bindings().at(0).isEnabled);
        QCOMPARE(RulesTestSupport::storedRules(QStringLiteral("bindings.json"))
                     .at(0)
                     .toObject()
                     .value(QStringLiteral("isEnabled")),
                 QJsonValue(false));
    }

    void deleteKeyAndContextMenuRemoveRowsUntilTheEmptyState()
    {
        AppState& state = AppState::shared();
        const DeviceAppBinding first =
            UITestSupport::rule(QStringLiteral("First"), QStringLiteral("Pad"), 1, 1);
        const DeviceAppBinding second =
            UITestSupport::rule(QStringLiteral("Second"), QStringLiteral("Pad"), 1, 2);
        const DeviceAppBinding third =
            UITestSupport::rule(QStringLiteral("Third"), QStringLiteral("Pad"), 1, 3);
        state.setBindings({first, second, third});
        QQuickWindow* window = openTab(QStringLiteral("RulesTabItem"));
        QVERIFY(window);
        QTRY_COMPARE_WITH_TIMEOUT(rows(window).size(), 3, 2000);

        // A click opens the rule; once the sheet is closed, Delete removes that row.
        QVERIFY(RulesTestSupport::click(rows(window)[1]));
        QQuickWindow* edit = RulesTestSupport::sheet(QStringLiteral("EditRuleSheet"));
        QVERIFY(edit);
        QTest::keyClick(edit, Qt::Key_Escape);
        QVERIFY(RulesTestSupport::sheetCloses(QStringLiteral("EditRuleSheet")));
        QCOMPARE(state.bindings().size(), 3);
        QTRY_VERIFY_WITH_TIMEOUT(window->isActive(), 2000);
        QVERIFY(RulesTestSupport::item(window, QStringLiteral("RulesList"))->hasActiveFocus());
        QTest::keyClick(window, Qt::Key_Delete);
        QCOMPARE(state.bindings().size(), 2);
        QCOMPARE(state.bindings().at(0).id, first.id);
        QCOMPARE(state.bindings().at(1).id, third.id);
        QCOMPARE(RulesTestSupport::storedRules(QStringLiteral("bindings.json")).size(), 2);
        QTRY_COMPARE_WITH_TIMEOUT(rows(window).size(), 2, 2000);

        // The context menu's "Delete" removes the row it was opened on.
        QVERIFY(RulesTestSupport::click(rows(window)[1], Qt::RightButton));
        QQuickItem* menuItem = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT(
            (menuItem = RulesTestSupport::item(window, QStringLiteral("DeleteRuleMenuItem"))),
            2000);
        QVERIFY(RulesTestSupport::click(menuItem));
        QCOMPARE(state.bindings().size(), 1);
        QCOMPARE(state.bindings().at(0).id, first.id);

        QVERIFY(RulesTestSupport::click(rows(window)[0], Qt::RightButton));
        QTRY_VERIFY_WITH_TIMEOUT(
            (menuItem = RulesTestSupport::item(window, QStringLiteral("DeleteRuleMenuItem"))),
            2000);
        QVERIFY(RulesTestSupport::click(menuItem));
        QVERIFY(state.bindings().isEmpty());
        QCOMPARE(RulesTestSupport::storedRules(QStringLiteral("bindings.json")), QJsonArray());
        QTRY_VERIFY_WITH_TIMEOUT(RulesTestSupport::item(window, QStringLiteral("RulesEmptyState")),
                                 2000);
    }

    void wifiRulesCompareTheNetworkExactly()
    {
        AppState& state = AppState::shared();
        WiFiAppBinding exact;
        exact.id = QUuid::createUuid();
        exact.ssid = QStringLiteral("Home");
        exact.appName = QStringLiteral("Music");
        WiFiAppBinding otherCase = exact;
        otherCase.id = QUuid::createUuid();
        otherCase.ssid = QStringLiteral("home");
        state.setWifiBindings({exact, otherCase});
        state.setCurrentWiFiNetwork(
            WiFiNetwork{QStringLiteral("Home"), QStringLiteral("Home"), {}});

        QQuickWindow* window = openTab(QStringLiteral("WiFiRulesTabItem"));
        QVERIFY(window);
        QTRY_COMPARE_WITH_TIMEOUT(rows(window).size(), 2, 2000);
        QCOMPARE(dotColor(rows(window)[0]), green);
        QCOMPARE(dotColor(rows(window)[1]), orange);
        QCOMPARE(text(window, QStringLiteral("CurrentNetworkChip")), QStringLiteral("Home"));

        state.setCurrentWiFiNetwork(std::nullopt);
        QTRY_COMPARE_WITH_TIMEOUT(dotColor(rows(window)[0]), orange, 2000);
        QCOMPARE(dotColor(rows(window)[1]), orange);
        QVERIFY(!RulesTestSupport::item(window, QStringLiteral("CurrentNetworkChip")));

        QVERIFY(RulesTestSupport::click(
            RulesTestSupport::items(rows(window)[1], QStringLiteral("RuleEnabledSwitch"))
                .value(0)));
        QTRY_COMPARE_WITH_TIMEOUT(dotColor(rows(window)[1]), grey, 2000);
        QCOMPARE(RulesTestSupport::storedRules(QStringLiteral("wifi-bindings.json"))
                     .at(1)
                     .toObject()
                     .value(QStringLiteral("isEnabled")),
                 QJsonValue(false));

        window->requestActivate();
        QVERIFY(RulesTestSupport::click(rows(window)[0], Qt::RightButton));
        QQuickItem* menuItem = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT(
            (menuItem = RulesTestSupport::item(window, QStringLiteral("DeleteRuleMenuItem"))),
            2000);
        QVERIFY(RulesTestSupport::click(menuItem));
        QCOMPARE(state.wifiBindings().size(), 1);
        QCOMPARE(state.wifiBindings().at(0).id, otherCase.id);
        QCOMPARE(RulesTestSupport::storedRules(QStringLiteral("wifi-bindings.json")).size(), 1);

        state.setWifiBindings({});
        QTRY_VERIFY_WITH_TIMEOUT(
            RulesTestSupport::item(window, QStringLiteral("WiFiRulesEmptyState")), 2000);
        QCOMPARE(text(window, QStringLiteral("NoWiFiRulesConfiguredText")),
                 QStringLiteral("No WiFi Rules Configured"));
    }

    void devicesShowVendorSymbolsIdsAndSerials()
    {
        QQuickWindow* window = openTab(QStringLiteral("DevicesTabItem"));
        QVERIFY(window);
        QVERIFY(RulesTestSupport::item(window, QStringLiteral("DevicesEmptyState")));
        QCOMPARE(text(window, QStringLiteral("NoDevicesText")),
                 QStringLiteral("No USB Devices Detected"));

        USBDevice mouse = UITestSupport::device(0x9999, 0x0001, QStringLiteral("LOGITECH Europe"),
                                                QStringLiteral("Mouse"));
        mouse.serialNumber = QString();
        USBDevice key = UITestSupport::device(0x9998, 0x0002, QStringLiteral("apple and yubico"),
                                              QStringLiteral("Key"));
        key.serialNumber = QStringLiteral("12345");
        AppState::shared().setConnectedDevices({mouse, key});
        QTRY_COMPARE_WITH_TIMEOUT(rows(window, QStringLiteral("DeviceRow")).size(), 2, 2000);
        const QList<QQuickItem*> shown = rows(window, QStringLiteral("DeviceRow"));
        QCOMPARE(shown[0]->property("symbol").toString(), QStringLiteral("computermouse"));
        QCOMPARE(shown[0]->property("idsText").toString(), QStringLiteral("0x9999:0x0001"));
        QCOMPARE(shown[0]->property("serialText").toString(), QString());
        QCOMPARE(shown[1]->property("symbol").toString(), QStringLiteral("key.fill"));
        QCOMPARE(shown[1]->property("vendorText").toString(), QStringLiteral("apple and yubico"));
        QCOMPARE(shown[1]->property("serialText").toString(), QStringLiteral("12345"));
    }

    void refreshPressedTwiceWithinHalfASecondScansOnce()
    {
        QQuickWindow* window = openTab(QStringLiteral("DevicesTabItem"));
        QVERIFY(window);
        AppState::shared().setConnectedDevices(
            {UITestSupport::device(1, 2, QStringLiteral("Vendor"), QStringLiteral("Pad"))});
        QSignalSpy posted(&NotificationCenter::defaultCenter(), &NotificationCenter::posted);
        QQuickItem* refresh =
            RulesTestSupport::item(window, QStringLiteral("RefreshDevicesButton"));
        QVERIFY(RulesTestSupport::click(refresh));
        QVERIFY(!refresh->isEnabled());
        QVERIFY(!RulesTestSupport::click(refresh));
        QTRY_VERIFY_WITH_TIMEOUT(refresh->isEnabled(), 2000);
        QVERIFY(posted.size() <= 1);
        if (!posted.isEmpty())
            QCOMPARE(posted.first().first().toString(), QStringLiteral("usbDevicesChanged"));
    }
};

QTEST_MAIN(RuleListsTest)
#include "test_rulelists.moc"
