#include "player/details/detailsview.h"

#include "scroll/scrollbarskin.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QMouseEvent>
#include <QWheelEvent>

#include <chrono>
#include <cmath>
#include <limits>

using namespace std::chrono_literals;

namespace
{

// What the user does not notice between two events.
constexpr auto portion = 8ms;

} // namespace

DetailsView::DetailsView(QWidget* parent, const char* name) : ScrollViewSkin(parent, name)
{
    setFrameStyle(NoFrame);
    setHScrollBarMode(AlwaysOff);
    setStaticBackground(true);
    setAlphaOverride(255);
    verticalScrollBar()->setLineStep(DetailsPage::scrollStep);
    m_layoutTimer.setObjectName(QStringLiteral("lay out text"));
    connect(&m_layoutTimer, &QTimer::timeout, this, &DetailsView::layOutMore);
}

DetailsView::~DetailsView() = default;

void DetailsView::setLook(const DetailsPage::Look& look)
{
    m_page.setLook(look);
    layOut();
}

void DetailsView::showTrack(const TrackDetails& track, const QImage& cover, const TrackText& text)
{
    m_text = text;
    m_drag = NoDrag;
    m_page.setTrack(track, cover);
    m_page.setText(text);
    scrollToStart();
    layOut();
}

void DetailsView::updateTrack(const TrackDetails& track, const QImage& cover)
{
    m_page.setTrack(track, cover);
    layOut();
}

void DetailsView::layOut()
{
    // As wide as beside the bar, be it needed or not, so that the bar never changes the layout.
    m_page.layOut(viewportSize(0, std::numeric_limits<int>::max()).width());
    if (!m_page.isLaidOut())
        m_layoutTimer.start();
    takeHeight();
    viewport()->update();
}

void DetailsView::layOutMore()
{
    m_page.layOutText(QDeadlineTimer(portion));
    if (m_page.isLaidOut())
        m_layoutTimer.stop();
    takeHeight();
}

void DetailsView::takeHeight()
{
    resizeContents(m_page.width(), m_page.height());
}

bool DetailsView::isInSight(const QRect& rect) const
{
    return rect.intersects(QRect(contentsX(), contentsY(), visibleWidth(), visibleHeight()));
}

void DetailsView::setPosition(qint64 position)
{
    const int line = m_text.lineAt(position);
    const int before = m_page.currentLine();
    if (line == before)
        return;
    const QRect left = m_page.timedLineRect(before);
    m_page.setCurrentLine(line);
    const QRect entered = m_page.timedLineRect(line);
    updateContents(left);
    updateContents(entered);
    if (m_drag != Dragging && !entered.isEmpty() && isInSight(left))
        ensureVisible(contentsX(), entered.center().y(), 0, visibleHeight() / 3);
}

void DetailsView::scrollLines(int lines)
{
    scrollBy(0, lines * DetailsPage::scrollStep);
}

void DetailsView::scrollPages(int pages)
{
    scrollBy(0, pages * (visibleHeight() - DetailsPage::scrollStep));
}

void DetailsView::scrollToStart()
{
    setContentsPos(0, 0);
}

void DetailsView::scrollToEnd()
{
    setContentsPos(0, contentsHeight());
}

void DetailsView::drawContents(QPainter* painter, int cx, int cy, int cw, int ch)
{
    m_page.draw(painter, QRect(cx, cy, cw, ch));
}

void DetailsView::contentsMousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_drag = Pressed;
    m_dragStart = event->globalPosition().toPoint().y();
}

void DetailsView::contentsMouseMoveEvent(QMouseEvent* event)
{
    if (m_drag == NoDrag)
        return;
    const int at = event->globalPosition().toPoint().y();
    if (m_drag == Pressed && std::abs(at - m_dragStart) < QApplication::startDragDistance())
        return;
    if (m_drag == Pressed) {
        m_drag = Dragging;
        m_dragStart = at;
        m_dragContents = contentsY();
    }
    setContentsPos(contentsX(), m_dragContents + m_dragStart - at);
}

void DetailsView::contentsMouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_drag = NoDrag;
}

void DetailsView::contentsWheelEvent(QWheelEvent* event)
{
    scrollBy(0, -m_wheel.pixels(*event, DetailsPage::scrollStep));
    event->accept();
}

void DetailsView::resizeEvent(QResizeEvent* event)
{
    ScrollViewSkin::resizeEvent(event);
    layOut();
}
