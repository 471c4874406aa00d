#pragma once

#include <QString>

// The developer log on standard output. `info` lines appear in every build; `debugLog` lines only
// when debug logging is compiled in (OBRINTA_DEBUG_LOG) or switched on with OBRINTA_DEBUG=1.
namespace Log {

void info(const QString& line);
void debug(const QString& line);
bool debugEnabled();

// Test hook: sends every line to the given sink instead of standard output (nullptr restores).
using Sink = void (*)(const QString& line);
void setSink(Sink sink);

QString boolText(bool value);
// "0x%04X": at least four upper-case hexadecimal digits.
QString hexId(qint64 value);

} // namespace Log

inline void debugLog(const QString& line)
{
    Log::debug(line);
}
