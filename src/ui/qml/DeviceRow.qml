import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// One connected device: the vendor's symbol, name and vendor, ids and serial number.
RowLayout {
    id: row

    property string displayName
    property string vendorText
    property string symbol
    property string idsText
    property string serialText

    spacing: 10

    Item {
        implicitWidth: 32
        implicitHeight: 32

        Symbol {
            anchors.centerIn: parent
            name: row.symbol
            tint: Style.accent
            size: 22
        }
    }
    ColumnLayout {
        Layout.fillWidth: true
        Layout.topMargin: 4
        Layout.bottomMargin: 4
        spacing: 2

        Label {
            Layout.fillWidth: true
            text: row.displayName
            font.weight: Font.Medium
            elide: Text.ElideRight
        }
        Label {
            Layout.fillWidth: true
            text: row.vendorText
            font.pointSize: Style.caption
            color: Style.secondaryText
            elide: Text.ElideRight
        }
    }
    ColumnLayout {
        spacing: 2

        Label {
            Layout.alignment: Qt.AlignRight
            text: row.idsText
            font.pointSize: Style.caption
            font.family: "monospace"
            color: Style.secondaryText
        }
        Label {
            Layout.alignment: Qt.AlignRight
            visible: row.serialText !== ""
            text: "SN: " + row.serialText
            font.pointSize: Style.caption2
            color: Style.tertiaryText
        }
    }
}
