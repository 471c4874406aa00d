import QtQuick

// One of the interface's symbols ("gear", "wifi", ...), drawn in `tint` when it is set.
Image {
    property string name
    property color tint: "transparent"
    property int size: 16

    source: name === "" ? "" : "image://symbol/" + name + (tint.a > 0 ? "/" + tint.toString().slice(-6) : "")
    sourceSize: Qt.size(size, size)
    width: size
    height: size
    fillMode: Image.PreserveAspectFit
}
