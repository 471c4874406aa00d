#pragma once

#include "ApplicationLaunching.h"

#include <QObject>
#include <QPair>
#include <QSet>

#include <memory>

class DesktopApplications;
class NotificationPosting;
class ProcessControl;
class ProcessHandle;
class RunningApplications;

// Launches applications from their desktop entries and quits them, escalating from the polite
// quit to the forced quit after the rule's time-out and to "/bin/kill -9" as the last resort.
class ApplicationManager : public QObject, public ApplicationLaunching
{
    Q_OBJECT
public:
    ApplicationManager(DesktopApplications& applications, RunningApplications& running,
                       ProcessControl& processes, NotificationPosting& notifications);
    static ApplicationManager& shared();
    static RunningApplications& sharedRunningApplications();

    void launchApplication(const RuleContext& context) override;
    void terminateApplication(const RuleContext& context, bool force) override;

    // The time-out actually waited: negative or not a number is 0, more than an hour is an hour.
    static double effectiveTimeout(double forceQuitTimeout);
    // 10 seconds are written 10.0, as the log has always shown them.
    static QString secondsText(double seconds);

private:
    void startLaunch(const RuleContext& context, const QString& path, bool byBundle);
    void finishLaunch(const RuleContext& context, bool byBundle, const QString& error);
    // A process as found: its PID and its start time, so that a reused PID is another key.
    using InstanceKey = QPair<pid_t, quint64>;

    void scheduleForcedTermination(const RuleContext& context,
                                   std::shared_ptr<ProcessHandle> instance, InstanceKey key,
                                   bool accepted);
    void runKillCommand(const RuleContext& context, ProcessHandle& instance);

    DesktopApplications& m_applications;
    RunningApplications& m_running;
    ProcessControl& m_processes;
    NotificationPosting& m_notifications;
    QSet<QString> m_launchesInFlight;
    // Instances whose accepted polite quit has not been told yet.
    QSet<InstanceKey> m_pendingStops;
};
