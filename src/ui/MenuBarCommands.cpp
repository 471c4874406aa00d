#include "MenuBarCommands.h"

#include "engine/AppController.h"
#include "monitors/USBMonitor.h"

#include <QCoreApplication>

MenuBarCommands::MenuBarCommands(std::function<void()> openSettings, QObject* parent)
    : QObject(parent), m_openSettings(std::move(openSettings))
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
