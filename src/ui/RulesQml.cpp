#include "RulesQml.h"

#include "AddRuleEditor.h"
#include "AddWiFiRuleEditor.h"
#include "ApplicationIconProvider.h"
#include "BindingListModel.h"
#include "CurrentWiFiNetwork.h"
#include "DeviceListModel.h"
#include "EditRuleEditor.h"
#include "EditWiFiRuleEditor.h"
#include "WiFiBindingListModel.h"

#include <QGuiApplication>
#include <QPalette>
#include <QQmlEngine>

namespace RulesQml {

namespace {

void registerTypes()
{
    const char* uri = "Obrinta.Rules";
    qmlRegisterType<BindingListModel>(uri, 1, 0, "BindingListModel");
    qmlRegisterType<WiFiBindingListModel>(uri, 1, 0, "WiFiBindingListModel");
    qmlRegisterType<DeviceListModel>(uri, 1, 0, "DeviceListModel");
    qmlRegisterType<CurrentWiFiNetwork>(uri, 1, 0, "CurrentWiFiNetwork");
    qmlRegisterType<AddRuleEditor>(uri, 1, 0, "AddRuleEditor");
    qmlRegisterType<AddWiFiRuleEditor>(uri, 1, 0, "AddWiFiRuleEditor");
    qmlRegisterType<EditRuleEditor>(uri, 1, 0, "EditRuleEditor");
    qmlRegisterType<EditWiFiRuleEditor>(uri, 1, 0, "EditWiFiRuleEditor");
    const QString madeBySheets = QStringLiteral("made by the rule sheets");
    qmlRegisterUncreatableType<RecordListModel>(uri, 1, 0, "RecordListModel", madeBySheets);
    qmlRegisterUncreatableType<ApplicationPicker>(uri, 1, 0, "ApplicationPicker", madeBySheets);
    qmlRegisterUncreatableType<ShortcutConfigurationEditor>(
        uri, 1, 0, "ShortcutConfigurationEditor", madeBySheets);
    qmlRegisterUncreatableType<NewRuleEditor>(uri, 1, 0, "NewRuleEditor", madeBySheets);
    qmlRegisterUncreatableType<ExistingRuleEditor>(uri, 1, 0, "ExistingRuleEditor", madeBySheets);
}

} // namespace

void install(QQmlEngine& engine)
{
    static const bool registered = (registerTypes(), true);
    Q_UNUSED(registered);
    engine.addImageProvider(
        QStringLiteral("appicon"),
        new ApplicationIconProvider(QGuiApplication::palette().color(QPalette::WindowText)));
}

} // namespace RulesQml
