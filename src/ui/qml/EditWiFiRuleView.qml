import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Obrinta.Rules
import "."

// The "Edit WiFi Rule" sheet.
EditRuleSheet {
    id: sheet

    property alias ruleId: ruleEditor.ruleId

    objectName: "EditWiFiRuleSheet"
    title: "Edit WiFi Rule"
    heading: "Edit WiFi Rule"
    editor: EditWiFiRuleEditor {
        id: ruleEditor
    }
    subjectSymbol: "wifi"
    subjectCaption: "Network"
    isSubjectConnected: ruleEditor.isNetworkConnected
    subjectDisconnectedText: "Not Connected"
    subjectTitle: "WiFi Network"
    launchText: "Launch when connecting to network"
    launchHelp: "Automatically start the app when you connect to this WiFi network"
    quitText: "Quit when leaving network"
    quitHelp: "Automatically close the app when you disconnect from this WiFi network"

    subject: RowLayout {
        spacing: 10

        Symbol {
            name: "wifi"
            tint: ruleEditor.isNetworkConnected ? Style.green : Style.secondaryText
            size: 20
        }
        ColumnLayout {
            spacing: 1

            Label {
                text: ruleEditor.ssid
                font.weight: Font.Medium
            }
            Label {
                text: ruleEditor.isNetworkConnected ? "Currently connected" : "Not connected to this network"
                font.pointSize: Style.caption
                color: ruleEditor.isNetworkConnected ? Style.green : Style.secondaryText
            }
        }
    }
}
