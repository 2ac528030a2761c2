#include "toolkit/pixels.h"

#include <QPainter>
#include <QTest>

using namespace skinwidgets;

class TestPixels : public QObject
{
    Q_OBJECT

private slots:
    void createdPixmapIsStraightAndClear();
    void createdPixmapWithoutAreaIsNull();
    void pixmapKeepsColoursUnderAlphaZero();
    void straightPixmapIsShared();
    void premultipliedBecomesStraight();
    void opaqueBecomesStraightWithFullAlpha();
    void overwriteAlpha_data();
    void overwriteAlpha();
    void overwriteAlphaOfOtherFormats();
    void overwriteAlphaOfPart();
    void viewWithoutAlphaSharesPixels();
    void coloursDoNotDependOnTargetAlpha_data();
    void coloursDoNotDependOnTargetAlpha();
    void blendOverMatchesPainter_data();
    void blendOverMatchesPainter();
    void blendColoursClips();
    void blendOverMergesAlpha_data();
    void blendOverMergesAlpha();
    void blendOverOutside();
    void nullPicturesChangeNothing();
};

namespace
{

QImage filled(int w, int h, QRgb pixel)
{
    QImage image(w, h, QImage::Format_ARGB32);
    image.fill(pixel);
    return image;
}

} // namespace

void TestPixels::createdPixmapIsStraightAndClear()
{
    const QImage image = createPixmap32(QSize(3, 2)).toImage();
    QCOMPARE(image.size(), QSize(3, 2));
    QCOMPARE(image.format(), QImage::Format_ARGB32);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            QCOMPARE(image.pixel(x, y), 0U);
}

void TestPixels::createdPixmapWithoutAreaIsNull()
{
    QVERIFY(createPixmap32(QSize(0, 5)).isNull());
    QVERIFY(createPixmap32(QSize(5, -1)).isNull());
    QVERIFY(createPixmap32(QSize()).isNull());
}

void TestPixels::pixmapKeepsColoursUnderAlphaZero()
{
    const QPixmap pixmap = pixmapFromStraight(filled(2, 2, 0x00a1b2c3));
    QCOMPARE(pixmap.toImage().pixel(1, 1), 0x00a1b2c3U);
}

void TestPixels::straightPixmapIsShared()
{
    const QPixmap pixmap = pixmapFromStraight(filled(2, 2, 0x40a1b2c3));
    QCOMPARE(toStraight(pixmap).cacheKey(), pixmap.cacheKey());
}

void TestPixels::premultipliedBecomesStraight()
{
    QPixmap pixmap(2, 2);
    pixmap.fill(QColor(255, 0, 0, 0));
    pixmap = toStraight(pixmap);
    QCOMPARE(pixmap.toImage().format(), QImage::Format_ARGB32);
    QCOMPARE(qAlpha(pixmap.toImage().pixel(0, 0)), 0);
}

void TestPixels::opaqueBecomesStraightWithFullAlpha()
{
    QImage image(1, 1, QImage::Format_RGB32);
    image.fill(0x00102030);
    QCOMPARE(toStraight(image).format(), QImage::Format_ARGB32);
    QCOMPARE(toStraight(image).pixel(0, 0), 0xff102030U);
    QCOMPARE(toStraight(QPixmap::fromImage(image)).toImage().pixel(0, 0), 0xff102030U);
}

void TestPixels::overwriteAlpha_data()
{
    QTest::addColumn<uint>("before");
    QTest::addColumn<int>("alpha");
    QTest::addColumn<uint>("after");
    QTest::newRow("0 over opaque") << 0xff123456U << 0 << 0x00123456U;
    QTest::newRow("255 over clear") << 0x00123456U << 255 << 0xff123456U;
    QTest::newRow("128 over 64") << 0x40fefdfcU << 128 << 0x80fefdfcU;
    QTest::newRow("same") << 0x40fefdfcU << 64 << 0x40fefdfcU;
    QTest::newRow("white") << 0xffffffffU << 1 << 0x01ffffffU;
}

void TestPixels::overwriteAlpha()
{
    QFETCH(uint, before);
    QFETCH(int, alpha);
    QFETCH(uint, after);
    QImage image = filled(5, 3, before);
    skinwidgets::overwriteAlpha(image, static_cast<uchar>(alpha));
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x)
            QCOMPARE(reinterpret_cast<const QRgb*>(image.constScanLine(y))[x], after);
}

void TestPixels::overwriteAlphaOfOtherFormats()
{
    QImage rgb(1, 1, QImage::Format_RGB32);
    rgb.fill(0xff010203);
    skinwidgets::overwriteAlpha(rgb, 9);
    QCOMPARE(rgb.format(), QImage::Format_ARGB32);
    QCOMPARE(rgb.pixel(0, 0), 0x09010203U);
    QImage null;
    skinwidgets::overwriteAlpha(null, 9);
    QVERIFY(null.isNull());
}

void TestPixels::overwriteAlphaOfPart()
{
    QImage image = filled(4, 4, 0x40fefdfc);
    // Reaches beyond the picture at the right and below.
    skinwidgets::overwriteAlpha(image, QRect(2, 1, 9, 9), 7);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            QCOMPARE(image.pixel(x, y), x >= 2 && y >= 1 ? 0x07fefdfcU : 0x40fefdfcU);
    const QImage before = image.copy();
    skinwidgets::overwriteAlpha(image, QRect(4, 0, 2, 2), 9);
    skinwidgets::overwriteAlpha(image, QRect(), 9);
    QCOMPARE(image, before);
}

void TestPixels::viewWithoutAlphaSharesPixels()
{
    const QImage image = filled(2, 2, 0x00a1b2c3);
    const QImage view = withoutAlpha(image);
    QCOMPARE(view.format(), QImage::Format_RGB32);
    QCOMPARE(static_cast<const void*>(view.constBits()), static_cast<const void*>(image.constBits()));
    QCOMPARE(view.pixel(1, 1), 0xffa1b2c3U);
}

void TestPixels::coloursDoNotDependOnTargetAlpha_data()
{
    QTest::addColumn<int>("alpha");
    for (const int alpha : {0, 1, 127, 128, 254, 255})
        QTest::addRow("target alpha %d", alpha) << alpha;
}

void TestPixels::coloursDoNotDependOnTargetAlpha()
{
    QFETCH(int, alpha);
    // Every source alpha against one opaque reference that the toolkit's own painter makes.
    QImage picture(256, 1, QImage::Format_ARGB32);
    for (int x = 0; x < 256; ++x)
        picture.setPixel(x, 0, qRgba(200, 255 - x, x, x));
    QImage reference(256, 1, QImage::Format_RGB32);
    reference.fill(0xff336699);
    QPainter(&reference).drawImage(0, 0, picture);

    QImage target = filled(256, 1, (static_cast<QRgb>(alpha) << 24) | 0x336699);
    blendColours(target, picture, QPoint());
    for (int x = 0; x < 256; ++x)
        QCOMPARE(target.pixel(x, 0) & 0xffffff, reference.pixel(x, 0) & 0xffffff);

    target = filled(256, 1, (static_cast<QRgb>(alpha) << 24) | 0x336699);
    blendOver(target, picture, QPoint());
    for (int x = 0; x < 256; ++x)
        QCOMPARE(target.pixel(x, 0) & 0xffffff, reference.pixel(x, 0) & 0xffffff);
}

void TestPixels::blendOverMatchesPainter_data()
{
    QTest::addColumn<QImage::Format>("format");
    QTest::addColumn<int>("width");
    for (const QImage::Format format :
         {QImage::Format_ARGB32, QImage::Format_ARGB32_Premultiplied, QImage::Format_RGB32}) {
        // Narrow pictures as well: several pixels are blended at a time where the processor can.
        for (const int width : {1, 2, 3, 4, 5, 7, 256})
            QTest::addRow("format %d, width %d", format, width) << format << width;
    }
}

void TestPixels::blendOverMatchesPainter()
{
    QFETCH(QImage::Format, format);
    QFETCH(int, width);
    // Rows run through the colours of the target, columns through those of the picture.
    QImage picture(width, 256, QImage::Format_ARGB32);
    QImage opaque(width + 3, 256, QImage::Format_RGB32);
    for (int alpha = 0; alpha < 256; ++alpha) {
        for (int y = 0; y < 256; ++y) {
            for (int x = 0; x < width; ++x)
                picture.setPixel(x, y, qRgba((x * 37 + y) & 255, 255 - (x & 255), x & 255, (alpha + (x & 1)) & 255));
            for (int x = 0; x < width + 3; ++x)
                opaque.setPixel(x, y, qRgb(y, 255 - y, (x * 91 + y * 3) & 255));
        }
        const QImage source = picture.convertToFormat(format);
        QImage target = opaque.convertToFormat(QImage::Format_ARGB32);
        blendOver(target, source, QPoint(2, 0));
        QPainter(&opaque).drawImage(2, 0, source);
        QCOMPARE(target.convertToFormat(QImage::Format_RGB32), opaque);
    }
}

void TestPixels::blendColoursClips()
{
    QImage target = filled(3, 1, 0xff000000);
    blendColours(target, filled(2, 2, 0xffffffff), QPoint(2, -1));
    QCOMPARE(target.pixel(1, 0), 0xff000000U);
    QCOMPARE(target.pixel(2, 0), 0xffffffffU);
}

void TestPixels::blendOverMergesAlpha_data()
{
    QTest::addColumn<int>("source");
    QTest::addColumn<int>("target");
    QTest::addColumn<int>("result");
    QTest::newRow("opaque picture") << 255 << 0 << 255;
    QTest::newRow("opaque target") << 10 << 255 << 255;
    QTest::newRow("clear picture keeps the target") << 0 << 64 << 64;
    QTest::newRow("clear target takes the picture") << 77 << 0 << 77;
    QTest::newRow("halves") << 128 << 128 << 192;
}

void TestPixels::blendOverMergesAlpha()
{
    QFETCH(int, source);
    QFETCH(int, target);
    QFETCH(int, result);
    QImage image = filled(4, 4, (static_cast<QRgb>(target) << 24) | 0x336699);
    blendOver(image, filled(2, 2, (static_cast<QRgb>(source) << 24) | 0x112233), QPoint(1, 1));
    QCOMPARE(qAlpha(image.pixel(1, 1)), result);
    QCOMPARE(qAlpha(image.pixel(2, 2)), result);
    QCOMPARE(image.pixel(0, 0), (static_cast<QRgb>(target) << 24) | 0x336699);
    QCOMPARE(image.pixel(3, 3), (static_cast<QRgb>(target) << 24) | 0x336699);
}

void TestPixels::blendOverOutside()
{
    QImage image = filled(2, 2, 0x40336699);
    const QImage before = image.copy();
    blendOver(image, filled(2, 2, 0xffffffff), QPoint(2, 0));
    blendOver(image, filled(2, 2, 0xffffffff), QPoint(0, -2));
    QCOMPARE(image, before);
}

void TestPixels::nullPicturesChangeNothing()
{
    QImage image = filled(2, 2, 0x40336699);
    const QImage before = image.copy();
    blendColours(image, QImage(), QPoint());
    blendOver(image, QImage(), QPoint());
    QCOMPARE(image, before);
    QImage null;
    blendColours(null, before, QPoint());
    blendOver(null, before, QPoint());
    QVERIFY(null.isNull());
}

QTEST_MAIN(TestPixels)
#include "tst_pixels.moc"
