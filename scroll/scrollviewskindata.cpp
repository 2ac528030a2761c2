#include "scroll/scrollviewskindata.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace
{

// Large enough that most scrolling stays within it, small enough for any window system.
constexpr int clippedSide = 4000;

int boundedPosition(qint64 position)
{
    return int(std::clamp<qint64>(position, -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

bool holdsFocus(const QWidget* child)
{
    const QWidget* focused = child->window()->focusWidget();
    return focused && (focused == child || child->isAncestorOf(focused));
}

bool overlap(qint64 start, qint64 length, qint64 otherStart, qint64 otherLength)
{
    return start < otherStart + otherLength && otherStart < start + length;
}

} // namespace

ScrollViewSkinData::ScrollViewSkinData(ScrollViewSkin* view, WFlags viewportFlags)
    : hbar(new QScrollBar(Qt::Horizontal, view)),
      vbar(new ScrollBarSkin(view, "SCROLLBAR")),
      viewport(new skinwidgets::ViewportWidget(view, "qt_viewport", viewportFlags)),
      flags(viewportFlags)
{
    hbar->setObjectName(QStringLiteral("qt_hbar"));
    // Otherwise they would come up with the view.
    hbar->hide();
    vbar->hide();
    dragTimer.setObjectName(QStringLiteral("drag auto-scroll timer"));
}

skinwidgets::ViewportWidget* ScrollViewSkinData::clipper() const
{
    return clipped_viewport ? clipped_viewport : viewport;
}

QPoint ScrollViewSkinData::clipperOffset() const
{
    return clipped_viewport ? clipped_viewport->pos() : QPoint();
}

void ScrollViewSkinData::createClippedViewport(ScrollViewSkin* view)
{
    clipped_viewport = new DQClipperWidget(viewport, "qt_clipped_viewport", flags);
    clipped_viewport->setGeometry(-clippedSide / 2, -clippedSide / 2, clippedSide, clippedSide);
    originX = qint64(vx) - clippedSide / 2;
    originY = qint64(vy) - clippedSide / 2;
    viewport->setBackgroundMode(WidgetBackground::NoBackground);
    viewport->removeEventFilter(view);
    clipped_viewport->installEventFilter(view);
    clipped_viewport->show();
    hideOrShowAll(view, false);
}

void ScrollViewSkinData::deleteClippedViewport(ScrollViewSkin* view)
{
    delete std::exchange(clipped_viewport, nullptr);
    viewport->setBackgroundMode(WidgetBackground::PaletteBackground);
    viewport->installEventFilter(view);
}

DQSVChildRec* ScrollViewSkinData::record(const QObject* child) const
{
    return childDict.value(child);
}

DQSVChildRec* ScrollViewSkinData::ancestorRecord(const QWidget* widget) const
{
    for (; widget; widget = widget->parentWidget())
        if (DQSVChildRec* found = record(widget))
            return found;
    return nullptr;
}

QWidget* ScrollViewSkinData::firstChild() const
{
    return children.empty() ? nullptr : children.front()->child.data();
}

bool ScrollViewSkinData::anyVisibleChildren() const
{
    return std::any_of(children.begin(), children.end(), [](const auto& record) {
        return record->child && (record->child->isVisible() || (record->parked && record->wanted));
    });
}

void ScrollViewSkinData::addRecord(QWidget* child, int x, int y)
{
    // A new child comes up with the view; one that comes into a view on the screen waits for the application, except
    // on a clipped viewport.
    const bool waits = child->isHidden() && (child->testAttribute(Qt::WA_WState_ExplicitShowHide) ||
                                             (!clipped_viewport && viewport->isVisible()));
    children.push_back(std::make_unique<DQSVChildRec>(DQSVChildRec{child, x, y, !waits, false}));
    childDict.insert(child, children.back().get());
}

void ScrollViewSkinData::removeRecord(const QObject* child)
{
    const DQSVChildRec* removed = childDict.take(child);
    if (!removed)
        return;
    children.erase(std::find_if(children.begin(), children.end(),
                                [removed](const auto& record) { return record.get() == removed; }));
}

QPoint ScrollViewSkinData::placeOf(const DQSVChildRec& record) const
{
    const qint64 left = clipped_viewport ? originX : vx;
    const qint64 top = clipped_viewport ? originY : vy;
    return {boundedPosition(record.x - left), boundedPosition(record.y - top)};
}

QPoint ScrollViewSkinData::placeInViewport(const DQSVChildRec& record) const
{
    return {boundedPosition(qint64(record.x) - vx), boundedPosition(qint64(record.y) - vy)};
}

bool ScrollViewSkinData::isCovered(const DQSVChildRec& record) const
{
    return overlap(record.x, record.child->width(), originX, clipped_viewport->width()) &&
           overlap(record.y, record.child->height(), originY, clipped_viewport->height());
}

bool ScrollViewSkinData::isInSight(const DQSVChildRec& record) const
{
    return overlap(record.x, record.child->width(), vx, viewport->width()) &&
           overlap(record.y, record.child->height(), vy, viewport->height());
}

bool ScrollViewSkinData::isKeptShown(const DQSVChildRec& record) const
{
    if (clipped_viewport)
        return isCovered(record);
    return children.size() <= alwaysShownChildren || isInSight(record) || holdsFocus(record.child);
}

// A child's own handlers may remove its record.
void ScrollViewSkinData::placeChild(DQSVChildRec& record)
{
    const QPointer<QWidget> child = record.child;
    const QPointer<QWidget> alive = viewport;
    if (!child)
        return;
    const bool shown = isKeptShown(record);
    const bool wasParked = std::exchange(record.parked, !shown);
    const bool toggled = record.wanted && wasParked == shown;
    if (shown)
        child->move(placeOf(record));
    if (toggled && child && alive)
        toggle(child, shown);
    // So that the child hears of it, and the view by that, when the application hides it too.
    if (toggled && !shown && child)
        child->setAttribute(Qt::WA_WState_ExplicitShowHide, false);
}

void ScrollViewSkinData::toggle(QWidget* child, bool show)
{
    const QPointer<QWidget> alive = viewport;
    const bool before = std::exchange(toggling, true);
    child->setVisible(show);
    if (alive)
        toggling = before;
}

void ScrollViewSkinData::setWanted(DQSVChildRec& record, bool wanted)
{
    record.wanted = wanted;
    if (record.parked || !record.child)
        return;
    toggle(record.child, wanted);
}

void ScrollViewSkinData::unpark(DQSVChildRec& record)
{
    if (!std::exchange(record.parked, false) || !record.wanted || !record.child)
        return;
    const QPointer<QWidget> child = record.child;
    child->move(placeOf(record));
    if (child)
        toggle(child, true);
}

// The children come by pointer, for what one does when it is moved may remove others.
void ScrollViewSkinData::placeAll(const std::vector<QPointer<QWidget>>& moved, ScrollViewSkin* view)
{
    const QPointer<ScrollViewSkin> self(view);
    for (const QPointer<QWidget>& child : moved) {
        DQSVChildRec* found = record(child);
        if (found)
            placeChild(*found);
        if (!self)
            return;
    }
}

void ScrollViewSkinData::followContents(ScrollViewSkin* view)
{
    if (clipped_viewport) {
        hideOrShowAll(view, true);
        return;
    }
    // Before the children move, so that none of their places is added to the dirty region by itself.
    viewport->update();
    std::vector<QPointer<QWidget>> moved;
    for (const auto& record : children)
        if (record->child && (!record->parked || isKeptShown(*record)))
            moved.emplace_back(record->child);
    placeAll(moved, view);
}

void ScrollViewSkinData::hideOrShowAll(ScrollViewSkin* view, bool isScroll)
{
    if (!clipped_viewport)
        return;
    const QRect seen = viewport->rect();
    const qint64 x = originX - vx;
    const qint64 y = originY - vy;
    const bool covers = x <= 0 && y <= 0 && x + clipped_viewport->width() >= seen.width() &&
                        y + clipped_viewport->height() >= seen.height();
    if (!covers) {
        centreClippedViewport(view);
        return;
    }
    clipped_viewport->moving = true;
    clipped_viewport->move(int(x), int(y));
    clipped_viewport->moving = false;
    const QRect visible = seen.translated(-clipped_viewport->pos());
    if (static_bg)
        clipped_viewport->repaint(visible, true);
    else if (!isScroll)
        clipped_viewport->update(visible);
}

void ScrollViewSkinData::centreClippedViewport(ScrollViewSkin* view)
{
    const QPointer<DQClipperWidget> clipped(clipped_viewport);
    const QSize size = QSize(clippedSide, clippedSide).expandedTo(viewport->size());
    const QPoint offset((viewport->width() - size.width()) / 2, (viewport->height() - size.height()) / 2);
    originX = qint64(vx) + offset.x();
    originY = qint64(vy) + offset.y();

    clipped->moving = true;
    clipped->setGeometry(QRect(offset, size));
    clipped->update();
    std::vector<QPointer<QWidget>> moved;
    for (const auto& record : children)
        if (record->child && (!record->parked || isCovered(*record)))
            moved.emplace_back(record->child);
    // Also while children are hidden: one that has the focus must not make the view scroll elsewhere.
    placeAll(moved, view);
    if (clipped)
        clipped->moving = false;
}
