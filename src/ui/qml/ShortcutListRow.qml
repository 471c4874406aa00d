import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// One configured shortcut: its position and name, then move up, move down, test and remove.
RowLayout {
    id: row

    // The entry's position in its list, from 0, as the list's model gives it.
    required property int index
    property string shortcutName
    property int totalCount

    signal moveUp()
    signal moveDown()
    signal remove()
    signal test()

    spacing: 4

    Label {
        Layout.preferredWidth: 20
        text: (row.index + 1) + "."
        font.pointSize: Style.caption
        color: Style.secondaryText
    }
    Label {
        Layout.fillWidth: true
        text: row.shortcutName
        elide: Text.ElideRight
    }
    RowButton {
        objectName: "MoveUpButton"
        symbol: "chevron.up"
        enabled: row.index > 0
        onClicked: row.moveUp()
    }
    RowButton {
        objectName: "MoveDownButton"
        symbol: "chevron.down"
        enabled: row.index < row.totalCount - 1
        onClicked: row.moveDown()
    }
    RowButton {
        objectName: "TestShortcutButton"
        symbol: "play.circle"
        help: "Test this shortcut"
        onClicked: row.test()
    }
    RowButton {
        objectName: "RemoveShortcutButton"
        symbol: "xmark.circle.fill"
        help: "Remove shortcut"
        onClicked: row.remove()
    }
}
