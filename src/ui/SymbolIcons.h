#pragma once

#include <QColor>
#include <QIcon>
#include <QStringList>

// The interface's symbols by their names ("gear", "wifi", "checkmark.circle.fill"): the icon
// theme's icon where the theme has one, else the bundled drawing.
namespace SymbolIcons {

// Theme names tried in order; empty for symbols that only the bundled set draws.
QStringList themeNames(const QString& symbol);
// ":/obrinta/icons/<symbol>.svg", or an empty string for a symbol without a bundled drawing.
QString bundledPath(const QString& symbol);

QIcon icon(const QString& symbol);
// `symbol` drawn at `size`, filled with `tint` when it is valid. Bundled drawings are always
// filled: with `tint`, else with `fallbackTint`.
QPixmap pixmap(const QString& symbol, QSize size, const QColor& tint,
               const QColor& fallbackTint = QColor());

// The icon of the application and of its tray entry.
QIcon applicationIcon();

} // namespace SymbolIcons
