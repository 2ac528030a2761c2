#include "listbox/listboxfixture.h"
#include "toolkit/qstrlist.h"

#include <QRandomGenerator>
#include <QStyle>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <vector>

using namespace listboxtest;

namespace
{

constexpr const char* nullWarning = "ASSERT: \"lbi != 0\" in listbox_skin (505)";

// The geometry of a grid worked out the long way, cell after cell.
struct Grid {
    struct Settings {
        bool rowModeWins = false;
        ListBoxSkin::LayoutMode mode = ListBoxSkin::FixedNumber;
        int number = 1;
        bool variableWidth = false;
        bool variableHeight = true;
        int fixedRowHeight = 0;
    };

    Grid(const ListBoxSkin* box, const std::vector<QSize>& sizes, const Settings& settings)
        : m_box(box),
          m_sizes(sizes),
          m_settings(settings)
    {
    }

    std::vector<int> columns;
    std::vector<int> rows;
    QSize contents;

    int totalWidth() const { return columns.back(); }
    int totalHeight() const { return rows.back(); }

    void tryGeometry(int rowCount, int columnCount)
    {
        rowCount = std::max(rowCount, 1);
        columnCount = std::max(columnCount, 1);
        std::vector<int> widths(size_t(columnCount), 0);
        std::vector<int> heights(size_t(rowCount), 0);
        for (size_t i = 0; i < m_sizes.size() && i < size_t(rowCount) * size_t(columnCount); ++i) {
            int& width = widths[i / size_t(rowCount)];
            int& height = heights[i % size_t(rowCount)];
            width = std::max(width, m_sizes[i].width());
            height = std::max(height, m_sizes[i].height());
        }
        if (!m_settings.variableWidth)
            widths.assign(widths.size(), *std::max_element(widths.begin(), widths.end()));
        if (!m_settings.variableHeight)
            heights.assign(heights.size(), *std::max_element(heights.begin(), heights.end()));
        if (m_settings.fixedRowHeight > 0)
            heights.assign(heights.size(), m_settings.fixedRowHeight);
        columns.assign(1, 0);
        rows.assign(1, 0);
        for (const int width : widths)
            columns.push_back(columns.back() + width);
        for (const int height : heights)
            rows.push_back(rows.back() + height);
    }

    void layOut()
    {
        const int n = int(m_sizes.size());
        const bool fits = m_settings.mode == ListBoxSkin::FitToWidth;
        if (fits && n == 0)
            tryGeometry(1, 1);
        else if (fits && m_settings.rowModeWins)
            fitRows(n);
        else if (fits)
            fitColumns(n);
        else if (m_settings.rowModeWins)
            tryGeometry(m_settings.number, (n + m_settings.number - 1) / m_settings.number);
        else
            tryGeometry((n + m_settings.number - 1) / m_settings.number, m_settings.number);

        const QSize space = m_box->viewportSize(totalWidth(), totalHeight());
        const int w = std::max(totalWidth(), space.width());
        if (!m_settings.rowModeWins && !fits && columns.size() == 2)
            columns[1] = std::max(columns[1], w);
        contents = QSize(w, std::max(totalHeight(), space.height()));
    }

    // The told search, step by step.
    int rowAt(int y) const
    {
        if (y < 0)
            return 0;
        int low = 0;
        int high = int(rows.size()) - 2;
        int probe = (int(rows.size()) - 1) / 2;
        while (low != high) {
            if (y < rows[size_t(probe)])
                high = probe - 1;
            else
                low = probe;
            probe = (low + high + 1) / 2;
        }
        if (y < rows[size_t(probe)] || y > rows[size_t(probe) + 1])
            return int(m_sizes.size()) - 1;
        return probe;
    }

    static int hint(const std::vector<int>& edges)
    {
        size_t i = 0;
        while (i < 10 && i < edges.size() - 1 && edges[i] < 200)
            ++i;
        return edges[i] > 200 ? 200 : std::max(edges[i], 40);
    }

private:
    void fitRows(int n)
    {
        int highest = 0;
        for (const QSize& size : m_sizes)
            highest = std::max(highest, size.height());
        highest = std::max(highest, 1);
        int space = m_box->viewportSize(1, 1).height();
        // A height of the rows that is fixed may never fit.
        for (int before = space + 1; before != space;) {
            int count = std::max(std::min(space / highest, n), 1);
            if (m_settings.variableHeight && count < n) {
                do {
                    ++count;
                    tryGeometry(count, (n + count - 1) / count);
                } while (count <= n && totalHeight() <= space);
                --count;
            }
            tryGeometry(count, (n + count - 1) / count);
            before = space;
            space = std::min(space, m_box->viewportSize(totalWidth(), totalHeight()).height());
            if (rows.size() <= 2 || space >= totalHeight())
                return;
        }
    }

    void fitColumns(int n)
    {
        int widest = 0;
        for (const QSize& size : m_sizes)
            widest = std::max(widest, size.width());
        widest = std::max(widest, 1);
        int space = m_box->viewportSize(1, 1).width();
        for (int before = space + 1; before != space;) {
            int count = std::max(std::min(space / widest, n), 1);
            if (m_settings.variableWidth && count < n) {
                do {
                    ++count;
                    tryGeometry((n + count - 1) / count, count);
                } while (count <= n && totalWidth() <= space);
                --count;
            }
            tryGeometry((n + count - 1) / count, count);
            before = space;
            space = std::min(space, m_box->viewportSize(totalWidth(), totalHeight()).width());
            if (columns.size() <= 2 || space >= totalWidth())
                return;
        }
    }

    const ListBoxSkin* m_box;
    const std::vector<QSize>& m_sizes;
    const Settings m_settings;
};

// Handlers in the open, calls of virtual operations counted.
class OpenBox : public Box
{
public:
    using Box::Box;
    using ListBoxSkin::focusInEvent;
    using ListBoxSkin::resizeEvent;

    void clearSelection() override
    {
        ++cleared;
        blockedWhenCleared = signalsBlocked();
        countWhenCleared = int(count());
        Box::clearSelection();
    }
    void paintCell(QPainter* p, int row, int column) override
    {
        paintedCells << QPoint(column, row);
        Box::paintCell(p, row, column);
    }

    int cleared = 0;
    bool blockedWhenCleared = false;
    int countWhenCleared = -1;
    QList<QPoint> paintedCells;
};

bool runs(const Box& box, const char* name)
{
    return box.timer(name)->isActive();
}

bool updates(const Box& box)
{
    return runs(box, "listbox update timer");
}

int sumOfMeasurings(const Box& box)
{
    int sum = 0;
    for (int i = 0; i < int(box.count()); ++i)
        sum += box.block(i)->measured;
    return sum;
}

QString letters(const ListBoxSkin& box)
{
    QString all;
    for (int i = 0; i < int(box.count()); ++i)
        all += box.text(i);
    return all;
}

void fill(ListBoxSkin& box, const QString& each)
{
    for (const QChar letter : each)
        box.insertItem(new Block(40, 15, letter));
}

QPoint contentsPos(const ListBoxSkin& box)
{
    return {box.contentsX(), box.contentsY()};
}

} // namespace

class TestListBoxSkinModel : public QObject
{
    Q_OBJECT

private slots:
    void construction();
    void timers();
    void changedListBox();

    void itemByIndex();
    void indexOfItem();
    void insertByIndex_data();
    void insertByIndex();
    void insertAfter_data();
    void insertAfter();
    void insertOtherForms();
    void insertNull();
    void insertIntoFocused();
    void insertIntoFocusedTellsOfTheHead();
    void insertionIsNotMeasured();
    void stringLists_data();
    void stringLists();
    void inSort();
    void sort();
    void findItem_data();
    void findItem();
    void takeItem_data();
    void takeItem();
    void takeAnchor();
    void takeHeadForgetsCell();
    void removeItem();
    void changeItem_data();
    void changeItem();
    void clear();
    void itemsLeftAtTheEndAreReported();
    void clearRestoresBlockedSignals();
    void clearScrollsBack();
    void clearForgetsWhereADragWas();

    void manyChangesOneLayout();
    void triggerUpdateFlags();
    void refreshPaintsTheDirty();
    void refreshPaintsWideEntriesOnce();
    void updateItemMarks();
    void burstOfResizes();
    void noLayoutWhileResizing();
    void resizeEventOfAHiddenListBox();
    void newSizeOfAHiddenListBox();
    void barIsNoResize();
    void adjustItemsLaysOut();

    void layoutModes();
    void modesSchedule();
    void smallNumbers_data();
    void smallNumbers();
    void variableSizes();
    void settersWithoutDetours();
    void defaultGrid();
    void tryGeometryByItself();
    void tryGeometryFindsTheCurrentItem();
    void fixedRowHeight_data();
    void fixedRowHeight();
    void randomGrids_data();
    void randomGrids();
    void rowAt();
    void columnAt();
    void sizeHints_data();
    void sizeHints();
    void hintsAreKeptWhileVisible();

    void topItem();
    void setTopItem();
    void setBottomItem();
    void topItemInColumns();
    void numItemsVisible();
    void itemRect();
    void itemHeight();
    void itemYPos();
    void itemAt();
    void maxItemWidth();
    void oldInterface();
};

void TestListBoxSkinModel::construction()
{
    QWidget parent;
    OpenBox box(QSize(130, 75), &parent);
    QCOMPARE(QByteArray(box.name()), QByteArray("box"));
    QCOMPARE(box.parentWidget(), &parent);
    QCOMPARE(box.fixedRowHeight, 0);
    QCOMPARE(box.count(), 0U);
    QCOMPARE(box.currentItem(), -1);
    QVERIFY(!box.firstItem());
    QVERIFY(box.hasMouseTracking());
    QVERIFY(box.viewport()->hasMouseTracking());
    QCOMPARE(box.lineWidth(), 0);
    QCOMPARE(box.margin(), 0);
    QCOMPARE(box.frameWidth(), 0);
    QCOMPARE(box.hScrollBarMode(), ListBoxSkin::AlwaysOff);
    QCOMPARE(box.viewport()->focusProxy(), &box);
    QCOMPARE(box.viewport()->focusPolicy(), Qt::StrongFocus);
    QCOMPARE(box.rowMode(), ListBoxSkin::Variable);
    QCOMPARE(box.columnMode(), ListBoxSkin::FixedNumber);
    QVERIFY(box.variableHeight());
    QVERIFY(!box.variableWidth());
    QCOMPARE(int(ListBoxSkin::FixedNumber), 0);
    QCOMPARE(int(ListBoxSkin::FitToWidth), 1);
    QCOMPARE(int(ListBoxSkin::FitToHeight), 1);
    QCOMPARE(int(ListBoxSkin::Variable), 2);
    QCOMPARE(ListBoxSkin(&parent, nullptr, 0).vScrollBarMode(), ListBoxSkin::Auto);
}

void TestListBoxSkinModel::timers()
{
    Box box;
    box.blocks(3);
    for (const char* name :
         {"listbox update timer", "listbox visible timer", "listbox input timer", "listbox resize timer"}) {
        const QTimer* timer = box.timer(name);
        QVERIFY2(timer, name);
        QCOMPARE(timer->parent(), &box);
        QVERIFY(timer->isSingleShot());
    }
    QVERIFY(updates(box));
    QCOMPARE(box.timer("listbox update timer")->interval(), 0);
    QVERIFY(!runs(box, "listbox visible timer"));
    box.setCurrentItem(1);
    QVERIFY(runs(box, "listbox visible timer"));
    QCOMPARE(box.timer("listbox visible timer")->interval(), 1);
    QVERIFY(!runs(box, "listbox input timer"));
    box.type(QStringLiteral("2"));
    QVERIFY(runs(box, "listbox input timer"));
    QCOMPARE(box.timer("listbox input timer")->interval(), 500);
    box.showSettled();
    QVERIFY(!runs(box, "listbox resize timer"));
    box.resize(140, 80);
    QVERIFY(runs(box, "listbox resize timer"));
    QCOMPARE(box.timer("listbox resize timer")->interval(), 100);
    QVERIFY(!box.timer("listbox scroll timer"));
}

void TestListBoxSkinModel::changedListBox()
{
    QVERIFY(!ListBoxSkin::changedListBox);
    {
        ListBoxSkin box;
        const ListBoxSkin other;
        ListBoxSkin::changedListBox = &box;
        box.emitChangedSignal(true);
        QCOMPARE(ListBoxSkin::changedListBox, &box);
    }
    QVERIFY(!ListBoxSkin::changedListBox);
}

void TestListBoxSkinModel::itemByIndex()
{
    Box box;
    QVERIFY(!box.item(0));
    box.blocks(9);
    QVERIFY(!box.item(-1));
    QVERIFY(!box.item(9));
    for (const int i : {4, 5, 3, 8, 0, 7, 7, 1, 2, 6})
        QCOMPARE(box.item(i)->text(), QString::number(i));
    // Places move with what comes and goes before them.
    QCOMPARE(box.item(5)->text(), QStringLiteral("5"));
    box.insertItem(QStringLiteral("new"), 2);
    QCOMPARE(box.item(5)->text(), QStringLiteral("4"));
    delete box.item(0);
    QCOMPARE(box.item(5)->text(), QStringLiteral("5"));
    box.insertItem(QStringLiteral("first"), 0);
    QCOMPARE(box.item(5)->text(), QStringLiteral("4"));
    box.sort(false);
    QCOMPARE(box.item(0)->text(), QStringLiteral("new"));
    QCOMPARE(box.item(5)->text(), QStringLiteral("5"));
    box.clear();
    QVERIFY(!box.item(5));
    QVERIFY(!box.item(0));
    QCOMPARE(box.text(0), QString());
    QVERIFY(!box.pixmap(0));
}

void TestListBoxSkinModel::indexOfItem()
{
    Box box;
    Box other;
    box.blocks(5);
    other.blocks(2);
    for (int i = 0; i < 5; ++i)
        QCOMPARE(box.index(box.item(i)), i);
    QCOMPARE(box.index(nullptr), -1);
    QCOMPARE(box.index(other.item(1)), -1);
    const Block loose;
    QCOMPARE(box.index(&loose), -1);
    const std::unique_ptr<ListBoxSkinItem> taken(box.item(2));
    box.takeItem(taken.get());
    QCOMPARE(box.index(taken.get()), -1);
    QCOMPARE(box.index(box.item(2)), 2);
}

void TestListBoxSkinModel::insertByIndex_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("expected");
    QTest::newRow("empty, append") << "" << -1 << "x";
    QTest::newRow("empty, 0") << "" << 0 << "x";
    QTest::newRow("empty, beyond") << "" << 7 << "x";
    QTest::newRow("append") << "abc" << -1 << "abcx";
    QTest::newRow("far below 0") << "abc" << -100 << "abcx";
    QTest::newRow("head") << "abc" << 0 << "xabc";
    QTest::newRow("second") << "abc" << 1 << "axbc";
    QTest::newRow("before the last") << "abc" << 2 << "abxc";
    QTest::newRow("count") << "abc" << 3 << "abcx";
    QTest::newRow("beyond") << "abc" << 4 << "abcx";
    QTest::newRow("far beyond") << "abc" << 2147483647 << "abcx";
}

void TestListBoxSkinModel::insertByIndex()
{
    QFETCH(QString, before);
    QFETCH(int, index);
    QFETCH(QString, expected);
    Box box;
    fill(box, before);
    box.refreshSlot();
    QVERIFY(!updates(box));
    SignalLog log(&box);
    box.insertItem(new Block(40, 15, QStringLiteral("x")), index);
    QCOMPARE(letters(box), expected);
    QCOMPARE(box.texts().join(QString()), expected);
    QVERIFY(updates(box));
    QCOMPARE(log.take(), QStringList());
    QString backwards;
    for (const ListBoxSkinItem* item = box.item(int(box.count()) - 1); item; item = item->prev())
        backwards.prepend(item->text());
    QCOMPARE(backwards, expected);
    QCOMPARE(box.item(int(expected.indexOf('x')))->listBox(), &box);
}

void TestListBoxSkinModel::insertAfter_data()
{
    QTest::addColumn<int>("after");
    QTest::addColumn<QString>("expected");
    QTest::newRow("null") << -1 << "xabc";
    QTest::newRow("first") << 0 << "axbc";
    QTest::newRow("second") << 1 << "abxc";
    QTest::newRow("last") << 2 << "abcx";
}

void TestListBoxSkinModel::insertAfter()
{
    QFETCH(int, after);
    QFETCH(QString, expected);
    Box box;
    fill(box, QStringLiteral("abc"));
    box.insertItem(new Block(40, 15, QStringLiteral("x")), box.item(after));
    QCOMPARE(letters(box), expected);
    QCOMPARE(box.texts().join(QString()), expected);
}

void TestListBoxSkinModel::insertOtherForms()
{
    Box box;
    QPixmap pixmap(7, 5);
    pixmap.fill(Qt::red);
    box.insertItem(QStringLiteral("text"));
    box.insertItem(pixmap);
    box.insertItem(pixmap, QStringLiteral("both"));
    box.insertItem(QStringLiteral("text 0"), 0);
    box.insertItem(pixmap, 1);
    box.insertItem(pixmap, QStringLiteral("both 2"), 2);
    QCOMPARE(box.texts(), (QStringList{"text 0", "", "both 2", "text", "", "both"}));
    QList<bool> pictures;
    for (int i = 0; i < 6; ++i)
        pictures << (box.pixmap(i) != nullptr);
    QCOMPARE(pictures, (QList<bool>{false, true, true, false, true, true}));
    QCOMPARE(box.pixmap(4)->size(), QSize(7, 5));
}

void TestListBoxSkinModel::insertNull()
{
    Box box;
    box.blocks(1);
    const auto* null = static_cast<const ListBoxSkinItem*>(nullptr);
    QTest::ignoreMessage(QtWarningMsg, nullWarning);
    box.insertItem(null, 0);
    QTest::ignoreMessage(QtWarningMsg, nullWarning);
    box.insertItem(null, -1);
    QTest::ignoreMessage(QtWarningMsg, nullWarning);
    box.insertItem(null, box.firstItem());
    QCOMPARE(box.count(), 1U);
}

void TestListBoxSkinModel::insertIntoFocused()
{
    Box box;
    box.showSettled();
    box.focusNow();
    SignalLog log(&box);
    box.insertItem(new Block(40, 15, QString()), 0);
    QCOMPARE(log.take(), (QStringList{"highlighted()", "highlighted(\"\")", "highlighted(0)"}));
    QCOMPARE(box.currentItem(), 0);
    QVERIFY(!box.isSelected(0));
    box.insertItem(new Block(40, 15, QStringLiteral("second")), 0);
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(box.currentItem(), 1);
}

void TestListBoxSkinModel::insertIntoFocusedTellsOfTheHead()
{
    Box box;
    box.blocks(2);
    box.showSettled();
    box.focusNow();
    QCOMPARE(box.currentItem(), -1);
    SignalLog log(&box);
    box.insertItem(new Block(40, 15, QStringLiteral("x")), -1);
    QCOMPARE(log.take(), (QStringList{"highlighted(0)", "highlighted(\"0\")", "highlighted(0)"}));
    QCOMPARE(box.currentItem(), 0);
    QVERIFY(box.block(0)->isDirty());
}

void TestListBoxSkinModel::insertionIsNotMeasured()
{
    Box box;
    box.showSettled();
    box.focusNow();
    box.blocks(4);
    delete box.item(2);
    box.setCurrentItem(1);
    box.insertItem(new Block, box.item(0));
    QCOMPARE(sumOfMeasurings(box), 0);
    box.settle();
    QCOMPARE(sumOfMeasurings(box), 4);
}

void TestListBoxSkinModel::stringLists_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("expected");
    QTest::newRow("append") << -1 << "abcxyz";
    QTest::newRow("head") << 0 << "xyzabc";
    QTest::newRow("middle") << 1 << "axyzbc";
    QTest::newRow("count") << 3 << "abcxyz";
    QTest::newRow("beyond") << 100 << "abcxyz";
}

void TestListBoxSkinModel::stringLists()
{
    QFETCH(int, index);
    QFETCH(QString, expected);
    QStrList list;
    const char* strings[] = {"x", "y", "z", nullptr};
    for (int i = 0; i < 3; ++i)
        list.append(strings[i]);
    for (int form = 0; form < 5; ++form) {
        Box box;
        fill(box, QStringLiteral("abc"));
        if (form == 0)
            box.insertStringList({"x", "y", "z"}, index);
        else if (form == 1)
            box.insertStrList(&list, index);
        else if (form == 2)
            box.insertStrList(list, index);
        else
            box.insertStrList(strings, form == 3 ? -1 : 3, index);
        QCOMPARE(letters(box), expected);
    }
    Box box;
    box.insertStrList(strings, 2);
    box.insertStrList(strings, 0);
    box.insertStrList(static_cast<const char**>(nullptr), 5);
    box.insertStrList(static_cast<const QStrList*>(nullptr));
    box.insertStringList({});
    QCOMPARE(letters(box), QStringLiteral("xy"));
    const char* latin[] = {"\xe4", nullptr};
    box.insertStrList(latin);
    QCOMPARE(box.text(2), QString(QChar(0xe4)));
}

void TestListBoxSkinModel::inSort()
{
    Box box;
    ListBoxSkinItem* firstM = nullptr;
    for (const char* text : {"m", "Z", "a", "m", "B"}) {
        if (!firstM) {
            firstM = new Block(40, 15, QStringLiteral("m"));
            box.inSort(firstM);
        } else {
            box.inSort(QLatin1String(text));
        }
    }
    QCOMPARE(box.texts(), (QStringList{"B", "Z", "a", "m", "m"}));
    QCOMPARE(box.index(firstM), 4);
    // The first that is not smaller counts, sorted or not.
    box.insertItem(QStringLiteral("z"), 0);
    box.inSort(QStringLiteral("b"));
    QCOMPARE(box.text(0), QStringLiteral("b"));
    QTest::ignoreMessage(QtWarningMsg, nullWarning);
    box.inSort(static_cast<const ListBoxSkinItem*>(nullptr));
    QCOMPARE(box.count(), 7U);
}

void TestListBoxSkinModel::sort()
{
    Box box(QSize(50, 30));
    const QString wide = QString::fromUcs4(U"\U0001F600");
    box.insertStringList({"b", "a", QStringLiteral("\uffee"), "B", wide, "", "ab", "a"});
    box.setCurrentItem(1);
    ListBoxSkinItem* current = box.item(1);
    box.showSettled();
    box.setContentsPos(0, 40);
    QVERIFY(box.contentsY() > 0);
    SignalLog log(&box);
    box.sort();
    QCOMPARE(box.texts(), (QStringList{"", "B", "a", "a", "ab", "b", QStringLiteral("\uffee"), wide}));
    QCOMPARE(contentsPos(box), QPoint(0, 0));
    QVERIFY(updates(box));
    QCOMPARE(box.item(box.currentItem()), current);
    QVERIFY(current->selected());
    QCOMPARE(log.take(), QStringList());
    box.sort(false);
    QCOMPARE(box.texts(), (QStringList{wide, QStringLiteral("\uffee"), "b", "ab", "a", "a", "B", ""}));
    QCOMPARE(box.item(7)->prev(), box.item(6));
    QVERIFY(!box.item(7)->next());
    QVERIFY(!box.item(0)->prev());
}

void TestListBoxSkinModel::findItem_data()
{
    QTest::addColumn<int>("current");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");
    QTest::newRow("no current item") << -1 << "be" << 1;
    QTest::newRow("upper case") << -1 << "BE" << 1;
    QTest::newRow("current item itself") << 1 << "be" << 1;
    QTest::newRow("after the current item") << 2 << "be" << 3;
    QTest::newRow("around the end") << 4 << "be" << 1;
    QTest::newRow("whole text") << 0 << "beta" << 1;
    QTest::newRow("longer than the text") << 0 << "betas" << -1;
    QTest::newRow("not the beginning") << 0 << "eta" << -1;
    QTest::newRow("empty") << 0 << "" << -1;
}

void TestListBoxSkinModel::findItem()
{
    QFETCH(int, current);
    QFETCH(QString, text);
    QFETCH(int, expected);
    Box box;
    box.insertStringList({"alpha", "Beta", "gamma", "bEtter", "delta"});
    box.setCurrentItem(current);
    QCOMPARE(box.findItem(text), box.item(expected));
}

void TestListBoxSkinModel::takeItem_data()
{
    QTest::addColumn<QString>("items");
    QTest::addColumn<int>("current");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<int>("taken");
    QTest::addColumn<int>("currentAfter");
    QTest::addColumn<QStringList>("signalLines");
    const QString changed = QStringLiteral("selectionChanged()");
    QTest::newRow("not current") << "abc" << 0 << true << 2 << 0 << QStringList();
    QTest::newRow("before the current") << "abc" << 2 << true << 0 << 1 << QStringList();
    QTest::newRow("current, selected") << "abc" << 1 << true << 1 << 1
                                       << QStringList{"highlighted(c)", "highlighted(\"c\")", "highlighted(1)",
                                                      "currentChanged(c)", changed};
    QTest::newRow("current") << "abc" << 1 << false << 1 << 1
                             << QStringList{"highlighted(c)", "highlighted(\"c\")", "highlighted(1)",
                                            "currentChanged(c)"};
    QTest::newRow("current, last") << "abc" << 2 << true << 2 << 1
                                   << QStringList{"highlighted(b)", "highlighted(\"b\")", "highlighted(1)",
                                                  "currentChanged(b)", changed};
    QTest::newRow("current, head") << "abc" << 0 << true << 0 << 0
                                   << QStringList{"highlighted(b)", "highlighted(\"b\")", "highlighted(0)",
                                                  "currentChanged(b)", changed};
    QTest::newRow("next without text") << "a-c" << 0 << true << 0 << 0
                                       << QStringList{"highlighted()", "highlighted(0)", "currentChanged()", changed};
    QTest::newRow("the only one") << "a" << 0 << true << 0 << -1
                                  << QStringList{"highlighted(null)", "highlighted(-1)", "currentChanged(null)",
                                                 changed};
}

void TestListBoxSkinModel::takeItem()
{
    QFETCH(QString, items);
    QFETCH(int, current);
    QFETCH(bool, selected);
    QFETCH(int, taken);
    QFETCH(int, currentAfter);
    QFETCH(QStringList, signalLines);
    Box box;
    for (const QChar letter : items)
        box.insertItem(new Block(40, 15, letter == '-' ? QString() : QString(letter)));
    box.setCurrentItem(current);
    box.setSelected(current, selected);
    box.showSettled();
    SignalLog log(&box);
    const std::unique_ptr<ListBoxSkinItem> item(box.item(taken));
    box.takeItem(item.get());
    QCOMPARE(log.take(), signalLines);
    QCOMPARE(box.currentItem(), currentAfter);
    QCOMPARE(int(box.count()), int(items.size()) - 1);
    QVERIFY(updates(box));
    // What becomes current is not selected for that.
    if (taken == current)
        QVERIFY(!box.isSelected(currentAfter));
    box.takeItem(nullptr);
    QCOMPARE(log.take(), QStringList());
}

void TestListBoxSkinModel::takeAnchor()
{
    Box box;
    box.blocks(8);
    box.setSelectionMode(ListBoxSkin::Extended);
    box.setCurrentItem(1);
    box.showSettled();
    // The anchor is 2, the current item 5.
    box.key(Qt::Key_Down);
    box.setCurrentItem(5);
    delete box.item(2);
    QCOMPARE(box.currentItem(), 4);
    // A range from the new anchor, the current item.
    box.key(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(box.selection(), QStringLiteral("5 6"));
}

void TestListBoxSkinModel::takeHeadForgetsCell()
{
    Box box;
    box.blocks(9);
    box.setRowMode(3);
    box.setCurrentItem(4);
    box.showSettled();
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(1, 1));
    delete box.item(0);
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(1, 0));
    delete box.item(8);
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(1, 0));
    box.clear();
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(-1, -1));

    // While nothing is laid out, what was known of the cell shows.
    box.blocks(9);
    box.setRowMode(3);
    box.setCurrentItem(4);
    box.settle();
    box.resize(140, 80);
    delete box.item(8);
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(1, 1));
    delete box.item(0);
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(-1, -1));
    box.settle();
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(1, 0));
    box.focusNow();
    box.resize(130, 75);
    box.clear();
    box.blocks(1);
    QCOMPARE(box.currentItem(), 0);
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(0, 0));
}

void TestListBoxSkinModel::removeItem()
{
    Box box;
    box.blocks(4);
    box.setCurrentItem(3);
    SignalLog log(&box);
    box.removeItem(4);
    box.removeItem(-1);
    QCOMPARE(box.count(), 4U);
    QCOMPARE(log.take(), QStringList());
    box.removeItem(3);
    QCOMPARE(log.take(), (QStringList{"highlighted(2)", "highlighted(\"2\")", "highlighted(2)", "currentChanged(2)",
                                      "selectionChanged()"}));
    QCOMPARE(box.selection(), QString());
    box.removeItem(0);
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(letters(box), QStringLiteral("12"));
}

void TestListBoxSkinModel::changeItem_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("pixmap");
    QTest::newRow("item") << 0 << "x" << false;
    QTest::newRow("text") << 1 << "x" << false;
    QTest::newRow("pixmap") << 2 << "" << true;
    QTest::newRow("pixmap and text") << 3 << "x" << true;
}

void TestListBoxSkinModel::changeItem()
{
    QFETCH(int, form);
    QFETCH(QString, text);
    QFETCH(bool, pixmap);
    Box box;
    fill(box, QStringLiteral("abcd"));
    box.setSelectionMode(ListBoxSkin::Multi);
    box.setCurrentItem(3);
    box.selectAll(true);
    const QPixmap picture(3, 4);
    const auto change = [&](int index) {
        if (form == 0) {
            auto* item = new Block(40, 15, QStringLiteral("x"));
            box.changeItem(item, index);
            if (item->listBox() != &box)
                delete item;
        } else if (form == 1) {
            box.changeItem(QStringLiteral("x"), index);
        } else if (form == 2) {
            box.changeItem(picture, index);
        } else {
            box.changeItem(picture, QStringLiteral("x"), index);
        }
    };
    for (const int index : {-1, 4, 100}) {
        change(index);
        QCOMPARE(letters(box), QStringLiteral("abcd"));
    }
    SignalLog log(&box);
    change(1);
    QCOMPARE(box.count(), 4U);
    QCOMPARE(box.texts(), (QStringList{"a", text, "c", "d"}));
    QCOMPARE(box.pixmap(1) != nullptr, pixmap);
    QCOMPARE(box.currentItem(), 1);
    QCOMPARE(box.selection(), QStringLiteral("a c d"));
    QStringList lines{"selectionChanged()", "highlighted(" + text + ')'};
    if (!text.isEmpty())
        lines << "highlighted(\"x\")";
    lines << "highlighted(1)"
          << "currentChanged(" + text + ')';
    QCOMPARE(log.take(), lines);
    change(3);
    QCOMPARE(box.currentItem(), 3);
    QCOMPARE(box.texts(), (QStringList{"a", text, "c", text}));
}

void TestListBoxSkinModel::clear()
{
    OpenBox box;
    box.blocks(9);
    box.setColumnMode(3);
    box.setCurrentItem(4);
    box.showSettled();
    QCOMPARE(box.numColumns(), 3);
    SignalLog log(&box);
    box.clear();
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(box.count(), 0U);
    QVERIFY(!box.firstItem());
    QCOMPARE(box.currentItem(), -1);
    QCOMPARE(box.cleared, 1);
    QVERIFY(box.blockedWhenCleared);
    QCOMPARE(box.countWhenCleared, 0);
    QVERIFY(!box.signalsBlocked());
    QVERIFY(updates(box));
    box.settle();
    // One of each was what remained of the numbers.
    QCOMPARE(QSize(box.numColumns(), box.numRows()), QSize(1, 1));
    QCOMPARE(box.columnMode(), ListBoxSkin::FixedNumber);
    box.blocks(4);
    box.settle();
    QCOMPARE(QSize(box.numColumns(), box.numRows()), QSize(1, 4));
    box.setRowMode(2);
    box.clear();
    box.blocks(3);
    box.settle();
    QCOMPARE(QSize(box.numColumns(), box.numRows()), QSize(3, 1));
    QCOMPARE(box.rowMode(), ListBoxSkin::FixedNumber);
    // Whatever is deleted from here on leaves again.
    delete box.item(0);
    QCOMPARE(box.count(), 2U);
}

void TestListBoxSkinModel::itemsLeftAtTheEndAreReported()
{
    // Puts another item into its place.
    class Heir : public Block
    {
    public:
        explicit Heir(ListBoxSkinItem* heir) : m_heir(heir) {}
        ~Heir() override { listBox()->insertItem(m_heir); }

    private:
        ListBoxSkinItem* m_heir;
    };
    const std::unique_ptr<Block> left(new Block);
    auto box = std::make_unique<Box>();
    box->insertItem(new Heir(left.get()));
    QTest::ignoreMessage(QtWarningMsg, "ASSERT: \"!head\" in listbox_skin (113)");
    box.reset();
    QVERIFY(!left->listBox());
    QVERIFY(!left->next());
}

void TestListBoxSkinModel::clearRestoresBlockedSignals()
{
    OpenBox box;
    box.blocks(2);
    box.blockSignals(true);
    box.clear();
    QVERIFY(box.signalsBlocked());
    box.blockSignals(false);

    // The entries about what can be selected go, those of taken items, too.
    box.blocks(2);
    box.item(0)->setSelectable(false);
    const std::unique_ptr<ListBoxSkinItem> taken(box.item(0));
    box.takeItem(taken.get());
    QVERIFY(!taken->isSelectable());
    box.clear();
    QVERIFY(taken->isSelectable());
}

void TestListBoxSkinModel::clearScrollsBack()
{
    Box box;
    box.blocks(50);
    box.showSettled();
    box.setContentsPos(0, 400);
    box.clear();
    box.settle();
    QCOMPARE(contentsPos(box), QPoint(0, 0));
    QCOMPARE(QSize(box.contentsWidth(), box.contentsHeight()), QSize(130, 75));
}

void TestListBoxSkinModel::clearForgetsWhereADragWas()
{
    Box box;
    box.blocks(4);
    box.showSettled();
    box.press(QPoint(5, 5));
    box.drag(QPoint(5, 50));
    QCOMPARE(box.currentItem(), 3);
    box.clear();
    box.blocks(4);
    // The same cell again, which is news now.
    box.drag(QPoint(5, 50));
    QCOMPARE(box.currentItem(), 3);
    box.release(QPoint(5, 50));
}

void TestListBoxSkinModel::manyChangesOneLayout()
{
    OpenBox box;
    box.blocks(5);
    box.showSettled();
    const int measured = sumOfMeasurings(box);
    box.paintedCells.clear();
    box.insertItem(new Block);
    box.setVariableWidth(true);
    box.triggerUpdate(true);
    box.setSelectionMode(ListBoxSkin::Multi);
    QCOMPARE(sumOfMeasurings(box), measured);
    QVERIFY(box.paintedCells.isEmpty());
    box.settle();
    QCOMPARE(sumOfMeasurings(box), measured + 6);
    QCOMPARE(box.paintedCells.size(), 5);
}

void TestListBoxSkinModel::triggerUpdateFlags()
{
    OpenBox box;
    box.blocks(3);
    box.showSettled();
    const int measured = sumOfMeasurings(box);
    box.paintedCells.clear();
    // Neither layout nor anything that is dirty.
    box.triggerUpdate(false);
    QVERIFY(updates(box));
    box.settle();
    QCOMPARE(sumOfMeasurings(box), measured);
    QVERIFY(box.paintedCells.isEmpty());
    box.triggerUpdate(true);
    // An update that wants no layout does not call the other one off.
    box.triggerUpdate(false);
    box.settle();
    QCOMPARE(sumOfMeasurings(box), measured + 3);
    QCOMPARE(box.paintedCells.size(), 3);
}

void TestListBoxSkinModel::refreshPaintsTheDirty()
{
    OpenBox box;
    box.blocks(5);
    box.showSettled();
    box.paintedCells.clear();
    box.updateItem(3);
    box.updateItem(box.item(1));
    QVERIFY(box.block(3)->isDirty());
    QVERIFY(!box.block(2)->isDirty());
    box.refreshSlot();
    QVERIFY(!updates(box));
    QCOMPARE(box.paintedCells, (QList<QPoint>{{0, 1}, {0, 3}}));
    QVERIFY(!box.block(3)->isDirty());
    box.paintedCells.clear();
    box.updateItem(3);
    box.triggerUpdate(true);
    box.refreshSlot();
    QCOMPARE(box.paintedCells.size(), 5);
    // Everything once only.
    box.paintedCells.clear();
    box.updateItem(3);
    box.refreshSlot();
    QCOMPARE(box.paintedCells, (QList<QPoint>{{0, 3}}));
}

// Those that are too wide to be seen whole stay dirty; those half in sight are painted each time.
void TestListBoxSkinModel::refreshPaintsWideEntriesOnce()
{
    OpenBox box;
    box.resize(130, 70);
    box.blocks(8, 500);
    box.showSettled();
    box.viewport()->QWidget::repaint();
    const auto painted = [&box](int changed) {
        box.paintedCells.clear();
        box.updateItem(changed);
        box.refreshSlot();
        return box.paintedCells;
    };
    QCOMPARE(painted(3), (QList<QPoint>{{0, 3}, {0, 4}}));
    QCOMPARE(painted(0), (QList<QPoint>{{0, 0}, {0, 4}}));
    QVERIFY(box.block(3)->isDirty());
    box.setContentsPos(50, 20);
    box.viewport()->QWidget::repaint();
    QCOMPARE(painted(3), (QList<QPoint>{{0, 3}}));
    box.setContentsPos(370, 30);
    box.viewport()->QWidget::repaint();
    QCOMPARE(painted(3), (QList<QPoint>{{0, 3}, {0, 6}}));
    box.setSelectionMode(ListBoxSkin::Extended);
    box.setContentsPos(0, 0);
    box.resize(500, 75);
    box.settle();
    box.viewport()->QWidget::repaint();
    QVERIFY(!box.block(3)->isDirty());
    box.selectAll(true);
    QVERIFY(box.block(3)->isDirty());
    box.refreshSlot();
    QVERIFY(!box.block(3)->isDirty());
}

void TestListBoxSkinModel::updateItemMarks()
{
    Box box;
    box.blocks(2);
    box.showSettled();
    box.updateItem(-1);
    box.updateItem(2);
    box.updateItem(nullptr);
    QVERIFY(!updates(box));
    box.updateItem(1);
    QVERIFY(updates(box));
    QCOMPARE(box.timer("listbox update timer")->interval(), 0);
    QVERIFY(box.block(1)->isDirty());
}

void TestListBoxSkinModel::burstOfResizes()
{
    Box box;
    box.blocks(6);
    box.setColumnMode(ListBoxSkin::FitToWidth);
    box.showSettled();
    QCOMPARE(box.numColumns(), 3);
    const int measured = sumOfMeasurings(box);
    for (const int width : {90, 170, 210, 95, 250})
        box.resize(width, 80);
    QCOMPARE(sumOfMeasurings(box), measured);
    QVERIFY(runs(box, "listbox resize timer"));
    box.settle();
    QCOMPARE(sumOfMeasurings(box), measured + 6);
    QCOMPARE(box.numColumns(), 6);
}

void TestListBoxSkinModel::noLayoutWhileResizing()
{
    Box box;
    box.blocks(6);
    box.showSettled();
    box.resize(140, 80);
    const int measured = sumOfMeasurings(box);
    // The single column reaches across at once, so that highlights do.
    QCOMPARE(box.maxItemWidth(), 140L);
    box.insertItem(new Block);
    box.doLayout();
    box.refreshSlot();
    QCOMPARE(box.numRows(), 6);
    QCOMPARE(sumOfMeasurings(box), measured);
    box.settle();
    QCOMPARE(box.numRows(), 7);
}

// Whoever delivers a change of size to a list box that is not on the screen gets the same delay.
void TestListBoxSkinModel::resizeEventOfAHiddenListBox()
{
    OpenBox box;
    box.blocks(3);
    box.doLayout();
    const int measured = sumOfMeasurings(box);
    for (int i = 0; i < 4; ++i) {
        QResizeEvent event(QSize(130 + i, 75), QSize(129 + i, 75));
        box.resizeEvent(&event);
    }
    QVERIFY(runs(box, "listbox resize timer"));
    QCOMPARE(box.timer("listbox resize timer")->interval(), 100);
    box.settle();
    box.doLayout();
    QCOMPARE(sumOfMeasurings(box), measured + 3);
}

// It gets no event before it is shown.
void TestListBoxSkinModel::newSizeOfAHiddenListBox()
{
    Box box;
    box.blocks(2);
    for (const QSize size : {QSize(130, 75), QSize(300, 200), QSize(60, 40)}) {
        box.resize(size.width(), size.height());
        box.doLayout();
        QCOMPARE(QSize(box.contentsWidth(), box.contentsHeight()), size);
        QCOMPARE(box.itemRect(box.item(0)), QRect(0, 0, size.width(), 15));
    }
}

// The frame that makes way for a bar is told a size, too.
void TestListBoxSkinModel::barIsNoResize()
{
    OpenBox box;
    box.setVScrollBarMode(ListBoxSkin::Auto);
    box.blocks(2);
    box.showSettled();
    box.blocks(10);
    box.refreshSlot();
    QVERIFY(box.verticalScrollBar()->isVisible());
    QVERIFY(!runs(box, "listbox resize timer"));
    QResizeEvent event(box.size(), box.size());
    box.resizeEvent(&event);
    QVERIFY(runs(box, "listbox resize timer"));
}

void TestListBoxSkinModel::adjustItemsLaysOut()
{
    OpenBox box;
    box.blocks(6);
    box.setColumnMode(ListBoxSkin::FitToWidth);
    box.showSettled();
    box.resize(90, 75);
    QTRY_VERIFY_WITH_TIMEOUT(!updates(box), 30000);
    box.paintedCells.clear();
    QTRY_VERIFY_WITH_TIMEOUT(!runs(box, "listbox resize timer"), 30000);
    QCOMPARE(box.numColumns(), 2);
    QTRY_COMPARE_WITH_TIMEOUT(box.paintedCells, (QList<QPoint>{{0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 1}, {1, 2}}), 30000);
}

void TestListBoxSkinModel::layoutModes()
{
    Box box;
    box.setRowMode(ListBoxSkin::FitToHeight);
    QCOMPARE(box.rowMode(), ListBoxSkin::FitToHeight);
    QCOMPARE(box.columnMode(), ListBoxSkin::Variable);
    box.setColumnMode(ListBoxSkin::FitToWidth);
    QCOMPARE(box.rowMode(), ListBoxSkin::Variable);
    QCOMPARE(box.columnMode(), ListBoxSkin::FitToWidth);
    box.setRowMode(ListBoxSkin::Variable);
    QCOMPARE(box.rowMode(), ListBoxSkin::Variable);
    box.setRowMode(2);
    QCOMPARE(box.rowMode(), ListBoxSkin::FixedNumber);
    QCOMPARE(box.columnMode(), ListBoxSkin::Variable);
    box.setColumnMode(ListBoxSkin::Variable);
    QCOMPARE(box.columnMode(), ListBoxSkin::Variable);
    box.setColumnMode(2);
    QCOMPARE(box.columnMode(), ListBoxSkin::FixedNumber);
    QCOMPARE(box.rowMode(), ListBoxSkin::Variable);
    // Each direction remembers its number.
    box.blocks(12);
    box.setRowMode(3);
    box.setColumnMode(ListBoxSkin::FixedNumber);
    box.doLayout();
    QCOMPARE(QSize(box.numColumns(), box.numRows()), QSize(2, 6));
    box.setRowMode(ListBoxSkin::FixedNumber);
    box.doLayout();
    QCOMPARE(QSize(box.numColumns(), box.numRows()), QSize(4, 3));
}

void TestListBoxSkinModel::modesSchedule()
{
    Box box;
    box.showSettled();
    const auto schedules = [&box](const std::function<void()>& change) {
        change();
        const bool scheduled = updates(box);
        box.settle();
        return scheduled;
    };
    QVERIFY(!schedules([&] { box.setRowMode(ListBoxSkin::Variable); }));
    QVERIFY(!schedules([&] { box.setColumnMode(ListBoxSkin::Variable); }));
    QVERIFY(schedules([&] { box.setRowMode(ListBoxSkin::FitToHeight); }));
    QVERIFY(schedules([&] { box.setColumnMode(ListBoxSkin::FitToWidth); }));
    QVERIFY(schedules([&] { box.setRowMode(3); }));
    QVERIFY(schedules([&] { box.setColumnMode(3); }));
    QVERIFY(schedules([&] { box.setColumnMode(3); }));
    QVERIFY(!schedules([&] { box.setVariableWidth(false); }));
    QVERIFY(schedules([&] { box.setVariableWidth(true); }));
    QVERIFY(!schedules([&] { box.setVariableWidth(true); }));
    QVERIFY(!schedules([&] { box.setVariableHeight(true); }));
    QVERIFY(schedules([&] { box.setVariableHeight(false); }));
    QVERIFY(!schedules([&] { box.setVariableHeight(false); }));
    QVERIFY(schedules([&] { box.setSelectionMode(ListBoxSkin::Multi); }));
    QVERIFY(!schedules([&] { box.setSelectionMode(ListBoxSkin::Multi); }));
    QVERIFY(box.variableWidth());
    QVERIFY(!box.variableHeight());
}

void TestListBoxSkinModel::smallNumbers_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("expected");
    QTest::newRow("0") << 0 << 1;
    QTest::newRow("negative") << -5 << 1;
    QTest::newRow("1") << 1 << 1;
    QTest::newRow("2") << 2 << 2;
}

void TestListBoxSkinModel::smallNumbers()
{
    QFETCH(int, number);
    QFETCH(int, expected);
    Box box;
    box.blocks(8);
    box.setColumnMode(number);
    box.doLayout();
    QCOMPARE(box.numColumns(), expected);
    box.setRowMode(number);
    box.doLayout();
    QCOMPARE(box.numRows(), expected);
}

void TestListBoxSkinModel::variableSizes()
{
    Box box(QSize(300, 300));
    for (const QSize& size : {QSize(10, 12), QSize(20, 5), QSize(40, 7), QSize(5, 30)})
        box.insertItem(new Block(size.width(), size.height()));
    box.setRowMode(2);
    QCOMPARE(box.maxItemWidth(), 80L);
    QCOMPARE(QSize(box.itemHeight(0), box.itemHeight(1)), QSize(12, 30));
    box.setVariableWidth(true);
    QCOMPARE(box.maxItemWidth(), 60L);
    QCOMPARE(box.itemRect(box.item(3)), QRect(20, 12, 40, 30));
    box.setVariableHeight(false);
    QCOMPARE(QSize(box.itemHeight(0), box.itemHeight(1)), QSize(30, 30));
}

// A subclass that sets the number in its own setColumnMode(LayoutMode) is not called back.
void TestListBoxSkinModel::settersWithoutDetours()
{
    class Stubborn : public Box
    {
    public:
        using Box::setColumnMode;
        using Box::setRowMode;
        void setColumnMode(LayoutMode mode) override
        {
            ++calls;
            Box::setColumnMode(mode);
        }
        void setRowMode(LayoutMode mode) override
        {
            ++calls;
            Box::setRowMode(mode);
        }
        int calls = 0;
    };
    Stubborn box;
    box.setColumnMode(3);
    box.setRowMode(3);
    QCOMPARE(box.calls, 0);
}

void TestListBoxSkinModel::defaultGrid()
{
    Box box;
    box.blocks(3);
    box.showSettled();
    // Stretched across, and no shorter than the viewport.
    QCOMPARE(box.itemRect(box.item(2)), QRect(0, 30, 130, 15));
    QCOMPARE(QSize(box.contentsWidth(), box.contentsHeight()), QSize(130, 75));
    box.block(0)->resize(200, 15);
    box.triggerUpdate(true);
    box.settle();
    QCOMPARE(box.itemRect(box.item(2)), QRect(0, 30, 200, 15));
    QCOMPARE(box.contentsWidth(), 200);
    // A single column that follows from the rows is not stretched.
    box.block(0)->resize(40, 15);
    box.setRowMode(3);
    box.settle();
    QCOMPARE(box.itemRect(box.item(2)), QRect(0, 30, 40, 15));
    QCOMPARE(box.contentsWidth(), 130);
    // Nor are two columns.
    box.setColumnMode(2);
    box.settle();
    QCOMPARE(box.itemRect(box.item(2)), QRect(40, 0, 40, 15));
    // The vertical bar takes its width from the stretched column.
    box.setColumnMode(1);
    box.setVScrollBarMode(ListBoxSkin::AlwaysOn);
    box.settle();
    QCOMPARE(box.itemRect(box.item(2)).width(), box.visibleWidth());
    QVERIFY(box.visibleWidth() < 130);
}

void TestListBoxSkinModel::tryGeometryByItself()
{
    Box box;
    box.blocks(6);
    QVERIFY(!box.testAttribute(Qt::WA_WState_Polished));
    box.doLayout();
    QVERIFY(box.testAttribute(Qt::WA_WState_Polished));
    box.tryGeometry(2, 3);
    QCOMPARE(QSize(box.numColumns(), box.numRows()), QSize(3, 2));
    box.tryGeometry(4, 5);
    QCOMPARE(QSize(box.numColumns(), box.numRows()), QSize(5, 4));
    QCOMPARE(box.maxItemWidth(), 5 * 40L);
    box.tryGeometry(0, -3);
    QCOMPARE(QSize(box.numColumns(), box.numRows()), QSize(1, 1));
    // Items that find no place do not count.
    box.block(5)->resize(70, 90);
    box.tryGeometry(5, 1);
    QCOMPARE(box.maxItemWidth(), 40L);
    QCOMPARE(box.itemHeight(4), 15);
    box.tryGeometry(6, 1);
    QCOMPARE(box.maxItemWidth(), 70L);
    QCOMPARE(box.itemHeight(5), 90);
}

void TestListBoxSkinModel::tryGeometryFindsTheCurrentItem()
{
    Box box;
    box.blocks(10);
    box.setCurrentItem(7);
    box.doLayout();
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(0, 7));
    box.tryGeometry(3, 4);
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(2, 1));
    // Not among those that have a place: what was known stays.
    box.tryGeometry(2, 2);
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(2, 1));
    box.setCurrentItem(5);
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(2, 1));
    box.setCurrentItem(0);
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(0, 0));
}

void TestListBoxSkinModel::fixedRowHeight_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("variable");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::newRow("none") << 0 << true << 15 << 30;
    QTest::newRow("none, equal rows") << 0 << false << 30 << 30;
    QTest::newRow("negative") << -20 << true << 15 << 30;
    QTest::newRow("20") << 20 << true << 20 << 20;
    QTest::newRow("20, equal rows") << 20 << false << 20 << 20;
    QTest::newRow("1") << 1 << true << 1 << 1;
}

void TestListBoxSkinModel::fixedRowHeight()
{
    QFETCH(int, height);
    QFETCH(bool, variable);
    QFETCH(int, first);
    QFETCH(int, second);
    Box box(QSize(130, 20));
    for (int i = 0; i < 10; ++i)
        box.insertItem(new Block(40, i % 2 == 0 ? 15 : 30));
    box.setVariableHeight(variable);
    box.fixedRowHeight = height;
    box.showSettled();
    QCOMPARE(QSize(box.itemHeight(0), box.itemHeight(1)), QSize(first, second));
    QCOMPARE(box.contentsHeight(), std::max(5 * (first + second), 20));
    QCOMPARE(box.fixedRowHeight, height);
    // The next layout finds a new value.
    box.fixedRowHeight = 9;
    QCOMPARE(box.itemHeight(0), first);
    box.triggerUpdate(true);
    QCOMPARE(box.itemHeight(0), 9);
}

void TestListBoxSkinModel::randomGrids_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 12; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestListBoxSkinModel::randomGrids()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    for (int round = 0; round < 60; ++round) {
        Box box(QSize(int(random.bounded(1, 300)), int(random.bounded(1, 200))));
        if (random.bounded(2) == 0)
            box.setVScrollBarMode(ListBoxSkin::Auto);
        if (random.bounded(4) == 0)
            box.setHScrollBarMode(ListBoxSkin::Auto);
        std::vector<QSize> sizes(random.bounded(40U));
        const int widest = random.bounded(5) == 0 ? 300 : 60;
        const bool equal = random.bounded(4) == 0;
        for (QSize& size : sizes) {
            size = equal && &size != &sizes.front()
                       ? sizes.front()
                       : QSize(random.bounded(widest), random.bounded(random.bounded(6) == 0 ? 120 : 30));
            box.insertItem(new Block(size.width(), size.height()));
        }
        Grid::Settings settings;
        settings.rowModeWins = random.bounded(2) == 0;
        settings.mode = random.bounded(2) == 0 ? ListBoxSkin::FixedNumber : ListBoxSkin::FitToWidth;
        settings.number = random.bounded(1, 7);
        settings.variableWidth = random.bounded(2) == 0;
        settings.variableHeight = random.bounded(2) == 0;
        settings.fixedRowHeight = random.bounded(4) == 0 ? random.bounded(50) : 0;
        box.setVariableWidth(settings.variableWidth);
        box.setVariableHeight(settings.variableHeight);
        box.fixedRowHeight = settings.fixedRowHeight;
        if (settings.rowModeWins) {
            box.setRowMode(settings.number);
            box.setRowMode(settings.mode);
        } else {
            box.setColumnMode(settings.number);
            box.setColumnMode(settings.mode);
        }

        Grid grid(&box, sizes, settings);
        grid.layOut();
        box.doLayout();
        // The bars that the first layout has shown do not count in the second.
        box.triggerUpdate(true);
        box.doLayout();
        QCOMPARE(QSize(box.numColumns(), box.numRows()),
                 QSize(int(grid.columns.size()), int(grid.rows.size())) - QSize(1, 1));
        QCOMPARE(QSize(box.contentsWidth(), box.contentsHeight()), grid.contents);
        QCOMPARE(box.maxItemWidth(), long(grid.totalWidth()));
        QCOMPARE(box.sizeHint(), QSize(Grid::hint(grid.columns), Grid::hint(grid.rows)));
        for (int y = -3; y < grid.totalHeight() + 4; ++y)
            QCOMPARE(box.rowAt(y), grid.rowAt(y));
        for (size_t i = 0; i < sizes.size(); ++i) {
            const size_t row = i % (grid.rows.size() - 1);
            const size_t column = i / (grid.rows.size() - 1);
            const QRect cell(QPoint(grid.columns[column], grid.rows[row]),
                             QPoint(grid.columns[column + 1] - 1, grid.rows[row + 1] - 1));
            QCOMPARE(box.itemHeight(int(i)), cell.height());
            box.setContentsPos(cell.x(), cell.y());
            const QRect shown(contentsPos(box), QSize(box.visibleWidth(), box.visibleHeight()));
            QCOMPARE(box.itemRect(box.item(int(i))),
                     cell.intersects(shown) ? cell.translated(-shown.topLeft()) : QRect());
            if (!cell.isEmpty())
                QCOMPARE(box.itemAt(box.contentsToViewport(cell.bottomRight())), box.item(int(i)));
        }
    }
}

void TestListBoxSkinModel::rowAt()
{
    Box box;
    box.blocks(4, 40, 20);
    box.showSettled();
    QCOMPARE(box.rowAt(-1), 0);
    QCOMPARE(box.rowAt(0), 0);
    QCOMPARE(box.rowAt(19), 0);
    QCOMPARE(box.rowAt(20), 1);
    QCOMPARE(box.rowAt(79), 3);
    QCOMPARE(box.rowAt(80), 3);
    QCOMPARE(box.rowAt(81), 3);
    // The last item's index, not a row's.
    box.setColumnMode(2);
    box.settle();
    QCOMPARE(box.numRows(), 2);
    QCOMPARE(box.rowAt(40), 1);
    QCOMPARE(box.rowAt(41), 3);
    QCOMPARE(box.rowAt(2147483647), 3);
    box.clear();
    box.settle();
    QCOMPARE(box.rowAt(0), 0);
    QCOMPARE(box.rowAt(1), -1);
}

void TestListBoxSkinModel::columnAt()
{
    Box box;
    box.blocks(6);
    box.setColumnMode(3);
    box.showSettled();
    QCOMPARE(box.columnAt(-5), 0);
    QCOMPARE(box.columnAt(0), 0);
    QCOMPARE(box.columnAt(39), 0);
    QCOMPARE(box.columnAt(40), 1);
    QCOMPARE(box.columnAt(81), 2);
    QCOMPARE(box.columnAt(119), 2);
    QCOMPARE(box.columnAt(120), 2);
    QCOMPARE(box.columnAt(2147483647), 2);
}

void TestListBoxSkinModel::sizeHints_data()
{
    QTest::addColumn<int>("items");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QSize>("hint");
    QTest::addColumn<QSize>("minimum");
    // In a viewport of 30 x 20; the minimum's height without the scroll bar's extent, where it is below 200.
    QTest::newRow("empty") << 0 << QSize(40, 15) << 1 << QSize(40, 40) << QSize(30, 0);
    QTest::newRow("two") << 2 << QSize(35, 15) << 1 << QSize(40, 40) << QSize(35, 15);
    QTest::newRow("a few") << 5 << QSize(50, 15) << 1 << QSize(50, 75) << QSize(50, 15);
    QTest::newRow("ten") << 10 << QSize(50, 15) << 1 << QSize(50, 150) << QSize(50, 15);
    QTest::newRow("ten of more") << 40 << QSize(50, 15) << 1 << QSize(50, 150) << QSize(50, 15);
    QTest::newRow("199 high") << 1 << QSize(50, 199) << 1 << QSize(50, 199) << QSize(50, 200);
    QTest::newRow("200 wide and high") << 1 << QSize(200, 200) << 1 << QSize(200, 200) << QSize(200, 200);
    QTest::newRow("wide and high") << 3 << QSize(300, 199) << 1 << QSize(200, 200) << QSize(200, 200);
    QTest::newRow("many columns") << 30 << QSize(13, 2) << 15 << QSize(130, 40) << QSize(13, 2);
    QTest::newRow("narrow column") << 4 << QSize(4, 2) << 4 << QSize(40, 40) << QSize(10, 2);
}

void TestListBoxSkinModel::sizeHints()
{
    QFETCH(int, items);
    QFETCH(QSize, size);
    QFETCH(int, columns);
    QFETCH(QSize, hint);
    QFETCH(QSize, minimum);
    Box box(QSize(30, 20));
    box.blocks(items, size.width(), size.height());
    box.setColumnMode(columns);
    // An empty row is as high as the contents of its cells.
    const int extent = box.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &box);
    QCOMPARE(box.sizeHint(), hint);
    QCOMPARE(box.minimumSizeHint(),
             QSize(minimum.width(), std::clamp(minimum.height() == 200 ? 200 : minimum.height() + extent, 10, 200)));
}

void TestListBoxSkinModel::hintsAreKeptWhileVisible()
{
    Box box;
    box.blocks(4);
    const QSize four = box.sizeHint();
    QCOMPARE(four, QSize(130, 60));
    box.blocks(4);
    QCOMPARE(box.sizeHint(), QSize(130, 120));
    const QSize minimum = box.minimumSizeHint();
    box.showSettled();
    box.block(0)->resize(170, 90);
    box.blocks(2);
    box.settle();
    QCOMPARE(box.maxItemWidth(), 170L);
    QCOMPARE(box.sizeHint(), QSize(130, 120));
    QCOMPARE(box.minimumSizeHint(), minimum);
    box.hide();
    QCOMPARE(box.sizeHint(), QSize(170, 200));
    QCOMPARE(box.minimumSizeHint().width(), 170);
    QCOMPARE(box.minimumSizeHint().height(), minimum.height() + 75);
}

void TestListBoxSkinModel::topItem()
{
    Box box;
    QCOMPARE(box.topItem(), 0);
    box.blocks(20);
    box.showSettled();
    QCOMPARE(box.topItem(), 0);
    box.setContentsPos(0, 15);
    QCOMPARE(box.topItem(), 1);
    box.setContentsPos(0, 16);
    QCOMPARE(box.topItem(), 2);
    box.setContentsPos(0, 29);
    QCOMPARE(box.topItem(), 2);
}

void TestListBoxSkinModel::setTopItem()
{
    Box box;
    box.blocks(20);
    box.showSettled();
    box.setTopItem(7);
    QCOMPARE(box.contentsY(), 105);
    QCOMPARE(box.topItem(), 7);
    box.setTopItem(20);
    QCOMPARE(box.contentsY(), 105);
    box.setTopItem(-1);
    QCOMPARE(box.contentsY(), 105);
    box.setTopItem(19);
    QCOMPARE(box.contentsY(), 225);
    box.setTopItem(0);
    QCOMPARE(box.contentsY(), 0);
    // What has just come is laid out first.
    box.blocks(20);
    box.setTopItem(30);
    QCOMPARE(box.contentsY(), 450);
}

void TestListBoxSkinModel::setBottomItem()
{
    Box box;
    box.blocks(20);
    box.showSettled();
    box.setBottomItem(10);
    QCOMPARE(box.contentsY(), 90);
    QCOMPARE(box.itemRect(box.item(10)).bottom(), 74);
    box.setBottomItem(20);
    box.setBottomItem(-1);
    QCOMPARE(box.contentsY(), 90);
    box.setBottomItem(2);
    QCOMPARE(box.contentsY(), 0);
    box.setBottomItem(19);
    QCOMPARE(box.contentsY(), 225);
}

void TestListBoxSkinModel::topItemInColumns()
{
    Box box;
    box.blocks(40);
    box.setRowMode(10);
    box.showSettled();
    QCOMPARE(box.contentsWidth(), 160);
    box.setContentsPos(0, 32);
    QCOMPARE(box.topItem(), 3);
    // In sight as wide as it is: not moved sideways.
    box.setTopItem(21);
    QCOMPARE(contentsPos(box), QPoint(0, 15));
    box.setTopItem(32);
    QCOMPARE(contentsPos(box), QPoint(30, 30));
    QCOMPARE(box.topItem(), 2);
    box.setBottomItem(19);
    QCOMPARE(contentsPos(box), QPoint(30, 75));
    box.setBottomItem(6);
    QCOMPARE(contentsPos(box), QPoint(0, 30));
}

void TestListBoxSkinModel::numItemsVisible()
{
    Box box;
    QCOMPARE(box.numItemsVisible(), 0);
    box.blocks(3);
    box.showSettled();
    QCOMPARE(box.numItemsVisible(), 3);
    box.blocks(9);
    QCOMPARE(box.numItemsVisible(), 5);
    box.settle();
    box.setContentsPos(0, 1);
    QCOMPARE(box.numItemsVisible(), 6);
    box.setColumnMode(5);
    box.settle();
    // Three columns and a bit of the fourth, of three rows each.
    QCOMPARE(box.numItemsVisible(), 12);
    box.setColumnMode(2);
    box.settle();
    QCOMPARE(box.numItemsVisible(), 10);
}

void TestListBoxSkinModel::itemRect()
{
    Box box;
    box.blocks(12);
    box.showSettled();
    QVERIFY(!box.itemRect(nullptr).isValid());
    QCOMPARE(box.itemRect(box.item(4)), QRect(0, 60, 130, 15));
    QVERIFY(!box.itemRect(box.item(5)).isValid());
    QVERIFY(!box.itemVisible(5));
    box.setContentsPos(0, 20);
    QVERIFY(!box.itemRect(box.item(0)).isValid());
    QVERIFY(!box.itemVisible(0));
    QVERIFY(box.itemVisible(1));
    QVERIFY(box.itemVisible(box.item(6)));
    QVERIFY(!box.itemVisible(7));
    QVERIFY(!box.itemVisible(-1));
    QVERIFY(!box.itemVisible(12));
    QVERIFY(!box.itemVisible(static_cast<ListBoxSkinItem*>(nullptr)));
    QCOMPARE(box.itemRect(box.item(1)), QRect(0, -5, 130, 15));
    const std::unique_ptr<ListBoxSkinItem> taken(box.item(3));
    box.takeItem(taken.get());
    QVERIFY(!box.itemRect(taken.get()).isValid());
    QVERIFY(!box.itemVisible(taken.get()));
}

void TestListBoxSkinModel::itemHeight()
{
    Box box;
    QCOMPARE(box.itemHeight(), 0);
    box.insertItem(new Block(40, 15));
    box.insertItem(new Block(40, 33));
    box.insertItem(new Block(40, 21));
    QCOMPARE(box.itemHeight(), 15);
    QCOMPARE(box.itemHeight(1), 33);
    QCOMPARE(box.itemHeight(3), 0);
    QCOMPARE(box.itemHeight(-1), 0);
    box.setColumnMode(2);
    // The row's height.
    QCOMPARE(box.itemHeight(2), 21);
    QCOMPARE(box.itemHeight(0), 21);
}

void TestListBoxSkinModel::itemYPos()
{
    Box box;
    box.blocks(12);
    box.showSettled();
    box.setContentsPos(0, 20);
    int y = 1234;
    QVERIFY(!box.itemYPos(0, &y));
    QVERIFY(!box.itemYPos(12, &y));
    QVERIFY(!box.itemYPos(-1, &y));
    QCOMPARE(y, 1234);
    QVERIFY(box.itemYPos(1, &y));
    QCOMPARE(y, -5);
    QVERIFY(box.itemYPos(1, nullptr));
}

void TestListBoxSkinModel::itemAt()
{
    Box box;
    QVERIFY(!box.itemAt(QPoint(0, 0)));
    box.blocks(5);
    box.setColumnMode(2);
    box.resize(130, 40);
    box.showSettled();
    QCOMPARE(box.itemAt(QPoint(0, 0)), box.item(0));
    QCOMPARE(box.itemAt(QPoint(39, 14)), box.item(0));
    QCOMPARE(box.itemAt(QPoint(40, 14)), box.item(3));
    QCOMPARE(box.itemAt(QPoint(39, 15)), box.item(1));
    QVERIFY(!box.itemAt(QPoint(80, 0)));
    QVERIFY(!box.itemAt(QPoint(-1, 0)));
    QVERIFY(!box.itemAt(QPoint(0, -1)));
    // A cell without an item.
    QVERIFY(!box.itemAt(QPoint(40, 30)));
    box.setContentsPos(0, 5);
    QCOMPARE(box.itemAt(QPoint(0, 10)), box.item(1));
    QCOMPARE(box.itemAt(QPoint(0, 39)), box.item(2));
    QVERIFY(!box.itemAt(QPoint(0, 40)));
}

void TestListBoxSkinModel::maxItemWidth()
{
    Box box;
    QCOMPARE(box.maxItemWidth(), 130L);
    box.blocks(3, 50);
    QCOMPARE(box.maxItemWidth(), 130L);
    box.insertItem(new Block(170, 15));
    QCOMPARE(box.maxItemWidth(), 170L);
    box.setColumnMode(3);
    QCOMPARE(box.maxItemWidth(), 510L);
}

// What was written for the toolkit's own list box, with the names of the classes exchanged.
void TestListBoxSkinModel::oldInterface()
{
    ListBoxSkin box(nullptr, "name");
    box.setAutoUpdate(true);
    box.setDragSelect(true);
    box.setAutoScroll(true);
    box.setSmoothScrolling(true);
    QVERIFY(box.autoUpdate() && box.dragSelect() && box.autoScroll());
    box.setAutoScrollBar(false);
    QVERIFY(!box.scrollBar());
    box.setScrollBar(true);
    QVERIFY(box.scrollBar() && !box.autoScrollBar());
    box.setAutoScrollBar(true);
    QVERIFY(box.autoScrollBar());
    box.setBottomScrollBar(true);
    QVERIFY(box.bottomScrollBar() && !box.autoBottomScrollBar());
    box.setAutoBottomScrollBar(true);
    QVERIFY(box.autoBottomScrollBar());
    box.insertItem("C string");
    box.insertItem("first", 0);
    box.changeItem("changed", 1);
    QCOMPARE(box.text(1), QStringLiteral("changed"));
    QCOMPARE(box.currentText(), QStringLiteral("changed"));
    QVERIFY(connect(&box, SIGNAL(highlighted(int)), &box, SLOT(clearSelection())));
    QVERIFY(connect(&box, SIGNAL(selected(const QString&)), &box, SLOT(invertSelection())));
    QVERIFY(connect(&box, SIGNAL(mouseButtonClicked(int, ListBoxSkinItem*, const QPoint&)), &box,
                    SLOT(clearInputString())));
    QVERIFY(connect(&box, SIGNAL(onViewport()), &box, SLOT(doAutoScroll())));
    QCOMPARE(box.cellHeight(0), box.itemHeight(0));
    QCOMPARE(box.cellHeight(), box.itemHeight());
    QCOMPARE(long(box.cellWidth()), box.maxItemWidth());
    QCOMPARE(long(box.cellWidth(1)), box.maxItemWidth());
    QCOMPARE(box.numCols(), 1);
    box.setFixedVisibleLines(3);
    QCOMPARE(box.height(), 3 * (box.fontMetrics().lineSpacing() + 2));
}

QTEST_MAIN(TestListBoxSkinModel)
#include "tst_listboxskin_model.moc"
