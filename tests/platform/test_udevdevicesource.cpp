#include "platform/UdevDeviceSource.h"

#include <QTest>

class TestUdevDeviceSource : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void locationIdPacksBusAndPorts()
    {
        QCOMPARE(UdevDeviceSource::locationID("2-1.4.3"), std::optional<quint32>(0x02143000));
        QCOMPARE(UdevDeviceSource::locationID("1-2"), std::optional<quint32>(0x01200000));
        QVERIFY(!UdevDeviceSource::locationID("usb1"));
        QVERIFY(!UdevDeviceSource::locationID("1-x"));
        QVERIFY(UdevDeviceSource::locationID("1-1.1.1.1.1.1.1.1")); // deeper than six levels
    }

    void deviceTextIsMadeSafe()
    {
        QCOMPARE(UdevDeviceSource::deviceText("Stream Deck"), QStringLiteral("Stream Deck"));
        const QString control = UdevDeviceSource::deviceText("Evil\nLine\x1b[2J");
        QVERIFY(!control.contains('\n') && !control.contains(QChar(0x1b)));
        QVERIFY(UdevDeviceSource::deviceText("\xff\xfe ok").endsWith("ok"));
        const QByteArray huge(4096, 'A');
        QCOMPARE(UdevDeviceSource::deviceText(huge.constData()).size(), 256);
    }
};

QTEST_GUILESS_MAIN(TestUdevDeviceSource)
#include "test_udevdevicesource.moc"
