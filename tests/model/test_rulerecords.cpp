#include "model/DeviceAppBinding.h"
#include "model/RuleJson.h"
#include "model/WiFiAppBinding.h"

#include <QJsonDocument>
#include <QTest>

namespace {

QJsonObject minimalUsbRule()
{
    return QJsonDocument::fromJson(R"({"id":"a1b2c3d4-0000-4000-8000-00000000abcd",
        "deviceVendorID":4057,"deviceProductID":109,"deviceName":"Deck",
        "isEnabled":true,"killOnDisconnect":false,"launchOnConnect":true})")
        .object();
}

} // namespace

class TestRuleRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void missingOrNullOptionalKeysTakeDefaults()
    {
        QJsonObject object = minimalUsbRule();
        object.insert("forceQuitTimeout", QJsonValue::Null);
        const auto rule = DeviceAppBinding::fromJson(object);
        QVERIFY(rule);
        QCOMPARE(rule->forceQuitAllowed, false);
        QCOMPARE(rule->forceQuitTimeout, 1.0);
        QVERIFY(rule->appBundleIdentifier.isEmpty() && rule->appName.isEmpty() &&
                rule->appPath.isEmpty());
        QVERIFY(rule->shortcuts.isEmpty());
        QCOMPARE(rule->toJson().value("id").toString(), "A1B2C3D4-0000-4000-8000-00000000ABCD");
    }

    void wrongTypesAndMissingKeysFail_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QJsonValue>("value");
        QTest::newRow("timeout as text") << "forceQuitTimeout" << QJsonValue("2");
        QTest::newRow("no device name") << "deviceName" << QJsonValue(QJsonValue::Undefined);
        QTest::newRow("no isEnabled") << "isEnabled" << QJsonValue(QJsonValue::Undefined);
        QTest::newRow("fractional id") << "deviceVendorID" << QJsonValue(1.5);
        QTest::newRow("braced id") << "id" << QJsonValue("{a1b2c3d4-0000-4000-8000-00000000abcd}");
        QTest::newRow("incomplete shortcutAction")
            << "shortcutAction"
            << QJsonValue(QJsonObject{{"shortcutName", "A"}, {"executeOnConnect", true}});
    }

    void wrongTypesAndMissingKeysFail()
    {
        QFETCH(QString, key);
        QFETCH(QJsonValue, value);
        QJsonObject object = minimalUsbRule();
        if (value.isUndefined())
            object.remove(key);
        else
            object.insert(key, value);
        QVERIFY(!DeviceAppBinding::fromJson(object));
        // One bad rule fails the whole list.
        QVERIFY(!RuleJson::decodeList<DeviceAppBinding>(
            QJsonDocument(QJsonArray{minimalUsbRule(), object}).toJson()));
    }

    void shortcutActionIsUpgradedAndNeverWritten()
    {
        QJsonObject object = minimalUsbRule();
        object.insert("shortcutAction", QJsonObject{{"shortcutName", "A"},
                                                    {"executeOnConnect", true},
                                                    {"executeOnDisconnect", false}});
        const auto rule = DeviceAppBinding::fromJson(object);
        QVERIFY(rule);
        QCOMPARE(rule->shortcuts.shortcutsOnConnect, QStringList{"A"});
        QVERIFY(rule->shortcuts.shortcutsOnDisconnect.isEmpty());
        const QJsonObject written = rule->toJson();
        QVERIFY(!written.contains("shortcutAction"));
        QVERIFY(written.value("shortcuts").isObject());

        // "shortcuts" wins, even over a malformed "shortcutAction".
        object.insert("shortcuts", QJsonObject{{"shortcutsOnConnect", QJsonArray{"B"}},
                                               {"shortcutsOnDisconnect", QJsonArray{}}});
        object.insert("shortcutAction", "garbage");
        QCOMPARE(DeviceAppBinding::fromJson(object)->shortcuts.shortcutsOnConnect,
                 QStringList{"B"});
    }

    void listsAreAllOrNothing()
    {
        const QByteArray good =
            QJsonDocument(QJsonArray{minimalUsbRule(), minimalUsbRule()}).toJson();
        QCOMPARE(RuleJson::decodeList<DeviceAppBinding>(good)->size(), 2);
        QVERIFY(!RuleJson::decodeList<DeviceAppBinding>("[{\"id\":"));
        QVERIFY(!RuleJson::decodeList<DeviceAppBinding>("{}"));
        QCOMPARE(RuleJson::decodeList<DeviceAppBinding>("[]")->size(), 0);
        DeviceAppBinding rule = *DeviceAppBinding::fromJson(minimalUsbRule());
        rule.forceQuitTimeout = qInf();
        QVERIFY(!RuleJson::encodeList(QList<DeviceAppBinding>{rule}, QJsonDocument::Compact));
    }

    void wifiRuleRoundTripsOddText()
    {
        WiFiAppBinding rule;
        rule.id = QUuid::createUuid();
        rule.ssid = "Café 📶 \"x\" ";
        rule.appName = "Ünïcode\u200b";
        rule.shortcuts.shortcutsOnDisconnect = {"a", "a"};
        const auto bytes =
            RuleJson::encodeList(QList<WiFiAppBinding>{rule}, QJsonDocument::Indented);
        const auto back = RuleJson::decodeList<WiFiAppBinding>(*bytes);
        QVERIFY(back);
        QCOMPARE(back->first().ssid, rule.ssid);
        QCOMPARE(back->first().appName, rule.appName);
        QCOMPARE(back->first().shortcuts, rule.shortcuts);
        QCOMPARE(back->first().id, rule.id);

        QJsonObject empty = back->first().toJson();
        empty.insert("ssid", "");
        QVERIFY(WiFiAppBinding::fromJson(empty));
    }
};

QTEST_GUILESS_MAIN(TestRuleRecords)
#include "test_rulerecords.moc"
