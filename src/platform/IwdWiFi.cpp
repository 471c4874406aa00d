#include "IwdWiFi.h"

#include "DBusProperties.h"
#include "Log.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>

namespace {

const QString kService = QStringLiteral("net.connman.iwd");
const QString kObjectManagerInterface = QStringLiteral("org.freedesktop.DBus.ObjectManager");
const QString kPropertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kStationInterface = QStringLiteral("net.connman.iwd.Station");
const QString kDeviceInterface = QStringLiteral("net.connman.iwd.Device");
const QString kNetworkInterface = QStringLiteral("net.connman.iwd.Network");

using Interfaces = QMap<QString, QVariantMap>;

} // namespace

IwdWiFi::IwdWiFi(const QDBusConnection& bus, QObject* parent) : WiFiService(parent), m_bus(bus)
{
    for (const QString& name :
         {QStringLiteral("InterfacesAdded"), QStringLiteral("InterfacesRemoved")}) {
        m_bus.connect(kService, QStringLiteral("/"), kObjectManagerInterface, name, this,
                      SLOT(onInterfacesChanged(QDBusMessage)));
    }
}

QString IwdWiFi::serviceName() const
{
    return kService;
}

void IwdWiFi::resolve()
{
    forget();
    QDBusMessage call =
        QDBusMessage::createMethodCall(kService, QStringLiteral("/"), kObjectManagerInterface,
                                       QStringLiteral("GetManagedObjects"));
    const QDBusMessage reply = m_bus.call(call, QDBus::Block, DBusProperties::kTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        if (!DBusProperties::isStillStarting(reply))
            report(QStringLiteral("⚠️ [WiFiMonitor] Could not list iwd objects: ") +
                   reply.errorMessage());
        return;
    }
    const auto objects = reply.arguments().constFirst().value<QDBusArgument>();
    objects.beginMap();
    while (!objects.atEnd()) {
        QDBusObjectPath path;
        Interfaces interfaces;
        objects.beginMapEntry();
        objects >> path >> interfaces;
        objects.endMapEntry();
        if (m_stationPath.isEmpty() && interfaces.contains(kStationInterface)) {
            m_stationPath = path.path();
            m_interfaceName = DBusProperties::unwrap(
                                  interfaces.value(kDeviceInterface).value(QStringLiteral("Name")))
                                  .toString();
        }
    }
    objects.endMap();
    watchStation(true);
}

void IwdWiFi::forget()
{
    watchStation(false);
    m_stationPath.clear();
    m_interfaceName.reset();
}

std::optional<QString> IwdWiFi::ssid()
{
    if (m_stationPath.isEmpty())
        return std::nullopt;
    QString error;
    const auto station =
        DBusProperties::getAll(m_bus, kService, m_stationPath, kStationInterface, error);
    if (!station) {
        report(QStringLiteral("⚠️ [WiFiMonitor] Could not read the iwd station %1: %2")
                   .arg(m_stationPath, error));
        return std::nullopt;
    }
    const QString state = station->value(QStringLiteral("State")).toString();
    // Roaming moves between access points of the same network.
    if (state != QLatin1String("connected") && state != QLatin1String("roaming"))
        return std::nullopt;
    const QString network =
        DBusProperties::objectPath(station->value(QStringLiteral("ConnectedNetwork")));
    if (network.isEmpty() || network == QLatin1String("/"))
        return std::nullopt;
    const auto name = DBusProperties::get(m_bus, kService, network, kNetworkInterface,
                                          QStringLiteral("Name"), error);
    if (!name) {
        report(QStringLiteral("⚠️ [WiFiMonitor] Could not read Name of %1: %2")
                   .arg(network, error));
        return std::nullopt;
    }
    m_lastError.clear();
    return name->toString();
}

void IwdWiFi::report(const QString& line)
{
    // One line per failure, not one per poll while it lasts.
    if (line != m_lastError)
        debugLog(line);
    m_lastError = line;
}

void IwdWiFi::watchStation(bool on)
{
    if (m_stationPath.isEmpty())
        return;
    const QString name = QStringLiteral("PropertiesChanged");
    if (on) {
        m_bus.connect(kService, m_stationPath, kPropertiesInterface, name, this,
                      SLOT(onStationPropertiesChanged(QDBusMessage)));
    } else {
        m_bus.disconnect(kService, m_stationPath, kPropertiesInterface, name, this,
                         SLOT(onStationPropertiesChanged(QDBusMessage)));
    }
}

void IwdWiFi::onInterfacesChanged(const QDBusMessage& message)
{
    // Scans add and remove Network objects all the time; only stations matter here.
    const QList<QVariant> arguments = message.arguments();
    if (arguments.size() < 2)
        return;
    const bool station = message.member() == QLatin1String("InterfacesAdded")
                             ? qdbus_cast<Interfaces>(arguments.at(1)).contains(kStationInterface)
                             : qdbus_cast<QStringList>(arguments.at(1)).contains(kStationInterface);
    if (!station)
        return;
    const QString before = m_stationPath;
    const std::optional<QString> beforeName = m_interfaceName;
    resolve();
    if (m_stationPath != before || m_interfaceName != beforeName)
        Q_EMIT interfaceDidChange();
}

void IwdWiFi::onStationPropertiesChanged(const QDBusMessage& message)
{
    const QStringList names = DBusProperties::changedNames(message.arguments());
    if (names.contains(QLatin1String("ConnectedNetwork")))
        Q_EMIT ssidDidChange();
    else if (names.contains(QLatin1String("State")))
        Q_EMIT linkDidChange();
}
