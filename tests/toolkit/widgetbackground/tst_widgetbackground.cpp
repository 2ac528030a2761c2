#include "toolkit/toolkitwidget.h"

#include <QFrame>
#include <QTest>

using namespace skinwidgets;

class TestWidgetBackground : public QObject
{
    Q_OBJECT

private slots:
    void noneAtStart();
    void pictureIsHeldStraight();
    void nullTakesPictureAway();
    void childrenDoNotInherit();
    void paletteIsUntouched();
    void origins_data();
    void origins();
    void tiling_data();
    void tiling();
    void originOfAWindow();
    void alphaIsCopied();
    void windowColourWithoutPicture();
    void plainWidget();
    void pixmapForm();
    void changeRepaints();
    void erasesBeforePainting();
    void noEraseFlag();
    void noBackgroundMode();
    void alphaDoesNotDarkenOpaqueWindow_data();
    void alphaDoesNotDarkenOpaqueWindow();
    void translucentWindowGetsAlpha();
};

namespace
{

using Widget = ToolkitWidget<QWidget>;

QImage filled(int w, int h, QRgb pixel)
{
    QImage image(w, h, QImage::Format_ARGB32);
    image.fill(pixel);
    return image;
}

QPixmap numbered(int w, int h)
{
    QImage image(w, h, QImage::Format_ARGB32);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            image.setPixel(x, y, qRgba(x, y, 7, 9));
    return pixmapFromStraight(image);
}

QRgb backgroundAt(const QWidget& widget, int x, int y)
{
    QImage one(1, 1, QImage::Format_ARGB32);
    fillFromBackground(one, &widget, QPoint(x, y));
    return one.pixel(0, 0);
}

QRgb shown(const QWidget& widget, int x, int y)
{
    return const_cast<QWidget&>(widget).grab().toImage().convertToFormat(QImage::Format_ARGB32).pixel(x, y);
}

} // namespace

void TestWidgetBackground::noneAtStart()
{
    const Widget widget;
    QVERIFY(!widget.backgroundPixmap());
    QCOMPARE(widget.backgroundMode(), WidgetBackground::PaletteBackground);
    QCOMPARE(widget.backgroundOrigin(), WidgetBackground::WidgetOrigin);
}

void TestWidgetBackground::pictureIsHeldStraight()
{
    Widget widget;
    QPixmap premultiplied(2, 2);
    premultiplied.fill(Qt::transparent);
    widget.setBackgroundPixmap(premultiplied);
    QVERIFY(widget.backgroundPixmap());
    QCOMPARE(widget.backgroundPixmap()->toImage().format(), QImage::Format_ARGB32);
    QCOMPARE(widget.backgroundMode(), WidgetBackground::FixedPixmap);
    widget.setBackgroundPixmap(pixmapFromStraight(filled(2, 2, 0x00abcdef)));
    QCOMPARE(widget.backgroundPixmap()->toImage().pixel(0, 0), 0x00abcdefU);
}

void TestWidgetBackground::nullTakesPictureAway()
{
    Widget widget;
    widget.setBackgroundPixmap(numbered(2, 2));
    widget.setBackgroundPixmap(QPixmap());
    QVERIFY(!widget.backgroundPixmap());
}

void TestWidgetBackground::childrenDoNotInherit()
{
    Widget parent;
    Widget child(&parent);
    parent.setBackgroundPixmap(numbered(4, 4));
    QVERIFY(!child.backgroundPixmap());
    QCOMPARE(backgroundAt(child, 0, 0), child.palette().color(QPalette::Window).rgb());
}

void TestWidgetBackground::paletteIsUntouched()
{
    Widget widget;
    const QPalette before = widget.palette();
    widget.setBackgroundPixmap(numbered(4, 4));
    QCOMPARE(widget.palette(), before);
}

void TestWidgetBackground::origins_data()
{
    QTest::addColumn<int>("middleOrigin");
    QTest::addColumn<int>("origin");
    QTest::addColumn<QPoint>("offset");
    QTest::newRow("0 the widget") << 0 << 0 << QPoint(0, 0);
    QTest::newRow("1 its parent") << 0 << 1 << QPoint(3, 4);
    QTest::newRow("2 its window") << 0 << 2 << QPoint(13, 24);
    QTest::newRow("3 the parent's own") << 0 << 3 << QPoint(3, 4);
    QTest::newRow("3 over a parent with 1") << 1 << 3 << QPoint(13, 24);
    QTest::newRow("3 over a parent with 2") << 2 << 3 << QPoint(13, 24);
    QTest::newRow("3 over a parent with 3") << 3 << 3 << QPoint(13, 24);
}

void TestWidgetBackground::origins()
{
    QFETCH(int, middleOrigin);
    QFETCH(int, origin);
    QFETCH(QPoint, offset);
    Widget window;
    Widget middle(&window);
    middle.move(10, 20);
    middle.setBackgroundOrigin(static_cast<WidgetBackground::BackgroundOrigin>(middleOrigin));
    Widget widget(&middle);
    widget.move(3, 4);
    widget.setBackgroundOrigin(static_cast<WidgetBackground::BackgroundOrigin>(origin));
    widget.setBackgroundPixmap(numbered(64, 64));
    QCOMPARE(backgroundOffset(&widget), offset);
    QCOMPARE(backgroundAt(widget, 1, 2), qRgba(offset.x() + 1, offset.y() + 2, 7, 9));
}

void TestWidgetBackground::tiling_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<QPoint>("source");
    QTest::newRow("first tile") << QPoint(2, 1) << QPoint(2, 1);
    QTest::newRow("second tile") << QPoint(5, 3) << QPoint(1, 0);
    QTest::newRow("left of the origin") << QPoint(-1, -1) << QPoint(3, 2);
    QTest::newRow("far left") << QPoint(-9, -7) << QPoint(3, 2);
}

void TestWidgetBackground::tiling()
{
    QFETCH(QPoint, at);
    QFETCH(QPoint, source);
    Widget widget;
    widget.setBackgroundPixmap(numbered(4, 3));
    QImage target(10, 10, QImage::Format_ARGB32);
    fillFromBackground(target, &widget, at);
    QCOMPARE(target.pixel(0, 0), qRgba(source.x(), source.y(), 7, 9));
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 10; ++x)
            QCOMPARE(target.pixel(x, y), qRgba((source.x() + x) % 4, (source.y() + y) % 3, 7, 9));
}

// A window's place on the display, or above its parent, moves nothing.
void TestWidgetBackground::originOfAWindow()
{
    QWidget owner;
    Widget window(&owner, "window", Qt::WType_TopLevel);
    window.setBackgroundPixmap(numbered(4, 3));
    window.move(2, 1);
    for (const auto origin :
         {WidgetBackground::ParentOrigin, WidgetBackground::WindowOrigin, WidgetBackground::AncestorOrigin}) {
        window.setBackgroundOrigin(origin);
        QCOMPARE(backgroundOffset(&window), QPoint());
    }
}

void TestWidgetBackground::alphaIsCopied()
{
    Widget widget;
    widget.setBackgroundPixmap(pixmapFromStraight(filled(3, 3, 0x00abcdef)));
    QCOMPARE(backgroundAt(widget, 1, 1), 0x00abcdefU);
}

void TestWidgetBackground::windowColourWithoutPicture()
{
    Widget widget;
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(1, 2, 3));
    widget.setPalette(palette);
    QCOMPARE(backgroundAt(widget, 0, 0), qRgb(1, 2, 3));
}

void TestWidgetBackground::plainWidget()
{
    QWidget widget;
    QVERIFY(!backgroundOf(&widget));
    QCOMPARE(backgroundOffset(&widget), QPoint());
    QCOMPARE(backgroundAt(widget, 0, 0), widget.palette().color(QPalette::Window).rgb());
    ToolkitWidget<QFrame> frame;
    QCOMPARE(backgroundOf(&frame), static_cast<const WidgetBackground*>(&frame));
}

void TestWidgetBackground::pixmapForm()
{
    Widget widget;
    widget.setBackgroundPixmap(numbered(8, 8));
    QPixmap target(2, 2);
    fillFromBackground(target, &widget, 5, 6);
    QCOMPARE(target.toImage().pixel(1, 1), qRgba(6, 7, 7, 9));
    QPixmap null;
    fillFromBackground(null, &widget, 0, 0);
    QVERIFY(null.isNull());
}

void TestWidgetBackground::changeRepaints()
{
    class Counting : public Widget
    {
    public:
        int paints = 0;
        void paintEvent(QPaintEvent*) override { ++paints; }
    };
    Counting widget;
    widget.resize(20, 20);
    static_cast<QWidget&>(widget).show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QTRY_VERIFY(widget.paints > 0);
    QCoreApplication::processEvents();
    const int before = widget.paints;
    widget.setBackgroundPixmap(numbered(4, 4));
    QTRY_COMPARE(widget.paints, before + 1);
    widget.setBackgroundOrigin(WidgetBackground::WindowOrigin);
    QTRY_COMPARE(widget.paints, before + 2);
}

void TestWidgetBackground::erasesBeforePainting()
{
    Widget widget;
    widget.resize(4, 4);
    widget.setBackgroundPixmap(numbered(4, 4));
    QCOMPARE(shown(widget, 2, 3), qRgb(2, 3, 7));
    ToolkitWidget<QFrame> frame;
    frame.resize(4, 4);
    frame.setBackgroundPixmap(numbered(4, 4));
    QCOMPARE(shown(frame, 3, 1), qRgb(3, 1, 7));
}

void TestWidgetBackground::noEraseFlag()
{
    Widget widget(nullptr, "w", Qt::WRepaintNoErase);
    widget.resize(4, 4);
    widget.setBackgroundPixmap(numbered(4, 4));
    QImage canvas = filled(4, 4, 0xff998877);
    widget.render(&canvas);
    QVERIFY(canvas.pixel(2, 3) != qRgb(2, 3, 7));
}

void TestWidgetBackground::noBackgroundMode()
{
    Widget widget;
    widget.resize(4, 4);
    widget.setBackgroundPixmap(numbered(4, 4));
    widget.setBackgroundMode(WidgetBackground::NoBackground);
    QVERIFY(widget.testAttribute(Qt::WA_NoSystemBackground));
    QVERIFY(shown(widget, 2, 3) != qRgb(2, 3, 7));
}

void TestWidgetBackground::alphaDoesNotDarkenOpaqueWindow_data()
{
    QTest::addColumn<uint>("pixel");
    QTest::newRow("clear") << 0x00406080U;
    QTest::newRow("half") << 0x80406080U;
    QTest::newRow("opaque") << 0xff406080U;
}

void TestWidgetBackground::alphaDoesNotDarkenOpaqueWindow()
{
    QFETCH(uint, pixel);
    Widget widget;
    widget.resize(4, 4);
    widget.setBackgroundPixmap(pixmapFromStraight(filled(4, 4, pixel)));
    QCOMPARE(shown(widget, 1, 1), 0xff406080U);
    QImage canvas(4, 4, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    widget.render(&canvas);
    QCOMPARE(canvas.pixel(1, 1), 0xff406080U);
}

void TestWidgetBackground::translucentWindowGetsAlpha()
{
    Widget widget;
    widget.setAttribute(Qt::WA_TranslucentBackground);
    widget.resize(4, 4);
    widget.setBackgroundPixmap(pixmapFromStraight(filled(4, 4, 0x80ff0000)));
    QCOMPARE(shown(widget, 1, 1), 0x80ff0000U);
}

QTEST_MAIN(TestWidgetBackground)
#include "tst_widgetbackground.moc"
