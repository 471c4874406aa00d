import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// A glance at monitoring, connected devices and active USB rules, with three commands.
Pane {
    id: view

    // After a command, so that the window holding the view can close.
    signal commandChosen()

    width: 280
    padding: 14

    ColumnLayout {
        width: view.availableWidth
        spacing: 12

        RowLayout {
            Layout.fillWidth: true
            Layout.bottomMargin: 4
            spacing: 8

            Symbol {
                name: "figure.run"
                tint: Style.accent
                size: 22
            }
            Label {
                text: "Obrinta"
                font.pointSize: Style.headline
                font.weight: Font.DemiBold
            }
            Item { Layout.fillWidth: true }
            Rectangle {
                objectName: "MonitoringStatusDot"
                implicitWidth: 8
                implicitHeight: 8
                radius: 4
                color: menuBarContent.isMonitoring ? Style.green : Style.orange
            }
        }

        Divider {}

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 8

            SectionLabel {
                text: "Connected Devices"
                symbol: "cable.connector"
            }
            Label {
                visible: menuBarContent.devices.length === 0
                Layout.leftMargin: 20
                text: "No USB devices detected"
                font.pointSize: Style.caption
                color: Style.tertiaryText
            }
            Repeater {
                model: menuBarContent.devices
                DeviceRowCompact {
                    displayName: modelData.displayName
                    detail: modelData.detail
                }
            }
            Label {
                objectName: "MoreDevicesText"
                visible: menuBarContent.moreDevices > 0
                Layout.leftMargin: 20
                text: menuBarContent.moreText(menuBarContent.moreDevices)
                font.pointSize: Style.caption
                color: Style.secondaryText
            }
        }

        Divider {}

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 8

            SectionLabel {
                text: "Active Rules"
                symbol: "link"
            }
            Label {
                visible: menuBarContent.rules.length === 0
                Layout.leftMargin: 20
                text: "No rules configured"
                font.pointSize: Style.caption
                color: Style.tertiaryText
            }
            Repeater {
                model: menuBarContent.rules
                BindingRowCompact {
                    appName: modelData.appName
                    deviceName: modelData.deviceName
                    isDeviceConnected: modelData.isDeviceConnected
                }
            }
            Label {
                objectName: "MoreRulesText"
                visible: menuBarContent.moreRules > 0
                Layout.leftMargin: 20
                text: menuBarContent.moreText(menuBarContent.moreRules)
                font.pointSize: Style.caption
                color: Style.secondaryText
            }
        }

        Divider {}

        RowLayout {
            spacing: 16

            CommandButton {
                objectName: "RefreshButton"
                text: "Refresh"
                symbol: "arrow.clockwise"
                onClicked: menuBarCommands.refresh()
            }
            CommandButton {
                objectName: "SettingsButton"
                text: "Settings"
                symbol: "gear"
                onClicked: {
                    view.commandChosen()
                    menuBarCommands.openSettings()
                }
            }
            CommandButton {
                objectName: "QuitButton"
                text: "Quit"
                symbol: "power"
                onClicked: {
                    view.commandChosen()
                    menuBarCommands.quit()
                }
            }
        }
    }
}
