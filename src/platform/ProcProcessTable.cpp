#include "ProcProcessTable.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QByteArray readSmallFile(const QByteArray& path, qsizetype limit = 64 * 1024)
{
    const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return {};
    QByteArray data;
    char buffer[4096];
    while (data.size() < limit) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n <= 0)
            break;
        data.append(buffer, n);
    }
    ::close(fd);
    return data;
}

QString unescapeUnitPart(const QString& part)
{
    QString result;
    for (qsizetype i = 0; i < part.size(); ++i) {
        if (part.at(i) == QLatin1Char('\\') && i + 3 < part.size() &&
            part.at(i + 1) == QLatin1Char('x')) {
            bool ok = false;
            const int code = part.mid(i + 2, 2).toInt(&ok, 16);
            if (ok) {
                result.append(QChar(code));
                i += 3;
                continue;
            }
        }
        result.append(part.at(i));
    }
    return result;
}

} // namespace

ProcProcessTable::ProcProcessTable(ExecutableResolver resolver, QString procRoot)
    : m_resolver(std::move(resolver)), m_procRoot(std::move(procRoot))
{
}

QString ProcProcessTable::desktopIdFromFile(const QString& path)
{
    QString name = QFileInfo(path).fileName();
    if (name.endsWith(QLatin1String(".desktop")))
        name.chop(8);
    return name;
}

QString ProcProcessTable::desktopIdFromUnit(const QString& unit)
{
    QString name = unit;
    const bool scope = name.endsWith(QLatin1String(".scope"));
    const bool service = name.endsWith(QLatin1String(".service"));
    if (!name.startsWith(QLatin1String("app-")) || (!scope && !service))
        return {};
    name.chop(scope ? 6 : 8);
    if (service) {
        const qsizetype at = name.indexOf(QLatin1Char('@'));
        if (at >= 0)
            name.truncate(at);
    }
    // Dashes inside the id are escaped as \x2d, so the parts split cleanly.
    const QStringList parts = name.split(QLatin1Char('-'));
    if (scope && parts.size() >= 3)
        return unescapeUnitPart(parts.at(parts.size() - 2));
    if (service && parts.size() >= 2)
        return unescapeUnitPart(parts.last());
    return {};
}

bool ProcProcessTable::readProcess(pid_t pid, Process& process)
{
    const QByteArray base = QFile::encodeName(m_procRoot) + '/' + QByteArray::number(pid) + '/';
    // /proc/PID/stat belongs to the process's user: one open tells owner and state together.
    const int fd = ::open((base + "stat").constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    struct stat info
    {
    };
    char buffer[1024];
    ssize_t length = -1;
    if (::fstat(fd, &info) == 0 && info.st_uid == ::getuid())
        length = ::read(fd, buffer, sizeof buffer - 1);
    ::close(fd);
    if (length <= 0)
        return false;
    // The command name may hold blanks and parentheses: parse after the last ')'.
    buffer[length] = '\0';
    const char* open = std::strchr(buffer, '(');
    const char* close = std::strrchr(buffer, ')');
    if (!open || !close || close < open || close[1] == '\0')
        return false;
    // Fields from the state on: 0 state, 1 parent, 19 start time.
    const char* field = close + 2;
    const char state = *field;
    // Zombies have ended; they only wait for their parent to reap them.
    if (state == 'Z' || state == 'X')
        return false;
    quint64 values[20] = {};
    int index = 0;
    for (const char* c = field; *c && index < 20; ++c) {
        if (*c == ' ')
            ++index;
        else if (index < 20 && *c >= '0' && *c <= '9')
            values[index] = values[index] * 10 + quint64(*c - '0');
    }
    if (index < 19)
        return false;
    process.pid = pid;
    process.ppid = pid_t(values[1]);
    process.startTime = values[19];
    const QByteArray command(open + 1, close - open - 1);

    Fixed& fixed = m_fixed[pid];
    // An exec keeps the PID and start time but changes the command name.
    if (fixed.startTime != process.startTime || fixed.command != command) {
        fixed = Fixed{};
        fixed.startTime = process.startTime;
        fixed.command = command;
        readExec(base, pid, fixed);
    }
    if (!fixed.unitSettled)
        readUnit(base, fixed);
    // Desktops move a new process into its app unit just after starting it.
    constexpr quint64 kSettleSeconds = 10;
    fixed.unitSettled =
        m_uptimeTicks > process.startTime + kSettleSeconds * quint64(::sysconf(_SC_CLK_TCK));

    process.unit = fixed.unit;
    process.unitId = fixed.unitId;
    process.flatpakId = fixed.flatpakId;
    process.exe = fixed.exe;
    process.launchedId = fixed.launchedId;
    process.argv0 = fixed.argv0;
    process.argv1 = fixed.argv1;
    return true;
}

void ProcProcessTable::readUnit(const QByteArray& base, Fixed& fixed) const
{
    const QByteArray cgroup = readSmallFile(base + "cgroup", 4096).trimmed();
    const qsizetype slash = cgroup.lastIndexOf('/');
    fixed.unit = QString::fromUtf8(slash >= 0 ? cgroup.mid(slash + 1) : QByteArray());
    fixed.unitId = desktopIdFromUnit(fixed.unit);
    fixed.flatpakId.clear();
    if (fixed.unit.contains(QLatin1String("flatpak"))) {
        const QByteArray flatpakInfo = readSmallFile(base + "root/.flatpak-info", 16 * 1024);
        for (const QByteArray& line : flatpakInfo.split('\n')) {
            if (line.startsWith("name=")) {
                fixed.flatpakId = QString::fromUtf8(line.mid(5).trimmed());
                break;
            }
        }
    }
}

void ProcProcessTable::readExec(const QByteArray& base, pid_t pid, Fixed& fixed) const
{
    char target[4096];
    const ssize_t length = ::readlink((base + "exe").constData(), target, sizeof target - 1);
    fixed.exe = length > 0 ? QFile::decodeName(QByteArray(target, length)) : QString();
    if (fixed.exe.endsWith(QLatin1String(" (deleted)")))
        fixed.exe.chop(10);

    const QByteArray environ = readSmallFile(base + "environ", 256 * 1024);
    QByteArray launchedFile;
    QByteArray launchedPid;
    for (const QByteArray& entry : environ.split('\0')) {
        if (entry.startsWith("GIO_LAUNCHED_DESKTOP_FILE="))
            launchedFile = entry.mid(26);
        else if (entry.startsWith("GIO_LAUNCHED_DESKTOP_FILE_PID="))
            launchedPid = entry.mid(30);
    }
    // Children inherit the variable but not the PID.
    if (!launchedFile.isEmpty() && launchedPid.toLongLong() == pid)
        fixed.launchedId = desktopIdFromFile(QFile::decodeName(launchedFile));

    const QList<QByteArray> argv = readSmallFile(base + "cmdline", 8192).split('\0');
    fixed.argv0 = QFile::decodeName(argv.value(0));
    // A script's program path is the interpreter's first argument.
    static const QStringList interpreters{QStringLiteral("sh"),     QStringLiteral("bash"),
                                          QStringLiteral("dash"),   QStringLiteral("zsh"),
                                          QStringLiteral("python"), QStringLiteral("perl"),
                                          QStringLiteral("ruby"),   QStringLiteral("node")};
    const QString interpreter = QFileInfo(fixed.exe).fileName();
    for (const QString& name : interpreters) {
        if (interpreter.startsWith(name)) {
            fixed.argv1 = QFile::decodeName(argv.value(1));
            break;
        }
    }
}

void ProcProcessTable::refresh()
{
    m_processes.clear();
    m_byPid.clear();
    m_byId.clear();
    m_byProgram.clear();

    const QByteArray uptime = readSmallFile(QFile::encodeName(m_procRoot) + "/uptime", 128);
    m_uptimeTicks = quint64(uptime.split(' ').value(0).toDouble() * double(::sysconf(_SC_CLK_TCK)));

    DIR* directory = ::opendir(QFile::encodeName(m_procRoot).constData());
    if (!directory)
        return;
    while (const dirent* entry = ::readdir(directory)) {
        char* end = nullptr;
        const long pid = std::strtol(entry->d_name, &end, 10);
        if (*end != '\0' || pid <= 0)
            continue;
        Process process;
        // A process may end while it is read: it simply is not listed.
        if (!readProcess(pid_t(pid), process))
            continue;
        const qsizetype index = m_processes.size();
        m_processes.append(process);
        m_byPid.insert(process.pid, index);
        for (const QString& id : {process.unitId, process.launchedId, process.flatpakId}) {
            if (!id.isEmpty())
                m_byId[id].append(index);
        }
        const QString programs[] = {process.exe, process.argv0, process.argv1};
        for (int i = 0; i < 3; ++i) {
            const QString& program = programs[i];
            const bool repeated =
                (i > 0 && program == programs[0]) || (i > 1 && program == programs[1]);
            if (program.startsWith(QLatin1Char('/')) && !repeated)
                m_byProgram[program].append(index);
        }
    }
    ::closedir(directory);
    for (auto it = m_fixed.begin(); it != m_fixed.end();) {
        if (m_byPid.contains(it.key()))
            ++it;
        else
            it = m_fixed.erase(it);
    }
}

bool ProcProcessTable::isTopLevel(const Process& process, const QSet<pid_t>& matched,
                                  QHash<pid_t, bool>& matchedLine) const
{
    // One instance is one top-level process: its own children are part of it. `matchedLine`
    // remembers, per ancestor, whether it or one of its own ancestors matched.
    QList<pid_t> walked;
    bool found = false;
    pid_t parent = process.ppid;
    for (int depth = 0; parent > 1 && depth < 64; ++depth) {
        const auto known = matchedLine.constFind(parent);
        if (known != matchedLine.constEnd()) {
            found = *known;
            break;
        }
        walked.append(parent);
        if (matched.contains(parent)) {
            found = true;
            break;
        }
        const auto next = m_byPid.constFind(parent);
        if (next == m_byPid.constEnd())
            break;
        parent = m_processes.at(*next).ppid;
    }
    for (pid_t pid : walked)
        matchedLine.insert(pid, found);
    return !found;
}

QList<RunningApplications::Instance> ProcProcessTable::instances(const QString& desktopId)
{
    if (desktopId.isEmpty())
        return {};
    QList<qsizetype> candidates = m_byId.value(desktopId);

    auto executable = m_executables.constFind(desktopId);
    if (executable == m_executables.constEnd())
        executable =
            m_executables.insert(desktopId, m_resolver ? m_resolver(desktopId) : QString());
    if (!executable->isEmpty()) {
        const QList<qsizetype> byProgram = m_byProgram.value(*executable);
        if (candidates.isEmpty()) {
            candidates = byProgram;
        } else {
            QSet<qsizetype> seen(candidates.cbegin(), candidates.cend());
            for (qsizetype index : byProgram) {
                if (!seen.contains(index))
                    candidates.append(index);
            }
        }
    }

    QSet<pid_t> matched;
    for (qsizetype index : candidates)
        matched.insert(m_processes.at(index).pid);
    std::sort(candidates.begin(), candidates.end());

    QList<Instance> result;
    QHash<pid_t, bool> matchedLine;
    for (qsizetype index : candidates) {
        const Process& process = m_processes.at(index);
        if (isTopLevel(process, matched, matchedLine))
            result.append(Instance{process.pid, process.startTime});
    }
    return result;
}
