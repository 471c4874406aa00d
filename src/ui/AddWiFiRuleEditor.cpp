#include "AddWiFiRuleEditor.h"

#include "model/AppState.h"
#include "model/BlankTrimming.h"

AddWiFiRuleEditor::AddWiFiRuleEditor(QObject* parent) : NewRuleEditor(parent)
{
    connect(this, &AddWiFiRuleEditor::ssidInputChanged, this, &NewRuleEditor::canSaveChanged);
}

void AddWiFiRuleEditor::setSsidInput(const QString& text)
{
    if (text == m_ssidInput)
        return;
    m_ssidInput = text;
    Q_EMIT ssidInputChanged();
}

QString AddWiFiRuleEditor::trimmedName(const QString& text)
{
    return trimmedBlanks(text);
}

bool AddWiFiRuleEditor::canSave() const
{
    return !trimmedName(m_ssidInput).isEmpty() && hasAppOrShortcuts();
}

bool AddWiFiRuleEditor::save()
{
    if (!canSave())
        return false;
    WiFiAppBinding rule;
    rule.id = QUuid::createUuid();
    rule.ssid = trimmedName(m_ssidInput);
    fillApplication(rule.appBundleIdentifier, rule.appName, rule.appPath);
    rule.isEnabled = true;
    rule.launchOnConnect = launchOnConnect();
    rule.killOnDisconnect = killOnDisconnect();
    rule.forceQuitAllowed = false;
    rule.forceQuitTimeout = 1.0;
    rule.shortcuts = shortcuts()->configuration();
    AppState::shared().addWiFiBinding(rule);
    return true;
}
