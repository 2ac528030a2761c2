#ifndef SKINWIDGETS_TESTS_LISTBOX_LISTBOXFIXTURE_H
#define SKINWIDGETS_TESTS_LISTBOX_LISTBOXFIXTURE_H

#include "listbox/listbox_skin.h"
#include "scroll/scrollbarskin.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QStringList>
#include <QTest>
#include <QTimer>

#include <functional>
#include <utility>

// What the tests of the list box share: items of round sizes, a log of all signals in their order, and events.
namespace listboxtest
{

// An item of a size that does not depend on any font. It tells how often it was measured and painted.
class Block : public ListBoxSkinItem
{
public:
    explicit Block(int w = 40, int h = 15, const QString& text = {}) : m_width(w), m_height(h)
    {
        ListBoxSkinItem::setText(text);
    }

    int width(const ListBoxSkin*) const override
    {
        ++measured;
        return m_width;
    }
    int height(const ListBoxSkin*) const override { return m_height; }
    void paint(QPainter* painter) override
    {
        ++painted;
        pen = painter->pen().color();
        if (onPaint)
            onPaint(painter);
    }
    void resize(int w, int h)
    {
        m_width = w;
        m_height = h;
    }
    using ListBoxSkinItem::dirty;
    bool isDirty() const { return dirty; }

    mutable int measured = 0;
    int painted = 0;
    QColor pen;
    std::function<void(QPainter*)> onPaint;

private:
    int m_width;
    int m_height;
};

inline QString nameOf(const ListBoxSkinItem* item)
{
    return item ? item->text() : QStringLiteral("null");
}

// Every signal of a list box, one line each.
class SignalLog : public QObject
{
public:
    explicit SignalLog(ListBoxSkin* box)
    {
        using B = ListBoxSkin;
        using Item = ListBoxSkinItem*;
        const auto pointText = [](const QPoint& p) { return QStringLiteral("%1,%2").arg(p.x()).arg(p.y()); };
        connect(box, qOverload<int>(&B::highlighted), this, [this](int i) { add("highlighted", i); });
        connect(box, qOverload<int>(&B::selected), this, [this](int i) { add("selected", i); });
        connect(box, qOverload<const QString&>(&B::highlighted), this,
                [this](const QString& t) { add("highlighted", '"' + t + '"'); });
        connect(box, qOverload<const QString&>(&B::selected), this,
                [this](const QString& t) { add("selected", '"' + t + '"'); });
        connect(box, qOverload<Item>(&B::highlighted), this, [this](Item i) { add("highlighted", nameOf(i)); });
        connect(box, qOverload<Item>(&B::selected), this, [this](Item i) { add("selected", nameOf(i)); });
        connect(box, qOverload<>(&B::selectionChanged), this, [this] { add("selectionChanged", QString()); });
        connect(box, qOverload<Item>(&B::selectionChanged), this,
                [this](Item i) { add("selectionChanged", nameOf(i)); });
        connect(box, &B::currentChanged, this, [this](Item i) { add("currentChanged", nameOf(i)); });
        connect(box, qOverload<Item>(&B::clicked), this, [this](Item i) { add("clicked", nameOf(i)); });
        connect(box, qOverload<Item, const QPoint&>(&B::clicked), this,
                [=](Item i, const QPoint& p) { add("clicked", nameOf(i) + ' ' + pointText(p)); });
        connect(box, qOverload<Item>(&B::pressed), this, [this](Item i) { add("pressed", nameOf(i)); });
        connect(box, qOverload<Item, const QPoint&>(&B::pressed), this,
                [=](Item i, const QPoint& p) { add("pressed", nameOf(i) + ' ' + pointText(p)); });
        connect(box, &B::doubleClicked, this, [this](Item i) { add("doubleClicked", nameOf(i)); });
        connect(box, &B::returnPressed, this, [this](Item i) { add("returnPressed", nameOf(i)); });
        connect(box, &B::rightButtonClicked, this,
                [=](Item i, const QPoint& p) { add("rightButtonClicked", nameOf(i) + ' ' + pointText(p)); });
        connect(box, &B::rightButtonPressed, this,
                [=](Item i, const QPoint& p) { add("rightButtonPressed", nameOf(i) + ' ' + pointText(p)); });
        connect(box, &B::mouseButtonPressed, this, [=](int b, Item i, const QPoint& p) {
            add("mouseButtonPressed", QString::number(b) + ' ' + nameOf(i) + ' ' + pointText(p));
        });
        connect(box, &B::mouseButtonClicked, this, [=](int b, Item i, const QPoint& p) {
            add("mouseButtonClicked", QString::number(b) + ' ' + nameOf(i) + ' ' + pointText(p));
        });
        connect(box, &B::onItem, this, [this](Item i) { add("onItem", nameOf(i)); });
        connect(box, &B::onViewport, this, [this] { add("onViewport", QString()); });
    }

    QStringList take() { return std::exchange(m_lines, {}); }

private:
    void add(const char* signal, int i) { add(signal, QString::number(i)); }
    void add(const char* signal, const QString& arguments) { m_lines << QLatin1String(signal) + '(' + arguments + ')'; }

    QStringList m_lines;
};

// A list box whose hooks are in the open. Shown without a frame, as large as asked for, with text items of Block's size
// where blocks() made them.
class Box : public ListBoxSkin
{
public:
    explicit Box(const QSize& size = QSize(130, 75), QWidget* parent = nullptr) : ListBoxSkin(parent, "box")
    {
        setVScrollBarMode(AlwaysOff);
        resize(size.width(), size.height());
    }

    void blocks(int number, int w = 40, int h = 15)
    {
        const QPointer<Box> self(this);
        for (int i = 0; self && i < number; ++i)
            insertItem(new Block(w, h, QString::number(i)));
    }
    Block* block(int index) const { return static_cast<Block*>(item(index)); }
    QStringList texts() const
    {
        QStringList all;
        for (const ListBoxSkinItem* each = firstItem(); each; each = each->next())
            all << each->text();
        return all;
    }
    QString selection() const
    {
        QStringList all;
        for (const ListBoxSkinItem* each = firstItem(); each; each = each->next())
            if (isSelected(each))
                all << each->text();
        return all.join(' ');
    }
    QTimer* timer(const char* name) const { return findChild<QTimer*>(QLatin1String(name)); }
    // Shown, laid out and painted, with no timer of the list box left that would change something.
    void showSettled()
    {
        show();
        QVERIFY(QTest::qWaitForWindowExposed(this));
        settle();
    }
    void settle()
    {
        const auto busy = [this] {
            for (const char* name : {"listbox update timer", "listbox visible timer", "listbox resize timer"})
                if (timer(name)->isActive())
                    return true;
            return false;
        };
        QTRY_VERIFY_WITH_TIMEOUT(!busy(), 30000);
        QCoreApplication::sendPostedEvents();
    }
    void focusNow()
    {
        activateWindow();
        setFocus();
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(), 30000);
    }

    void mouse(QEvent::Type type, const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const bool down = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick;
        const bool held = type == QEvent::MouseMove ? button != Qt::NoButton : down;
        QMouseEvent event(type, at, viewport()->mapToGlobal(QPointF(at)),
                          type == QEvent::MouseMove ? Qt::NoButton : button, held ? button : Qt::NoButton, modifiers);
        QCoreApplication::sendEvent(viewport(), &event);
    }
    void press(const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        mouse(QEvent::MouseButtonPress, at, button, modifiers);
    }
    void drag(const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        mouse(QEvent::MouseMove, at, button, modifiers);
    }
    void hoverOver(const QPoint& at) { mouse(QEvent::MouseMove, at, Qt::NoButton); }
    void release(const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
                 Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        mouse(QEvent::MouseButtonRelease, at, button, modifiers);
    }
    void click(const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const QPointer<Box> self(this);
        press(at, button, modifiers);
        if (self)
            release(at, button, modifiers);
    }
    // Whether the list box kept the event.
    bool key(int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {})
    {
        QKeyEvent event(QEvent::KeyPress, code, modifiers, text);
        keyPressEvent(&event);
        return event.isAccepted();
    }
    bool type(const QString& text)
    {
        bool kept = true;
        const QPointer<Box> self(this);
        for (const QChar letter : text)
            kept = kept && self && key(0, Qt::NoModifier, letter);
        return kept;
    }

    using ListBoxSkin::keyPressEvent;
};

inline QStringList numbers(int from, int to)
{
    QStringList all;
    for (int i = from; i <= to; ++i)
        all << QString::number(i);
    return all;
}

// Current without being selected, and without an anchor.
inline void makeCurrent(ListBoxSkin& box, int index)
{
    const ListBoxSkin::SelectionMode mode = box.selectionMode();
    box.setSelectionMode(ListBoxSkin::NoSelection);
    box.setCurrentItem(index);
    box.setSelectionMode(mode);
}

// Items i0, i1 and so on, by their names.
inline void selectItems(ListBoxSkin& box, const QString& names)
{
    const ListBoxSkin::SelectionMode mode = box.selectionMode();
    box.setSelectionMode(ListBoxSkin::Multi);
    for (const QString& name : names.split(' ', Qt::SkipEmptyParts))
        box.setSelected(name.mid(1).toInt(), true);
    box.setSelectionMode(mode);
}

} // namespace listboxtest

#endif
