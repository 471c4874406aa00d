import QtQuick
import Obrinta.Rules
import "."

// The "USB Rules" tab.
RuleListTab {
    title: "Device → App Rules"
    subtitle: "Configure which applications start and stop based on USB devices"
    addButtonIdentifier: "AddRuleButton"
    listIdentifier: "RulesList"
    detailSymbol: "cable.connector.horizontal"
    detailRole: "deviceName"
    rules: BindingListModel {}
    addSheet: Component { AddRuleView {} }
    editSheet: Component { EditRuleView {} }

    emptyState.objectName: "RulesEmptyState"
    emptyState.symbol: "link.badge.plus"
    emptyState.title: "No Rules Configured"
    emptyState.titleIdentifier: "NoRulesConfiguredText"
    emptyState.message: "Add a rule to automatically start or stop\napplications based on connected USB devices."
    emptyState.buttonText: "Add Your First Rule"
    emptyState.buttonIdentifier: "AddFirstRuleButton"
}
