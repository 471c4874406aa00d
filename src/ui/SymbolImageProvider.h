#pragma once

#include <QQuickImageProvider>

// "image://symbol/<name>" and "image://symbol/<name>/<rrggbb>" for the windows: the symbol drawn
// by SymbolIcons, filled with the colour when one is given (hexadecimal, without "#").
class SymbolImageProvider : public QQuickImageProvider
{
public:
    // `defaultTint` fills bundled drawings that are asked for without a colour.
    explicit SymbolImageProvider(QColor defaultTint);

    QPixmap requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) override;

private:
    QColor m_defaultTint;
};
