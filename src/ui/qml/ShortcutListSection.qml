import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// One of the two shortcut lists: its rows, then a menu of the shortcuts not in it yet.
ColumnLayout {
    id: section

    property string title
    property string subtitle
    property string systemImage
    property color accentColor
    property var editor
    property int listSection
    property var shortcuts: []
    property var offered: []

    readonly property string selectedShortcutToAdd: picker.currentIndex > 0 ? picker.currentText : ""

    Layout.fillWidth: true
    spacing: 6

    ColumnLayout {
        spacing: 1

        RowLayout {
            spacing: 5

            Symbol {
                name: section.systemImage
                tint: section.accentColor
                size: 13
            }
            Label {
                text: section.title
                font.pointSize: Style.subheadline
                font.weight: Font.Medium
            }
        }
        Label {
            text: section.subtitle
            font.pointSize: Style.caption
            color: Style.secondaryText
        }
    }
    Label {
        visible: section.shortcuts.length === 0
        text: "No shortcuts configured"
        font.pointSize: Style.caption
        font.italic: true
        color: Style.secondaryText
    }
    Rectangle {
        visible: section.shortcuts.length > 0
        Layout.fillWidth: true
        implicitHeight: rows.implicitHeight + 8
        radius: 6
        color: Qt.rgba(Style.text.r, Style.text.g, Style.text.b, 0.05)

        ColumnLayout {
            id: rows
            anchors.fill: parent
            anchors.margins: 4
            spacing: 0

            Repeater {
                model: section.shortcuts

                ShortcutListRow {
                    required property string modelData

                    objectName: "ShortcutRow"
                    Layout.fillWidth: true
                    shortcutName: modelData
                    totalCount: section.shortcuts.length
                    onMoveUp: section.editor.moveUp(section.listSection, index)
                    onMoveDown: section.editor.moveDown(section.listSection, index)
                    onRemove: section.editor.remove(section.listSection, index)
                    onTest: section.editor.test(shortcutName)
                }
            }
        }
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: 6

        BusyIndicator {
            visible: section.editor.isLoadingShortcuts
            running: visible
            implicitWidth: 24
            implicitHeight: 24
            scale: 0.7
        }
        Label {
            visible: section.editor.isLoadingShortcuts
            text: "Loading shortcuts..."
            font.pointSize: Style.caption
            color: Style.secondaryText
        }
        Label {
            visible: !section.editor.isLoadingShortcuts && section.editor.availableShortcuts.length === 0
            Layout.fillWidth: true
            wrapMode: Text.Wrap
            text: "No shortcuts found. Add executable scripts to the shortcuts folder."
            font.pointSize: Style.caption
            color: Style.secondaryText
        }
        ComboBox {
            id: picker
            objectName: "ShortcutPicker"
            Accessible.name: "Add shortcut"
            visible: !section.editor.isLoadingShortcuts && section.editor.availableShortcuts.length > 0
            Layout.fillWidth: true
            model: ["Add a shortcut..."].concat(section.offered)
        }
        RowButton {
            objectName: "AddShortcutButton"
            visible: picker.visible
            symbol: "plus.circle.fill"
            enabled: section.selectedShortcutToAdd !== ""
            onClicked: {
                section.editor.add(section.listSection, section.selectedShortcutToAdd)
                picker.currentIndex = 0
            }
        }
        Item {
            visible: section.editor.isLoadingShortcuts
            Layout.fillWidth: true
        }
        RowButton {
            objectName: "RefreshShortcutsButton"
            symbol: "arrow.clockwise"
            help: "Refresh shortcuts list"
            onClicked: section.editor.refresh()
        }
    }
}
