#include "UITestSupport.h"
#include "model/AppState.h"
#include "platform/NotificationCenter.h"
#include "ui/AddRuleEditor.h"
#include "ui/ExistingRuleEditor.h"

#include <QJsonObject>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace UITestSupport;

namespace {

const QColor green("#34c759");
const QColor orange("#ff9500");
const QColor grey("#8e8e93");

QList<QQuickItem*> rows(QQuickWindow* window, const QString& name = "RuleRow")
{
    return items(window->contentItem(), name);
}

bool hasRows(QQuickWindow* window, int count, const QString& name = "RuleRow")
{
    return QTest::qWaitFor([&] { return rows(window, name).size() == count; }, 2000);
}

QColor dot(QQuickItem* row)
{
    return items(row, "RuleStatusDot").value(0)->property("color").value<QColor>();
}

bool hasBadge(QQuickItem* row)
{
    return !items(row, "DisabledBadge").isEmpty();
}

bool toggleRow(QQuickItem* row)
{
    return click(items(row, "RuleEnabledSwitch").value(0));
}

bool deleteByMenu(QQuickWindow* window, int row)
{
    window->requestActivate();
    QQuickItem* menuItem = nullptr;
    return click(rows(window).value(row), Qt::RightButton) &&
           QTest::qWaitFor([&] { return (menuItem = item(window, "DeleteRuleMenuItem")); }, 2000) &&
           click(menuItem);
}

QStringList rowTexts(QQuickWindow* window, const QString& rowName, const char* property)
{
    QStringList texts;
    for (QQuickItem* row : rows(window, rowName))
        texts.append(row->property(property).toString());
    return texts;
}

bool waitForApps(QQuickWindow* window, int count)
{
    return QTest::qWaitFor([&] { return rows(window, "AppSelectionRow").size() == count; }, 5000);
}

// The shortcuts the section's picker offers to add.
QStringList offered(QQuickItem* section)
{
    QQuickItem* picker = items(section, "ShortcutPicker").value(0);
    QStringList names;
    for (int i = 1; picker && i < picker->property("count").toInt(); ++i) {
        QString name;
        QMetaObject::invokeMethod(picker, "textAt", Q_RETURN_ARG(QString, name), Q_ARG(int, i));
        names.append(name);
    }
    return names;
}

bool addShortcut(QQuickItem* section, const QString& name)
{
    QQuickItem* picker = items(section, "ShortcutPicker").value(0);
    const int index = offered(section).indexOf(name);
    if (!picker || index < 0)
        return false;
    picker->setProperty("currentIndex", index + 1);
    return click(items(section, "AddShortcutButton").value(0));
}

// A shortcut section, once discovery has answered and its picker is there.
QQuickItem* section(QQuickWindow* window, const QString& name)
{
    QQuickItem* found = item(window, name);
    return QTest::qWaitFor([&] { return !items(found, "ShortcutPicker").isEmpty(); }, 5000)
               ? found
               : nullptr;
}

QJsonObject storedRule(const QString& file, int index)
{
    return storedRules(file).at(index).toObject();
}

WiFiAppBinding wifiRule(const QString& ssid, const QString& appName)
{
    WiFiAppBinding rule;
    rule.id = QUuid::createUuid();
    rule.ssid = ssid;
    rule.appName = appName;
    rule.appBundleIdentifier = "org.example." + appName;
    return rule;
}

} // namespace

// The rule tabs and rule sheets as a person uses them, in a real settings window over the shared
// state: what they show, what they enable, and what they leave in the stored rule files.
class RulesTest : public QObject
{
    Q_OBJECT
public:
    static void initMain() { useTemporaryHome(); }

private:
    std::unique_ptr<TestShell> m_shell;
    QString m_editorPath;
    QTemporaryDir m_scratch;

    QQuickWindow* openSheet(const QString& tabItem, const QString& button, const QString& name)
    {
        QQuickWindow* window = m_shell->settings(tabItem);
        return window && click(window, button) ? sheet(name) : nullptr;
    }

    QQuickWindow* openFirstRule(const QString& tabItem, const QString& name)
    {
        QQuickWindow* window = m_shell->settings(tabItem);
        return window && hasRows(window, 1) && click(rows(window).first()) ? sheet(name) : nullptr;
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_editorPath = writeDesktopEntry("org.example.Editor", "Text Editor");
        writeDesktopEntry("org.example.Paint", "Paint");
        for (const char* name : {"Dim Lights", "Mute", "Backup"})
            writeShortcut(name);
    }

    void init()
    {
        clearState();
        m_shell = std::make_unique<TestShell>();
    }

    void cleanup() { m_shell.reset(); }

    void usbRuleRowsShowTheirStateAndTheirSwitchesStore()
    {
        QQuickWindow* window = m_shell->settings("RulesTabItem");
        QVERIFY(window);
        QVERIFY(item(window, "RulesEmptyState"));
        AppState& state = AppState::shared();
        state.setConnectedDevices({device(0x046D, 0xC52B, "Logitech", "Receiver")});
        const DeviceAppBinding off = rule("Off Tool", "Receiver", 0x046D, 0xC52B, false);
        state.setBindings({rule("Mouse Tool", "Receiver", 0x046D, 0xC52B), off,
                           rule("Away", "Card", 0x05E3, 0x0751)});
        QVERIFY(hasRows(window, 3));
        QVERIFY(!item(window, "RulesEmptyState"));
        QList<QQuickItem*> shown = rows(window);
        QCOMPARE((QList<QColor>{dot(shown[0]), dot(shown[1]), dot(shown[2])}),
                 (QList<QColor>{green, grey, orange}));
        QCOMPARE((QList<bool>{hasBadge(shown[0]), hasBadge(shown[1]), hasBadge(shown[2])}),
                 (QList<bool>{false, true, false}));

        // Switching the disabled rule on stores it and turns its dot green; and off again.
        QVERIFY(toggleRow(shown[1]));
        QTRY_VERIFY_WITH_TIMEOUT(!hasBadge(rows(window)[1]), 2000);
        QCOMPARE(dot(rows(window)[1]), green);
        QCOMPARE(state.bindings().at(1).id, off.id);
        QCOMPARE(storedRule("bindings.json", 1).value("isEnabled"), QJsonValue(true));
        QVERIFY(toggleRow(rows(window)[0]));
        QTRY_COMPARE_WITH_TIMEOUT(dot(rows(window)[0]), grey, 2000);
        QCOMPARE(storedRule("bindings.json", 0).value("isEnabled"), QJsonValue(false));
    }

    void deleteKeyAndContextMenuRemoveRulesUntilTheEmptyState()
    {
        AppState& state = AppState::shared();
        const DeviceAppBinding first = rule("First", "Pad", 1, 1);
        const DeviceAppBinding third = rule("Third", "Pad", 1, 3);
        state.setBindings({first, rule("Second", "Pad", 1, 2), third});
        QQuickWindow* window = m_shell->settings("RulesTabItem");
        QVERIFY(window && hasRows(window, 3));

        // A click opens the rule; once the sheet is closed, Delete removes that row.
        QVERIFY(click(rows(window)[1]));
        QQuickWindow* edit = sheet("EditRuleSheet");
        QVERIFY(edit);
        QTest::keyClick(edit, Qt::Key_Escape);
        QVERIFY(sheetCloses("EditRuleSheet"));
        QCOMPARE(state.bindings().size(), 3);
        QTRY_VERIFY_WITH_TIMEOUT(window->isActive(), 2000);
        QVERIFY(item(window, "RulesList")->hasActiveFocus());
        QTest::keyClick(window, Qt::Key_Delete);
        QCOMPARE(state.bindings().size(), 2);
        QCOMPARE(state.bindings().at(0).id, first.id);
        QCOMPARE(state.bindings().at(1).id, third.id);
        QCOMPARE(storedRules("bindings.json").size(), 2);

        // The context menu's "Delete" removes the row it was opened on.
        QVERIFY(hasRows(window, 2));
        QVERIFY(deleteByMenu(window, 1));
        QCOMPARE(state.bindings().size(), 1);
        QCOMPARE(state.bindings().at(0).id, first.id);
        QVERIFY(deleteByMenu(window, 0));
        QVERIFY(state.bindings().isEmpty());
        QCOMPARE(storedRules("bindings.json"), QJsonArray());
        QTRY_VERIFY_WITH_TIMEOUT(item(window, "RulesEmptyState"), 2000);
    }

    void wifiRuleRowsCompareTheNetworkExactly()
    {
        AppState& state = AppState::shared();
        const WiFiAppBinding exact = wifiRule("Home", "Music");
        const WiFiAppBinding otherCase = wifiRule("home", "Music");
        state.setWifiBindings({exact, otherCase});
        state.setCurrentWiFiNetwork(WiFiNetwork{"Home", "Home", {}});
        QQuickWindow* window = m_shell->settings("WiFiRulesTabItem");
        QVERIFY(window && hasRows(window, 2));
        QCOMPARE(dot(rows(window)[0]), green);
        QCOMPARE(dot(rows(window)[1]), orange);
        QCOMPARE(text(window, "CurrentNetworkChip"), "Home");

        state.setCurrentWiFiNetwork(std::nullopt);
        QTRY_COMPARE_WITH_TIMEOUT(dot(rows(window)[0]), orange, 2000);
        QVERIFY(!item(window, "CurrentNetworkChip"));

        QVERIFY(toggleRow(rows(window)[1]));
        QTRY_COMPARE_WITH_TIMEOUT(dot(rows(window)[1]), grey, 2000);
        QCOMPARE(storedRule("wifi-bindings.json", 1).value("isEnabled"), QJsonValue(false));
        QVERIFY(deleteByMenu(window, 0));
        QCOMPARE(state.wifiBindings().size(), 1);
        QCOMPARE(state.wifiBindings().at(0).id, otherCase.id);
        QCOMPARE(storedRules("wifi-bindings.json").size(), 1);
        state.setWifiBindings({});
        QTRY_VERIFY_WITH_TIMEOUT(item(window, "WiFiRulesEmptyState"), 2000);
    }

    void devicesShowVendorSymbolsAndRefreshPressedTwiceScansOnce()
    {
        QQuickWindow* window = m_shell->settings("DevicesTabItem");
        QVERIFY(window);
        QVERIFY(item(window, "DevicesEmptyState"));
        USBDevice key = device(0x9998, 0x0002, "apple and yubico", "Key");
        key.serialNumber = "12345";
        AppState::shared().setConnectedDevices(
            {device(0x9999, 0x0001, "LOGITECH Europe", "Mouse"), key});
        QVERIFY(hasRows(window, 2, "DeviceRow"));
        const QList<QQuickItem*> shown = rows(window, "DeviceRow");
        QCOMPARE(shown[0]->property("symbol").toString(), "computermouse");
        QCOMPARE(shown[0]->property("idsText").toString(), "0x9999:0x0001");
        QCOMPARE(shown[0]->property("serialText").toString(), QString());
        QCOMPARE(shown[1]->property("symbol").toString(), "key.fill");
        QCOMPARE(shown[1]->property("serialText").toString(), "12345");

        QSignalSpy posted(&NotificationCenter::defaultCenter(), &NotificationCenter::posted);
        QQuickItem* refresh = item(window, "RefreshDevicesButton");
        QVERIFY(click(refresh));
        QVERIFY(!refresh->isEnabled());
        QVERIFY(!click(refresh));
        QTRY_VERIFY_WITH_TIMEOUT(refresh->isEnabled(), 2000);
        QVERIFY(posted.size() <= 1);
        if (!posted.isEmpty())
            QCOMPARE(posted.first().first().toString(), "usbDevicesChanged");
    }

    void addsAUsbRuleFromADeviceAndADesktopEntry()
    {
        const USBDevice pad = device(0x1234, 0x0001, "Acme", "Pad");
        AppState::shared().setConnectedDevices({pad, pad, device(0x1234, 0x0002, "Acme", "Dial")});
        QQuickWindow* sheet = openSheet("RulesTabItem", "AddRuleButton", "AddRuleSheet");
        QVERIFY(sheet);
        QVERIFY(isOn(sheet, "LaunchOnConnectToggle"));
        QVERIFY(isOn(sheet, "QuitOnDisconnectToggle"));
        QVERIFY(!isEnabled(sheet, "SaveRuleButton"));

        QVERIFY(waitForApps(sheet, 2));
        QCOMPARE(rowTexts(sheet, "AppSelectionRow", "name"), QStringList({"Paint", "Text Editor"}));
        // The search ignores letter case and looks at the ids too.
        QQuickItem* search = item(sheet, "AppSearchField");
        for (const auto& [typed, found] :
             {std::pair<const char*, const char*>{"EDIT", "Text Editor"},
              {"example.pai", "Paint"},
              {"text", "Text Editor"}}) {
            search->forceActiveFocus();
            QTest::keyClick(sheet, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(sheet, Qt::Key_Backspace);
            typeInto(search, typed);
            QVERIFY(waitForApps(sheet, 1));
            QCOMPARE(rowTexts(sheet, "AppSelectionRow", "name"), QStringList{found});
        }

        // Identical devices are one choice: a tap selects both rows.
        const QList<QQuickItem*> devices = rows(sheet, "DeviceSelectionRow");
        QCOMPARE(devices.size(), 3);
        QVERIFY(click(devices[1]));
        QCOMPARE(rowTexts(sheet, "DeviceSelectionRow", "isSelected"),
                 QStringList({"true", "true", "false"}));
        QVERIFY(!isEnabled(sheet, "SaveRuleButton"));
        QVERIFY(click(rows(sheet, "AppSelectionRow").value(0)));
        QCOMPARE(rowTexts(sheet, "AppSelectionRow", "isSelected"), QStringList{"true"});
        QVERIFY(isEnabled(sheet, "SaveRuleButton"));
        QVERIFY(click(sheet, "QuitOnDisconnectToggle"));
        QVERIFY(!isOn(sheet, "QuitOnDisconnectToggle"));

        QTest::keyClick(sheet, Qt::Key_Return);
        QVERIFY(sheetCloses("AddRuleSheet"));
        QCOMPARE(AppState::shared().bindings().size(), 1);
        const QJsonObject stored = storedRule("bindings.json", 0);
        QCOMPARE(stored.value("deviceVendorID").toInt(), 0x1234);
        QCOMPARE(stored.value("deviceProductID").toInt(), 0x0001);
        QCOMPARE(stored.value("deviceName").toString(), pad.displayName());
        QCOMPARE(stored.value("appBundleIdentifier").toString(), "org.example.Editor");
        QCOMPARE(stored.value("appName").toString(), "Text Editor");
        QCOMPARE(stored.value("appPath").toString(), m_editorPath);
        QCOMPARE(stored.value("isEnabled"), QJsonValue(true));
        QCOMPARE(stored.value("launchOnConnect"), QJsonValue(true));
        QCOMPARE(stored.value("killOnDisconnect"), QJsonValue(false));
        QCOMPARE(stored.value("forceQuitAllowed"), QJsonValue(false));
        QCOMPARE(stored.value("forceQuitTimeout").toDouble(), 1.0);
        QVERIFY(!QUuid::fromString(stored.value("id").toString()).isNull());
    }

    void addsAShortcutsOnlyRuleAndTakesApplicationsPickedByHand()
    {
        const QJsonArray before = storedRules("bindings.json");
        QQuickWindow* sheet = openSheet("RulesTabItem", "AddFirstRuleButton", "AddRuleSheet");
        QVERIFY(sheet);
        QVERIFY(waitForApps(sheet, 2));
        QVERIFY(rows(sheet, "DeviceSelectionRow").isEmpty());

        // Picked by hand: an executable goes first; an entry already listed is not added twice.
        auto* editor = sheet->findChild<AddRuleEditor*>();
        QVERIFY(editor);
        const QString program = m_scratch.filePath("my-tool");
        QFile file(program);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        QVERIFY(!editor->applications()->choose(QUrl::fromLocalFile(program)));
        QVERIFY(!editor->applications()->hasSelectedApp());
        file.setPermissions(file.permissions() | QFileDevice::ExeOwner);
        auto* dialog = sheet->findChild<QObject*>("BrowseDialog");
        QVERIFY(dialog);
        QVERIFY(click(sheet, "BrowseButton"));
        QTRY_VERIFY_WITH_TIMEOUT(dialog->property("visible").toBool(), 2000);
        // What the dialog reports when the user confirms a file.
        dialog->setProperty("selectedFile", QUrl::fromLocalFile(program));
        QMetaObject::invokeMethod(dialog, "accepted");
        QMetaObject::invokeMethod(dialog, "close");
        QVERIFY(waitForApps(sheet, 3));
        QVERIFY(sheet->isVisible());
        QCOMPARE(rowTexts(sheet, "AppSelectionRow", "appId").first(), program);
        QCOMPARE(rowTexts(sheet, "AppSelectionRow", "isSelected").first(), "true");
        QVERIFY(editor->applications()->choose(QUrl::fromLocalFile(m_editorPath)));
        QVERIFY(waitForApps(sheet, 3));
        QCOMPARE(editor->applications()->selectedAppId(), "org.example.Editor");

        // Without a device there is nothing to save; closing keeps nothing.
        QVERIFY(!isEnabled(sheet, "SaveRuleButton"));
        QTest::keyClick(sheet, Qt::Key_Return);
        QVERIFY(click(sheet, "CloseSheetButton"));
        QVERIFY(sheetCloses("AddRuleSheet"));
        QVERIFY(AppState::shared().bindings().isEmpty());
        QCOMPARE(storedRules("bindings.json"), before);

        // A device with neither application nor shortcut cannot be saved; a shortcut suffices.
        AppState::shared().setConnectedDevices({device(0x1234, 0x0001, "Acme", "Pad")});
        QVERIFY(click(m_shell->host.settingsWindow(), "AddFirstRuleButton"));
        sheet = UITestSupport::sheet("AddRuleSheet");
        QVERIFY(sheet);
        QVERIFY(click(rows(sheet, "DeviceSelectionRow").value(0)));
        QVERIFY(!isEnabled(sheet, "SaveRuleButton"));
        QVERIFY(addShortcut(section(sheet, "OnConnectShortcuts"), "Mute"));
        QVERIFY(isEnabled(sheet, "SaveRuleButton"));
        QVERIFY(click(sheet, "SaveRuleButton"));
        QVERIFY(sheetCloses("AddRuleSheet"));
        const QJsonObject stored = storedRule("bindings.json", 0);
        QCOMPARE(stored.value("appBundleIdentifier").toString(), QString());
        QCOMPARE(stored.value("appName").toString(), QString());
        QCOMPARE(stored.value("appPath").toString(), QString());
        QCOMPARE(stored.value("shortcuts").toObject().value("shortcutsOnConnect").toArray(),
                 QJsonArray{"Mute"});
    }

    void editsAUsbRuleAndKeepsWhatTheSheetDoesNotEdit()
    {
        DeviceAppBinding rule = UITestSupport::rule("Paint", "Pad", 0x1234, 0x0001);
        rule.appPath = "/somewhere/paint.desktop";
        rule.forceQuitTimeout = 1.3;
        AppState::shared().setBindings({rule});
        AppState::shared().setConnectedDevices({device(0x1234, 0x0001, "Acme", "Pad")});
        QQuickWindow* sheet = openFirstRule("RulesTabItem", "EditRuleSheet");
        QVERIFY(sheet);
        QCOMPARE(text(sheet, "SubjectCardState"), "Connected");
        QCOMPARE(text(sheet, "ApplicationCardState"), "Stopped");
        QVERIFY(!isEnabled(sheet, "QuitAppButton"));
        QVERIFY(isEnabled(sheet, "LaunchAppButton"));
        QVERIFY(!item(sheet, "ForceQuitTimeoutBlock"));

        // The stored time-out shows as stored; the slider moves it in half-second steps.
        QVERIFY(click(sheet, "ForceQuitToggle"));
        QCOMPARE(text(sheet, "ForceQuitTimeoutText"), "1.3s");
        QQuickItem* slider = item(sheet, "ForceQuitTimeoutSlider");
        const QPointF end = slider->mapToScene(QPointF(slider->width() - 1, slider->height() / 2));
        QTest::mouseClick(sheet, Qt::LeftButton, {}, end.toPoint());
        QTRY_COMPARE_WITH_TIMEOUT(text(sheet, "ForceQuitTimeoutText"), "10.0s", 2000);
        const QPointF nearStart =
            slider->mapToScene(QPointF(slider->width() * 0.2, slider->height() / 2));
        QTest::mouseClick(sheet, Qt::LeftButton, {}, nearStart.toPoint());
        auto* editor = sheet->findChild<ExistingRuleEditor*>();
        QTRY_VERIFY_WITH_TIMEOUT(editor->property("forceQuitTimeout").toDouble() < 10.0, 2000);
        const double moved = editor->property("forceQuitTimeout").toDouble();
        QCOMPARE(std::fmod(moved * 2, 1.0), 0.0);

        QVERIFY(click(sheet, "RuleEnabledToggle"));
        QVERIFY(click(sheet, "LaunchOnConnectToggle"));
        QVERIFY(addShortcut(section(sheet, "OnDisconnectShortcuts"), "Backup"));
        QVERIFY(click(sheet, "SaveChangesButton"));
        QVERIFY(sheetCloses("EditRuleSheet"));
        QJsonObject stored = storedRule("bindings.json", 0);
        QCOMPARE(QUuid::fromString(stored.value("id").toString()), rule.id);
        QCOMPARE(stored.value("isEnabled"), QJsonValue(false));
        QCOMPARE(stored.value("launchOnConnect"), QJsonValue(true));
        QCOMPARE(stored.value("killOnDisconnect"), QJsonValue(false));
        QCOMPARE(stored.value("forceQuitAllowed"), QJsonValue(true));
        QCOMPARE(stored.value("forceQuitTimeout").toDouble(), moved);
        QCOMPARE(stored.value("appPath").toString(), rule.appPath);
        QCOMPARE(stored.value("deviceName").toString(), "Pad");
        QCOMPARE(stored.value("shortcuts").toObject().value("shortcutsOnDisconnect").toArray(),
                 QJsonArray{"Backup"});

        // Cancelling keeps the stored rule; a hidden time-out block keeps the stored time-out.
        sheet = openFirstRule("RulesTabItem", "EditRuleSheet");
        QVERIFY(sheet);
        QVERIFY(click(sheet, "ForceQuitToggle"));
        QVERIFY(click(sheet, "CancelButton"));
        QVERIFY(sheetCloses("EditRuleSheet"));
        QCOMPARE(storedRule("bindings.json", 0).value("forceQuitAllowed"), QJsonValue(true));
        sheet = openFirstRule("RulesTabItem", "EditRuleSheet");
        QVERIFY(sheet);
        QVERIFY(click(sheet, "ForceQuitToggle"));
        QTest::keyClick(sheet, Qt::Key_Return);
        QVERIFY(sheetCloses("EditRuleSheet"));
        stored = storedRule("bindings.json", 0);
        QCOMPARE(stored.value("forceQuitAllowed"), QJsonValue(false));
        QCOMPARE(stored.value("forceQuitTimeout").toDouble(), moved);
    }

    void deletesAUsbRuleOnlyAfterConfirmation()
    {
        AppState::shared().setBindings({rule("Paint", "Drawing Pad", 1, 2)});
        QQuickWindow* sheet = openFirstRule("RulesTabItem", "EditRuleSheet");
        QVERIFY(sheet);
        QCOMPARE(text(sheet, "SubjectCardState"), "Disconnected");

        QVERIFY(click(sheet, "DeleteRuleButton"));
        QTRY_COMPARE_WITH_TIMEOUT(
            text(sheet, "DeleteConfirmationMessage"),
            "This will permanently remove the rule linking Drawing Pad to Paint.", 2000);
        QVERIFY(click(sheet, "CancelDeleteButton"));
        QTRY_VERIFY_WITH_TIMEOUT(!item(sheet, "DeleteConfirmationMessage"), 2000);
        QCOMPARE(AppState::shared().bindings().size(), 1);
        QVERIFY(sheet->isVisible());

        QVERIFY(click(sheet, "DeleteRuleButton"));
        QQuickItem* confirm = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT((confirm = item(sheet, "ConfirmDeleteButton")), 2000);
        // Return and Escape belong to the alert while it is up.
        QTest::keyClick(sheet, Qt::Key_Return);
        QCOMPARE(AppState::shared().bindings().size(), 1);
        QVERIFY(click(confirm));
        QVERIFY(sheetCloses("EditRuleSheet"));
        QVERIFY(AppState::shared().bindings().isEmpty());
        QCOMPARE(storedRules("bindings.json"), QJsonArray());
    }

    void addsWiFiRulesFromTheCurrentNetworkAndFromATypedName()
    {
        AppState::shared().setCurrentWiFiNetwork(WiFiNetwork{"Café", "Café", {}});
        QQuickWindow* sheet =
            openSheet("WiFiRulesTabItem", "AddWiFiRuleButton", "AddWiFiRuleSheet");
        QVERIFY(sheet);
        QQuickItem* current = item(sheet, "CurrentNetworkRow");
        QVERIFY(current);
        QQuickItem* field = item(sheet, "SSIDTextField");
        QCOMPARE(field->property("text").toString(), QString());

        // A name differing only in letter case is another network.
        typeInto(field, "café");
        QVERIFY(!current->property("isSelected").toBool());
        QVERIFY(click(current));
        QCOMPARE(field->property("text").toString(), "Café");
        QVERIFY(current->property("isSelected").toBool());
        QVERIFY(!isEnabled(sheet, "SaveRuleButton"));
        QVERIFY(waitForApps(sheet, 2));
        QVERIFY(click(rows(sheet, "AppSelectionRow").value(0)));
        QVERIFY(click(sheet, "LaunchOnConnectToggle"));
        QTest::keyClick(sheet, Qt::Key_Return);
        QVERIFY(sheetCloses("AddWiFiRuleSheet"));
        QJsonObject stored = storedRule("wifi-bindings.json", 0);
        QCOMPARE(stored.value("ssid").toString(), "Café");
        QCOMPARE(stored.value("appBundleIdentifier").toString(), "org.example.Paint");
        QCOMPARE(stored.value("launchOnConnect"), QJsonValue(false));
        QCOMPARE(stored.value("killOnDisconnect"), QJsonValue(true));
        QCOMPARE(stored.value("forceQuitTimeout").toDouble(), 1.0);

        // Not connected: no offer, but a typed name with blanks around it works.
        AppState::shared().setCurrentWiFiNetwork(std::nullopt);
        QVERIFY(click(m_shell->host.settingsWindow(), "AddWiFiRuleButton"));
        sheet = UITestSupport::sheet("AddWiFiRuleSheet");
        QVERIFY(sheet);
        QVERIFY(!item(sheet, "CurrentNetworkRow"));
        field = item(sheet, "SSIDTextField");
        typeInto(field, "   ");
        QVERIFY(addShortcut(section(sheet, "OnConnectShortcuts"), "Dim Lights"));
        QVERIFY(!isEnabled(sheet, "SaveRuleButton"));
        typeInto(field, "Guest Net  ");
        QVERIFY(click(sheet, "SaveRuleButton"));
        QVERIFY(sheetCloses("AddWiFiRuleSheet"));
        stored = storedRule("wifi-bindings.json", 1);
        QCOMPARE(stored.value("ssid").toString(), "Guest Net");
        QCOMPARE(stored.value("appName").toString(), QString());
        QCOMPARE(stored.value("appPath").toString(), QString());
        QCOMPARE(stored.value("shortcuts").toObject().value("shortcutsOnConnect").toArray(),
                 QJsonArray{"Dim Lights"});
    }

    void editsAndDeletesAWiFiRule()
    {
        AppState::shared().setWifiBindings({wifiRule("Home", "Music")});
        AppState::shared().setCurrentWiFiNetwork(WiFiNetwork{"Home", "Home", {}});
        QQuickWindow* sheet = openFirstRule("WiFiRulesTabItem", "EditWiFiRuleSheet");
        QVERIFY(sheet);
        QCOMPARE(text(sheet, "SubjectCardState"), "Connected");
        AppState::shared().setCurrentWiFiNetwork(std::nullopt);
        QTRY_COMPARE_WITH_TIMEOUT(text(sheet, "SubjectCardState"), "Not Connected", 2000);
        QVERIFY(click(sheet, "QuitOnDisconnectToggle"));
        QVERIFY(click(sheet, "SaveChangesButton"));
        QVERIFY(sheetCloses("EditWiFiRuleSheet"));
        QCOMPARE(storedRule("wifi-bindings.json", 0).value("killOnDisconnect"), QJsonValue(true));

        sheet = openFirstRule("WiFiRulesTabItem", "EditWiFiRuleSheet");
        QVERIFY(sheet);
        QVERIFY(click(sheet, "DeleteRuleButton"));
        QTRY_COMPARE_WITH_TIMEOUT(text(sheet, "DeleteConfirmationMessage"),
                                  "This will permanently remove the rule linking 'Home' to Music.",
                                  2000);
        // The rule went away meanwhile: confirming closes the sheet and removes nothing else.
        const WiFiAppBinding other = wifiRule("Work", "Mail");
        AppState::shared().setWifiBindings({other});
        QVERIFY(click(sheet, "ConfirmDeleteButton"));
        QVERIFY(sheetCloses("EditWiFiRuleSheet"));
        QCOMPARE(AppState::shared().wifiBindings().size(), 1);
        QCOMPARE(AppState::shared().wifiBindings().first().id, other.id);
    }

    void reordersRemovesOffersAndTestsShortcuts()
    {
        const QString marker = m_scratch.filePath("ran");
        writeShortcut("Touch Marker", "touch '" + marker + "'");
        DeviceAppBinding rule = UITestSupport::rule("Paint", "Pad", 1, 2);
        rule.shortcuts.shortcutsOnConnect = {"Dim Lights", "Mute", "Touch Marker"};
        AppState::shared().setBindings({rule});
        QQuickWindow* sheet = openFirstRule("RulesTabItem", "EditRuleSheet");
        QVERIFY(sheet);
        QQuickItem* onConnect = section(sheet, "OnConnectShortcuts");
        QQuickItem* onDisconnect = section(sheet, "OnDisconnectShortcuts");
        QVERIFY(onConnect && onDisconnect);

        QList<QQuickItem*> shortcuts = items(onConnect, "ShortcutRow");
        const auto button = [&](int row, const char* name) {
            return items(shortcuts.value(row), name).value(0);
        };
        QCOMPARE(shortcuts.size(), 3);
        QVERIFY(!button(0, "MoveUpButton")->isEnabled());
        QVERIFY(button(0, "MoveDownButton")->isEnabled());
        QVERIFY(button(2, "MoveUpButton")->isEnabled());
        QVERIFY(!button(2, "MoveDownButton")->isEnabled());
        QCOMPARE(offered(onConnect), QStringList{"Backup"});
        QCOMPARE(offered(onDisconnect),
                 QStringList({"Backup", "Dim Lights", "Mute", "Touch Marker"}));

        // Trying a shortcut runs it now and changes nothing.
        QVERIFY(click(button(2, "TestShortcutButton")));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(marker), 5000);

        QVERIFY(click(button(0, "MoveDownButton")));
        QTRY_COMPARE_WITH_TIMEOUT(rowTexts(sheet, "ShortcutRow", "shortcutName"),
                                  QStringList({"Mute", "Dim Lights", "Touch Marker"}), 2000);
        shortcuts = items(onConnect, "ShortcutRow");
        QVERIFY(click(button(2, "MoveUpButton")));
        QTRY_COMPARE_WITH_TIMEOUT(rowTexts(sheet, "ShortcutRow", "shortcutName"),
                                  QStringList({"Mute", "Touch Marker", "Dim Lights"}), 2000);
        shortcuts = items(onConnect, "ShortcutRow");
        QVERIFY(click(button(0, "RemoveShortcutButton")));
        QTRY_COMPARE_WITH_TIMEOUT(items(onConnect, "ShortcutRow").size(), 2, 2000);
        QCOMPARE(offered(onConnect), QStringList({"Backup", "Mute"}));

        // The same shortcut may run on both sides.
        QVERIFY(addShortcut(onDisconnect, "Dim Lights"));
        QVERIFY(!offered(onDisconnect).contains("Dim Lights"));
        QVERIFY(click(sheet, "SaveChangesButton"));
        QVERIFY(sheetCloses("EditRuleSheet"));
        const QJsonObject stored = storedRule("bindings.json", 0).value("shortcuts").toObject();
        QCOMPARE(stored.value("shortcutsOnConnect").toArray(),
                 QJsonArray({"Touch Marker", "Dim Lights"}));
        QCOMPARE(stored.value("shortcutsOnDisconnect").toArray(), QJsonArray{"Dim Lights"});
    }

    void manualActionsLaunchAndQuitTheRulesApplication()
    {
        // A program of its own, so that no other process of the user's counts as this one.
        const QString program = m_scratch.filePath("obrinta-test-sleeper");
        QVERIFY(QFile::copy("/bin/sleep", program));
        DeviceAppBinding rule = UITestSupport::rule("Sleeper", "Pad", 1, 2);
        rule.appPath = writeDesktopEntry("org.example.Sleeper", "Sleeper", program + " 120");
        AppState::shared().setBindings({rule});
        QQuickWindow* sheet = openFirstRule("RulesTabItem", "EditRuleSheet");
        QVERIFY(sheet);
        QVERIFY(!isEnabled(sheet, "QuitAppButton"));
        QVERIFY(click(sheet, "LaunchAppButton"));
        QTRY_VERIFY_WITH_TIMEOUT(isEnabled(sheet, "QuitAppButton"), 10000);
        QVERIFY(!isEnabled(sheet, "LaunchAppButton"));
        QCOMPARE(text(sheet, "ApplicationCardState"), "Running");
        QVERIFY(click(sheet, "QuitAppButton"));
        QTRY_VERIFY_WITH_TIMEOUT(isEnabled(sheet, "LaunchAppButton"), 10000);
    }
};

QTEST_MAIN(RulesTest)
#include "test_rules.moc"
