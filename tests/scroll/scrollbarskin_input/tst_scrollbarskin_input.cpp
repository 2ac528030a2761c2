#include "scroll/scrollbarfixture.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QThread>
#include <QTimerEvent>
#include <QWheelEvent>

using namespace bartest;

namespace
{

// Places on the bar of a BarStage that shows 30: the thumb covers pixels 50 to 69.
constexpr QPoint onSubLine(10, 5);
constexpr QPoint onSubPage(10, 30);
constexpr QPoint onThumb(10, 60);
constexpr QPoint onAddPage(10, 100);
constexpr QPoint onAddLine(10, 130);
constexpr QPoint outside(30, 60);

// What the repeater does when its time has come.
void fire(Bar& bar)
{
    QTimerEvent event(bar.repeater->timerId());
    QCoreApplication::sendEvent(bar.repeater, &event);
}

bool hasTimer(const Bar& bar)
{
    return !bar.findChildren<QTimer*>().isEmpty();
}

// A style of a given base whose pointer may stray so far.
class StrayStyle : public QProxyStyle
{
public:
    StrayStyle(const QString& base, int distance) : QProxyStyle(QStyleFactory::create(base)), m_distance(distance) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        return metric == PM_MaximumDragDistance ? m_distance : QProxyStyle::pixelMetric(metric, option, widget);
    }

private:
    int m_distance;
};

// Tells which handlers the bar's own ones call.
class HandlerBar : public Bar
{
public:
    using Bar::Bar;

    QStringList moves;

protected:
    void mouseMoveEvent(QMouseEvent* event) override
    {
        moves << QStringLiteral("move to %1,%2: clickedAt %3, pressed %4, timer %5")
                     .arg(event->position().x())
                     .arg(event->position().y())
                     .arg(clickedAt)
                     .arg(pressedControl)
                     .arg(repeater != nullptr);
        Bar::mouseMoveEvent(event);
    }
};

// Counts the input that its children let through.
class InputCounter : public Window
{
public:
    int presses = 0;
    int others = 0;

protected:
    bool event(QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            ++presses;
            return true;
        case QEvent::MouseMove:
        case QEvent::MouseButtonRelease:
            ++others;
            return true;
        default:
            return Window::event(event);
        }
    }
};

} // namespace

class TestScrollBarSkinInput : public QuietTest
{
    Q_OBJECT

private slots:
    void pressWithOneValue_data();
    void pressWithOneValue();
    void press_data();
    void press();
    void pressOnTheThumb_data();
    void pressOnTheThumb();
    void pressOutside();
    void pressAtTheEnd();
    void everyButtonPresses_data();
    void everyButtonPresses();
    void doubleClickPresses();
    void secondPress();
    void stateInSignals();
    void startPositionIsShared();

    void drag();
    void dragBackAndForth();
    void dragWithinAPixel();
    void dragWithinAValue();
    void dragBeyondTheEnds_data();
    void dragBeyondTheEnds();
    void dragStartsATimerThatDoesNothing();
    void dragOfFarValues();
    void dragFollowsNewRange();
    void stray_data();
    void stray();
    void strayAndReturn();
    void strayToTheSharedStart();
    void strayStartIsClamped();

    void moveWithoutPress();
    void moveOfAHiddenBar();
    void slideOffAndBack_data();
    void slideOffAndBack();
    void slideToAnotherPart();
    void pressOutsideThenMoveOnto();
    void moveOnThePart();

    void releaseWithoutPress();
    void release_data();
    void release();
    void releaseMovesOnceMore();
    void releaseIgnoresTheLastWay();
    void releaseTakesTheThumbsValue();
    void releaseAfterADrag();

    void autoRepeatTimer();
    void autoRepeat_data();
    void autoRepeat();
    void autoRepeatInTime();
    void autoRepeatPastThePointer();
    void autoRepeatFlushesTheDisplay();
    void autoRepeatInALoopOfItsOwn();
    void startAutoRepeatTwice();
    void stopAutoRepeat();
    void repeatWithoutPress();
    void repeatWithoutTimer();
    void slowPaintIsOneStep();
    void hidingEndsThePress_data();
    void hidingEndsThePress();

    void inputIsNotPassedOn();
    void wheelAndKeysAreLeftToTheParent();
};

void TestScrollBarSkinInput::pressWithOneValue_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::newRow("top button") << onSubLine;
    QTest::newRow("thumb") << onThumb;
    QTest::newRow("bottom button") << onAddLine;
    QTest::newRow("outside") << outside;
}

void TestScrollBarSkinInput::pressWithOneValue()
{
    QFETCH(QPoint, at);
    BarStage stage;
    stage.bar.setRange(30, 30);
    QVERIFY(stage.begin(30));
    const int start = Bar::sliderStartPos;
    bartest::press(&stage.bar, at);
    QCOMPARE(stage.bar.clickedAt, false);
    QCOMPARE(int(stage.bar.pressedControl), int(None));
    move(&stage.bar, at + QPoint(0, 10));
    bartest::release(&stage.bar, at);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
    QVERIFY(!hasTimer(stage.bar));
    QCOMPARE(Bar::sliderStartPos, start);
}

void TestScrollBarSkinInput::press_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<int>("control");
    QTest::addColumn<QStringList>("expected");
    // Intended: the top button has the bottom one repainted first.
    QTest::newRow("top button") << onSubLine << int(SubLine)
                                << QStringList{"paint 0,120 20x20", "prevLine()", "paint 6,47 8x23", "valueChanged(27)",
                                               "paint 0,0 20x20"};
    QTest::newRow("bottom button") << onAddLine << int(AddLine)
                                   << QStringList{"nextLine()", "paint 6,50 8x23", "valueChanged(33)",
                                                  "paint 0,120 20x20"};
    QTest::newRow("above the thumb") << onSubPage << int(SubPage)
                                     << QStringList{"prevPage()", "paint 6,30 8x40", "valueChanged(10)"};
    QTest::newRow("below the thumb") << onAddPage << int(AddPage)
                                     << QStringList{"nextPage()", "paint 6,50 8x40", "valueChanged(50)"};
}

void TestScrollBarSkinInput::press()
{
    QFETCH(QPoint, at);
    QFETCH(int, control);
    QFETCH(QStringList, expected);
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, at);
    QCOMPARE(stage.take(), expected);
    QCOMPARE(stage.bar.clickedAt, true);
    QCOMPARE(int(stage.bar.pressedControl), control);
    QVERIFY(stage.bar.repeater);
    QCOMPARE(stage.bar.repeater->interval(), 500);
}

void TestScrollBarSkinInput::pressOnTheThumb_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<int>("offset");
    QTest::newRow("first row") << QPoint(10, 50) << 0;
    QTest::newRow("middle") << QPoint(6, 60) << 10;
    QTest::newRow("last row") << QPoint(13, 69) << 19;
    QTest::newRow("beside its picture") << QPoint(0, 55) << 5;
}

void TestScrollBarSkinInput::pressOnTheThumb()
{
    QFETCH(QPoint, at);
    QFETCH(int, offset);
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, at);
    QCOMPARE(stage.take(), (QStringList{"sliderPressed()", "paint 6,50 8x20"}));
    QCOMPARE(stage.bar.clickedAt, true);
    QCOMPARE(int(stage.bar.pressedControl), int(Slider));
    QCOMPARE(stage.bar.clickOffset, offset);
    QCOMPARE(stage.bar.slidePrevVal, 30);
    QCOMPARE(Bar::sliderStartPos, 50);
    QCOMPARE(stage.bar.value(), 30);
    QVERIFY(!hasTimer(stage.bar));
}

void TestScrollBarSkinInput::pressOutside()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    for (const QPoint at : {QPoint(20, 60), QPoint(-1, 60), QPoint(10, -1), QPoint(10, 140)}) {
        bartest::press(&stage.bar, at);
        QCOMPARE(stage.bar.clickedAt, true);
        QCOMPARE(int(stage.bar.pressedControl), int(None));
        QVERIFY(!hasTimer(stage.bar));
        bartest::release(&stage.bar, at);
        QCOMPARE(stage.bar.clickedAt, false);
    }
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollBarSkinInput::pressAtTheEnd()
{
    BarStage stage;
    QVERIFY(stage.begin(80));
    bartest::press(&stage.bar, onAddLine);
    QCOMPARE(stage.take(), (QStringList{"nextLine()", "paint 0,120 20x20"}));
    bartest::release(&stage.bar, onAddLine);
    QCOMPARE(stage.take(), QStringList{"paint 0,120 20x20"});
    stage.bar.setValue(0);
    stage.take();
    bartest::press(&stage.bar, onSubLine);
    QCOMPARE(stage.take(), (QStringList{"paint 0,120 20x20", "prevLine()", "paint 0,0 20x20"}));
}

void TestScrollBarSkinInput::everyButtonPresses_data()
{
    QTest::addColumn<int>("button");
    QTest::newRow("left") << int(Qt::LeftButton);
    QTest::newRow("right") << int(Qt::RightButton);
    QTest::newRow("middle") << int(Qt::MiddleButton);
    QTest::newRow("another one") << int(Qt::ExtraButton1);
    QTest::newRow("none: the stylus") << int(Qt::NoButton);
}

void TestScrollBarSkinInput::everyButtonPresses()
{
    QFETCH(int, button);
    BarStage stage;
    QVERIFY(stage.begin(30));
    const auto with = static_cast<Qt::MouseButton>(button);
    bartest::press(&stage.bar, onAddPage, with);
    QCOMPARE(int(stage.bar.pressedControl), int(AddPage));
    bartest::release(&stage.bar, onAddPage, with);
    QCOMPARE(stage.bar.clickedAt, false);
    bartest::press(&stage.bar, {10, 75}, with);
    bartest::release(&stage.bar, {10, 75}, with);
    QCOMPARE(stage.take().filter("("),
             (QStringList{"nextPage()", "valueChanged(50)", "sliderPressed()", "sliderReleased()"}));
}

void TestScrollBarSkinInput::doubleClickPresses()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onAddLine);
    bartest::release(&stage.bar, onAddLine);
    mouse(&stage.bar, QEvent::MouseButtonDblClick, onAddLine);
    bartest::release(&stage.bar, onAddLine);
    QCOMPARE(stage.take().filter("("),
             (QStringList{"nextLine()", "valueChanged(33)", "nextLine()", "valueChanged(36)"}));
}

// A second button goes down before the first is let go: the later press counts.
void TestScrollBarSkinInput::secondPress()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onAddLine);
    fire(stage.bar);
    QCOMPARE(stage.bar.repeater->interval(), 50);
    stage.take();
    bartest::press(&stage.bar, onSubLine, Qt::RightButton);
    QCOMPARE(stage.take().filter("("), (QStringList{"prevLine()", "valueChanged(33)"}));
    QCOMPARE(int(stage.bar.pressedControl), int(SubLine));
    QCOMPARE(stage.bar.repeater->interval(), 500);
    bartest::release(&stage.bar, onSubLine, Qt::RightButton);
    stage.take();
    bartest::release(&stage.bar, onAddLine);
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollBarSkinInput::stateInSignals()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    QStringList states;
    stage.recorder.afterLine = [&](const QString& line) {
        states << QStringLiteral("%1: %2 %3 %4 %5")
                      .arg(line)
                      .arg(stage.bar.clickedAt)
                      .arg(stage.bar.pressedControl)
                      .arg(stage.bar.value())
                      .arg(stage.bar.repeater != nullptr);
    };
    bartest::press(&stage.bar, onAddLine);
    QCOMPARE(states, (QStringList{"nextLine(): 1 1 30 0", "paint 6,50 8x23: 1 1 33 0", "valueChanged(33): 1 1 33 0",
                                  "paint 0,120 20x20: 1 1 33 1"}));
    states.clear();
    bartest::release(&stage.bar, onAddLine);
    QCOMPARE(states, QStringList{"paint 0,120 20x20: 0 128 33 0"});
    states.clear();
    bartest::press(&stage.bar, onThumb);
    bartest::release(&stage.bar, onThumb);
    QCOMPARE(states, (QStringList{"sliderPressed(): 1 64 33 0", "paint 6,53 8x20: 1 64 33 0",
                                  "sliderReleased(): 0 128 33 0", "paint 6,53 8x20: 0 128 33 0"}));
}

void TestScrollBarSkinInput::startPositionIsShared()
{
    BarStage one;
    BarStage other;
    QVERIFY(one.begin(30));
    QVERIFY(other.begin(10));
    bartest::press(&one.bar, onThumb);
    QCOMPARE(Bar::sliderStartPos, 50);
    bartest::press(&other.bar, {10, 35});
    QCOMPARE(&one.bar.sliderStartPos, &other.bar.sliderStartPos);
    QCOMPARE(Bar::sliderStartPos, 30);
    // Only a thumb that is grabbed counts.
    bartest::press(&one.bar, onAddLine);
    QCOMPARE(Bar::sliderStartPos, 30);
}

void TestScrollBarSkinInput::drag()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onThumb);
    stage.take();
    move(&stage.bar, {10, 70});
    // Intended: each new value is told twice.
    QCOMPARE(stage.take(), (QStringList{"paint 6,50 8x30", "valueChanged(40)", "valueChanged(40)"}));
    QCOMPARE(stage.bar.sliderPos, 60);
    QCOMPARE(stage.bar.thumbRect, QRect(6, 60, 8, 20));
    QCOMPARE(stage.bar.prevValue(), 30);
    move(&stage.bar, {10, 69});
    QCOMPARE(stage.take(), (QStringList{"paint 6,59 8x21", "valueChanged(39)", "valueChanged(39)"}));
    // The bar's side does not matter.
    move(&stage.bar, {-500, 71});
    QCOMPARE(stage.take(), (QStringList{"paint 6,59 8x22", "valueChanged(41)", "valueChanged(41)"}));
    QCOMPARE(stage.bar.clickedAt, true);
    QCOMPARE(int(stage.bar.pressedControl), int(Slider));
    QCOMPARE(stage.bar.slidePrevVal, 30);
    QCOMPARE(Bar::sliderStartPos, 50);
    QCOMPARE(stage.bar.clickOffset, 10);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollBarSkinInput::dragBackAndForth()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, {10, 57});
    for (int y = 57; y <= 140; y += 9)
        move(&stage.bar, {10.0, double(y)});
    for (int y = 140; y >= 0; y -= 11) {
        move(&stage.bar, {10.0, double(y)});
        QCOMPARE(stage.bar.value(), qBound(0, y - 7 - 20, 80));
    }
    const QStringList values = stage.take().filter("valueChanged");
    QCOMPARE(values.size() % 2, 0);
    for (int i = 0; i < values.size(); i += 2)
        QCOMPARE(values[i], values[i + 1]);
}

void TestScrollBarSkinInput::dragWithinAPixel()
{
    BarStage stage;
    stage.bar.setRange(0, 8000);
    QVERIFY(stage.begin(3000));
    const int y = stage.bar.sliderPos + 3;
    bartest::press(&stage.bar, {10.0, double(y)});
    stage.take();
    // Not even the hit test is made: beside the bar the part is another one.
    stage.bar.startAutoRepeat();
    move(&stage.bar, {300.0, double(y)});
    QVERIFY(stage.bar.repeater);
    QCOMPARE(stage.bar.value(), 3000);
    stage.bar.stopAutoRepeat();
    move(&stage.bar, {10.0, double(y)});
    QVERIFY(!stage.bar.repeater);
    QCOMPARE(stage.take(), QStringList());
}

// 20 pixels a value: the thumb follows in steps, and the hit test is made all the same.
void TestScrollBarSkinInput::dragWithinAValue()
{
    BarStage stage;
    stage.bar.setSteps(1, 1);
    stage.bar.setRange(0, 4);
    QVERIFY(stage.begin(2));
    QCOMPARE(stage.bar.sliderRect(), QRect(6, 60, 8, 20));
    bartest::press(&stage.bar, {10, 79});
    stage.take();
    move(&stage.bar, {10, 78});
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.bar.sliderPos, 60);
    QVERIFY(stage.bar.repeater);
    move(&stage.bar, {10, 85});
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.bar.sliderPos, 60);
    QVERIFY(!stage.bar.repeater);
    // Half way to the next value is far enough.
    move(&stage.bar, {10, 88});
    QCOMPARE(stage.take(), QStringList());
    move(&stage.bar, {10, 89});
    QCOMPARE(stage.take(), (QStringList{"paint 6,60 8x40", "valueChanged(3)", "valueChanged(3)"}));
    QCOMPARE(stage.bar.sliderPos, 80);
}

void TestScrollBarSkinInput::dragBeyondTheEnds_data()
{
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("painted");
    QTest::newRow("first that reaches the start") << 30 << 0 << "6,20 8x50";
    QTest::newRow("beyond the start") << 29 << 0 << "6,20 8x50";
    QTest::newRow("above the bar") << -1000 << 0 << "6,20 8x50";
    QTest::newRow("far above") << lowest << 0 << "6,20 8x50";
    QTest::newRow("first that reaches the end") << 110 << 80 << "6,50 8x70";
    QTest::newRow("beyond the end") << 111 << 80 << "6,50 8x70";
    QTest::newRow("below the bar") << 1000 << 80 << "6,50 8x70";
    QTest::newRow("far below") << highest << 80 << "6,50 8x70";
}

void TestScrollBarSkinInput::dragBeyondTheEnds()
{
    QFETCH(int, y);
    QFETCH(int, value);
    QFETCH(QString, painted);
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onThumb);
    stage.take();
    move(&stage.bar, {10.0, double(y)});
    const QString told = QStringLiteral("valueChanged(%1)").arg(value);
    QCOMPARE(stage.take(), (QStringList{"paint " + painted, told, told}));
    move(&stage.bar, {10.0, double(y)});
    QCOMPARE(stage.take(), QStringList());
    // The way back counts from where the stylus is, not from where the thumb stopped.
    move(&stage.bar, {10, 70});
    QCOMPARE(stage.bar.value(), 40);
}

// Intended: on the thumb the part under the stylus is the pressed one, so the repeating starts; a thumb has no step.
void TestScrollBarSkinInput::dragStartsATimerThatDoesNothing()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onThumb);
    QVERIFY(!stage.bar.repeater);
    move(&stage.bar, {10, 70});
    QVERIFY(stage.bar.repeater);
    QCOMPARE(stage.bar.repeater->interval(), 500);
    stage.take();
    fire(stage.bar);
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.bar.value(), 40);
    move(&stage.bar, {10, 71});
    QCOMPARE(stage.bar.repeater->interval(), 50);
    // Beside the bar the part is another one.
    move(&stage.bar, {40, 72});
    QVERIFY(!stage.bar.repeater);
    QCOMPARE(stage.bar.value(), 42);
    move(&stage.bar, {10, 73});
    QVERIFY(stage.bar.repeater);
    bartest::release(&stage.bar, {10, 73});
    QVERIFY(!hasTimer(stage.bar));
}

void TestScrollBarSkinInput::dragOfFarValues()
{
    BarStage stage;
    stage.bar.setRange(lowest, highest);
    QVERIFY(stage.begin(lowest));
    bartest::press(&stage.bar, {10, 25});
    stage.take();
    // A thumb of 10, so a span of 90.
    move(&stage.bar, {10, 70});
    QCOMPARE(stage.take().filter("("), (QStringList{"valueChanged(0)", "valueChanged(0)"}));
    move(&stage.bar, {10, 115});
    QCOMPARE(stage.bar.value(), highest);
    move(&stage.bar, {10, 25});
    QCOMPARE(stage.bar.value(), lowest);
}

void TestScrollBarSkinInput::dragFollowsNewRange()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onThumb);
    stage.bar.setRange(0, 40);
    stage.take();
    // A thumb of 33 that stands at 70 now, so a span of 67 from 20 on.
    QCOMPARE(stage.bar.sliderRect(), QRect(6, 70, 8, 33));
    move(&stage.bar, {10, 60});
    QCOMPARE(stage.take().filter("("), (QStringList{"valueChanged(18)", "valueChanged(18)"}));
}

void TestScrollBarSkinInput::stray_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<int>("distance");
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<bool>("strays");
    const auto row = [](const char* name, const char* style, int distance, const QPoint& at, bool strays) {
        QTest::newRow(name) << QString::fromLatin1(style) << distance << at << strays;
    };
    row("last column at the left", "windows", 30, {-60, 90}, false);
    row("beyond it", "windows", 30, {-61, 90}, true);
    row("last column at the right", "windows", 30, {79, 90}, false);
    row("beyond it, right", "windows", 30, {80, 90}, true);
    row("last row above", "windows", 30, {10, -30}, false);
    row("beyond it, above", "windows", 30, {10, -31}, true);
    row("last row below", "windows", 30, {10, 169}, false);
    row("beyond it, below", "windows", 30, {10, 170}, true);
    row("distance 0, inside", "windows", 0, {19, 90}, false);
    row("distance 0, outside", "windows", 0, {20, 90}, true);
    row("no distance", "windows", -1, {3000, 90}, false);
    row("an endless distance", "windows", highest, {3000, 90}, false);
    row("another style", "fusion", 30, {3000, 90}, false);
    row("another style, distance 0", "fusion", 0, {20, 90}, false);
}

void TestScrollBarSkinInput::stray()
{
    QFETCH(QString, style);
    QFETCH(int, distance);
    QFETCH(QPoint, at);
    QFETCH(bool, strays);
    StrayStyle stray(style, distance);
    BarStage stage;
    stage.bar.setStyle(&stray);
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onThumb);
    move(&stage.bar, {10, 75});
    QCOMPARE(stage.bar.value(), 45);
    stage.take();
    move(&stage.bar, at);
    const int value = strays ? 30 : qBound(0, at.y() - 10 - 20, 80);
    const QString told = QStringLiteral("valueChanged(%1)").arg(value);
    QCOMPARE(stage.take().filter("("), (QStringList{told, told}));
    QCOMPARE(stage.bar.sliderPos, 20 + value);
    QCOMPARE(int(stage.bar.pressedControl), int(Slider));
}

void TestScrollBarSkinInput::strayAndReturn()
{
    // The style itself, with the distance that it has.
    const std::unique_ptr<QStyle> windows(QStyleFactory::create("windows"));
    const int distance = windows->pixelMetric(QStyle::PM_MaximumDragDistance);
    QVERIFY(distance > 0);
    BarStage stage;
    stage.bar.setStyle(windows.get());
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onThumb);
    move(&stage.bar, {10, 75});
    move(&stage.bar, {20.0 + 2 * distance, 76});
    QCOMPARE(stage.bar.value(), 30);
    QVERIFY(!stage.bar.repeater);
    stage.take();
    move(&stage.bar, {20.0 + 2 * distance, 77});
    QCOMPARE(stage.take(), QStringList());
    move(&stage.bar, {19.0 + 2 * distance, 77});
    QCOMPARE(stage.bar.value(), 47);
    bartest::release(&stage.bar, {5000, 77});
    QCOMPARE(stage.bar.value(), 47);
}

// Intended: the place is shared, so that grabbing another bar's thumb moves it.
void TestScrollBarSkinInput::strayToTheSharedStart()
{
    StrayStyle stray("windows", 30);
    BarStage one;
    BarStage other;
    one.bar.setStyle(&stray);
    QVERIFY(one.begin(30));
    QVERIFY(other.begin(10));
    bartest::press(&one.bar, onThumb);
    bartest::press(&other.bar, {10, 35});
    move(&one.bar, {1000, 90});
    QCOMPARE(one.bar.value(), 10);
}

void TestScrollBarSkinInput::strayStartIsClamped()
{
    StrayStyle stray("windows", 30);
    BarStage stage;
    stage.bar.setStyle(&stray);
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onThumb);
    for (const int start : {lowest, 19, 101, highest}) {
        stage.bar.setValue(30);
        Bar::sliderStartPos = start;
        move(&stage.bar, {1000, 90});
        QCOMPARE(stage.bar.value(), start < 50 ? 0 : 80);
    }
}

void TestScrollBarSkinInput::moveWithoutPress()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    for (const QPoint at : {onThumb, onAddLine, onSubPage, outside})
        move(&stage.bar, at);
    // Nor does one count after a press that is over.
    bartest::press(&stage.bar, onThumb);
    bartest::release(&stage.bar, onThumb);
    stage.take();
    move(&stage.bar, {10, 90});
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.bar.value(), 30);
    QVERIFY(!hasTimer(stage.bar));
}

void TestScrollBarSkinInput::moveOfAHiddenBar()
{
    BarStage stage;
    stage.bar.setValue(30);
    stage.recorder.watchSignals(&stage.bar);
    bartest::press(&stage.bar, onAddLine);
    QCOMPARE(stage.bar.clickedAt, true);
    stage.take();
    move(&stage.bar, outside);
    QCOMPARE(stage.bar.clickedAt, false);
    // The repeating ends when it would go on.
    QVERIFY(stage.bar.repeater);
    fire(stage.bar);
    QVERIFY(!hasTimer(stage.bar));
    move(&stage.bar, onAddLine);
    bartest::release(&stage.bar, onAddLine);
    QCOMPARE(stage.take(), QStringList());
    bartest::press(&stage.bar, {10, 60});
    QCOMPARE(int(stage.bar.pressedControl), int(Slider));
    stage.take();
    move(&stage.bar, {10, 90});
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.bar.value(), 33);
}

void TestScrollBarSkinInput::slideOffAndBack_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<QPoint>("off");
    QTest::addColumn<QStringList>("resumed");
    QTest::newRow("bottom button") << onAddLine << QPoint(20, 130)
                                   << QStringList{"nextLine()", "paint 6,53 8x23", "valueChanged(36)"};
    QTest::newRow("top button") << onSubLine << QPoint(10, -1)
                                << QStringList{"prevLine()", "paint 6,44 8x23", "valueChanged(24)"};
    QTest::newRow("below the thumb") << QPoint(10, 119) << QPoint(-1, 119)
                                     << QStringList{"nextPage()", "paint 6,70 8x40", "valueChanged(70)"};
    QTest::newRow("above the thumb") << QPoint(10, 20) << QPoint(10, 19)
                                     << QStringList{"prevPage()", "paint 6,20 8x30", "valueChanged(0)"};
}

void TestScrollBarSkinInput::slideOffAndBack()
{
    QFETCH(QPoint, at);
    QFETCH(QPoint, off);
    QFETCH(QStringList, resumed);
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, at);
    fire(stage.bar);
    stage.bar.setValue(at == onAddLine ? 33 : at == onSubLine ? 27 : at.y() == 119 ? 50 : 10);
    stage.take();
    const int control = stage.bar.pressedControl;

    move(&stage.bar, off);
    QVERIFY(!hasTimer(stage.bar));
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(int(stage.bar.pressedControl), control);
    QCOMPARE(stage.bar.clickedAt, true);
    move(&stage.bar, off);
    QCOMPARE(stage.take(), QStringList());

    // At once, and then after the longer time again.
    move(&stage.bar, at);
    QCOMPARE(stage.take(), resumed);
    QVERIFY(stage.bar.repeater);
    QCOMPARE(stage.bar.repeater->interval(), 500);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollBarSkinInput::slideToAnotherPart()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onAddLine);
    stage.take();
    for (const QPoint at : {onAddPage, onThumb, onSubPage, onSubLine}) {
        move(&stage.bar, at);
        QVERIFY(!hasTimer(stage.bar));
    }
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.bar.value(), 33);
    bartest::release(&stage.bar, onSubLine);
    QCOMPARE(stage.take(), QStringList{"paint 0,120 20x20"});
}

// Outside is a part like any other, only that it has no step.
void TestScrollBarSkinInput::pressOutsideThenMoveOnto()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, outside);
    move(&stage.bar, onAddLine);
    QVERIFY(!hasTimer(stage.bar));
    move(&stage.bar, outside);
    QVERIFY(hasTimer(stage.bar));
    fire(stage.bar);
    bartest::release(&stage.bar, outside);
    QVERIFY(!hasTimer(stage.bar));
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollBarSkinInput::moveOnThePart()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onAddLine);
    fire(stage.bar);
    stage.take();
    const QTimer* timer = stage.bar.repeater;
    for (int y = 120; y < 140; ++y)
        move(&stage.bar, {3.0, double(y)});
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.bar.repeater, timer);
    QCOMPARE(timer->interval(), 50);
}

void TestScrollBarSkinInput::releaseWithoutPress()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.pressedControl = Slider;
    bartest::release(&stage.bar, onThumb);
    QCOMPARE(int(stage.bar.pressedControl), int(Slider));
    stage.bar.pressedControl = None;
    bartest::release(&stage.bar, onAddLine);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollBarSkinInput::release_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<QPoint>("where");
    QTest::addColumn<QStringList>("expected");
    const auto rows = [](const char* name, const QPoint& at, const QStringList& expected) {
        QTest::addRow("%s", name) << at << at << expected;
        QTest::addRow("%s, released elsewhere", name) << at << QPoint(300, 300) << expected;
    };
    rows("top button", onSubLine, {"paint 0,0 20x20"});
    rows("bottom button", onAddLine, {"paint 0,120 20x20"});
    rows("above the thumb", onSubPage, {});
    rows("below the thumb", onAddPage, {});
    rows("outside", outside, {});
    rows("thumb", onThumb, {"sliderReleased()", "paint 6,50 8x20"});
}

void TestScrollBarSkinInput::release()
{
    QFETCH(QPoint, at);
    QFETCH(QPoint, where);
    QFETCH(QStringList, expected);
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, at);
    stage.take();
    bartest::release(&stage.bar, where);
    QCOMPARE(stage.take(), expected);
    QCOMPARE(stage.bar.clickedAt, false);
    QCOMPARE(int(stage.bar.pressedControl), int(None));
    QVERIFY(!hasTimer(stage.bar));
    bartest::release(&stage.bar, where);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollBarSkinInput::releaseMovesOnceMore()
{
    Window window;
    HandlerBar bar(&window);
    bar.setGeometry(0, 0, 20, 140);
    QVERIFY(window.expose());
    bartest::press(&bar, onAddLine);
    QVERIFY(bar.repeater);
    bartest::release(&bar, {11, 131});
    // The press is over by then, the part is still known.
    QCOMPARE(bar.moves, QStringList{"move to 11,131: clickedAt 0, pressed 1, timer 0"});
    QCOMPARE(int(bar.pressedControl), int(None));
}

// Intended: a way between the last move and the release is not followed.
void TestScrollBarSkinInput::releaseIgnoresTheLastWay()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onThumb);
    move(&stage.bar, {10, 70});
    stage.take();
    bartest::release(&stage.bar, {10, 90});
    QCOMPARE(stage.take(), (QStringList{"sliderReleased()", "paint 6,60 8x20"}));
    QCOMPARE(stage.bar.value(), 40);
    QCOMPARE(stage.bar.sliderPos, 60);
}

// Several values share a pixel; letting the thumb go takes the one that its place stands for.
void TestScrollBarSkinInput::releaseTakesTheThumbsValue()
{
    BarStage stage;
    stage.bar.setSteps(3, 2000);
    stage.bar.setRange(0, 8000);
    QVERIFY(stage.begin(3017));
    QCOMPARE(stage.bar.sliderRect(), QRect(6, 50, 8, 20));
    bartest::press(&stage.bar, onThumb);
    QCOMPARE(stage.bar.value(), 3017);
    stage.take();
    QList<int> seen;
    connect(&stage.bar, &ScrollBarSkin::sliderReleased, &stage.bar,
            [&] { seen << stage.bar.value() << stage.bar.prevValue(); });
    bartest::release(&stage.bar, onThumb);
    QCOMPARE(stage.take(), (QStringList{"sliderReleased()", "valueChanged(3000)", "paint 6,50 8x20"}));
    QCOMPARE(seen, (QList<int>{3000, 3017}));
    QCOMPARE(stage.bar.sliderPos, 50);
}

void TestScrollBarSkinInput::releaseAfterADrag()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onThumb);
    move(&stage.bar, {10, 75});
    move(&stage.bar, {10, 80});
    stage.take();
    bartest::release(&stage.bar, {10, 80});
    QCOMPARE(stage.take(), (QStringList{"sliderReleased()", "paint 6,70 8x20"}));
    QCOMPARE(stage.bar.value(), 50);
    QCOMPARE(stage.bar.prevValue(), 50);
}

void TestScrollBarSkinInput::autoRepeatTimer()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onAddLine);
    const QTimer* timer = stage.bar.repeater;
    QVERIFY(timer);
    QCOMPARE(timer->objectName(), QStringLiteral("auto-repeat timer"));
    QCOMPARE(timer->parent(), &stage.bar);
    QCOMPARE(timer->interval(), 500);
    QCOMPARE(timer->isSingleShot(), false);
    QCOMPARE(timer->isActive(), true);
    QCOMPARE(stage.bar.findChildren<QTimer*>().size(), 1);
}

void TestScrollBarSkinInput::autoRepeat_data()
{
    press_data();
}

void TestScrollBarSkinInput::autoRepeat()
{
    QFETCH(QPoint, at);
    QFETCH(QStringList, expected);
    BarStage stage;
    stage.bar.setRange(-1000, 1000);
    QVERIFY(stage.begin(0));
    QPoint place = at;
    if (at == onSubPage)
        place.setY(stage.bar.sliderPos - 1);
    bartest::press(&stage.bar, place);
    const QString signal = expected.filter("()").first();
    const int step = stage.bar.value();
    QCOMPARE(stage.take().filter("("), (QStringList{signal, QStringLiteral("valueChanged(%1)").arg(step)}));
    for (int i = 2; i < 6; ++i) {
        fire(stage.bar);
        QCOMPARE(stage.take().filter("("), (QStringList{signal, QStringLiteral("valueChanged(%1)").arg(i * step)}));
        QCOMPARE(stage.bar.repeater->interval(), 50);
        QVERIFY(stage.bar.repeater->isActive());
    }
}

void TestScrollBarSkinInput::autoRepeatInTime()
{
    BarStage stage;
    stage.bar.setRange(0, 1000000);
    QVERIFY(stage.begin(0));
    QElapsedTimer clock;
    QList<qint64> steps;
    connect(&stage.bar, &ScrollBarSkin::nextLine, &stage.bar, [&] { steps << clock.elapsed(); });
    clock.start();
    bartest::press(&stage.bar, onAddLine);
    QCOMPARE(steps.size(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(steps.size() >= 5, 60000);
    // A coarse timer may come a twentieth of its time early.
    QVERIFY2(steps[1] - steps[0] >= 475, qPrintable(QString::number(steps[1] - steps[0])));
    for (int i = 2; i < 5; ++i)
        QVERIFY2(steps[i] - steps[1] >= 45 * (i - 1), qPrintable(QString::number(steps[i] - steps[1])));
    bartest::release(&stage.bar, onAddLine);
    QVERIFY(!hasTimer(stage.bar));
    QCOMPARE(stage.bar.value(), int(3 * steps.size()));
}

// Intended: only a move of the stylus looks where it is.
void TestScrollBarSkinInput::autoRepeatPastThePointer()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, {10, 75});
    QCOMPARE(stage.bar.value(), 50);
    QCOMPARE(int(stage.bar.pointOver({10, 75})), int(Slider));
    fire(stage.bar);
    QCOMPARE(stage.bar.value(), 70);
    stage.take();
    move(&stage.bar, {10, 75});
    QVERIFY(!hasTimer(stage.bar));
    QCOMPARE(stage.take(), QStringList());
}

// What the step asks other widgets to paint is on the display before the next one.
void TestScrollBarSkinInput::autoRepeatFlushesTheDisplay()
{
    BarStage stage;
    Witness contents(&stage.window);
    contents.setGeometry(100, 0, 50, 50);
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onAddLine);
    QVERIFY(stage.window.settle());
    connect(&stage.bar, &ScrollBarSkin::valueChanged, &contents, qOverload<>(&QWidget::update));
    contents.paints = 0;
    fire(stage.bar);
    QCOMPARE(contents.paints, 1);
}

// A receiver may open a dialog; the steps that come meanwhile do not pile up one in another.
void TestScrollBarSkinInput::autoRepeatInALoopOfItsOwn()
{
    BarStage stage;
    stage.bar.setRange(0, 1000000);
    QVERIFY(stage.begin(0));
    int depth = 0;
    int deepest = 0;
    bool first = true;
    connect(&stage.bar, &ScrollBarSkin::nextLine, &stage.bar, [&] {
        if (std::exchange(first, false))
            return;
        deepest = qMax(deepest, ++depth);
        if (depth < 9) {
            QEventLoop loop;
            QTimer::singleShot(400, &loop, &QEventLoop::quit);
            loop.exec();
        }
        --depth;
    });
    bartest::press(&stage.bar, onAddLine);
    QTRY_VERIFY_WITH_TIMEOUT(deepest > 0 && depth == 0, 60000);
    QVERIFY2(deepest <= 2, qPrintable(QString::number(deepest)));
    bartest::release(&stage.bar, onAddLine);
}

void TestScrollBarSkinInput::startAutoRepeatTwice()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onAddLine);
    fire(stage.bar);
    const QTimer* timer = stage.bar.repeater;
    QCOMPARE(timer->interval(), 50);
    stage.bar.startAutoRepeat();
    QCOMPARE(stage.bar.repeater, timer);
    QCOMPARE(timer->interval(), 500);
    stage.take();
    fire(stage.bar);
    // One connection, one step.
    QCOMPARE(stage.take().filter("("), (QStringList{"nextLine()", "valueChanged(39)"}));
}

void TestScrollBarSkinInput::stopAutoRepeat()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.stopAutoRepeat();
    QCOMPARE(stage.bar.repeater, nullptr);
    stage.bar.startAutoRepeat();
    const QPointer<QTimer> timer = stage.bar.repeater;
    stage.bar.stopAutoRepeat();
    QVERIFY(timer.isNull());
    QCOMPARE(stage.bar.repeater, nullptr);
    stage.bar.stopAutoRepeat();
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollBarSkinInput::repeatWithoutPress()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.pressedControl = AddLine;
    stage.bar.startAutoRepeat();
    fire(stage.bar);
    QVERIFY(!hasTimer(stage.bar));
    QCOMPARE(stage.bar.repeater, nullptr);
    QCOMPARE(stage.take(), QStringList());
    QVERIFY(QMetaObject::invokeMethod(&stage.bar, "doAutoRepeat"));
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollBarSkinInput::repeatWithoutTimer()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bartest::press(&stage.bar, onAddLine);
    stage.bar.stopAutoRepeat();
    stage.take();
    QVERIFY(QMetaObject::invokeMethod(&stage.bar, "doAutoRepeat"));
    QCOMPARE(stage.take().filter("("), (QStringList{"nextLine()", "valueChanged(36)"}));
    QVERIFY(!hasTimer(stage.bar));
}

void TestScrollBarSkinInput::slowPaintIsOneStep()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    bool timerRuns = false;
    stage.recorder.afterLine = [&](const QString& line) {
        if (line != "paint 0,120 20x20")
            return;
        timerRuns = stage.bar.repeater;
        QThread::msleep(600);
    };
    bartest::press(&stage.bar, onAddLine);
    QVERIFY(timerRuns);
    // The release stands in the queue behind the repaint, and the timer must not overtake it.
    QVERIFY(stage.bar.repeater->remainingTime() > 100);
    QCoreApplication::processEvents();
    bartest::release(&stage.bar, onAddLine);
    QCOMPARE(stage.bar.value(), 33);
}

void TestScrollBarSkinInput::hidingEndsThePress_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<bool>("whole");
    QTest::newRow("button") << onAddLine << false;
    QTest::newRow("button, whole window") << onAddLine << true;
    QTest::newRow("trough") << QPoint(10, 119) << false;
    QTest::newRow("thumb") << onThumb << false;
}

void TestScrollBarSkinInput::hidingEndsThePress()
{
    QFETCH(QPoint, at);
    QFETCH(bool, whole);
    BarStage stage;
    QVERIFY(stage.begin(30));
    QWidget* hidden = whole ? static_cast<QWidget*>(&stage.window) : &stage.bar;
    bartest::press(&stage.bar, at);
    hidden->hide();
    QVERIFY(!hasTimer(stage.bar));
    QCOMPARE(stage.bar.repeater, nullptr);
    QCOMPARE(stage.bar.clickedAt, false);
    QCOMPARE(int(stage.bar.pressedControl), int(None));
    hidden->show();
    QVERIFY(stage.window.settle());
    stage.take();
    move(&stage.bar, outside);
    move(&stage.bar, at);
    bartest::release(&stage.bar, at);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

// A bar that has nothing to do with a press keeps it from the widgets beneath all the same.
void TestScrollBarSkinInput::inputIsNotPassedOn()
{
    InputCounter window;
    Bar bar(&window);
    bar.setGeometry(0, 0, 20, 140);
    QVERIFY(window.expose());
    const auto click = [&] {
        move(&bar, onThumb);
        bartest::press(&bar, onThumb);
        move(&bar, onAddLine);
        bartest::release(&bar, onAddLine);
        bartest::release(&bar, onAddLine);
        mouse(&bar, QEvent::MouseButtonDblClick, onSubLine);
    };
    click();
    bar.setRange(5, 5);
    click();
    QCOMPARE(window.presses, 0);
    QCOMPARE(window.others, 0);
}

void TestScrollBarSkinInput::wheelAndKeysAreLeftToTheParent()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&stage.bar, &wheel);
    QVERIFY(!wheel.isAccepted());
    for (const int code : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End}) {
        key(&stage.bar, QEvent::KeyPress, code);
        key(&stage.bar, QEvent::KeyRelease, code);
    }
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.bar.value(), 30);
}

QTEST_MAIN(TestScrollBarSkinInput)

#include "tst_scrollbarskin_input.moc"
