#pragma once

#include "model/DeviceAppBinding.h"
#include "model/USBDevice.h"
#include "platform/LoginItemRegistering.h"
#include "ui/GeneralSettings.h"
#include "ui/MenuBarCommands.h"
#include "ui/MenuBarContent.h"
#include "ui/WindowHost.h"

#include <QJsonArray>

class QQuickItem;
class QQuickWindow;

// A login item that records what it was asked and fails with `error` when that is set.
class FakeLoginItem : public LoginItemRegistering
{
public:
    std::optional<QString> update(bool launchAtLogin) override
    {
        requests.append(launchAtLogin);
        return error;
    }

    QList<bool> requests;
    std::optional<QString> error;
};

// The objects the windows see, over the shared application state, as the shell wires them.
struct TestShell
{
    TestShell();
    // The settings window showing the tab of this button ("RulesTabItem", ...); null if not shown.
    QQuickWindow* settings(const QString& tabItem);

    FakeLoginItem loginItem;
    int openSettingsCount = 0;
    MenuBarContent content;
    MenuBarCommands commands;
    GeneralSettings general;
    WindowHost host;
};

// Driving the QML windows: temporary XDG folders, sample records, shown items found by their
// identifier, clicks and typing, and the stored rule files.
namespace UITestSupport {

// Points HOME and the XDG folders at a new temporary folder; call before anything reads them.
void useTemporaryHome();
// No devices, rules or network, and monitoring off, so that no rule acts on this machine.
void clearState();

USBDevice device(qint64 vendorID, qint64 productID, const QString& vendor, const QString& product);
DeviceAppBinding rule(const QString& appName, const QString& deviceName, qint64 vendorID,
                      qint64 productID, bool isEnabled = true);

// Every shown item below `root` with this identifier, in tree order.
QList<QQuickItem*> items(QQuickItem* root, const QString& objectName);
QQuickItem* item(QQuickWindow* window, const QString& objectName);
// A shown item's "text", whether it is checked, whether it is enabled; empty or false if not shown.
QString text(QQuickWindow* window, const QString& objectName);
bool isOn(QQuickWindow* window, const QString& objectName);
bool isEnabled(QQuickWindow* window, const QString& objectName);
// The shown top-level window with this identifier ("AddRuleSheet", ...), waiting up to two
// seconds; null when none appears.
QQuickWindow* sheet(const QString& objectName);
bool sheetCloses(const QString& objectName);
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

} // namespace UITestSupport
