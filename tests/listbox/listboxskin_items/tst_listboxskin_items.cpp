#include "listbox/listboxfixture.h"
#include "toolkit/toolkit.h"

#include <QFontDatabase>
#include <QImage>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <type_traits>

using namespace listboxtest;

namespace
{

// Shows what a subclass can read.
class Bare : public ListBoxSkinItem
{
public:
    explicit Bare(ListBoxSkin* box = nullptr) : ListBoxSkinItem(box) {}
    Bare(ListBoxSkin* box, ListBoxSkinItem* after) : ListBoxSkinItem(box, after) {}
    void paint(QPainter*) override {}

    using ListBoxSkinItem::x;
    using ListBoxSkinItem::y;
    QString storedText() const { return txt; }
    bool isDirty() const { return dirty; }
    bool isSelectedFlag() const { return s; }
    bool isCustom() const { return custom_highlight; }
};

// Tells how it was linked, and what it saw, when it was deleted.
class Mortal : public Block
{
public:
    Mortal(ListBoxSkin* box, QStringList* log, const QString& name) : Block(40, 15, name), m_log(log)
    {
        box->insertItem(this);
    }
    ~Mortal() override
    {
        const ListBoxSkin* box = listBox();
        *m_log << QStringLiteral("%1 %2%3%4")
                      .arg(text(), next() ? "next" : "-", prev() ? "prev" : "-",
                           box && box->signalsBlocked() ? " blocked" : "");
    }

private:
    QStringList* m_log;
};

QFont fontOfSize(int pixels, const QString& family = QFont().family())
{
    QFont font(family);
    font.setPixelSize(pixels);
    return font;
}

// A family with some space between lines, where this machine has one: other fonts do not tell line spacing from height.
QString spacedFamily()
{
    const auto isSpaced = [](const QString& family) { return QFontMetrics(fontOfSize(19, family)).leading() > 1; };
    const QStringList families = QFontDatabase::families();
    const auto spaced = std::find_if(families.begin(), families.end(), isSpaced);
    return spaced == families.end() ? QFont().family() : *spaced;
}

QPixmap picture(int w, int h, const QColor& colour = Qt::green)
{
    QPixmap pixmap(w, h);
    pixmap.fill(colour);
    return pixmap;
}

QImage painted(ListBoxSkinItem* item, const QFont& font)
{
    QImage image(160, 80, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(Qt::yellow);
    item->paint(&painter);
    return image;
}

// A text, a picture, or both, where they have to be.
QImage drawn(const QPixmap& pixmap, const QString& text, const QPoint& baseline, const QFont& font)
{
    QImage image(160, 80, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(Qt::yellow);
    if (!pixmap.isNull())
        painter.drawPixmap(3, 0, pixmap);
    painter.drawText(baseline, text);
    return image;
}

QTimer* updateTimer(const ListBoxSkin& box)
{
    return box.findChild<QTimer*>(QStringLiteral("listbox update timer"));
}

} // namespace

class TestListBoxSkinItems : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { setGlobalStrut(QSize(0, 0)); }

    void freeItem();
    void appendedByItsConstructor();
    void insertedAfterByItsConstructor();
    void insertedBeforeItHasAText();
    void textConstructors();
    void pixmapConstructors();
    void copiesOfThePicture();
    void sizesOfTheBaseClass();
    void textSizes_data();
    void textSizes();
    void pixmapSizes_data();
    void pixmapSizes();
    void textIsPainted();
    void pixmapIsPainted_data();
    void pixmapIsPainted();
    void setTextOnlyStores();
    void ownTextCountsForSizeAndPaint();
    void current();
    void selectable();
    void customHighlighting();
    void selectedFlag();
    void deletedItemLeaves();
    void clearedItemsAreFreeOfLinks_data();
    void clearedItemsAreFreeOfLinks();
    void takenItemKeepsItsPlace();
    void takenItemDeletedLater();
};

void TestListBoxSkinItems::freeItem()
{
    const Bare item;
    QCOMPARE(item.text(), QString());
    QCOMPARE(item.storedText(), QString());
    QVERIFY(!item.pixmap());
    QVERIFY(!item.isSelectedFlag());
    QVERIFY(!item.selected());
    QVERIFY(!item.isCustom());
    QVERIFY(item.isDirty());
    QCOMPARE(item.x, 42);
    QCOMPARE(item.y, 42);
    QVERIFY(!item.next());
    QVERIFY(!item.prev());
    QVERIFY(!item.listBox());
    QVERIFY(!item.current());
    QVERIFY(item.isSelectable());
    QVERIFY(!Bare(nullptr, nullptr).listBox());
    QVERIFY(std::is_abstract_v<ListBoxSkinItem>);
    QVERIFY(std::has_virtual_destructor_v<ListBoxSkinItem>);
}

void TestListBoxSkinItems::appendedByItsConstructor()
{
    ListBoxSkin box;
    auto* first = new Bare(&box);
    auto* second = new Bare(&box);
    QCOMPARE(box.count(), 2U);
    QCOMPARE(first->listBox(), &box);
    QCOMPARE(first->x, 42);
    QCOMPARE(first->y, 42);
    QVERIFY(first->isDirty());
    QCOMPARE(box.firstItem(), first);
    QCOMPARE(first->next(), second);
    QVERIFY(!first->prev());
    QCOMPARE(second->prev(), first);
    QVERIFY(!second->next());
}

void TestListBoxSkinItems::insertedAfterByItsConstructor()
{
    ListBoxSkin box;
    auto* first = new Bare(&box);
    auto* last = new Bare(&box);
    auto* middle = new Bare(&box, first);
    QCOMPARE(first->next(), middle);
    QCOMPARE(middle->prev(), first);
    QCOMPARE(middle->next(), last);
    QCOMPARE(last->prev(), middle);
    auto* end = new Bare(&box, last);
    QCOMPARE(box.index(end), 3);
    QVERIFY(!end->next());
    auto* head = new Bare(&box, nullptr);
    QCOMPARE(box.index(head), 0);
    QCOMPARE(box.count(), 5U);
}

// The derived part is not there yet: a list box that measured the item would call a pure virtual function, or get the
// size of an empty text.
void TestListBoxSkinItems::insertedBeforeItHasAText()
{
    Box box;
    box.showSettled();
    box.focusNow();
    QStringList texts;
    connect(&box, qOverload<const QString&>(&ListBoxSkin::highlighted), this,
            [&texts](const QString& text) { texts << '"' + text + '"'; });
    const auto* text = new ListBoxSkinText(&box, QStringLiteral("a text"));
    QCOMPARE(texts, QStringList{"\"\""});
    QCOMPARE(text->text(), QStringLiteral("a text"));
    QCOMPARE(box.text(0), QStringLiteral("a text"));
    new ListBoxSkinPixmap(&box, picture(300, 40), QStringLiteral("wide"));
    box.settle();
    QVERIFY(box.maxItemWidth() > 300);
    QCOMPARE(box.itemHeight(1), std::max(40, QFontMetrics(box.font()).lineSpacing() + 2));
}

void TestListBoxSkinItems::textConstructors()
{
    ListBoxSkin box;
    auto* first = new ListBoxSkinText(&box, QStringLiteral("first"));
    new ListBoxSkinText(&box, QStringLiteral("last"));
    new ListBoxSkinText(&box, QStringLiteral("second"), first);
    const ListBoxSkinText loose(QStringLiteral("loose"));
    QVERIFY(!loose.listBox());
    QCOMPARE(loose.text(), QStringLiteral("loose"));
    QVERIFY(!loose.pixmap());
    QCOMPARE(box.text(0) + box.text(1) + box.text(2), QStringLiteral("firstsecondlast"));
}

void TestListBoxSkinItems::pixmapConstructors()
{
    ListBoxSkin box;
    const QPixmap pixmap = picture(7, 5);
    auto* plain = new ListBoxSkinPixmap(&box, pixmap);
    auto* both = new ListBoxSkinPixmap(&box, pixmap, QStringLiteral("both"));
    auto* after = new ListBoxSkinPixmap(&box, pixmap, plain);
    auto* bothAfter = new ListBoxSkinPixmap(&box, pixmap, QStringLiteral("after"), plain);
    QCOMPARE(box.index(plain), 0);
    QCOMPARE(box.index(bothAfter), 1);
    QCOMPARE(box.index(after), 2);
    QCOMPARE(box.index(both), 3);
    QCOMPARE(bothAfter->text(), QStringLiteral("after"));
    QVERIFY(plain->text().isEmpty());
    QVERIFY(after->text().isEmpty());
    const ListBoxSkinPixmap loose(pixmap);
    const ListBoxSkinPixmap looseBoth(pixmap, QStringLiteral("text"));
    QVERIFY(!loose.listBox());
    QVERIFY(!looseBoth.listBox());
    QVERIFY(loose.text().isEmpty());
    QCOMPARE(looseBoth.text(), QStringLiteral("text"));
    const QList<const ListBoxSkinPixmap*> all{plain, both, after, bothAfter, &loose, &looseBoth};
    for (const ListBoxSkinPixmap* each : all)
        QCOMPARE(each->pixmap()->size(), QSize(7, 5));
}

void TestListBoxSkinItems::copiesOfThePicture()
{
    QPixmap pixmap = picture(7, 5);
    const qint64 key = pixmap.cacheKey();
    ListBoxSkinPixmap item(pixmap);
    QCOMPARE(item.pixmap()->cacheKey(), key);
    QCOMPARE(item.pixmap(), item.pixmap());
    pixmap.fill(Qt::red);
    QCOMPARE(item.pixmap()->toImage().pixelColor(0, 0), QColor(Qt::green));
    ListBoxSkin box;
    box.insertItem(*item.pixmap(), QStringLiteral("x"));
    QCOMPARE(box.pixmap(0)->cacheKey(), key);
}

void TestListBoxSkinItems::sizesOfTheBaseClass()
{
    const ListBoxSkin box;
    Bare item;
    item.ListBoxSkinItem::setText(QStringLiteral("a text that counts for nothing"));
    QCOMPARE(QSize(item.width(&box), item.height(&box)), QSize(0, 0));
    setGlobalStrut(QSize(31, 17));
    QCOMPARE(QSize(item.width(&box), item.height(&box)), QSize(31, 17));
    QCOMPARE(QSize(item.width(nullptr), item.height(nullptr)), QSize(31, 17));
}

void TestListBoxSkinItems::textSizes_data()
{
    QTest::addColumn<bool>("inBox");
    QTest::addColumn<QSize>("strut");
    QTest::newRow("no list box") << false << QSize(0, 0);
    QTest::newRow("no list box, strut") << false << QSize(20, 10);
    QTest::newRow("list box") << true << QSize(0, 0);
    QTest::newRow("small strut") << true << QSize(5, 5);
    QTest::newRow("large strut") << true << QSize(500, 400);
}

void TestListBoxSkinItems::textSizes()
{
    QFETCH(bool, inBox);
    QFETCH(QSize, strut);
    setGlobalStrut(strut);
    ListBoxSkin box;
    box.setFont(fontOfSize(23, spacedFamily()));
    const QFontMetrics metrics(box.font());
    const ListBoxSkinText item(QStringLiteral("Wide and tall"));
    const QSize text(metrics.horizontalAdvance(item.text()) + 6, metrics.lineSpacing() + 2);
    const ListBoxSkin* asked = inBox ? &box : nullptr;
    QCOMPARE(QSize(item.width(asked), item.height(asked)), (inBox ? text : QSize(0, 0)).expandedTo(strut));
}

void TestListBoxSkinItems::pixmapSizes_data()
{
    QTest::addColumn<int>("abovePixels");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("strut");
    QTest::newRow("no text, low") << -9 << QString() << QSize(0, 0);
    QTest::newRow("no text, high") << 30 << QString() << QSize(0, 0);
    QTest::newRow("no text, strut") << -9 << QString() << QSize(200, 100);
    QTest::newRow("text, low") << -9 << QStringLiteral("text") << QSize(0, 0);
    QTest::newRow("text, as high") << 0 << QStringLiteral("text") << QSize(0, 0);
    QTest::newRow("text, one higher") << 1 << QStringLiteral("text") << QSize(0, 0);
    QTest::newRow("text, strut") << 1 << QStringLiteral("text") << QSize(200, 100);
}

void TestListBoxSkinItems::pixmapSizes()
{
    QFETCH(int, abovePixels);
    QFETCH(QString, text);
    QFETCH(QSize, strut);
    setGlobalStrut(strut);
    ListBoxSkin box;
    box.setFont(fontOfSize(23, spacedFamily()));
    const QFontMetrics metrics(box.font());
    const int line = metrics.lineSpacing() + 2;
    const ListBoxSkinPixmap item(picture(11, line + abovePixels), text);
    const int h = text.isEmpty() || abovePixels > 0 ? line + abovePixels : line;
    const int w = text.isEmpty() ? 17 : 17 + metrics.horizontalAdvance(text);
    QCOMPARE(QSize(item.width(&box), item.height(&box)), QSize(w, h).expandedTo(strut));
}

void TestListBoxSkinItems::textIsPainted()
{
    const QFont font = fontOfSize(19, spacedFamily());
    const QFontMetrics metrics(font);
    ListBoxSkinText item(QStringLiteral("Whole text"));
    const QImage image = painted(&item, font);
    QCOMPARE(image, drawn({}, item.text(), QPoint(3, metrics.ascent() + metrics.leading() / 2), font));
    // One pixel aside is not the same.
    QVERIFY(image != drawn({}, item.text(), QPoint(4, metrics.ascent() + metrics.leading() / 2), font));
    QVERIFY(image != drawn({}, item.text(), QPoint(3, metrics.ascent() + metrics.leading() / 2 + 1), font));
}

void TestListBoxSkinItems::pixmapIsPainted_data()
{
    QTest::addColumn<int>("abovePixels");
    QTest::addColumn<QString>("text");
    QTest::newRow("low, no text") << -8 << QString();
    QTest::newRow("high, no text") << 8 << QString();
    QTest::newRow("low") << -8 << QStringLiteral("Whole text");
    QTest::newRow("one lower") << -1 << QStringLiteral("Whole text");
    QTest::newRow("as high") << 0 << QStringLiteral("Whole text");
    for (int above = 1; above < 8; ++above)
        QTest::addRow("%d higher", above) << above << QStringLiteral("Whole text");
}

void TestListBoxSkinItems::pixmapIsPainted()
{
    QFETCH(int, abovePixels);
    QFETCH(QString, text);
    for (const int fontSize : {18, 19, 20, 21}) {
        const QFont font = fontOfSize(fontSize, spacedFamily());
        const QFontMetrics metrics(font);
        const QPixmap pixmap = picture(12, metrics.height() + abovePixels);
        const int y = abovePixels < 0 ? metrics.ascent() + metrics.leading() / 2
                                      : pixmap.height() / 2 - metrics.height() / 2 + metrics.ascent();
        ListBoxSkinPixmap item(pixmap, text);
        QCOMPARE(painted(&item, font), drawn(pixmap, text, QPoint(12 + 5, y), font));
    }
}

void TestListBoxSkinItems::setTextOnlyStores()
{
    Box box;
    auto* text = new ListBoxSkinText(&box, QStringLiteral("a"));
    box.showSettled();
    const long width = box.maxItemWidth();
    const int measured = text->width(&box);
    text->setText(QString(100, QLatin1Char('W')));
    QCOMPARE(text->text().size(), 100);
    QVERIFY(!updateTimer(box)->isActive());
    QCOMPARE(box.maxItemWidth(), width);
    QVERIFY(text->width(&box) > measured);
    // What is laid out for another reason finds the new width.
    box.triggerUpdate(true);
    box.settle();
    QCOMPARE(box.maxItemWidth(), long(text->width(&box)));
}

// The text that an item returns counts, not the one it has stored.
void TestListBoxSkinItems::ownTextCountsForSizeAndPaint()
{
    class Loud : public ListBoxSkinText
    {
    public:
        using ListBoxSkinText::ListBoxSkinText;
        QString text() const override { return QStringLiteral("LOUD AND LONG ") + txt; }
    };
    Box box(QSize(20, 75));
    const QFont font = fontOfSize(19);
    const QFontMetrics metrics(font);
    box.setFont(font);
    auto* item = new Loud(&box, QStringLiteral("x"));
    const QString shown = QStringLiteral("LOUD AND LONG x");
    QCOMPARE(item->width(&box), QFontMetrics(box.font()).horizontalAdvance(shown) + 6);
    QCOMPARE(painted(item, font), drawn({}, shown, QPoint(3, metrics.ascent() + metrics.leading() / 2), font));
    box.doLayout();
    QCOMPARE(box.maxItemWidth(), long(item->width(&box)));
    QCOMPARE(box.text(0), shown);
    QCOMPARE(box.findItem(QStringLiteral("loud")), item);
}

void TestListBoxSkinItems::current()
{
    QWidget window;
    auto* box = new Box(QSize(130, 75), &window);
    QWidget other(&window);
    other.setFocusPolicy(Qt::StrongFocus);
    box->blocks(3);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    box->setCurrentItem(1);
    other.activateWindow();
    other.setFocus();
    QTRY_VERIFY_WITH_TIMEOUT(other.hasFocus(), 30000);
    QVERIFY(!box->item(1)->current());
    box->focusNow();
    QVERIFY(box->item(1)->current());
    QVERIFY(!box->item(0)->current());
    QVERIFY(!box->item(2)->current());
    ListBoxSkinItem* taken = box->item(1);
    box->takeItem(taken);
    QVERIFY(!taken->current());
    QVERIFY(box->item(1)->current());
    delete taken;
    other.setFocus();
    QTRY_VERIFY_WITH_TIMEOUT(other.hasFocus(), 30000);
    QVERIFY(!box->item(1)->current());
}

void TestListBoxSkinItems::selectable()
{
    Box box;
    box.setSelectionMode(ListBoxSkin::Multi);
    auto* item = new Bare;
    item->setSelectable(false);
    QVERIFY(item->isSelectable());
    box.insertItem(item);
    QVERIFY(item->isSelectable());
    box.setSelected(0, true);
    box.showSettled();
    SignalLog log(&box);
    item->setSelectable(false);
    QVERIFY(!item->isSelectable());
    QVERIFY(item->selected());
    QVERIFY(!updateTimer(box)->isActive());
    QCOMPARE(log.take(), QStringList());
    item->setSelectable(true);
    QVERIFY(item->isSelectable());
    item->setSelectable(false);
    item->setSelectable(false);
    QVERIFY(!item->isSelectable());
    box.blocks(1);
    QVERIFY(box.item(1)->isSelectable());
}

void TestListBoxSkinItems::customHighlighting()
{
    Box box;
    auto* item = new Bare(&box);
    box.showSettled();
    item->setCustomHighlighting(true);
    QVERIFY(item->isCustom());
    QVERIFY(!updateTimer(box)->isActive());
    item->setCustomHighlighting(false);
    QVERIFY(!item->isCustom());
}

void TestListBoxSkinItems::selectedFlag()
{
    ListBoxSkin box;
    auto* item = new Bare(&box);
    QVERIFY(!box.isSelected(static_cast<ListBoxSkinItem*>(nullptr)));
    QVERIFY(!box.isSelected(item));
    box.setSelected(item, true);
    QVERIFY(box.isSelected(item));
    QVERIFY(item->isSelectedFlag());
    box.setSelected(item, false);
    QVERIFY(!item->isSelectedFlag());
}

void TestListBoxSkinItems::deletedItemLeaves()
{
    Box box;
    box.blocks(3);
    box.setCurrentItem(1);
    SignalLog log(&box);
    delete box.item(1);
    QCOMPARE(box.texts(), (QStringList{"0", "2"}));
    QCOMPARE(log.take(), (QStringList{"highlighted(2)", "highlighted(\"2\")", "highlighted(1)", "currentChanged(2)",
                                      "selectionChanged()"}));
    delete box.item(0);
    QVERIFY(!box.item(0)->prev());
    delete box.item(0);
    QCOMPARE(box.count(), 0U);
    QVERIFY(!box.firstItem());
}

void TestListBoxSkinItems::clearedItemsAreFreeOfLinks_data()
{
    QTest::addColumn<bool>("destroyed");
    QTest::newRow("clear") << false;
    QTest::newRow("list box destroyed") << true;
}

void TestListBoxSkinItems::clearedItemsAreFreeOfLinks()
{
    QFETCH(bool, destroyed);
    auto box = std::make_unique<Box>();
    QStringList deaths;
    for (const char* name : {"a", "b", "c"})
        new Mortal(box.get(), &deaths, QLatin1String(name));
    box->setCurrentItem(1);
    SignalLog log(box.get());
    if (destroyed)
        box.reset();
    else
        box->clear();
    QCOMPARE(deaths, (QStringList{"a -- blocked", "b -- blocked", "c -- blocked"}));
    QCOMPARE(log.take(), QStringList());
}

void TestListBoxSkinItems::takenItemKeepsItsPlace()
{
    Box box;
    box.blocks(3);
    const ListBoxSkinItem* first = box.item(0);
    const ListBoxSkinItem* last = box.item(2);
    const std::unique_ptr<ListBoxSkinItem> taken(box.item(1));
    box.takeItem(taken.get());
    QCOMPARE(taken->prev(), first);
    QCOMPARE(taken->next(), last);
    QCOMPARE(taken->listBox(), &box);
    QCOMPARE(first->next(), last);
    QCOMPARE(last->prev(), first);
}

// Runs takeItem() a second time: that schedules an update and does nothing else.
void TestListBoxSkinItems::takenItemDeletedLater()
{
    Box box;
    box.blocks(4);
    box.setCurrentItem(2);
    box.showSettled();
    for (const int index : {0, 1, 1}) {
        ListBoxSkinItem* taken = box.item(index);
        box.takeItem(taken);
        box.settle();
        const QStringList texts = box.texts();
        const int current = box.currentItem();
        const QString selection = box.selection();
        SignalLog log(&box);
        delete taken;
        QVERIFY(updateTimer(box)->isActive());
        QCOMPARE(updateTimer(box)->interval(), 0);
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(box.texts(), texts);
        QCOMPARE(int(box.count()), int(texts.size()));
        QCOMPARE(box.currentItem(), current);
        QCOMPARE(box.selection(), selection);
        box.settle();
    }
}

QTEST_MAIN(TestListBoxSkinItems)
#include "tst_listboxskin_items.moc"
