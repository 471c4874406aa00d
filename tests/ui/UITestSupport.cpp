#include "UITestSupport.h"

#include "model/AppState.h"
#include "model/PersistenceManager.h"
#include "ui/ShortcutConfigurationEditor.h"

#include <QDir>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>

TestShell::TestShell()
    : content(AppState::shared()), commands([this] { ++openSettingsCount; }, true),
      general(PersistenceManager::shared(), AppState::shared(), loginItem),
      host({{"appState", &AppState::shared()},
            {"menuBarContent", &content},
            {"menuBarCommands", &commands},
            {"generalSettings", &general}})
{
}

QQuickWindow* TestShell::settings(const QString& tabItem)
{
    host.showSettings();
    QQuickWindow* window = host.settingsWindow();
    return UITestSupport::click(window, tabItem) ? window : nullptr;
}

namespace UITestSupport {

namespace {

QQuickWindow* shownWindow(const QString& objectName)
{
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        auto* quick = qobject_cast<QQuickWindow*>(window);
        if (quick && quick->objectName() == objectName && quick->isVisible())
            return quick;
    }
    return nullptr;
}

// Controls keep some children (tab buttons, delegates) only as visual children.
void collect(QQuickItem* root, const QString& objectName, QList<QQuickItem*>& found)
{
    if (!root->isVisible())
        return;
    if (root->objectName() == objectName)
        found.append(root);
    for (QQuickItem* child : root->childItems())
        collect(child, objectName, found);
}

void writeFile(const QString& path, const QString& text, QFileDevice::Permissions permissions)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(text.toUtf8());
    file.close();
    file.setPermissions(permissions);
}

} // namespace

void useTemporaryHome()
{
    static QTemporaryDir home;
    for (const char* folder : {"config", "data", "runtime"})
        QDir(home.path()).mkpath(QLatin1String(folder));
    QFile::setPermissions(home.filePath("runtime"),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.filePath("config").toUtf8());
    qputenv("XDG_DATA_HOME", home.filePath("data").toUtf8());
    qputenv("XDG_RUNTIME_DIR", home.filePath("runtime").toUtf8());
    // No desktop icon theme: the bundled drawings are what every machine shows alike.
    qputenv("XDG_DATA_DIRS", home.filePath("system-data").toUtf8());
}

void clearState()
{
    AppState& state = AppState::shared();
    state.setIsMonitoring(false);
    state.setIsWiFiMonitoring(false);
    state.setConnectedDevices({});
    state.setBindings({});
    state.setWifiBindings({});
    state.setCurrentWiFiNetwork(std::nullopt);
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
    made.appBundleIdentifier = "org.example." + appName;
    made.deviceName = deviceName;
    made.deviceVendorID = vendorID;
    made.deviceProductID = productID;
    made.isEnabled = isEnabled;
    return made;
}

QList<QQuickItem*> items(QQuickItem* root, const QString& objectName)
{
    QList<QQuickItem*> found;
    if (root)
        collect(root, objectName, found);
    return found;
}

QQuickItem* item(QQuickWindow* window, const QString& objectName)
{
    return items(window ? window->contentItem() : nullptr, objectName).value(0);
}

QString text(QQuickWindow* window, const QString& objectName)
{
    QQuickItem* found = item(window, objectName);
    return found ? found->property("text").toString() : QString();
}

bool isOn(QQuickWindow* window, const QString& objectName)
{
    QQuickItem* found = item(window, objectName);
    return found && found->property("checked").toBool();
}

bool isEnabled(QQuickWindow* window, const QString& objectName)
{
    QQuickItem* found = item(window, objectName);
    return found && found->isEnabled();
}

QQuickWindow* sheet(const QString& objectName)
{
    QQuickWindow* found = nullptr;
    const bool shown = QTest::qWaitFor([&] { return (found = shownWindow(objectName)); }, 2000);
    return shown && QTest::qWaitForWindowExposed(found) ? found : nullptr;
}

bool sheetCloses(const QString& objectName)
{
    return QTest::qWaitFor([&] { return shownWindow(objectName) == nullptr; }, 2000);
}

void scrollIntoView(QQuickItem* target)
{
    for (QQuickItem* parent = target->parentItem(); parent; parent = parent->parentItem()) {
        if (!parent->inherits("QQuickFlickable"))
            continue;
        auto* content = parent->property("contentItem").value<QQuickItem*>();
        if (!content)
            return;
        const qreal top = target->mapToItem(content, QPointF()).y();
        const qreal viewTop = parent->property("contentY").toReal();
        if (top < viewTop || top + target->height() > viewTop + parent->height()) {
            const qreal maxY =
                qMax<qreal>(0, parent->property("contentHeight").toReal() - parent->height());
            parent->setProperty("contentY", qBound<qreal>(0, top - 20, maxY));
        }
        return;
    }
}

bool click(QQuickItem* target, Qt::MouseButton button)
{
    if (!target || !target->isVisible() || !target->isEnabled() || target->width() <= 0)
        return false;
    QQuickWindow* window = target->window();
    if (!QTest::qWaitForWindowExposed(window))
        return false;
    scrollIntoView(target);
    QTest::qWait(20);
    const QPointF middle = target->mapToScene(QPointF(target->width() / 2, target->height() / 2));
    QTest::mouseClick(window, button, {}, middle.toPoint());
    return true;
}

bool click(QQuickWindow* window, const QString& objectName)
{
    return window && QTest::qWaitForWindowExposed(window) && click(item(window, objectName));
}

void typeInto(QQuickItem* field, const QString& text)
{
    if (!field)
        return;
    field->forceActiveFocus();
    for (const QChar c : text) {
        const auto key = c.unicode() < 0x80 ? Qt::Key(c.toUpper().unicode()) : Qt::Key_unknown;
        QTest::sendKeyEvent(QTest::Click, field->window(), key, QString(c), Qt::NoModifier);
    }
}

QJsonArray storedRules(const QString& fileName)
{
    QFile file(PersistenceManager::shared().storageDirectory() + '/' + fileName);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array()
                                          : QJsonArray();
}

QString writeDesktopEntry(const QString& id, const QString& name, const QString& exec)
{
    const QString path = qEnvironmentVariable("XDG_DATA_HOME") + "/applications/" + id + ".desktop";
    writeFile(
        path,
        QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=%2\n").arg(name, exec),
        QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return path;
}

void writeShortcut(const QString& name, const QString& body)
{
    writeFile(ShortcutConfigurationEditor::shortcutsFolder() + '/' + name,
              "#!/bin/sh\n" + body + '\n',
              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

} // namespace UITestSupport
