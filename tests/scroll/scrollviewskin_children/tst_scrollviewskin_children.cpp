#include "scroll/viewfixture.h"

#include <QProcess>
#include <QRandomGenerator>

using namespace viewtest;

using Policy = ScrollViewSkin::ResizePolicy;

namespace
{

// What this program does instead of its tests, where it is told so: it misuses the clipper and should not survive it.
constexpr char misuse[] = "--misuse-the-clipper";

struct Misuse {
    const char* name;
    void (*act)();
};

const QList<Misuse>& misuses()
{
    static const QList<Misuse> all{
        {"enable after addChild",
         [] {
             View view;
             view.addChild(new Tile);
             view.enableClipper(true);
         }},
        {"disable after addChild",
         [] {
             View view;
             view.enableClipper(true);
             view.addChild(new Tile);
             view.enableClipper(false);
         }},
        {"one child left",
         [] {
             View view;
             auto* const first = new Tile;
             view.addChild(first);
             view.addChild(new Tile);
             view.removeChild(first);
             view.enableClipper(true);
         }},
    };
    return all;
}

QSize contentsOf(const ScrollViewSkin& view)
{
    return {view.contentsWidth(), view.contentsHeight()};
}

// Where the clipped viewport stands in the middle of what is seen of a view of 200 x 100 with both bars.
constexpr QPoint middle((180 - 4000) / 2, (87 - 4000) / 2);

// Many children that lie beside and below each other; no two of them overlap.
class Field
{
public:
    static constexpr QSize tile{50, 30};
    static constexpr QSize distance{70, 40};

    Field(View* view, int columns, int rows) : m_columns(columns), m_rows(rows)
    {
        for (int i = 0; i < columns * rows; ++i) {
            auto* const child = new Tile(view->clipper(), tile, colourOf(i));
            children << child;
            const QPoint at = placeOf(i);
            view->addChild(child, at.x(), at.y());
        }
        view->resizeContents(columns * distance.width(), rows * distance.height());
    }

    QList<Tile*> children;

    QPoint placeOf(int i) const
    {
        return {i % m_columns * distance.width() + 7, i / m_columns * distance.height() + 5};
    }
    // What a view shows.
    QImage seen(const View& view) const
    {
        const QRect part(view.contentsX(), view.contentsY(), view.visibleWidth(), view.visibleHeight());
        QImage image = inkOf(part);
        QPainter painter(&image);
        for (int i = 0; i < children.size(); ++i) {
            const QRect rect(placeOf(i), tile);
            if (rect.intersects(part))
                painter.fillRect(rect.translated(-part.topLeft()), QColor::fromRgb(colourOf(i)));
        }
        return image;
    }

private:
    static QRgb colourOf(int i) { return qRgb(i * 37 % 256, i / 3 % 256, 255 - i % 256); }

    int m_columns;
    int m_rows;
};

} // namespace

class TestScrollViewSkinChildren : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(new FixedStyle); }

    void enableClipper();
    void enableClipperTwice();
    void enableClipperOnTheScreen();
    void disableClipper();
    void misusedClipper_data();
    void misusedClipper();
    void clipperAfterChildrenLeft_data();
    void clipperAfterChildrenLeft();
    void visibleSizeWithClipper();

    void addChild();
    void addChildToTheOrigin();
    void addChildAgain();
    void addChildFromElsewhere_data();
    void addChildFromElsewhere();
    void shownWithTheView();
    void moveChild();
    void childPositions();
    void removeChild();
    void removedChildIsShown_data();
    void removedChildIsShown();
    void deletedChild();
    void reparentedChild();
    void childIsVisible();
    void showChild_data();
    void showChild();
    void shownChildIsShown_data();
    void shownChildIsShown();

    void childrenFollow();
    void addChildWithClipper_data();
    void addChildWithClipper();
    void scrollUnderTheClipper();
    void recentring();
    void recentringHidesAndShows();
    void recentringKeepsTheChoice();
    void recentringWithoutChildren();
    void movedWithinTheClipper();
    void largeViewport();
    void showingTheView();
    void staticBackground_data();
    void staticBackground();
    void focusStaysWhenHidden_data();
    void focusStaysWhenHidden();

    void layoutHint_data();
    void layoutHint();
    void hintOfTheFirstChild();
    void childResized_data();
    void childResized();
    void childMoved_data();
    void childMoved();

    void manyChildren_data();
    void manyChildren();
    void fewerThanMany();
    void farAwayChildren_data();
    void farAwayChildren();
};

void TestScrollViewSkinChildren::enableClipper()
{
    QWidget parent;
    View view(&parent, "view", Qt::WPaintClever);
    view.enableClipper(true);
    auto* const clipped = qobject_cast<DQClipperWidget*>(view.clipper());
    QVERIFY(clipped);
    QCOMPARE(clipped->objectName(), QStringLiteral("qt_clipped_viewport"));
    QCOMPARE(clipped->parentWidget(), view.viewport());
    QCOMPARE(clipped->getWFlags(), view.viewport()->getWFlags());
    QCOMPARE(clipped->geometry(), QRect(-2000, -2000, 4000, 4000));
    QCOMPARE(view.viewport()->backgroundMode(), WidgetBackground::NoBackground);
    QCOMPARE(view.viewport()->objectName(), QStringLiteral("qt_viewport"));
}

void TestScrollViewSkinChildren::enableClipperTwice()
{
    View view;
    view.enableClipper(false);
    QCOMPARE(view.clipper(), view.viewport());
    view.enableClipper(true);
    const QPointer<QWidget> clipped = view.clipper();
    clipped->setGeometry(1, 2, 3, 4);
    view.enableClipper(true);
    QCOMPARE(view.clipper(), clipped);
    QCOMPARE(clipped->geometry(), QRect(1, 2, 3, 4));
    // Also with children, as long as nothing is to be changed.
    view.addChild(new Tile);
    view.enableClipper(true);
    QCOMPARE(view.clipper(), clipped);
    View plain;
    plain.addChild(new Tile);
    plain.enableClipper(false);
    QCOMPARE(plain.clipper(), plain.viewport());
}

void TestScrollViewSkinChildren::enableClipperOnTheScreen()
{
    ViewStage stage({700, 900});
    stage.view.inked = true;
    QVERIFY(stage.begin());
    stage.view.setContentsPos(30, 40);
    stage.view.enableClipper(true);
    QVERIFY(stage.view.clipper()->isVisible());
    QVERIFY(stage.window.settle());
    COMPARE_PICTURES(stage.onScreen(), stage.expected());
    // The contents are mapped from where they stand.
    auto* const child = new Tile(stage.view.clipper());
    stage.view.addChild(child, 35, 46);
    QCOMPARE(child->mapTo(stage.view.viewport(), QPoint()), QPoint(5, 6));
    QCOMPARE(stage.view.viewportToContents(child->pos()), QPoint(35, 46));
}

void TestScrollViewSkinChildren::disableClipper()
{
    ViewStage stage({700, 900});
    stage.view.inked = true;
    stage.view.enableClipper(true);
    QVERIFY(stage.begin());
    const QPointer<QWidget> clipped = stage.view.clipper();
    stage.view.enableClipper(false);
    QVERIFY(!clipped);
    QCOMPARE(stage.view.clipper(), stage.view.viewport());
    QVERIFY(stage.window.settle());
    COMPARE_PICTURES(stage.onScreen(), stage.expected());
    QCOMPARE(stage.view.viewportToContents(QPoint(5, 6)), QPoint(5, 6));
    // The viewport's events count again.
    auto* const child = new Tile;
    stage.view.addChild(child, 30, 40);
    delete child;
    stage.view.enableClipper(true);
    QVERIFY(stage.view.clipper() != stage.view.viewport());
}

void TestScrollViewSkinChildren::misusedClipper_data()
{
    QTest::addColumn<int>("number");
    for (int i = 0; i < misuses().size(); ++i)
        QTest::newRow(misuses()[i].name) << i;
}

void TestScrollViewSkinChildren::misusedClipper()
{
    QFETCH(const int, number);
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {misuse, QString::number(number)});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
    const QByteArray expected = "May only call ScrollViewSkin::enableClipper() before adding widgets";
    QCOMPARE(process.readAllStandardError().trimmed().split('\n').last(), expected);
}

void TestScrollViewSkinChildren::clipperAfterChildrenLeft_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("removed") << 0;
    QTest::newRow("deleted") << 1;
    QTest::newRow("reparented") << 2;
    QTest::newRow("removed as an object") << 3;
}

void TestScrollViewSkinChildren::clipperAfterChildrenLeft()
{
    QFETCH(const int, way);
    ViewStage stage({700, 900});
    auto* const child = new Tile;
    stage.view.addChild(child);
    if (way == 0)
        stage.view.removeChild(child);
    else if (way == 1)
        delete child;
    else if (way == 2)
        child->setParent(&stage.window);
    else
        stage.view.removeChild(static_cast<QObject*>(child));
    stage.view.enableClipper(true);
    QVERIFY(stage.view.clipper() != stage.view.viewport());
}

void TestScrollViewSkinChildren::visibleSizeWithClipper()
{
    ViewStage stage({700, 900});
    stage.view.enableClipper(true);
    QCOMPARE(stage.view.visibleWidth(), 180);
    QCOMPARE(stage.view.visibleHeight(), 87);
    QCOMPARE(stage.view.verticalScrollBar()->maxValue(), 813);
    stage.view.setContentsPos(1000, 1000);
    QCOMPARE(stage.view.contentsX(), 520);
    QCOMPARE(stage.view.contentsY(), 813);
}

void TestScrollViewSkinChildren::addChild()
{
    ViewStage stage({700, 900});
    stage.view.setContentsPos(30, 40);
    auto* const child = new Tile(&stage.window);
    stage.view.addChild(child, 100, 50);
    QCOMPARE(child->parentWidget(), stage.view.viewport());
    QCOMPARE(child->pos(), QPoint(70, 10));
    QCOMPARE(stage.view.childX(child), 100);
    QCOMPARE(stage.view.childY(child), 50);
    QCOMPARE(child->size(), QSize(40, 20));
    // One that is above and left of what is seen.
    auto* const other = new Tile;
    stage.view.addChild(other, -5, 3);
    QCOMPARE(other->pos(), QPoint(-35, -37));
    QCOMPARE(stage.view.childX(other), -5);
    QCOMPARE(stage.view.childY(other), 3);
}

void TestScrollViewSkinChildren::addChildToTheOrigin()
{
    ViewStage stage({700, 900});
    auto* const child = new Tile;
    child->move(11, 12);
    stage.view.addChild(child);
    QCOMPARE(child->pos(), QPoint(0, 0));
    QCOMPARE(stage.view.childX(child), 0);
    QCOMPARE(stage.view.childY(child), 0);
}

void TestScrollViewSkinChildren::addChildAgain()
{
    ViewStage stage({700, 900});
    auto* const child = new Tile;
    stage.view.addChild(child, 100, 50);
    stage.view.addChild(child, 101, 50);
    QCOMPARE(child->pos(), QPoint(101, 50));
    stage.view.addChild(child, 101, 52);
    QCOMPARE(child->pos(), QPoint(101, 52));
    QCOMPARE(QPoint(stage.view.childX(child), stage.view.childY(child)), QPoint(101, 52));
    // Nothing happens where the position is the same.
    child->move(5, 6);
    stage.view.addChild(child, 101, 52);
    QCOMPARE(child->pos(), QPoint(5, 6));
    // There is one record of it only.
    stage.view.removeChild(child);
    QCOMPARE(stage.view.childX(child), 0);
    stage.view.enableClipper(true);
    QVERIFY(stage.view.clipper() != stage.view.viewport());
}

void TestScrollViewSkinChildren::addChildFromElsewhere_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<int>("from");
    for (const bool clipper : {false, true}) {
        const QByteArray where = clipper ? "clipper, " : "viewport, ";
        QTest::newRow(where + "shown in the window") << clipper << 0;
        QTest::newRow(where + "hidden in the window") << clipper << 1;
        QTest::newRow(where + "shown in another view") << clipper << 2;
        QTest::newRow(where + "a window of its own") << clipper << 3;
    }
}

// A widget that was shown stays so, one that was hidden stays hidden.
void TestScrollViewSkinChildren::addChildFromElsewhere()
{
    QFETCH(const bool, clipper);
    QFETCH(const int, from);
    ViewStage stage({700, 900});
    stage.view.enableClipper(clipper);
    View other(&stage.window);
    other.setGeometry(0, 150, 200, 100);
    auto* const child = from == 3 ? new Tile : new Tile(&stage.window);
    if (from == 2)
        other.addChild(child, 5, 5);
    child->setVisible(from != 1);
    QVERIFY(stage.begin());
    const Messages quietly;
    stage.view.addChild(child, 20, 30);
    QCOMPARE(child->parentWidget(), stage.view.clipper());
    QCOMPARE(child->mapTo(stage.view.viewport(), QPoint()), QPoint(20, 30));
    QCOMPARE(child->isVisible(), from != 1);
    QVERIFY(!child->isWindow());
    // The other view has let go of it.
    QCOMPARE(other.childX(child), 0);
    other.enableClipper(true);
    other.resizeContents(500, 500);
    other.setContentsPos(10, 10);
    QCOMPARE(child->mapTo(stage.view.viewport(), QPoint()), QPoint(20, 30));
}

void TestScrollViewSkinChildren::shownWithTheView()
{
    ViewStage stage({700, 900});
    auto* const early = new Tile;
    auto* const hidden = new Tile;
    stage.view.addChild(early);
    stage.view.addChild(hidden, 50, 0);
    hidden->hide();
    QVERIFY(stage.begin());
    QVERIFY(early->isVisible());
    QVERIFY(!hidden->isVisible());
    // Adding does not show it.
    auto* const late = new Tile;
    stage.view.addChild(late, 100, 0);
    QVERIFY(!late->isVisible());
    late->show();
    QVERIFY(late->isVisible());
    hidden->show();
    QVERIFY(hidden->isVisible());
}

void TestScrollViewSkinChildren::moveChild()
{
    ViewStage stage({700, 900});
    auto* const child = new Tile;
    stage.view.addChild(child, 100, 50);
    stage.view.setContentsPos(30, 40);
    stage.view.moveChild(child, 120, 60);
    QCOMPARE(child->pos(), QPoint(90, 20));
    QCOMPARE(QPoint(stage.view.childX(child), stage.view.childY(child)), QPoint(120, 60));
    // Another widget becomes a child, as by addChild().
    auto* const other = new Tile;
    stage.view.moveChild(other, 7, 8);
    QCOMPARE(other->parentWidget(), stage.view.viewport());
    QCOMPARE(QPoint(stage.view.childX(other), stage.view.childY(other)), QPoint(7, 8));
}

void TestScrollViewSkinChildren::childPositions()
{
    ViewStage stage({700, 900});
    Tile stranger;
    QCOMPARE(stage.view.childX(&stranger), 0);
    QCOMPARE(stage.view.childY(&stranger), 0);
    QCOMPARE(stage.view.childX(nullptr), 0);
    QCOMPARE(stage.view.childY(nullptr), 0);
    auto* const child = new Tile;
    stage.view.addChild(child, highest, lowest);
    QCOMPARE(stage.view.childX(child), highest);
    QCOMPARE(stage.view.childY(child), lowest);
    // Scrolling and moves of the widget itself leave them alone.
    stage.view.moveChild(child, 50, 60);
    stage.view.setContentsPos(30, 40);
    child->move(1, 2);
    QCOMPARE(QPoint(stage.view.childX(child), stage.view.childY(child)), QPoint(50, 60));
}

void TestScrollViewSkinChildren::removeChild()
{
    ViewStage stage({700, 900});
    stage.view.setResizePolicy(ScrollViewSkin::AutoOne);
    const QPointer<Tile> child = new Tile;
    stage.view.addChild(child, 100, 50);
    QVERIFY(stage.begin());
    stage.view.resizeContents(700, 900);
    stage.view.removeChild(child.data());
    QVERIFY(child);
    QCOMPARE(child->parentWidget(), stage.view.viewport());
    QCOMPARE(child->pos(), QPoint(100, 50));
    QVERIFY(child->isVisible());
    QCOMPARE(stage.view.childX(child), 0);
    QCOMPARE(stage.view.childY(child), 0);
    // The view neither moves it nor listens to it any more.
    stage.view.setResizePolicy(ScrollViewSkin::Manual);
    stage.view.setContentsPos(30, 40);
    QCOMPARE(child->pos(), QPoint(100, 50));
    stage.view.setResizePolicy(ScrollViewSkin::AutoOne);
    child->resize(60, 60);
    QCOMPARE(contentsOf(stage.view), QSize(700, 900));
    stage.view.removeChild(child.data());
    stage.view.removeChild(static_cast<QObject*>(child));
    Tile stranger;
    stage.view.removeChild(&stranger);
    stage.view.removeChild(static_cast<QWidget*>(nullptr));
    stage.view.removeChild(static_cast<QObject*>(nullptr));
    QVERIFY(child);
}

void TestScrollViewSkinChildren::removedChildIsShown_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<bool>("wanted");
    QTest::newRow("viewport") << false << true;
    QTest::newRow("viewport, hidden by the application") << false << false;
    QTest::newRow("clipper") << true << true;
    QTest::newRow("clipper, hidden by the application") << true << false;
}

// A child that the view hides because it is out of the way does not stay hidden for that when it is let go.
void TestScrollViewSkinChildren::removedChildIsShown()
{
    QFETCH(const bool, clipper);
    QFETCH(const bool, wanted);
    ViewStage stage;
    stage.view.enableClipper(clipper);
    const Field field(&stage.view, 1, 400);
    QVERIFY(stage.begin());
    Tile* const last = field.children.last();
    stage.view.showChild(last, wanted);
    QVERIFY(!last->isVisible());
    stage.view.removeChild(last);
    QCOMPARE(last->isVisible(), wanted);
    if (wanted)
        QCOMPARE(last->mapTo(stage.view.viewport(), QPoint()), field.placeOf(399));
    stage.view.addChild(last, 5, 5);
    QCOMPARE(last->isVisible(), wanted);
}

void TestScrollViewSkinChildren::deletedChild()
{
    for (const bool clipper : {false, true}) {
        ViewStage stage({700, 900});
        stage.view.enableClipper(clipper);
        auto* const first = new Tile(nullptr, {300, 400});
        auto* const second = new Tile(nullptr, {50, 60});
        stage.view.addChild(first, 3, 4);
        stage.view.addChild(second, 5, 6);
        QVERIFY(stage.begin());
        stage.view.setResizePolicy(ScrollViewSkin::AutoOne);
        QCOMPARE(stage.view.sizeHint(), QSize(300, 400));
        delete first;
        // The second one is the first one now.
        QCOMPARE(stage.view.sizeHint(), QSize(50, 60));
        QCOMPARE(stage.view.childX(first), 0);
        QCOMPARE(stage.view.childX(second), 5);
        delete second;
        QCOMPARE(stage.view.sizeHint(), QSize(0, 0));
    }
}

void TestScrollViewSkinChildren::reparentedChild()
{
    ViewStage stage({700, 900});
    auto* const child = new Tile;
    stage.view.addChild(child, 3, 4);
    QVERIFY(stage.begin());
    child->setParent(&stage.window);
    QCOMPARE(stage.view.childX(child), 0);
    child->move(250, 150);
    child->show();
    stage.view.setContentsPos(30, 40);
    QCOMPARE(child->pos(), QPoint(250, 150));
    // And back.
    stage.view.addChild(child, 50, 60);
    QCOMPARE(child->pos(), QPoint(20, 20));
    QVERIFY(child->isVisible());
}

void TestScrollViewSkinChildren::childIsVisible()
{
    ViewStage stage({700, 900});
    auto* const child = new Tile;
    stage.view.addChild(child);
    QVERIFY(!stage.view.childIsVisible(child));
    QVERIFY(!stage.view.childIsVisible(nullptr));
    QVERIFY(stage.begin());
    QVERIFY(stage.view.childIsVisible(child));
    child->hide();
    QVERIFY(!stage.view.childIsVisible(child));
}

void TestScrollViewSkinChildren::showChild_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::newRow("viewport") << false;
    QTest::newRow("clipper") << true;
}

void TestScrollViewSkinChildren::showChild()
{
    QFETCH(const bool, clipper);
    ViewStage stage({700, 9000});
    stage.view.enableClipper(clipper);
    auto* const child = new Tile;
    stage.view.addChild(child);
    QVERIFY(stage.begin());
    stage.view.showChild(child, false);
    QVERIFY(!child->isVisible());
    stage.view.showChild(child, false);
    QVERIFY(!child->isVisible());
    stage.view.showChild(child);
    QVERIFY(child->isVisible());
    stage.view.showChild(child, false);
    // The choice holds, however far away the child has been meanwhile.
    stage.view.setContentsPos(0, 8000);
    stage.view.setContentsPos(0, 0);
    QVERIFY(!child->isVisible());
    // Others are none of the view's.
    Tile stranger(&stage.window);
    stranger.show();
    stage.view.showChild(&stranger, false);
    QVERIFY(stranger.isVisible());
    stage.view.showChild(nullptr, true);
}

void TestScrollViewSkinChildren::shownChildIsShown_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<bool>("byTheView");
    for (const bool clipper : {false, true}) {
        const QByteArray where = clipper ? "clipper, " : "viewport, ";
        QTest::newRow(where + "showChild") << clipper << true;
        QTest::newRow(where + "show") << clipper << false;
    }
}

// A child out of the way that is shown stays hidden until it comes near, and one that is hidden then does not come up.
void TestScrollViewSkinChildren::shownChildIsShown()
{
    QFETCH(const bool, clipper);
    QFETCH(const bool, byTheView);
    ViewStage stage;
    stage.view.enableClipper(clipper);
    const Field field(&stage.view, 1, 400);
    QVERIFY(stage.begin());
    Tile* const last = field.children.last();
    const auto setShown = [&](bool show) {
        if (byTheView)
            stage.view.showChild(last, show);
        else
            last->setVisible(show);
    };
    const auto scrollTo = [&](bool end) { stage.view.setContentsPos(0, end ? stage.view.contentsHeight() : 0); };
    QVERIFY(!last->isVisible());
    // Near and far, shown and hidden, in every order.
    for (int i = 0; i < 3; ++i) {
        scrollTo(false);
        setShown(true);
        setShown(true);
        QVERIFY(!last->isVisible());
        scrollTo(true);
        QVERIFY(last->isVisible());
        setShown(false);
        setShown(false);
        QVERIFY(!last->isVisible());
        scrollTo(false);
        scrollTo(true);
        QVERIFY(!last->isVisible());
        setShown(true);
        QVERIFY(last->isVisible());
        scrollTo(false);
        QVERIFY(!last->isVisible());
        setShown(false);
        scrollTo(true);
        QVERIFY(!last->isVisible());
        scrollTo(false);
        setShown(false);
        setShown(true);
        setShown(false);
        scrollTo(true);
        QVERIFY(!last->isVisible());
    }
}

void TestScrollViewSkinChildren::childrenFollow()
{
    ViewStage stage({700, 900});
    auto* const near = new Tile;
    auto* const far = new Tile;
    stage.view.addChild(near, 10, 20);
    stage.view.addChild(far, 600, 800);
    QVERIFY(stage.begin());
    stage.view.setContentsPos(30, 40);
    QCOMPARE(near->pos(), QPoint(-20, -20));
    QCOMPARE(far->pos(), QPoint(570, 760));
    stage.view.verticalScrollBar()->setValue(50);
    QCOMPARE(near->pos(), QPoint(-20, -30));
    QCOMPARE(far->pos(), QPoint(570, 750));
    stage.view.horizontalScrollBar()->setValue(60);
    QCOMPARE(near->pos(), QPoint(-50, -30));
    QCOMPARE(far->pos(), QPoint(540, 750));
    QVERIFY(near->isVisible());
    QVERIFY(far->isVisible());
}

// The clipped viewport covers the contents from -2000 to 2000.
void TestScrollViewSkinChildren::addChildWithClipper_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<QPoint>("pos");
    QTest::addColumn<bool>("covered");

    QTest::newRow("in sight") << QPoint(10, 20) << QPoint(2010, 2020) << true;
    QTest::newRow("at the origin") << QPoint(0, 0) << QPoint(2000, 2000) << true;
    QTest::newRow("covered") << QPoint(1500, 1700) << QPoint(3500, 3700) << true;
    QTest::newRow("at the right edge") << QPoint(1999, 0) << QPoint(3999, 2000) << true;
    QTest::newRow("at the left edge") << QPoint(-2039, 0) << QPoint(-39, 2000) << true;
    QTest::newRow("at the bottom edge") << QPoint(0, 1999) << QPoint(2000, 3999) << true;
    QTest::newRow("at the top edge") << QPoint(0, -2019) << QPoint(2000, -19) << true;
    QTest::newRow("right of it") << QPoint(2000, 0) << QPoint(2000, 0) << false;
    QTest::newRow("left of it") << QPoint(-2040, 0) << QPoint(-2040, 0) << false;
    QTest::newRow("below it") << QPoint(0, 2000) << QPoint(0, 2000) << false;
    QTest::newRow("above it") << QPoint(0, -2020) << QPoint(0, -2020) << false;
    QTest::newRow("far away") << QPoint(highest, lowest) << QPoint(QWIDGETSIZE_MAX, -QWIDGETSIZE_MAX) << false;
}

void TestScrollViewSkinChildren::addChildWithClipper()
{
    QFETCH(const QPoint, place);
    QFETCH(const QPoint, pos);
    QFETCH(const bool, covered);
    ViewStage stage({highest, highest});
    stage.view.enableClipper(true);
    auto* const child = new Tile;
    stage.view.addChild(child, place.x(), place.y());
    QCOMPARE(child->parentWidget(), stage.view.clipper());
    QCOMPARE(child->pos(), pos);
    QVERIFY(stage.begin());
    QCOMPARE(child->isVisible(), covered);
    QCOMPARE(child->pos(), pos);
    // The same for one that is moved there.
    auto* const other = new Tile;
    stage.view.addChild(other, 50, 50);
    other->show();
    stage.view.moveChild(other, place.x(), place.y());
    QCOMPARE(other->pos(), pos);
    QCOMPARE(other->isVisible(), covered);
    stage.view.moveChild(other, 50, 50);
    QCOMPARE(other->pos(), QPoint(2050, 2050));
    QVERIFY(other->isVisible());
}

void TestScrollViewSkinChildren::scrollUnderTheClipper()
{
    ViewStage stage({10000, 10000});
    stage.view.enableClipper(true);
    auto* const child = new Tile;
    stage.view.addChild(child, 50, 60);
    QVERIFY(stage.begin());
    stage.view.setContentsPos(30, 40);
    // The whole of it moves, so that no child has to.
    QCOMPARE(stage.view.clipper()->geometry(), QRect(-2030, -2040, 4000, 4000));
    QCOMPARE(child->pos(), QPoint(2050, 2060));
    QCOMPARE(child->mapTo(stage.view.viewport(), QPoint()), QPoint(20, 20));
    // As long as it covers the viewport.
    stage.view.setContentsPos(2000 - 180, 2000 - 87);
    QCOMPARE(stage.view.clipper()->geometry(), QRect(-4000 + 180, -4000 + 87, 4000, 4000));
    QCOMPARE(child->pos(), QPoint(2050, 2060));
    stage.view.setContentsPos(2000 - 180 + 1, 2000 - 87);
    QCOMPARE(stage.view.clipper()->geometry(), QRect(middle, QSize(4000, 4000)));
}

void TestScrollViewSkinChildren::recentring()
{
    for (const QPoint& position : {QPoint(3000, 0), QPoint(0, 3000), QPoint(3000, 3000), QPoint(0, 1914)}) {
        ViewStage stage({10000, 10000});
        stage.view.enableClipper(true);
        QVERIFY(stage.begin());
        stage.view.setContentsPos(position.x(), position.y());
        QCOMPARE(stage.view.clipper()->geometry(), QRect(middle, QSize(4000, 4000)));
        QCOMPARE(stage.view.viewportToContents(-middle), position);
        // To the other side.
        stage.view.setContentsPos(5000, 5000);
        QCOMPARE(stage.view.clipper()->geometry(), QRect(middle, QSize(4000, 4000)));
        stage.view.setContentsPos(0, 0);
        QCOMPARE(stage.view.clipper()->geometry(), QRect(middle, QSize(4000, 4000)));
        QCOMPARE(stage.view.viewportToContents(-middle), QPoint(0, 0));
    }
}

void TestScrollViewSkinChildren::recentringHidesAndShows()
{
    ViewStage stage({700, 20000});
    stage.view.enableClipper(true);
    Tile* children[5];
    const int places[] = {0, 1000, 2500, 4990, 9000};
    for (int i = 0; i < 5; ++i) {
        children[i] = new Tile;
        stage.view.addChild(children[i], 10 * i, places[i]);
    }
    QVERIFY(stage.begin());
    const auto visible = [&] {
        QString text;
        for (const Tile* child : children)
            text += child->isVisible() ? '1' : '0';
        return text;
    };
    QCOMPARE(visible(), QStringLiteral("11000"));
    // Covers 3000 + middle.y() = 1044 to 5044.
    stage.view.setContentsPos(0, 3000);
    QCOMPARE(visible(), QStringLiteral("00110"));
    QCOMPARE(children[2]->pos(), QPoint(20, 2500 - 1044) - QPoint(middle.x(), 0));
    QCOMPARE(children[2]->mapTo(stage.view.viewport(), QPoint()), QPoint(20, -500));
    QCOMPARE(children[3]->mapTo(stage.view.viewport(), QPoint()), QPoint(30, 1990));
    stage.view.setContentsPos(0, 19000);
    QCOMPARE(visible(), QStringLiteral("00000"));
    stage.view.setContentsPos(0, 0);
    QCOMPARE(visible(), QStringLiteral("11000"));
    QCOMPARE(children[0]->mapTo(stage.view.viewport(), QPoint()), QPoint(0, 0));
    QCOMPARE(children[1]->mapTo(stage.view.viewport(), QPoint()), QPoint(10, 1000));
    // Where they belong has not changed meanwhile.
    QCOMPARE(stage.view.childY(children[4]), 9000);
}

void TestScrollViewSkinChildren::recentringKeepsTheChoice()
{
    ViewStage stage({700, 20000});
    stage.view.enableClipper(true);
    auto* const child = new Tile;
    stage.view.addChild(child, 0, 3000);
    QVERIFY(stage.begin());
    QVERIFY(!child->isVisible());
    stage.view.showChild(child, false);
    stage.view.setContentsPos(0, 3000);
    QVERIFY(!child->isVisible());
    stage.view.showChild(child, true);
    QVERIFY(child->isVisible());
    stage.view.setContentsPos(0, 9000);
    QVERIFY(!child->isVisible());
    stage.view.setContentsPos(0, 3000);
    QVERIFY(child->isVisible());
}

void TestScrollViewSkinChildren::recentringWithoutChildren()
{
    ViewStage stage({700, 20000});
    stage.view.inked = true;
    stage.view.enableClipper(true);
    QVERIFY(stage.begin());
    stage.view.moveContents(0, -10000);
    QVERIFY(stage.window.settle());
    COMPARE_PICTURES(stage.onScreen(), stage.expected());
}

// A child on the clipped viewport moves by itself, and comes back where the view puts it when it is centred anew.
void TestScrollViewSkinChildren::movedWithinTheClipper()
{
    ViewStage stage({700, 20000});
    stage.view.enableClipper(true);
    auto* const child = new Tile;
    stage.view.addChild(child, 10, 2100);
    QVERIFY(stage.begin());
    stage.view.setContentsPos(0, 2000);
    QCOMPARE(child->mapTo(stage.view.viewport(), QPoint()), QPoint(10, 100));
    stage.view.moveChild(child, 20, 2200);
    QCOMPARE(child->mapTo(stage.view.viewport(), QPoint()), QPoint(20, 200));
}

void TestScrollViewSkinChildren::largeViewport()
{
    ViewStage stage({20000, 20000});
    stage.view.enableClipper(true);
    auto* const child = new Tile;
    stage.view.addChild(child, 4500, 4600);
    QVERIFY(stage.begin());
    QVERIFY(!child->isVisible());
    stage.view.resize(5000, 5000);
    QVERIFY(stage.view.clipper()->geometry().contains(stage.view.viewport()->rect()));
    QVERIFY(child->isVisible());
    QCOMPARE(child->mapTo(stage.view.viewport(), QPoint()), QPoint(4500, 4600));
    stage.view.setContentsPos(100, 100);
    QVERIFY(stage.view.clipper()->geometry().contains(stage.view.viewport()->rect()));
    QCOMPARE(child->mapTo(stage.view.viewport(), QPoint()), QPoint(4400, 4500));
}

// Children come up with the view where the clipped viewport covers them.
void TestScrollViewSkinChildren::showingTheView()
{
    ViewStage stage({700, 20000});
    stage.view.hide();
    stage.view.enableClipper(true);
    auto* const near = new Tile;
    auto* const far = new Tile;
    stage.view.addChild(near, 0, 9010);
    stage.view.addChild(far, 0, 0);
    QVERIFY(stage.begin());
    stage.view.setContentsPos(0, 9000);
    stage.recorder.watchPaints(stage.view.clipper());
    const QStringList log = stage.after([&] { stage.view.show(); });
    QVERIFY(near->isVisible());
    QVERIFY(!far->isVisible());
    QCOMPARE(near->mapTo(stage.view.viewport(), QPoint()), QPoint(0, 10));
    QVERIFY(!log.isEmpty());
}

void TestScrollViewSkinChildren::staticBackground_data()
{
    QTest::addColumn<bool>("staticBackground");
    QTest::newRow("static") << true;
    QTest::newRow("moving") << false;
}

// With a static background everything that is seen is painted anew at every move, before anything else happens.
void TestScrollViewSkinChildren::staticBackground()
{
    QFETCH(const bool, staticBackground);
    ViewStage stage({700, 900});
    stage.view.enableClipper(true);
    stage.view.setStaticBackground(staticBackground);
    QCOMPARE(stage.view.hasStaticBackground(), staticBackground);
    QVERIFY(stage.begin());
    QVERIFY(stage.window.settle());
    stage.view.trace = &stage.recorder;
    stage.take();
    stage.view.moveContents(-30, -40);
    QStringList expected("moving 30,40");
    if (staticBackground)
        expected << QStringLiteral("offset -2000,-2000 draw 30,40 180x87");
    QCOMPARE(stage.take(), expected);
}

void TestScrollViewSkinChildren::focusStaysWhenHidden_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::newRow("viewport") << false;
    QTest::newRow("clipper") << true;
}

// Scrolling away from the child that has the focus gives it to no other.
void TestScrollViewSkinChildren::focusStaysWhenHidden()
{
    QFETCH(const bool, clipper);
    ViewStage stage;
    stage.view.enableClipper(clipper);
    const Field field(&stage.view, 1, 400);
    for (Tile* child : field.children)
        child->setFocusPolicy(Qt::StrongFocus);
    QVERIFY(stage.window.activate());
    Tile* const first = field.children.first();
    first->setFocus();
    QVERIFY(QTest::qWaitFor([&] { return first->hasFocus(); }));
    stage.view.setContentsPos(0, 9000);
    QCOMPARE(stage.window.focusWidget(), first);
    QCOMPARE(stage.view.contentsY(), 9000);
    stage.view.setContentsPos(0, 0);
    QCOMPARE(stage.window.focusWidget(), first);
    QVERIFY(first->isVisible());
}

void TestScrollViewSkinChildren::layoutHint_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<Policy>("policy");
    QTest::addColumn<QSize>("hint");
    QTest::addColumn<QSize>("contents");

    const QSize old(40, 20);
    for (const bool clipper : {false, true}) {
        const QByteArray where = clipper ? "clipper, " : "viewport, ";
        QTest::newRow(where + "Default") << clipper << ScrollViewSkin::Default << QSize(300, 400) << old;
        QTest::newRow(where + "Manual") << clipper << ScrollViewSkin::Manual << QSize(300, 400) << old;
        QTest::newRow(where + "AutoOne") << clipper << ScrollViewSkin::AutoOne << QSize(300, 400) << QSize(300, 400);
        QTest::newRow(where + "AutoOne, no hint") << clipper << ScrollViewSkin::AutoOne << QSize() << old;
        QTest::newRow(where + "AutoOneFit")
            << clipper << ScrollViewSkin::AutoOneFit << QSize(300, 250) << QSize(300, 250);
        QTest::newRow(where + "AutoOneFit, bounded")
            << clipper << ScrollViewSkin::AutoOneFit << QSize(700, 700) << QSize(500, 600);
        QTest::newRow(where + "AutoOne, not bounded")
            << clipper << ScrollViewSkin::AutoOne << QSize(700, 700) << QSize(700, 700);
    }
}

void TestScrollViewSkinChildren::layoutHint()
{
    QFETCH(const bool, clipper);
    QFETCH(const Policy, policy);
    QFETCH(const QSize, hint);
    ViewStage stage({40, 20});
    stage.view.enableClipper(clipper);
    auto* const child = new Tile;
    child->setMaximumSize(500, 600);
    stage.view.addChild(child);
    QVERIFY(stage.begin());
    stage.view.setResizePolicy(policy);
    child->hint = hint;
    child->updateGeometry();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QTEST(contentsOf(stage.view), "contents");
    // The clipper's event by itself.
    stage.view.resizeContents(40, 20);
    QEvent event(QEvent::LayoutRequest);
    QCoreApplication::sendEvent(stage.view.clipper(), &event);
    QTEST(contentsOf(stage.view), "contents");
    // So does adding a child.
    stage.view.resizeContents(40, 20);
    stage.view.addChild(new Tile, 9, 9);
    QTEST(contentsOf(stage.view), "contents");
}

void TestScrollViewSkinChildren::hintOfTheFirstChild()
{
    ViewStage stage;
    auto* const first = new Tile(nullptr, {300, 400});
    auto* const second = new Tile(nullptr, {500, 600});
    stage.view.setResizePolicy(ScrollViewSkin::AutoOne);
    stage.view.addChild(first);
    stage.view.addChild(second);
    QCOMPARE(contentsOf(stage.view), QSize(300, 400));
    // The order of insertion counts, not the one in which the positions changed.
    first->hint = QSize(310, 410);
    stage.view.moveChild(second, 1, 1);
    QCOMPARE(contentsOf(stage.view), QSize(310, 410));
    stage.view.removeChild(first);
    stage.view.moveChild(second, 2, 2);
    QCOMPARE(contentsOf(stage.view), QSize(500, 600));
}

void TestScrollViewSkinChildren::childResized_data()
{
    QTest::addColumn<Policy>("policy");
    QTest::addColumn<QSize>("contents");
    QTest::newRow("Default") << ScrollViewSkin::Default << QSize(700, 900);
    QTest::newRow("Manual") << ScrollViewSkin::Manual << QSize(700, 900);
    QTest::newRow("AutoOne") << ScrollViewSkin::AutoOne << QSize(250, 350);
    QTest::newRow("AutoOneFit") << ScrollViewSkin::AutoOneFit << QSize(700, 900);
}

void TestScrollViewSkinChildren::childResized()
{
    QFETCH(const Policy, policy);
    ViewStage stage;
    auto* const child = new Tile;
    stage.view.addChild(child);
    QVERIFY(stage.begin());
    stage.view.setResizePolicy(policy);
    stage.view.resizeContents(700, 900);
    child->resize(250, 350);
    QTEST(contentsOf(stage.view), "contents");
}

void TestScrollViewSkinChildren::childMoved_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<Policy>("policy");
    QTest::addColumn<QPoint>("position");
    for (const bool clipper : {false, true}) {
        const QByteArray where = clipper ? "clipper, " : "viewport, ";
        QTest::newRow(where + "Default") << clipper << ScrollViewSkin::Default << QPoint(0, 0);
        QTest::newRow(where + "Manual") << clipper << ScrollViewSkin::Manual << QPoint(0, 0);
        QTest::newRow(where + "AutoOne") << clipper << ScrollViewSkin::AutoOne << QPoint(30, 40);
        QTest::newRow(where + "AutoOneFit") << clipper << ScrollViewSkin::AutoOneFit << QPoint(0, 0);
    }
}

// The child that is moved takes the contents along.
void TestScrollViewSkinChildren::childMoved()
{
    QFETCH(const bool, clipper);
    QFETCH(const Policy, policy);
    QFETCH(const QPoint, position);
    ViewStage stage({700, 900});
    stage.view.enableClipper(clipper);
    auto* const child = new Tile(nullptr, {700, 900});
    stage.view.addChild(child);
    QVERIFY(stage.begin());
    stage.view.setResizePolicy(policy);
    const QPoint offset = clipper ? stage.view.clipper()->pos() : QPoint();
    child->move(QPoint(-30, -40) - offset);
    QCOMPARE(QPoint(stage.view.contentsX(), stage.view.contentsY()), position);
    if (policy != ScrollViewSkin::AutoOne)
        return;
    // Its place in the contents has not changed.
    QCOMPARE(stage.view.childX(child), 0);
    QCOMPARE(QPoint(stage.view.horizontalScrollBar()->value(), stage.view.verticalScrollBar()->value()), position);
    // What the view itself moves does not come back to it.
    stage.take();
    stage.view.setContentsPos(5, 6);
    QCOMPARE(stage.take(), (QStringList{"moving 5,6", "vertical 6", "horizontal 5"}));
    stage.view.moveChild(child, 8, 9);
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollViewSkinChildren::manyChildren_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<QSize>("field");
    QTest::newRow("viewport, some") << false << QSize(8, 16);
    QTest::newRow("viewport, one more") << false << QSize(3, 43);
    QTest::newRow("viewport, many") << false << QSize(60, 40);
    QTest::newRow("viewport, a long column") << false << QSize(1, 2000);
    QTest::newRow("clipper, some") << true << QSize(8, 16);
    QTest::newRow("clipper, many") << true << QSize(100, 100);
    QTest::newRow("clipper, a long column") << true << QSize(1, 10000);
}

// Wherever the contents are scrolled to, the children that belong there are seen.
void TestScrollViewSkinChildren::manyChildren()
{
    QFETCH(const bool, clipper);
    QFETCH(const QSize, field);
    ViewStage stage;
    stage.view.inked = true;
    stage.view.enableClipper(clipper);
    const Field tiles(&stage.view, field.width(), field.height());
    QVERIFY(stage.begin());
    QRandomGenerator random(7);
    COMPARE_PICTURES(stage.onScreen(), tiles.seen(stage.view));
    for (int i = 0; i < 12; ++i) {
        // Far and near in turns.
        if (i % 2 == 0)
            stage.view.setContentsPos(random.bounded(stage.view.contentsWidth()),
                                      random.bounded(stage.view.contentsHeight()));
        else
            stage.view.verticalScrollBar()->setValue(stage.view.contentsY() + random.bounded(400) - 200);
        QVERIFY(stage.window.settle());
        COMPARE_PICTURES(stage.onScreen(), tiles.seen(stage.view));
    }
    // A larger viewport shows more of them.
    stage.view.resize(350, 250);
    QVERIFY(stage.window.settle());
    COMPARE_PICTURES(stage.onScreen(), tiles.seen(stage.view));
}

// Children that were hidden because there were so many come back when there are fewer.
void TestScrollViewSkinChildren::fewerThanMany()
{
    ViewStage stage;
    Field field(&stage.view, 1, 130);
    QVERIFY(stage.begin());
    QVERIFY(!field.children.last()->isVisible());
    delete field.children.takeFirst();
    QVERIFY(!field.children.last()->isVisible());
    delete field.children.takeFirst();
    QVERIFY(field.children.last()->isVisible());
    QCOMPARE(field.children.last()->pos(), field.placeOf(129));
}

void TestScrollViewSkinChildren::farAwayChildren_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::newRow("viewport") << false;
    QTest::newRow("clipper") << true;
}

// Children anywhere in contents of any size.
void TestScrollViewSkinChildren::farAwayChildren()
{
    QFETCH(const bool, clipper);
    ViewStage stage({highest, highest});
    stage.view.enableClipper(clipper);
    QList<Tile*> children;
    const QList<QPoint> places{{10, 20}, {10, 100000}, {1 << 24, 20}, {1 << 30, 1 << 30}, {highest - 50, highest - 30}};
    for (const QPoint& place : places) {
        children << new Tile;
        stage.view.addChild(children.last(), place.x(), place.y());
    }
    QVERIFY(stage.begin());
    for (int i = 0; i < places.size(); ++i) {
        stage.view.setContentsPos(places[i].x() - 10, places[i].y() - 20);
        const QPoint at = places[i] - QPoint(stage.view.contentsX(), stage.view.contentsY());
        QCOMPARE(children[i]->mapTo(stage.view.viewport(), QPoint()), at);
        QVERIFY(children[i]->isVisible());
        QVERIFY(stage.window.settle());
        QCOMPARE(stage.onScreen().pixel(at), red);
        for (int other = 0; other < places.size(); ++other)
            if (other != i)
                QVERIFY(!stage.view.viewport()->rect().intersects(
                            QRect(children[other]->mapTo(stage.view.viewport(), QPoint()), children[other]->size())) ||
                        !children[other]->isVisible());
    }
}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc > 2 && qstrcmp(argv[1], misuse) == 0) {
        misuses()[QByteArray(argv[2]).toInt()].act();
        return 0;
    }
    TestScrollViewSkinChildren test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_scrollviewskin_children.moc"
