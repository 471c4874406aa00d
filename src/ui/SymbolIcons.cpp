#include "SymbolIcons.h"

#include <QFile>
#include <QHash>
#include <QPainter>
#include <QRegularExpression>

#include <optional>

namespace SymbolIcons {

namespace {

const QHash<QString, QStringList>& themeTable()
{
    static const QHash<QString, QStringList> table{
        {QStringLiteral("gear"), {QStringLiteral("preferences-system")}},
        {QStringLiteral("link"), {QStringLiteral("insert-link")}},
        {QStringLiteral("link.badge.plus"), {QStringLiteral("insert-link")}},
        {QStringLiteral("wifi"), {QStringLiteral("network-wireless")}},
        {QStringLiteral("wifi.slash"), {QStringLiteral("network-wireless-offline")}},
        {QStringLiteral("cable.connector"),
         {QStringLiteral("drive-removable-media-usb"), QStringLiteral("media-removable")}},
        {QStringLiteral("cable.connector.horizontal"),
         {QStringLiteral("drive-removable-media-usb"), QStringLiteral("media-removable")}},
        {QStringLiteral("arrow.clockwise"), {QStringLiteral("view-refresh")}},
        {QStringLiteral("arrow.right"), {QStringLiteral("go-next")}},
        {QStringLiteral("arrow.up.forward.app"), {QStringLiteral("document-open")}},
        {QStringLiteral("power"),
         {QStringLiteral("application-exit"), QStringLiteral("system-shutdown")}},
        {QStringLiteral("checkmark.circle.fill"), {QStringLiteral("emblem-ok")}},
        {QStringLiteral("xmark.circle.fill"), {QStringLiteral("dialog-error")}},
        {QStringLiteral("exclamationmark.triangle"), {QStringLiteral("dialog-warning")}},
        {QStringLiteral("plus"), {QStringLiteral("list-add")}},
        {QStringLiteral("plus.circle.fill"), {QStringLiteral("list-add")}},
        {QStringLiteral("trash"), {QStringLiteral("edit-delete"), QStringLiteral("user-trash")}},
        {QStringLiteral("play.fill"), {QStringLiteral("media-playback-start")}},
        {QStringLiteral("play.circle"), {QStringLiteral("media-playback-start")}},
        {QStringLiteral("stop.fill"), {QStringLiteral("media-playback-stop")}},
        {QStringLiteral("keyboard"), {QStringLiteral("input-keyboard")}},
        {QStringLiteral("computermouse"), {QStringLiteral("input-mouse")}},
        {QStringLiteral("key.fill"), {QStringLiteral("dialog-password")}},
        {QStringLiteral("apple.logo"), {QStringLiteral("computer")}},
        {QStringLiteral("folder"), {QStringLiteral("folder")}},
        {QStringLiteral("magnifyingglass"),
         {QStringLiteral("edit-find"), QStringLiteral("system-search")}},
        {QStringLiteral("chevron.up"), {QStringLiteral("go-up")}},
        {QStringLiteral("chevron.down"), {QStringLiteral("go-down")}},
        {QStringLiteral("app"), {QStringLiteral("application-x-executable")}},
    };
    return table;
}

// "<n>.circle.fill": a filled disc with the number cut out.
QPixmap numberedCircle(int number, QSize size, const QColor& color)
{
    QPixmap canvas(size);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QRectF(QPointF(0, 0), QSizeF(size)).adjusted(0.5, 0.5, -0.5, -0.5));
    QFont font = painter.font();
    font.setBold(true);
    font.setPixelSize(qMax(6, int(size.height() * 0.6)));
    painter.setFont(font);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.setPen(Qt::black);
    painter.drawText(canvas.rect(), Qt::AlignCenter, QString::number(number));
    return canvas;
}

QPixmap filled(QPixmap pixmap, const QColor& color)
{
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    return pixmap;
}

std::optional<int> circleNumber(const QString& symbol)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,2})\\.circle\\.fill$"));
    const QRegularExpressionMatch match = pattern.match(symbol);
    if (!match.hasMatch())
        return std::nullopt;
    return match.captured(1).toInt();
}

} // namespace

QStringList themeNames(const QString& symbol)
{
    return themeTable().value(symbol);
}

QString bundledPath(const QString& symbol)
{
    const QString path = QStringLiteral(":/obrinta/icons/%1.svg").arg(symbol);
    return QFile::exists(path) ? path : QString();
}

QIcon icon(const QString& symbol)
{
    for (const QString& name : themeNames(symbol)) {
        if (QIcon::hasThemeIcon(name))
            return QIcon::fromTheme(name);
    }
    const QString path = bundledPath(symbol);
    return path.isEmpty() ? QIcon() : QIcon(path);
}

QPixmap pixmap(const QString& symbol, QSize size, const QColor& tint, const QColor& fallbackTint)
{
    if (const std::optional<int> number = circleNumber(symbol))
        return numberedCircle(*number, size, tint.isValid() ? tint : fallbackTint);
    for (const QString& name : themeNames(symbol)) {
        if (QIcon::hasThemeIcon(name)) {
            const QPixmap themed = QIcon::fromTheme(name).pixmap(size);
            return tint.isValid() ? filled(themed, tint) : themed;
        }
    }
    const QString path = bundledPath(symbol);
    if (path.isEmpty())
        return {};
    const QPixmap drawn = QIcon(path).pixmap(size);
    const QColor color = tint.isValid() ? tint : fallbackTint;
    return color.isValid() ? filled(drawn, color) : drawn;
}

QIcon applicationIcon()
{
    return QIcon::fromTheme(QStringLiteral("obrinta"),
                            QIcon(QStringLiteral(":/obrinta/obrinta.svg")));
}

} // namespace SymbolIcons
