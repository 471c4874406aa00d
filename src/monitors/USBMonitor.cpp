#include "USBMonitor.h"

#include "USBDeviceTables.h"
#include "engine/AppController.h"
#include "platform/Log.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/UdevDeviceSource.h"

#include <QPointer>
#include <QVariant>

USBMonitor::USBMonitor(USBDeviceSource& source, std::function<void()> evaluateAllBindings)
    : m_source(source), m_evaluateAllBindings(std::move(evaluateAllBindings))
{
}

USBMonitor& USBMonitor::shared()
{
    static USBMonitor* monitor = new USBMonitor(
        *new UdevDeviceSource, [] { AppController::shared().evaluateAllBindings(); });
    return *monitor;
}

std::optional<USBDevice> USBMonitor::makeDevice(const USBDeviceSource::Properties& properties)
{
    const qint64 vendorID = properties.idVendor.value_or(0);
    const qint64 productID = properties.idProduct.value_or(0);
    if (vendorID == 0)
        return std::nullopt;
    USBDevice device;
    device.vendorID = vendorID;
    device.productID = productID;
    device.locationID = properties.locationID.value_or(0);
    device.vendorName = USBDeviceTables::knownVendorNames().value(
        vendorID, properties.vendorString.value_or(QStringLiteral("Unknown")));
    device.productName = USBDeviceTables::knownProductNames().value(
        USBDeviceTables::vendorProductKey(vendorID, productID),
        properties.productString.value_or(QStringLiteral("Unknown")));
    device.serialNumber = properties.serialNumberString;
    device.id = QStringLiteral("%1:%2:%3").arg(vendorID).arg(productID).arg(device.locationID);
    return device;
}

bool USBMonitor::isExcluded(const USBDevice& device)
{
    return USBDeviceTables::excludedVendorIDs().contains(device.vendorID) ||
           USBDeviceTables::excludedHubIDs().contains(
               USBDeviceTables::vendorProductKey(device.vendorID, device.productID));
}

void USBMonitor::startMonitoring()
{
    m_source.startWatching([this](USBDeviceSource::Event event) { handleEvent(event); });
}

void USBMonitor::stopMonitoring()
{
    m_source.stopWatching();
}

void USBMonitor::handleEvent(USBDeviceSource::Event event)
{
    QString word;
    switch (event) {
    case USBDeviceSource::Event::Added:
        word = QStringLiteral("ADD");
        debugLog(QStringLiteral("🔌 [USBMonitor] Device ADDED notification received"));
        break;
    case USBDeviceSource::Event::Removed:
        word = QStringLiteral("REMOVE");
        debugLog(QStringLiteral("🔌 [USBMonitor] Device REMOVED notification received"));
        break;
    case USBDeviceSource::Event::Overflow:
        // Events were lost; the rescan below still finds the truth.
        word = QStringLiteral("OVERFLOW");
        debugLog(QStringLiteral("⚠️ [USBMonitor] Device event buffer overflowed"));
        break;
    }

    QPointer<USBMonitor> weak(this);
    std::function<void()> evaluate = m_evaluateAllBindings;
    MainQueue::after(500, [weak, word, evaluate] {
        debugLog(QStringLiteral("🔌 [USBMonitor] Scanning devices after %1 event...").arg(word));
        if (weak)
            weak->scanDevices();
        MainQueue::async([word, evaluate] {
            debugLog(QStringLiteral("🔌 [USBMonitor] Triggering evaluation after %1").arg(word));
            if (evaluate)
                evaluate();
        });
    });
}

void USBMonitor::scanDevices()
{
    debugLog(QStringLiteral("🔍 [USBMonitor] Starting device scan..."));
    QList<USBDeviceSource::Properties> found;
    const int result = m_source.enumerate(found);
    if (result != 0) {
        debugLog(QStringLiteral("❌ [USBMonitor] Failed to get matching services: %1").arg(result));
        return;
    }
    QList<USBDevice> devices;
    for (const USBDeviceSource::Properties& properties : found) {
        const auto device = makeDevice(properties);
        if (device && !isExcluded(*device))
            devices.append(*device);
    }
    debugLog(QStringLiteral("📊 [USBMonitor] Found %1 device(s)").arg(devices.size()));

    QPointer<USBMonitor> weak(this);
    MainQueue::async([weak, devices] {
        debugLog(QStringLiteral("✅ [USBMonitor] Updating connectedDevices array with %1 device(s)")
                     .arg(devices.size()));
        if (weak)
            weak->m_connectedDevices = devices;
        for (const USBDevice& device : devices) {
            debugLog(QStringLiteral("   - %1 (VID: %2, PID: %3)")
                         .arg(device.displayName(), Log::hexId(device.vendorID),
                              Log::hexId(device.productID)));
        }
        NotificationCenter::defaultCenter().post(
            QStringLiteral("usbDevicesChanged"),
            {{QStringLiteral("devices"), QVariant::fromValue(devices)}});
    });
}
