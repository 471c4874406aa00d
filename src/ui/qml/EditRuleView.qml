import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Obrinta.Rules
import "."

// The "Edit Rule" sheet of a USB rule.
EditRuleSheet {
    id: sheet

    property alias ruleId: ruleEditor.ruleId

    objectName: "EditRuleSheet"
    title: "Edit Rule"
    heading: "Edit Rule"
    editor: EditRuleEditor {
        id: ruleEditor
    }
    subjectSymbol: "cable.connector.horizontal"
    subjectCaption: "Device"
    isSubjectConnected: ruleEditor.isDeviceConnected
    subjectDisconnectedText: "Disconnected"
    subjectTitle: "USB Device"
    launchText: "Launch when device connects"
    launchHelp: "Automatically start the app when this USB device is detected"
    quitText: "Quit when device disconnects"
    quitHelp: "Automatically close the app when this USB device is removed"

    subject: RowLayout {
        spacing: 10

        Symbol {
            name: "cable.connector.horizontal"
            tint: Style.secondaryText
            size: 20
        }
        ColumnLayout {
            spacing: 1

            Label {
                text: ruleEditor.deviceName
                font.weight: Font.Medium
            }
            Label {
                text: ruleEditor.deviceIdsText
                font.pointSize: Style.caption
                color: Style.secondaryText
            }
        }
    }
}
