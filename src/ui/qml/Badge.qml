import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// A small label with an optional symbol, in `tint`, for a row's behaviours.
RowLayout {
    property alias text: label.text
    property alias symbol: icon.name
    property color tint: Style.secondaryText

    spacing: 3

    Symbol {
        id: icon
        visible: name !== ""
        tint: parent.tint
        size: 10
    }
    Label {
        id: label
        font.pointSize: Style.caption2
        color: parent.tint
    }
}
