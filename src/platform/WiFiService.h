#pragma once

#include <QObject>
#include <QString>

#include <optional>

// One system service that knows the WiFi interface (NetworkManager, iwd), on the system bus.
class WiFiService : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    virtual QString serviceName() const = 0;
    // Finds the WiFi interface anew; called when the service appears or its devices change.
    virtual void resolve() = 0;
    // Drops the interface; called when the service leaves the bus.
    virtual void forget() = 0;

    virtual std::optional<QString> interfaceName() const = 0;
    virtual std::optional<QString> ssid() = 0;
    virtual std::optional<QString> bssid() = 0;

Q_SIGNALS:
    void ssidDidChange();
    void linkDidChange();
    // The service resolved a different interface on its own (a device came or went).
    void interfaceDidChange();
};
