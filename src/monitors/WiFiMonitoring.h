#pragma once

#include "model/WiFiNetwork.h"

#include <QString>

#include <optional>

class WiFiMonitoring
{
public:
    virtual ~WiFiMonitoring() = default;
    virtual std::optional<WiFiNetwork> currentNetwork() const = 0;
    // The SSID the interface reports at this moment; absent without interface or network.
    virtual std::optional<QString> currentSSID() const = 0;
    virtual void startMonitoring() = 0;
    virtual void stopMonitoring() = 0;
};
