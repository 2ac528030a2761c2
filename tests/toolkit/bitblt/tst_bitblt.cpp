#include "toolkit/pixels.h"
#include "toolkit/toolkit.h"

#include <QPainter>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>
#include <QWidget>

#include <climits>

using namespace skinwidgets;

class TestBitBlt : public QObject
{
    Q_OBJECT

private slots:
    void copiesAlphaByte_data();
    void copiesAlphaByte();
    void targetWithoutAlphaKeepsColours();
    void sourceWithoutAlphaIsOpaque();
    void premultipliedTargetBecomesStraight();
    void rectangles_data();
    void rectangles();
    void extremeNumbers();
    void pixmapSource();
    void sameImage();
    void nullDevices();
    void pointForm();
    void outsideAPaintEvent();
    void insidePaintEvent();
    void insidePaintEventWithAPainter_data();
    void insidePaintEventWithAPainter();
    void activePainter();
    void otherFormats();
};

namespace
{

// Each pixel tells where it came from.
QImage numbered(int w, int h)
{
    QImage image(w, h, QImage::Format_ARGB32);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            image.setPixel(x, y, qRgba(x, y, 7, 0));
    return image;
}

QImage filled(int w, int h, QRgb pixel)
{
    QImage image(w, h, QImage::Format_ARGB32);
    image.fill(pixel);
    return image;
}

} // namespace

void TestBitBlt::copiesAlphaByte_data()
{
    QTest::addColumn<uint>("pixel");
    QTest::newRow("clear") << 0x00abcdefU;
    QTest::newRow("one") << 0x01abcdefU;
    QTest::newRow("half") << 0x80abcdefU;
    QTest::newRow("opaque") << 0xffabcdefU;
}

void TestBitBlt::copiesAlphaByte()
{
    QFETCH(uint, pixel);
    const QImage source = filled(2, 2, pixel);
    QImage image = filled(4, 4, 0xff000000);
    bitBlt(&image, 1, 1, &source);
    QCOMPARE(image.pixel(1, 1), pixel);
    QCOMPARE(image.pixel(2, 2), pixel);
    QCOMPARE(image.pixel(3, 3), 0xff000000U);

    QPixmap pixmap = pixmapFromStraight(filled(4, 4, 0xff000000));
    bitBlt(&pixmap, 1, 1, &source);
    QCOMPARE(pixmap.toImage().format(), QImage::Format_ARGB32);
    QCOMPARE(pixmap.toImage().pixel(1, 1), pixel);
    QCOMPARE(pixmap.toImage().pixel(0, 0), 0xff000000U);
}

void TestBitBlt::targetWithoutAlphaKeepsColours()
{
    const QImage source = filled(2, 2, 0x00abcdef);
    QImage image(2, 2, QImage::Format_RGB32);
    image.fill(0);
    bitBlt(&image, 0, 0, &source);
    QCOMPARE(image.pixel(1, 1), 0xffabcdefU);

    QPixmap pixmap = QPixmap::fromImage(image);
    pixmap.fill(Qt::black);
    QVERIFY(!pixmap.hasAlphaChannel());
    bitBlt(&pixmap, 0, 0, &source);
    QCOMPARE(pixmap.toImage().pixel(1, 1), 0xffabcdefU);
}

// The fourth byte of a picture without alpha is no part of it, whatever stands there.
void TestBitBlt::sourceWithoutAlphaIsOpaque()
{
    const QImage bytes = filled(2, 2, 0x12abcdef);
    const QImage source(bytes.constBits(), 2, 2, bytes.bytesPerLine(), QImage::Format_RGB32);
    QImage image = filled(2, 2, 0);
    bitBlt(&image, 0, 0, &source);
    QCOMPARE(image.pixel(1, 1), 0xffabcdefU);
}

void TestBitBlt::premultipliedTargetBecomesStraight()
{
    const QImage source = filled(1, 1, 0x00abcdef);
    QImage image(2, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(0xff112233);
    bitBlt(&image, 0, 0, &source);
    QCOMPARE(image.pixel(0, 0), 0x00abcdefU);
    QCOMPARE(image.pixel(1, 0), 0xff112233U);

    QPixmap pixmap(2, 1);
    pixmap.fill(Qt::transparent);
    bitBlt(&pixmap, 0, 0, &source);
    QCOMPARE(pixmap.toImage().pixel(0, 0), 0x00abcdefU);
}

void TestBitBlt::rectangles_data()
{
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<QRect>("from");
    QTest::addColumn<QRect>("written");
    QTest::addColumn<QPoint>("firstSource");
    QTest::newRow("whole") << QPoint(0, 0) << QRect(0, 0, -1, -1) << QRect(0, 0, 4, 4) << QPoint(0, 0);
    QTest::newRow("rest from a corner") << QPoint(1, 2) << QRect(2, 1, -1, -1) << QRect(1, 2, 2, 3) << QPoint(2, 1);
    QTest::newRow("piece") << QPoint(3, 3) << QRect(1, 1, 2, 2) << QRect(3, 3, 2, 2) << QPoint(1, 1);
    QTest::newRow("left of the target") << QPoint(-1, 0) << QRect(0, 0, 3, 1) << QRect(0, 0, 2, 1) << QPoint(1, 0);
    QTest::newRow("beyond the target") << QPoint(5, 5) << QRect(0, 0, 4, 4) << QRect(5, 5, 1, 1) << QPoint(0, 0);
    QTest::newRow("before the source") << QPoint(0, 0) << QRect(-2, 0, 4, 1) << QRect(2, 0, 2, 1) << QPoint(0, 0);
    QTest::newRow("beyond the source") << QPoint(0, 0) << QRect(3, 3, 9, 9) << QRect(0, 0, 1, 1) << QPoint(3, 3);
    QTest::newRow("outside the source") << QPoint(0, 0) << QRect(4, 0, 2, 2) << QRect() << QPoint();
    QTest::newRow("outside the target") << QPoint(6, 0) << QRect(0, 0, 2, 2) << QRect() << QPoint();
    QTest::newRow("no width") << QPoint(0, 0) << QRect(0, 0, 0, 2) << QRect() << QPoint();
}

void TestBitBlt::rectangles()
{
    QFETCH(QPoint, to);
    QFETCH(QRect, from);
    QFETCH(QRect, written);
    QFETCH(QPoint, firstSource);
    const QImage source = numbered(4, 4);
    QImage target = filled(6, 6, 0xff909090);
    bitBlt(&target, to.x(), to.y(), &source, from.x(), from.y(), from.width(), from.height());
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 6; ++x) {
            const QPoint at = QPoint(x, y) - written.topLeft() + firstSource;
            QCOMPARE(target.pixel(x, y), written.contains(x, y) ? qRgba(at.x(), at.y(), 7, 0) : 0xff909090U);
        }
    }
}

void TestBitBlt::extremeNumbers()
{
    const QImage source = numbered(4, 4);
    const int numbers[] = {INT_MIN, INT_MIN + 1, -1, 2, INT_MAX - 1, INT_MAX};
    for (const int at : numbers)
        for (const int from : numbers)
            for (const int length : numbers) {
                QImage target = filled(6, 6, 0xff000000);
                bitBlt(&target, at, 2, &source, from, 2, length, 1);
                for (int x = 0; x < 6; ++x) {
                    const qint64 sourceX = qint64(from) + x - at;
                    const bool copied =
                        x >= at && sourceX >= 0 && sourceX < 4 && (length < 0 || x < qint64(at) + length);
                    QCOMPARE(target.pixel(x, 2), copied ? source.pixel(int(sourceX), 2) : 0xff000000U);
                }
            }
}

void TestBitBlt::pixmapSource()
{
    const QPixmap source = pixmapFromStraight(filled(2, 2, 0x00abcdef));
    QPixmap target = pixmapFromStraight(filled(2, 2, 0xff000000));
    bitBlt(&target, 1, 0, &source, 0, 0, 1, 1);
    QCOMPARE(target.toImage().pixel(1, 0), 0x00abcdefU);
    QCOMPARE(target.toImage().pixel(0, 0), 0xff000000U);
    QCOMPARE(target.toImage().pixel(1, 1), 0xff000000U);
}

void TestBitBlt::sameImage()
{
    QImage image = numbered(3, 1);
    bitBlt(&image, 1, 0, &image, 0, 0, 2, 1);
    QCOMPARE(image.pixel(0, 0), qRgba(0, 0, 7, 0));
    QCOMPARE(image.pixel(1, 0), qRgba(0, 0, 7, 0));
    QCOMPARE(image.pixel(2, 0), qRgba(1, 0, 7, 0));
}

void TestBitBlt::nullDevices()
{
    const QImage source = filled(2, 2, 0x00abcdef);
    QImage null;
    QPixmap nullPixmap;
    bitBlt(&null, 0, 0, &source);
    bitBlt(&nullPixmap, 0, 0, &source);
    bitBlt(static_cast<QPixmap*>(nullptr), 0, 0, &source);
    QVERIFY(null.isNull());
    QVERIFY(nullPixmap.isNull());
    QImage target = filled(2, 2, 0xff000000);
    bitBlt(&target, 0, 0, &null);
    bitBlt(&target, 0, 0, &nullPixmap);
    bitBlt(&target, 0, 0, static_cast<const QImage*>(nullptr));
    bitBlt(&target, QPoint(), static_cast<const QPaintDevice*>(nullptr));
    QCOMPARE(target, filled(2, 2, 0xff000000));
}

void TestBitBlt::pointForm()
{
    const QImage source = numbered(4, 4);
    QImage target = filled(2, 2, 0xff000000);
    bitBlt(&target, QPoint(1, 1), &source, QRect(3, 2, 1, 1));
    QCOMPARE(target.pixel(1, 1), qRgba(3, 2, 7, 0));
    QCOMPARE(target.pixel(0, 0), 0xff000000U);
}

void TestBitBlt::outsideAPaintEvent()
{
    QWidget widget;
    widget.resize(4, 4);
    const QImage picture = filled(4, 4, 0xff123456);
    QTest::failOnWarning(QRegularExpression(".*"));
    bitBlt(&widget, 0, 0, &picture);
    QVERIFY(widget.grab().toImage().pixel(1, 1) != 0xff123456U);
}

void TestBitBlt::insidePaintEvent()
{
    class Painted : public QWidget
    {
    public:
        QImage picture;

    protected:
        void paintEvent(QPaintEvent*) override { bitBlt(this, 1, 1, &picture, 1, 0); }
    };
    Painted widget;
    widget.picture = filled(3, 3, 0x00abcdef);
    widget.resize(4, 4);
    QImage shot = widget.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(shot.pixel(1, 1), 0xffabcdefU);
    QCOMPARE(shot.pixel(2, 3), 0xffabcdefU);
    QVERIFY(shot.pixel(0, 0) != 0xffabcdefU);
    QVERIFY(shot.pixel(3, 1) != 0xffabcdefU);
}

void TestBitBlt::insidePaintEventWithAPainter_data()
{
    QTest::addColumn<QString>("where");
    for (const char* where : {"screen", "grab", "render to a device", "render through a painter"})
        QTest::newRow(where) << where;
}

// What the open painter draws before and after stays as it is, and the copy heeds none of its settings.
void TestBitBlt::insidePaintEventWithAPainter()
{
    QFETCH(QString, where);
    class Widget : public QWidget
    {
    public:
        using QWidget::QWidget;
        QImage onScreen;

    protected:
        void paintEvent(QPaintEvent*) override
        {
            const QImage picture = filled(3, 3, 0x0000ff00);
            QPainter painter(this);
            painter.fillRect(rect(), Qt::red);
            painter.translate(2, 1);
            painter.setClipRect(0, 0, 4, 4);
            painter.setOpacity(0.5);
            bitBlt(painter.device(), 4, 4, &picture);
            painter.setOpacity(1);
            painter.fillRect(0, 0, 20, 20, Qt::blue);
            painter.resetTransform();
            bitBlt(this, 0, 0, &picture, 0, 0, 1, 1);
        }
    };
    QWidget window;
    window.resize(12, 12);
    Widget widget(&window);
    widget.setGeometry(1, 1, 10, 10);
    QImage shown(10, 10, QImage::Format_ARGB32_Premultiplied);
    shown.fill(Qt::black);
    if (where == "screen") {
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const auto onScreen = [&] { return window.screen()->grabWindow(window.winId()).toImage(); };
        QTRY_COMPARE(onScreen().pixel(10, 10), 0xffff0000U);
        shown = onScreen().copy(widget.geometry());
    } else if (where == "grab") {
        shown = widget.grab().toImage();
    } else if (where == "render to a device") {
        widget.render(&shown);
    } else {
        QPainter painter(&shown);
        widget.render(&painter);
    }
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 10; ++x) {
            const QRgb expected = x == 0 && y == 0                   ? 0xff00ff00U
                                  : QRect(2, 1, 4, 4).contains(x, y) ? 0xff0000ffU
                                  : QRect(4, 4, 3, 3).contains(x, y) ? 0xff00ff00U
                                                                     : 0xffff0000U;
            QCOMPARE(shown.pixel(x, y), expected);
        }
    }
}

void TestBitBlt::activePainter()
{
    const QImage source = filled(2, 2, 0xffabcdef);
    QPixmap pixmap = pixmapFromStraight(filled(4, 4, 0xff000000));
    {
        QPainter painter(&pixmap);
        painter.translate(1, 1);
        bitBlt(&pixmap, 2, 2, &source);
        QCOMPARE(painter.compositionMode(), QPainter::CompositionMode_SourceOver);
    }
    QCOMPARE(pixmap.toImage().pixel(2, 2), 0xffabcdefU);
    QCOMPARE(pixmap.toImage().pixel(1, 1), 0xff000000U);
}

void TestBitBlt::otherFormats()
{
    QImage indexed(2, 2, QImage::Format_Indexed8);
    indexed.setColorTable({0xff102030U, 0x00405060U});
    indexed.fill(1);
    QImage target = filled(3, 3, 0xff000000);
    bitBlt(&target, 1, 1, &indexed, 0, 0, 1, 1);
    QCOMPARE(target.pixel(1, 1), 0x00405060U);
    QCOMPARE(target.pixel(2, 2), 0xff000000U);

    QImage sixteen(2, 2, QImage::Format_RGB16);
    sixteen.fill(0);
    const QImage source = filled(2, 2, 0x00ffffff);
    bitBlt(&sixteen, 1, 0, &source);
    QCOMPARE(sixteen.pixel(1, 1), 0xffffffffU);
    QCOMPARE(sixteen.pixel(0, 0), 0xff000000U);
}

QTEST_MAIN(TestBitBlt)
#include "tst_bitblt.moc"
