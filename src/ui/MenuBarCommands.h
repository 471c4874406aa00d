#pragma once

#include <QObject>

#include <functional>

// The three commands of the tray menu and the panel, and the interface tests' settings command.
class MenuBarCommands : public QObject
{
    Q_OBJECT
    // Only interface tests get the application-wide "Settings..." command (Ctrl+,).
    Q_PROPERTY(bool hasSettingsCommand READ hasSettingsCommand CONSTANT)
public:
    MenuBarCommands(std::function<void()> openSettings, bool hasSettingsCommand,
                    QObject* parent = nullptr);

    bool hasSettingsCommand() const { return m_hasSettingsCommand; }

    // Rescans the USB devices, then evaluates the USB rules.
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void openSettings();
    // Ends Obrinta through the normal shutdown.
    Q_INVOKABLE void quit();
    // The "Settings..." command: opens the settings window in interface tests, nothing otherwise.
    Q_INVOKABLE void showSettingsWindow();

private:
    std::function<void()> m_openSettings;
    bool m_hasSettingsCommand;
};
