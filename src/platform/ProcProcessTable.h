#pragma once

#include "RunningApplications.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <functional>

// Running applications from /proc, attributed to desktop-entry ids the way desktops do: the
// systemd app unit, Flatpak's instance info, GIO_LAUNCHED_DESKTOP_FILE of the launched process
// itself, and the entry's executable as the last resort. Only the user's own processes count.
class ProcProcessTable : public RunningApplications
{
public:
    // Resolves a desktop-file id to the absolute path of the program its Exec line runs.
    using ExecutableResolver = std::function<QString(const QString& desktopId)>;

    struct Process
    {
        pid_t pid = 0;
        pid_t ppid = 0;
        quint64 startTime = 0;
        QString unit;       // the last cgroup path component, e.g. app-gnome-x-42.scope
        QString unitId;     // the desktop id named by an app unit, else empty
        QString launchedId; // GIO_LAUNCHED_DESKTOP_FILE's id when its PID is this process
        QString flatpakId;
        QString exe;
        QString argv0;
        QString argv1;
    };

    explicit ProcProcessTable(ExecutableResolver resolver,
                              QString procRoot = QStringLiteral("/proc"));

    void refresh() override;
    QList<Instance> instances(const QString& desktopId) override;

    // "app[-LAUNCHER]-ID-RANDOM.scope" or "app[-LAUNCHER]-ID[@RANDOM].service" → ID.
    static QString desktopIdFromUnit(const QString& unit);
    static QString desktopIdFromFile(const QString& path);

    const QList<Process>& processes() const { return m_processes; }

private:
    // What a process's exec fixed, and its unit once it has settled: kept across readings while
    // its start time and command name stay, so that a reading costs one file per process.
    struct Fixed
    {
        quint64 startTime = 0;
        QByteArray command;
        QString exe;
        QString launchedId;
        QString argv0;
        QString argv1;
        bool unitSettled = false;
        QString unit;
        QString unitId;
        QString flatpakId;
    };

    bool readProcess(pid_t pid, Process& process);
    void readUnit(const QByteArray& base, Fixed& fixed) const;
    void readExec(const QByteArray& base, pid_t pid, Fixed& fixed) const;
    bool isTopLevel(const Process& process, const QSet<pid_t>& matched,
                    QHash<pid_t, bool>& matchedLine) const;

    ExecutableResolver m_resolver;
    QString m_procRoot;
    QList<Process> m_processes;
    QHash<pid_t, qsizetype> m_byPid;
    QHash<QString, QList<qsizetype>> m_byId;
    QHash<QString, QList<qsizetype>> m_byProgram;
    QHash<QString, QString> m_executables;
    QHash<pid_t, Fixed> m_fixed;
    quint64 m_uptimeTicks = 0;
};
