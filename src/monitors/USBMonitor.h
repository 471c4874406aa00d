#pragma once

#include "USBMonitoring.h"
#include "platform/USBDeviceSource.h"

#include <QObject>

#include <functional>

// Keeps the list of connected USB devices, rescans 0.5 s after every arrival or removal and then
// asks the rule engine to evaluate. The truth is always a full rescan.
class USBMonitor : public QObject, public USBMonitoring
{
    Q_OBJECT
public:
    USBMonitor(USBDeviceSource& source, std::function<void()> evaluateAllBindings);
    static USBMonitor& shared();

    QList<USBDevice> connectedDevices() const override { return m_connectedDevices; }
    void startMonitoring() override;
    void scanDevices() override;
    void stopMonitoring() override;

    // A record from one device's properties, or none for a device without vendor id.
    static std::optional<USBDevice> makeDevice(const USBDeviceSource::Properties& properties);
    static bool isExcluded(const USBDevice& device);

private:
    void handleEvent(USBDeviceSource::Event event);

    USBDeviceSource& m_source;
    std::function<void()> m_evaluateAllBindings;
    QList<USBDevice> m_connectedDevices;
};
