#pragma once

#include "RuleContext.h"

class ApplicationLaunching
{
public:
    virtual ~ApplicationLaunching() = default;
    virtual void launchApplication(const RuleContext& context) = 0;
    virtual void terminateApplication(const RuleContext& context, bool force) = 0;
};
