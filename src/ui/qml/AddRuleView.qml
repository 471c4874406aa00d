import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Obrinta.Rules
import "."

// The "Add New Rule" sheet: a connected device, an application or shortcuts, and the behaviour.
SheetWindow {
    id: sheet

    objectName: "AddRuleSheet"
    title: "Add New Rule"
    heading: "Add New Rule"
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

    AddRuleEditor {
        id: editor
    }

    SheetScrollView {
        objectName: "AddRuleScrollView"

        NumberedSection {
            number: 1
            title: "Select USB Device"

            RowLayout {
                visible: editor.devices.count === 0
                spacing: 6

                Symbol {
                    name: "exclamationmark.triangle"
                    tint: Style.orange
                }
                Label {
                    text: "No USB devices connected. Connect a device first."
                    font.pointSize: Style.caption
                    color: Style.secondaryText
                }
            }
            Repeater {
                model: editor.devices

                DeviceSelectionRow {
                    required property int index
                    required property var model

                    objectName: "DeviceSelectionRow"
                    displayName: model.displayName
                    detail: model.detail
                    isSelected: editor.selectedDeviceKey === model.key
                    onTapped: editor.selectDevice(index)
                }
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
                text: "Launch when device connects"
                help: "Automatically start the app when this USB device is detected"
                checked: editor.launchOnConnect
                onToggled: checked => editor.launchOnConnect = checked
            }
            BehaviorToggle {
                identifier: "QuitOnDisconnectToggle"
                text: "Quit when device disconnects"
                help: "Automatically close the app when this USB device is removed"
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
