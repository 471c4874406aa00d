#include "AppDelegate.h"
#include "UnixSignalWatcher.h"

#include <QApplication>

#include <csignal>
#include <cstdio>

int main(int argc, char* argv[])
{
    // Each log line reaches a reader as it happens, also through a pipe.
    std::setvbuf(stdout, nullptr, _IOLBF, 0);

    const bool headless =
        qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    // A display that cannot be reached (a stale DISPLAY, a compositor gone) falls back to
    // running headless instead of ending the program.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        if (headless)
            qputenv("QT_QPA_PLATFORM", "offscreen");
        else if (!qEnvironmentVariableIsEmpty("DISPLAY"))
            qputenv("QT_QPA_PLATFORM", "xcb;offscreen");
        else
            qputenv("QT_QPA_PLATFORM", "wayland;offscreen");
    }

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Obrinta"));
    QApplication::setApplicationVersion(QStringLiteral(OBRINTA_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("obrinta"));
    QApplication::setQuitOnLastWindowClosed(false);

    AppDelegate delegate(QApplication::arguments());
    UnixSignalWatcher signals_({SIGTERM, SIGINT, SIGHUP});
    QObject::connect(&signals_, &UnixSignalWatcher::received, &application,
                     [] { QApplication::quit(); });
    QObject::connect(&application, &QApplication::aboutToQuit, &delegate,
                     &AppDelegate::applicationWillTerminate);

    if (!delegate.claimSingleInstance())
        return 0;
    delegate.applicationDidFinishLaunching();
    return QApplication::exec();
}
