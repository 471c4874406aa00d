pragma Singleton
import QtQuick

// Text sizes and colours shared by every window, in the order title2 > headline > subheadline >
// caption > caption2.
QtObject {
    readonly property SystemPalette palette: SystemPalette { colorGroup: SystemPalette.Active }
    readonly property real baseSize: Qt.application.font.pointSize > 0 ? Qt.application.font.pointSize : 10

    readonly property real title2: baseSize * 1.45
    readonly property real title3: baseSize * 1.25
    readonly property real headline: baseSize * 1.05
    readonly property real subheadline: baseSize * 0.95
    readonly property real caption: baseSize * 0.9
    readonly property real caption2: baseSize * 0.82

    readonly property color text: palette.windowText
    readonly property color secondaryText: Qt.rgba(text.r, text.g, text.b, 0.68)
    readonly property color tertiaryText: Qt.rgba(text.r, text.g, text.b, 0.48)
    readonly property color separator: Qt.rgba(text.r, text.g, text.b, 0.15)
    readonly property color accent: palette.highlight
    readonly property color green: "#34c759"
    readonly property color orange: "#ff9500"
    readonly property color grey: "#8e8e93"
}
