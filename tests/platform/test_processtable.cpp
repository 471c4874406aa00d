#include "platform/PidfdProcessControl.h"
#include "platform/ProcProcessTable.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class TestProcessTable : public QObject
{
    Q_OBJECT

    QList<QProcess*> m_children;

    QProcess* start(const QString& script)
    {
        auto* process = new QProcess(this);
        process->start("/bin/sh", {"-c", script});
        process->waitForStarted();
        m_children << process;
        return process;
    }

private Q_SLOTS:
    void cleanup()
    {
        for (QProcess* child : std::exchange(m_children, {})) {
            child->kill();
            child->waitForFinished(2000);
            delete child;
        }
    }

    void unitNamesNameTheirDesktopIds()
    {
        QCOMPARE(ProcProcessTable::desktopIdFromUnit("app-gnome-org.gnome.TextEditor-4242.scope"),
                 "org.gnome.TextEditor");
        QCOMPARE(ProcProcessTable::desktopIdFromUnit("app-org.kde.dolphin@0f1e.service"),
                 "org.kde.dolphin");
        QCOMPARE(ProcProcessTable::desktopIdFromUnit("app-flatpak-org.mozilla.firefox-99.scope"),
                 "org.mozilla.firefox");
        QCOMPARE(ProcProcessTable::desktopIdFromUnit("app-gnome-my\\x2dtool-7.scope"), "my-tool");
        QVERIFY(ProcProcessTable::desktopIdFromUnit("session-2.scope").isEmpty());
        QVERIFY(ProcProcessTable::desktopIdFromUnit("vte-spawn-1.scope").isEmpty());
    }

    void vanishedEntriesAndOddNamesInAFakeProcTree()
    {
        QTemporaryDir proc;
        auto write = [&](const QString& path, const QByteArray& bytes) {
            QDir().mkpath(QFileInfo(proc.path() + path).absolutePath());
            QFile file(proc.path() + path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(bytes);
        };
        const QByteArray tail = " 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 7777 0 0\n";
        write("/100/stat", "100 (my (odd) app) S 1" + tail);
        write("/100/cgroup", "0::/user.slice/app.slice/app-gnome-org.test.Fake-100.scope\n");
        write("/102/stat", "102 (helper) S 100" + tail);
        write("/102/cgroup", "0::/user.slice/app.slice/app-gnome-org.test.Fake-100.scope\n");
        write("/103/stat", "103 (gone) Z 1" + tail);
        write("/103/cgroup", "0::/user.slice/app.slice/app-gnome-org.test.Fake-103.scope\n");
        QDir().mkpath(proc.path() + "/101"); // vanished while being read
        QDir().mkpath(proc.path() + "/self");

        ProcProcessTable table([](const QString&) { return QString(); }, proc.path());
        table.refresh();
        const auto found = table.instances("org.test.Fake");
        QCOMPARE(found.size(), 1);
        QCOMPARE(found.first().pid, pid_t(100));
        QCOMPARE(found.first().startTime, quint64(7777));
        QCOMPARE(table.processes().size(), 2); // neither the vanished one nor the zombie
    }

    void executableIsTheLastResort()
    {
        QTemporaryDir dir;
        const QString program = dir.path() + "/fake-app";
        QFile::copy("/bin/sleep", program);
        QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
        QProcess* child = start("exec '" + program + "' 30");
        ProcProcessTable table(
            [&](const QString& id) { return id == "org.test.Exe" ? program : QString(); });
        QTRY_VERIFY_WITH_TIMEOUT((table.refresh(), !table.instances("org.test.Exe").isEmpty()),
                                 3000);
        QCOMPARE(table.instances("org.test.Exe").first().pid, pid_t(child->processId()));
    }

    void pidfdSignalsOnlyTheProcessFound()
    {
        QProcess* child = start("exec sleep 30");
        ProcProcessTable table([](const QString&) { return QString(); });
        table.refresh();
        RunningApplications::Instance instance{pid_t(child->processId()), 0};
        for (const auto& process : table.processes()) {
            if (process.pid == instance.pid)
                instance.startTime = process.startTime;
        }
        PidfdProcessControl control;
        // A stale start time stands for a reused PID: nothing may be signalled.
        auto stranger = control.open({instance.pid, instance.startTime + 1});
        QVERIFY(!stranger->terminate());
        QVERIFY(child->state() == QProcess::Running);

        auto handle = control.open(instance);
        QVERIFY(!handle->isTerminated());
        bool ended = false;
        handle->watchExit([&] { ended = true; });
        QVERIFY(handle->terminate());
        QVERIFY(child->waitForFinished(3000));
        QTRY_VERIFY_WITH_TIMEOUT(ended, 3000);
        QVERIFY(handle->isTerminated());
    }
};

QTEST_GUILESS_MAIN(TestProcessTable)
#include "test_processtable.moc"
