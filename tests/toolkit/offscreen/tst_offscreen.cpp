#include "toolkit/offscreen.h"
#include "toolkit/toolkitwidget.h"

#include <QPainter>
#include <QRegularExpression>
#include <QTest>

using namespace skinwidgets;

class TestOffscreen : public QObject
{
    Q_OBJECT

private slots:
    void everyRectangleInOrder();
    void preparedFromBackground();
    void blankIsClear();
    void emptyRegionPaintsNothing();
    void coloursSurviveAnyAlpha_data();
    void coloursSurviveAnyAlpha();
    void nestedPaint();
    void outsideAPaintEvent();
    void throughAnOpenPainter();
};

namespace
{

struct Painted : ToolkitWidget<QWidget> {
    Painted() : ToolkitWidget(nullptr, "painted", Qt::WRepaintNoErase) {}
    Prepared prepared = Prepared::Blank;
    DrawArea draw;
    QRegion region;
    void paintEvent(QPaintEvent* event) override
    {
        paintThroughPixmap(this, region.isNull() ? event->region() : region, prepared, draw);
    }
};

QImage filled(int w, int h, QRgb pixel)
{
    QImage image(w, h, QImage::Format_ARGB32);
    image.fill(pixel);
    return image;
}

} // namespace

void TestOffscreen::everyRectangleInOrder()
{
    Painted widget;
    widget.resize(20, 20);
    widget.region = QRegion(0, 0, 4, 4) + QRegion(10, 0, 5, 4) + QRegion(2, 10, 6, 3);
    QList<QRect> areas;
    widget.draw = [&](QPixmap& target, const QRect& area) {
        QCOMPARE(target.size(), area.size());
        QCOMPARE(target.depth(), 32);
        areas << area;
    };
    widget.grab();
    QCOMPARE(areas, QList<QRect>(widget.region.begin(), widget.region.end()));
}

void TestOffscreen::preparedFromBackground()
{
    Painted widget;
    widget.resize(8, 8);
    QImage background(8, 8, QImage::Format_ARGB32);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            background.setPixel(x, y, qRgba(x, y, 1, 0));
    widget.setBackgroundPixmap(pixmapFromStraight(background));
    widget.prepared = Prepared::FromBackground;
    widget.region = QRegion(3, 2, 4, 4);
    QRgb seen = 0;
    widget.draw = [&](QPixmap& target, const QRect&) { seen = target.toImage().pixel(1, 1); };
    const QImage shot = widget.grab().toImage();
    QCOMPARE(seen, qRgba(4, 3, 1, 0));
    QCOMPARE(shot.pixel(4, 3), qRgb(4, 3, 1));
}

void TestOffscreen::blankIsClear()
{
    Painted widget;
    widget.resize(6, 6);
    QList<QRgb> seen;
    widget.draw = [&](QPixmap& target, const QRect&) {
        seen << target.toImage().pixel(2, 2);
        target.fill(Qt::red);
    };
    widget.grab();
    widget.grab();
    QVERIFY(seen.size() >= 2);
    for (const QRgb pixel : std::as_const(seen))
        QCOMPARE(pixel, 0U);
}

void TestOffscreen::emptyRegionPaintsNothing()
{
    QWidget widget;
    int draws = 0;
    paintThroughPixmap(&widget, QRegion(), Prepared::Blank, [&](QPixmap&, const QRect&) { ++draws; });
    QCOMPARE(draws, 0);
}

void TestOffscreen::coloursSurviveAnyAlpha_data()
{
    QTest::addColumn<int>("alpha");
    for (const int alpha : {0, 1, 128, 255})
        QTest::addRow("alpha %d", alpha) << alpha;
}

void TestOffscreen::coloursSurviveAnyAlpha()
{
    QFETCH(int, alpha);
    Painted widget;
    widget.resize(4, 4);
    widget.draw = [&](QPixmap& target, const QRect& area) {
        const QImage picture = filled(area.width(), area.height(), (static_cast<QRgb>(alpha) << 24) | 0x4080c0);
        bitBlt(&target, 0, 0, &picture);
    };
    QCOMPARE(widget.grab().toImage().pixel(1, 1), 0xff4080c0U);
    QImage canvas(4, 4, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    widget.render(&canvas);
    QCOMPARE(canvas.pixel(1, 1), 0xff4080c0U);
    Painted seeThrough;
    seeThrough.setAttribute(Qt::WA_TranslucentBackground);
    seeThrough.resize(4, 4);
    seeThrough.draw = widget.draw;
    canvas.fill(Qt::transparent);
    seeThrough.render(&canvas);
    QCOMPARE(qAlpha(canvas.pixel(1, 1)), alpha);
}

void TestOffscreen::nestedPaint()
{
    Painted inner;
    inner.resize(6, 6);
    inner.draw = [](QPixmap& target, const QRect&) { target.fill(Qt::blue); };
    Painted outer;
    outer.resize(6, 6);
    outer.draw = [&](QPixmap& target, const QRect&) {
        target.fill(Qt::red);
        inner.grab();
    };
    QCOMPARE(outer.grab().toImage().pixel(3, 3), qRgb(255, 0, 0));
}

void TestOffscreen::outsideAPaintEvent()
{
    Painted widget;
    widget.resize(20, 20);
    widget.region = QRegion(0, 0, 4, 4) + QRegion(10, 10, 5, 4);
    QList<QRect> areas;
    widget.draw = [&](QPixmap&, const QRect& area) { areas << area; };
    QTest::failOnWarning(QRegularExpression(".*"));
    QPaintEvent event(widget.rect());
    widget.paintEvent(&event);
    QCOMPARE(areas, QList<QRect>(widget.region.begin(), widget.region.end()));
}

// A subclass may have its painter open when it calls the paint event of its base.
void TestOffscreen::throughAnOpenPainter()
{
    struct : Painted {
        void paintEvent(QPaintEvent* event) override
        {
            QPainter painter(this);
            painter.translate(2, 2);
            Painted::paintEvent(event);
            painter.fillRect(0, 0, 1, 1, Qt::green);
        }
    } widget;
    widget.resize(6, 6);
    widget.draw = [](QPixmap& target, const QRect&) { target.fill(Qt::blue); };
    QTest::failOnWarning(QRegularExpression(".*"));
    const QImage shot = widget.grab().toImage();
    QCOMPARE(shot.pixel(0, 0), qRgb(0, 0, 255));
    QCOMPARE(shot.pixel(2, 2), qRgb(0, 255, 0));
    QCOMPARE(shot.pixel(5, 5), qRgb(0, 0, 255));
}

QTEST_MAIN(TestOffscreen)
#include "tst_offscreen.moc"
