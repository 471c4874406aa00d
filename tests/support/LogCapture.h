#pragma once

#include <QStringList>

// Collects the developer log of one test instead of printing it.
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();

    static QStringList& lines();
    QStringList take();
};
