#ifndef SKINWIDGETS_LISTBOX_LISTBOX_SKIN_H
#define SKINWIDGETS_LISTBOX_LISTBOX_SKIN_H

#include "listbox/listboxskinitem.h"
#include "scroll/scrollviewskin.h"

#include <QRegion>
#include <QStringList>

#include <memory>

class ListBoxSkinPrivate;
class QStrList;

/*
 * A list of items in a grid of cells, drawn over a background picture, with the interface of the toolkit's own list
 * box. Items run down the first column, then down the next. Selected items stand on highlight pictures: orange while
 * the list box has the keyboard focus, grey otherwise, blue with more than one column.
 *
 * Indexes count from 0. Lengths are pixels; contents coordinates count from the first cell's top-left corner, viewport
 * coordinates from the viewport's. Items that are null or in another list box, and indexes that are out of range, make
 * operations do nothing, except where something else is said.
 *
 * Changes are laid out and painted once control returns to the event loop; the geometry operations lay out at once
 * what is due. For 100 ms after the last change of its size a visible list box lays out nothing.
 *
 * The costs of insertion, removal and look-up, of moving the current item and of painting hardly depend on the number
 * of items. A layout measures the items that are new; those of kinds of their own it measures every time.
 *
 * Any signal's receiver may change or delete the list box and its items. What was still to be told about an item that
 * is gone, or is no longer the current one, is not told then.
 */
class SKINWIDGETS_EXPORT ListBoxSkin : public ScrollViewSkin
{
    Q_OBJECT
    Q_PROPERTY(uint count READ count)
    Q_PROPERTY(int numItemsVisible READ numItemsVisible)
    Q_PROPERTY(int currentItem READ currentItem WRITE setCurrentItem)
    Q_PROPERTY(QString currentText READ currentText)
    Q_PROPERTY(int topItem READ topItem WRITE setTopItem DESIGNABLE false)
    Q_PROPERTY(SelectionMode selectionMode READ selectionMode WRITE setSelectionMode)
    Q_PROPERTY(bool multiSelection READ isMultiSelection WRITE setMultiSelection DESIGNABLE false)
    Q_PROPERTY(LayoutMode columnMode READ columnMode WRITE setColumnMode)
    Q_PROPERTY(LayoutMode rowMode READ rowMode WRITE setRowMode)
    Q_PROPERTY(int numColumns READ numColumns)
    Q_PROPERTY(int numRows READ numRows)
    Q_PROPERTY(bool variableWidth READ variableWidth WRITE setVariableWidth)
    Q_PROPERTY(bool variableHeight READ variableHeight WRITE setVariableHeight)

public:
    // What a press or a key selects.
    enum SelectionMode {
        // The current item is the selected one, or none is.
        Single = 0,
        // Each press toggles an item.
        Multi = 1,
        // A press selects one item; Control adds to the selection and Shift extends it.
        Extended = 2,
        NoSelection = 3
    };
    Q_ENUM(SelectionMode)

    // How the number of rows, or of columns, comes about.
    enum LayoutMode {
        // A number of rows or columns that is given.
        FixedNumber = 0,
        // As many columns, or rows, as the viewport has place for.
        FitToWidth = 1,
        FitToHeight = FitToWidth,
        // As many as the other direction leaves.
        Variable = 2
    };
    Q_ENUM(LayoutMode)

    // One column, Single mode, no frame, no bar at the bottom.
    explicit ListBoxSkin(QWidget* parent = nullptr, const char* name = nullptr, WFlags f = 0);
    // Deletes the items. Items that were taken out become free.
    ~ListBoxSkin() override;

    // When greater than 0, every row is as high as this, whatever its items measure; a change takes effect with the
    // next layout.
    int fixedRowHeight = 0;

    // Set to null when the list box that it names is destroyed; nothing else in the library uses it.
    static ListBoxSkin* changedListBox;
    // Does nothing.
    void emitChangedSignal(bool changed);

    // The number of items.
    uint count() const;
    // Null outside.
    ListBoxSkinItem* item(int index) const;
    // -1 for items that are not in this list box.
    int index(const ListBoxSkinItem* item) const;
    // Null for an empty list box.
    ListBoxSkinItem* firstItem() const;
    // Null outside.
    QString text(int index) const;
    const QPixmap* pixmap(int index) const;

    // Insertion. The list box owns the item from then on. A negative index, and one beyond the end, appends; an item
    // that should come after null or an item that is elsewhere comes first. An item that is in a list box already is
    // not inserted; null brings a warning. A list box that has the focus and no current item makes the first item the
    // current one and emits highlighted() with item, text (an empty one, too) and index.
    void insertItem(const ListBoxSkinItem* item, int index = -1);
    void insertItem(const ListBoxSkinItem* item, const ListBoxSkinItem* after);
    void insertItem(const QString& text, int index = -1);
    void insertItem(const QPixmap& pixmap, int index = -1);
    void insertItem(const QPixmap& pixmap, const QString& text, int index = -1);
    // Strings come in their order; C strings are read as Latin-1. A negative number of them means that null ends them.
    void insertStringList(const QStringList& list, int index = -1);
    void insertStrList(const QStrList* list, int index = -1);
    void insertStrList(const QStrList& list, int index = -1);
    void insertStrList(const char** strings, int numStrings = -1, int index = -1);
    // Before the first item whose text is not smaller by code points, upper and lower case apart. Returns the index,
    // -1 where nothing was inserted.
    int inSort(const ListBoxSkinItem* item);
    int inSort(const QString& text);

    // Takes the item out without deleting it; the caller owns it then. It keeps its links and its listBox(). If it was
    // the current item, the next one, else the previous one, becomes current: highlighted() with item (null with none
    // left), text (unless empty) and index, then currentChanged(). If it was selected, selectionChanged() follows.
    void takeItem(const ListBoxSkinItem* item);
    // The same, and deletes it.
    void removeItem(int index);
    // The new item stands in the place of the old one, which is deleted, and becomes current.
    void changeItem(const ListBoxSkinItem* item, int index);
    void changeItem(const QString& text, int index);
    void changeItem(const QPixmap& pixmap, int index);
    void changeItem(const QPixmap& pixmap, const QString& text, int index);
    // Deletes all items, without a signal. Row and column count of the layout modes go back to 1.
    void clear();
    // By text and code points, upper and lower case apart; equal texts keep their order. Scrolls to the top left.
    void sort(bool ascending = true);

    // The item whose text begins with this, in upper or lower case: the current item or the next one after it, around
    // the end. Null for an empty text.
    ListBoxSkinItem* findItem(const QString& text) const;

    // The current item's index, -1 for none.
    int currentItem() const;
    // The current item's text, null for none.
    QString currentText() const { return text(currentItem()); }
    // Makes an item current, and scrolls it into view soon. In Single mode it is selected too, if it is selectable.
    // Emits, each as far as it applies: selectionChanged(item), selectionChanged(), highlighted() with item, text
    // (unless empty) and index, currentChanged().
    virtual void setCurrentItem(int index);
    virtual void setCurrentItem(ListBoxSkinItem* item);
    // Scrolls just as far as needed; the name is the toolkit's.
    void centerCurrentItem() { ensureCurrentVisible(); }

    // The first item in the first fully visible row, in the first visible column.
    int topItem() const;
    // Scroll the item to the top or the bottom, as far as the contents reach.
    virtual void setTopItem(int index);
    virtual void setBottomItem(int index);

    // Single at start.
    SelectionMode selectionMode() const;
    // Leaves the selection as it is.
    virtual void setSelectionMode(SelectionMode mode);
    // Multi or Single.
    void setMultiSelection(bool multi);
    // Multi or Extended.
    bool isMultiSelection() const;
    // Nothing happens to an item that is not selectable, and in NoSelection mode. In Single mode the item becomes the
    // current one. Emits selectionChanged(item) in Single mode when selecting, selectionChanged(), and what tells of a
    // new current item.
    void setSelected(int index, bool select);
    virtual void setSelected(ListBoxSkinItem* item, bool select);
    // False for a bad index or null.
    bool isSelected(int index) const;
    bool isSelected(const ListBoxSkinItem* item) const;
    // Toggles the current item in Multi and Extended mode.
    void toggleCurrentItem();
    // Selects, or with invert toggles, the items from one to another in either order, and with clearSel deselects all
    // others. Without includeFirst the item `from` is left out. Items that are not selectable are never selected by
    // this. Emits selectionChanged() once, if anything changed.
    void selectRange(ListBoxSkinItem* from, ListBoxSkinItem* to, bool invert, bool includeFirst, bool clearSel);
    // Brings the selection in line after a key has moved the current item away from `old`.
    void handleItemChange(ListBoxSkinItem* old, bool shift, bool control);

    // How items are divided into rows and columns. Setting one direction frees the other, which Variable tells and
    // cannot be used to ask for. Numbers count as 1 at least.
    LayoutMode rowMode() const;
    LayoutMode columnMode() const;
    virtual void setColumnMode(LayoutMode mode);
    virtual void setColumnMode(int columns);
    virtual void setRowMode(LayoutMode mode);
    virtual void setRowMode(int rows);
    // Whether columns may differ in width, off at start, and rows in height, on at start.
    bool variableWidth() const;
    virtual void setVariableWidth(bool variable);
    bool variableHeight() const;
    virtual void setVariableHeight(bool variable);

    // Lays out what has changed, unless the size changed within the last 100 ms.
    void doLayout() const;
    // Computes a grid of this many rows and columns, 1 at least. The next layout replaces it.
    void tryGeometry(int rows, int columns) const;
    // Schedules a repaint of everything that has changed, with doLayout true a layout and a repaint of everything.
    void triggerUpdate(bool doLayout);
    // Schedules a repaint of one item.
    void updateItem(int index);
    void updateItem(ListBoxSkinItem* item);

    // As laid out last.
    int numRows() const;
    int numColumns() const;
    // The row at a contents coordinate; the upper edge of a row belongs to it, and the lower edge of the last row to
    // that. Intended: beyond the last row the index of the last item, which is no row.
    int rowAt(int y) const;
    // The column at a contents coordinate; outside the first or last one.
    int columnAt(int x) const;
    // The row and column of the current item, -1 for none.
    int currentRow() const;
    int currentColumn() const;
    // The item's cell in viewport coordinates. Invalid for items that are out of sight or elsewhere.
    QRect itemRect(ListBoxSkinItem* item) const;
    // The height of the row that the item lies in; 0 outside.
    int itemHeight(int index = 0) const;
    // Stores where the item's cell begins in viewport coordinates. False, and nothing is stored, for items out of
    // sight.
    bool itemYPos(int index, int* yPos) const;
    // The item at a point in viewport coordinates; null where there is none.
    ListBoxSkinItem* itemAt(QPoint point) const;
    // Whether at least a part of the item is in sight.
    bool itemVisible(int index);
    bool itemVisible(const ListBoxSkinItem* item);
    // Items of which at least a part is in sight.
    int numItemsVisible() const;
    // The width of all columns together.
    long maxItemWidth() const;

    // What ten columns and rows need, between 40 and 200 pixels each way.
    QSize sizeHint() const override;
    // What the first column and row need with a scroll bar, between 10 and 200 pixels each way.
    QSize minimumSizeHint() const override;

    // Makes both highlight pictures this large. Negative sizes do nothing.
    void redrawHighlightImages(int w, int h);
    // The alpha of the scroll bar, the highlight pictures and the items' pen.
    void setAlphaOverride(unsigned char alpha) override;
    // The picture behind the items. It is aligned with those of the widgets around. A null picture brings a warning
    // and is set all the same.
    void setBackgroundPixmap(const QPixmap& pm) override;
    // Measures and lays out everything anew, soon.
    void setFont(const QFont& font) override;

    // A rubber band is being drawn.
    bool isRubberSelecting() const;

    // Kept for applications from before there were layout modes.
    bool dragSelect() const { return true; }
    void setDragSelect(bool) {}
    bool autoScroll() const { return true; }
    void setAutoScroll(bool) {}
    bool autoScrollBar() const { return vScrollBarMode() == Auto; }
    void setAutoScrollBar(bool enable) { setVScrollBarMode(enable ? Auto : AlwaysOff); }
    bool scrollBar() const { return vScrollBarMode() != AlwaysOff; }
    void setScrollBar(bool enable) { setVScrollBarMode(enable ? AlwaysOn : AlwaysOff); }
    bool autoBottomScrollBar() const { return hScrollBarMode() == Auto; }
    void setAutoBottomScrollBar(bool enable) { setHScrollBarMode(enable ? Auto : AlwaysOff); }
    bool bottomScrollBar() const { return hScrollBarMode() != AlwaysOff; }
    void setBottomScrollBar(bool enable) { setHScrollBarMode(enable ? AlwaysOn : AlwaysOff); }
    bool smoothScrolling() const { return false; }
    void setSmoothScrolling(bool) {}
    bool autoUpdate() const { return true; }
    void setAutoUpdate(bool) {}
    // As high as this many lines of text.
    void setFixedVisibleLines(int lines);
    // Names of before for itemHeight(), maxItemWidth() and numColumns().
    int cellHeight(int index) const { return itemHeight(index); }
    int cellHeight() const { return itemHeight(); }
    int cellWidth() const { return int(maxItemWidth()); }
    int cellWidth(int) const { return int(maxItemWidth()); }
    int numCols() const { return numColumns(); }

public slots:
    // Scrolls the current item into view.
    virtual void ensureCurrentVisible();
    // selectAll(false).
    virtual void clearSelection();
    // In Single mode the current item only. In Multi and Extended mode all items that are selectable, with one
    // selectionChanged() in any case.
    void selectAll(bool select);
    // In Multi and Extended mode every item that is selectable, with one selectionChanged().
    void invertSelection();
    // Forgets what has been typed.
    void clearInputString();
    // Lays out and paints what is due.
    void refreshSlot();
    // Scrolls on by a row or column while something is dragged beyond the viewport.
    void doAutoScroll();
    // Lays out after the last of a burst of resizes.
    void adjustItems();

public:
    // Paints one cell, whose top-left corner is the painter's origin: the highlight, to the painter's clip region, and
    // the item. Cells without an item are not painted.
    virtual void paintCell(QPainter* p, int row, int column);

signals:
    // There is a new current item.
    void highlighted(int index);
    // Return or a double click, on the current item.
    void selected(int index);
    // There is a new current item: its text, where that is not empty.
    void highlighted(const QString& text);
    // Like selected(int), with the text where that is not empty.
    void selected(const QString& text);
    // There is a new current item; null where the last one is gone.
    void highlighted(ListBoxSkinItem* item);
    // Return or a double click, on the current item.
    void selected(ListBoxSkinItem* item);
    // Some item was selected or deselected.
    void selectionChanged();
    // Single mode: this item was selected.
    void selectionChanged(ListBoxSkinItem* item);
    // Null once the list box has become empty.
    void currentChanged(ListBoxSkinItem* item);
    // Released where it was pressed. The item is null on empty space, points are global, in these and the following
    // signals of the stylus.
    void clicked(ListBoxSkinItem* item);
    void clicked(ListBoxSkinItem* item, const QPoint& point);
    // The stylus went down.
    void pressed(ListBoxSkinItem* item);
    void pressed(ListBoxSkinItem* item, const QPoint& point);
    // On the current item.
    void doubleClicked(ListBoxSkinItem* item);
    void returnPressed(ListBoxSkinItem* item);
    // The right button was released where it was pressed, and went down.
    void rightButtonClicked(ListBoxSkinItem* item, const QPoint& point);
    void rightButtonPressed(ListBoxSkinItem* item, const QPoint& point);
    // Any button, a number of Qt::MouseButton, went down, and was released where it was pressed.
    void mouseButtonPressed(int button, ListBoxSkinItem* item, const QPoint& point);
    void mouseButtonClicked(int button, ListBoxSkinItem* item, const QPoint& point);
    // The pointer, with no button held, has come to another item, or left the items.
    void onItem(ListBoxSkinItem* item);
    void onViewport();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;

    void viewportPaintEvent(QPaintEvent* event) override;
    void viewportResizeEvent(QResizeEvent* event) override;
    // These pass the event on to the handlers above, in viewport coordinates.
    void viewportMousePressEvent(QMouseEvent* event) override;
    void viewportMouseReleaseEvent(QMouseEvent* event) override;
    void viewportMouseDoubleClickEvent(QMouseEvent* event) override;
    void viewportMouseMoveEvent(QMouseEvent* event) override;

    // Kept for applications from before there were layout modes.
    void updateCellWidth() {}
    int totalWidth() const { return contentsWidth(); }
    int totalHeight() const { return contentsHeight(); }
    int findItem(int yPos) const { return index(itemAt(QPoint(0, yPos))); }

    // Selects what the rubber band covers now and deselects what it has left. Both are contents rectangles.
    void doRubberSelection(const QRect& old, const QRect& rubber);
    // Draws the rubber band, where there is one, in viewport coordinates.
    void drawRubber(QPainter* painter);

private:
    friend class ListBoxSkinItem;
    friend class ListBoxSkinPrivate;

    enum class EmptyTexts { Told, Untold };

    struct KeyStroke;

    bool accepts(const ListBoxSkinItem* item) const;
    void adopt(ListBoxSkinItem* item, int index);
    bool replaceItem(ListBoxSkinItem* item, int index);

    bool layOut() const;
    bool measure() const;
    void fitContents() const;
    QRegion dirtyRegion() const;
    bool laidOutCell(const ListBoxSkinItem* item, QRect& cell) const;
    bool isCellVisible(int index) const;
    void scrollTo(const QRect& cell, int y);

    void paintHighlight(QPainter* p, const QSize& cell);
    void paintCells(QPainter& painter, QRegion& rest);
    void notePainted(ListBoxSkinItem* item, const QRect& cell, const QRegion& shown) const;

    bool emitHighlighted(ListBoxSkinItem* item, EmptyTexts emptyTexts);
    void emitCurrentChanged(ListBoxSkinItem* item);
    void emitSelected(void (ListBoxSkin::*last)(ListBoxSkinItem*));
    bool mayOverrideSetSelected() const;
    void selectCurrentAlone();

    static bool isCommand(const QKeyEvent* event, const KeyStroke& stroke);
    void runCommand(int key, const KeyStroke& stroke);
    void moveTo(int target, const KeyStroke& stroke, void (ListBoxSkin::*scrollItem)(int) = nullptr);
    void movePageUp(const KeyStroke& stroke);
    void movePageDown(const KeyStroke& stroke);
    void updateAnchor(bool shift);

    void pressOn(ListBoxSkinItem* item, Qt::KeyboardModifiers modifiers);
    void pressExtended(ListBoxSkinItem* item, bool shift, bool control);
    void pressOnEmpty(const QMouseEvent* event);
    void hover(const QPoint& at);
    void followStylus();
    void dragTo(const QPoint& cell);
    void selectCells(const QRect& cells, bool select, bool alone);
    QPoint cellUnder(const QPoint& point) const;
    void startAutoScroll();
    void stopAutoScroll();
    void stretchRubber();
    void endRubber();

    std::unique_ptr<ListBoxSkinPrivate> d;
};

#endif
