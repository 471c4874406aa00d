import QtQuick
import QtQuick.Layouts
import "."

Rectangle {
    Layout.fillWidth: true
    implicitHeight: 1
    color: Style.separator
}
