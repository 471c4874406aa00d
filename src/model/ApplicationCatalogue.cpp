#include "ApplicationCatalogue.h"

#include <QCollator>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

#include <gio/gdesktopappinfo.h>

#include <algorithm>

namespace ApplicationCatalogue {

namespace {

const QLatin1String desktopSuffix(".desktop");

QString takeString(char* text)
{
    const QString result = text ? QString::fromUtf8(text) : QString();
    g_free(text);
    return result;
}

// The freedesktop desktop-file id: the path below the applications folder, "/" written "-".
QString desktopId(const QString& folder, const QString& file)
{
    QString relative = QDir(folder).relativeFilePath(file);
    relative.chop(desktopSuffix.size());
    return relative.replace(QLatin1Char('/'), QLatin1Char('-'));
}

std::optional<QString> idWithinFolders(const QString& file)
{
    for (const QString& folder : applicationFolders()) {
        if (file.startsWith(folder + QLatin1Char('/')))
            return desktopId(folder, file);
    }
    return std::nullopt;
}

GDesktopAppInfo* openEntry(const QString& file)
{
    return g_desktop_app_info_new_from_filename(QFile::encodeName(file).constData());
}

ApplicationInfo describe(GDesktopAppInfo* entry, const QString& id, const QString& file)
{
    // GIO's own name getter answers "Unnamed" for an entry without Name.
    QString name = takeString(g_desktop_app_info_get_locale_string(entry, "Name"));
    if (name.isEmpty())
        name = QFileInfo(file).completeBaseName();
    return ApplicationInfo{id, name, file,
                           takeString(g_desktop_app_info_get_string(entry, "Icon"))};
}

// The .desktop files below `folder` in a fixed order, so that equal names sort the same way on
// every run.
QStringList desktopFiles(const QString& folder)
{
    QStringList files;
    QDirIterator it(folder, {QStringLiteral("*.desktop")}, QDir::Files | QDir::CaseSensitive,
                    QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
    while (it.hasNext())
        files.append(it.next());
    files.sort();
    return files;
}

QStringList dataFolders(const char* variable, const QString& fallback)
{
    const QString value = qEnvironmentVariable(variable);
    return (value.isEmpty() ? fallback : value).split(QLatin1Char(':'), Qt::SkipEmptyParts);
}

} // namespace

QStringList applicationFolders()
{
    QStringList folders =
        dataFolders("XDG_DATA_HOME", QDir::homePath() + QStringLiteral("/.local/share")).mid(0, 1);
    folders += dataFolders("XDG_DATA_DIRS", QStringLiteral("/usr/local/share:/usr/share"));
    QStringList result;
    for (const QString& folder : std::as_const(folders)) {
        const QString applications = QDir::cleanPath(folder + QStringLiteral("/applications"));
        if (QDir::isAbsolutePath(applications) && !result.contains(applications))
            result.append(applications);
    }
    return result;
}

QList<ApplicationInfo> loadInstalledApplications()
{
    QList<ApplicationInfo> applications;
    // An id found in a folder of higher priority shadows the same id further down, and a
    // Hidden entry removes it, as the desktop's own menus and launching treat them.
    QSet<QString> seen;
    for (const QString& folder : applicationFolders()) {
        for (const QString& file : desktopFiles(folder)) {
            const QString id = desktopId(folder, file);
            if (seen.contains(id))
                continue;
            seen.insert(id);
            GDesktopAppInfo* entry = openEntry(file);
            if (!entry)
                continue;
            if (!g_desktop_app_info_get_is_hidden(entry) &&
                g_app_info_should_show(G_APP_INFO(entry)))
                applications.append(describe(entry, id, file));
            g_object_unref(entry);
        }
    }

    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(applications.begin(), applications.end(),
                     [&collator](const ApplicationInfo& a, const ApplicationInfo& b) {
                         return collator.compare(a.name, b.name) < 0;
                     });
    return applications;
}

std::optional<ApplicationInfo> applicationInfo(const QString& path)
{
    const QFileInfo info(path);
    const QString file = info.absoluteFilePath();
    if (file.endsWith(desktopSuffix)) {
        GDesktopAppInfo* entry = openEntry(file);
        if (!entry)
            return std::nullopt;
        const QString id = idWithinFolders(file).value_or(info.completeBaseName());
        const ApplicationInfo result = describe(entry, id, file);
        g_object_unref(entry);
        return result;
    }
    if (info.isFile() && info.isExecutable())
        return ApplicationInfo{file, info.fileName(), file, QString()};
    return std::nullopt;
}

QString iconForIdentifier(const QString& id)
{
    if (id.isEmpty() || id.contains(QLatin1Char('/')))
        return {};
    GDesktopAppInfo* entry = g_desktop_app_info_new((id + desktopSuffix).toUtf8().constData());
    if (!entry)
        return {};
    const QString icon = takeString(g_desktop_app_info_get_string(entry, "Icon"));
    g_object_unref(entry);
    return icon;
}

} // namespace ApplicationCatalogue
