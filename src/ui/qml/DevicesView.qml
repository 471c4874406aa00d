import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Obrinta.Rules
import "."

// The "Devices" tab: the USB devices connected now, with a rescan. After a scan request the scan
// buttons rest for half a second, so a second press in that time does nothing.
ColumnLayout {
    id: view

    property bool isRefreshing: false

    function scan() {
        if (isRefreshing)
            return
        isRefreshing = true
        devices.scan()
        refreshReset.start()
    }

    spacing: 0

    DeviceListModel {
        id: devices
    }
    Timer {
        id: refreshReset
        interval: 500
        onTriggered: view.isRefreshing = false
    }

    ViewHeader {
        title: "Connected USB Devices"
        subtitle: "Devices currently connected to this computer"

        SymbolButton {
            objectName: "RefreshDevicesButton"
            Accessible.name: objectName
            text: "Refresh"
            symbol: "arrow.clockwise"
            enabled: !view.isRefreshing
            onClicked: view.scan()
        }
    }
    Divider {}
    EmptyState {
        objectName: "DevicesEmptyState"
        Accessible.name: objectName
        visible: devices.count === 0
        symbol: "cable.connector"
        title: "No USB Devices Detected"
        titleIdentifier: "NoDevicesText"
        message: "Connect a USB device to see it here.\nInternal devices and USB hubs are filtered out."
        buttonText: "Scan for Devices"
        buttonSymbol: "arrow.clockwise"
        buttonIdentifier: "ScanDevicesButton"
        buttonEnabled: !view.isRefreshing
        onActivated: view.scan()
    }
    ListView {
        id: deviceList
        objectName: "DevicesList"
        Accessible.name: objectName
        visible: devices.count > 0
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.margins: 10
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: devices
        ScrollBar.vertical: ScrollBar {}

        Rectangle {
            parent: deviceList
            anchors.fill: parent
            z: -1
            radius: 8
            color: "transparent"
            border.color: Style.separator
        }

        delegate: Rectangle {
            required property int index
            required property var model

            width: ListView.view.width
            implicitHeight: deviceRow.implicitHeight + 8
            color: index % 2 === 1 ? Qt.rgba(Style.text.r, Style.text.g, Style.text.b, 0.04) : "transparent"

            DeviceRow {
                id: deviceRow
                objectName: "DeviceRow"
                anchors.fill: parent
                anchors.leftMargin: 12
                anchors.rightMargin: 12
                displayName: parent.model.displayName
                vendorText: parent.model.vendorText
                symbol: parent.model.symbol
                idsText: parent.model.idsText
                serialText: parent.model.serialText
            }
        }
    }
}
