import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// One application to choose: its icon, name and id.
Rectangle {
    id: choice

    property string name
    property string appId
    property string icon
    property bool isSelected

    signal tapped()

    implicitHeight: row.implicitHeight + 8
    radius: 6
    color: isSelected ? Qt.rgba(Style.accent.r, Style.accent.g, Style.accent.b, 0.1) : "transparent"

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.leftMargin: 6
        anchors.rightMargin: 6
        spacing: 8

        SelectionMark {
            isSelected: choice.isSelected
        }
        AppIcon {
            iconName: choice.icon
            size: 24
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 0

            Label {
                Layout.fillWidth: true
                text: choice.name
                font.weight: choice.isSelected ? Font.Medium : Font.Normal
                elide: Text.ElideRight
            }
            Label {
                Layout.fillWidth: true
                text: choice.appId
                font.pointSize: Style.caption
                color: Style.secondaryText
                elide: Text.ElideMiddle
            }
        }
    }
    MouseArea {
        anchors.fill: parent
        onClicked: choice.tapped()
    }
}
