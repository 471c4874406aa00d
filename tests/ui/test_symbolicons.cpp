#include "UITestSupport.h"
#include "ui/SymbolIcons.h"

#include <QDirIterator>
#include <QIcon>
#include <QImage>
#include <QRegularExpression>
#include <QTest>

namespace {

// Pixels that are not fully transparent.
int paintedPixels(const QPixmap& pixmap)
{
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    int painted = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            painted += qAlpha(image.pixel(x, y)) > 0;
    }
    return painted;
}

// Every symbol name that the windows ask for.
QSet<QString> symbolsUsedByTheWindows()
{
    static const QRegularExpression patterns[] = {
        QRegularExpression("image://symbol/([A-Za-z0-9.]+)\""),
        QRegularExpression("(?<![.\\w])(?:name|symbol): \"([A-Za-z0-9.]+)\""),
        QRegularExpression("\\? \"([A-Za-z0-9.]+)\" : \"([A-Za-z0-9.]+)\"")};
    QSet<QString> names;
    QDirIterator files(":/obrinta/qml", {"*.qml"});
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        for (const QRegularExpression& pattern : patterns) {
            for (const QRegularExpressionMatch& match : pattern.globalMatch(text)) {
                for (int group = 1; group <= match.lastCapturedIndex(); ++group)
                    names.insert(match.captured(group));
            }
        }
    }
    return names;
}

} // namespace

class SymbolIconsTest : public QObject
{
    Q_OBJECT
public:
    static void initMain() { UITestSupport::useTemporaryHome(); }

private Q_SLOTS:
    void initTestCase() { QIcon::setThemeName("no-such-theme"); }

    void everySymbolShowsWithoutAnIconTheme()
    {
        const QSet<QString> used = symbolsUsedByTheWindows();
        QVERIFY(used.contains("figure.run"));
        QVERIFY(used.contains("checkmark.circle.fill"));
        for (const QString& name : used) {
            QVERIFY2(!SymbolIcons::bundledPath(name).isEmpty(), qPrintable(name));
            QVERIFY2(paintedPixels(SymbolIcons::pixmap(name, QSize(16, 16), QColor())) > 8,
                     qPrintable(name));
        }
        QVERIFY(paintedPixels(SymbolIcons::applicationIcon().pixmap(22, 22)) > 50);
        QDirIterator bundled(":/obrinta/icons");
        while (bundled.hasNext()) {
            const QString name = bundled.next().section('/', -1).chopped(4);
            QVERIFY2(!SymbolIcons::icon(name).isNull(), qPrintable(name));
        }
    }

    void tintFillsTheDrawing()
    {
        const QImage image =
            SymbolIcons::pixmap("stop.fill", QSize(16, 16), QColor(0x34, 0xC7, 0x59)).toImage();
        QCOMPARE(QColor(image.pixel(8, 8)), QColor(0x34, 0xC7, 0x59));
        QVERIFY(paintedPixels(SymbolIcons::pixmap("3.circle.fill", QSize(16, 16), Qt::blue)) > 50);
        QVERIFY(SymbolIcons::pixmap("no.such.symbol", QSize(16, 16), QColor()).isNull());
    }
};

QTEST_MAIN(SymbolIconsTest)
#include "test_symbolicons.moc"
