#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QUuid>

// Reads the keys of one stored record. The first missing required key, or any key of the wrong
// JSON type, marks the reader failed; absence or null of an optional key selects its default.
class JsonFieldReader
{
public:
    explicit JsonFieldReader(const QJsonObject& object) : m_object(object) {}

    bool ok() const { return m_ok; }
    bool has(const QString& key) const;

    QUuid uuid(const QString& key);
    qint64 integer(const QString& key);
    QString string(const QString& key);
    QString optionalString(const QString& key, const QString& fallback);
    bool boolean(const QString& key);
    bool optionalBoolean(const QString& key, bool fallback);
    double optionalNumber(const QString& key, double fallback);
    QStringList stringList(const QString& key);
    QJsonObject object(const QString& key);

private:
    QJsonValue required(const QString& key);
    void fail() { m_ok = false; }

    QJsonObject m_object;
    bool m_ok = true;
};
