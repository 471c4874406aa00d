import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// A titled group of rows in a form.
ColumnLayout {
    property string title
    default property alias rows: box.data

    Layout.fillWidth: true
    spacing: 6

    Label {
        text: parent.title
        font.pointSize: Style.subheadline
        font.weight: Font.DemiBold
        color: Style.secondaryText
    }
    Frame {
        Layout.fillWidth: true

        ColumnLayout {
            id: box
            anchors.left: parent.left
            anchors.right: parent.right
            spacing: 8
        }
    }
}
