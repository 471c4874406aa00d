import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// One rule of a rules list: status dot, application, what it watches, behaviours and its switch.
// The dot is grey for a disabled rule, green while its device or network is there, else orange.
RowLayout {
    id: row

    property string appName
    property string detailSymbol
    property string detailText
    property bool isEnabled
    property bool isConnected
    property bool launchOnConnect
    property bool killOnDisconnect

    signal enabledToggled(bool isEnabled)

    spacing: 16

    Rectangle {
        objectName: "RuleStatusDot"
        implicitWidth: 10
        implicitHeight: 10
        radius: 5
        color: !row.isEnabled ? Style.grey : row.isConnected ? Style.green : Style.orange
    }
    ColumnLayout {
        Layout.fillWidth: true
        Layout.topMargin: 4
        Layout.bottomMargin: 4
        spacing: 2

        RowLayout {
            Layout.fillWidth: true
            spacing: 6

            Label {
                Layout.maximumWidth: row.width * 0.45
                text: row.appName
                font.weight: Font.Medium
                elide: Text.ElideRight
            }
            Label {
                objectName: "DisabledBadge"
                visible: !row.isEnabled
                text: "Disabled"
                font.pointSize: Style.caption2
                leftPadding: 6
                rightPadding: 6
                topPadding: 2
                bottomPadding: 2
                background: Rectangle {
                    radius: 4
                    color: Qt.rgba(Style.text.r, Style.text.g, Style.text.b, 0.2 * 0.68)
                }
            }
            Item {
                Layout.fillWidth: true
            }
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 4

            Symbol {
                name: row.detailSymbol
                tint: Style.secondaryText
                size: 11
            }
            Label {
                Layout.fillWidth: true
                text: row.detailText
                font.pointSize: Style.caption
                color: Style.secondaryText
                elide: Text.ElideRight
            }
        }
    }
    RowLayout {
        spacing: 8

        Badge {
            visible: row.launchOnConnect
            text: "Launch"
            symbol: "play.fill"
            tint: Style.green
        }
        Badge {
            visible: row.killOnDisconnect
            text: "Quit"
            symbol: "stop.fill"
            tint: Style.orange
        }
    }
    Switch {
        id: toggle
        objectName: "RuleEnabledSwitch"
        Accessible.name: "Enabled"
        checked: row.isEnabled
        onToggled: {
            row.enabledToggled(checked)
            // The state answers with the stored value.
            checked = Qt.binding(() => row.isEnabled)
        }
    }
}
