#include "SymbolImageProvider.h"

#include "SymbolIcons.h"

SymbolImageProvider::SymbolImageProvider(QColor defaultTint)
    : QQuickImageProvider(QQuickImageProvider::Pixmap), m_defaultTint(std::move(defaultTint))
{
}

QPixmap SymbolImageProvider::requestPixmap(const QString& id, QSize* size,
                                           const QSize& requestedSize)
{
    const qsizetype slash = id.indexOf(QLatin1Char('/'));
    const QString symbol = slash < 0 ? id : id.left(slash);
    const QColor tint = slash < 0 ? QColor() : QColor(QLatin1Char('#') + id.mid(slash + 1));
    const QSize wanted(requestedSize.width() > 0 ? requestedSize.width() : 16,
                       requestedSize.height() > 0 ? requestedSize.height() : 16);
    const QPixmap drawn = SymbolIcons::pixmap(symbol, wanted, tint, m_defaultTint);
    if (size)
        *size = drawn.size();
    return drawn;
}
