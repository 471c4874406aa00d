#include "DBusProperties.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace {

const QString kPropertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

std::optional<QVariant> callForValue(const QDBusConnection& bus, const QDBusMessage& message,
                                     QString& error)
{
    const QDBusMessage reply = bus.call(message, QDBus::Block, DBusProperties::kTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        error = reply.errorMessage().isEmpty() ? reply.errorName() : reply.errorMessage();
        return std::nullopt;
    }
    return DBusProperties::unwrap(reply.arguments().constFirst());
}

} // namespace

namespace DBusProperties {

std::optional<QVariant> get(const QDBusConnection& bus, const QString& service, const QString& path,
                            const QString& interface, const QString& name, QString& error)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, path, kPropertiesInterface, QStringLiteral("Get"));
    message << interface << name;
    return callForValue(bus, message, error);
}

std::optional<QVariantMap> getAll(const QDBusConnection& bus, const QString& service,
                                  const QString& path, const QString& interface, QString& error)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, kPropertiesInterface,
                                                          QStringLiteral("GetAll"));
    message << interface;
    const auto value = callForValue(bus, message, error);
    if (!value)
        return std::nullopt;
    if (!value->canConvert<QDBusArgument>()) {
        error = QStringLiteral("unexpected reply to GetAll");
        return std::nullopt;
    }
    QVariantMap properties = qdbus_cast<QVariantMap>(*value);
    for (QVariant& property : properties)
        property = unwrap(property);
    return properties;
}

QVariant unwrap(QVariant value)
{
    while (value.userType() == qMetaTypeId<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

QString objectPath(const QVariant& value)
{
    if (value.userType() == qMetaTypeId<QDBusObjectPath>())
        return value.value<QDBusObjectPath>().path();
    if (value.userType() == QMetaType::QString)
        return value.toString();
    return {};
}

QByteArray bytes(const QVariant& value)
{
    if (value.userType() == QMetaType::QByteArray)
        return value.toByteArray();
    if (value.userType() == QMetaType::QString)
        return value.toString().toUtf8();
    return {};
}

bool isStillStarting(const QDBusMessage& reply)
{
    return reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.UnknownMethod") ||
           reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.UnknownObject");
}

QStringList changedNames(const QList<QVariant>& arguments)
{
    QStringList names;
    if (arguments.size() >= 2)
        names = qdbus_cast<QVariantMap>(arguments.at(1)).keys();
    if (arguments.size() >= 3)
        names += qdbus_cast<QStringList>(arguments.at(2));
    return names;
}

} // namespace DBusProperties
