#ifndef SKINWIDGETS_SCROLL_SCROLLBARSKIN_H
#define SKINWIDGETS_SCROLL_SCROLLBARSKIN_H

#include "scroll/scrollbarpictures.h"
#include "skinbase/skinbase.h"
#include "toolkit/qrangecontrol.h"

class QTimer;

// The parts of a scroll bar.
enum ScrollBarControl : unsigned char {
    // The bottom button: one line down.
    AddLine = 0x01,
    // The top button: one line up.
    SubLine = 0x02,
    // The trough below the thumb.
    AddPage = 0x04,
    // The trough above the thumb.
    SubPage = 0x08,
    // Without any action, unlike in the toolkit's own bar.
    First = 0x10,
    Last = 0x20,
    // The thumb.
    Slider = 0x40,
    // Outside the bar.
    None = 0x80
};

/*
 * A vertical scroll bar drawn from pictures, with the interface of the toolkit's own bar. It has no orientation:
 * lengths are measured along its height and breadths along its width.
 *
 * No skin supplies its pictures; they are built into the library. They are made for a bar 20 pixels wide with buttons
 * 20 pixels high. Any signal's receiver may delete the bar.
 *
 * Positions are pixels from the bar's upper edge. They follow from the bar's width (scrollBarMetrics()), while the
 * buttons are drawn as high as their pictures are; in a bar 20 pixels wide both are the same.
 */
class SKINWIDGETS_EXPORT ScrollBarSkin : public SkinBase, public QRangeControl
{
    Q_OBJECT

public:
    // 0 to 99, line step 1, page step 10, value 0. Loads and composes its pictures.
    explicit ScrollBarSkin(QWidget* parent = nullptr, const char* name = nullptr);
    // Takes the numbers as QRangeControl does. This bar and the next load no pictures and draw nothing: the first
    // resize brings the buttons, loadPictures() everything.
    ScrollBarSkin(int minValue, int maxValue, int lineStep, int pageStep, int value, QWidget* parent = nullptr,
                  const char* name = nullptr);
    // The size is ignored on purpose.
    explicit ScrollBarSkin(QSize size, QWidget* parent = nullptr, const char* name = nullptr);
    ~ScrollBarSkin() override;

    // Back to an idle bar with the thumb at position 0, the constructors' focus policy (none) and size policy.
    void init();
    // Loads all fifteen built-in pictures, places the parts and composes what is drawn. Does not repaint.
    void loadPictures();

    // 20 pixels wide, as high as the bar is.
    QSize sizeHint() const override;

    // The numbers of the range control, as QRangeControl says.
    using QRangeControl::lineStep;
    using QRangeControl::maxValue;
    using QRangeControl::minValue;
    using QRangeControl::pageStep;
    using QRangeControl::value;
    // Out of range input counts as QRangeControl says. Each leaves the other end or step alone.
    void setValue(int value);
    void setMinValue(int value);
    void setMaxValue(int value);
    void setLineStep(int step);
    void setPageStep(int step);

    // The least and the greatest position of the thumb, its length, and the length of a button. In a bar of the most
    // awkward heights (at most 2, or twice the width less one) lengths of -1 come out, of which nothing is drawn.
    void scrollBarMetrics(int& sliderMin, int& sliderMax, int& sliderLength, int& buttonDim) const;
    void metrics(int& sliderMin, int& sliderMax, int& sliderLength, int& buttonDim) const;
    // The first two of these.
    void sliderMinMax(int& sliderMin, int& sliderMax) const;
    // Where the thumb is: as wide as its picture, from x = 6 on.
    QRect sliderRect() const;
    // Between values and thumb positions. Out of range input gives the nearer end.
    int rangeValueToSliderPos(int value) const;
    int sliderPosToRangeValue(int position) const;
    // The value at the thumb's position.
    int calculateValueFromSlider() const;
    // Puts the thumb where the value is. Does not repaint.
    void positionSliderFromValue();
    // The part at a point in widget coordinates.
    ScrollBarControl pointOver(const QPoint& point) const;
    // Places buttons and trough by the height of the top button's picture.
    void init_position();

    // Carries out a part's step: the signal that asks for it goes out first, then the value changes. First, Last,
    // Slider and None do nothing.
    void action(ScrollBarControl control);
    // The pressed part acts again after 500 ms, then every 50 ms, until stopAutoRepeat().
    void startAutoRepeat();
    void stopAutoRepeat();

    // Rebuild what is drawn. The buttons' pictures are loaded again. None of these repaints.
    void redrawSubButton();
    void redrawAddButton();
    void redrawMiddle();
    void redrawThumb();
    // Draws the thumb. pm stands for the area r of the bar: its pixel (0, 0) is the area's top-left corner.
    void paintThumb(QPixmap* pm, const QRect& r);

    // Composes buttons and trough anew; the thumb gets the alpha when it is painted. Does not repaint.
    void setAlphaOverride(unsigned char alpha) override;

public slots:
    // One repetition: the pressed part acts again. Without a part that is held down it ends the repetition.
    void doAutoRepeat();

signals:
    // After every change of the value. Intended: a value set by dragging the thumb is told twice.
    void valueChanged(int value);
    // The thumb was grabbed.
    void sliderPressed();
    // Never emitted.
    void sliderMoved(int value);
    // The thumb was let go. valueChanged() follows if the thumb's place stands for another value.
    void sliderReleased();
    // Before the step itself.
    void nextLine();
    void prevLine();
    void nextPage();
    void prevPage();

protected:
    // Moves the thumb, repaints what that changes and emits valueChanged().
    void valueChange() override;
    // Moves the thumb, composes it in its new length and repaints the trough.
    void rangeChange() override;
    // Does nothing: range or size change along with the steps.
    void stepChange() override;

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    // The part that the stylus went down on, None while idle.
    ScrollBarControl pressedControl = None;
    // From a press that hit the bar until the release.
    bool clickedAt = false;
    // The value when the thumb was grabbed.
    int slidePrevVal = 0;
    // The thumb's upper edge.
    int sliderPos = 0;
    // From the thumb's upper edge to the stylus, when the thumb was grabbed.
    int clickOffset = 0;
    // A child; null while nothing repeats.
    QTimer* repeater = nullptr;
    // The top button, the trough between the buttons, the bottom button and the thumb where it was drawn last.
    QRect subRect;
    QRect middleRect;
    QRect addRect;
    QRect thumbRect;
    // The thumb's position when it was grabbed, shared by all bars.
    static int sliderStartPos;
    // Ready to be painted; null where pictures are missing, and 65536 pixels high at most. The thumb as it is drawn
    // while idle and while dragged.
    QImage troughImage;
    QImage thumbImage;
    QImage thumbPressedImage;

private:
    struct ButtonPictures {
        QImage normal;
        QImage pressed;
        QImage focus;
    };
    struct Metrics {
        int sliderMin;
        int sliderMax;
        int sliderLength;
        int buttonDim;
    };

    static ButtonPictures loadButton(const char* normal, const char* pressed, const char* focus);
    void composeButton(ButtonPictures& pictures, const QRect& place);
    Metrics currentMetrics() const;
    void pressThumb(const QPoint& at);
    void pressPart();
    int draggedPosition(const QPoint& at) const;
    bool dragThumb(const QPoint& at);
    void releaseThumb();
    void repaintButton(ScrollBarControl control);
    void repaintPart(const QRect& part);
    void paintParts(QPixmap& target, const QRect& area);

    ButtonPictures subPictures;
    ButtonPictures addPictures;
    skinwidgets::BarPieces thumbPieces;
    skinwidgets::BarPieces thumbFocusPieces;
    skinwidgets::BarPieces troughPieces;
};

#endif
