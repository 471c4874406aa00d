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
    if (headless && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

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
