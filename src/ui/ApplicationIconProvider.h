#pragma once

#include <QQuickImageProvider>

// "image://appicon/<icon>" for the rule windows: an application's icon from the icon theme (a
// theme name) or from its file (an absolute path), with the "app" symbol when neither gives one.
class ApplicationIconProvider : public QQuickImageProvider
{
public:
    // `fallbackTint` fills the "app" symbol.
    explicit ApplicationIconProvider(QColor fallbackTint);

    QPixmap requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) override;

    static QIcon icon(const QString& name);

private:
    QColor m_fallbackTint;
};
