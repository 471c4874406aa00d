#include "Log.h"

#include <QByteArray>
#include <cstdio>
#include <cstdlib>

namespace {

Log::Sink g_sink = nullptr;

bool computeDebugEnabled()
{
#ifdef OBRINTA_DEBUG_LOG
    return true;
#else
    return qgetenv("OBRINTA_DEBUG") == "1";
#endif
}

void write(const QString& line)
{
    if (g_sink) {
        g_sink(line);
        return;
    }
    const QByteArray bytes = line.toUtf8() + '\n';
    // One write per line, flushed at once, so that a reader sees each line as it happens.
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    std::fflush(stdout);
}

} // namespace

namespace Log {

void info(const QString& line)
{
    write(line);
}

void debug(const QString& line)
{
    if (debugEnabled())
        write(line);
}

bool debugEnabled()
{
    static const bool enabled = computeDebugEnabled();
    return enabled;
}

void setSink(Sink sink)
{
    g_sink = sink;
}

QString boolText(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString hexId(qint64 value)
{
    // Like printf's %X, a negative id shows as its 32-bit two's complement.
    if (value < 0)
        value = qint64(quint32(value));
    return QStringLiteral("0x%1").arg(QString::number(value, 16).toUpper(), 4, QLatin1Char('0'));
}

} // namespace Log
