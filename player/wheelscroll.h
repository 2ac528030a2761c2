#ifndef SKINWIDGETS_PLAYER_WHEELSCROLL_H
#define SKINWIDGETS_PLAYER_WHEELSCROLL_H

class QWheelEvent;

/* Turns of a wheel as pixels to scroll: three lines a notch, or what a touch pad says. Fine steps add up. */
class WheelScroll
{
public:
    // How far the contents move down with this turn, where a line has that many pixels.
    int pixels(const QWheelEvent& event, int line);

private:
    // What has not yet made a pixel.
    double m_rest = 0;
};

#endif
