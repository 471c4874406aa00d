#pragma once

#include <QJsonArray>
#include <QList>
#include <QString>

class QQuickItem;
class QQuickWindow;

// Helpers for driving the rule tabs and rule sheets: sheets are windows of their own, list rows
// share one identifier, and what a sheet saves is checked in the stored rule files.
namespace RulesTestSupport {

// The shown top-level window with this identifier ("AddRuleSheet", ...), waiting for it up to
// two seconds; null when none appears.
QQuickWindow* sheet(const QString& objectName);
// Whether no window with this identifier is shown, waiting up to two seconds.
bool sheetCloses(const QString& objectName);

// Every visible item below `root` with this identifier, in tree order.
QList<QQuickItem*> items(QQuickItem* root, const QString& objectName);
QQuickItem* item(QQuickWindow* window, const QString& objectName);
// Scrolls the nearest scrolling ancestor of `target` so that the item is inside its view.
void scrollIntoView(QQuickItem* target);
// Clicks the middle of `target`, scrolled into view; false when it is not shown or not enabled.
bool click(QQuickItem* target, Qt::MouseButton button = Qt::LeftButton);
bool click(QQuickWindow* window, const QString& objectName);
void typeInto(QQuickItem* field, const QString& text);

// The rules stored in "bindings.json" or "wifi-bindings.json".
QJsonArray storedRules(const QString& fileName);

// A desktop entry in $XDG_DATA_HOME/applications; returns its path.
QString writeDesktopEntry(const QString& id, const QString& name,
                          const QString& exec = QStringLiteral("/bin/true"));
// An executable script in the user's shortcuts folder; `body` is shell.
void writeShortcut(const QString& name, const QString& body = QStringLiteral("exit 0"));

} // namespace RulesTestSupport
