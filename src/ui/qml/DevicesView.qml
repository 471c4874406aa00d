import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// Header only for now; the list follows.
ColumnLayout {
    spacing: 0

    ColumnLayout {
        Layout.margins: 16
        spacing: 2

        Label {
            text: "Connected USB Devices"
            font.pointSize: Style.title2
            font.weight: Font.DemiBold
        }
        Label {
            text: "Devices currently connected to this computer"
            font.pointSize: Style.caption
            color: Style.secondaryText
        }
    }
    Divider {}
    Item {
        Layout.fillWidth: true
        Layout.fillHeight: true
    }
}
