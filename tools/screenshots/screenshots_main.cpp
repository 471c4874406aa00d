// Saves pictures of the panel and of each settings tab, filled with sample devices and rules,
// into the folder given as the first argument. Run by screenshots.sh under Xvfb.
#include "UITestSupport.h"
#include "model/AppState.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QQuickWindow>
#include <QTest>

namespace {

bool save(QQuickWindow* window, const QString& path)
{
    QTest::qWait(300);
    const QImage image = window->grabWindow();
    const bool saved = !image.isNull() && image.save(path);
    qInfo("%s %s", saved ? "saved" : "could not save", qPrintable(path));
    return saved;
}

} // namespace

int main(int argc, char* argv[])
{
    UITestSupport::useTemporaryHome();
    QApplication application(argc, argv);
    const QString folder =
        argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("screenshots");
    QDir().mkpath(folder);

    AppState& state = AppState::shared();
    state.setConnectedDevices({
        UITestSupport::device(0x046D, 0xC52B, QStringLiteral("Logitech"),
                              QStringLiteral("Unifying Receiver")),
        UITestSupport::device(0x0FD9, 0x006D, QStringLiteral("Elgato"),
                              QStringLiteral("Stream Deck XL")),
        UITestSupport::device(0x1050, 0x0407, QStringLiteral("Yubico"),
                              QStringLiteral("YubiKey 5 NFC")),
        UITestSupport::device(0x05AC, 0x024F, QStringLiteral("Apple Inc."),
                              QStringLiteral("Magic Keyboard")),
        UITestSupport::device(0x0781, 0x5583, QStringLiteral("SanDisk"),
                              QStringLiteral("Ultra Fit")),
        UITestSupport::device(0x2109, 0x8888, QStringLiteral("VIA Labs"),
                              QStringLiteral("Billboard Device")),
        UITestSupport::device(0x0BDA, 0x8153, QStringLiteral("Realtek"),
                              QStringLiteral("USB 10/100/1000 LAN")),
    });
    state.setBindings({
        UITestSupport::rule(QStringLiteral("Stream Deck"), QStringLiteral("Stream Deck XL"), 0x0FD9,
                            0x006D),
        UITestSupport::rule(QStringLiteral("KeePassXC"), QStringLiteral("YubiKey 5 NFC"), 0x1050,
                            0x0407),
        UITestSupport::rule(QStringLiteral("Darktable"), QStringLiteral("Card Reader"), 0x05E3,
                            0x0751),
        UITestSupport::rule(QStringLiteral("OBS Studio"), QStringLiteral("Cam Link 4K"), 0x0FD9,
                            0x0066),
        UITestSupport::rule(QStringLiteral("Ardour"), QStringLiteral("Scarlett 2i2"), 0x1235,
                            0x8210, false),
    });

    TestShell shell;
    WindowHost& host = shell.host;

    bool allSaved = true;
    host.showPanel(QRect(600, 0, 24, 24));
    allSaved &= save(host.panelWindow(), folder + QStringLiteral("/panel.png"));
    host.hidePanel();

    host.showSettings();
    const QStringList tabs{QStringLiteral("RulesTabItem"), QStringLiteral("WiFiRulesTabItem"),
                           QStringLiteral("DevicesTabItem"), QStringLiteral("GeneralTabItem")};
    for (const QString& tab : tabs) {
        allSaved &= UITestSupport::click(host.settingsWindow(), tab);
        allSaved &=
            save(host.settingsWindow(), folder + QStringLiteral("/settings-") +
                                            tab.chopped(7).toLower() + QStringLiteral(".png"));
    }
    return allSaved ? 0 : 1;
}
