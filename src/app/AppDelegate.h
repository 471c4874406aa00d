#pragma once

#include <QObject>
#include <QStringList>

class GeneralSettings;
class LogindSleepWatcher;
class MenuBarCommands;
class MenuBarContent;
class SingleInstance;
class TrayIcon;
class WindowHosting;

// Brings the services up in their fixed order at launch and stops the monitors at the end; owns
// the tray, the windows, the wake watcher and the claim on being the session's only Obrinta.
class AppDelegate : public QObject
{
    Q_OBJECT
public:
    explicit AppDelegate(QStringList arguments, QObject* parent = nullptr);
    ~AppDelegate() override;

    // False when another Obrinta runs in this session; it was asked to show its settings.
    bool claimSingleInstance();
    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    bool isUITesting() const;
    void openSettingsWindow();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void subscribeToWake();
    void setUpShell();
    // Loads the windows module on first use; nullptr when it cannot be loaded.
    WindowHosting* windowHost();
    void showOrOpenSettingsWindow();
    void settingsWindowHidden();

    QStringList m_arguments;
    SingleInstance* m_singleInstance = nullptr;
    LogindSleepWatcher* m_sleepWatcher = nullptr;
    MenuBarContent* m_menuBarContent = nullptr;
    MenuBarCommands* m_menuBarCommands = nullptr;
    GeneralSettings* m_generalSettings = nullptr;
    WindowHosting* m_windowHost = nullptr;
    bool m_windowsUnavailable = false;
    TrayIcon* m_trayIcon = nullptr;
    bool m_noTrayHintLogged = false;
    bool m_quitting = false;
};
