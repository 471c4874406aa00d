#pragma once

#include "ApplicationPicker.h"
#include "ShortcutConfigurationEditor.h"

#include <QObject>

// What the two "add" sheets share: the application choice, the two behaviour switches (both on
// at first) and the shortcut lists. A new rule needs an application or at least one shortcut.
class NewRuleEditor : public QObject
{
    Q_OBJECT
    Q_PROPERTY(ApplicationPicker* applications READ applications CONSTANT)
    Q_PROPERTY(ShortcutConfigurationEditor* shortcuts READ shortcuts CONSTANT)
    Q_PROPERTY(bool launchOnConnect MEMBER m_launchOnConnect NOTIFY launchOnConnectChanged)
    Q_PROPERTY(bool killOnDisconnect MEMBER m_killOnDisconnect NOTIFY killOnDisconnectChanged)
    Q_PROPERTY(bool canSave READ canSave NOTIFY canSaveChanged)
public:
    explicit NewRuleEditor(QObject* parent = nullptr);

    ApplicationPicker* applications() { return &m_applications; }
    ShortcutConfigurationEditor* shortcuts() { return &m_shortcuts; }
    virtual bool canSave() const = 0;
    // Adds the rule when `canSave` holds; true when it did.
    Q_INVOKABLE virtual bool save() = 0;

Q_SIGNALS:
    void launchOnConnectChanged();
    void killOnDisconnectChanged();
    void canSaveChanged();

protected:
    bool hasAppOrShortcuts() const;
    bool launchOnConnect() const { return m_launchOnConnect; }
    bool killOnDisconnect() const { return m_killOnDisconnect; }
    // The chosen application's id, name and path, or three empty strings.
    void fillApplication(QString& id, QString& name, QString& path) const;

private:
    ApplicationPicker m_applications;
    ShortcutConfigurationEditor m_shortcuts;
    bool m_launchOnConnect = true;
    bool m_killOnDisconnect = true;
};
