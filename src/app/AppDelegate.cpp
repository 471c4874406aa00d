#include "AppDelegate.h"

#include "engine/AppController.h"
#include "engine/NotificationService.h"
#include "model/AppState.h"
#include "model/PersistenceManager.h"
#include "monitors/USBMonitor.h"
#include "monitors/WiFiMonitor.h"
#include "platform/Log.h"
#include "platform/LogindSleepWatcher.h"
#include "platform/MainQueue.h"
#include "platform/SingleInstance.h"
#include "platform/XdgAutostartLoginItem.h"
#include "ui/GeneralSettings.h"
#include "ui/MenuBarCommands.h"
#include "ui/MenuBarContent.h"
#include "ui/TrayIcon.h"
#include "ui/WindowHosting.h"
#include "ui/WindowsModule.h"

#include <QEvent>
#include <QGuiApplication>
#include <QTimer>

namespace {

bool hasDisplay()
{
    const QString platform = QGuiApplication::platformName();
    return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

void evaluateAllRules()
{
    AppController::shared().evaluateAllBindings();
    AppController::shared().evaluateAllWiFiBindings();
}

} // namespace

AppDelegate::AppDelegate(QStringList arguments, QObject* parent)
    : QObject(parent), m_arguments(std::move(arguments))
{
    qApp->installEventFilter(this);
}

AppDelegate::~AppDelegate()
{
    // The windows go first: their bindings must never see the objects behind them gone.
    delete m_trayIcon;
    delete m_windowHost;
}

bool AppDelegate::isUITesting() const
{
    return m_arguments.contains(QStringLiteral("-UITesting"));
}

bool AppDelegate::claimSingleInstance()
{
    m_singleInstance = new SingleInstance(this);
    if (m_singleInstance->claim() == SingleInstance::Claim::AlreadyRunning)
        return false;
    connect(m_singleInstance, &SingleInstance::showSettingsRequested, this,
            &AppDelegate::openSettingsWindow);
    return true;
}

void AppDelegate::applicationDidFinishLaunching()
{
    Log::info(Log::debugEnabled()
                  ? QStringLiteral("🚀 [Obrinta] Running in DEBUG mode - debug logging enabled")
                  : QStringLiteral("🚀 [Obrinta] Running in RELEASE mode - debug logging disabled"));

    if (!hasDisplay())
        Log::info(
            QStringLiteral("🖥️ [Obrinta] No display found, running headless (offscreen)"));

    AppState::shared();
    NotificationService::shared().requestAuthorization();
    connect(&NotificationService::shared(), &NotificationService::openSettingsRequested, this,
            &AppDelegate::openSettingsWindow);

    USBMonitor::shared().scanDevices();
    USBMonitor::shared().startMonitoring();

    WiFiMonitor::shared().startMonitoring();

    subscribeToWake();

    // Timed before the shell is built: loading a window must not push the first evaluation back.
    if (!isUITesting()) {
        MainQueue::after(1000, evaluateAllRules);
    } else {
        if (m_arguments.contains(QStringLiteral("-UITestingSeedRules")))
            MainQueue::async([] { AppState::shared().seedUITestRules(); });
        QTimer::singleShot(500, Qt::PreciseTimer, this, &AppDelegate::openSettingsWindow);
    }

    setUpShell();
}

void AppDelegate::subscribeToWake()
{
    m_sleepWatcher = new LogindSleepWatcher(this);
    connect(m_sleepWatcher, &LogindSleepWatcher::didWake, this,
            [this] { QTimer::singleShot(2000, Qt::PreciseTimer, this, evaluateAllRules); });
    m_sleepWatcher->start();
}

void AppDelegate::setUpShell()
{
    m_menuBarContent = new MenuBarContent(AppState::shared(), this);
    m_menuBarCommands = new MenuBarCommands([this] { openSettingsWindow(); }, isUITesting(), this);
    m_generalSettings = new GeneralSettings(PersistenceManager::shared(), AppState::shared(),
                                            XdgAutostartLoginItem::shared(), this);
    if (isUITesting()) {
        connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
                [this](Qt::ApplicationState state) {
                    if (state == Qt::ApplicationActive)
                        QTimer::singleShot(0, this, &AppDelegate::showOrOpenSettingsWindow);
                });
    }

    if (!hasDisplay())
        return;
    m_trayIcon = new TrayIcon(*m_menuBarContent, *m_menuBarCommands, this);
    connect(m_trayIcon, &TrayIcon::panelRequested, this, [this](const QRect& anchor) {
        if (WindowHosting* host = windowHost())
            host->showPanel(anchor);
    });
    m_trayIcon->show();
    if (!TrayIcon::isHostAvailable())
        QTimer::singleShot(0, this, &AppDelegate::openSettingsWindow);
}

WindowHosting* AppDelegate::windowHost()
{
    if (m_windowHost || m_windowsUnavailable)
        return m_windowHost;
    m_windowHost = WindowsModule::create({{QStringLiteral("appState"), &AppState::shared()},
                                          {QStringLiteral("menuBarContent"), m_menuBarContent},
                                          {QStringLiteral("menuBarCommands"), m_menuBarCommands},
                                          {QStringLiteral("generalSettings"), m_generalSettings}},
                                         this);
    if (!m_windowHost) {
        m_windowsUnavailable = true;
        return nullptr;
    }
    connect(m_windowHost, &WindowHosting::settingsWindowHidden, this,
            &AppDelegate::settingsWindowHidden);
    // Interface tests check that a reopened settings window is the very same window.
    if (isUITesting())
        m_windowHost->keepWindows();
    return m_windowHost;
}

void AppDelegate::openSettingsWindow()
{
    WindowHosting* host = windowHost();
    if (!host)
        return;
    host->hidePanel();
    host->showSettings();
}

void AppDelegate::showOrOpenSettingsWindow()
{
    WindowHosting* host = windowHost();
    if (host && !host->isSettingsWindowVisible())
        host->showSettings();
}

bool AppDelegate::eventFilter(QObject* watched, QEvent* event)
{
    // Quitting closes every window first; that close is no reason to explain how to quit.
    if (watched == qApp && event->type() == QEvent::Quit)
        m_quitting = true;
    return QObject::eventFilter(watched, event);
}

void AppDelegate::settingsWindowHidden()
{
    if (m_quitting || m_noTrayHintLogged || !hasDisplay() || TrayIcon::isHostAvailable())
        return;
    m_noTrayHintLogged = true;
    Log::info(QStringLiteral(
        "ℹ️ [Obrinta] Still running without a tray icon; stop it with SIGTERM or log out"));
}

void AppDelegate::applicationWillTerminate()
{
    USBMonitor::shared().stopMonitoring();
    WiFiMonitor::shared().stopMonitoring();
}
