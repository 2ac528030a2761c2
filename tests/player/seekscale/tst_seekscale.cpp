#include "player/seekscale.h"

#include <QTest>

#include <limits>

namespace
{

constexpr qint64 hour = 3600000;
constexpr qint64 longest = std::numeric_limits<qint64>::max();

} // namespace

class TestSeekScale : public QObject
{
    Q_OBJECT

private slots:
    void unitAndMaximum_data();
    void unitAndMaximum();
    void endsAreThoseOfTheFile_data() { unitAndMaximum_data(); }
    void endsAreThoseOfTheFile();
    void positionsSurviveTheWayThereAndBack_data() { unitAndMaximum_data(); }
    void positionsSurviveTheWayThereAndBack();
    void everyMillisecondOfAShortFileHasItsValue();
    void unknownDurationGivesNothing_data();
    void unknownDurationGivesNothing();
};

void TestSeekScale::unitAndMaximum_data()
{
    constexpr int most = SeekScale::largestValue;
    QTest::addColumn<qint64>("duration");
    QTest::addColumn<qint64>("unit");
    QTest::addColumn<int>("maximum");
    QTest::newRow("1 ms") << qint64(1) << qint64(1) << 1;
    QTest::newRow("20 s") << qint64(20000) << qint64(1) << 20000;
    QTest::newRow("100 hours") << 100 * hour << qint64(1) << 360000000;
    QTest::newRow("last with 1 ms") << qint64(most) << qint64(1) << most;
    QTest::newRow("first with 2 ms") << qint64(most) + 1 << qint64(2) << most / 2;
    QTest::newRow("1000 hours") << 1000 * hour << qint64(4) << 900000000;
    QTest::newRow("2^40 ms") << (qint64(1) << 40) << qint64(1024) << most;
    QTest::newRow("2^40 + 1 ms") << (qint64(1) << 40) + 1 << qint64(1025) << 1072694271;
    QTest::newRow("longest") << longest << (qint64(1) << 33) << most - 1;
}

void TestSeekScale::unitAndMaximum()
{
    QFETCH(qint64, duration);
    const SeekScale scale(duration);
    QVERIFY(scale.isValid());
    QTEST(scale.unit(), "unit");
    QTEST(scale.maximum(), "maximum");
}

void TestSeekScale::endsAreThoseOfTheFile()
{
    QFETCH(qint64, duration);
    const SeekScale scale(duration);
    QCOMPARE(scale.position(0), 0);
    QCOMPARE(scale.position(scale.maximum()), duration);
    QCOMPARE(scale.value(0), 0);
    QCOMPARE(scale.value(duration), scale.maximum());
    QCOMPARE(scale.position(-1), 0);
    QCOMPARE(scale.position(std::numeric_limits<int>::max()), duration);
    QCOMPARE(scale.value(-1), 0);
    QCOMPARE(scale.value(longest), scale.maximum());
}

void TestSeekScale::positionsSurviveTheWayThereAndBack()
{
    QFETCH(qint64, duration);
    const SeekScale scale(duration);
    int previous = -1;
    for (const qint64 position : {duration / 7, duration / 3, duration / 2, duration - duration / 9}) {
        const int value = scale.value(position);
        QVERIFY(value >= previous);
        QVERIFY(value <= SeekScale::largestValue);
        previous = value;
        QCOMPARE(scale.value(scale.position(value)), value);
        // The maximum stands for the end, which is up to a unit further.
        if (value == scale.maximum())
            continue;
        QVERIFY(scale.position(value) <= position);
        QVERIFY(position - scale.position(value) < scale.unit());
    }
}

void TestSeekScale::everyMillisecondOfAShortFileHasItsValue()
{
    const SeekScale scale(300);
    for (int i = 0; i <= 300; ++i) {
        QCOMPARE(scale.value(i), i);
        QCOMPARE(scale.position(i), i);
    }
}

void TestSeekScale::unknownDurationGivesNothing_data()
{
    QTest::addColumn<qint64>("duration");
    QTest::newRow("none") << qint64(0);
    QTest::newRow("below") << qint64(-1);
    QTest::newRow("far below") << std::numeric_limits<qint64>::min();
}

void TestSeekScale::unknownDurationGivesNothing()
{
    QFETCH(qint64, duration);
    const SeekScale scale(duration);
    QVERIFY(!scale.isValid());
    QCOMPARE(scale.unit(), 1);
    QCOMPARE(scale.maximum(), 0);
    QCOMPARE(scale.value(5000), 0);
    QCOMPARE(scale.position(5000), 0);
}

QTEST_GUILESS_MAIN(TestSeekScale)
#include "tst_seekscale.moc"
