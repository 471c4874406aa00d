#include "RulesTestSupport.h"
#include "UITestSupport.h"
#include "model/AppState.h"
#include "ui/AddRuleEditor.h"
#include "ui/ExistingRuleEditor.h"

#include <QDir>
#include <QJsonObject>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>

using namespace RulesTestSupport;

// The rule sheets as a person uses them, in a real settings window over the shared state: what
// they show, what they enable, and what they leave in the stored rule files.
class RuleSheetsTest : public QObject
{
    Q_OBJECT
public:
    static void initMain() { UITestSupport::useTemporaryHome(); }

private:
    std::unique_ptr<TestShell> m_shell;
    QString m_editorPath;
    QTemporaryDir m_scratch;

    QQuickWindow* settings(const QString& tabItem)
    {
        m_shell->host.showSettings();
        QQuickWindow* window = m_shell->host.settingsWindow();
        return window && UITestSupport::click(window, tabItem) ? window : nullptr;
    }

    QQuickWindow* openSheet(const QString& tabItem, const QString& button, const QString& sheetName)
    {
        QQuickWindow* window = settings(tabItem);
        return window && click(window, button) ? sheet(sheetName) : nullptr;
    }

    QQuickWindow* openRule(const QString& tabItem, int row, const QString& sheetName)
    {
        QQuickWindow* window = settings(tabItem);
        if (!window)
            return nullptr;
        QTest::qWaitFor([&] { return items(window->contentItem(), "RuleRow").size() > row; }, 2000);
        return click(items(window->contentItem(), "RuleRow").value(row)) ? sheet(sheetName)
                                                                         : nullptr;
    }

    static bool isOn(QQuickWindow* window, const QString& name)
    {
        QQuickItem* found = item(window, name);
        return found && found->property("checked").toBool();
    }

    static bool isEnabled(QQuickWindow* window, const QString& name)
    {
        QQuickItem* found = item(window, name);
        return found && found->isEnabled();
    }

    static QStringList rowTexts(QQuickWindow* window, const QString& rowName,
                                const QString& property)
    {
        QStringList texts;
        for (QQuickItem* row : items(window->contentItem(), rowName))
            texts.append(row->property(property.toLatin1()).toString());
        return texts;
    }

    static QStringList offered(QQuickItem* section)
    {
        QQuickItem* picker = items(section, QStringLiteral("ShortcutPicker")).value(0);
        QStringList names;
        for (int i = 1; picker && i < picker->property("count").toInt(); ++i) {
            QString name;
            QMetaObject::invokeMethod(picker, "textAt", Q_RETURN_ARG(QString, name), Q_ARG(int, i));
            names.append(name);
        }
        return names;
    }

    static bool addShortcut(QQuickItem* section, const QString& name)
    {
        QQuickItem* picker = items(section, QStringLiteral("ShortcutPicker")).value(0);
        const int index = offered(section).indexOf(name);
        if (!picker || index < 0)
            return false;
        picker->setProperty("currentIndex", index + 1);
        return click(items(section, QStringLiteral("AddShortcutButton")).value(0));
    }

    static QQuickItem* section(QQuickWindow* window, const QString& name)
    {
        QQuickItem* found = item(window, name);
        // The offer is there once discovery has answered.
        QTest::qWaitFor([&] { return !items(found, QStringLiteral("ShortcutPicker")).isEmpty(); },
                        5000);
        return found;
    }

    static void replaceText(QQuickItem* field, const QString& text)
    {
        field->forceActiveFocus();
        QTest::keyClick(field->window(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(field->window(), Qt::Key_Backspace);
        typeInto(field, text);
    }

    static bool waitForApps(QQuickWindow* window, int count)
    {
        return QTest::qWaitFor(
            [&] { return items(window->contentItem(), "AppSelectionRow").size() == count; }, 5000);
    }

    static QJsonObject storedRule(const QString& file, int index)
    {
        return storedRules(file).at(index).toObject();
    }

    static WiFiAppBinding wifiRule(const QString& ssid, const QString& appName)
    {
        WiFiAppBinding rule;
        rule.id = QUuid::createUuid();
        rule.ssid = ssid;
        rule.appName = appName;
        rule.appBundleIdentifier = QStringLiteral("org.example.") + appName;
        return rule;
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_editorPath =
            writeDesktopEntry(QStringLiteral("org.example.Editor"), QStringLiteral("Text Editor"));
        writeDesktopEntry(QStringLiteral("org.example.Paint"), QStringLiteral("Paint"));
        writeShortcut(QStringLiteral("Dim Lights"));
        writeShortcut(QStringLiteral("Mute"));
        writeShortcut(QStringLiteral("Backup"));
    }

    void init()
    {
        AppState& state = AppState::shared();
        // Saving evaluates; no rule is to act on this machine while the sheets are tried.
        state.setIsMonitoring(false);
        state.setIsWiFiMonitoring(false);
        state.setConnectedDevices({});
        state.setBindings({});
        state.setWifiBindings({});
        state.setCurrentWiFiNetwork(std::nullopt);
        m_shell = std::make_unique<TestShell>();
    }

    void cleanup() { m_shell.reset(); }

    void addsAUsbRuleFromADeviceAndADesktopEntry()
    {
        const USBDevice pad =
            UITestSupport::device(0x1234, 0x0001, QStringLiteral("Acme"), QStringLiteral("Pad"));
        AppState::shared().setConnectedDevices(
            {pad, pad,
             UITestSupport::device(0x1234, 0x0002, QStringLiteral("Acme"),
                                   QStringLiteral("Dial"))});
        QQuickWindow* sheet =
            openSheet(QStringLiteral("RulesTabItem"), QStringLiteral("AddRuleButton"),
                      QStringLiteral("AddRuleSheet"));
        QVERIFY(sheet);
        QCOMPARE(sheet->size(), QSize(500, 650));
        QVERIFY(item(sheet, QStringLiteral("AddRuleScrollView")));
        QVERIFY(isOn(sheet, QStringLiteral("LaunchOnConnectToggle")));
        QVERIFY(isOn(sheet, QStringLiteral("QuitOnDisconnectToggle")));
        QVERIFY(!isEnabled(sheet, QStringLiteral("SaveRuleButton")));

        QVERIFY(waitForApps(sheet, 2));
        QCOMPARE(rowTexts(sheet, "AppSelectionRow", "name"),
                 QStringList({QStringLiteral("Paint"), QStringLiteral("Text Editor")}));
        QQuickItem* search = item(sheet, QStringLiteral("AppSearchField"));
        typeInto(search, QStringLiteral("EDIT"));
        QVERIFY(waitForApps(sheet, 1));
        replaceText(search, QStringLiteral("example.pai"));
        QVERIFY(waitForApps(sheet, 1));
        QCOMPARE(rowTexts(sheet, "AppSelectionRow", "name"), QStringList{QStringLiteral("Paint")});
        replaceText(search, QStringLiteral("text"));
        QVERIFY(waitForApps(sheet, 1));

        // Identical devices are one choice: a tap selects both rows.
        QList<QQuickItem*> devices = items(sheet->contentItem(), "DeviceSelectionRow");
        QCOMPARE(devices.size(), 3);
        QVERIFY(click(devices[1]));
        QCOMPARE(rowTexts(sheet, "DeviceSelectionRow", "isSelected"),
                 QStringList({"true", "true", "false"}));
        QVERIFY(!isEnabled(sheet, QStringLiteral("SaveRuleButton")));

        QVERIFY(click(items(sheet->contentItem(), "AppSelectionRow").value(0)));
        QCOMPARE(rowTexts(sheet, "AppSelectionRow", "isSelected"), QStringList{"true"});
        QVERIFY(isEnabled(sheet, QStringLiteral("SaveRuleButton")));
        QVERIFY(click(sheet, QStringLiteral("QuitOnDisconnectToggle")));
        QVERIFY(!isOn(sheet, QStringLiteral("QuitOnDisconnectToggle")));

        QTest::keyClick(sheet, Qt::Key_Return);
        QVERIFY(sheetCloses(QStringLiteral("AddRuleSheet")));
        QCOMPARE(AppState::shared().bindings().size(), 1);
        const QJsonObject stored = storedRule(QStringLiteral("bindings.json"), 0);
        QCOMPARE(stored.value("deviceVendorID").toInt(), 0x1234);
        QCOMPARE(stored.value("deviceProductID").toInt(), 0x0001);
        QCOMPARE(stored.value("deviceName").toString(), pad.displayName());
        QCOMPARE(stored.value("appBundleIdentifier").toString(),
                 QStringLiteral("org.example.Editor"));
        QCOMPARE(stored.value("appName").toString(), QStringLiteral("Text Editor"));
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
        AppState::shared().setConnectedDevices(
            {UITestSupport::device(0x1234, 0x0001, QStringLiteral("Acme"), QStringLiteral("Pad"))});
        QQuickWindow* sheet =
            openSheet(QStringLiteral("RulesTabItem"), QStringLiteral("AddFirstRuleButton"),
                      QStringLiteral("AddRuleSheet"));
        QVERIFY(sheet);
        QVERIFY(waitForApps(sheet, 2));

        // Picked by hand: an executable goes first; an entry already listed is not added twice.
        auto* editor = sheet->findChild<AddRuleEditor*>();
        QVERIFY(editor);
        const QString program = m_scratch.filePath(QStringLiteral("my-tool"));
        QFile file(program);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        QVERIFY(!editor->applications()->choose(QUrl::fromLocalFile(program)));
        QVERIFY(!editor->applications()->hasSelectedApp());
        file.setPermissions(file.permissions() | QFileDevice::ExeOwner);
        auto* dialog = sheet->findChild<QObject*>(QStringLiteral("BrowseDialog"));
        QVERIFY(dialog);
        QVERIFY(click(sheet, QStringLiteral("BrowseButton")));
        QTRY_VERIFY_WITH_TIMEOUT(dialog->property("visible").toBool(), 2000);
        // What the dialog reports when the user confirms a file.
        dialog->setProperty("selectedFile", QUrl::fromLocalFile(program));
        QCOMPARE(dialog->property("selectedFile").toUrl(), QUrl::fromLocalFile(program));
        QMetaObject::invokeMethod(dialog, "accepted");
        QMetaObject::invokeMethod(dialog, "close");
        QVERIFY(waitForApps(sheet, 3));
        QVERIFY(sheet->isVisible());
        QCOMPARE(rowTexts(sheet, "AppSelectionRow", "appId").first(), program);
        QCOMPARE(rowTexts(sheet, "AppSelectionRow", "isSelected").first(), QStringLiteral("true"));
        QVERIFY(editor->applications()->choose(QUrl::fromLocalFile(m_editorPath)));
        QVERIFY(waitForApps(sheet, 3));
        QCOMPARE(editor->applications()->selectedAppId(), QStringLiteral("org.example.Editor"));

        // A device with neither application nor shortcut cannot be saved; a shortcut suffices.
        QVERIFY(click(items(sheet->contentItem(), "DeviceSelectionRow").value(0)));
        QQuickItem* onConnect = section(sheet, QStringLiteral("OnConnectShortcuts"));
        QVERIFY(addShortcut(onConnect, QStringLiteral("Mute")));
        sheet->close();
        QVERIFY(sheetCloses(QStringLiteral("AddRuleSheet")));
        QVERIFY(AppState::shared().bindings().isEmpty());

        QVERIFY(click(m_shell->host.settingsWindow(), QStringLiteral("AddFirstRuleButton")));
        sheet = RulesTestSupport::sheet(QStringLiteral("AddRuleSheet"));
        QVERIFY(sheet);
        QVERIFY(click(items(sheet->contentItem(), "DeviceSelectionRow").value(0)));
        QVERIFY(!isEnabled(sheet, QStringLiteral("SaveRuleButton")));
        onConnect = section(sheet, QStringLiteral("OnConnectShortcuts"));
        QVERIFY(addShortcut(onConnect, QStringLiteral("Mute")));
        QVERIFY(isEnabled(sheet, QStringLiteral("SaveRuleButton")));
        QVERIFY(click(sheet, QStringLiteral("SaveRuleButton")));
        QVERIFY(sheetCloses(QStringLiteral("AddRuleSheet")));

        const QJsonObject stored = storedRule(QStringLiteral("bindings.json"), 0);
        QCOMPARE(stored.value("appBundleIdentifier").toString(), QString());
        QCOMPARE(stored.value("appName").toString(), QString());
        QCOMPARE(stored.value("appPath").toString(), QString());
        QCOMPARE(stored.value("shortcuts").toObject().value("shortcutsOnConnect").toArray(),
                 QJsonArray{QStringLiteral("Mute")});
    }

    void noDeviceConnectedKeepsAddRuleDisabledAndCloseKeepsNothing()
    {
        const QJsonArray before = storedRules(QStringLiteral("bindings.json"));
        QQuickWindow* sheet =
            openSheet(QStringLiteral("RulesTabItem"), QStringLiteral("AddRuleButton"),
                      QStringLiteral("AddRuleSheet"));
        QVERIFY(sheet);
        QVERIFY(items(sheet->contentItem(), "DeviceSelectionRow").isEmpty());
        QVERIFY(waitForApps(sheet, 2));
        QVERIFY(click(items(sheet->contentItem(), "AppSelectionRow").value(0)));
        QVERIFY(!isEnabled(sheet, QStringLiteral("SaveRuleButton")));
        QTest::keyClick(sheet, Qt::Key_Return);
        QVERIFY(click(sheet, QStringLiteral("CloseSheetButton")));
        QVERIFY(sheetCloses(QStringLiteral("AddRuleSheet")));
        QVERIFY(AppState::shared().bindings().isEmpty());
        QCOMPARE(storedRules(QStringLiteral("bindings.json")), before);
    }

    void editsAUsbRuleAndKeepsWhatTheSheetDoesNotEdit()
    {
        DeviceAppBinding rule =
            UITestSupport::rule(QStringLiteral("Paint"), QStringLiteral("Pad"), 0x1234, 0x0001);
        rule.appPath = QStringLiteral("/somewhere/paint.desktop");
        rule.forceQuitTimeout = 1.3;
        AppState::shared().setBindings({rule});
        AppState::shared().setConnectedDevices(
            {UITestSupport::device(0x1234, 0x0001, QStringLiteral("Acme"), QStringLiteral("Pad"))});

        QQuickWindow* sheet =
            openRule(QStringLiteral("RulesTabItem"), 0, QStringLiteral("EditRuleSheet"));
        QVERIFY(sheet);
        QCOMPARE(sheet->size(), QSize(450, 700));
        QCOMPARE(item(sheet, QStringLiteral("SubjectCardState"))->property("text").toString(),
                 QStringLiteral("Connected"));
        QCOMPARE(item(sheet, QStringLiteral("ApplicationCardState"))->property("text").toString(),
                 QStringLiteral("Stopped"));
        QVERIFY(!isEnabled(sheet, QStringLiteral("QuitAppButton")));
        QVERIFY(isEnabled(sheet, QStringLiteral("LaunchAppButton")));
        QVERIFY(!item(sheet, QStringLiteral("ForceQuitTimeoutBlock")));

        // The stored time-out shows as stored; the slider moves it in half-second steps.
        QVERIFY(click(sheet, QStringLiteral("ForceQuitToggle")));
        QVERIFY(item(sheet, QStringLiteral("ForceQuitTimeoutBlock")));
        QCOMPARE(item(sheet, QStringLiteral("ForceQuitTimeoutText"))->property("text").toString(),
                 QStringLiteral("1.3s"));
        QQuickItem* slider = item(sheet, QStringLiteral("ForceQuitTimeoutSlider"));
        QCOMPARE(slider->property("from").toDouble(), 0.5);
        QCOMPARE(slider->property("to").toDouble(), 10.0);
        QCOMPARE(slider->property("stepSize").toDouble(), 0.5);
        const QPointF end = slider->mapToScene(QPointF(slider->width() - 1, slider->height() / 2));
        QTest::mouseClick(sheet, Qt::LeftButton, {}, end.toPoint());
        QTRY_COMPARE_WITH_TIMEOUT(
            item(sheet, QStringLiteral("ForceQuitTimeoutText"))->property("text").toString(),
            QStringLiteral("10.0s"), 2000);
        const QPointF nearStart =
            slider->mapToScene(QPointF(slider->width() * 0.2, slider->height() / 2));
        QTest::mouseClick(sheet, Qt::LeftButton, {}, nearStart.toPoint());
        QTRY_VERIFY_WITH_TIMEOUT(
            sheet->findChild<ExistingRuleEditor*>()->property("forceQuitTimeout").toDouble() < 10.0,
            2000);
        const double moved =
            sheet->findChild<ExistingRuleEditor*>()->property("forceQuitTimeout").toDouble();
        QCOMPARE(std::fmod(moved * 2, 1.0), 0.0);

        QVERIFY(click(sheet, QStringLiteral("RuleEnabledToggle")));
        QVERIFY(click(sheet, QStringLiteral("LaunchOnConnectToggle")));
        QQuickItem* onDisconnect = section(sheet, QStringLiteral("OnDisconnectShortcuts"));
        QVERIFY(addShortcut(onDisconnect, QStringLiteral("Backup")));
        QVERIFY(click(sheet, QStringLiteral("SaveChangesButton")));
        QVERIFY(sheetCloses(QStringLiteral("EditRuleSheet")));

        const QJsonObject stored = storedRule(QStringLiteral("bindings.json"), 0);
        QCOMPARE(QUuid::fromString(stored.value("id").toString()), rule.id);
        QCOMPARE(stored.value("isEnabled"), QJsonValue(false));
        QCOMPARE(stored.value("launchOnConnect"), QJsonValue(true));
        QCOMPARE(stored.value("killOnDisconnect"), QJsonValue(false));
        QCOMPARE(stored.value("forceQuitAllowed"), QJsonValue(true));
        QCOMPARE(stored.value("forceQuitTimeout").toDouble(), moved);
        QCOMPARE(stored.value("appPath").toString(), rule.appPath);
        QCOMPARE(stored.value("deviceName").toString(), QStringLiteral("Pad"));
        QCOMPARE(stored.value("shortcuts").toObject().value("shortcutsOnDisconnect").toArray(),
                 QJsonArray{QStringLiteral("Backup")});

        // Cancelling keeps the stored rule; a hidden time-out block keeps the stored time-out.
        sheet = openRule(QStringLiteral("RulesTabItem"), 0, QStringLiteral("EditRuleSheet"));
        QVERIFY(sheet);
        QVERIFY(click(sheet, QStringLiteral("ForceQuitToggle")));
        QVERIFY(click(sheet, QStringLiteral("CancelButton")));
        QVERIFY(sheetCloses(QStringLiteral("EditRuleSheet")));
        QCOMPARE(storedRule(QStringLiteral("bindings.json"), 0).value("forceQuitAllowed"),
                 QJsonValue(true));
        sheet = openRule(QStringLiteral("RulesTabItem"), 0, QStringLiteral("EditRuleSheet"));
        QVERIFY(sheet);
        QVERIFY(click(sheet, QStringLiteral("ForceQuitToggle")));
        QTest::keyClick(sheet, Qt::Key_Return);
        QVERIFY(sheetCloses(QStringLiteral("EditRuleSheet")));
        QCOMPARE(storedRule(QStringLiteral("bindings.json"), 0).value("forceQuitAllowed"),
                 QJsonValue(false));
        QCOMPARE(
            storedRule(QStringLiteral("bindings.json"), 0).value("forceQuitTimeout").toDouble(),
            moved);
    }

    void deletesAUsbRuleOnlyAfterConfirmation()
    {
        const DeviceAppBinding rule =
            UITestSupport::rule(QStringLiteral("Paint"), QStringLiteral("Drawing Pad"), 1, 2);
        AppState::shared().setBindings({rule});
        QQuickWindow* sheet =
            openRule(QStringLiteral("RulesTabItem"), 0, QStringLiteral("EditRuleSheet"));
        QVERIFY(sheet);
        QCOMPARE(item(sheet, QStringLiteral("SubjectCardState"))->property("text").toString(),
                 QStringLiteral("Disconnected"));

        QVERIFY(click(sheet, QStringLiteral("DeleteRuleButton")));
        QQuickItem* message = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT(
            (message = item(sheet, QStringLiteral("DeleteConfirmationMessage"))), 2000);
        QCOMPARE(
            message->property("text").toString(),
            QStringLiteral("This will permanently remove the rule linking Drawing Pad to Paint."));
        QVERIFY(click(sheet, QStringLiteral("CancelDeleteButton")));
        QTRY_VERIFY_WITH_TIMEOUT(!item(sheet, QStringLiteral("DeleteConfirmationMessage")), 2000);
        QCOMPARE(AppState::shared().bindings().size(), 1);
        QVERIFY(sheet->isVisible());

        QVERIFY(click(sheet, QStringLiteral("DeleteRuleButton")));
        QQuickItem* confirm = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT((confirm = item(sheet, QStringLiteral("ConfirmDeleteButton"))),
                                 2000);
        // Return and Escape belong to the alert while it is up.
        QTest::keyClick(sheet, Qt::Key_Return);
        QCOMPARE(AppState::shared().bindings().size(), 1);
        QVERIFY(click(confirm));
        QVERIFY(sheetCloses(QStringLiteral("EditRuleSheet")));
        QVERIFY(AppState::shared().bindings().isEmpty());
        QCOMPARE(storedRules(QStringLiteral("bindings.json")), QJsonArray());
    }

    void addsWiFiRulesFromTheCurrentNetworkAndFromATypedName()
    {
        AppState::shared().setCurrentWiFiNetwork(
            WiFiNetwork{QStringLiteral("Café"), QStringLiteral("Café"), {}});
        QQuickWindow* sheet =
            openSheet(QStringLiteral("WiFiRulesTabItem"), QStringLiteral("AddWiFiRuleButton"),
                      QStringLiteral("AddWiFiRuleSheet"));
        QVERIFY(sheet);
        QCOMPARE(sheet->size(), QSize(500, 650));
        QQuickItem* current = item(sheet, QStringLiteral("CurrentNetworkRow"));
        QVERIFY(current);
        QVERIFY(!current->property("isSelected").toBool());
        QQuickItem* field = item(sheet, QStringLiteral("SSIDTextField"));
        QCOMPARE(field->property("text").toString(), QString());

        // A name differing only in letter case is another network.
        typeInto(field, QStringLiteral("café"));
        QVERIFY(!current->property("isSelected").toBool());
        QVERIFY(click(current));
        QCOMPARE(field->property("text").toString(), QStringLiteral("Café"));
        QVERIFY(current->property("isSelected").toBool());
        QVERIFY(!isEnabled(sheet, QStringLiteral("SaveRuleButton")));
        QVERIFY(waitForApps(sheet, 2));
        QVERIFY(click(items(sheet->contentItem(), "AppSelectionRow").value(0)));
        QVERIFY(click(sheet, QStringLiteral("LaunchOnConnectToggle")));
        QTest::keyClick(sheet, Qt::Key_Return);
        QVERIFY(sheetCloses(QStringLiteral("AddWiFiRuleSheet")));
        QJsonObject stored = storedRule(QStringLiteral("wifi-bindings.json"), 0);
        QCOMPARE(stored.value("ssid").toString(), QStringLiteral("Café"));
        QCOMPARE(stored.value("appBundleIdentifier").toString(),
                 QStringLiteral("org.example.Paint"));
        QCOMPARE(stored.value("launchOnConnect"), QJsonValue(false));
        QCOMPARE(stored.value("killOnDisconnect"), QJsonValue(true));
        QCOMPARE(stored.value("forceQuitTimeout").toDouble(), 1.0);

        // Not connected: no offer, but a typed name with blanks around it works.
        AppState::shared().setCurrentWiFiNetwork(std::nullopt);
        QVERIFY(click(m_shell->host.settingsWindow(), QStringLiteral("AddWiFiRuleButton")));
        sheet = RulesTestSupport::sheet(QStringLiteral("AddWiFiRuleSheet"));
        QVERIFY(sheet);
        QVERIFY(!item(sheet, QStringLiteral("CurrentNetworkRow")));
        field = item(sheet, QStringLiteral("SSIDTextField"));
        typeInto(field, QStringLiteral("   "));
        QVERIFY(addShortcut(section(sheet, QStringLiteral("OnConnectShortcuts")),
                            QStringLiteral("Dim Lights")));
        QVERIFY(!isEnabled(sheet, QStringLiteral("SaveRuleButton")));
        typeInto(field, QStringLiteral("Guest Net  "));
        QVERIFY(isEnabled(sheet, QStringLiteral("SaveRuleButton")));
        QVERIFY(click(sheet, QStringLiteral("SaveRuleButton")));
        QVERIFY(sheetCloses(QStringLiteral("AddWiFiRuleSheet")));
        stored = storedRule(QStringLiteral("wifi-bindings.json"), 1);
        QCOMPARE(stored.value("ssid").toString(), QStringLiteral("Guest Net"));
        QCOMPARE(stored.value("appName").toString(), QString());
        QCOMPARE(stored.value("appPath").toString(), QString());
        QCOMPARE(stored.value("shortcuts").toObject().value("shortcutsOnConnect").toArray(),
                 QJsonArray{QStringLiteral("Dim Lights")});
    }

    void editsAndDeletesAWiFiRule()
    {
        const WiFiAppBinding rule = wifiRule(QStringLiteral("Home"), QStringLiteral("Music"));
        AppState::shared().setWifiBindings({rule});
        AppState::shared().setCurrentWiFiNetwork(
            WiFiNetwork{QStringLiteral("Home"), QStringLiteral("Home"), {}});
        QQuickWindow* sheet =
            openRule(QStringLiteral("WiFiRulesTabItem"), 0, QStringLiteral("EditWiFiRuleSheet"));
        QVERIFY(sheet);
        QCOMPARE(item(sheet, QStringLiteral("SubjectCardState"))->property("text").toString(),
                 QStringLiteral("Connected"));
        AppState::shared().setCurrentWiFiNetwork(std::nullopt);
        QTRY_COMPARE_WITH_TIMEOUT(
            item(sheet, QStringLiteral("SubjectCardState"))->property("text").toString(),
            QStringLiteral("Not Connected"), 2000);
        QVERIFY(click(sheet, QStringLiteral("QuitOnDisconnectToggle")));
        QVERIFY(click(sheet, QStringLiteral("SaveChangesButton")));
        QVERIFY(sheetCloses(QStringLiteral("EditWiFiRuleSheet")));
        QCOMPARE(storedRule(QStringLiteral("wifi-bindings.json"), 0).value("killOnDisconnect"),
                 QJsonValue(true));

        sheet =
            openRule(QStringLiteral("WiFiRulesTabItem"), 0, QStringLiteral("EditWiFiRuleSheet"));
        QVERIFY(sheet);
        QVERIFY(click(sheet, QStringLiteral("DeleteRuleButton")));
        QQuickItem* message = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT(
            (message = item(sheet, QStringLiteral("DeleteConfirmationMessage"))), 2000);
        QCOMPARE(message->property("text").toString(),
                 QStringLiteral("This will permanently remove the rule linking 'Home' to Music."));
        // The rule went away meanwhile: confirming closes the sheet and removes nothing else.
        const WiFiAppBinding other = wifiRule(QStringLiteral("Work"), QStringLiteral("Mail"));
        AppState::shared().setWifiBindings({other});
        QVERIFY(click(sheet, QStringLiteral("ConfirmDeleteButton")));
        QVERIFY(sheetCloses(QStringLiteral("EditWiFiRuleSheet")));
        QCOMPARE(AppState::shared().wifiBindings().size(), 1);
        QCOMPARE(AppState::shared().wifiBindings().first().id, other.id);
    }

    void reordersRemovesOffersAndTestsShortcuts()
    {
        const QString marker = m_scratch.filePath(QStringLiteral("ran"));
        writeShortcut(QStringLiteral("Touch Marker"), QStringLiteral("touch '%1'").arg(marker));
        DeviceAppBinding rule =
            UITestSupport::rule(QStringLiteral("Paint"), QStringLiteral("Pad"), 1, 2);
        rule.shortcuts.shortcutsOnConnect = {QStringLiteral("Dim Lights"), QStringLiteral("Mute"),
                                             QStringLiteral("Touch Marker")};
        AppState::shared().setBindings({rule});
        QQuickWindow* sheet =
            openRule(QStringLiteral("RulesTabItem"), 0, QStringLiteral("EditRuleSheet"));
        QVERIFY(sheet);
        QQuickItem* onConnect = section(sheet, QStringLiteral("OnConnectShortcuts"));
        QQuickItem* onDisconnect = section(sheet, QStringLiteral("OnDisconnectShortcuts"));
        QVERIFY(onConnect && onDisconnect);

        QList<QQuickItem*> rows = items(onConnect, QStringLiteral("ShortcutRow"));
        QCOMPARE(rows.size(), 3);
        QVERIFY(!items(rows[0], "MoveUpButton").value(0)->isEnabled());
        QVERIFY(items(rows[0], "MoveDownButton").value(0)->isEnabled());
        QVERIFY(items(rows[2], "MoveUpButton").value(0)->isEnabled());
        QVERIFY(!items(rows[2], "MoveDownButton").value(0)->isEnabled());
        QCOMPARE(offered(onConnect), QStringList{QStringLiteral("Backup")});
        QCOMPARE(offered(onDisconnect),
                 QStringList({QStringLiteral("Backup"), QStringLiteral("Dim Lights"),
                              QStringLiteral("Mute"), QStringLiteral("Touch Marker")}));

        // Trying a shortcut runs it now and changes nothing.
        QVERIFY(click(items(rows[2], "TestShortcutButton").value(0)));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(marker), 5000);

        QVERIFY(click(items(rows[0], "MoveDownButton").value(0)));
        QTRY_COMPARE_WITH_TIMEOUT(rowTexts(sheet, "ShortcutRow", "shortcutName"),
                                  QStringList({QStringLiteral("Mute"), QStringLiteral("Dim Lights"),
                                               QStringLiteral("Touch Marker")}),
                                  2000);
        rows = items(onConnect, QStringLiteral("ShortcutRow"));
        QVERIFY(click(items(rows[2], "MoveUpButton").value(0)));
        QTRY_COMPARE_WITH_TIMEOUT(
            rowTexts(sheet, "ShortcutRow", "shortcutName"),
            QStringList({QStringLiteral("Mute"), QStringLiteral("Touch Marker"),
                         QStringLiteral("Dim Lights")}),
            2000);
        rows = items(onConnect, QStringLiteral("ShortcutRow"));
        QVERIFY(click(items(rows[0], "RemoveShortcutButton").value(0)));
        QTRY_COMPARE_WITH_TIMEOUT(items(onConnect, QStringLiteral("ShortcutRow")).size(), 2, 2000);
        QCOMPARE(offered(onConnect),
                 QStringList({QStringLiteral("Backup"), QStringLiteral("Mute")}));

        // The same shortcut may run on both sides.
        QVERIFY(addShortcut(onDisconnect, QStringLiteral("Dim Lights")));
        QVERIFY(!offered(onDisconnect).contains(QStringLiteral("Dim Lights")));
        QVERIFY(click(sheet, QStringLiteral("SaveChangesButton")));
        QVERIFY(sheetCloses(QStringLiteral("EditRuleSheet")));
        const QJsonObject shortcuts =
            storedRule(QStringLiteral("bindings.json"), 0).value("shortcuts").toObject();
        QCOMPARE(shortcuts.value("shortcutsOnConnect").toArray(),
                 QJsonArray({QStringLiteral("Touch Marker"), QStringLiteral("Dim Lights")}));
        QCOMPARE(shortcuts.value("shortcutsOnDisconnect").toArray(),
                 QJsonArray{QStringLiteral("Dim Lights")});
    }

    void manualActionsLaunchAndQuitTheRulesApplication()
    {
        // A program of its own, so that no other process of the user's counts as this one.
        const QString program = m_scratch.filePath(QStringLiteral("obrinta-test-sleeper"));
        QVERIFY(QFile::copy(QStringLiteral("/bin/sleep"), program));
        writeDesktopEntry(QStringLiteral("org.example.Sleeper"), QStringLiteral("Sleeper"),
                          program + QStringLiteral(" 120"));
        DeviceAppBinding rule =
            UITestSupport::rule(QStringLiteral("Sleeper"), QStringLiteral("Pad"), 1, 2);
        rule.appPath = qEnvironmentVariable("XDG_DATA_HOME") +
                       QStringLiteral("/applications/org.example.Sleeper.desktop");
        AppState::shared().setBindings({rule});
        QQuickWindow* sheet =
            openRule(QStringLiteral("RulesTabItem"), 0, QStringLiteral("EditRuleSheet"));
        QVERIFY(sheet);
        QVERIFY(!isEnabled(sheet, QStringLiteral("QuitAppButton")));
        QVERIFY(click(sheet, QStringLiteral("LaunchAppButton")));
        QTRY_VERIFY_WITH_TIMEOUT(isEnabled(sheet, QStringLiteral("QuitAppButton")), 10000);
        QVERIFY(!isEnabled(sheet, QStringLiteral("LaunchAppButton")));
        QCOMPARE(item(sheet, QStringLiteral("ApplicationCardState"))->property("text").toString(),
                 QStringLiteral("Running"));
        QVERIFY(click(sheet, QStringLiteral("QuitAppButton")));
        QTRY_VERIFY_WITH_TIMEOUT(isEnabled(sheet, QStringLiteral("LaunchAppButton")), 10000);
    }
};

QTEST_MAIN(RuleSheetsTest)
#include "test_rulesheets.moc"
