import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtQuick.Window
import "."

// A rules tab: header with the add button, then the rules or the empty state. The add sheet is
// shown while `showingAddRule`; the edit sheet for `selectedBinding` (a rule id) while it is set.
// Closing a sheet resets what showed it.
ColumnLayout {
    id: tab

    property var rules
    property alias title: header.title
    property alias subtitle: header.subtitle
    property alias headerAccessory: header.accessory
    property string addButtonIdentifier
    property string listIdentifier
    property string detailSymbol
    property string detailRole
    property alias emptyState: emptyState
    property Component addSheet
    property Component editSheet

    property bool showingAddRule: false
    property string selectedBinding: ""
    property var sheet: null

    function present(component, properties) {
        if (sheet)
            return
        properties.transientParent = tab.Window.window
        sheet = component.createObject(tab, properties)
        sheet.visibleChanged.connect(() => {
            if (!sheet || sheet.visible)
                return
            showingAddRule = false
            selectedBinding = ""
            const closed = sheet
            sheet = null
            closed.destroy()
        })
        sheet.show()
        sheet.requestActivate()
    }
    function showAddRule() {
        showingAddRule = true
        present(addSheet, {})
    }
    function showEditRule(row) {
        selectedBinding = rules.value(row, "key")
        present(editSheet, { ruleId: selectedBinding })
    }

    spacing: 0

    ViewHeader {
        id: header

        SymbolButton {
            objectName: tab.addButtonIdentifier
            Accessible.name: objectName
            text: "Add Rule"
            symbol: "plus"
            prominent: true
            onClicked: tab.showAddRule()
        }
    }
    Divider {}
    EmptyState {
        id: emptyState
        visible: tab.rules.count === 0
        Accessible.name: objectName
        buttonSymbol: "plus"
        onActivated: tab.showAddRule()
    }
    RuleList {
        objectName: tab.listIdentifier
        Accessible.name: objectName
        visible: tab.rules.count > 0
        model: tab.rules
        detailSymbol: tab.detailSymbol
        detailRole: tab.detailRole
        onRuleOpened: row => tab.showEditRule(row)
        onRulesRemoved: rows => tab.rules.removeRows(rows)
        onEnabledToggled: (row, isEnabled) => tab.rules.setEnabled(row, isEnabled)
    }
}
