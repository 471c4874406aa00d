import QtQuick
import QtQuick.Controls

ApplicationWindow {
    title: "Settings"
    width: 650
    height: 500
    minimumWidth: 600
    minimumHeight: 450

    SettingsView {
        anchors.fill: parent
        objectName: "SettingsView"
        Accessible.name: "SettingsView"
    }
}
