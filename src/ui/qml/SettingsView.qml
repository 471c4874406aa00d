import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// The four tabs; the first one is shown when the window opens.
ColumnLayout {
    objectName: "SettingsTabView"
    Accessible.name: "SettingsTabView"
    spacing: 0

    TabBar {
        id: tabBar
        Layout.fillWidth: true

        TabButton {
            objectName: "RulesTabItem"
            Accessible.name: "RulesTabItem"
            text: "USB Rules"
            icon.source: "image://symbol/link"
        }
        TabButton {
            objectName: "WiFiRulesTabItem"
            Accessible.name: "WiFiRulesTabItem"
            text: "WiFi Rules"
            icon.source: "image://symbol/wifi"
        }
        TabButton {
            objectName: "DevicesTabItem"
            Accessible.name: "DevicesTabItem"
            text: "Devices"
            icon.source: "image://symbol/cable.connector"
        }
        TabButton {
            objectName: "GeneralTabItem"
            Accessible.name: "GeneralTabItem"
            text: "General"
            icon.source: "image://symbol/gear"
        }
    }

    StackLayout {
        Layout.fillWidth: true
        Layout.fillHeight: true
        currentIndex: tabBar.currentIndex

        RulesView {
            objectName: "RulesTab"
            Accessible.name: "RulesTab"
        }
        WiFiRulesView {
            objectName: "WiFiRulesTab"
            Accessible.name: "WiFiRulesTab"
        }
        DevicesView {
            objectName: "DevicesTab"
            Accessible.name: "DevicesTab"
        }
        GeneralSettingsView {
            objectName: "GeneralTab"
            Accessible.name: "GeneralTab"
        }
    }
}
