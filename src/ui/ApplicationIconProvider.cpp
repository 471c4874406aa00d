#include "ApplicationIconProvider.h"

#include "SymbolIcons.h"

#include <QFileInfo>
#include <QIcon>
#include <QUrl>

ApplicationIconProvider::ApplicationIconProvider(QColor fallbackTint)
    : QQuickImageProvider(QQuickImageProvider::Pixmap), m_fallbackTint(fallbackTint)
{
}

QIcon ApplicationIconProvider::icon(const QString& name)
{
    if (name.isEmpty())
        return {};
    if (name.startsWith(QLatin1Char('/')))
        return QFileInfo(name).isFile() ? QIcon(name) : QIcon();
    if (QIcon::hasThemeIcon(name))
        return QIcon::fromTheme(name);
    // Some entries name their icon with a file extension, which theme lookups leave out.
    const QString base = QFileInfo(name).completeBaseName();
    return base != name && QIcon::hasThemeIcon(base) ? QIcon::fromTheme(base) : QIcon();
}

QPixmap ApplicationIconProvider::requestPixmap(const QString& id, QSize* size,
                                               const QSize& requestedSize)
{
    const QSize wanted = requestedSize.isValid() ? requestedSize : QSize(32, 32);
    QPixmap pixmap = icon(QUrl::fromPercentEncoding(id.toUtf8())).pixmap(wanted);
    if (pixmap.isNull())
        pixmap = SymbolIcons::pixmap(QStringLiteral("app"), wanted, QColor(), m_fallbackTint);
    if (size)
        *size = pixmap.size();
    return pixmap;
}
