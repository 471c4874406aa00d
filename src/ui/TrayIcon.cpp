#include "TrayIcon.h"

#include "MenuBarCommands.h"
#include "MenuBarContent.h"
#include "SymbolIcons.h"

#include <QApplication>
#include <QMenu>
#include <QPainter>
#include <QPalette>
#include <QSystemTrayIcon>

namespace {

const QColor kGreen(0x34, 0xC7, 0x59);
const QColor kOrange(0xFF, 0x95, 0x00);

QIcon symbol(const QString& name, const QColor& tint = QColor())
{
    return QIcon(SymbolIcons::pixmap(name, QSize(16, 16), tint,
                                     QApplication::palette().color(QPalette::WindowText)));
}

QIcon statusDot(const QColor& color)
{
    QPixmap canvas(16, 16);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QRectF(4, 4, 8, 8));
    return QIcon(canvas);
}

void addHeader(QMenu* menu, const QString& text, const QString& symbolName)
{
    menu->addSeparator();
    menu->addAction(symbol(symbolName), text)->setEnabled(false);
}

} // namespace

TrayIcon::TrayIcon(MenuBarContent& content, MenuBarCommands& commands, QObject* parent)
    : QObject(parent), m_content(content), m_commands(commands), m_menu(new QMenu),
      m_trayIcon(new QSystemTrayIcon(SymbolIcons::applicationIcon(), this))
{
    m_trayIcon->setToolTip(QStringLiteral("Obrinta"));
    m_trayIcon->setContextMenu(m_menu);
    connect(m_trayIcon, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger)
                    Q_EMIT panelRequested(m_trayIcon->geometry());
            });
    connect(&m_content, &MenuBarContent::changed, this, &TrayIcon::scheduleRebuild);
    rebuild();
}

TrayIcon::~TrayIcon()
{
    delete m_menu;
}

bool TrayIcon::isHostAvailable()
{
    return QSystemTrayIcon::isSystemTrayAvailable();
}

void TrayIcon::show()
{
    m_trayIcon->show();
}

void TrayIcon::scheduleRebuild()
{
    // One rebuild for the several changes that one state update makes.
    if (std::exchange(m_rebuildScheduled, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_rebuildScheduled = false;
            rebuild();
        },
        Qt::QueuedConnection);
}

void TrayIcon::rebuild()
{
    m_menu->clear();
    const bool monitoring = m_content.isMonitoring();
    m_menu
        ->addAction(statusDot(monitoring ? kGreen : kOrange),
                    monitoring ? QStringLiteral("Obrinta: USB monitoring on")
                               : QStringLiteral("Obrinta: USB monitoring off"))
        ->setEnabled(false);

    addHeader(m_menu, QStringLiteral("Connected Devices"), QStringLiteral("cable.connector"));
    const QVariantList devices = m_content.devices();
    if (devices.isEmpty())
        m_menu->addAction(QStringLiteral("No USB devices detected"))->setEnabled(false);
    for (const QVariant& row : devices) {
        const QVariantMap device = row.toMap();
        m_menu->addAction(symbol(QStringLiteral("cable.connector.horizontal"), kGreen),
                          device.value(QStringLiteral("displayName")).toString() +
                              QStringLiteral(" — ") +
                              device.value(QStringLiteral("detail")).toString());
    }
    if (m_content.moreDevices() > 0)
        m_menu->addAction(MenuBarContent::moreText(m_content.moreDevices()))->setEnabled(false);

    addHeader(m_menu, QStringLiteral("Active Rules"), QStringLiteral("link"));
    const QVariantList rules = m_content.rules();
    if (rules.isEmpty())
        m_menu->addAction(QStringLiteral("No rules configured"))->setEnabled(false);
    for (const QVariant& row : rules) {
        const QVariantMap rule = row.toMap();
        const bool connected = rule.value(QStringLiteral("isDeviceConnected")).toBool();
        m_menu->addAction(connected ? symbol(QStringLiteral("checkmark.circle.fill"), kGreen)
                                    : symbol(QStringLiteral("circle")),
                          rule.value(QStringLiteral("appName")).toString() + QStringLiteral(" — ") +
                              rule.value(QStringLiteral("deviceName")).toString());
    }
    if (m_content.moreRules() > 0)
        m_menu->addAction(MenuBarContent::moreText(m_content.moreRules()))->setEnabled(false);

    m_menu->addSeparator();
    m_menu->addAction(symbol(QStringLiteral("arrow.clockwise")), QStringLiteral("Refresh"),
                      &m_commands, &MenuBarCommands::refresh);
    m_menu->addAction(symbol(QStringLiteral("gear")), QStringLiteral("Settings"), &m_commands,
                      &MenuBarCommands::openSettings);
    m_menu->addAction(symbol(QStringLiteral("power")), QStringLiteral("Quit"), &m_commands,
                      &MenuBarCommands::quit);
}
