#pragma once

#include "ExistingRuleEditor.h"
#include "model/DeviceAppBinding.h"

// The "Edit Rule" sheet of a USB rule.
class EditRuleEditor : public ExistingRuleEditor
{
    Q_OBJECT
    Q_PROPERTY(QString deviceName READ deviceName NOTIFY ruleChanged)
    // "Vendor: 0x046D • Product: 0xC52B"
    Q_PROPERTY(QString deviceIdsText READ deviceIdsText NOTIFY ruleChanged)
    Q_PROPERTY(bool isDeviceConnected READ isDeviceConnected NOTIFY isDeviceConnectedChanged)
public:
    explicit EditRuleEditor(QObject* parent = nullptr);

    const QString& deviceName() const { return m_binding.deviceName; }
    QString deviceIdsText() const;
    bool isDeviceConnected() const;
    QString deleteMessage() const override;

    void save() override;
    void deleteRule() override;

Q_SIGNALS:
    void isDeviceConnectedChanged();

protected:
    bool loadRule(const QUuid& id) override;
    RuleContext ruleContext() const override;

private:
    DeviceAppBinding m_binding;
};
