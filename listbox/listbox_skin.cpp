#include "listbox/listbox_skin.h"

#include "listbox/listboxskinprivate.h"
#include "scroll/scrollbarskin.h"
#include "toolkit/qstrlist.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionRubberBand>

#include <algorithm>
#include <memory>
#include <typeinfo>
#include <utility>

ListBoxSkin* ListBoxSkin::changedListBox = nullptr;

namespace
{

constexpr int resizeInterval = 100;
constexpr int visibleInterval = 1;
constexpr int scrollInterval = 100;

constexpr int hintedCells = 10;
constexpr int mostHinted = 200;
constexpr int leastHinted = 40;
constexpr int leastMinimum = 10;

constexpr QColor multiColumnHighlight(100, 100, 210);

QTimer* createTimer(ListBoxSkin* parent, const char* name, void (ListBoxSkin::*slot)())
{
    auto* timer = new QTimer(parent);
    timer->setObjectName(QLatin1String(name));
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, parent, slot);
    return timer;
}

int hintedLength(const skinwidgets::CellEdges& edges)
{
    int cell = 0;
    while (cell < hintedCells && cell < edges.cells() && edges.at(cell) < mostHinted)
        ++cell;
    return std::clamp(edges.at(cell), leastHinted, mostHinted);
}

bool isPrintable(const QString& text)
{
    const QList<uint> codes = text.left(2).toUcs4();
    return !codes.isEmpty() && QChar::isPrint(codes.first());
}

QColor penColour(uchar alpha)
{
    return {255, 255, 255, alpha};
}

// -1, 0 or 1: on which side of the viewport a coordinate lies.
int sideOf(int at, int length)
{
    if (at < 0)
        return -1;
    return at >= length ? 1 : 0;
}

// Where to scroll to for one more cell on that side to be whole in sight.
int nextStop(const skinwidgets::CellEdges& edges, int position, int visible, int side)
{
    if (side == 0 || edges.cells() == 0)
        return position;
    if (side < 0) {
        const int cell = edges.cellAt(position);
        return edges.at(edges.at(cell) < position ? cell : std::max(cell - 1, 0));
    }
    const int end = int(std::min<qint64>(qint64(position) + visible, edges.total()));
    const int cell = edges.cellAt(end);
    return std::max(edges.at(cell + 1) - visible, 0);
}

} // namespace

struct ListBoxSkin::KeyStroke {
    bool shift;
    bool control;
};

ListBoxSkin::ListBoxSkin(QWidget* parent, const char* name, WFlags f)
    : ScrollViewSkin(parent, name, f),
      d(std::make_unique<ListBoxSkinPrivate>(this))
{
    d->updateTimer = createTimer(this, "listbox update timer", &ListBoxSkin::refreshSlot);
    d->visibleTimer = createTimer(this, "listbox visible timer", &ListBoxSkin::ensureCurrentVisible);
    d->inputTimer = createTimer(this, "listbox input timer", &ListBoxSkin::clearInputString);
    d->resizeTimer = createTimer(this, "listbox resize timer", &ListBoxSkin::adjustItems);

    connect(qApp, &QGuiApplication::fontDatabaseChanged, this, [this] {
        d->chain.forgetFont();
        triggerUpdate(true);
    });

    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    // Widths of 0 alone do not keep a style from drawing a frame.
    setFrameStyle(NoFrame);
    setLineWidth(0);
    setMargin(0);
    setHScrollBarMode(AlwaysOff);
    viewport()->setFocusProxy(this);
    viewport()->setFocusPolicy(Qt::StrongFocus);
}

ListBoxSkin::~ListBoxSkin()
{
    if (changedListBox == this)
        changedListBox = nullptr;
    ListBoxSkin::clear();
}

void ListBoxSkin::emitChangedSignal(bool /*changed*/) {}

// The chain of items.

uint ListBoxSkin::count() const
{
    return uint(d->chain.count());
}

ListBoxSkinItem* ListBoxSkin::item(int index) const
{
    return d->chain.at(index);
}

int ListBoxSkin::index(const ListBoxSkinItem* item) const
{
    return d->chain.indexOf(item);
}

ListBoxSkinItem* ListBoxSkin::firstItem() const
{
    return d->chain.head();
}

QString ListBoxSkin::text(int index) const
{
    const ListBoxSkinItem* found = item(index);
    return found ? found->text() : QString();
}

const QPixmap* ListBoxSkin::pixmap(int index) const
{
    const ListBoxSkinItem* found = item(index);
    return found ? found->pixmap() : nullptr;
}

bool ListBoxSkin::accepts(const ListBoxSkinItem* item) const
{
    if (!item)
        qWarning("ASSERT: \"%s\" in %s (%d)", "lbi != 0", "listbox_skin", 505);
    return item && !item->chained;
}

void ListBoxSkin::insertItem(const ListBoxSkinItem* item, int index)
{
    if (!accepts(item))
        return;
    const int count = d->chain.count();
    adopt(const_cast<ListBoxSkinItem*>(item), index < 0 ? count : std::min(index, count));
}

void ListBoxSkin::insertItem(const ListBoxSkinItem* item, const ListBoxSkinItem* after)
{
    if (accepts(item))
        adopt(const_cast<ListBoxSkinItem*>(item), d->chain.indexOf(after) + 1);
}

// The item is not measured: its own constructor may be what calls.
void ListBoxSkin::adopt(ListBoxSkinItem* item, int index)
{
    if (item->place.box)
        item->place.box->d->taken.remove(item);
    d->chain.insert(item, index);
    item->dirty = true;
    item->paintedAcross = false;
    triggerUpdate(true);
    if (d->current || d->rubber || !hasFocus())
        return;
    d->current = d->chain.head();
    updateItem(d->current);
    emitHighlighted(d->current, EmptyTexts::Told);
}

void ListBoxSkin::insertItem(const QString& text, int index)
{
    insertItem(std::make_unique<ListBoxSkinText>(text).release(), index);
}

void ListBoxSkin::insertItem(const QPixmap& pixmap, int index)
{
    insertItem(std::make_unique<ListBoxSkinPixmap>(pixmap).release(), index);
}

void ListBoxSkin::insertItem(const QPixmap& pixmap, const QString& text, int index)
{
    insertItem(std::make_unique<ListBoxSkinPixmap>(pixmap, text).release(), index);
}

void ListBoxSkin::insertStringList(const QStringList& list, int index)
{
    const QPointer<ListBoxSkin> self(this);
    // A receiver may change the list that is being read.
    const QStringList strings = list; // NOLINT(performance-unnecessary-copy-initialization)
    for (const QString& string : strings) {
        if (!self)
            return;
        insertItem(string, index);
        if (index >= 0)
            ++index;
    }
}

void ListBoxSkin::insertStrList(const QStrList* list, int index)
{
    if (list)
        insertStrList(*list, index);
}

void ListBoxSkin::insertStrList(const QStrList& list, int index)
{
    QStringList strings;
    for (const char* string : list)
        strings.append(QString::fromLatin1(string));
    insertStringList(strings, index);
}

void ListBoxSkin::insertStrList(const char** strings, int numStrings, int index)
{
    if (!strings)
        return;
    QStringList copies;
    for (int i = 0; numStrings < 0 ? strings[i] != nullptr : i < numStrings; ++i)
        copies.append(QString::fromLatin1(strings[i]));
    insertStringList(copies, index);
}

int ListBoxSkin::inSort(const ListBoxSkinItem* item)
{
    if (!accepts(item))
        return -1;
    const QString text = item->text();
    const ListBoxSkinItem* next = d->chain.head();
    while (next && skinwidgets::textLess(next->text(), text))
        next = next->n;
    const QPointer<ListBoxSkin> self(this);
    const ItemWatch watch(d.get(), const_cast<ListBoxSkinItem*>(item));
    insertItem(item, d->chain.indexOf(next));
    return self ? index(watch.item()) : -1;
}

int ListBoxSkin::inSort(const QString& text)
{
    return inSort(std::make_unique<ListBoxSkinText>(text).release());
}

void ListBoxSkin::takeItem(const ListBoxSkinItem* taken)
{
    if (!taken || d->clearing)
        return;
    triggerUpdate(true);
    // The destructor of an item that was taken out before comes here, too.
    if (!d->chain.contains(taken))
        return;

    auto* item = const_cast<ListBoxSkinItem*>(taken);
    const bool wasCurrent = d->current == item;
    const bool wasSelected = item->s;
    if (d->chain.head() == item) {
        d->currentRow = -1;
        d->currentColumn = -1;
    }
    d->chain.remove(item);
    d->taken.insert(item);
    d->itemLeaves(item, item->n ? item->n : item->p);

    const QPointer<ListBoxSkin> self(this);
    if (wasCurrent)
        emitCurrentChanged(d->current);
    if (self && wasSelected)
        emit selectionChanged();
}

void ListBoxSkin::removeItem(int index)
{
    ListBoxSkinItem* removed = item(index);
    if (!removed)
        return;
    // The constructor that is running needs its object.
    if (removed->constructing)
        takeItem(removed);
    else
        delete removed;
}

// True where the item was inserted.
bool ListBoxSkin::replaceItem(ListBoxSkinItem* item, int index)
{
    if (!item || item->chained || !d->chain.at(index))
        return false;
    const QPointer<ListBoxSkin> self(this);
    removeItem(index);
    if (!self)
        return false;
    const ItemWatch watch(d.get(), item);
    insertItem(item, index);
    if (self && watch.item())
        setCurrentItem(watch.item());
    return true;
}

void ListBoxSkin::changeItem(const ListBoxSkinItem* item, int index)
{
    replaceItem(const_cast<ListBoxSkinItem*>(item), index);
}

void ListBoxSkin::changeItem(const QString& text, int index)
{
    auto item = std::make_unique<ListBoxSkinText>(text);
    if (replaceItem(item.get(), index))
        (void)item.release();
}

void ListBoxSkin::changeItem(const QPixmap& pixmap, int index)
{
    auto item = std::make_unique<ListBoxSkinPixmap>(pixmap);
    if (replaceItem(item.get(), index))
        (void)item.release();
}

void ListBoxSkin::changeItem(const QPixmap& pixmap, const QString& text, int index)
{
    auto item = std::make_unique<ListBoxSkinPixmap>(pixmap, text);
    if (replaceItem(item.get(), index))
        (void)item.release();
}

void ListBoxSkin::clear()
{
    const bool blocked = blockSignals(true);
    const bool clearing = std::exchange(d->clearing, true);
    d->forgetItems();
    d->chain.deleteAll();
    d->layoutDirty = true;
    d->numRows = 1;
    d->numColumns = 1;
    d->currentRow = 0;
    d->currentColumn = 0;
    d->mouseMoveRow = -1;
    d->mouseMoveColumn = -1;
    d->mousePressRow = -1;
    d->mousePressColumn = -1;
    d->selectable.clear();
    clearSelection(); // NOLINT(clang-analyzer-optin.cplusplus.VirtualCall)
    blockSignals(blocked);
    triggerUpdate(true);
    d->clearing = clearing;
}

void ListBoxSkin::sort(bool ascending)
{
    d->chain.sort(ascending);
    triggerUpdate(true);
    setContentsPos(0, 0);
}

ListBoxSkinItem* ListBoxSkin::findItem(const QString& text) const
{
    if (text.isEmpty())
        return nullptr;
    const auto firstMatch = [&text](ListBoxSkinItem* from, const ListBoxSkinItem* end) {
        while (from != end && !from->text().startsWith(text, Qt::CaseInsensitive))
            from = from->n;
        return from;
    };
    ListBoxSkinItem* start = d->current ? d->current : d->chain.head();
    if (ListBoxSkinItem* found = firstMatch(start, nullptr))
        return found;
    ListBoxSkinItem* found = firstMatch(d->chain.head(), start);
    return found == start ? nullptr : found;
}

// Layout.

ListBoxSkin::LayoutMode ListBoxSkin::rowMode() const
{
    return d->rowModeWins ? d->rowMode : Variable;
}

ListBoxSkin::LayoutMode ListBoxSkin::columnMode() const
{
    return d->rowModeWins ? Variable : d->columnMode;
}

void ListBoxSkin::setColumnMode(LayoutMode mode)
{
    if (mode == Variable)
        return;
    d->columnMode = mode;
    d->rowModeWins = false;
    triggerUpdate(true);
}

void ListBoxSkin::setColumnMode(int columns)
{
    d->numColumns = std::max(columns, 1);
    ListBoxSkin::setColumnMode(FixedNumber);
}

void ListBoxSkin::setRowMode(LayoutMode mode)
{
    if (mode == Variable)
        return;
    d->rowMode = mode;
    d->rowModeWins = true;
    triggerUpdate(true);
}

void ListBoxSkin::setRowMode(int rows)
{
    d->numRows = std::max(rows, 1);
    ListBoxSkin::setRowMode(FixedNumber);
}

bool ListBoxSkin::variableWidth() const
{
    return d->variableWidth;
}

void ListBoxSkin::setVariableWidth(bool variable)
{
    if (d->variableWidth == variable)
        return;
    d->variableWidth = variable;
    triggerUpdate(true);
}

bool ListBoxSkin::variableHeight() const
{
    return d->variableHeight;
}

void ListBoxSkin::setVariableHeight(bool variable)
{
    if (d->variableHeight == variable)
        return;
    d->variableHeight = variable;
    triggerUpdate(true);
}

void ListBoxSkin::triggerUpdate(bool doLayout)
{
    if (doLayout) {
        d->layoutDirty = true;
        d->mustPaintAll = true;
    }
    d->startUpdateTimer();
}

void ListBoxSkin::updateItem(int index)
{
    updateItem(item(index));
}

void ListBoxSkin::updateItem(ListBoxSkinItem* item)
{
    if (!item)
        return;
    item->dirty = true;
    item->paintedAcross = false;
    d->startUpdateTimer();
}

// An item that is measured runs code of its own, which may ask for a layout or change the chain.
bool ListBoxSkin::measure() const
{
    if (std::exchange(d->layingOut, true))
        return false;
    const QPointer<const ListBoxSkin> self(this);
    const bool measured = d->chain.measure();
    if (self)
        d->layingOut = false;
    return self && measured;
}

void ListBoxSkin::tryGeometry(int rows, int columns) const
{
    if (measure())
        d->place(rows, columns);
}

void ListBoxSkin::doLayout() const
{
    // A hidden widget gets no event for its new size.
    if (testAttribute(Qt::WA_PendingResizeEvent) && d->laidOutSize != size())
        d->layoutDirty = true;
    if (!d->layoutDirty || d->resizeTimer->isActive())
        return;
    constPolish();
    if (!measure())
        return;
    d->fit();
    d->layoutDirty = false;
    d->laidOutSize = size();
    d->columnPosOne = d->columnPos.at(1);
    fitContents();
}

// A single column reaches across the whole viewport, and the contents are as large as the viewport at least.
void ListBoxSkin::fitContents() const
{
    const bool single = columnMode() == FixedNumber && numColumns() == 1;
    const QSize space = viewportSize(single ? d->columnPosOne : d->columnPos.total(), d->rowPos.total());
    if (single)
        d->columnPos.setEqual(1, 1, std::max(d->columnPosOne, space.width()));
    d->laidOutViewport = space;
    const QPointer<const ListBoxSkin> self(this);
    const bool fits = std::exchange(d->fitsContents, true);
    const_cast<ListBoxSkin*>(this)->resizeContents(std::max(d->columnPos.total(), space.width()),
                                                   std::max(d->rowPos.total(), space.height()));
    if (self)
        d->fitsContents = fits;
}

// False where a receiver of the signals of the scroll bars has deleted the list box.
bool ListBoxSkin::layOut() const
{
    const QPointer<const ListBoxSkin> self(this);
    doLayout();
    return self;
}

void ListBoxSkin::refreshSlot()
{
    d->updateTimer->stop();
    if (d->mustPaintAll || d->layoutDirty) {
        d->mustPaintAll = false;
        if (layOut())
            viewport()->QWidget::repaint();
        return;
    }
    const QRegion changed = dirtyRegion();
    if (!changed.isEmpty())
        viewport()->QWidget::repaint(changed);
}

// The visible cells of items that have changed since they were painted, in viewport coordinates.
QRegion ListBoxSkin::dirtyRegion() const
{
    const QRect cells = d->cellsUnder(QRect(contentsX(), contentsY(), visibleWidth(), visibleHeight()));
    QRegion region;
    for (int column = cells.left(); column <= cells.right(); ++column) {
        const ListBoxSkinItem* item = d->itemIn(cells.top(), column);
        for (int row = cells.top(); item && row <= cells.bottom(); ++row, item = item->n)
            if (item->dirty && !item->paintedAcross)
                region += d->cellRect(row, column).translated(-contentsX(), -contentsY());
    }
    return region & viewport()->rect();
}

void ListBoxSkin::resizeEvent(QResizeEvent* event)
{
    // The frame makes way for a bar that the layout has brought.
    if (d->fitsContents && event->size() == event->oldSize()) {
        ScrollViewSkin::resizeEvent(event);
        return;
    }
    d->layoutDirty = true;
    // A list box that is being shown, and told its size for that, is laid out before it is painted.
    if (isVisible() || event->oldSize().isValid())
        d->resizeTimer->start(resizeInterval);
    const QPointer<ListBoxSkin> self(this);
    ScrollViewSkin::resizeEvent(event);
    // Until the layout comes, so that highlights reach across.
    if (self && columnMode() == FixedNumber && numColumns() == 1)
        fitContents();
}

void ListBoxSkin::adjustItems()
{
    const QPointer<ListBoxSkin> self(this);
    const bool currentShown = d->current && isCellVisible(d->chain.indexOf(d->current));
    doLayout();
    if (self && currentShown)
        ensureCurrentVisible();
    if (self)
        viewport()->update();
}

// Something else than the list box's own size or layout gave the viewport another size.
void ListBoxSkin::viewportResizeEvent(QResizeEvent* event)
{
    ScrollViewSkin::viewportResizeEvent(event);
    if (viewport()->size() != d->laidOutViewport)
        triggerUpdate(true);
}

void ListBoxSkin::setFont(const QFont& font)
{
    ScrollViewSkin::setFont(font);
    triggerUpdate(true);
}

void ListBoxSkin::changeEvent(QEvent* event)
{
    ScrollViewSkin::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        triggerUpdate(true);
}

// Geometry.

int ListBoxSkin::numRows() const
{
    return d->rowPos.cells();
}

int ListBoxSkin::numColumns() const
{
    return d->columnPos.cells();
}

int ListBoxSkin::rowAt(int y) const
{
    if (y < 0)
        return 0;
    // Intended: not the last row.
    if (y > d->rowPos.total())
        return d->chain.count() - 1;
    return d->rowPos.cellAt(y);
}

int ListBoxSkin::columnAt(int x) const
{
    return d->columnPos.cellAt(x);
}

int ListBoxSkin::currentRow() const
{
    if (!d->current)
        return -1;
    if (d->currentRow < 0)
        d->layoutDirty = true;
    return layOut() ? d->currentRow : -1;
}

int ListBoxSkin::currentColumn() const
{
    if (!d->current)
        return -1;
    if (d->currentColumn < 0)
        d->layoutDirty = true;
    return layOut() ? d->currentColumn : -1;
}

// The item's cell in contents coordinates. False where it has none.
bool ListBoxSkin::laidOutCell(const ListBoxSkinItem* item, QRect& cell) const
{
    if (!item || !layOut())
        return false;
    const int index = d->chain.indexOf(item);
    const QPoint at = d->cellOf(index);
    if (index < 0 || !d->hasCell(at.y(), at.x()))
        return false;
    cell = d->cellRect(at.y(), at.x());
    return true;
}

bool ListBoxSkin::isCellVisible(int index) const
{
    const QPoint at = d->cellOf(index);
    return index >= 0 && d->hasCell(at.y(), at.x()) &&
           d->cellRect(at.y(), at.x()).intersects(QRect(contentsX(), contentsY(), visibleWidth(), visibleHeight()));
}

QRect ListBoxSkin::itemRect(ListBoxSkinItem* item) const
{
    QRect cell;
    if (!laidOutCell(item, cell) || !isCellVisible(d->chain.indexOf(item)))
        return {};
    return cell.translated(-contentsX(), -contentsY());
}

int ListBoxSkin::itemHeight(int index) const
{
    QRect cell;
    return laidOutCell(item(index), cell) ? cell.height() : 0;
}

bool ListBoxSkin::itemYPos(int index, int* yPos) const
{
    const QRect rect = itemRect(item(index));
    if (!rect.isValid())
        return false;
    if (yPos)
        *yPos = rect.y();
    return true;
}

ListBoxSkinItem* ListBoxSkin::itemAt(QPoint point) const
{
    if (!layOut())
        return nullptr;
    const QPoint at = viewportToContents(point);
    if (at.x() < 0 || at.y() < 0 || at.x() >= d->columnPos.total() || at.y() >= d->rowPos.total())
        return nullptr;
    return d->itemIn(d->rowPos.cellAt(at.y()), d->columnPos.cellAt(at.x()));
}

bool ListBoxSkin::itemVisible(int index)
{
    return itemVisible(item(index));
}

bool ListBoxSkin::itemVisible(const ListBoxSkinItem* item)
{
    QRect cell;
    return laidOutCell(item, cell) && isCellVisible(d->chain.indexOf(item));
}

int ListBoxSkin::topItem() const
{
    if (!layOut())
        return 0;
    int row = d->rowPos.cellAt(contentsY());
    if (d->rowPos.at(row) < contentsY() && row + 1 < numRows())
        ++row;
    const qint64 index = qint64(numRows()) * d->columnPos.cellAt(contentsX()) + row;
    return int(std::clamp<qint64>(index, 0, std::max(d->chain.count() - 1, 0)));
}

void ListBoxSkin::setTopItem(int index)
{
    QRect cell;
    if (laidOutCell(item(index), cell))
        scrollTo(cell, cell.top());
}

void ListBoxSkin::setBottomItem(int index)
{
    QRect cell;
    if (laidOutCell(item(index), cell))
        scrollTo(cell, cell.top() + (cell.height() - visibleHeight()));
}

// Scrolls to y, and sideways only if the cell is not in sight there.
void ListBoxSkin::scrollTo(const QRect& cell, int y)
{
    const bool wholeWidthShown =
        cell.left() >= contentsX() && cell.left() + (cell.width() - visibleWidth()) <= contentsX();
    setContentsPos(wholeWidthShown ? contentsX() : cell.left(), y);
}

int ListBoxSkin::numItemsVisible() const
{
    if (!layOut())
        return 0;
    const QRect cells = d->cellsUnder(QRect(contentsX(), contentsY(), visibleWidth(), visibleHeight()));
    qint64 items = 0;
    for (int column = cells.left(); column <= cells.right(); ++column) {
        const qint64 left = d->chain.count() - qint64(numRows()) * column - cells.top();
        if (left <= 0)
            break;
        items += std::min<qint64>(left, cells.height());
    }
    return int(items);
}

long ListBoxSkin::maxItemWidth() const
{
    return layOut() ? d->columnPos.total() : 0;
}

QSize ListBoxSkin::sizeHint() const
{
    const bool visible = isVisibleTo(nullptr);
    if (visible && d->cachedSizeHint.isValid())
        return d->cachedSizeHint;
    if (!layOut())
        return {};
    d->cachedSizeHint = QSize(hintedLength(d->columnPos), hintedLength(d->rowPos));
    return d->cachedSizeHint;
}

QSize ListBoxSkin::minimumSizeHint() const
{
    const bool visible = isVisibleTo(nullptr);
    if (visible && d->cachedMinimumSizeHint.isValid())
        return d->cachedMinimumSizeHint;
    if (!layOut())
        return {};
    const qint64 extent = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    const qint64 h = std::min<qint64>(d->rowPos.at(1) + extent, mostHinted);
    const int w = std::min(d->columnPos.at(1), mostHinted);
    d->cachedMinimumSizeHint = QSize(std::max(w, leastMinimum), std::max(int(h), leastMinimum));
    return d->cachedMinimumSizeHint;
}

void ListBoxSkin::ensureCurrentVisible()
{
    QRect cell;
    if (!laidOutCell(d->current, cell))
        return;
    const int ymargin = cell.height() / 2;
    int xmargin = numColumns() > 1 ? cell.width() / 2 : 0;
    if (visibleWidth() < 2 * qint64(xmargin))
        xmargin = visibleWidth() / 2;
    ensureVisible(cell.left() + xmargin, cell.top() + ymargin, xmargin, ymargin);
}

void ListBoxSkin::setFixedVisibleLines(int lines)
{
    constPolish();
    const qint64 height =
        qint64(std::max(lines, 0)) * skinwidgets::lineHeight(fontMetrics()) + 2 * qint64(frameWidth());
    setFixedHeight(int(std::min<qint64>(height, QWIDGETSIZE_MAX)));
}

// Painting.

void ListBoxSkin::redrawHighlightImages(int w, int h)
{
    if (w < 0 || h < 0)
        return;
    d->focusPicture.create(QSize(w, h), d->alpha);
    d->noFocusPicture.create(QSize(w, h), d->alpha);
}

void ListBoxSkin::setAlphaOverride(unsigned char alpha)
{
    ScrollViewSkin::setAlphaOverride(alpha);
    d->alpha = alpha;
    redrawHighlightImages(d->focusPicture.size().width(), d->focusPicture.size().height());
    viewport()->update();
}

void ListBoxSkin::setBackgroundPixmap(const QPixmap& pm)
{
    if (pm.width() == 0)
        qWarning(" is null ");
    ScrollViewSkin::setBackgroundPixmap(pm);
    setBackgroundOrigin(AncestorOrigin);
    viewport()->setBackgroundPixmap(pm);
    viewport()->setBackgroundOrigin(AncestorOrigin);
}

void ListBoxSkin::paintCell(QPainter* p, int row, int column)
{
    ListBoxSkinItem* item = d->itemIn(row, column);
    // One whose constructor is running cannot paint yet.
    if (!p || !item || item->constructing)
        return;
    p->save();
    if (item->s && !item->custom_highlight)
        paintHighlight(p, d->cellRect(row, column).size());
    p->setPen(penColour(d->alpha));
    item->paint(p);
    p->restore();
}

void ListBoxSkin::paintHighlight(QPainter* p, const QSize& cell)
{
    if (numColumns() != 1) {
        p->fillRect(QRect(QPoint(), cell), multiColumnHighlight);
        return;
    }
    // Intended: the cell's width is compared with its height, not the picture's height with the cell's.
    if (d->focusPicture.size().width() != cell.width() || cell.width() != cell.height())
        redrawHighlightImages(cell.width(), cell.height());
    HighlightPicture& picture = hasFocus() ? d->focusPicture : d->noFocusPicture;
    // Where the painter stands now does not matter: the clip region counts in device coordinates.
    const QRegion clip = p->combinedTransform().map(p->clipRegion());
    for (const QRect& rect : clip)
        picture.copyTo(p->device(), rect);
}

void ListBoxSkin::viewportPaintEvent(QPaintEvent* event)
{
    if (!layOut())
        return;
    QPainter painter(viewport());
    QRegion rest = event->region();
    painter.setPen(penColour(255));
    paintCells(painter, rest);
    if (!rest.isEmpty())
        painter.setClipRegion(rest);
    if (d->rubber) {
        painter.setClipRegion(event->region());
        drawRubber(&painter);
    }
}

// Takes what is painted out of the region.
void ListBoxSkin::paintCells(QPainter& painter, QRegion& rest)
{
    const int x = contentsX();
    const int y = contentsY();
    const qint64 right = qint64(x) + visibleWidth();
    const qint64 bottom = qint64(y) + visibleHeight();
    const int topRow = rowAt(y);
    const unsigned int version = d->chain.version();
    for (int column = columnAt(x); column < numColumns() && d->columnPos.at(column) < right; ++column) {
        ListBoxSkinItem* item = d->itemIn(topRow, column);
        for (int row = topRow; item && row < numRows() && d->rowPos.at(row) < bottom; ++row) {
            const QRect cell = d->cellRect(row, column).translated(-x, -y);
            const QRegion shown = rest & cell;
            if (!shown.isEmpty()) {
                painter.save();
                painter.setClipRegion(shown);
                painter.translate(cell.topLeft());
                paintCell(&painter, row, column);
                painter.restore();
                rest -= shown;
            }
            // An item that paints may change the chain; that brings another paint event.
            if (d->chain.version() != version)
                return;
            if (item->dirty)
                notePainted(item, cell, shown);
            item = item->n;
        }
    }
}

// One that was painted in part only stays dirty.
void ListBoxSkin::notePainted(ListBoxSkinItem* item, const QRect& cell, const QRegion& shown) const
{
    if (shown == QRegion(cell)) {
        item->dirty = false;
        return;
    }
    const int left = std::max(cell.left(), 0);
    const int right = std::min(cell.right(), visibleWidth() - 1);
    if (cell.width() > visibleWidth() &&
        shown == QRegion(QRect(QPoint(left, cell.top()), QPoint(right, cell.bottom()))))
        item->paintedAcross = true;
}

void ListBoxSkin::showEvent(QShowEvent* event)
{
    const QPointer<ListBoxSkin> self(this);
    ScrollViewSkin::showEvent(event);
    if (!self)
        return;
    d->mouseMoveRow = -1;
    d->mouseMoveColumn = -1;
    d->ignoreMoves = false;
    d->mustPaintAll = false;
    ensureCurrentVisible();
}

// The highlights' colours depend on the focus.
void ListBoxSkin::focusInEvent(QFocusEvent* event)
{
    ScrollViewSkin::focusInEvent(event);
    viewport()->update();
}

void ListBoxSkin::focusOutEvent(QFocusEvent* event)
{
    ScrollViewSkin::focusOutEvent(event);
    viewport()->update();
}

// Current item and selection.

// False where the item is not the current one any more, or the list box is gone.
bool ListBoxSkin::emitHighlighted(ListBoxSkinItem* item, EmptyTexts emptyTexts)
{
    const QPointer<ListBoxSkin> self(this);
    const auto isCurrent = [&] { return self && d->current == item; };
    emit highlighted(item);
    if (!isCurrent())
        return false;
    const QString text = item ? item->text() : QString();
    if (!text.isEmpty() || emptyTexts == EmptyTexts::Told)
        emit highlighted(text);
    if (!isCurrent())
        return false;
    emit highlighted(currentItem());
    return isCurrent();
}

void ListBoxSkin::emitCurrentChanged(ListBoxSkinItem* item)
{
    if (emitHighlighted(item, EmptyTexts::Untold))
        emit currentChanged(item);
}

int ListBoxSkin::currentItem() const
{
    return d->chain.indexOf(d->current);
}

void ListBoxSkin::setCurrentItem(int index)
{
    setCurrentItem(item(index));
}

void ListBoxSkin::setCurrentItem(ListBoxSkinItem* item)
{
    if (!d->chain.contains(item) || item == d->current)
        return;
    ListBoxSkinItem* old = std::exchange(d->current, item);
    bool deselected = false;
    bool selected = false;
    if (d->selectionMode == Single) {
        deselected = old && d->setSelected(old, false);
        selected = item->isSelectable() && d->setSelected(item, true);
    }
    d->noteCurrentCell();
    updateItem(old);
    updateItem(item);
    d->visibleTimer->start(visibleInterval);

    const QPointer<ListBoxSkin> self(this);
    if (selected)
        emit selectionChanged(item);
    if (!self || d->current != item)
        return;
    if (selected || deselected)
        emit selectionChanged();
    if (self && d->current == item)
        emitCurrentChanged(item);
}

ListBoxSkin::SelectionMode ListBoxSkin::selectionMode() const
{
    return d->selectionMode;
}

void ListBoxSkin::setSelectionMode(SelectionMode mode)
{
    if (d->selectionMode == mode)
        return;
    d->selectionMode = mode;
    triggerUpdate(true);
}

void ListBoxSkin::setMultiSelection(bool multi)
{
    setSelectionMode(multi ? Multi : Single);
}

bool ListBoxSkin::isMultiSelection() const
{
    return d->selectionMode == Multi || d->selectionMode == Extended;
}

void ListBoxSkin::setSelected(int index, bool select)
{
    setSelected(item(index), select);
}

void ListBoxSkin::setSelected(ListBoxSkinItem* item, bool select)
{
    if (!d->chain.contains(item) || !item->isSelectable() || item->s == unsigned(select) ||
        d->selectionMode == NoSelection)
        return;
    const bool single = d->selectionMode == Single;
    const bool moves = single && item != d->current;
    if (moves) {
        ListBoxSkinItem* old = std::exchange(d->current, item);
        if (old)
            d->setSelected(old, false);
        updateItem(old);
        d->noteCurrentCell();
    }
    d->setSelected(item, select);

    const QPointer<ListBoxSkin> self(this);
    const ItemWatch watch(d.get(), item);
    if (single && select)
        emit selectionChanged(item);
    if (!self || !watch.item())
        return;
    emit selectionChanged();
    if (moves && self && watch.item() && d->current == item)
        emitCurrentChanged(item);
}

bool ListBoxSkin::isSelected(int index) const
{
    return isSelected(item(index));
}

bool ListBoxSkin::isSelected(const ListBoxSkinItem* item) const
{
    return item && item->s;
}

void ListBoxSkin::toggleCurrentItem()
{
    if (!isMultiSelection() || !d->current)
        return;
    if (!d->current->s && !d->current->isSelectable()) {
        updateItem(d->current);
        return;
    }
    d->setSelected(d->current, !d->current->s);
    emit selectionChanged();
}

// A subclass may have its own way of selecting an item.
bool ListBoxSkin::mayOverrideSetSelected() const
{
    return typeid(*this) != typeid(ListBoxSkin);
}

void ListBoxSkin::selectAll(bool select)
{
    if (!isMultiSelection()) {
        setSelected(d->current, select); // NOLINT(clang-analyzer-optin.cplusplus.VirtualCall)
        return;
    }
    const QPointer<ListBoxSkin> self(this);
    const bool blocked = blockSignals(true);
    if (!mayOverrideSetSelected()) {
        d->chain.selectAll(select);
        d->startUpdateTimer();
    } else {
        // Each item, also one that is selected or not already: a subclass hears of all.
        for (int i = 0; self && i < d->chain.count(); ++i)
            setSelected(i, select);
    }
    if (!self)
        return;
    blockSignals(blocked);
    emit selectionChanged();
}

void ListBoxSkin::invertSelection()
{
    if (!isMultiSelection())
        return;
    const QPointer<ListBoxSkin> self(this);
    const bool blocked = blockSignals(true);
    if (mayOverrideSetSelected()) {
        for (int i = 0; self && i < d->chain.count(); ++i)
            setSelected(i, !isSelected(i));
    } else {
        d->chain.invertSelection();
        d->startUpdateTimer();
    }
    if (!self)
        return;
    blockSignals(blocked);
    emit selectionChanged();
}

void ListBoxSkin::clearSelection()
{
    selectAll(false);
}

void ListBoxSkin::selectRange(ListBoxSkinItem* from, ListBoxSkinItem* to, bool invert, bool includeFirst, bool clearSel)
{
    const int start = d->chain.indexOf(from);
    const int end = d->chain.indexOf(to);
    if (start < 0 || end < 0)
        return;
    const int exclude = includeFirst ? 0 : 1;
    const int first = end < start ? end : start + exclude;
    const int last = end < start ? start - exclude : end;

    bool changed = clearSel && d->deselectOutside(first, last);
    ListBoxSkinItem* item = d->chain.at(first);
    for (int i = first; item && i <= last; ++i, item = item->n) {
        const bool select = !invert || !item->s;
        if (!select || item->isSelectable())
            changed |= d->setSelected(item, select);
    }
    if (changed)
        emit selectionChanged();
}

void ListBoxSkin::handleItemChange(ListBoxSkinItem* old, bool shift, bool control)
{
    if (d->selectionMode == Multi && shift) {
        selectRange(old, d->current, true, false, false);
    } else if (d->selectionMode == Extended && !control) {
        ListBoxSkinItem* anchor = d->selectAnchor;
        if (shift)
            selectRange(anchor ? anchor : old, d->current, false, true, anchor != nullptr);
        else
            selectCurrentAlone();
    }
}

// Tells of the current item only: what it replaces is deselected without a signal.
void ListBoxSkin::selectCurrentAlone()
{
    const QPointer<ListBoxSkin> self(this);
    const bool blocked = blockSignals(true);
    selectAll(false);
    if (!self)
        return;
    blockSignals(blocked);
    setSelected(d->current, true);
}

// Keys.

void ListBoxSkin::keyPressEvent(QKeyEvent* event)
{
    if (d->chain.count() == 0) {
        event->ignore();
        return;
    }
    if (!d->current) {
        event->ignore();
        const QPointer<ListBoxSkin> self(this);
        setCurrentItem(d->chain.head());
        if (self && d->selectionMode == Single)
            setSelected(d->current, true);
        return;
    }
    const KeyStroke stroke{event->modifiers().testFlag(Qt::ShiftModifier),
                           event->modifiers().testFlag(Qt::ControlModifier)};
    if (isCommand(event, stroke)) {
        clearInputString();
        runCommand(event->key(), stroke);
    } else if (isPrintable(event->text())) {
        d->findItemByName(event->text());
    } else if (!stroke.control) {
        event->ignore();
    }
}

bool ListBoxSkin::isCommand(const QKeyEvent* event, const KeyStroke& stroke)
{
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Prior:
    case Qt::Key_Next:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        return true;
    case Qt::Key_A:
        return stroke.control;
    default:
        return false;
    }
}

void ListBoxSkin::runCommand(int key, const KeyStroke& stroke)
{
    const QPointer<ListBoxSkin> self(this);
    const int last = d->chain.count() - 1;
    switch (key) {
    case Qt::Key_Up:
        if (currentItem() >= 1)
            moveTo(currentItem() - 1, stroke);
        break;
    case Qt::Key_Down:
        if (currentItem() < last)
            moveTo(currentItem() + 1, stroke);
        break;
    case Qt::Key_Prior:
        movePageUp(stroke);
        break;
    case Qt::Key_Next:
        movePageDown(stroke);
        break;
    case Qt::Key_Home:
        moveTo(0, stroke);
        break;
    case Qt::Key_End:
        moveTo(last, stroke);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (d->selectionMode != NoSelection)
            emitSelected(&ListBoxSkin::returnPressed);
        break;
    case Qt::Key_Space:
        toggleCurrentItem();
        break;
    case Qt::Key_A:
        selectAll(true);
        return;
    default:
        return;
    }
    if (!self)
        return;
    updateAnchor(stroke.shift);
    const bool onlyMoves = key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Next;
    if (!onlyMoves && d->selectionMode == Single && d->current && !d->current->s) {
        updateItem(d->current);
        setSelected(d->current, true);
    }
}

void ListBoxSkin::moveTo(int target, const KeyStroke& stroke, void (ListBoxSkin::*scrollItem)(int))
{
    const QPointer<ListBoxSkin> self(this);
    const ItemWatch old(d.get(), d->current);
    setCurrentItem(target);
    if (self && scrollItem)
        (this->*scrollItem)(target);
    if (self)
        handleItemChange(old.item(), stroke.shift, stroke.control);
}

void ListBoxSkin::movePageUp(const KeyStroke& stroke)
{
    if (!layOut())
        return;
    if (numColumns() == 1) {
        moveTo(std::max(currentItem() - numItemsVisible(), 0), stroke, &ListBoxSkin::setTopItem);
        return;
    }
    // To the top of the column, and from there to the top of the one before.
    const int row = currentRow();
    moveTo(std::max(currentItem() - (row == 0 ? numRows() : row), 0), stroke);
}

void ListBoxSkin::movePageDown(const KeyStroke& stroke)
{
    if (!layOut())
        return;
    const int last = d->chain.count() - 1;
    if (numColumns() == 1) {
        moveTo(std::min(currentItem() + numItemsVisible(), last), stroke, &ListBoxSkin::setBottomItem);
        return;
    }
    const int below = numRows() - currentRow() - 1;
    moveTo(std::min(currentItem() + (below == 0 ? numRows() : below), last), stroke);
}

void ListBoxSkin::updateAnchor(bool shift)
{
    if (!shift || !d->selectAnchor)
        d->selectAnchor = d->current;
}

void ListBoxSkin::clearInputString()
{
    d->currInputString.clear();
}

// Return or a double click: everything is about the current item.
void ListBoxSkin::emitSelected(void (ListBoxSkin::*last)(ListBoxSkinItem*))
{
    ListBoxSkinItem* item = d->current;
    if (!item)
        return;
    const QPointer<ListBoxSkin> self(this);
    const ItemWatch watch(d.get(), item);
    const auto isLeft = [&] { return self && watch.item(); };
    emit selected(currentItem());
    if (isLeft())
        emit selected(item);
    if (!isLeft())
        return;
    const QString text = item->text();
    if (!text.isEmpty())
        emit selected(text);
    if (isLeft())
        emit(this->*last)(item);
}

// The stylus.

void ListBoxSkin::viewportMousePressEvent(QMouseEvent* event)
{
    mousePressEvent(event);
}

void ListBoxSkin::viewportMouseReleaseEvent(QMouseEvent* event)
{
    mouseReleaseEvent(event);
}

void ListBoxSkin::viewportMouseDoubleClickEvent(QMouseEvent* event)
{
    mouseDoubleClickEvent(event);
}

void ListBoxSkin::viewportMouseMoveEvent(QMouseEvent* event)
{
    mouseMoveEvent(event);
}

void ListBoxSkin::mousePressEvent(QMouseEvent* event)
{
    const QPointer<ListBoxSkin> self(this);
    const Qt::MouseButton button = event->button();
    const QPoint global = event->globalPosition().toPoint();
    ListBoxSkinItem* item = itemAt(event->position().toPoint());
    if (!self)
        return;
    stopAutoScroll();
    endRubber();
    d->startPress(item);
    const ItemWatch watch(d.get(), item);
    if (item)
        pressOn(item, event->modifiers());
    else
        pressOnEmpty(event);

    // Nothing is told about an item that is gone.
    const auto isLeft = [&] { return self && watch.item() == item; };
    if (isLeft())
        emit pressed(item);
    if (isLeft())
        emit pressed(item, global);
    if (isLeft())
        emit mouseButtonPressed(button, item, global);
    if (isLeft() && button == Qt::RightButton)
        emit rightButtonPressed(item, global);
}

void ListBoxSkin::pressOn(ListBoxSkinItem* item, Qt::KeyboardModifiers modifiers)
{
    const QPointer<ListBoxSkin> self(this);
    const ItemWatch watch(d.get(), item);
    const bool shift = modifiers.testFlag(Qt::ShiftModifier);
    if (d->selectionMode == Multi)
        setSelected(item, !item->s);
    else if (d->selectionMode == Extended)
        pressExtended(item, shift, modifiers.testFlag(Qt::ControlModifier));
    if (!self || !watch.item())
        return;
    d->dragState = d->dragsRange || item->s;
    if (item != d->current)
        setCurrentItem(item);
    else if (d->selectionMode == Single)
        setSelected(item, true);
    if (self)
        updateAnchor(shift);
}

void ListBoxSkin::pressExtended(ListBoxSkinItem* item, bool shift, bool control)
{
    d->dragsRange = shift || !control;
    if (shift) {
        ListBoxSkinItem* from = d->current ? d->current : item;
        d->dragOrigin = d->cellOf(d->chain.indexOf(from));
        selectRange(from, item, false, true, true);
    } else if (control) {
        setSelected(item, !item->s);
    } else if (item->s) {
        // The others stay until the release, so that the selection can be dragged.
        d->selectOnRelease = true;
    } else if (d->deselectAll() && !item->isSelectable()) {
        emit selectionChanged();
    } else {
        setSelected(item, true);
    }
}

void ListBoxSkin::pressOnEmpty(const QMouseEvent* event)
{
    const bool control = event->modifiers().testFlag(Qt::ControlModifier);
    const bool left = event->button() == Qt::LeftButton;
    if (isMultiSelection() && left) {
        d->rubberArmed = true;
        d->rubberOrigin = viewportToContents(event->position().toPoint());
    }
    const bool lets = isMultiSelection() || event->button() == Qt::RightButton;
    if (lets && !control && d->chain.selectedCount() > 0)
        clearSelection();
}

void ListBoxSkin::mouseReleaseEvent(QMouseEvent* event)
{
    const QPointer<ListBoxSkin> self(this);
    const Qt::MouseButton button = event->button();
    const QPoint at = event->position().toPoint();
    const QPoint global = event->globalPosition().toPoint();
    endRubber();
    stopAutoScroll();
    if (d->selectionMode == Extended && d->selectOnRelease && d->current && d->current == d->pressedItem) {
        const bool blocked = blockSignals(true);
        clearSelection();
        if (!self)
            return;
        blockSignals(blocked);
        d->setSelected(d->current, true);
        d->selectOnRelease = false;
        emit selectionChanged();
    }
    ListBoxSkinItem* item = self ? itemAt(at) : nullptr;
    if (!self)
        return;
    const bool onCell = d->mousePressRow != -1 && d->mousePressColumn != -1;
    const bool click = !d->pressedItemLeft && d->pressedItem == item && (onCell || !d->pressedItem);
    d->endPress();
    if (!click)
        return;

    const ItemWatch watch(d.get(), item);
    const auto isLeft = [&] { return self && watch.item() == item; };
    emit clicked(item);
    if (isLeft())
        emit clicked(item, global);
    if (isLeft())
        emit mouseButtonClicked(button, item, global);
    if (isLeft() && button == Qt::RightButton)
        emit rightButtonClicked(item, global);
}

void ListBoxSkin::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QPointer<ListBoxSkin> self(this);
    const ListBoxSkinItem* item = itemAt(event->position().toPoint());
    if (!self)
        return;
    d->ignoreMoves = true;
    // Intended: the current item, wherever the stylus is on the items.
    if (item && d->selectionMode != NoSelection)
        emitSelected(&ListBoxSkin::doubleClicked);
}

void ListBoxSkin::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    if (event->buttons() == Qt::NoButton) {
        hover(at);
        return;
    }
    if (d->ignoreMoves || !layOut())
        return;
    d->stylus = at;
    startAutoScroll();
    followStylus();
}

void ListBoxSkin::followStylus()
{
    if (d->rubberArmed)
        stretchRubber();
    else
        dragTo(cellUnder(d->stylus));
}

void ListBoxSkin::hover(const QPoint& at)
{
    const QPointer<ListBoxSkin> self(this);
    ListBoxSkinItem* item = itemAt(at);
    if (!self || d->hovered == item)
        return;
    d->hovered = item;
    if (item)
        emit onItem(item);
    else
        emit onViewport();
}

void ListBoxSkin::leaveEvent(QEvent* event)
{
    ScrollViewSkin::leaveEvent(event);
    d->hovered = nullptr;
}

// The cell at a point in viewport coordinates, of those in sight the nearest one. x is the column.
QPoint ListBoxSkin::cellUnder(const QPoint& point) const
{
    const QPoint inside(std::clamp(point.x(), 0, std::max(visibleWidth() - 1, 0)),
                        std::clamp(point.y(), 0, std::max(visibleHeight() - 1, 0)));
    const QPoint at = viewportToContents(inside);
    return {d->columnPos.cellAt(at.x()), d->rowPos.cellAt(at.y())};
}

// The stylus, held down, has come to a cell.
void ListBoxSkin::dragTo(const QPoint& cell)
{
    QPoint met(d->mouseMoveColumn, d->mouseMoveRow);
    if (met.x() < 0 || met.y() < 0)
        met = d->dragOrigin;
    if (met == cell)
        return;
    if (d->dragOrigin.x() < 0)
        d->dragOrigin = cell;
    d->mouseMoveColumn = cell.x();
    d->mouseMoveRow = cell.y();

    const QPointer<ListBoxSkin> self(this);
    const ItemWatch item(d.get(), d->itemIn(cell.y(), cell.x()));
    if (isMultiSelection()) {
        const QPoint from = d->dragsRange || met.x() < 0 ? d->dragOrigin : met;
        selectCells(QRect(from, QSize(1, 1)) | QRect(cell, QSize(1, 1)), d->dragState, d->dragsRange);
    }
    if (self && item.item() && item.item() != d->current)
        setCurrentItem(item.item());
}

// The cells' columns are x, their rows y. With alone, all other items are deselected.
void ListBoxSkin::selectCells(const QRect& cells, bool select, bool alone)
{
    bool changed = false;
    if (alone) {
        d->chain.visitSelected([&](ListBoxSkinItem* item, int index) {
            if (!cells.contains(d->cellOf(index)))
                changed |= d->setSelected(item, false);
        });
    }
    changed |= d->selectCells(cells, select);
    if (changed)
        emit selectionChanged();
}

void ListBoxSkin::startAutoScroll()
{
    if (d->scrollTimer)
        return;
    d->scrollTimer = new QTimer(this);
    d->scrollTimer->setObjectName(QStringLiteral("listbox scroll timer"));
    connect(d->scrollTimer, &QTimer::timeout, this, &ListBoxSkin::doAutoScroll);
    d->scrollTimer->start(scrollInterval);
}

void ListBoxSkin::stopAutoScroll()
{
    delete std::exchange(d->scrollTimer, nullptr);
}

void ListBoxSkin::doAutoScroll()
{
    const int down = sideOf(d->stylus.y(), visibleHeight());
    const int across = sideOf(d->stylus.x(), visibleWidth());
    if ((down == 0 && across == 0) || !layOut())
        return;
    const QPointer<ListBoxSkin> self(this);
    setContentsPos(nextStop(d->columnPos, contentsX(), visibleWidth(), across),
                   nextStop(d->rowPos, contentsY(), visibleHeight(), down));
    if (self)
        followStylus();
}

bool ListBoxSkin::isRubberSelecting() const
{
    return d->rubber != nullptr;
}

void ListBoxSkin::stretchRubber()
{
    if (!d->rubber) {
        d->rubber = std::make_unique<QRect>(d->rubberOrigin, QSize(1, 1));
        updateItem(d->current);
        d->currentBeforeRubber = std::exchange(d->current, nullptr);
    }
    const QPoint inside(std::clamp(d->stylus.x(), 0, std::max(visibleWidth() - 1, 0)),
                        std::clamp(d->stylus.y(), 0, std::max(visibleHeight() - 1, 0)));
    const QRect old = *d->rubber;
    *d->rubber = QRect(d->rubberOrigin, QSize(1, 1)) | QRect(viewportToContents(inside), QSize(1, 1));
    updateContents(old | *d->rubber);
    doRubberSelection(old, *d->rubber);
}

void ListBoxSkin::doRubberSelection(const QRect& old, const QRect& rubber)
{
    const QRect left = d->cellsUnder(old);
    const QRect covered = d->cellsUnder(rubber);
    bool changed = false;
    for (int column = left.left(); column <= left.right(); ++column) {
        ListBoxSkinItem* item = d->itemIn(left.top(), column);
        for (int row = left.top(); item && row <= left.bottom(); ++row, item = item->n)
            if (!covered.contains(column, row))
                changed |= d->setSelected(item, false);
    }
    changed |= d->selectCells(covered, true);
    if (changed)
        emit selectionChanged();
}

void ListBoxSkin::drawRubber(QPainter* painter)
{
    if (!d->rubber)
        return;
    QStyleOptionRubberBand option;
    option.initFrom(viewport());
    option.rect = d->rubber->translated(-contentsX(), -contentsY());
    option.shape = QRubberBand::Rectangle;
    option.opaque = false;
    style()->drawControl(QStyle::CE_RubberBand, &option, painter, this);
}

void ListBoxSkin::endRubber()
{
    d->rubberArmed = false;
    if (!d->rubber)
        return;
    updateContents(*d->rubber);
    d->rubber.reset();
    ListBoxSkinItem* before = std::exchange(d->currentBeforeRubber, nullptr);
    if (d->current)
        return;
    d->current = before;
    updateItem(before);
}
