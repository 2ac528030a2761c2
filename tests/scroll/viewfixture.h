#ifndef SKINWIDGETS_TESTS_SCROLL_VIEWFIXTURE_H
#define SKINWIDGETS_TESTS_SCROLL_VIEWFIXTURE_H

#include "scroll/clipperwidget.h"
#include "scroll/scrollbarskin.h"
#include "scroll/scrollviewskin.h"
#include "widgetfixture.h"

#include <QPainter>
#include <QPointer>
#include <QProxyStyle>
#include <QScrollBar>
#include <QStringList>

#include <functional>

// What the tests of the scroll view share: bars and frames of known widths, contents in which every pixel can be told
// from every other one, and one list for everything that happens.
namespace viewtest
{

using namespace widgettest;

constexpr int vExtent = 20;
constexpr int hExtent = 13;

// Horizontal bars are as thick as told, so that no two extents are equal, and frames 3 pixels wide.
class FixedStyle : public QProxyStyle
{
public:
    explicit FixedStyle(int extent = hExtent) : QProxyStyle(QStringLiteral("fusion")), m_extent(extent) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        if (metric == PM_ScrollBarExtent)
            return m_extent;
        return metric == PM_DefaultFrameWidth ? 3 : QProxyStyle::pixelMetric(metric, option, widget);
    }

private:
    int m_extent;
};

inline QString pointText(const QPoint& point)
{
    return QStringLiteral("%1,%2").arg(point.x()).arg(point.y());
}

inline QString sizeText(const QSize& size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

// One list in which signals, repaints and calls stand in the order in which they happened.
class Recorder : public QObject
{
public:
    QStringList log;

    void add(const QString& line) { log << line; }
    QStringList take() { return std::exchange(log, {}); }

    void watch(ScrollViewSkin* view)
    {
        connect(view, &ScrollViewSkin::contentsMoving, this, [this](int x, int y) {
            add("moving " + pointText({x, y}));
        });
        connect(view->verticalScrollBar(), &ScrollBarSkin::valueChanged, this,
                [this](int value) { add(QStringLiteral("vertical %1").arg(value)); });
        connect(view->horizontalScrollBar(), &QScrollBar::valueChanged, this,
                [this](int value) { add(QStringLiteral("horizontal %1").arg(value)); });
    }
    // Every rectangle of every paint event of a widget.
    void watchPaints(QWidget* widget) { widget->installEventFilter(this); }

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            for (const QRect& rect : static_cast<QPaintEvent*>(event)->region())
                add("paint " + object->objectName() + ' ' + rectText(rect));
        return false;
    }
};

// What pixel of the contents stands where. Different within 4096 x 4096 pixels.
inline QRgb ink(int x, int y)
{
    return qRgb(x & 255, y & 255, (x >> 8 & 15) << 4 | (y >> 8 & 15));
}

inline QImage inkOf(const QRect& rect)
{
    QImage image(rect.size(), QImage::Format_ARGB32);
    for (int y = 0; y < rect.height(); ++y)
        for (int x = 0; x < rect.width(); ++x)
            image.setPixel(x, y, ink(rect.x() + x, rect.y() + y));
    return image;
}

// A view whose protected operations are in the open. With a trace it tells of the calls of those it overrides.
class View : public ScrollViewSkin
{
public:
    explicit View(QWidget* parent = nullptr, const char* name = "view", WFlags f = 0) : ScrollViewSkin(parent, name, f)
    {
    }

    using ScrollViewSkin::contentsMouseDoubleClickEvent;
    using ScrollViewSkin::contentsMouseMoveEvent;
    using ScrollViewSkin::contentsMousePressEvent;
    using ScrollViewSkin::contentsMouseReleaseEvent;
    using ScrollViewSkin::contentsWheelEvent;
    using ScrollViewSkin::focusNextPrevChild;
    using ScrollViewSkin::frameChanged;
    using ScrollViewSkin::moveContents;
    using ScrollViewSkin::styleChange;
    using ScrollViewSkin::viewportMouseDoubleClickEvent;
    using ScrollViewSkin::viewportMouseMoveEvent;
    using ScrollViewSkin::viewportMousePressEvent;
    using ScrollViewSkin::viewportMouseReleaseEvent;
    using ScrollViewSkin::viewportPaintEvent;
    using ScrollViewSkin::viewportResizeEvent;
    using ScrollViewSkin::viewportWheelEvent;

    Recorder* trace = nullptr;
    // Draws the contents with these pixels.
    bool inked = false;
    int polishes = 0;

    void setVBarGeometry(ScrollBarSkin& bar, int x, int y, int w, int h) override
    {
        tell("vbar " + rectText({x, y, w, h}));
        ScrollViewSkin::setVBarGeometry(bar, x, y, w, h);
    }
    void setHBarGeometry(QScrollBar& bar, int x, int y, int w, int h) override
    {
        tell("hbar " + rectText({x, y, w, h}));
        ScrollViewSkin::setHBarGeometry(bar, x, y, w, h);
    }
    void drawContentsOffset(QPainter* painter, int ox, int oy, int cx, int cy, int cw, int ch) override
    {
        tell("offset " + pointText({ox, oy}) + " draw " + rectText({cx, cy, cw, ch}));
        ScrollViewSkin::drawContentsOffset(painter, ox, oy, cx, cy, cw, ch);
    }
    void drawContents(QPainter* painter, int cx, int cy, int cw, int ch) override
    {
        if (inked)
            painter->drawImage(cx, cy, inkOf({cx, cy, cw, ch}));
        ScrollViewSkin::drawContents(painter, cx, cy, cw, ch);
    }
    void drawContents(QPainter* painter) override { ScrollViewSkin::drawContents(painter); }

protected:
    void polish() override { ++polishes; }
    void tell(const QString& line) const
    {
        if (trace)
            trace->add(line);
    }
};

// A child of the contents in one colour, with a size hint of its own.
class Tile : public QWidget
{
public:
    explicit Tile(QWidget* parent = nullptr, const QSize& size = QSize(40, 20), QRgb colour = red)
        : QWidget(parent),
          hint(size),
          m_colour(colour)
    {
        resize(size);
    }

    QSize hint;
    int paints = 0;
    std::function<void(QEvent*)> onEvent;

    QSize sizeHint() const override { return hint; }

protected:
    bool event(QEvent* event) override
    {
        const QPointer<QWidget> alive(this);
        if (onEvent)
            onEvent(event);
        return !alive || QWidget::event(event);
    }
    void paintEvent(QPaintEvent*) override
    {
        ++paints;
        QPainter(this).fillRect(rect(), QColor::fromRgba(m_colour));
    }

private:
    QRgb m_colour;
};

// A window with a view of 200 x 100 without a frame at its top left corner.
class ViewStage
{
public:
    ViewStage()
    {
        view.setFrameStyle(QFrame::NoFrame);
        view.resize(200, 100);
    }
    explicit ViewStage(const QSize& contents) : ViewStage()
    {
        view.resizeContents(contents.width(), contents.height());
    }

    // From here on the window is on the screen and everything is recorded.
    bool begin()
    {
        if (!window.expose())
            return false;
        recorder.watch(&view);
        return true;
    }
    QStringList take() { return recorder.take(); }
    // What an action makes happen, and what has been painted then.
    QStringList after(const std::function<void()>& action)
    {
        if (!window.settle())
            return {QStringLiteral("the window does not paint")};
        take();
        action();
        if (!window.settle())
            return {QStringLiteral("the window does not paint")};
        return take();
    }
    // What the display shows where the widget is.
    QImage onScreen(const QWidget* widget, const QRect& part) const
    {
        const QPoint at = widget->mapTo(&window, part.topLeft());
        return window.screen()
            ->grabWindow(window.winId(), at.x(), at.y(), part.width(), part.height())
            .toImage()
            .convertToFormat(QImage::Format_ARGB32);
    }
    QImage onScreen() const { return onScreen(view.viewport(), view.viewport()->rect()); }
    // What of the contents belongs into the viewport.
    QImage expected() const
    {
        return inkOf({view.contentsX(), view.contentsY(), view.visibleWidth(), view.visibleHeight()});
    }

    Window window;
    Recorder recorder;
    View view{&window};
};

// The side on which vertical bars stand, for as long as the object lives.
class LeftHandBars
{
public:
    LeftHandBars() { qt_left_hand_scrollbars = true; }
    ~LeftHandBars() { qt_left_hand_scrollbars = false; }
    Q_DISABLE_COPY_MOVE(LeftHandBars)
};

} // namespace viewtest

Q_DECLARE_METATYPE(ScrollViewSkin::ScrollBarMode)
Q_DECLARE_METATYPE(ScrollViewSkin::ResizePolicy)

#endif
