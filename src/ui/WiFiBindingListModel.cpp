#include "WiFiBindingListModel.h"

#include "model/AppState.h"

WiFiBindingListModel::WiFiBindingListModel(QObject* parent)
    : RecordListModel({"key", "appName", "ssid", "isEnabled", "launchOnConnect", "killOnDisconnect",
                       "isConnected"},
                      parent)
{
    AppState& state = AppState::shared();
    connect(&state, &AppState::wifiBindingsChanged, this, &WiFiBindingListModel::reload);
    connect(&state, &AppState::currentWiFiNetworkChanged, this, &WiFiBindingListModel::reload);
    reload();
}

void WiFiBindingListModel::reload()
{
    const AppState& state = AppState::shared();
    const std::optional<WiFiNetwork>& network = state.currentWiFiNetwork();
    QList<QVariantMap> rows;
    for (const WiFiAppBinding& rule : state.wifiBindings()) {
        rows.append({{QStringLiteral("key"), rule.id.toString(QUuid::WithoutBraces)},
                     {QStringLiteral("appName"), rule.appName},
                     {QStringLiteral("ssid"), rule.ssid},
                     {QStringLiteral("isEnabled"), rule.isEnabled},
                     {QStringLiteral("launchOnConnect"), rule.launchOnConnect},
                     {QStringLiteral("killOnDisconnect"), rule.killOnDisconnect},
                     {QStringLiteral("isConnected"), network && network->ssid == rule.ssid}});
    }
    setRows(rows);
}

void WiFiBindingListModel::setEnabled(int row, bool isEnabled)
{
    AppState& state = AppState::shared();
    if (row < 0 || row >= state.wifiBindings().size())
        return;
    WiFiAppBinding copy = state.wifiBindings().at(row);
    copy.isEnabled = isEnabled;
    state.updateWiFiBinding(copy);
}

void WiFiBindingListModel::removeRows(const QVariantList& rows)
{
    AppState& state = AppState::shared();
    const QSet<int> offsets = positions(rows, state.wifiBindings().size());
    if (!offsets.isEmpty())
        state.removeWiFiBindings(offsets);
}
