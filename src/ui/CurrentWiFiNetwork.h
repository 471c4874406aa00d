#pragma once

#include <QObject>

// The network joined now, as the WiFi windows show it. Follows the application state.
class CurrentWiFiNetwork : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isConnected READ isConnected NOTIFY changed)
    Q_PROPERTY(QString ssid READ ssid NOTIFY changed)
public:
    explicit CurrentWiFiNetwork(QObject* parent = nullptr);

    bool isConnected() const;
    // Empty when not connected.
    QString ssid() const;

Q_SIGNALS:
    void changed();
};
