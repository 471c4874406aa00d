#pragma once

#include <QObject>
#include <QString>

#include <optional>

// The system's WiFi interface as the WiFi monitor sees it: its name, the network it is joined to,
// the authorisation to read that network, and change events. All on the main thread.
class WiFiBackend : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    // Absent when there is no WiFi interface; empty when the interface has no name.
    virtual std::optional<QString> interfaceName() const = 0;
    // What the interface reports at this moment; absent when it reports nothing.
    virtual std::optional<QString> ssid() = 0;
    virtual std::optional<QString> bssid() = 0;

    // 0 not determined, 1 restricted, 2 denied, 3 authorised always, 4 when in use.
    virtual int authorizationStatus() const = 0;
    virtual void requestAuthorization() = 0;

    // SSID-change and link-change events; false with `error` set when they cannot be had.
    virtual bool startEvents(QString& error) = 0;
    virtual bool stopEvents(QString& error) = 0;

Q_SIGNALS:
    void ssidDidChange();
    void linkDidChange();
    // The interface was resolved again (its service appeared, restarted or went away).
    void interfaceDidChange();
    void authorizationDidChange();
};
