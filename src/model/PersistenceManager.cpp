#include "PersistenceManager.h"

#include "RuleJson.h"
#include "platform/Log.h"
#include "platform/UserDefaults.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

namespace {
const QString kBindingsFile = QStringLiteral("bindings.json");
const QString kWiFiBindingsFile = QStringLiteral("wifi-bindings.json");
} // namespace

PersistenceManager::PersistenceManager(UserDefaults& userDefaults) : m_userDefaults(userDefaults) {}

PersistenceManager& PersistenceManager::shared()
{
    static PersistenceManager manager(UserDefaults::standard());
    return manager;
}

QString PersistenceManager::storageDirectory() const
{
    QString name = QStringLiteral("Obrinta");
    if (qEnvironmentVariableIsSet("XCTestConfigurationFilePath"))
        name = QStringLiteral("Obrinta-Tests-%1").arg(QCoreApplication::applicationPid());

    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (base.isEmpty()) {
        Log::info(QStringLiteral(
            "Failed to locate Application Support directory; using temporary directory."));
        return QDir::tempPath() + QLatin1Char('/') + name;
    }
    const QString folder = base + QLatin1Char('/') + name;
    QDir().mkpath(folder);
    return folder;
}

template <typename Rule>
QList<Rule> PersistenceManager::load(const QString& fileName, const QString& key)
{
    QFile file(storageDirectory() + QLatin1Char('/') + fileName);
    if (file.open(QIODevice::ReadOnly)) {
        if (auto rules = RuleJson::decodeList<Rule>(file.readAll()))
            return *rules;
    }
    const auto fallback = m_userDefaults.data(key);
    if (!fallback)
        return {};
    return RuleJson::decodeList<Rule>(*fallback).value_or(QList<Rule>{});
}

template <typename Rule>
void PersistenceManager::save(const QList<Rule>& rules, const QString& fileName, const QString& key,
                              const QString& failurePrefix)
{
    QString error;
    if (const auto bytes = RuleJson::encodeList(rules, QJsonDocument::Indented)) {
        // Written beside the old file and renamed over it, so a crash leaves one list or the
        // other, never a truncated file; unbuffered, so that a full disk fails the commit.
        QSaveFile file(storageDirectory() + QLatin1Char('/') + fileName);
        if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
            file.write(*bytes) == bytes->size()) {
            file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
            if (file.commit())
                return;
        }
        error = file.errorString();
    } else {
        error = QStringLiteral("a rule's forceQuitTimeout is not a finite number");
    }
    Log::info(failurePrefix + error);
    if (const auto compact = RuleJson::encodeList(rules, QJsonDocument::Compact))
        m_userDefaults.setData(key, *compact);
}

QList<DeviceAppBinding> PersistenceManager::loadBindings()
{
    return load<DeviceAppBinding>(kBindingsFile, bindingsKey);
}

QList<WiFiAppBinding> PersistenceManager::loadWiFiBindings()
{
    return load<WiFiAppBinding>(kWiFiBindingsFile, wifiBindingsKey);
}

void PersistenceManager::saveBindings(const QList<DeviceAppBinding>& bindings)
{
    save(bindings, kBindingsFile, bindingsKey, QStringLiteral("Failed to save bindings: "));
}

void PersistenceManager::saveWiFiBindings(const QList<WiFiAppBinding>& bindings)
{
    save(bindings, kWiFiBindingsFile, wifiBindingsKey,
         QStringLiteral("Failed to save WiFi bindings: "));
}

bool PersistenceManager::switchValue(const QString& key) const
{
    // Absent or not a Boolean reads as on; a stored 0 or 1 reads as off or on.
    const QJsonValue value = m_userDefaults.object(key);
    if (value.isBool())
        return value.toBool();
    if (value.isDouble() && (value.toDouble() == 0 || value.toDouble() == 1))
        return value.toDouble() == 1;
    return true;
}

bool PersistenceManager::launchAtLogin() const
{
    return m_userDefaults.boolean(QStringLiteral("launchAtLogin"));
}

void PersistenceManager::setLaunchAtLogin(bool value)
{
    m_userDefaults.setBoolean(QStringLiteral("launchAtLogin"), value);
}

bool PersistenceManager::showNotifications() const
{
    return switchValue(QStringLiteral("showNotifications"));
}

void PersistenceManager::setShowNotifications(bool value)
{
    m_userDefaults.setBoolean(QStringLiteral("showNotifications"), value);
}

bool PersistenceManager::monitoringEnabled() const
{
    return switchValue(QStringLiteral("monitoringEnabled"));
}

void PersistenceManager::setMonitoringEnabled(bool value)
{
    m_userDefaults.setBoolean(QStringLiteral("monitoringEnabled"), value);
}

bool PersistenceManager::wifiMonitoringEnabled() const
{
    return switchValue(QStringLiteral("wifiMonitoringEnabled"));
}

void PersistenceManager::setWifiMonitoringEnabled(bool value)
{
    m_userDefaults.setBoolean(QStringLiteral("wifiMonitoringEnabled"), value);
}
