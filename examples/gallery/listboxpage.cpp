#include "listboxpage.h"

#include "ground.h"
#include "listbox/listbox_skin.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>

namespace
{

constexpr QSize narrowSize(190, 126);
constexpr QSize wideSize(602, 108);

// The skin's list picture has a title bar at its top.
constexpr QPoint listPlace(0, 30);

QStringList trackNames()
{
    return {QStringLiteral("Morning Light"),  QStringLiteral("Slow River"),    QStringLiteral("Paper Boats"),
            QStringLiteral("Night Train"),    QStringLiteral("Glass Gardens"), QStringLiteral("The Long Way Home"),
            QStringLiteral("Harbour Lights"), QStringLiteral("Signal"),        QStringLiteral("Winter Coat"),
            QStringLiteral("Second Floor"),   QStringLiteral("Afterglow"),     QStringLiteral("Northern Line")};
}

// A list on a ground that shows the same picture. Both begin with the picture's top-left corner at that of the ground.
ListBoxSkin* makeList(QWidget* parent, const QSize& size)
{
    const QPixmap picture = skinPicture(parent, QStringLiteral("list_bg"))
                                .copy(QRect(listPlace, QSize(420, 230)))
                                .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    auto* const ground = new Ground(picture, parent);
    auto* const list = new ListBoxSkin(ground);
    list->setFixedSize(size);
    list->setBackgroundPixmap(picture);
    return list;
}

QPixmap scaled(const QPixmap& picture, int side)
{
    return picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

void select(ListBoxSkin* list, const QList<int>& indexes)
{
    for (const int index : indexes)
        list->setSelected(index, true);
}

// Shows by itself that it is selected.
class OutlinedItem : public ListBoxSkinText
{
public:
    explicit OutlinedItem(const QString& text) : ListBoxSkinText(text) { setCustomHighlighting(true); }

    void paint(QPainter* painter) override
    {
        ListBoxSkinText::paint(painter);
        if (!selected())
            return;
        painter->setPen(QColor(0xff, 0xa0, 0x50));
        painter->drawRoundedRect(QRect(0, 0, width(listBox()), height(listBox()) - 1), 3, 3);
    }
};

struct Example {
    const char* caption;
    ListBoxSkin::SelectionMode mode;
    QList<int> selected;
    bool focused;
};

QList<Example> examples()
{
    return {
        {"Single, keyboard focus", ListBoxSkin::Single, {2}, true},
        {"Single", ListBoxSkin::Single, {2}, false},
        {"Multi", ListBoxSkin::Multi, {0, 3, 4}, false},
        {"Extended", ListBoxSkin::Extended, {1, 2, 3}, false},
        {"No selection", ListBoxSkin::NoSelection, {}, false},
    };
}

} // namespace

ListBoxPage::ListBoxPage(QWidget* parent)
    : Page(tr("List box"),
           tr("Entries over a background picture. The selection is orange in the list with the keyboard focus and grey "
              "in the others. All lists can be operated."),
           parent)
{
    addModes();
    addContents();
    addColumns();
}

void ListBoxPage::addModes()
{
    QGridLayout* const table = addTable(tr("Selection modes"), 0, 0);
    QWidget* const card = table->parentWidget();
    int column = 0;
    for (const Example& example : examples()) {
        ListBoxSkin* const list = makeList(card, narrowSize);
        list->setSelectionMode(example.mode);
        list->insertStringList(trackNames());
        select(list, example.selected);
        if (example.focused)
            m_focused = list;
        table->addWidget(makeLabel(tr(example.caption), card), 0, column, Qt::AlignCenter);
        table->addWidget(list->parentWidget(), 1, column++, Qt::AlignCenter);
    }
}

void ListBoxPage::addContents()
{
    QGridLayout* const table = addTable(tr("Entries"), 1, 0);
    QWidget* const card = table->parentWidget();
    const QPixmap cover = skinPicture(card, QStringLiteral("cover"));
    const QPixmap playing = skinPicture(card, QStringLiteral("playing"));
    const auto addList = [&](const QString& caption, int column) {
        ListBoxSkin* const list = makeList(card, narrowSize);
        list->setSelectionMode(ListBoxSkin::Multi);
        table->addWidget(makeLabel(caption, card), 0, column, Qt::AlignCenter);
        table->addWidget(list->parentWidget(), 1, column, Qt::AlignCenter);
        return list;
    };

    ListBoxSkin* const marked = addList(tr("One marked by a picture"), 0);
    marked->insertStringList(trackNames());
    marked->changeItem(playing, trackNames().at(1), 1);
    select(marked, {3});

    ListBoxSkin* const mixed = addList(tr("Pictures and texts"), 1);
    mixed->insertItem(scaled(cover, 40), QStringLiteral("Higher than a line"));
    mixed->insertItem(scaled(cover, 14), QStringLiteral("Lower than a line"));
    mixed->insertItem(cover.copy(22, 37, 60, 30));
    mixed->insertItem(QStringLiteral("A text"));
    select(mixed, {0, 2});

    ListBoxSkin* const fixed = addList(tr("Rows of a fixed height"), 2);
    fixed->fixedRowHeight = narrowSize.height() / 6;
    fixed->insertStringList(trackNames());
    fixed->insertItem(scaled(cover, 21), QStringLiteral("With a picture"), 1);
    select(fixed, {1});

    ListBoxSkin* const custom = addList(tr("Highlights of their own"), 3);
    for (const QString& name : trackNames())
        custom->insertItem(new OutlinedItem(name));
    select(custom, {0, 2, 3});

    ListBoxSkin* const few = addList(tr("Less than fits"), 4);
    few->insertStringList(trackNames().mid(0, 3));
    select(few, {1});
}

void ListBoxPage::addColumns()
{
    QGridLayout* const table = addTable(tr("Several columns: the selection is blue with or without focus"), 2, 0);
    QWidget* const card = table->parentWidget();
    for (const bool variable : {false, true}) {
        ListBoxSkin* const list = makeList(card, QSize(wideSize.width() - (variable ? 120 : 0), wideSize.height()));
        list->setSelectionMode(ListBoxSkin::Extended);
        list->setVariableWidth(variable);
        if (variable)
            list->setRowMode(ListBoxSkin::FitToHeight);
        else
            list->setColumnMode(ListBoxSkin::FitToWidth);
        list->insertStringList(trackNames());
        select(list, {2, 3, 8});
        const QString caption = variable ? tr("Rows fitted to the height, columns as wide as their entries")
                                         : tr("Columns fitted to the width");
        table->addWidget(makeLabel(caption, card), 0, variable, Qt::AlignCenter);
        table->addWidget(list->parentWidget(), 1, variable, Qt::AlignCenter);
    }
}

void ListBoxPage::showEvent(QShowEvent* event)
{
    Page::showEvent(event);
    m_focused->setFocus();
}
