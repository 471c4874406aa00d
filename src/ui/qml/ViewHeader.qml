import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// A tab's header row: title and subtitle on the left, `accessory` beside the title, and the
// trailing controls on the right.
RowLayout {
    property alias title: titleLabel.text
    property alias subtitle: subtitleLabel.text
    property alias accessory: accessoryRow.data
    default property alias trailing: trailingRow.data

    Layout.fillWidth: true
    Layout.margins: 16
    spacing: 12

    ColumnLayout {
        spacing: 2

        RowLayout {
            spacing: 10

            Label {
                id: titleLabel
                font.pointSize: Style.title2
                font.weight: Font.DemiBold
            }
            RowLayout {
                id: accessoryRow
            }
        }
        Label {
            id: subtitleLabel
            font.pointSize: Style.caption
            color: Style.secondaryText
        }
    }
    Item {
        Layout.fillWidth: true
    }
    RowLayout {
        id: trailingRow
    }
}
