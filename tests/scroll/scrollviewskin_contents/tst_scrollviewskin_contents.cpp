#include "scroll/viewfixture.h"

using namespace viewtest;

namespace
{

QPoint positionOf(const ScrollViewSkin& view)
{
    return {view.contentsX(), view.contentsY()};
}

QPoint valuesOf(const ScrollViewSkin& view)
{
    return {view.horizontalScrollBar()->value(), view.verticalScrollBar()->value()};
}

} // namespace

class TestScrollViewSkinContents : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(new FixedStyle); }

    void setContentsPos_data();
    void setContentsPos();
    void setContentsPosSignals();
    void setContentsPosWithinSetContentsPos();
    void scrollBy_data();
    void scrollBy();
    void ensureVisible_data();
    void ensureVisible();
    void center_data();
    void center();
    void documentedSequence();

    void moveContents_data();
    void moveContents();
    void moveContentsLeavesTheBarsAlone();
    void positionDuringTheSignal();

    void barsMoveTheContents();
    void verticalSlide();
    void verticalSlideWithoutChange();
    void verticalSlideRepaints_data();
    void verticalSlideRepaints();
    void verticalSlideErases();
    void horizontalSlideDoesNotRepaint();

    void resizeContents();
    void resizedStrips_data();
    void resizedStrips();

    void mapping();
    void mappingWithClipper();
    void updateContents_data();
    void updateContents();
    void updateContentsWithClipper();

    void viewportPaintEvent_data();
    void viewportPaintEvent();
    void clippedPaintEvent_data();
    void clippedPaintEvent();
    void drawContentsOffsetMovesThePainter();
    void pixels_data();
    void pixels();
    void backgroundPicture();
    void largestContents();
};

// Both bars: 180 x 87 are seen of 700 x 900.
void TestScrollViewSkinContents::setContentsPos_data()
{
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<QPoint>("expected");

    QTest::newRow("within") << QPoint(10, 20) << QPoint(10, 20);
    QTest::newRow("origin") << QPoint(0, 0) << QPoint(0, 0);
    QTest::newRow("negative x") << QPoint(-5, 10) << QPoint(0, 10);
    QTest::newRow("negative y") << QPoint(10, -5) << QPoint(10, 0);
    QTest::newRow("end") << QPoint(520, 813) << QPoint(520, 813);
    QTest::newRow("one beyond") << QPoint(521, 814) << QPoint(520, 813);
    QTest::newRow("far beyond") << QPoint(highest, highest) << QPoint(520, 813);
    QTest::newRow("far before") << QPoint(lowest, lowest) << QPoint(0, 0);
}

void TestScrollViewSkinContents::setContentsPos()
{
    QFETCH(const QPoint, position);
    QFETCH(const QPoint, expected);
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.setContentsPos(3, 4);
    stage.view.setContentsPos(position.x(), position.y());
    QCOMPARE(positionOf(stage.view), expected);
    QCOMPARE(valuesOf(stage.view), expected);
}

// The contents move once and first; the bars follow, the vertical one before the horizontal one.
void TestScrollViewSkinContents::setContentsPosSignals()
{
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.setContentsPos(30, 40);
    QCOMPARE(stage.take(), (QStringList{"moving 30,40", "vertical 40", "horizontal 30"}));
    stage.view.setContentsPos(-5, 10);
    QCOMPARE(stage.take(), (QStringList{"moving 0,10", "vertical 10", "horizontal 0"}));
    stage.view.setContentsPos(0, 20);
    QCOMPARE(stage.take(), (QStringList{"moving 0,20", "vertical 20"}));
    stage.view.setContentsPos(7, 20);
    QCOMPARE(stage.take(), (QStringList{"moving 7,20", "horizontal 7"}));
    stage.view.setContentsPos(7, 20);
    QCOMPARE(stage.take(), QStringList());
    // Afterwards the bars are heard again.
    stage.view.verticalScrollBar()->setValue(50);
    QCOMPARE(stage.take(), (QStringList{"moving 7,50", "vertical 50"}));
    stage.view.horizontalScrollBar()->setValue(60);
    QCOMPARE(stage.take(), (QStringList{"moving 60,50", "horizontal 60"}));
}

// The bars show where the contents are in the end.
void TestScrollViewSkinContents::setContentsPosWithinSetContentsPos()
{
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.setLineSnapping(true);
    connect(&stage.view, &ScrollViewSkin::contentsMoving, this, [&](int x, int y) {
        if (x == 30)
            stage.view.setContentsPos(100, y + 9);
    });
    stage.view.setContentsPos(30, 40);
    QCOMPARE(positionOf(stage.view), QPoint(100, 49));
    QCOMPARE(valuesOf(stage.view), QPoint(100, 49));
    QCOMPARE(stage.take(), (QStringList{"moving 30,40", "moving 100,49", "vertical 49", "horizontal 100"}));
}

void TestScrollViewSkinContents::scrollBy_data()
{
    QTest::addColumn<QPoint>("distance");
    QTest::addColumn<QPoint>("expected");

    QTest::newRow("none") << QPoint(0, 0) << QPoint(100, 200);
    QTest::newRow("right and down") << QPoint(5, 6) << QPoint(105, 206);
    QTest::newRow("left and up") << QPoint(-5, -6) << QPoint(95, 194);
    QTest::newRow("past the start") << QPoint(-101, -201) << QPoint(0, 0);
    QTest::newRow("past the end") << QPoint(421, 614) << QPoint(520, 813);
    QTest::newRow("largest distance") << QPoint(highest, highest) << QPoint(520, 813);
    QTest::newRow("largest distance back") << QPoint(lowest, lowest) << QPoint(0, 0);
}

void TestScrollViewSkinContents::scrollBy()
{
    QFETCH(const QPoint, distance);
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.setContentsPos(100, 200);
    stage.view.scrollBy(distance.x(), distance.y());
    QTEST(positionOf(stage.view), "expected");
    QTEST(valuesOf(stage.view), "expected");
}

// A view of 220 x 220 without bars at (110, 80) of contents of 1000 x 900.
void TestScrollViewSkinContents::ensureVisible_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<QPoint>("margins");
    QTest::addColumn<QPoint>("expected");

    const QPoint own(-1, -1);
    QTest::newRow("own margins, in the middle") << QPoint(220, 190) << own << QPoint(110, 80);
    QTest::newRow("own margins, at the left and top") << QPoint(160, 130) << own << QPoint(110, 80);
    QTest::newRow("own margins, beyond left and top") << QPoint(159, 129) << own << QPoint(109, 79);
    QTest::newRow("own margins, at the right and bottom") << QPoint(279, 249) << own << QPoint(110, 80);
    QTest::newRow("own margins, beyond right and bottom") << QPoint(280, 250) << own << QPoint(110, 80);
    QTest::newRow("own margins, one more") << QPoint(281, 251) << own << QPoint(111, 81);
    QTest::newRow("own margins, near the start") << QPoint(20, 10) << own << QPoint(0, 0);
    QTest::newRow("own margins, near the end") << QPoint(990, 890) << own << QPoint(780, 680);
    QTest::newRow("no margins, inside") << QPoint(329, 299) << QPoint(0, 0) << QPoint(110, 80);
    QTest::newRow("no margins, outside") << QPoint(330, 300) << QPoint(0, 0) << QPoint(110, 80);
    QTest::newRow("no margins, farther") << QPoint(331, 301) << QPoint(0, 0) << QPoint(111, 81);
    QTest::newRow("margins of their own") << QPoint(115, 90) << QPoint(10, 20) << QPoint(105, 70);
    QTest::newRow("half of the view") << QPoint(500, 500) << QPoint(110, 110) << QPoint(390, 390);
    QTest::newRow("more than half of the view") << QPoint(500, 500) << QPoint(111, 500) << QPoint(390, 390);
    QTest::newRow("largest margins") << QPoint(500, 500) << QPoint(highest, highest) << QPoint(390, 390);
    QTest::newRow("far beyond the end") << QPoint(highest, highest) << own << QPoint(780, 680);
    QTest::newRow("far before the start") << QPoint(lowest, lowest) << own << QPoint(0, 0);
    QTest::newRow("far away, largest margins") << QPoint(lowest, lowest) << QPoint(highest, highest) << QPoint(0, 0);
}

void TestScrollViewSkinContents::ensureVisible()
{
    QFETCH(const QPoint, point);
    QFETCH(const QPoint, margins);
    ViewStage stage;
    stage.view.resize(220, 220);
    stage.view.setVScrollBarMode(ScrollViewSkin::AlwaysOff);
    stage.view.setHScrollBarMode(ScrollViewSkin::AlwaysOff);
    stage.view.resizeContents(1000, 900);
    stage.view.setContentsPos(110, 80);
    if (margins.x() < 0)
        stage.view.ensureVisible(point.x(), point.y());
    else
        stage.view.ensureVisible(point.x(), point.y(), margins.x(), margins.y());
    QTEST(positionOf(stage.view), "expected");
}

void TestScrollViewSkinContents::center_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<QPointF>("fractions");
    QTest::addColumn<QPoint>("expected");

    const QPointF none(-1, -1);
    QTest::newRow("middle") << QPoint(500, 400) << none << QPoint(390, 290);
    QTest::newRow("near the start") << QPoint(50, 40) << none << QPoint(0, 0);
    QTest::newRow("near the end") << QPoint(960, 870) << none << QPoint(780, 680);
    QTest::newRow("at the edge, inside") << QPoint(110, 80) << QPointF(0, 0) << QPoint(110, 80);
    QTest::newRow("at the edge, outside") << QPoint(109, 79) << QPointF(0, 0) << QPoint(109, 79);
    QTest::newRow("half") << QPoint(160, 130) << QPointF(0.5, 0.5) << QPoint(105, 75);
    QTest::newRow("half, inside") << QPoint(165, 135) << QPointF(0.5, 0.5) << QPoint(110, 80);
    QTest::newRow("whole") << QPoint(500, 400) << QPointF(1, 1) << QPoint(390, 290);
    QTest::newRow("more than whole") << QPoint(500, 400) << QPointF(30, 1e30) << QPoint(390, 290);
    QTest::newRow("two of them") << QPoint(500, 400) << QPointF(0, 1) << QPoint(280, 290);
    // 0.1 of half the view is 11 pixels.
    QTest::newRow("a tenth") << QPoint(115, 85) << QPointF(0.1, 0.1) << QPoint(104, 74);
    // 0.105 of it is 11.55, which rounds up.
    QTest::newRow("rounded") << QPoint(115, 85) << QPointF(0.105, 0.105) << QPoint(103, 73);
    QTest::newRow("not a number") << QPoint(109, 79) << QPointF(qQNaN(), qQNaN()) << QPoint(109, 79);
    QTest::newRow("infinite") << QPoint(500, 400) << QPointF(qInf(), qInf()) << QPoint(390, 290);
}

void TestScrollViewSkinContents::center()
{
    QFETCH(const QPoint, point);
    QFETCH(const QPointF, fractions);
    ViewStage stage;
    stage.view.resize(220, 220);
    stage.view.setVScrollBarMode(ScrollViewSkin::AlwaysOff);
    stage.view.setHScrollBarMode(ScrollViewSkin::AlwaysOff);
    stage.view.resizeContents(1000, 900);
    stage.view.setContentsPos(110, 80);
    if (fractions.x() < 0)
        stage.view.center(point.x(), point.y());
    else
        stage.view.center(point.x(), point.y(), float(fractions.x()), float(fractions.y()));
    QTEST(positionOf(stage.view), "expected");
}

void TestScrollViewSkinContents::documentedSequence()
{
    ViewStage stage;
    stage.view.resize(220, 220);
    stage.view.setVScrollBarMode(ScrollViewSkin::AlwaysOff);
    stage.view.setHScrollBarMode(ScrollViewSkin::AlwaysOff);
    stage.view.resizeContents(1000, 900);
    stage.view.setContentsPos(110, 80);
    stage.view.ensureVisible(500, 500);
    QCOMPARE(positionOf(stage.view), QPoint(330, 330));
    stage.view.center(600, 500);
    QCOMPARE(positionOf(stage.view), QPoint(490, 390));
    stage.view.center(720, 610, 0.5, 0.5);
    QCOMPARE(positionOf(stage.view), QPoint(555, 445));
}

// Takes the position with its signs turned.
void TestScrollViewSkinContents::moveContents_data()
{
    QTest::addColumn<QPoint>("turned");
    QTest::addColumn<QPoint>("expected");
    QTest::addColumn<QStringList>("signalled");

    QTest::newRow("both") << QPoint(-30, -40) << QPoint(30, 40) << QStringList("moving 30,40");
    QTest::newRow("x") << QPoint(-30, -4) << QPoint(30, 4) << QStringList("moving 30,4");
    QTest::newRow("y") << QPoint(-3, -40) << QPoint(3, 40) << QStringList("moving 3,40");
    QTest::newRow("same") << QPoint(-3, -4) << QPoint(3, 4) << QStringList();
    QTest::newRow("end") << QPoint(-520, -813) << QPoint(520, 813) << QStringList("moving 520,813");
    QTest::newRow("beyond x") << QPoint(-521, -4) << QPoint(520, 4) << QStringList("moving 520,4");
    QTest::newRow("beyond y") << QPoint(-3, -814) << QPoint(3, 813) << QStringList("moving 3,813");
    QTest::newRow("farthest") << QPoint(lowest, lowest) << QPoint(520, 813) << QStringList("moving 520,813");
}

void TestScrollViewSkinContents::moveContents()
{
    QFETCH(const QPoint, turned);
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.setContentsPos(3, 4);
    stage.take();
    stage.view.moveContents(turned.x(), turned.y());
    QTEST(positionOf(stage.view), "expected");
    QTEST(stage.take(), "signalled");
}

void TestScrollViewSkinContents::moveContentsLeavesTheBarsAlone()
{
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.moveContents(-30, -40);
    QCOMPARE(valuesOf(stage.view), QPoint(0, 0));
    // Contents that fit stay at the origin.
    stage.view.resizeContents(100, 50);
    stage.take();
    stage.view.moveContents(-30, -40);
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(positionOf(stage.view), QPoint(0, 0));
}

// The signal carries the new position, which the view has by then, and comes before anything moves on the screen.
void TestScrollViewSkinContents::positionDuringTheSignal()
{
    ViewStage stage({700, 900});
    auto* const child = new Tile;
    stage.view.addChild(child, 50, 60);
    QVERIFY(stage.begin());
    QPoint position;
    QPoint childPlace;
    connect(&stage.view, &ScrollViewSkin::contentsMoving, this, [&] {
        position = positionOf(stage.view);
        childPlace = child->pos();
    });
    stage.view.setContentsPos(30, 40);
    QCOMPARE(position, QPoint(30, 40));
    QCOMPARE(childPlace, QPoint(50, 60));
    QCOMPARE(child->pos(), QPoint(20, 20));
}

void TestScrollViewSkinContents::barsMoveTheContents()
{
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.verticalScrollBar()->setValue(40);
    QCOMPARE(stage.take(), (QStringList{"moving 0,40", "vertical 40"}));
    stage.view.horizontalScrollBar()->setValue(30);
    QCOMPARE(stage.take(), (QStringList{"moving 30,40", "horizontal 30"}));
    // The slots by themselves move the contents and leave the bars.
    stage.view.vslide(50);
    QCOMPARE(stage.take(), QStringList("moving 30,50"));
    stage.view.hslide(60);
    QCOMPARE(stage.take(), QStringList("moving 60,50"));
    QCOMPARE(valuesOf(stage.view), QPoint(30, 40));
    QCOMPARE(positionOf(stage.view), QPoint(60, 50));
}

void TestScrollViewSkinContents::verticalSlide()
{
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.recorder.watchPaints(stage.view.viewport());
    QVERIFY(stage.window.settle());
    stage.take();
    // Painted before the bar's other receivers hear of the value.
    stage.view.verticalScrollBar()->setValue(40);
    QCOMPARE(stage.take(), (QStringList{"moving 0,40", "paint qt_viewport 0,0 180x87", "vertical 40"}));
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollViewSkinContents::verticalSlideWithoutChange()
{
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.recorder.watchPaints(stage.view.viewport());
    QVERIFY(stage.window.settle());
    stage.take();
    stage.view.vslide(0);
    QCOMPARE(stage.take(), QStringList("paint qt_viewport 0,0 180x87"));
}

// Also when the slide is choked, and with a clipper.
void TestScrollViewSkinContents::verticalSlideRepaints_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::newRow("viewport") << false;
    QTest::newRow("clipper") << true;
}

void TestScrollViewSkinContents::verticalSlideRepaints()
{
    QFETCH(const bool, clipper);
    ViewStage stage({700, 900});
    stage.view.enableClipper(clipper);
    QVERIFY(stage.begin());
    QVERIFY(stage.window.settle());
    stage.view.trace = &stage.recorder;
    const auto expected = [clipper](int x, int y) {
        const QPoint origin = clipper ? QPoint(-2000, -2000) : QPoint(x, y);
        return QStringLiteral("offset %1 draw %2,%3 180x87").arg(pointText(origin)).arg(x).arg(y);
    };
    // Only the bar has to follow.
    stage.view.moveContents(0, -40);
    QVERIFY(stage.window.settle());
    stage.take();
    stage.view.setContentsPos(0, 40);
    QCOMPARE(stage.take(), (QStringList{expected(0, 40), "vertical 40"}));
    stage.view.vslide(90);
    QCOMPARE(stage.take(), (QStringList{"moving 0,90", expected(0, 90)}));
    stage.view.vslide(90);
    QCOMPARE(stage.take(), QStringList(expected(0, 90)));
}

// What the contents leave out is the viewport's background, not what stood there before.
void TestScrollViewSkinContents::verticalSlideErases()
{
    ViewStage stage({180, 900});
    stage.view.inked = true;
    QVERIFY(stage.begin());
    QCOMPARE(stage.onScreen().pixel(9, 9), ink(9, 9));
    stage.view.inked = false;
    stage.view.vslide(0);
    const QRgb background = stage.view.viewport()->palette().color(QPalette::Window).rgb();
    COMPARE_PICTURES(stage.onScreen(), plain(180, 100, background));
}

void TestScrollViewSkinContents::horizontalSlideDoesNotRepaint()
{
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.recorder.watchPaints(stage.view.viewport());
    QVERIFY(stage.window.settle());
    stage.take();
    stage.view.horizontalScrollBar()->setValue(30);
    // What has moved comes to the display at once; there is nothing more to paint.
    QCOMPARE(stage.take(), (QStringList{"moving 30,0", "paint qt_viewport 0,0 180x87", "horizontal 30"}));
    stage.view.hslide(30);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollViewSkinContents::resizeContents()
{
    ViewStage stage;
    QVERIFY(stage.begin());
    stage.view.resizeContents(700, 900);
    QCOMPARE(stage.view.contentsWidth(), 700);
    QCOMPARE(stage.view.contentsHeight(), 900);
    // Without a return to the event loop.
    QCOMPARE(stage.view.verticalScrollBar()->maxValue(), 813);
    QVERIFY(stage.view.verticalScrollBar()->isVisible());
    QCOMPARE(stage.view.horizontalScrollBar()->maximum(), 520);
    stage.view.resizeContents(-1, -1);
    QCOMPARE(stage.view.contentsWidth(), 0);
    QCOMPARE(stage.view.contentsHeight(), 0);
    stage.view.resizeContents(lowest, 50);
    QCOMPARE(stage.view.contentsWidth(), 0);
    QCOMPARE(stage.view.contentsHeight(), 50);
    QCOMPARE(stage.take(), QStringList());
}

// Bars always on: 180 x 87 are seen.
void TestScrollViewSkinContents::resizedStrips_data()
{
    QTest::addColumn<QSize>("before");
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<QSize>("now");
    QTest::addColumn<QRect>("width");
    QTest::addColumn<QRect>("height");

    const QRect none;
    QTest::newRow("same") << QSize(100, 50) << QPoint() << QSize(100, 50) << none << none;
    QTest::newRow("wider") << QSize(100, 50) << QPoint() << QSize(130, 50) << QRect(100, 0, 30, 87) << none;
    QTest::newRow("narrower") << QSize(130, 50) << QPoint() << QSize(100, 50) << QRect(100, 0, 30, 87) << none;
    QTest::newRow("higher") << QSize(100, 50) << QPoint() << QSize(100, 70) << none << QRect(0, 50, 180, 20);
    QTest::newRow("lower") << QSize(100, 70) << QPoint() << QSize(100, 50) << none << QRect(0, 50, 180, 20);
    QTest::newRow("both") << QSize(100, 50) << QPoint() << QSize(130, 70) << QRect(100, 0, 30, 87)
                          << QRect(0, 50, 180, 20);
    QTest::newRow("clipped") << QSize(170, 80) << QPoint() << QSize(900, 900) << QRect(170, 0, 10, 87)
                             << QRect(0, 80, 180, 7);
    QTest::newRow("beyond what is seen") << QSize(180, 87) << QPoint() << QSize(900, 900) << none << none;
    QTest::newRow("scrolled") << QSize(250, 140) << QPoint(70, 53) << QSize(600, 500) << none << none;
    QTest::newRow("largest") << QSize(170, 80) << QPoint() << QSize(highest, highest) << QRect(170, 0, 10, 87)
                             << QRect(0, 80, 180, 7);
}

void TestScrollViewSkinContents::resizedStrips()
{
    QFETCH(const QSize, before);
    QFETCH(const QPoint, position);
    QFETCH(const QSize, now);
    QFETCH(const QRect, width);
    QFETCH(const QRect, height);
    ViewStage stage;
    stage.view.setVScrollBarMode(ScrollViewSkin::AlwaysOn);
    stage.view.setHScrollBarMode(ScrollViewSkin::AlwaysOn);
    stage.view.resizeContents(before.width(), before.height());
    QVERIFY(stage.begin());
    stage.view.setContentsPos(position.x(), position.y());
    QCOMPARE(positionOf(stage.view), position);
    stage.recorder.watchPaints(stage.view.viewport());
    const QStringList log = stage.after([&] { stage.view.resizeContents(now.width(), now.height()); });
    QStringList expected;
    for (const QRect& rect : QRegion(width) | height)
        expected << "paint qt_viewport " + rectText(rect);
    QCOMPARE(log, expected);
}

void TestScrollViewSkinContents::mapping()
{
    ViewStage stage({700, 900});
    stage.view.setContentsPos(30, 40);
    QCOMPARE(stage.view.viewportToContents(QPoint(5, 6)), QPoint(35, 46));
    QCOMPARE(stage.view.contentsToViewport(QPoint(35, 46)), QPoint(5, 6));
    QCOMPARE(stage.view.contentsToViewport(QPoint(0, 0)), QPoint(-30, -40));
    int x = 0;
    int y = 0;
    stage.view.viewportToContents(-7, -8, x, y);
    QCOMPARE(QPoint(x, y), QPoint(23, 32));
    stage.view.contentsToViewport(23, 32, x, y);
    QCOMPARE(QPoint(x, y), QPoint(-7, -8));
    // The same variable may be given twice.
    x = 5;
    y = 6;
    stage.view.viewportToContents(x, y, x, y);
    QCOMPARE(QPoint(x, y), QPoint(35, 46));
    stage.view.viewportToContents(highest, highest, x, y);
    QCOMPARE(QPoint(x, y), QPoint(highest, highest));
    stage.view.contentsToViewport(lowest, lowest, x, y);
    QCOMPARE(QPoint(x, y), QPoint(lowest, lowest));
}

void TestScrollViewSkinContents::mappingWithClipper()
{
    ViewStage stage({700, 900});
    stage.view.enableClipper(true);
    QCOMPARE(stage.view.clipper()->pos(), QPoint(-2000, -2000));
    QCOMPARE(stage.view.viewportToContents(QPoint(2005, 2006)), QPoint(5, 6));
    QCOMPARE(stage.view.contentsToViewport(QPoint(5, 6)), QPoint(2005, 2006));
    stage.view.setContentsPos(30, 40);
    const QPoint offset = stage.view.clipper()->pos();
    QCOMPARE(stage.view.viewportToContents(QPoint(5, 6) - offset), QPoint(35, 46));
    QCOMPARE(stage.view.contentsToViewport(QPoint(35, 46)), QPoint(5, 6) - offset);
}

// Contents of 700 x 900 at (30, 40); 180 x 87 are seen.
void TestScrollViewSkinContents::updateContents_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<QRect>("painted");

    const QRect none;
    QTest::newRow("inside") << QRect(40, 60, 10, 12) << QRect(10, 20, 10, 12);
    QTest::newRow("over the left edge") << QRect(25, 60, 10, 12) << QRect(0, 20, 5, 12);
    QTest::newRow("over the top edge") << QRect(40, 35, 10, 12) << QRect(10, 0, 10, 7);
    QTest::newRow("over the right edge") << QRect(200, 60, 100, 12) << QRect(170, 20, 10, 12);
    QTest::newRow("over the bottom edge") << QRect(40, 120, 10, 100) << QRect(10, 80, 10, 7);
    QTest::newRow("over everything") << QRect(0, 0, 700, 900) << QRect(0, 0, 180, 87);
    QTest::newRow("left of it") << QRect(0, 60, 29, 12) << none;
    QTest::newRow("at the left edge") << QRect(0, 60, 30, 12) << none;
    QTest::newRow("above it") << QRect(40, 0, 10, 39) << none;
    QTest::newRow("at the top edge") << QRect(40, 0, 10, 40) << none;
    QTest::newRow("right of it") << QRect(210, 60, 10, 12) << none;
    QTest::newRow("below it") << QRect(40, 127, 10, 12) << none;
    QTest::newRow("empty") << QRect(40, 60, 0, 0) << none;
    QTest::newRow("negative") << QRect(40, 60, -5, -5) << none;
    QTest::newRow("largest") << QRect(0, 0, highest, highest) << QRect(0, 0, 180, 87);
    QTest::newRow("farthest") << QRect(lowest, lowest, highest, highest) << none;
    QTest::newRow("farthest right") << QRect(highest - 5, highest - 5, 5, 5) << none;
}

void TestScrollViewSkinContents::updateContents()
{
    QFETCH(const QRect, rect);
    QFETCH(const QRect, painted);
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.setContentsPos(30, 40);
    QVERIFY(stage.window.settle());
    stage.recorder.watchPaints(stage.view.viewport());
    QStringList expected;
    if (!painted.isEmpty())
        expected << "paint qt_viewport " + rectText(painted);

    stage.take();
    stage.view.updateContents(rect.x(), rect.y(), rect.width(), rect.height());
    QCOMPARE(stage.take(), QStringList());
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), expected);
    stage.view.updateContents(rect);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), expected);
    for (const bool erase : {false, true}) {
        stage.view.repaintContents(rect.x(), rect.y(), rect.width(), rect.height(), erase);
        QCOMPARE(stage.take(), expected);
        stage.view.repaintContents(rect, erase);
        QCOMPARE(stage.take(), expected);
    }
    stage.view.repaintContents(rect.x(), rect.y(), rect.width(), rect.height());
    QCOMPARE(stage.take(), expected);
    stage.view.repaintContents(rect);
    QCOMPARE(stage.take(), expected);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollViewSkinContents::updateContentsWithClipper()
{
    ViewStage stage({700, 900});
    stage.view.enableClipper(true);
    QVERIFY(stage.begin());
    stage.view.setContentsPos(30, 40);
    QVERIFY(stage.window.settle());
    stage.view.trace = &stage.recorder;
    stage.take();
    stage.view.updateContents(25, 60, 10, 12);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList("offset -2000,-2000 draw 30,60 5x12"));
    stage.view.repaintContents(0, 0, 700, 900);
    QCOMPARE(stage.take(), QStringList("offset -2000,-2000 draw 30,40 180x87"));
    stage.view.repaintContents(0, 0, 30, 900);
    QCOMPARE(stage.take(), QStringList());
}

// Contents at (30, 40) in a viewport of 180 x 87.
void TestScrollViewSkinContents::viewportPaintEvent_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<QStringList>("drawn");

    QTest::newRow("inside") << QRect(5, 6, 7, 8) << QStringList("offset 30,40 draw 35,46 7x8");
    QTest::newRow("whole") << QRect(0, 0, 180, 87) << QStringList("offset 30,40 draw 30,40 180x87");
    QTest::newRow("larger") << QRect(-5, -6, 500, 500) << QStringList("offset 30,40 draw 30,40 180x87");
    QTest::newRow("over the corner") << QRect(170, 80, 50, 50) << QStringList("offset 30,40 draw 200,120 10x7");
    QTest::newRow("right of it") << QRect(180, 0, 10, 10) << QStringList();
    QTest::newRow("above it") << QRect(0, -10, 10, 10) << QStringList();
    QTest::newRow("empty") << QRect() << QStringList();
}

void TestScrollViewSkinContents::viewportPaintEvent()
{
    QFETCH(const QRect, rect);
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.setContentsPos(30, 40);
    QVERIFY(stage.window.settle());
    stage.view.trace = &stage.recorder;
    stage.take();
    const Messages quietly;
    QPaintEvent event(rect);
    stage.view.viewportPaintEvent(&event);
    QTEST(stage.take(), "drawn");
}

// The clipped viewport at (-2000, -2000) covers the contents from (-2000, -2000) on; 180 x 87 are seen.
void TestScrollViewSkinContents::clippedPaintEvent_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<QStringList>("drawn");

    QTest::newRow("inside") << QRect(2005, 2006, 7, 8) << QStringList("offset -2000,-2000 draw 5,6 7x8");
    QTest::newRow("whole") << QRect(0, 0, 4000, 4000) << QStringList("offset -2000,-2000 draw 0,0 180x87");
    QTest::newRow("over the corner") << QRect(1990, 1990, 15, 16) << QStringList("offset -2000,-2000 draw 0,0 5x6");
    QTest::newRow("outside") << QRect(0, 0, 100, 100) << QStringList();
    QTest::newRow("just outside") << QRect(2180, 2000, 10, 10) << QStringList();
}

void TestScrollViewSkinContents::clippedPaintEvent()
{
    QFETCH(const QRect, rect);
    ViewStage stage({700, 900});
    stage.view.enableClipper(true);
    QVERIFY(stage.begin());
    stage.view.trace = &stage.recorder;
    stage.take();
    const Messages quietly;
    QPaintEvent event(rect);
    stage.view.viewportPaintEvent(&event);
    QTEST(stage.take(), "drawn");
}

void TestScrollViewSkinContents::drawContentsOffsetMovesThePainter()
{
    class Probe : public ScrollViewSkin
    {
    public:
        using ScrollViewSkin::drawContents;
        using ScrollViewSkin::drawContentsOffset;
        QRect drawn;
        QPointF origin;

    protected:
        void drawContents(QPainter* painter, int cx, int cy, int cw, int ch) override
        {
            drawn = QRect(cx, cy, cw, ch);
            origin = painter->transform().map(QPointF(0, 0));
        }
    };
    Probe probe;
    QImage target(10, 10, QImage::Format_ARGB32);
    QPainter painter(&target);
    painter.translate(3, 4);
    probe.drawContentsOffset(&painter, 50, 60, 70, 80, 9, 11);
    QCOMPARE(probe.drawn, QRect(70, 80, 9, 11));
    QCOMPARE(probe.origin, QPointF(-47, -56));
    // The caller has its painter back as it was.
    QCOMPARE(painter.transform().map(QPointF(0, 0)), QPointF(3, 4));
}

// After any way of scrolling the screen shows the contents that belong there.
void TestScrollViewSkinContents::pixels_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<bool>("staticBackground");
    QTest::newRow("viewport") << false << false;
    QTest::newRow("viewport, static background") << false << true;
    QTest::newRow("clipper") << true << false;
    QTest::newRow("clipper, static background") << true << true;
}

void TestScrollViewSkinContents::pixels()
{
    QFETCH(const bool, clipper);
    QFETCH(const bool, staticBackground);
    ViewStage stage({4000, 4000});
    stage.view.inked = true;
    stage.view.enableClipper(clipper);
    stage.view.setStaticBackground(staticBackground);
    QVERIFY(stage.begin());
    COMPARE_PICTURES(stage.onScreen(), stage.expected());
    const std::function<void()> moves[] = {
        [&] { stage.view.setContentsPos(3, 5); },
        [&] { stage.view.horizontalScrollBar()->setValue(90); },
        [&] { stage.view.verticalScrollBar()->setValue(33); },
        [&] { stage.view.setContentsPos(2500, 5); },
        [&] { stage.view.setContentsPos(2500, 3000); },
        [&] { stage.view.scrollBy(-7, -9); },
        [&] { stage.view.hslide(2400); },
        [&] { stage.view.vslide(2900); },
        [&] { stage.view.moveContents(-1000, -1100); },
        [&] { stage.view.setContentsPos(0, 0); },
    };
    for (const auto& move : moves) {
        move();
        QVERIFY(stage.window.settle());
        COMPARE_PICTURES(stage.onScreen(), stage.expected());
    }
}

// The viewport is erased with its picture before the contents are drawn.
void TestScrollViewSkinContents::backgroundPicture()
{
    ViewStage stage({180, 900});
    const QImage picture = pattern(180, 100, 99);
    stage.view.viewport()->setBackgroundPixmap(pixmap(picture));
    QVERIFY(stage.begin());
    COMPARE_PICTURES(stage.onScreen(), picture);
    stage.view.inked = true;
    stage.view.viewport()->update();
    QVERIFY(stage.window.settle());
    COMPARE_PICTURES(stage.onScreen(), stage.expected());
}

void TestScrollViewSkinContents::largestContents()
{
    ViewStage stage({highest, highest});
    stage.view.inked = true;
    QVERIFY(stage.begin());
    stage.view.setContentsPos(highest, highest);
    QCOMPARE(positionOf(stage.view), QPoint(highest - 180, highest - 87));
    QCOMPARE(valuesOf(stage.view), positionOf(stage.view));
    QVERIFY(stage.window.settle());
    COMPARE_PICTURES(stage.onScreen(), stage.expected());
    stage.view.verticalScrollBar()->setValue(0x40000000);
    QCOMPARE(positionOf(stage.view), QPoint(highest - 180, 0x40000000));
    stage.view.ensureVisible(0, highest);
    QCOMPARE(positionOf(stage.view), QPoint(0, highest - 87));
}

QTEST_MAIN(TestScrollViewSkinContents)
#include "tst_scrollviewskin_contents.moc"
