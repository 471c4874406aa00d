import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// One connected device to choose for a new rule.
ChoiceRow {
    id: choice

    property string displayName
    property string detail

    SelectionMark {
        isSelected: choice.isSelected
    }
    Symbol {
        name: "cable.connector.horizontal"
        tint: Style.secondaryText
    }
    ColumnLayout {
        Layout.fillWidth: true
        spacing: 1

        Label {
            Layout.fillWidth: true
            text: choice.displayName
            elide: Text.ElideRight
        }
        Label {
            Layout.fillWidth: true
            text: choice.detail
            font.pointSize: Style.caption
            color: Style.secondaryText
            elide: Text.ElideRight
        }
    }
}
