#ifndef SKINWIDGETS_TOOLKIT_TOOLKITFRAME_H
#define SKINWIDGETS_TOOLKIT_TOOLKITFRAME_H

#include "toolkit/export.h"
#include "toolkit/toolkitwidget.h"

#include <QFrame>
#include <QMargins>

class QPainter;

/*
 * A frame of the old interface: its width is that of its lines plus a margin, its attributes call a hook when they
 * change, and frame and contents are drawn by two operations.
 *
 * A StyledPanel is as wide as the line width says, while today's styles draw one width only. So with the style's own
 * frame width it is drawn by the style, with another width as a shaded panel of that width, and with line width 0 there
 * is no frame: frameWidth() is the margin, and a later line width brings the frame back. frameStyle() stays the same
 * throughout.
 *
 * frameRect(), contentsRect() and frameWidth() are true at any time. A change through a plain QFrame pointer has the
 * same effect as one through this type, with one difference: where it leaves Qt's own width of the frame as it was (the
 * line width of a StyledPanel, a shape of the same width), no event tells of it, and the hook is called at the next
 * paint event. QFrame's own frameWidth() and frameRect(), called through such a pointer, know nothing of the margin.
 */
class SKINWIDGETS_EXPORT ToolkitFrame : public ToolkitWidget<QFrame>
{
    Q_OBJECT
    Q_PROPERTY(QFrame::Shape frameShape READ frameShape WRITE setFrameShape)
    Q_PROPERTY(QFrame::Shadow frameShadow READ frameShadow WRITE setFrameShadow)
    Q_PROPERTY(int lineWidth READ lineWidth WRITE setLineWidth)
    Q_PROPERTY(int midLineWidth READ midLineWidth WRITE setMidLineWidth)
    Q_PROPERTY(int margin READ margin WRITE setMargin)
    Q_PROPERTY(int frameWidth READ frameWidth)
    Q_PROPERTY(QRect frameRect READ frameRect WRITE setFrameRect DESIGNABLE false)
    Q_PROPERTY(QRect contentsRect READ contentsRect)

public:
    // No frame, line width 1, no margin.
    explicit ToolkitFrame(QWidget* parent = nullptr, const char* name = nullptr, WFlags f = 0);
    ~ToolkitFrame() override;

    // Shape and shadow in one number, as StyledPanel | Sunken. Each setter calls frameChanged() when it changes
    // something.
    virtual void setFrameStyle(int style);
    void setFrameShape(Shape shape);
    void setFrameShadow(Shadow shadow);
    // Pixels; negative widths count as 0.
    virtual void setLineWidth(int width);
    virtual void setMidLineWidth(int width);

    // Pixels between the lines and the contents, 0 at start. Negative margins count as 0.
    int margin() const { return m_margin; }
    virtual void setMargin(int margin);

    // Lines and margin together, on each side.
    int frameWidth() const;

    // The outer edge of the frame in widget coordinates, the whole widget at start. It keeps its distances from the
    // widget's edges when the widget is resized. An invalid rectangle means the whole widget.
    QRect frameRect() const;
    virtual void setFrameRect(const QRect& rect);
    // What lines and margin leave of it.
    QRect contentsRect() const;

    QSize sizeHint() const override;

protected:
    // Frame style, line widths, margin or frame rectangle have changed. Repaints by default.
    virtual void frameChanged();

    // Called for a paint event in this order, each only where it has something to paint and clipped to that: the frame
    // to the frame rectangle, the contents to the contents rectangle.
    virtual void drawFrame(QPainter* painter);
    virtual void drawContents(QPainter* painter);

    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Look {
        int style;
        int lineWidth;
        int midLineWidth;
    };
    Look currentLook() const;
    int linesWidth() const;
    bool noticeLook();
    void noticeForeignChange();
    void placeContents();
    template <class Setter>
    void changeLook(const Setter& setter);

    Look m_look;
    int m_margin = 0;
    // From the widget's edges to the frame.
    QMargins m_surround;
    // What Qt takes for the width of the frame.
    int m_plainWidth = 0;
    // The contents margins are being set by this class, or by Qt for a reason of its own.
    bool m_placing = false;
};

#endif
