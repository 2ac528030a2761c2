#include "listbox/listboxfixture.h"

#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

#include <functional>
#include <limits>
#include <memory>
#include <vector>

using namespace listboxtest;

namespace
{

// Tells when it dies.
class Mortal : public Block
{
public:
    Mortal(const QString& text, QStringList* deaths) : Block(40, 15, text), m_deaths(deaths) {}
    ~Mortal() override
    {
        *m_deaths << txt;
        if (onDeath)
            onDeath();
    }

    std::function<void()> onDeath;

private:
    QStringList* m_deaths;
};

// What a slot does, and on which of all signals, counted from the start.
class Saboteur : public QObject
{
public:
    Saboteur(ListBoxSkin* box, int when, std::function<void()> what) : m_left(when), m_what(std::move(what))
    {
        using B = ListBoxSkin;
        using Item = ListBoxSkinItem*;
        const auto each = [this] { act(); };
        connect(box, qOverload<int>(&B::highlighted), this, each);
        connect(box, qOverload<int>(&B::selected), this, each);
        connect(box, qOverload<const QString&>(&B::highlighted), this, each);
        connect(box, qOverload<const QString&>(&B::selected), this, each);
        connect(box, qOverload<Item>(&B::highlighted), this, each);
        connect(box, qOverload<Item>(&B::selected), this, each);
        connect(box, qOverload<>(&B::selectionChanged), this, each);
        connect(box, qOverload<Item>(&B::selectionChanged), this, each);
        connect(box, &B::currentChanged, this, each);
        connect(box, qOverload<Item>(&B::clicked), this, each);
        connect(box, qOverload<Item, const QPoint&>(&B::clicked), this, each);
        connect(box, qOverload<Item>(&B::pressed), this, each);
        connect(box, qOverload<Item, const QPoint&>(&B::pressed), this, each);
        connect(box, &B::doubleClicked, this, each);
        connect(box, &B::returnPressed, this, each);
        connect(box, &B::rightButtonClicked, this, each);
        connect(box, &B::rightButtonPressed, this, each);
        connect(box, &B::mouseButtonPressed, this, each);
        connect(box, &B::mouseButtonClicked, this, each);
        connect(box, &B::onItem, this, each);
        connect(box, &B::onViewport, this, each);
        connect(box, &B::contentsMoving, this, each);
    }
    bool acted() const { return m_acted; }

private:
    void act()
    {
        if (m_left-- != 0)
            return;
        m_acted = true;
        m_what();
    }

    int m_left;
    bool m_acted = false;
    std::function<void()> m_what;
};

enum Action { DeleteCurrent, DeleteFirst, DeleteLast, TakeCurrent, Clear, DeleteBox, Sort, Move, ChangeMode };

} // namespace

class TestListBoxLifetime : public QObject
{
    Q_OBJECT

private slots:
    void nullItems();
    void nullItemsInConstructors();
    void badIndexes();
    void insertedTwice();
    void insertedIntoTwoLists();
    void afterAnItemElsewhere();
    void ownership();
    void takenItemKeepsItsLinks();
    void takenItemOutlivesTheListBox();
    void selectableEntries();
    void itemsThatDeleteOthers();
    void clearInSignalOfAConstructor();
    void anySignalMayDoAnything_data();
    void anySignalMayDoAnything();
    void itemsThatDieWhilePainted_data();
    void itemsThatDieWhilePainted();
    void itemsThatChangeTheListWhileMeasured();
    void awkwardSizes_data();
    void awkwardSizes();
    void hugeGrids();
    void clearResetsInput();
};

void TestListBoxLifetime::nullItems()
{
    Box box;
    box.blocks(2);
    const QRegularExpression text(QStringLiteral("^ASSERT: \"lbi != 0\" in listbox_skin \\(505\\)$"));
    QTest::ignoreMessage(QtWarningMsg, text);
    box.insertItem(static_cast<const ListBoxSkinItem*>(nullptr), 0);
    QTest::ignoreMessage(QtWarningMsg, text);
    box.insertItem(static_cast<const ListBoxSkinItem*>(nullptr), box.item(0));
    QTest::ignoreMessage(QtWarningMsg, text);
    QCOMPARE(box.inSort(static_cast<const ListBoxSkinItem*>(nullptr)), -1);
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    box.changeItem(static_cast<const ListBoxSkinItem*>(nullptr), 0);
    box.takeItem(nullptr);
    box.setCurrentItem(static_cast<ListBoxSkinItem*>(nullptr));
    box.setSelected(static_cast<ListBoxSkinItem*>(nullptr), true);
    box.updateItem(static_cast<ListBoxSkinItem*>(nullptr));
    box.selectRange(nullptr, box.item(0), false, true, true);
    box.selectRange(box.item(0), nullptr, false, true, true);
    box.handleItemChange(nullptr, true, true);
    box.insertStrList(static_cast<const QStrList*>(nullptr));
    box.insertStrList(static_cast<const char**>(nullptr));
    QCOMPARE(box.isSelected(static_cast<const ListBoxSkinItem*>(nullptr)), false);
    QCOMPARE(box.itemVisible(static_cast<const ListBoxSkinItem*>(nullptr)), false);
    QCOMPARE(box.itemRect(nullptr).isValid(), false);
    QCOMPARE(box.index(nullptr), -1);
    QCOMPARE(box.texts(), numbers(0, 1));
}

void TestListBoxLifetime::nullItemsInConstructors()
{
    Box box;
    box.blocks(2);
    new ListBoxSkinText(&box, QStringLiteral("front"), nullptr);
    QCOMPARE(box.texts(), QStringList({"front", "0", "1"}));
    const ListBoxSkinText free(nullptr, QStringLiteral("free"), nullptr);
    QCOMPARE(free.listBox(), nullptr);
}

void TestListBoxLifetime::badIndexes()
{
    Box box;
    for (const int index : {-1, 0, 1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        QCOMPARE(box.item(index), nullptr);
        QCOMPARE(box.text(index), QString());
        QCOMPARE(box.pixmap(index), nullptr);
        QCOMPARE(box.itemHeight(index), 0);
        QCOMPARE(box.isSelected(index), false);
        QCOMPARE(box.itemVisible(index), false);
        QCOMPARE(box.itemYPos(index, nullptr), false);
        box.removeItem(index);
        box.changeItem(QStringLiteral("x"), index);
        box.setCurrentItem(index);
        box.setSelected(index, true);
        box.setTopItem(index);
        box.setBottomItem(index);
        box.updateItem(index);
        QPixmap picture(2, 2);
        QPainter painter(&picture);
        box.paintCell(&painter, index, index);
        box.paintCell(nullptr, index, index);
        box.tryGeometry(index, index);
        QCOMPARE(box.numRows(), std::max(index, 1));
        QCOMPARE(box.numColumns(), std::max(index, 1));
        QCOMPARE(box.columnAt(index), index == std::numeric_limits<int>::max() ? index - 1 : 0);
        box.redrawHighlightImages(index, index);
        QCOMPARE(int(box.count()), 0);
    }
    box.insertItem(QStringLiteral("b"), 1000);
    box.insertItem(QStringLiteral("a"), 0);
    box.insertItem(QStringLiteral("c"), std::numeric_limits<int>::min());
    QCOMPARE(box.texts(), QStringList({"a", "b", "c"}));
}

void TestListBoxLifetime::insertedTwice()
{
    Box box;
    box.blocks(3);
    SignalLog log(&box);
    for (int i = -1; i < 4; ++i) {
        box.insertItem(box.item(1), i);
        box.insertItem(box.item(1), box.item(i));
        QCOMPARE(box.inSort(box.item(1)), -1);
        box.changeItem(box.item(1), i);
        QCOMPARE(box.texts(), numbers(0, 2));
        QCOMPARE(int(box.count()), 3);
    }
    QCOMPARE(log.take(), QStringList());
}

void TestListBoxLifetime::insertedIntoTwoLists()
{
    QStringList deaths;
    {
        Box first;
        Box second;
        auto* item = new Mortal(QStringLiteral("m"), &deaths);
        first.insertItem(item);
        second.blocks(1);
        second.insertItem(item, 0);
        second.changeItem(item, 0);
        second.takeItem(item);
        second.setCurrentItem(item);
        second.setSelected(item, true);
        QCOMPARE(first.texts(), QStringList("m"));
        QCOMPARE(second.texts(), QStringList("0"));
        QCOMPARE(item->listBox(), static_cast<ListBoxSkin*>(&first));
        QCOMPARE(item->selected(), false);
        QCOMPARE(second.currentItem(), -1);
        first.takeItem(item);
        second.insertItem(item);
        QCOMPARE(item->listBox(), static_cast<ListBoxSkin*>(&second));
        QCOMPARE(deaths, QStringList());
    }
    QCOMPARE(deaths, QStringList("m"));
}

void TestListBoxLifetime::afterAnItemElsewhere()
{
    Box box;
    Box other;
    box.blocks(2);
    other.blocks(1);
    box.insertItem(new Block(40, 15, QStringLiteral("x")), other.item(0));
    QCOMPARE(box.texts(), QStringList({"x", "0", "1"}));
    std::unique_ptr<ListBoxSkinItem> taken(box.item(1));
    box.takeItem(taken.get());
    box.insertItem(new Block(40, 15, QStringLiteral("y")), taken.get());
    QCOMPARE(box.texts(), QStringList({"y", "x", "1"}));
    QCOMPARE(other.texts(), QStringList("0"));
}

void TestListBoxLifetime::ownership()
{
    QStringList deaths;
    auto box = std::make_unique<Box>();
    for (int i = 0; i < 5; ++i)
        box->insertItem(new Mortal(QString::number(i), &deaths));
    box->removeItem(3);
    QCOMPARE(deaths, QStringList("3"));
    delete box->item(0);
    QCOMPARE(box->texts(), QStringList({"1", "2", "4"}));
    std::unique_ptr<ListBoxSkinItem> mine(box->item(1));
    box->takeItem(mine.get());
    deaths.clear();
    box->clear();
    QCOMPARE(deaths, QStringList({"1", "4"}));
    box->insertItem(new Mortal(QStringLiteral("last"), &deaths));
    QTest::failOnWarning(QRegularExpression(QStringLiteral("ASSERT")));
    box.reset();
    QCOMPARE(deaths, QStringList({"1", "4", "last"}));
    mine.reset();
    QCOMPARE(deaths, QStringList({"1", "4", "last", "2"}));
}

void TestListBoxLifetime::takenItemKeepsItsLinks()
{
    Box box;
    box.blocks(3);
    ListBoxSkinItem* const before = box.item(0);
    ListBoxSkinItem* const after = box.item(2);
    std::unique_ptr<ListBoxSkinItem> taken(box.item(1));
    box.takeItem(taken.get());
    QCOMPARE(taken->prev(), before);
    QCOMPARE(taken->next(), after);
    QCOMPARE(taken->listBox(), static_cast<ListBoxSkin*>(&box));
    QCOMPARE(before->next(), after);
    QCOMPARE(after->prev(), before);

    SignalLog log(&box);
    box.setCurrentItem(before);
    log.take();
    box.refreshSlot();
    QVERIFY(!box.timer("listbox update timer")->isActive());
    taken.reset();
    QVERIFY(box.timer("listbox update timer")->isActive());
    QCOMPARE(box.texts(), QStringList({"0", "2"}));
    QCOMPARE(int(box.count()), 2);
    QCOMPARE(box.currentItem(), 0);
    QCOMPARE(before->next(), after);
    QCOMPARE(after->prev(), before);
    QCOMPARE(log.take(), QStringList());
}

void TestListBoxLifetime::takenItemOutlivesTheListBox()
{
    auto box = std::make_unique<Box>();
    box->blocks(3);
    std::unique_ptr<ListBoxSkinItem> taken(box->item(1));
    taken->setSelectable(false);
    box->takeItem(taken.get());
    QCOMPARE(taken->isSelectable(), false);
    box.reset();
    QCOMPARE(taken->listBox(), nullptr);
    QCOMPARE(taken->isSelectable(), true);
    QCOMPARE(taken->current(), false);
    taken->setSelectable(false);
    QCOMPARE(taken->isSelectable(), true);
    Box other;
    other.insertItem(taken.release());
    QCOMPARE(other.texts(), QStringList("1"));
}

void TestListBoxLifetime::selectableEntries()
{
    Box box;
    Box other;
    box.blocks(1);
    ListBoxSkinItem* item = box.item(0);
    item->setSelectable(false);
    box.takeItem(item);
    QCOMPARE(item->isSelectable(), false);
    other.insertItem(item);
    QCOMPARE(item->isSelectable(), true);
    other.takeItem(item);
    box.insertItem(item);
    QCOMPARE(item->isSelectable(), false);
    item->setSelectable(true);
    QCOMPARE(item->isSelectable(), true);

    // Another item at the same address must not inherit the entry: neither one deleted in its list box, nor in another
    // one, nor by clear().
    alignas(Block) unsigned char place[sizeof(Block)];
    auto* placed = new (place) Block(40, 15, QStringLiteral("first"));
    box.insertItem(placed);
    placed->setSelectable(false);
    box.takeItem(placed);
    other.insertItem(placed);
    placed->~Block();
    placed = new (place) Block(40, 15, QStringLiteral("second"));
    box.insertItem(placed);
    placed->setSelectable(true);
    placed->~Block();
    placed = new (place) Block(40, 15, QStringLiteral("third"));
    box.insertItem(placed);
    QCOMPARE(placed->isSelectable(), true);
    placed->~Block();
    QCOMPARE(other.texts(), QStringList());

    item->setSelectable(false);
    box.takeItem(item);
    box.clear();
    box.insertItem(item);
    QCOMPARE(item->isSelectable(), true);
}

void TestListBoxLifetime::itemsThatDeleteOthers()
{
    QStringList deaths;
    {
        Box box;
        std::vector<Mortal*> items;
        for (int i = 0; i < 6; ++i) {
            items.push_back(new Mortal(QString::number(i), &deaths));
            box.insertItem(items.back());
        }
        items[1]->onDeath = [&] { delete items[3]; };
        items[2]->onDeath = [&] {
            box.clear();
            box.insertItem(new Mortal(QStringLiteral("new"), &deaths));
        };
        box.clear();
        QCOMPARE(deaths, QStringList({"0", "1", "3", "2", "4", "5"}));
        QCOMPARE(box.texts(), QStringList("new"));
        QCOMPARE(int(box.count()), 1);
        QCOMPARE(box.firstItem(), box.item(0));
        deaths.clear();
    }
    QCOMPARE(deaths, QStringList("new"));
}

// The signals of an insertion come before the object is complete.
void TestListBoxLifetime::clearInSignalOfAConstructor()
{
    for (const int what : {0, 1, 2}) {
        auto box = std::make_unique<Box>();
        box->showSettled();
        box->focusNow();
        QObject::connect(box.get(), qOverload<int>(&ListBoxSkin::highlighted), this, [&](int) {
            if (what == 0)
                box->clear();
            else if (what == 1)
                box.reset();
            else
                box->removeItem(0);
        });
        const std::unique_ptr<ListBoxSkinText> item(new ListBoxSkinText(box.get(), QStringLiteral("text")));
        QCOMPARE(item->text(), QStringLiteral("text"));
        QCOMPARE(box ? int(box->count()) : 0, 0);
    }
    Box box;
    box.showSettled();
    box.focusNow();
    QString seen = QStringLiteral("nothing");
    QObject::connect(&box, qOverload<ListBoxSkinItem*>(&ListBoxSkin::highlighted), this, [&](ListBoxSkinItem* item) {
        seen = item->text();
        box.doLayout();
        QCOMPARE(box.numRows(), 1);
        box.grab();
    });
    new ListBoxSkinText(&box, QStringLiteral("text"));
    QCOMPARE(seen, QString());
    QCOMPARE(box.texts(), QStringList("text"));
}

void TestListBoxLifetime::anySignalMayDoAnything_data()
{
    QTest::addColumn<int>("action");
    QTest::newRow("delete the current item") << int(DeleteCurrent);
    QTest::newRow("delete the first item") << int(DeleteFirst);
    QTest::newRow("delete the last item") << int(DeleteLast);
    QTest::newRow("take the current item") << int(TakeCurrent);
    QTest::newRow("clear") << int(Clear);
    QTest::newRow("delete the list box") << int(DeleteBox);
    QTest::newRow("sort") << int(Sort);
    QTest::newRow("move the current item") << int(Move);
    QTest::newRow("change the mode") << int(ChangeMode);
}

void TestListBoxLifetime::anySignalMayDoAnything()
{
    QFETCH(int, action);
    for (const auto mode : {ListBoxSkin::Single, ListBoxSkin::Multi, ListBoxSkin::Extended}) {
        bool acted = true;
        for (int when = 0; acted; ++when) {
            QPointer<Box> box(new Box);
            std::vector<std::unique_ptr<ListBoxSkinItem>> taken;
            box->setSelectionMode(mode);
            box->blocks(12);
            box->showSettled();
            box->focusNow();
            Saboteur saboteur(box, when, [&] {
                switch (action) {
                case DeleteCurrent:
                    box->removeItem(box->currentItem());
                    break;
                case DeleteFirst:
                    delete box->firstItem();
                    break;
                case DeleteLast:
                    box->removeItem(int(box->count()) - 1);
                    break;
                case TakeCurrent:
                    if (box->currentItem() >= 0) {
                        taken.emplace_back(box->item(box->currentItem()));
                        box->takeItem(taken.back().get());
                    }
                    break;
                case Clear:
                    box->clear();
                    break;
                case DeleteBox:
                    delete box.data();
                    break;
                case Sort:
                    box->sort(false);
                    break;
                case Move:
                    box->setCurrentItem((box->currentItem() + 5) % 12);
                    break;
                default:
                    box->setSelectionMode(ListBoxSkin::NoSelection);
                }
            });
            const std::vector<std::function<void()>> acts = {
                [&] { box->key(Qt::Key_Down); },
                [&] { box->key(Qt::Key_Down, Qt::ShiftModifier); },
                [&] { box->key(Qt::Key_PageDown); },
                [&] { box->key(Qt::Key_PageUp, Qt::ShiftModifier); },
                [&] { box->key(Qt::Key_End); },
                [&] { box->key(Qt::Key_Return); },
                [&] { box->key(Qt::Key_Space); },
                [&] { box->type(QStringLiteral("1")); },
                [&] { box->key(Qt::Key_A, Qt::ControlModifier); },
                [&] { box->selectAll(false); },
                [&] { box->invertSelection(); },
                [&] { box->selectRange(box->item(1), box->item(3), true, true, true); },
                [&] { box->setSelected(4, true); },
                [&] { box->click(QPoint(10, 20)); },
                [&] { box->click(QPoint(10, 35), Qt::RightButton); },
                [&] { box->click(QPoint(10, 50), Qt::LeftButton, Qt::ShiftModifier); },
                [&] { box->press(QPoint(10, 20)); },
                [&] { box->drag(QPoint(10, 50)); },
                [&] { box->drag(QPoint(10, 300)); },
                [&] { box->doAutoScroll(); },
                [&] { box->mouse(QEvent::MouseButtonDblClick, QPoint(10, 20)); },
                [&] { box->release(QPoint(10, 50)); },
                [&] { box->hoverOver(QPoint(10, 20)); },
                [&] { box->setColumnMode(1); },
                [&] { box->changeItem(QStringLiteral("changed"), 2); },
                [&] {
                    box->insertStringList({"s", "t"}, 1);
                },
                [&] { box->inSort(QStringLiteral("sorted")); },
                [&] { box->removeItem(box->currentItem()); },
                [&] { box->press(QPoint(10, 60)); },
                [&] { box->removeItem(4); },
                [&] { box->release(QPoint(10, 60)); },
                [&] { box->clear(); },
                [&] { box->blocks(2); },
                [&] { box->press(QPoint(10, 70)); },
                [&] { box->drag(QPoint(5, 5)); },
                [&] { box->removeItem(0); },
                [&] { box->release(QPoint(5, 5)); },
            };
            for (const auto& act : acts) {
                if (!box)
                    break;
                act();
                if (box)
                    box->refreshSlot();
            }
            acted = saboteur.acted();
            delete box.data();
            QVERIFY2(when < 300, "there must be an end");
        }
    }
}

void TestListBoxLifetime::itemsThatDieWhilePainted_data()
{
    QTest::addColumn<int>("what");
    QTest::newRow("the item itself") << 0;
    QTest::newRow("the next item") << 1;
    QTest::newRow("all items") << 2;
    QTest::newRow("another item comes") << 3;
}

void TestListBoxLifetime::itemsThatDieWhilePainted()
{
    QFETCH(int, what);
    Box box;
    box.blocks(10);
    box.setCurrentItem(1);
    box.showSettled();
    box.block(1)->onPaint = [&](QPainter*) {
        // An object that runs its own code keeps it alive until it is done.
        const auto self = box.block(1)->onPaint;
        box.block(1)->onPaint = nullptr;
        if (what == 0)
            delete box.item(1);
        else if (what == 1)
            delete box.item(2);
        else if (what == 2)
            box.clear();
        else
            box.insertItem(new Block(40, 15, QStringLiteral("new")), 0);
    };
    box.viewport()->QWidget::repaint();
    box.settle();
    QCOMPARE(int(box.count()), what == 2 ? 0 : what == 3 ? 11 : 9);
    if (what != 2)
        QVERIFY(box.block(1)->painted > 0);
}

void TestListBoxLifetime::itemsThatChangeTheListWhileMeasured()
{
    class Meddler : public Block
    {
    public:
        using Block::Block;
        int height(const ListBoxSkin* box) const override
        {
            auto* target = const_cast<ListBoxSkin*>(box);
            if (box->count() > 3)
                target->removeItem(0);
            target->doLayout();
            return Block::height(box);
        }
    };
    Box box;
    box.blocks(5);
    box.insertItem(new Meddler(40, 15, QStringLiteral("m")));
    box.showSettled();
    QCOMPARE(box.texts(), QStringList({"3", "4", "m"}));
    QCOMPARE(box.numRows(), 3);
}

void TestListBoxLifetime::awkwardSizes_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {0, -1, std::numeric_limits<int>::min(), 1 << 30, std::numeric_limits<int>::max()})
        QTest::addRow("%d", size) << size;
}

void TestListBoxLifetime::awkwardSizes()
{
    QFETCH(int, size);
    for (int mode = 0; mode < 6; ++mode) {
        Box box;
        box.blocks(2);
        for (int i = 0; i < 200; ++i)
            box.insertItem(new Block(size, size, QStringLiteral("odd")));
        if (mode == 1)
            box.setColumnMode(3);
        if (mode == 2)
            box.setColumnMode(ListBoxSkin::FitToWidth);
        if (mode == 3)
            box.setRowMode(ListBoxSkin::FitToHeight);
        if (mode == 4)
            box.setVariableHeight(false);
        if (mode == 5) {
            box.setVariableWidth(true);
            box.setRowMode(7);
        }
        box.setSelectionMode(ListBoxSkin::Extended);
        box.selectAll(true);
        box.showSettled();
        QVERIFY(box.numRows() >= 1 && box.numColumns() >= 1);
        QVERIFY(box.numRows() * box.numColumns() >= 202);
        QVERIFY(box.contentsWidth() >= 130 && box.contentsHeight() >= 75);
        box.setCurrentItem(201);
        box.ensureCurrentVisible();
        box.setBottomItem(100);
        box.setTopItem(3);
        box.key(Qt::Key_PageDown);
        box.click(QPoint(20, 20));
        box.grab();
        box.setAlphaOverride(7);
        box.refreshSlot();
    }
}

void TestListBoxLifetime::hugeGrids()
{
    Box box;
    box.blocks(10);
    box.setRowMode(std::numeric_limits<int>::max());
    box.showSettled();
    QCOMPARE(box.numRows(), std::numeric_limits<int>::max());
    QCOMPARE(box.numColumns(), 1);
    box.setColumnMode(std::numeric_limits<int>::max());
    box.settle();
    QCOMPARE(box.numRows(), 1);
    box.fixedRowHeight = std::numeric_limits<int>::max();
    box.setRowMode(ListBoxSkin::FitToHeight);
    box.settle();
    QCOMPARE(box.contentsHeight(), std::numeric_limits<int>::max());
}

void TestListBoxLifetime::clearResetsInput()
{
    Box box;
    box.blocks(5);
    box.showSettled();
    SignalLog log(&box);
    box.press(QPoint(10, 20));
    log.take();
    box.clear();
    box.release(QPoint(10, 20));
    QCOMPARE(log.take(), QStringList());
    box.blocks(5);
    box.setSelectionMode(ListBoxSkin::Extended);
    box.setCurrentItem(3);
    box.handleItemChange(box.item(1), true, false);
    // Without an anchor the range begins with the old item.
    QCOMPARE(box.selection(), QStringLiteral("1 2 3"));
}

QTEST_MAIN(TestListBoxLifetime)
#include "tst_listbox_lifetime.moc"
