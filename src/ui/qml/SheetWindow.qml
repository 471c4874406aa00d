import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtQuick.Window
import "."

// A sheet over the settings window: a fixed-size modal window with a header (title and close
// button), the content, and a footer with "Cancel" (Escape) and the primary button (Return).
// Closing it in any way but the primary action keeps nothing.
Window {
    id: sheet

    property alias heading: headingLabel.text
    property alias primaryText: primaryButton.text
    property alias primaryIdentifier: primaryButton.objectName
    property bool primaryEnabled: true
    // False while an alert of the sheet is up, so that its keys reach the alert.
    property bool keysEnabled: true
    default property alias content: body.data

    // The primary button was pressed while enabled; the sheet decides whether to close.
    signal accepted()

    function dismiss() {
        close()
    }

    modality: Qt.WindowModal
    flags: Qt.Dialog
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    color: Style.palette.window

    // The window underneath takes the keys again, on desktops that do not pass them back.
    onVisibleChanged: {
        if (!visible && transientParent)
            transientParent.requestActivate()
    }
    Connections {
        target: sheet.transientParent
        function onVisibleChanged() {
            if (sheet.transientParent && !sheet.transientParent.visible)
                sheet.dismiss()
        }
    }
    Shortcut {
        sequence: "Escape"
        enabled: sheet.keysEnabled
        onActivated: sheet.dismiss()
    }
    Shortcut {
        sequences: ["Return", "Enter"]
        enabled: sheet.keysEnabled && sheet.primaryEnabled
        onActivated: sheet.accepted()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0
        // Assistive tools name a window by its title; the sheet's identifier goes on its content.
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.objectName

        RowLayout {
            Layout.fillWidth: true
            Layout.margins: 16

            Label {
                id: headingLabel
                font.pointSize: Style.title2
                font.weight: Font.DemiBold
            }
            Item {
                Layout.fillWidth: true
            }
            ToolButton {
                objectName: "CloseSheetButton"
                Accessible.name: "Close"
                flat: true
                icon.source: "image://symbol/xmark.circle.fill"
                icon.color: Style.secondaryText
                icon.width: 18
                icon.height: 18
                onClicked: sheet.dismiss()
            }
        }
        Divider {}
        ColumnLayout {
            id: body
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: 0
        }
        Divider {}
        RowLayout {
            Layout.fillWidth: true
            Layout.margins: 16
            spacing: 8

            Item {
                Layout.fillWidth: true
            }
            Button {
                objectName: "CancelButton"
                Accessible.name: objectName
                text: "Cancel"
                onClicked: sheet.dismiss()
            }
            Button {
                id: primaryButton
                Accessible.name: objectName
                highlighted: true
                enabled: sheet.primaryEnabled
                onClicked: sheet.accepted()
            }
        }
    }
}
