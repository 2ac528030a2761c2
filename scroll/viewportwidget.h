#ifndef SKINWIDGETS_SCROLL_VIEWPORTWIDGET_H
#define SKINWIDGETS_SCROLL_VIEWPORTWIDGET_H

#include "toolkit/toolkitwidget.h"

namespace skinwidgets
{

/*
 * A widget that shows the contents of a scroll view. The view watches its events and draws its contents from there;
 * this class only keeps the widget's own handling from undoing what the view did.
 */
class SKINWIDGETS_EXPORT ViewportWidget : public ToolkitWidget<QWidget>
{
public:
    // A scroll view makes and owns it.
    explicit ViewportWidget(QWidget* parent = nullptr, const char* name = nullptr, WFlags f = 0);
    ~ViewportWidget() override;

    // Inside a paint event: draws the background picture over the region, where there is one to draw.
    void erase(const QRegion& region);

protected:
    // Erases nothing by itself: by now the view has painted.
    bool event(QEvent* event) override;
    // These leave the event accepted or ignored as the view left it. QWidget would ignore it, and the view would see
    // it again as its own.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace skinwidgets

#endif
