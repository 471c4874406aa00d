import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// One enabled USB rule: a check mark when its device is connected, an empty circle otherwise.
RowLayout {
    property string appName
    property string deviceName
    property bool isDeviceConnected

    Layout.leftMargin: 20
    Layout.fillWidth: true
    spacing: 6

    Symbol {
        Layout.alignment: Qt.AlignTop
        Layout.topMargin: 2
        name: isDeviceConnected ? "checkmark.circle.fill" : "circle"
        tint: isDeviceConnected ? Style.green : Style.secondaryText
        size: 12
    }
    ColumnLayout {
        Layout.fillWidth: true
        spacing: 1

        Label {
            Layout.fillWidth: true
            text: appName
            font.pointSize: Style.caption
            elide: Text.ElideRight
            maximumLineCount: 1
        }
        Label {
            Layout.fillWidth: true
            text: deviceName
            font.pointSize: Style.caption2
            color: Style.secondaryText
            elide: Text.ElideRight
        }
    }
}
