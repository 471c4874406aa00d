import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// A section's title with its symbol, in the secondary style.
RowLayout {
    property alias text: label.text
    property alias symbol: icon.name

    spacing: 6

    Symbol {
        id: icon
        tint: Style.secondaryText
        size: 14
    }
    Label {
        id: label
        font.pointSize: Style.subheadline
        color: Style.secondaryText
    }
}
