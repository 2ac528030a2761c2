#include "scroll/viewfixture.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QPointingDevice>
#include <QSpontaneKeyEvent>
#include <QTimer>
#include <QWheelEvent>

using namespace viewtest;

namespace
{

QString pointFText(const QPointF& point)
{
    return QStringLiteral("%1,%2").arg(point.x()).arg(point.y());
}

QString typeName(QEvent::Type type)
{
    return QVariant::fromValue(type).toString();
}

QString mouseText(const QMouseEvent& event)
{
    return QStringLiteral("%1 at %2 global %3 button %4 buttons %5 keys %6")
        .arg(int(event.type()))
        .arg(pointFText(event.position()), pointFText(event.globalPosition()))
        .arg(int(event.button()))
        .arg(int(event.buttons()))
        .arg(int(event.modifiers()), 0, 16);
}

QString wheelText(const QWheelEvent& event)
{
    return QStringLiteral("wheel at %1 global %2 angle %3 pixels %4 buttons %5 keys %6 phase %7 inverted %8")
        .arg(pointFText(event.position()), pointFText(event.globalPosition()), pointFText(event.angleDelta()),
             pointFText(event.pixelDelta()))
        .arg(int(event.buttons()))
        .arg(int(event.modifiers()), 0, 16)
        .arg(int(event.phase()))
        .arg(event.inverted());
}

QString dropText(const QDropEvent& event)
{
    return QStringLiteral("at %1 actions %2 data %3 buttons %4 keys %5")
        .arg(pointFText(event.position()))
        .arg(int(event.possibleActions()))
        .arg(event.mimeData()->text())
        .arg(int(event.buttons()))
        .arg(int(event.modifiers()), 0, 16);
}

// Writes down what reaches its handlers, and answers as it is told.
class EventView : public View
{
public:
    using View::View;

    QStringList log;
    // What the contents handlers do with their events, if anything.
    std::function<void(QEvent*)> onContents;
    std::function<void(QDropEvent*)> onDrop;
    std::function<void(QDragMoveEvent*)> onDrag;

    QStringList take() { return std::exchange(log, {}); }

    void contentsMousePressEvent(QMouseEvent* event) override
    {
        contents("press ", event);
        View::contentsMousePressEvent(event);
    }
    void contentsMouseReleaseEvent(QMouseEvent* event) override
    {
        contents("release ", event);
        View::contentsMouseReleaseEvent(event);
    }
    void contentsMouseDoubleClickEvent(QMouseEvent* event) override
    {
        contents("double click ", event);
        View::contentsMouseDoubleClickEvent(event);
    }
    void contentsMouseMoveEvent(QMouseEvent* event) override
    {
        contents("move ", event);
        View::contentsMouseMoveEvent(event);
    }
    void contentsWheelEvent(QWheelEvent* event) override
    {
        log << "contents " + wheelText(*event);
        View::contentsWheelEvent(event);
        if (onContents)
            onContents(event);
    }
    void viewportMousePressEvent(QMouseEvent* event) override
    {
        log << "viewport press";
        View::viewportMousePressEvent(event);
    }
    void viewportMouseReleaseEvent(QMouseEvent* event) override
    {
        log << "viewport release";
        View::viewportMouseReleaseEvent(event);
    }
    void viewportMouseDoubleClickEvent(QMouseEvent* event) override
    {
        log << "viewport double click";
        View::viewportMouseDoubleClickEvent(event);
    }
    void viewportMouseMoveEvent(QMouseEvent* event) override
    {
        log << "viewport move";
        View::viewportMouseMoveEvent(event);
    }
    void viewportWheelEvent(QWheelEvent* event) override
    {
        log << "viewport wheel at " + pointFText(event->position());
        View::viewportWheelEvent(event);
    }
    void viewportPaintEvent(QPaintEvent* event) override
    {
        log << "viewport paint " + rectText(event->rect());
        View::viewportPaintEvent(event);
    }
    void viewportResizeEvent(QResizeEvent* event) override
    {
        log << "viewport resize " + sizeText(event->oldSize()) + " to " + sizeText(event->size());
        View::viewportResizeEvent(event);
    }

    using View::wheelEvent;

protected:
    void contentsDragEnterEvent(QDragEnterEvent* event) override
    {
        log << "contents enter " + dropText(*event) + " answer " + rectText(event->answerRect());
        View::contentsDragEnterEvent(event);
        if (onDrag)
            onDrag(event);
    }
    void contentsDragMoveEvent(QDragMoveEvent* event) override
    {
        log << "contents drag " + dropText(*event) + " answer " + rectText(event->answerRect());
        View::contentsDragMoveEvent(event);
        if (onDrag)
            onDrag(event);
    }
    void contentsDragLeaveEvent(QDragLeaveEvent* event) override
    {
        log << "contents leave";
        View::contentsDragLeaveEvent(event);
    }
    void contentsDropEvent(QDropEvent* event) override
    {
        log << "contents drop " + dropText(*event);
        View::contentsDropEvent(event);
        if (onDrop)
            onDrop(event);
    }
    void viewportDragEnterEvent(QDragEnterEvent* event) override
    {
        log << "viewport enter";
        View::viewportDragEnterEvent(event);
    }
    void viewportDragMoveEvent(QDragMoveEvent* event) override
    {
        log << "viewport drag";
        View::viewportDragMoveEvent(event);
    }
    void viewportDragLeaveEvent(QDragLeaveEvent* event) override
    {
        log << "viewport leave";
        View::viewportDragLeaveEvent(event);
    }
    void viewportDropEvent(QDropEvent* event) override
    {
        log << "viewport drop";
        View::viewportDropEvent(event);
    }

private:
    void contents(const char* name, QMouseEvent* event)
    {
        log << "contents " + QLatin1String(name) + mouseText(*event);
        if (onContents)
            onContents(event);
    }
};

// A view of 200 x 100 without a frame at (30, 40) of contents of 700 x 900, in a window.
class EventStage
{
public:
    explicit EventStage(bool clipper = false)
    {
        view.setFrameStyle(QFrame::NoFrame);
        view.resize(200, 100);
        view.enableClipper(clipper);
        view.resizeContents(700, 900);
        view.setContentsPos(30, 40);
    }
    bool begin()
    {
        const bool exposed = window.expose();
        view.take();
        return exposed;
    }
    // A point of the viewport in the clipper.
    QPointF inClipper(const QPointF& point) const { return view.clipper()->mapFrom(view.viewport(), point); }

    Window window;
    EventView view{&window};
};

// Records what a widget receives before it does.
class Spy : public QObject
{
public:
    QStringList log;
    std::function<void(QEvent*)> onEvent;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Wheel) {
            log << wheelText(*static_cast<QWheelEvent*>(event));
            if (onEvent)
                onEvent(event);
        }
        return false;
    }
};

QWheelEvent wheelAt(const QPointF& at)
{
    return QWheelEvent(at, {1000, 1001}, {3, 4}, {5, -120}, Qt::MiddleButton, Qt::ShiftModifier, Qt::ScrollUpdate, true,
                       Qt::MouseEventSynthesizedBySystem);
}

void addClipperRows()
{
    QTest::addColumn<bool>("clipper");
    QTest::newRow("viewport") << false;
    QTest::newRow("clipper") << true;
}

} // namespace

class TestScrollViewSkinEvents : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(new FixedStyle); }

    void mouseEvents_data();
    void mouseEvents();
    void mouseEventsElsewhere();
    void acceptedOrIgnored_data();
    void acceptedOrIgnored();
    void defaultHandlers();
    void filterAnswers_data();
    void filterAnswers();
    void paintAndResize_data();
    void paintAndResize();

    void wheelOnTheView_data();
    void wheelOnTheView();
    void wheelPassedToTheBar();
    void wheelOnTheViewport_data();
    void wheelOnTheViewport();
    void wheelByHand_data();
    void wheelByHand();

    void focusTravels_data();
    void focusTravels();
    void focusSkips_data();
    void focusSkips();
    void focusReasons();
    void focusIntoAWidgetOfAChild();
    void focusLeavesTheView();
    void focusHasNowhereToGo();
    void focusByTheTabKey();

    void dragAndDrop_data();
    void dragAndDrop();
    void dragAnswers();
    void dragScrolls_data();
    void dragScrolls();
    void dragScrollingEnds_data();
    void dragScrollingEnds();
    void dragInTheMiddle();
};

void TestScrollViewSkinEvents::mouseEvents_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<QEvent::Type>("type");
    QTest::addColumn<QString>("name");
    for (const bool clipper : {false, true}) {
        const QByteArray where = clipper ? "clipper, " : "viewport, ";
        QTest::newRow(where + "press") << clipper << QEvent::MouseButtonPress << "press";
        QTest::newRow(where + "release") << clipper << QEvent::MouseButtonRelease << "release";
        QTest::newRow(where + "double click") << clipper << QEvent::MouseButtonDblClick << "double click";
        QTest::newRow(where + "move") << clipper << QEvent::MouseMove << "move";
    }
}

// Type, button, state and global position stay, the position becomes one of the contents.
void TestScrollViewSkinEvents::mouseEvents()
{
    QFETCH(const bool, clipper);
    QFETCH(const QEvent::Type, type);
    QFETCH(const QString, name);
    EventStage stage(clipper);
    QVERIFY(stage.begin());
    QMouseEvent event(type, stage.inClipper({15, 16.5}), QPointF(1000, 1001), Qt::RightButton,
                      Qt::RightButton | Qt::LeftButton, Qt::ShiftModifier | Qt::ControlModifier);
    QCoreApplication::sendEvent(stage.view.clipper(), &event);
    const QString expected =
        QStringLiteral("contents %1 %2 at 45,56.5 global 1000,1001 button 2 buttons 3 keys 6000000")
            .arg(name)
            .arg(int(type));
    QCOMPARE(stage.view.take(), (QStringList{"viewport " + name, expected}));
}

// What the view does not watch it does not hear of.
void TestScrollViewSkinEvents::mouseEventsElsewhere()
{
    EventStage plain;
    auto* const child = new Tile;
    child->setAttribute(Qt::WA_NoMousePropagation);
    plain.view.addChild(child, 50, 50);
    QVERIFY(plain.begin());
    press(child, {5, 5});
    QCOMPARE(plain.view.take(), QStringList());
    press(&plain.view, {5, 5});
    QCOMPARE(plain.view.take(), QStringList());

    EventStage clipped(true);
    QVERIFY(clipped.begin());
    press(clipped.view.viewport(), {5, 5});
    QCOMPARE(clipped.view.take(), QStringList());
    clipped.view.enableClipper(false);
    clipped.view.take();
    press(clipped.view.viewport(), {5, 5});
    QCOMPARE(clipped.view.take().size(), 2);
}

void TestScrollViewSkinEvents::acceptedOrIgnored_data()
{
    QTest::addColumn<QEvent::Type>("type");
    QTest::addColumn<bool>("accepted");
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick,
                                    QEvent::MouseMove, QEvent::Wheel}) {
        QTest::newRow(qPrintable(typeName(type) + QStringLiteral(" %1, accepted").arg(type))) << type << true;
        QTest::newRow(qPrintable(typeName(type) + QStringLiteral(" %1, ignored").arg(type))) << type << false;
    }
}

// The event is left as the contents handler leaves its copy.
void TestScrollViewSkinEvents::acceptedOrIgnored()
{
    QFETCH(const QEvent::Type, type);
    QFETCH(const bool, accepted);
    EventStage stage;
    QVERIFY(stage.begin());
    stage.view.onContents = [accepted](QEvent* event) { event->setAccepted(accepted); };
    const auto send = [&](QEvent& event) {
        QCoreApplication::sendEvent(stage.view.viewport(), &event);
        return event.isAccepted();
    };
    if (type == QEvent::Wheel) {
        QWheelEvent event = wheelAt({15, 16});
        QCOMPARE(send(event), accepted);
        return;
    }
    QMouseEvent event(type, QPointF(15, 16), QPointF(15, 16), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCOMPARE(send(event), accepted);
}

// They do nothing, so that a press stays with the view; the wheel is left to others.
void TestScrollViewSkinEvents::defaultHandlers()
{
    ViewStage stage({700, 900});
    QVERIFY(stage.begin());
    QMouseEvent mouse(QEvent::MouseButtonPress, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    for (const auto handler : {&View::contentsMousePressEvent, &View::contentsMouseReleaseEvent,
                               &View::contentsMouseDoubleClickEvent, &View::contentsMouseMoveEvent}) {
        mouse.accept();
        (stage.view.*handler)(&mouse);
        QVERIFY(mouse.isAccepted());
        mouse.ignore();
        (stage.view.*handler)(&mouse);
        QVERIFY(!mouse.isAccepted());
    }
    QWheelEvent wheel = wheelAt({5, 5});
    wheel.accept();
    stage.view.contentsWheelEvent(&wheel);
    QVERIFY(!wheel.isAccepted());

    QImage image(20, 20, QImage::Format_ARGB32);
    image.fill(blue);
    QPainter painter(&image);
    stage.view.drawContents(&painter, 0, 0, 20, 20);
    stage.view.drawContents(&painter);
    painter.end();
    COMPARE_PICTURES(image, plain(20, 20, blue));
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollViewSkinEvents::filterAnswers_data()
{
    QTest::addColumn<QEvent::Type>("type");
    for (const QEvent::Type type :
         {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick, QEvent::MouseMove})
        QTest::newRow(qPrintable(QString::number(type))) << type;
}

// Nothing that the view watches is kept from the widget itself.
void TestScrollViewSkinEvents::filterAnswers()
{
    QFETCH(const QEvent::Type, type);
    EventStage stage;
    auto* const child = new Tile;
    stage.view.addChild(child, 50, 50);
    QMouseEvent mouse(type, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QVERIFY(!stage.view.eventFilter(stage.view.viewport(), &mouse));
    QVERIFY(!stage.view.eventFilter(child, &mouse));
    QVERIFY(!stage.view.eventFilter(&stage.window, &mouse));
    QWheelEvent wheel = wheelAt({5, 5});
    QVERIFY(!stage.view.eventFilter(stage.view.viewport(), &wheel));
    QResizeEvent resized({40, 20}, {10, 10});
    QVERIFY(!stage.view.eventFilter(stage.view.viewport(), &resized));
    QVERIFY(!stage.view.eventFilter(child, &resized));
    QEvent hint(QEvent::LayoutRequest);
    QVERIFY(!stage.view.eventFilter(stage.view.viewport(), &hint));
    QChildEvent removed(QEvent::ChildRemoved, child);
    QVERIFY(!stage.view.eventFilter(stage.view.viewport(), &removed));
    QCOMPARE(stage.view.childX(child), 0);
}

void TestScrollViewSkinEvents::paintAndResize_data()
{
    addClipperRows();
}

void TestScrollViewSkinEvents::paintAndResize()
{
    QFETCH(const bool, clipper);
    EventStage stage(clipper);
    QVERIFY(stage.begin());
    const QPoint offset = stage.view.clipper()->pos() * (clipper ? 1 : 0);
    stage.view.clipper()->update(QRect(5, 6, 7, 8).translated(-offset));
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.view.take(), QStringList("viewport paint " + rectText(QRect(5, 6, 7, 8).translated(-offset))));
    stage.view.clipper()->resize(4100, 4200);
    QCOMPARE(stage.view.take().filter("resize"),
             QStringList("viewport resize " + QString(clipper ? "4000x4000" : "180x87") + " to 4100x4200"));
    if (clipper)
        return;
    stage.view.resize(150, 90);
    QCOMPARE(stage.view.take().filter("resize"), QStringList("viewport resize 4100x4200 to 130x77"));
}

void TestScrollViewSkinEvents::wheelOnTheView_data()
{
    addClipperRows();
}

// The position goes into the viewport, and from there into the contents; all else stays.
void TestScrollViewSkinEvents::wheelOnTheView()
{
    QFETCH(const bool, clipper);
    EventStage stage(clipper);
    stage.view.setFrameStyle(QFrame::Box | QFrame::Plain);
    stage.view.setLineWidth(3);
    stage.view.setMargins(1, 2, 4, 8);
    QVERIFY(stage.begin());
    stage.view.onContents = [](QEvent* event) { event->accept(); };
    QWheelEvent event = wheelAt({14, 25});
    event.ignore();
    stage.view.wheelEvent(&event);
    QCOMPARE(stage.view.take(),
             (QStringList{"viewport wheel at " + pointFText(stage.inClipper({10, 20})),
                          "contents wheel at 40,60 global 1000,1001 angle 5,-120 pixels 3,4 buttons 4 keys 2000000 "
                          "phase 2 inverted 1"}));
    QVERIFY(event.isAccepted());
}

void TestScrollViewSkinEvents::wheelPassedToTheBar()
{
    EventStage stage;
    QVERIFY(stage.begin());
    Spy spy;
    stage.view.verticalScrollBar()->installEventFilter(&spy);
    // What nobody took goes on as it came.
    QWheelEvent event = wheelAt({14, 25});
    stage.view.wheelEvent(&event);
    QCOMPARE(spy.log, QStringList(wheelText(event)));
    QVERIFY(!event.isAccepted());
    QCOMPARE(stage.view.contentsY(), 40);
    // What has been taken does not.
    spy.log.clear();
    stage.view.onContents = [](QEvent* wheel) { wheel->accept(); };
    stage.view.wheelEvent(&event);
    QCOMPARE(spy.log, QStringList());
    QVERIFY(event.isAccepted());
}

void TestScrollViewSkinEvents::wheelOnTheViewport_data()
{
    addClipperRows();
}

void TestScrollViewSkinEvents::wheelOnTheViewport()
{
    QFETCH(const bool, clipper);
    EventStage stage(clipper);
    QVERIFY(stage.begin());
    QWheelEvent event = wheelAt(stage.inClipper({10, 20}));
    QCoreApplication::sendEvent(stage.view.clipper(), &event);
    QCOMPARE(stage.view.take(),
             (QStringList{"viewport wheel at " + pointFText(stage.inClipper({10, 20})),
                          "contents wheel at 40,60 global 1000,1001 angle 5,-120 pixels 3,4 buttons 4 keys 2000000 "
                          "phase 2 inverted 1"}));
    QVERIFY(!event.isAccepted());
}

void TestScrollViewSkinEvents::wheelByHand_data()
{
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<int>("times");
    QTest::newRow("taken") << true << 1;
    // Ignored over the viewport, it comes to the view itself as every event does, and from there to the bar.
    QTest::newRow("left") << false << 2;
}

// As it comes from the window system, through all widgets under the pointer.
void TestScrollViewSkinEvents::wheelByHand()
{
    QFETCH(const bool, accepted);
    EventStage stage;
    QVERIFY(stage.begin());
    Spy spy;
    stage.view.verticalScrollBar()->installEventFilter(&spy);
    stage.view.onContents = [accepted](QEvent* event) { event->setAccepted(accepted); };
    QWheelEvent event(QPointF(10, 20), QPointF(10, 20), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(stage.view.viewport(), &event);
    QCOMPARE(event.isAccepted(), accepted);
    const QStringList contents = stage.view.take().filter("contents wheel at 40,60 ");
    QTEST(int(contents.size()), "times");
    QCOMPARE(spy.log.size(), accepted ? 0 : 1);
}

// Three children of 60 x 20 that take the focus by Tab; 180 x 87 are seen of 700 x 2000.
void TestScrollViewSkinEvents::focusTravels_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<int>("from");
    QTest::addColumn<bool>("next");
    QTest::addColumn<int>("to");
    QTest::addColumn<QPoint>("position");

    for (const bool clipper : {false, true}) {
        const QByteArray where = clipper ? "clipper, " : "viewport, ";
        // The second one lies at (300, 500): its right and bottom edges are brought to those of the view.
        QTest::newRow(where + "forward, down") << clipper << 0 << true << 1 << QPoint(180, 433);
        QTest::newRow(where + "forward, far down") << clipper << 1 << true << 2 << QPoint(520, 1913);
        QTest::newRow(where + "forward, round") << clipper << 2 << true << 0 << QPoint(10, 20);
        QTest::newRow(where + "backward, round") << clipper << 0 << false << 2 << QPoint(520, 1913);
        QTest::newRow(where + "backward, up") << clipper << 1 << false << 0 << QPoint(0, 0);
    }
}

void TestScrollViewSkinEvents::focusTravels()
{
    QFETCH(const bool, clipper);
    QFETCH(const int, from);
    QFETCH(const bool, next);
    QFETCH(const int, to);
    EventStage stage(clipper);
    stage.view.resizeContents(700, 2000);
    const QPoint places[] = {{10, 20}, {300, 500}, {640, 1980}};
    Tile* children[3];
    for (int i = 0; i < 3; ++i) {
        children[i] = new Tile(nullptr, {60, 20});
        children[i]->setFocusPolicy(Qt::StrongFocus);
        stage.view.addChild(children[i], places[i].x(), places[i].y());
    }
    stage.view.setContentsPos(0, 0);
    QVERIFY(stage.window.activate());
    if (from == 2)
        stage.view.setContentsPos(700, 2000);
    children[from]->setFocus();
    QVERIFY(stage.view.focusNextPrevChild(next));
    QCOMPARE(stage.window.focusWidget(), children[to]);
    QVERIFY(children[to]->isVisible());
    QTEST(QPoint(stage.view.contentsX(), stage.view.contentsY()), "position");
}

void TestScrollViewSkinEvents::focusSkips_data()
{
    QTest::addColumn<int>("reason");
    QTest::newRow("no focus") << 0;
    QTest::newRow("focus by click only") << 1;
    QTest::newRow("disabled") << 2;
    QTest::newRow("with a proxy") << 3;
    QTest::newRow("hidden") << 4;
}

void TestScrollViewSkinEvents::focusSkips()
{
    QFETCH(const int, reason);
    EventStage stage;
    Tile* children[3];
    for (int i = 0; i < 3; ++i) {
        children[i] = new Tile;
        children[i]->setFocusPolicy(Qt::TabFocus);
        stage.view.addChild(children[i], 40, 50 + 25 * i);
    }
    QVERIFY(stage.window.activate());
    children[0]->setFocus();
    QVERIFY(stage.view.focusNextPrevChild(true));
    QCOMPARE(stage.window.focusWidget(), children[1]);
    children[0]->setFocus();
    if (reason == 0)
        children[1]->setFocusPolicy(Qt::NoFocus);
    else if (reason == 1)
        children[1]->setFocusPolicy(Qt::ClickFocus);
    else if (reason == 2)
        children[1]->setEnabled(false);
    else if (reason == 3)
        children[1]->setFocusProxy(children[0]);
    else
        children[1]->hide();
    QVERIFY(stage.view.focusNextPrevChild(true));
    QCOMPARE(stage.window.focusWidget(), children[2]);
    QVERIFY(stage.view.focusNextPrevChild(false));
    QCOMPARE(stage.window.focusWidget(), children[0]);
}

void TestScrollViewSkinEvents::focusReasons()
{
    EventStage stage;
    QList<int> reasons;
    Tile* children[2];
    for (Tile*& child : children) {
        child = new Tile;
        child->setFocusPolicy(Qt::TabFocus);
        child->onEvent = [&](QEvent* event) {
            if (event->type() == QEvent::FocusIn)
                reasons << static_cast<QFocusEvent*>(event)->reason();
        };
        stage.view.addChild(child, 40, 50);
    }
    QVERIFY(stage.window.activate());
    children[0]->setFocus();
    QVERIFY(QTest::qWaitFor([&] { return children[0]->hasFocus(); }));
    reasons.clear();
    QVERIFY(stage.view.focusNextPrevChild(true));
    QVERIFY(stage.view.focusNextPrevChild(false));
    QCOMPARE(reasons, (QList<int>{Qt::TabFocusReason, Qt::BacktabFocusReason}));
}

// A widget within a child is brought into view itself, not the whole child.
void TestScrollViewSkinEvents::focusIntoAWidgetOfAChild()
{
    EventStage stage;
    auto* const child = new Tile(nullptr, {600, 700});
    stage.view.addChild(child, 50, 60);
    auto* const part = new QWidget(child);
    part->setGeometry(30, 40, 500, 600);
    auto* const first = new QWidget(part);
    first->setGeometry(0, 0, 10, 10);
    auto* const deep = new QWidget(part);
    deep->setGeometry(200, 300, 61, 41);
    for (QWidget* widget : {first, deep})
        widget->setFocusPolicy(Qt::TabFocus);
    QVERIFY(stage.window.activate());
    stage.view.setContentsPos(0, 0);
    first->setFocus();
    QVERIFY(stage.view.focusNextPrevChild(true));
    QCOMPARE(stage.window.focusWidget(), deep);
    // Its middle lies at 50 + 30 + 200 + 30 = 310, 60 + 40 + 300 + 20 = 420; the margins are 30 and 20.
    QCOMPARE(QPoint(stage.view.contentsX(), stage.view.contentsY()), QPoint(310 + 30 - 180, 420 + 20 - 87));
}

void TestScrollViewSkinEvents::focusLeavesTheView()
{
    EventStage stage;
    auto* const child = new Tile;
    child->setFocusPolicy(Qt::TabFocus);
    stage.view.addChild(child, 40, 50);
    auto* const outside = new Tile(&stage.window);
    outside->setFocusPolicy(Qt::TabFocus);
    outside->move(0, 200);
    QVERIFY(stage.window.activate());
    child->setFocus();
    QVERIFY(stage.view.focusNextPrevChild(true));
    QCOMPARE(stage.window.focusWidget(), outside);
    QCOMPARE(QPoint(stage.view.contentsX(), stage.view.contentsY()), QPoint(30, 40));
    stage.view.setContentsPos(700, 900);
    QVERIFY(stage.view.focusNextPrevChild(false));
    QCOMPARE(stage.window.focusWidget(), child);
    QCOMPARE(QPoint(stage.view.contentsX(), stage.view.contentsY()), QPoint(40, 50));
}

void TestScrollViewSkinEvents::focusHasNowhereToGo()
{
    EventStage stage;
    auto* const child = new Tile;
    child->setFocusPolicy(Qt::TabFocus);
    stage.view.addChild(child, 40, 50);
    QVERIFY(stage.window.activate());
    child->setFocus();
    stage.view.setContentsPos(700, 900);
    QVERIFY(!stage.view.focusNextPrevChild(true));
    QVERIFY(!stage.view.focusNextPrevChild(false));
    QCOMPARE(stage.window.focusWidget(), child);
    QCOMPARE(QPoint(stage.view.contentsX(), stage.view.contentsY()), QPoint(520, 813));
}

void TestScrollViewSkinEvents::focusByTheTabKey()
{
    EventStage stage;
    QList<Tile*> children;
    for (int i = 0; i < 300; ++i) {
        children << new Tile;
        children.last()->setFocusPolicy(Qt::TabFocus);
        stage.view.addChild(children.last(), 10, 100 * i);
    }
    stage.view.resizeContents(180, 30000);
    stage.view.setContentsPos(0, 0);
    QVERIFY(stage.window.activate());
    children[0]->setFocus();
    QVERIFY(QTest::qWaitFor([&] { return children[0]->hasFocus(); }));
    for (int i = 1; i < 300; ++i) {
        QTest::keyClick(children[i - 1], Qt::Key_Tab);
        QVERIFY(children[i]->hasFocus());
        QVERIFY(children[i]->isVisible());
        QVERIFY(stage.view.viewport()->rect().contains(children[i]->geometry()));
    }
    QTest::keyClick(children[299], Qt::Key_Backtab);
    QVERIFY(children[298]->hasFocus());
}

void TestScrollViewSkinEvents::dragAndDrop_data()
{
    addClipperRows();
}

void TestScrollViewSkinEvents::dragAndDrop()
{
    QFETCH(const bool, clipper);
    EventStage stage(clipper);
    stage.view.clipper()->setAcceptDrops(true);
    QVERIFY(stage.begin());
    stage.view.onDrag = [](QDragMoveEvent* event) { event->accept(); };
    QMimeData data;
    data.setText("tune");
    const QPoint at = stage.inClipper({90, 40}).toPoint();
    const QString text = "at 120,80 actions 3 data tune buttons 1 keys 2000000";

    QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::ShiftModifier);
    QCoreApplication::sendEvent(stage.view.clipper(), &enter);
    QCOMPARE(stage.view.take(), (QStringList{"viewport enter", "contents enter " + text + " answer 120,80 1x1"}));
    QDragMoveEvent move(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::ShiftModifier);
    QCoreApplication::sendEvent(stage.view.clipper(), &move);
    QCOMPARE(stage.view.take(), (QStringList{"viewport drag", "contents drag " + text + " answer 120,80 1x1"}));
    QDropEvent drop(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::ShiftModifier);
    QVERIFY(!stage.view.eventFilter(stage.view.clipper(), &drop));
    QCOMPARE(stage.view.take(), (QStringList{"viewport drop", "contents drop " + text}));
    QDragLeaveEvent leave;
    QVERIFY(!stage.view.eventFilter(stage.view.clipper(), &leave));
    QCOMPARE(stage.view.take(), (QStringList{"viewport leave", "contents leave"}));
}

// What the contents answer is what the source of the drag hears.
void TestScrollViewSkinEvents::dragAnswers()
{
    EventStage stage;
    QMimeData data;
    const auto filter = [&](QEvent& event) { return stage.view.eventFilter(stage.view.viewport(), &event); };

    QDragEnterEvent enter(QPoint(90, 40), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    filter(enter);
    QVERIFY(!enter.isAccepted());
    QCOMPARE(enter.answerRect(), QRect(90, 40, 1, 1));
    stage.view.onDrag = [](QDragMoveEvent* event) {
        event->setDropAction(Qt::MoveAction);
        event->accept(QRect(100, 70, 50, 20));
    };
    filter(enter);
    QVERIFY(enter.isAccepted());
    QCOMPARE(enter.dropAction(), Qt::MoveAction);
    QCOMPARE(enter.answerRect(), QRect(70, 30, 50, 20));

    QDragMoveEvent move(QPoint(90, 40), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    move.setDropAction(Qt::CopyAction);
    filter(move);
    QVERIFY(move.isAccepted());
    QCOMPARE(move.dropAction(), Qt::MoveAction);
    QCOMPARE(move.answerRect(), QRect(70, 30, 50, 20));
    stage.view.onDrag = [](QDragMoveEvent* event) { event->ignore(QRect(100, 70, 30, 20)); };
    filter(move);
    QVERIFY(!move.isAccepted());
    QCOMPARE(move.answerRect(), QRect(70, 30, 30, 20));
    // Who does nothing changes nothing.
    stage.view.onDrag = nullptr;
    move.accept();
    filter(move);
    QVERIFY(move.isAccepted());
    QCOMPARE(move.dropAction(), Qt::MoveAction);

    QDropEvent drop(QPoint(90, 40), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    filter(drop);
    QVERIFY(!drop.isAccepted());
    stage.view.onDrop = [](QDropEvent* event) {
        event->setDropAction(Qt::MoveAction);
        event->accept();
    };
    filter(drop);
    QVERIFY(drop.isAccepted());
    QCOMPARE(drop.dropAction(), Qt::MoveAction);
}

void TestScrollViewSkinEvents::dragScrolls_data()
{
    QTest::addColumn<bool>("clipper");
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<QPoint>("direction");

    for (const bool clipper : {false, true}) {
        const QByteArray where = clipper ? "clipper, " : "viewport, ";
        QTest::newRow(where + "top") << clipper << QPoint(90, 15) << QPoint(0, -1);
        QTest::newRow(where + "bottom") << clipper << QPoint(90, 72) << QPoint(0, 1);
        QTest::newRow(where + "left") << clipper << QPoint(15, 40) << QPoint(-1, 0);
        QTest::newRow(where + "right") << clipper << QPoint(165, 40) << QPoint(1, 0);
        QTest::newRow(where + "corner") << clipper << QPoint(179, 86) << QPoint(1, 1);
    }
}

// What is held near an edge scrolls the view towards it, again and again.
void TestScrollViewSkinEvents::dragScrolls()
{
    QFETCH(const bool, clipper);
    QFETCH(const QPoint, at);
    QFETCH(const QPoint, direction);
    EventStage stage(clipper);
    stage.view.setContentsPos(250, 400);
    QVERIFY(stage.begin());
    QMimeData data;
    QDragMoveEvent move(stage.inClipper(at).toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    stage.view.eventFilter(stage.view.clipper(), &move);
    QCOMPARE(QPoint(stage.view.contentsX(), stage.view.contentsY()), QPoint(250, 400));
    const auto travelled = [&] {
        const QPoint distance = QPoint(stage.view.contentsX(), stage.view.contentsY()) - QPoint(250, 400);
        return distance.x() * direction.x() >= 20 * qAbs(direction.x()) &&
               distance.y() * direction.y() >= 20 * qAbs(direction.y());
    };
    QVERIFY(QTest::qWaitFor(travelled, 60000));
    if (direction.x() == 0)
        QCOMPARE(stage.view.contentsX(), 250);
    if (direction.y() == 0)
        QCOMPARE(stage.view.contentsY(), 400);
}

void TestScrollViewSkinEvents::dragScrollingEnds_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("leave") << 0;
    QTest::newRow("drop") << 1;
    QTest::newRow("back in the middle") << 2;
    QTest::newRow("switched off") << 3;
}

void TestScrollViewSkinEvents::dragScrollingEnds()
{
    QFETCH(const int, way);
    EventStage stage;
    stage.view.setContentsPos(250, 400);
    QVERIFY(stage.begin());
    QMimeData data;
    const auto filter = [&](QEvent&& event) { stage.view.eventFilter(stage.view.viewport(), &event); };
    const auto moveTo = [&](const QPoint& at) {
        filter(QDragMoveEvent(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier));
    };
    moveTo({90, 80});
    QVERIFY(QTest::qWaitFor([&] { return stage.view.contentsY() > 400; }, 60000));
    if (way == 0)
        filter(QDragLeaveEvent());
    else if (way == 1)
        filter(QDropEvent(QPoint(90, 80), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier));
    else if (way == 2)
        moveTo({90, 40});
    else
        stage.view.setDragAutoScroll(false);
    // A timer that takes longer than one of the view's steps.
    const int before = stage.view.contentsY();
    bool later = false;
    QTimer::singleShot(120, this, [&] { later = true; });
    QVERIFY(QTest::qWaitFor([&] { return later; }, 60000));
    QCOMPARE(stage.view.contentsY(), before);
    if (way != 3)
        return;
    QVERIFY(!stage.view.dragAutoScroll());
    moveTo({90, 80});
    later = false;
    QTimer::singleShot(120, this, [&] { later = true; });
    QVERIFY(QTest::qWaitFor([&] { return later; }, 60000));
    QCOMPARE(stage.view.contentsY(), before);
    stage.view.setDragAutoScroll(true);
    QVERIFY(stage.view.dragAutoScroll());
    moveTo({90, 80});
    QVERIFY(QTest::qWaitFor([&] { return stage.view.contentsY() > before; }, 60000));
}

void TestScrollViewSkinEvents::dragInTheMiddle()
{
    EventStage stage;
    stage.view.setContentsPos(250, 400);
    QVERIFY(stage.begin());
    QMimeData data;
    for (const QPoint& at : {QPoint(16, 16), QPoint(164, 71)}) {
        QDragMoveEvent move(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        stage.view.eventFilter(stage.view.viewport(), &move);
        bool later = false;
        QTimer::singleShot(120, this, [&] { later = true; });
        QVERIFY(QTest::qWaitFor([&] { return later; }, 60000));
        QCOMPARE(QPoint(stage.view.contentsX(), stage.view.contentsY()), QPoint(250, 400));
    }
}

QTEST_MAIN(TestScrollViewSkinEvents)
#include "tst_scrollviewskin_events.moc"
