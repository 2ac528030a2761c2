#include "scroll/scrollviewskin.h"

#include "scroll/clipperwidget.h"
#include "scroll/scrollbarskin.h"
#include "scroll/scrollviewskindata.h"
#include "toolkit/movedevent.h"

#include <QApplication>
#include <QChildEvent>
#include <QDropEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace
{

// The flags that the viewport takes over from the view.
constexpr WFlags viewportFlags = Qt::WPaintClever | Qt::WNorthWestGravity | Qt::WRepaintNoErase;

constexpr int lineStep = 20;
constexpr int shownMargin = 50;
// As a margin, the middle: it is cut to half of any viewport.
constexpr int middleMargin = QWIDGETSIZE_MAX;
constexpr int leastSide = 100;

constexpr int dragMargin = 16;
constexpr int dragStep = 5;
constexpr int dragInterval = 30;

int saturated(qint64 number)
{
    return int(std::clamp<qint64>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

// With its sign turned, as moveContents() takes positions.
int turned(int position)
{
    return saturated(-qint64(position));
}

// What a widget's side or position can be.
int boundedLength(qint64 length)
{
    return int(std::clamp<qint64>(length, 0, QWIDGETSIZE_MAX));
}

int boundedPosition(qint64 position)
{
    return int(std::clamp<qint64>(position, -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

int marginOf(float fraction, int visible)
{
    const double margin = double(fraction) * visible / 2.0 + 0.5;
    return std::isnan(margin) ? 0 : int(std::clamp(margin, -double(QWIDGETSIZE_MAX), double(QWIDGETSIZE_MAX)));
}

// Where one direction has to be scrolled to for the point to be seen.
int positionShowing(int point, int margin, int position, int visible, int contents)
{
    if (contents <= visible)
        return 0;
    margin = std::min(margin, visible / 2);
    qint64 wanted = position;
    if (point < wanted + margin)
        wanted = qint64(point) - margin;
    else if (point >= wanted + visible - margin)
        wanted = qint64(point) - visible + margin;
    return int(std::clamp<qint64>(wanted, 0, qint64(contents) - visible));
}

// A position with its sign turned, so that the contents do not scroll past their end.
int turnedWithin(int turned, int visible, int contents)
{
    const bool past = -qint64(turned) + visible > contents;
    return past ? int(std::min<qint64>(0, qint64(visible) - contents)) : turned;
}

// -1, 0 or 1: where to scroll for something that is held close to an edge.
int dragDirection(int at, int length)
{
    if (at < dragMargin)
        return -1;
    return at > length - dragMargin ? 1 : 0;
}

// Give an event the answer that another one has got.
void answer(QDropEvent& event, const QDropEvent& answered)
{
    event.setDropAction(answered.dropAction());
    event.setAccepted(answered.isAccepted());
}

void answerMove(QDragMoveEvent& event, const QDragMoveEvent& answered, const QPoint& offset)
{
    // These set the rectangle and the flag, in this order.
    event.accept(answered.answerRect().translated(offset));
    answer(event, answered);
}

bool takesTabFocus(const QWidget* widget)
{
    return (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget->isEnabled() && !widget->focusProxy();
}

} // namespace

// How the view divides its place between viewport and bars.
struct ScrollViewSkin::Layout {
    bool showH = false;
    bool showV = false;
    bool needH = false;
    bool needV = false;
    int frame = 0;
    int hExtent = 0;
    int vExtent = 0;
    QRect port;
};

// One run of a layout. Receivers of the bars' signals may delete the view or make it lay out again; then this run is
// over.
struct ScrollViewSkin::LayoutRun {
    explicit LayoutRun(ScrollViewSkin* laidOut) : view(laidOut), number(++laidOut->d->layouts) {}
    bool isCurrent() const { return view && view->d->layouts == number; }

    QPointer<ScrollViewSkin> view;
    int number;
};

ScrollViewSkin::ScrollViewSkin(QWidget* parent, const char* name, WFlags f)
    : ToolkitFrame(parent, name, f),
      d(std::make_unique<ScrollViewSkinData>(this, (f & viewportFlags) | Qt::WResizeNoErase))
{
    d->hbar->setSingleStep(lineStep);
    d->hbar->setPageStep(1);
    d->vbar->setSteps(lineStep, 1);
    connect(d->hbar, &QScrollBar::valueChanged, this, &ScrollViewSkin::hslide);
    connect(d->vbar, &ScrollBarSkin::valueChanged, this, &ScrollViewSkin::vslide);
    // A bar may be deleted from outside; its place goes to the viewport.
    connect(d->hbar, &QObject::destroyed, this, [this] {
        d->hbar = nullptr;
        updateScrollBars();
    });
    connect(d->vbar, &QObject::destroyed, this, [this] {
        d->vbar = nullptr;
        updateScrollBars();
    });
    connect(&d->dragTimer, &QTimer::timeout, this, &ScrollViewSkin::scrollWhileDragging);
    d->viewport->installEventFilter(this);

    setFrameStyle(StyledPanel | Sunken);
    setLineWidth(style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

ScrollViewSkin::~ScrollViewSkin()
{
    // Their last events must not find a view without its record.
    d->clipper()->removeEventFilter(this);
    for (const auto& record : d->children)
        if (record->child)
            record->child->removeEventFilter(this);
    for (QObject* bar : {static_cast<QObject*>(d->hbar), static_cast<QObject*>(d->vbar)})
        if (bar)
            bar->disconnect(this);
}

int ScrollViewSkin::contentsX() const
{
    return d->vx;
}

int ScrollViewSkin::contentsY() const
{
    return d->vy;
}

int ScrollViewSkin::contentsWidth() const
{
    return d->vwidth;
}

int ScrollViewSkin::contentsHeight() const
{
    return d->vheight;
}

int ScrollViewSkin::visibleWidth() const
{
    return d->viewport->width();
}

int ScrollViewSkin::visibleHeight() const
{
    return d->viewport->height();
}

ToolkitWidget<QWidget>* ScrollViewSkin::viewport() const
{
    return d->viewport;
}

ToolkitWidget<QWidget>* ScrollViewSkin::clipper() const
{
    return d->clipper();
}

ScrollBarSkin* ScrollViewSkin::verticalScrollBar() const
{
    return d->vbar;
}

QScrollBar* ScrollViewSkin::horizontalScrollBar() const
{
    return d->hbar;
}

ScrollViewSkin::ScrollBarMode ScrollViewSkin::vScrollBarMode() const
{
    return d->vMode;
}

void ScrollViewSkin::setVScrollBarMode(ScrollBarMode mode)
{
    if (d->vMode == mode)
        return;
    d->vMode = mode;
    updateScrollBars();
}

ScrollViewSkin::ScrollBarMode ScrollViewSkin::hScrollBarMode() const
{
    return d->hMode;
}

void ScrollViewSkin::setHScrollBarMode(ScrollBarMode mode)
{
    if (d->hMode == mode)
        return;
    d->hMode = mode;
    updateScrollBars();
}

ScrollViewSkin::ResizePolicy ScrollViewSkin::resizePolicy() const
{
    return d->policy;
}

void ScrollViewSkin::setResizePolicy(ResizePolicy policy)
{
    d->policy = policy;
}

int ScrollViewSkin::leftMargin() const
{
    return d->l_marg;
}

int ScrollViewSkin::topMargin() const
{
    return d->t_marg;
}

int ScrollViewSkin::rightMargin() const
{
    return d->r_marg;
}

int ScrollViewSkin::bottomMargin() const
{
    return d->b_marg;
}

void ScrollViewSkin::setMargins(int left, int top, int right, int bottom)
{
    if (left == d->l_marg && top == d->t_marg && right == d->r_marg && bottom == d->b_marg)
        return;
    d->l_marg = left;
    d->t_marg = top;
    d->r_marg = right;
    d->b_marg = bottom;
    updateScrollBars();
}

QWidget* ScrollViewSkin::cornerWidget() const
{
    return d->corner;
}

void ScrollViewSkin::setCornerWidget(QWidget* corner)
{
    if (d->corner == corner)
        return;
    if (d->corner)
        d->corner->hide();
    d->corner = corner;
    if (corner && corner->parentWidget() != this)
        corner->setParent(this);
    const QPointer<ScrollViewSkin> self(this);
    updateScrollBars();
    if (self && d->corner)
        d->corner->show();
}

bool ScrollViewSkin::lineSnapping() const
{
    return d->lineSnapping;
}

void ScrollViewSkin::setLineSnapping(bool enable)
{
    d->lineSnapping = enable;
}

bool ScrollViewSkin::hasStaticBackground() const
{
    return d->static_bg;
}

void ScrollViewSkin::setStaticBackground(bool enable)
{
    d->static_bg = enable;
}

bool ScrollViewSkin::dragAutoScroll() const
{
    return d->dragAutoScroll;
}

void ScrollViewSkin::setDragAutoScroll(bool enable)
{
    d->dragAutoScroll = enable;
    if (!enable)
        d->dragTimer.stop();
}

void ScrollViewSkin::setAlphaOverride(unsigned char alpha)
{
    if (d->vbar)
        d->vbar->setAlphaOverride(alpha);
}

void ScrollViewSkin::enableClipper(bool enable)
{
    if (enable == (d->clipped_viewport != nullptr))
        return;
    if (!d->children.empty())
        qFatal("May only call ScrollViewSkin::enableClipper() before adding widgets");
    if (enable)
        d->createClippedViewport(this);
    else
        d->deleteClippedViewport(this);
}

void ScrollViewSkin::addChild(QWidget* child, int x, int y)
{
    if (!child || child == d->clipper() || child->isAncestorOf(d->clipper()))
        return;
    const QPointer<ScrollViewSkin> self(this);
    const QPointer<QWidget> added(child);
    DQSVChildRec* record = d->record(child);
    if (record) {
        if (record->x == x && record->y == y)
            return;
        record->x = x;
        record->y = y;
    } else {
        if (child->parentWidget() != d->clipper()) {
            const bool shown = !child->isHidden() && child->testAttribute(Qt::WA_WState_ExplicitShowHide);
            child->setParent(d->clipper());
            if (self && added && shown)
                child->show();
        }
        if (!self || !added)
            return;
        d->addRecord(child, x, y);
        child->installEventFilter(this);
        record = d->record(child);
    }
    d->placeChild(*record);
    // One that is out of the way has its place from the contents position, whatever covers it.
    record = self ? d->record(added) : nullptr;
    if (record && record->parked)
        added->move(d->placeInViewport(*record));
    if (self)
        resizeContentsToFirstChild();
}

void ScrollViewSkin::moveChild(QWidget* child, int x, int y)
{
    addChild(child, x, y);
}

void ScrollViewSkin::removeChild(QWidget* child)
{
    DQSVChildRec* record = d->record(child);
    if (!record)
        return;
    const QPointer<ScrollViewSkin> self(this);
    d->unpark(*record);
    if (self)
        removeChild(static_cast<QObject*>(child));
}

// The child may be in its destructor and no widget any more.
void ScrollViewSkin::removeChild(QObject* child)
{
    if (!d->record(child))
        return;
    child->removeEventFilter(this);
    d->removeRecord(child);
    // The others need not be hidden any more.
    if (d->children.size() == ScrollViewSkinData::alwaysShownChildren)
        d->followContents(this);
}

void ScrollViewSkin::showChild(QWidget* child, bool show)
{
    if (DQSVChildRec* record = d->record(child))
        d->setWanted(*record, show);
}

bool ScrollViewSkin::childIsVisible(QWidget* child) const
{
    return child && child->isVisible();
}

int ScrollViewSkin::childX(QWidget* child) const
{
    const DQSVChildRec* record = d->record(child);
    return record ? record->x : 0;
}

int ScrollViewSkin::childY(QWidget* child) const
{
    const DQSVChildRec* record = d->record(child);
    return record ? record->y : 0;
}

void ScrollViewSkin::resizeContentsToFirstChild()
{
    const QWidget* child = d->firstChild();
    if (!child || (d->policy != AutoOne && d->policy != AutoOneFit))
        return;
    const QSize hint = child->sizeHint();
    if (!hint.isValid())
        return;
    const QSize size = d->policy == AutoOneFit ? hint.boundedTo(child->maximumSize()) : hint;
    resizeContents(size.width(), size.height());
}

QPoint ScrollViewSkin::viewportToContents(const QPoint& point) const
{
    QPoint contents;
    viewportToContents(point.x(), point.y(), contents.rx(), contents.ry());
    return contents;
}

void ScrollViewSkin::viewportToContents(int vx, int vy, int& x, int& y) const
{
    const QPoint offset = d->clipperOffset();
    x = saturated(qint64(vx) + d->vx + offset.x());
    y = saturated(qint64(vy) + d->vy + offset.y());
}

QPoint ScrollViewSkin::contentsToViewport(const QPoint& point) const
{
    QPoint inViewport;
    contentsToViewport(point.x(), point.y(), inViewport.rx(), inViewport.ry());
    return inViewport;
}

void ScrollViewSkin::contentsToViewport(int x, int y, int& vx, int& vy) const
{
    const QPoint offset = d->clipperOffset();
    vx = saturated(qint64(x) - d->vx - offset.x());
    vy = saturated(qint64(y) - d->vy - offset.y());
}

// In the coordinates of the clipper; invalid where nothing of the rectangle is right of and below the viewport's
// origin.
QRect ScrollViewSkin::visiblePart(int x, int y, int w, int h) const
{
    qint64 left = qint64(x) - d->vx;
    qint64 top = qint64(y) - d->vy;
    const qint64 width = w + std::min<qint64>(left, 0);
    const qint64 height = h + std::min<qint64>(top, 0);
    if (width < 0 || height < 0)
        return {};
    left = std::clamp<qint64>(left, 0, QWIDGETSIZE_MAX);
    top = std::clamp<qint64>(top, 0, QWIDGETSIZE_MAX);
    const QRect part(int(left), int(top), int(std::min<qint64>(width, visibleWidth())),
                     int(std::min<qint64>(height, visibleHeight())));
    return part.translated(-d->clipperOffset());
}

void ScrollViewSkin::updateContents(int x, int y, int w, int h)
{
    d->clipper()->update(visiblePart(x, y, w, h));
}

void ScrollViewSkin::updateContents(const QRect& rect)
{
    updateContents(rect.x(), rect.y(), rect.width(), rect.height());
}

void ScrollViewSkin::repaintContents(int x, int y, int w, int h, bool erase)
{
    const QRect part = visiblePart(x, y, w, h);
    if (!part.isEmpty())
        d->clipper()->repaint(part, erase);
}

void ScrollViewSkin::repaintContents(const QRect& rect, bool erase)
{
    repaintContents(rect.x(), rect.y(), rect.width(), rect.height(), erase);
}

ScrollViewSkin::Layout ScrollViewSkin::layoutFor(int contentsW, int contentsH) const
{
    Layout layout;
    layout.frame = frameWidth();
    layout.hExtent = d->hbar ? d->hbar->sizeHint().height() : 0;
    layout.vExtent = d->vbar ? d->vbar->sizeHint().width() : 0;
    const ScrollBarMode hMode = d->hbar ? d->hMode : AlwaysOff;
    const ScrollBarMode vMode = d->vbar ? d->vMode : AlwaysOff;
    layout.showH = hMode == AlwaysOn;
    layout.showV = vMode == AlwaysOn;
    const qint64 w = qint64(width()) - d->l_marg - d->r_marg - 2 * qint64(layout.frame);
    const qint64 h = qint64(height()) - d->t_marg - d->b_marg - 2 * qint64(layout.frame);

    if (d->policy != AutoOne || d->anyVisibleChildren()) {
        layout.needH = w < contentsW;
        layout.needV = h < contentsH;
        layout.showH |= hMode == Auto && layout.needH;
        layout.showV |= vMode == Auto && layout.needV;
        // Intended: each of these two tests takes the other bar's extent.
        if (layout.showH && h - layout.vExtent < contentsH) {
            layout.needV = true;
            layout.showV |= vMode == Auto;
        }
        if (layout.showV && w - layout.hExtent < contentsW) {
            layout.needH = true;
            layout.showH |= hMode == Auto;
        }
    }

    const qint64 left = qint64(d->l_marg) + layout.frame;
    const bool barAtLeft = layout.showV && qt_left_hand_scrollbars;
    layout.port = QRect(
        boundedPosition(left + (barAtLeft ? layout.vExtent : 0)), boundedPosition(qint64(d->t_marg) + layout.frame),
        boundedLength(w - (layout.showV ? layout.vExtent : 0)), boundedLength(h - (layout.showH ? layout.hExtent : 0)));
    return layout;
}

QSize ScrollViewSkin::viewportSize(int w, int h) const
{
    return layoutFor(w, h).port.size();
}

void ScrollViewSkin::updateScrollBars()
{
    const LayoutRun run(this);
    const Layout layout = layoutFor(d->vwidth, d->vheight);
    const bool choked = std::exchange(d->signal_choke, true);
    const bool done = setUpVBar(run, layout) && setUpHBar(run, layout) && place(run, layout);
    if (run.view)
        d->signal_choke = choked;
    if (!done || !moveInside(run))
        return;
    if (layout.showH && !d->hbar->isVisible())
        d->hbar->show();
    if (layout.showV && !d->vbar->isVisible())
        d->vbar->show();
}

bool ScrollViewSkin::setUpVBar(const LayoutRun& run, const Layout& layout)
{
    const ScrollViewSkinData* d = run.view->d.get();
    ScrollBarSkin* bar = d->vbar;
    if (!bar)
        return run.isCurrent();
    if (!layout.showV) {
        bar->hide();
        if (!layout.needV)
            bar->setValue(0);
        if (!run.isCurrent())
            return false;
    }
    // The steps come first, for it is the new range that makes the bar compose its thumb.
    if (layout.needV)
        bar->setSteps(bar->lineStep(), layout.port.height());
    bar->setRange(0, layout.needV ? std::max(d->vheight - layout.port.height(), 0) : 0);
    return run.isCurrent();
}

bool ScrollViewSkin::setUpHBar(const LayoutRun& run, const Layout& layout)
{
    const ScrollViewSkinData* d = run.view->d.get();
    QScrollBar* bar = d->hbar;
    if (!bar)
        return run.isCurrent();
    if (!layout.showH) {
        bar->hide();
        if (!layout.needH)
            bar->setValue(0);
        if (!run.isCurrent())
            return false;
    }
    bar->setRange(0, layout.needH ? std::max(d->vwidth - layout.port.width(), 0) : 0);
    if (run.isCurrent() && layout.needH)
        bar->setPageStep(layout.port.width());
    return run.isCurrent();
}

bool ScrollViewSkin::place(const LayoutRun& run, const Layout& layout)
{
    ScrollViewSkin* view = run.view;
    ScrollViewSkinData* d = view->d.get();
    const int w = view->width();
    const int h = view->height();
    const int frame = layout.frame;
    const int barX = qt_left_hand_scrollbars ? frame : w - layout.vExtent - frame;
    const int barY = h - layout.hExtent - frame;
    const int cornerW = layout.showV || d->corner ? layout.vExtent : 0;
    const int cornerH = layout.showH || d->corner ? layout.hExtent : 0;
    if (layout.showH)
        view->setHBarGeometry(*d->hbar, frame + (qt_left_hand_scrollbars ? cornerW : 0), barY,
                              std::max(w - 2 * frame - cornerW, 0), layout.hExtent);
    if (layout.showV)
        view->setVBarGeometry(*d->vbar, barX, frame, layout.vExtent, std::max(h - 2 * frame - cornerH, 0));

    if (d->viewport->geometry() != layout.port) {
        d->viewport->setGeometry(layout.port);
        if (!run.isCurrent())
            return false;
        d->followContents(view);
        if (!run.isCurrent())
            return false;
    }
    QWidget* child = d->firstChild();
    if (child && d->policy == AutoOneFit)
        child->resize(child->sizeHint().boundedTo(child->maximumSize()).expandedTo(layout.port.size()));
    if (!run.isCurrent())
        return false;

    QRect frameRect(0, 0, w, layout.showH ? barY : h);
    if (layout.showV && qt_left_hand_scrollbars)
        frameRect.setLeft(barX + layout.vExtent);
    else if (layout.showV)
        frameRect.setRight(barX - 1);
    view->changeFrameRect(frameRect);
    if (d->corner)
        d->corner->setGeometry(barX, barY, layout.vExtent, layout.hExtent);
    return run.isCurrent();
}

// Moves the contents back when they have become too small for the position.
bool ScrollViewSkin::moveInside(const LayoutRun& run)
{
    ScrollViewSkin* view = run.view;
    ScrollViewSkinData* d = view->d.get();
    if (qint64(d->vx) + view->visibleWidth() > d->vwidth) {
        const int x = std::max(0, d->vwidth - view->visibleWidth());
        if (d->hbar)
            d->hbar->setValue(x);
        if (!run.isCurrent())
            return false;
        view->moveContents(turned(x), turned(d->vy));
        if (!run.isCurrent())
            return false;
    }
    if (qint64(d->vy) + view->visibleHeight() > d->vheight) {
        const int y = std::max(0, d->vheight - view->visibleHeight());
        if (d->vbar)
            d->vbar->setValue(y);
        if (!run.isCurrent())
            return false;
        view->moveContents(turned(d->vx), turned(y));
    }
    return run.isCurrent();
}

void ScrollViewSkin::setVBarGeometry(ScrollBarSkin& bar, int x, int y, int w, int h)
{
    bar.setGeometry(x, y, w, h);
}

void ScrollViewSkin::setHBarGeometry(QScrollBar& bar, int x, int y, int w, int h)
{
    bar.setGeometry(x, y, w, h);
}

void ScrollViewSkin::changeFrameRect(const QRect& rect)
{
    // The frame's width stays the same, so the layout needs no other run.
    const bool setting = std::exchange(d->settingFrameRect, true);
    setFrameRect(rect);
    d->settingFrameRect = setting;
}

void ScrollViewSkin::resizeContents(int w, int h)
{
    w = std::max(w, 0);
    h = std::max(h, 0);
    const int oldWidth = std::exchange(d->vwidth, w);
    const int oldHeight = std::exchange(d->vheight, h);
    const QPointer<ScrollViewSkin> self(this);
    updateScrollBars();
    if (!self)
        return;
    const auto [narrow, wide] = std::minmax(oldWidth, w);
    const auto [low, high] = std::minmax(oldHeight, h);
    updateContents(narrow, d->vy, wide - narrow, visibleHeight());
    updateContents(d->vx, low, visibleWidth(), high - low);
}

void ScrollViewSkin::setContentsPos(int x, int y)
{
    const QPointer<ScrollViewSkin> self(this);
    const bool choked = std::exchange(d->signal_choke, true);
    moveContents(turned(std::max(x, 0)), turned(std::max(y, 0)));
    // The bars get the position as it is now: a receiver may have moved the contents again.
    if (self && d->vbar)
        d->vbar->setValue(d->vy);
    if (self && d->hbar)
        d->hbar->setValue(d->vx);
    if (self)
        d->signal_choke = choked;
}

void ScrollViewSkin::scrollBy(int dx, int dy)
{
    setContentsPos(saturated(qint64(d->vx) + dx), saturated(qint64(d->vy) + dy));
}

void ScrollViewSkin::ensureVisible(int x, int y)
{
    ensureVisible(x, y, shownMargin, shownMargin);
}

void ScrollViewSkin::ensureVisible(int x, int y, int xmargin, int ymargin)
{
    setContentsPos(positionShowing(x, xmargin, d->vx, visibleWidth(), d->vwidth),
                   positionShowing(y, ymargin, d->vy, visibleHeight(), d->vheight));
}

void ScrollViewSkin::center(int x, int y)
{
    ensureVisible(x, y, middleMargin, middleMargin);
}

void ScrollViewSkin::center(int x, int y, float xmargin, float ymargin)
{
    ensureVisible(x, y, marginOf(xmargin, visibleWidth()), marginOf(ymargin, visibleHeight()));
}

void ScrollViewSkin::moveContents(int x, int y)
{
    x = turnedWithin(x, visibleWidth(), d->vwidth);
    y = turnedWithin(y, visibleHeight(), d->vheight);
    if (-x == d->vx && -y == d->vy)
        return;
    d->vx = -x;
    d->vy = -y;
    const QPointer<ScrollViewSkin> self(this);
    emit contentsMoving(-x, -y);
    if (self)
        d->followContents(this);
}

void ScrollViewSkin::hslide(int x)
{
    if (d->signal_choke)
        return;
    moveContents(turned(x), turned(d->vy));
    syncX();
}

void ScrollViewSkin::vslide(int y)
{
    const QPointer<ScrollViewSkin> self(this);
    const bool moves = !d->signal_choke;
    if (moves)
        moveContents(turned(d->vx), turned(snapped(y)));
    // Intended: the whole viewport, also when the contents have not moved. A subclass may lay out its contents while it
    // is being painted; another repaint in the middle of that must wait.
    if (self && d->viewport->testAttribute(Qt::WA_WState_InPaintEvent))
        d->viewport->update();
    else if (self)
        d->viewport->repaint(true);
    // Last, so that nothing is painted twice.
    if (moves)
        syncX();
}

int ScrollViewSkin::snapped(int y) const
{
    if (!d->lineSnapping || !d->vbar)
        return y;
    const int step = d->vbar->lineStep();
    if (step <= 0 || y >= d->vbar->maxValue())
        return y;
    return saturated((qint64(y) + step / 2) / step * step);
}

void ScrollViewSkin::setEnabled(bool enable)
{
    ToolkitFrame::setEnabled(enable);
}

void ScrollViewSkin::show()
{
    if (!isVisible())
        ToolkitFrame::show();
}

void ScrollViewSkin::resize(int w, int h)
{
    ToolkitFrame::resize(w, h);
    layOutWhileHidden();
}

void ScrollViewSkin::resize(const QSize& size)
{
    resize(size.width(), size.height());
}

void ScrollViewSkin::setGeometry(const QRect& rect)
{
    ToolkitFrame::setGeometry(rect);
    layOutWhileHidden();
}

// A hidden widget hears of its new size only when it is shown.
void ScrollViewSkin::layOutWhileHidden()
{
    if (testAttribute(Qt::WA_PendingResizeEvent))
        updateScrollBars();
}

void ScrollViewSkin::resizeEvent(QResizeEvent* event)
{
    ToolkitFrame::resizeEvent(event);
    // Qt sends one without a change in the middle of setting contents margins, where no receiver may delete the view.
    // A change of the frame is followed by frameChanged().
    if (event->size() != event->oldSize())
        updateScrollBars();
}

void ScrollViewSkin::showEvent(QShowEvent* event)
{
    ToolkitFrame::showEvent(event);
    if (event->spontaneous())
        return;
    const QPointer<ScrollViewSkin> self(this);
    updateScrollBars();
    if (self)
        d->hideOrShowAll(this, false);
}

void ScrollViewSkin::styleChange(QStyle& old)
{
    ToolkitFrame::styleChange(old);
    updateScrollBars();
}

void ScrollViewSkin::frameChanged()
{
    ToolkitFrame::frameChanged();
    if (!d->settingFrameRect)
        updateScrollBars();
}

QSize ScrollViewSkin::sizeHint() const
{
    constPolish();
    const QSize frame(2 * frameWidth(), 2 * frameWidth());
    if (d->policy == Default || d->policy == Manual)
        return {saturated(qint64(frame.width()) + d->vwidth), saturated(qint64(frame.height()) + d->vheight)};
    const QWidget* child = d->firstChild();
    if (!child)
        return frame;
    const QSize hint = child->sizeHint();
    return frame + (hint.isValid() ? hint.boundedTo(child->maximumSize()) : child->size());
}

QSize ScrollViewSkin::minimumSizeHint() const
{
    const int side = leastSide + 2 * frameWidth();
    return {side, side};
}

void ScrollViewSkin::wheelEvent(QWheelEvent* event)
{
    const QPointer<ScrollViewSkin> self(this);
    QWheelEvent moved = skinwidgets::movedEvent(*event, d->clipper()->mapFrom(this, event->position()));
    viewportWheelEvent(&moved);
    event->setAccepted(moved.isAccepted());
    if (self && d->vbar && !event->isAccepted())
        QCoreApplication::sendEvent(d->vbar, event);
}

bool ScrollViewSkin::eventFilter(QObject* object, QEvent* event)
{
    const QPointer<ScrollViewSkin> self(this);
    if (object == d->clipper())
        watchViewport(event);
    else if (d->record(object))
        watchChild(static_cast<QWidget*>(object), event);
    // With the view gone, so is the widget that the event is for.
    return !self || ToolkitFrame::eventFilter(object, event);
}

void ScrollViewSkin::watchViewport(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        viewportMousePressEvent(static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseButtonRelease:
        viewportMouseReleaseEvent(static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseButtonDblClick:
        viewportMouseDoubleClickEvent(static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseMove:
        viewportMouseMoveEvent(static_cast<QMouseEvent*>(event));
        break;
    case QEvent::Wheel:
        viewportWheelEvent(static_cast<QWheelEvent*>(event));
        break;
    case QEvent::Paint:
        // Before the view draws; later it would wipe out what has been drawn.
        d->clipper()->erase(static_cast<QPaintEvent*>(event)->region());
        viewportPaintEvent(static_cast<QPaintEvent*>(event));
        break;
    case QEvent::Resize:
        viewportResizeEvent(static_cast<QResizeEvent*>(event));
        break;
    case QEvent::ChildRemoved:
        removeChild(static_cast<QChildEvent*>(event)->child());
        break;
    case QEvent::LayoutRequest:
        resizeContentsToFirstChild();
        break;
    default:
        watchDrag(event);
        break;
    }
}

void ScrollViewSkin::watchDrag(QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
        viewportDragEnterEvent(static_cast<QDragEnterEvent*>(event));
        break;
    case QEvent::DragMove:
        followDrag(static_cast<QDropEvent*>(event)->position().toPoint() + d->clipperOffset());
        viewportDragMoveEvent(static_cast<QDragMoveEvent*>(event));
        break;
    case QEvent::DragLeave:
        d->dragTimer.stop();
        viewportDragLeaveEvent(static_cast<QDragLeaveEvent*>(event));
        break;
    case QEvent::Drop:
        d->dragTimer.stop();
        viewportDropEvent(static_cast<QDropEvent*>(event));
        break;
    default:
        break;
    }
}

void ScrollViewSkin::watchChild(QWidget* child, QEvent* event)
{
    DQSVChildRec& record = *d->record(child);
    switch (event->type()) {
    case QEvent::ShowToParent:
        if (!d->toggling) {
            record.wanted = true;
            record.parked = false;
            d->placeChild(record);
        }
        break;
    case QEvent::HideToParent:
        if (!d->toggling)
            record.wanted = false;
        break;
    case QEvent::Resize: {
        const QPointer<ScrollViewSkin> self(this);
        const QPointer<QWidget> resized(child);
        d->placeChild(record);
        if (self && resized && d->policy == AutoOne)
            resizeContents(child->width(), child->height());
        break;
    }
    case QEvent::Move:
        // Not when it was the view that moved the child.
        if (d->policy == AutoOne && !record.parked && child->pos() != d->placeOf(record)) {
            const QPoint at = child->pos() + d->clipperOffset();
            setContentsPos(-at.x(), -at.y());
        }
        break;
    default:
        break;
    }
}

void ScrollViewSkin::passToContents(QMouseEvent* event, void (ScrollViewSkin::*handler)(QMouseEvent*))
{
    const QPointF offset = QPointF(d->vx, d->vy) + d->clipperOffset();
    QMouseEvent moved = skinwidgets::movedEvent(*event, event->position() + offset);
    moved.setAccepted(event->isAccepted());
    (this->*handler)(&moved);
    event->setAccepted(moved.isAccepted());
}

void ScrollViewSkin::viewportMousePressEvent(QMouseEvent* event)
{
    passToContents(event, &ScrollViewSkin::contentsMousePressEvent);
}

void ScrollViewSkin::viewportMouseReleaseEvent(QMouseEvent* event)
{
    passToContents(event, &ScrollViewSkin::contentsMouseReleaseEvent);
}

void ScrollViewSkin::viewportMouseDoubleClickEvent(QMouseEvent* event)
{
    passToContents(event, &ScrollViewSkin::contentsMouseDoubleClickEvent);
}

void ScrollViewSkin::viewportMouseMoveEvent(QMouseEvent* event)
{
    passToContents(event, &ScrollViewSkin::contentsMouseMoveEvent);
}

void ScrollViewSkin::viewportWheelEvent(QWheelEvent* event)
{
    const QPointF offset = QPointF(d->vx, d->vy) + d->clipperOffset();
    QWheelEvent moved = skinwidgets::movedEvent(*event, event->position() + offset);
    contentsWheelEvent(&moved);
    event->setAccepted(moved.isAccepted());
}

// The answer rectangle goes to and fro between the viewport's and the contents' coordinates, as the position does.
void ScrollViewSkin::viewportDragEnterEvent(QDragEnterEvent* event)
{
    const QPoint offset = viewportToContents(QPoint());
    QDragEnterEvent moved(event->position().toPoint() + offset, event->possibleActions(), event->mimeData(),
                          event->buttons(), event->modifiers());
    answerMove(moved, *event, offset);
    contentsDragEnterEvent(&moved);
    answerMove(*event, moved, -offset);
}

void ScrollViewSkin::viewportDragMoveEvent(QDragMoveEvent* event)
{
    const QPoint offset = viewportToContents(QPoint());
    QDragMoveEvent moved(event->position().toPoint() + offset, event->possibleActions(), event->mimeData(),
                         event->buttons(), event->modifiers());
    answerMove(moved, *event, offset);
    contentsDragMoveEvent(&moved);
    answerMove(*event, moved, -offset);
}

void ScrollViewSkin::viewportDragLeaveEvent(QDragLeaveEvent* event)
{
    contentsDragLeaveEvent(event);
}

void ScrollViewSkin::viewportDropEvent(QDropEvent* event)
{
    QDropEvent moved(event->position() + viewportToContents(QPoint()), event->possibleActions(), event->mimeData(),
                     event->buttons(), event->modifiers());
    answer(moved, *event);
    contentsDropEvent(&moved);
    answer(*event, moved);
}

void ScrollViewSkin::viewportPaintEvent(QPaintEvent* event)
{
    const QPoint offset = d->clipperOffset();
    const QRect seen(-offset, d->viewport->size());
    const QRect rect = event->rect() & seen;
    if (rect.isEmpty())
        return;
    const int x = saturated(qint64(d->vx) + offset.x());
    const int y = saturated(qint64(d->vy) + offset.y());
    QPainter painter(d->clipper());
    drawContentsOffset(&painter, x, y, saturated(qint64(x) + rect.x()), saturated(qint64(y) + rect.y()), rect.width(),
                       rect.height());
}

void ScrollViewSkin::viewportResizeEvent(QResizeEvent* /*event*/) {}

void ScrollViewSkin::drawContentsOffset(QPainter* painter, int ox, int oy, int cx, int cy, int cw, int ch)
{
    painter->translate(-double(ox), -double(oy));
    drawContents(painter, cx, cy, cw, ch);
    painter->translate(ox, oy);
}

void ScrollViewSkin::drawContents(QPainter* /*painter*/, int /*cx*/, int /*cy*/, int /*cw*/, int /*ch*/) {}

void ScrollViewSkin::drawContents(QPainter* /*painter*/) {}

void ScrollViewSkin::contentsMousePressEvent(QMouseEvent* /*event*/) {}

void ScrollViewSkin::contentsMouseReleaseEvent(QMouseEvent* /*event*/) {}

void ScrollViewSkin::contentsMouseDoubleClickEvent(QMouseEvent* /*event*/) {}

void ScrollViewSkin::contentsMouseMoveEvent(QMouseEvent* /*event*/) {}

void ScrollViewSkin::contentsWheelEvent(QWheelEvent* event)
{
    event->ignore();
}

void ScrollViewSkin::contentsDragEnterEvent(QDragEnterEvent* /*event*/) {}

void ScrollViewSkin::contentsDragMoveEvent(QDragMoveEvent* /*event*/) {}

void ScrollViewSkin::contentsDragLeaveEvent(QDragLeaveEvent* /*event*/) {}

void ScrollViewSkin::contentsDropEvent(QDropEvent* /*event*/) {}

// Null where no other widget of the window takes the focus by Tab.
QWidget* ScrollViewSkin::nextInChain(bool next) const
{
    QWidget* const start = window()->focusWidget() ? window()->focusWidget() : const_cast<ScrollViewSkin*>(this);
    const auto step = [next](const QWidget* widget) {
        return next ? widget->nextInFocusChain() : widget->previousInFocusChain();
    };
    for (QWidget* widget = step(start); widget && widget != start; widget = step(widget)) {
        if (!takesTabFocus(widget))
            continue;
        const DQSVChildRec* record = d->ancestorRecord(widget);
        const bool parked = record && record->parked && record->wanted;
        if (widget->isVisible() || (parked && (widget == record->child || widget->isVisibleTo(record->child))))
            return widget;
    }
    return nullptr;
}

bool ScrollViewSkin::focusNextPrevChild(bool next)
{
    // A child that the view itself hides keeps the focus, or the view would scroll elsewhere.
    if (d->toggling)
        return true;
    const QPointer<QWidget> target(nextInChain(next));
    if (!target)
        return ToolkitFrame::focusNextPrevChild(next);
    const QPointer<ScrollViewSkin> self(this);
    if (const DQSVChildRec* record = d->ancestorRecord(target)) {
        const QPoint middle = target->mapTo(record->child.data(), QPoint(target->width() / 2, target->height() / 2));
        ensureVisible(saturated(qint64(record->x) + middle.x()), saturated(qint64(record->y) + middle.y()),
                      target->width() / 2, target->height() / 2);
    }
    if (target)
        target->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void ScrollViewSkin::followDrag(const QPoint& at)
{
    d->dragPosition = at;
    const bool close = dragDirection(at.x(), visibleWidth()) != 0 || dragDirection(at.y(), visibleHeight()) != 0;
    if (!close || !d->dragAutoScroll)
        d->dragTimer.stop();
    else if (!d->dragTimer.isActive())
        d->dragTimer.start(dragInterval);
}

void ScrollViewSkin::scrollWhileDragging()
{
    scrollBy(dragStep * dragDirection(d->dragPosition.x(), visibleWidth()),
             dragStep * dragDirection(d->dragPosition.y(), visibleHeight()));
}
