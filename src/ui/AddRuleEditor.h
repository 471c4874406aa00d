#pragma once

#include "DeviceListModel.h"
#include "NewRuleEditor.h"
#include "model/USBDevice.h"

#include <optional>

// The "Add New Rule" sheet: one of the connected devices, then an application or shortcuts.
class AddRuleEditor : public NewRuleEditor
{
    Q_OBJECT
    Q_PROPERTY(DeviceListModel* devices READ devices CONSTANT)
    // The chosen device's key ("vendor:product" in decimal); empty while none is chosen.
    Q_PROPERTY(QString selectedDeviceKey READ selectedDeviceKey NOTIFY selectedDeviceChanged)
public:
    explicit AddRuleEditor(QObject* parent = nullptr);

    DeviceListModel* devices() { return &m_devices; }
    QString selectedDeviceKey() const;
    Q_INVOKABLE void selectDevice(int row);

    bool canSave() const override;
    bool save() override;

Q_SIGNALS:
    void selectedDeviceChanged();

private:
    DeviceListModel m_devices;
    std::optional<USBDevice> m_selectedDevice;
};
