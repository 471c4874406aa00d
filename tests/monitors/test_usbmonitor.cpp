#include "monitors/USBMonitor.h"
#include "platform/NotificationCenter.h"

#include "LogCapture.h"

#include <QSignalSpy>
#include <QTest>

namespace {

struct FakeSource : USBDeviceSource
{
    QList<Properties> devices;
    int result = 0;
    std::function<void(Event)> handler;
    int enumerate(QList<Properties>& out) override
    {
        out = devices;
        return result;
    }
    bool startWatching(std::function<void(Event)> h) override
    {
        handler = std::move(h);
        return true;
    }
    void stopWatching() override { handler = nullptr; }
};

USBDeviceSource::Properties props(qint64 vendor, qint64 product,
                                  std::optional<QString> vendorText = {},
                                  std::optional<QString> productText = {})
{
    USBDeviceSource::Properties p;
    p.idVendor = vendor;
    p.idProduct = product;
    p.vendorString = vendorText;
    p.productString = productText;
    p.locationID = 0x14200000;
    return p;
}

} // namespace

class TestUSBMonitor : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { qputenv("OBRINTA_DEBUG", "1"); }

    // Names and exclusions as the USB scenario sees them through udev are its part.
    void recordsTakeNamesFromTablesThenDeviceAndLeaveHubsOut()
    {
        auto deck = USBMonitor::makeDevice(props(0x0fd9, 0x006d, "Elgato Systems", "Stream Deck"));
        QCOMPARE(deck->vendorName, "Elgato");
        QCOMPARE(deck->id, "4057:109:337641472");
        QCOMPARE(USBMonitor::makeDevice(props(0x1234, 0x5678, "Acme"))->displayName(),
                 "Acme Device");
        QVERIFY(!USBMonitor::makeDevice(props(0, 5)));
        QVERIFY(!USBMonitor::makeDevice(USBDeviceSource::Properties()));

        QVERIFY(USBMonitor::isExcluded(*USBMonitor::makeDevice(props(0x1d6b, 2))));
        const auto via = USBMonitor::makeDevice(props(0x2109, 0x0001));
        QVERIFY(!USBMonitor::isExcluded(*via));
        QCOMPARE(via->vendorName, "VIA Labs");
    }

    void identicalDevicesAreEqualButListedTwice()
    {
        FakeSource source;
        auto second = props(0x046d, 0xc52b);
        second.locationID = 0x14300000;
        source.devices = {props(0x046d, 0xc52b), second, props(0x8087, 1)};
        USBMonitor monitor(source, {});
        QSignalSpy posted(&NotificationCenter::defaultCenter(), &NotificationCenter::posted);
        monitor.scanDevices();
        QVERIFY(monitor.connectedDevices().isEmpty()); // the update is queued
        QTRY_COMPARE_WITH_TIMEOUT(monitor.connectedDevices().size(), 2, 2000);
        QCOMPARE(monitor.connectedDevices().at(0), monitor.connectedDevices().at(1));
        QVERIFY(monitor.connectedDevices().at(0).id != monitor.connectedDevices().at(1).id);
        QCOMPARE(posted.count(), 1);
        QCOMPARE(posted.first().at(0).toString(), "usbDevicesChanged");
    }

    void failedEnumerationKeepsTheListAndPostsNothing()
    {
        FakeSource source;
        source.devices = {props(0x046d, 0xc52b)};
        USBMonitor monitor(source, {});
        monitor.scanDevices();
        QTRY_COMPARE_WITH_TIMEOUT(monitor.connectedDevices().size(), 1, 2000);
        source.result = -5;
        QSignalSpy posted(&NotificationCenter::defaultCenter(), &NotificationCenter::posted);
        LogCapture log;
        monitor.scanDevices();
        QCoreApplication::processEvents();
        QCOMPARE(log.take().last(), "❌ [USBMonitor] Failed to get matching services: -5");
        QCOMPARE(posted.count(), 0);
        QCOMPARE(monitor.connectedDevices().size(), 1);
    }

    void everyEventRescansHalfASecondLaterThenEvaluates()
    {
        FakeSource source;
        int evaluations = 0;
        QList<int> devicesSeenByEvaluation;
        USBMonitor* monitorPointer = nullptr;
        USBMonitor monitor(source, [&] {
            ++evaluations;
            devicesSeenByEvaluation << int(monitorPointer->connectedDevices().size());
        });
        monitorPointer = &monitor;
        monitor.startMonitoring();
        LogCapture log;
        source.devices = {props(0x1050, 0x0407)};
        source.handler(USBDeviceSource::Event::Removed);
        QTest::qWait(200);
        source.handler(USBDeviceSource::Event::Added);
        QCOMPARE(evaluations, 0);
        QTRY_COMPARE_WITH_TIMEOUT(evaluations, 2, 3000);
        QCOMPARE(devicesSeenByEvaluation, (QList<int>{1, 1}));
        const QStringList lines = log.take();
        QCOMPARE(lines.first(), "🔌 [USBMonitor] Device REMOVED notification received");
        const qsizetype removeScan =
            lines.indexOf("🔌 [USBMonitor] Scanning devices after REMOVE event...");
        const qsizetype addScan =
            lines.indexOf("🔌 [USBMonitor] Scanning devices after ADD event...");
        QVERIFY(removeScan > 0 && addScan > removeScan);
        QVERIFY(lines.indexOf("🔌 [USBMonitor] Triggering evaluation after REMOVE") > removeScan);

        monitor.stopMonitoring();
        QVERIFY(!source.handler);
    }

    void lostEventsStillEndInARescan()
    {
        FakeSource source;
        int evaluations = 0;
        USBMonitor monitor(source, [&] { ++evaluations; });
        monitor.startMonitoring();
        source.devices = {props(0x1050, 0x0407), props(0x046d, 0xc52b)};
        LogCapture log;
        source.handler(USBDeviceSource::Event::Overflow);
        QTRY_COMPARE_WITH_TIMEOUT(evaluations, 1, 3000);
        QCOMPARE(monitor.connectedDevices().size(), 2);
        QCOMPARE(log.take().first(), "⚠️ [USBMonitor] Device event buffer overflowed");
    }
};

QTEST_GUILESS_MAIN(TestUSBMonitor)
#include "test_usbmonitor.moc"
