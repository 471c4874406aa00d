import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// A network to choose for a new rule; the current one says so in green.
ChoiceRow {
    id: choice

    property string ssid
    property bool isCurrent

    SelectionMark {
        isSelected: choice.isSelected
    }
    Symbol {
        name: "wifi"
        tint: choice.isCurrent ? Style.green : Style.secondaryText
    }
    Label {
        Layout.fillWidth: true
        text: choice.ssid
        font.weight: choice.isSelected ? Font.Medium : Font.Normal
        elide: Text.ElideRight
    }
    Label {
        visible: choice.isCurrent
        text: "Currently connected"
        font.pointSize: Style.caption
        color: Style.green
    }
}
