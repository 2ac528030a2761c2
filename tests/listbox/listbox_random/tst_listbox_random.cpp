#include "listbox/listboxfixture.h"

#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <vector>

using namespace listboxtest;

namespace
{

using Mode = ListBoxSkin::SelectionMode;

// A list box as the simplest thing that it could be: a vector, and the rules.
class Model
{
public:
    struct Entry {
        QString text;
        bool selected = false;
        bool selectable = true;
    };

    std::vector<Entry> entries;
    int current = -1;
    int anchor = -1;
    Mode mode = ListBoxSkin::Single;
    bool focused = false;
    QString typed;
    QStringList signalLines;

    int count() const { return int(entries.size()); }
    bool has(int index) const { return index >= 0 && index < count(); }
    bool multi() const { return mode == ListBoxSkin::Multi || mode == ListBoxSkin::Extended; }
    QString textOf(int index) const { return has(index) ? entries[size_t(index)].text : QStringLiteral("null"); }
    QStringList texts() const
    {
        QStringList all;
        for (const Entry& entry : entries)
            all << entry.text;
        return all;
    }
    QString selection() const
    {
        QStringList all;
        for (const Entry& entry : entries)
            if (entry.selected)
                all << entry.text;
        return all.join(' ');
    }

    void insert(int index, const Entry& entry)
    {
        index = index < 0 ? count() : std::min(index, count());
        entries.insert(entries.begin() + index, entry);
        for (int* place : {&current, &anchor})
            if (*place >= index)
                ++*place;
        if (!focused || current >= 0)
            return;
        current = 0;
        tellHighlighted(true);
    }
    Entry take(int index)
    {
        const Entry entry = entries[size_t(index)];
        entries.erase(entries.begin() + index);
        const bool wasCurrent = current == index;
        const bool wasAnchor = anchor == index;
        for (int* place : {&current, &anchor})
            if (*place > index)
                --*place;
        if (wasCurrent)
            current = std::min(index, count() - 1);
        if (wasAnchor)
            anchor = current;
        if (wasCurrent)
            tellCurrent();
        if (entry.selected)
            tell("selectionChanged()");
        return entry;
    }
    void clear()
    {
        entries.clear();
        current = -1;
        anchor = -1;
        // The virtual operation runs with signals blocked.
    }
    void sort(bool ascending)
    {
        std::vector<std::pair<Entry, int>> sorted;
        for (int i = 0; i < count(); ++i)
            sorted.emplace_back(entries[size_t(i)], i);
        std::stable_sort(sorted.begin(), sorted.end(), [ascending](const auto& a, const auto& b) {
            return ascending ? a.first.text < b.first.text : b.first.text < a.first.text;
        });
        const auto moved = [&sorted](int index) {
            for (size_t i = 0; i < sorted.size(); ++i)
                if (sorted[i].second == index)
                    return int(i);
            return -1;
        };
        current = moved(current);
        anchor = moved(anchor);
        entries.clear();
        for (const auto& each : sorted)
            entries.push_back(each.first);
    }
    int inSort(const QString& text)
    {
        int index = 0;
        while (index < count() && entries[size_t(index)].text < text)
            ++index;
        insert(index, {text});
        return index;
    }
    void setCurrent(int index)
    {
        if (!has(index) || index == current)
            return;
        const int old = std::exchange(current, index);
        if (mode == ListBoxSkin::Single) {
            bool changed = has(old) && std::exchange(entries[size_t(old)].selected, false);
            if (!entries[size_t(index)].selected && entries[size_t(index)].selectable) {
                entries[size_t(index)].selected = true;
                tell("selectionChanged(" + textOf(index) + ')');
                changed = true;
            }
            if (changed)
                tell("selectionChanged()");
        }
        tellCurrent();
    }
    void setSelected(int index, bool select, bool quiet = false)
    {
        if (!has(index) || mode == ListBoxSkin::NoSelection)
            return;
        Entry& entry = entries[size_t(index)];
        if (!entry.selectable || entry.selected == select)
            return;
        const bool moves = mode == ListBoxSkin::Single && index != current;
        if (moves) {
            if (has(current))
                entries[size_t(current)].selected = false;
            current = index;
        }
        entry.selected = select;
        if (quiet)
            return;
        if (mode == ListBoxSkin::Single && select)
            tell("selectionChanged(" + entry.text + ')');
        tell("selectionChanged()");
        if (moves)
            tellCurrent();
    }
    void selectAll(bool select, bool quiet = false)
    {
        if (!multi()) {
            setSelected(current, select, quiet);
            return;
        }
        for (Entry& entry : entries)
            if (entry.selectable)
                entry.selected = select;
        if (!quiet)
            tell("selectionChanged()");
    }
    void invert()
    {
        if (!multi())
            return;
        for (Entry& entry : entries)
            if (entry.selectable)
                entry.selected = !entry.selected;
        tell("selectionChanged()");
    }
    void toggle()
    {
        if (!multi() || !has(current))
            return;
        Entry& entry = entries[size_t(current)];
        if (!entry.selected && !entry.selectable)
            return;
        entry.selected = !entry.selected;
        tell("selectionChanged()");
    }
    void selectRange(int from, int to, bool inverts, bool includeFirst, bool clears)
    {
        if (!has(from) || !has(to))
            return;
        const bool backwards = to < from;
        const int first = backwards ? to : from + (includeFirst ? 0 : 1);
        const int last = backwards ? from - (includeFirst ? 0 : 1) : to;
        bool changed = false;
        for (int i = 0; i < count(); ++i) {
            Entry& entry = entries[size_t(i)];
            const bool before = entry.selected;
            if (i < first || i > last) {
                if (clears)
                    entry.selected = false;
            } else if (inverts ? entry.selected : false) {
                entry.selected = false;
            } else if (entry.selectable) {
                entry.selected = true;
            }
            changed |= before != entry.selected;
        }
        if (changed)
            tell("selectionChanged()");
    }
    void afterMove(int old, bool shift, bool control)
    {
        if (mode == ListBoxSkin::Multi && shift) {
            selectRange(old, current, true, false, false);
        } else if (mode == ListBoxSkin::Extended && !control) {
            if (shift) {
                selectRange(anchor >= 0 ? anchor : old, current, false, true, anchor >= 0);
            } else {
                selectAll(false, true);
                setSelected(current, true);
            }
        }
    }
    void moveTo(int target, bool shift, bool control)
    {
        const int old = current;
        setCurrent(target);
        afterMove(old, shift, control);
    }
    // rows, columns and page are what the list box has in sight.
    void key(int code, bool shift, bool control, int rows, int columns, int page)
    {
        if (count() == 0)
            return;
        if (current < 0) {
            setCurrent(0);
            if (mode == ListBoxSkin::Single)
                setSelected(0, true);
            return;
        }
        typed.clear();
        const int last = count() - 1;
        switch (code) {
        case Qt::Key_Up:
            if (current >= 1)
                moveTo(current - 1, shift, control);
            break;
        case Qt::Key_Down:
            if (current < last)
                moveTo(current + 1, shift, control);
            break;
        case Qt::Key_PageUp:
            if (columns == 1)
                moveTo(std::max(current - page, 0), shift, control);
            else
                moveTo(std::max(current % rows == 0 ? current - rows : current - current % rows, 0), shift, control);
            break;
        case Qt::Key_PageDown:
            if (columns == 1)
                moveTo(std::min(current + page, last), shift, control);
            else if (current % rows == rows - 1)
                moveTo(std::min(current + rows, last), shift, control);
            else
                moveTo(std::min(current - current % rows + rows - 1, last), shift, control);
            break;
        case Qt::Key_Home:
            moveTo(0, shift, control);
            break;
        case Qt::Key_End:
            moveTo(last, shift, control);
            break;
        case Qt::Key_Return:
            if (mode != ListBoxSkin::NoSelection) {
                tell(QStringLiteral("selected(%1)").arg(current));
                tell("selected(" + textOf(current) + ')');
                if (!textOf(current).isEmpty())
                    tell("selected(\"" + textOf(current) + "\")");
                tell("returnPressed(" + textOf(current) + ')');
            }
            break;
        case Qt::Key_Space:
            toggle();
            break;
        case Qt::Key_A:
            selectAll(true);
            return;
        default:
            return;
        }
        if (!shift || anchor < 0)
            anchor = current;
        const bool moves = code == Qt::Key_Up || code == Qt::Key_Down || code == Qt::Key_PageDown;
        if (!moves && mode == ListBoxSkin::Single)
            setSelected(current, true);
    }
    void type(const QString& text)
    {
        if (count() == 0)
            return;
        if (current < 0) {
            key(0, false, false, 1, 1, 1);
            return;
        }
        typed += text.toLower();
        for (int i = 0; i < count(); ++i) {
            const int index = (current + i) % count();
            if (!textOf(index).toLower().startsWith(typed))
                continue;
            setCurrent(index);
            if (mode == ListBoxSkin::Extended) {
                selectAll(false, true);
                Entry& entry = entries[size_t(index)];
                if (entry.selectable && !std::exchange(entry.selected, true))
                    tell("selectionChanged()");
            }
            return;
        }
    }

private:
    void tell(const QString& line) { signalLines << line; }
    void tellHighlighted(bool emptyToo)
    {
        tell("highlighted(" + textOf(current) + ')');
        const QString text = has(current) ? textOf(current) : QString();
        if (emptyToo || !text.isEmpty())
            tell("highlighted(\"" + text + "\")");
        tell(QStringLiteral("highlighted(%1)").arg(current));
    }
    void tellCurrent()
    {
        tellHighlighted(false);
        tell("currentChanged(" + textOf(current) + ')');
    }
};

} // namespace

class TestListBoxRandom : public QObject
{
    Q_OBJECT

private slots:
    void againstModel_data();
    void againstModel();
    void manyItems();

private:
    bool step(Box& box, Model& model, QRandomGenerator& random);
    bool same(Box& box, SignalLog& log, Model& model);

    std::vector<std::pair<std::unique_ptr<ListBoxSkinItem>, Model::Entry>> m_taken;
};

void TestListBoxRandom::againstModel_data()
{
    QTest::addColumn<bool>("focused");
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("itemsAtStart");
    QTest::addColumn<int>("mostItems");
    QTest::addColumn<quint32>("seed");
    QTest::newRow("no focus, few items") << false << 60000 << 0 << 12 << 1U;
    QTest::newRow("no focus, more items") << false << 40000 << 0 << 90 << 2U;
    QTest::newRow("focus, few items") << true << 60000 << 0 << 12 << 3U;
    QTest::newRow("focus, more items") << true << 40000 << 0 << 90 << 4U;
    // Enough for several parts of the index beside the chain.
    QTest::newRow("many items") << false << 4000 << 1500 << 3000 << 5U;
}

bool TestListBoxRandom::step(Box& box, Model& model, QRandomGenerator& random)
{
    const auto below = [&random](int bound) { return bound > 0 ? int(random.bounded(bound)) : 0; };
    const int count = model.count();
    // Sometimes outside.
    const int index = below(count + 2) - 1;
    const bool flag = below(2) == 1;
    const QString text = below(20) == 0 ? QString() : QChar('a' + below(5)) + QString::number(below(30));
    const auto modifiers = [&] {
        return (below(3) == 0 ? Qt::ShiftModifier : Qt::NoModifier) |
               (below(4) == 0 ? Qt::ControlModifier : Qt::NoModifier);
    };
    switch (below(22)) {
    case 0:
    case 1:
        box.insertItem(text, index);
        model.insert(index, {text});
        break;
    case 2: {
        auto* item = new Block(40, 15, text);
        const int after = below(count + 1) - 1;
        box.insertItem(item, box.item(after));
        model.insert(after + 1, {text});
        break;
    }
    case 3:
    case 4:
        box.removeItem(index);
        if (model.has(index))
            model.take(index);
        break;
    case 5:
        if (!model.has(index))
            break;
        m_taken.emplace_back(box.item(index), Model::Entry());
        box.takeItem(m_taken.back().first.get());
        m_taken.back().second = model.take(index);
        break;
    case 6:
        if (m_taken.empty())
            break;
        if (flag) {
            ListBoxSkinItem* item = m_taken.back().first.release();
            const Model::Entry entry = m_taken.back().second;
            m_taken.pop_back();
            box.insertItem(item, index);
            model.insert(index, entry);
        } else {
            m_taken.erase(m_taken.begin());
        }
        break;
    case 7: {
        box.changeItem(text, index);
        if (!model.has(index))
            break;
        model.take(index);
        model.insert(index, {text});
        model.setCurrent(index);
        break;
    }
    case 8:
        if (count < 200 && below(40) == 0) {
            box.clear();
            model.clear();
            for (auto& taken : m_taken)
                taken.second.selectable = true;
        } else if (below(10) == 0) {
            box.sort(flag);
            model.sort(flag);
        } else if (box.inSort(text) != model.inSort(text)) {
            return false;
        }
        break;
    case 9:
        box.setCurrentItem(index);
        model.setCurrent(index);
        break;
    case 10:
    case 11:
        box.setSelected(index, flag);
        model.setSelected(index, flag);
        break;
    case 12:
        if (flag) {
            box.invertSelection();
            model.invert();
        } else {
            const bool select = below(3) == 0;
            box.selectAll(select);
            model.selectAll(select);
        }
        break;
    case 13: {
        const int to = below(count);
        const bool inverts = below(2) == 1;
        const bool first = below(2) == 1;
        box.selectRange(box.item(index), box.item(to), inverts, first, flag);
        model.selectRange(index, to, inverts, first, flag);
        break;
    }
    case 14:
        if (below(4) == 0) {
            model.mode = Mode(below(4));
            box.setSelectionMode(model.mode);
        } else if (model.has(index)) {
            box.item(index)->setSelectable(flag);
            model.entries[size_t(index)].selectable = flag;
        }
        break;
    case 15:
        if (below(10) == 0)
            box.setColumnMode(1 + below(3));
        box.toggleCurrentItem();
        model.toggle();
        break;
    case 16: {
        const QString letter = flag ? QString(QChar('A' + below(5))) : QString::number(below(10));
        box.type(letter);
        model.type(letter);
        if (below(2) == 0) {
            box.clearInputString();
            model.typed.clear();
        }
        break;
    }
    default: {
        static const int codes[] = {Qt::Key_Up,    Qt::Key_Down,  Qt::Key_PageUp, Qt::Key_PageDown,
                                    Qt::Key_Home,  Qt::Key_End,   Qt::Key_Left,   Qt::Key_Return,
                                    Qt::Key_Space, Qt::Key_Right, Qt::Key_Down,   Qt::Key_Up};
        int code = codes[below(int(std::size(codes)))];
        Qt::KeyboardModifiers held = modifiers();
        if (below(30) == 0) {
            code = Qt::Key_A;
            held = Qt::ControlModifier;
        }
        const int page = box.numItemsVisible();
        box.key(code, held);
        model.key(code, held.testFlag(Qt::ShiftModifier), held.testFlag(Qt::ControlModifier), box.numRows(),
                  box.numColumns(), page);
    }
    }
    return true;
}

bool TestListBoxRandom::same(Box& box, SignalLog& log, Model& model)
{
    const QStringList lines = log.take();
    const QStringList expected = std::exchange(model.signalLines, {});
    bool links = true;
    int i = 0;
    const ListBoxSkinItem* before = nullptr;
    for (ListBoxSkinItem* item = box.firstItem(); item; before = item, item = item->next(), ++i)
        links = links && item->prev() == before && box.item(i) == item && box.index(item) == i &&
                item->listBox() == &box && i <= model.count();
    const bool equal = links && i == model.count() && int(box.count()) == model.count() && lines == expected &&
                       box.texts() == model.texts() && box.selection() == model.selection() &&
                       box.currentItem() == model.current;
    if (!equal) {
        qWarning() << "signals " << lines << "\nexpected" << expected;
        qWarning() << "texts    " << box.texts() << "\nexpected" << model.texts();
        qWarning() << "selected" << box.selection() << "expected" << model.selection() << "current" << box.currentItem()
                   << "expected" << model.current << "links" << links;
    }
    return equal;
}

void TestListBoxRandom::againstModel()
{
    QFETCH(bool, focused);
    QFETCH(int, steps);
    QFETCH(int, itemsAtStart);
    QFETCH(int, mostItems);
    QFETCH(quint32, seed);
    Box box;
    SignalLog log(&box);
    Model model;
    if (focused) {
        box.showSettled();
        box.focusNow();
        model.focused = true;
    }
    QRandomGenerator random(seed);
    for (int i = 0; i < itemsAtStart; ++i) {
        const QString text = QString::number(i);
        box.insertItem(text, i / 2);
        model.insert(i / 2, {text});
    }
    for (int i = 0; i < steps; ++i) {
        QVERIFY2(step(box, model, random) && same(box, log, model), qPrintable(QStringLiteral("step %1").arg(i)));
        // The anchor shows in what a range from it to the current item selects.
        if (i % 64 == 0) {
            const Mode mode = std::exchange(model.mode, ListBoxSkin::Extended);
            box.setSelectionMode(model.mode);
            box.handleItemChange(nullptr, true, false);
            model.afterMove(-1, true, false);
            QVERIFY2(same(box, log, model), qPrintable(QStringLiteral("anchor after step %1").arg(i)));
            model.mode = mode;
            box.setSelectionMode(mode);
        }
        // Layout and painting in between must not change anything.
        if (i % 500 == 0)
            box.refreshSlot();
        while (model.count() > mostItems) {
            box.removeItem(mostItems);
            model.take(mostItems);
        }
        if (i % 16 == 0)
            QVERIFY(same(box, log, model));
    }
    m_taken.clear();
}

// Enough items for the index beside the chain to split and join its parts.
void TestListBoxRandom::manyItems()
{
    Box box;
    std::vector<ListBoxSkinItem*> model;
    QRandomGenerator random(5);
    for (int i = 0; i < 30000; ++i) {
        const int count = int(model.size());
        const int place = i % 3 == 0 ? 0 : i % 3 == 1 ? count : int(random.bounded(count + 1));
        const bool grows = i < 12000 || i % 7 == 0;
        if (grows) {
            auto* item = new Block(40, 15, QString::number(i));
            box.insertItem(item, place);
            model.insert(model.begin() + place, item);
        } else if (count > 0) {
            const int index = std::min(place, count - 1);
            QCOMPARE(box.item(index), model[size_t(index)]);
            delete model[size_t(index)];
            model.erase(model.begin() + index);
        }
        QCOMPARE(int(box.count()), int(model.size()));
        if (model.empty())
            continue;
        const int probe = int(random.bounded(int(model.size())));
        QCOMPARE(box.item(probe), model[size_t(probe)]);
        QCOMPARE(box.index(model[size_t(probe)]), probe);
        QCOMPARE(model[size_t(probe)]->next(), probe + 1 < int(model.size()) ? model[size_t(probe) + 1] : nullptr);
        QCOMPARE(box.firstItem(), model.front());
    }
}

QTEST_MAIN(TestListBoxRandom)
#include "tst_listbox_random.moc"
