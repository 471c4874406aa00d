#pragma once

#include "ApplicationLaunching.h"
#include "BindingEvaluating.h"
#include "RuleContext.h"
#include "model/DeviceAppBinding.h"
#include "model/WiFiAppBinding.h"

#include <QList>

#include <functional>
#include <utility>

class USBMonitoring;
class WiFiMonitoring;
class RunningApplications;
class ShortcutsManaging;

// The rule engine: decides LAUNCH, TERMINATE or SKIP for every enabled rule, level-based, and
// hands each rule's shortcuts to the runner.
class AppController : public BindingEvaluating, public ApplicationLaunching
{
public:
    using StateProvider = std::function<std::pair<QList<DeviceAppBinding>, bool>()>;
    using WiFiStateProvider = std::function<std::pair<QList<WiFiAppBinding>, bool>()>;

    struct Collaborators
    {
        USBMonitoring* usbMonitor = nullptr;
        WiFiMonitoring* wifiMonitor = nullptr;
        StateProvider appStateProvider;
        WiFiStateProvider wifiStateProvider;
        RunningApplications* runningApplications = nullptr;
        // Carries launches and quits out.
        ApplicationLaunching* applications = nullptr;
        ShortcutsManaging* shortcuts = nullptr;
    };

    explicit AppController(Collaborators collaborators);
    static AppController& shared();

    void evaluateAllBindings() override;
    void evaluateAllWiFiBindings() override;

    void launchApplication(const RuleContext& context) override;
    void terminateApplication(const RuleContext& context, bool force) override;

    static RuleContext makeRuleContext(const DeviceAppBinding& rule);
    static RuleContext makeRuleContext(const WiFiAppBinding& rule);

private:
    void evaluateBinding(const DeviceAppBinding& rule, bool connected);
    void evaluateWiFiBinding(const WiFiAppBinding& rule, bool connected);
    // The decision table shared by both rule kinds, after the connected/disconnected line.
    void decide(const RuleContext& context, bool launchOnConnect, bool killOnDisconnect,
                bool connected, bool running);
    bool logRunning(const QString& appBundleIdentifier);
    void handOverShortcuts(const ShortcutConfiguration& shortcuts, bool connected,
                           const QString& name);

    Collaborators m_;
};
