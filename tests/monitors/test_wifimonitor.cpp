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
    std::optional<QString> name = QStringLiteral("wlan0");
    std::optional<QString> network;
    std::optional<QString> accessPoint;
    int status = 3;
    bool eventsRefused = false;
    bool stopRefused = false;
    int authorizationRequests = 0;

    std::optional<QString> interfaceName() const override { return name; }
    std::optional<QString> ssid() override { return network; }
    std::optional<QString> bssid() override { return accessPoint; }
    int authorizationStatus() const override { return status; }
    void requestAuthorization() override { ++authorizationRequests; }
    bool startEvents(QString& error) override
    {
        error = QStringLiteral("bus gone");
        return !eventsRefused;
    }
    bool stopEvents(QString& error) override
    {
        error = QStringLiteral("still busy");
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
                                 posted.append({info.value(QStringLiteral("previousSSID")),
                                                info.value(QStringLiteral("currentSSID")),
                                                info.value(QStringLiteral("network"))});
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
private Q_SLOTS:
    void initTestCase() { qputenv("OBRINTA_DEBUG", "1"); }

    void startOnJoinedNetworkAnnouncesItTwice()
    {
        LogCapture log;
        FakeBackend backend;
        backend.network = QStringLiteral("Home");
        backend.accessPoint = QStringLiteral("AA:BB:CC:DD:EE:FF");
        WiFiMonitor monitor(backend);
        monitor.startMonitoring();

        const QString current =
            QStringLiteral("📶 [WiFiMonitor] Current network: 'Home' (BSSID: AA:BB:CC:DD:EE:FF)");
        QCOMPARE(log.take(),
                 QStringList({
                     QStringLiteral("📶 [WiFiMonitor] WiFi interface found: wlan0"),
                     QStringLiteral("📶 [WiFiMonitor] Starting WiFi monitoring..."),
                     QStringLiteral("📍 [WiFiMonitor] Location authorization status: 3"),
                     QStringLiteral("✅ [WiFiMonitor] Location access authorized (always)"),
                     current,
                     current,
                     QStringLiteral("📶 [WiFiMonitor] CoreWLAN delegate monitoring enabled"),
                     QStringLiteral("📶 [WiFiMonitor] WiFi monitoring started"),
                 }));
        const QList<Posted> posted = drainNotifications();
        QCOMPARE(posted.size(), 2);
        for (const Posted& one : posted) {
            QVERIFY(!one.previousSSID.isValid());
            QCOMPARE(one.currentSSID.toString(), QStringLiteral("Home"));
            QCOMPARE(ssidOf(one.network), QStringLiteral("Home"));
            QCOMPARE(one.network.value<WiFiNetwork>().bssid, backend.accessPoint);
        }
        QCOMPARE(monitor.currentNetwork()->id, QStringLiteral("Home"));

        // The poll: every five seconds, and nothing to report while the network stays.
        auto* poll = monitor.findChild<QTimer*>();
        QVERIFY(poll && poll->isActive());
        QCOMPARE(poll->interval(), 5000);
        QVERIFY(!poll->isSingleShot());
        monitor.checkForSSIDChange();
        monitor.checkForSSIDChange();
        QVERIFY(log.take().isEmpty());
        QVERIFY(drainNotifications().isEmpty());
    }

    void changesOfNetwork()
    {
        LogCapture log;
        FakeBackend backend;
        backend.network = QStringLiteral("Home");
        WiFiMonitor monitor(backend);
        monitor.startMonitoring();
        drainNotifications();
        log.take();

        backend.network = QStringLiteral("Office");
        monitor.checkForSSIDChange();
        QCOMPARE(log.take(),
                 QStringList({QStringLiteral("📶 [WiFiMonitor] SSID changed: 'Home' → 'Office'"),
                              QStringLiteral("📶 [WiFiMonitor] Current network: 'Office' (BSSID: "
                                             "unknown)")}));
        QList<Posted> posted = drainNotifications();
        QCOMPARE(posted.size(), 2);
        QVERIFY(!posted[0].previousSSID.isValid());
        QCOMPARE(posted[0].currentSSID.toString(), QStringLiteral("Office"));
        QCOMPARE(ssidOf(posted[0].network), QStringLiteral("Office"));
        QCOMPARE(posted[1].previousSSID.toString(), QStringLiteral("Home"));
        QCOMPARE(posted[1].currentSSID.toString(), QStringLiteral("Office"));
        QCOMPARE(ssidOf(posted[1].network), QStringLiteral("Office"));

        backend.network.reset();
        monitor.checkForSSIDChange();
        QCOMPARE(log.take(),
                 QStringList({QStringLiteral("📶 [WiFiMonitor] SSID changed: 'Office' → 'none'"),
                              QStringLiteral("📶 [WiFiMonitor] No WiFi network connected")}));
        posted = drainNotifications();
        QCOMPARE(posted.size(), 1);
        QCOMPARE(posted[0].previousSSID.toString(), QStringLiteral("Office"));
        QVERIFY(!posted[0].currentSSID.isValid());
        QVERIFY(!posted[0].network.canConvert<WiFiNetwork>());
        QVERIFY(!monitor.currentNetwork());

        // Names are compared byte for byte: letter case and blanks make another network.
        backend.network = QStringLiteral("home ");
        monitor.checkForSSIDChange();
        QCOMPARE(log.take().constFirst(),
                 QStringLiteral("📶 [WiFiMonitor] SSID changed: 'none' → 'home '"));
        QCOMPARE(drainNotifications().size(), 2);
    }

    void networkIsReadWhenTheNotificationIsPosted()
    {
        LogCapture log;
        FakeBackend backend;
        WiFiMonitor monitor(backend);
        monitor.startMonitoring();
        backend.network = QStringLiteral("Home");
        monitor.checkForSSIDChange();
        backend.network = QStringLiteral("Office");
        monitor.checkForSSIDChange();
        const QList<Posted> posted = drainNotifications();
        QCOMPARE(posted.size(), 4);
        QCOMPARE(posted[1].currentSSID.toString(), QStringLiteral("Home"));
        for (const Posted& one : posted)
            QCOMPARE(ssidOf(one.network), QStringLiteral("Office"));
    }

    void emptySsidIsNoNetwork()
    {
        LogCapture log;
        FakeBackend backend;
        backend.network = QString();
        WiFiMonitor monitor(backend);
        monitor.startMonitoring();
        QVERIFY(!monitor.currentSSID());
        QVERIFY(!monitor.currentNetwork());
        QVERIFY(drainNotifications().isEmpty());
        log.take();
        monitor.checkForSSIDChange();
        monitor.checkForSSIDChange();
        QVERIFY(log.take().isEmpty());

        // Reported at the moment of asking, not as last checked.
        backend.network = QStringLiteral("Café");
        QCOMPARE(monitor.currentSSID(), QStringLiteral("Café"));
        QVERIFY(!monitor.currentNetwork());
    }

    void eventsRunChecksLinkChangeOneSecondLater()
    {
        LogCapture log;
        FakeBackend backend;
        WiFiMonitor monitor(backend);
        monitor.startMonitoring();
        log.take();

        backend.network = QStringLiteral("Home");
        Q_EMIT backend.ssidDidChange();
        QCOMPARE(
            log.take().mid(0, 2),
            QStringList({QStringLiteral("📶 [WiFiMonitor] CoreWLAN ssidDidChange event received"),
                         QStringLiteral("📶 [WiFiMonitor] SSID changed: 'none' → 'Home'")}));
        drainNotifications();

        backend.network = QStringLiteral("Office");
        QElapsedTimer clock;
        clock.start();
        Q_EMIT backend.linkDidChange();
        QCOMPARE(
            log.take(),
            QStringList({QStringLiteral("📶 [WiFiMonitor] CoreWLAN linkDidChange event received")}));
        QTRY_VERIFY_WITH_TIMEOUT(!LogCapture::lines().isEmpty(), 3000);
        QVERIFY(clock.elapsed() >= 950);
        QCOMPARE(log.take().constFirst(),
                 QStringLiteral("📶 [WiFiMonitor] SSID changed: 'Home' → 'Office'"));
    }

    void eventsRefusedLeavesThePoll()
    {
        LogCapture log;
        FakeBackend backend;
        backend.eventsRefused = true;
        WiFiMonitor monitor(backend);
        monitor.startMonitoring();
        const QStringList lines = log.take();
        QCOMPARE(lines.mid(lines.size() - 3),
                 QStringList({QStringLiteral("⚠️ [WiFiMonitor] Could not start CoreWLAN event "
                                             "monitoring: bus gone"),
                              QStringLiteral("📶 [WiFiMonitor] Falling back to polling only"),
                              QStringLiteral("📶 [WiFiMonitor] WiFi monitoring started")}));
        QVERIFY(monitor.findChild<QTimer*>()->isActive());
        Q_EMIT backend.ssidDidChange();
        QVERIFY(log.take().isEmpty());
    }

    void stopEndsPollAndEvents()
    {
        LogCapture log;
        FakeBackend backend;
        backend.stopRefused = true;
        WiFiMonitor monitor(backend);
        monitor.startMonitoring();
        log.take();
        monitor.stopMonitoring();
        QCOMPARE(
            log.take(),
            QStringList({QStringLiteral("📶 [WiFiMonitor] Stopping WiFi monitoring..."),
                         QStringLiteral("⚠️ [WiFiMonitor] Failed to stop CoreWLAN monitoring: "
                                        "still busy"),
                         QStringLiteral("📶 [WiFiMonitor] WiFi monitoring stopped")}));
        QVERIFY(!monitor.findChild<QTimer*>());
        backend.network = QStringLiteral("Home");
        Q_EMIT backend.ssidDidChange();
        Q_EMIT backend.linkDidChange();
        Q_EMIT backend.interfaceDidChange();
        QTest::qWait(1200);
        QVERIFY(log.take().isEmpty());

        // A second start works as the first.
        monitor.startMonitoring();
        QVERIFY(
            !log.take().contains(QStringLiteral("📶 [WiFiMonitor] SSID changed: 'none' → 'Home'")));
        QCOMPARE(monitor.currentNetwork()->ssid, QStringLiteral("Home"));
        QCOMPARE(monitor.findChildren<QTimer*>().size(), 1);
    }

    void authorisationNotDeterminedThenGranted()
    {
        LogCapture log;
        FakeBackend backend;
        backend.status = 0;
        backend.network = QStringLiteral("Home");
        WiFiMonitor monitor(backend);
        monitor.startMonitoring();
        QCOMPARE(
            log.take().mid(1, 3),
            QStringList({QStringLiteral("📶 [WiFiMonitor] Starting WiFi monitoring..."),
                         QStringLiteral("📍 [WiFiMonitor] Location authorization status: 0"),
                         QStringLiteral("📍 [WiFiMonitor] Requesting location authorization...")}));
        QCOMPARE(backend.authorizationRequests, 1);
        drainNotifications();

        Q_EMIT backend.authorizationDidChange();
        QCOMPARE(
            log.take(),
            QStringList({QStringLiteral("📍 [WiFiMonitor] Location authorization changed to: 0"),
                         QStringLiteral("📍 [WiFiMonitor] Location authorization not yet "
                                        "determined")}));
        backend.status = 3;
        Q_EMIT backend.authorizationDidChange();
        QCOMPARE(
            log.take(),
            QStringList({QStringLiteral("📍 [WiFiMonitor] Location authorization changed to: 3"),
                         QStringLiteral("✅ [WiFiMonitor] Location access granted - refreshing "
                                        "WiFi state"),
                         QStringLiteral("📶 [WiFiMonitor] Current network: 'Home' (BSSID: "
                                        "unknown)")}));
        QCOMPARE(drainNotifications().size(), 1);
    }

    void authorisationDeniedOrUnknown()
    {
        LogCapture log;
        FakeBackend backend;
        backend.status = 2;
        WiFiMonitor monitor(backend);
        monitor.startMonitoring();
        QCOMPARE(
            log.take().mid(3, 2),
            QStringList({QStringLiteral("⚠️ [WiFiMonitor] Location access denied - WiFi SSID "
                                        "detection will not work"),
                         QStringLiteral("📍 [WiFiMonitor] Please enable Location Services for "
                                        "this app in System Settings > Privacy & Security > "
                                        "Location Services")}));
        backend.status = 4;
        monitor.checkLocationAuthorization();
        QCOMPARE(log.take().constLast(),
                 QStringLiteral("⚠️ [WiFiMonitor] Unknown location authorization status"));
        Q_EMIT backend.authorizationDidChange();
        QCOMPARE(log.take().constLast(),
                 QStringLiteral("⚠️ [WiFiMonitor] Unknown location authorization status: 4"));
    }

    void revokedWhileJoinedKeepsPreviousSsid()
    {
        LogCapture log;
        FakeBackend backend;
        backend.network = QStringLiteral("Home");
        WiFiMonitor monitor(backend);
        monitor.startMonitoring();
        drainNotifications();
        log.take();

        backend.status = 2;
        Q_EMIT backend.authorizationDidChange();
        QCOMPARE(log.take().constLast(),
                 QStringLiteral("⚠️ [WiFiMonitor] Location access denied - WiFi SSID detection "
                                "unavailable"));
        QVERIFY(!monitor.currentNetwork());
        QVERIFY(drainNotifications().isEmpty());

        backend.network.reset();
        monitor.checkForSSIDChange();
        QCOMPARE(log.take().constFirst(),
                 QStringLiteral("📶 [WiFiMonitor] SSID changed: 'Home' → 'none'"));
        const QList<Posted> posted = drainNotifications();
        QCOMPARE(posted.size(), 1);
        QCOMPARE(posted[0].previousSSID.toString(), QStringLiteral("Home"));
    }

    void interfaceThatComesAndGoes()
    {
        LogCapture log;
        FakeBackend backend;
        backend.name.reset();
        backend.network = QStringLiteral("Home");
        WiFiMonitor monitor(backend);
        QCOMPARE(log.take(),
                 QStringList({QStringLiteral("⚠️ [WiFiMonitor] No WiFi interface available")}));
        // Without an interface there is no network, whatever else is known.
        QVERIFY(!monitor.currentSSID());
        Q_EMIT backend.interfaceDidChange();
        QVERIFY(log.take().isEmpty());

        monitor.startMonitoring();
        QVERIFY(log.take().contains(QStringLiteral("📶 [WiFiMonitor] No WiFi network connected")));
        QVERIFY(drainNotifications().isEmpty());

        backend.name = QStringLiteral("wlp2s0");
        Q_EMIT backend.interfaceDidChange();
        QCOMPARE(log.take().mid(0, 2),
                 QStringList({QStringLiteral("📶 [WiFiMonitor] WiFi interface found: wlp2s0"),
                              QStringLiteral("📶 [WiFiMonitor] SSID changed: 'none' → 'Home'")}));
        QCOMPARE(drainNotifications().size(), 2);

        backend.name.reset();
        Q_EMIT backend.interfaceDidChange();
        QCOMPARE(log.take(),
                 QStringList({QStringLiteral("⚠️ [WiFiMonitor] No WiFi interface available")}));
        monitor.checkForSSIDChange();
        QCOMPARE(log.take().constFirst(),
                 QStringLiteral("📶 [WiFiMonitor] SSID changed: 'Home' → 'none'"));

        backend.name = QString();
        Q_EMIT backend.interfaceDidChange();
        QCOMPARE(log.take().constFirst(),
                 QStringLiteral("📶 [WiFiMonitor] WiFi interface found: unknown"));
    }
};

QTEST_GUILESS_MAIN(TestWiFiMonitor)
#include "test_wifimonitor.moc"
