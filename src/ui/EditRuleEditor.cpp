#include "EditRuleEditor.h"

#include "engine/AppController.h"
#include "model/AppState.h"
#include "platform/Log.h"

#include <algorithm>

EditRuleEditor::EditRuleEditor(QObject* parent) : ExistingRuleEditor(parent)
{
    connect(&AppState::shared(), &AppState::connectedDevicesChanged, this,
            &EditRuleEditor::isDeviceConnectedChanged);
    connect(this, &ExistingRuleEditor::ruleChanged, this,
            &EditRuleEditor::isDeviceConnectedChanged);
}

bool EditRuleEditor::loadRule(const QUuid& id)
{
    const QList<DeviceAppBinding>& rules = AppState::shared().bindings();
    const auto found = std::find_if(rules.cbegin(), rules.cend(),
                                    [&id](const DeviceAppBinding& rule) { return rule.id == id; });
    if (found == rules.cend())
        return false;
    m_binding = *found;
    open(m_binding);
    return true;
}

QString EditRuleEditor::deviceIdsText() const
{
    return QStringLiteral("Vendor: %1 • Product: %2")
        .arg(Log::hexId(m_binding.deviceVendorID), Log::hexId(m_binding.deviceProductID));
}

bool EditRuleEditor::isDeviceConnected() const
{
    if (!hasRule())
        return false;
    const QList<USBDevice>& devices = AppState::shared().connectedDevices();
    return std::any_of(devices.cbegin(), devices.cend(), [this](const USBDevice& device) {
        return device.vendorID == m_binding.deviceVendorID &&
               device.productID == m_binding.deviceProductID;
    });
}

QString EditRuleEditor::deleteMessage() const
{
    return QStringLiteral("This will permanently remove the rule linking %1 to %2.")
        .arg(m_binding.deviceName, m_binding.appName);
}

void EditRuleEditor::save()
{
    if (!hasRule())
        return;
    AppState::shared().updateBinding(edited(m_binding));
}

void EditRuleEditor::deleteRule()
{
    if (hasRule())
        AppState::shared().removeBinding(m_binding);
}

RuleContext EditRuleEditor::ruleContext() const
{
    return AppController::makeRuleContext(m_binding);
}
