#pragma once

#include "ShortcutConfigurationEditor.h"
#include "engine/RuleContext.h"

#include <QObject>

// What the two "edit" sheets share: the rule's switches, force-quit settings and shortcuts as
// unsaved sheet state, the rule's application with whether it runs, and the manual launch and
// quit, which act on the rule as it was when the sheet opened.
class ExistingRuleEditor : public QObject
{
    Q_OBJECT
    // The rule's id; setting it takes a copy of that rule from the state.
    Q_PROPERTY(QString ruleId READ ruleId WRITE setRuleId NOTIFY ruleChanged)
    Q_PROPERTY(bool hasRule READ hasRule NOTIFY ruleChanged)
    Q_PROPERTY(QString appName READ appName NOTIFY ruleChanged)
    Q_PROPERTY(QString appBundleIdentifier READ appBundleIdentifier NOTIFY ruleChanged)
    // The application's icon name or file, for "image://appicon/"; empty when it has none.
    Q_PROPERTY(QString appIcon READ appIcon NOTIFY ruleChanged)
    Q_PROPERTY(bool isAppRunning READ isAppRunning NOTIFY isAppRunningChanged)
    Q_PROPERTY(QString deleteMessage READ deleteMessage NOTIFY ruleChanged)
    Q_PROPERTY(bool isEnabled MEMBER m_isEnabled NOTIFY settingsChanged)
    Q_PROPERTY(bool launchOnConnect MEMBER m_launchOnConnect NOTIFY settingsChanged)
    Q_PROPERTY(bool killOnDisconnect MEMBER m_killOnDisconnect NOTIFY settingsChanged)
    Q_PROPERTY(bool forceQuitAllowed MEMBER m_forceQuitAllowed NOTIFY settingsChanged)
    Q_PROPERTY(double forceQuitTimeout MEMBER m_forceQuitTimeout NOTIFY settingsChanged)
    // "1.0s"
    Q_PROPERTY(QString timeoutText READ timeoutText NOTIFY settingsChanged)
    Q_PROPERTY(ShortcutConfigurationEditor* shortcuts READ shortcuts CONSTANT)
public:
    explicit ExistingRuleEditor(QObject* parent = nullptr);

    const QString& ruleId() const { return m_ruleId; }
    void setRuleId(const QString& id);
    bool hasRule() const { return m_hasRule; }
    const QString& appName() const { return m_appName; }
    const QString& appBundleIdentifier() const { return m_appBundleIdentifier; }
    QString appIcon() const;
    bool isAppRunning() const { return m_isAppRunning; }
    virtual QString deleteMessage() const = 0;
    QString timeoutText() const;
    ShortcutConfigurationEditor* shortcuts() { return &m_shortcuts; }

    // Reads again whether the rule's application runs.
    Q_INVOKABLE void refreshRunningState();
    Q_INVOKABLE void launchApp();
    Q_INVOKABLE void quitApp();
    // Stores the rule with the sheet's switches, time-out and shortcuts.
    Q_INVOKABLE virtual void save() = 0;
    // Removes the rule as it was opened; nothing happens when it is gone already.
    Q_INVOKABLE virtual void deleteRule() = 0;

Q_SIGNALS:
    void ruleChanged();
    void settingsChanged();
    void isAppRunningChanged();

protected:
    // Copies the rule with this id into the subclass; false when there is none.
    virtual bool loadRule(const QUuid& id) = 0;
    virtual RuleContext ruleContext() const = 0;

    // Called by `loadRule` with the rule it copied: the sheet state starts from its fields.
    template <typename Rule> void open(const Rule& rule)
    {
        m_appName = rule.appName;
        m_appBundleIdentifier = rule.appBundleIdentifier;
        m_isEnabled = rule.isEnabled;
        m_launchOnConnect = rule.launchOnConnect;
        m_killOnDisconnect = rule.killOnDisconnect;
        m_forceQuitAllowed = rule.forceQuitAllowed;
        m_forceQuitTimeout = rule.forceQuitTimeout;
        m_shortcuts.setConfiguration(rule.shortcuts);
        Q_EMIT settingsChanged();
    }

    // The six editable fields of `rule` replaced by the sheet state.
    template <typename Rule> Rule edited(Rule rule) const
    {
        rule.isEnabled = m_isEnabled;
        rule.launchOnConnect = m_launchOnConnect;
        rule.killOnDisconnect = m_killOnDisconnect;
        rule.forceQuitAllowed = m_forceQuitAllowed;
        rule.forceQuitTimeout = m_forceQuitTimeout;
        rule.shortcuts = m_shortcuts.configuration();
        return rule;
    }

private:
    void refreshLater();

    QString m_ruleId;
    bool m_hasRule = false;
    QString m_appName;
    QString m_appBundleIdentifier;
    bool m_isAppRunning = false;
    bool m_isEnabled = true;
    bool m_launchOnConnect = false;
    bool m_killOnDisconnect = false;
    bool m_forceQuitAllowed = false;
    double m_forceQuitTimeout = 1.0;
    ShortcutConfigurationEditor m_shortcuts;
};
