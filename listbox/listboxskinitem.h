#ifndef SKINWIDGETS_LISTBOX_LISTBOXSKINITEM_H
#define SKINWIDGETS_LISTBOX_LISTBOXSKINITEM_H

#include "toolkit/export.h"

#include <QPixmap>
#include <QString>

class ListBoxSkin;
class QPainter;

namespace skinwidgets
{
class ItemChain;
struct ItemChunk;
} // namespace skinwidgets

/*
 * An entry of a ListBoxSkin. It knows its text, its picture, how large it is in a list box and how it paints itself
 * into a cell. Kinds of their own derive from this class and implement paint(), and width() and height() as a rule.
 *
 * A list box owns the items that are in it and deletes them with itself. An item that was taken out belongs to whoever
 * took it. Deleting an item takes it out of its list box first.
 *
 * All sizes are pixels.
 */
class SKINWIDGETS_EXPORT ListBoxSkinItem
{
public:
    // With a list box, the item is appended to it, or inserted after another item (null: at the front). That happens
    // here, before a derived class has stored text or picture: a list box that has the focus and no current item tells
    // of the new one with an empty text. Receivers of those signals must not delete the item itself; clearing or
    // deleting the list box leaves it as a free item.
    explicit ListBoxSkinItem(ListBoxSkin* listbox = nullptr);
    ListBoxSkinItem(ListBoxSkin* listbox, ListBoxSkinItem* after);
    virtual ~ListBoxSkinItem();

    // The text by which a list box sorts and finds the item; empty at first.
    virtual QString text() const;
    // The item's picture, owned by the item; null where it has none.
    virtual const QPixmap* pixmap() const;
    // The item's size in that list box, at least globalStrut(). The base class gives just that. A list box asks at
    // every layout. It counts negative sizes as 0.
    virtual int height(const ListBoxSkin* listbox) const;
    virtual int width(const ListBoxSkin* listbox) const;
    // Draws the contents of the item's cell, whose top-left corner is the painter's origin. Pen and font are the list
    // box's.
    virtual void paint(QPainter* painter) = 0;
    // Changes the text without a repaint or layout; ListBoxSkin::changeItem() and triggerUpdate() bring those.
    virtual void setText(const QString& text);

    // The neighbours in the list box, null at its ends. An item that was taken out keeps what it had.
    ListBoxSkinItem* next() const { return n; }
    ListBoxSkinItem* prev() const { return p; }
    // The list box that the item is in, or was taken from if that lives still; null for a free item.
    ListBoxSkin* listBox() const;

    // Whether the item is selected in its list box.
    bool selected() const { return s; }
    // Whether this is the current item of a list box that has the keyboard focus.
    bool current() const;

    // Whether the item can be selected: true without a list box, and until setSelectable() said something else in this
    // list box. Changes neither selection nor display. Without a list box setSelectable() does nothing.
    bool isSelectable() const;
    void setSelectable(bool selectable);
    // A selected item with custom highlighting gets no highlight from the list box: its paint() shows the state.
    void setCustomHighlighting(bool custom);

protected:
    // The text, and whether the item is selected.
    QString txt;
    unsigned int s : 1;
    // Not painted whole since its last change.
    unsigned int dirty : 1;
    // Set by setCustomHighlighting().
    unsigned int custom_highlight : 1;

private:
    // In the same word as the flags above, as every word counts a million times.
    // In a chain: place.chunk is valid, else place.box.
    unsigned int chained : 1;
    // Being inserted by its own constructor.
    unsigned int constructing : 1;
    // Some list box has an entry about whether it is selectable.
    unsigned int hasEntry : 1;
    // Of a dirty item, whose cell is too wide to be painted whole, that all that can be seen of it was painted.
    unsigned int paintedAcross : 1;

protected:
    // Not used by the item.
    int x = 42;
    int y = 42;

private:
    friend class ListBoxSkin;
    friend class ListBoxSkinPrivate;
    friend class skinwidgets::ItemChain;
    Q_DISABLE_COPY(ListBoxSkinItem)

    // The width that the chain measured last; -1 unknown. Stands here because there is room.
    int measuredWidth = -1;
    ListBoxSkinItem* p = nullptr;
    ListBoxSkinItem* n = nullptr;
    union Place {
        skinwidgets::ItemChunk* chunk;
        ListBoxSkin* box;
    } place;
};

/*
 * A line of text, 3 pixels from the cell's left edge.
 */
class SKINWIDGETS_EXPORT ListBoxSkinText : public ListBoxSkinItem
{
public:
    // As ListBoxSkinItem's constructors insert; without a list box the item is free.
    explicit ListBoxSkinText(ListBoxSkin* listbox, const QString& text = QString());
    explicit ListBoxSkinText(const QString& text = QString());
    ListBoxSkinText(ListBoxSkin* listbox, const QString& text, ListBoxSkinItem* after);
    ~ListBoxSkinText() override;

    // The line spacing of the list box's font and 2 pixels; 0 without a list box.
    int height(const ListBoxSkin* listbox) const override;
    // The width of the text and 6 pixels; 0 without a list box.
    int width(const ListBoxSkin* listbox) const override;
    // Draws the text; the highlight is the list box's.
    void paint(QPainter* painter) override;
};

/*
 * A picture, 3 pixels from the cell's left edge and at its top, and a line of text 2 pixels right of it where there is
 * one. The text stands in the middle of a picture that is at least as high as the font.
 */
class SKINWIDGETS_EXPORT ListBoxSkinPixmap : public ListBoxSkinItem
{
public:
    // As ListBoxSkinItem's constructors insert; without a list box the item is free. The picture is shared, not copied;
    // it may be null.
    ListBoxSkinPixmap(ListBoxSkin* listbox, const QPixmap& pixmap);
    explicit ListBoxSkinPixmap(const QPixmap& pixmap);
    ListBoxSkinPixmap(ListBoxSkin* listbox, const QPixmap& pixmap, ListBoxSkinItem* after);
    ListBoxSkinPixmap(ListBoxSkin* listbox, const QPixmap& pixmap, const QString& text);
    ListBoxSkinPixmap(const QPixmap& pixmap, const QString& text);
    ListBoxSkinPixmap(ListBoxSkin* listbox, const QPixmap& pixmap, const QString& text, ListBoxSkinItem* after);
    ~ListBoxSkinPixmap() override;

    const QPixmap* pixmap() const override;
    // The picture's size, 6 pixels wider; with a text that of both, measured as ListBoxSkinText does. Without a list
    // box the text counts as nothing.
    int height(const ListBoxSkin* listbox) const override;
    int width(const ListBoxSkin* listbox) const override;
    // Draws nothing but picture and text; the highlight is the list box's.
    void paint(QPainter* painter) override;

private:
    QPixmap pm;
};

#endif
