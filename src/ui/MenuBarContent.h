#pragma once

#include <QObject>
#include <QVariantList>

class AppState;
struct USBDevice;

// What the tray menu and the panel show of the application state: the monitoring switch, the
// first five connected devices and the first three enabled USB rules, each with the count of
// those left out.
class MenuBarContent : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isMonitoring READ isMonitoring NOTIFY changed)
    Q_PROPERTY(QVariantList devices READ devices NOTIFY changed)
    Q_PROPERTY(int moreDevices READ moreDevices NOTIFY changed)
    Q_PROPERTY(QVariantList rules READ rules NOTIFY changed)
    Q_PROPERTY(int moreRules READ moreRules NOTIFY changed)
public:
    static constexpr int maxDevices = 5;
    static constexpr int maxRules = 3;

    explicit MenuBarContent(AppState& appState, QObject* parent = nullptr);

    bool isMonitoring() const;
    // Each {"displayName", "detail"}.
    QVariantList devices() const;
    int moreDevices() const;
    // Each {"appName", "deviceName", "isDeviceConnected"}.
    QVariantList rules() const;
    int moreRules() const;

    // "<vendor> • <vendor id>:<product id>", the vendor from the known names where listed.
    static QString deviceDetail(const USBDevice& device);
    // "+<n> more..."
    Q_INVOKABLE static QString moreText(int count);

Q_SIGNALS:
    void changed();

private:
    AppState& m_appState;
};
