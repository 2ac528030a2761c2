#include "lifetimefixture.h"
#include "scroll/scrollbarfixture.h"

#include <QTimerEvent>

using namespace bartest;

namespace
{

void fire(Bar& bar)
{
    if (!bar.repeater)
        return;
    QTimerEvent event(bar.repeater->timerId());
    QCoreApplication::sendEvent(bar.repeater, &event);
}

// A shown bar at (0, 0) of its parent, with the places of a BarStage. Value 30 at pixel 50.
struct Scene : HeapScene<Bar> {
    Scene() : HeapScene("bar")
    {
        parent->setGeometry(0, 0, 100, 200);
        widget->setGeometry(0, 0, 20, 140);
        widget->setSteps(3, 20);
        widget->setRange(0, 80);
        widget->setValue(30);
    }

    bool begin()
    {
        if (!window->expose())
            return false;
        recorder.watchSignals(widget);
        return true;
    }

    BarRecorder recorder;
};

using Act = std::function<void(Bar*)>;

struct Action {
    const char* name;
    // The line of the recorder at whose first occurrence (or second, where told) something happens to the bar.
    QString line;
    Act before;
    Act act;
    int occurrence = 1;
};

Act pressAt(int y)
{
    return [y](Bar* bar) { press(bar, {10.0, double(y)}); };
}

Act moveTo(int y)
{
    return [y](Bar* bar) { move(bar, {10.0, double(y)}); };
}

Act releaseAt(int y)
{
    return [y](Bar* bar) { release(bar, {10.0, double(y)}); };
}

// Pressed, slid off and about to slide back.
Act slidOff(int y)
{
    return [y](Bar* bar) {
        press(bar, {10.0, double(y)});
        move(bar, {500, 500});
    };
}

void repeat(Bar* bar)
{
    fire(*bar);
}

// Every way in which every signal is emitted.
const QList<Action>& actions()
{
    static const QList<Action> all{
        {"setValue", "valueChanged(9)", {}, [](Bar* b) { b->setValue(9); }},
        {"setValue of the range control", "valueChanged(9)", {}, [](Bar* b) { b->QRangeControl::setValue(9); }},
        {"addLine", "valueChanged(33)", {}, [](Bar* b) { b->addLine(); }},
        {"subtractLine", "valueChanged(27)", {}, [](Bar* b) { b->subtractLine(); }},
        {"addPage", "valueChanged(50)", {}, [](Bar* b) { b->addPage(); }},
        {"subtractPage", "valueChanged(10)", {}, [](Bar* b) { b->subtractPage(); }},
        {"setRange", "valueChanged(7)", {}, [](Bar* b) { b->setRange(0, 7); }},
        {"setMinValue", "valueChanged(40)", {}, [](Bar* b) { b->setMinValue(40); }},
        {"setMaxValue", "valueChanged(20)", {}, [](Bar* b) { b->setMaxValue(20); }},
        {"valueChange", "valueChanged(30)", {}, [](Bar* b) { b->valueChange(); }},
        {"action", "nextLine()", {}, [](Bar* b) { b->action(AddLine); }},
        {"action", "prevLine()", {}, [](Bar* b) { b->action(SubLine); }},
        {"action", "nextPage()", {}, [](Bar* b) { b->action(AddPage); }},
        {"action", "prevPage()", {}, [](Bar* b) { b->action(SubPage); }},
        {"action", "valueChanged(33)", {}, [](Bar* b) { b->action(AddLine); }},
        {"action", "valueChanged(10)", {}, [](Bar* b) { b->action(SubPage); }},
        {"press", "nextLine()", {}, pressAt(130)},
        {"press", "prevLine()", {}, pressAt(10)},
        {"press", "nextPage()", {}, pressAt(100)},
        {"press", "prevPage()", {}, pressAt(30)},
        {"press on the bottom button", "valueChanged(33)", {}, pressAt(130)},
        {"press on the top button", "valueChanged(27)", {}, pressAt(10)},
        {"press below the thumb", "valueChanged(50)", {}, pressAt(100)},
        {"press above the thumb", "valueChanged(10)", {}, pressAt(30)},
        {"press on the thumb", "sliderPressed()", {}, pressAt(60)},
        {"drag", "valueChanged(40)", pressAt(60), moveTo(70)},
        {"drag, told again", "valueChanged(40)", pressAt(60), moveTo(70), 2},
        {"release", "sliderReleased()", pressAt(60), releaseAt(60)},
        {"release of another value", "sliderReleased()",
         [](Bar* b) {
             b->setRange(0, 8000);
             b->setValue(3033);
             pressAt(b->sliderPos)(b);
         },
         releaseAt(60)},
        {"release of another value", "valueChanged(3022)",
         [](Bar* b) {
             b->setRange(0, 8000);
             b->setValue(3033);
             pressAt(b->sliderPos)(b);
         },
         releaseAt(60)},
        {"repeat", "nextLine()", pressAt(130), repeat},
        {"repeat", "prevLine()", pressAt(10), repeat},
        {"repeat", "nextPage()", pressAt(119), repeat},
        {"repeat", "prevPage()", pressAt(20), repeat},
        {"repeat on the bottom button", "valueChanged(36)", pressAt(130), repeat},
        {"repeat above the thumb", "valueChanged(0)", pressAt(20), repeat},
        {"slide back", "nextLine()", slidOff(130), moveTo(130)},
        {"slide back", "prevPage()", slidOff(20), moveTo(20)},
        {"slide back onto the bottom button", "valueChanged(36)", slidOff(130), moveTo(130)},
    };
    return all;
}

void actionRows()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < actions().size(); ++i)
        QTest::addRow("%d: %s, %s%s", i, actions()[i].name, qPrintable(actions()[i].line),
                      actions()[i].occurrence == 2 ? " again" : "")
            << i;
}

// Carries out an action and does something to the bar when its signal comes. False where the signal does not come.
bool interrupt(Scene& scene, const Action& action, const std::function<void()>& interruption)
{
    if (action.before)
        action.before(scene.widget);
    int seen = 0;
    scene.recorder.afterLine = [&](const QString& line) {
        if (line == action.line && ++seen == action.occurrence)
            interruption();
    };
    action.act(scene.widget);
    scene.recorder.afterLine = {};
    return seen >= action.occurrence;
}

// What holds for every bar at every time.
void verifySound(const Bar& bar)
{
    int least = 0;
    int most = 0;
    int length = 0;
    int button = 0;
    bar.scrollBarMetrics(least, most, length, button);
    QVERIFY(least <= most);
    QVERIFY(bar.value() >= bar.minValue() && bar.value() <= bar.maxValue());
    for (const int value : {lowest, -1, 0, 1, highest, bar.minValue(), bar.maxValue()}) {
        const int position = bar.rangeValueToSliderPos(value);
        QVERIFY(position >= least && position <= most);
    }
    for (const int position : {lowest, -1, 0, 1, highest, least, most}) {
        const int value = bar.sliderPosToRangeValue(position);
        QVERIFY(value >= bar.minValue() && value <= bar.maxValue());
    }
}

// Every pixel of a bar is drawn.
void verifyDrawn(Bar& bar)
{
    if (bar.size().isEmpty())
        return;
    QImage target = plain(bar.width(), bar.height(), 0);
    bar.render(&target, QPoint(), QRegion(), QWidget::RenderFlags());
    for (int y = 0; y < target.height(); ++y)
        for (int x = 0; x < target.width(); ++x)
            if (qAlpha(target.pixel(x, y)) != 255)
                QFAIL(qPrintable(QStringLiteral("nothing at %1, %2").arg(x).arg(y)));
}

// Uses the bar in every way.
void exercise(Bar& bar)
{
    const int w = bar.width();
    const int h = bar.height();
    for (const QPoint at : {QPoint(0, 0), QPoint(w / 2, h / 2), QPoint(w - 1, h - 1), QPoint(w / 2, h / 3),
                            QPoint(lowest / 2, highest / 2), QPoint(-1, -1)}) {
        press(&bar, at);
        fire(bar);
        move(&bar, {double(w), double(h)});
        move(&bar, {w / 2.0, -1000000000.0});
        move(&bar, at);
        move(&bar, {w / 2.0, 1000000000.0});
        fire(bar);
        release(&bar, at);
        verifySound(bar);
    }
    for (const int value : {lowest, -1, 0, 1, highest})
        bar.setValue(value);
    for (const ScrollBarControl control : {AddLine, SubLine, AddPage, SubPage})
        bar.action(control);
    verifySound(bar);
}

} // namespace

class TestScrollBarSkinBadInput : public QuietTest
{
    Q_OBJECT

private slots:
    void receiverDeletes_data();
    void receiverDeletes();
    void receiverHides_data();
    void receiverHides();
    void receiverReleases_data();
    void receiverReleases();
    void receiverChangesEverything_data();
    void receiverChangesEverything();
    void receiverSetsAnotherValueWhileDragged();
    void receiverSetsAnotherValueAtRelease();
    void receiverStopsTheRepeating();
    void receiverPressesAgain();
    void deletedWhileRepeating();

    void sizes_data();
    void sizes();
    void ranges_data();
    void ranges();
    void steps_data();
    void steps();
    void veryHighBar_data();
    void veryHighBar();
    void farPositions();
    void unknownControls_data();
    void unknownControls();
    void constructorNumbers_data();
    void constructorNumbers();
    void withoutWindow();
};

void TestScrollBarSkinBadInput::receiverDeletes_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("victim");
    for (int i = 0; i < actions().size(); ++i)
        for (const Victim victim : {Sender, Parent, TopLevel})
            QTest::addRow("%d: %s, %s%s: %s", i, actions()[i].name, qPrintable(actions()[i].line),
                          actions()[i].occurrence == 2 ? " again" : "", nameOf(victim))
                << i << int(victim);
}

void TestScrollBarSkinBadInput::receiverDeletes()
{
    QFETCH(int, index);
    QFETCH(int, victim);
    const Action& action = actions()[index];
    Scene scene;
    QVERIFY(scene.begin());
    QStringList log;
    QVERIFY(interrupt(scene, action, [&] {
        log = scene.recorder.take();
        delete scene.victim(static_cast<Victim>(victim));
    }));
    QVERIFY(scene.widget.isNull());
    // Nothing is heard of it any more.
    QCOMPARE(scene.recorder.take(), QStringList());
    QCOMPARE(log.last(), action.line);
    if (scene.window)
        QVERIFY(scene.window->settle());
}

void TestScrollBarSkinBadInput::receiverHides_data()
{
    actionRows();
}

void TestScrollBarSkinBadInput::receiverHides()
{
    QFETCH(int, index);
    Scene scene;
    QVERIFY(scene.begin());
    QVERIFY(interrupt(scene, actions()[index], [&] { scene.widget->hide(); }));
    Bar& bar = *scene.widget;
    QVERIFY(bar.findChildren<QTimer*>().isEmpty());
    QCOMPARE(bar.clickedAt, false);
    QCOMPARE(int(bar.pressedControl), int(None));
    bar.show();
    const int value = bar.value();
    move(&bar, {10, 130});
    release(&bar, {10, 130});
    QVERIFY(scene.window->settle());
    QCOMPARE(bar.value(), value);
}

void TestScrollBarSkinBadInput::receiverReleases_data()
{
    actionRows();
}

// As in a dialog that a receiver opens, in which the stylus is lifted.
void TestScrollBarSkinBadInput::receiverReleases()
{
    QFETCH(int, index);
    Scene scene;
    QVERIFY(scene.begin());
    QVERIFY(interrupt(scene, actions()[index], [&] { release(scene.widget, {10, 60}); }));
    Bar& bar = *scene.widget;
    QVERIFY(bar.findChildren<QTimer*>().isEmpty());
    QCOMPARE(bar.clickedAt, false);
    QCOMPARE(int(bar.pressedControl), int(None));
    verifySound(bar);
}

void TestScrollBarSkinBadInput::receiverChangesEverything_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("change");
    const char* const changes[] = {"one value", "every int", "no size", "a new size", "alpha", "pictures", "init"};
    for (int i = 0; i < actions().size(); ++i)
        for (int change = 0; change < int(std::size(changes)); ++change)
            QTest::addRow("%d: %s, %s: %s", i, actions()[i].name, qPrintable(actions()[i].line), changes[change])
                << i << change;
}

void TestScrollBarSkinBadInput::receiverChangesEverything()
{
    QFETCH(int, index);
    QFETCH(int, change);
    Scene scene;
    QVERIFY(scene.begin());
    Bar& bar = *scene.widget;
    QVERIFY(interrupt(scene, actions()[index], [&] {
        switch (change) {
        case 0:
            bar.setRange(5, 5);
            break;
        case 1:
            bar.setSteps(highest, highest);
            bar.setRange(lowest, highest);
            break;
        case 2:
            bar.resize(0, 0);
            break;
        case 3:
            bar.resize(41, 83);
            break;
        case 4:
            bar.setAlphaOverride(3);
            break;
        case 5:
            bar.loadPictures();
            break;
        default:
            bar.ScrollBarSkin::init();
        }
    }));
    verifySound(bar);
    fire(bar);
    move(&bar, {10, 20});
    release(&bar, {10, 20});
    verifySound(bar);
    QVERIFY(bar.findChildren<QTimer*>().isEmpty());
    QVERIFY(scene.window->settle());
}

void TestScrollBarSkinBadInput::receiverSetsAnotherValueWhileDragged()
{
    Scene scene;
    QVERIFY(scene.begin());
    press(scene.widget, {10, 60});
    scene.recorder.take();
    scene.recorder.afterLine = [&](const QString& line) {
        if (line == "valueChanged(40)")
            scene.widget->setValue(7);
    };
    move(scene.widget, {10, 70});
    // The value is told as it is by then.
    QCOMPARE(scene.recorder.take(), (QStringList{"valueChanged(40)", "valueChanged(7)", "valueChanged(7)"}));
    QCOMPARE(scene.widget->sliderPos, 27);
}

void TestScrollBarSkinBadInput::receiverSetsAnotherValueAtRelease()
{
    Scene scene;
    QVERIFY(scene.begin());
    press(scene.widget, {10, 60});
    scene.recorder.take();
    scene.recorder.afterLine = [&](const QString& line) {
        if (line == "sliderReleased()")
            scene.widget->setValue(7);
    };
    release(scene.widget, {10, 60});
    QCOMPARE(scene.recorder.take(), (QStringList{"sliderReleased()", "valueChanged(7)"}));
    QCOMPARE(scene.widget->sliderPos, 27);
}

void TestScrollBarSkinBadInput::receiverStopsTheRepeating()
{
    Scene scene;
    QVERIFY(scene.begin());
    press(scene.widget, {10, 130});
    scene.recorder.afterLine = [&](const QString&) { scene.widget->stopAutoRepeat(); };
    fire(*scene.widget);
    QVERIFY(scene.widget->findChildren<QTimer*>().isEmpty());
    QCOMPARE(scene.widget->value(), 36);
}

void TestScrollBarSkinBadInput::receiverPressesAgain()
{
    Scene scene;
    QVERIFY(scene.begin());
    int presses = 0;
    scene.recorder.afterLine = [&](const QString& line) {
        if (line == "nextLine()" && ++presses < 5)
            press(scene.widget, {10, 130});
    };
    press(scene.widget, {10, 130});
    QCOMPARE(scene.widget->value(), 30 + 5 * 3);
    QCOMPARE(scene.widget->findChildren<QTimer*>().size(), 1);
    release(scene.widget, {10, 130});
    QVERIFY(scene.widget->findChildren<QTimer*>().isEmpty());
}

void TestScrollBarSkinBadInput::deletedWhileRepeating()
{
    Scene scene;
    QVERIFY(scene.begin());
    press(scene.widget, {10, 130});
    const QPointer<QTimer> timer = scene.widget->repeater;
    QVERIFY(timer);
    delete scene.widget;
    QVERIFY(timer.isNull());
}

void TestScrollBarSkinBadInput::sizes_data()
{
    QTest::addColumn<int>("width");
    for (const int width : {0, 1, 2, 3, 5, 19, 20, 21, 60, 500})
        QTest::addRow("width %d", width) << width;
}

void TestScrollBarSkinBadInput::sizes()
{
    QFETCH(int, width);
    Window window;
    Bar bar(&window);
    Bar ranged(0, 80, 3, 20, 30, &window);
    QVERIFY(window.expose());
    for (Bar* one : {&bar, &ranged}) {
        for (const int height : {0, 1, 2, 3, 4, 5, 10, 19, 20, 21, 37, 38, 39, 40, 41, 47, 48, 49, 50, 51, 999}) {
            one->resize(width, height);
            one->setRange(0, 80);
            exercise(*one);
            verifyDrawn(*one);
            one->setAlphaOverride(100);
            verifyDrawn(*one);
            one->setRange(8, 8);
            exercise(*one);
            one->repaint(true);
        }
    }
}

void TestScrollBarSkinBadInput::ranges_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    const int ends[] = {lowest, lowest + 1, -0x40000000, -1, 0, 1, 0x3fffffff, 0x40000000, highest - 1, highest};
    for (const int minimum : ends)
        for (const int maximum : ends)
            QTest::addRow("%d to %d", minimum, maximum) << minimum << maximum;
}

void TestScrollBarSkinBadInput::ranges()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    BarStage stage;
    QVERIFY(stage.begin(30));
    Bar& bar = stage.bar;
    for (const int page : {0, 1, 0x40000000, highest}) {
        bar.setSteps(page, page);
        bar.setRange(minimum, maximum);
        QCOMPARE(bar.minValue(), minimum);
        QCOMPARE(bar.maxValue(), qMax(minimum, maximum));
        if (bar.maxValue() > minimum && qint64(maximum) - minimum >= 0x40000000)
            QCOMPARE(bar.sliderRect().height(), 10);
        exercise(bar);
    }
    bar.setRange(0, 80);
    bar.setMinValue(minimum);
    bar.setMaxValue(maximum);
    exercise(bar);
}

void TestScrollBarSkinBadInput::steps_data()
{
    QTest::addColumn<int>("step");
    for (const int step : {lowest, lowest + 1, -1, 0, 1, highest})
        QTest::addRow("%d", step) << step;
}

void TestScrollBarSkinBadInput::steps()
{
    QFETCH(int, step);
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.setLineStep(step);
    stage.bar.setPageStep(step);
    QVERIFY(stage.bar.lineStep() >= 0);
    QVERIFY(stage.bar.pageStep() >= 0);
    exercise(stage.bar);
    stage.bar.setValue(30);
    stage.bar.action(AddLine);
    QCOMPARE(stage.bar.value(), int(qMin<qint64>(80, 30 + qAbs(qint64(step)))));
    stage.bar.setRange(lowest, highest);
    exercise(stage.bar);
}

void TestScrollBarSkinBadInput::veryHighBar_data()
{
    QTest::addColumn<bool>("oneValue");
    QTest::newRow("short thumb") << false;
    QTest::newRow("thumb as long as the trough") << true;
}

// A bar as high as a widget can be holds pictures of some megabytes only. Its parts work as in any other.
void TestScrollBarSkinBadInput::veryHighBar()
{
    QFETCH(bool, oneValue);
    BarStage stage;
    QVERIFY(stage.begin(30));
    Bar& bar = stage.bar;
    bar.resize(20, QWIDGETSIZE_MAX);
    bar.setRange(0, oneValue ? 0 : 1);
    for (const QImage* picture : {&bar.troughImage, &bar.thumbImage, &bar.thumbPressedImage})
        QVERIFY(picture->sizeInBytes() <= 8 * 1024 * 1024);
    QCOMPARE(bar.grab(QRect(0, 0, 20, 200)).size(), QSize(20, 200));
    QCOMPARE(bar.grab(QRect(0, QWIDGETSIZE_MAX - 200, 20, 200)).size(), QSize(20, 200));
    const QImage bottom = bar.grab(QRect(0, QWIDGETSIZE_MAX - 20, 20, 20)).toImage();
    COMPARE_PICTURES(withAlphaBytes(bottom, 255), builtin("scroll_add_normal"));
    bar.setAlphaOverride(9);
    const qint64 trough = QWIDGETSIZE_MAX - 40;
    QCOMPARE(bar.sliderRect().height(), int(oneValue ? trough : 20 * trough / 21));
    exercise(bar);
}

void TestScrollBarSkinBadInput::farPositions()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    Bar& bar = stage.bar;
    for (const int position : {-1000000000, 0, 1000000000}) {
        bar.sliderPos = position;
        (void)bar.pointOver({10, 60});
        (void)bar.sliderRect();
        press(&bar, {10, 60});
        move(&bar, {10, 61});
        release(&bar, {10, 61});
        verifySound(bar);
    }
}

void TestScrollBarSkinBadInput::unknownControls_data()
{
    QTest::addColumn<int>("control");
    for (const int control : {0x00, 0x03, 0x41, 0x7f, 0xff})
        QTest::addRow("%d", control) << control;
}

void TestScrollBarSkinBadInput::unknownControls()
{
    QFETCH(int, control);
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.action(static_cast<ScrollBarControl>(control));
    stage.bar.pressedControl = static_cast<ScrollBarControl>(control);
    stage.bar.clickedAt = true;
    stage.bar.doAutoRepeat();
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.bar.grab().size(), QSize(20, 140));
    stage.take();
    release(&stage.bar, {10, 10});
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.bar.value(), 30);
}

void TestScrollBarSkinBadInput::constructorNumbers_data()
{
    QTest::addColumn<QList<int>>("given");
    QTest::newRow("least") << QList<int>{lowest, lowest, lowest, lowest, lowest};
    QTest::newRow("most") << QList<int>{highest, highest, highest, highest, highest};
    QTest::newRow("every int") << QList<int>{lowest, highest, highest, highest, 0};
    QTest::newRow("the wrong way round") << QList<int>{highest, lowest, lowest, highest, 0};
    QTest::newRow("all 0") << QList<int>{0, 0, 0, 0, 0};
}

void TestScrollBarSkinBadInput::constructorNumbers()
{
    QFETCH(QList<int>, given);
    Window window;
    Bar bar(given[0], given[1], given[2], given[3], given[4], &window);
    bar.setGeometry(0, 0, 20, 140);
    verifySound(bar);
    QVERIFY(window.expose());
    exercise(bar);
    bar.loadPictures();
    exercise(bar);
}

void TestScrollBarSkinBadInput::withoutWindow()
{
    Bar bar;
    exercise(bar);
    bar.stopAutoRepeat();
    bar.stopAutoRepeat();
    bar.redrawMiddle();
    Bar sized(QSize(-5, highest));
    exercise(sized);
}

QTEST_MAIN(TestScrollBarSkinBadInput)

#include "tst_scrollbarskin_badinput.moc"
