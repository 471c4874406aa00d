#include "model/DeviceAppBinding.h"
#include "model/RuleJson.h"
#include "model/WiFiAppBinding.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <csignal>

// A writer killed with SIGKILL at random moments never leaves a truncated or empty rule file.
class TestPersistenceCrash : public QObject
{
    Q_OBJECT

    template <typename Rule> static void checkFile(const QString& path)
    {
        QFile file(path);
        if (!file.exists())
            return; // killed before its first save
        QVERIFY(file.open(QIODevice::ReadOnly));
        const auto rules = RuleJson::decodeList<Rule>(file.readAll());
        QVERIFY2(rules, qPrintable(path + " does not decode"));
        QVERIFY(rules->size() == 10 || rules->size() == 11);
    }

private Q_SLOTS:
    void killedMidSaveLeavesOldOrNewList()
    {
        QTemporaryDir home;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_DATA_HOME", home.path());
        const QString writer = QCoreApplication::applicationDirPath() + "/persistence_crash_writer";
        const QString storage = home.path() + "/Obrinta";
        const int rounds = qEnvironmentVariableIntValue("OBRINTA_CRASH_ROUNDS") > 0
                               ? qEnvironmentVariableIntValue("OBRINTA_CRASH_ROUNDS")
                               : 200;
        for (int round = 0; round < rounds; ++round) {
            QProcess process;
            process.setProcessEnvironment(environment);
            process.start(writer, {home.path()});
            QVERIFY(process.waitForStarted(5000));
            QThread::usleep(QRandomGenerator::global()->bounded(2000, 30000));
            ::kill(pid_t(process.processId()), SIGKILL);
            QVERIFY(process.waitForFinished(5000));
            checkFile<DeviceAppBinding>(storage + "/bindings.json");
            checkFile<WiFiAppBinding>(storage + "/wifi-bindings.json");
        }
        // No leftover temporary files pile up beside the lists.
        QVERIFY(QDir(storage).entryList(QDir::Files).size() <= 2 + rounds);
    }
};

QTEST_GUILESS_MAIN(TestPersistenceCrash)
#include "test_persistence_crash.moc"
