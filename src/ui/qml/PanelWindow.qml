import QtQuick
import QtQuick.Window

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
}
