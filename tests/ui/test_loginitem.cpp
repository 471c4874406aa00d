#include "platform/XdgAutostartLoginItem.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

class LoginItemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void registeringWritesAnEntryAndUnregisteringRemovesIt()
    {
        QTemporaryDir config;
        const QString path = config.filePath(QStringLiteral("autostart/obrinta.desktop"));
        XdgAutostartLoginItem item(QStringLiteral("/usr/bin/obrinta"), path);
        QCOMPARE(item.update(true), std::nullopt);
        QSettings entry(path, QSettings::IniFormat);
        QCOMPARE(entry.value(QStringLiteral("Desktop Entry/Type")).toString(),
                 QStringLiteral("Application"));
        QCOMPARE(entry.value(QStringLiteral("Desktop Entry/Exec")).toString(),
                 QStringLiteral("/usr/bin/obrinta"));
        QCOMPARE(entry.value(QStringLiteral("Desktop Entry/Name")).toString(),
                 QStringLiteral("Obrinta"));

        QCOMPARE(item.update(true), std::nullopt);
        QCOMPARE(item.update(false), std::nullopt);
        QVERIFY(!QFile::exists(path));
        // Nothing to remove is no failure.
        QCOMPARE(item.update(false), std::nullopt);
    }

    void execQuotesPathsThatNeedIt_data()
    {
        QTest::addColumn<QString>("executable");
        QTest::addColumn<QString>("exec");
        QTest::newRow("plain") << "/opt/obrinta/bin/obrinta"
                               << "Exec=/opt/obrinta/bin/obrinta";
        QTest::newRow("blank") << "/home/a b/obrinta"
                               << "Exec=\"/home/a b/obrinta\"";
        QTest::newRow("dollar and quote") << "/x/$y\"z"
                                          << "Exec=\"/x/\\\\$y\\\\\"z\"";
        QTest::newRow("percent") << "/x/100%/obrinta"
                                 << "Exec=/x/100%%/obrinta";
        QTest::newRow("backslash") << "/x/a\\b"
                                   << "Exec=\"/x/a\\\\\\\\b\"";
    }

    void execQuotesPathsThatNeedIt()
    {
        QFETCH(QString, executable);
        QFETCH(QString, exec);
        const XdgAutostartLoginItem item(executable,
                                         QStringLiteral("/nonexistent/obrinta.desktop"));
        const QStringList lines = QString::fromUtf8(item.entryText()).split(QLatin1Char('\n'));
        QVERIFY2(lines.contains(exec), qPrintable(lines.join(QLatin1Char('\n'))));
    }

    void failuresAreDescribed()
    {
        QTemporaryDir config;
        // "autostart" is a file, so the folder cannot be made.
        QFile blocker(config.filePath(QStringLiteral("autostart")));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        XdgAutostartLoginItem item(QStringLiteral("/usr/bin/obrinta"),
                                   config.filePath(QStringLiteral("autostart/obrinta.desktop")));
        const std::optional<QString> error = item.update(true);
        QVERIFY(error);
        QVERIFY(!error->isEmpty());
    }
};

QTEST_GUILESS_MAIN(LoginItemTest)
#include "test_loginitem.moc"
