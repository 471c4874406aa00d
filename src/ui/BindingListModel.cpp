#include "BindingListModel.h"

#include "model/AppState.h"

#include <algorithm>

BindingListModel::BindingListModel(QObject* parent)
    : RecordListModel({"key", "appName", "deviceName", "isEnabled", "launchOnConnect",
                       "killOnDisconnect", "isConnected"},
                      parent)
{
    AppState& state = AppState::shared();
    connect(&state, &AppState::bindingsChanged, this, &BindingListModel::reload);
    connect(&state, &AppState::connectedDevicesChanged, this, &BindingListModel::reload);
    reload();
}

void BindingListModel::reload()
{
    const AppState& state = AppState::shared();
    const QList<USBDevice>& devices = state.connectedDevices();
    QList<QVariantMap> rows;
    for (const DeviceAppBinding& rule : state.bindings()) {
        const bool isConnected =
            std::any_of(devices.cbegin(), devices.cend(), [&rule](const USBDevice& device) {
                return device.vendorID == rule.deviceVendorID &&
                       device.productID == rule.deviceProductID;
            });
        rows.append({{QStringLiteral("key"), rule.id.toString(QUuid::WithoutBraces)},
                     {QStringLiteral("appName"), rule.appName},
                     {QStringLiteral("deviceName"), rule.deviceName},
                     {QStringLiteral("isEnabled"), rule.isEnabled},
                     {QStringLiteral("launchOnConnect"), rule.launchOnConnect},
                     {QStringLiteral("killOnDisconnect"), rule.killOnDisconnect},
                     {QStringLiteral("isConnected"), isConnected}});
    }
    setRows(rows);
}

void BindingListModel::setEnabled(int row, bool isEnabled)
{
    AppState& state = AppState::shared();
    if (row < 0 || row >= state.bindings().size())
        return;
    DeviceAppBinding copy = state.bindings().at(row);
    copy.isEnabled = isEnabled;
    state.updateBinding(copy);
}

void BindingListModel::removeRows(const QVariantList& rows)
{
    AppState& state = AppState::shared();
    const QSet<int> offsets = positions(rows, state.bindings().size());
    if (!offsets.isEmpty())
        state.removeBindings(offsets);
}
