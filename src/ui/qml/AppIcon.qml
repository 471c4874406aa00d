import QtQuick
import QtQuick.Layouts

// An application's icon by its theme name or file; the "app" symbol when it has none.
Image {
    property string iconName
    property int size: 24

    source: "image://appicon/" + encodeURIComponent(iconName)
    sourceSize: Qt.size(size, size)
    width: size
    height: size
    Layout.preferredWidth: size
    Layout.preferredHeight: size
    fillMode: Image.PreserveAspectFit
}
