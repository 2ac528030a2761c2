#include "toolkit/toolkitframe.h"

#include <QPainter>
#include <QScopedValueRollback>
#include <QStyleOptionFrame>
#include <qdrawutil.h>

#include <algorithm>
#include <limits>

namespace
{

constexpr int winPanelWidth = 2;

int boundedWidth(int width)
{
    return std::clamp(width, 0, int(std::numeric_limits<short>::max()));
}

QMargins surroundOf(const QRect& outer, const QRect& inner)
{
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
}

// Qt lays out the frame anew after these, though nothing about it has changed.
bool remakesFrame(QEvent::Type type)
{
    return type == QEvent::Polish || type == QEvent::StyleChange || type == QEvent::ParentChange;
}

} // namespace

ToolkitFrame::ToolkitFrame(QWidget* parent, const char* name, WFlags f)
    : ToolkitWidget(parent, name, f),
      m_look(currentLook()),
      m_plainWidth(QFrame::frameWidth())
{
}

ToolkitFrame::~ToolkitFrame() = default;

void ToolkitFrame::setFrameStyle(int style)
{
    changeLook([=] { QFrame::setFrameStyle(style); });
}

void ToolkitFrame::setFrameShape(Shape shape)
{
    setFrameStyle((frameStyle() & Shadow_Mask) | shape);
}

void ToolkitFrame::setFrameShadow(Shadow shadow)
{
    setFrameStyle((frameStyle() & Shape_Mask) | shadow);
}

void ToolkitFrame::setLineWidth(int width)
{
    changeLook([=] { QFrame::setLineWidth(boundedWidth(width)); });
}

void ToolkitFrame::setMidLineWidth(int width)
{
    changeLook([=] { QFrame::setMidLineWidth(boundedWidth(width)); });
}

void ToolkitFrame::setMargin(int margin)
{
    margin = boundedWidth(margin);
    if (m_margin == margin)
        return;
    m_margin = margin;
    placeContents();
    frameChanged();
}

int ToolkitFrame::frameWidth() const
{
    return linesWidth() + m_margin;
}

QRect ToolkitFrame::frameRect() const
{
    return rect().marginsRemoved(m_surround);
}

void ToolkitFrame::setFrameRect(const QRect& frame)
{
    const QMargins surround = surroundOf(rect(), frame.isValid() ? frame : rect());
    if (m_surround == surround)
        return;
    m_surround = surround;
    placeContents();
    frameChanged();
}

QRect ToolkitFrame::contentsRect() const
{
    const int width = frameWidth();
    return frameRect().adjusted(width, width, -width, -width);
}

QSize ToolkitFrame::sizeHint() const
{
    return QSize(2, 2) * frameWidth();
}

void ToolkitFrame::frameChanged()
{
    update();
}

int ToolkitFrame::linesWidth() const
{
    switch (frameShape()) {
    case Box:
    case HLine:
    case VLine:
        return frameShadow() == Plain ? lineWidth() : 2 * lineWidth() + midLineWidth();
    case Panel:
    case StyledPanel:
        return lineWidth();
    case WinPanel:
        return winPanelWidth;
    case NoFrame:
        break;
    }
    return 0;
}

ToolkitFrame::Look ToolkitFrame::currentLook() const
{
    return {frameStyle(), lineWidth(), midLineWidth()};
}

template <class Setter>
void ToolkitFrame::changeLook(const Setter& setter)
{
    {
        const QScopedValueRollback<bool> placing(m_placing, true);
        setter();
    }
    if (!noticeLook())
        return;
    placeContents();
    frameChanged();
}

bool ToolkitFrame::noticeLook()
{
    const Look look = currentLook();
    if (m_look.style == look.style && m_look.lineWidth == look.lineWidth && m_look.midLineWidth == look.midLineWidth)
        return false;
    m_look = look;
    return true;
}

// Qt's frame moves its contents when its width changes and when its rectangle does; only the latter moves ours.
void ToolkitFrame::noticeForeignChange()
{
    if (m_plainWidth == QFrame::frameWidth())
        m_surround = surroundOf(rect(), QFrame::frameRect());
    noticeLook();
    placeContents();
    frameChanged();
}

void ToolkitFrame::placeContents()
{
    const QScopedValueRollback<bool> placing(m_placing, true);
    const int width = frameWidth();
    m_plainWidth = QFrame::frameWidth();
    setContentsMargins(m_surround + width);
}

bool ToolkitFrame::event(QEvent* event)
{
    if (remakesFrame(event->type())) {
        const QScopedValueRollback<bool> placing(m_placing, true);
        const bool accepted = ToolkitWidget::event(event);
        placeContents();
        return accepted;
    }
    const bool accepted = ToolkitWidget::event(event);
    if (event->type() == QEvent::ContentsRectChange && !m_placing)
        noticeForeignChange();
    return accepted;
}

void ToolkitFrame::paintEvent(QPaintEvent* event)
{
    if (noticeLook()) {
        placeContents();
        frameChanged();
    }
    QPainter painter(this);
    const QRect contents = contentsRect();
    if (!contents.contains(event->rect())) {
        painter.save();
        painter.setClipRegion(event->region() & frameRect());
        drawFrame(&painter);
        painter.restore();
    }
    if (!event->rect().intersects(contents))
        return;
    painter.setClipRegion(event->region() & contents);
    drawContents(&painter);
}

void ToolkitFrame::drawFrame(QPainter* painter)
{
    if (linesWidth() == 0)
        return;
    QStyleOptionFrame option;
    initStyleOption(&option);
    option.rect = frameRect();
    const bool ownWidth = lineWidth() == style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, this);
    if (frameShape() != StyledPanel || ownWidth)
        style()->drawControl(QStyle::CE_ShapedFrame, &option, painter, this);
    else if (frameShadow() == Plain)
        qDrawPlainRect(painter, option.rect, palette().color(foregroundRole()), lineWidth());
    else
        qDrawShadePanel(painter, option.rect, palette(), frameShadow() == Sunken, lineWidth());
}

void ToolkitFrame::drawContents(QPainter*) {}
