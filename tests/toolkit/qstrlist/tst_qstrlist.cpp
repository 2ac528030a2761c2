#include "toolkit/qstrlist.h"

#include <QTest>

#include <algorithm>

namespace
{

using Strings = QStringList;

// Null strings show as "(null)".
Strings contents(const QStrList& list)
{
    Strings strings;
    for (const char* string : list)
        strings << (string ? QString::fromLatin1(string) : QStringLiteral("(null)"));
    return strings;
}

QStrList listOf(std::initializer_list<const char*> strings, bool deepCopies = true)
{
    QStrList list(deepCopies);
    for (const char* string : strings)
        list.append(string);
    return list;
}

QString shown(const char* string)
{
    return string ? QString::fromLatin1(string) : QStringLiteral("(null)");
}

} // namespace

class TestQStrList : public QObject
{
    Q_OBJECT

private slots:
    void startsEmpty();
    void keepsDeepCopies();
    void keepsShallowPointers();
    void copiesKeepTheKind_data();
    void copiesKeepTheKind();
    void copiesAreIndependent();
    void assignsToItself();
    void inserts_data();
    void inserts();
    void prependsAndAppends();
    void takesItsOwnStrings();
    void sortsIn();
    void sortsByBytes();
    void removesByIndex_data();
    void removesByIndex();
    void removesByText_data();
    void removesByText();
    void removesEnds();
    void removesTheCurrentItem();
    void clears();
    void walks();
    void walksBackwards();
    void goesToPositions_data();
    void goesToPositions();
    void finds_data();
    void finds();
    void findsTheNext();
    void counts_data();
    void counts();
    void compares();
    void iterates();
    void iteratesBackwards();
    void iteratesInStrides_data();
    void iteratesInStrides();
    void iteratesOverAnEmptyList();
    void iteratorStandsOnTheNextItemAfterARemoval();
    void servesAlgorithms();
};

void TestQStrList::startsEmpty()
{
    QStrList list;
    QVERIFY(list.isEmpty());
    QCOMPARE(list.count(), 0u);
    QVERIFY(!list.current());
    QCOMPARE(list.at(), -1);
    QVERIFY(!list.first());
    QVERIFY(!list.last());
    QVERIFY(!list.next());
    QVERIFY(!list.prev());
    QVERIFY(!list.getFirst());
    QVERIFY(!list.getLast());
    QVERIFY(!list.removeFirst());
    QVERIFY(!list.removeLast());
    QVERIFY(!list.remove());
    QVERIFY(list.begin() == list.end());
}

void TestQStrList::keepsDeepCopies()
{
    char text[] = "one";
    QStrList list;
    list.append(text);
    QVERIFY(list.first() != text);
    text[0] = 'X';
    QCOMPARE(list.first(), "one");
    list.first()[0] = 'O';
    QCOMPARE(list.first(), "One");
    QCOMPARE(text[0], 'X');
}

void TestQStrList::keepsShallowPointers()
{
    char text[] = "one";
    QStrList list(false);
    list.append(text);
    QCOMPARE(static_cast<void*>(list.first()), static_cast<void*>(text));
    text[0] = 'X';
    QCOMPARE(list.first(), "Xne");
    list.remove(0u);
    list.append(text);
    list.clear();
    QCOMPARE(text[0], 'X');
}

void TestQStrList::copiesKeepTheKind_data()
{
    QTest::addColumn<bool>("deepCopies");
    QTest::newRow("deep") << true;
    QTest::newRow("shallow") << false;
}

void TestQStrList::copiesKeepTheKind()
{
    QFETCH(bool, deepCopies);
    QStrList list = listOf({"a", nullptr, "c"}, deepCopies);
    QStrList copy(list);
    QStrList assigned(!deepCopies);
    assigned.append("gone");
    assigned = list;
    for (QStrList* other : {&copy, &assigned}) {
        QCOMPARE(contents(*other), Strings({"a", "(null)", "c"}));
        QCOMPARE(other->at(), 0);
        QCOMPARE(other->getFirst() == list.getFirst(), !deepCopies);
        other->append(list.getLast());
        QCOMPARE(other->getLast() == list.getLast(), !deepCopies);
    }
    QCOMPARE(list.count(), 3u);
    QCOMPARE(list.at(), 2);
}

void TestQStrList::copiesAreIndependent()
{
    QStrList copy;
    {
        const QStrList list = listOf({"a", "b"});
        copy = list;
    }
    QCOMPARE(contents(copy), Strings({"a", "b"}));
    const QStrList empty;
    copy = empty;
    QVERIFY(copy.isEmpty());
    QCOMPARE(copy.at(), -1);
}

void TestQStrList::assignsToItself()
{
    QStrList list = listOf({"a", "b"});
    const QStrList& same = list;
    list = same;
    QCOMPARE(contents(list), Strings({"a", "b"}));
    QCOMPARE(list.at(), 0);
}

void TestQStrList::inserts_data()
{
    QTest::addColumn<uint>("index");
    QTest::addColumn<bool>("expectedResult");
    QTest::addColumn<Strings>("expected");
    QTest::addColumn<int>("expectedCurrent");

    QTest::newRow("front") << 0u << true << Strings{"x", "a", "b"} << 0;
    QTest::newRow("middle") << 1u << true << Strings{"a", "x", "b"} << 1;
    QTest::newRow("end") << 2u << true << Strings{"a", "b", "x"} << 2;
    QTest::newRow("behind the end") << 3u << false << Strings{"a", "b"} << 1;
    QTest::newRow("far behind the end") << 0xffffffffu << false << Strings{"a", "b"} << 1;
}

void TestQStrList::inserts()
{
    QFETCH(uint, index);
    QStrList list = listOf({"a", "b"});
    QTEST(list.insert(index, "x"), "expectedResult");
    QTEST(contents(list), "expected");
    QTEST(list.at(), "expectedCurrent");
}

void TestQStrList::prependsAndAppends()
{
    QStrList list;
    list.append("b");
    QCOMPARE(list.current(), "b");
    list.append(nullptr);
    QCOMPARE(list.at(), 1);
    QVERIFY(!list.current());
    list.prepend("a");
    QCOMPARE(list.at(), 0);
    QCOMPARE(list.current(), "a");
    list.append("");
    QCOMPARE(contents(list), Strings({"a", "b", "(null)", ""}));
    QCOMPARE(list.count(), 4u);
}

void TestQStrList::takesItsOwnStrings()
{
    QStrList list = listOf({"a", "b"});
    list.append(list.getFirst());
    list.prepend(list.getLast());
    QCOMPARE(contents(list), Strings({"a", "a", "b", "a"}));
    QVERIFY(list.remove(list.getLast()));
    QCOMPARE(contents(list), Strings({"a", "b", "a"}));
}

void TestQStrList::sortsIn()
{
    QStrList list;
    const char* const strings[] = {"m", "Z", "a", "m", nullptr, "B", "", "\xe4"};
    for (const char* string : strings) {
        list.inSort(string);
        QCOMPARE(shown(list.current()), shown(string));
    }
    QCOMPARE(contents(list), Strings({"(null)", "", "B", "Z", "a", "m", "m", QString::fromLatin1("\xe4")}));
    // Before its equals.
    const char* const older = list.at(5);
    list.inSort("m");
    QCOMPARE(list.at(), 5);
    QVERIFY(list.current() != older);
    QVERIFY(list.next() == older);
}

void TestQStrList::sortsByBytes()
{
    QStrList list = listOf({"b", "a", nullptr, "B", "\xe4", ""});
    list.sort();
    QCOMPARE(contents(list), Strings({"(null)", "", "B", "a", "b", QString::fromLatin1("\xe4")}));
    QCOMPARE(list.at(), 0);
}

void TestQStrList::removesByIndex_data()
{
    QTest::addColumn<uint>("index");
    QTest::addColumn<bool>("expectedResult");
    QTest::addColumn<Strings>("expected");
    QTest::addColumn<int>("expectedCurrent");

    QTest::newRow("first") << 0u << true << Strings{"b", "c"} << 0;
    QTest::newRow("middle") << 1u << true << Strings{"a", "c"} << 1;
    QTest::newRow("last") << 2u << true << Strings{"a", "b"} << 1;
    QTest::newRow("behind the end") << 3u << false << Strings{"a", "b", "c"} << 2;
    QTest::newRow("far behind the end") << 0xffffffffu << false << Strings{"a", "b", "c"} << 2;
}

void TestQStrList::removesByIndex()
{
    QFETCH(uint, index);
    QStrList list = listOf({"a", "b", "c"});
    QTEST(list.remove(index), "expectedResult");
    QTEST(contents(list), "expected");
    QTEST(list.at(), "expectedCurrent");
}

void TestQStrList::removesByText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("expectedResult");
    QTest::addColumn<Strings>("expected");
    QTest::addColumn<int>("expectedCurrent");

    QTest::newRow("first equal one") << QByteArray("b") << true << Strings{"a", "(null)", "", "b"} << 1;
    QTest::newRow("null") << QByteArray() << true << Strings{"a", "b", "", "b"} << 2;
    QTest::newRow("empty") << QByteArray("") << true << Strings{"a", "b", "(null)", "b"} << 3;
    QTest::newRow("other case") << QByteArray("B") << false << Strings{"a", "b", "(null)", "", "b"} << -1;
    QTest::newRow("absent") << QByteArray("x") << false << Strings{"a", "b", "(null)", "", "b"} << -1;
}

void TestQStrList::removesByText()
{
    QFETCH(QByteArray, text);
    QStrList list = listOf({"a", "b", nullptr, "", "b"});
    QTEST(list.remove(text.isNull() ? static_cast<const char*>(nullptr) : text.constData()), "expectedResult");
    QTEST(contents(list), "expected");
    QTEST(list.at(), "expectedCurrent");
}

void TestQStrList::removesEnds()
{
    QStrList list = listOf({"a", "b", "c"});
    QVERIFY(list.removeFirst());
    QCOMPARE(contents(list), Strings({"b", "c"}));
    QCOMPARE(list.at(), 0);
    QVERIFY(list.removeLast());
    QCOMPARE(contents(list), Strings({"b"}));
    QCOMPARE(list.at(), 0);
    QVERIFY(list.removeLast());
    QVERIFY(list.isEmpty());
    QCOMPARE(list.at(), -1);
    QVERIFY(!list.removeLast());
    QVERIFY(!list.removeFirst());
}

void TestQStrList::removesTheCurrentItem()
{
    QStrList list = listOf({"a", "b", "c"});
    list.at(1);
    QVERIFY(list.remove());
    QCOMPARE(list.current(), "c");
    QVERIFY(list.remove());
    QCOMPARE(list.current(), "a");
    list.next();
    QVERIFY(!list.remove());
    QCOMPARE(contents(list), Strings({"a"}));
}

void TestQStrList::clears()
{
    QStrList list = listOf({"a", nullptr, "c"});
    list.clear();
    QVERIFY(list.isEmpty());
    QCOMPARE(list.at(), -1);
    list.append("d");
    QCOMPARE(contents(list), Strings({"d"}));
}

void TestQStrList::walks()
{
    QStrList list = listOf({"a", "b", "c"});
    Strings seen;
    for (char* string = list.first(); string; string = list.next())
        seen << QString::fromLatin1(string);
    QCOMPARE(seen, Strings({"a", "b", "c"}));
    // Past the end no item is current, and there is no way on.
    QCOMPARE(list.at(), -1);
    QVERIFY(!list.current());
    QVERIFY(!list.next());
    QVERIFY(!list.prev());
}

void TestQStrList::walksBackwards()
{
    QStrList list = listOf({"a", "b", "c"});
    Strings seen;
    for (char* string = list.last(); string; string = list.prev())
        seen << QString::fromLatin1(string);
    QCOMPARE(seen, Strings({"c", "b", "a"}));
    QCOMPARE(list.at(), -1);
}

void TestQStrList::goesToPositions_data()
{
    QTest::addColumn<uint>("index");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("expectedCurrent");

    QTest::newRow("first") << 0u << "a" << 0;
    QTest::newRow("last") << 2u << "c" << 2;
    QTest::newRow("null string") << 1u << "(null)" << 1;
    QTest::newRow("behind the end") << 3u << "(null)" << -1;
    QTest::newRow("far behind the end") << 0xffffffffu << "(null)" << -1;
}

void TestQStrList::goesToPositions()
{
    QFETCH(uint, index);
    QStrList list = listOf({"a", nullptr, "c"});
    QTEST(shown(list.at(index)), "expected");
    QTEST(list.at(), "expectedCurrent");
}

void TestQStrList::finds_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("expected");

    QTest::newRow("first equal one") << QByteArray("b") << 1;
    QTest::newRow("null") << QByteArray() << 2;
    QTest::newRow("empty") << QByteArray("") << 3;
    QTest::newRow("other case") << QByteArray("B") << -1;
    QTest::newRow("beginning only") << QByteArray("lon") << -1;
    QTest::newRow("last") << QByteArray("long") << 5;
}

void TestQStrList::finds()
{
    QFETCH(QByteArray, text);
    QStrList list = listOf({"a", "b", nullptr, "", "b", "long"});
    QTEST(list.find(text.isNull() ? nullptr : text.constData()), "expected");
    QTEST(list.at(), "expected");
}

void TestQStrList::findsTheNext()
{
    QStrList list = listOf({"b", "a", "b"});
    QCOMPARE(list.find("b"), 0);
    QCOMPARE(list.findNext("b"), 0);
    list.next();
    QCOMPARE(list.findNext("b"), 2);
    list.next();
    QCOMPARE(list.findNext("b"), -1);
    QCOMPARE(list.at(), -1);
}

void TestQStrList::counts_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<uint>("expected");

    QTest::newRow("twice") << QByteArray("b") << 2u;
    QTest::newRow("once") << QByteArray("a") << 1u;
    QTest::newRow("never") << QByteArray("x") << 0u;
    QTest::newRow("null") << QByteArray() << 2u;
}

void TestQStrList::counts()
{
    QFETCH(QByteArray, text);
    QStrList list = listOf({"a", "b", nullptr, "b", nullptr, ""});
    list.at(3);
    QTEST(list.contains(text.isNull() ? nullptr : text.constData()), "expected");
    QCOMPARE(list.at(), 3);
}

void TestQStrList::compares()
{
    const QStrList list = listOf({"a", nullptr});
    QVERIFY(list == listOf({"a", nullptr}, false));
    QVERIFY(list != listOf({"a", ""}));
    QVERIFY(list != listOf({"a"}));
    QVERIFY(list != listOf({nullptr, "a"}));
    QVERIFY(QStrList() == QStrList(false));
}

void TestQStrList::iterates()
{
    QStrList list = listOf({"a", nullptr, "c"});
    list.at(2);
    QStrListIterator it(list);
    QCOMPARE(it.count(), 3u);
    QVERIFY(!it.isEmpty());
    QVERIFY(it.atFirst());
    QVERIFY(!it.atLast());
    QCOMPARE(it.current(), "a");
    QCOMPARE(*it, "a");
    const char* const converted = it;
    QCOMPARE(converted, "a");
    QVERIFY(!++it);
    QVERIFY(!it.atFirst());
    QCOMPARE(++it, "c");
    QVERIFY(it.atLast());
    QVERIFY(!++it);
    QVERIFY(!it.atLast());
    QVERIFY(!it.current());
    QVERIFY(!++it);
    QVERIFY(!--it);
    QCOMPARE(it.toFirst(), "a");
    QCOMPARE(it(), "a");
    QVERIFY(!it());
    QCOMPARE(it(), "c");
    QVERIFY(!it());
    // The list's own current item stays.
    QCOMPARE(list.at(), 2);
}

void TestQStrList::iteratesBackwards()
{
    const QStrList list = listOf({"a", "b", "c"});
    QStrListIterator it(list);
    QCOMPARE(it.toLast(), "c");
    QVERIFY(it.atLast());
    QCOMPARE(--it, "b");
    QCOMPARE(--it, "a");
    QVERIFY(it.atFirst());
    QVERIFY(!--it);
    QVERIFY(!it.atFirst());
    QVERIFY(!++it);
}

void TestQStrList::iteratesInStrides_data()
{
    QTest::addColumn<bool>("forwards");
    QTest::addColumn<uint>("steps");
    QTest::addColumn<QString>("expected");

    QTest::newRow("none") << true << 0u << "c";
    QTest::newRow("two on") << true << 2u << "e";
    QTest::newRow("past the end") << true << 3u << "(null)";
    QTest::newRow("far past the end") << true << 0xffffffffu << "(null)";
    QTest::newRow("two back") << false << 2u << "a";
    QTest::newRow("before the start") << false << 3u << "(null)";
    QTest::newRow("far before the start") << false << 0xffffffffu << "(null)";
}

void TestQStrList::iteratesInStrides()
{
    QFETCH(bool, forwards);
    QFETCH(uint, steps);
    const QStrList list = listOf({"a", "b", "c", "d", "e"});
    QStrListIterator it(list);
    it += 2;
    QTEST(shown(forwards ? it += steps : it -= steps), "expected");
}

void TestQStrList::iteratesOverAnEmptyList()
{
    const QStrList list;
    QStrListIterator it(list);
    QVERIFY(it.isEmpty());
    QCOMPARE(it.count(), 0u);
    QVERIFY(!it.atFirst());
    QVERIFY(!it.atLast());
    QVERIFY(!it.current());
    QVERIFY(!++it);
    QVERIFY(!it.toFirst());
    QVERIFY(!it.toLast());
    QVERIFY(!it.atLast());
}

void TestQStrList::iteratorStandsOnTheNextItemAfterARemoval()
{
    QStrList list = listOf({"a", "b", "c"});
    QStrListIterator it(list);
    ++it;
    list.remove(1u);
    QCOMPARE(it.current(), "c");
    list.clear();
    QVERIFY(!it.current());
}

void TestQStrList::servesAlgorithms()
{
    const QStrList list = listOf({"a", nullptr, "c"});
    QCOMPARE(std::count(list.begin(), list.end(), nullptr), 1);
    QCOMPARE(std::distance(list.begin(), list.end()), 3);
    static_assert(std::is_same_v<decltype(*list.begin()), const char* const&>);
}

QTEST_GUILESS_MAIN(TestQStrList)
#include "tst_qstrlist.moc"
