import QtQuick
import QtQuick.Controls
import "."

// A bordered button with a symbol before its text; `prominent` fills it with the accent colour.
Button {
    property string symbol
    property bool prominent: false

    highlighted: prominent
    icon.source: symbol === "" ? "" : "image://symbol/" + symbol
    icon.width: 14
    icon.height: 14
    display: AbstractButton.TextBesideIcon
}
