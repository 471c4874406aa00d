import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// One numbered step of an "add" sheet: "<n>.circle.fill" and the title, then the step's controls.
ColumnLayout {
    id: section

    property int number
    property alias title: titleLabel.text
    default property alias content: body.data

    Layout.fillWidth: true
    spacing: 10

    RowLayout {
        spacing: 6

        Symbol {
            name: section.number + ".circle.fill"
            tint: Style.accent
            size: 16
        }
        Label {
            id: titleLabel
            font.pointSize: Style.headline
            font.weight: Font.DemiBold
        }
    }
    ColumnLayout {
        id: body
        Layout.fillWidth: true
        spacing: 6
    }
}
