import QtQuick
import QtQuick.Controls
import "."

// A borderless command: symbol and label, no button chrome.
ToolButton {
    property string symbol

    Accessible.name: text
    flat: true
    padding: 2
    font.pointSize: Style.caption
    display: AbstractButton.TextBesideIcon
    icon.source: "image://symbol/" + symbol
    icon.width: 14
    icon.height: 14
}
