#include "AppDelegate.h"

#include "engine/AppController.h"
#include "engine/NotificationService.h"
#include "model/AppState.h"
#include "monitors/USBMonitor.h"
#include "monitors/WiFiMonitor.h"
#include "platform/Log.h"
#include "platform/MainQueue.h"

#include <QGuiApplication>

AppDelegate::AppDelegate(QStringList arguments, QObject* parent)
    : QObject(parent), m_arguments(std::move(arguments))
{
}

bool AppDelegate::isUITesting() const
{
    return m_arguments.contains(QStringLiteral("-UITesting"));
}

void AppDelegate::applicationDidFinishLaunching()
{
    Log::info(Log::debugEnabled()
                  ? QStringLiteral("🚀 [Obrinta] Running in DEBUG mode - debug logging enabled")
                  : QStringLiteral("🚀 [Obrinta] Running in RELEASE mode - debug logging disabled"));

    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        Log::info(
            QStringLiteral("🖥️ [Obrinta] No display found, running headless (offscreen)"));

    AppState::shared();
    NotificationService::shared().requestAuthorization();

    USBMonitor::shared().scanDevices();
    USBMonitor::shared().startMonitoring();

    WiFiMonitor::shared().startMonitoring();

    if (!isUITesting()) {
        MainQueue::after(1000, [] {
            AppController::shared().evaluateAllBindings();
            AppController::shared().evaluateAllWiFiBindings();
        });
    } else if (m_arguments.contains(QStringLiteral("-UITestingSeedRules"))) {
        MainQueue::async([] { AppState::shared().seedUITestRules(); });
    }
}

void AppDelegate::applicationWillTerminate()
{
    USBMonitor::shared().stopMonitoring();
    WiFiMonitor::shared().stopMonitoring();
}
