#include "listbox/listboxfixture.h"

#include <QtTest>

using namespace listboxtest;

Q_DECLARE_METATYPE(ListBoxSkin::SelectionMode)

namespace
{

using Mode = ListBoxSkin::SelectionMode;
constexpr Mode Single = ListBoxSkin::Single;
constexpr Mode Multi = ListBoxSkin::Multi;
constexpr Mode Extended = ListBoxSkin::Extended;
constexpr Mode NoSelection = ListBoxSkin::NoSelection;

constexpr int viewWidth = 100;
constexpr int viewHeight = 50;

// Items i0, i1 and so on, each 15 high.
void fill(Box& box, int number)
{
    for (int i = 0; i < number; ++i)
        box.insertItem(new Block(40, 15, 'i' + QString::number(i)));
}

// The middle of an item's row in viewport coordinates, while nothing is scrolled.
QPoint middleOf(int index)
{
    return {20, index * 15 + 7};
}

// Signals from their short forms. S: selectionChanged(). S3: that of item i3. M3: the four of a new current item.
// P3 and C3: a press and a click with the left button, p3 and c3: with the right one, Px and so on: on no item.
// D3: a double click.
class Short
{
public:
    explicit Short(const Box& box, const QPoint& at) : m_point(box.viewport()->mapToGlobal(at)) {}

    QStringList operator()(const QString& forms) const
    {
        QStringList lines;
        for (const QString& form : forms.split(' ', Qt::SkipEmptyParts))
            lines << expand(form);
        return lines;
    }

private:
    QStringList expand(const QString& form) const
    {
        const QString number = form.mid(1);
        const QString item = number == QLatin1String("x") ? QStringLiteral("null") : 'i' + number;
        switch (form.at(0).toLatin1()) {
        case 'S':
            return {"selectionChanged(" + (number.isEmpty() ? QString() : item) + ')'};
        case 'M':
            return {"highlighted(" + item + ')', "highlighted(\"" + item + "\")", "highlighted(" + number + ')',
                    "currentChanged(" + item + ')'};
        case 'D':
            return {"selected(" + number + ')', "selected(" + item + ')', "selected(\"" + item + "\")",
                    "doubleClicked(" + item + ')'};
        case 'P':
            return reports("pressed", "Pressed", item, 1);
        case 'p':
            return reports("pressed", "Pressed", item, 2);
        case 'C':
            return reports("clicked", "Clicked", item, 1);
        case 'c':
            return reports("clicked", "Clicked", item, 2);
        default:
            return {form};
        }
    }
    QStringList reports(const QString& first, const QString& last, const QString& item, int button) const
    {
        const QString point = QStringLiteral(" %1,%2)").arg(m_point.x()).arg(m_point.y());
        QStringList lines = {first + '(' + item + ')', first + '(' + item + point,
                             "mouseButton" + last + '(' + QString::number(button) + ' ' + item + point};
        if (button == 2)
            lines << "rightButton" + last + '(' + item + point;
        return lines;
    }

    QPoint m_point;
};

Qt::KeyboardModifiers modifiersNamed(const QString& names)
{
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, names.contains(QLatin1String("Shift")));
    modifiers.setFlag(Qt::ControlModifier, names.contains(QLatin1String("Control")));
    return modifiers;
}

} // namespace

class TestListBoxSkinMouse : public QObject
{
    Q_OBJECT

private slots:
    void clicks_data();
    void clicks();
    void releases_data();
    void releases();
    void releaseWithoutPress();
    void pressedItemLeaves();
    void otherButtons();
    void drags_data();
    void drags();
    void dragOverSeveralColumns();
    void pressMovesTheAnchor_data();
    void pressMovesTheAnchor();
    void doubleClicks_data();
    void doubleClicks();
    void doubleClickNamesTheCurrentItem();
    void doubleClickHasMovesIgnored();
    void hovering();
    void rubberBand_data();
    void rubberBand();
    void rubberBandKeepsUntilReleased();
    void rubberBandIsRepainted();
    void rubberBandAndDeletedCurrentItem();
    void rubberBandAndInsertedItem();
    void noRubberBand_data();
    void noRubberBand();
    void scrollTimer();
    void scrollsByRows();
    void scrollsWithTheMode();
    void eventsOfTheViewport();
};

void TestListBoxSkinMouse::clicks_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<int>("current");
    QTest::addColumn<QString>("selected");
    // -1 for empty space.
    QTest::addColumn<int>("at");
    QTest::addColumn<QString>("how");
    QTest::addColumn<QString>("pressExpected");
    QTest::addColumn<QString>("pressSelection");
    QTest::addColumn<QString>("releaseExpected");
    QTest::addColumn<QString>("selection");

    const auto row = [](const char* name, Mode mode, int current, const char* selected, int at, const char* how,
                        const char* pressExpected, const char* pressSelection, const char* releaseExpected,
                        const char* selection) {
        QTest::newRow(name) << mode << current << QString(selected) << at << QString(how) << QString(pressExpected)
                            << QString(pressSelection) << QString(releaseExpected) << QString(selection);
    };
    row("single", Single, -1, "", 1, "", "S1 S M1 P1", "i1", "C1", "i1");
    row("single, other item selected", Single, 0, "i0", 1, "", "S1 S M1 P1", "i1", "C1", "i1");
    row("single, current", Single, 1, "", 1, "", "S1 S P1", "i1", "C1", "i1");
    row("single, current and selected", Single, 1, "i1", 1, "", "P1", "i1", "C1", "i1");
    row("single, right button", Single, 0, "i0", 1, "Right", "S1 S M1 p1", "i1", "c1", "i1");
    row("single, control", Single, 0, "i0", 1, "Control", "S1 S M1 P1", "i1", "C1", "i1");
    row("single, shift", Single, 0, "i0", 1, "Shift", "S1 S M1 P1", "i1", "C1", "i1");
    row("single, not selectable", Single, 0, "i0", 2, "", "S M2 P2", "", "C2", "");
    row("single, empty space", Single, 0, "i0", -1, "", "Px", "i0", "Cx", "i0");
    row("single, empty space, right button", Single, 0, "i0", -1, "Right", "S px", "", "cx", "");
    row("single, empty space, nothing selected, right button", Single, 0, "", -1, "Right", "px", "", "cx", "");

    row("multi", Multi, 0, "i0", 1, "", "S M1 P1", "i0 i1", "C1", "i0 i1");
    row("multi, selected", Multi, 0, "i0 i1", 1, "", "S M1 P1", "i0", "C1", "i0");
    row("multi, current", Multi, 1, "i0", 1, "", "S P1", "i0 i1", "C1", "i0 i1");
    row("multi, right button", Multi, 0, "i0", 1, "Right", "S M1 p1", "i0 i1", "c1", "i0 i1");
    row("multi, not selectable", Multi, 0, "i0", 2, "", "M2 P2", "i0", "C2", "i0");
    row("multi, empty space, right button", Multi, 0, "i0", -1, "Right", "S px", "", "cx", "");

    row("extended", Extended, 0, "i0", 1, "", "S M1 P1", "i1", "C1", "i1");
    row("extended, right button", Extended, 0, "i0", 1, "Right", "S M1 p1", "i1", "c1", "i1");
    // The others are let go at the release.
    row("extended, selected", Extended, 0, "i0 i1", 1, "", "M1 P1", "i0 i1", "S C1", "i1");
    row("extended, selected and current", Extended, 1, "i0 i1", 1, "", "P1", "i0 i1", "S C1", "i1");
    row("extended, control", Extended, 0, "i0", 1, "Control", "S M1 P1", "i0 i1", "C1", "i0 i1");
    row("extended, control, selected", Extended, 0, "i0 i1", 1, "Control", "S M1 P1", "i0", "C1", "i0");
    row("extended, shift", Extended, 0, "i0", 1, "Shift", "S M1 P1", "i0 i1", "C1", "i0 i1");
    row("extended, shift, backwards", Extended, 1, "", 0, "Shift", "S M0 P0", "i0 i1", "C0", "i0 i1");
    row("extended, shift and control", Extended, 0, "", 1, "Shift+Control", "S M1 P1", "i0 i1", "C1", "i0 i1");
    row("extended, shift lets the others go", Extended, 1, "i0", 1, "Shift", "S P1", "i1", "C1", "i1");
    row("extended, shift, none current", Extended, -1, "", 1, "Shift", "S M1 P1", "i1", "C1", "i1");
    row("extended, not selectable", Extended, 0, "i0", 2, "", "S M2 P2", "", "C2", "");
    row("extended, not selectable, nothing selected", Extended, 0, "", 2, "", "M2 P2", "", "C2", "");
    row("extended, empty space, right button", Extended, 0, "i0", -1, "Right", "S px", "", "cx", "");

    row("no selection", NoSelection, 0, "", 1, "", "M1 P1", "", "C1", "");
    row("no selection, right button", NoSelection, 0, "", 1, "Right", "M1 p1", "", "c1", "");
    row("no selection, control", NoSelection, 0, "", 1, "Control", "M1 P1", "", "C1", "");
    row("no selection, current", NoSelection, 1, "", 1, "", "P1", "", "C1", "");
    row("no selection, empty space", NoSelection, 1, "", -1, "", "Px", "", "Cx", "");
}

// Three items, of which the last is not selectable, and some empty space.
void TestListBoxSkinMouse::clicks()
{
    QFETCH(Mode, mode);
    QFETCH(int, current);
    QFETCH(QString, selected);
    QFETCH(int, at);
    QFETCH(QString, how);
    QFETCH(QString, pressExpected);
    QFETCH(QString, pressSelection);
    QFETCH(QString, releaseExpected);
    QFETCH(QString, selection);
    Box box(QSize(viewWidth, 80));
    fill(box, 3);
    box.item(2)->setSelectable(false);
    box.setSelectionMode(mode);
    selectItems(box, selected);
    makeCurrent(box, current);
    box.showSettled();
    SignalLog log(&box);
    const QPoint point = middleOf(at < 0 ? 4 : at);
    const Short shortened(box, point);
    const Qt::MouseButton button = how == QLatin1String("Right") ? Qt::RightButton : Qt::LeftButton;
    box.press(point, button, modifiersNamed(how));
    QCOMPARE(log.take(), shortened(pressExpected));
    QCOMPARE(box.selection(), pressSelection);
    QCOMPARE(box.currentItem(), at < 0 ? current : at);
    box.release(point, button, modifiersNamed(how));
    QCOMPARE(log.take(), shortened(releaseExpected));
    QCOMPARE(box.selection(), selection);
    QCOMPARE(box.currentItem(), at < 0 ? current : at);
}

void TestListBoxSkinMouse::releases_data()
{
    QTest::addColumn<int>("pressedAt");
    QTest::addColumn<int>("releasedAt");
    QTest::addColumn<QString>("expected");
    QTest::newRow("same item") << 1 << 1 << "C1";
    QTest::newRow("other item") << 1 << 0 << "";
    QTest::newRow("from an item to empty space") << 1 << 4 << "";
    QTest::newRow("from empty space to an item") << 4 << 1 << "";
    QTest::newRow("empty space") << 3 << 4 << "Cx";
    QTest::newRow("outside") << 1 << -2 << "";
    QTest::newRow("from empty space to outside") << 4 << -2 << "Cx";
}

// With no moves between.
void TestListBoxSkinMouse::releases()
{
    QFETCH(int, pressedAt);
    QFETCH(int, releasedAt);
    QFETCH(QString, expected);
    Box box(QSize(viewWidth, 80));
    fill(box, 3);
    box.setSelectionMode(NoSelection);
    box.showSettled();
    box.press(middleOf(pressedAt));
    SignalLog log(&box);
    const QPoint point = middleOf(releasedAt);
    box.release(point);
    QCOMPARE(log.take(), Short(box, point)(expected));
    // Once only.
    box.release(middleOf(1));
    QCOMPARE(log.take(), QStringList());
}

void TestListBoxSkinMouse::releaseWithoutPress()
{
    Box box(QSize(viewWidth, 80));
    fill(box, 3);
    box.showSettled();
    SignalLog log(&box);
    box.release(middleOf(1));
    QCOMPARE(log.take(), QStringList());
    // Intended: nothing is pressed and nothing is there.
    box.release(middleOf(4), Qt::RightButton);
    QCOMPARE(log.take(), Short(box, middleOf(4))("cx"));
}

void TestListBoxSkinMouse::pressedItemLeaves()
{
    Box box(QSize(viewWidth, 80));
    fill(box, 3);
    box.setSelectionMode(NoSelection);
    box.showSettled();
    box.press(middleOf(2));
    box.removeItem(2);
    SignalLog log(&box);
    box.release(middleOf(2));
    QCOMPARE(log.take(), QStringList());
    box.press(middleOf(0));
    log.take();
    box.removeItem(0);
    box.release(middleOf(0));
    QVERIFY(!log.take().join(' ').contains(QLatin1String("licked")));
}

void TestListBoxSkinMouse::otherButtons()
{
    Box box(QSize(viewWidth, 80));
    fill(box, 3);
    box.setSelectionMode(NoSelection);
    box.setCurrentItem(1);
    box.showSettled();
    SignalLog log(&box);
    const QPoint at = box.viewport()->mapToGlobal(middleOf(1));
    const QString point = QStringLiteral(" %1,%2)").arg(at.x()).arg(at.y());
    box.click(middleOf(1), Qt::MiddleButton);
    QCOMPARE(log.take(), QStringList({"pressed(i1)", "pressed(i1" + point, "mouseButtonPressed(4 i1" + point,
                                      "clicked(i1)", "clicked(i1" + point, "mouseButtonClicked(4 i1" + point}));
}

void TestListBoxSkinMouse::drags_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("how");
    // The item that is pressed, then those that the stylus is dragged to.
    QTest::addColumn<QList<int>>("way");
    // What each of those brings.
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QString>("selection");
    using Way = QList<int>;
    using Lines = QStringList;
    QTest::newRow("single") << Single << ""
                            << "" << Way{0, 1, 3} << Lines{"S1 S M1", "S3 S M3"} << "i3";
    QTest::newRow("single, back") << Single << ""
                                  << "" << Way{0, 1, 0} << Lines{"S1 S M1", "S0 S M0"} << "i0";
    QTest::newRow("single, within the item") << Single << ""
                                             << "" << Way{0, 0} << Lines{""} << "i0";
    QTest::newRow("single, one cannot be selected") << Single << ""
                                                    << "" << Way{1, 2} << Lines{"S M2"} << "";
    QTest::newRow("multi") << Multi << ""
                           << "" << Way{0, 1, 3} << Lines{"S M1", "S M3"} << "i0 i1 i3";
    QTest::newRow("multi, selected ones met") << Multi << "i1"
                                              << "" << Way{0, 1} << Lines{"M1"} << "i0 i1";
    QTest::newRow("multi, deselecting") << Multi << "i0 i1"
                                        << "" << Way{0, 1, 3} << Lines{"S M1", "M3"} << "";
    QTest::newRow("multi, back") << Multi << ""
                                 << "" << Way{0, 1, 0} << Lines{"S M1", "M0"} << "i0 i1";
    // Items that the stylus has jumped over count as met.
    QTest::newRow("multi, quick") << Multi << ""
                                  << "" << Way{0, 3} << Lines{"S M3"} << "i0 i1 i3";
    QTest::newRow("extended") << Extended << "i3"
                              << "" << Way{0, 1} << Lines{"S M1"} << "i0 i1";
    QTest::newRow("extended, back") << Extended << ""
                                    << "" << Way{0, 3, 1} << Lines{"S M3", "S M1"} << "i0 i1";
    QTest::newRow("extended, around") << Extended << ""
                                      << "" << Way{1, 3, 0} << Lines{"S M3", "S M0"} << "i0 i1";
    QTest::newRow("extended, control") << Extended << "i3"
                                       << "Control" << Way{0, 1} << Lines{"S M1"} << "i0 i1 i3";
    QTest::newRow("extended, control, deselecting") << Extended << "i0 i1 i3"
                                                    << "Control" << Way{0, 1} << Lines{"S M1"} << "i3";
    QTest::newRow("no selection") << NoSelection << ""
                                  << "" << Way{0, 1, 3} << Lines{"M1", "M3"} << "";
}

// Four items, of which the third is not selectable.
void TestListBoxSkinMouse::drags()
{
    QFETCH(Mode, mode);
    QFETCH(QString, selected);
    QFETCH(QString, how);
    QFETCH(QList<int>, way);
    QFETCH(QStringList, expected);
    QFETCH(QString, selection);
    Box box(QSize(viewWidth, 80));
    fill(box, 4);
    box.item(2)->setSelectable(false);
    box.setSelectionMode(mode);
    selectItems(box, selected);
    box.showSettled();
    const Qt::KeyboardModifiers modifiers = modifiersNamed(how);
    box.press(middleOf(way.takeFirst()), Qt::LeftButton, modifiers);
    SignalLog log(&box);
    for (const int index : way) {
        const QPoint point = middleOf(index);
        box.drag(point, Qt::LeftButton, modifiers);
        QCOMPARE(log.take(), Short(box, point)(expected.takeFirst()));
        QCOMPARE(box.currentItem(), index);
        // The same cell again.
        box.drag(point + QPoint(2, 2), Qt::LeftButton, modifiers);
        QCOMPARE(log.take(), QStringList());
    }
    box.release(middleOf(way.last()), Qt::LeftButton, modifiers);
    QCOMPARE(box.selection(), selection);
}

void TestListBoxSkinMouse::dragOverSeveralColumns()
{
    Box box(QSize(130, 80));
    fill(box, 12);
    box.setColumnMode(3);
    box.setSelectionMode(Extended);
    box.showSettled();
    QCOMPARE(box.numRows(), 4);
    box.press(QPoint(10, 20));
    box.drag(QPoint(90, 40));
    QCOMPARE(box.currentItem(), 10);
    QCOMPARE(box.selection(), QStringLiteral("i1 i2 i5 i6 i9 i10"));
    box.drag(QPoint(50, 40));
    QCOMPARE(box.selection(), QStringLiteral("i1 i2 i5 i6"));
    box.release(QPoint(50, 40));
}

void TestListBoxSkinMouse::pressMovesTheAnchor_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<QString>("selection");
    // The anchor was item 0; Shift and Down follow the press on item 3.
    QTest::newRow("plain") << ""
                           << "i3 i4";
    QTest::newRow("control") << "Control"
                             << "i3 i4";
    QTest::newRow("shift") << "Shift"
                           << "i0 i1 i2 i3 i4";
}

void TestListBoxSkinMouse::pressMovesTheAnchor()
{
    QFETCH(QString, how);
    QFETCH(QString, selection);
    Box box(QSize(viewWidth, 80));
    fill(box, 5);
    box.setSelectionMode(Extended);
    box.setCurrentItem(1);
    box.showSettled();
    box.key(Qt::Key_Home);
    box.click(middleOf(3), Qt::LeftButton, modifiersNamed(how));
    box.key(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(box.selection(), selection);
}

void TestListBoxSkinMouse::doubleClicks_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<int>("at");
    QTest::addColumn<QString>("expected");
    QTest::newRow("single") << Single << 1 << "D1";
    QTest::newRow("multi") << Multi << 1 << "D1";
    QTest::newRow("extended") << Extended << 1 << "D1";
    QTest::newRow("no selection") << NoSelection << 1 << "";
    QTest::newRow("empty space") << Single << 4 << "";
}

// All events as they come.
void TestListBoxSkinMouse::doubleClicks()
{
    QFETCH(Mode, mode);
    QFETCH(int, at);
    QFETCH(QString, expected);
    Box box(QSize(viewWidth, 80));
    fill(box, 3);
    box.setSelectionMode(mode);
    box.showSettled();
    box.click(middleOf(at));
    SignalLog log(&box);
    box.mouse(QEvent::MouseButtonDblClick, middleOf(at));
    const Short shortened(box, middleOf(at));
    QCOMPARE(log.take(), shortened(expected));
    box.release(middleOf(at));
    // Intended: on empty space the release is a click again.
    QCOMPARE(log.take(), shortened(at == 4 ? "Cx" : ""));
}

void TestListBoxSkinMouse::doubleClickNamesTheCurrentItem()
{
    Box box(QSize(viewWidth, 80));
    fill(box, 2);
    box.insertItem(new Block(40, 15, QString()));
    box.showSettled();
    SignalLog log(&box);
    // None is current.
    box.mouse(QEvent::MouseButtonDblClick, middleOf(1));
    QCOMPARE(log.take(), QStringList());
    box.setCurrentItem(0);
    log.take();
    box.mouse(QEvent::MouseButtonDblClick, middleOf(1));
    QCOMPARE(log.take(), Short(box, QPoint())("D0"));
    QCOMPARE(box.currentItem(), 0);
    box.mouse(QEvent::MouseButtonDblClick, middleOf(4));
    QCOMPARE(log.take(), QStringList());
    box.setCurrentItem(2);
    log.take();
    box.mouse(QEvent::MouseButtonDblClick, middleOf(1));
    QCOMPARE(log.take(), QStringList({"selected(2)", "selected()", "doubleClicked()"}));
}

void TestListBoxSkinMouse::doubleClickHasMovesIgnored()
{
    Box box(QSize(viewWidth, 80));
    fill(box, 3);
    box.showSettled();
    box.click(middleOf(1));
    box.mouse(QEvent::MouseButtonDblClick, middleOf(1));
    SignalLog log(&box);
    box.drag(middleOf(2));
    QCOMPARE(log.take(), QStringList());
    QVERIFY(!box.timer("listbox scroll timer"));
    box.release(middleOf(2));
    // Until the next press.
    box.press(middleOf(1));
    box.drag(middleOf(2));
    QCOMPARE(box.currentItem(), 2);
    box.release(middleOf(2));
}

void TestListBoxSkinMouse::hovering()
{
    Box box(QSize(viewWidth, 80));
    fill(box, 3);
    box.showSettled();
    QVERIFY(box.hasMouseTracking());
    QVERIFY(box.viewport()->hasMouseTracking());
    SignalLog log(&box);
    box.hoverOver(middleOf(1));
    QCOMPARE(log.take(), QStringList(QStringLiteral("onItem(i1)")));
    box.hoverOver(middleOf(1) + QPoint(3, 3));
    QCOMPARE(log.take(), QStringList());
    box.hoverOver(middleOf(2));
    QCOMPARE(log.take(), QStringList(QStringLiteral("onItem(i2)")));
    box.hoverOver(middleOf(4));
    QCOMPARE(log.take(), QStringList(QStringLiteral("onViewport()")));
    box.hoverOver(middleOf(4) + QPoint(1, 1));
    QCOMPARE(log.take(), QStringList());
    box.hoverOver(middleOf(2));
    QCOMPARE(log.take(), QStringList(QStringLiteral("onItem(i2)")));
    box.setSelectionMode(NoSelection);
    box.setCurrentItem(2);
    box.press(middleOf(2));
    log.take();
    // With a button held neither is told.
    box.drag(middleOf(4));
    box.drag(middleOf(1));
    for (const QString& line : log.take())
        QVERIFY2(!line.startsWith(QLatin1String("on")), qPrintable(line));
    box.release(middleOf(1));
    // Back on the same item after it has been outside.
    box.hoverOver(middleOf(2));
    log.take();
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&box, &leave);
    QCOMPARE(log.take(), QStringList());
    box.hoverOver(middleOf(2));
    QCOMPARE(log.take(), QStringList(QStringLiteral("onItem(i2)")));
    // And after the item has.
    ListBoxSkinItem* const item = box.item(2);
    box.takeItem(item);
    box.insertItem(item);
    log.take();
    box.hoverOver(middleOf(2));
    QCOMPARE(log.take(), QStringList(QStringLiteral("onItem(i2)")));
}

void TestListBoxSkinMouse::rubberBand_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<QString>("how");
    // The selection at the press and after each of the moves.
    QTest::addColumn<QStringList>("selections");
    QTest::newRow("multi") << Multi << "" << QStringList({"", "i2", "i1 i2", "i2", ""});
    QTest::newRow("extended") << Extended << "" << QStringList({"", "i2", "i1 i2", "i2", ""});
    QTest::newRow("control keeps the rest")
        << Extended << "Control" << QStringList({"i0", "i0 i2", "i0 i1 i2", "i0 i2", "i0"});
}

// Four items, of which the last is not selectable, and the first is selected.
void TestListBoxSkinMouse::rubberBand()
{
    QFETCH(Mode, mode);
    QFETCH(QString, how);
    QFETCH(QStringList, selections);
    Box box(QSize(viewWidth, 100));
    fill(box, 4);
    box.item(3)->setSelectable(false);
    box.setSelectionMode(mode);
    selectItems(box, QStringLiteral("i0"));
    makeCurrent(box, 1);
    box.showSettled();
    const Qt::KeyboardModifiers modifiers = modifiersNamed(how);
    SignalLog log(&box);
    const QPoint start(30, 80);
    box.press(start, Qt::LeftButton, modifiers);
    const Short shortened(box, start);
    QCOMPARE(log.take(), shortened(modifiers ? "Px" : "S Px"));
    QCOMPARE(box.selection(), selections.takeFirst());
    QVERIFY(!box.isRubberSelecting());
    QCOMPARE(box.currentItem(), 1);
    for (const int y : {40, 20, 35, 70}) {
        box.drag(QPoint(60, y), Qt::LeftButton, modifiers);
        QCOMPARE(log.take(), shortened("S"));
        QCOMPARE(box.selection(), selections.takeFirst());
        QVERIFY(box.isRubberSelecting());
        QCOMPARE(box.currentItem(), -1);
    }
    box.release(QPoint(60, 70), Qt::LeftButton, modifiers);
    QVERIFY(!box.isRubberSelecting());
    QCOMPARE(box.currentItem(), 1);
    QCOMPARE(log.take(), Short(box, QPoint(60, 70))("Cx"));
}

void TestListBoxSkinMouse::rubberBandKeepsUntilReleased()
{
    Box box(QSize(viewWidth, 100));
    fill(box, 4);
    box.setSelectionMode(Multi);
    box.showSettled();
    const QImage before = box.viewport()->grab().toImage();
    box.press(QPoint(30, 80));
    box.drag(QPoint(60, 20));
    QVERIFY(box.viewport()->grab().toImage() != before);
    SignalLog log(&box);
    box.release(QPoint(60, 20));
    // From empty space to an item is no click.
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(box.selection(), QStringLiteral("i1 i2 i3"));
    box.clearSelection();
    box.settle();
    QCOMPARE(box.viewport()->grab().toImage(), before);
}

// Where it is, where it was, and the item that is not current meanwhile.
void TestListBoxSkinMouse::rubberBandIsRepainted()
{
    class Watched : public Box
    {
    public:
        using Box::Box;
        QRegion painted;

    protected:
        void viewportPaintEvent(QPaintEvent* event) override
        {
            painted += event->region();
            Box::viewportPaintEvent(event);
        }
    };
    Watched box(QSize(viewWidth, 100));
    fill(box, 4);
    box.setSelectionMode(Multi);
    makeCurrent(box, 1);
    box.showSettled();
    const auto paintsNext = [&box](const QRect& band) {
        box.painted = QRegion();
        return QTest::qWaitFor([&box, &band] { return QRegion(band).subtracted(box.painted).isEmpty(); }, 30000);
    };
    const auto currentIsDirty = [&box] {
        const bool dirty = box.block(1)->isDirty();
        box.block(1)->dirty = false;
        return dirty;
    };
    currentIsDirty();
    box.press(QPoint(30, 80));
    box.drag(QPoint(60, 70));
    QVERIFY(currentIsDirty());
    const QRect band(QPoint(30, 70), QPoint(60, 80));
    QVERIFY(paintsNext(band));
    box.drag(QPoint(40, 75));
    QVERIFY(!currentIsDirty());
    QVERIFY(paintsNext(band));
    box.release(QPoint(40, 75));
    QVERIFY(currentIsDirty());
    QVERIFY(paintsNext(QRect(QPoint(30, 75), QPoint(40, 80))));
}

void TestListBoxSkinMouse::rubberBandAndDeletedCurrentItem()
{
    Box box(QSize(viewWidth, 100));
    fill(box, 4);
    box.setSelectionMode(Multi);
    makeCurrent(box, 1);
    box.showSettled();
    box.press(QPoint(30, 80));
    box.drag(QPoint(60, 50));
    box.removeItem(1);
    box.release(QPoint(60, 50));
    QCOMPARE(box.currentText(), QStringLiteral("i2"));
    box.press(QPoint(30, 80));
    box.drag(QPoint(60, 50));
    box.clear();
    box.release(QPoint(60, 50));
    QCOMPARE(box.currentItem(), -1);
    QVERIFY(!box.isRubberSelecting());
}

// None is current for as long as the band is there, though the list box has the focus.
void TestListBoxSkinMouse::rubberBandAndInsertedItem()
{
    Box box(QSize(viewWidth, 100));
    fill(box, 4);
    box.setSelectionMode(Multi);
    makeCurrent(box, 1);
    box.showSettled();
    box.focusNow();
    box.press(QPoint(30, 80));
    box.drag(QPoint(60, 70));
    SignalLog log(&box);
    box.insertItem(new Block(40, 15, QStringLiteral("new")));
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(box.currentItem(), -1);
    box.release(QPoint(60, 70));
    QCOMPARE(box.currentItem(), 1);
}

void TestListBoxSkinMouse::noRubberBand_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<QPoint>("at");
    QTest::newRow("single") << Single << Qt::LeftButton << QPoint(30, 80);
    QTest::newRow("no selection") << NoSelection << Qt::LeftButton << QPoint(30, 80);
    QTest::newRow("right button") << Multi << Qt::RightButton << QPoint(30, 80);
    QTest::newRow("on an item") << Multi << Qt::LeftButton << QPoint(30, 50);
}

void TestListBoxSkinMouse::noRubberBand()
{
    QFETCH(Mode, mode);
    QFETCH(Qt::MouseButton, button);
    QFETCH(QPoint, at);
    Box box(QSize(viewWidth, 100));
    fill(box, 4);
    box.setSelectionMode(mode);
    box.showSettled();
    box.press(at, button);
    box.drag(QPoint(60, 20), button);
    QVERIFY(!box.isRubberSelecting());
    QCOMPARE(box.currentItem(), 1);
    box.release(QPoint(60, 20), button);
}

void TestListBoxSkinMouse::scrollTimer()
{
    Box box(QSize(viewWidth, viewHeight));
    fill(box, 20);
    box.showSettled();
    box.hoverOver(middleOf(1));
    box.press(middleOf(1));
    QVERIFY(!box.timer("listbox scroll timer"));
    // Any move with a button held starts it.
    box.drag(middleOf(1));
    const QPointer<QTimer> timer(box.timer("listbox scroll timer"));
    QVERIFY(timer);
    QVERIFY(timer->isActive());
    QVERIFY(!timer->isSingleShot());
    QCOMPARE(timer->interval(), 100);
    box.drag(middleOf(2));
    QCOMPARE(box.timer("listbox scroll timer"), timer.data());
    box.release(middleOf(2));
    QVERIFY(!timer);
}

void TestListBoxSkinMouse::scrollsByRows()
{
    Box box(QSize(viewWidth, viewHeight));
    fill(box, 20);
    box.showSettled();
    box.press(middleOf(1));
    box.drag(QPoint(20, viewHeight + 30));
    // The last item in sight, half of it.
    QCOMPARE(box.currentItem(), 3);
    QCOMPARE(box.contentsY(), 0);
    // The half row first.
    for (int step = 1; step < 5; ++step) {
        box.doAutoScroll();
        QCOMPARE(box.contentsY(), step * 15 - 5);
        QCOMPARE(box.currentItem(), step + 2);
    }
    box.drag(QPoint(20, -30));
    for (int step = 3; step > 0; --step) {
        box.doAutoScroll();
        QCOMPARE(box.contentsY(), step * 15);
        QCOMPARE(box.currentItem(), step);
    }
    // Inside the viewport nothing scrolls.
    box.drag(QPoint(20, 30));
    const int y = box.contentsY();
    box.doAutoScroll();
    QCOMPARE(box.contentsY(), y);
    // By itself to the end, and no farther.
    box.drag(QPoint(20, viewHeight));
    QTRY_COMPARE_WITH_TIMEOUT(box.currentItem(), 19, 60000);
    QCOMPARE(box.contentsY(), 20 * 15 - viewHeight);
    box.release(QPoint(20, viewHeight));
    QCOMPARE(box.selection(), QStringLiteral("i19"));
}

void TestListBoxSkinMouse::scrollsWithTheMode()
{
    const QList<QPair<Mode, QString>> modes = {
        {Single, "i6"}, {Multi, "i1 i2 i3 i4 i5 i6"}, {Extended, "i1 i2 i3 i4 i5 i6"}, {NoSelection, ""}};
    for (const auto& [mode, selection] : modes) {
        Box box(QSize(viewWidth, viewHeight));
        fill(box, 20);
        box.setSelectionMode(mode);
        box.showSettled();
        box.press(middleOf(1));
        box.drag(QPoint(20, viewHeight + 30));
        while (box.currentItem() < 6)
            box.doAutoScroll();
        box.release(QPoint(20, viewHeight + 30));
        QCOMPARE(box.selection(), selection);
    }
}

void TestListBoxSkinMouse::eventsOfTheViewport()
{
    Box box(QSize(viewWidth, viewHeight));
    fill(box, 20);
    box.showSettled();
    QCOMPARE(box.viewport()->focusProxy(), &box);
    QCOMPARE(box.viewport()->focusPolicy(), Qt::StrongFocus);
    box.setContentsPos(0, 100);
    SignalLog log(&box);
    // Row 7 begins at 105.
    box.click(QPoint(50, 6));
    QCOMPARE(log.take(), Short(box, QPoint(50, 6))("S7 S M7 P7 C7"));
    // Through the application, as the keys come.
    QTest::keyClick(&box, Qt::Key_Down);
    QCOMPARE(log.take(), Short(box, QPoint())("S8 S M8"));
}

QTEST_MAIN(TestListBoxSkinMouse)
#include "tst_listboxskin_mouse.moc"
