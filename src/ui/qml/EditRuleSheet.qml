import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "."

// What the two "edit" sheets share: the link overview, the watched device or network (given as
// `subject`), the application, the behaviour with the force-quit time-out, the shortcuts, the
// manual launch and quit, and deleting the rule after a confirmation.
SheetWindow {
    id: sheet

    property var editor
    property alias subject: subjectSection.content
    property alias subjectTitle: subjectSection.title
    property string subjectSymbol
    property string subjectCaption
    property bool isSubjectConnected
    property string subjectConnectedText: "Connected"
    property string subjectDisconnectedText
    property string launchText
    property string launchHelp
    property string quitText
    property string quitHelp

    width: 450
    height: 700
    primaryText: "Save Changes"
    primaryIdentifier: "SaveChangesButton"
    keysEnabled: !deleteConfirmation.visible
    onAccepted: {
        editor.save()
        dismiss()
    }
    onActiveChanged: {
        if (active)
            editor.refreshRunningState()
    }

    SheetScrollView {
        RowLayout {
            Layout.fillWidth: true
            spacing: 10

            LinkCard {
                objectName: "SubjectCard"
                symbol: sheet.subjectSymbol
                caption: sheet.subjectCaption
                isActive: sheet.isSubjectConnected
                activeText: sheet.subjectConnectedText
                inactiveText: sheet.subjectDisconnectedText
            }
            Symbol {
                name: "arrow.right"
                tint: Style.secondaryText
            }
            LinkCard {
                objectName: "ApplicationCard"
                symbol: "app"
                caption: "Application"
                isActive: sheet.editor.isAppRunning
                activeText: "Running"
                inactiveText: "Stopped"
            }
        }
        HeadlineSection {
            id: subjectSection
        }
        HeadlineSection {
            title: "Application"

            RowLayout {
                spacing: 10

                AppIcon {
                    iconName: sheet.editor.appIcon
                    size: 32
                }
                ColumnLayout {
                    spacing: 1

                    Label {
                        text: sheet.editor.appName
                        font.weight: Font.Medium
                    }
                    Label {
                        text: sheet.editor.appBundleIdentifier
                        font.pointSize: Style.caption
                        color: Style.secondaryText
                    }
                }
            }
        }
        HeadlineSection {
            title: "Behavior"

            BehaviorToggle {
                identifier: "RuleEnabledToggle"
                text: "Rule Enabled"
                help: "Turn off to temporarily disable this rule"
                checked: sheet.editor.isEnabled
                onToggled: checked => sheet.editor.isEnabled = checked
            }
            BehaviorToggle {
                identifier: "LaunchOnConnectToggle"
                text: sheet.launchText
                help: sheet.launchHelp
                checked: sheet.editor.launchOnConnect
                onToggled: checked => sheet.editor.launchOnConnect = checked
            }
            BehaviorToggle {
                identifier: "QuitOnDisconnectToggle"
                text: sheet.quitText
                help: sheet.quitHelp
                checked: sheet.editor.killOnDisconnect
                onToggled: checked => sheet.editor.killOnDisconnect = checked
            }
            BehaviorToggle {
                identifier: "ForceQuitToggle"
                text: "Allow force quit"
                help: "Force quit the app if it doesn't respond to a graceful quit request"
                checked: sheet.editor.forceQuitAllowed
                onToggled: checked => sheet.editor.forceQuitAllowed = checked
            }
            ColumnLayout {
                objectName: "ForceQuitTimeoutBlock"
                visible: sheet.editor.forceQuitAllowed
                Layout.fillWidth: true
                spacing: 2

                RowLayout {
                    Layout.fillWidth: true

                    Label {
                        text: "Force quit timeout"
                    }
                    Item {
                        Layout.fillWidth: true
                    }
                    Label {
                        objectName: "ForceQuitTimeoutText"
                        text: sheet.editor.timeoutText
                        font.family: "monospace"
                        color: Style.secondaryText
                    }
                }
                RowLayout {
                    Layout.fillWidth: true

                    Label {
                        text: "0.5s"
                        font.pointSize: Style.caption
                        color: Style.secondaryText
                    }
                    Slider {
                        objectName: "ForceQuitTimeoutSlider"
                        Accessible.name: "Force Quit Timeout"
                        Layout.fillWidth: true
                        from: 0.5
                        to: 10.0
                        stepSize: 0.5
                        snapMode: Slider.SnapAlways
                        value: sheet.editor.forceQuitTimeout
                        // Steps of half a second, whatever the value was before the move.
                        onMoved: sheet.editor.forceQuitTimeout = Math.round(value * 2) / 2
                    }
                    Label {
                        text: "10s"
                        font.pointSize: Style.caption
                        color: Style.secondaryText
                    }
                }
                Label {
                    text: "How long to wait before forcing the app to quit"
                    font.pointSize: Style.caption
                    color: Style.secondaryText
                }
            }
        }
        HeadlineSection {
            title: "Shortcuts"

            ShortcutConfigurationView {
                editor: sheet.editor.shortcuts
            }
        }
        HeadlineSection {
            title: "Manual Actions"

            RowLayout {
                spacing: 10

                SymbolButton {
                    objectName: "LaunchAppButton"
                    Accessible.name: objectName
                    text: "Launch App"
                    symbol: "play.fill"
                    enabled: !sheet.editor.isAppRunning
                    onClicked: sheet.editor.launchApp()
                }
                SymbolButton {
                    objectName: "QuitAppButton"
                    Accessible.name: objectName
                    text: "Quit App"
                    symbol: "stop.fill"
                    enabled: sheet.editor.isAppRunning
                    onClicked: sheet.editor.quitApp()
                }
            }
        }
        HeadlineSection {
            title: "Danger Zone"

            SymbolButton {
                objectName: "DeleteRuleButton"
                Accessible.name: objectName
                text: "Delete Rule"
                symbol: "trash"
                palette.buttonText: "#ff3b30"
                icon.color: "#ff3b30"
                onClicked: deleteConfirmation.open()
            }
        }
    }

    Dialog {
        id: deleteConfirmation
        objectName: "DeleteConfirmation"
        parent: Overlay.overlay
        anchors.centerIn: parent
        width: Math.min(parent.width - 60, 340)
        modal: true
        title: "Delete Rule?"

        contentItem: Label {
            objectName: "DeleteConfirmationMessage"
            wrapMode: Text.Wrap
            text: sheet.editor.deleteMessage
        }
        footer: DialogButtonBox {
            Button {
                objectName: "CancelDeleteButton"
                Accessible.name: objectName
                text: "Cancel"
                DialogButtonBox.buttonRole: DialogButtonBox.RejectRole
            }
            Button {
                objectName: "ConfirmDeleteButton"
                Accessible.name: objectName
                text: "Delete"
                palette.buttonText: "#ff3b30"
                DialogButtonBox.buttonRole: DialogButtonBox.DestructiveRole
                onClicked: {
                    deleteConfirmation.close()
                    sheet.editor.deleteRule()
                    sheet.dismiss()
                }
            }
        }
    }
}
