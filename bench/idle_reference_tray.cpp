// The smallest Qt program that does what Obrinta's tray does at idle: a tray icon with a menu.
// The idle benchmark measures it beside Obrinta so that the figures say what Qt itself costs.
#include <QApplication>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QPixmap pixmap(22, 22);
    pixmap.fill(Qt::darkGray);
    QSystemTrayIcon tray{QIcon(pixmap)};
    QMenu menu;
    menu.addAction(QStringLiteral("Settings..."));
    menu.addAction(QStringLiteral("Quit"), &app, &QCoreApplication::quit);
    tray.setContextMenu(&menu);
    tray.show();
    return app.exec();
}
