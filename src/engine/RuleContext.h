#pragma once

#include <QString>

// One firing of a rule: what to launch or quit, and why.
struct RuleContext
{
    QString appName;
    QString appPath;
    QString appBundleIdentifier;
    QString startReason;
    QString stopReason;
    bool forceQuitAllowed = false;
    double forceQuitTimeout = 1.0;
};
