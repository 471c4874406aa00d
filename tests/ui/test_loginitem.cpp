#include "platform/XdgAutostartLoginItem.h"

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
        const QString path = config.filePath("autostart/obrinta.desktop");
        XdgAutostartLoginItem item("/usr/bin/obrinta", path);
        QCOMPARE(item.update(true), std::nullopt);
        QSettings entry(path, QSettings::IniFormat);
        QCOMPARE(entry.value("Desktop Entry/Type").toString(), "Application");
        QCOMPARE(entry.value("Desktop Entry/Exec").toString(), "/usr/bin/obrinta");
        QCOMPARE(entry.value("Desktop Entry/Name").toString(), "Obrinta");
        QCOMPARE(item.update(true), std::nullopt);
        QCOMPARE(item.update(false), std::nullopt);
        QVERIFY(!QFile::exists(path));
        // Nothing to remove is no failure.
        QCOMPARE(item.update(false), std::nullopt);

        // A file where the folder should be: the entry cannot be written.
        QFile blocker(config.filePath("blocked"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        const std::optional<QString> error =
            XdgAutostartLoginItem("/usr/bin/obrinta", blocker.fileName() + "/obrinta.desktop")
                .update(true);
        QVERIFY(error && !error->isEmpty());
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
        const XdgAutostartLoginItem item(executable, "/nonexistent/obrinta.desktop");
        const QStringList lines = QString::fromUtf8(item.entryText()).split('\n');
        QVERIFY2(lines.contains(exec), qPrintable(lines.join('\n')));
    }
};

QTEST_GUILESS_MAIN(LoginItemTest)
#include "test_loginitem.moc"
