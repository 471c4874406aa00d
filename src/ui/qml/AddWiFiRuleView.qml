import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Obrinta.Rules
import "."

// The "Add WiFi Rule" sheet: a network name, offered from the current network or typed, then an
// application or shortcuts, and the behaviour.
SheetWindow {
    id: sheet

    objectName: "AddWiFiRuleSheet"
    title: "Add WiFi Rule"
    heading: "Add WiFi Rule"
    width: 500
    height: 650
    primaryText: "Add Rule"
    primaryIdentifier: "SaveRuleButton"
    primaryEnabled: editor.canSave
    keysEnabled: !applicationSection.isBrowsing
    onAccepted: {
        if (editor.save())
            dismiss()
    }

    AddWiFiRuleEditor {
        id: editor
    }

    SheetScrollView {
        objectName: "AddWiFiRuleScrollView"

        NumberedSection {
            number: 1
            title: "WiFi Network (SSID)"

            Label {
                visible: editor.currentNetwork.isConnected
                text: "Current Network"
                font.pointSize: Style.caption
                color: Style.secondaryText
            }
            WiFiNetworkSelectionRow {
                objectName: "CurrentNetworkRow"
                visible: editor.currentNetwork.isConnected
                ssid: editor.currentNetwork.ssid
                isCurrent: true
                isSelected: editor.ssidInput === editor.currentNetwork.ssid
                onTapped: editor.ssidInput = editor.currentNetwork.ssid
            }
            RowLayout {
                visible: !editor.currentNetwork.isConnected
                spacing: 6

                Symbol {
                    name: "wifi.slash"
                    tint: Style.orange
                }
                Label {
                    text: "Not connected to WiFi"
                    font.pointSize: Style.caption
                    color: Style.secondaryText
                }
            }
            Label {
                Layout.topMargin: 4
                text: "Or enter SSID manually:"
                font.pointSize: Style.caption
                color: Style.secondaryText
            }
            TextField {
                objectName: "SSIDTextField"
                Accessible.name: objectName
                Layout.fillWidth: true
                placeholderText: "Network name (SSID)"
                text: editor.ssidInput
                onTextEdited: editor.ssidInput = text
            }
        }
        Divider {}
        ApplicationSection {
            id: applicationSection
            picker: editor.applications
        }
        Divider {}
        NumberedSection {
            number: 3
            title: "Configure Behavior"

            BehaviorToggle {
                identifier: "LaunchOnConnectToggle"
                text: "Launch when connecting to network"
                help: "Automatically start the app when you connect to this WiFi network"
                checked: editor.launchOnConnect
                onToggled: checked => editor.launchOnConnect = checked
            }
            BehaviorToggle {
                identifier: "QuitOnDisconnectToggle"
                text: "Quit when leaving network"
                help: "Automatically close the app when you disconnect from this WiFi network"
                checked: editor.killOnDisconnect
                onToggled: checked => editor.killOnDisconnect = checked
            }
        }
        Divider {}
        NumberedSection {
            number: 4
            title: "Shortcuts (Optional)"

            ShortcutConfigurationView {
                editor: editor.shortcuts
            }
        }
    }
}
