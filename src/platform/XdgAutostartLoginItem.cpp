#include "XdgAutostartLoginItem.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace {

// A desktop entry's Exec argument: reserved characters force double quotes, inside which `"`,
// backquote, `$` and `\` are escaped; `%` is doubled because Exec expands field codes.
QString quotedExecArgument(const QString& argument)
{
    static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    QString escaped;
    bool needsQuotes = argument.isEmpty();
    for (const QChar c : argument) {
        if (reserved.contains(c))
            needsQuotes = true;
        if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$') ||
            c == QLatin1Char('\\'))
            escaped += QLatin1Char('\\');
        escaped += c;
    }
    escaped.replace(QLatin1Char('%'), QStringLiteral("%%"));
    return needsQuotes ? QLatin1Char('"') + escaped + QLatin1Char('"') : escaped;
}

// The general escape rules of desktop entry string values apply on top of Exec's quoting.
QString escapedValue(const QString& value)
{
    QString escaped = value;
    escaped.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    return escaped;
}

} // namespace

XdgAutostartLoginItem::XdgAutostartLoginItem(QString executable, QString filePath)
    : m_executable(std::move(executable)), m_filePath(std::move(filePath))
{
}

XdgAutostartLoginItem& XdgAutostartLoginItem::shared()
{
    static XdgAutostartLoginItem item(
        QCoreApplication::applicationFilePath(),
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
            QStringLiteral("/autostart/obrinta.desktop"));
    return item;
}

QByteArray XdgAutostartLoginItem::entryText() const
{
    const QString text = QStringLiteral("[Desktop Entry]\n"
                                        "Type=Application\n"
                                        "Name=Obrinta\n"
                                        "Comment=Starts and stops applications for USB devices "
                                        "and WiFi networks\n"
                                        "Exec=%1\n"
                                        "Icon=obrinta\n"
                                        "Terminal=false\n"
                                        "X-GNOME-Autostart-enabled=true\n")
                             .arg(escapedValue(quotedExecArgument(m_executable)));
    return text.toUtf8();
}

std::optional<QString> XdgAutostartLoginItem::update(bool launchAtLogin)
{
    return launchAtLogin ? write() : remove();
}

std::optional<QString> XdgAutostartLoginItem::write()
{
    const QString folder = QFileInfo(m_filePath).absolutePath();
    if (!QDir().mkpath(folder))
        return QStringLiteral("cannot create the folder %1").arg(folder);
    QSaveFile file(m_filePath);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    file.write(entryText());
    if (!file.commit())
        return file.errorString();
    return std::nullopt;
}

std::optional<QString> XdgAutostartLoginItem::remove()
{
    QFile file(m_filePath);
    if (!file.exists() || file.remove())
        return std::nullopt;
    return file.errorString();
}
