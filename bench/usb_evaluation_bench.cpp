// One USB evaluation with 1,000 enabled rules, 50 connected devices and 500 running processes,
// logging to /dev/null; and the delay from a device event to the evaluation starting.
#include "BenchSupport.h"

#include "engine/AppController.h"
#include "monitors/USBMonitor.h"
#include "platform/Log.h"
#include "platform/ProcProcessTable.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

namespace {

struct Devices : USBMonitoring
{
    QList<USBDevice> devices;
    QList<USBDevice> connectedDevices() const override { return devices; }
    void startMonitoring() override {}
    void scanDevices() override {}
    void stopMonitoring() override {}
};

struct CountingTable : RunningApplications
{
    ProcProcessTable table{[](const QString&) { return QString(); }};
    int reads = 0;
    void refresh() override
    {
        ++reads;
        table.refresh();
    }
    QList<Instance> instances(const QString& id) override { return table.instances(id); }
};

struct OneDevice : USBDeviceSource
{
    std::function<void(Event)> handler;
    int enumerate(QList<Properties>& devices) override
    {
        Properties p;
        p.idVendor = 0x1050;
        p.idProduct = 0x0407;
        devices = {p};
        return 0;
    }
    bool startWatching(std::function<void(Event)> h) override
    {
        handler = std::move(h);
        return true;
    }
    void stopWatching() override {}
};

QFile g_null(QStringLiteral("/dev/null"));

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    g_null.open(QIODevice::WriteOnly);
    Log::setSink([](const QString& line) { g_null.write(line.toUtf8() + '\n'); });

    Bench::SleepingChildren children(500);
    Devices devices;
    for (int i = 0; i < 50; ++i) {
        USBDevice device;
        device.vendorID = 0x1000 + i;
        device.productID = i;
        device.productName = QStringLiteral("Device %1").arg(i);
        devices.devices.append(device);
    }
    QList<DeviceAppBinding> rules;
    for (int i = 0; i < 1000; ++i) {
        DeviceAppBinding rule;
        rule.id = QUuid::createUuid();
        rule.deviceVendorID = 0x1000 + i % 100;
        rule.deviceProductID = i % 100;
        rule.deviceName = QStringLiteral("Device %1").arg(i);
        rule.appBundleIdentifier = QStringLiteral("org.bench.App%1").arg(i);
        rule.appName = QStringLiteral("App %1").arg(i);
        rule.launchOnConnect = false; // decide, but do not launch 1,000 applications
        rule.killOnDisconnect = true;
        rules.append(rule);
    }
    CountingTable table;
    AppController::Collaborators collaborators;
    collaborators.usbMonitor = &devices;
    collaborators.appStateProvider = [&rules] { return std::make_pair(rules, true); };
    collaborators.runningApplications = &table;
    AppController controller(collaborators);

    // On a desktop most processes have run for a while: their units have settled.
    QThread::sleep(11);
    const int runs = 20;
    const double ms = Bench::medianMs(runs, [&] { controller.evaluateAllBindings(); });
    Bench::result("usb_evaluation_1000_rules_50_devices_500_procs", ms, "ms", "<20");
    Bench::result("proc_reads_per_evaluation", double(table.reads) / runs, "reads", "=1");

    // Event to evaluation: the specified 0.5 s plus our own overhead.
    OneDevice source;
    QElapsedTimer timer;
    QList<double> overheads;
    USBMonitor monitor(source, [&] {
        overheads.append(double(timer.nsecsElapsed()) / 1e6 - 500.0);
        if (overheads.size() < 10) {
            timer.start();
            source.handler(USBDeviceSource::Event::Added);
        } else {
            QCoreApplication::quit();
        }
    });
    monitor.startMonitoring();
    timer.start();
    source.handler(USBDeviceSource::Event::Added);
    QCoreApplication::exec();
    std::sort(overheads.begin(), overheads.end());
    Bench::result("event_to_evaluation_overhead_beyond_500ms", overheads.at(overheads.size() / 2),
                  "ms", "<5");
    return 0;
}
