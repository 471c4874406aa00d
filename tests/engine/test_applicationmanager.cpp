#include "engine/ApplicationManager.h"
#include "engine/NotificationPosting.h"
#include "platform/DesktopApplications.h"
#include "platform/MainQueue.h"
#include "platform/ProcessControl.h"

#include "LogCapture.h"

#include <QTest>

namespace {

// A process that takes or refuses each signal, and ends on SIGTERM or keeps running.
struct FakeProcess : ProcessHandle
{
    pid_t m_pid;
    bool acceptTerm;
    bool acceptKill;
    bool endsOnTerm;
    bool ended = false;
    std::function<void()> watcher;
    FakeProcess(pid_t pid, bool term, bool kill, bool ends)
        : m_pid(pid), acceptTerm(term), acceptKill(kill), endsOnTerm(ends)
    {
    }
    pid_t pid() const override { return m_pid; }
    bool terminate() override
    {
        if (acceptTerm && endsOnTerm)
            MainQueue::async([this] { end(); });
        return acceptTerm;
    }
    bool forceTerminate() override
    {
        if (acceptKill)
            end();
        return acceptKill;
    }
    bool isTerminated() override { return ended; }
    void watchExit(std::function<void()> ended_) override { watcher = std::move(ended_); }
    void end()
    {
        ended = true;
        if (watcher)
            std::exchange(watcher, nullptr)();
    }
};

// The desktop, the process table and the notification server, recording what they are asked.
struct Fakes : DesktopApplications, RunningApplications, ProcessControl, NotificationPosting
{
    QHash<QString, QString> files;
    QString launchError;
    QStringList launched;
    QList<Instance> list;
    QHash<pid_t, std::shared_ptr<FakeProcess>> processes;
    QStringList posted;

    QString desktopFileForId(const QString& id) override { return files.value(id); }
    QString executableForId(const QString&) override { return {}; }
    void launch(const QString& path, std::function<void(const QString&)> done) override
    {
        launched << path;
        MainQueue::async([done, error = launchError] { done(error); });
    }
    void refresh() override {}
    QList<Instance> instances(const QString&) override { return list; }
    std::shared_ptr<ProcessHandle> open(const Instance& i) override
    {
        return processes.value(i.pid);
    }
    void postNotification(const QString& title, const QString& body, bool isError) override
    {
        posted << QStringLiteral("%1|%2|%3").arg(title, body).arg(isError);
    }
};

RuleContext context(bool forceAllowed = false, double timeout = 0)
{
    return RuleContext{"Editor",
                       "/opt/editor",
                       "org.example.Editor",
                       "because Deck is connected.",
                       "because Deck is no longer connected.",
                       forceAllowed,
                       timeout};
}

} // namespace

class TestApplicationManager : public QObject
{
    Q_OBJECT

    Fakes fakes;
    std::unique_ptr<ApplicationManager> manager;

    void addProcess(pid_t pid, bool term, bool kill, bool ends)
    {
        fakes.list.append({pid, 1});
        fakes.processes.insert(pid, std::make_shared<FakeProcess>(pid, term, kill, ends));
    }

    QStringList terminate(const RuleContext& context, bool force)
    {
        LogCapture log;
        manager->terminateApplication(context, force);
        return log.take();
    }

private Q_SLOTS:
    void init()
    {
        fakes = Fakes();
        manager = std::make_unique<ApplicationManager>(fakes, fakes, fakes, fakes);
    }

    // Queued work of one case still holds its fake processes.
    void cleanup()
    {
        QCoreApplication::processEvents();
        manager.reset();
    }

    // A launch error from the path is the launch/quit scenario's part.
    void launchByIdThenByPathThenNothing()
    {
        fakes.files.insert("org.example.Editor", "/apps/org.example.Editor.desktop");
        LogCapture log;
        manager->launchApplication(context());
        QTRY_COMPARE_WITH_TIMEOUT(fakes.posted.size(), 1, 2000);
        QCOMPARE(log.take(),
                 (QStringList{"      🚀 Launching Editor (Bundle ID: org.example.Editor)",
                              "      📍 Found app at: /apps/org.example.Editor.desktop",
                              "      ✅ Successfully launched Editor"}));
        QCOMPARE(fakes.posted.takeFirst(),
                 "Application Started|Editor was launched because Deck is connected.|0");

        fakes.files.clear();
        RuleContext missing = context();
        missing.appPath = "/nowhere/editor";
        manager->launchApplication(missing);
        QCOMPARE(log.take(),
                 (QStringList{
                     "      🚀 Launching Editor (Bundle ID: org.example.Editor)",
                     "      ⚠️ Could not find app by bundle ID, trying path: /nowhere/editor",
                     "      ❌ App path does not exist: /nowhere/editor"}));
        QCOMPARE(
            fakes.posted.takeFirst(),
            "Failed to Launch|Could not start Editor: Application not found at /nowhere/editor|1");
    }

    void secondLaunchWhileInFlightStartsNothing()
    {
        fakes.files.insert("org.example.Editor", "/apps/e.desktop");
        manager->launchApplication(context());
        manager->launchApplication(context());
        QTRY_COMPARE_WITH_TIMEOUT(fakes.posted.size(), 2, 2000);
        QCOMPARE(fakes.launched.size(), 1);
    }

    void politeQuitOfTwoInstances()
    {
        addProcess(10, true, true, true);
        addProcess(11, true, true, true);
        QCOMPARE(terminate(context(), false),
                 (QStringList{"      Found 2 instance(s) of Editor",
                              "      🛑 Gracefully terminating Editor (PID: 10)",
                              "      ✅ Terminated Editor via quit",
                              "      🛑 Gracefully terminating Editor (PID: 11)",
                              "      ✅ Terminated Editor via quit"}));
        QCOMPARE(fakes.posted.size(), 2);
        fakes.list.clear();
        QCOMPARE(terminate(context(), false), QStringList{"      ℹ️ Editor is not running"});
    }

    void instanceThatEndedSinceTheLookUpCountsAsQuit()
    {
        addProcess(10, false, false, false);
        fakes.processes.value(10)->ended = true;
        QCOMPARE(terminate(context(), false).last(), "      ✅ Terminated Editor via quit");
        QVERIFY(fakes.posted.first().startsWith("Application Stopped|"));
    }

    void refusedWithoutForceGivesUp()
    {
        addProcess(10, false, true, false);
        QCOMPARE(terminate(context(false), false).mid(2),
                 (QStringList{"      ❌ Termination failed (force: false)",
                              "      🚫 Force quit not allowed, giving up"}));
        QVERIFY(
            fakes.posted.first().startsWith("Unable to Quit|Editor could not be quit gracefully."));
    }

    void refusedWithForceEscalatesAfterTimeout()
    {
        addProcess(10, false, true, false);
        QCOMPARE(
            terminate(context(true, 0.2), false).mid(2),
            (QStringList{
                "      ❌ Termination failed (force: false)",
                "      ⚡️ Force quit allowed, scheduling aggressive termination in 0.2s..."}));
        LogCapture log;
        QTRY_COMPARE_WITH_TIMEOUT(fakes.posted.size(), 1, 3000);
        QCOMPARE(log.take(), (QStringList{"      ⏰ Timeout expired, forcing termination now",
                                          "      Found 1 instance(s) of Editor",
                                          "      ⚠️ FORCE TERMINATING Editor (PID: 10)",
                                          "      ✅ Terminated Editor via force quit"}));
        QCOMPARE(fakes.posted.first(),
                 "Application Stopped|Editor was quit because Deck is no longer connected.|0");
    }

    void acceptedAndEndedIsToldOnceAndEndsNaturally()
    {
        addProcess(10, true, true, true);
        LogCapture log;
        manager->terminateApplication(context(true, 0.1), false);
        QTRY_VERIFY_WITH_TIMEOUT(log.lines().contains("      ✅ App terminated naturally"), 3000);
        QCOMPARE(fakes.posted.size(), 1);
    }

    // Two rounds of polite quits that both instances accept and ignore, forced by whichever
    // time-out comes first: each instance is told about once.
    void repeatedEscalationsTellEachInstanceOnce()
    {
        addProcess(10, true, true, false);
        addProcess(11, true, true, false);
        LogCapture log;
        manager->terminateApplication(context(true, 0.1), false);
        manager->terminateApplication(context(true, 0.2), false);
        QTRY_COMPARE_WITH_TIMEOUT(log.lines().count("      ✅ App terminated naturally"), 3, 3000);
        QTest::qWait(50);
        QCOMPARE(fakes.posted.size(), 2);
        QCOMPARE(ApplicationManager::secondsText(0.0005), "0.0005");
    }

    void refusedForcedQuitWithoutPermissionFailsToStop()
    {
        addProcess(10, false, false, false);
        QCOMPARE(terminate(context(false), true).mid(2),
                 (QStringList{"      ❌ Termination failed (force: true)",
                              "      💥 Force termination failed! App may be stuck."}));
        QCOMPARE(fakes.posted.first(),
                 "Failed to Stop|Could not quit Editor. You may need to close it manually.|1");
    }

    void timeoutTextAndClamping()
    {
        QCOMPARE(ApplicationManager::secondsText(10), "10.0");
        QCOMPARE(ApplicationManager::secondsText(2.5), "2.5");
        QCOMPARE(ApplicationManager::secondsText(0.1), "0.1");
        QCOMPARE(ApplicationManager::effectiveTimeout(-3), 0.0);
        QCOMPARE(ApplicationManager::effectiveTimeout(qQNaN()), 0.0);
        QCOMPARE(ApplicationManager::effectiveTimeout(1e9), 3600.0);
    }
};

QTEST_GUILESS_MAIN(TestApplicationManager)
#include "test_applicationmanager.moc"
