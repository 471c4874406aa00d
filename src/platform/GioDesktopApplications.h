#pragma once

#include "DesktopApplications.h"

class GioDesktopApplications : public DesktopApplications
{
public:
    QString desktopFileForId(const QString& desktopId) override;
    QString executableForId(const QString& desktopId) override;
    void launch(const QString& path, std::function<void(const QString& error)> done) override;

    // Runs on a worker thread: spawning can block on the file system and on D-Bus activation.
    static QString launchBlocking(const QString& path);
};
