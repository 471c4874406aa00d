import QtQuick
import QtQuick.Controls

ApplicationWindow {
    title: "Settings"
    width: 650
    height: 500
    minimumWidth: 600
    minimumHeight: 450

    // The desktop's usual way to close a window from the keyboard; closing only hides it.
    Shortcut {
        sequences: [StandardKey.Close]
        onActivated: close()
    }

    // Interface tests' "Settings..." command, wherever the focus is in Obrinta.
    Shortcut {
        objectName: "SettingsCommand"
        sequence: "Ctrl+,"
        context: Qt.ApplicationShortcut
        enabled: menuBarCommands.hasSettingsCommand
        onActivated: menuBarCommands.showSettingsWindow()
    }

    Item {
        objectName: "SettingsView"
        Accessible.name: "SettingsView"
        anchors.fill: parent

        SettingsView {
            anchors.fill: parent
        }
    }
}
