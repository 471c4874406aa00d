import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// The rows of a rules list, in the stored order, on alternating backgrounds. A click opens the
// rule; the Delete key and the context menu's "Delete" remove the current row.
ListView {
    id: list

    // Each row's second line: its symbol, and the model role holding its text.
    property string detailSymbol
    property string detailRole

    signal ruleOpened(int row)
    signal rulesRemoved(var rows)
    signal enabledToggled(int row, bool isEnabled)

    Layout.fillWidth: true
    Layout.fillHeight: true
    Layout.margins: 10
    clip: true
    focus: true
    keyNavigationEnabled: true
    currentIndex: -1
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}

    Keys.onDeletePressed: {
        if (currentIndex >= 0)
            rulesRemoved([currentIndex])
    }

    Rectangle {
        parent: list
        anchors.fill: parent
        z: -1
        radius: 8
        color: "transparent"
        border.color: Style.separator
    }

    delegate: Rectangle {
        id: rowBackground

        required property int index
        required property var model

        width: ListView.view.width
        implicitHeight: ruleRow.implicitHeight + 12
        color: ListView.isCurrentItem && list.activeFocus
               ? Qt.rgba(Style.accent.r, Style.accent.g, Style.accent.b, 0.18)
               : index % 2 === 1 ? Qt.rgba(Style.text.r, Style.text.g, Style.text.b, 0.04) : "transparent"

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.LeftButton | Qt.RightButton
            onClicked: mouse => {
                list.currentIndex = rowBackground.index
                list.forceActiveFocus()
                if (mouse.button === Qt.RightButton)
                    contextMenu.popup()
                else
                    list.ruleOpened(rowBackground.index)
            }
        }
        RuleRow {
            id: ruleRow
            objectName: "RuleRow"
            anchors.fill: parent
            anchors.leftMargin: 12
            anchors.rightMargin: 12
            appName: rowBackground.model.appName
            detailSymbol: list.detailSymbol
            detailText: rowBackground.model[list.detailRole]
            isEnabled: rowBackground.model.isEnabled
            isConnected: rowBackground.model.isConnected
            launchOnConnect: rowBackground.model.launchOnConnect
            killOnDisconnect: rowBackground.model.killOnDisconnect
            onEnabledToggled: isEnabled => list.enabledToggled(rowBackground.index, isEnabled)
        }
        Menu {
            id: contextMenu

            MenuItem {
                objectName: "DeleteRuleMenuItem"
                text: "Delete"
                onTriggered: list.rulesRemoved([rowBackground.index])
            }
        }
    }
}
