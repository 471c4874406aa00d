#include "ApplicationManager.h"

#include "NotificationPosting.h"
#include "NotificationService.h"
#include "platform/DesktopApplications.h"
#include "platform/GioDesktopApplications.h"
#include "platform/Log.h"
#include "platform/MainQueue.h"
#include "platform/PidfdProcessControl.h"
#include "platform/ProcProcessTable.h"

#include <QFileInfo>
#include <QPointer>
#include <QProcess>
#include <QTimer>

#include <charconv>
#include <cmath>

namespace {

constexpr double kMaxTimeoutSeconds = 3600.0;

GioDesktopApplications& sharedDesktopApplications()
{
    static auto* applications = new GioDesktopApplications;
    return *applications;
}

QString stoppedBody(const RuleContext& context)
{
    return context.appName + QStringLiteral(" was quit ") + context.stopReason;
}

QString failedToStopBody(const RuleContext& context)
{
    return QStringLiteral("Could not quit ") + context.appName +
           QStringLiteral(". You may need to close it manually.");
}

} // namespace

ApplicationManager::ApplicationManager(DesktopApplications& applications,
                                       RunningApplications& running, ProcessControl& processes,
                                       NotificationPosting& notifications)
    : m_applications(applications), m_running(running), m_processes(processes),
      m_notifications(notifications)
{
}

RunningApplications& ApplicationManager::sharedRunningApplications()
{
    static auto* table = new ProcProcessTable(
        [](const QString& id) { return sharedDesktopApplications().executableForId(id); });
    return *table;
}

ApplicationManager& ApplicationManager::shared()
{
    static auto* manager =
        new ApplicationManager(sharedDesktopApplications(), sharedRunningApplications(),
                               *new PidfdProcessControl, NotificationService::shared());
    return *manager;
}

double ApplicationManager::effectiveTimeout(double forceQuitTimeout)
{
    if (std::isnan(forceQuitTimeout) || forceQuitTimeout < 0)
        return 0;
    return std::min(forceQuitTimeout, kMaxTimeoutSeconds);
}

QString ApplicationManager::secondsText(double seconds)
{
    char buffer[64];
    // A plain decimal (0.0005, never 5e-04), as the log has always shown it.
    const bool plain = seconds == 0 || (std::abs(seconds) >= 1e-4 && std::abs(seconds) < 1e16);
    const auto result =
        plain ? std::to_chars(buffer, buffer + sizeof buffer, seconds, std::chars_format::fixed)
              : std::to_chars(buffer, buffer + sizeof buffer, seconds);
    QString text = QString::fromLatin1(buffer, result.ptr - buffer);
    if (!text.contains(QLatin1Char('.')) && !text.contains(QLatin1Char('e')) &&
        !text.contains(QLatin1Char('n')))
        text += QStringLiteral(".0");
    return text;
}

void ApplicationManager::launchApplication(const RuleContext& context)
{
    Log::info(QStringLiteral("      🚀 Launching ") + context.appName +
              QStringLiteral(" (Bundle ID: ") + context.appBundleIdentifier + QStringLiteral(")"));
    const QString desktopFile = m_applications.desktopFileForId(context.appBundleIdentifier);
    if (!desktopFile.isEmpty()) {
        Log::info(QStringLiteral("      📍 Found app at: ") + desktopFile);
        startLaunch(context, desktopFile, true);
        return;
    }
    Log::info(QStringLiteral("      ⚠️ Could not find app by bundle ID, trying path: ") +
              context.appPath);
    if (!context.appPath.isEmpty() && QFileInfo::exists(context.appPath)) {
        startLaunch(context, context.appPath, false);
        return;
    }
    Log::info(QStringLiteral("      ❌ App path does not exist: ") + context.appPath);
    m_notifications.postNotification(QStringLiteral("Failed to Launch"),
                                     QStringLiteral("Could not start ") + context.appName +
                                         QStringLiteral(": Application not found at ") +
                                         context.appPath,
                                     true);
}

void ApplicationManager::startLaunch(const RuleContext& context, const QString& path, bool byBundle)
{
    QPointer<ApplicationManager> weak(this);
    // An application that runs, or whose launch is still under way, is reused, not started twice.
    const bool running = !context.appBundleIdentifier.isEmpty() &&
                         !m_running.instances(context.appBundleIdentifier).isEmpty();
    if (running || m_launchesInFlight.contains(path)) {
        MainQueue::async([weak, context, byBundle] {
            if (weak)
                weak->finishLaunch(context, byBundle, {});
        });
        return;
    }
    m_launchesInFlight.insert(path);
    m_applications.launch(path, [weak, context, path, byBundle](const QString& error) {
        if (!weak)
            return;
        weak->m_launchesInFlight.remove(path);
        weak->finishLaunch(context, byBundle, error);
    });
}

void ApplicationManager::finishLaunch(const RuleContext& context, bool byBundle,
                                      const QString& error)
{
    if (!error.isEmpty()) {
        Log::info(QStringLiteral("      ❌ Failed to launch ") + context.appName +
                  (byBundle ? QStringLiteral(": ") : QStringLiteral(" from path: ")) + error);
        m_notifications.postNotification(QStringLiteral("Failed to Launch"),
                                         QStringLiteral("Could not start ") + context.appName +
                                             (byBundle ? QStringLiteral(": ") + error : QString()),
                                         true);
        return;
    }
    Log::info(QStringLiteral("      ✅ Successfully launched ") + context.appName +
              (byBundle ? QString() : QStringLiteral(" from path")));
    m_notifications.postNotification(
        QStringLiteral("Application Started"),
        context.appName + QStringLiteral(" was launched ") + context.startReason, false);
}

void ApplicationManager::terminateApplication(const RuleContext& context, bool force)
{
    m_running.refresh();
    const QList<RunningApplications::Instance> instances =
        context.appBundleIdentifier.isEmpty() ? QList<RunningApplications::Instance>{}
                                              : m_running.instances(context.appBundleIdentifier);
    if (instances.isEmpty()) {
        Log::info(QStringLiteral("      ℹ️ ") + context.appName +
                  QStringLiteral(" is not running"));
        return;
    }
    Log::info(QStringLiteral("      Found %1 instance(s) of ").arg(instances.size()) +
              context.appName);

    for (const RunningApplications::Instance& found : instances) {
        const InstanceKey key{found.pid, found.startTime};
        // A forced quit tells its own outcome; a polite quit still waiting on this instance
        // must not tell another.
        if (force)
            m_pendingStops.remove(key);
        const std::shared_ptr<ProcessHandle> instance = m_processes.open(found);
        const QString pidText = QString::number(instance->pid());
        bool accepted = false;
        if (force) {
            Log::info(QStringLiteral("      ⚠️ FORCE TERMINATING ") + context.appName +
                      QStringLiteral(" (PID: ") + pidText + QStringLiteral(")"));
            accepted = instance->isTerminated() || instance->forceTerminate();
        } else {
            Log::info(QStringLiteral("      🛑 Gracefully terminating ") + context.appName +
                      QStringLiteral(" (PID: ") + pidText + QStringLiteral(")"));
            // An instance that ended since the look-up has done what was asked of it.
            accepted = instance->isTerminated() || instance->terminate();
        }

        if (accepted) {
            Log::info(QStringLiteral("      ✅ Terminated ") + context.appName +
                      (force ? QStringLiteral(" via force quit") : QStringLiteral(" via quit")));
            if (!force && context.forceQuitAllowed)
                scheduleForcedTermination(context, instance, key, true);
            else
                m_notifications.postNotification(QStringLiteral("Application Stopped"),
                                                 stoppedBody(context), false);
            continue;
        }

        Log::info(QStringLiteral("      ❌ Termination failed (force: ") + Log::boolText(force) +
                  QStringLiteral(")"));
        if (!force && !context.forceQuitAllowed) {
            Log::info(QStringLiteral("      🚫 Force quit not allowed, giving up"));
            m_notifications.postNotification(
                QStringLiteral("Unable to Quit"),
                context.appName + QStringLiteral(" could not be quit gracefully. Enable 'Force "
                                                 "Quit' in the rule settings to allow forced "
                                                 "termination."),
                true);
        } else if (!force) {
            Log::info(QStringLiteral("      ⚡️ Force quit allowed, scheduling aggressive "
                                     "termination in ") +
                      secondsText(effectiveTimeout(context.forceQuitTimeout)) +
                      QStringLiteral("s..."));
            scheduleForcedTermination(context, instance, key, false);
        } else {
            Log::info(QStringLiteral("      💥 Force termination failed! App may be stuck."));
            if (!context.forceQuitAllowed) {
                m_notifications.postNotification(QStringLiteral("Failed to Stop"),
                                                 failedToStopBody(context), true);
            } else {
                Log::info(QStringLiteral("      🔥 Attempting SIGKILL as last resort..."));
                runKillCommand(context, *instance);
            }
        }
    }
}

void ApplicationManager::scheduleForcedTermination(const RuleContext& context,
                                                   std::shared_ptr<ProcessHandle> instance,
                                                   InstanceKey key, bool accepted)
{
    // One notification per instance: the polite quit's when it is seen to end, unless the
    // forced quit has to follow, whose outcome is then the only one. A second polite quit of
    // the same instance shares the first one's outcome.
    QPointer<ApplicationManager> weak(this);
    if (accepted && !m_pendingStops.contains(key)) {
        m_pendingStops.insert(key);
        instance->watchExit([weak, context, key] {
            if (weak && weak->m_pendingStops.remove(key))
                weak->m_notifications.postNotification(QStringLiteral("Application Stopped"),
                                                       stoppedBody(context), false);
        });
    }
    const int delay = int(std::lround(effectiveTimeout(context.forceQuitTimeout) * 1000.0));
    QTimer::singleShot(delay, Qt::PreciseTimer, this, [weak, context, instance, key, accepted] {
        if (!weak)
            return;
        if (instance->isTerminated()) {
            Log::info(QStringLiteral("      ✅ App terminated naturally"));
            if (accepted && weak->m_pendingStops.remove(key))
                weak->m_notifications.postNotification(QStringLiteral("Application Stopped"),
                                                       stoppedBody(context), false);
            return;
        }
        Log::info(QStringLiteral("      ⏰ Timeout expired, forcing termination now"));
        weak->terminateApplication(context, true);
    });
}

void ApplicationManager::runKillCommand(const RuleContext& context, ProcessHandle& instance)
{
    // The PID alone is not proof of identity once the process has gone: never kill a stranger.
    if (instance.isTerminated()) {
        Log::info(QStringLiteral("      ✅ App terminated naturally"));
        return;
    }
    QProcess kill;
    kill.start(QStringLiteral("/bin/kill"),
               {QStringLiteral("-9"), QString::number(instance.pid())});
    if (!kill.waitForStarted()) {
        Log::info(QStringLiteral("      ❌ Failed to execute kill command: ") + kill.errorString());
        m_notifications.postNotification(QStringLiteral("Failed to Stop"),
                                         failedToStopBody(context), true);
        return;
    }
    kill.waitForFinished();
    const int status = kill.exitStatus() == QProcess::NormalExit ? kill.exitCode() : -1;
    if (status == 0) {
        Log::info(QStringLiteral("      ✅ SIGKILL succeeded"));
        m_notifications.postNotification(
            QStringLiteral("Application Stopped"),
            context.appName + QStringLiteral(" was forcefully terminated."), false);
    } else {
        Log::info(QStringLiteral("      ❌ SIGKILL failed with status %1").arg(status));
        m_notifications.postNotification(QStringLiteral("Failed to Stop"),
                                         failedToStopBody(context), true);
    }
}
