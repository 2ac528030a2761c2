#ifndef SKINWIDGETS_MEDIA_TIMESKIN_H
#define SKINWIDGETS_MEDIA_TIMESKIN_H

#include "skinbase/skinbase.h"

// One place for a figure in a time display.
struct TimeDigit {
    // The figures 0 to 9, composed for this place.
    QImage images[10];
    // The place, in widget coordinates.
    QRect rect;
    // The figure shown.
    int current = 0;
};

/*
 * A time as hours, minutes and seconds, HH:MM:SS, drawn from pictures. It takes neither focus nor input.
 *
 * What a skin supplies, in the group named by the display's object name:
 *
 *     number_image   picture file, the ten figures 0 to 9 side by side, each a tenth of the width, rounded down
 *     colon_image    picture file
 *     spacing        pixels between neighbouring places, -1 where missing; negative ones let them overlap
 *
 * What is missing is not drawn; without figures the display has no size worth showing. The limits of pictures and of
 * the config file are those of SkinBase; a display that would be larger than a picture may be is cut off at its right.
 *
 * Every figure is composed over the background in advance, once for each place.
 */
class SKINWIDGETS_EXPORT TimeSkin : public SkinBase
{
    Q_OBJECT

public:
    // Loads the group of its object name and shows 00:00:00.
    explicit TimeSkin(QWidget* parent = nullptr, const char* name = nullptr, unsigned int flags = 0);
    ~TimeSkin() override;

    // Loads a group of the skin, in place of the one loaded before, and resizes the display to the last figure's end.
    // The time shown stays.
    void do_configloading(QString group) override;

    // Lays the six figures and two colons out from left to right: number is the size of the whole strip of figures.
    virtual void init_positions(const QSize& number, const QSize& colon);
    // Compose the pictures for their places. Do not repaint.
    virtual void redrawDigits();
    virtual void redrawColons();
    // Draws the figures. pm stands for the area r of the display: its pixel (0, 0) is the area's top-left corner.
    virtual void drawDigits(QPixmap* pm, const QRect& r);

    void setAlphaOverride(unsigned char alpha) override;
    void setBackgroundPixmap(const QPixmap& pm) override;

public slots:
    // Shows a time and repaints the figures that changed. Hours are not wrapped at 24; from 100 hours (360000 seconds)
    // on the first figure stays 9.
    void update_time(unsigned int seconds);

protected:
    void paintEvent(QPaintEvent* event) override;
    // These do nothing.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

    // Tens and units of hours, of minutes, of seconds.
    TimeDigit digits[6];
    // The colons, composed for their places.
    QImage colonImage1;
    QRect colon1Rect;
    QImage colonImage2;
    QRect colon2Rect;
    // Seconds.
    unsigned int currentTime = 0;
    // The strip of figures as loaded, owned.
    QImage* numberImage = nullptr;
    // The colon as loaded, owned.
    QImage* colonImage = nullptr;
    // Pixels between neighbouring places.
    int spacing = -1;

private:
    QImage figure(int number) const;
    void sizeToFigures();
};

#endif
