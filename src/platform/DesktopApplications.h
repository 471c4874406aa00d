#pragma once

#include <QString>

#include <functional>

// Applications as freedesktop desktop entries, looked up and launched through GIO.
class DesktopApplications
{
public:
    virtual ~DesktopApplications() = default;

    // The .desktop file that a desktop-file id (without ".desktop") resolves to, or empty.
    virtual QString desktopFileForId(const QString& desktopId) = 0;
    // The absolute path of the program that an id's entry runs; an absolute path names itself.
    virtual QString executableForId(const QString& desktopId) = 0;
    // Launches a .desktop file or an executable in the background. `done` runs on the main
    // thread with GIO's error message, or an empty text on success.
    virtual void launch(const QString& path, std::function<void(const QString& error)> done) = 0;
};
