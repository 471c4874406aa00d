// The CPU cost of one WiFi poll (the check that runs every five seconds) while joined to a
// network: against python3-dbusmock's NetworkManager on a private bus that this program starts,
// or, where that cannot be had, against an in-process backend (the monitor's own share alone).
#include "BenchSupport.h"

#include "monitors/WiFiMonitor.h"
#include "platform/Log.h"
#include "platform/SystemWiFiBackend.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QProcess>

#include <ctime>
#include <memory>

namespace {

constexpr int kPolls = 2000;

struct FixedBackend : WiFiBackend
{
    std::optional<QString> interfaceName() const override { return QStringLiteral("wlan0"); }
    std::optional<QString> ssid() override { return QStringLiteral("Home"); }
    std::optional<QString> bssid() override { return QStringLiteral("00:11:22:33:44:00"); }
    int authorizationStatus() const override { return 3; }
    void requestAuthorization() override {}
    bool startEvents(QString&) override { return true; }
    bool stopEvents(QString&) override { return true; }
};

double processCpuMs()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

// A private bus with the NetworkManager double joined to "Home"; false when it cannot be had.
bool startNetworkManagerDouble(QProcess& bus, QProcess& networkManager)
{
    bus.start(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"),
               QStringLiteral("--print-address=1")});
    if (!bus.waitForStarted(5000) || !bus.waitForReadyRead(5000))
        return false;
    const QByteArray address = bus.readLine().trimmed();
    if (address.isEmpty())
        return false;
    // Read by the system-bus connection when it is first made, below.
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", address);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), QString::fromUtf8(address));
    networkManager.setProcessEnvironment(environment);
    // The double logs every call; unread, its output would fill the pipe and stall it.
    networkManager.setStandardOutputFile(QProcess::nullDevice());
    networkManager.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    networkManager.start(
        QStringLiteral("/usr/bin/python3"),
        {QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--system"),
         QStringLiteral("--template"),
         QStringLiteral(OBRINTA_SOURCE_DIR "/tests/support/nm_wifi_template.py"),
         QStringLiteral("--parameters"),
         QStringLiteral(R"({"AccessPoints": [[72, 111, 109, 101]], "Active": 0})")});
    return networkManager.waitForStarted(5000);
}

// The poll's CPU and wall time per call, in microseconds.
std::pair<double, double> measure(WiFiMonitor& monitor)
{
    monitor.checkForSSIDChange();
    const double cpuBefore = processCpuMs();
    QElapsedTimer wall;
    wall.start();
    for (int i = 0; i < kPolls; ++i)
        monitor.checkForSSIDChange();
    return {(processCpuMs() - cpuBefore) * 1e3 / kPolls,
            double(wall.nsecsElapsed()) / 1e3 / kPolls};
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    Log::setSink([](const QString&) {});

    QProcess bus;
    QProcess networkManager;
    std::unique_ptr<WiFiBackend> backend;
    if (startNetworkManagerDouble(bus, networkManager)) {
        backend = std::make_unique<SystemWiFiBackend>();
        QDeadlineTimer deadline(10000);
        while (!backend->ssid() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    }
    const bool againstBus = backend && backend->ssid() == QStringLiteral("Home");
    if (!againstBus) {
        std::fprintf(stderr, "NetworkManager double unavailable; measuring the monitor alone\n");
        backend = std::make_unique<FixedBackend>();
    }

    WiFiMonitor monitor(*backend);
    monitor.checkCurrentNetwork();
    const auto [cpu, wall] = measure(monitor);
    const char* suffix = againstBus ? "networkmanager" : "in_process";
    Bench::result(QStringLiteral("wifi_poll_cpu_per_poll_%1").arg(suffix).toUtf8().constData(), cpu,
                  "us", "<1000");
    Bench::result(QStringLiteral("wifi_poll_wall_per_poll_%1").arg(suffix).toUtf8().constData(),
                  wall, "us", "-");

    networkManager.terminate();
    networkManager.waitForFinished(5000);
    bus.terminate();
    bus.waitForFinished(5000);
    return 0;
}
