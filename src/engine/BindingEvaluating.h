#pragma once

class BindingEvaluating
{
public:
    virtual ~BindingEvaluating() = default;
    virtual void evaluateAllBindings() = 0;
    virtual void evaluateAllWiFiBindings() = 0;
};
