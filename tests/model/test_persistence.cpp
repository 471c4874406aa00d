#include "model/PersistenceManager.h"
#include "platform/UserDefaults.h"

#include "LogCapture.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

class TestPersistence : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;
    QString m_settingsPath;
    std::unique_ptr<UserDefaults> defaults;
    std::unique_ptr<PersistenceManager> persistence;

    static DeviceAppBinding rule(const QString& name)
    {
        DeviceAppBinding binding;
        binding.id = QUuid::createUuid();
        binding.deviceVendorID = 1;
        binding.deviceProductID = 2;
        binding.deviceName = name;
        return binding;
    }

    QString storage() const { return m_home.path() + "/data/Obrinta"; }

    static void writeFile(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

private Q_SLOTS:
    void init()
    {
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path() + "/data"));
        qunsetenv("XCTestConfigurationFilePath");
        QDir(m_home.path()).removeRecursively();
        QDir().mkpath(m_home.path());
        m_settingsPath = m_home.path() + "/config/settings.json";
        persistence.reset();
        defaults = std::make_unique<UserDefaults>(m_settingsPath);
        persistence = std::make_unique<PersistenceManager>(*defaults);
    }

    void firstStartLoadsEmptyAndWritesNothing()
    {
        QVERIFY(persistence->loadBindings().isEmpty());
        QVERIFY(persistence->loadWiFiBindings().isEmpty());
        QVERIFY(!QFile::exists(storage() + "/bindings.json"));
        QVERIFY(!QFile::exists(m_settingsPath));
    }

    void savedListLoadsBackAndIsPrivate()
    {
        persistence->saveBindings({rule("a"), rule("b")});
        const auto loaded = persistence->loadBindings();
        QCOMPARE(loaded.size(), 2);
        QCOMPARE(loaded.at(1).deviceName, "b");
        QCOMPARE(QFile::permissions(storage() + "/bindings.json") & 0x0077, QFile::Permissions{});
        // Pretty-printed on disk.
        QFile file(storage() + "/bindings.json");
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("\n    {"));
    }

    void unreadableFileFallsBackToCopyThenEmpty()
    {
        QDir().mkpath(storage());
        writeFile(storage() + "/bindings.json", "[{\"id\": 1},");
        QVERIFY(persistence->loadBindings().isEmpty());

        const QByteArray copy = "[" + QJsonDocument(rule("fallback").toJson()).toJson() + "]";
        defaults->setData("deviceAppBindings", copy);
        QCOMPARE(persistence->loadBindings().first().deviceName, "fallback");
        // Loading never rewrites the broken file.
        QFile file(storage() + "/bindings.json");
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("[{\"id\": 1},"));

        // An empty array on disk is a valid list: the copy is not consulted.
        writeFile(storage() + "/bindings.json", "[]");
        QVERIFY(persistence->loadBindings().isEmpty());
    }

    void failedSaveStoresCompactCopyAndLogs()
    {
        // A folder in the file's place makes the write fail, even for root.
        QDir().mkpath(storage() + "/wifi-bindings.json");
        LogCapture log;
        WiFiAppBinding wifi;
        wifi.id = QUuid::createUuid();
        wifi.ssid = "Home";
        persistence->saveWiFiBindings({wifi});
        const QStringList lines = log.take();
        QCOMPARE(lines.size(), 1);
        QVERIFY(lines.first().startsWith("Failed to save WiFi bindings: "));
        const auto copy = defaults->data("wifiAppBindings");
        QVERIFY(copy);
        QVERIFY(!copy->contains('\n'));
        QCOMPARE(persistence->loadWiFiBindings().first().ssid, "Home");
    }

    void diskFullKeepsTheOldFile()
    {
        persistence->saveBindings({rule("old")});
        // A file-size limit stands in for a full disk: writes past it fail with EFBIG.
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit saved{};
        ::getrlimit(RLIMIT_FSIZE, &saved);
        rlimit tiny = saved;
        tiny.rlim_cur = 64;
        ::setrlimit(RLIMIT_FSIZE, &tiny);
        LogCapture log;
        persistence->saveBindings({rule("new"), rule(QString(200, 'x'))});
        ::setrlimit(RLIMIT_FSIZE, &saved);
        const QStringList lines = log.take();
        QVERIFY2(!lines.isEmpty(), "the failed save was not logged");
        QVERIFY(lines.first().startsWith("Failed to save bindings: "));
        QCOMPARE(persistence->loadBindings().first().deviceName, "old");
    }

    void testFolderIsPerProcess()
    {
        qputenv("XCTestConfigurationFilePath", "");
        UserDefaults defaults(m_settingsPath);
        PersistenceManager persistence(defaults);
        QCOMPARE(persistence.storageDirectory(),
                 m_home.path() + "/data/Obrinta-Tests-" +
                     QString::number(QCoreApplication::applicationPid()));
        qunsetenv("XCTestConfigurationFilePath");
    }

    void switchesReadTheirDefaultsAndOddValues()
    {
        QCOMPARE(persistence->launchAtLogin(), false);
        QCOMPARE(persistence->showNotifications(), true);
        QDir().mkpath(m_home.path() + "/config");
        writeFile(m_settingsPath, R"({"showNotifications":"no","monitoringEnabled":0,
                                       "wifiMonitoringEnabled":1,"launchAtLogin":2})");
        QCOMPARE(persistence->showNotifications(), true);
        QCOMPARE(persistence->monitoringEnabled(), false);
        QCOMPARE(persistence->wifiMonitoringEnabled(), true);
        QCOMPARE(persistence->launchAtLogin(), true);
        persistence->setMonitoringEnabled(true);
        QCOMPARE(defaults->object("monitoringEnabled"), QJsonValue(true));
        QCOMPARE(defaults->object("launchAtLogin"), QJsonValue(2));

        // A corrupt settings file reads as empty and survives until the next set.
        writeFile(m_settingsPath, "{broken");
        QCOMPARE(persistence->monitoringEnabled(), true);
        QFile file(m_settingsPath);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("{broken"));
    }
};

QTEST_GUILESS_MAIN(TestPersistence)
#include "test_persistence.moc"
