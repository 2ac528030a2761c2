#ifndef SKINWIDGETS_MEDIA_SLIDERSKIN_H
#define SKINWIDGETS_MEDIA_SLIDERSKIN_H

#include "skinbase/skinbase.h"
#include "toolkit/qrangecontrol.h"

// The kinds of markers; the values are the index of the kind's picture. Any int may come as a kind, hence the type.
enum MarkerType : int { Marker_1 = 0, Marker_2 = 1, Marker_3 = 2 };

enum SliderState {
    // Waits for the stylus.
    Idle = 0,
    // The stylus holds the bar.
    Dragging = 2,
    // Ignores the stylus until SliderSkin::setValue() is called.
    Inactive = 3
};

// A picture at a fixed place over the groove.
struct SliderMarker {
    // Where it is drawn, in widget coordinates.
    QRect rect;
    // Straight 32-bit pixels.
    QImage image;
    // False: the slot is free.
    bool used = false;
};

/*
 * A seek, progress or level slider drawn from pictures, with up to maxMarkers marker pictures over its groove.
 *
 * What a skin supplies, in the group named by the slider's object name:
 *
 *     back_image   picture file, two equal pictures side by side: the groove, and the groove as it looks where it is
 *                  played. Its half is the slider's size; wider than high makes a horizontal slider, anything else a
 *                  vertical one
 *     bar_image    picture file, two equal pictures side by side: the bar idle and dragged. It should reach across the
 *                  whole groove: a move repaints only what lies under the bar's way
 *     marker_1, marker_2, marker_3   picture files, one for each kind of marker
 *
 * An odd width loses its last column. What is missing is not drawn; without a back picture the slider has no size. The
 * limits of pictures and of the config file are those of SkinBase.
 *
 * A new slider is inactive and ignores the stylus; setValue() makes it active. While the stylus drags the bar, the bar
 * follows it in whole values and setValue() is ignored.
 *
 * Positions are pixels along the slider's axis from the left or upper end, the minimum at position 0. The groove and
 * its played part are composed over the background in advance; bar and markers are blended over them at every repaint,
 * with their own alpha, and get the panel's alpha byte if that is below 255. Any signal's receiver may delete the
 * slider.
 */
class SKINWIDGETS_EXPORT SliderSkin : public SkinBase, public QRangeControl
{
    Q_OBJECT

public:
    // The most markers at a time.
    static constexpr int maxMarkers = 10;

    // Line step 1. Loads the group of its object name. The value shown is the given one, the range control's the one
    // bounded to the range. Takes the keyboard focus like every panel.
    SliderSkin(int minValue, int maxValue, int pageStep, int value, QWidget* parent = nullptr,
               const char* name = nullptr);
    // 0 to 99, line step 1, page step 10, value 0. Loads the group of its object name. Takes no keyboard focus, like
    // the sliders of the constructors below.
    explicit SliderSkin(QWidget* parent = nullptr, const char* name = nullptr);
    // Loads the two strips from picture files instead of a skin, without markers.
    SliderSkin(const QString& back, const QString& bar, QWidget* parent = nullptr, const char* name = nullptr);
    // Loads markers as well; the third kind gets the second one's picture.
    SliderSkin(const QString& back, const QString& bar, const QString& marker1, const QString& marker2,
               QWidget* parent = nullptr, const char* name = nullptr);
    ~SliderSkin() override;

    // Back to a fresh slider: inactive, bar and shown value at 0, no markers. Does not repaint.
    void init();

    // Loads a group of the skin, takes the orientation from the back picture and resizes the slider to it.
    void do_configloading(QString group) override;

    // Cuts the groove pictures again and composes them over the background. Does not repaint.
    void redrawBack();
    // Half 0 or 1 of a strip. A negative index gives the whole strip, one beyond 1 a null picture.
    QImage get_image(QImage image, int index);

    void setAlphaOverride(unsigned char alpha) override;
    void setBackgroundPixmap(const QPixmap& pm) override;

    // The numbers of the range control, as QRangeControl says.
    using QRangeControl::lineStep;
    using QRangeControl::maxValue;
    using QRangeControl::minValue;
    using QRangeControl::pageStep;
    using QRangeControl::value;
    // Out of range input counts as QRangeControl says.
    void setMinValue(int v);
    void setMaxValue(int v);
    void setLineStep(int v);
    void setPageStep(int v);
    // Sets range and page step and puts the bar to position 0, whatever the value is. Leaves the slider as active as it
    // was.
    void setValueInit(int min, int max, int pageStep);

    // Makes the slider inactive, also in the middle of a drag, whose release then emits nothing. False does nothing:
    // only setValue() makes it active again.
    void setDisable(bool disable);

    // How far the bar can move, in pixels; negative where it is larger than the slider.
    int available() const;
    // Between values and positions of the bar's leading edge. Out of range input gives the nearer end.
    int positionFromValue(int v) const;
    int valueFromPosition(int p) const;
    // Where the bar is drawn.
    QRect barRect() const;
    // As wide as the bar's position, as high as the groove is wide (horizontal) or high (vertical). Not what is painted
    // as the played part.
    QRect progRect() const;
    // The coordinate along the slider's axis.
    int goodPart(const QPoint& p) const;
    // The length that the widget style gives a slider's handle.
    int slideLength() const;

    // Places a marker at the bar's centre for a value, in the first free slot, and returns the slot: 0 to 9, or -1
    // where all are taken or the kind is none. Does not repaint; updateMarker() does.
    int insertMarker(MarkerType type, int value);
    // Takes a marker away and repaints its place. Unused slots and those out of range are ignored.
    void removeMarker(int index);
    // Repaints a marker's place. Slots out of range are ignored.
    void updateMarker(int index);
    // Takes all markers away, each as removeMarker() does.
    void clearMarkers();

    // Painting. pm stands for the area r of the slider: its pixel (0, 0) is the area's top-left corner.
    void paintSlider(QPixmap* pm, const QRect& r);
    void paintMarkers(QPixmap* pm, const QRect& r);

    // Puts the bar to a position, also one outside the slider, and repaints what the move changed. Leaves the values
    // alone.
    void reallyMoveSlider(int newPos);
    // Moves the bar to the whole value next to a position; emits sliderMoved() if the shown value becomes another one.
    // Leaves the range control alone.
    void moveSlider(int pos);
    // Ends a drag, emitting seekReleased(), and makes an active slider idle.
    void resetState();

public slots:
    // Makes the slider active and sets the value, bounded to the range; emits valueChanged() if it is another one.
    // Ignored while the bar is dragged.
    virtual void setValue(int v);
    // Move the value by a page step.
    void addStep();
    void subtractStep();

signals:
    // After the value changed, and once more for every move of the stylus, changing or not. A negative value is
    // carried as the unsigned number with the same bits.
    void valueChanged(unsigned int value);
    // The stylus took the bar, or brought it to the place that it pressed.
    void sliderPressed();
    // A drag changed the shown value. Comes before valueChanged().
    void sliderMoved(int value);
    // The stylus let go of the bar: the shown value. A press on the groove released without a move has changed the
    // shown value but not value(). Negative values as in valueChanged().
    void seekReleased(unsigned int value);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    // Follow the range control.
    void valueChange() override;
    void rangeChange() override;
    void stepChange() override;

    // The left and right half of the back picture, composed over the background.
    QImage grooveImage;
    QImage fillImage;
    // The bar idle and dragged, straight 32-bit pixels like the markers.
    QImage barImage;
    QImage barPressedImage;
    // By kind; null: that kind is not drawn.
    QImage markerImages[3];
    // The back picture as loaded.
    QImage backImage;
    // By slot.
    SliderMarker markers[maxMarkers];
    // The position of the bar's leading edge.
    int sliderPos = 0;
    // The value that the bar shows. Differs from value() between a press on the groove and the first move.
    int sliderVal = 0;
    // How far behind the bar's leading edge the stylus took the bar.
    int clickOffset = 0;
    // A SliderState.
    int state = Inactive;
    // 0 horizontal, 1 vertical.
    int orient = 0;
    // Informative: pictures or range have been given.
    bool configured = false;

    // sliderVal at the last accepted press on any slider.
    static int sliderStartVal;

private:
    bool isHorizontal() const { return orient == 0; }
    bool isDragged() const;
    void setStrips(const QImage& back, const QImage& bar);
    QRect playedRect() const;
    int dragPosition(const QMouseEvent* event) const;
};

#endif
