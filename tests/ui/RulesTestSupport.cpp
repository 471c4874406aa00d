#include "RulesTestSupport.h"

#include "model/PersistenceManager.h"
#include "ui/ShortcutConfigurationEditor.h"

#include <QDir>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

namespace RulesTestSupport {

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

void scrollIntoView(QQuickItem* target)
{
    for (QQuickItem* parent = target->parentItem(); parent; parent = parent->parentItem()) {
        if (!parent->inherits("QQuickFlickable"))
            continue;
        QQuickItem* content = parent->property("contentItem").value<QQuickItem*>();
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

QQuickWindow* sheet(const QString& objectName)
{
    QQuickWindow* found = nullptr;
    QTest::qWaitFor([&] { return (found = shownWindow(objectName)) != nullptr; }, 2000);
    if (found && !QTest::qWaitForWindowExposed(found))
        return nullptr;
    return found;
}

bool sheetCloses(const QString& objectName)
{
    return QTest::qWaitFor([&] { return shownWindow(objectName) == nullptr; }, 2000);
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
    const QList<QQuickItem*> found = items(window ? window->contentItem() : nullptr, objectName);
    return found.isEmpty() ? nullptr : found.first();
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
    return click(item(window, objectName));
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
    QFile file(PersistenceManager::shared().storageDirectory() + QLatin1Char('/') + fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).array();
}

QString writeDesktopEntry(const QString& id, const QString& name, const QString& exec)
{
    const QString path = qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/applications/") +
                         id + QStringLiteral(".desktop");
    writeFile(
        path,
        QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=%2\n").arg(name, exec),
        QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return path;
}

void writeShortcut(const QString& name, const QString& body)
{
    writeFile(ShortcutConfigurationEditor::shortcutsFolder() + QLatin1Char('/') + name,
              QStringLiteral("#!/bin/sh\n") + body + QLatin1Char('\n'),
              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

} // namespace RulesTestSupport
