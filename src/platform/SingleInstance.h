#pragma once

#include <QObject>

// One Obrinta per user session: the first start owns a well-known name on the session bus; a
// later start asks the owner to show its settings window instead of running.
class SingleInstance : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "io.github.obrinta.Obrinta")
public:
    static const QString serviceName;
    static const QString objectPath;

    enum class Claim
    {
        Owned,
        AlreadyRunning,
        NoSessionBus
    };

    explicit SingleInstance(QObject* parent = nullptr);

    // Takes the name, or, when another process holds it, calls ShowSettings on that process.
    Claim claim();

public Q_SLOTS:
    Q_SCRIPTABLE void ShowSettings();

Q_SIGNALS:
    void showSettingsRequested();
};
