import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// The application-wide switches, read from the stored settings once, when the tab is made.
ScrollView {
    id: view

    readonly property var stored: generalSettings.storedValues()

    contentWidth: availableWidth

    ColumnLayout {
        width: view.availableWidth
        spacing: 18

        Item { implicitHeight: 2 }

        FormSection {
            Layout.leftMargin: 20
            Layout.rightMargin: 20
            title: "Startup & Notifications"

            Switch {
                objectName: "LaunchAtLoginToggle"
                Accessible.name: "LaunchAtLoginToggle"
                Layout.fillWidth: true
                text: "Launch at Login"
                checked: view.stored.launchAtLogin
                onToggled: generalSettings.setLaunchAtLogin(checked)
            }
            Switch {
                objectName: "ShowNotificationsToggle"
                Accessible.name: "ShowNotificationsToggle"
                Layout.fillWidth: true
                text: "Show Notifications"
                checked: view.stored.showNotifications
                onToggled: generalSettings.setShowNotifications(checked)
            }
        }

        FormSection {
            Layout.leftMargin: 20
            Layout.rightMargin: 20
            title: "Monitoring"

            Switch {
                objectName: "MonitoringEnabledToggle"
                Accessible.name: "MonitoringEnabledToggle"
                Layout.fillWidth: true
                text: "Enable USB Monitoring"
                checked: view.stored.monitoringEnabled
                onToggled: generalSettings.setMonitoringEnabled(checked)
            }
            Label {
                Layout.fillWidth: true
                wrapMode: Text.Wrap
                text: "When disabled, Obrinta will not automatically launch or quit applications when USB devices connect or disconnect."
                font.pointSize: Style.caption
                color: Style.secondaryText
            }
            Switch {
                objectName: "WiFiMonitoringEnabledToggle"
                Accessible.name: "WiFiMonitoringEnabledToggle"
                Layout.fillWidth: true
                text: "Enable WiFi Monitoring"
                checked: view.stored.wifiMonitoringEnabled
                onToggled: generalSettings.setWifiMonitoringEnabled(checked)
            }
            Label {
                Layout.fillWidth: true
                wrapMode: Text.Wrap
                text: "When disabled, Obrinta will not automatically launch or quit applications when WiFi network changes."
                font.pointSize: Style.caption
                color: Style.secondaryText
            }
        }

        FormSection {
            Layout.leftMargin: 20
            Layout.rightMargin: 20
            title: "About"

            RowLayout {
                Layout.fillWidth: true
                Label { text: "Version" }
                Item { Layout.fillWidth: true }
                Label {
                    objectName: "VersionText"
                    text: generalSettings.version
                    color: Style.secondaryText
                }
            }
            RowLayout {
                Layout.fillWidth: true
                Label { text: "Build" }
                Item { Layout.fillWidth: true }
                Label {
                    objectName: "BuildText"
                    text: generalSettings.build
                    color: Style.secondaryText
                }
            }
        }

        Item { implicitHeight: 2 }
    }
}
