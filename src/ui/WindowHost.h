#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QRect>
#include <QTimer>

class QQmlEngine;

// Makes the settings window and the panel from QML when they are first shown. The QML engine
// exists only while a window does: once both are hidden for `releaseDelay`, windows and engine
// are destroyed, so a tray-only Obrinta stays small. Until then a reopened window is the same
// window object.
class WindowHost : public QObject
{
    Q_OBJECT
public:
    static constexpr int defaultReleaseDelay = 5000;

    // `contextObjects`: what the QML sees by name ("appState", "generalSettings", ...).
    explicit WindowHost(QHash<QString, QObject*> contextObjects, QObject* parent = nullptr);
    ~WindowHost() override;

    // Shows the settings window, or brings it forward; centred when it is made.
    void showSettings();
    // Shows the panel beside `anchor` (the tray icon's screen rectangle; empty: the pointer).
    void showPanel(const QRect& anchor);
    void hidePanel();

    QQuickWindow* settingsWindow() const { return m_settingsWindow; }
    QQuickWindow* panelWindow() const { return m_panelWindow; }
    bool hasEngine() const { return m_engine != nullptr; }
    void setReleaseDelay(int milliseconds) { m_releaseTimer.setInterval(milliseconds); }

Q_SIGNALS:
    void settingsWindowHidden();

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
};
