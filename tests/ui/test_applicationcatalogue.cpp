#include "model/ApplicationCatalogue.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// The catalogue over desktop entries in temporary XDG folders: a user folder and two system ones.
class ApplicationCatalogueTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_root;

    QString writeEntry(const QString& where, const QString& file, const QString& body)
    {
        const QString path = m_root.filePath(where + "/applications/" + file);
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile out(path);
        return out.open(QIODevice::WriteOnly) && out.write(body.toUtf8()) ? path : QString();
    }

    QString writeApp(const QString& where, const QString& file, const QString& name,
                     const QString& extra = QString())
    {
        return writeEntry(where, file,
                          QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\n"
                                         "Exec=/bin/true\nIcon=icon-%1\n%2")
                              .arg(name, extra));
    }

    static QStringList names(const QList<ApplicationInfo>& apps)
    {
        QStringList result;
        for (const ApplicationInfo& app : apps)
            result.append(app.name);
        return result;
    }

private Q_SLOTS:
    void init()
    {
        for (const char* name : {"user", "system1", "system2"})
            QDir(m_root.filePath(name)).removeRecursively();
        qputenv("XDG_DATA_HOME", m_root.filePath("user").toUtf8());
        qputenv("XDG_DATA_DIRS",
                (m_root.filePath("system1") + ':' + m_root.filePath("system2")).toUtf8());
        qunsetenv("XDG_CURRENT_DESKTOP");
    }

    void sortsByNameIgnoringCaseAndKeepsScanOrderForEqualNames()
    {
        writeApp("user", "zoom.desktop", "zoom");
        writeApp("system1", "zebra.desktop", "Zebra");
        const QString apple = writeApp("system2", "apple.desktop", "apple");
        writeApp("system2", "b.desktop", "Twin");
        writeApp("user", "z.desktop", "twin");
        const QList<ApplicationInfo> apps = ApplicationCatalogue::loadInstalledApplications();
        QCOMPARE(names(apps), QStringList({"apple", "twin", "Twin", "Zebra", "zoom"}));
        QCOMPARE(apps.first().id, "apple");
        QCOMPARE(apps.first().path, apple);
        QCOMPARE(apps.first().icon, "icon-apple");
    }

    void leavesOutWhatMenusDoNotShow()
    {
        writeApp("system1", "shown.desktop", "Shown");
        writeApp("system1", "nodisplay.desktop", "NoDisplay", "NoDisplay=true\n");
        writeApp("system1", "hidden.desktop", "Hidden", "Hidden=true\n");
        writeApp("system1", "elsewhere.desktop", "Elsewhere", "OnlyShowIn=NoSuchDesktop;\n");
        writeEntry("system1", "link.desktop",
                   "[Desktop Entry]\nType=Link\nName=Link\nURL=https://x/\n");
        writeEntry("system1", "broken.desktop", "not a key file");
        writeApp("system1", "upper.DESKTOP", "Upper");
        QCOMPARE(names(ApplicationCatalogue::loadInstalledApplications()), QStringList{"Shown"});
    }

    void userEntriesShadowSystemEntriesOfTheSameId()
    {
        const QString mine = writeApp("user", "editor.desktop", "Mine");
        writeApp("system1", "editor.desktop", "System");
        writeApp("system2", "editor.desktop", "Older");
        // A Hidden entry of the user's removes the system's entry of that id.
        writeApp("user", "gone.desktop", "Gone", "Hidden=true\n");
        writeApp("system1", "gone.desktop", "Gone");
        // Subfolders give dashed ids.
        writeApp("system2", "vendor/tool.desktop", "Tool");
        const QList<ApplicationInfo> apps = ApplicationCatalogue::loadInstalledApplications();
        QCOMPARE(names(apps), QStringList({"Mine", "Tool"}));
        QCOMPARE(apps.first().path, mine);
        QCOMPARE(apps.last().id, "vendor-tool");
    }

    void searchIgnoresCaseAndFallsBackToTheId()
    {
        const ApplicationInfo safari{"org.example.Browser", "Safari", QString(), QString()};
        for (const char* matching : {"SAFARI", "fAr", "org.example", ""})
            QVERIFY2(safari.matchesSearch(matching), matching);
        QVERIFY(!safari.matchesSearch(" "));
        QVERIFY(!safari.matchesSearch("Firefox"));
    }

    // Entries in the application folders and executables picked by hand are the rule sheet
    // test's part.
    void readsAnEntryPickedByHandOutsideTheFolders()
    {
        // The id is the file's name; without Name, so is the name.
        const QString outside = m_root.filePath("My Tool.desktop");
        QFile file(outside);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\nExec=/bin/true\n");
        file.close();
        const std::optional<ApplicationInfo> app = ApplicationCatalogue::applicationInfo(outside);
        QVERIFY(app);
        QCOMPARE(app->id, "My Tool");
        QCOMPARE(app->name, "My Tool");
        QCOMPARE(app->path, outside);

        QVERIFY(!ApplicationCatalogue::applicationInfo(m_root.path()));
        QVERIFY(!ApplicationCatalogue::applicationInfo(
            writeEntry("user", "link.desktop", "[Desktop Entry]\nType=Link\nName=L\n")));
    }
};

QTEST_GUILESS_MAIN(ApplicationCatalogueTest)
#include "test_applicationcatalogue.moc"
