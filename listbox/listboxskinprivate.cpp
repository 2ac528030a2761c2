#include "listbox/listboxskinprivate.h"

#include "toolkit/pixels.h"
#include "toolkit/toolkit.h"

#include <QPaintDevice>

#include <algorithm>

namespace
{

constexpr QRgb orange = 0xff6600;
constexpr QRgb grey = 0x8c8c8c;
constexpr int inputInterval = 500;

// An item may have entries in list boxes that it was taken from; this is where to look for them.
std::vector<ListBoxSkinPrivate*>& allPrivates()
{
    static std::vector<ListBoxSkinPrivate*> all;
    return all;
}

int divideUp(int number, int by)
{
    return int((qint64(number) + by - 1) / by);
}

} // namespace

void HighlightPicture::create(const QSize& size, uchar alpha)
{
    // A picture without pixels has no width either, so that the next cell replaces it.
    m_size = size.isEmpty() ? QSize(0, 0) : size;
    m_alpha = alpha;
    if (m_image.isNull())
        return;
    const QSize kept = m_image.size().boundedTo(m_size);
    m_image = QImage(kept, QImage::Format_ARGB32);
    m_image.fill((QRgb(alpha) << 24) | m_colour);
}

void HighlightPicture::copyTo(QPaintDevice* device, const QRect& rect)
{
    const QSize needed = rect.size().boundedTo(m_size);
    if (needed.isEmpty())
        return;
    if (needed.width() > m_image.width() || needed.height() > m_image.height()) {
        m_image = QImage(needed.expandedTo(m_image.size()), QImage::Format_ARGB32);
        m_image.fill((QRgb(m_alpha) << 24) | m_colour);
    }
    bitBlt(device, rect.x(), rect.y(), &m_image, 0, 0, needed.width(), needed.height(), 0);
}

ListBoxSkinPrivate::ListBoxSkinPrivate(ListBoxSkin* listbox)
    : q(listbox),
      chain(listbox),
      focusPicture(orange),
      noFocusPicture(grey)
{
    allPrivates().push_back(this);
}

ListBoxSkinPrivate::~ListBoxSkinPrivate()
{
    if (chain.head())
        qWarning("ASSERT: \"%s\" in %s (%d)", "!head", "listbox_skin", 113);
    for (ItemWatch* watch : watches) {
        watch->m_owner = nullptr;
        watch->m_item = nullptr;
    }
    for (ListBoxSkinItem* item : taken)
        item->place.box = nullptr;
    std::vector<ListBoxSkinPrivate*>& all = allPrivates();
    all.erase(std::find(all.begin(), all.end(), this));
}

void ListBoxSkinPrivate::forget(ListBoxSkinItem* item)
{
    skinwidgets::ItemChain::leaveDoomed(item);
    if (!item->chained && item->place.box)
        item->place.box->d->taken.remove(item);
    if (!item->hasEntry)
        return;
    for (ListBoxSkinPrivate* d : allPrivates())
        d->selectable.remove(item);
}

void ListBoxSkinPrivate::itemLeaves(const ListBoxSkinItem* item, ListBoxSkinItem* replacement)
{
    if (current == item)
        current = replacement;
    if (currentBeforeRubber == item)
        currentBeforeRubber = replacement;
    // After the current item, whose place it takes.
    if (selectAnchor == item)
        selectAnchor = current;
    if (hovered == item)
        hovered = nullptr;
    if (pressedItem == item) {
        pressedItem = nullptr;
        pressedItemLeft = true;
    }
    for (ItemWatch* watch : watches)
        if (watch->m_item == item)
            watch->m_item = nullptr;
}

void ListBoxSkinPrivate::forgetItems()
{
    current = nullptr;
    currentBeforeRubber = nullptr;
    selectAnchor = nullptr;
    hovered = nullptr;
    pressedItemLeft |= pressedItem != nullptr;
    pressedItem = nullptr;
    for (ItemWatch* watch : watches)
        watch->m_item = nullptr;
}

void ListBoxSkinPrivate::startPress(ListBoxSkinItem* item)
{
    dragOrigin = item ? cellOf(chain.indexOf(item)) : QPoint(-1, -1);
    mousePressColumn = dragOrigin.x();
    mousePressRow = dragOrigin.y();
    mouseMoveColumn = -1;
    mouseMoveRow = -1;
    ignoreMoves = false;
    pressedItem = item;
    pressedItemLeft = false;
    selectOnRelease = false;
    dragState = true;
    dragsRange = false;
}

void ListBoxSkinPrivate::endPress()
{
    mousePressColumn = -1;
    mousePressRow = -1;
    pressedItem = nullptr;
    pressedItemLeft = false;
}

void ListBoxSkinPrivate::startUpdateTimer()
{
    // One that runs already has nothing left of its 0 ms.
    if (!updateTimer->isActive())
        updateTimer->start(0);
}

QPoint ListBoxSkinPrivate::cellOf(int index) const
{
    const int rows = std::max(rowPos.cells(), 1);
    return {index / rows, index % rows};
}

void ListBoxSkinPrivate::noteCurrentCell()
{
    const QPoint cell = cellOf(chain.indexOf(current));
    currentColumn = cell.x();
    currentRow = cell.y();
}

bool ListBoxSkinPrivate::hasCell(int row, int column) const
{
    return row >= 0 && column >= 0 && row < rowPos.cells() && column < columnPos.cells();
}

QRect ListBoxSkinPrivate::cellRect(int row, int column) const
{
    return {columnPos.at(column), rowPos.at(row), columnPos.length(column), rowPos.length(row)};
}

ListBoxSkinItem* ListBoxSkinPrivate::itemIn(int row, int column) const
{
    return row < 0 || column < 0 ? nullptr : chain.at(qint64(rowPos.cells()) * column + row);
}

QRect ListBoxSkinPrivate::cellsUnder(const QRect& contents) const
{
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;
    columnPos.cellsBetween(contents.left(), contents.left() + contents.width(), left, right);
    rowPos.cellsBetween(contents.top(), contents.top() + contents.height(), top, bottom);
    return left > right || top > bottom ? QRect() : QRect(QPoint(left, top), QPoint(right, bottom));
}

bool ListBoxSkinPrivate::setSelected(ListBoxSkinItem* item, bool selected)
{
    if (!chain.select(item, selected))
        return false;
    q->updateItem(item);
    return true;
}

bool ListBoxSkinPrivate::deselectAll()
{
    const bool any = chain.selectedCount() > 0;
    chain.visitSelected([this](ListBoxSkinItem* item, int) { setSelected(item, false); });
    return any;
}

bool ListBoxSkinPrivate::deselectOutside(int first, int last)
{
    bool changed = false;
    chain.visitSelected([&](ListBoxSkinItem* item, int index) {
        if (index < first || index > last)
            changed |= setSelected(item, false);
    });
    return changed;
}

bool ListBoxSkinPrivate::selectCells(const QRect& cells, bool select)
{
    bool changed = false;
    for (int column = cells.left(); column <= cells.right(); ++column) {
        ListBoxSkinItem* item = itemIn(cells.top(), column);
        for (int row = cells.top(); item && row <= cells.bottom(); ++row, item = item->n)
            if (!select || item->isSelectable())
                changed |= setSelected(item, select);
    }
    return changed;
}

void ListBoxSkinPrivate::findItemByName(const QString& text)
{
    inputTimer->start(inputInterval);
    currInputString += text.toLower();
    ListBoxSkinItem* found = q->findItem(currInputString);
    if (!found)
        return;
    const QPointer<ListBoxSkin> self(q);
    const ItemWatch item(this, found);
    q->setCurrentItem(found);
    if (!self || !item.item() || selectionMode != ListBoxSkin::Extended)
        return;
    const bool blocked = q->blockSignals(true);
    q->selectAll(false);
    q->blockSignals(blocked);
    if (item.item()->isSelectable() && setSelected(item.item(), true))
        emit q->selectionChanged();
}

void ListBoxSkinPrivate::place(int rows, int columns)
{
    rows = std::max(rows, 1);
    columns = std::max(columns, 1);
    const int shown = int(std::min<qint64>(chain.count(), qint64(rows) * columns));
    const int usedRows = std::min(rows, shown);
    const int usedColumns = divideUp(shown, rows);
    const int index = chain.indexOf(current);
    if (index >= 0 && index < shown) {
        currentRow = index % rows;
        currentColumn = index / rows;
    }

    std::vector<int> widths;
    std::vector<int> heights;
    const bool allShown = shown == chain.count();
    const bool equalHeights = q->fixedRowHeight > 0 || !variableHeight || chain.lowest() == chain.highest();
    const bool equalWidths = !variableWidth || usedColumns <= 1;
    if (!allShown || !equalHeights || !equalWidths) {
        widths.resize(size_t(usedColumns));
        heights.resize(size_t(usedRows));
        size_t row = 0;
        size_t column = 0;
        chain.visitSizes(shown, [&](int width, int height) {
            widths[column] = std::max(widths[column], width);
            heights[row] = std::max(heights[row], height);
            if (++row == size_t(rows)) {
                row = 0;
                ++column;
            }
        });
    }
    const auto greatest = [allShown](const std::vector<int>& lengths, int ofAll) {
        if (allShown)
            return ofAll;
        return lengths.empty() ? 0 : *std::max_element(lengths.begin(), lengths.end());
    };

    if (equalWidths)
        columnPos.setEqual(columns, variableWidth ? usedColumns : columns, greatest(widths, chain.widest()));
    else
        columnPos.setLengths(columns, widths);

    if (q->fixedRowHeight > 0)
        rowPos.setEqual(rows, rows, q->fixedRowHeight);
    else if (!variableHeight || (allShown && equalHeights))
        rowPos.setEqual(rows, variableHeight ? usedRows : rows, greatest(heights, chain.highest()));
    else
        rowPos.setLengths(rows, heights);
}

void ListBoxSkinPrivate::fit()
{
    const int count = chain.count();
    switch (q->rowMode()) {
    case ListBoxSkin::FixedNumber:
        place(numRows, divideUp(count, numRows));
        return;
    case ListBoxSkin::FitToHeight:
        fitRows();
        return;
    case ListBoxSkin::Variable:
        break;
    }
    if (columnMode == ListBoxSkin::FixedNumber)
        place(divideUp(count, numColumns), numColumns);
    else
        fitColumns();
}

void ListBoxSkinPrivate::fitRows()
{
    const int count = chain.count();
    const auto tryRows = [this, count](int rows) { place(rows, divideUp(count, rows)); };
    if (count == 0) {
        place(1, 1);
        return;
    }
    const int highest = std::max(chain.highest(), 1);
    int space = q->viewportSize(1, 1).height();
    for (;;) {
        int rows = std::clamp(space / highest, 1, count);
        if (variableHeight && rows < count) {
            do
                tryRows(++rows);
            while (rows <= count && rowPos.total() <= space);
            --rows;
        }
        tryRows(rows);
        const int spaceBefore = space;
        space = std::min(space, q->viewportSize(columnPos.total(), rowPos.total()).height());
        // Rows of a fixed height may never fit; another round would give the same.
        if (rowPos.cells() <= 1 || space >= rowPos.total() || space == spaceBefore)
            return;
    }
}

void ListBoxSkinPrivate::fitColumns()
{
    const int count = chain.count();
    const auto tryColumns = [this, count](int columns) { place(divideUp(count, columns), columns); };
    if (count == 0) {
        place(1, 1);
        return;
    }
    const int widest = std::max(chain.widest(), 1);
    int space = q->viewportSize(1, 1).width();
    for (;;) {
        int columns = std::clamp(space / widest, 1, count);
        if (variableWidth && columns < count) {
            do
                tryColumns(++columns);
            while (columns <= count && columnPos.total() <= space);
            --columns;
        }
        tryColumns(columns);
        const int spaceBefore = space;
        space = std::min(space, q->viewportSize(columnPos.total(), rowPos.total()).width());
        if (columnPos.cells() <= 1 || space >= columnPos.total() || space == spaceBefore)
            return;
    }
}

ItemWatch::ItemWatch(ListBoxSkinPrivate* owner, ListBoxSkinItem* item) : m_owner(owner), m_item(item)
{
    m_owner->watches.push_back(this);
}

ItemWatch::~ItemWatch()
{
    // The last one that was made, as a rule.
    if (m_owner)
        m_owner->watches.erase(std::find(m_owner->watches.begin(), m_owner->watches.end(), this));
}
