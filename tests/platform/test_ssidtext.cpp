#include "platform/SsidText.h"

#include <QTest>

class TestSsidText : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void bytesReadAsText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QByteArray() << QString();
        QTest::newRow("plain") << QByteArray("Home") << QString("Home");
        QTest::newRow("trailing blank") << QByteArray("Home ") << QString("Home ");
        QTest::newRow("emoji") << QByteArray("Caf\xC3\xA9 \xF0\x9F\x93\xB6") << QString("Café 📶");
        QTest::newRow("32 bytes") << QByteArray(32, 'x') << QString(32, QLatin1Char('x'));
        QTest::newRow("largest code point")
            << QByteArray("\xF4\x8F\xBF\xBF") << QString::fromUcs4(U"\U0010FFFF");
        QTest::newRow("looks like an escape") << QByteArray("\\xFF") << QString("\\xFF");
        // Invalid UTF-8 is escaped byte by byte.
        QTest::newRow("latin-1") << QByteArray("Caf\xE9") << QString("Caf\\xE9");
        QTest::newRow("lone continuation") << QByteArray("a\x80z") << QString("a\\x80z");
        QTest::newRow("truncated at end") << QByteArray("Caf\xC3") << QString("Caf\\xC3");
        QTest::newRow("truncated inside")
            << QByteArray("\xE2\x82z\xC3\xA9") << QString("\\xE2\\x82zé");
        QTest::newRow("overlong") << QByteArray("\xC0\xAF") << QString("\\xC0\\xAF");
        QTest::newRow("overlong three") << QByteArray("\xE0\x80\xAF") << QString("\\xE0\\x80\\xAF");
        QTest::newRow("surrogate") << QByteArray("\xED\xA0\x80") << QString("\\xED\\xA0\\x80");
        QTest::newRow("above U+10FFFF")
            << QByteArray("\xF4\x90\x80\x80") << QString("\\xF4\\x90\\x80\\x80");
        QTest::newRow("lower-case hex never") << QByteArray("\xab\xfe") << QString("\\xAB\\xFE");
        QTest::newRow("32 invalid bytes")
            << QByteArray(32, '\xFF') << QString("\\xFF").repeated(32);
    }

    void bytesReadAsText()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QCOMPARE(SsidText::fromBytes(bytes), text);
    }

    void differentBytesNeverReadAlike()
    {
        const QList<QByteArray> names = {"Caf\xE9",         "Caf\xC3\xA9", "Caf\xC3",
                                         "Caf\xEF\xBF\xBD", "Caf\xE9\xE9", "Caf"};
        QSet<QString> texts;
        for (const QByteArray& name : names)
            texts.insert(SsidText::fromBytes(name));
        QCOMPARE(texts.size(), names.size());
    }
};

QTEST_APPLESS_MAIN(TestSsidText)
#include "test_ssidtext.moc"
