// Saves pictures of the rule tabs and of every rule sheet, filled with sample devices, rules,
// applications and shortcuts, into the folder given as the first argument. Run by
// screenshots.sh under Xvfb.
#include "UITestSupport.h"
#include "model/AppState.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

namespace {

QString g_folder;

bool save(QQuickWindow* window, const QString& name)
{
    QTest::qWait(400);
    const QImage image = window ? window->grabWindow() : QImage();
    const QString path = g_folder + QLatin1Char('/') + name + QStringLiteral(".png");
    const bool saved = !image.isNull() && image.save(path);
    qInfo("%s %s", saved ? "saved" : "could not save", qPrintable(path));
    return saved;
}

void fillState()
{
    AppState& state = AppState::shared();
    state.setIsMonitoring(false);
    state.setIsWiFiMonitoring(false);
    USBDevice receiver = UITestSupport::device(0x046D, 0xC52B, QStringLiteral("Logitech"),
                                               QStringLiteral("Unifying Receiver"));
    USBDevice key = UITestSupport::device(0x1050, 0x0407, QStringLiteral("Yubico"),
                                          QStringLiteral("YubiKey 5 NFC"));
    key.serialNumber = QStringLiteral("18764523");
    state.setConnectedDevices({receiver, key,
                               UITestSupport::device(0x0FD9, 0x006D, QStringLiteral("Elgato"),
                                                     QStringLiteral("Stream Deck XL")),
                               UITestSupport::device(0x0781, 0x5583, QStringLiteral("SanDisk"),
                                                     QStringLiteral("Ultra Fit"))});

    DeviceAppBinding deck = UITestSupport::rule(QStringLiteral("Stream Deck"),
                                                QStringLiteral("Stream Deck XL"), 0x0FD9, 0x006D);
    deck.launchOnConnect = true;
    deck.killOnDisconnect = true;
    deck.forceQuitAllowed = true;
    deck.forceQuitTimeout = 2.5;
    deck.shortcuts.shortcutsOnConnect = {QStringLiteral("Dim Lights"),
                                         QStringLiteral("Start Recording")};
    DeviceAppBinding keepass = UITestSupport::rule(QStringLiteral("KeePassXC"),
                                                   QStringLiteral("YubiKey 5 NFC"), 0x1050, 0x0407);
    keepass.launchOnConnect = true;
    DeviceAppBinding darktable = UITestSupport::rule(QStringLiteral("Darktable"),
                                                     QStringLiteral("Card Reader"), 0x05E3, 0x0751);
    darktable.killOnDisconnect = true;
    state.setBindings({deck, keepass, darktable,
                       UITestSupport::rule(QStringLiteral("Ardour"), QStringLiteral("Scarlett 2i2"),
                                           0x1235, 0x8210, false)});

    WiFiAppBinding office;
    office.id = QUuid::createUuid();
    office.ssid = QStringLiteral("Office 5G");
    office.appName = QStringLiteral("Slack");
    office.appBundleIdentifier = QStringLiteral("com.slack.Slack");
    office.launchOnConnect = true;
    office.killOnDisconnect = true;
    WiFiAppBinding home = office;
    home.id = QUuid::createUuid();
    home.ssid = QStringLiteral("Home");
    home.appName = QStringLiteral("Steam");
    home.killOnDisconnect = false;
    state.setWifiBindings({office, home});
    state.setCurrentWiFiNetwork(
        WiFiNetwork{QStringLiteral("Office 5G"), QStringLiteral("Office 5G"), {}});
}

void writeSamples()
{
    const QList<std::pair<QString, QString>> apps{
        {QStringLiteral("org.gnome.TextEditor"), QStringLiteral("Text Editor")},
        {QStringLiteral("org.keepassxc.KeePassXC"), QStringLiteral("KeePassXC")},
        {QStringLiteral("com.obsproject.Studio"), QStringLiteral("OBS Studio")},
        {QStringLiteral("org.darktable.Darktable"), QStringLiteral("darktable")},
        {QStringLiteral("org.mozilla.firefox"), QStringLiteral("Firefox")},
        {QStringLiteral("com.slack.Slack"), QStringLiteral("Slack")},
        {QStringLiteral("com.valvesoftware.Steam"), QStringLiteral("Steam")},
    };
    for (const auto& [id, name] : apps)
        UITestSupport::writeDesktopEntry(id, name);
    for (const QString& name : {QStringLiteral("Dim Lights"), QStringLiteral("Start Recording"),
                                QStringLiteral("Mute Notifications")})
        UITestSupport::writeShortcut(name);
}

QQuickWindow* openSheet(QQuickWindow* settings, const QString& button, const QString& sheetName)
{
    if (!UITestSupport::click(settings, button))
        return nullptr;
    return UITestSupport::sheet(sheetName);
}

bool closeSheet(QQuickWindow* sheet)
{
    if (!sheet)
        return false;
    const QString name = sheet->objectName();
    QTest::keyClick(sheet, Qt::Key_Escape);
    return UITestSupport::sheetCloses(name);
}

} // namespace

int main(int argc, char* argv[])
{
    UITestSupport::useTemporaryHome();
    QApplication application(argc, argv);
    g_folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("screenshots");
    QDir().mkpath(g_folder);
    writeSamples();
    fillState();

    TestShell shell;
    shell.host.showSettings();
    QQuickWindow* settings = shell.host.settingsWindow();
    bool allSaved = settings != nullptr;

    allSaved &= UITestSupport::click(settings, QStringLiteral("RulesTabItem"));
    QQuickWindow* sheet =
        openSheet(settings, QStringLiteral("AddRuleButton"), QStringLiteral("AddRuleSheet"));
    const QList<QQuickItem*> devices = UITestSupport::items(sheet ? sheet->contentItem() : nullptr,
                                                            QStringLiteral("DeviceSelectionRow"));
    allSaved &= !devices.isEmpty() && UITestSupport::click(devices.first());
    QTest::qWait(300);
    const QList<QQuickItem*> apps = UITestSupport::items(sheet ? sheet->contentItem() : nullptr,
                                                         QStringLiteral("AppSelectionRow"));
    allSaved &= apps.size() > 1 && UITestSupport::click(apps.at(1));
    allSaved &= save(sheet, QStringLiteral("sheet-add-rule"));
    UITestSupport::scrollIntoView(
        UITestSupport::item(sheet, QStringLiteral("OpenShortcutsFolderButton")));
    allSaved &= save(sheet, QStringLiteral("sheet-add-rule-bottom"));
    allSaved &= UITestSupport::click(sheet, QStringLiteral("BrowseButton"));
    allSaved &= save(sheet, QStringLiteral("sheet-add-rule-browse"));
    // The first Escape closes the file dialog, the second the sheet.
    QTest::keyClick(sheet, Qt::Key_Escape);
    QTest::qWait(300);
    allSaved &= closeSheet(sheet);

    QList<QQuickItem*> rows =
        UITestSupport::items(settings->contentItem(), QStringLiteral("RuleRow"));
    allSaved &= !rows.isEmpty() && UITestSupport::click(rows.first());
    sheet = UITestSupport::sheet(QStringLiteral("EditRuleSheet"));
    allSaved &= save(sheet, QStringLiteral("sheet-edit-rule"));
    allSaved &= UITestSupport::click(sheet, QStringLiteral("DeleteRuleButton"));
    allSaved &= save(sheet, QStringLiteral("sheet-edit-rule-delete"));
    if (sheet)
        QTest::keyClick(sheet, Qt::Key_Escape);
    QTest::qWait(300);
    allSaved &= save(sheet, QStringLiteral("sheet-edit-rule-bottom"));
    allSaved &= closeSheet(sheet);

    allSaved &= UITestSupport::click(settings, QStringLiteral("WiFiRulesTabItem"));
    sheet = openSheet(settings, QStringLiteral("AddWiFiRuleButton"),
                      QStringLiteral("AddWiFiRuleSheet"));
    allSaved &= UITestSupport::click(sheet, QStringLiteral("CurrentNetworkRow"));
    allSaved &= save(sheet, QStringLiteral("sheet-add-wifi-rule"));
    allSaved &= closeSheet(sheet);

    rows = UITestSupport::items(settings->contentItem(), QStringLiteral("RuleRow"));
    allSaved &= !rows.isEmpty() && UITestSupport::click(rows.first());
    sheet = UITestSupport::sheet(QStringLiteral("EditWiFiRuleSheet"));
    allSaved &= save(sheet, QStringLiteral("sheet-edit-wifi-rule"));
    allSaved &= closeSheet(sheet);

    allSaved &= save(settings, QStringLiteral("rules-wifi"));
    allSaved &= UITestSupport::click(settings, QStringLiteral("RulesTabItem"));
    allSaved &= save(settings, QStringLiteral("rules-usb"));
    allSaved &= UITestSupport::click(settings, QStringLiteral("DevicesTabItem"));
    allSaved &= save(settings, QStringLiteral("rules-devices"));
    return allSaved ? 0 : 1;
}
