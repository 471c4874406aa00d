#include "AddRuleEditor.h"

#include "model/AppState.h"

AddRuleEditor::AddRuleEditor(QObject* parent) : NewRuleEditor(parent)
{
    connect(this, &AddRuleEditor::selectedDeviceChanged, this, &NewRuleEditor::canSaveChanged);
}

QString AddRuleEditor::selectedDeviceKey() const
{
    return m_selectedDevice ? DeviceListModel::deviceKey(*m_selectedDevice) : QString();
}

void AddRuleEditor::selectDevice(int row)
{
    const QList<USBDevice>& devices = AppState::shared().connectedDevices();
    if (row < 0 || row >= devices.size())
        return;
    m_selectedDevice = devices.at(row);
    Q_EMIT selectedDeviceChanged();
}

bool AddRuleEditor::canSave() const
{
    return m_selectedDevice && hasAppOrShortcuts();
}

bool AddRuleEditor::save()
{
    if (!canSave())
        return false;
    DeviceAppBinding rule;
    rule.id = QUuid::createUuid();
    rule.deviceVendorID = m_selectedDevice->vendorID;
    rule.deviceProductID = m_selectedDevice->productID;
    rule.deviceName = m_selectedDevice->displayName();
    fillApplication(rule.appBundleIdentifier, rule.appName, rule.appPath);
    rule.isEnabled = true;
    rule.killOnDisconnect = killOnDisconnect();
    rule.launchOnConnect = launchOnConnect();
    rule.forceQuitAllowed = false;
    rule.forceQuitTimeout = 1.0;
    rule.shortcuts = shortcuts()->configuration();
    AppState::shared().addBinding(rule);
    return true;
}
