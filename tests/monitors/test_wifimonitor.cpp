#include "monitors/WiFiMonitor.h"
#include "platform/NotificationCenter.h"

#include "LogCapture.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {

struct FakeBackend : WiFiBackend
{
    std::optional<QString> name = "wlan0";
    std::optional<QString> network;
    std::optional<QString> accessPoint;
    bool eventsRefused = false;
    bool stopRefused = false;

    std::optional<QString> interfaceName() const override { return name; }
    std::optional<QString> ssid() override { return network; }
    std::optional<QString> bssid() override { return accessPoint; }
    // Authorised, as the system backend always is.
    int authorizationStatus() const override { return 3; }
    void requestAuthorization() override {}
    bool startEvents(QString& error) override
    {
        error = "bus gone";
        return !eventsRefused;
    }
    bool stopEvents(QString& error) override
    {
        error = "still busy";
        return !stopRefused;
    }
};

struct Posted
{
    QVariant previousSSID;
    QVariant currentSSID;
    QVariant network;
};

// The "wifiNetworkChanged" notifications delivered once the main queue has run.
QList<Posted> drainNotifications()
{
    QList<Posted> posted;
    const auto connection =
        QObject::connect(&NotificationCenter::defaultCenter(), &NotificationCenter::posted,
                         [&posted](const QString& name, const QVariantMap& info) {
                             if (name == QLatin1String("wifiNetworkChanged"))
                                 posted.append({info.value("previousSSID"),
                                                info.value("currentSSID"), info.value("network")});
                         });
    QCoreApplication::processEvents();
    QObject::disconnect(connection);
    return posted;
}

QString ssidOf(const QVariant& network)
{
    return network.value<WiFiNetwork>().ssid;
}

} // namespace

class TestWiFiMonitor : public QObject
{
    Q_OBJECT

    LogCapture log;
    std::unique_ptr<FakeBackend> backend;
    std::unique_ptr<WiFiMonitor> monitor;

    // Makes and starts the monitor; the lines it logged.
    QStringList start()
    {
        monitor = std::make_unique<WiFiMonitor>(*backend);
        monitor->startMonitoring();
        return log.take();
    }

    QStringList check()
    {
        monitor->checkForSSIDChange();
        return log.take();
    }

private Q_SLOTS:
    void initTestCase() { qputenv("OBRINTA_DEBUG", "1"); }

    void init()
    {
        backend = std::make_unique<FakeBackend>();
        log.take();
    }

    void cleanup()
    {
        monitor.reset();
        drainNotifications();
    }

    // Its log lines are the NetworkManager scenarios' part.
    void startOnJoinedNetworkAnnouncesItTwice()
    {
        backend->network = "Home";
        backend->accessPoint = "AA:BB:CC:DD:EE:FF";
        start();
        const QList<Posted> posted = drainNotifications();
        QCOMPARE(posted.size(), 2);
        for (const Posted& one : posted) {
            QVERIFY(!one.previousSSID.isValid());
            QCOMPARE(one.currentSSID.toString(), "Home");
            QCOMPARE(ssidOf(one.network), "Home");
            QCOMPARE(one.network.value<WiFiNetwork>().bssid, backend->accessPoint);
        }
        QCOMPARE(monitor->currentNetwork()->id, "Home");

        // The poll has nothing to report while the network stays.
        QVERIFY(monitor->findChild<QTimer*>()->isActive());
        QVERIFY(check().isEmpty());
        QVERIFY(check().isEmpty());
        QVERIFY(drainNotifications().isEmpty());
    }

    // The log lines of changes, and names compared byte for byte, are the NetworkManager
    // scenarios' part.
    void changesAnnounceThePreviousAndTheCurrentNetwork()
    {
        backend->network = "Home";
        start();
        drainNotifications();
        backend->network = "Office";
        check();
        QList<Posted> posted = drainNotifications();
        QCOMPARE(posted.size(), 2);
        QVERIFY(!posted[0].previousSSID.isValid());
        QCOMPARE(posted[1].previousSSID.toString(), "Home");
        for (const Posted& one : posted) {
            QCOMPARE(one.currentSSID.toString(), "Office");
            QCOMPARE(ssidOf(one.network), "Office");
        }

        backend->network.reset();
        check();
        posted = drainNotifications();
        QCOMPARE(posted.size(), 1);
        QCOMPARE(posted[0].previousSSID.toString(), "Office");
        QVERIFY(!posted[0].currentSSID.isValid());
        QVERIFY(!posted[0].network.canConvert<WiFiNetwork>());
        QVERIFY(!monitor->currentNetwork());
    }

    void networkIsReadWhenAskedAndWhenTheNotificationIsPosted()
    {
        start();
        backend->network = "Home";
        check();
        backend->network = "Office";
        check();
        const QList<Posted> posted = drainNotifications();
        QCOMPARE(posted.size(), 4);
        QCOMPARE(posted[1].currentSSID.toString(), "Home");
        for (const Posted& one : posted)
            QCOMPARE(ssidOf(one.network), "Office");

        // The SSID is the one of the moment, not the one last checked.
        backend->network = "Café";
        QCOMPARE(monitor->currentSSID(), "Café");
        QCOMPARE(monitor->currentNetwork()->ssid, "Office");
    }

    void eventsRunChecksLinkChangeOneSecondLater()
    {
        start();
        backend->network = "Home";
        Q_EMIT backend->ssidDidChange();
        QCOMPARE(log.take().mid(0, 2),
                 QStringList({"📶 [WiFiMonitor] CoreWLAN ssidDidChange event received",
                              "📶 [WiFiMonitor] SSID changed: 'none' → 'Home'"}));
        backend->network = "Office";
        QElapsedTimer clock;
        clock.start();
        Q_EMIT backend->linkDidChange();
        QCOMPARE(log.take(), QStringList{"📶 [WiFiMonitor] CoreWLAN linkDidChange event received"});
        QTRY_VERIFY_WITH_TIMEOUT(!LogCapture::lines().isEmpty(), 3000);
        QVERIFY(clock.elapsed() >= 950);
        QCOMPARE(log.take().constFirst(), "📶 [WiFiMonitor] SSID changed: 'Home' → 'Office'");
    }

    void eventsRefusedLeavesThePoll()
    {
        backend->eventsRefused = true;
        QCOMPARE(start().mid(6), QStringList({"⚠️ [WiFiMonitor] Could not start CoreWLAN event "
                                              "monitoring: bus gone",
                                              "📶 [WiFiMonitor] Falling back to polling only",
                                              "📶 [WiFiMonitor] WiFi monitoring started"}));
        QVERIFY(monitor->findChild<QTimer*>()->isActive());
        Q_EMIT backend->ssidDidChange();
        QVERIFY(log.take().isEmpty());
    }

    void stopEndsPollAndEventsAndAStartAgainWorks()
    {
        backend->stopRefused = true;
        start();
        monitor->stopMonitoring();
        QCOMPARE(log.take(),
                 QStringList({"📶 [WiFiMonitor] Stopping WiFi monitoring...",
                              "⚠️ [WiFiMonitor] Failed to stop CoreWLAN monitoring: still busy",
                              "📶 [WiFiMonitor] WiFi monitoring stopped"}));
        QVERIFY(!monitor->findChild<QTimer*>());
        backend->network = "Home";
        Q_EMIT backend->ssidDidChange();
        Q_EMIT backend->linkDidChange();
        Q_EMIT backend->interfaceDidChange();
        QTest::qWait(1200);
        QVERIFY(log.take().isEmpty());

        monitor->startMonitoring();
        QVERIFY(!log.take().contains("📶 [WiFiMonitor] SSID changed: 'none' → 'Home'"));
        QCOMPARE(monitor->currentNetwork()->ssid, "Home");
        QCOMPARE(monitor->findChildren<QTimer*>().size(), 1);
    }

    // Interfaces that come and go while monitoring are the NetworkManager scenarios' part.
    void withoutAnInterfaceThereIsNoNetwork()
    {
        backend->name.reset();
        backend->network = "Home";
        monitor = std::make_unique<WiFiMonitor>(*backend);
        QCOMPARE(log.take(), QStringList{"⚠️ [WiFiMonitor] No WiFi interface available"});
        QVERIFY(!monitor->currentSSID());
        Q_EMIT backend->interfaceDidChange();
        QVERIFY(log.take().isEmpty());
        monitor->startMonitoring();
        QVERIFY(log.take().contains("📶 [WiFiMonitor] No WiFi network connected"));
        QVERIFY(drainNotifications().isEmpty());

        backend->name = QString();
        Q_EMIT backend->interfaceDidChange();
        QCOMPARE(log.take().constFirst(), "📶 [WiFiMonitor] WiFi interface found: unknown");
    }
};

QTEST_GUILESS_MAIN(TestWiFiMonitor)
#include "test_wifimonitor.moc"
