#pragma once

#include "model/ShortcutConfiguration.h"

#include <QObject>
#include <QStringList>

// The shortcut lists of a rule sheet: what runs when the device or network comes (section 0)
// and when it goes (section 1), the user's shortcuts on offer, and the row actions. Nothing is
// stored here; the sheet takes the lists when it saves.
class ShortcutConfigurationEditor : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QStringList shortcutsOnConnect READ shortcutsOnConnect NOTIFY shortcutsChanged)
    Q_PROPERTY(QStringList shortcutsOnDisconnect READ shortcutsOnDisconnect NOTIFY shortcutsChanged)
    Q_PROPERTY(QStringList availableShortcuts READ availableShortcuts NOTIFY availableChanged)
    Q_PROPERTY(bool isLoadingShortcuts READ isLoadingShortcuts NOTIFY isLoadingShortcutsChanged)
    Q_PROPERTY(QStringList offeredOnConnect READ offeredOnConnect NOTIFY offerChanged)
    Q_PROPERTY(QStringList offeredOnDisconnect READ offeredOnDisconnect NOTIFY offerChanged)
public:
    enum Section
    {
        OnConnect = 0,
        OnDisconnect = 1
    };
    Q_ENUM(Section)

    // Discovers the user's shortcuts at once, as the sheet appears.
    explicit ShortcutConfigurationEditor(QObject* parent = nullptr);

    const ShortcutConfiguration& configuration() const { return m_shortcuts; }
    void setConfiguration(const ShortcutConfiguration& shortcuts);
    QStringList shortcutsOnConnect() const { return m_shortcuts.shortcutsOnConnect; }
    QStringList shortcutsOnDisconnect() const { return m_shortcuts.shortcutsOnDisconnect; }
    const QStringList& availableShortcuts() const { return m_availableShortcuts; }
    bool isLoadingShortcuts() const { return m_isLoadingShortcuts; }

    // The available shortcuts, in discovery order, that the section's list does not hold yet.
    QStringList offered(int section) const;
    QStringList offeredOnConnect() const { return offered(OnConnect); }
    QStringList offeredOnDisconnect() const { return offered(OnDisconnect); }
    // Appends `name` unless it is empty.
    Q_INVOKABLE void add(int section, const QString& name);
    // Each does nothing when `index` is no longer inside the list, or the move has no room.
    Q_INVOKABLE void moveUp(int section, int index);
    Q_INVOKABLE void moveDown(int section, int index);
    Q_INVOKABLE void remove(int section, int index);
    // Runs one shortcut now; returns at once.
    Q_INVOKABLE void test(const QString& name);
    Q_INVOKABLE void refresh();
    // The folder that holds the user's shortcuts, in the file manager; made when missing.
    Q_INVOKABLE void openShortcutsFolder();

    static QString shortcutsFolder();

Q_SIGNALS:
    void shortcutsChanged();
    void availableChanged();
    void isLoadingShortcutsChanged();
    void offerChanged();

private:
    QStringList* list(int section);
    const QStringList* list(int section) const;

    ShortcutConfiguration m_shortcuts;
    QStringList m_availableShortcuts;
    bool m_isLoadingShortcuts = false;
    int m_loading = 0;
};
