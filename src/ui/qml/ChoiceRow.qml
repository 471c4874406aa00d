import QtQuick
import QtQuick.Layouts
import "."

// A tappable choice with 8 points of padding on a rounded background: the accent colour with an
// accent outline when chosen, else a faint grey.
Rectangle {
    id: choice

    property bool isSelected
    default property alias content: row.data

    signal tapped()

    Layout.fillWidth: true
    implicitHeight: row.implicitHeight + 16
    radius: 6
    color: isSelected ? Qt.rgba(Style.accent.r, Style.accent.g, Style.accent.b, 0.1)
                      : Qt.rgba(Style.text.r, Style.text.g, Style.text.b, 0.05 * 0.68)
    border.width: isSelected ? 1 : 0
    border.color: Style.accent

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.margins: 8
        spacing: 8
    }
    MouseArea {
        anchors.fill: parent
        onClicked: choice.tapped()
    }
}
