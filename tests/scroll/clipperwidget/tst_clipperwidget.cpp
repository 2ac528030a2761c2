#include "scroll/viewfixture.h"

using namespace viewtest;

namespace
{

class Clipper : public DQClipperWidget
{
public:
    using DQClipperWidget::DQClipperWidget;
    using DQClipperWidget::focusNextPrevChild;
    using DQClipperWidget::moving;

    static bool isMoving(const DQClipperWidget* widget) { return widget->*(&Clipper::moving); }
};

// Notes whether the clipper counts as moving while it gets its events.
class MoveSpy : public QObject
{
public:
    QStringList log;

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        auto* const widget = static_cast<DQClipperWidget*>(object);
        if (event->type() == QEvent::Move)
            log << pointText(widget->pos()) + (Clipper::isMoving(widget) ? " moving" : " still");
        return false;
    }
};

} // namespace

class TestClipperWidget : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(new FixedStyle); }

    void constructors();
    void focusWhileStill();
    void focusWhileMoving();
    void movedByTheView();
    void hiddenFocusStays();
};

void TestClipperWidget::constructors()
{
    const DQClipperWidget plain;
    QCOMPARE(plain.parentWidget(), nullptr);
    QCOMPARE(plain.objectName(), QString());
    QCOMPARE(plain.getWFlags(), 0U);
    QWidget parent;
    const Clipper clipper(&parent, "clipper", Qt::WRepaintNoErase);
    QCOMPARE(clipper.parentWidget(), &parent);
    QCOMPARE(clipper.objectName(), QStringLiteral("clipper"));
    QCOMPARE(clipper.getWFlags(), unsigned(Qt::WRepaintNoErase));
    QVERIFY(!clipper.moving);
}

// A window with a widget before the clipper, one on it and one behind it.
struct FocusStage {
    FocusStage()
    {
        for (QWidget* widget : {before, inside, behind})
            widget->setFocusPolicy(Qt::TabFocus);
        inside->setFocus();
    }

    Window window;
    QWidget* before = new QWidget(&window);
    Clipper* clipper = new Clipper(&window);
    QWidget* inside = new QWidget(clipper);
    QWidget* behind = new QWidget(&window);
};

void TestClipperWidget::focusWhileStill()
{
    FocusStage stage;
    QVERIFY(stage.window.activate());
    stage.inside->setFocus();
    QVERIFY(stage.clipper->focusNextPrevChild(true));
    QCOMPARE(stage.window.focusWidget(), stage.behind);
    stage.inside->setFocus();
    QVERIFY(stage.clipper->focusNextPrevChild(false));
    QCOMPARE(stage.window.focusWidget(), stage.before);
    // Nowhere to go.
    delete stage.before;
    delete stage.behind;
    stage.inside->setFocus();
    QVERIFY(!stage.clipper->focusNextPrevChild(true));
}

void TestClipperWidget::focusWhileMoving()
{
    FocusStage stage;
    QVERIFY(stage.window.activate());
    stage.inside->setFocus();
    stage.clipper->moving = true;
    QVERIFY(stage.clipper->focusNextPrevChild(true));
    QCOMPARE(stage.window.focusWidget(), stage.inside);
    QVERIFY(stage.clipper->focusNextPrevChild(false));
    QCOMPARE(stage.window.focusWidget(), stage.inside);
    stage.clipper->moving = false;
    QVERIFY(stage.clipper->focusNextPrevChild(true));
    QCOMPARE(stage.window.focusWidget(), stage.behind);
}

void TestClipperWidget::movedByTheView()
{
    ViewStage stage({700, 20000});
    stage.view.enableClipper(true);
    auto* const clipped = qobject_cast<DQClipperWidget*>(stage.view.clipper());
    QVERIFY(clipped);
    QVERIFY(stage.begin());
    MoveSpy spy;
    clipped->installEventFilter(&spy);
    stage.view.setContentsPos(0, 100);
    QCOMPARE(spy.log, QStringList("-2000,-2100 moving"));
    QVERIFY(!Clipper::isMoving(clipped));
    spy.log.clear();
    stage.view.setContentsPos(0, 10000);
    QCOMPARE(spy.log, QStringList("-1910,-1956 moving"));
    QVERIFY(!Clipper::isMoving(clipped));
    spy.log.clear();
    clipped->move(5, 5);
    QCOMPARE(spy.log, QStringList("5,5 still"));
}

void TestClipperWidget::hiddenFocusStays()
{
    ViewStage stage({700, 20000});
    stage.view.enableClipper(true);
    auto* const child = new Tile;
    auto* const other = new Tile;
    for (Tile* tile : {child, other})
        tile->setFocusPolicy(Qt::TabFocus);
    stage.view.addChild(child, 0, 0);
    stage.view.addChild(other, 0, 10000);
    QVERIFY(stage.window.activate());
    child->setFocus();
    stage.view.setContentsPos(0, 9000);
    QVERIFY(!child->isVisible());
    QCOMPARE(stage.window.focusWidget(), child);
    QCOMPARE(stage.view.contentsY(), 9000);
    // An application that hides it sends the focus on, as ever.
    stage.view.setContentsPos(0, 0);
    child->hide();
    QVERIFY(stage.window.focusWidget() != child);
}

QTEST_MAIN(TestClipperWidget)
#include "tst_clipperwidget.moc"
