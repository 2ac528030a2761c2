#include "player/wheelscroll.h"

#include <QWheelEvent>

#include <cmath>

namespace
{

constexpr int wheelLines = 3;
// Of a wheel with notches.
constexpr double notch = QWheelEvent::DefaultDeltasPerStep;

} // namespace

int WheelScroll::pixels(const QWheelEvent& event, int line)
{
    // Touch pads tell of pixels.
    m_rest += event.hasPixelDelta() ? event.pixelDelta().y() : event.angleDelta().y() * wheelLines * line / notch;
    const double whole = std::trunc(m_rest);
    m_rest -= whole;
    return static_cast<int>(whole);
}
