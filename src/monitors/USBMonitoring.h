#pragma once

#include "model/USBDevice.h"

#include <QList>

class USBMonitoring
{
public:
    virtual ~USBMonitoring() = default;
    virtual QList<USBDevice> connectedDevices() const = 0;
    virtual void startMonitoring() = 0;
    virtual void scanDevices() = 0;
    virtual void stopMonitoring() = 0;
};
