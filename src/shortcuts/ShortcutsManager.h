#pragma once

#include "ShortcutInfo.h"
#include "ShortcutsManaging.h"

#include <QObject>
#include <QVariantList>

#include <chrono>
#include <functional>

// Lists and runs the user's shortcuts through the obrinta-shortcuts tool, always with argument
// vectors, never through a shell. Everything happens on the main thread without blocking it:
// the tool's exit arrives as a signal of the event loop.
class ShortcutsManager : public QObject, public ShortcutsManaging
{
    Q_OBJECT
    // For QML: the shortcuts as a list of ShortcutInfo values, each with `id` and `name`.
    Q_PROPERTY(QVariantList shortcuts READ shortcutValues NOTIFY shortcutsChanged)
public:
    // A shortcut that runs longer than this is killed and counts as failed.
    static constexpr std::chrono::milliseconds defaultTimeLimit = std::chrono::minutes(10);

    explicit ShortcutsManager(QString toolPath,
                              std::chrono::milliseconds timeLimit = defaultTimeLimit);
    // Uses the tool installed beside the running program.
    static ShortcutsManager& shared();

    // The result of the last successful discovery, in the tool's order.
    const QList<ShortcutInfo>& shortcuts() const { return m_shortcuts; }

    using DiscoveryCompletion = std::function<void(const QList<ShortcutInfo>&)>;
    void discoverShortcuts(DiscoveryCompletion completion = {});
    // `completion` gets true when the shortcut ended with status 0.
    void executeShortcut(const QString& name, std::function<void(bool)> completion = {});
    // Runs `names` one after the other; a failure does not stop the rest.
    void runShortcuts(const QStringList& names, const QString& reason);
    void runConfiguredShortcuts(const ShortcutConfiguration& configuration, bool connected,
                                const QString& name) override;

    // The tool's list output: one name per line, blanks and tabs around it dropped.
    static QList<ShortcutInfo> parseList(const QString& output);

Q_SIGNALS:
    void shortcutsChanged();

private:
    QVariantList shortcutValues() const;
    void publish(const QList<ShortcutInfo>& shortcuts);
    void runFrom(const QStringList& names, qsizetype index);

    QString m_toolPath;
    std::chrono::milliseconds m_timeLimit;
    QList<ShortcutInfo> m_shortcuts;
};
