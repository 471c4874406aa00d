#pragma once

#include "DeviceAppBinding.h"
#include "WiFiAppBinding.h"

#include <QList>

class BindingPersisting
{
public:
    virtual ~BindingPersisting() = default;
    virtual QList<DeviceAppBinding> loadBindings() = 0;
    virtual QList<WiFiAppBinding> loadWiFiBindings() = 0;
    virtual void saveBindings(const QList<DeviceAppBinding>& bindings) = 0;
    virtual void saveWiFiBindings(const QList<WiFiAppBinding>& bindings) = 0;
};
