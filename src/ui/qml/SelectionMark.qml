import "."

// A choice row's mark: a filled check in the accent colour when chosen, else an empty circle.
Symbol {
    property bool isSelected

    name: isSelected ? "checkmark.circle.fill" : "circle"
    tint: isSelected ? Style.accent : Style.secondaryText
    size: 16
}
