#ifndef SKINWIDGETS_SCROLL_CLIPPERWIDGET_H
#define SKINWIDGETS_SCROLL_CLIPPERWIDGET_H

#include "scroll/viewportwidget.h"

/*
 * The large widget that a scroll view with ScrollViewSkin::enableClipper() moves about under its viewport. It covers
 * more of the contents than can be seen, so that most scrolling moves one widget and none of the child widgets in it.
 */
class SKINWIDGETS_EXPORT DQClipperWidget : public skinwidgets::ViewportWidget
{
    Q_OBJECT

public:
    // Made by ScrollViewSkin::enableClipper(); the viewport is its parent and owns it.
    explicit DQClipperWidget(QWidget* parent = nullptr, const char* name = nullptr, WFlags f = 0);
    ~DQClipperWidget() override;

protected:
    // The focus stays where it is while the view moves this widget: a focused child that gets hidden then must not
    // send the view scrolling to another one.
    bool focusNextPrevChild(bool next) override;

    // The view is moving this widget.
    bool moving = false;

private:
    friend class ScrollViewSkinData;
};

#endif
