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

    QString folder(const QString& name) const
    {
        return m_root.filePath(name + QStringLiteral("/applications"));
    }

    QString writeEntry(const QString& where, const QString& file, const QString& body)
    {
        const QString path = folder(where) + QLatin1Char('/') + file;
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile out(path);
        if (!out.open(QIODevice::WriteOnly))
            return {};
        out.write(body.toUtf8());
        return path;
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
            QDir(m_root.filePath(QLatin1String(name))).removeRecursively();
        qputenv("XDG_DATA_HOME", m_root.filePath(QStringLiteral("user")).toUtf8());
        qputenv("XDG_DATA_DIRS", (m_root.filePath(QStringLiteral("system1")) + QLatin1Char(':') +
                                  m_root.filePath(QStringLiteral("system2")))
                                     .toUtf8());
        qunsetenv("XDG_CURRENT_DESKTOP");
    }

    void foldersComeInPriorityOrder()
    {
        QCOMPARE(ApplicationCatalogue::applicationFolders(),
                 QStringList({folder(QStringLiteral("user")), folder(QStringLiteral("system1")),
                              folder(QStringLiteral("system2"))}));
    }

    void sortsByNameIgnoringCaseAndKeepsScanOrderForEqualNames()
    {
        writeApp(QStringLiteral("user"), QStringLiteral("zoom.desktop"), QStringLiteral("zoom"));
        writeApp(QStringLiteral("system1"), QStringLiteral("zebra.desktop"),
                 QStringLiteral("Zebra"));
        writeApp(QStringLiteral("system2"), QStringLiteral("apple.desktop"),
                 QStringLiteral("apple"));
        writeApp(QStringLiteral("system2"), QStringLiteral("b.desktop"), QStringLiteral("Twin"));
        writeApp(QStringLiteral("user"), QStringLiteral("z.desktop"), QStringLiteral("twin"));

        const QList<ApplicationInfo> apps = ApplicationCatalogue::loadInstalledApplications();
        QCOMPARE(names(apps), QStringList({QStringLiteral("apple"), QStringLiteral("twin"),
                                           QStringLiteral("Twin"), QStringLiteral("Zebra"),
                                           QStringLiteral("zoom")}));
        const ApplicationInfo& apple = apps.first();
        QCOMPARE(apple.id, QStringLiteral("apple"));
        QCOMPARE(apple.path, folder(QStringLiteral("system2")) + QStringLiteral("/apple.desktop"));
        QCOMPARE(apple.icon, QStringLiteral("icon-apple"));
    }

    void leavesOutWhatMenusDoNotShow()
    {
        writeApp(QStringLiteral("system1"), QStringLiteral("shown.desktop"),
                 QStringLiteral("Shown"));
        writeApp(QStringLiteral("system1"), QStringLiteral("nodisplay.desktop"),
                 QStringLiteral("NoDisplay"), QStringLiteral("NoDisplay=true\n"));
        writeApp(QStringLiteral("system1"), QStringLiteral("hidden.desktop"),
                 QStringLiteral("Hidden"), QStringLiteral("Hidden=true\n"));
        writeApp(QStringLiteral("system1"), QStringLiteral("elsewhere.desktop"),
                 QStringLiteral("Elsewhere"), QStringLiteral("OnlyShowIn=NoSuchDesktop;\n"));
        writeEntry(QStringLiteral("system1"), QStringLiteral("link.desktop"),
                   QStringLiteral("[Desktop Entry]\nType=Link\nName=Link\nURL=https://x/\n"));
        writeEntry(QStringLiteral("system1"), QStringLiteral("broken.desktop"),
                   QStringLiteral("not a key file"));
        writeApp(QStringLiteral("system1"), QStringLiteral("upper.DESKTOP"),
                 QStringLiteral("Upper"));

        QCOMPARE(names(ApplicationCatalogue::loadInstalledApplications()),
                 QStringList({QStringLiteral("Shown")}));
    }

    void userEntriesShadowSystemEntriesOfTheSameId()
    {
        const QString mine = writeApp(QStringLiteral("user"), QStringLiteral("editor.desktop"),
                                      QStringLiteral("Mine"));
        writeApp(QStringLiteral("system1"), QStringLiteral("editor.desktop"),
                 QStringLiteral("System"));
        writeApp(QStringLiteral("system2"), QStringLiteral("editor.desktop"),
                 QStringLiteral("Older"));
        // A Hidden entry of the user's removes the system's entry of that id.
        writeApp(QStringLiteral("user"), QStringLiteral("gone.desktop"), QStringLiteral("Gone"),
                 QStringLiteral("Hidden=true\n"));
        writeApp(QStringLiteral("system1"), QStringLiteral("gone.desktop"), QStringLiteral("Gone"));

        const QList<ApplicationInfo> apps = ApplicationCatalogue::loadInstalledApplications();
        QCOMPARE(apps.size(), 1);
        QCOMPARE(apps.first().name, QStringLiteral("Mine"));
        QCOMPARE(apps.first().path, mine);
    }

    void subfoldersGiveDashedIdsAndMissingFoldersNothing()
    {
        writeApp(QStringLiteral("system2"), QStringLiteral("vendor/tool.desktop"),
                 QStringLiteral("Tool"));
        QVERIFY(!QDir(folder(QStringLiteral("user"))).exists());

        const QList<ApplicationInfo> apps = ApplicationCatalogue::loadInstalledApplications();
        QCOMPARE(apps.size(), 1);
        QCOMPARE(apps.first().id, QStringLiteral("vendor-tool"));
    }

    void searchIgnoresCaseAndFallsBackToTheId()
    {
        const ApplicationInfo safari{QStringLiteral("org.example.Browser"),
                                     QStringLiteral("Safari"), QString(), QString()};
        QVERIFY(safari.matchesSearch(QStringLiteral("SAFARI")));
        QVERIFY(safari.matchesSearch(QStringLiteral("fAr")));
        QVERIFY(safari.matchesSearch(QStringLiteral("org.example")));
        QVERIFY(safari.matchesSearch(QString()));
        QVERIFY(!safari.matchesSearch(QStringLiteral(" ")));
        QVERIFY(!safari.matchesSearch(QStringLiteral("Firefox")));
    }

    void readsAnEntryOrExecutablePickedByHand()
    {
        const QString inside = writeApp(
            QStringLiteral("user"), QStringLiteral("kde/viewer.desktop"), QStringLiteral("Viewer"));
        std::optional<ApplicationInfo> app = ApplicationCatalogue::applicationInfo(inside);
        QVERIFY(app);
        QCOMPARE(app->id, QStringLiteral("kde-viewer"));
        QCOMPARE(app->name, QStringLiteral("Viewer"));
        QCOMPARE(app->icon, QStringLiteral("icon-Viewer"));

        // Outside the application folders the id is the file's name; without Name, so is the name.
        const QString outside = m_root.filePath(QStringLiteral("My Tool.desktop"));
        QFile file(outside);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\nExec=/bin/true\n");
        file.close();
        app = ApplicationCatalogue::applicationInfo(outside);
        QVERIFY(app);
        QCOMPARE(app->id, QStringLiteral("My Tool"));
        QCOMPARE(app->name, QStringLiteral("My Tool"));
        QCOMPARE(app->path, outside);

        const QString program = m_root.filePath(QStringLiteral("run-me"));
        QFile executable(program);
        QVERIFY(executable.open(QIODevice::WriteOnly));
        executable.write("#!/bin/sh\n");
        executable.close();
        QVERIFY(!ApplicationCatalogue::applicationInfo(program));
        executable.setPermissions(executable.permissions() | QFileDevice::ExeOwner);
        app = ApplicationCatalogue::applicationInfo(program);
        QVERIFY(app);
        QCOMPARE(app->id, program);
        QCOMPARE(app->path, program);
        QCOMPARE(app->name, QStringLiteral("run-me"));
        QVERIFY(app->icon.isEmpty());

        QVERIFY(!ApplicationCatalogue::applicationInfo(m_root.path()));
        const QString link = writeEntry(QStringLiteral("user"), QStringLiteral("link.desktop"),
                                        QStringLiteral("[Desktop Entry]\nType=Link\nName=L\n"));
        QVERIFY(!ApplicationCatalogue::applicationInfo(link));
    }
};

QTEST_GUILESS_MAIN(ApplicationCatalogueTest)
#include "test_applicationcatalogue.moc"
