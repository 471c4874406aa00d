#pragma once

#include "model/DeviceAppBinding.h"
#include "model/USBDevice.h"
#include "platform/LoginItemRegistering.h"
#include "ui/GeneralSettings.h"
#include "ui/MenuBarCommands.h"
#include "ui/MenuBarContent.h"
#include "ui/WindowHost.h"

#include <QList>
#include <QString>

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

    FakeLoginItem loginItem;
    int openSettingsCount = 0;
    MenuBarContent content;
    MenuBarCommands commands;
    GeneralSettings general;
    WindowHost host;
};

// Helpers for driving the QML windows: temporary XDG folders, sample records, finding items by
// their identifier and clicking them.
namespace UITestSupport {

// Points HOME and the XDG folders at a new temporary folder; call before anything reads them.
void useTemporaryHome();

USBDevice device(qint64 vendorID, qint64 productID, const QString& vendor, const QString& product);
DeviceAppBinding rule(const QString& appName, const QString& deviceName, qint64 vendorID,
                      qint64 productID, bool isEnabled = true);

QQuickItem* item(QQuickWindow* window, const QString& objectName);
// Clicks the middle of the item; false when it is not shown.
bool click(QQuickWindow* window, const QString& objectName);

} // namespace UITestSupport
