#ifndef SKINWIDGETS_SCROLL_SCROLLVIEWSKIN_H
#define SKINWIDGETS_SCROLL_SCROLLVIEWSKIN_H

#include "toolkit/toolkitframe.h"

#include <memory>

class QScrollBar;
class ScrollBarSkin;
class ScrollViewSkinData;

/*
 * A frame that shows a part of a larger contents area, with a ScrollBarSkin at its right and a QScrollBar at its
 * bottom. The contents are drawn by a subclass in drawContents(), are child widgets, or both.
 *
 * Contents coordinates count from the contents' top-left corner; any size from 0 to the largest int works. Viewport
 * coordinates are those of clipper(). All lengths are pixels.
 *
 * Both bars and the viewport belong to the view. A bar that is deleted all the same is missed by nothing but its place.
 * A child widget belongs to the viewport, as every child to its parent; the view forgets it when it is deleted or given
 * another parent. While there are more than 128 of them the view hides those that are out of sight, and shows them when
 * they come into sight.
 *
 * Any receiver of contentsMoving() or of a bar's signals may delete the view, except while the view or a child is being
 * resized, moved or shown, which no widget survives: there deleteLater() is the way.
 */
class SKINWIDGETS_EXPORT ScrollViewSkin : public ToolkitFrame
{
    Q_OBJECT

public:
    // When a bar is shown.
    enum ScrollBarMode {
        // Shown when the contents do not fit.
        Auto = 0,
        // Never; the contents still scroll.
        AlwaysOff = 1,
        // Always, with nothing to scroll too.
        AlwaysOn = 2
    };

    // Who sets the size of the contents.
    enum ResizePolicy {
        // The application sets the size of the contents.
        Default = 0,
        Manual = 1,
        // The first child widget is the contents.
        AutoOne = 2,
        // The same, and the child is made as large as the viewport at least.
        AutoOneFit = 3
    };

    // A sunken panel without contents, margins or clipper. The viewport takes over the flags WPaintClever,
    // WNorthWestGravity and WRepaintNoErase.
    explicit ScrollViewSkin(QWidget* parent = nullptr, const char* name = nullptr, WFlags f = 0);
    ~ScrollViewSkin() override;

    // The contents position that is shown at the viewport's top-left corner.
    int contentsX() const;
    int contentsY() const;
    // The size of the contents, 0 at start.
    int contentsWidth() const;
    int contentsHeight() const;
    // The size of the viewport, also with a clipper.
    int visibleWidth() const;
    int visibleHeight() const;

    // The widget through which the contents are seen. The view owns it.
    ToolkitWidget<QWidget>* viewport() const;
    // The widget that shows the contents: the large clipper when enabled, else the viewport.
    ToolkitWidget<QWidget>* clipper() const;
    // The bars, which the view owns; null once somebody deleted them.
    ScrollBarSkin* verticalScrollBar() const;
    QScrollBar* horizontalScrollBar() const;

    // Auto at start. Setting one lays the view out again.
    ScrollBarMode vScrollBarMode() const;
    virtual void setVScrollBarMode(ScrollBarMode mode);
    ScrollBarMode hScrollBarMode() const;
    virtual void setHScrollBarMode(ScrollBarMode mode);

    // Default at start.
    ResizePolicy resizePolicy() const;
    // Takes effect with the next change of a child or layout. Nothing else changes the policy.
    virtual void setResizePolicy(ResizePolicy policy);

    // Between the frame and the viewport.
    int leftMargin() const;
    int topMargin() const;
    int rightMargin() const;
    int bottomMargin() const;
    virtual void setMargins(int left, int top, int right, int bottom);

    // The widget between the ends of the bars, none at start. The new one becomes a child of the view and is shown, the
    // old one is hidden and stays a child.
    QWidget* cornerWidget() const;
    virtual void setCornerWidget(QWidget* corner);

    // With line snapping the vertical bar's values are rounded to whole lines, half a line up, except at the bar's end.
    // Off at start.
    bool lineSnapping() const;
    void setLineSnapping(bool enable);

    // With a static background the contents are always painted anew when they move. Off at start.
    bool hasStaticBackground() const;
    void setStaticBackground(bool enable);

    // Something that is dragged and kept close to the viewport's edge makes the view scroll. On at start; works where
    // clipper() accepts drops.
    bool dragAutoScroll() const;
    void setDragAutoScroll(bool enable);

    // Passes the alpha on to the vertical bar.
    virtual void setAlphaOverride(unsigned char alpha);

    // Puts the contents on a widget larger than the viewport, so that any number of child widgets may lie anywhere in
    // the contents; those far from the viewport are hidden until they come near. Ends the program when the view has
    // child widgets already.
    void enableClipper(bool enable);

    // Takes the widget into the contents at (x, y), or moves a child that is there already. Does not show it, except
    // where it was shown before. Null, the view and what it lies in are ignored.
    virtual void addChild(QWidget* child, int x = 0, int y = 0);
    // The same.
    virtual void moveChild(QWidget* child, int x, int y);
    // Lets go of the child, which stays a child widget of the clipper and is not deleted. One that only the view had
    // hidden is shown again. Others are ignored.
    virtual void removeChild(QWidget* child);
    void removeChild(QObject* child);
    // Shows or hides the child for as long as the view itself may show it. Others are ignored.
    virtual void showChild(QWidget* child, bool show = true);
    // As the child's isVisible(): false, too, for a child that the view has hidden because it is out of sight.
    bool childIsVisible(QWidget* child) const;
    // The child's position in the contents, 0 for other widgets.
    int childX(QWidget* child) const;
    int childY(QWidget* child) const;

    // Between the coordinates of the contents and of the viewport, also with a clipper. Points outside of either are
    // converted as well.
    QPoint viewportToContents(const QPoint& point) const;
    void viewportToContents(int vx, int vy, int& x, int& y) const;
    QPoint contentsToViewport(const QPoint& point) const;
    void contentsToViewport(int x, int y, int& vx, int& vy) const;

    // Schedule a repaint of, or repaint, the visible part of a rectangle of the contents.
    void updateContents(int x, int y, int w, int h);
    void updateContents(const QRect& rect);
    void repaintContents(int x, int y, int w, int h, bool erase = true);
    void repaintContents(const QRect& rect, bool erase = true);

    // What is left of the view for the viewport, once the bars that contents of this size need have their place.
    QSize viewportSize(int w, int h) const;
    // The frame and the contents, without bars.
    QSize sizeHint() const override;
    // 100 pixels each way and the frame.
    QSize minimumSizeHint() const override;

    // As in the toolkit; a hidden view is laid out at once, too.
    void setEnabled(bool enable) override;
    void show() override;
    void resize(int w, int h) override;
    void resize(const QSize& size);
    void setGeometry(const QRect& rect) override;
    using ToolkitFrame::setGeometry;

    // Place a bar; the numbers are view coordinates.
    virtual void setVBarGeometry(ScrollBarSkin& bar, int x, int y, int w, int h);
    virtual void setHBarGeometry(QScrollBar& bar, int x, int y, int w, int h);
    // The frame's own rectangle, which leaves out the bars.
    void changeFrameRect(const QRect& rect);

    bool eventFilter(QObject* object, QEvent* event) override;

public slots:
    // Negative sizes count as 0. The bars follow at once; a position beyond the new end moves back to it.
    virtual void resizeContents(int w, int h);
    // Positions outside the contents give the nearest one inside.
    virtual void setContentsPos(int x, int y);
    // By so many pixels, as far as the contents reach.
    void scrollBy(int dx, int dy);
    // Scrolls as little as needed to show the point with a margin around it, 50 pixels where none is given. A margin
    // larger than half the viewport counts as half of it.
    void ensureVisible(int x, int y);
    void ensureVisible(int x, int y, int xmargin, int ymargin);
    // Scrolls the point into the middle, or, with fractions, at least that far from the edge to the middle: 0 lets it
    // lie at the edge, 0.5 within the middle half, 1 in the centre only.
    void center(int x, int y);
    void center(int x, int y, float xmargin, float ymargin);
    // Lays out bars, viewport, frame and corner widget.
    void updateScrollBars();

    // What the bars' values do: each moves the contents.
    void hslide(int x);
    // Also repaints the whole viewport, in any case.
    void vslide(int y);

signals:
    // The contents are about to move to this position, which contentsX() and contentsY() give already.
    void contentsMoving(int x, int y);

protected:
    // Moves the contents to a position given with its signs turned, no farther than their end. Emits contentsMoving()
    // when that is another position than now, and leaves the bars alone.
    virtual void moveContents(int x, int y);

    // Draws a rectangle of the contents with the painter's origin at (ox, oy) of the contents. Calls drawContents()
    // with the painter moved, so that it draws in contents coordinates.
    virtual void drawContentsOffset(QPainter* painter, int ox, int oy, int cx, int cy, int cw, int ch);
    virtual void drawContents(QPainter* painter, int cx, int cy, int cw, int ch);
    // The frame's own contents; the viewport covers them.
    void drawContents(QPainter* painter) override;

    // Positions are contents coordinates. An event that a handler ignores goes on to the view's own handlers. The
    // mouse handlers do nothing; contentsWheelEvent() ignores the event.
    virtual void contentsMousePressEvent(QMouseEvent* event);
    virtual void contentsMouseReleaseEvent(QMouseEvent* event);
    virtual void contentsMouseDoubleClickEvent(QMouseEvent* event);
    virtual void contentsMouseMoveEvent(QMouseEvent* event);
    virtual void contentsWheelEvent(QWheelEvent* event);

    // What is dragged over the contents, where clipper() accepts drops. The handlers leave the events as they are.
    virtual void contentsDragEnterEvent(QDragEnterEvent* event);
    virtual void contentsDragMoveEvent(QDragMoveEvent* event);
    virtual void contentsDragLeaveEvent(QDragLeaveEvent* event);
    virtual void contentsDropEvent(QDropEvent* event);

    // The events of clipper(), in its coordinates.
    virtual void viewportPaintEvent(QPaintEvent* event);
    virtual void viewportResizeEvent(QResizeEvent* event);
    virtual void viewportMousePressEvent(QMouseEvent* event);
    virtual void viewportMouseReleaseEvent(QMouseEvent* event);
    virtual void viewportMouseDoubleClickEvent(QMouseEvent* event);
    virtual void viewportMouseMoveEvent(QMouseEvent* event);
    virtual void viewportWheelEvent(QWheelEvent* event);
    virtual void viewportDragEnterEvent(QDragEnterEvent* event);
    virtual void viewportDragMoveEvent(QDragMoveEvent* event);
    virtual void viewportDragLeaveEvent(QDragLeaveEvent* event);
    virtual void viewportDropEvent(QDropEvent* event);

    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    // Tab travels on to the next widget in the focus chain and scrolls it into view when it lies in the contents.
    bool focusNextPrevChild(bool next) override;

    void styleChange(QStyle& old) override;
    void frameChanged() override;

private:
    friend class ScrollViewSkinData;
    struct Layout;
    struct LayoutRun;

    Layout layoutFor(int w, int h) const;
    static bool setUpVBar(const LayoutRun& run, const Layout& layout);
    static bool setUpHBar(const LayoutRun& run, const Layout& layout);
    static bool place(const LayoutRun& run, const Layout& layout);
    void placeCornerWidget(const Layout& layout);
    static bool moveInside(const LayoutRun& run);
    void layOutWhileHidden();
    int snapped(int y) const;
    QRect visiblePart(int x, int y, int w, int h) const;
    void resizeContentsToFirstChild();
    void watchViewport(QEvent* event);
    void watchDrag(QEvent* event);
    void watchChild(QWidget* child, QEvent* event);
    void passToContents(QMouseEvent* event, void (ScrollViewSkin::*handler)(QMouseEvent*));
    QWidget* nextInChain(bool next) const;
    void followDrag(const QPoint& at);
    void scrollWhileDragging();

    std::unique_ptr<ScrollViewSkinData> d;
};

#endif
