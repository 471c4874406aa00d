#include "model/DeviceAppBinding.h"
#include "model/RuleJson.h"
#include "model/WiFiAppBinding.h"

#include <QJsonDocument>
#include <QTest>

class TestRuleRecords : public QObject
{
    Q_OBJECT

    static QJsonObject minimalUsbRule()
    {
        return QJsonDocument::fromJson(R"({"id":"a1b2c3d4-0000-4000-8000-00000000abcd",
            "deviceVendorID":4057,"deviceProductID":109,"deviceName":"Deck",
            "isEnabled":true,"killOnDisconnect":false,"launchOnConnect":true})")
            .object();
    }

private Q_SLOTS:
    void missingOptionalKeysTakeDefaults()
    {
        const auto rule = DeviceAppBinding::fromJson(minimalUsbRule());
        QVERIFY(rule);
        QCOMPARE(rule->forceQuitAllowed, false);
        QCOMPARE(rule->forceQuitTimeout, 1.0);
        QVERIFY(rule->appBundleIdentifier.isEmpty() && rule->appName.isEmpty() &&
                rule->appPath.isEmpty());
        QVERIFY(rule->shortcuts.isEmpty());
    }

    void nullSelectsDefaultButWrongTypeFails()
    {
        QJsonObject object = minimalUsbRule();
        object.insert("forceQuitTimeout", QJsonValue::Null);
        QCOMPARE(DeviceAppBinding::fromJson(object)->forceQuitTimeout, 1.0);
        object.insert("forceQuitTimeout", "2");
        QVERIFY(!DeviceAppBinding::fromJson(object));

        QJsonObject noName = minimalUsbRule();
        noName.remove("deviceName");
        QVERIFY(!DeviceAppBinding::fromJson(noName));
        QJsonObject fractional = minimalUsbRule();
        fractional.insert("deviceVendorID", 1.5);
        QVERIFY(!DeviceAppBinding::fromJson(fractional));
        QJsonObject badId = minimalUsbRule();
        badId.insert("id", "{a1b2c3d4-0000-4000-8000-00000000abcd}");
        QVERIFY(!DeviceAppBinding::fromJson(badId));
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

        QJsonObject incomplete = minimalUsbRule();
        incomplete.insert("shortcutAction",
                          QJsonObject{{"shortcutName", "A"}, {"executeOnConnect", true}});
        QVERIFY(!DeviceAppBinding::fromJson(incomplete));
    }

    void idIsWrittenUpperCase()
    {
        const auto rule = DeviceAppBinding::fromJson(minimalUsbRule());
        QCOMPARE(rule->toJson().value("id").toString(),
                 QStringLiteral("A1B2C3D4-0000-4000-8000-00000000ABCD"));
    }

    void listsAreAllOrNothing()
    {
        const QByteArray good =
            QJsonDocument(QJsonArray{minimalUsbRule(), minimalUsbRule()}).toJson();
        QCOMPARE(RuleJson::decodeList<DeviceAppBinding>(good)->size(), 2);
        QJsonObject bad = minimalUsbRule();
        bad.remove("isEnabled");
        QVERIFY(!RuleJson::decodeList<DeviceAppBinding>(
            QJsonDocument(QJsonArray{minimalUsbRule(), bad}).toJson()));
        QVERIFY(!RuleJson::decodeList<DeviceAppBinding>("[{\"id\":"));
        QVERIFY(!RuleJson::decodeList<DeviceAppBinding>("{}"));
        QCOMPARE(RuleJson::decodeList<DeviceAppBinding>("[]")->size(), 0);
    }

    void nonFiniteTimeoutFailsTheWholeList()
    {
        DeviceAppBinding rule = *DeviceAppBinding::fromJson(minimalUsbRule());
        rule.forceQuitTimeout = qInf();
        QVERIFY(!RuleJson::encodeList(QList<DeviceAppBinding>{rule}, QJsonDocument::Compact));
    }

    void wifiRuleRoundTripsOddText()
    {
        WiFiAppBinding rule;
        rule.id = QUuid::createUuid();
        rule.ssid = QStringLiteral("Café 📶 \"x\" ");
        rule.appName = QStringLiteral("Ünïcode\u200b");
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
