#include "MenuBarCommands.h"

#include "engine/AppController.h"
#include "monitors/USBMonitor.h"

#include <QCoreApplication>
#include <QTimer>

MenuBarCommands::MenuBarCommands(std::function<void()> openSettings, bool hasSettingsCommand,
                                 QObject* parent)
    : QObject(parent), m_openSettings(std::move(openSettings)),
      m_hasSettingsCommand(hasSettingsCommand)
{
}

void MenuBarCommands::refresh()
{
    USBMonitor::shared().scanDevices();
    AppController::shared().evaluateAllBindings();
}

void MenuBarCommands::openSettings()
{
    m_openSettings();
}

void MenuBarCommands::quit()
{
    QCoreApplication::quit();
}

void MenuBarCommands::showSettingsWindow()
{
    if (m_hasSettingsCommand)
        QTimer::singleShot(0, this, [this] { m_openSettings(); });
}
