#include "scroll/viewportwidget.h"

namespace skinwidgets
{

ViewportWidget::ViewportWidget(QWidget* parent, const char* name, WFlags f) : ToolkitWidget(parent, name, f) {}

ViewportWidget::~ViewportWidget() = default;

void ViewportWidget::erase(const QRegion& region)
{
    if (backgroundPixmap() && backgroundMode() != NoBackground && !testWFlags(Qt::WRepaintNoErase))
        eraseWithBackground(this, region);
}

bool ViewportWidget::event(QEvent* event)
{
    if (event->type() != QEvent::Paint)
        return ToolkitWidget::event(event);
    // The base class in between is left out on purpose: it would erase.
    return QWidget::event(event); // NOLINT(bugprone-parent-virtual-call)
}

void ViewportWidget::mousePressEvent(QMouseEvent* /*event*/) {}

void ViewportWidget::mouseReleaseEvent(QMouseEvent* /*event*/) {}

void ViewportWidget::mouseDoubleClickEvent(QMouseEvent* /*event*/) {}

void ViewportWidget::mouseMoveEvent(QMouseEvent* /*event*/) {}

void ViewportWidget::wheelEvent(QWheelEvent* /*event*/) {}

} // namespace skinwidgets
