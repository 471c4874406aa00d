#include "ToolProcess.h"

#include <QTimer>

#include <csignal>
#include <unistd.h>

namespace {

// Drops a character that the cut left incomplete.
void trimToCharacterBoundary(QByteArray& bytes)
{
    qsizetype end = bytes.size();
    qsizetype continuation = 0;
    while (end > 0 && (uchar(bytes[end - 1]) & 0xC0) == 0x80 && continuation < 3) {
        --end;
        ++continuation;
    }
    if (end > 0 && uchar(bytes[end - 1]) >= 0xC0)
        bytes.truncate(end - 1);
}

} // namespace

ToolProcess::ToolProcess(QObject* owner, Capture capture, Completion completion)
    : QObject(owner), m_capture(capture), m_completion(std::move(completion))
{
}

void ToolProcess::start(QObject* owner, const QString& program, const QStringList& arguments,
                        Capture capture, std::optional<std::chrono::milliseconds> timeLimit,
                        Completion completion)
{
    auto* tool = new ToolProcess(owner, capture, std::move(completion));
    QProcess& process = tool->m_process;
    process.setStandardInputFile(QProcess::nullDevice());
    if (capture == Capture::StandardOutput) {
        process.setStandardErrorFile(QProcess::nullDevice());
        connect(&process, &QProcess::readyReadStandardOutput, tool, &ToolProcess::collect);
    } else {
        process.setStandardOutputFile(QProcess::nullDevice());
        connect(&process, &QProcess::readyReadStandardError, tool, &ToolProcess::collect);
    }
    process.setChildProcessModifier([] { ::setpgid(0, 0); });
    connect(&process, &QProcess::finished, tool, &ToolProcess::onFinished);
    connect(&process, &QProcess::errorOccurred, tool, [tool](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            Outcome outcome;
            outcome.kind = Outcome::Kind::FailedToStart;
            outcome.error = tool->m_process.errorString();
            tool->finish(outcome);
            tool->deleteLater();
        }
    });
    if (timeLimit)
        QTimer::singleShot(*timeLimit, tool, &ToolProcess::onTimeLimit);
    process.start(program, arguments);
}

void ToolProcess::collect()
{
    const QByteArray chunk = m_capture == Capture::StandardOutput
                                 ? m_process.readAllStandardOutput()
                                 : m_process.readAllStandardError();
    // Whatever comes past the limit is read and dropped, so that a chatty tool cannot fill memory.
    if (m_outputFull)
        return;
    const qsizetype room = outputLimit - m_output.size();
    if (chunk.size() <= room) {
        m_output += chunk;
        return;
    }
    m_output += chunk.left(room);
    trimToCharacterBoundary(m_output);
    m_outputFull = true;
}

void ToolProcess::finish(const Outcome& outcome)
{
    if (m_done)
        return;
    m_done = true;
    if (m_completion)
        m_completion(outcome);
}

void ToolProcess::onFinished(int exitCode, QProcess::ExitStatus exitStatus)
{
    collect();
    Outcome outcome;
    outcome.status = exitStatus == QProcess::NormalExit ? exitCode : 128 + exitCode;
    outcome.output = std::move(m_output);
    finish(outcome);
    deleteLater();
}

void ToolProcess::onTimeLimit()
{
    if (m_done || m_process.state() == QProcess::NotRunning)
        return;
    // The whole group: the tool and the shortcut it runs, with whatever that started.
    if (::kill(-pid_t(m_process.processId()), SIGKILL) != 0)
        m_process.kill();
    Outcome outcome;
    outcome.kind = Outcome::Kind::TimedOut;
    outcome.status = 128 + SIGKILL;
    finish(outcome);
}
