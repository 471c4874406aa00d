#include "JsonFieldReader.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <cmath>

bool JsonFieldReader::has(const QString& key) const
{
    const QJsonValue value = m_object.value(key);
    return !value.isUndefined() && !value.isNull();
}

QJsonValue JsonFieldReader::required(const QString& key)
{
    if (!has(key))
        fail();
    return m_object.value(key);
}

QUuid JsonFieldReader::uuid(const QString& key)
{
    static const QRegularExpression form(QStringLiteral(
        "^[0-9A-Fa-f]{8}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{12}$"));
    const QJsonValue value = required(key);
    if (!value.isString() || !form.match(value.toString()).hasMatch()) {
        fail();
        return {};
    }
    return QUuid::fromString(value.toString());
}

qint64 JsonFieldReader::integer(const QString& key)
{
    const QJsonValue value = required(key);
    if (!value.isDouble()) {
        fail();
        return 0;
    }
    const qint64 whole = value.toInteger(std::numeric_limits<qint64>::min());
    if (whole == std::numeric_limits<qint64>::min()) {
        // Not an exact integer (a fraction, or out of range).
        const double number = value.toDouble();
        if (std::trunc(number) != number || std::fabs(number) > 9.2e18) {
            fail();
            return 0;
        }
        return qint64(number);
    }
    return whole;
}

QString JsonFieldReader::string(const QString& key)
{
    const QJsonValue value = required(key);
    if (!value.isString())
        fail();
    return value.toString();
}

QString JsonFieldReader::optionalString(const QString& key, const QString& fallback)
{
    if (!has(key))
        return fallback;
    const QJsonValue value = m_object.value(key);
    if (!value.isString())
        fail();
    return value.toString();
}

bool JsonFieldReader::boolean(const QString& key)
{
    const QJsonValue value = required(key);
    if (!value.isBool())
        fail();
    return value.toBool();
}

bool JsonFieldReader::optionalBoolean(const QString& key, bool fallback)
{
    if (!has(key))
        return fallback;
    const QJsonValue value = m_object.value(key);
    if (!value.isBool())
        fail();
    return value.toBool();
}

double JsonFieldReader::optionalNumber(const QString& key, double fallback)
{
    if (!has(key))
        return fallback;
    const QJsonValue value = m_object.value(key);
    if (!value.isDouble())
        fail();
    return value.toDouble();
}

QStringList JsonFieldReader::stringList(const QString& key)
{
    const QJsonValue value = required(key);
    if (!value.isArray()) {
        fail();
        return {};
    }
    QStringList list;
    for (const QJsonValue& element : value.toArray()) {
        if (!element.isString()) {
            fail();
            return {};
        }
        list.append(element.toString());
    }
    return list;
}

QJsonObject JsonFieldReader::object(const QString& key)
{
    const QJsonValue value = required(key);
    if (!value.isObject())
        fail();
    return value.toObject();
}
