import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// A switch with a caption below its title saying what it does.
ColumnLayout {
    id: toggle

    property alias text: control.text
    property alias help: helpLabel.text
    property alias checked: control.checked
    // The switch itself carries the identifier.
    property alias identifier: control.objectName

    signal toggled(bool checked)

    Layout.fillWidth: true
    spacing: 0

    Switch {
        id: control
        Layout.fillWidth: true
        Accessible.name: objectName
        onToggled: toggle.toggled(checked)
    }
    Label {
        id: helpLabel
        Layout.fillWidth: true
        Layout.leftMargin: control.indicator ? control.indicator.width + control.spacing + control.leftPadding : 0
        wrapMode: Text.Wrap
        font.pointSize: Style.caption
        color: Style.secondaryText
    }
}
