#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <optional>

// The per-user key-value settings store: one JSON object in a file, keeping each value's type.
// Booleans are JSON Booleans, data values are {"data": "<base64>"}. Written atomically on every
// set; a file that cannot be read reads as empty and is left alone until the next set.
class UserDefaults
{
public:
    explicit UserDefaults(QString filePath);

    // $XDG_CONFIG_HOME/Obrinta/settings.json
    static UserDefaults& standard();

    QJsonValue object(const QString& key) const;
    std::optional<QByteArray> data(const QString& key) const;
    // The store's Boolean reading: a number is true when not zero, "true"/"yes" strings are true.
    bool boolean(const QString& key) const;

    bool setData(const QString& key, const QByteArray& value);
    bool setBoolean(const QString& key, bool value);

    const QString& filePath() const { return m_filePath; }

private:
    QJsonObject read() const;
    bool set(const QString& key, const QJsonValue& value);

    QString m_filePath;
};
