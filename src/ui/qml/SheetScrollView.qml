import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// The scrolling middle of a sheet: its sections stacked, 20 points from every edge.
ScrollView {
    id: scroll

    default property alias content: column.data

    Layout.fillWidth: true
    Layout.fillHeight: true
    Accessible.name: objectName
    contentWidth: availableWidth
    contentHeight: column.implicitHeight + 40
    clip: true

    ColumnLayout {
        id: column
        x: 20
        y: 20
        width: scroll.availableWidth - 40
        spacing: 20
    }
}
