#include "GioDesktopApplications.h"

#include "MainQueue.h"

#include <QFile>
#include <QFileInfo>
#include <QThreadPool>

#include <gio/gdesktopappinfo.h>

namespace {

GDesktopAppInfo* appInfoForId(const QString& desktopId)
{
    if (desktopId.isEmpty() || desktopId.contains(QLatin1Char('/')))
        return nullptr;
    const QByteArray name = (desktopId + QStringLiteral(".desktop")).toUtf8();
    return g_desktop_app_info_new(name.constData());
}

QString takeError(GError* error)
{
    const QString message = QString::fromUtf8(error->message);
    g_error_free(error);
    return message;
}

} // namespace

QString GioDesktopApplications::desktopFileForId(const QString& desktopId)
{
    GDesktopAppInfo* info = appInfoForId(desktopId);
    if (!info)
        return {};
    const QString path = QFile::decodeName(g_desktop_app_info_get_filename(info));
    g_object_unref(info);
    return path;
}

QString GioDesktopApplications::executableForId(const QString& desktopId)
{
    if (desktopId.startsWith(QLatin1Char('/')))
        return QFileInfo(desktopId).canonicalFilePath();
    GDesktopAppInfo* info = appInfoForId(desktopId);
    if (!info)
        return {};
    QString result;
    if (const char* executable = g_app_info_get_executable(G_APP_INFO(info))) {
        if (gchar* found = g_find_program_in_path(executable)) {
            result = QFileInfo(QFile::decodeName(found)).canonicalFilePath();
            g_free(found);
        }
    }
    g_object_unref(info);
    return result;
}

QString GioDesktopApplications::launchBlocking(const QString& path)
{
    GAppInfo* info = nullptr;
    GError* error = nullptr;
    const QByteArray encoded = QFile::encodeName(path);
    if (path.endsWith(QLatin1String(".desktop"))) {
        info = G_APP_INFO(g_desktop_app_info_new_from_filename(encoded.constData()));
        if (!info)
            return QStringLiteral("The desktop entry %1 is not valid").arg(path);
    } else {
        // Quoted, so a path with blanks or quotes stays one argument.
        gchar* quoted = g_shell_quote(encoded.constData());
        info = g_app_info_create_from_commandline(quoted, nullptr, G_APP_INFO_CREATE_NONE, &error);
        g_free(quoted);
        if (!info)
            return takeError(error);
    }
    GAppLaunchContext* context = g_app_launch_context_new();
    const gboolean launched = g_app_info_launch(info, nullptr, context, &error);
    g_object_unref(context);
    g_object_unref(info);
    return launched ? QString() : takeError(error);
}

void GioDesktopApplications::launch(const QString& path,
                                    std::function<void(const QString& error)> done)
{
    QThreadPool::globalInstance()->start([path, done = std::move(done)] {
        const QString error = launchBlocking(path);
        MainQueue::async([done, error] { done(error); });
    });
}
