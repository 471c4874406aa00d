#pragma once

#include <QObject>

#include <functional>

// The three commands of the tray menu and the panel.
class MenuBarCommands : public QObject
{
    Q_OBJECT
public:
    explicit MenuBarCommands(std::function<void()> openSettings, QObject* parent = nullptr);

    // Rescans the USB devices, then evaluates the USB rules.
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void openSettings();
    // Ends Obrinta through the normal shutdown.
    Q_INVOKABLE void quit();

private:
    std::function<void()> m_openSettings;
};
