#pragma once

#include "WindowHosting.h"

#include <QPointer>
#include <QQuickWindow>
#include <QTimer>

class QQmlEngine;

// Makes the settings window and the panel from QML when they are first shown. The QML engine
// exists only while a window does: once both are hidden for `releaseDelay`, windows and engine
// are destroyed, so a tray-only Obrinta stays small. Until then a reopened window is the same
// window object.
class WindowHost : public WindowHosting
{
    Q_OBJECT
public:
    static constexpr int defaultReleaseDelay = 5000;

    // `contextObjects`: what the QML sees by name ("appState", "generalSettings", ...).
    explicit WindowHost(QHash<QString, QObject*> contextObjects, QObject* parent = nullptr);
    ~WindowHost() override;

    // Centred when it is made.
    void showSettings() override;
    void showPanel(const QRect& anchor) override;
    void hidePanel() override;
    bool isSettingsWindowVisible() const override;
    void keepWindows() override;

    QQuickWindow* settingsWindow() const { return m_settingsWindow; }
    QQuickWindow* panelWindow() const { return m_panelWindow; }
    bool hasEngine() const { return m_engine != nullptr; }
    void setReleaseDelay(int milliseconds) { m_releaseTimer.setInterval(milliseconds); }

private:
    QQmlEngine& engine();
    QQuickWindow* create(const QString& file);
    void windowVisibilityChanged();
    void release();

    QHash<QString, QObject*> m_contextObjects;
    QQmlEngine* m_engine = nullptr;
    QPointer<QQuickWindow> m_settingsWindow;
    QPointer<QQuickWindow> m_panelWindow;
    QTimer m_releaseTimer;
    bool m_keepWindows = false;
};
