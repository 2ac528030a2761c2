#include "scroll/viewfixture.h"

#include <QElapsedTimer>
#include <QWheelEvent>

#include <functional>
#include <memory>

using namespace viewtest;

namespace
{

// What a receiver or a handler deletes.
enum Victim { TheView, ItsWindow, VerticalBar, HorizontalBar, FirstChild };

const char* nameOf(Victim victim)
{
    static const char* const names[] = {"the view", "its window", "the vertical bar", "the horizontal bar", "a child"};
    return names[victim];
}

enum Signal { ContentsMoving, VerticalValue, HorizontalValue };

const char* nameOf(Signal signal)
{
    static const char* const names[] = {"contentsMoving", "vertical valueChanged", "horizontal valueChanged"};
    return names[signal];
}

// A view of 200 x 100 at (30, 40) of contents of 700 x 9000 with two children, on the heap, in a window.
struct Scene {
    explicit Scene(bool clipper)
    {
        window->resize(400, 300);
        view->setFrameStyle(QFrame::NoFrame);
        view->resize(200, 100);
        view->enableClipper(clipper);
        view->resizeContents(700, 9000);
        for (Tile* tile : {child, other})
            tile->setFocusPolicy(Qt::TabFocus);
        view->addChild(child, 0, 0);
        view->addChild(other, 0, 6000);
        view->setContentsPos(30, 40);
    }
    ~Scene() { delete window; }
    Q_DISABLE_COPY_MOVE(Scene)

    void remove(Victim victim) const
    {
        if (victim == TheView)
            delete view;
        else if (victim == ItsWindow)
            delete window;
        else if (victim == VerticalBar)
            delete view->verticalScrollBar();
        else if (victim == HorizontalBar)
            delete view->horizontalScrollBar();
        else
            delete child;
    }
    bool isGone(Victim victim) const
    {
        if (victim == TheView || victim == ItsWindow)
            return !view;
        if (victim == VerticalBar)
            return view && !view->verticalScrollBar();
        if (victim == HorizontalBar)
            return view && !view->horizontalScrollBar();
        return !child;
    }
    // The view's signal calls this.
    void onSignal(Signal signal, const std::function<void()>& call)
    {
        if (signal == ContentsMoving)
            QObject::connect(view, &ScrollViewSkin::contentsMoving, &context, call);
        else if (signal == VerticalValue)
            QObject::connect(view->verticalScrollBar(), &ScrollBarSkin::valueChanged, &context, call);
        else
            QObject::connect(view->horizontalScrollBar(), &QScrollBar::valueChanged, &context, call);
    }

    QObject context;
    QPointer<Window> window = new Window;
    QPointer<View> view = new View(window);
    QPointer<Tile> child = new Tile;
    QPointer<Tile> other = new Tile;
};

struct Action {
    const char* name;
    std::function<void(Scene&)> act;
    // The signals that it has.
    QList<Signal> signalled;
    // Not where Qt itself is in the middle of resizing, moving or showing the view or a child.
    bool mayDeleteWidgets = true;
};

// A view that is left works on.
void useView(const Scene& scene)
{
    if (!scene.view)
        return;
    View* const view = scene.view;
    view->setResizePolicy(ScrollViewSkin::Manual);
    view->setMargins(0, 0, 0, 0);
    view->resize(200, 100);
    view->resizeContents(700, 9000);
    view->setContentsPos(5, 6);
    QCOMPARE(QPoint(view->contentsX(), view->contentsY()), QPoint(5, 6));
    view->vslide(50);
    view->hslide(60);
    QCOMPARE(QPoint(view->contentsX(), view->contentsY()), QPoint(60, 50));
    view->setAlphaOverride(100);
    view->setLineSnapping(true);
    view->vslide(55);
    view->resizeContents(800, 5000);
    view->resizeContents(10, 10);
    view->resizeContents(800, 5000);
    view->setVScrollBarMode(ScrollViewSkin::AlwaysOn);
    view->setHScrollBarMode(ScrollViewSkin::AlwaysOn);
    view->setCornerWidget(new QWidget);
    view->viewportSize(500, 500);
    QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view, &wheel);
    view->resize(150, 90);
    const int v = view->verticalScrollBar() ? vExtent : 0;
    const int h = view->horizontalScrollBar() ? hExtent : 0;
    QCOMPARE(view->viewport()->geometry(), QRect(0, 0, 150 - v, 90 - h));
    if (scene.window->isVisible())
        QVERIFY(scene.window->settle());
}

const QList<Action>& actions()
{
    static const QList<Signal> both{ContentsMoving, VerticalValue, HorizontalValue};
    static const QList<Signal> down{ContentsMoving, VerticalValue};
    static const QList<Signal> right{ContentsMoving, HorizontalValue};
    static const QList<Action> all{
        {"setContentsPos", [](Scene& s) { s.view->setContentsPos(100, 200); }, both},
        {"setContentsPos far away", [](Scene& s) { s.view->setContentsPos(400, 6000); }, both},
        {"scrollBy", [](Scene& s) { s.view->scrollBy(10, 20); }, both},
        {"ensureVisible", [](Scene& s) { s.view->ensureVisible(600, 8000); }, both},
        {"center", [](Scene& s) { s.view->center(400, 4000); }, both},
        {"center with fractions", [](Scene& s) { s.view->center(400, 4000, 0.5, 0.5); }, both},
        {"moveContents", [](Scene& s) { s.view->moveContents(-300, -7000); }, {ContentsMoving}},
        {"vslide", [](Scene& s) { s.view->vslide(300); }, {ContentsMoving}},
        {"hslide", [](Scene& s) { s.view->hslide(300); }, {ContentsMoving}},
        {"vertical bar", [](Scene& s) { s.view->verticalScrollBar()->setValue(300); }, down},
        {"vertical bar's range", [](Scene& s) { s.view->verticalScrollBar()->setRange(500, 600); }, down},
        {"horizontal bar", [](Scene& s) { s.view->horizontalScrollBar()->setValue(300); }, right},
        {"stylus on the bar's button",
         [](Scene& s) {
             QPointer<ScrollBarSkin> bar = s.view->verticalScrollBar();
             press(bar, {10, bar->height() - 5.0});
             if (bar)
                 release(bar, {10, bar->height() - 5.0});
         },
         down},
        {"stylus on the bar's thumb",
         [](Scene& s) {
             QPointer<ScrollBarSkin> bar = s.view->verticalScrollBar();
             const QPointF at = bar->sliderRect().center();
             press(bar, at);
             if (bar)
                 move(bar, at + QPointF(0, 15));
             if (bar)
                 release(bar, at + QPointF(0, 15));
         },
         down},
        {"smaller contents", [](Scene& s) { s.view->resizeContents(10, 10); }, both},
        {"lower contents", [](Scene& s) { s.view->resizeContents(700, 110); }, down},
        {"narrower contents", [](Scene& s) { s.view->resizeContents(190, 9000); }, right},
        {"larger viewport", [](Scene& s) { s.view->resize(2000, 10000); }, both, false},
        {"larger viewport, as any widget",
         [](Scene& s) { static_cast<QWidget*>(s.view)->setGeometry(0, 0, 2000, 10000); }, both, false},
        {"margins", [](Scene& s) { s.view->setMargins(-500, -8950, 0, 0); }, both},
        {"policy",
         [](Scene& s) {
             s.view->setResizePolicy(ScrollViewSkin::AutoOne);
             s.child->clearFocus();
             s.child->hide();
             s.other->hide();
             s.view->updateScrollBars();
         },
         {VerticalValue, HorizontalValue}},
        {"first child's size",
         [](Scene& s) {
             s.view->setResizePolicy(ScrollViewSkin::AutoOne);
             s.child->resize(41, 21);
         },
         both, false},
        {"first child's place",
         [](Scene& s) {
             s.view->setResizePolicy(ScrollViewSkin::AutoOne);
             s.child->move(s.child->pos() - QPoint(100, 200));
         },
         both, false},
        {"layout hint",
         [](Scene& s) {
             s.view->setResizePolicy(ScrollViewSkin::AutoOneFit);
             QEvent event(QEvent::LayoutRequest);
             QCoreApplication::sendEvent(s.view->clipper(), &event);
         },
         both},
        {"adding a child",
         [](Scene& s) {
             s.view->setResizePolicy(ScrollViewSkin::AutoOne);
             s.view->addChild(new Tile, 5, 5);
         },
         both},
        {"focus", [](Scene& s) { s.view->focusNextPrevChild(true); }, down},
        {"showing",
         [](Scene& s) {
             s.view->hide();
             static_cast<QWidget*>(s.view)->resize(2000, 10000);
             s.view->show();
         },
         both, false},
    };
    return all;
}

QList<Victim> victims(const Action& action)
{
    QList<Victim> all{VerticalBar, HorizontalBar};
    if (action.mayDeleteWidgets)
        all << TheView << ItsWindow << FirstChild;
    return all;
}

} // namespace

class TestScrollViewSkinBadInput : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(new FixedStyle); }

    void deletedByReceivers_data();
    void deletedByReceivers();
    void deletedByHandlers_data();
    void deletedByHandlers();
    void deletedByChildren_data();
    void deletedByChildren();
    void barDeleted_data();
    void barDeleted();
    void destruction_data();
    void destruction();

    void receiversThatChangeTheView_data();
    void receiversThatChangeTheView();
    void receiverThatScrollsOn();

    void strangeChildren();
    void registeredTwice();
    void deletedWhileMoved();
    void manyDeleted();

    void extremePositions_data();
    void extremePositions();
    void extremeBars();
    void extremeMargins_data();
    void extremeMargins();
    void extremeSizes_data();
    void extremeSizes();
    void extremeRectangles();
    void unknownMode();
    void boundedWork();
};

void TestScrollViewSkinBadInput::deletedByReceivers_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<int>("action");
    QTest::addColumn<int>("signal");
    QTest::addColumn<int>("victim");
    for (const bool clipper : {false, true})
        for (int action = 0; action < actions().size(); ++action)
            for (const Signal signal : actions()[action].signalled)
                for (const Victim victim : victims(actions()[action]))
                    QTest::addRow("%s, %s: %s deletes %s", clipper ? "clipper" : "viewport", actions()[action].name,
                                  nameOf(signal), nameOf(victim))
                        << clipper << action << int(signal) << int(victim);
}

void TestScrollViewSkinBadInput::deletedByReceivers()
{
    QFETCH(const bool, clipper);
    QFETCH(const int, action);
    QFETCH(const int, signal);
    QFETCH(const int, victim);
    Scene scene(clipper);
    QVERIFY(scene.window->expose());
    scene.child->setFocus();
    int calls = 0;
    scene.onSignal(Signal(signal), [&] {
        if (++calls == 1)
            scene.remove(Victim(victim));
    });
    actions()[action].act(scene);
    QVERIFY(calls > 0);
    QVERIFY(scene.isGone(Victim(victim)));
    useView(scene);
}

void TestScrollViewSkinBadInput::deletedByHandlers_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<QEvent::Type>("type");
    for (const bool clipper : {false, true})
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                        QEvent::MouseButtonDblClick, QEvent::MouseMove, QEvent::Wheel})
            QTest::addRow("%s, %d", clipper ? "clipper" : "viewport", type) << clipper << type;
}

// A subclass that deletes itself in a contents handler.
void TestScrollViewSkinBadInput::deletedByHandlers()
{
    class Suicidal : public ScrollViewSkin
    {
    public:
        using ScrollViewSkin::ScrollViewSkin;

    protected:
        void contentsMousePressEvent(QMouseEvent*) override { delete this; }
        void contentsMouseReleaseEvent(QMouseEvent*) override { delete this; }
        void contentsMouseDoubleClickEvent(QMouseEvent*) override { delete this; }
        void contentsMouseMoveEvent(QMouseEvent*) override { delete this; }
        void contentsWheelEvent(QWheelEvent* event) override
        {
            event->ignore();
            delete this;
        }
    };
    QFETCH(const bool, clipper);
    QFETCH(const QEvent::Type, type);
    for (const bool onTheView : {false, true}) {
        QWidget window;
        const QPointer<ScrollViewSkin> view = new Suicidal(&window);
        view->enableClipper(clipper);
        QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QMouseEvent pressed(type, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        if (type == QEvent::Wheel && onTheView)
            QCoreApplication::sendEvent(view, &wheel);
        else if (type == QEvent::Wheel)
            QVERIFY(view->eventFilter(view->clipper(), &wheel));
        else
            QVERIFY(view->eventFilter(view->clipper(), &pressed));
        QVERIFY(!view);
    }
}

void TestScrollViewSkinBadInput::deletedByChildren_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<QEvent::Type>("type");
    QTest::addColumn<int>("victim");
    for (const bool clipper : {false, true}) {
        for (const Victim victim : {VerticalBar, HorizontalBar, FirstChild}) {
            for (const QEvent::Type type : {QEvent::Move, QEvent::HideToParent, QEvent::ShowToParent})
                QTest::addRow("%s, event %d deletes %s", clipper ? "clipper" : "viewport", type, nameOf(victim))
                    << clipper << type << int(victim);
        }
    }
}

// A child that deletes something other than itself when the view moves, hides or shows it.
void TestScrollViewSkinBadInput::deletedByChildren()
{
    QFETCH(const bool, clipper);
    QFETCH(const QEvent::Type, type);
    QFETCH(const int, victim);
    Scene scene(clipper);
    QList<QPointer<Tile>> more;
    for (int i = 0; i < 200; ++i) {
        more << new Tile;
        scene.view->addChild(more.last(), 0, 30 * i);
    }
    QVERIFY(scene.window->expose());
    int calls = 0;
    for (const QPointer<Tile>& tile : more) {
        tile->onEvent = [&scene, &calls, type, victim](QEvent* event) {
            if (event->type() == type && ++calls == 1)
                scene.remove(Victim(victim));
        };
    }
    scene.view->setContentsPos(30, 5000);
    if (scene.view)
        scene.view->setContentsPos(30, 0);
    QVERIFY(calls > 0);
    QVERIFY(scene.isGone(Victim(victim)));
    useView(scene);
}

void TestScrollViewSkinBadInput::barDeleted_data()
{
    QTest::addColumn<int>("victim");
    QTest::addColumn<QRect>("port");
    QTest::newRow("vertical") << int(VerticalBar) << QRect(0, 0, 200, 87);
    QTest::newRow("horizontal") << int(HorizontalBar) << QRect(0, 0, 180, 100);
}

// The view gets along without: the viewport takes the place.
void TestScrollViewSkinBadInput::barDeleted()
{
    QFETCH(const int, victim);
    Scene scene(false);
    QVERIFY(scene.window->expose());
    scene.remove(Victim(victim));
    QTEST(scene.view->viewport()->geometry(), "port");
    QCOMPARE(QPoint(scene.view->contentsX(), scene.view->contentsY()), QPoint(30, 40));
    scene.view->setVScrollBarMode(ScrollViewSkin::AlwaysOn);
    scene.view->setHScrollBarMode(ScrollViewSkin::AlwaysOn);
    QTEST(scene.view->viewport()->geometry(), "port");
    useView(scene);
    delete scene.view->verticalScrollBar();
    delete scene.view->horizontalScrollBar();
    useView(scene);
}

void TestScrollViewSkinBadInput::destruction_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::newRow("viewport") << false;
    QTest::newRow("clipper") << true;
}

// Nothing reaches a view that is being destroyed, and a child that has left it stays alive.
void TestScrollViewSkinBadInput::destruction()
{
    QFETCH(const bool, clipper);
    auto scene = std::make_unique<Scene>(clipper);
    QVERIFY(scene->window->expose());
    const QPointer<QWidget> viewport = scene->view->viewport();
    const QPointer<QWidget> hbar = scene->view->horizontalScrollBar();
    const QPointer<QWidget> vbar = scene->view->verticalScrollBar();
    const QPointer<Tile> child = scene->child;
    const QPointer<Tile> other = scene->other;
    other->setParent(scene->window);
    scene->child->setFocus();
    delete scene->view;
    QVERIFY(!viewport);
    QVERIFY(!hbar);
    QVERIFY(!vbar);
    QVERIFY(!child);
    QVERIFY(other);
    other->show();
    other->move(5, 6);
    other->resize(7, 8);
    QVERIFY(scene->window->settle());
}

void TestScrollViewSkinBadInput::receiversThatChangeTheView_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<int>("action");
    QTest::addColumn<int>("change");
    for (const bool clipper : {false, true})
        for (int action = 0; action < actions().size(); ++action)
            for (int change = 0; change < 8; ++change)
                QTest::addRow("%s, %s, change %d", clipper ? "clipper" : "viewport", actions()[action].name, change)
                    << clipper << action << change;
}

// Whatever they do, bars, position and children fit each other in the end.
void TestScrollViewSkinBadInput::receiversThatChangeTheView()
{
    QFETCH(const bool, clipper);
    QFETCH(const int, action);
    QFETCH(const int, change);
    Scene scene(clipper);
    QVERIFY(scene.window->expose());
    scene.child->setFocus();
    View* const view = scene.view;
    const std::function<void()> changes[] = {
        [&] { view->resizeContents(300, 400); },
        [&] { view->resizeContents(5000, 50000); },
        [&] { view->setContentsPos(17, 19); },
        [&] { view->addChild(new Tile, 60, 70); },
        [&] { view->removeChild(scene.child.data()); },
        [&] { delete scene.other; },
        [&] { view->setVScrollBarMode(ScrollViewSkin::AlwaysOff); },
        [&] { view->updateScrollBars(); },
    };
    int calls = 0;
    for (const Signal signal : {ContentsMoving, VerticalValue, HorizontalValue})
        scene.onSignal(signal, [&] {
            if (++calls <= 3)
                changes[change]();
        });
    actions()[action].act(scene);
    QVERIFY(calls > 0);
    view->setResizePolicy(ScrollViewSkin::Manual);
    view->setVScrollBarMode(ScrollViewSkin::AlwaysOn);
    view->setContentsPos(view->contentsX(), view->contentsY());
    QVERIFY(view->contentsX() + view->visibleWidth() <= std::max(view->contentsWidth(), view->visibleWidth()));
    QVERIFY(view->contentsY() + view->visibleHeight() <= std::max(view->contentsHeight(), view->visibleHeight()));
    QCOMPARE(view->verticalScrollBar()->value(), view->contentsY());
    QCOMPARE(view->horizontalScrollBar()->value(), view->contentsX());
    for (const QPointer<Tile>& tile : {scene.child, scene.other})
        if (tile && tile->isVisible() && view->childY(tile) != 0)
            QCOMPARE(tile->mapTo(view->viewport(), QPoint()),
                     QPoint(view->childX(tile) - view->contentsX(), view->childY(tile) - view->contentsY()));
}

// As far as the contents reach, one step within the other.
void TestScrollViewSkinBadInput::receiverThatScrollsOn()
{
    ViewStage stage({180, 600});
    QVERIFY(stage.begin());
    connect(&stage.view, &ScrollViewSkin::contentsMoving, this,
            [&](int x, int y) { stage.view.setContentsPos(x, y + 100); });
    stage.view.setContentsPos(0, 10);
    QCOMPARE(stage.view.contentsY(), 500);
    QCOMPARE(stage.view.verticalScrollBar()->value(), 500);
    QCOMPARE(stage.take(), (QStringList{"moving 0,10", "moving 0,110", "moving 0,210", "moving 0,310", "moving 0,410",
                                        "moving 0,500", "vertical 500"}));
}

void TestScrollViewSkinBadInput::strangeChildren()
{
    for (const bool clipper : {false, true}) {
        Scene scene(clipper);
        QVERIFY(scene.window->expose());
        QWidget* const parent = scene.view->viewport()->parentWidget();
        for (QWidget* widget :
             {static_cast<QWidget*>(nullptr), static_cast<QWidget*>(scene.view), static_cast<QWidget*>(scene.window),
              static_cast<QWidget*>(scene.view->clipper()), static_cast<QWidget*>(scene.view->viewport())}) {
            scene.view->addChild(widget, 5, 6);
            scene.view->moveChild(widget, 5, 6);
            scene.view->removeChild(widget);
            scene.view->showChild(widget, false);
            QCOMPARE(scene.view->childX(widget), 0);
            QCOMPARE(scene.view->childY(widget), 0);
        }
        QCOMPARE(scene.view->viewport()->parentWidget(), parent);
        QVERIFY(scene.view->isVisible());
        QVERIFY(scene.view->clipper()->isVisible());
        // A child of a child stays where it is unless it is told to move.
        auto* const inner = new Tile(scene.child);
        scene.view->removeChild(inner);
        QCOMPARE(inner->parentWidget(), scene.child);
        scene.view->addChild(inner, 50, 60);
        QCOMPARE(inner->parentWidget(), scene.view->clipper());
        useView(scene);
    }
}

void TestScrollViewSkinBadInput::registeredTwice()
{
    for (const bool clipper : {false, true}) {
        Scene scene(clipper);
        QVERIFY(scene.window->expose());
        scene.view->addChild(scene.child, 0, 0);
        scene.view->addChild(scene.child, 50, 60);
        scene.view->addChild(scene.child, 50, 60);
        QCOMPARE(scene.child->mapTo(scene.view->viewport(), QPoint()), QPoint(20, 20));
        scene.view->removeChild(scene.child.data());
        scene.view->removeChild(scene.child.data());
        scene.view->removeChild(scene.other.data());
        // No record is left of either.
        QCOMPARE(scene.view->childX(scene.child), 0);
        scene.view->enableClipper(!clipper);
        useView(scene);
    }
}

// Each child deletes the next one when it is moved.
void TestScrollViewSkinBadInput::deletedWhileMoved()
{
    Scene scene(false);
    QVERIFY(scene.window->expose());
    QList<QPointer<Tile>> tiles;
    for (int i = 0; i < 20; ++i) {
        tiles << new Tile;
        scene.view->addChild(tiles.last(), 10 * i, 5);
        tiles.last()->show();
    }
    for (int i = 0; i < 20; ++i)
        tiles[i]->onEvent = [&tiles, i](QEvent* event) {
            if (event->type() == QEvent::Move)
                delete tiles[(i + 1) % 20];
        };
    scene.view->setContentsPos(31, 41);
    for (int i = 0; i < 20; ++i)
        QCOMPARE(tiles[i].isNull(), i % 2 == 1);
    useView(scene);
}

// In any order, without work that grows with the square of their number.
void TestScrollViewSkinBadInput::manyDeleted()
{
    for (const bool clipper : {false, true}) {
        ViewStage stage({700, 900});
        stage.view.enableClipper(clipper);
        QList<Tile*> tiles;
        for (int i = 0; i < 3000; ++i) {
            tiles << new Tile(stage.view.clipper());
            stage.view.addChild(tiles.last(), 0, 100 * i);
        }
        QVERIFY(stage.begin());
        for (int i = 0; i < 3000; i += 2)
            delete std::exchange(tiles[i], nullptr);
        for (int i = 2999; i > 0; i -= 2)
            stage.view.removeChild(tiles[i]);
        stage.view.enableClipper(!clipper);
        QVERIFY(stage.window.settle());
    }
}

void TestScrollViewSkinBadInput::extremePositions_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<QSize>("contents");
    for (const bool clipper : {false, true}) {
        const QByteArray where = clipper ? "clipper, " : "viewport, ";
        QTest::newRow(where + "nothing") << clipper << QSize(0, 0);
        QTest::newRow(where + "a pixel") << clipper << QSize(1, 1);
        QTest::newRow(where + "largest") << clipper << QSize(highest, highest);
        QTest::newRow(where + "largest width") << clipper << QSize(highest, 1);
    }
}

void TestScrollViewSkinBadInput::extremePositions()
{
    QFETCH(const bool, clipper);
    QFETCH(const QSize, contents);
    ViewStage stage(contents);
    stage.view.enableClipper(clipper);
    auto* const child = new Tile;
    stage.view.addChild(child, highest, highest);
    QVERIFY(stage.begin());
    const int numbers[] = {lowest, lowest + 1, -QWIDGETSIZE_MAX - 1, -1, 0, 1, 0x40000000, highest - 1, highest};
    for (const int number : numbers) {
        stage.view.setContentsPos(number, number);
        stage.view.scrollBy(number, number);
        stage.view.ensureVisible(number, number);
        stage.view.ensureVisible(number, number, number, number);
        stage.view.center(number, number);
        stage.view.center(number, number, float(number), float(number));
        QVERIFY(stage.view.contentsX() >= 0);
        QVERIFY(stage.view.contentsY() >= 0);
        stage.view.moveChild(child, number, number);
        stage.view.setLineSnapping(true);
        stage.view.vslide(number);
        stage.view.setLineSnapping(false);
        stage.view.vslide(number);
        stage.view.hslide(number);
        stage.view.moveContents(number, number);
        QVERIFY(stage.window.settle());
        stage.view.updateContents(number, number, highest, highest);
        stage.view.repaintContents(number, number, number, number);
        int x = 0;
        int y = 0;
        stage.view.viewportToContents(number, number, x, y);
        stage.view.contentsToViewport(number, number, x, y);
        stage.view.setContentsPos(0, 0);
        QCOMPARE(QPoint(stage.view.contentsX(), stage.view.contentsY()), QPoint(0, 0));
    }
}

// An application may give the bars any range and steps.
void TestScrollViewSkinBadInput::extremeBars()
{
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.setLineSnapping(true);
    ScrollBarSkin* const vbar = stage.view.verticalScrollBar();
    QScrollBar* const hbar = stage.view.horizontalScrollBar();
    for (const int step : {0, -1, 1, 20, highest, lowest + 1}) {
        vbar->setSteps(step, step);
        vbar->setRange(lowest, highest);
        hbar->setRange(lowest, highest);
        for (const int value : {lowest, -1, 0, 1, highest - 1, highest}) {
            vbar->setValue(value);
            hbar->setValue(value);
            QVERIFY(stage.view.contentsY() <= 813);
            QVERIFY(stage.view.contentsX() <= 520);
        }
        vbar->setRange(5, -5);
        hbar->setRange(5, -5);
    }
    stage.view.updateScrollBars();
    QCOMPARE(vbar->maxValue(), 813);
    QCOMPARE(hbar->maximum(), 520);
}

void TestScrollViewSkinBadInput::extremeMargins_data()
{
    QTest::addColumn<int>("margin");
    for (const int margin : {lowest, -QWIDGETSIZE_MAX - 1, -1, 99, 100, 101, QWIDGETSIZE_MAX + 1, highest})
        QTest::addRow("%d", margin) << margin;
}

void TestScrollViewSkinBadInput::extremeMargins()
{
    QFETCH(const int, margin);
    for (const bool clipper : {false, true}) {
        ViewStage stage({700, 900});
        stage.view.enableClipper(clipper);
        QVERIFY(stage.begin());
        for (const QMargins& margins : {QMargins(margin, 0, 0, 0), QMargins(0, margin, 0, 0), QMargins(0, 0, margin, 0),
                                        QMargins(0, 0, 0, margin), QMargins(margin, margin, margin, margin)}) {
            stage.view.setMargins(margins.left(), margins.top(), margins.right(), margins.bottom());
            QVERIFY(stage.view.visibleWidth() >= 0);
            QVERIFY(stage.view.visibleHeight() >= 0);
            QVERIFY(stage.view.verticalScrollBar()->maxValue() >= 0);
            QVERIFY(stage.view.horizontalScrollBar()->maximum() >= 0);
            stage.view.setContentsPos(5, 5);
            QVERIFY(stage.view.viewportSize(700, 900).isValid());
        }
        stage.view.setMargins(0, 0, 0, 0);
        QCOMPARE(stage.view.viewport()->geometry(), QRect(0, 0, 180, 87));
    }
}

void TestScrollViewSkinBadInput::extremeSizes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("nothing") << QSize(0, 0);
    QTest::newRow("a pixel") << QSize(1, 1);
    QTest::newRow("smaller than the bars") << QSize(10, 10);
    QTest::newRow("as the bars") << QSize(20, 13);
    QTest::newRow("flat") << QSize(200, 1);
    QTest::newRow("negative") << QSize(-5, -5);
}

void TestScrollViewSkinBadInput::extremeSizes()
{
    QFETCH(const QSize, size);
    for (const int frame : {0, 3, 40000}) {
        ViewStage stage({700, 900});
        stage.view.setFrameStyle(QFrame::Panel | QFrame::Plain);
        stage.view.setLineWidth(frame);
        stage.view.setCornerWidget(new QWidget);
        QVERIFY(stage.begin());
        stage.view.setContentsPos(30, 40);
        stage.view.resize(size);
        QVERIFY(stage.view.visibleWidth() >= 0);
        QVERIFY(stage.view.visibleHeight() >= 0);
        QVERIFY(stage.view.verticalScrollBar()->maxValue() <= 900);
        QVERIFY(stage.view.horizontalScrollBar()->maximum() <= 700);
        stage.view.ensureVisible(600, 800);
        stage.view.center(600, 800);
        QVERIFY(stage.window.settle());
        stage.view.setLineWidth(0);
        stage.view.resize(200, 100);
        QCOMPARE(stage.view.viewport()->size(), QSize(180, 87));
    }
}

void TestScrollViewSkinBadInput::extremeRectangles()
{
    ViewStage stage({highest, highest});
    QVERIFY(stage.begin());
    stage.view.setContentsPos(0x40000000, 0x40000000);
    QVERIFY(stage.window.settle());
    stage.recorder.watchPaints(stage.view.viewport());
    stage.take();
    for (const int from : {lowest, -1, 0, highest})
        for (const int length : {lowest, -1, 0, 1})
            stage.view.repaintContents(from, from, length, length);
    QCOMPARE(stage.take(), QStringList());
    stage.view.repaintContents(0, 0, highest, highest);
    QCOMPARE(stage.take(), QStringList("paint qt_viewport 0,0 180x87"));
    stage.view.repaintContents(1, 1, 0x40000000, 0x40000000);
    QCOMPARE(stage.take(), QStringList("paint qt_viewport 0,0 1x1"));
}

// A mode that there is not.
void TestScrollViewSkinBadInput::unknownMode()
{
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    stage.view.setVScrollBarMode(static_cast<ScrollViewSkin::ScrollBarMode>(3));
    stage.view.setHScrollBarMode(static_cast<ScrollViewSkin::ScrollBarMode>(3));
    QVERIFY(!stage.view.verticalScrollBar()->isVisible());
    QVERIFY(!stage.view.horizontalScrollBar()->isVisible());
}

// The largest contents take no longer than small ones.
void TestScrollViewSkinBadInput::boundedWork()
{
    ViewStage stage;
    stage.view.enableClipper(true);
    stage.view.addChild(new Tile, highest - 100, highest - 100);
    QVERIFY(stage.begin());
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 200; ++i) {
        stage.view.resizeContents(highest, highest);
        stage.view.setContentsPos(highest, highest);
        stage.view.repaintContents(0, 0, highest, highest);
        stage.view.setContentsPos(0, 0);
        stage.view.resizeContents(1, 1);
    }
    QVERIFY(timer.elapsed() < 60000);
}

QTEST_MAIN(TestScrollViewSkinBadInput)
#include "tst_scrollviewskin_badinput.moc"
