#include "NetworkManagerWiFi.h"

#include "DBusProperties.h"
#include "Log.h"
#include "SsidText.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>

namespace {

const QString kService = QStringLiteral("org.freedesktop.NetworkManager");
const QString kManagerPath = QStringLiteral("/org/freedesktop/NetworkManager");
const QString kManagerInterface = QStringLiteral("org.freedesktop.NetworkManager");
const QString kDeviceInterface = QStringLiteral("org.freedesktop.NetworkManager.Device");
const QString kWirelessInterface = QStringLiteral("org.freedesktop.NetworkManager.Device.Wireless");
const QString kAccessPointInterface = QStringLiteral("org.freedesktop.NetworkManager.AccessPoint");
const QString kPropertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
constexpr uint kDeviceTypeWiFi = 2;

} // namespace

NetworkManagerWiFi::NetworkManagerWiFi(const QDBusConnection& bus, QObject* parent)
    : WiFiService(parent), m_bus(bus)
{
    m_bus.connect(kService, kManagerPath, kManagerInterface, QStringLiteral("DeviceAdded"), this,
                  SLOT(onDeviceAdded()));
    m_bus.connect(kService, kManagerPath, kManagerInterface, QStringLiteral("DeviceRemoved"), this,
                  SLOT(onDeviceRemoved(QDBusMessage)));
}

QString NetworkManagerWiFi::serviceName() const
{
    return kService;
}

void NetworkManagerWiFi::resolve()
{
    forget();
    QDBusMessage call = QDBusMessage::createMethodCall(kService, kManagerPath, kManagerInterface,
                                                       QStringLiteral("GetDevices"));
    const QDBusMessage reply = m_bus.call(call, QDBus::Block, DBusProperties::kTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        if (!DBusProperties::isStillStarting(reply))
            report(QStringLiteral("⚠️ [WiFiMonitor] Could not list NetworkManager devices: ") +
                   reply.errorMessage());
        return;
    }
    const auto devices = qdbus_cast<QList<QDBusObjectPath>>(reply.arguments().constFirst());
    for (const QDBusObjectPath& device : devices) {
        const auto type = read(device.path(), kDeviceInterface, QStringLiteral("DeviceType"));
        if (!type || type->toUInt() != kDeviceTypeWiFi)
            continue;
        const auto name = read(device.path(), kDeviceInterface, QStringLiteral("Interface"));
        m_devicePath = device.path();
        m_interfaceName = name ? name->toString() : QString();
        watchDevice(true);
        return;
    }
}

void NetworkManagerWiFi::forget()
{
    watchDevice(false);
    m_devicePath.clear();
    m_interfaceName.reset();
}

std::optional<QString> NetworkManagerWiFi::ssid()
{
    const auto accessPoint = activeAccessPoint();
    if (!accessPoint)
        return std::nullopt;
    if (accessPoint->isEmpty()) {
        m_lastError.clear();
        return std::nullopt;
    }
    const auto ssid = read(*accessPoint, kAccessPointInterface, QStringLiteral("Ssid"));
    if (!ssid)
        return std::nullopt;
    m_lastError.clear();
    return SsidText::fromBytes(DBusProperties::bytes(*ssid));
}

std::optional<QString> NetworkManagerWiFi::bssid()
{
    const auto accessPoint = activeAccessPoint();
    if (!accessPoint || accessPoint->isEmpty())
        return std::nullopt;
    const auto address = read(*accessPoint, kAccessPointInterface, QStringLiteral("HwAddress"));
    if (!address || address->toString().isEmpty())
        return std::nullopt;
    return address->toString();
}

std::optional<QString> NetworkManagerWiFi::activeAccessPoint()
{
    if (m_devicePath.isEmpty())
        return QString();
    const auto value = read(m_devicePath, kWirelessInterface, QStringLiteral("ActiveAccessPoint"));
    if (!value)
        return std::nullopt;
    const QString path = DBusProperties::objectPath(*value);
    return path == QLatin1String("/") ? QString() : path;
}

std::optional<QVariant> NetworkManagerWiFi::read(const QString& path, const QString& interface,
                                                 const QString& name)
{
    QString error;
    auto value = DBusProperties::get(m_bus, kService, path, interface, name, error);
    if (!value)
        report(QStringLiteral("⚠️ [WiFiMonitor] Could not read %1 of %2: %3")
                   .arg(name, path, error));
    return value;
}

void NetworkManagerWiFi::report(const QString& line)
{
    // One line per failure, not one per poll while it lasts.
    if (line != m_lastError)
        debugLog(line);
    m_lastError = line;
}

void NetworkManagerWiFi::watchDevice(bool on)
{
    if (m_devicePath.isEmpty())
        return;
    const QString propertiesChanged = QStringLiteral("PropertiesChanged");
    const QString stateChanged = QStringLiteral("StateChanged");
    if (on) {
        m_bus.connect(kService, m_devicePath, kPropertiesInterface, propertiesChanged, this,
                      SLOT(onDevicePropertiesChanged(QDBusMessage)));
        m_bus.connect(kService, m_devicePath, kDeviceInterface, stateChanged, this,
                      SLOT(onDeviceStateChanged()));
    } else {
        m_bus.disconnect(kService, m_devicePath, kPropertiesInterface, propertiesChanged, this,
                         SLOT(onDevicePropertiesChanged(QDBusMessage)));
        m_bus.disconnect(kService, m_devicePath, kDeviceInterface, stateChanged, this,
                         SLOT(onDeviceStateChanged()));
    }
}

void NetworkManagerWiFi::resolveAndAnnounce()
{
    const QString before = m_devicePath;
    const std::optional<QString> beforeName = m_interfaceName;
    resolve();
    if (m_devicePath != before || m_interfaceName != beforeName)
        Q_EMIT interfaceDidChange();
}

void NetworkManagerWiFi::onDeviceAdded()
{
    if (m_devicePath.isEmpty())
        resolveAndAnnounce();
}

void NetworkManagerWiFi::onDeviceRemoved(const QDBusMessage& message)
{
    const QVariant removed =
        message.arguments().isEmpty() ? QVariant() : message.arguments().constFirst();
    if (DBusProperties::objectPath(removed) == m_devicePath)
        resolveAndAnnounce();
}

void NetworkManagerWiFi::onDevicePropertiesChanged(const QDBusMessage& message)
{
    if (DBusProperties::changedNames(message.arguments())
            .contains(QLatin1String("ActiveAccessPoint")))
        Q_EMIT ssidDidChange();
}

void NetworkManagerWiFi::onDeviceStateChanged()
{
    Q_EMIT linkDidChange();
}
