#include "ShortcutConfigurationEditor.h"

#include "platform/MainQueue.h"
#include "shortcuts/ShortcutsManager.h"

#include <QDesktopServices>
#include <QDir>
#include <QPointer>
#include <QStandardPaths>
#include <QUrl>

ShortcutConfigurationEditor::ShortcutConfigurationEditor(QObject* parent) : QObject(parent)
{
    connect(this, &ShortcutConfigurationEditor::shortcutsChanged, this,
            &ShortcutConfigurationEditor::offerChanged);
    connect(this, &ShortcutConfigurationEditor::availableChanged, this,
            &ShortcutConfigurationEditor::offerChanged);
    refresh();
}

void ShortcutConfigurationEditor::setConfiguration(const ShortcutConfiguration& shortcuts)
{
    m_shortcuts = shortcuts;
    Q_EMIT shortcutsChanged();
}

QStringList* ShortcutConfigurationEditor::list(int section)
{
    switch (section) {
    case OnConnect:
        return &m_shortcuts.shortcutsOnConnect;
    case OnDisconnect:
        return &m_shortcuts.shortcutsOnDisconnect;
    default:
        return nullptr;
    }
}

const QStringList* ShortcutConfigurationEditor::list(int section) const
{
    return const_cast<ShortcutConfigurationEditor*>(this)->list(section);
}

QStringList ShortcutConfigurationEditor::offered(int section) const
{
    const QStringList* names = list(section);
    if (!names)
        return {};
    QStringList result;
    for (const QString& name : m_availableShortcuts) {
        if (!names->contains(name))
            result.append(name);
    }
    return result;
}

void ShortcutConfigurationEditor::add(int section, const QString& name)
{
    QStringList* names = list(section);
    if (!names || name.isEmpty())
        return;
    names->append(name);
    Q_EMIT shortcutsChanged();
}

void ShortcutConfigurationEditor::moveUp(int section, int index)
{
    QStringList* names = list(section);
    if (!names || index < 1 || index >= names->size())
        return;
    names->swapItemsAt(index, index - 1);
    Q_EMIT shortcutsChanged();
}

void ShortcutConfigurationEditor::moveDown(int section, int index)
{
    QStringList* names = list(section);
    if (!names || index < 0 || index + 1 >= names->size())
        return;
    names->swapItemsAt(index, index + 1);
    Q_EMIT shortcutsChanged();
}

void ShortcutConfigurationEditor::remove(int section, int index)
{
    QStringList* names = list(section);
    if (!names || index < 0 || index >= names->size())
        return;
    names->removeAt(index);
    Q_EMIT shortcutsChanged();
}

void ShortcutConfigurationEditor::test(const QString& name)
{
    MainQueue::async([name] { ShortcutsManager::shared().executeShortcut(name); });
}

void ShortcutConfigurationEditor::refresh()
{
    const int generation = ++m_loading;
    if (!std::exchange(m_isLoadingShortcuts, true))
        Q_EMIT isLoadingShortcutsChanged();
    QPointer<ShortcutConfigurationEditor> editor(this);
    ShortcutsManager::shared().discoverShortcuts(
        [editor, generation](const QList<ShortcutInfo>& shortcuts) {
            // Only the latest discovery counts when refreshes overlap.
            if (!editor || generation != editor->m_loading)
                return;
            editor->m_availableShortcuts.clear();
            for (const ShortcutInfo& shortcut : shortcuts)
                editor->m_availableShortcuts.append(shortcut.name);
            editor->m_isLoadingShortcuts = false;
            Q_EMIT editor->availableChanged();
            Q_EMIT editor->isLoadingShortcutsChanged();
        });
}

void ShortcutConfigurationEditor::openShortcutsFolder()
{
    const QString folder = shortcutsFolder();
    QDir().mkpath(folder);
    QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

QString ShortcutConfigurationEditor::shortcutsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Obrinta/shortcuts");
}
