// Opening a rule sheet with 1,000 desktop entries installed: the time from the sheet's request
// for the installed applications to its list being filled on the main thread, and the scan
// alone. The entries carry translations as real ones do.
#include "BenchSupport.h"

#include "model/ApplicationCatalogue.h"
#include "ui/ApplicationPicker.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

namespace {

constexpr int entryCount = 1000;

void writeEntries(const QString& folder)
{
    QDir().mkpath(folder);
    const QStringList languages{"de", "fr", "es", "it", "ja", "pt_BR", "ru", "zh_CN", "nl", "pl",
                                "sv", "fi", "cs", "da", "ko", "tr",    "uk", "hu",    "el", "he"};
    for (int i = 0; i < entryCount; ++i) {
        QString text = QStringLiteral("[Desktop Entry]\nType=Application\nName=Application %1\n"
                                      "Comment=Does thing number %1\nExec=/bin/true --app=%1 %U\n"
                                      "Icon=org.bench.App%1\nCategories=Utility;\n")
                           .arg(i);
        for (const QString& language : languages) {
            text += QStringLiteral("Name[%1]=Anwendung %2 (%1)\nComment[%1]=Macht Ding %2\n")
                        .arg(language)
                        .arg(i);
        }
        if (i % 10 == 0)
            text += QStringLiteral("NoDisplay=true\n");
        QFile file(QStringLiteral("%1/org.bench.App%2.desktop").arg(folder).arg(i));
        if (file.open(QIODevice::WriteOnly))
            file.write(text.toUtf8());
    }
}

// Milliseconds from making a picker, as a sheet does when it opens, to its list being filled.
double fillTime()
{
    QElapsedTimer timer;
    timer.start();
    ApplicationPicker picker;
    QEventLoop loop;
    QObject::connect(&picker, &ApplicationPicker::applicationsLoaded, &loop, &QEventLoop::quit);
    QTimer::singleShot(10000, &loop, &QEventLoop::quit);
    loop.exec();
    const double elapsed = double(timer.nsecsElapsed()) / 1e6;
    if (picker.filteredApps()->count() != entryCount - entryCount / 10)
        std::fprintf(stderr, "unexpected list of %d applications\n",
                     picker.filteredApps()->count());
    return elapsed;
}

} // namespace

int main(int argc, char* argv[])
{
    QTemporaryDir root;
    qputenv("XDG_DATA_HOME", root.filePath(QStringLiteral("data")).toUtf8());
    qputenv("XDG_DATA_DIRS", root.filePath(QStringLiteral("system")).toUtf8());
    writeEntries(root.filePath(QStringLiteral("data/applications")));
    QCoreApplication app(argc, argv);

    const double first = fillTime();
    QList<double> times;
    for (int i = 0; i < 9; ++i)
        times.append(fillTime());
    std::sort(times.begin(), times.end());
    const double scanMs =
        Bench::medianMs(9, [] { ApplicationCatalogue::loadInstalledApplications(); });

    Bench::result("catalogue_scan_1000_entries", scanMs, "ms", "-");
    Bench::result("add_sheet_list_filled_first_open", first, "ms", "<300");
    Bench::result("add_sheet_list_filled_1000_entries", times.at(times.size() / 2), "ms", "<300");
    return 0;
}
