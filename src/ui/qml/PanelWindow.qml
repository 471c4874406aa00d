import QtQuick
import QtQuick.Window
import "."

// The panel that a click on the tray icon opens; it closes when it loses focus.
Window {
    id: panel

    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    width: view.width
    height: view.implicitHeight
    title: "Obrinta"

    onActiveChanged: {
        if (!active)
            hide()
    }

    MenuBarView {
        id: view
        objectName: "MenuBarView"
        onCommandChosen: panel.hide()
    }
    // Without a frame the panel needs its own edge.
    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border.color: Style.separator
    }
}
