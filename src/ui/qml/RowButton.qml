import QtQuick
import QtQuick.Controls
import "."

// A borderless button showing only a symbol, with its help as a tooltip.
ToolButton {
    property string symbol
    property string help

    Accessible.name: objectName
    Accessible.description: help
    flat: true
    opacity: enabled ? 1 : 0.35
    padding: 3
    icon.source: "image://symbol/" + symbol
    icon.width: 14
    icon.height: 14
    display: AbstractButton.IconOnly
    ToolTip.visible: help !== "" && hovered
    ToolTip.text: help
    ToolTip.delay: 600
}
