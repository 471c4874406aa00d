#include "shortcuts/ShortcutsManager.h"

#include "LogCapture.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace std::chrono_literals;

namespace {

constexpr int waitLimit = 10000;

bool writeFile(const QString& path, const QByteArray& content, int mode)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        return false;
    file.close();
    return ::chmod(QFile::encodeName(path).constData(), mode) == 0;
}

// Running, as opposed to ended (gone, or a zombie that nobody reaped yet).
bool isRunning(const QString& pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid.trimmed()));
    if (!stat.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = stat.readAll();
    return !text.mid(text.lastIndexOf(')') + 2, 1).startsWith('Z');
}

} // namespace

class ShortcutsManagerTest : public QObject
{
    Q_OBJECT

private:
    QString m_root;
    QString m_folder;
    std::unique_ptr<QTemporaryDir> m_home;

    void addScript(const QString& name, const QByteArray& body, int mode = 0755)
    {
        QVERIFY(writeFile(m_folder + '/' + name, "#!/bin/sh\n" + body + '\n', mode));
    }

    QString readFile(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    static bool waitForLine(const QString& line)
    {
        return QTest::qWaitFor([&] { return LogCapture::lines().contains(line); }, waitLimit);
    }

    static std::optional<bool> execute(ShortcutsManager& manager, const QString& name)
    {
        std::optional<bool> result;
        manager.executeShortcut(name, [&](bool succeeded) { result = succeeded; });
        return QTest::qWaitFor([&] { return result.has_value(); }, waitLimit) ? result
                                                                              : std::nullopt;
    }

    static std::optional<QList<ShortcutInfo>> discover(ShortcutsManager& manager)
    {
        std::optional<QList<ShortcutInfo>> result;
        manager.discoverShortcuts([&](const QList<ShortcutInfo>& found) { result = found; });
        return QTest::qWaitFor([&] { return result.has_value(); }, waitLimit) ? result
                                                                              : std::nullopt;
    }

    static QStringList names(const QList<ShortcutInfo>& shortcuts)
    {
        QStringList result;
        for (const ShortcutInfo& shortcut : shortcuts)
            result << shortcut.name;
        return result;
    }

private Q_SLOTS:
    void initTestCase() { ::umask(022); }

    void init()
    {
        m_home = std::make_unique<QTemporaryDir>();
        QVERIFY(m_home->isValid());
        m_root = m_home->path();
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_root + "/config"));
        m_folder = m_root + "/config/Obrinta/shortcuts";
        QVERIFY(QDir().mkpath(m_folder));
    }

    void discoveryListsTheExecutableFilesInNameOrder()
    {
        const QStringList hostile = {"$(touch pwned)",  "-lead",     "a one", "b",
                                     "it's \"quoted\"", "semi;colon"};
        for (const QString& name : hostile)
            addScript(name, "exit 0");
        addScript("notes", "exit 0", 0644);
        addScript("loose", "exit 0", 0777);
        QVERIFY(QDir(m_folder).mkdir("folder.d"));

        ShortcutsManager manager(SHORTCUTS_TOOL);
        QSignalSpy changed(&manager, &ShortcutsManager::shortcutsChanged);
        LogCapture log;
        const auto found = discover(manager);
        QVERIFY(found);
        QCOMPARE(names(*found), hostile);
        QCOMPARE(manager.shortcuts(), *found);
        QCOMPARE(changed.count(), 1);

        QStringList expected = {"🔍 [ShortcutsManager] Discovering shortcuts...",
                                "   ✅ Found 6 shortcuts"};
        for (const QString& name : hostile)
            expected << "      - " + name;
        QCOMPARE(log.take(), expected);
    }

    void discoveryOfAMissingFolderFindsNothing()
    {
        QVERIFY(QDir(m_folder).removeRecursively());
        ShortcutsManager manager(SHORTCUTS_TOOL);
        LogCapture log;
        QVERIFY(discover(manager).value().isEmpty());
        QCOMPARE(log.take().last(), "   ✅ Found 0 shortcuts");
    }

    void listOutputIsSplitAndTrimmed()
    {
        const QString output = "\n  alpha \n\n\tbeta\t\r\nbeta\u2028gamma\u00A0\n";
        QCOMPARE(names(ShortcutsManager::parseList(output)),
                 QStringList({"alpha", "beta", "beta", "gamma"}));
        const ShortcutInfo blanks = ShortcutsManager::parseList(" a b ").first();
        QCOMPARE(blanks, (ShortcutInfo{"a b", "a b"}));
        QCOMPARE(ShortcutInfo::fromJson(blanks.toJson()), blanks);
        QCOMPARE(ShortcutInfo::fromJson({{"id", "x"}}), std::nullopt);
    }

    void undecodableListLeavesTheShortcutsAsTheyWere()
    {
        // A stand-in tool that prints whatever the test puts in a file.
        const QString tool = m_root + "/fake-tool";
        const QString output = m_root + "/output";
        QVERIFY(writeFile(tool, "#!/bin/sh\ncat '" + QFile::encodeName(output) + "'\n", 0755));
        QVERIFY(writeFile(output, "one\n", 0644));
        ShortcutsManager manager(tool);
        LogCapture log;
        QCOMPARE(names(discover(manager).value()), QStringList({"one"}));
        log.take();

        QVERIFY(writeFile(output, "two\n\xff\xfe\n", 0644));
        QSignalSpy changed(&manager, &ShortcutsManager::shortcutsChanged);
        const auto found = discover(manager);
        QVERIFY(found && found->isEmpty());
        QCOMPARE(names(manager.shortcuts()), QStringList({"one"}));
        QCOMPARE(changed.count(), 0);
        QCOMPARE(log.take(), QStringList({"🔍 [ShortcutsManager] Discovering shortcuts...",
                                          "   ❌ Failed to decode shortcuts output"}));
    }

    void aMissingToolIsLoggedAndFails()
    {
        ShortcutsManager manager(m_root + "/no-such-tool");
        LogCapture log;
        QVERIFY(discover(manager).value().isEmpty());
        QCOMPARE(execute(manager, "anything"), std::optional<bool>(false));
        const QStringList lines = log.take();
        QCOMPARE(lines.size(), 4);
        QVERIFY(lines[1].startsWith("   ❌ Failed to run shortcuts command: "));
        QCOMPARE(lines[2], "⚡️ [ShortcutsManager] Executing shortcut: 'anything'");
        QVERIFY(lines[3].startsWith("   ❌ Failed to start shortcut process: "));
    }

    void executeReportsTheOutcome_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("succeeded");
        QTest::addColumn<QString>("line");

        const QString failed = "   ❌ Shortcut '%1' failed with status %2: %3";
        QTest::newRow("success") << "ok" << QByteArray("echo ignored") << 0755 << true
                                 << "   ✅ Shortcut 'ok' executed successfully";
        QTest::newRow("failure") << "fail" << QByteArray("echo 'disk full' >&2; exit 3") << 0755
                                 << false << failed.arg("fail", "3", "disk full\n");
        QTest::newRow("undecodable error")
            << "garbled" << QByteArray("printf '\\377\\376' >&2; exit 1") << 0755 << false
            << failed.arg("garbled", "1", "Unknown error");
        QTest::newRow("signal") << "signalled" << QByteArray("kill -TERM $$") << 0755 << false
                                << failed.arg("signalled", "143", "");
        QTest::newRow("missing") << "missing" << QByteArray() << 0 << false
                                 << failed.arg("missing", "1",
                                               "obrinta-shortcuts: no shortcut named 'missing'\n");
        QTest::newRow("not executable")
            << "notes" << QByteArray("exit 0") << 0644 << false
            << failed.arg("notes", "1",
                          "obrinta-shortcuts: no shortcut named 'notes' (it is not executable)\n");
        QTest::newRow("others can write")
            << "loose" << QByteArray("exit 0") << 0757 << false
            << failed.arg("loose", "1",
                          "obrinta-shortcuts: refusing to run 'loose': FOLDER/loose can be "
                          "changed by other users\n");
    }

    void executeReportsTheOutcome()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, body);
        QFETCH(int, mode);
        if (mode)
            addScript(name, body, mode);
        ShortcutsManager manager(SHORTCUTS_TOOL);
        LogCapture log;
        QFETCH(bool, succeeded);
        QCOMPARE(execute(manager, name), std::optional<bool>(succeeded));
        QFETCH(QString, line);
        line.replace("FOLDER", m_folder);
        QCOMPARE(
            log.take(),
            QStringList({"⚡️ [ShortcutsManager] Executing shortcut: '" + name + "'", line}));
    }

    void namesNeverLeaveTheFolder()
    {
        const QString outside = m_root + "/config/Obrinta/outside";
        QVERIFY(writeFile(outside, "#!/bin/sh\ntouch '" + QFile::encodeName(outside) + ".ran'\n",
                          0755));
        QVERIFY(QDir(m_folder).mkdir("sub"));
        addScript("sub/inner", "exit 0");
        ShortcutsManager manager(SHORTCUTS_TOOL);
        LogCapture log;
        for (const QString name : {"../outside", "sub/inner", "..", ".", ""}) {
            QCOMPARE(execute(manager, name), std::optional<bool>(false));
            QCOMPARE(log.take().last(), "   ❌ Shortcut '" + name +
                                            "' failed with status 1: obrinta-shortcuts: not a "
                                            "shortcut name: '" +
                                            name + "'\n");
        }
        QVERIFY(!QFile::exists(outside + ".ran"));
    }

    void aRunExecutesEachNameInOrderAsGiven()
    {
        const QString record = m_root + "/record";
        const QByteArray append =
            "printf '%s\\n' \"${0##*/}\" >> '" + QFile::encodeName(record) + "'";
        const QStringList hostile = {"a one", "$(touch pwned)", "semi;colon", "-lead",
                                     "it's \"quoted\""};
        for (const QString& name : hostile + QStringList{"last"})
            addScript(name, append);
        ShortcutsManager manager(SHORTCUTS_TOOL);
        LogCapture log;
        // Empty lists, and the list of the other state, run nothing.
        manager.runShortcuts({}, "nothing");
        manager.runConfiguredShortcuts({{"last"}, {}}, false, "Deck");
        QCOMPARE(log.take(), QStringList());

        // A failing name does not end the run.
        manager.runShortcuts(hostile + QStringList{"missing", "last"}, "Deck connected");
        QVERIFY(waitForLine("   ✅ Finished running 7 shortcut(s)"));
        QCOMPARE(readFile(record), (hostile + QStringList{"last"}).join('\n') + '\n');
        QVERIFY(!QFile::exists(m_folder + "/pwned") && !QFile::exists("pwned"));
        QCOMPARE(log.take().first(), "   🎯 Running 7 shortcut(s) because Deck connected");
    }

    void aHangingShortcutHoldsOnlyItsOwnRunUntilTheCeiling()
    {
        const QString pidFile = m_root + "/sleeper";
        addScript("hang", "sleep 60 & echo $! > '" + QFile::encodeName(pidFile) + "'; wait");
        addScript("quick", "exit 0");
        ShortcutsManager manager(SHORTCUTS_TOOL, 2s);
        LogCapture log;
        manager.runShortcuts({"hang"}, "first");
        manager.runShortcuts({"quick"}, "second");
        const QString timedOut =
            "   ❌ Shortcut 'hang' failed with status 137: timed out after 2 seconds";
        QVERIFY(waitForLine(timedOut));
        QVERIFY(QTest::qWaitFor(
            [] { return LogCapture::lines().count("   ✅ Finished running 1 shortcut(s)") == 2; },
            waitLimit));
        const QStringList lines = log.take();
        QVERIFY(lines.indexOf("   ✅ Shortcut 'quick' executed successfully") <
                lines.indexOf(timedOut));
        // The whole process group went, not just the tool.
        const QString sleeper = readFile(pidFile);
        QVERIFY(!sleeper.isEmpty());
        QVERIFY(QTest::qWaitFor([&] { return !isRunning(sleeper); }, waitLimit));
        // And the killed tool was reaped and released.
        QVERIFY(QTest::qWaitFor([&] { return manager.children().isEmpty(); }, waitLimit));
    }
};

QTEST_GUILESS_MAIN(ShortcutsManagerTest)
#include "test_shortcutsmanager.moc"
