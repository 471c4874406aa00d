import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Obrinta.Rules
import "."

// A rule's shortcuts: what runs when its device or network comes and when it goes.
ColumnLayout {
    id: view

    property var editor

    Layout.fillWidth: true
    spacing: 14

    ShortcutListSection {
        objectName: "OnConnectShortcuts"
        title: "On Connect"
        subtitle: "Run when device/network connects (app starts)"
        systemImage: "play.fill"
        accentColor: Style.green
        editor: view.editor
        listSection: ShortcutConfigurationEditor.OnConnect
        shortcuts: view.editor.shortcutsOnConnect
        offered: view.editor.offeredOnConnect
    }
    ShortcutListSection {
        objectName: "OnDisconnectShortcuts"
        title: "On Disconnect"
        subtitle: "Run when device/network disconnects (app quits)"
        systemImage: "stop.fill"
        accentColor: "#ff3b30"
        editor: view.editor
        listSection: ShortcutConfigurationEditor.OnDisconnect
        shortcuts: view.editor.shortcutsOnDisconnect
        offered: view.editor.offeredOnDisconnect
    }
    SymbolButton {
        objectName: "OpenShortcutsFolderButton"
        Accessible.name: objectName
        text: "Open Shortcuts Folder"
        symbol: "arrow.up.forward.app"
        onClicked: view.editor.openShortcutsFolder()
    }
}
