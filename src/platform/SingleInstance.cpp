#include "SingleInstance.h"

#include "Log.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

const QString SingleInstance::serviceName = QStringLiteral("io.github.obrinta.Obrinta");
const QString SingleInstance::objectPath = QStringLiteral("/io/github/obrinta/Obrinta");

SingleInstance::SingleInstance(QObject* parent) : QObject(parent) {}

SingleInstance::Claim SingleInstance::claim()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface())
        return Claim::NoSessionBus;
    // Exported before the name is taken, so a second start never finds the name without it.
    bus.registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots);
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
        bus.interface()->registerService(serviceName, QDBusConnectionInterface::DontQueueService,
                                         QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid())
        return Claim::NoSessionBus;
    if (reply.value() == QDBusConnectionInterface::ServiceRegistered)
        return Claim::Owned;

    bus.unregisterObject(objectPath);
    const QDBusMessage call = QDBusMessage::createMethodCall(serviceName, objectPath, serviceName,
                                                             QStringLiteral("ShowSettings"));
    const QDBusMessage answer = bus.call(call, QDBus::Block, 5000);
    if (answer.type() == QDBusMessage::ErrorMessage)
        Log::info(QStringLiteral("⚠️ [Obrinta] Already running, but it did not answer: ") +
                  answer.errorMessage());
    else
        Log::info(
            QStringLiteral("ℹ️ [Obrinta] Already running; its settings window was opened"));
    return Claim::AlreadyRunning;
}

void SingleInstance::ShowSettings()
{
    Q_EMIT showSettingsRequested();
}
