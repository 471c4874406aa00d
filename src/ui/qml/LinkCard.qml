import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// One end of an edit sheet's link overview: a symbol, a caption and a live state in green or grey.
Rectangle {
    id: card

    property string symbol
    property string caption
    property bool isActive
    property string activeText
    property string inactiveText

    Layout.fillWidth: true
    implicitHeight: column.implicitHeight + 20
    radius: 8
    color: Qt.rgba(Style.text.r, Style.text.g, Style.text.b, 0.1 * 0.68)

    ColumnLayout {
        id: column
        anchors.centerIn: parent
        spacing: 4

        Symbol {
            Layout.alignment: Qt.AlignHCenter
            name: card.symbol
            tint: card.isActive ? Style.green : Style.secondaryText
            size: 24
        }
        Label {
            Layout.alignment: Qt.AlignHCenter
            text: card.caption
            font.pointSize: Style.caption
        }
        Label {
            objectName: card.objectName + "State"
            Layout.alignment: Qt.AlignHCenter
            text: card.isActive ? card.activeText : card.inactiveText
            font.pointSize: Style.caption
            color: card.isActive ? Style.green : Style.secondaryText
        }
    }
}
