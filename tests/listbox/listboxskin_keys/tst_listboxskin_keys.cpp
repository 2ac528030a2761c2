#include "listbox/listboxfixture.h"

#include <QMetaMethod>
#include <QtTest>

#include <memory>

using namespace listboxtest;

Q_DECLARE_METATYPE(ListBoxSkin::SelectionMode)

namespace
{

using Mode = ListBoxSkin::SelectionMode;
constexpr Mode Single = ListBoxSkin::Single;
constexpr Mode Multi = ListBoxSkin::Multi;
constexpr Mode Extended = ListBoxSkin::Extended;
constexpr Mode NoSelection = ListBoxSkin::NoSelection;

// Signals from their short forms: S for selectionChanged(), S3 for that of item i3, M3 for the four that tell of a new
// current item, R3 for the four of Return. Everything else stands for itself.
QStringList signalsOf(const QString& shortForms)
{
    QStringList lines;
    for (const QString& form : shortForms.split(' ', Qt::SkipEmptyParts)) {
        const QString number = form.mid(1);
        if (form == QLatin1String("S"))
            lines << QStringLiteral("selectionChanged()");
        else if (form[0] == 'S')
            lines << "selectionChanged(i" + number + ')';
        else if (form[0] == 'M')
            lines << "highlighted(i" + number + ')' << "highlighted(\"i" + number + "\")"
                  << "highlighted(" + number + ')' << "currentChanged(i" + number + ')';
        else if (form[0] == 'R')
            lines << "selected(" + number + ')' << "selected(i" + number + ')' << "selected(\"i" + number + "\")"
                  << "returnPressed(i" + number + ')';
        else
            lines << form;
    }
    return lines;
}

// Items i0, i1 and so on.
void fill(Box& box, int number)
{
    for (int i = 0; i < number; ++i)
        box.insertItem(new Block(40, 15, 'i' + QString::number(i)));
}

struct Key {
    int code;
    Qt::KeyboardModifiers modifiers;
    QString text;
};

// A key by its name, with the modifiers that stand before it: "Shift+Control+Down".
Key keyNamed(QString name)
{
    static const QHash<QString, Key> keys = {
        {"Left", {Qt::Key_Left, {}, {}}},
        {"Right", {Qt::Key_Right, {}, {}}},
        {"Up", {Qt::Key_Up, {}, {}}},
        {"Down", {Qt::Key_Down, {}, {}}},
        {"Prior", {Qt::Key_PageUp, {}, {}}},
        {"Next", {Qt::Key_PageDown, {}, {}}},
        {"Home", {Qt::Key_Home, {}, {}}},
        {"End", {Qt::Key_End, {}, {}}},
        {"Return", {Qt::Key_Return, {}, "\r"}},
        {"Enter", {Qt::Key_Enter, {}, "\r"}},
        {"Space", {Qt::Key_Space, {}, " "}},
        {"A", {Qt::Key_A, {}, "\1"}},
        {"B", {Qt::Key_B, {}, "\2"}},
        {"Escape", {Qt::Key_Escape, {}, "\033"}},
        {"Delete", {Qt::Key_Delete, {}, "\177"}},
        {"F5", {Qt::Key_F5, {}, {}}},
    };
    Qt::KeyboardModifiers modifiers;
    for (const auto& each : {std::pair("Shift+", Qt::ShiftModifier), std::pair("Control+", Qt::ControlModifier)})
        if (name.contains(QLatin1String(each.first))) {
            modifiers |= each.second;
            name.remove(QLatin1String(each.first));
        }
    Key key = keys.contains(name) ? keys.value(name) : Key{name.at(0).toUpper().unicode(), {}, name};
    key.modifiers = modifiers;
    return key;
}

bool press(Box& box, const QString& name)
{
    const Key key = keyNamed(name);
    return box.key(key.code, key.modifiers, key.text);
}

// Counts the calls of the operations that a subclass may replace.
class Counting : public Box
{
public:
    using Box::Box;
    using Box::setSelected;
    void setSelected(ListBoxSkinItem* item, bool select) override
    {
        ++calls;
        Box::setSelected(item, select);
    }
    int calls = 0;
};

} // namespace

class TestListBoxSkinKeys : public QObject
{
    Q_OBJECT

private slots:
    void keys_data();
    void keys();
    void pagesOfOneColumn();
    void pagesOfColumns_data();
    void pagesOfColumns();
    void otherKeys_data();
    void otherKeys();
    void noItems();
    void noCurrentItem_data();
    void noCurrentItem();
    void textsThatAreEmpty();
    void typeAhead_data();
    void typeAhead();
    void typeAheadInExtendedMode();
    void typeAheadTimer();
    void setCurrentItem_data();
    void setCurrentItem();
    void currentItemComesIntoView();
    void movesRepaintOldAndNewItem_data();
    void movesRepaintOldAndNewItem();
    void setSelected_data();
    void setSelected();
    void setSelectedFindsTheCell();
    void selectAll_data();
    void selectAll();
    void operationsWithSignalsBlocked();
    void selectAllUsesTheVirtualOperation();
    void firstKeySelectsByTheVirtualOperation();
    void clearForgetsTheAnchor();
    void invertSelection_data();
    void invertSelection();
    void toggleCurrentItem_data();
    void toggleCurrentItem();
    void selectRange_data();
    void selectRange();
    void handleItemChange_data();
    void handleItemChange();
    void selectionModes();
    void ensureCurrentVisible_data();
    void ensureCurrentVisible();
    void orderOfSignalsAndSlots();
};

void TestListBoxSkinKeys::keys_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<int>("current");
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("notSelectable");
    // What the last of the keys brings.
    QTest::addColumn<QString>("pressed");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("newCurrent");
    QTest::addColumn<QString>("selection");

    const auto row = [](const char* name, Mode mode, int current, const char* selected, const char* pressed,
                        const char* expected, int newCurrent, const char* selection, const char* notSelectable = "") {
        QTest::newRow(name) << mode << current << QString(selected) << QString(notSelectable) << QString(pressed)
                            << QString(expected) << newCurrent << QString(selection);
    };
    row("single, down", Single, 3, "", "Down", "S4 S M4", 4, "i4");
    row("single, down from a selected item", Single, 3, "i3", "Down", "S4 S M4", 4, "i4");
    row("single, down to what cannot be selected", Single, 3, "", "Down", "M4", 4, "", "i4");
    row("single, down from selected to not selectable", Single, 3, "i3", "Down", "S M4", 4, "", "i4");
    row("single, down to what is selected", Single, 3, "i3 i4", "Down", "S M4", 4, "i4");
    row("single, down at the end", Single, 9, "", "Down", "", 9, "");
    row("single, up", Single, 3, "", "Up", "S2 S M2", 2, "i2");
    row("single, up at the start", Single, 0, "", "Up", "", 0, "");
    row("single, left", Single, 3, "", "Left", "", 3, "");
    row("single, right", Single, 3, "", "Right", "", 3, "");
    row("single, home", Single, 3, "i3", "Home", "S0 S M0", 0, "i0");
    row("single, home at the start selects", Single, 0, "", "Home", "S0 S", 0, "i0");
    row("single, home at the start, selected", Single, 0, "i0", "Home", "", 0, "i0");
    row("single, home at the start, not selectable", Single, 0, "", "Home", "", 0, "", "i0");
    row("single, end", Single, 3, "i3", "End", "S9 S M9", 9, "i9");
    row("single, end at the end selects", Single, 9, "", "End", "S9 S", 9, "i9");
    row("single, prior at the start selects", Single, 0, "", "Prior", "S0 S", 0, "i0");
    row("single, next at the end does not select", Single, 9, "", "Next", "", 9, "");
    row("single, return selects", Single, 3, "", "Return", "R3 S3 S", 3, "i3");
    row("single, return on a selected item", Single, 3, "i3", "Return", "R3", 3, "i3");
    row("single, enter", Single, 3, "i3", "Enter", "R3", 3, "i3");
    row("single, space selects", Single, 3, "", "Space", "S3 S", 3, "i3");
    row("single, space on a selected item", Single, 3, "i3", "Space", "", 3, "i3");
    row("single, control and a", Single, 3, "", "Control+A", "S3 S", 3, "i3");
    row("single, control and a on a selected item", Single, 3, "i3", "Control+A", "", 3, "i3");
    row("single, shift and down", Single, 3, "i3", "Shift+Down", "S4 S M4", 4, "i4");

    row("multi, down", Multi, 3, "i1", "Down", "M4", 4, "i1");
    row("multi, up", Multi, 3, "i1", "Up", "M2", 2, "i1");
    row("multi, control and down", Multi, 3, "i1", "Control+Down", "M4", 4, "i1");
    row("multi, shift and down", Multi, 3, "i1", "Shift+Down", "M4 S", 4, "i1 i4");
    row("multi, shift and down over a selected item", Multi, 3, "i4", "Shift+Down", "M4 S", 4, "");
    row("multi, shift and down over one not selectable", Multi, 3, "", "Shift+Down", "M4", 4, "", "i4");
    row("multi, shift and up again", Multi, 3, "", "Shift+Down Shift+Down Shift+Up", "M4 S", 4, "i5");
    row("multi, shift and end", Multi, 6, "i8", "Shift+End", "M9 S", 9, "i7 i9");
    row("multi, shift and home", Multi, 2, "i2", "Shift+Home", "M0 S", 0, "i0 i1 i2");
    row("multi, shift and home at the start", Multi, 0, "i2", "Shift+Home", "", 0, "i2");
    row("multi, shift and next", Multi, 0, "", "Shift+Next", "M4 S", 4, "i1 i2 i3 i4");
    row("multi, shift and prior", Multi, 9, "", "Shift+Prior", "M5 S", 5, "i5 i6 i7 i8");
    row("multi, space", Multi, 3, "", "Space", "S", 3, "i3");
    row("multi, space on a selected item", Multi, 3, "i3", "Space", "S", 3, "");
    row("multi, space on one not selectable", Multi, 3, "", "Space", "", 3, "", "i3");
    row("multi, space on one selected and not selectable", Multi, 3, "i3", "Space", "S", 3, "", "i3");
    row("multi, return", Multi, 3, "i1", "Return", "R3", 3, "i1");
    row("multi, control and a", Multi, 3, "i1", "Control+A", "S", 3, "i0 i1 i2 i4 i5 i6 i7 i8 i9", "i3");

    row("extended, down", Extended, 3, "i1 i3", "Down", "M4 S", 4, "i4");
    row("extended, down to what cannot be selected", Extended, 3, "i3", "Down", "M4", 4, "", "i4");
    row("extended, up at the start", Extended, 0, "i3", "Up", "", 0, "i3");
    row("extended, control and down", Extended, 3, "i1 i3", "Control+Down", "M4", 4, "i1 i3");
    row("extended, shift and control", Extended, 3, "i1", "Shift+Control+Down", "M4", 4, "i1");
    // Without an anchor the range begins with the old item and nothing is let go.
    row("extended, shift and down, no anchor", Extended, 3, "i1", "Shift+Down", "M4 S", 4, "i1 i3 i4");
    // The anchor is then where that ended.
    row("extended, shift and down twice, no anchor", Extended, 3, "i1", "Shift+Down Shift+Down", "M5 S", 5, "i4 i5");
    row("extended, shift and down, anchor", Extended, 2, "i1", "Down Shift+Down Shift+Down", "M5 S", 5, "i3 i4 i5");
    row("extended, shift and up again", Extended, 2, "i1", "Down Shift+Down Shift+Down Shift+Up", "M4 S", 4, "i3 i4");
    row("extended, shift past the anchor", Extended, 2, "", "Down Shift+Up Shift+Up", "M1 S", 1, "i1 i2 i3");
    row("extended, control moves the anchor", Extended, 2, "", "Down Control+Down Shift+Down", "M5 S", 5, "i4 i5");
    row("extended, next moves the anchor", Extended, 0, "", "Next Shift+Down", "M5 S", 5, "i4 i5");
    row("extended, prior moves the anchor", Extended, 9, "", "Prior Shift+Down", "M6 S", 6, "i5 i6");
    row("extended, home moves the anchor", Extended, 5, "", "Home Shift+Down", "M1 S", 1, "i0 i1");
    row("extended, return moves the anchor", Extended, 5, "i8", "Return Shift+Down", "M6 S", 6, "i5 i6");
    row("extended, space moves the anchor", Extended, 5, "i8", "Space Shift+Down", "M6 S", 6, "i5 i6");
    row("extended, left leaves the anchor", Extended, 5, "i8", "Left Shift+Down", "M6 S", 6, "i5 i6 i8");
    row("extended, control and a leaves the anchor", Extended, 5, "", "Control+A Shift+Down", "M6", 6,
        "i0 i1 i2 i3 i4 i5 i6 i7 i8 i9");
    row("extended, shift keeps the anchor", Extended, 4, "", "Down Shift+End Shift+Up", "M8 S", 8, "i5 i6 i7 i8");
    row("extended, shift and home", Extended, 4, "", "Down Shift+Home", "M0 S", 0, "i0 i1 i2 i3 i4 i5");
    row("extended, home at the start", Extended, 0, "i0 i4", "Home", "S", 0, "i0");
    row("extended, end", Extended, 0, "i0 i4", "End", "M9 S", 9, "i9");
    row("extended, space", Extended, 3, "i1", "Space", "S", 3, "i1 i3");
    row("extended, return", Extended, 3, "i1", "Return", "R3", 3, "i1");

    row("no selection, down", NoSelection, 3, "", "Down", "M4", 4, "");
    row("no selection, shift and down", NoSelection, 3, "", "Shift+Down", "M4", 4, "");
    row("no selection, home", NoSelection, 3, "", "Home", "M0", 0, "");
    row("no selection, home at the start", NoSelection, 0, "", "Home", "", 0, "");
    row("no selection, return", NoSelection, 3, "", "Return", "", 3, "");
    row("no selection, space", NoSelection, 3, "", "Space", "", 3, "");
    row("no selection, control and a", NoSelection, 3, "", "Control+A", "", 3, "");
}

void TestListBoxSkinKeys::keys()
{
    QFETCH(Mode, mode);
    QFETCH(int, current);
    QFETCH(QString, selected);
    QFETCH(QString, notSelectable);
    QFETCH(QString, pressed);
    QFETCH(QString, expected);
    QFETCH(int, newCurrent);
    QFETCH(QString, selection);
    Box box(QSize(100, 50));
    fill(box, 10);
    box.setSelectionMode(mode);
    selectItems(box, selected);
    for (const QString& name : notSelectable.split(' ', Qt::SkipEmptyParts))
        box.item(name.mid(1).toInt())->setSelectable(false);
    makeCurrent(box, current);
    SignalLog log(&box);
    const QStringList names = pressed.split(' ');
    for (const QString& name : names) {
        log.take();
        QVERIFY(press(box, name));
    }
    QCOMPARE(log.take(), signalsOf(expected));
    QCOMPARE(box.currentItem(), newCurrent);
    QCOMPARE(box.selection(), selection);
}

// One page is as many items as are in sight, in part or whole.
void TestListBoxSkinKeys::pagesOfOneColumn()
{
    Box box(QSize(100, 50));
    fill(box, 20);
    makeCurrent(box, 0);
    SignalLog log(&box);
    QVERIFY(press(box, QStringLiteral("Next")));
    QCOMPARE(log.take(), signalsOf("S4 S M4"));
    // The bottom row at once, not only when the timer comes.
    QCOMPARE(box.contentsY(), 25);
    QVERIFY(press(box, QStringLiteral("Next")));
    QCOMPARE(log.take(), signalsOf("S8 S M8"));
    QCOMPARE(box.contentsY(), 85);
    box.setCurrentItem(17);
    log.take();
    QVERIFY(press(box, QStringLiteral("Next")));
    QCOMPARE(log.take(), signalsOf("S19 S M19"));
    QCOMPARE(box.contentsY(), 250);
    QVERIFY(press(box, QStringLiteral("Prior")));
    QCOMPARE(log.take(), signalsOf("S15 S M15"));
    QCOMPARE(box.contentsY(), 225);
    box.setCurrentItem(2);
    log.take();
    QVERIFY(press(box, QStringLiteral("Prior")));
    QCOMPARE(log.take(), signalsOf("S0 S M0"));
    QCOMPARE(box.contentsY(), 0);
}

void TestListBoxSkinKeys::pagesOfColumns_data()
{
    QTest::addColumn<int>("current");
    QTest::addColumn<QString>("pressed");
    QTest::addColumn<int>("expected");
    // Columns of 4, 4 and 2 items.
    QTest::newRow("prior within a column") << 6 << "Prior" << 4;
    QTest::newRow("prior at the top of a column") << 4 << "Prior" << 0;
    QTest::newRow("prior at the top of the last column") << 8 << "Prior" << 4;
    QTest::newRow("prior in the last column") << 9 << "Prior" << 8;
    QTest::newRow("prior at the start") << 0 << "Prior" << 0;
    QTest::newRow("next within a column") << 5 << "Next" << 7;
    QTest::newRow("next from the top") << 0 << "Next" << 3;
    QTest::newRow("next at the bottom") << 3 << "Next" << 7;
    QTest::newRow("next at the bottom before the last column") << 7 << "Next" << 9;
    QTest::newRow("next in the last column") << 8 << "Next" << 9;
    QTest::newRow("next at the end") << 9 << "Next" << 9;
    QTest::newRow("left") << 5 << "Left" << 5;
    QTest::newRow("right") << 5 << "Right" << 5;
    QTest::newRow("up to another column") << 4 << "Up" << 3;
    QTest::newRow("down to another column") << 3 << "Down" << 4;
}

void TestListBoxSkinKeys::pagesOfColumns()
{
    QFETCH(int, current);
    QFETCH(QString, pressed);
    QFETCH(int, expected);
    for (const bool laidOut : {true, false}) {
        Box box(QSize(100, 50));
        fill(box, 10);
        box.setColumnMode(3);
        if (laidOut)
            box.doLayout();
        makeCurrent(box, current);
        SignalLog log(&box);
        QVERIFY(press(box, pressed));
        QCOMPARE(box.currentItem(), expected);
        if (expected != current)
            QCOMPARE(log.take(), signalsOf(QStringLiteral("S%1 S M%1").arg(expected)));
    }
}

void TestListBoxSkinKeys::otherKeys_data()
{
    QTest::addColumn<QString>("pressed");
    QTest::addColumn<bool>("kept");
    QTest::newRow("escape") << "Escape" << false;
    QTest::newRow("shift and escape") << "Shift+Escape" << false;
    QTest::newRow("control and escape") << "Control+Escape" << true;
    QTest::newRow("function key") << "F5" << false;
    QTest::newRow("control and function key") << "Control+F5" << true;
    QTest::newRow("delete") << "Delete" << false;
    QTest::newRow("control and a letter") << "Control+B" << true;
    QTest::newRow("a letter that no item begins with") << "x" << true;
}

void TestListBoxSkinKeys::otherKeys()
{
    QFETCH(QString, pressed);
    QFETCH(bool, kept);
    Box box;
    fill(box, 5);
    makeCurrent(box, 2);
    SignalLog log(&box);
    QCOMPARE(press(box, pressed), kept);
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(box.currentItem(), 2);
}

void TestListBoxSkinKeys::noItems()
{
    Box box;
    SignalLog log(&box);
    for (const char* name : {"Left", "Down", "Home", "Return", "Space", "Control+A", "Control+F5", "Escape", "x"})
        QVERIFY2(!press(box, QLatin1String(name)), name);
    QCOMPARE(log.take(), QStringList());
}

void TestListBoxSkinKeys::noCurrentItem_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<bool>("selectable");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("selection");
    QTest::newRow("single") << Single << true << "S0 S M0"
                            << "i0";
    QTest::newRow("single, not selectable") << Single << false << "M0"
                                            << "";
    QTest::newRow("multi") << Multi << true << "M0"
                           << "";
    QTest::newRow("extended") << Extended << true << "M0"
                              << "";
    QTest::newRow("no selection") << NoSelection << true << "M0"
                                  << "";
}

void TestListBoxSkinKeys::noCurrentItem()
{
    QFETCH(Mode, mode);
    QFETCH(bool, selectable);
    QFETCH(QString, expected);
    QFETCH(QString, selection);
    for (const char* name : {"Left", "Down", "End", "Return", "Space", "Control+A", "Control+F5", "Escape", "x"}) {
        Box box;
        fill(box, 5);
        box.setSelectionMode(mode);
        box.item(0)->setSelectable(selectable);
        SignalLog log(&box);
        QVERIFY2(!press(box, QLatin1String(name)), name);
        QCOMPARE(log.take(), signalsOf(expected));
        QCOMPARE(box.currentItem(), 0);
        QCOMPARE(box.selection(), selection);
    }
}

void TestListBoxSkinKeys::textsThatAreEmpty()
{
    Box box;
    box.setSelectionMode(Multi);
    fill(box, 1);
    box.insertItem(new Block(40, 15, QString()));
    box.setCurrentItem(0);
    SignalLog log(&box);
    QVERIFY(press(box, QStringLiteral("Down")));
    QCOMPARE(log.take(), QStringList({"highlighted()", "highlighted(1)", "currentChanged()"}));
    QVERIFY(press(box, QStringLiteral("Return")));
    QCOMPARE(log.take(), QStringList({"selected(1)", "selected()", "returnPressed()"}));
}

void TestListBoxSkinKeys::typeAhead_data()
{
    QTest::addColumn<int>("current");
    QTest::addColumn<QString>("pressed");
    QTest::addColumn<int>("expected");
    QTest::newRow("beginning of the current item") << 0 << "a" << 0;
    QTest::newRow("item further on") << 0 << "b" << 2;
    QTest::newRow("upper case letters") << 0 << "BE" << 2;
    QTest::newRow("upper case item") << 3 << "b" << 3;
    QTest::newRow("around the end") << 3 << "a" << 0;
    QTest::newRow("two letters") << 0 << "a l t" << 1;
    QTest::newRow("letters that no item begins with") << 0 << "b x" << 2;
    QTest::newRow("a letter after those") << 0 << "b x b" << 2;
    QTest::newRow("digit") << 0 << "7" << 5;
    QTest::newRow("letter of another script") << 0 << QString::fromUtf8("É") << 6;
    QTest::newRow("all letters of one key") << 0 << "BR" << 3;
    QTest::newRow("in the middle of items only") << 0 << "r" << 0;
    for (const char* key : {"Left", "Right", "Space", "Return", "Enter", "Control+A"})
        QTest::addRow("%s begins anew", key) << 0 << QStringLiteral("a %1 b").arg(key) << 2;
    QTest::newRow("up begins anew") << 1 << "a Up b" << 2;
    QTest::newRow("down begins anew") << 0 << "a Down b" << 2;
    QTest::newRow("home begins anew") << 1 << "a Home b" << 2;
    QTest::newRow("end begins anew") << 0 << "a End 7" << 5;
    QTest::newRow("escape does not begin anew") << 0 << "b Escape r" << 3;
    QTest::newRow("control and a letter does not begin anew") << 0 << "b Control+B r" << 3;
}

void TestListBoxSkinKeys::typeAhead()
{
    QFETCH(int, current);
    QFETCH(QString, pressed);
    QFETCH(int, expected);
    Box box;
    for (const char* text : {"Alpha", "alto", "beta", "Bravo", "", "7th", "\u00e9lan"})
        box.insertItem(new Block(40, 15, QString::fromUtf8(text)));
    box.setSelectionMode(Multi);
    box.setCurrentItem(current);
    for (const QString& key : pressed.split(' '))
        press(box, key);
    QCOMPARE(box.currentItem(), expected);
}

void TestListBoxSkinKeys::typeAheadInExtendedMode()
{
    Box box;
    fill(box, 3);
    box.setSelectionMode(Extended);
    selectItems(box, QStringLiteral("i0 i1"));
    makeCurrent(box, 0);
    SignalLog log(&box);
    QVERIFY(box.type(QStringLiteral("i2")));
    // The current item begins with i as well.
    QCOMPARE(log.take(), signalsOf("S M2 S"));
    QCOMPARE(box.selection(), QStringLiteral("i2"));

    box.clearInputString();
    box.item(1)->setSelectable(false);
    QVERIFY(box.type(QStringLiteral("i")));
    QCOMPARE(log.take(), signalsOf("S"));
    QVERIFY(box.type(QStringLiteral("1")));
    // Nothing is selected, so nothing is told of that.
    QCOMPARE(log.take(), signalsOf("M1"));
    QCOMPARE(box.selection(), QString());
    // The anchor is left to the other keys.
    QVERIFY(press(box, QStringLiteral("Shift+Down")));
    QCOMPARE(log.take(), signalsOf("M2 S"));
    QCOMPARE(box.selection(), QStringLiteral("i2"));
}

void TestListBoxSkinKeys::typeAheadTimer()
{
    Box box;
    for (const char* text : {"aa", "ab", "bb"})
        box.insertItem(QString::fromLatin1(text));
    box.setCurrentItem(0);
    QTimer* const timer = box.timer("listbox input timer");
    QVERIFY(!timer->isActive());
    box.type(QStringLiteral("a"));
    QVERIFY(timer->isActive());
    QVERIFY(timer->isSingleShot());
    QCOMPARE(timer->interval(), 500);
    // Each letter starts it anew.
    timer->start(1000000);
    box.type(QStringLiteral("b"));
    QCOMPARE(timer->interval(), 500);
    QCOMPARE(box.currentItem(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(!timer->isActive(), 30000);
    // Without it this would search for "abb".
    box.type(QStringLiteral("b"));
    QCOMPARE(box.currentItem(), 2);
    // So does a letter that finds nothing.
    timer->stop();
    box.type(QStringLiteral("x"));
    QVERIFY(timer->isActive());
}

void TestListBoxSkinKeys::setCurrentItem_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<int>("before");
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("notSelectable");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("selection");
    QTest::newRow("single") << Single << -1 << ""
                            << "" << 2 << "S2 S M2"
                            << "i2";
    QTest::newRow("single, other item selected") << Single << 1 << "i1"
                                                 << "" << 2 << "S2 S M2"
                                                 << "i2";
    QTest::newRow("single, selected and not selectable") << Single << 1 << "i1"
                                                         << "i1" << 2 << "S2 S M2"
                                                         << "i2";
    QTest::newRow("single, not selectable") << Single << 1 << ""
                                            << "i2" << 2 << "M2"
                                            << "";
    QTest::newRow("single, one deselected") << Single << 1 << "i1"
                                            << "i2" << 2 << "S M2"
                                            << "";
    QTest::newRow("single, selected already") << Single << 1 << "i2"
                                              << "" << 2 << "M2"
                                              << "i2";
    // Items that are neither the old nor the new one are left alone.
    QTest::newRow("single, something else selected") << Single << 1 << "i3"
                                                     << "" << 2 << "S2 S M2"
                                                     << "i2 i3";
    QTest::newRow("single, the current one") << Single << 1 << ""
                                             << "" << 1 << ""
                                             << "";
    QTest::newRow("multi") << Multi << 1 << "i1"
                           << "" << 2 << "M2"
                           << "i1";
    QTest::newRow("extended") << Extended << 1 << "i1"
                              << "" << 2 << "M2"
                              << "i1";
    QTest::newRow("no selection") << NoSelection << 1 << "i1"
                                  << "" << 2 << "M2"
                                  << "i1";
    QTest::newRow("below the first") << Single << 1 << ""
                                     << "" << -1 << ""
                                     << "";
    QTest::newRow("beyond the last") << Single << 1 << ""
                                     << "" << 4 << ""
                                     << "";
}

void TestListBoxSkinKeys::setCurrentItem()
{
    QFETCH(Mode, mode);
    QFETCH(int, before);
    QFETCH(QString, selected);
    QFETCH(QString, notSelectable);
    QFETCH(int, index);
    QFETCH(QString, expected);
    QFETCH(QString, selection);
    for (const bool byItem : {false, true}) {
        Box box;
        fill(box, 4);
        box.setSelectionMode(mode);
        selectItems(box, selected);
        makeCurrent(box, before);
        if (!notSelectable.isEmpty())
            box.item(notSelectable.mid(1).toInt())->setSelectable(false);
        SignalLog log(&box);
        if (byItem)
            box.setCurrentItem(box.item(index));
        else
            box.setCurrentItem(index);
        QCOMPARE(log.take(), signalsOf(expected));
        QCOMPARE(box.currentItem(), box.item(index) ? index : before);
        QCOMPARE(box.selection(), selection);
    }
}

void TestListBoxSkinKeys::currentItemComesIntoView()
{
    Box box(QSize(100, 50));
    fill(box, 20);
    box.showSettled();
    QTimer* const timer = box.timer("listbox visible timer");
    QVERIFY(!timer->isActive());
    box.setCurrentItem(12);
    QVERIFY(timer->isActive());
    QVERIFY(timer->isSingleShot());
    QCOMPARE(timer->interval(), 1);
    QCOMPARE(box.contentsY(), 0);
    box.settle();
    QCOMPARE(box.contentsY(), 194 - 50);
    box.setCurrentItem(12);
    QVERIFY(!timer->isActive());
}

void TestListBoxSkinKeys::movesRepaintOldAndNewItem_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<bool>("bySelecting");
    QTest::newRow("current in single mode") << Single << false;
    QTest::newRow("current in multi mode") << Multi << false;
    QTest::newRow("current in extended mode") << Extended << false;
    QTest::newRow("current without selection") << NoSelection << false;
    QTest::newRow("selected in single mode") << Single << true;
}

// Whether or not their selection changes.
void TestListBoxSkinKeys::movesRepaintOldAndNewItem()
{
    QFETCH(Mode, mode);
    QFETCH(bool, bySelecting);
    Box box;
    fill(box, 4);
    box.setSelectionMode(mode);
    makeCurrent(box, 0);
    box.showSettled();
    for (int i = 0; i < 4; ++i)
        box.block(i)->dirty = false;
    if (bySelecting)
        box.setSelected(2, true);
    else
        box.setCurrentItem(2);
    QVERIFY(box.block(0)->isDirty());
    QVERIFY(!box.block(1)->isDirty());
    QVERIFY(box.block(2)->isDirty());
    QVERIFY(!box.block(3)->isDirty());
}

void TestListBoxSkinKeys::setSelected_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<int>("current");
    QTest::addColumn<QString>("selected");
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("select");
    QTest::addColumn<bool>("selectable");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("newCurrent");
    QTest::addColumn<QString>("selection");
    QTest::newRow("single, current") << Single << 2 << "" << 2 << true << true << "S2 S" << 2 << "i2";
    QTest::newRow("single, other") << Single << 1 << "i1" << 2 << true << true << "S2 S M2" << 2 << "i2";
    QTest::newRow("single, none current") << Single << -1 << "" << 2 << true << true << "S2 S M2" << 2 << "i2";
    QTest::newRow("single, deselect") << Single << 2 << "i2" << 2 << false << true << "S" << 2 << "";
    QTest::newRow("single, deselect other") << Single << 1 << "i1 i2" << 2 << false << true << "S M2" << 2 << "";
    QTest::newRow("single, selected") << Single << 2 << "i2" << 2 << true << true << "" << 2 << "i2";
    QTest::newRow("single, not selectable") << Single << 1 << "" << 2 << true << false << "" << 1 << "";
    QTest::newRow("deselect not selectable") << Multi << 1 << "i2" << 2 << false << false << "" << 1 << "i2";
    QTest::newRow("multi") << Multi << 1 << "i1" << 2 << true << true << "S" << 1 << "i1 i2";
    QTest::newRow("multi, deselect") << Multi << 1 << "i1 i2" << 2 << false << true << "S" << 1 << "i1";
    QTest::newRow("extended") << Extended << 1 << "i1" << 2 << true << true << "S" << 1 << "i1 i2";
    QTest::newRow("no selection") << NoSelection << 2 << "" << 2 << true << true << "" << 2 << "";
    QTest::newRow("no selection, deselect") << NoSelection << 2 << "i2" << 2 << false << true << "" << 2 << "i2";
    QTest::newRow("beyond the last") << Multi << 1 << "" << 4 << true << true << "" << 1 << "";
    QTest::newRow("below the first") << Multi << 1 << "" << -1 << true << true << "" << 1 << "";
}

void TestListBoxSkinKeys::setSelected()
{
    QFETCH(Mode, mode);
    QFETCH(int, current);
    QFETCH(QString, selected);
    QFETCH(int, index);
    QFETCH(bool, select);
    QFETCH(bool, selectable);
    QFETCH(QString, expected);
    QFETCH(int, newCurrent);
    QFETCH(QString, selection);
    for (const bool byItem : {false, true}) {
        Box box;
        fill(box, 4);
        box.setSelectionMode(mode);
        selectItems(box, selected);
        makeCurrent(box, current);
        if (box.item(index))
            box.item(index)->setSelectable(selectable);
        SignalLog log(&box);
        if (byItem)
            box.setSelected(box.item(index), select);
        else
            box.setSelected(index, select);
        QCOMPARE(log.take(), signalsOf(expected));
        QCOMPARE(box.currentItem(), newCurrent);
        QCOMPARE(box.selection(), selection);
        QCOMPARE(box.isSelected(index), selection.contains('i' + QString::number(index)));
        QCOMPARE(box.isSelected(box.item(index)), box.isSelected(index));
    }
}

void TestListBoxSkinKeys::setSelectedFindsTheCell()
{
    Box box;
    fill(box, 6);
    box.setColumnMode(2);
    box.setCurrentItem(0);
    box.doLayout();
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(0, 0));
    box.setSelected(5, true);
    QCOMPARE(QPoint(box.currentColumn(), box.currentRow()), QPoint(1, 2));
}

void TestListBoxSkinKeys::selectAll_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<int>("current");
    QTest::addColumn<QString>("selected");
    QTest::addColumn<bool>("select");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("selection");
    QTest::newRow("single") << Single << 1 << "" << true << "S1 S"
                            << "i1";
    QTest::newRow("single, none current") << Single << -1 << "" << true << ""
                                          << "";
    QTest::newRow("single, deselect") << Single << 1 << "i1 i3" << false << "S"
                                      << "i3";
    QTest::newRow("no selection") << NoSelection << 1 << "" << true << ""
                                  << "";
    QTest::newRow("multi") << Multi << 1 << "i0" << true << "S"
                           << "i0 i1 i3";
    QTest::newRow("multi, none to change") << Multi << 1 << "" << false << "S"
                                           << "";
    QTest::newRow("multi, deselect") << Multi << 1 << "i0 i2 i3" << false << "S"
                                     << "i2";
    QTest::newRow("extended") << Extended << 1 << "" << true << "S"
                              << "i0 i1 i3";
    QTest::newRow("extended, deselect") << Extended << -1 << "i0 i1" << false << "S"
                                        << "";
}

void TestListBoxSkinKeys::selectAll()
{
    QFETCH(Mode, mode);
    QFETCH(int, current);
    QFETCH(QString, selected);
    QFETCH(bool, select);
    QFETCH(QString, expected);
    QFETCH(QString, selection);
    for (const bool slot : {false, true}) {
        Box box;
        fill(box, 4);
        box.setSelectionMode(mode);
        selectItems(box, selected);
        box.item(2)->setSelectable(false);
        makeCurrent(box, current);
        SignalLog log(&box);
        if (slot && !select)
            QVERIFY(QMetaObject::invokeMethod(&box, "clearSelection"));
        else if (slot)
            QVERIFY(QMetaObject::invokeMethod(&box, "selectAll", Q_ARG(bool, true)));
        else
            box.selectAll(select);
        QCOMPARE(log.take(), signalsOf(expected));
        QCOMPARE(box.currentItem(), current);
        QCOMPARE(box.selection(), selection);
    }
}

void TestListBoxSkinKeys::operationsWithSignalsBlocked()
{
    Box box;
    fill(box, 4);
    box.setSelectionMode(Extended);
    box.setCurrentItem(1);
    SignalLog log(&box);
    box.blockSignals(true);
    box.selectAll(true);
    QVERIFY(box.signalsBlocked());
    box.invertSelection();
    QVERIFY(box.signalsBlocked());
    box.handleItemChange(box.item(0), false, false);
    QVERIFY(box.signalsBlocked());
    box.type(QStringLiteral("i3"));
    QVERIFY(box.signalsBlocked());
    box.blockSignals(false);
    QCOMPARE(log.take(), QStringList());
    box.selectAll(true);
    box.invertSelection();
    box.handleItemChange(box.item(0), false, false);
    box.clearInputString();
    box.type(QStringLiteral("i0"));
    QVERIFY(!box.signalsBlocked());
}

void TestListBoxSkinKeys::selectAllUsesTheVirtualOperation()
{
    Counting box;
    fill(box, 4);
    box.setSelectionMode(Multi);
    box.selectAll(true);
    QCOMPARE(box.calls, 4);
    box.invertSelection();
    QCOMPARE(box.calls, 8);
    // Items that are not selected count as well.
    box.selectAll(false);
    QCOMPARE(box.calls, 12);
    box.clearSelection();
    QCOMPARE(box.calls, 16);
    box.setSelectionMode(Single);
    makeCurrent(box, 2);
    box.selectAll(true);
    QCOMPARE(box.calls, 17);
}

// Though making it current has selected the first item already.
void TestListBoxSkinKeys::firstKeySelectsByTheVirtualOperation()
{
    Counting box;
    fill(box, 4);
    QVERIFY(!press(box, QStringLiteral("Down")));
    QCOMPARE(box.currentItem(), 0);
    QCOMPARE(box.calls, 1);
    Counting other;
    fill(other, 4);
    other.setSelectionMode(Multi);
    QVERIFY(!press(other, QStringLiteral("Down")));
    QCOMPARE(other.calls, 0);
}

void TestListBoxSkinKeys::clearForgetsTheAnchor()
{
    Box box;
    fill(box, 4);
    box.setSelectionMode(Extended);
    makeCurrent(box, 0);
    QVERIFY(press(box, QStringLiteral("Down")));
    box.clear();
    fill(box, 4);
    selectItems(box, QStringLiteral("i0"));
    makeCurrent(box, 2);
    QVERIFY(press(box, QStringLiteral("Shift+Down")));
    // Without an anchor nothing is let go.
    QCOMPARE(box.selection(), QStringLiteral("i0 i2 i3"));
}

void TestListBoxSkinKeys::invertSelection_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("selection");
    QTest::newRow("single") << Single << ""
                            << "i0 i2";
    QTest::newRow("no selection") << NoSelection << ""
                                  << "i0 i2";
    QTest::newRow("multi") << Multi << "S"
                           << "i1 i2";
    QTest::newRow("extended") << Extended << "S"
                              << "i1 i2";
}

void TestListBoxSkinKeys::invertSelection()
{
    QFETCH(Mode, mode);
    QFETCH(QString, expected);
    QFETCH(QString, selection);
    Box box;
    fill(box, 4);
    selectItems(box, QStringLiteral("i0 i2"));
    box.setSelectionMode(mode);
    makeCurrent(box, 1);
    for (const int index : {2, 3})
        box.item(index)->setSelectable(false);
    SignalLog log(&box);
    box.invertSelection();
    QCOMPARE(log.take(), signalsOf(expected));
    QCOMPARE(box.selection(), selection);
}

void TestListBoxSkinKeys::toggleCurrentItem_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<int>("current");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("selectable");
    QTest::addColumn<bool>("told");
    QTest::addColumn<bool>("repainted");
    QTest::newRow("single") << Single << 1 << false << true << false << false;
    QTest::newRow("no selection") << NoSelection << 1 << false << true << false << false;
    QTest::newRow("multi") << Multi << 1 << false << true << true << true;
    QTest::newRow("multi, selected") << Multi << 1 << true << true << true << true;
    QTest::newRow("multi, selected and not selectable") << Multi << 1 << true << false << true << true;
    QTest::newRow("multi, not selectable") << Multi << 1 << false << false << false << true;
    QTest::newRow("multi, none current") << Multi << -1 << false << true << false << false;
    QTest::newRow("extended") << Extended << 1 << false << true << true << true;
}

void TestListBoxSkinKeys::toggleCurrentItem()
{
    QFETCH(Mode, mode);
    QFETCH(int, current);
    QFETCH(bool, selected);
    QFETCH(bool, selectable);
    QFETCH(bool, told);
    QFETCH(bool, repainted);
    Box box;
    fill(box, 3);
    if (selected)
        selectItems(box, QStringLiteral("i1"));
    box.setSelectionMode(mode);
    makeCurrent(box, current);
    box.item(1)->setSelectable(selectable);
    box.block(1)->dirty = false;
    SignalLog log(&box);
    box.toggleCurrentItem();
    QCOMPARE(log.take(), signalsOf(told ? "S" : ""));
    QCOMPARE(box.isSelected(1), selected != told);
    QCOMPARE(box.block(1)->isDirty(), repainted);
}

void TestListBoxSkinKeys::selectRange_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<bool>("invert");
    QTest::addColumn<bool>("includeFirst");
    QTest::addColumn<bool>("clearSel");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("selection");
    // Selected are i1, i4 and i8, not selectable i4 and i5.
    QTest::newRow("forwards") << 2 << 6 << false << true << false << "S"
                              << "i1 i2 i3 i4 i6 i8";
    QTest::newRow("forwards, without the first") << 2 << 6 << false << false << false << "S"
                                                 << "i1 i3 i4 i6 i8";
    QTest::newRow("backwards") << 6 << 2 << false << true << false << "S"
                               << "i1 i2 i3 i4 i6 i8";
    QTest::newRow("backwards, without the first") << 6 << 2 << false << false << false << "S"
                                                  << "i1 i2 i3 i4 i8";
    QTest::newRow("clear") << 2 << 6 << false << true << true << "S"
                           << "i2 i3 i4 i6";
    QTest::newRow("clear, without the first") << 2 << 6 << false << false << true << "S"
                                              << "i3 i4 i6";
    QTest::newRow("clear, backwards, without the first") << 8 << 6 << false << false << true << "S"
                                                         << "i6 i7";
    QTest::newRow("invert") << 0 << 6 << true << true << false << "S"
                            << "i0 i2 i3 i6 i8";
    QTest::newRow("invert, without the first") << 1 << 2 << true << false << false << "S"
                                               << "i1 i2 i4 i8";
    QTest::newRow("invert and clear") << 1 << 2 << true << true << true << "S"
                                      << "i2";
    QTest::newRow("one item") << 3 << 3 << false << true << false << "S"
                              << "i1 i3 i4 i8";
    QTest::newRow("one item left out") << 3 << 3 << false << false << false << ""
                                       << "i1 i4 i8";
    QTest::newRow("one item left out, clear") << 1 << 1 << false << false << true << "S"
                                              << "";
    QTest::newRow("selected already") << 4 << 5 << false << true << false << ""
                                      << "i1 i4 i8";
    QTest::newRow("cannot be selected") << 5 << 5 << true << true << false << ""
                                        << "i1 i4 i8";
    QTest::newRow("no first item") << -1 << 5 << false << true << true << ""
                                   << "i1 i4 i8";
    QTest::newRow("no last item") << 5 << 10 << false << true << true << ""
                                  << "i1 i4 i8";
}

void TestListBoxSkinKeys::selectRange()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(bool, invert);
    QFETCH(bool, includeFirst);
    QFETCH(bool, clearSel);
    QFETCH(QString, expected);
    QFETCH(QString, selection);
    Box box;
    fill(box, 10);
    box.setSelectionMode(Extended);
    selectItems(box, QStringLiteral("i1 i4 i8"));
    for (const int index : {4, 5})
        box.item(index)->setSelectable(false);
    SignalLog log(&box);
    const QString before = box.selection();
    for (int i = 0; i < 10; ++i)
        box.block(i)->dirty = false;
    box.selectRange(box.item(from), box.item(to), invert, includeFirst, clearSel);
    QCOMPARE(log.take(), signalsOf(expected));
    QCOMPARE(box.selection(), selection);
    // What has changed is painted again, and nothing else.
    for (int i = 0; i < 10; ++i) {
        const QString name = 'i' + QString::number(i);
        QCOMPARE(box.block(i)->isDirty(), before.contains(name) != selection.contains(name));
    }
}

void TestListBoxSkinKeys::handleItemChange_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<bool>("shift");
    QTest::addColumn<bool>("control");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("selection");
    // From i2 to i4, with i6 selected.
    QTest::newRow("single") << Single << false << false << ""
                            << "i6";
    QTest::newRow("single, shift") << Single << true << false << ""
                                   << "i6";
    QTest::newRow("no selection, shift") << NoSelection << true << false << ""
                                         << "i6";
    QTest::newRow("multi") << Multi << false << false << ""
                           << "i6";
    QTest::newRow("multi, shift") << Multi << true << false << "S"
                                  << "i3 i4 i6";
    QTest::newRow("multi, shift and control") << Multi << true << true << "S"
                                              << "i3 i4 i6";
    QTest::newRow("extended") << Extended << false << false << "S"
                              << "i4";
    QTest::newRow("extended, shift") << Extended << true << false << "S"
                                     << "i2 i3 i4 i6";
    QTest::newRow("extended, control") << Extended << false << true << ""
                                       << "i6";
    QTest::newRow("extended, shift and control") << Extended << true << true << ""
                                                 << "i6";
}

void TestListBoxSkinKeys::handleItemChange()
{
    QFETCH(Mode, mode);
    QFETCH(bool, shift);
    QFETCH(bool, control);
    QFETCH(QString, expected);
    QFETCH(QString, selection);
    Box box;
    fill(box, 8);
    box.setSelectionMode(mode);
    selectItems(box, QStringLiteral("i6"));
    makeCurrent(box, 4);
    SignalLog log(&box);
    box.handleItemChange(box.item(2), shift, control);
    QCOMPARE(log.take(), signalsOf(expected));
    QCOMPARE(box.selection(), selection);
}

void TestListBoxSkinKeys::selectionModes()
{
    QCOMPARE(int(ListBoxSkin::Single), 0);
    QCOMPARE(int(ListBoxSkin::Multi), 1);
    QCOMPARE(int(ListBoxSkin::Extended), 2);
    QCOMPARE(int(ListBoxSkin::NoSelection), 3);
    Box box;
    QCOMPARE(box.selectionMode(), Single);
    QVERIFY(!box.isMultiSelection());
    QCOMPARE(box.currentItem(), -1);
    QCOMPARE(box.currentText(), QString());
    fill(box, 3);
    box.showSettled();
    QTimer* const timer = box.timer("listbox update timer");
    box.setSelectionMode(Single);
    QVERIFY(!timer->isActive());
    for (const Mode mode : {Extended, NoSelection, Multi, Single}) {
        box.setSelectionMode(mode);
        QVERIFY(timer->isActive());
        box.settle();
        QCOMPARE(box.selectionMode(), mode);
        QCOMPARE(box.isMultiSelection(), mode == Multi || mode == Extended);
    }
    box.setMultiSelection(true);
    QCOMPARE(box.selectionMode(), Multi);
    box.setMultiSelection(false);
    QCOMPARE(box.selectionMode(), Single);
    QVERIFY(!box.isSelected(-1));
    QVERIFY(!box.isSelected(3));
    QVERIFY(!box.isSelected(nullptr));
}

void TestListBoxSkinKeys::ensureCurrentVisible_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<int>("current");
    QTest::addColumn<QPoint>("expected");
    QTest::newRow("below") << QSize(100, 50) << 1 << QPoint(0, 0) << 10 << QPoint(0, 164 - 50);
    QTest::newRow("above") << QSize(100, 50) << 1 << QPoint(0, 100) << 2 << QPoint(0, 30);
    QTest::newRow("in sight") << QSize(100, 50) << 1 << QPoint(0, 20) << 2 << QPoint(0, 20);
    QTest::newRow("none") << QSize(100, 50) << 1 << QPoint(0, 20) << -1 << QPoint(0, 20);
    // 5 rows.
    QTest::newRow("right") << QSize(100, 50) << 4 << QPoint(0, 0) << 17 << QPoint(60, 0);
    QTest::newRow("left") << QSize(100, 50) << 4 << QPoint(60, 20) << 2 << QPoint(0, 20);
    QTest::newRow("narrow") << QSize(30, 50) << 4 << QPoint(0, 0) << 7 << QPoint(40, 0);
}

void TestListBoxSkinKeys::ensureCurrentVisible()
{
    QFETCH(QSize, size);
    QFETCH(int, columns);
    QFETCH(QPoint, position);
    QFETCH(int, current);
    QFETCH(QPoint, expected);
    Box box(size);
    fill(box, 20);
    box.setColumnMode(columns);
    box.doLayout();
    box.setContentsPos(position.x(), position.y());
    box.setCurrentItem(current);
    box.ensureCurrentVisible();
    QCOMPARE(QPoint(box.contentsX(), box.contentsY()), expected);
}

void TestListBoxSkinKeys::orderOfSignalsAndSlots()
{
    QStringList signalNames;
    QStringList slotNames;
    const QMetaObject& meta = ListBoxSkin::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        QStringList& names = method.methodType() == QMetaMethod::Signal ? signalNames : slotNames;
        names << QString::fromLatin1(method.methodSignature());
    }
    QCOMPARE(signalNames, QStringList({"highlighted(int)",
                                       "selected(int)",
                                       "highlighted(QString)",
                                       "selected(QString)",
                                       "highlighted(ListBoxSkinItem*)",
                                       "selected(ListBoxSkinItem*)",
                                       "selectionChanged()",
                                       "selectionChanged(ListBoxSkinItem*)",
                                       "currentChanged(ListBoxSkinItem*)",
                                       "clicked(ListBoxSkinItem*)",
                                       "clicked(ListBoxSkinItem*,QPoint)",
                                       "pressed(ListBoxSkinItem*)",
                                       "pressed(ListBoxSkinItem*,QPoint)",
                                       "doubleClicked(ListBoxSkinItem*)",
                                       "returnPressed(ListBoxSkinItem*)",
                                       "rightButtonClicked(ListBoxSkinItem*,QPoint)",
                                       "rightButtonPressed(ListBoxSkinItem*,QPoint)",
                                       "mouseButtonPressed(int,ListBoxSkinItem*,QPoint)",
                                       "mouseButtonClicked(int,ListBoxSkinItem*,QPoint)",
                                       "onItem(ListBoxSkinItem*)",
                                       "onViewport()"}));
    QCOMPARE(slotNames,
             QStringList({"ensureCurrentVisible()", "clearSelection()", "selectAll(bool)", "invertSelection()",
                          "clearInputString()", "refreshSlot()", "doAutoScroll()", "adjustItems()"}));
}

QTEST_MAIN(TestListBoxSkinKeys)
#include "tst_listboxskin_keys.moc"
