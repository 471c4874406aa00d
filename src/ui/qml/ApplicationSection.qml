import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import "."

// The application step of an "add" sheet: search, "Browse..." and the installed applications.
NumberedSection {
    id: section

    property var picker
    // The file dialog is up: the sheet's Return and Escape are its.
    readonly property bool isBrowsing: fileDialog.visible

    number: 2
    title: "Select Application"

    Rectangle {
        Layout.fillWidth: true
        implicitHeight: searchRow.implicitHeight + 8
        radius: 6
        color: Style.palette.base
        border.color: Style.separator

        RowLayout {
            id: searchRow
            anchors.fill: parent
            anchors.leftMargin: 8
            anchors.rightMargin: 8
            spacing: 6

            Symbol {
                name: "magnifyingglass"
                tint: Style.secondaryText
                size: 14
            }
            TextField {
                objectName: "AppSearchField"
                Accessible.name: objectName
                Layout.fillWidth: true
                placeholderText: "Search applications..."
                background: null
                text: section.picker.searchText
                onTextEdited: section.picker.searchText = text
            }
        }
    }
    RowLayout {
        spacing: 8

        Label {
            text: "Or"
            font.pointSize: Style.caption
        }
        SymbolButton {
            objectName: "BrowseButton"
            Accessible.name: objectName
            text: "Browse..."
            symbol: "folder"
            onClicked: fileDialog.open()
        }
    }
    RowLayout {
        visible: section.picker.isLoadingApps
        spacing: 6

        BusyIndicator {
            running: parent.visible
            implicitWidth: 24
            implicitHeight: 24
            scale: 0.7
        }
        Label {
            text: "Loading applications..."
            font.pointSize: Style.caption
            color: Style.secondaryText
        }
    }
    Rectangle {
        visible: !section.picker.isLoadingApps
        Layout.fillWidth: true
        Layout.preferredHeight: 200
        radius: 6
        color: Qt.rgba(Style.text.r, Style.text.g, Style.text.b, 0.05 * 0.68)

        ListView {
            objectName: "ApplicationList"
            Accessible.name: objectName
            anchors.fill: parent
            anchors.margins: 4
            clip: true
            spacing: 4
            boundsBehavior: Flickable.StopAtBounds
            model: section.picker.filteredApps
            ScrollBar.vertical: ScrollBar {}

            delegate: AppSelectionRow {
                required property int index
                required property var model

                objectName: "AppSelectionRow"
                width: ListView.view.width - 8
                name: model.name
                appId: model.appId
                icon: model.icon
                isSelected: section.picker.hasSelectedApp && section.picker.selectedAppId === model.appId
                onTapped: section.picker.selectRow(index)
            }
        }
    }
    FileDialog {
        id: fileDialog
        objectName: "BrowseDialog"
        currentFolder: section.picker.browseFolder
        fileMode: FileDialog.OpenFile
        nameFilters: ["Applications (*.desktop)", "All files (*)"]
        onAccepted: section.picker.choose(selectedFile)
    }
}
