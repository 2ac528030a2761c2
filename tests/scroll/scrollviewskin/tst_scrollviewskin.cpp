#include "scroll/viewfixture.h"

#include <QMetaMethod>

using namespace viewtest;

using Mode = ScrollViewSkin::ScrollBarMode;
using Policy = ScrollViewSkin::ResizePolicy;

namespace
{

constexpr Mode automatic = ScrollViewSkin::Auto;
constexpr Mode off = ScrollViewSkin::AlwaysOff;
constexpr Mode on = ScrollViewSkin::AlwaysOn;

// Which bars a view does not hide.
QString shownBars(const ScrollViewSkin& view)
{
    QString bars;
    if (!view.verticalScrollBar()->isHidden())
        bars += 'v';
    if (!view.horizontalScrollBar()->isHidden())
        bars += 'h';
    return bars;
}

uchar alphaOf(ScrollBarSkin* bar)
{
    struct Open : ScrollBarSkin {
        static auto member() { return &Open::alphaOverride; }
    };
    return bar->*Open::member();
}

// A style that thickens every horizontal bar while the object lives.
class ThickBars
{
public:
    explicit ThickBars(int extent) { QApplication::setStyle(new FixedStyle(extent)); }
    ~ThickBars() { QApplication::setStyle(new FixedStyle); }
    Q_DISABLE_COPY_MOVE(ThickBars)
};

} // namespace

class TestScrollViewSkin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(new FixedStyle); }

    void constructors();
    void defaults();
    void viewportFlags_data();
    void viewportFlags();
    void enums();
    void slotsAndSignals();

    void modes();
    void margins();
    void policyIsNeverSwitched();
    void alphaGoesToTheVerticalBar();
    void cornerWidget();
    void cornerWidgetLeaves();

    void layout_data();
    void layout();
    void layoutWithFrameAndMargins_data();
    void layoutWithFrameAndMargins();
    void layoutWithoutVisibleChild_data();
    void layoutWithoutVisibleChild();
    void hiddenBarsValue_data();
    void hiddenBarsValue();
    void lineStepSurvivesLayout();
    void placedBars_data();
    void placedBars();
    void placedBarsAtTheLeft();
    void fittedChild_data();
    void fittedChild();
    void barsShownAfterTheMove();
    void valuesDuringLayoutDoNotMove();
    void layoutKeepsTheChoke();
    void smallerContents_data();
    void smallerContents();
    void smallerContentsMoveOnce();
    void largerViewport();

    void sizeHint_data();
    void sizeHint();
    void sizeHintPolishes();
    void minimumSizeHint();
    void viewportSize_data();
    void viewportSize();

    void resizing();
    void showing();
    void styleChange();
    void frameChange();

    void lineSnapping_data();
    void lineSnapping();
    void lineSnappingAtTheEnd();
    void lineSnappingAndOtherMoves();
};

void TestScrollViewSkin::constructors()
{
    const ScrollViewSkin plain;
    QCOMPARE(plain.parentWidget(), nullptr);
    QCOMPARE(plain.objectName(), QString());
    QCOMPARE(plain.getWFlags(), 0U);

    QWidget parent;
    const ScrollViewSkin view(&parent, "list", Qt::WStyle_Tool);
    QCOMPARE(view.parentWidget(), &parent);
    QCOMPARE(view.objectName(), QStringLiteral("list"));
    QCOMPARE(view.getWFlags(), unsigned(Qt::WStyle_Tool));
    QVERIFY(qobject_cast<const QFrame*>(&view));
}

void TestScrollViewSkin::defaults()
{
    const ScrollViewSkin view;
    QCOMPARE(view.horizontalScrollBar()->objectName(), QStringLiteral("qt_hbar"));
    QCOMPARE(view.horizontalScrollBar()->orientation(), Qt::Horizontal);
    QCOMPARE(view.horizontalScrollBar()->parentWidget(), &view);
    QCOMPARE(view.horizontalScrollBar()->singleStep(), 20);
    QCOMPARE(view.horizontalScrollBar()->pageStep(), 1);
    QCOMPARE(view.verticalScrollBar()->objectName(), QStringLiteral("SCROLLBAR"));
    QCOMPARE(view.verticalScrollBar()->parentWidget(), &view);
    QCOMPARE(view.verticalScrollBar()->lineStep(), 20);
    QCOMPARE(view.verticalScrollBar()->pageStep(), 1);
    QCOMPARE(view.viewport()->objectName(), QStringLiteral("qt_viewport"));
    QCOMPARE(view.viewport()->parentWidget(), &view);
    QCOMPARE(view.clipper(), view.viewport());
    QCOMPARE(view.viewport()->backgroundMode(), WidgetBackground::PaletteBackground);

    QCOMPARE(view.contentsX(), 0);
    QCOMPARE(view.contentsY(), 0);
    QCOMPARE(view.contentsWidth(), 0);
    QCOMPARE(view.contentsHeight(), 0);
    QCOMPARE(view.leftMargin(), 0);
    QCOMPARE(view.topMargin(), 0);
    QCOMPARE(view.rightMargin(), 0);
    QCOMPARE(view.bottomMargin(), 0);
    QCOMPARE(view.resizePolicy(), ScrollViewSkin::Default);
    QCOMPARE(view.vScrollBarMode(), automatic);
    QCOMPARE(view.hScrollBarMode(), automatic);
    QCOMPARE(view.cornerWidget(), nullptr);
    QVERIFY(!view.hasStaticBackground());
    QVERIFY(!view.lineSnapping());
    QVERIFY(view.dragAutoScroll());

    QCOMPARE(view.frameStyle(), 54);
    QCOMPARE(view.lineWidth(), 3);
    QCOMPARE(view.frameWidth(), 3);
    QCOMPARE(view.sizePolicy(), QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding));
}

void TestScrollViewSkin::viewportFlags_data()
{
    QTest::addColumn<WFlags>("flags");
    QTest::addColumn<WFlags>("expected");

    QTest::newRow("none") << WFlags(0) << WFlags(0x100000);
    QTest::newRow("all that are taken over") << WFlags(0xc80000) << WFlags(0xd80000);
    QTest::newRow("others are not") << WFlags(0x02000830) << WFlags(0x100000);
    QTest::newRow("clever painting") << WFlags(Qt::WPaintClever | Qt::WStyle_Tool) << WFlags(0x180000);
}

void TestScrollViewSkin::viewportFlags()
{
    QFETCH(const WFlags, flags);
    QWidget parent;
    ScrollViewSkin view(&parent, "view", flags);
    QTEST(view.viewport()->getWFlags(), "expected");
    view.enableClipper(true);
    QTEST(view.clipper()->getWFlags(), "expected");
}

void TestScrollViewSkin::enums()
{
    QCOMPARE(int(ScrollViewSkin::Auto), 0);
    QCOMPARE(int(ScrollViewSkin::AlwaysOff), 1);
    QCOMPARE(int(ScrollViewSkin::AlwaysOn), 2);
    QCOMPARE(int(ScrollViewSkin::Default), 0);
    QCOMPARE(int(ScrollViewSkin::Manual), 1);
    QCOMPARE(int(ScrollViewSkin::AutoOne), 2);
    QCOMPARE(int(ScrollViewSkin::AutoOneFit), 3);
}

// Also known to connections by name.
void TestScrollViewSkin::slotsAndSignals()
{
    const QMetaObject& meta = ScrollViewSkin::staticMetaObject;
    for (const char* slot : {"resizeContents(int,int)", "scrollBy(int,int)", "setContentsPos(int,int)",
                             "ensureVisible(int,int)", "ensureVisible(int,int,int,int)", "center(int,int)",
                             "center(int,int,float,float)", "updateScrollBars()", "hslide(int)", "vslide(int)"})
        QVERIFY2(meta.indexOfSlot(slot) >= 0, slot);
    QVERIFY(meta.indexOfSignal("contentsMoving(int,int)") >= 0);
}

void TestScrollViewSkin::modes()
{
    View view;
    view.resize(200, 100);
    QCOMPARE(shownBars(view), QString());
    view.setVScrollBarMode(on);
    QCOMPARE(view.vScrollBarMode(), on);
    QCOMPARE(view.hScrollBarMode(), automatic);
    QCOMPARE(shownBars(view), QStringLiteral("v"));
    view.setHScrollBarMode(on);
    QCOMPARE(view.hScrollBarMode(), on);
    QCOMPARE(shownBars(view), QStringLiteral("vh"));
    view.setVScrollBarMode(off);
    QCOMPARE(view.vScrollBarMode(), off);
    QCOMPARE(shownBars(view), QStringLiteral("h"));
    view.setHScrollBarMode(off);
    QCOMPARE(view.hScrollBarMode(), off);
    QCOMPARE(shownBars(view), QString());
}

void TestScrollViewSkin::margins()
{
    View view;
    view.resize(200, 100);
    view.setMargins(1, 2, 4, 8);
    QCOMPARE(view.leftMargin(), 1);
    QCOMPARE(view.topMargin(), 2);
    QCOMPARE(view.rightMargin(), 4);
    QCOMPARE(view.bottomMargin(), 8);
    QCOMPARE(view.viewport()->geometry(), QRect(4, 5, 189, 84));
    // Each of them counts by itself.
    view.setMargins(1, 2, 4, 9);
    QCOMPARE(view.viewport()->geometry(), QRect(4, 5, 189, 83));
    view.setMargins(1, 2, 5, 9);
    QCOMPARE(view.viewport()->geometry(), QRect(4, 5, 188, 83));
    view.setMargins(1, 3, 5, 9);
    QCOMPARE(view.viewport()->geometry(), QRect(4, 6, 188, 82));
    view.setMargins(2, 3, 5, 9);
    QCOMPARE(view.viewport()->geometry(), QRect(5, 6, 187, 82));
}

void TestScrollViewSkin::policyIsNeverSwitched()
{
    ViewStage stage;
    stage.view.addChild(new Tile);
    stage.view.resizeContents(500, 400);
    stage.view.addChild(new Tile, 30, 30);
    QVERIFY(stage.window.expose());
    QCOMPARE(stage.view.resizePolicy(), ScrollViewSkin::Default);
    QCOMPARE(stage.view.contentsWidth(), 500);
    QCOMPARE(stage.view.contentsHeight(), 400);
    for (const Policy policy : {ScrollViewSkin::AutoOneFit, ScrollViewSkin::AutoOne, ScrollViewSkin::Manual}) {
        stage.view.setResizePolicy(policy);
        stage.view.resizeContents(600, 500);
        stage.view.addChild(new Tile, 60, 60);
        QCOMPARE(stage.view.resizePolicy(), policy);
    }
}

void TestScrollViewSkin::alphaGoesToTheVerticalBar()
{
    ViewStage stage({180, 300});
    QVERIFY(stage.begin());
    stage.recorder.watchPaints(&stage.view);
    stage.recorder.watchPaints(stage.view.viewport());
    QCOMPARE(alphaOf(stage.view.verticalScrollBar()), uchar(255));
    const QStringList log = stage.after([&] { stage.view.setAlphaOverride(77); });
    QCOMPARE(alphaOf(stage.view.verticalScrollBar()), uchar(77));
    QCOMPARE(log, QStringList());
}

void TestScrollViewSkin::cornerWidget()
{
    ViewStage stage({500, 500});
    QVERIFY(stage.begin());
    auto* const first = new QWidget;
    stage.view.setCornerWidget(first);
    QCOMPARE(stage.view.cornerWidget(), first);
    QCOMPARE(first->parentWidget(), &stage.view);
    QVERIFY(first->isVisible());
    QCOMPARE(first->geometry(), QRect(180, 87, 20, 13));

    auto* const second = new QWidget(&stage.view);
    stage.view.setCornerWidget(second);
    QCOMPARE(stage.view.cornerWidget(), second);
    QVERIFY(!first->isVisible());
    QCOMPARE(first->parentWidget(), &stage.view);
    QVERIFY(second->isVisible());
    QCOMPARE(second->geometry(), QRect(180, 87, 20, 13));

    stage.view.resize(150, 90);
    QCOMPARE(second->geometry(), QRect(130, 77, 20, 13));
    QCOMPARE(first->geometry(), QRect(180, 87, 20, 13));

    stage.view.setCornerWidget(nullptr);
    QCOMPARE(stage.view.cornerWidget(), nullptr);
    QVERIFY(!second->isVisible());
}

void TestScrollViewSkin::cornerWidgetLeaves()
{
    ViewStage stage({100, 500});
    QVERIFY(stage.begin());
    auto* corner = new QWidget;
    stage.view.setCornerWidget(corner);
    QCOMPARE(stage.view.verticalScrollBar()->height(), 87);
    delete corner;
    QCOMPARE(stage.view.cornerWidget(), nullptr);
    stage.view.updateScrollBars();
    QCOMPARE(stage.view.verticalScrollBar()->height(), 100);
    stage.view.setCornerWidget(nullptr);
}

// A view of 200 x 100 without a frame. The bars are 20 and 13 pixels thick.
void TestScrollViewSkin::layout_data()
{
    QTest::addColumn<QSize>("contents");
    QTest::addColumn<Mode>("vMode");
    QTest::addColumn<Mode>("hMode");
    QTest::addColumn<QString>("needed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QSize>("port");
    QTest::addColumn<int>("vMax");
    QTest::addColumn<int>("hMax");

    QTest::newRow("nothing") << QSize(0, 0) << automatic << automatic << ""
                             << "" << QSize(200, 100) << 0 << 0;
    QTest::newRow("just fits") << QSize(200, 100) << automatic << automatic << ""
                               << "" << QSize(200, 100) << 0 << 0;
    QTest::newRow("too high") << QSize(100, 101) << automatic << automatic << "v"
                              << "v" << QSize(180, 100) << 1 << 0;
    QTest::newRow("too wide") << QSize(201, 50) << automatic << automatic << "h"
                              << "h" << QSize(200, 87) << 0 << 1;
    QTest::newRow("both") << QSize(700, 900) << automatic << automatic << "vh"
                          << "vh" << QSize(180, 87) << 813 << 520;

    // The bars' extents are crossed in these tests.
    QTest::newRow("fits beside the bar") << QSize(300, 80) << automatic << automatic << "h"
                                         << "h" << QSize(200, 87) << 0 << 100;
    QTest::newRow("bar needs bar below") << QSize(300, 81) << automatic << automatic << "vh"
                                         << "vh" << QSize(180, 87) << 0 << 120;
    QTest::newRow("bar needs bar, really") << QSize(300, 88) << automatic << automatic << "vh"
                                           << "vh" << QSize(180, 87) << 1 << 120;
    QTest::newRow("fits above the bar") << QSize(180, 300) << automatic << automatic << "v"
                                        << "v" << QSize(180, 100) << 200 << 0;
    QTest::newRow("does not fit, no bar") << QSize(187, 300) << automatic << automatic << "v"
                                          << "v" << QSize(180, 100) << 200 << 0;
    QTest::newRow("bar needs bar beside") << QSize(188, 300) << automatic << automatic << "vh"
                                          << "vh" << QSize(180, 87) << 213 << 8;
    QTest::newRow("crossed, from a bar always on") << QSize(50, 81) << automatic << on << "v"
                                                   << "vh" << QSize(180, 87) << 0 << 0;
    QTest::newRow("crossed, other way") << QSize(188, 50) << on << automatic << "h"
                                        << "vh" << QSize(180, 87) << 0 << 8;
    QTest::newRow("crossed, bar always off") << QSize(50, 81) << off << on << "v"
                                             << "h" << QSize(200, 87) << 0 << 0;
    QTest::newRow("crossed, other way, bar always off") << QSize(188, 50) << on << off << "h"
                                                        << "v" << QSize(180, 100) << 0 << 8;
    QTest::newRow("hidden bar needs none") << QSize(300, 81) << automatic << off << "h"
                                           << "" << QSize(200, 100) << 0 << 100;
    QTest::newRow("hidden bar needs none beside") << QSize(188, 300) << off << automatic << "v"
                                                  << "" << QSize(200, 100) << 200 << 0;

    QTest::newRow("always off") << QSize(700, 900) << off << off << "vh"
                                << "" << QSize(200, 100) << 800 << 500;
    QTest::newRow("vertical off") << QSize(700, 900) << off << automatic << "vh"
                                  << "h" << QSize(200, 87) << 813 << 500;
    QTest::newRow("horizontal off") << QSize(700, 900) << automatic << off << "vh"
                                    << "v" << QSize(180, 100) << 800 << 520;
    QTest::newRow("always on") << QSize(50, 50) << on << on << ""
                               << "vh" << QSize(180, 87) << 0 << 0;
    QTest::newRow("vertical on") << QSize(50, 50) << on << automatic << ""
                                 << "v" << QSize(180, 100) << 0 << 0;
    QTest::newRow("horizontal on") << QSize(50, 50) << automatic << on << ""
                                   << "h" << QSize(200, 87) << 0 << 0;
    QTest::newRow("on and needed") << QSize(700, 900) << on << on << "vh"
                                   << "vh" << QSize(180, 87) << 813 << 520;
    QTest::newRow("as large as can be") << QSize(highest, highest) << automatic << automatic << "vh"
                                        << "vh" << QSize(180, 87) << highest - 87 << highest - 180;
}

void TestScrollViewSkin::layout()
{
    QFETCH(const QSize, contents);
    QFETCH(const Mode, vMode);
    QFETCH(const Mode, hMode);
    QFETCH(const QString, needed);
    QFETCH(const QSize, port);

    ViewStage stage;
    stage.view.setVScrollBarMode(vMode);
    stage.view.setHScrollBarMode(hMode);
    stage.view.verticalScrollBar()->setPageStep(777);
    stage.view.horizontalScrollBar()->setPageStep(777);
    stage.view.resizeContents(contents.width(), contents.height());

    const ScrollBarSkin* const vbar = stage.view.verticalScrollBar();
    const QScrollBar* const hbar = stage.view.horizontalScrollBar();
    QTEST(shownBars(stage.view), "shown");
    QCOMPARE(stage.view.viewport()->geometry(), QRect(QPoint(), port));
    QCOMPARE(stage.view.visibleWidth(), port.width());
    QCOMPARE(stage.view.visibleHeight(), port.height());
    QCOMPARE(vbar->minValue(), 0);
    QTEST(vbar->maxValue(), "vMax");
    QCOMPARE(hbar->minimum(), 0);
    QTEST(hbar->maximum(), "hMax");
    // The steps of a bar that is not needed stay.
    QCOMPARE(vbar->pageStep(), needed.contains('v') ? port.height() : 777);
    QCOMPARE(hbar->pageStep(), needed.contains('h') ? port.width() : 777);
    QCOMPARE(vbar->lineStep(), 20);
    QCOMPARE(hbar->singleStep(), 20);
    QCOMPARE(vbar->value(), 0);
    QCOMPARE(hbar->value(), 0);
}

// The same view with a frame of 3 pixels and margins of 1, 2, 4 and 8.
void TestScrollViewSkin::layoutWithFrameAndMargins_data()
{
    QTest::addColumn<QSize>("contents");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QRect>("port");

    QTest::newRow("just fits") << QSize(189, 84) << "" << QRect(4, 5, 189, 84);
    QTest::newRow("too high") << QSize(10, 85) << "v" << QRect(4, 5, 169, 84);
    QTest::newRow("too wide") << QSize(190, 10) << "h" << QRect(4, 5, 189, 71);
    QTest::newRow("fits beside the bar") << QSize(190, 64) << "h" << QRect(4, 5, 189, 71);
    QTest::newRow("crossed, height") << QSize(190, 65) << "vh" << QRect(4, 5, 169, 71);
    QTest::newRow("fits above the bar") << QSize(176, 85) << "v" << QRect(4, 5, 169, 84);
    QTest::newRow("crossed, width") << QSize(177, 85) << "vh" << QRect(4, 5, 169, 71);
}

void TestScrollViewSkin::layoutWithFrameAndMargins()
{
    QFETCH(const QSize, contents);
    View view;
    view.resize(200, 100);
    view.setMargins(1, 2, 4, 8);
    view.resizeContents(contents.width(), contents.height());
    QTEST(shownBars(view), "shown");
    QTEST(view.viewport()->geometry(), "port");
}

// With the policy AutoOne nothing needs bars while there is no visible child.
void TestScrollViewSkin::layoutWithoutVisibleChild_data()
{
    QTest::addColumn<Policy>("policy");
    QTest::addColumn<bool>("child");
    QTest::addColumn<bool>("visible");
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("vMax");

    QTest::newRow("no child") << ScrollViewSkin::AutoOne << false << false << automatic << "" << 0;
    QTest::newRow("no child, always off") << ScrollViewSkin::AutoOne << false << false << off << "" << 0;
    QTest::newRow("no child, always on") << ScrollViewSkin::AutoOne << false << false << on << "vh" << 0;
    QTest::newRow("hidden child") << ScrollViewSkin::AutoOne << true << false << automatic << "" << 0;
    QTest::newRow("visible child") << ScrollViewSkin::AutoOne << true << true << automatic << "vh" << 813;
    QTest::newRow("fit, no child") << ScrollViewSkin::AutoOneFit << false << false << automatic << "vh" << 813;
    QTest::newRow("fit, hidden child") << ScrollViewSkin::AutoOneFit << true << false << automatic << "vh" << 813;
    QTest::newRow("manual, no child") << ScrollViewSkin::Manual << false << false << automatic << "vh" << 813;
}

void TestScrollViewSkin::layoutWithoutVisibleChild()
{
    QFETCH(const Policy, policy);
    QFETCH(const bool, child);
    QFETCH(const bool, visible);
    QFETCH(const Mode, mode);

    ViewStage stage;
    QVERIFY(stage.begin());
    stage.view.setVScrollBarMode(mode);
    stage.view.setHScrollBarMode(mode);
    if (child) {
        auto* const tile = new Tile(nullptr, {700, 900});
        stage.view.addChild(tile);
        stage.view.showChild(tile, visible);
    }
    stage.view.setResizePolicy(policy);
    stage.view.resizeContents(700, 900);
    QTEST(shownBars(stage.view), "shown");
    QTEST(stage.view.verticalScrollBar()->maxValue(), "vMax");
}

// A hidden bar that is not needed goes back to 0; one that is needed keeps its value.
void TestScrollViewSkin::hiddenBarsValue_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<QSize>("contents");
    QTest::addColumn<QPoint>("values");

    QTest::newRow("needed, shown") << automatic << QSize(700, 900) << QPoint(30, 40);
    QTest::newRow("needed, not shown") << off << QSize(700, 900) << QPoint(30, 40);
    QTest::newRow("not needed, not shown") << automatic << QSize(150, 80) << QPoint(0, 0);
    QTest::newRow("off, not needed") << off << QSize(150, 80) << QPoint(0, 0);
    QTest::newRow("on, not needed") << on << QSize(150, 80) << QPoint(0, 0);
    QTest::newRow("only the vertical one needed") << automatic << QSize(150, 900) << QPoint(0, 40);
    QTest::newRow("only the horizontal one needed") << automatic << QSize(700, 80) << QPoint(30, 0);
}

void TestScrollViewSkin::hiddenBarsValue()
{
    QFETCH(const Mode, mode);
    QFETCH(const QSize, contents);
    QFETCH(const QPoint, values);
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.setContentsPos(30, 40);
    stage.view.setVScrollBarMode(mode);
    stage.view.setHScrollBarMode(mode);
    stage.view.resizeContents(contents.width(), contents.height());
    QCOMPARE(QPoint(stage.view.horizontalScrollBar()->value(), stage.view.verticalScrollBar()->value()), values);
    QCOMPARE(QPoint(stage.view.contentsX(), stage.view.contentsY()), values);
}

void TestScrollViewSkin::lineStepSurvivesLayout()
{
    ViewStage stage;
    stage.view.verticalScrollBar()->setLineStep(7);
    stage.view.horizontalScrollBar()->setSingleStep(9);
    stage.view.resizeContents(700, 900);
    QCOMPARE(stage.view.verticalScrollBar()->lineStep(), 7);
    QCOMPARE(stage.view.horizontalScrollBar()->singleStep(), 9);
}

// A view of 200 x 100 with a frame of 3 pixels.
void TestScrollViewSkin::placedBars_data()
{
    QTest::addColumn<QSize>("contents");
    QTest::addColumn<bool>("corner");
    QTest::addColumn<QStringList>("placed");
    QTest::addColumn<QRect>("frame");

    QTest::newRow("none") << QSize(10, 10) << false << QStringList() << QRect(0, 0, 200, 100);
    QTest::newRow("both") << QSize(500, 500) << false << QStringList{"hbar 3,84 174x13", "vbar 177,3 20x81"}
                          << QRect(0, 0, 177, 84);
    QTest::newRow("vertical") << QSize(10, 500) << false << QStringList{"vbar 177,3 20x94"} << QRect(0, 0, 177, 100);
    QTest::newRow("horizontal") << QSize(500, 10) << false << QStringList{"hbar 3,84 194x13"} << QRect(0, 0, 200, 84);
    QTest::newRow("both, corner widget") << QSize(500, 500) << true
                                         << QStringList{"hbar 3,84 174x13", "vbar 177,3 20x81"} << QRect(0, 0, 177, 84);
    QTest::newRow("vertical, corner widget")
        << QSize(10, 500) << true << QStringList{"vbar 177,3 20x81"} << QRect(0, 0, 177, 100);
    QTest::newRow("horizontal, corner widget")
        << QSize(500, 10) << true << QStringList{"hbar 3,84 174x13"} << QRect(0, 0, 200, 84);
}

void TestScrollViewSkin::placedBars()
{
    QFETCH(const QSize, contents);
    QFETCH(const bool, corner);
    View view;
    Recorder recorder;
    view.resize(200, 100);
    auto* const cornerWidget = new QWidget;
    if (corner)
        view.setCornerWidget(cornerWidget);
    else
        cornerWidget->setParent(&view);
    view.trace = &recorder;
    view.resizeContents(contents.width(), contents.height());
    QTEST(recorder.take(), "placed");
    QTEST(view.frameRect(), "frame");
    // The default puts the bar where it is told.
    if (!view.verticalScrollBar()->isHidden())
        QCOMPARE(view.verticalScrollBar()->geometry().topLeft(), QPoint(177, 3));
    if (!view.horizontalScrollBar()->isHidden())
        QCOMPARE(view.horizontalScrollBar()->geometry().topLeft(), QPoint(3, 84));
    if (corner)
        QCOMPARE(cornerWidget->geometry(), QRect(177, 84, 20, 13));
}

void TestScrollViewSkin::placedBarsAtTheLeft()
{
    const LeftHandBars leftHand;
    View view;
    Recorder recorder;
    view.resize(200, 100);
    view.setMargins(1, 2, 4, 8);
    auto* const corner = new QWidget;
    view.setCornerWidget(corner);
    view.trace = &recorder;
    view.resizeContents(500, 500);
    QCOMPARE(recorder.take(), (QStringList{"hbar 23,84 174x13", "vbar 3,3 20x81"}));
    QCOMPARE(view.viewport()->geometry(), QRect(24, 5, 169, 71));
    QCOMPARE(view.frameRect(), QRect(23, 0, 177, 84));
    QCOMPARE(corner->geometry(), QRect(3, 84, 20, 13));
    // Without the bar nothing is shifted.
    view.resizeContents(500, 10);
    QCOMPARE(view.viewport()->geometry(), QRect(4, 5, 189, 71));
    QCOMPARE(view.frameRect(), QRect(0, 0, 200, 84));
}

void TestScrollViewSkin::fittedChild_data()
{
    QTest::addColumn<Policy>("policy");
    QTest::addColumn<QSize>("hint");
    QTest::addColumn<QSize>("maximum");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("contents");

    const QSize any(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QTest::newRow("smaller than the port")
        << ScrollViewSkin::AutoOneFit << QSize(50, 40) << any << QSize(200, 100) << QSize(50, 40);
    QTest::newRow("wider") << ScrollViewSkin::AutoOneFit << QSize(300, 40) << any << QSize(300, 87) << QSize(300, 40);
    QTest::newRow("higher") << ScrollViewSkin::AutoOneFit << QSize(50, 400) << any << QSize(180, 400) << QSize(50, 400);
    QTest::newRow("bounded") << ScrollViewSkin::AutoOneFit << QSize(50, 400) << QSize(5000, 300) << QSize(180, 300)
                             << QSize(50, 300);
    QTest::newRow("cannot fit") << ScrollViewSkin::AutoOneFit << QSize(50, 40) << QSize(120, 5000) << QSize(120, 100)
                                << QSize(50, 40);
    QTest::newRow("no hint") << ScrollViewSkin::AutoOneFit << QSize(-1, -1) << any << QSize(200, 100) << QSize(0, 0);
    QTest::newRow("not with AutoOne") << ScrollViewSkin::AutoOne << QSize(50, 40) << any << QSize(33, 22)
                                      << QSize(50, 40);
    QTest::newRow("AutoOne is not bounded")
        << ScrollViewSkin::AutoOne << QSize(50, 400) << QSize(5000, 300) << QSize(33, 22) << QSize(50, 400);
    QTest::newRow("not with Default") << ScrollViewSkin::Default << QSize(50, 40) << any << QSize(33, 22)
                                      << QSize(0, 0);
}

void TestScrollViewSkin::fittedChild()
{
    QFETCH(const Policy, policy);
    QFETCH(const QSize, hint);
    QFETCH(const QSize, maximum);
    ViewStage stage;
    QVERIFY(stage.begin());
    auto* const child = new Tile(&stage.window);
    child->setMaximumSize(maximum);
    child->resize(33, 22);
    child->hint = hint;
    child->show();
    stage.view.setResizePolicy(policy);
    stage.view.addChild(child);
    stage.view.updateScrollBars();
    QTEST(child->size(), "size");
    QTEST(QSize(stage.view.contentsWidth(), stage.view.contentsHeight()), "contents");
    // Other children are left alone.
    auto* const other = new Tile(nullptr, {11, 12});
    stage.view.addChild(other);
    stage.view.updateScrollBars();
    QCOMPARE(other->size(), QSize(11, 12));
}

// A receiver of contentsMoving() still sees the bars hidden that come up at the end of the layout.
void TestScrollViewSkin::barsShownAfterTheMove()
{
    ViewStage stage({180, 500});
    QVERIFY(stage.begin());
    stage.view.setContentsPos(0, 400);
    QString shown = QStringLiteral("no move");
    connect(&stage.view, &ScrollViewSkin::contentsMoving, this, [&] { shown = shownBars(stage.view); });
    stage.view.resizeContents(700, 450);
    QCOMPARE(shown, QStringLiteral("v"));
    QCOMPARE(shownBars(stage.view), QStringLiteral("vh"));
}

void TestScrollViewSkin::valuesDuringLayoutDoNotMove()
{
    ViewStage stage({180, 1000});
    QVERIFY(stage.begin());
    stage.view.setContentsPos(0, 900);
    stage.take();
    // The bar's new range cuts its value; the contents follow only when everything has its place.
    stage.view.resizeContents(180, 500);
    QCOMPARE(stage.take(), (QStringList{"vertical 400", "moving 0,400"}));
    stage.view.resizeContents(700, 500);
    stage.view.setContentsPos(520, 0);
    stage.take();
    stage.view.resizeContents(400, 500);
    QCOMPARE(stage.take(), (QStringList{"horizontal 220", "moving 220,0"}));
}

// A layout within another change leaves the bars as deaf as they were.
void TestScrollViewSkin::layoutKeepsTheChoke()
{
    ViewStage stage({180, 1000});
    QVERIFY(stage.begin());
    stage.view.setLineSnapping(true);
    const auto laysOut =
        connect(&stage.view, &ScrollViewSkin::contentsMoving, this, [&] { stage.view.updateScrollBars(); });
    stage.view.setContentsPos(0, 29);
    QCOMPARE(stage.view.contentsY(), 29);
    disconnect(laysOut);
    stage.view.verticalScrollBar()->setValue(48);
    QCOMPARE(stage.view.contentsY(), 40);
}

void TestScrollViewSkin::smallerContents_data()
{
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<QSize>("contents");
    QTest::addColumn<QPoint>("expected");

    // Both bars: 180 x 87 are seen of 700 x 900.
    QTest::newRow("still there") << QPoint(520, 813) << QSize(700, 900) << QPoint(520, 813);
    QTest::newRow("width") << QPoint(520, 813) << QSize(699, 900) << QPoint(519, 813);
    QTest::newRow("height") << QPoint(520, 813) << QSize(700, 899) << QPoint(520, 812);
    QTest::newRow("both") << QPoint(520, 813) << QSize(500, 400) << QPoint(320, 313);
    QTest::newRow("to nothing") << QPoint(520, 813) << QSize(0, 0) << QPoint(0, 0);
    QTest::newRow("not at the end") << QPoint(100, 100) << QSize(400, 400) << QPoint(100, 100);
    QTest::newRow("a bar goes") << QPoint(520, 813) << QSize(100, 400) << QPoint(0, 300);
}

void TestScrollViewSkin::smallerContents()
{
    QFETCH(const QPoint, position);
    QFETCH(const QSize, contents);
    QFETCH(const QPoint, expected);
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.setContentsPos(position.x(), position.y());
    stage.view.resizeContents(contents.width(), contents.height());
    QCOMPARE(QPoint(stage.view.contentsX(), stage.view.contentsY()), expected);
    QCOMPARE(stage.view.horizontalScrollBar()->value(), expected.x());
    QCOMPARE(stage.view.verticalScrollBar()->value(), expected.y());
}

// Both directions in one move.
void TestScrollViewSkin::smallerContentsMoveOnce()
{
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.setContentsPos(520, 813);
    stage.take();
    stage.view.resizeContents(500, 400);
    QCOMPARE(stage.take(), (QStringList{"vertical 313", "horizontal 320", "moving 320,313"}));
    stage.view.resizeContents(50, 40);
    QCOMPARE(stage.take(), (QStringList{"vertical 0", "horizontal 0", "moving 0,0"}));
    stage.view.resizeContents(50, 41);
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollViewSkin::largerViewport()
{
    ViewStage stage({180, 300});
    QVERIFY(stage.begin());
    stage.view.setContentsPos(0, 200);
    stage.take();
    stage.view.resize(200, 150);
    QCOMPARE(stage.take(), (QStringList{"vertical 150", "moving 0,150"}));
    stage.view.setVScrollBarMode(off);
    QCOMPARE(stage.take(), QStringList());
    stage.view.resize(200, 250);
    QCOMPARE(stage.take(), (QStringList{"vertical 50", "moving 0,50"}));
}

void TestScrollViewSkin::sizeHint_data()
{
    QTest::addColumn<Policy>("policy");
    QTest::addColumn<bool>("child");
    QTest::addColumn<QSize>("hint");
    QTest::addColumn<QSize>("maximum");
    QTest::addColumn<QSize>("expected");

    const QSize any(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QTest::newRow("Default") << ScrollViewSkin::Default << false << QSize() << any << QSize(306, 206);
    QTest::newRow("Default, child") << ScrollViewSkin::Default << true << QSize(50, 40) << any << QSize(306, 206);
    QTest::newRow("Manual") << ScrollViewSkin::Manual << false << QSize() << any << QSize(306, 206);
    QTest::newRow("AutoOne, no child") << ScrollViewSkin::AutoOne << false << QSize() << any << QSize(6, 6);
    QTest::newRow("AutoOneFit, no child") << ScrollViewSkin::AutoOneFit << false << QSize() << any << QSize(6, 6);
    QTest::newRow("AutoOne") << ScrollViewSkin::AutoOne << true << QSize(50, 40) << any << QSize(56, 46);
    QTest::newRow("AutoOneFit") << ScrollViewSkin::AutoOneFit << true << QSize(50, 40) << any << QSize(56, 46);
    QTest::newRow("bounded") << ScrollViewSkin::AutoOne << true << QSize(50, 40) << QSize(45, 100) << QSize(51, 46);
    QTest::newRow("no hint") << ScrollViewSkin::AutoOne << true << QSize() << any << QSize(39, 28);
    QTest::newRow("no hint, fit") << ScrollViewSkin::AutoOneFit << true << QSize() << any << QSize(39, 28);
}

void TestScrollViewSkin::sizeHint()
{
    QFETCH(const Policy, policy);
    QFETCH(const bool, child);
    QFETCH(const QSize, hint);
    QFETCH(const QSize, maximum);
    View view;
    view.setVScrollBarMode(on);
    view.setHScrollBarMode(on);
    view.resizeContents(300, 200);
    if (child) {
        auto* const tile = new Tile(nullptr, hint);
        tile->resize(33, 22);
        view.addChild(tile, 0, 0);
        tile->setMaximumSize(maximum);
        view.addChild(new Tile(nullptr, {70, 70}), 100, 100);
    }
    view.setResizePolicy(policy);
    QTEST(view.sizeHint(), "expected");
}

void TestScrollViewSkin::sizeHintPolishes()
{
    const View view;
    QCOMPARE(view.polishes, 0);
    QCOMPARE(view.sizeHint(), QSize(6, 6));
    QCOMPARE(view.polishes, 1);
    QCOMPARE(view.sizeHint(), QSize(6, 6));
    QCOMPARE(view.polishes, 1);
}

void TestScrollViewSkin::minimumSizeHint()
{
    View view;
    QCOMPARE(view.minimumSizeHint(), QSize(106, 106));
    view.resizeContents(300, 200);
    view.setVScrollBarMode(on);
    QCOMPARE(view.minimumSizeHint(), QSize(106, 106));
    view.setFrameStyle(QFrame::NoFrame);
    QCOMPARE(view.minimumSizeHint(), QSize(100, 100));
}

// Of a view of 200 x 100 with a frame of 3 pixels and margins of 1, 2, 4 and 8.
void TestScrollViewSkin::viewportSize_data()
{
    QTest::addColumn<QSize>("contents");
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<QSize>("expected");

    QTest::newRow("fits") << QSize(189, 84) << automatic << QSize(189, 84);
    QTest::newRow("too high") << QSize(10, 85) << automatic << QSize(169, 84);
    QTest::newRow("too wide") << QSize(190, 10) << automatic << QSize(189, 71);
    QTest::newRow("both") << QSize(500, 500) << automatic << QSize(169, 71);
    QTest::newRow("crossed") << QSize(177, 85) << automatic << QSize(169, 71);
    QTest::newRow("always on") << QSize(0, 0) << on << QSize(169, 71);
    QTest::newRow("always off") << QSize(500, 500) << off << QSize(189, 84);
    QTest::newRow("as large as can be") << QSize(highest, highest) << automatic << QSize(169, 71);
}

void TestScrollViewSkin::viewportSize()
{
    QFETCH(const QSize, contents);
    QFETCH(const Mode, mode);
    View view;
    view.resize(200, 100);
    view.setMargins(1, 2, 4, 8);
    view.setVScrollBarMode(mode);
    view.setHScrollBarMode(mode);
    const QRect before = view.viewport()->geometry();
    QTEST(view.viewportSize(contents.width(), contents.height()), "expected");
    QCOMPARE(view.viewport()->geometry(), before);
}

void TestScrollViewSkin::resizing()
{
    ViewStage stage({180, 500});
    // Hidden, by both operations and as any widget is resized.
    stage.view.resize(150, 90);
    QCOMPARE(stage.view.viewport()->size(), QSize(130, 77));
    QCOMPARE(stage.view.verticalScrollBar()->geometry(), QRect(130, 0, 20, 77));
    stage.view.resize(QSize(220, 110));
    QCOMPARE(stage.view.viewport()->size(), QSize(200, 110));
    stage.view.setGeometry(5, 6, 210, 105);
    QCOMPARE(stage.view.viewport()->size(), QSize(190, 105));
    static_cast<QWidget&>(stage.view).resize(230, 115);
    QVERIFY(stage.begin());
    QCOMPARE(stage.view.viewport()->size(), QSize(210, 115));
    // On the screen.
    stage.view.resize(150, 90);
    QCOMPARE(stage.view.viewport()->size(), QSize(130, 77));
    stage.view.resize(QSize(220, 110));
    QCOMPARE(stage.view.viewport()->size(), QSize(200, 110));
    static_cast<QWidget&>(stage.view).setGeometry(0, 0, 210, 105);
    QCOMPARE(stage.view.viewport()->size(), QSize(190, 105));
}

void TestScrollViewSkin::showing()
{
    ViewStage stage({180, 500});
    stage.view.hide();
    QVERIFY(stage.begin());
    const LeftHandBars leftHand;
    stage.view.trace = &stage.recorder;
    stage.view.show();
    QCOMPARE(stage.view.viewport()->geometry(), QRect(20, 0, 180, 100));
    QVERIFY(stage.take().contains("vbar 0,0 20x100"));
    QVERIFY(stage.view.verticalScrollBar()->isVisible());
    QVERIFY(!stage.view.horizontalScrollBar()->isVisible());
    // Nothing happens to a view that is visible.
    stage.view.show();
    QCOMPARE(stage.take(), QStringList());
    // The same for who holds a plain widget.
    stage.view.hide();
    stage.take();
    static_cast<QWidget&>(stage.view).show();
    QVERIFY(stage.take().contains("vbar 0,0 20x100"));
}

void TestScrollViewSkin::styleChange()
{
    ViewStage stage({500, 500});
    QVERIFY(stage.begin());
    QCOMPARE(stage.view.viewport()->size(), QSize(180, 87));
    {
        const ThickBars thick(31);
        QCOMPARE(stage.view.horizontalScrollBar()->geometry(), QRect(0, 69, 180, 31));
        QCOMPARE(stage.view.viewport()->size(), QSize(180, 69));
        QCOMPARE(stage.view.verticalScrollBar()->height(), 69);
    }
    QCOMPARE(stage.view.viewport()->size(), QSize(180, 87));
    // As a subclass may call it.
    const LeftHandBars leftHand;
    stage.view.styleChange(*stage.view.style());
    QCOMPARE(stage.view.viewport()->x(), 20);
}

void TestScrollViewSkin::frameChange()
{
    ViewStage stage({500, 500});
    QVERIFY(stage.begin());
    stage.view.setFrameStyle(QFrame::Box | QFrame::Plain);
    stage.view.setLineWidth(5);
    QCOMPARE(stage.view.viewport()->geometry(), QRect(5, 5, 170, 77));
    stage.view.setMargin(2);
    QCOMPARE(stage.view.viewport()->geometry(), QRect(7, 7, 166, 73));
    QCOMPARE(stage.view.verticalScrollBar()->geometry(), QRect(173, 7, 20, 73));
    // As a subclass may call it.
    const LeftHandBars leftHand;
    stage.view.frameChanged();
    QCOMPARE(stage.view.viewport()->x(), 27);
}

void TestScrollViewSkin::lineSnapping_data()
{
    QTest::addColumn<bool>("snapping");
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("shown");

    QTest::newRow("off") << false << 20 << 29 << 29;
    QTest::newRow("down") << true << 20 << 29 << 20;
    QTest::newRow("half a line up") << true << 20 << 30 << 40;
    QTest::newRow("a whole line") << true << 20 << 60 << 60;
    QTest::newRow("below half of the first") << true << 20 << 9 << 0;
    QTest::newRow("odd step, down") << true << 7 << 3 << 0;
    QTest::newRow("odd step, up") << true << 7 << 4 << 7;
    QTest::newRow("step 1") << true << 1 << 29 << 29;
    QTest::newRow("no step") << true << 0 << 29 << 29;
}

void TestScrollViewSkin::lineSnapping()
{
    QFETCH(const bool, snapping);
    QFETCH(const int, step);
    QFETCH(const int, value);
    QFETCH(const int, shown);
    ViewStage stage({180, 1000});
    QVERIFY(stage.begin());
    stage.view.setLineSnapping(snapping);
    QCOMPARE(stage.view.lineSnapping(), snapping);
    stage.view.verticalScrollBar()->setLineStep(step);
    stage.view.verticalScrollBar()->setValue(value);
    QCOMPARE(stage.view.contentsY(), shown);
    // The bar itself keeps what it was given.
    QCOMPARE(stage.view.verticalScrollBar()->value(), value);
}

void TestScrollViewSkin::lineSnappingAtTheEnd()
{
    ViewStage stage({180, 1013});
    QVERIFY(stage.begin());
    stage.view.setLineSnapping(true);
    QCOMPARE(stage.view.verticalScrollBar()->maxValue(), 913);
    stage.view.verticalScrollBar()->setValue(913);
    QCOMPARE(stage.view.contentsY(), 913);
    stage.view.verticalScrollBar()->setValue(912);
    QCOMPARE(stage.view.contentsY(), 913);
    stage.view.verticalScrollBar()->setValue(909);
    QCOMPARE(stage.view.contentsY(), 900);
    stage.view.setLineSnapping(false);
    stage.view.verticalScrollBar()->setValue(908);
    QCOMPARE(stage.view.contentsY(), 908);
}

void TestScrollViewSkin::lineSnappingAndOtherMoves()
{
    ViewStage stage({1000, 1000});
    QVERIFY(stage.begin());
    stage.view.setLineSnapping(true);
    stage.view.setContentsPos(27, 29);
    QCOMPARE(QPoint(stage.view.contentsX(), stage.view.contentsY()), QPoint(27, 29));
    stage.view.horizontalScrollBar()->setValue(33);
    QCOMPARE(QPoint(stage.view.contentsX(), stage.view.contentsY()), QPoint(33, 29));
    stage.view.scrollBy(1, 1);
    QCOMPARE(QPoint(stage.view.contentsX(), stage.view.contentsY()), QPoint(34, 30));
}

QTEST_MAIN(TestScrollViewSkin)
#include "tst_scrollviewskin.moc"
