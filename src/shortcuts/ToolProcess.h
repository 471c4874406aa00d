#pragma once

#include <QByteArray>
#include <QObject>
#include <QProcess>
#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>

// One call of the shortcuts tool: an argument vector, no shell, standard input from the null
// device, one output channel captured and the other discarded. The tool runs in a process group
// of its own, so that a time-out ends the shortcut it started as well. The completion runs once,
// on the main loop, and the object deletes itself afterwards; deleting `owner` first kills the
// tool.
class ToolProcess : public QObject
{
    Q_OBJECT
public:
    enum class Capture
    {
        StandardOutput,
        StandardError
    };

    struct Outcome
    {
        enum class Kind
        {
            FailedToStart,
            Finished,
            TimedOut
        };
        Kind kind = Kind::Finished;
        // Why it could not start.
        QString error;
        // The exit status; 128 + the signal's number when a signal ended the tool.
        int status = 0;
        // The captured channel, cut after `outputLimit` bytes at a character boundary.
        QByteArray output;
    };
    using Completion = std::function<void(const Outcome&)>;

    static constexpr qsizetype outputLimit = 1024 * 1024;

    static void start(QObject* owner, const QString& program, const QStringList& arguments,
                      Capture capture, std::optional<std::chrono::milliseconds> timeLimit,
                      Completion completion);

private:
    ToolProcess(QObject* owner, Capture capture, Completion completion);

    void collect();
    void finish(const Outcome& outcome);
    void onFinished(int exitCode, QProcess::ExitStatus exitStatus);
    void onTimeLimit();

    QProcess m_process;
    Capture m_capture;
    Completion m_completion;
    QByteArray m_output;
    bool m_outputFull = false;
    bool m_done = false;
};
