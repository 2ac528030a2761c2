#ifndef SKINWIDGETS_LISTBOX_LISTBOXSKINPRIVATE_H
#define SKINWIDGETS_LISTBOX_LISTBOXSKINPRIVATE_H

#include "listbox/celledges.h"
#include "listbox/itemchain.h"
#include "listbox/listbox_skin.h"
#include "listbox/listboxskinitem.h"

#include <QHash>
#include <QImage>
#include <QPointer>
#include <QRect>
#include <QSet>
#include <QTimer>

#include <memory>
#include <vector>

class ItemWatch;

// One of the two pictures behind a selected item: one colour throughout, so that only as much of it is kept as has been
// shown, however large the cell.
class HighlightPicture
{
public:
    explicit HighlightPicture(QRgb colour) : m_colour(colour) {}

    QSize size() const { return m_size; }
    void create(const QSize& size, uchar alpha);
    // Copies the picture's top-left part to the device, no more than the rectangle's size.
    void copyTo(QPaintDevice* device, const QRect& rect);

private:
    QRgb m_colour;
    QSize m_size;
    QImage m_image;
    uchar m_alpha = 255;
};

/*
 * The state of a list box.
 */
class ListBoxSkinPrivate
{
public:
    explicit ListBoxSkinPrivate(ListBoxSkin* listbox);
    // Reports items that are left.
    ~ListBoxSkinPrivate();
    Q_DISABLE_COPY(ListBoxSkinPrivate)

    // Last call of an item that is being deleted: no record of it stays anywhere.
    static void forget(ListBoxSkinItem* item);
    // Forgets what the list box remembers of an item that leaves the chain. The current item, and others that have to
    // be one, move on to the replacement.
    void itemLeaves(const ListBoxSkinItem* item, ListBoxSkinItem* replacement);

    // The same for all items.
    void forgetItems();

    void startPress(ListBoxSkinItem* item);
    void endPress();

    void startUpdateTimer();
    void noteCurrentCell();
    // The cell that the item at the index has in the grid as laid out.
    QPoint cellOf(int index) const;
    QRect cellRect(int row, int column) const;
    bool hasCell(int row, int column) const;

    // Null where there is none.
    ListBoxSkinItem* itemIn(int row, int column) const;
    // The cells that a rectangle of the contents touches, columns as x, rows as y.
    QRect cellsUnder(const QRect& contents) const;

    // Selects or deselects; true where that was a change. The item is scheduled for repaint then.
    bool setSelected(ListBoxSkinItem* item, bool selected);
    bool deselectAll();
    bool deselectOutside(int first, int last);
    // Those in the cells that can be selected, or all, when deselecting.
    bool selectCells(const QRect& cells, bool select);
    // Type-ahead: the text is added to what has been typed.
    void findItemByName(const QString& text);

    // Fills a grid of rows x columns, column by column, with the items as measured.
    void place(int rows, int columns);
    // The grid that the layout modes ask for.
    void fit();
    void fitRows();
    void fitColumns();

    ListBoxSkin* const q;
    skinwidgets::ItemChain chain;
    ListBoxSkinItem* current = nullptr;
    ListBoxSkinItem* selectAnchor = nullptr;

    bool layoutDirty = true;
    // Items are being measured.
    bool layingOut = false;
    // The contents are getting the size of the layout.
    bool fitsContents = false;
    bool mustPaintAll = true;
    // clear() is running; takeItem() does nothing.
    bool clearing = false;

    skinwidgets::CellEdges columnPos;
    skinwidgets::CellEdges rowPos;
    // The width of the first column before any stretching.
    int columnPosOne = 0;
    // The sizes of list box and viewport that the last layout was made for.
    QSize laidOutSize;
    QSize laidOutViewport;

    // In effect is the row mode if rowModeWins, else the column mode; the other direction follows.
    ListBoxSkin::LayoutMode rowMode = ListBoxSkin::FixedNumber;
    ListBoxSkin::LayoutMode columnMode = ListBoxSkin::FixedNumber;
    bool rowModeWins = false;
    int numRows = 1;
    int numColumns = 1;
    bool variableHeight = true;
    bool variableWidth = false;

    // Where tryGeometry() found the current item; -1 unknown.
    int currentRow = 0;
    int currentColumn = 0;

    ListBoxSkin::SelectionMode selectionMode = ListBoxSkin::Single;
    QString currInputString;

    QTimer* updateTimer;
    QTimer* visibleTimer;
    QTimer* inputTimer;
    QTimer* resizeTimer;
    // Exists while something is dragged.
    QTimer* scrollTimer = nullptr;

    QHash<const ListBoxSkinItem*, bool> selectable;
    // Items that were taken out and name this list box still.
    QSet<ListBoxSkinItem*> taken;
    std::vector<ItemWatch*> watches;

    QSize cachedSizeHint{-1, -1};
    QSize cachedMinimumSizeHint{-1, -1};

    uchar alpha = 255;
    HighlightPicture focusPicture;
    HighlightPicture noFocusPicture;

    // The stylus. Cells are -1 for none.
    int mousePressRow = -1;
    int mousePressColumn = -1;
    int mouseMoveRow = -1;
    int mouseMoveColumn = -1;
    ListBoxSkinItem* pressedItem = nullptr;
    // The pressed item has left since: nothing that is released now is a click.
    bool pressedItemLeft = false;
    // The item that onItem() was emitted for last.
    ListBoxSkinItem* hovered = nullptr;
    bool ignoreMoves = false;
    bool selectOnRelease = false;
    // A drag gives this state to what it meets, or selects all from its origin on, which is the pressed cell or the one
    // that the range began with.
    bool dragState = true;
    bool dragsRange = false;
    QPoint dragOrigin{-1, -1};
    // Where it was last while held, in viewport coordinates.
    QPoint stylus;
    // The stylus was pressed on empty space, in contents coordinates: a drag draws a rubber band.
    bool rubberArmed = false;
    QPoint rubberOrigin;
    std::unique_ptr<QRect> rubber;
    // The current item while there is none during the rubber band.
    ListBoxSkinItem* currentBeforeRubber = nullptr;
};

// Holds an item while receivers of signals run; null once the item has left its list box.
class ItemWatch
{
public:
    ItemWatch(ListBoxSkinPrivate* owner, ListBoxSkinItem* item);
    ~ItemWatch();
    Q_DISABLE_COPY(ItemWatch)

    ListBoxSkinItem* item() const { return m_item; }

private:
    friend class ListBoxSkinPrivate;
    ListBoxSkinPrivate* m_owner;
    ListBoxSkinItem* m_item;
};

#endif
