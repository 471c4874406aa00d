#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <optional>

// Synchronous property reads with a short time-out, so that a poll stays cheap even when a
// service hangs.
namespace DBusProperties {

constexpr int kTimeoutMs = 500;

// The value with every layer of variant removed; absent, with `error` set, when the read fails.
std::optional<QVariant> get(const QDBusConnection& bus, const QString& service, const QString& path,
                            const QString& interface, const QString& name, QString& error);
std::optional<QVariantMap> getAll(const QDBusConnection& bus, const QString& service,
                                  const QString& path, const QString& interface, QString& error);

// Services and test doubles sometimes wrap a value in more than one variant.
QVariant unwrap(QVariant value);
// An object path given as such or as text; empty for anything else.
QString objectPath(const QVariant& value);
// An `ay` value as bytes, also when it arrives as text.
QByteArray bytes(const QVariant& value);
// A service that has just taken its name may not have exported its objects yet; it announces
// them when it has.
bool isStillStarting(const QDBusMessage& reply);
// The names of the properties a PropertiesChanged signal reports, changed or invalidated.
QStringList changedNames(const QList<QVariant>& arguments);

} // namespace DBusProperties
