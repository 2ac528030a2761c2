#include "toolkit/qrangecontrol.h"

#include <QRandomGenerator>
#include <QTest>

#include <functional>
#include <limits>
#include <memory>
#include <utility>

namespace
{

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

// Writes down every notification with the state that it finds, and runs what a test wants to happen in it.
class Control : public QRangeControl
{
public:
    using QRangeControl::directSetValue;
    using QRangeControl::positionFromValue;
    using QRangeControl::prevValue;
    using QRangeControl::QRangeControl;
    using QRangeControl::valueFromPosition;

    QStringList log;
    std::function<void()> onValue;
    std::function<void()> onRange;
    std::function<void()> onStep;

protected:
    void valueChange() override
    {
        log << QStringLiteral("value %1 was %2").arg(value()).arg(prevValue());
        runCopy(onValue);
    }
    void rangeChange() override
    {
        log << QStringLiteral("range %1 to %2 at %3").arg(minValue()).arg(maxValue()).arg(value());
        runCopy(onRange);
    }
    void stepChange() override
    {
        log << QStringLiteral("steps %1 %2").arg(lineStep()).arg(pageStep());
        runCopy(onStep);
    }

private:
    // A copy, since the function may delete the control and itself with it.
    static void runCopy(const std::function<void()>& function)
    {
        if (auto copy = function)
            copy();
    }
};

__extension__ typedef __int128 Wide;

// The nearest whole number to numerator / denominator, halves up, told by what nearest means rather than by rounding:
// 2 * denominator * result lies in (2 * numerator - denominator, 2 * numerator + denominator].
bool isNearestHalvesUp(Wide result, Wide numerator, Wide denominator)
{
    const Wide twice = 2 * denominator * result;
    return twice > 2 * numerator - denominator && twice <= 2 * numerator + denominator;
}

void checkPosition(const Control& control, int value, int space)
{
    const Wide range = Wide(control.maxValue()) - control.minValue();
    const int position = control.positionFromValue(value, space);
    const bool exact = isNearestHalvesUp(position, (Wide(value) - control.minValue()) * space, range);
    QVERIFY2(exact, qPrintable(QStringLiteral("%1 in %2 to %3 over %4 gave %5")
                                   .arg(value)
                                   .arg(control.minValue())
                                   .arg(control.maxValue())
                                   .arg(space)
                                   .arg(position)));
}

void checkValue(const Control& control, int position, int space)
{
    const Wide range = Wide(control.maxValue()) - control.minValue();
    const int value = control.valueFromPosition(position, space);
    const bool exact = isNearestHalvesUp(Wide(value) - control.minValue(), position * range, space);
    QVERIFY2(exact, qPrintable(QStringLiteral("%1 of %2 over %3 to %4 gave %5")
                                   .arg(position)
                                   .arg(space)
                                   .arg(control.minValue())
                                   .arg(control.maxValue())
                                   .arg(value)));
}

int numberBetween(QRandomGenerator& random, int low, int high)
{
    return int(low + qint64(random.generate64() % (quint64(qint64(high) - low) + 1)));
}

} // namespace

class TestQRangeControl : public QObject
{
    Q_OBJECT

private slots:
    void startsWithDefaults();
    void constructs_data();
    void constructs();
    void boundsValues_data();
    void boundsValues();
    void setsValue_data();
    void setsValue();
    void setsValueDirectly();
    void steps_data();
    void steps();
    void setsRange_data();
    void setsRange();
    void tellsRangeBeforeMovingTheValue();
    void movesTheValueAfterReentry_data();
    void movesTheValueAfterReentry();
    void setsSteps_data();
    void setsSteps();
    void positions_data();
    void positions();
    void values_data();
    void values();
    void scalesSmallRangesExactly();
    void scalesRandomRangesExactly();
    void positionsLeadBackToTheirValues();
    void survivesDeletion_data();
    void survivesDeletion();
    void survivesDeletionByANestedNotification();
    void survivesDeletionAfterANestedNotification();
    void worksOnAfterANestedNotification();
    void baseNotificationsDoNothing();
};

void TestQRangeControl::startsWithDefaults()
{
    const Control control;
    QCOMPARE(control.minValue(), 0);
    QCOMPARE(control.maxValue(), 99);
    QCOMPARE(control.lineStep(), 1);
    QCOMPARE(control.pageStep(), 10);
    QCOMPARE(control.value(), 0);
    QCOMPARE(control.prevValue(), -1);
    QVERIFY(control.log.isEmpty());
}

void TestQRangeControl::constructs_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("expectedMaximum");
    QTest::addColumn<int>("expectedLine");
    QTest::addColumn<int>("expectedPage");
    QTest::addColumn<int>("expectedValue");
    QTest::addColumn<int>("expectedPrevious");

    QTest::newRow("value inside") << 10 << 20 << 2 << 5 << 15 << 20 << 2 << 5 << 15 << 9;
    QTest::newRow("value below") << 10 << 20 << 2 << 5 << 3 << 20 << 2 << 5 << 10 << 9;
    QTest::newRow("value above") << 10 << 20 << 2 << 5 << 30 << 20 << 2 << 5 << 20 << 9;
    QTest::newRow("maximum below minimum") << 10 << 5 << 2 << 5 << 7 << 10 << 2 << 5 << 10 << 9;
    QTest::newRow("negative range") << -20 << -10 << 1 << 1 << -15 << -10 << 1 << 1 << -15 << -21;
    QTest::newRow("negative steps") << 0 << 9 << -3 << -4 << 0 << 9 << 3 << 4 << 0 << -1;
    QTest::newRow("zero steps") << 0 << 9 << 0 << 0 << 0 << 9 << 0 << 0 << 0 << -1;
    QTest::newRow("lowest steps") << 0 << 9 << lowest << lowest << 0 << 9 << highest << highest << 0 << -1;
    QTest::newRow("every int") << lowest << highest << 1 << 1 << 0 << highest << 1 << 1 << 0 << lowest;
    QTest::newRow("only the highest") << highest << lowest << 1 << 1 << 0 << highest << 1 << 1 << highest
                                      << highest - 1;
}

void TestQRangeControl::constructs()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(int, line);
    QFETCH(int, page);
    QFETCH(int, value);
    const Control control(minimum, maximum, line, page, value);
    QCOMPARE(control.minValue(), minimum);
    QTEST(control.maxValue(), "expectedMaximum");
    QTEST(control.lineStep(), "expectedLine");
    QTEST(control.pageStep(), "expectedPage");
    QTEST(control.value(), "expectedValue");
    QTEST(control.prevValue(), "expectedPrevious");
    QVERIFY(control.log.isEmpty());
}

void TestQRangeControl::boundsValues_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("expected");

    QTest::newRow("inside") << 7 << 7;
    QTest::newRow("at the minimum") << -5 << -5;
    QTest::newRow("at the maximum") << 10 << 10;
    QTest::newRow("below") << -6 << -5;
    QTest::newRow("above") << 11 << 10;
    QTest::newRow("lowest") << lowest << -5;
    QTest::newRow("highest") << highest << 10;
}

void TestQRangeControl::boundsValues()
{
    QFETCH(int, value);
    const Control control(-5, 10, 1, 1, 3);
    QTEST(control.bound(value), "expected");
    QCOMPARE(control.value(), 3);
}

void TestQRangeControl::setsValue_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("expectedValue");
    QTest::addColumn<QStringList>("expectedLog");

    QTest::newRow("another value") << 7 << 7 << QStringList{"value 7 was 3"};
    QTest::newRow("the same value") << 3 << 3 << QStringList{};
    QTest::newRow("above the range") << 500 << 10 << QStringList{"value 10 was 3"};
    QTest::newRow("below the range") << -500 << -5 << QStringList{"value -5 was 3"};
    QTest::newRow("highest") << highest << 10 << QStringList{"value 10 was 3"};
    QTest::newRow("lowest") << lowest << -5 << QStringList{"value -5 was 3"};
}

void TestQRangeControl::setsValue()
{
    QFETCH(int, value);
    Control control(-5, 10, 1, 1, 3);
    control.setValue(value);
    QTEST(control.value(), "expectedValue");
    QTEST(control.log, "expectedLog");
    // The same value a second time is remembered as the previous one, and nothing is told.
    control.log.clear();
    control.setValue(value);
    QCOMPARE(control.log, QStringList());
    QCOMPARE(control.prevValue(), control.value());
}

void TestQRangeControl::setsValueDirectly()
{
    Control control(0, 10, 1, 1, 3);
    control.directSetValue(8);
    QCOMPARE(control.value(), 8);
    QCOMPARE(control.prevValue(), 3);
    control.directSetValue(99);
    QCOMPARE(control.value(), 10);
    QCOMPARE(control.prevValue(), 8);
    control.directSetValue(-99);
    QCOMPARE(control.value(), 0);
    QCOMPARE(control.prevValue(), 10);
    control.directSetValue(0);
    QCOMPARE(control.value(), 0);
    QCOMPARE(control.prevValue(), 0);
    QCOMPARE(control.log, QStringList());
}

void TestQRangeControl::steps_data()
{
    using Step = void (QRangeControl::*)();
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("value");
    QTest::addColumn<Step>("step");
    QTest::addColumn<int>("expectedValue");
    QTest::addColumn<int>("expectedCount");

    const Step addLine = &QRangeControl::addLine;
    const Step subtractLine = &QRangeControl::subtractLine;
    const Step addPage = &QRangeControl::addPage;
    const Step subtractPage = &QRangeControl::subtractPage;
    QTest::newRow("line up") << 0 << 99 << 2 << 10 << 50 << addLine << 52 << 1;
    QTest::newRow("line down") << 0 << 99 << 2 << 10 << 50 << subtractLine << 48 << 1;
    QTest::newRow("page up") << 0 << 99 << 2 << 10 << 50 << addPage << 60 << 1;
    QTest::newRow("page down") << 0 << 99 << 2 << 10 << 50 << subtractPage << 40 << 1;
    QTest::newRow("page up to the end") << 0 << 99 << 2 << 10 << 95 << addPage << 99 << 1;
    QTest::newRow("page down to the end") << 0 << 99 << 2 << 10 << 5 << subtractPage << 0 << 1;
    QTest::newRow("line up at the end") << 0 << 99 << 2 << 10 << 99 << addLine << 99 << 0;
    QTest::newRow("line down at the end") << 0 << 99 << 2 << 10 << 0 << subtractLine << 0 << 0;
    QTest::newRow("zero step") << 0 << 99 << 0 << 0 << 50 << addPage << 50 << 0;
    QTest::newRow("negative step counts as positive") << 0 << 99 << -3 << -3 << 50 << addLine << 53 << 1;
    QTest::newRow("line up near the highest int")
        << lowest << highest << highest << 1 << highest - 1 << addLine << highest << 1;
    QTest::newRow("line down near the lowest int")
        << lowest << highest << highest << 1 << lowest + 1 << subtractLine << lowest << 1;
    QTest::newRow("page up near the highest int")
        << lowest << highest << 1 << lowest << highest - 1 << addPage << highest << 1;
    QTest::newRow("page down near the lowest int")
        << lowest << highest << 1 << lowest << lowest + 1 << subtractPage << lowest << 1;
    QTest::newRow("page up across the middle") << lowest << highest << 1 << highest << lowest << addPage << -1 << 1;
    QTest::newRow("page down across the middle")
        << lowest << highest << 1 << highest << 0 << subtractPage << -highest << 1;
}

void TestQRangeControl::steps()
{
    using Step = void (QRangeControl::*)();
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(int, line);
    QFETCH(int, page);
    QFETCH(int, value);
    QFETCH(Step, step);
    Control control(minimum, maximum, line, page, value);
    (control.*step)();
    QTEST(control.value(), "expectedValue");
    QTEST(int(control.log.size()), "expectedCount");
    QCOMPARE(control.prevValue(), value);
}

void TestQRangeControl::setsRange_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("expectedMaximum");
    QTest::addColumn<int>("expectedValue");
    QTest::addColumn<int>("expectedPrevious");
    QTest::addColumn<QStringList>("expectedLog");

    QTest::newRow("the same range") << 0 << 99 << 99 << 50 << -1 << QStringList{};
    QTest::newRow("wider") << -10 << 200 << 200 << 50 << -1 << QStringList{"range -10 to 200 at 50"};
    QTest::newRow("another minimum") << 10 << 99 << 99 << 50 << -1 << QStringList{"range 10 to 99 at 50"};
    QTest::newRow("another maximum") << 0 << 60 << 60 << 50 << -1 << QStringList{"range 0 to 60 at 50"};
    QTest::newRow("value at the new minimum") << 50 << 99 << 99 << 50 << -1 << QStringList{"range 50 to 99 at 50"};
    QTest::newRow("value at the new maximum") << 0 << 50 << 50 << 50 << -1 << QStringList{"range 0 to 50 at 50"};
    QTest::newRow("value above") << 0 << 40 << 40 << 40 << 50 << QStringList{"range 0 to 40 at 50", "value 40 was 50"};
    QTest::newRow("value below") << 60 << 99 << 99 << 60 << 50
                                 << QStringList{"range 60 to 99 at 50", "value 60 was 50"};
    QTest::newRow("maximum below minimum")
        << 70 << 20 << 70 << 70 << 50 << QStringList{"range 70 to 70 at 50", "value 70 was 50"};
    QTest::newRow("one value, the current one") << 50 << 20 << 50 << 50 << -1 << QStringList{"range 50 to 50 at 50"};
    QTest::newRow("every int") << lowest << highest << highest << 50 << -1
                               << QStringList{"range -2147483648 to 2147483647 at 50"};
    QTest::newRow("only the highest") << highest << lowest << highest << highest << 50
                                      << QStringList{"range 2147483647 to 2147483647 at 50", "value 2147483647 was 50"};
}

void TestQRangeControl::setsRange()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    Control control(0, 99, 1, 10, 50);
    control.setRange(minimum, maximum);
    QCOMPARE(control.minValue(), minimum);
    QTEST(control.maxValue(), "expectedMaximum");
    QTEST(control.value(), "expectedValue");
    QTEST(control.prevValue(), "expectedPrevious");
    QTEST(control.log, "expectedLog");
    // The same call again changes nothing, the maximum below the minimum included.
    control.log.clear();
    control.setRange(minimum, maximum);
    QCOMPARE(control.log, QStringList());
}

void TestQRangeControl::tellsRangeBeforeMovingTheValue()
{
    Control control(0, 99, 1, 10, 80);
    int valueSeen = 0;
    int previousSeen = 0;
    control.onRange = [&] {
        valueSeen = control.value();
        previousSeen = control.prevValue();
    };
    control.setRange(0, 40);
    QCOMPARE(valueSeen, 80);
    QCOMPARE(previousSeen, -1);
    QCOMPARE(control.value(), 40);
    QCOMPARE(control.prevValue(), 80);
}

void TestQRangeControl::movesTheValueAfterReentry_data()
{
    QTest::addColumn<int>("innerMinimum");
    QTest::addColumn<int>("innerMaximum");
    QTest::addColumn<int>("innerValue");
    QTest::addColumn<int>("expectedValue");
    QTest::addColumn<QStringList>("expectedLog");

    QTest::newRow("value set inside") << 0 << 40 << 20 << 20 << QStringList{"range 0 to 40 at 80", "value 20 was 80"};
    QTest::newRow("range widened again") << 0 << 90 << 80 << 80
                                         << QStringList{"range 0 to 40 at 80", "range 0 to 90 at 80"};
    QTest::newRow("range narrowed further")
        << 0 << 10 << 10 << 10 << QStringList{"range 0 to 40 at 80", "range 0 to 10 at 80", "value 10 was 80"};
}

void TestQRangeControl::movesTheValueAfterReentry()
{
    QFETCH(int, innerMinimum);
    QFETCH(int, innerMaximum);
    QFETCH(int, innerValue);
    Control control(0, 99, 1, 10, 80);
    bool entered = false;
    control.onRange = [&] {
        if (std::exchange(entered, true))
            return;
        control.setRange(innerMinimum, innerMaximum);
        control.setValue(innerValue);
    };
    control.setRange(0, 40);
    QTEST(control.value(), "expectedValue");
    QTEST(control.log, "expectedLog");
    QCOMPARE(control.maxValue(), innerMaximum);
}

void TestQRangeControl::setsSteps_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("expectedLine");
    QTest::addColumn<int>("expectedPage");
    QTest::addColumn<QStringList>("expectedLog");

    QTest::newRow("other steps") << 3 << 30 << 3 << 30 << QStringList{"steps 3 30"};
    QTest::newRow("another line step") << 3 << 20 << 3 << 20 << QStringList{"steps 3 20"};
    QTest::newRow("another page step") << 2 << 30 << 2 << 30 << QStringList{"steps 2 30"};
    QTest::newRow("the same steps") << 2 << 20 << 2 << 20 << QStringList{};
    QTest::newRow("the same steps with signs") << -2 << -20 << 2 << 20 << QStringList{};
    QTest::newRow("signs are dropped") << -5 << -6 << 5 << 6 << QStringList{"steps 5 6"};
    QTest::newRow("zero") << 0 << 0 << 0 << 0 << QStringList{"steps 0 0"};
    QTest::newRow("lowest") << lowest << lowest << highest << highest << QStringList{"steps 2147483647 2147483647"};
}

void TestQRangeControl::setsSteps()
{
    QFETCH(int, line);
    QFETCH(int, page);
    Control control(0, 99, 2, 20, 50);
    control.setSteps(line, page);
    QTEST(control.lineStep(), "expectedLine");
    QTEST(control.pageStep(), "expectedPage");
    QTEST(control.log, "expectedLog");
    QCOMPARE(control.value(), 50);
    control.log.clear();
    control.setSteps(line, page);
    QCOMPARE(control.log, QStringList());
}

void TestQRangeControl::positions_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("space");
    QTest::addColumn<int>("expected");

    QTest::newRow("minimum") << 0 << 99 << 0 << 190 << 0;
    QTest::newRow("maximum") << 0 << 99 << 99 << 190 << 190;
    QTest::newRow("below the minimum") << 0 << 99 << -1 << 190 << 0;
    QTest::newRow("above the maximum") << 0 << 99 << 100 << 190 << 190;
    QTest::newRow("half rounds up") << 0 << 4 << 1 << 2 << 1;
    QTest::newRow("half rounds up further on") << 0 << 4 << 3 << 2 << 2;
    QTest::newRow("below a half rounds down") << 0 << 3 << 1 << 1 << 0;
    QTest::newRow("above a half rounds up") << 0 << 3 << 2 << 1 << 1;
    QTest::newRow("half rounds up in negative ranges") << -4 << 0 << -3 << 2 << 1;
    QTest::newRow("thirds") << 0 << 3 << 1 << 10 << 3;
    QTest::newRow("two thirds") << 0 << 3 << 2 << 10 << 7;
    QTest::newRow("empty range at its value") << 5 << 5 << 5 << 100 << 0;
    QTest::newRow("empty range above its value") << 5 << 5 << 6 << 100 << 0;
    QTest::newRow("empty range below its value") << 5 << 5 << 4 << 100 << 0;
    QTest::newRow("empty span") << 0 << 99 << 99 << 0 << 0;
    QTest::newRow("empty span, value above") << 0 << 99 << 200 << 0 << 0;
    QTest::newRow("negative span") << 0 << 99 << 50 << -10 << 0;
    QTest::newRow("lowest span") << 0 << 99 << 50 << lowest << 0;
    QTest::newRow("every int, its middle") << lowest << highest << 0 << 100 << 50;
    QTest::newRow("every int, one below the maximum") << lowest << highest << highest - 1 << highest << highest;
    QTest::newRow("every int, two below the maximum") << lowest << highest << highest - 2 << highest << highest - 1;
    QTest::newRow("every int, one above the minimum") << lowest << highest << lowest + 1 << highest << 0;
    QTest::newRow("every int, two above the minimum") << lowest << highest << lowest + 2 << highest << 1;
    // One part in 2^33 off the half, more than a double can tell.
    QTest::newRow("every int, barely below a half") << lowest << highest << 585677358 << 2147483642 << 1366580499;
    QTest::newRow("every int, barely above a half") << lowest << highest << -585677359 << 2147483642 << 780903143;
    QTest::newRow("span of the range's size") << 0 << highest << highest - 1 << highest << highest - 1;
}

void TestQRangeControl::positions()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(int, value);
    QFETCH(int, space);
    const Control control(minimum, maximum, 1, 1, minimum);
    QTEST(control.positionFromValue(value, space), "expected");
}

void TestQRangeControl::values_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("space");
    QTest::addColumn<int>("expected");

    QTest::newRow("start") << 0 << 99 << 0 << 190 << 0;
    QTest::newRow("end") << 0 << 99 << 190 << 190 << 99;
    QTest::newRow("before the start") << 10 << 99 << -1 << 190 << 10;
    QTest::newRow("behind the end") << 10 << 99 << 191 << 190 << 99;
    QTest::newRow("lowest position") << 10 << 99 << lowest << 190 << 10;
    QTest::newRow("highest position") << 10 << 99 << highest << 190 << 99;
    QTest::newRow("half rounds up") << 0 << 1 << 1 << 2 << 1;
    QTest::newRow("below a half rounds down") << 0 << 1 << 1 << 3 << 0;
    QTest::newRow("half rounds up in negative ranges") << -3 << -2 << 1 << 2 << -2;
    QTest::newRow("half rounds up across zero") << -1 << 2 << 1 << 2 << 1;
    QTest::newRow("empty range") << 5 << 5 << 3 << 10 << 5;
    QTest::newRow("empty span") << 7 << 99 << 0 << 0 << 7;
    QTest::newRow("behind an empty span") << 7 << 99 << 5 << 0 << 7;
    QTest::newRow("negative span") << 7 << 99 << 5 << -10 << 7;
    QTest::newRow("every int, the middle") << lowest << highest << 1 << 2 << 0;
    QTest::newRow("every int, barely below a half") << lowest << highest << 1073741823 << highest << -2;
    QTest::newRow("every int, barely above a half") << lowest << highest << 1073741824 << highest << 1;
    QTest::newRow("every int, one before the end") << lowest << highest << highest - 1 << highest << highest - 2;
    QTest::newRow("every int, one behind the start") << lowest << highest << 1 << highest << lowest + 2;
}

void TestQRangeControl::values()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(int, position);
    QFETCH(int, space);
    const Control control(minimum, maximum, 1, 1, minimum);
    QTEST(control.valueFromPosition(position, space), "expected");
}

void TestQRangeControl::scalesSmallRangesExactly()
{
    for (int minimum = -3; minimum <= 3; ++minimum) {
        for (int range = 1; range <= 12; ++range) {
            const Control control(minimum, minimum + range, 1, 1, minimum);
            for (int space = 1; space <= 12; ++space) {
                for (int value = minimum; value <= minimum + range; ++value)
                    checkPosition(control, value, space);
                for (int position = 0; position <= space; ++position)
                    checkValue(control, position, space);
            }
        }
    }
}

void TestQRangeControl::scalesRandomRangesExactly()
{
    QRandomGenerator random(20);
    for (int round = 0; round < 20000; ++round) {
        const int minimum = numberBetween(random, lowest, highest - 1);
        const Control control(minimum, numberBetween(random, minimum + 1, highest), 1, 1, minimum);
        const int space = numberBetween(random, 1, highest);
        checkPosition(control, numberBetween(random, minimum, control.maxValue()), space);
        checkValue(control, numberBetween(random, 0, space), space);
        // Narrow spans are the usual ones on a screen.
        checkPosition(control, numberBetween(random, minimum, control.maxValue()), space % 2000 + 1);
        checkValue(control, numberBetween(random, 0, space % 2000 + 1), space % 2000 + 1);
        if (QTest::currentTestFailed())
            return;
    }
}

void TestQRangeControl::positionsLeadBackToTheirValues()
{
    const Control control(-20, 30, 1, 1, 0);
    for (int value = -20; value <= 30; ++value)
        QCOMPARE(control.valueFromPosition(control.positionFromValue(value, 70), 70), value);
}

void TestQRangeControl::survivesDeletion_data()
{
    using Call = std::function<void(Control&)>;
    QTest::addColumn<Call>("call");
    QTest::addColumn<bool>("expectedDeleted");

    QTest::newRow("range change") << Call([](Control& control) { control.setRange(0, 10); }) << true;
    QTest::newRow("range change without another value")
        << Call([](Control& control) { control.setRange(0, 90); }) << true;
    QTest::newRow("value change") << Call([](Control& control) { control.setValue(3); }) << true;
    QTest::newRow("line up") << Call([](Control& control) { control.addLine(); }) << true;
    QTest::newRow("page down") << Call([](Control& control) { control.subtractPage(); }) << true;
    QTest::newRow("step change") << Call([](Control& control) { control.setSteps(7, 8); }) << true;
    QTest::newRow("no change") << Call([](Control& control) { control.setValue(50); }) << false;
}

void TestQRangeControl::survivesDeletion()
{
    QFETCH(std::function<void(Control&)>, call);
    auto control = std::make_unique<Control>(0, 99, 1, 10, 50);
    const auto destroy = [&] { control.reset(); };
    control->onValue = destroy;
    control->onRange = destroy;
    control->onStep = destroy;
    call(*control);
    QTEST(!control, "expectedDeleted");
}

void TestQRangeControl::survivesDeletionByANestedNotification()
{
    auto control = std::make_unique<Control>(0, 99, 1, 10, 80);
    int depth = 0;
    bool goneInside = false;
    control->onRange = [&] {
        if (++depth == 3) {
            control.reset();
            return;
        }
        Control* nested = control.get();
        nested->setRange(0, 40 - 10 * depth);
        goneInside = !control;
    };
    control->setRange(0, 40);
    QCOMPARE(depth, 3);
    QVERIFY(goneInside);
    QVERIFY(!control);
}

void TestQRangeControl::survivesDeletionAfterANestedNotification()
{
    auto control = std::make_unique<Control>(0, 99, 1, 10, 80);
    bool nested = false;
    control->onRange = [&] {
        if (std::exchange(nested, true))
            return;
        control->setRange(0, 30);
        control.reset();
    };
    control->setRange(0, 40);
    QVERIFY(!control);
}

void TestQRangeControl::worksOnAfterANestedNotification()
{
    auto control = std::make_unique<Control>(0, 99, 1, 10, 80);
    bool nested = false;
    control->onRange = [&] {
        if (!std::exchange(nested, true))
            control->setRange(0, 30);
    };
    control->setRange(0, 40);
    QCOMPARE(control->value(), 30);
    // The nested notification is over, so this deletion concerns the outer one alone.
    control->onRange = [&] { control.reset(); };
    control->setRange(0, 20);
    QVERIFY(!control);
}

void TestQRangeControl::baseNotificationsDoNothing()
{
    QRangeControl control(0, 99, 1, 10, 80);
    control.setRange(0, 40);
    control.setSteps(2, 3);
    control.subtractLine();
    QCOMPARE(control.value(), 38);
    control.subtractPage();
    QCOMPARE(control.value(), 35);
}

QTEST_GUILESS_MAIN(TestQRangeControl)
#include "tst_qrangecontrol.moc"
