// Time on the main thread from asking for a launch to the request being handed over: GIO's
// blocking work runs on a worker thread.
#include "BenchSupport.h"

#include "engine/ApplicationManager.h"
#include "engine/NotificationPosting.h"
#include "platform/GioDesktopApplications.h"
#include "platform/Log.h"
#include "platform/PidfdProcessControl.h"
#include "platform/ProcProcessTable.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

namespace {
struct Quiet : NotificationPosting
{
    int posted = 0;
    void postNotification(const QString&, const QString&, bool) override { ++posted; }
};
} // namespace

int main(int argc, char* argv[])
{
    QTemporaryDir home;
    QDir().mkpath(home.path() + "/applications");
    QFile entry(home.path() + "/applications/org.bench.True.desktop");
    entry.open(QIODevice::WriteOnly);
    entry.write("[Desktop Entry]\nType=Application\nName=True\nExec=/bin/true\n");
    entry.close();
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));

    QCoreApplication app(argc, argv);
    Log::setSink([](const QString&) {});
    GioDesktopApplications desktop;
    ProcProcessTable table([&](const QString& id) { return desktop.executableForId(id); });
    PidfdProcessControl control;
    Quiet quiet;
    ApplicationManager manager(desktop, table, control, quiet);

    QList<double> times;
    for (int i = 0; i < 20; ++i) {
        RuleContext context{"True", "", "org.bench.True", "because bench.", "because bench.",
                            false,  1};
        QElapsedTimer timer;
        timer.start();
        manager.launchApplication(context);
        times.append(double(timer.nsecsElapsed()) / 1e6);
        // Each launch finishes before the next, so that every one really reaches GIO.
        while (quiet.posted <= i)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
    std::sort(times.begin(), times.end());
    Bench::result("launch_request_main_thread", times.at(times.size() / 2), "ms", "<5");
    return 0;
}
