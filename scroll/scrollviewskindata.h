#ifndef SKINWIDGETS_SCROLL_SCROLLVIEWSKINDATA_H
#define SKINWIDGETS_SCROLL_SCROLLVIEWSKINDATA_H

#include "scroll/clipperwidget.h"
#include "scroll/scrollbarskin.h"
#include "scroll/scrollviewskin.h"

#include <QHash>
#include <QPointer>
#include <QScrollBar>
#include <QTimer>

#include <memory>
#include <vector>

// A child widget of the contents.
struct DQSVChildRec {
    QPointer<QWidget> child;
    // In contents coordinates.
    int x;
    int y;
    // The application wants it shown.
    bool wanted;
    // Hidden by the view, because it lies too far away.
    bool parked;
};

/*
 * The state of a scroll view.
 *
 * Without a clipped viewport child widgets are moved with the contents. Moving a widget among thousands that are shown
 * is slow, and so is painting there. So of more than alwaysShownChildren only those in sight, and one that holds the
 * focus, are shown and moved; the others are hidden where they were last.
 *
 * With a clipped viewport child widgets keep their places on it, until it is moved back to the middle. Those that it
 * does not cover are hidden.
 */
class ScrollViewSkinData
{
public:
    static constexpr size_t alwaysShownChildren = 128;

    ScrollViewSkinData(ScrollViewSkin* view, WFlags viewportFlags);

    skinwidgets::ViewportWidget* clipper() const;
    // Where the clipped viewport's origin lies in the viewport; 0, 0 without one.
    QPoint clipperOffset() const;
    void createClippedViewport(ScrollViewSkin* view);
    void deleteClippedViewport(ScrollViewSkin* view);

    // Null where the object is no registered child.
    DQSVChildRec* record(const QObject* child) const;
    // The record of the child that the widget is or lies in.
    DQSVChildRec* ancestorRecord(const QWidget* widget) const;
    QWidget* firstChild() const;
    bool anyVisibleChildren() const;
    void addRecord(QWidget* child, int x, int y);
    void removeRecord(const QObject* child);

    // Where the child belongs now in its parent's coordinates; bounded to what widgets can have as a position.
    QPoint placeOf(const DQSVChildRec& record) const;
    // Where it lies in the viewport.
    QPoint placeInViewport(const DQSVChildRec& record) const;
    // Puts the child there, and shows or hides it as its place and the application's wish ask for.
    void placeChild(DQSVChildRec& record);
    // Ends what the view itself has hidden.
    void unpark(DQSVChildRec& record);
    void setWanted(DQSVChildRec& record, bool wanted);

    // Brings what is seen in line with the contents position.
    void followContents(ScrollViewSkin* view);
    // The same with a clipped viewport; without one nothing happens.
    void hideOrShowAll(ScrollViewSkin* view, bool isScroll);

    // Null where somebody has deleted the bar: the view then works as with that bar always off.
    QScrollBar* hbar;
    ScrollBarSkin* vbar;
    skinwidgets::ViewportWidget* viewport;
    DQClipperWidget* clipped_viewport = nullptr;
    WFlags flags;

    // In the order of insertion.
    std::vector<std::unique_ptr<DQSVChildRec>> children;
    QHash<const QObject*, DQSVChildRec*> childDict;

    int vx = 0;
    int vy = 0;
    int vwidth = 0;
    int vheight = 0;
    int l_marg = 0;
    int r_marg = 0;
    int t_marg = 0;
    int b_marg = 0;
    ScrollViewSkin::ResizePolicy policy = ScrollViewSkin::Default;
    ScrollViewSkin::ScrollBarMode vMode = ScrollViewSkin::Auto;
    ScrollViewSkin::ScrollBarMode hMode = ScrollViewSkin::Auto;
    QPointer<QWidget> corner;
    bool static_bg = false;
    // Value changes of the bars do not move the contents.
    bool signal_choke = false;
    bool lineSnapping = false;
    bool dragAutoScroll = true;

    // The view is showing or hiding a child, so that this tells nothing about the application's wish.
    bool toggling = false;
    // The view is setting its own frame rectangle.
    bool settingFrameRect = false;
    // Counts the layouts, so that one that was overtaken by another one stops.
    int layouts = 0;
    // The stylus while something is dragged, in viewport coordinates.
    QPoint dragPosition;
    QTimer dragTimer;

private:
    QRect clippedGeometryAt(qint64 contentsX, qint64 contentsY) const;
    bool isCovered(const DQSVChildRec& record) const;
    bool isInSight(const DQSVChildRec& record) const;
    bool isKeptShown(const DQSVChildRec& record) const;
    void toggle(QWidget* child, bool show);
    void centreClippedViewport(ScrollViewSkin* view);
    void placeAll(const std::vector<QPointer<QWidget>>& moved, ScrollViewSkin* view);

    // Where the clipped viewport's origin lies in the contents.
    qint64 originX = 0;
    qint64 originY = 0;
};

#endif
