import QtQuick
import QtQuick.Controls

ApplicationWindow {
    title: "Settings"
    width: 650
    height: 500
    minimumWidth: 600
    minimumHeight: 450

    Item {
        objectName: "SettingsView"
        Accessible.name: "SettingsView"
        anchors.fill: parent

        SettingsView {
            anchors.fill: parent
        }
    }
}
