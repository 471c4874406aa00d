#include "ShortcutsManager.h"

#include "ToolProcess.h"
#include "model/BlankTrimming.h"
#include "platform/Log.h"

#include <QCoreApplication>
#include <QStringDecoder>

namespace {

std::optional<QString> decodeUtf8(const QByteArray& bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

bool isLineBreak(QChar c)
{
    return (c >= u'\n' && c <= u'\r') || c == u'\u0085' || c == u'\u2028' || c == u'\u2029';
}

QString durationText(std::chrono::milliseconds duration)
{
    const qint64 milliseconds = duration.count();
    if (milliseconds % 60000 == 0) {
        const qint64 minutes = milliseconds / 60000;
        return QString::number(minutes) +
               (minutes == 1 ? QStringLiteral(" minute") : QStringLiteral(" minutes"));
    }
    if (milliseconds % 1000 == 0) {
        const qint64 seconds = milliseconds / 1000;
        return QString::number(seconds) +
               (seconds == 1 ? QStringLiteral(" second") : QStringLiteral(" seconds"));
    }
    return QString::number(milliseconds) + QStringLiteral(" milliseconds");
}

} // namespace

ShortcutsManager::ShortcutsManager(QString toolPath, std::chrono::milliseconds timeLimit)
    : m_toolPath(std::move(toolPath)), m_timeLimit(timeLimit)
{
}

ShortcutsManager& ShortcutsManager::shared()
{
    static ShortcutsManager* manager = new ShortcutsManager(QCoreApplication::applicationDirPath() +
                                                            QStringLiteral("/obrinta-shortcuts"));
    return *manager;
}

QVariantList ShortcutsManager::shortcutValues() const
{
    QVariantList values;
    for (const ShortcutInfo& shortcut : m_shortcuts)
        values.append(QVariant::fromValue(shortcut));
    return values;
}

QList<ShortcutInfo> ShortcutsManager::parseList(const QString& output)
{
    QList<ShortcutInfo> shortcuts;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= output.size(); ++i) {
        if (i < output.size() && !isLineBreak(output[i]))
            continue;
        const QString name = trimmedBlanks(QStringView(output).sliced(start, i - start));
        if (!name.isEmpty())
            shortcuts.append(ShortcutInfo{name, name});
        start = i + 1;
    }
    return shortcuts;
}

void ShortcutsManager::publish(const QList<ShortcutInfo>& shortcuts)
{
    m_shortcuts = shortcuts;
    Q_EMIT shortcutsChanged();
}

void ShortcutsManager::discoverShortcuts(DiscoveryCompletion completion)
{
    Log::info(QStringLiteral("🔍 [ShortcutsManager] Discovering shortcuts..."));
    const auto done = [this, completion](const ToolProcess::Outcome& outcome) {
        QList<ShortcutInfo> shortcuts;
        if (outcome.kind == ToolProcess::Outcome::Kind::FailedToStart) {
            Log::info(QStringLiteral("   ❌ Failed to run shortcuts command: ") + outcome.error);
        } else if (const std::optional<QString> text = decodeUtf8(outcome.output)) {
            shortcuts = parseList(*text);
            publish(shortcuts);
            Log::info(QStringLiteral("   ✅ Found ") + QString::number(shortcuts.size()) +
                      QStringLiteral(" shortcuts"));
            for (const ShortcutInfo& shortcut : shortcuts)
                Log::info(QStringLiteral("      - ") + shortcut.name);
        } else {
            Log::info(QStringLiteral("   ❌ Failed to decode shortcuts output"));
        }
        if (completion)
            completion(shortcuts);
    };
    ToolProcess::start(this, m_toolPath, {QStringLiteral("list")},
                       ToolProcess::Capture::StandardOutput, std::nullopt, done);
}

void ShortcutsManager::executeShortcut(const QString& name, std::function<void(bool)> completion)
{
    Log::info(QStringLiteral("⚡️ [ShortcutsManager] Executing shortcut: '") + name + '\'');
    const auto done = [this, name, completion](const ToolProcess::Outcome& outcome) {
        using Kind = ToolProcess::Outcome::Kind;
        const bool succeeded = outcome.kind == Kind::Finished && outcome.status == 0;
        if (outcome.kind == Kind::FailedToStart) {
            Log::info(QStringLiteral("   ❌ Failed to start shortcut process: ") + outcome.error);
        } else if (succeeded) {
            Log::info(QStringLiteral("   ✅ Shortcut '") + name +
                      QStringLiteral("' executed successfully"));
        } else {
            const QString text =
                outcome.kind == Kind::TimedOut
                    ? QStringLiteral("timed out after ") + durationText(m_timeLimit)
                    : decodeUtf8(outcome.output).value_or(QStringLiteral("Unknown error"));
            Log::info(QStringLiteral("   ❌ Shortcut '") + name +
                      QStringLiteral("' failed with status ") + QString::number(outcome.status) +
                      QStringLiteral(": ") + text);
        }
        if (completion)
            completion(succeeded);
    };
    ToolProcess::start(this, m_toolPath, {QStringLiteral("run"), name},
                       ToolProcess::Capture::StandardError, m_timeLimit, done);
}

void ShortcutsManager::runShortcuts(const QStringList& names, const QString& reason)
{
    if (names.isEmpty())
        return;
    Log::info(QStringLiteral("   🎯 Running ") + QString::number(names.size()) +
              QStringLiteral(" shortcut(s) because ") + reason);
    runFrom(names, 0);
}

void ShortcutsManager::runFrom(const QStringList& names, qsizetype index)
{
    const QString count = QString::number(names.size());
    if (index == names.size()) {
        Log::info(QStringLiteral("   ✅ Finished running ") + count +
                  QStringLiteral(" shortcut(s)"));
        return;
    }
    Log::info(QStringLiteral("      [") + QString::number(index + 1) + '/' + count +
              QStringLiteral("] Executing '") + names[index] + QStringLiteral("'..."));
    executeShortcut(names[index], [this, names, index](bool) { runFrom(names, index + 1); });
}

void ShortcutsManager::runConfiguredShortcuts(const ShortcutConfiguration& configuration,
                                              bool connected, const QString& name)
{
    const QStringList& names =
        connected ? configuration.shortcutsOnConnect : configuration.shortcutsOnDisconnect;
    if (names.isEmpty())
        return;
    runShortcuts(
        names, name + (connected ? QStringLiteral(" connected") : QStringLiteral(" disconnected")));
}
