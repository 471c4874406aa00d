#include "LogCapture.h"

#include "platform/Log.h"

QStringList& LogCapture::lines()
{
    static QStringList captured;
    return captured;
}

LogCapture::LogCapture()
{
    lines().clear();
    Log::setSink([](const QString& line) { lines().append(line); });
}

LogCapture::~LogCapture()
{
    Log::setSink(nullptr);
}

QStringList LogCapture::take()
{
    return std::exchange(lines(), {});
}
