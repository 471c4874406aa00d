import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// One connected device: its name over "<vendor> • <vendor id>:<product id>".
RowLayout {
    property string displayName
    property string detail

    Layout.leftMargin: 20
    Layout.fillWidth: true
    spacing: 6

    Symbol {
        Layout.alignment: Qt.AlignTop
        Layout.topMargin: 2
        name: "cable.connector.horizontal"
        tint: Style.green
        size: 12
    }
    ColumnLayout {
        Layout.fillWidth: true
        spacing: 1

        Label {
            Layout.fillWidth: true
            text: displayName
            font.pointSize: Style.caption
            elide: Text.ElideRight
            maximumLineCount: 1
        }
        Label {
            Layout.fillWidth: true
            text: detail
            font.pointSize: Style.caption2
            color: Style.secondaryText
            elide: Text.ElideRight
        }
    }
}
