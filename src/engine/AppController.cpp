#include "AppController.h"

#include "ApplicationManager.h"
#include "model/AppState.h"
#include "monitors/USBMonitor.h"
#include "monitors/WiFiMonitor.h"
#include "platform/Log.h"
#include "platform/MainQueue.h"
#include "platform/RunningApplications.h"
#include "shortcuts/ShortcutsManager.h"

using Log::boolText;
using Log::hexId;

AppController::AppController(Collaborators collaborators) : m_(std::move(collaborators)) {}

AppController& AppController::shared()
{
    static AppController* controller = [] {
        Collaborators collaborators;
        collaborators.usbMonitor = &USBMonitor::shared();
        collaborators.wifiMonitor = &WiFiMonitor::shared();
        collaborators.appStateProvider = [] {
            const AppState& state = AppState::shared();
            return std::make_pair(state.bindings(), state.isMonitoring());
        };
        collaborators.wifiStateProvider = [] {
            const AppState& state = AppState::shared();
            return std::make_pair(state.wifiBindings(), state.isWiFiMonitoring());
        };
        collaborators.runningApplications = &ApplicationManager::sharedRunningApplications();
        collaborators.applications = &ApplicationManager::shared();
        collaborators.shortcuts = &ShortcutsManager::shared();
        return new AppController(std::move(collaborators));
    }();
    return *controller;
}

RuleContext AppController::makeRuleContext(const DeviceAppBinding& rule)
{
    return RuleContext{
        rule.appName,
        rule.appPath,
        rule.appBundleIdentifier,
        QStringLiteral("because ") + rule.deviceName + QStringLiteral(" is connected."),
        QStringLiteral("because ") + rule.deviceName + QStringLiteral(" is no longer connected."),
        rule.forceQuitAllowed,
        rule.forceQuitTimeout,
    };
}

RuleContext AppController::makeRuleContext(const WiFiAppBinding& rule)
{
    return RuleContext{
        rule.appName,
        rule.appPath,
        rule.appBundleIdentifier,
        QStringLiteral("because you connected to '") + rule.ssid + QStringLiteral("'."),
        QStringLiteral("because you left '") + rule.ssid + QStringLiteral("'."),
        rule.forceQuitAllowed,
        rule.forceQuitTimeout,
    };
}

void AppController::evaluateAllBindings()
{
    Log::info(QStringLiteral("🔍 [AppController] Evaluating all bindings..."));
    const auto [rules, monitoring] = m_.appStateProvider();
    Log::info(QStringLiteral("   Monitoring enabled: ") + boolText(monitoring));
    if (!monitoring) {
        Log::info(QStringLiteral("   ⏸️ Monitoring disabled, skipping evaluation"));
        return;
    }

    QList<DeviceAppBinding> active;
    for (const DeviceAppBinding& rule : rules) {
        if (rule.isEnabled)
            active.append(rule);
    }

    const QList<USBDevice> devices =
        m_.usbMonitor ? m_.usbMonitor->connectedDevices() : QList<USBDevice>{};
    Log::info(QStringLiteral("   📱 Connected devices: %1").arg(devices.size()));
    for (const USBDevice& device : devices) {
        Log::info(QStringLiteral("      - %1 (VID: %2, PID: %3)")
                      .arg(device.displayName(), hexId(device.vendorID), hexId(device.productID)));
    }
    Log::info(QStringLiteral("   📋 Active bindings: %1").arg(active.size()));

    if (m_.runningApplications && !active.isEmpty())
        m_.runningApplications->refresh();

    for (const DeviceAppBinding& rule : active) {
        Log::info(QStringLiteral("   🔗 Evaluating: ") + rule.deviceName + QStringLiteral(" → ") +
                  rule.appName);
        Log::info(QStringLiteral("      Device VID:PID = %1:%2")
                      .arg(hexId(rule.deviceVendorID), hexId(rule.deviceProductID)));
        const bool connected =
            std::any_of(devices.cbegin(), devices.cend(), [&rule](const USBDevice& device) {
                return device.vendorID == rule.deviceVendorID &&
                       device.productID == rule.deviceProductID;
            });
        Log::info(QStringLiteral("      Device connected: ") + boolText(connected));
        Log::info(QStringLiteral("      Launch on connect: ") + boolText(rule.launchOnConnect));
        Log::info(QStringLiteral("      Kill on disconnect: ") + boolText(rule.killOnDisconnect));
        evaluateBinding(rule, connected);
    }
    Log::info(QStringLiteral("✅ [AppController] Evaluation complete\n"));
}

void AppController::evaluateAllWiFiBindings()
{
    Log::info(QStringLiteral("📶 [AppController] Evaluating all WiFi bindings..."));
    const auto [rules, monitoring] = m_.wifiStateProvider();
    Log::info(QStringLiteral("   WiFi monitoring enabled: ") + boolText(monitoring));
    if (!monitoring) {
        Log::info(QStringLiteral("   ⏸️ WiFi monitoring disabled, skipping evaluation"));
        return;
    }

    QList<WiFiAppBinding> active;
    for (const WiFiAppBinding& rule : rules) {
        if (rule.isEnabled)
            active.append(rule);
    }

    const std::optional<QString> ssid =
        m_.wifiMonitor ? m_.wifiMonitor->currentSSID() : std::nullopt;
    Log::info(QStringLiteral("   📶 Current SSID: '") + ssid.value_or(QStringLiteral("none")) +
              QStringLiteral("'"));
    Log::info(QStringLiteral("   📋 Active WiFi bindings: %1").arg(active.size()));

    if (m_.runningApplications && !active.isEmpty())
        m_.runningApplications->refresh();

    for (const WiFiAppBinding& rule : active) {
        Log::info(QStringLiteral("   🔗 Evaluating: '") + rule.ssid + QStringLiteral("' → ") +
                  rule.appName);
        // Canonical equivalence: names typed in another Unicode normal form still match.
        const bool connected = ssid && ssid->normalized(QString::NormalizationForm_C) ==
                                           rule.ssid.normalized(QString::NormalizationForm_C);
        Log::info(QStringLiteral("      Network connected: ") + boolText(connected));
        Log::info(QStringLiteral("      Launch on connect: ") + boolText(rule.launchOnConnect));
        Log::info(QStringLiteral("      Kill on disconnect: ") + boolText(rule.killOnDisconnect));
        evaluateWiFiBinding(rule, connected);
    }
    Log::info(QStringLiteral("✅ [AppController] WiFi evaluation complete\n"));
}

bool AppController::logRunning(const QString& appBundleIdentifier)
{
    if (appBundleIdentifier.isEmpty()) {
        Log::info(QStringLiteral("      No app configured (shortcuts only)"));
        return false;
    }
    const bool running =
        m_.runningApplications && !m_.runningApplications->instances(appBundleIdentifier).isEmpty();
    Log::info(QStringLiteral("      App running: ") + boolText(running));
    return running;
}

void AppController::evaluateBinding(const DeviceAppBinding& rule, bool connected)
{
    const bool running = logRunning(rule.appBundleIdentifier);
    Log::info(connected ? QStringLiteral("      ✅ Device CONNECTED")
                        : QStringLiteral("      ❌ Device DISCONNECTED"));
    if (!rule.appBundleIdentifier.isEmpty()) {
        decide(makeRuleContext(rule), rule.launchOnConnect, rule.killOnDisconnect, connected,
               running);
    }
    handOverShortcuts(rule.shortcuts, connected, rule.deviceName);
}

void AppController::evaluateWiFiBinding(const WiFiAppBinding& rule, bool connected)
{
    const bool running = logRunning(rule.appBundleIdentifier);
    Log::info(connected ? QStringLiteral("      ✅ Network CONNECTED")
                        : QStringLiteral("      ❌ Network DISCONNECTED"));
    if (!rule.appBundleIdentifier.isEmpty()) {
        decide(makeRuleContext(rule), rule.launchOnConnect, rule.killOnDisconnect, connected,
               running);
    }
    handOverShortcuts(rule.shortcuts, connected, QStringLiteral("WiFi '") + rule.ssid + '\'');
}

void AppController::decide(const RuleContext& context, bool launchOnConnect, bool killOnDisconnect,
                           bool connected, bool running)
{
    if (connected) {
        if (!launchOnConnect) {
            Log::info(QStringLiteral("      ⏭️ Action: SKIP (launch on connect disabled)"));
        } else if (running) {
            Log::info(QStringLiteral("      ⏭️ Action: SKIP (already running)"));
        } else {
            Log::info(QStringLiteral("      🚀 Action: LAUNCH ") + context.appName);
            launchApplication(context);
        }
        return;
    }
    if (!killOnDisconnect) {
        Log::info(QStringLiteral("      ⏭️ Action: SKIP (kill on disconnect disabled)"));
    } else if (!running) {
        Log::info(QStringLiteral("      ⏭️ Action: SKIP (already stopped)"));
    } else {
        Log::info(QStringLiteral("      💀 Action: TERMINATE ") + context.appName);
        terminateApplication(context, false);
    }
}

void AppController::handOverShortcuts(const ShortcutConfiguration& shortcuts, bool connected,
                                      const QString& name)
{
    if (shortcuts.isEmpty() || !m_.shortcuts)
        return;
    ShortcutsManaging* runner = m_.shortcuts;
    MainQueue::async([runner, shortcuts, connected, name] {
        runner->runConfiguredShortcuts(shortcuts, connected, name);
    });
}

void AppController::launchApplication(const RuleContext& context)
{
    if (m_.applications)
        m_.applications->launchApplication(context);
}

void AppController::terminateApplication(const RuleContext& context, bool force)
{
    if (m_.applications)
        m_.applications->terminateApplication(context, force);
}
