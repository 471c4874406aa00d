#pragma once

#include "ExistingRuleEditor.h"
#include "model/WiFiAppBinding.h"

// The "Edit WiFi Rule" sheet.
class EditWiFiRuleEditor : public ExistingRuleEditor
{
    Q_OBJECT
    Q_PROPERTY(QString ssid READ ssid NOTIFY ruleChanged)
    Q_PROPERTY(bool isNetworkConnected READ isNetworkConnected NOTIFY isNetworkConnectedChanged)
public:
    explicit EditWiFiRuleEditor(QObject* parent = nullptr);

    const QString& ssid() const { return m_binding.ssid; }
    // The network joined now has exactly the rule's name.
    bool isNetworkConnected() const;
    QString deleteMessage() const override;

    void save() override;
    void deleteRule() override;

Q_SIGNALS:
    void isNetworkConnectedChanged();

protected:
    bool loadRule(const QUuid& id) override;
    RuleContext ruleContext() const override;

private:
    WiFiAppBinding m_binding;
};
