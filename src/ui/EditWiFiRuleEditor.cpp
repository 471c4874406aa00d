#include "EditWiFiRuleEditor.h"

#include "engine/AppController.h"
#include "model/AppState.h"

#include <algorithm>

EditWiFiRuleEditor::EditWiFiRuleEditor(QObject* parent) : ExistingRuleEditor(parent)
{
    connect(&AppState::shared(), &AppState::currentWiFiNetworkChanged, this,
            &EditWiFiRuleEditor::isNetworkConnectedChanged);
    connect(this, &ExistingRuleEditor::ruleChanged, this,
            &EditWiFiRuleEditor::isNetworkConnectedChanged);
}

bool EditWiFiRuleEditor::loadRule(const QUuid& id)
{
    const QList<WiFiAppBinding>& rules = AppState::shared().wifiBindings();
    const auto found = std::find_if(rules.cbegin(), rules.cend(),
                                    [&id](const WiFiAppBinding& rule) { return rule.id == id; });
    if (found == rules.cend())
        return false;
    m_binding = *found;
    open(m_binding);
    return true;
}

bool EditWiFiRuleEditor::isNetworkConnected() const
{
    const std::optional<WiFiNetwork>& network = AppState::shared().currentWiFiNetwork();
    return hasRule() && network && network->ssid == m_binding.ssid;
}

QString EditWiFiRuleEditor::deleteMessage() const
{
    return QStringLiteral("This will permanently remove the rule linking '%1' to %2.")
        .arg(m_binding.ssid, m_binding.appName);
}

void EditWiFiRuleEditor::save()
{
    if (!hasRule())
        return;
    AppState::shared().updateWiFiBinding(edited(m_binding));
}

void EditWiFiRuleEditor::deleteRule()
{
    if (hasRule())
        AppState::shared().removeWiFiBinding(m_binding);
}

RuleContext EditWiFiRuleEditor::ruleContext() const
{
    return AppController::makeRuleContext(m_binding);
}
