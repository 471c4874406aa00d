#include "UITestSupport.h"

#include "model/AppState.h"
#include "model/PersistenceManager.h"

#include <QDir>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>

TestShell::TestShell()
    : content(AppState::shared()), commands([this] { ++openSettingsCount; }),
      general(PersistenceManager::shared(), AppState::shared(), loginItem),
      host({{QStringLiteral("appState"), &AppState::shared()},
            {QStringLiteral("menuBarContent"), &content},
            {QStringLiteral("menuBarCommands"), &commands},
            {QStringLiteral("generalSettings"), &general}})
{
}

namespace UITestSupport {

void useTemporaryHome()
{
    static QTemporaryDir home;
    for (const char* folder : {"config", "data", "runtime"})
        QDir(home.path()).mkpath(QLatin1String(folder));
    QFile::setPermissions(home.filePath(QStringLiteral("runtime")),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toUtf8());
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toUtf8());
    qputenv("XDG_RUNTIME_DIR", home.filePath(QStringLiteral("runtime")).toUtf8());
    // No desktop icon theme: the bundled drawings are what every machine shows alike.
    qputenv("XDG_DATA_DIRS", home.filePath(QStringLiteral("system-data")).toUtf8());
}

USBDevice device(qint64 vendorID, qint64 productID, const QString& vendor, const QString& product)
{
    USBDevice made;
    made.id = QStringLiteral("%1:%2").arg(vendorID).arg(productID);
    made.vendorID = vendorID;
    made.productID = productID;
    made.vendorName = vendor;
    made.productName = product;
    return made;
}

DeviceAppBinding rule(const QString& appName, const QString& deviceName, qint64 vendorID,
                      qint64 productID, bool isEnabled)
{
    DeviceAppBinding made;
    made.id = QUuid::createUuid();
    made.appName = appName;
    made.appBundleIdentifier = QStringLiteral("org.example.") + appName;
    made.deviceName = deviceName;
    made.deviceVendorID = vendorID;
    made.deviceProductID = productID;
    made.isEnabled = isEnabled;
    return made;
}

namespace {

// Controls keep some children (tab buttons, delegates) only as visual children.
QQuickItem* find(QQuickItem* root, const QString& objectName)
{
    if (root->objectName() == objectName)
        return root;
    for (QQuickItem* child : root->childItems()) {
        if (QQuickItem* found = find(child, objectName))
            return found;
    }
    return nullptr;
}

} // namespace

QQuickItem* item(QQuickWindow* window, const QString& objectName)
{
    return window ? find(window->contentItem(), objectName) : nullptr;
}

bool click(QQuickWindow* window, const QString& objectName)
{
    if (!QTest::qWaitForWindowExposed(window))
        return false;
    QQuickItem* target = item(window, objectName);
    if (!target || !target->isVisible() || target->width() <= 0)
        return false;
    const QPointF middle = target->mapToScene(QPointF(target->width() / 2, target->height() / 2));
    QTest::mouseClick(window, Qt::LeftButton, {}, middle.toPoint());
    return true;
}

} // namespace UITestSupport
