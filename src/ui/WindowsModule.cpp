#include "WindowsModule.h"

#include "WindowHosting.h"
#include "platform/Log.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

namespace WindowsModule {

namespace {

const QString fileName = QStringLiteral("obrinta-windows.so");

// Beside the program in a build folder; the library folder relative to the program once
// installed, so that an installed tree can move.
QStringList candidates()
{
    const QDir programDir(QCoreApplication::applicationDirPath());
    return {programDir.filePath(fileName),
            QDir::cleanPath(programDir.filePath(QStringLiteral(OBRINTA_WINDOWS_MODULE_DIR)) +
                            QLatin1Char('/') + fileName)};
}

} // namespace

WindowHosting* create(const QHash<QString, QObject*>& contextObjects, QObject* parent)
{
    const QStringList paths = candidates();
    QString problem = QStringLiteral("%1 not found in %2")
                          .arg(fileName, QFileInfo(paths.first()).path() + QStringLiteral(", ") +
                                             QFileInfo(paths.last()).path());
    for (const QString& path : paths) {
        if (!QFileInfo::exists(path))
            continue;
        QLibrary module(path);
        auto make =
            reinterpret_cast<CreateWindowHosting>(module.resolve("obrinta_create_window_hosting"));
        if (make)
            return make(contextObjects, parent);
        problem = module.errorString();
        break;
    }
    Log::info(
        QStringLiteral(
            "⚠️ [Obrinta] Cannot load the windows (%1); the tray and the rules keep working")
            .arg(problem));
    return nullptr;
}

} // namespace WindowsModule
