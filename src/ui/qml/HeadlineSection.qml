import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// One section of an "edit" sheet: a headline title over its controls.
ColumnLayout {
    property alias title: titleLabel.text
    default property alias content: body.data

    Layout.fillWidth: true
    spacing: 8

    Label {
        id: titleLabel
        font.pointSize: Style.headline
        font.weight: Font.DemiBold
    }
    ColumnLayout {
        id: body
        Layout.fillWidth: true
        spacing: 8
    }
}
