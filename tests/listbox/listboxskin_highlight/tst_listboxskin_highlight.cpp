#include "listbox/listboxfixture.h"

#include <QPaintEvent>
#include <QShowEvent>
#include <QtTest>

using namespace listboxtest;

namespace
{

constexpr QRgb orange = 0xffff6600;
constexpr QRgb grey = 0xff8c8c8c;
constexpr QRgb blue = 0xff6464d2;
constexpr QRgb ground = 0xff102030;

// What paintCell() was called with.
struct PaintedCell {
    int row;
    int column;
    QPoint origin;
    QRegion clip;
    QColor pen;
};

// Tells of its paint events and of the cells that they paint.
class Watched : public Box
{
public:
    using Box::Box;

    void paintCell(QPainter* painter, int row, int column) override
    {
        const QTransform moved = painter->transform();
        cells.append({row, column, QPoint(qRound(moved.dx()), qRound(moved.dy())),
                      painter->clipRegion().translated(qRound(moved.dx()), qRound(moved.dy())),
                      painter->pen().color()});
        Box::paintCell(painter, row, column);
    }
    QString cellNames() const
    {
        QStringList names;
        for (const PaintedCell& cell : cells)
            names << QStringLiteral("%1/%2").arg(cell.row).arg(cell.column);
        return names.join(' ');
    }
    void forget()
    {
        cells.clear();
        events.clear();
    }

    using Box::showEvent;

    QList<PaintedCell> cells;
    QList<QRegion> events;

protected:
    void viewportPaintEvent(QPaintEvent* event) override
    {
        events.append(event->region());
        Box::viewportPaintEvent(event);
    }
};

uchar alphaOf(ScrollBarSkin* bar)
{
    struct Open : ScrollBarSkin {
        static auto member() { return &Open::alphaOverride; }
    };
    return bar->*Open::member();
}

QImage groundImage(int w, int h)
{
    QImage image(w, h, QImage::Format_ARGB32);
    image.fill(ground);
    return image;
}

// The part of the image that has the colour; everything else must have the other one.
QRegion regionOf(const QImage& image, QRgb colour, QRgb other)
{
    QRegion region;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == colour)
                region += QRect(x, y, 1, 1);
            else if (image.pixel(x, y) != other)
                qFatal("unexpected pixel %08x at %d,%d", image.pixel(x, y), x, y);
        }
    }
    return region;
}

QImage pictureOf(const Box& box)
{
    return box.viewport()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

QPixmap plainPixmap(QRgb colour)
{
    QImage image(7, 5, QImage::Format_ARGB32);
    image.fill(colour);
    return QPixmap::fromImage(image, Qt::NoFormatConversion);
}

QStringList warnings;

void noteWarning(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtWarningMsg)
        warnings << text;
}

} // namespace

class TestListBoxSkinHighlight : public QObject
{
    Q_OBJECT

private slots:
    void colours_data();
    void colours();
    void colourFollowsTheFocus();
    void alphaOfThePictures_data();
    void alphaOfThePictures();
    void alphaBeforeAnyPicture();
    void alphaGoesToTheScrollBar();
    void clipRegionDecides();
    void noClipNoPicture();
    void imagesOfAllKinds_data();
    void imagesOfAllKinds();
    void picturesKeepTheirSizeInSquareCells_data();
    void picturesKeepTheirSizeInSquareCells();
    void picturesFollowOtherCells();
    void penOfItems();
    void painterIsRestored();
    void cellsWithoutItems();
    void cellsOfAPaintEvent_data();
    void cellsOfAPaintEvent();
    void cellIsPaintedOnce();
    void dirtyUntilPaintedWhole();
    void restIsLeftToTheBackground();
    void backgroundPixmap();
    void nullBackgroundPixmap();
    void showing();
    void showingDropsTheRepaintOfEverything();
    void showingForgetsWhereADragWas();
    void repaintsOnlyDirtyItems();
    void triggerUpdateRepaintsEverything();
    void focusRepaintsCurrentItem();
    void changedListBox();
    void changedSignalDoesNothing();
};

void TestListBoxSkinHighlight::colours_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<bool>("focus");
    QTest::addColumn<bool>("custom");
    QTest::addColumn<QRgb>("expected");
    QTest::newRow("one column, no focus") << 1 << false << false << grey;
    QTest::newRow("one column, focus") << 1 << true << false << orange;
    QTest::newRow("two columns, no focus") << 2 << false << false << blue;
    QTest::newRow("two columns, focus") << 2 << true << false << blue;
    QTest::newRow("one column, custom highlighting") << 1 << true << true << ground;
    QTest::newRow("two columns, custom highlighting") << 2 << true << true << ground;
}

void TestListBoxSkinHighlight::colours()
{
    QFETCH(int, columns);
    QFETCH(bool, focus);
    QFETCH(bool, custom);
    QFETCH(QRgb, expected);
    Box box(QSize(80, 60));
    box.setBackgroundPixmap(plainPixmap(ground));
    box.blocks(6);
    box.setColumnMode(columns);
    box.item(1)->setCustomHighlighting(custom);
    box.setSelected(1, true);
    box.showSettled();
    if (focus)
        box.focusNow();
    else
        box.clearFocus();
    QCOMPARE(box.hasFocus(), focus);
    const QRect cell(0, 15, columns == 1 ? 80 : 40, 15);
    QCOMPARE(regionOf(pictureOf(box), expected, ground), expected == ground ? QRegion(0, 0, 80, 60) : QRegion(cell));
}

void TestListBoxSkinHighlight::colourFollowsTheFocus()
{
    Box box(QSize(80, 60));
    box.blocks(2);
    box.setSelected(0, true);
    box.showSettled();
    box.focusNow();
    QCOMPARE(pictureOf(box).pixel(40, 7), orange);
    box.clearFocus();
    QCOMPARE(pictureOf(box).pixel(40, 7), grey);
}

void TestListBoxSkinHighlight::alphaOfThePictures_data()
{
    QTest::addColumn<int>("alpha");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QRgb>("expected");
    QTest::newRow("start") << -1 << 1 << 0xff8c8c8cU;
    QTest::newRow("opaque") << 255 << 1 << 0xff8c8c8cU;
    QTest::newRow("half") << 0x80 << 1 << 0x808c8c8cU;
    QTest::newRow("transparent") << 0 << 1 << 0x008c8c8cU;
    QTest::newRow("transparent, two columns") << 0 << 2 << 0xff6464d2U;
}

void TestListBoxSkinHighlight::alphaOfThePictures()
{
    QFETCH(int, alpha);
    QFETCH(int, columns);
    QFETCH(QRgb, expected);
    Box box(QSize(80, 60));
    box.blocks(4);
    box.setColumnMode(columns);
    box.setSelected(0, true);
    box.doLayout();
    QImage image = groundImage(40, 15);
    // Also with pictures that exist already.
    for (int round = 0; round < 2; ++round) {
        if (alpha >= 0)
            box.setAlphaOverride(uchar(alpha));
        image.fill(ground);
        QPainter painter(&image);
        painter.setClipRegion(QRect(0, 0, 40, 15));
        box.paintCell(&painter, 0, 0);
        painter.end();
        QCOMPARE(regionOf(image, expected, ground), QRegion(0, 0, 40, 15));
    }
    // Colours on an opaque screen do not depend on the alpha.
    box.showSettled();
    box.clearFocus();
    QCOMPARE(pictureOf(box).pixel(20, 7), columns == 1 ? grey : blue);
}

void TestListBoxSkinHighlight::alphaBeforeAnyPicture()
{
    Box box(QSize(15, 60));
    box.setAlphaOverride(3);
    box.blocks(1, 15, 15);
    box.setSelected(0, true);
    box.doLayout();
    QImage image = groundImage(15, 15);
    QPainter painter(&image);
    painter.setClipRegion(QRect(0, 0, 15, 15));
    box.paintCell(&painter, 0, 0);
    painter.end();
    QCOMPARE(regionOf(image, 0x038c8c8c, ground), QRegion(0, 0, 15, 15));
}

// Intended: the clip region is in device coordinates, so it does not matter where the painter has been moved to.
void TestListBoxSkinHighlight::alphaGoesToTheScrollBar()
{
    Box box(QSize(100, 50));
    QCOMPARE(alphaOf(box.verticalScrollBar()), uchar(255));
    box.setAlphaOverride(77);
    QCOMPARE(alphaOf(box.verticalScrollBar()), uchar(77));
}

void TestListBoxSkinHighlight::clipRegionDecides()
{
    Box box(QSize(80, 60));
    box.blocks(1);
    box.setSelected(0, true);
    box.doLayout();
    QImage image = groundImage(100, 40);
    const QRegion clip = QRegion(10, 10, 20, 5) + QRegion(40, 12, 30, 15);
    QPainter painter(&image);
    painter.setClipRegion(clip);
    painter.translate(13, 17);
    box.paintCell(&painter, 0, 0);
    painter.end();
    QVERIFY((regionOf(image, grey, ground) ^ clip).isEmpty());
}

void TestListBoxSkinHighlight::noClipNoPicture()
{
    Box box(QSize(80, 60));
    box.blocks(1);
    box.setSelected(0, true);
    box.doLayout();
    QImage image = groundImage(80, 15);
    QPainter painter(&image);
    box.paintCell(&painter, 0, 0);
    painter.end();
    QVERIFY(regionOf(image, grey, ground).isEmpty());
    QCOMPARE(box.block(0)->painted, 1);
}

void TestListBoxSkinHighlight::imagesOfAllKinds_data()
{
    QTest::addColumn<QImage::Format>("format");
    QTest::addColumn<QRgb>("expected");
    QTest::newRow("32 bits") << QImage::Format_RGB32 << 0xff8c8c8cU;
    QTest::newRow("32 bits with alpha") << QImage::Format_ARGB32 << 0x408c8c8cU;
    QTest::newRow("premultiplied") << QImage::Format_ARGB32_Premultiplied << 0x408c8c8cU;
    QTest::newRow("bytes in another order") << QImage::Format_RGBA8888 << 0x408c8c8cU;
    QTest::newRow("24 bits") << QImage::Format_RGB888 << 0xff8c8c8cU;
    // 5, 6 and 5 bits of each colour.
    QTest::newRow("16 bits") << QImage::Format_RGB16 << 0xff8c8e8cU;
}

void TestListBoxSkinHighlight::imagesOfAllKinds()
{
    QFETCH(QImage::Format, format);
    QFETCH(QRgb, expected);
    Box box(QSize(80, 60));
    box.blocks(1);
    box.setSelected(0, true);
    box.setAlphaOverride(0x40);
    box.doLayout();
    box.block(0)->onPaint = [](QPainter* painter) { painter->fillRect(0, 0, 5, 5, Qt::green); };
    QImage image(80, 15, format);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setClipRegion(QRect(0, 0, 60, 15));
    box.paintCell(&painter, 0, 0);
    painter.end();
    QCOMPARE(image.pixel(2, 2), 0xff00ff00U);
    QCOMPARE(image.pixel(59, 14), expected);
    QCOMPARE(image.pixel(60, 14), 0xff000000U);
}

void TestListBoxSkinHighlight::picturesKeepTheirSizeInSquareCells_data()
{
    QTest::addColumn<QSize>("made");
    QTest::addColumn<int>("alpha");
    QTest::addColumn<QRect>("expected");
    // Intended: the height of the pictures is not looked at.
    QTest::newRow("low picture") << QSize(15, 4) << -1 << QRect(0, 0, 15, 4);
    QTest::newRow("low picture and another alpha") << QSize(15, 4) << 0x40 << QRect(0, 0, 15, 4);
    QTest::newRow("picture of another width") << QSize(14, 4) << -1 << QRect(0, 0, 15, 15);
    QTest::newRow("right size") << QSize(15, 15) << -1 << QRect(0, 0, 15, 15);
    // A picture without pixels has no width either.
    QTest::newRow("no height") << QSize(15, 0) << -1 << QRect(0, 0, 15, 15);
    QTest::newRow("no height and another alpha") << QSize(15, 0) << 0x40 << QRect(0, 0, 15, 15);
    QTest::newRow("negative height is ignored") << QSize(15, -1) << -1 << QRect(0, 0, 15, 15);
}

void TestListBoxSkinHighlight::picturesKeepTheirSizeInSquareCells()
{
    QFETCH(QSize, made);
    QFETCH(int, alpha);
    QFETCH(QRect, expected);
    Box box(QSize(15, 60));
    box.blocks(2, 15, 15);
    box.setSelected(0, true);
    box.doLayout();
    box.redrawHighlightImages(made.width(), made.height());
    box.redrawHighlightImages(-1, 3);
    box.redrawHighlightImages(3, -1);
    if (alpha >= 0)
        box.setAlphaOverride(uchar(alpha));
    QImage image = groundImage(15, 30);
    QPainter painter(&image);
    painter.setClipRegion(QRect(0, 0, 15, 15));
    box.paintCell(&painter, 0, 0);
    painter.end();
    const QRgb colour = alpha >= 0 ? (QRgb(alpha) << 24) | 0x8c8c8c : grey;
    QCOMPARE(regionOf(image, colour, ground), QRegion(expected));
}

void TestListBoxSkinHighlight::picturesFollowOtherCells()
{
    Box box(QSize(80, 60));
    box.blocks(1, 40, 15);
    box.insertItem(new Block(40, 30, QStringLiteral("high")));
    box.setSelectionMode(ListBoxSkin::Multi);
    box.selectAll(true);
    box.doLayout();
    for (const int height : {15, 30}) {
        box.redrawHighlightImages(80, 4);
        QImage image = groundImage(80, 30);
        QPainter painter(&image);
        painter.setClipRegion(image.rect());
        box.paintCell(&painter, height == 15 ? 0 : 1, 0);
        painter.end();
        // No more than the picture, whose size is the cell's.
        QCOMPARE(regionOf(image, grey, ground), QRegion(0, 0, 80, height));
    }
}

void TestListBoxSkinHighlight::penOfItems()
{
    Box box(QSize(80, 60));
    box.blocks(2);
    box.setSelected(0, true);
    box.doLayout();
    QImage image = groundImage(80, 30);
    QPainter painter(&image);
    painter.setPen(Qt::red);
    for (const int alpha : {255, 0x80, 0}) {
        box.setAlphaOverride(uchar(alpha));
        for (int row = 0; row < 2; ++row) {
            box.paintCell(&painter, row, 0);
            QCOMPARE(box.block(row)->pen, QColor(255, 255, 255, alpha));
        }
    }
}

void TestListBoxSkinHighlight::painterIsRestored()
{
    Box box(QSize(80, 60));
    box.blocks(1);
    box.doLayout();
    box.block(0)->onPaint = [](QPainter* painter) {
        painter->translate(3, 4);
        painter->setPen(Qt::green);
        painter->setClipping(false);
    };
    QImage image = groundImage(80, 30);
    QPainter painter(&image);
    painter.setPen(Qt::red);
    painter.setClipRegion(QRect(0, 0, 30, 15));
    box.paintCell(&painter, 0, 0);
    QCOMPARE(painter.pen().color(), QColor(Qt::red));
    QCOMPARE(painter.transform(), QTransform());
    QCOMPARE(painter.clipRegion(), QRegion(0, 0, 30, 15));
}

void TestListBoxSkinHighlight::cellsWithoutItems()
{
    Box box(QSize(80, 60));
    box.blocks(3);
    box.setColumnMode(2);
    box.setSelectionMode(ListBoxSkin::Multi);
    box.selectAll(true);
    box.doLayout();
    QImage image = groundImage(40, 15);
    QPainter painter(&image);
    painter.setClipRegion(image.rect());
    for (const QPoint cell : {QPoint(1, 1), QPoint(2, 0), QPoint(9, 9), QPoint(-1, 0), QPoint(0, -1)})
        box.paintCell(&painter, cell.y(), cell.x());
    painter.end();
    QVERIFY(regionOf(image, blue, ground).isEmpty());
    // The first column is filled first.
    QPainter again(&image);
    box.paintCell(&again, 0, 1);
    QCOMPARE(box.block(2)->painted, 1);
    QCOMPARE(box.block(1)->painted, 0);
}

void TestListBoxSkinHighlight::cellsOfAPaintEvent_data()
{
    QTest::addColumn<int>("items");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<QRegion>("region");
    QTest::addColumn<QString>("expected");
    const QRegion all(0, 0, 100, 50);
    QTest::newRow("one column") << 20 << 1 << QPoint(0, 0) << all << "0/0 1/0 2/0 3/0";
    QTest::newRow("few items") << 2 << 1 << QPoint(0, 0) << all << "0/0 1/0";
    QTest::newRow("no items") << 0 << 1 << QPoint(0, 0) << all << "";
    QTest::newRow("scrolled") << 20 << 1 << QPoint(0, 31) << all << "2/0 3/0 4/0 5/0";
    QTest::newRow("scrolled to an edge") << 20 << 1 << QPoint(0, 30) << all << "2/0 3/0 4/0 5/0";
    QTest::newRow("end") << 20 << 1 << QPoint(0, 1000) << all << "16/0 17/0 18/0 19/0";
    QTest::newRow("part of two cells") << 20 << 1 << QPoint(0, 0) << QRegion(0, 20, 10, 15) << "1/0 2/0";
    QTest::newRow("two separate parts") << 20 << 1 << QPoint(0, 0) << QRegion(0, 0, 10, 4) + QRegion(50, 32, 10, 4)
                                        << "0/0 2/0";
    QTest::newRow("columns") << 20 << 4 << QPoint(0, 0) << all << "0/0 1/0 2/0 3/0 0/1 1/1 2/1 3/1 0/2 1/2 2/2 3/2";
    QTest::newRow("columns, scrolled") << 20 << 4 << QPoint(41, 16) << all
                                       << "1/1 2/1 3/1 4/1 1/2 2/2 3/2 4/2 1/3 2/3 3/3 4/3";
    QTest::newRow("last column is short")
        << 18 << 4 << QPoint(41, 16) << all << "1/1 2/1 3/1 4/1 1/2 2/2 3/2 4/2 1/3 2/3";
    QTest::newRow("last column ends above") << 21 << 5 << QPoint(100, 25) << all << "1/2 2/2 3/2 4/2 1/3 2/3 3/3 4/3";
    QTest::newRow("part of columns") << 20 << 4 << QPoint(0, 0) << QRegion(39, 29, 2, 2) << "1/0 2/0 1/1 2/1";
}

void TestListBoxSkinHighlight::cellsOfAPaintEvent()
{
    QFETCH(int, items);
    QFETCH(int, columns);
    QFETCH(QPoint, position);
    QFETCH(QRegion, region);
    QFETCH(QString, expected);
    Watched box(QSize(100, 50));
    box.blocks(items);
    box.setColumnMode(columns);
    box.showSettled();
    box.setContentsPos(position.x(), position.y());
    box.settle();
    box.forget();
    box.viewport()->QWidget::repaint(region);
    QCOMPARE(box.cellNames(), expected);
    for (const PaintedCell& cell : box.cells) {
        const int w = columns == 1 ? 100 : 40;
        const QRect place(cell.column * w - box.contentsX(), cell.row * 15 - box.contentsY(), w, 15);
        QCOMPARE(cell.origin, place.topLeft());
        QCOMPARE(cell.clip, region & place);
        QCOMPARE(cell.pen, QColor(255, 255, 255));
    }
}

// Cells that lie over each other by an item's odd width never paint a pixel twice.
void TestListBoxSkinHighlight::cellIsPaintedOnce()
{
    Watched box(QSize(100, 50));
    box.blocks(9);
    box.setColumnMode(3);
    box.showSettled();
    box.forget();
    box.viewport()->QWidget::repaint();
    QRegion painted;
    for (const PaintedCell& cell : box.cells) {
        QVERIFY(!painted.intersects(cell.clip));
        painted += cell.clip;
    }
    QCOMPARE(painted, QRegion(0, 0, 100, 45));
}

void TestListBoxSkinHighlight::dirtyUntilPaintedWhole()
{
    Watched box(QSize(100, 50));
    box.blocks(20);
    box.showSettled();
    // Whole, half in sight, out of sight.
    QVERIFY(!box.block(2)->isDirty());
    QVERIFY(box.block(3)->isDirty());
    QVERIFY(box.block(10)->isDirty());
    box.setContentsPos(0, 5);
    box.viewport()->QWidget::repaint();
    QVERIFY(box.block(3)->isDirty());
    box.setContentsPos(0, 10);
    box.viewport()->QWidget::repaint();
    QVERIFY(!box.block(3)->isDirty());

    box.block(2)->dirty = true;
    box.viewport()->QWidget::repaint(0, 20, 99, 15);
    QVERIFY(box.block(2)->isDirty());
    box.viewport()->QWidget::repaint(QRegion(0, 20, 100, 15) - QRegion(50, 25, 1, 1));
    QVERIFY(box.block(2)->isDirty());
    box.viewport()->QWidget::repaint(0, 20, 100, 15);
    QVERIFY(!box.block(2)->isDirty());
}

void TestListBoxSkinHighlight::restIsLeftToTheBackground()
{
    QImage tile(4, 3, QImage::Format_ARGB32);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x)
            tile.setPixel(x, y, qRgb(40 * x, 50 * y, 99));
    Box box(QSize(80, 60));
    box.blocks(2);
    box.setBackgroundPixmap(QPixmap::fromImage(tile, Qt::NoFormatConversion));
    box.setSelected(1, true);
    box.showSettled();
    box.clearFocus();
    const QImage picture = pictureOf(box);
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 80; ++x)
            QCOMPARE(picture.pixel(x, y), y >= 15 && y < 30 ? grey : tile.pixel(x % 4, y % 3));
}

void TestListBoxSkinHighlight::backgroundPixmap()
{
    const auto noting = qInstallMessageHandler(noteWarning);
    warnings.clear();
    Box box;
    ToolkitFrame& base = box;
    base.setBackgroundPixmap(plainPixmap(0xff112233));
    qInstallMessageHandler(noting);
    QCOMPARE(warnings, QStringList());
    const QList<WidgetBackground*> both = {&box, box.viewport()};
    for (const WidgetBackground* each : both) {
        QVERIFY(each->backgroundPixmap());
        QCOMPARE(each->backgroundPixmap()->toImage().pixel(3, 3), 0xff112233U);
        QCOMPARE(int(each->backgroundOrigin()), 3);
    }
}

void TestListBoxSkinHighlight::nullBackgroundPixmap()
{
    Box box;
    box.setBackgroundPixmap(plainPixmap(0xff112233));
    warnings.clear();
    const auto noting = qInstallMessageHandler(noteWarning);
    box.setBackgroundPixmap(QPixmap());
    qInstallMessageHandler(noting);
    QCOMPARE(warnings, QStringList(QStringLiteral(" is null ")));
    QVERIFY(!box.backgroundPixmap());
    QVERIFY(!box.viewport()->backgroundPixmap());
    QCOMPARE(int(box.backgroundOrigin()), 3);
    QCOMPARE(int(box.viewport()->backgroundOrigin()), 3);
}

void TestListBoxSkinHighlight::showing()
{
    Watched box(QSize(100, 50));
    box.blocks(20);
    box.setCurrentItem(12);
    box.showSettled();
    QVERIFY(box.itemVisible(12));
    box.setContentsPos(0, 0);
    // A double click has moves ignored until the list box is shown again.
    box.mouse(QEvent::MouseButtonDblClick, QPoint(10, 10));
    box.drag(QPoint(10, 20));
    QCOMPARE(box.currentItem(), 12);
    box.hide();
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QVERIFY(box.itemVisible(12));
    const int y = box.contentsY();
    box.drag(QPoint(10, 20));
    QCOMPARE(box.currentItem(), (y + 20) / 15);
    box.release(QPoint(10, 20));
}

void TestListBoxSkinHighlight::showingDropsTheRepaintOfEverything()
{
    Watched box(QSize(100, 60));
    box.blocks(20);
    box.showSettled();
    box.viewport()->QWidget::repaint();
    box.triggerUpdate(true);
    box.doLayout();
    QShowEvent event;
    box.showEvent(&event);
    box.forget();
    box.updateItem(1);
    box.refreshSlot();
    QCOMPARE(box.events, QList<QRegion>({QRegion(0, 15, 100, 15)}));
}

void TestListBoxSkinHighlight::showingForgetsWhereADragWas()
{
    Watched box(QSize(100, 50));
    box.blocks(20);
    box.showSettled();
    box.press(QPoint(10, 5));
    box.drag(QPoint(10, 35));
    QCOMPARE(box.currentItem(), 2);
    box.setCurrentItem(1);
    // The cell that it is in already.
    box.drag(QPoint(10, 36));
    QCOMPARE(box.currentItem(), 1);
    QShowEvent event;
    box.showEvent(&event);
    box.drag(QPoint(10, 35));
    QCOMPARE(box.currentItem(), 2);
    box.release(QPoint(10, 35));
}

void TestListBoxSkinHighlight::repaintsOnlyDirtyItems()
{
    Watched box(QSize(100, 50));
    box.blocks(20);
    box.setSelectionMode(ListBoxSkin::Multi);
    box.showSettled();
    box.setContentsPos(0, 10);
    box.settle();
    box.forget();
    box.updateItem(1);
    box.updateItem(box.item(2));
    // Half of it, and one that is out of sight.
    box.updateItem(3);
    box.updateItem(15);
    box.updateItem(-1);
    box.updateItem(nullptr);
    QCOMPARE(box.events.size(), 0);
    box.settle();
    QCOMPARE(box.events, QList<QRegion>({QRegion(0, 5, 100, 45)}));
    QCOMPARE(box.cellNames(), QStringLiteral("1/0 2/0 3/0"));

    box.forget();
    box.setSelected(2, true);
    box.settle();
    QCOMPARE(box.events, QList<QRegion>({QRegion(0, 20, 100, 15)}));
    // What is clean is not painted again.
    box.forget();
    box.triggerUpdate(false);
    box.settle();
    QCOMPARE(box.events.size(), 0);
}

void TestListBoxSkinHighlight::triggerUpdateRepaintsEverything()
{
    Watched box(QSize(100, 50));
    box.blocks(20);
    box.showSettled();
    box.forget();
    box.triggerUpdate(true);
    box.triggerUpdate(false);
    box.updateItem(1);
    QTRY_VERIFY_WITH_TIMEOUT(!box.events.isEmpty(), 30000);
    box.settle();
    QCOMPARE(box.events, QList<QRegion>({QRegion(0, 0, 100, 50)}));
}

void TestListBoxSkinHighlight::focusRepaintsCurrentItem()
{
    Watched box(QSize(100, 50));
    box.blocks(20);
    box.setCurrentItem(1);
    box.showSettled();
    box.focusNow();
    for (int round = 0; round < 2; ++round) {
        QCoreApplication::processEvents();
        box.forget();
        if (round == 0)
            box.clearFocus();
        else
            box.focusNow();
        const auto painted = [&box] {
            return std::any_of(box.cells.begin(), box.cells.end(), [](const PaintedCell& cell) {
                return cell.row == 1 && cell.clip == QRegion(0, 15, 100, 15);
            });
        };
        QTRY_VERIFY_WITH_TIMEOUT(painted(), 30000);
    }
}

void TestListBoxSkinHighlight::changedListBox()
{
    QVERIFY(!ListBoxSkin::changedListBox);
    {
        Box one;
        ListBoxSkin::changedListBox = &one;
        {
            const Box other;
        }
        QCOMPARE(ListBoxSkin::changedListBox, &one);
    }
    QVERIFY(!ListBoxSkin::changedListBox);
}

void TestListBoxSkinHighlight::changedSignalDoesNothing()
{
    Box box;
    box.blocks(2);
    SignalLog log(&box);
    box.emitChangedSignal(true);
    box.emitChangedSignal(false);
    QCOMPARE(log.take(), QStringList());
}

QTEST_MAIN(TestListBoxSkinHighlight)
#include "tst_listboxskin_highlight.moc"
