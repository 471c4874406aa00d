#include "WiFiNetwork.h"

QJsonObject WiFiNetwork::toJson() const
{
    QJsonObject object{{QStringLiteral("id"), id}, {QStringLiteral("ssid"), ssid}};
    if (bssid)
        object.insert(QStringLiteral("bssid"), *bssid);
    return object;
}
