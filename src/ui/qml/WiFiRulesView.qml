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
            text: "WiFi → App Rules"
            font.pointSize: Style.title2
            font.weight: Font.DemiBold
        }
        Label {
            text: "Configure which applications start and stop based on WiFi network"
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
