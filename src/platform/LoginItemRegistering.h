#pragma once

#include <QString>

#include <optional>

// Starts Obrinta when the user logs in, or stops doing so.
class LoginItemRegistering
{
public:
    virtual ~LoginItemRegistering() = default;

    // The error's description when the change failed.
    virtual std::optional<QString> update(bool launchAtLogin) = 0;
};
