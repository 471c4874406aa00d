#include "UserDefaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>
#include <QStandardPaths>

UserDefaults::UserDefaults(QString filePath) : m_filePath(std::move(filePath)) {}

UserDefaults& UserDefaults::standard()
{
    static UserDefaults defaults(
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
        QStringLiteral("/Obrinta/settings.json"));
    return defaults;
}

QJsonObject UserDefaults::read() const
{
    QFile file(m_filePath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    return document.isObject() ? document.object() : QJsonObject{};
}

QJsonValue UserDefaults::object(const QString& key) const
{
    return read().value(key);
}

std::optional<QByteArray> UserDefaults::data(const QString& key) const
{
    const QJsonValue value = object(key);
    const QJsonValue encoded = value.toObject().value(QStringLiteral("data"));
    if (!value.isObject() || !encoded.isString())
        return std::nullopt;
    auto decoded = QByteArray::fromBase64Encoding(encoded.toString().toLatin1(),
                                                  QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return std::nullopt;
    return *decoded;
}

bool UserDefaults::boolean(const QString& key) const
{
    const QJsonValue value = object(key);
    if (value.isBool())
        return value.toBool();
    if (value.isDouble())
        return value.toDouble() != 0;
    if (value.isString()) {
        const QString text = value.toString().trimmed().toLower();
        return text == QLatin1String("true") || text == QLatin1String("yes") ||
               text.toLongLong() != 0;
    }
    return false;
}

bool UserDefaults::setData(const QString& key, const QByteArray& value)
{
    return set(key, QJsonObject{{QStringLiteral("data"), QString::fromLatin1(value.toBase64())}});
}

bool UserDefaults::setBoolean(const QString& key, bool value)
{
    return set(key, value);
}

bool UserDefaults::set(const QString& key, const QJsonValue& value)
{
    QJsonObject all = read();
    all.insert(key, value);
    QDir().mkpath(QFileInfo(m_filePath).absolutePath());
    QSaveFile file(m_filePath);
    // Unbuffered, so that a write error (a full disk) fails the commit instead of vanishing.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    const QByteArray bytes = QJsonDocument(all).toJson(QJsonDocument::Indented);
    if (file.write(bytes) != bytes.size())
        return false;
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return file.commit();
}
