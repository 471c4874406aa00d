#include "WindowHost.h"

#include "RulesQml.h"
#include "SymbolImageProvider.h"
#include "platform/Log.h"
#include "platform/ProcessMemory.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QScreen>

namespace {

void chooseRendering()
{
    static bool chosen = false;
    if (std::exchange(chosen, true))
        return;
    // Two small windows of text: the software renderer keeps the GPU driver out of the process.
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    if (qEnvironmentVariableIsEmpty("QT_QUICK_CONTROLS_STYLE"))
        QQuickStyle::setStyle(QStringLiteral("Fusion"));
}

QPoint panelPosition(const QRect& anchor, QSize size)
{
    const QRect target = anchor.isEmpty() ? QRect(QCursor::pos(), QSize(1, 1)) : anchor;
    QScreen* screen = QGuiApplication::screenAt(target.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->availableGeometry() : QRect(QPoint(), size);
    const bool below = target.center().y() < area.center().y();
    QPoint position(target.center().x() - size.width() / 2,
                    below ? target.bottom() + 4 : target.top() - size.height() - 4);
    position.setX(
        qBound(area.left(), position.x(), qMax(area.left(), area.right() - size.width())));
    position.setY(
        qBound(area.top(), position.y(), qMax(area.top(), area.bottom() - size.height())));
    return position;
}

void bringForward(QQuickWindow* window)
{
    window->show();
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        window->raise();
    window->requestActivate();
}

} // namespace

WindowHost::WindowHost(QHash<QString, QObject*> contextObjects, QObject* parent)
    : WindowHosting(parent), m_contextObjects(std::move(contextObjects))
{
    m_releaseTimer.setSingleShot(true);
    m_releaseTimer.setInterval(defaultReleaseDelay);
    connect(&m_releaseTimer, &QTimer::timeout, this, &WindowHost::release);
}

WindowHost::~WindowHost()
{
    release();
}

QQmlEngine& WindowHost::engine()
{
    if (!m_engine) {
        chooseRendering();
        m_engine = new QQmlEngine(this);
        m_engine->addImageProvider(
            QStringLiteral("symbol"),
            new SymbolImageProvider(QGuiApplication::palette().color(QPalette::WindowText)));
        RulesQml::install(*m_engine);
        for (auto it = m_contextObjects.cbegin(); it != m_contextObjects.cend(); ++it)
            m_engine->rootContext()->setContextProperty(it.key(), it.value());
    }
    return *m_engine;
}

QQuickWindow* WindowHost::create(const QString& file)
{
    QQmlComponent component(&engine(), QUrl(QStringLiteral("qrc:/obrinta/qml/") + file));
    QObject* object = component.create();
    auto* window = qobject_cast<QQuickWindow*>(object);
    if (!window) {
        Log::info(QStringLiteral("⚠️ [Obrinta] Cannot show %1: %2")
                      .arg(file, component.errorString()));
        delete object;
        return nullptr;
    }
    connect(window, &QWindow::visibleChanged, this, &WindowHost::windowVisibilityChanged);
    return window;
}

void WindowHost::showSettings()
{
    m_releaseTimer.stop();
    if (!m_settingsWindow) {
        m_settingsWindow = create(QStringLiteral("SettingsWindow.qml"));
        if (!m_settingsWindow)
            return;
        if (QScreen* screen = m_settingsWindow->screen()) {
            const QRect frame(QPoint(), m_settingsWindow->size());
            m_settingsWindow->setPosition(screen->availableGeometry().center() - frame.center());
        }
        connect(m_settingsWindow, &QWindow::visibleChanged, this, [this](bool visible) {
            if (!visible)
                Q_EMIT settingsWindowHidden();
        });
    }
    bringForward(m_settingsWindow);
}

void WindowHost::showPanel(const QRect& anchor)
{
    m_releaseTimer.stop();
    if (!m_panelWindow) {
        m_panelWindow = create(QStringLiteral("PanelWindow.qml"));
        if (!m_panelWindow)
            return;
    }
    m_panelWindow->setPosition(panelPosition(anchor, m_panelWindow->size()));
    bringForward(m_panelWindow);
}

void WindowHost::hidePanel()
{
    if (m_panelWindow)
        m_panelWindow->hide();
}

bool WindowHost::isSettingsWindowVisible() const
{
    return m_settingsWindow && m_settingsWindow->isVisible();
}

void WindowHost::keepWindows()
{
    m_keepWindows = true;
    m_releaseTimer.stop();
}

void WindowHost::windowVisibilityChanged()
{
    const bool anyVisible = (m_settingsWindow && m_settingsWindow->isVisible()) ||
                            (m_panelWindow && m_panelWindow->isVisible());
    if (anyVisible)
        m_releaseTimer.stop();
    else if (m_engine && !m_keepWindows)
        m_releaseTimer.start();
}

void WindowHost::release()
{
    m_releaseTimer.stop();
    if (!m_engine)
        return;
    for (QQuickWindow* window : {m_panelWindow.data(), m_settingsWindow.data()}) {
        if (window)
            window->disconnect(this);
    }
    delete m_panelWindow;
    delete m_settingsWindow;
    delete m_engine;
    m_engine = nullptr;
    // The heap and the pages of this module and of the libraries only the windows use go back to
    // the system until a window opens again; the module itself stays loaded.
    ProcessMemory::trimHeap();
    ProcessMemory::pageOutMappedFiles(
        {QByteArrayLiteral("libQt6Qml"), QByteArrayLiteral("libQt6Quick"),
         QByteArrayLiteral("libQt6Network"), QByteArrayLiteral("libQt6OpenGL"),
         QByteArrayLiteral("/qml/"), QByteArrayLiteral("obrinta-windows")});
}
