#include "CurrentWiFiNetwork.h"

#include "model/AppState.h"

CurrentWiFiNetwork::CurrentWiFiNetwork(QObject* parent) : QObject(parent)
{
    connect(&AppState::shared(), &AppState::currentWiFiNetworkChanged, this,
            &CurrentWiFiNetwork::changed);
}

bool CurrentWiFiNetwork::isConnected() const
{
    return AppState::shared().currentWiFiNetwork().has_value();
}

QString CurrentWiFiNetwork::ssid() const
{
    const std::optional<WiFiNetwork>& network = AppState::shared().currentWiFiNetwork();
    return network ? network->ssid : QString();
}
