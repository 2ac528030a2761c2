#include "scroll/scrollbarfixture.h"

#include <QMetaMethod>

using namespace bartest;

namespace
{

// A bar of any size without a window.
struct LooseBar {
    explicit LooseBar(const QSize& size = QSize(20, 140))
    {
        bar.setGeometry(0, 0, size.width(), size.height());
        bar.setRange(0, 80);
        bar.setSteps(3, 20);
    }

    QWidget parent;
    Bar bar{&parent};
};

QList<int> numbers(const ScrollBarSkin& bar)
{
    return {bar.minValue(), bar.maxValue(), bar.lineStep(), bar.pageStep(), bar.value()};
}

QList<int> metricsOf(const ScrollBarSkin& bar)
{
    QList<int> result{-7, -7, -7, -7};
    bar.scrollBarMetrics(result[0], result[1], result[2], result[3]);
    return result;
}

// Which notifications arrive, and in which state.
class NotifiedBar : public Bar
{
public:
    using Bar::Bar;

    QStringList notified;

protected:
    void valueChange() override
    {
        notified << QStringLiteral("valueChange %1").arg(value());
        Bar::valueChange();
    }
    void rangeChange() override
    {
        notified << QStringLiteral("rangeChange %1 %2, value %3").arg(minValue()).arg(maxValue()).arg(value());
        Bar::rangeChange();
    }
    void stepChange() override
    {
        notified << QStringLiteral("stepChange %1 %2").arg(lineStep()).arg(pageStep());
        Bar::stepChange();
    }
};

} // namespace

class TestScrollBarSkin : public QuietTest
{
    Q_OBJECT

private slots:
    void usualConstructor();
    void rangeConstructor();
    void rangeConstructorBounds_data();
    void rangeConstructorBounds();
    void sizeConstructor();
    void idleFromConstruction_data();
    void idleFromConstruction();
    void initMakesIdle();
    void bases();
    void metaObject_data();
    void metaObject();
    void controlNumbers();
    void noOrientation();

    void setValue_data();
    void setValue();
    void valueSetWithoutSteppingTheThumb();
    void setRange_data();
    void setRange();
    void steps_data();
    void steps();
    void stepsLeaveThumbAndPicture();
    void notifications();
    void valueChangePlacesTheThumb();
    void rangeChangePlacesTheThumb();
    void rangeChangeWithoutTrough();
    void signalsComeAfterTheState();
    void slidersAreNeverMoved();

    void scrollBarMetrics_data();
    void scrollBarMetrics();
    void sliderRect_data();
    void sliderRect();
    void rangeValueToSliderPos_data();
    void rangeValueToSliderPos();
    void sliderPosToRangeValue_data();
    void sliderPosToRangeValue();
    void calculateValueFromSlider();
    void positionSliderFromValue();
    void initPosition_data();
    void initPosition();
    void metricsFromWidthPlacesFromPicture();
    void pointOver_data();
    void pointOver();
    void pointOverFollowsTheThumb();
    void sizeHint_data();
    void sizeHint();
    void action_data();
    void action();
    void actionAtTheEnd_data();
    void actionAtTheEnd();

    void resizing();
    void resizingUpdatesTheMask();
};

void TestScrollBarSkin::usualConstructor()
{
    QWidget parent;
    const Bar bar(&parent, "vertical");
    QCOMPARE(bar.parentWidget(), &parent);
    QCOMPARE(bar.objectName(), QStringLiteral("vertical"));
    QCOMPARE(numbers(bar), (QList<int>{0, 99, 1, 10, 0}));
    QVERIFY(!bar.thumbImage.isNull());
    QVERIFY(!bar.thumbPressedImage.isNull());
    QCOMPARE(bar.subRect, QRect(0, 0, 20, 20));
    QCOMPARE(bar.middleRect, QRect(0, 20, bar.width(), bar.height() - 40));
    QCOMPARE(bar.addRect, QRect(0, bar.height() - 20, bar.width(), 20));

    const Bar plain;
    QCOMPARE(plain.parentWidget(), nullptr);
    QCOMPARE(plain.objectName(), QString());
    QCOMPARE(numbers(plain), (QList<int>{0, 99, 1, 10, 0}));
    // Unlike the child it is high enough for a trough at once.
    QCOMPARE(plain.troughImage.size(), QSize(20, plain.height() - 40));
}

void TestScrollBarSkin::rangeConstructor()
{
    QWidget parent;
    const Bar bar(-5, 50, 2, 7, 13, &parent, "ranged");
    QCOMPARE(bar.parentWidget(), &parent);
    QCOMPARE(bar.objectName(), QStringLiteral("ranged"));
    QCOMPARE(numbers(bar), (QList<int>{-5, 50, 2, 7, 13}));
    QVERIFY(bar.troughImage.isNull());
    QVERIFY(bar.thumbImage.isNull());
    QVERIFY(bar.thumbPressedImage.isNull());

    const Bar plain(1, 2, 3, 4, 2);
    QCOMPARE(plain.parentWidget(), nullptr);
    QCOMPARE(plain.objectName(), QString());
}

void TestScrollBarSkin::rangeConstructorBounds_data()
{
    QTest::addColumn<QList<int>>("given");
    QTest::addColumn<QList<int>>("taken");
    const auto row = [](const char* name, const QList<int>& given, const QList<int>& taken) {
        QTest::newRow(name) << given << taken;
    };
    row("value above", {0, 10, 1, 2, 11}, {0, 10, 1, 2, 10});
    row("value below", {0, 10, 1, 2, -1}, {0, 10, 1, 2, 0});
    row("maximum below the minimum", {10, 0, 1, 2, 5}, {10, 10, 1, 2, 10});
    row("negative steps", {0, 10, -1, -2, 5}, {0, 10, 1, 2, 5});
}

void TestScrollBarSkin::rangeConstructorBounds()
{
    QFETCH(QList<int>, given);
    QFETCH(QList<int>, taken);
    QCOMPARE(numbers(Bar(given[0], given[1], given[2], given[3], given[4])), taken);
}

void TestScrollBarSkin::sizeConstructor()
{
    QWidget parent;
    const Bar usual(&parent);
    const Bar bar(QSize(123, 456), &parent, "sized");
    QCOMPARE(bar.parentWidget(), &parent);
    QCOMPARE(bar.objectName(), QStringLiteral("sized"));
    QCOMPARE(numbers(bar), (QList<int>{0, 99, 1, 10, 0}));
    // Intended: the size is not used.
    QCOMPARE(bar.size(), usual.size());
    QCOMPARE(bar.minimumSize(), usual.minimumSize());
    QCOMPARE(bar.maximumSize(), usual.maximumSize());
    QCOMPARE(bar.sizeHint(), usual.sizeHint());
    QVERIFY(bar.troughImage.isNull());
    QVERIFY(bar.thumbImage.isNull());

    const Bar plain(QSize(1, 1));
    QCOMPARE(plain.parentWidget(), nullptr);
    QCOMPARE(plain.objectName(), QString());
}

void TestScrollBarSkin::idleFromConstruction_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("usual") << 0;
    QTest::newRow("with a range") << 1;
    QTest::newRow("with a size") << 2;
}

void TestScrollBarSkin::idleFromConstruction()
{
    QFETCH(int, kind);
    QWidget parent;
    const std::unique_ptr<Bar> bar(kind == 0   ? new Bar(&parent)
                                   : kind == 1 ? new Bar(0, 10, 1, 2, 10, &parent)
                                               : new Bar(QSize(9, 9), &parent));
    QCOMPARE(int(bar->pressedControl), int(None));
    QCOMPARE(bar->clickedAt, false);
    QCOMPARE(bar->sliderPos, 0);
    QCOMPARE(bar->repeater, nullptr);
    QCOMPARE(bar->findChildren<QTimer*>().size(), 0);
    QCOMPARE(bar->focusPolicy(), Qt::NoFocus);
    QCOMPARE(bar->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(bar->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
}

void TestScrollBarSkin::initMakesIdle()
{
    LooseBar loose;
    Bar& bar = loose.bar;
    bar.setValue(30);
    bar.pressedControl = AddLine;
    bar.clickedAt = true;
    bar.startAutoRepeat();
    bar.setFocusPolicy(Qt::StrongFocus);
    bar.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    bar.ScrollBarSkin::init();
    QCOMPARE(int(bar.pressedControl), int(None));
    QCOMPARE(bar.clickedAt, false);
    QCOMPARE(bar.sliderPos, 0);
    QCOMPARE(bar.repeater, nullptr);
    QCOMPARE(bar.focusPolicy(), Qt::NoFocus);
    QCOMPARE(bar.sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(bar.sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    // The range control is left alone.
    QCOMPARE(numbers(bar), (QList<int>{0, 80, 3, 20, 30}));
}

void TestScrollBarSkin::bases()
{
    Bar bar;
    QVERIFY(qobject_cast<SkinBase*>(&bar));
    QRangeControl* control = &bar;
    control->setValue(5);
    QCOMPARE(bar.value(), 5);
    QVERIFY(bar.testWFlags(Qt::WRepaintNoErase));
    QVERIFY(bar.testWFlags(Qt::WResizeNoErase));
}

void TestScrollBarSkin::metaObject_data()
{
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<bool>("isSignal");
    for (const char* one : {"valueChanged(int)", "sliderPressed()", "sliderMoved(int)", "sliderReleased()",
                            "nextLine()", "prevLine()", "nextPage()", "prevPage()"})
        QTest::newRow(one) << QByteArray(one) << true;
    QTest::newRow("doAutoRepeat()") << QByteArray("doAutoRepeat()") << false;
}

void TestScrollBarSkin::metaObject()
{
    QFETCH(QByteArray, signature);
    QFETCH(bool, isSignal);
    const QMetaObject& meta = ScrollBarSkin::staticMetaObject;
    const int index = meta.indexOfMethod(signature);
    QVERIFY(index >= meta.methodOffset());
    QCOMPARE(meta.method(index).methodType(), isSignal ? QMetaMethod::Signal : QMetaMethod::Slot);
    QCOMPARE(meta.method(index).access(), QMetaMethod::Public);
    // There are eight signals and one slot, no more.
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 9);
}

void TestScrollBarSkin::controlNumbers()
{
    QCOMPARE(sizeof(ScrollBarControl), size_t(1));
    const QList<int> controls{AddLine, SubLine, AddPage, SubPage, First, Last, Slider, None};
    QCOMPARE(controls, (QList<int>{0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80}));
}

// A bar that is wider than high is as vertical as any other.
void TestScrollBarSkin::noOrientation()
{
    LooseBar loose(QSize(140, 60));
    QCOMPARE(metricsOf(loose.bar), (QList<int>{29, 29, 2, 29}));
    QCOMPARE(int(loose.bar.pointOver({139, 5})), int(SubLine));
    QCOMPARE(int(loose.bar.pointOver({1, 59})), int(AddLine));
}

void TestScrollBarSkin::setValue_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("another value") << 31 << QStringList{"paint 6,50 8x21", "valueChanged(31)"};
    QTest::newRow("a smaller one") << 10 << QStringList{"paint 6,30 8x40", "valueChanged(10)"};
    QTest::newRow("the same") << 30 << QStringList{};
    QTest::newRow("the end") << 80 << QStringList{"paint 6,50 8x70", "valueChanged(80)"};
    QTest::newRow("beyond the end") << 81 << QStringList{"paint 6,50 8x70", "valueChanged(80)"};
    QTest::newRow("below the start") << -1 << QStringList{"paint 6,20 8x50", "valueChanged(0)"};
    QTest::newRow("far away") << highest << QStringList{"paint 6,50 8x70", "valueChanged(80)"};
}

// The thumb is repainted over both its places, then the value is told.
void TestScrollBarSkin::setValue()
{
    QFETCH(int, value);
    QFETCH(QStringList, expected);
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.setValue(value);
    QCOMPARE(stage.take(), expected);
    QCOMPARE(stage.bar.value(), qBound(0, value, 80));
    QCOMPARE(stage.bar.sliderPos, 20 + stage.bar.value());
    QCOMPARE(stage.bar.thumbRect, QRect(6, 20 + stage.bar.value(), 8, 20));
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollBarSkin::valueSetWithoutSteppingTheThumb()
{
    BarStage stage;
    stage.bar.setRange(0, 8000);
    QVERIFY(stage.begin(3000));
    const int position = stage.bar.sliderPos;
    stage.bar.setValue(3001);
    QCOMPARE(stage.bar.sliderPos, position);
    QCOMPARE(stage.take(), QStringList{"valueChanged(3001)"});
    stage.bar.valueChange();
    QCOMPARE(stage.take(), QStringList{"valueChanged(3001)"});
}

void TestScrollBarSkin::setRange_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<int>("argument");
    QTest::addColumn<QList<int>>("expected");
    QTest::addColumn<QStringList>("log");
    const QString trough = "paint 0,20 20x100";
    QTest::newRow("minimum") << 0 << 10 << QList<int>{10, 80, 3, 20, 30} << QStringList{trough};
    QTest::newRow("minimum beyond the value")
        << 0 << 40 << QList<int>{40, 80, 3, 20, 40} << QStringList{trough, "valueChanged(40)"};
    QTest::newRow("minimum beyond the maximum")
        << 0 << 90 << QList<int>{90, 90, 3, 20, 90} << QStringList{trough, "valueChanged(90)"};
    QTest::newRow("negative minimum") << 0 << -10 << QList<int>{-10, 80, 3, 20, 30} << QStringList{trough};
    QTest::newRow("the same minimum") << 0 << 0 << QList<int>{0, 80, 3, 20, 30} << QStringList{};
    QTest::newRow("maximum") << 1 << 100 << QList<int>{0, 100, 3, 20, 30} << QStringList{trough};
    QTest::newRow("maximum below the value")
        << 1 << 20 << QList<int>{0, 20, 3, 20, 20} << QStringList{trough, "valueChanged(20)"};
    QTest::newRow("maximum below the minimum")
        << 1 << -5 << QList<int>{0, 0, 3, 20, 0} << QStringList{trough, "valueChanged(0)"};
    QTest::newRow("the same maximum") << 1 << 80 << QList<int>{0, 80, 3, 20, 30} << QStringList{};
}

void TestScrollBarSkin::setRange()
{
    QFETCH(int, operation);
    QFETCH(int, argument);
    QFETCH(QList<int>, expected);
    QFETCH(QStringList, log);
    BarStage stage;
    QVERIFY(stage.begin(30));
    if (operation == 0)
        stage.bar.setMinValue(argument);
    else
        stage.bar.setMaxValue(argument);
    QCOMPARE(numbers(stage.bar), expected);
    QCOMPARE(stage.take(), log);
    QCOMPARE(stage.bar.sliderPos, stage.bar.rangeValueToSliderPos(expected[4]));
    QCOMPARE(stage.bar.thumbRect, stage.bar.sliderRect());
}

void TestScrollBarSkin::steps_data()
{
    QTest::addColumn<bool>("line");
    QTest::addColumn<int>("step");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("line") << true << 5 << QList<int>{0, 80, 5, 20, 30};
    QTest::newRow("page") << false << 50 << QList<int>{0, 80, 3, 50, 30};
    QTest::newRow("negative line") << true << -5 << QList<int>{0, 80, 5, 20, 30};
    QTest::newRow("negative page") << false << -50 << QList<int>{0, 80, 3, 50, 30};
    QTest::newRow("no page") << false << 0 << QList<int>{0, 80, 3, 0, 30};
    QTest::newRow("the least of all") << true << lowest << QList<int>{0, 80, highest, 20, 30};
}

void TestScrollBarSkin::steps()
{
    QFETCH(bool, line);
    QFETCH(int, step);
    QFETCH(QList<int>, expected);
    BarStage stage;
    QVERIFY(stage.begin(30));
    if (line)
        stage.bar.setLineStep(step);
    else
        stage.bar.setPageStep(step);
    QCOMPARE(numbers(stage.bar), expected);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

// Intended: only a new range or size composes the thumb in its new length.
void TestScrollBarSkin::stepsLeaveThumbAndPicture()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.setPageStep(80);
    QCOMPARE(stage.bar.sliderPos, 50);
    QCOMPARE(stage.bar.thumbImage.size(), QSize(8, 20));
    QCOMPARE(stage.bar.thumbRect, QRect(6, 50, 8, 20));
    QCOMPARE(stage.bar.sliderRect(), QRect(6, 50, 8, 50));
    stage.bar.setMaxValue(81);
    QCOMPARE(stage.bar.thumbImage.size(), QSize(8, 49));
}

void TestScrollBarSkin::notifications()
{
    NotifiedBar bar;
    bar.resize(20, 140);
    bar.setValue(5);
    bar.setValue(5);
    bar.setLineStep(2);
    bar.setPageStep(9);
    bar.setPageStep(-9);
    bar.setMinValue(6);
    bar.setMaxValue(50);
    QCOMPARE(bar.notified, (QStringList{"valueChange 5", "stepChange 2 10", "stepChange 2 9",
                                        "rangeChange 6 99, value 5", "valueChange 6", "rangeChange 6 50, value 6"}));
}

void TestScrollBarSkin::valueChangePlacesTheThumb()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.directSetValue(40);
    QCOMPARE(stage.bar.sliderPos, 50);
    QCOMPARE(stage.take(), QStringList());
    stage.bar.valueChange();
    QCOMPARE(stage.bar.sliderPos, 60);
    QCOMPARE(stage.bar.thumbRect, QRect(6, 60, 8, 20));
    QCOMPARE(stage.take(), (QStringList{"paint 6,50 8x30", "valueChanged(40)"}));
}

void TestScrollBarSkin::rangeChangePlacesTheThumb()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.directSetValue(40);
    stage.bar.rangeChange();
    QCOMPARE(stage.bar.sliderPos, 60);
    QCOMPARE(stage.bar.thumbRect, QRect(6, 60, 8, 20));
    QCOMPARE(stage.take(), QStringList{"paint 0,20 20x100"});
    stage.bar.stepChange();
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

// A bar that is lower than its buttons has no trough to repaint, and not the whole bar in its stead.
void TestScrollBarSkin::rangeChangeWithoutTrough()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.resize(20, 30);
    QVERIFY(stage.window.settle());
    stage.take();
    stage.bar.setRange(0, 50);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollBarSkin::signalsComeAfterTheState()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    QList<int> seen;
    connect(&stage.bar, &ScrollBarSkin::valueChanged, &stage.bar,
            [&](int value) { seen << value << stage.bar.value() << stage.bar.sliderPos << stage.bar.thumbRect.top(); });
    stage.bar.setValue(50);
    QCOMPARE(seen, (QList<int>{50, 50, 70, 70}));
}

// Intended: the signal is there for the interface only.
void TestScrollBarSkin::slidersAreNeverMoved()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    press(&stage.bar, {10, 60});
    for (int y = 40; y < 140; y += 7)
        move(&stage.bar, {10.0, double(y)});
    release(&stage.bar, {10, 100});
    stage.bar.setValue(3);
    stage.bar.setRange(5, 9);
    for (const ScrollBarControl control : {AddLine, SubLine, AddPage, SubPage, First, Last, Slider, None})
        stage.bar.action(control);
    const QStringList log = stage.take();
    QVERIFY(log.contains("valueChanged(3)"));
    QCOMPARE(log.filter("sliderMoved"), QStringList());
    QCOMPARE(log.filter("button_clicked"), QStringList());
}

void TestScrollBarSkin::scrollBarMetrics_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("page");
    QTest::addColumn<QList<int>>("expected");
    const auto row = [](const char* name, const QSize& size, int minimum, int maximum, int page,
                        const QList<int>& expected) {
        QTest::newRow(name) << size << minimum << maximum << page << expected;
    };
    const QSize usual(20, 140);
    // Least and greatest position, length, button.
    row("plain", usual, 0, 80, 20, {20, 100, 20, 20});
    row("the range does not begin at 0", usual, 1000, 1080, 20, {20, 100, 20, 20});
    row("negative range", usual, -1080, -1000, 20, {20, 100, 20, 20});
    row("rounded down", usual, 0, 200, 100, {20, 87, 33, 20});
    row("wider bar, longer buttons", {30, 140}, 0, 80, 20, {30, 94, 16, 30});
    row("minimum is maximum", usual, 7, 7, 20, {20, 20, 100, 20});
    row("page larger than the range", usual, 0, 10, 990, {20, 21, 99, 20});
    row("page that fills the trough", usual, 0, 1, highest, {20, 21, 99, 20});

    row("length 11", usual, 0, 89, 11, {20, 109, 11, 20});
    row("length 10", usual, 0, 90, 10, {20, 110, 10, 20});
    row("length 9 becomes 10", usual, 0, 91, 9, {20, 110, 10, 20});
    row("page 0", usual, 0, 80, 0, {20, 110, 10, 20});
    row("length 0 becomes 10", usual, 0, 80000, 1, {20, 110, 10, 20});

    row("largest range that is scaled", usual, 0, 0x3fffffff, 0x3fffffff, {20, 70, 50, 20});
    row("a range too large to scale", usual, 0, 0x40000000, 0x40000000, {20, 110, 10, 20});
    row("the same from below 0", usual, -0x20000000, 0x20000000, 0x40000000, {20, 110, 10, 20});
    row("largest scaled from below 0", usual, -0x20000000, 0x1fffffff, 0x3fffffff, {20, 70, 50, 20});
    row("as large as int", usual, 0, highest, highest, {20, 110, 10, 20});
    row("one that overflows", usual, -1, highest, highest, {20, 110, 10, 20});
    row("every int", usual, lowest, highest, highest, {20, 110, 10, 20});
    row("too large for a short trough", {20, 45}, lowest, highest, 1, {20, 20, 5, 20});

    row("trough of 11", {20, 51}, 0, 80, 1, {20, 21, 10, 20});
    row("trough of 10", {20, 50}, 0, 80, 1, {20, 20, 10, 20});
    row("trough of 9", {20, 49}, 0, 80, 1, {20, 20, 9, 20});
    row("trough of 9, minimum is maximum", {20, 49}, 0, 0, 1, {20, 20, 9, 20});
    row("trough of 0", {20, 40}, 0, 80, 20, {20, 20, 0, 20});
    row("twice the width less one", {20, 39}, 0, 80, 20, {20, 20, -1, 20});
    row("twice the width less one, one value", {20, 39}, 0, 0, 20, {20, 20, -1, 20});
    row("buttons shrink from here on", {20, 38}, 0, 80, 20, {18, 18, 2, 18});
    row("odd height", {20, 37}, 0, 80, 20, {17, 17, 3, 17});
    row("even lower", {20, 11}, 0, 80, 20, {4, 4, 3, 4});
    row("height 4", {20, 4}, 0, 80, 20, {1, 1, 2, 1});
    row("height 3", {20, 3}, 0, 80, 20, {0, 0, 3, 0});
    row("height 2", {20, 2}, 0, 80, 20, {0, 0, 2, 0});
    row("height 1", {20, 1}, 0, 80, 20, {-1, -1, 3, -1});
    row("height 0", {20, 0}, 0, 80, 20, {-1, -1, 2, -1});
    row("height 0, one value", {20, 0}, 0, 0, 20, {-1, -1, 2, -1});
    row("width 0", {0, 140}, 0, 80, 20, {0, 112, 28, 0});
    row("width 1", {1, 140}, 0, 80, 20, {1, 112, 27, 1});
    row("no size", {0, 0}, 0, 80, 20, {0, 0, 0, 0});
    row("width 1, height 1", {1, 1}, 0, 80, 20, {1, 1, -1, 1});
}

void TestScrollBarSkin::scrollBarMetrics()
{
    QFETCH(QSize, size);
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(int, page);
    QFETCH(QList<int>, expected);
    LooseBar loose(size);
    Bar& bar = loose.bar;
    QCOMPARE(bar.size(), size);
    bar.setSteps(1, page);
    bar.setRange(minimum, maximum);
    QCOMPARE(metricsOf(bar), expected);

    QList<int> same(4);
    bar.metrics(same[0], same[1], same[2], same[3]);
    QCOMPARE(same, expected);
    int least = 0;
    int most = 0;
    bar.sliderMinMax(least, most);
    QCOMPARE(QList<int>({least, most}), expected.mid(0, 2));
    QCOMPARE(bar.sliderRect().height(), expected[2]);

    // The thumb never leaves the span.
    bar.setValue(minimum);
    QCOMPARE(bar.sliderPos, expected[0]);
    bar.setValue(maximum);
    QCOMPARE(bar.sliderPos, minimum == maximum ? expected[0] : expected[1]);
}

void TestScrollBarSkin::sliderRect_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("value");
    QTest::addColumn<QRect>("expected");
    QTest::newRow("start") << QSize(20, 140) << 0 << QRect(6, 20, 8, 20);
    QTest::newRow("middle") << QSize(20, 140) << 33 << QRect(6, 53, 8, 20);
    QTest::newRow("end") << QSize(20, 140) << 80 << QRect(6, 100, 8, 20);
    QTest::newRow("wider bar: as wide as the picture") << QSize(40, 180) << 80 << QRect(6, 120, 8, 20);
    QTest::newRow("narrow bar: from the same place") << QSize(5, 110) << 0 << QRect(6, 5, 8, 20);
}

void TestScrollBarSkin::sliderRect()
{
    QFETCH(QSize, size);
    QFETCH(int, value);
    QFETCH(QRect, expected);
    LooseBar loose(size);
    loose.bar.setValue(value);
    loose.bar.positionSliderFromValue();
    QCOMPARE(loose.bar.sliderRect(), expected);
}

void TestScrollBarSkin::rangeValueToSliderPos_data()
{
    QTest::addColumn<QList<int>>("range");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("position");
    // A trough of 100 and a thumb of 20, so a span of 80 from pixel 20 on.
    QTest::newRow("start") << QList<int>{0, 80, 20} << 0 << 20;
    QTest::newRow("end") << QList<int>{0, 80, 20} << 80 << 100;
    QTest::newRow("a pixel a value") << QList<int>{0, 80, 20} << 37 << 57;
    QTest::newRow("below the range") << QList<int>{0, 80, 20} << -10 << 20;
    QTest::newRow("above the range") << QList<int>{0, 80, 20} << 1000 << 100;
    QTest::newRow("halves up") << QList<int>{0, 160, 40} << 1 << 21;
    QTest::newRow("less than half down") << QList<int>{0, 400, 100} << 2 << 20;
    QTest::newRow("more than half up") << QList<int>{0, 400, 100} << 3 << 21;
    QTest::newRow("negative range") << QList<int>{-80, 0, 20} << -30 << 70;
    QTest::newRow("one value") << QList<int>{5, 5, 20} << 5 << 20;
    // A thumb of 10, so a span of 90.
    QTest::newRow("every int, middle") << QList<int>{lowest, highest, 20} << 0 << 65;
    QTest::newRow("every int, end") << QList<int>{lowest, highest, 20} << highest << 110;
    QTest::newRow("every int, near the end") << QList<int>{lowest, highest, 20} << highest - 1 << 110;
}

void TestScrollBarSkin::rangeValueToSliderPos()
{
    QFETCH(QList<int>, range);
    QFETCH(int, value);
    QFETCH(int, position);
    LooseBar loose;
    loose.bar.setRange(range[0], range[1]);
    loose.bar.setSteps(1, range[2]);
    QCOMPARE(loose.bar.rangeValueToSliderPos(value), position);
}

void TestScrollBarSkin::sliderPosToRangeValue_data()
{
    QTest::addColumn<QList<int>>("range");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("value");
    QTest::newRow("start") << QList<int>{0, 80, 20} << 20 << 0;
    QTest::newRow("end") << QList<int>{0, 80, 20} << 100 << 80;
    QTest::newRow("a value a pixel") << QList<int>{0, 80, 20} << 57 << 37;
    QTest::newRow("above the span") << QList<int>{0, 80, 20} << 19 << 0;
    QTest::newRow("below the span") << QList<int>{0, 80, 20} << 101 << 80;
    QTest::newRow("far above") << QList<int>{0, 80, 20} << lowest << 0;
    QTest::newRow("far below") << QList<int>{0, 80, 20} << highest << 80;
    QTest::newRow("several values a pixel") << QList<int>{0, 400, 100} << 21 << 5;
    QTest::newRow("halves up") << QList<int>{0, 40, 10} << 21 << 1;
    QTest::newRow("several pixels a value") << QList<int>{0, 8, 2} << 24 << 0;
    QTest::newRow("several pixels a value, half way") << QList<int>{0, 8, 2} << 25 << 1;
    QTest::newRow("negative range") << QList<int>{-80, 0, 20} << 70 << -30;
    QTest::newRow("one value") << QList<int>{5, 5, 20} << 60 << 5;
    QTest::newRow("every int, start") << QList<int>{lowest, highest, 20} << 20 << lowest;
    QTest::newRow("every int, end") << QList<int>{lowest, highest, 20} << 110 << highest;
    QTest::newRow("every int, middle") << QList<int>{lowest, highest, 20} << 65 << 0;
}

void TestScrollBarSkin::sliderPosToRangeValue()
{
    QFETCH(QList<int>, range);
    QFETCH(int, position);
    QFETCH(int, value);
    LooseBar loose;
    loose.bar.setRange(range[0], range[1]);
    loose.bar.setSteps(1, range[2]);
    QCOMPARE(loose.bar.sliderPosToRangeValue(position), value);
}

void TestScrollBarSkin::calculateValueFromSlider()
{
    LooseBar loose;
    loose.bar.setValue(30);
    for (const int position : {20, 45, 100, 0, 500}) {
        loose.bar.sliderPos = position;
        QCOMPARE(loose.bar.calculateValueFromSlider(), qBound(0, position - 20, 80));
    }
    QCOMPARE(loose.bar.value(), 30);
}

void TestScrollBarSkin::positionSliderFromValue()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    const QRect before = stage.bar.thumbRect;
    stage.bar.sliderPos = 3;
    stage.bar.positionSliderFromValue();
    QCOMPARE(stage.bar.sliderPos, 50);
    stage.bar.directSetValue(40);
    stage.bar.positionSliderFromValue();
    QCOMPARE(stage.bar.sliderPos, 60);
    QCOMPARE(stage.bar.thumbRect, before);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestScrollBarSkin::initPosition_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("sub");
    QTest::addColumn<QRect>("middle");
    QTest::addColumn<QRect>("add");
    QTest::newRow("plain") << QSize(20, 140) << QRect(0, 0, 20, 20) << QRect(0, 20, 20, 100) << QRect(0, 120, 20, 20);
    QTest::newRow("wide") << QSize(33, 140) << QRect(0, 0, 20, 20) << QRect(0, 20, 33, 100) << QRect(0, 120, 33, 20);
    QTest::newRow("narrow") << QSize(7, 140) << QRect(0, 0, 20, 20) << QRect(0, 20, 7, 100) << QRect(0, 120, 7, 20);
    QTest::newRow("low") << QSize(20, 30) << QRect(0, 0, 20, 20) << QRect(0, 20, 20, -10) << QRect(0, 10, 20, 20);
    QTest::newRow("flat") << QSize(20, 0) << QRect(0, 0, 20, 20) << QRect(0, 20, 20, -40) << QRect(0, -20, 20, 20);
}

void TestScrollBarSkin::initPosition()
{
    QFETCH(QSize, size);
    QFETCH(QRect, sub);
    QFETCH(QRect, middle);
    QFETCH(QRect, add);
    LooseBar loose(size);
    Bar ranged(0, 10, 1, 2, 3, &loose.parent);
    ranged.setGeometry(loose.bar.geometry());
    for (Bar* bar : {&loose.bar, &ranged}) {
        bar->init_position();
        QCOMPARE(bar->subRect, sub);
        QCOMPARE(bar->middleRect, middle);
        QCOMPARE(bar->addRect, add);
    }
    // Of the picture's size nothing but the places follows.
    ranged.show();
    QVERIFY(ranged.troughImage.isNull());
}

// Intended: the buttons react as high as the bar is wide, and are drawn as high as their picture.
void TestScrollBarSkin::metricsFromWidthPlacesFromPicture()
{
    LooseBar loose(QSize(12, 140));
    Bar& bar = loose.bar;
    bar.init_position();
    QCOMPARE(metricsOf(bar).at(3), 12);
    QCOMPARE(bar.subRect.height(), 20);
    QVERIFY(bar.subRect.contains(QPoint(5, 15)));
    bar.setValue(80);
    QCOMPARE(int(bar.pointOver({5, 11})), int(SubLine));
    QCOMPARE(int(bar.pointOver({5, 12})), int(SubPage));
    QVERIFY(bar.addRect.contains(QPoint(5, 125)));
    bar.setValue(0);
    QCOMPARE(int(bar.pointOver({5, 125})), int(AddPage));
    QCOMPARE(int(bar.pointOver({5, 127})), int(AddPage));
    QCOMPARE(int(bar.pointOver({5, 128})), int(AddLine));
}

void TestScrollBarSkin::pointOver_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<int>("control");
    const auto row = [](const char* name, int x, int y, ScrollBarControl control) {
        QTest::newRow(name) << QPoint(x, y) << int(control);
    };
    // The thumb covers pixels 50 to 69.
    row("first pixel", 0, 0, SubLine);
    row("top right", 19, 0, SubLine);
    row("top button's last row", 10, 19, SubLine);
    row("trough's first row", 10, 20, SubPage);
    row("last row above the thumb", 10, 49, SubPage);
    row("thumb's first row", 10, 50, Slider);
    row("thumb's last row", 10, 69, Slider);
    row("left of the thumb's picture", 0, 60, Slider);
    row("right of the thumb's picture", 19, 60, Slider);
    row("first row below the thumb", 10, 70, AddPage);
    row("trough's last row", 10, 119, AddPage);
    row("bottom button's first row", 10, 120, AddLine);
    row("last pixel", 19, 139, AddLine);
    row("left of the bar", -1, 60, None);
    row("right of the bar", 20, 60, None);
    row("above the bar", 10, -1, None);
    row("below the bar", 10, 140, None);
    row("far away", highest, lowest, None);
}

void TestScrollBarSkin::pointOver()
{
    QFETCH(QPoint, point);
    QFETCH(int, control);
    LooseBar loose;
    loose.bar.setValue(30);
    QCOMPARE(int(loose.bar.pointOver(point)), control);
}

void TestScrollBarSkin::pointOverFollowsTheThumb()
{
    LooseBar loose;
    Bar& bar = loose.bar;
    bar.setValue(0);
    QCOMPARE(int(bar.pointOver({10, 20})), int(Slider));
    QCOMPARE(int(bar.pointOver({10, 40})), int(AddPage));
    bar.setValue(80);
    QCOMPARE(int(bar.pointOver({10, 20})), int(SubPage));
    QCOMPARE(int(bar.pointOver({10, 119})), int(Slider));
    // A bar with one value has a thumb as long as its trough.
    bar.setRange(4, 4);
    QCOMPARE(int(bar.pointOver({10, 19})), int(SubLine));
    QCOMPARE(int(bar.pointOver({10, 20})), int(Slider));
    QCOMPARE(int(bar.pointOver({10, 119})), int(Slider));
    QCOMPARE(int(bar.pointOver({10, 120})), int(AddLine));
}

void TestScrollBarSkin::sizeHint_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize& size : {QSize(20, 140), QSize(77, 33), QSize(0, 0), QSize(5, 5000)})
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
}

void TestScrollBarSkin::sizeHint()
{
    QFETCH(QSize, size);
    LooseBar loose(size);
    QCOMPARE(loose.bar.sizeHint(), QSize(20, size.height()));
}

void TestScrollBarSkin::action_data()
{
    QTest::addColumn<int>("control");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("AddLine") << int(AddLine) << QStringList{"nextLine() at 30", "valueChanged(33) at 33"};
    QTest::newRow("SubLine") << int(SubLine) << QStringList{"prevLine() at 30", "valueChanged(27) at 27"};
    QTest::newRow("AddPage") << int(AddPage) << QStringList{"nextPage() at 30", "valueChanged(50) at 50"};
    QTest::newRow("SubPage") << int(SubPage) << QStringList{"prevPage() at 30", "valueChanged(10) at 10"};
    QTest::newRow("First") << int(First) << QStringList{};
    QTest::newRow("Last") << int(Last) << QStringList{};
    QTest::newRow("Slider") << int(Slider) << QStringList{};
    QTest::newRow("None") << int(None) << QStringList{};
    QTest::newRow("two parts at once") << (AddLine | SubLine) << QStringList{};
    QTest::newRow("no part") << 0 << QStringList{};
}

void TestScrollBarSkin::action()
{
    QFETCH(int, control);
    QFETCH(QStringList, expected);
    LooseBar loose;
    loose.bar.setValue(30);
    BarRecorder recorder;
    QStringList log;
    recorder.afterLine = [&](const QString& line) {
        log << QStringLiteral("%1 at %2").arg(line).arg(loose.bar.value());
    };
    recorder.watchSignals(&loose.bar);
    loose.bar.action(static_cast<ScrollBarControl>(control));
    QCOMPARE(log, expected);
    QCOMPARE(loose.bar.repeater, nullptr);
    QCOMPARE(int(loose.bar.pressedControl), int(None));
}

void TestScrollBarSkin::actionAtTheEnd_data()
{
    QTest::addColumn<int>("control");
    QTest::addColumn<int>("value");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("AddLine, close to the end") << int(AddLine) << 79 << QStringList{"nextLine()", "valueChanged(80)"};
    QTest::newRow("AddLine at the end") << int(AddLine) << 80 << QStringList{"nextLine()"};
    QTest::newRow("SubLine, close to the start") << int(SubLine) << 1 << QStringList{"prevLine()", "valueChanged(0)"};
    QTest::newRow("SubLine at the start") << int(SubLine) << 0 << QStringList{"prevLine()"};
    QTest::newRow("AddPage, close to the end") << int(AddPage) << 70 << QStringList{"nextPage()", "valueChanged(80)"};
    QTest::newRow("AddPage at the end") << int(AddPage) << 80 << QStringList{"nextPage()"};
    QTest::newRow("SubPage, close to the start") << int(SubPage) << 19 << QStringList{"prevPage()", "valueChanged(0)"};
    QTest::newRow("SubPage at the start") << int(SubPage) << 0 << QStringList{"prevPage()"};
}

void TestScrollBarSkin::actionAtTheEnd()
{
    QFETCH(int, control);
    QFETCH(int, value);
    QFETCH(QStringList, expected);
    LooseBar loose;
    loose.bar.setValue(value);
    BarRecorder recorder;
    recorder.watchSignals(&loose.bar);
    loose.bar.action(static_cast<ScrollBarControl>(control));
    QCOMPARE(recorder.take(), expected);
}

void TestScrollBarSkin::resizing()
{
    BarStage stage;
    QVERIFY(stage.begin(40));
    QCOMPARE(stage.bar.sliderPos, 60);
    stage.bar.trace = &stage.recorder;
    stage.bar.resize(24, 240);
    // Trough of 192, thumb of 38, so a span of 154.
    QCOMPARE(stage.bar.sliderPos, 24 + 77);
    QCOMPARE(stage.bar.subRect, QRect(0, 0, 20, 20));
    QCOMPARE(stage.bar.middleRect, QRect(0, 20, 24, 200));
    QCOMPARE(stage.bar.addRect, QRect(0, 220, 24, 20));
    QCOMPARE(stage.bar.thumbRect, QRect(6, 101, 8, 38));
    QCOMPARE(stage.bar.thumbImage.size(), QSize(8, 38));
    QCOMPARE(stage.bar.thumbPressedImage.size(), QSize(8, 38));
    QCOMPARE(stage.bar.troughImage.size(), QSize(20, 200));
    // Bottom button, top button (normal and pressed, not the focus picture), trough; the thumb is not composed.
    QCOMPARE(stage.take(), (QStringList{"redrawImage 0,220 20x20", "redrawImage 0,220 20x20", "redrawImage 0,0 20x20",
                                        "redrawImage 0,0 20x20", "redrawImage 0,0 20x200"}));
    QCOMPARE(stage.bar.value(), 40);
}

// What every widget of this toolkit does when it is resized.
void TestScrollBarSkin::resizingUpdatesTheMask()
{
    class MaskedBar : public Bar
    {
    public:
        using Bar::Bar;
        int updates = 0;
        void updateMask() override { ++updates; }
    };
    Window window;
    MaskedBar bar(&window);
    QVERIFY(window.expose());
    bar.setAutoMask(true);
    bar.updates = 0;
    bar.resize(20, 77);
    QCOMPARE(bar.updates, 1);
}

QTEST_MAIN(TestScrollBarSkin)

#include "tst_scrollbarskin.moc"
