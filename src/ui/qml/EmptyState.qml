import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// What a list shows instead of its rows when it has none: a large symbol, a title, a text and
// one button, centred in the space left.
Item {
    id: state

    property string symbol
    property alias title: titleLabel.text
    property alias titleIdentifier: titleLabel.objectName
    property alias message: messageLabel.text
    property alias buttonText: button.text
    property alias buttonSymbol: button.symbol
    property alias buttonIdentifier: button.objectName
    property alias buttonEnabled: button.enabled

    signal activated()

    Layout.fillWidth: true
    Layout.fillHeight: true

    ColumnLayout {
        anchors.centerIn: parent
        spacing: 12

        Symbol {
            Layout.alignment: Qt.AlignHCenter
            name: state.symbol
            tint: Style.secondaryText
            size: 48
        }
        Label {
            id: titleLabel
            Layout.alignment: Qt.AlignHCenter
            Accessible.name: objectName
            font.pointSize: Style.title3
            font.weight: Font.Medium
        }
        Label {
            id: messageLabel
            Layout.alignment: Qt.AlignHCenter
            horizontalAlignment: Text.AlignHCenter
            font.pointSize: Style.caption
            color: Style.secondaryText
        }
        SymbolButton {
            id: button
            Layout.alignment: Qt.AlignHCenter
            Accessible.name: objectName
            prominent: true
            onClicked: state.activated()
        }
    }
}
