#include "player/playorder.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTest>

#include <algorithm>

/* Without a window or a sound. */
class TestPlayOrder : public QObject
{
    Q_OBJECT

private slots:
    void startsEmpty();
    void goesThroughTheList();
    void userGoesAroundTheEnds();
    void repeatsTheList();
    void repeatsASingleEntry();
    void shuffledRoundHasEachOnce_data();
    void shuffledRoundHasEachOnce();
    void shuffledEndsWithItsRound();
    void shuffledSingleEntry();
    void roundsBeginWithAnother_data();
    void roundsBeginWithAnother();
    void ordersDiffer();
    void everyPlaceIsEquallyLikely();
    void previousGoesBackThroughTheHistory();
    void previousGoesBackIntoTheRoundBefore();
    void previousBeforeTheStartStaysInTheRound();
    void jumpCountsForTheRound();
    void jumpGivesUpWhatWasToComeAgain();
    void userMayBeginTheNextRound();
    void switchingKeepsTheCurrentEntry();
    void appendedEntriesTakePart();
    void removedEntriesAreGone();
    void removedCurrentEntryLeavesNone();
    void badNumbersAreIgnored();
    void longListsAreQuick();
    void historyIsBounded();

private:
    static PlayOrder shuffled(int count, quint32 seed)
    {
        PlayOrder order(seed);
        order.setShuffled(true);
        order.reset(count);
        order.setCurrent(0);
        return order;
    }
    // What plays from the current entry to the end.
    static QList<int> rest(PlayOrder& order)
    {
        QList<int> entries;
        for (int entry = order.advance(); entry >= 0 && entries.size() < 1000; entry = order.advance())
            entries << entry;
        return entries;
    }
    static QList<int> sorted(QList<int> entries)
    {
        std::sort(entries.begin(), entries.end());
        return entries;
    }
    static QList<int> numbers(int from, int to)
    {
        QList<int> all;
        for (int i = from; i < to; ++i)
            all << i;
        return all;
    }
};

void TestPlayOrder::startsEmpty()
{
    PlayOrder order;
    for (const bool shuffle : {false, true}) {
        order.setShuffled(shuffle);
        order.setRepeated(shuffle);
        QCOMPARE(order.count(), 0);
        QCOMPARE(order.current(), -1);
        QCOMPARE(order.advance(), -1);
        QCOMPARE(order.next(), -1);
        QCOMPARE(order.previous(), -1);
    }
}

void TestPlayOrder::goesThroughTheList()
{
    PlayOrder order;
    order.reset(3);
    QCOMPARE(order.current(), -1);
    QCOMPARE(rest(order), (QList<int>{0, 1, 2}));
    // The end stays where it is.
    QCOMPARE(order.current(), 2);
    QCOMPARE(order.advance(), -1);
    QCOMPARE(order.current(), 2);
}

void TestPlayOrder::userGoesAroundTheEnds()
{
    PlayOrder order;
    order.reset(3);
    QCOMPARE(order.previous(), 2);
    QCOMPARE(order.next(), 0);
    QCOMPARE(order.previous(), 2);
    QCOMPARE(order.previous(), 1);
}

void TestPlayOrder::repeatsTheList()
{
    PlayOrder order;
    order.reset(2);
    order.setRepeated(true);
    QList<int> entries;
    for (int i = 0; i < 5; ++i)
        entries << order.advance();
    QCOMPARE(entries, (QList<int>{0, 1, 0, 1, 0}));
    order.setRepeated(false);
    QCOMPARE(rest(order), QList<int>{1});
}

void TestPlayOrder::repeatsASingleEntry()
{
    for (const bool shuffle : {false, true}) {
        PlayOrder order;
        order.setShuffled(shuffle);
        order.setRepeated(true);
        order.reset(1);
        for (int i = 0; i < 5; ++i)
            QCOMPARE(order.advance(), 0);
    }
}

void TestPlayOrder::shuffledRoundHasEachOnce_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {2, 3, 10, 100})
        QTest::addRow("%d", count) << count;
}

void TestPlayOrder::shuffledRoundHasEachOnce()
{
    QFETCH(int, count);
    for (quint32 seed = 1; seed <= 20; ++seed) {
        PlayOrder order = shuffled(count, seed);
        order.setRepeated(true);
        QList<int> round{0};
        while (round.size() < count)
            round << order.advance();
        QCOMPARE(sorted(round), numbers(0, count));
        for (int n = 0; n < 5; ++n) {
            round.clear();
            while (round.size() < count)
                round << order.advance();
            QCOMPARE(sorted(round), numbers(0, count));
        }
    }
}

void TestPlayOrder::shuffledEndsWithItsRound()
{
    PlayOrder order = shuffled(10, 1);
    const QList<int> entries = rest(order);
    QCOMPARE(sorted(entries), numbers(1, 10));
    QCOMPARE(order.current(), entries.last());
    QCOMPARE(order.advance(), -1);
    order.setRepeated(true);
    QVERIFY(order.advance() >= 0);
}

void TestPlayOrder::shuffledSingleEntry()
{
    PlayOrder order = shuffled(1, 1);
    QCOMPARE(order.advance(), -1);
    QCOMPARE(order.next(), 0);
    QCOMPARE(order.previous(), 0);
}

void TestPlayOrder::roundsBeginWithAnother_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {2, 3, 5})
        QTest::addRow("%d", count) << count;
}

void TestPlayOrder::roundsBeginWithAnother()
{
    QFETCH(int, count);
    for (quint32 seed = 1; seed <= 50; ++seed) {
        PlayOrder order = shuffled(count, seed);
        order.setRepeated(true);
        for (int i = 0; i < 10 * count; ++i) {
            const int before = order.current();
            QVERIFY(order.advance() != before);
        }
    }
}

void TestPlayOrder::ordersDiffer()
{
    QSet<QList<int>> seen;
    for (quint32 seed = 1; seed <= 20; ++seed) {
        PlayOrder order = shuffled(20, seed);
        seen.insert(rest(order));
    }
    QCOMPARE(seen.size(), 20);
    PlayOrder one = shuffled(20, 7);
    PlayOrder other = shuffled(20, 7);
    QCOMPARE(rest(one), rest(other));
}

void TestPlayOrder::everyPlaceIsEquallyLikely()
{
    // Of four entries behind the first, which comes next.
    QList<int> counts(5, 0);
    for (quint32 seed = 1; seed <= 2000; ++seed) {
        PlayOrder order = shuffled(5, seed);
        ++counts[order.advance()];
    }
    for (int entry = 1; entry < 5; ++entry)
        QVERIFY2(qAbs(counts.at(entry) - 500) < 100, qPrintable(QString::number(counts.at(entry))));
}

void TestPlayOrder::previousGoesBackThroughTheHistory()
{
    PlayOrder order = shuffled(10, 3);
    QList<int> heard{0};
    for (int i = 0; i < 6; ++i)
        heard << order.next();
    for (int i = 5; i >= 0; --i)
        QCOMPARE(order.previous(), heard.at(i));
    // And forwards again through the same, by itself too.
    for (int i = 1; i <= 6; ++i)
        QCOMPARE(i % 2 ? order.next() : order.advance(), heard.at(i));
    QCOMPARE(sorted(heard + rest(order)), numbers(0, 10));
}

void TestPlayOrder::previousGoesBackIntoTheRoundBefore()
{
    PlayOrder order = shuffled(4, 5);
    order.setRepeated(true);
    QList<int> heard{0};
    for (int i = 0; i < 11; ++i)
        heard << order.advance();
    for (int i = 10; i >= 0; --i)
        QCOMPARE(order.previous(), heard.at(i));
}

void TestPlayOrder::previousBeforeTheStartStaysInTheRound()
{
    PlayOrder order = shuffled(10, 4);
    QList<int> heard{0};
    for (int i = 0; i < 4; ++i)
        heard.prepend(order.previous());
    QCOMPARE(QSet<int>(heard.begin(), heard.end()).size(), 5);
    for (int i = 1; i < 5; ++i)
        QCOMPARE(order.next(), heard.at(i));
    QCOMPARE(sorted(heard + rest(order)), numbers(0, 10));
}

void TestPlayOrder::jumpCountsForTheRound()
{
    PlayOrder order = shuffled(10, 6);
    order.setCurrent(7);
    QCOMPARE(order.current(), 7);
    PlayOrder copy = order;
    QCOMPARE(sorted(rest(copy)), (QList<int>{1, 2, 3, 4, 5, 6, 8, 9}));
    // Where it is already.
    order.setCurrent(7);
    QCOMPARE(order.previous(), 0);
}

void TestPlayOrder::jumpGivesUpWhatWasToComeAgain()
{
    PlayOrder order = shuffled(10, 6);
    const int second = order.next();
    order.next();
    order.previous();
    const int jump = second == 5 ? 6 : 5;
    order.setCurrent(jump);
    QCOMPARE(order.previous(), second);
    QCOMPARE(order.next(), jump);
}

void TestPlayOrder::userMayBeginTheNextRound()
{
    PlayOrder order = shuffled(5, 8);
    const int last = rest(order).last();
    const int first = order.next();
    QVERIFY(first >= 0 && first != last);
    QList<int> round{first};
    round += rest(order);
    QCOMPARE(sorted(round), numbers(0, 5));
}

void TestPlayOrder::switchingKeepsTheCurrentEntry()
{
    PlayOrder order(9);
    order.reset(6);
    order.setCurrent(4);
    order.setShuffled(true);
    QVERIFY(order.isShuffled());
    QCOMPARE(order.current(), 4);
    order.setShuffled(true);
    QCOMPARE(sorted(rest(order)), (QList<int>{0, 1, 2, 3, 5}));
    order.setCurrent(2);
    order.setShuffled(false);
    QCOMPARE(order.current(), 2);
    QCOMPARE(rest(order), (QList<int>{3, 4, 5}));
}

void TestPlayOrder::appendedEntriesTakePart()
{
    PlayOrder order = shuffled(3, 1);
    order.advance();
    order.append(3);
    QCOMPARE(order.count(), 6);
    QCOMPARE(rest(order).size(), 4);
    PlayOrder linear;
    linear.reset(1);
    linear.setCurrent(0);
    linear.append(2);
    QCOMPARE(rest(linear), (QList<int>{1, 2}));
}

void TestPlayOrder::removedEntriesAreGone()
{
    PlayOrder linear;
    linear.reset(6);
    linear.setCurrent(3);
    linear.remove({0, 2, 5});
    QCOMPARE(linear.count(), 3);
    QCOMPARE(linear.current(), 1);
    QCOMPARE(rest(linear), QList<int>{2});

    for (quint32 seed = 1; seed <= 20; ++seed) {
        PlayOrder order = shuffled(6, seed);
        order.setCurrent(3);
        order.remove({0, 2, 5});
        QCOMPARE(order.current(), 1);
        QCOMPARE(sorted(rest(order)), (QList<int>{0, 2}));
    }
}

void TestPlayOrder::removedCurrentEntryLeavesNone()
{
    PlayOrder order = shuffled(6, 2);
    const int second = order.next();
    order.remove({second});
    QCOMPARE(order.current(), -1);
    QCOMPARE(order.previous(), 0);
    QCOMPARE(rest(order).size(), 4);

    PlayOrder linear;
    linear.reset(3);
    linear.setCurrent(1);
    linear.remove({0, 1, 2});
    QCOMPARE(linear.count(), 0);
    QCOMPARE(linear.next(), -1);
}

void TestPlayOrder::badNumbersAreIgnored()
{
    PlayOrder order = shuffled(3, 2);
    order.append(-5);
    QCOMPARE(order.count(), 3);
    order.setCurrent(3);
    QCOMPARE(order.current(), -1);
    order.setCurrent(1);
    order.setCurrent(-7);
    QCOMPARE(order.current(), -1);
    order.reset(-1);
    QCOMPARE(order.count(), 0);
    QCOMPARE(order.next(), -1);
}

void TestPlayOrder::longListsAreQuick()
{
    QElapsedTimer clock;
    clock.start();
    PlayOrder order = shuffled(1000000, 1);
    for (int i = 0; i < 100000; ++i)
        order.next();
    QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
}

void TestPlayOrder::historyIsBounded()
{
    PlayOrder order = shuffled(3, 1);
    order.setRepeated(true);
    QList<int> heard;
    for (int i = 0; i < 30000; ++i)
        heard << order.advance();
    for (int i = 1; i < 5000; ++i)
        QCOMPARE(order.previous(), heard.at(heard.size() - 1 - i));
    // Beyond what it knows there is still something.
    for (int i = 0; i < 10000; ++i)
        QVERIFY(order.previous() >= 0);
}

QTEST_APPLESS_MAIN(TestPlayOrder)
#include "tst_playorder.moc"
