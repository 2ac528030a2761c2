#include "listbox/listboxskinitem.h"

#include "listbox/itemchain.h"
#include "listbox/listbox_skin.h"
#include "listbox/listboxskinprivate.h"
#include "toolkit/toolkit.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

using skinwidgets::itemMargins;
using skinwidgets::lineHeight;

namespace
{

constexpr int leftMargin = 3;
// From the picture's right edge to the text, the left margin included.
constexpr int textIndent = 5;

// The base line of a text at the cell's top.
int topBaseline(const QFontMetrics& metrics)
{
    return metrics.ascent() + metrics.leading() / 2;
}

} // namespace

ListBoxSkinItem::ListBoxSkinItem(ListBoxSkin* listbox)
    : s(false),
      dirty(true),
      custom_highlight(false),
      chained(false),
      constructing(listbox != nullptr),
      hasEntry(false),
      paintedAcross(false)
{
    place.box = nullptr;
    if (listbox)
        listbox->insertItem(this, -1);
    constructing = false;
}

ListBoxSkinItem::ListBoxSkinItem(ListBoxSkin* listbox, ListBoxSkinItem* after) : ListBoxSkinItem()
{
    constructing = listbox != nullptr;
    if (listbox)
        listbox->insertItem(this, after);
    constructing = false;
}

ListBoxSkinItem::~ListBoxSkinItem()
{
    if (ListBoxSkin* box = listBox())
        box->takeItem(this);
    ListBoxSkinPrivate::forget(this);
}

QString ListBoxSkinItem::text() const
{
    return txt;
}

const QPixmap* ListBoxSkinItem::pixmap() const
{
    return nullptr;
}

int ListBoxSkinItem::height(const ListBoxSkin* /*listbox*/) const
{
    return globalStrut().height();
}

int ListBoxSkinItem::width(const ListBoxSkin* /*listbox*/) const
{
    return globalStrut().width();
}

void ListBoxSkinItem::setText(const QString& text)
{
    txt = text;
    skinwidgets::ItemChain::forgetSize(this);
}

ListBoxSkin* ListBoxSkinItem::listBox() const
{
    return chained ? place.chunk->chain->box() : place.box;
}

bool ListBoxSkinItem::current() const
{
    const ListBoxSkin* box = listBox();
    return box && box->hasFocus() && box->d->current == this;
}

bool ListBoxSkinItem::isSelectable() const
{
    const ListBoxSkin* box = listBox();
    return !box || !hasEntry || box->d->selectable.value(this, true);
}

void ListBoxSkinItem::setSelectable(bool selectable)
{
    ListBoxSkin* box = listBox();
    if (!box)
        return;
    box->d->selectable.insert(this, selectable);
    hasEntry = true;
}

void ListBoxSkinItem::setCustomHighlighting(bool custom)
{
    custom_highlight = custom;
}

ListBoxSkinText::ListBoxSkinText(ListBoxSkin* listbox, const QString& text) : ListBoxSkinItem(listbox)
{
    ListBoxSkinItem::setText(text);
}

ListBoxSkinText::ListBoxSkinText(const QString& text)
{
    ListBoxSkinItem::setText(text);
}

ListBoxSkinText::ListBoxSkinText(ListBoxSkin* listbox, const QString& text, ListBoxSkinItem* after)
    : ListBoxSkinItem(listbox, after)
{
    ListBoxSkinItem::setText(text);
}

ListBoxSkinText::~ListBoxSkinText() = default;

int ListBoxSkinText::height(const ListBoxSkin* listbox) const
{
    const int h = listbox ? lineHeight(listbox->fontMetrics()) : 0;
    return std::max(h, globalStrut().height());
}

int ListBoxSkinText::width(const ListBoxSkin* listbox) const
{
    const int w = listbox ? listbox->fontMetrics().horizontalAdvance(text()) + itemMargins : 0;
    return std::max(w, globalStrut().width());
}

void ListBoxSkinText::paint(QPainter* painter)
{
    painter->drawText(leftMargin, topBaseline(painter->fontMetrics()), text());
}

ListBoxSkinPixmap::ListBoxSkinPixmap(ListBoxSkin* listbox, const QPixmap& pixmap) : ListBoxSkinItem(listbox), pm(pixmap)
{
}

ListBoxSkinPixmap::ListBoxSkinPixmap(const QPixmap& pixmap) : pm(pixmap) {}

ListBoxSkinPixmap::ListBoxSkinPixmap(ListBoxSkin* listbox, const QPixmap& pixmap, ListBoxSkinItem* after)
    : ListBoxSkinItem(listbox, after),
      pm(pixmap)
{
}

ListBoxSkinPixmap::ListBoxSkinPixmap(ListBoxSkin* listbox, const QPixmap& pixmap, const QString& text)
    : ListBoxSkinItem(listbox),
      pm(pixmap)
{
    ListBoxSkinItem::setText(text);
}

ListBoxSkinPixmap::ListBoxSkinPixmap(const QPixmap& pixmap, const QString& text) : pm(pixmap)
{
    ListBoxSkinItem::setText(text);
}

ListBoxSkinPixmap::ListBoxSkinPixmap(ListBoxSkin* listbox, const QPixmap& pixmap, const QString& text,
                                     ListBoxSkinItem* after)
    : ListBoxSkinItem(listbox, after),
      pm(pixmap)
{
    ListBoxSkinItem::setText(text);
}

ListBoxSkinPixmap::~ListBoxSkinPixmap() = default;

const QPixmap* ListBoxSkinPixmap::pixmap() const
{
    return &pm;
}

int ListBoxSkinPixmap::height(const ListBoxSkin* listbox) const
{
    const int line = listbox && !text().isEmpty() ? lineHeight(listbox->fontMetrics()) : 0;
    return std::max({pm.height(), line, globalStrut().height()});
}

int ListBoxSkinPixmap::width(const ListBoxSkin* listbox) const
{
    const QString shown = text();
    const int w = listbox && !shown.isEmpty() ? listbox->fontMetrics().horizontalAdvance(shown) : 0;
    return std::max(pm.width() + w + itemMargins, globalStrut().width());
}

void ListBoxSkinPixmap::paint(QPainter* painter)
{
    painter->drawPixmap(leftMargin, 0, pm);
    const QString shown = text();
    if (shown.isEmpty())
        return;
    const QFontMetrics metrics = painter->fontMetrics();
    const bool low = pm.height() < metrics.height();
    // Intended: each half is cut before the subtraction.
    const int baseline = low ? topBaseline(metrics) : pm.height() / 2 - metrics.height() / 2 + metrics.ascent();
    painter->drawText(pm.width() + textIndent, baseline, shown);
}
