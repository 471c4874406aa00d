#pragma once

#include "model/ShortcutConfiguration.h"

#include <QString>

class ShortcutsManaging
{
public:
    virtual ~ShortcutsManaging() = default;
    // Runs the on-connect or on-disconnect list; `name` is the device name or "WiFi '<ssid>'".
    virtual void runConfiguredShortcuts(const ShortcutConfiguration& configuration, bool connected,
                                        const QString& name) = 0;
};
