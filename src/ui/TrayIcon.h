#pragma once

#include <QObject>
#include <QRect>

class MenuBarCommands;
class MenuBarContent;
class QMenu;
class QSystemTrayIcon;

// The tray entry. Many tray hosts only show a menu, so the menu carries the panel's content and
// commands; where the host reports a click, the click asks for the panel.
class TrayIcon : public QObject
{
    Q_OBJECT
public:
    TrayIcon(MenuBarContent& content, MenuBarCommands& commands, QObject* parent = nullptr);
    ~TrayIcon() override;

    static bool isHostAvailable();
    void show();
    QMenu* menu() const { return m_menu; }

Q_SIGNALS:
    // `geometry`: the icon's rectangle on the screen, empty where the host does not tell.
    void panelRequested(const QRect& geometry);

private:
    void scheduleRebuild();
    void rebuild();

    MenuBarContent& m_content;
    MenuBarCommands& m_commands;
    QMenu* m_menu = nullptr;
    QSystemTrayIcon* m_trayIcon = nullptr;
    bool m_rebuildScheduled = false;
};
