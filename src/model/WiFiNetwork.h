#pragma once

#include <QJsonObject>
#include <QMetaType>
#include <QString>

#include <optional>

// The network the computer is joined to. Two networks are equal when their SSIDs are.
struct WiFiNetwork
{
    QString id;
    QString ssid;
    std::optional<QString> bssid;

    bool operator==(const WiFiNetwork& other) const { return ssid == other.ssid; }

    QJsonObject toJson() const;
};

inline size_t qHash(const WiFiNetwork& network, size_t seed = 0)
{
    return qHash(network.ssid, seed);
}

Q_DECLARE_METATYPE(WiFiNetwork)
