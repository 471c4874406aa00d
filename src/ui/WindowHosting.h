#pragma once

#include <QHash>
#include <QObject>
#include <QRect>

// The settings window and the panel as the program sees them. They live in the windows module
// (QML and Qt Quick), which the program loads only when a window is first shown.
class WindowHosting : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    // Shows the settings window, or brings it forward.
    virtual void showSettings() = 0;
    // Shows the panel beside `anchor` (the tray icon's screen rectangle; empty: the pointer).
    virtual void showPanel(const QRect& anchor) = 0;
    virtual void hidePanel() = 0;
    virtual bool isSettingsWindowVisible() const = 0;
    // Hidden windows are kept instead of released, so that every opening shows the same window.
    virtual void keepWindows() = 0;

Q_SIGNALS:
    void settingsWindowHidden();
};

// The module's one exported function, found by the name "obrinta_create_window_hosting".
// `contextObjects`: what the windows see by name ("appState", "generalSettings", ...).
using CreateWindowHosting = WindowHosting* (*)(const QHash<QString, QObject*>& contextObjects,
                                               QObject* parent);
