import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Obrinta.Rules
import "."

// The "WiFi Rules" tab; beside its title, the network joined now.
RuleListTab {
    CurrentWiFiNetwork {
        id: network
    }

    title: "WiFi → App Rules"
    subtitle: "Configure which applications start and stop based on WiFi network"
    addButtonIdentifier: "AddWiFiRuleButton"
    detailSymbol: "wifi"
    detailRole: "ssid"
    rules: WiFiBindingListModel {}
    addSheet: Component { AddWiFiRuleView {} }
    editSheet: Component { EditWiFiRuleView {} }
    headerAccessory: Label {
        objectName: "CurrentNetworkChip"
        visible: network.isConnected
        text: network.ssid
        font.pointSize: Style.caption
        color: Style.secondaryText
        leftPadding: 8 + 16
        rightPadding: 8
        topPadding: 4
        bottomPadding: 4
        background: Rectangle {
            radius: 6
            color: Qt.rgba(0.2, 0.78, 0.35, 0.1)

            Symbol {
                anchors.left: parent.left
                anchors.leftMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                name: "wifi"
                tint: Style.green
                size: 12
            }
        }
    }

    emptyState.objectName: "WiFiRulesEmptyState"
    emptyState.symbol: "wifi"
    emptyState.title: "No WiFi Rules Configured"
    emptyState.titleIdentifier: "NoWiFiRulesConfiguredText"
    emptyState.message: "Add a rule to automatically start or stop\napplications based on your WiFi network."
    emptyState.buttonText: "Add Your First WiFi Rule"
    emptyState.buttonIdentifier: "AddFirstWiFiRuleButton"
}
