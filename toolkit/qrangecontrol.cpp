#include "toolkit/qrangecontrol.h"

#include <algorithm>
#include <limits>

namespace
{

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

int saturated(qint64 number)
{
    return int(std::clamp<qint64>(number, lowest, highest));
}

int stepSize(int step)
{
    return saturated(qAbs(qint64(step)));
}

// part * scale / whole, rounded to the nearest, halves up. Exact for 0 <= part <= whole < 2^32 and 0 <= scale < 2^32:
// the sum stays below 2^64.
quint64 scaled(quint64 part, quint64 scale, quint64 whole)
{
    return (part * scale + whole / 2) / whole;
}

} // namespace

// Tells whether the control was deleted while this stood on the stack.
class QRangeControl::Watch
{
public:
    explicit Watch(QRangeControl* control) : m_control(control), m_outer(control->m_watch) { control->m_watch = this; }
    ~Watch()
    {
        if (m_control)
            m_control->m_watch = m_outer;
    }
    Q_DISABLE_COPY_MOVE(Watch)

    bool isGone() const { return !m_control; }

    static void setAllGone(Watch* innermost)
    {
        for (Watch* watch = innermost; watch; watch = watch->m_outer)
            watch->m_control = nullptr;
    }

private:
    QRangeControl* m_control;
    Watch* m_outer;
};

QRangeControl::QRangeControl() = default;

QRangeControl::QRangeControl(int minValue, int maxValue, int lineStep, int pageStep, int value)
    : m_minimum(minValue),
      m_maximum(std::max(minValue, maxValue)),
      m_lineStep(stepSize(lineStep)),
      m_pageStep(stepSize(pageStep)),
      m_value(bound(value)),
      m_previous(saturated(qint64(minValue) - 1))
{
}

QRangeControl::~QRangeControl()
{
    Watch::setAllGone(m_watch);
}

void QRangeControl::setValue(int value)
{
    directSetValue(value);
    if (m_value != m_previous)
        valueChange();
}

void QRangeControl::addPage()
{
    stepBy(m_pageStep);
}

void QRangeControl::subtractPage()
{
    stepBy(-qint64(m_pageStep));
}

void QRangeControl::addLine()
{
    stepBy(m_lineStep);
}

void QRangeControl::subtractLine()
{
    stepBy(-qint64(m_lineStep));
}

void QRangeControl::stepBy(qint64 distance)
{
    setValue(saturated(m_value + distance));
}

void QRangeControl::setRange(int minValue, int maxValue)
{
    const int maximum = std::max(minValue, maxValue);
    if (minValue == m_minimum && maximum == m_maximum)
        return;
    m_minimum = minValue;
    m_maximum = maximum;

    {
        const Watch watch(this);
        rangeChange();
        if (watch.isGone())
            return;
    }
    // Looked at only now: the notification may have moved the value or the range itself.
    if (m_value != bound(m_value))
        setValue(m_value);
}

void QRangeControl::setSteps(int lineStep, int pageStep)
{
    const int line = stepSize(lineStep);
    const int page = stepSize(pageStep);
    if (line == m_lineStep && page == m_pageStep)
        return;
    m_lineStep = line;
    m_pageStep = page;
    stepChange();
}

int QRangeControl::bound(int value) const
{
    return std::clamp(value, m_minimum, m_maximum);
}

int QRangeControl::positionFromValue(int value, int space) const
{
    if (space <= 0 || value <= m_minimum || m_minimum == m_maximum)
        return 0;
    if (value >= m_maximum)
        return space;
    const qint64 range = qint64(m_maximum) - m_minimum;
    const qint64 offset = qint64(value) - m_minimum;
    return int(scaled(quint64(offset), quint64(space), quint64(range)));
}

int QRangeControl::valueFromPosition(int pos, int space) const
{
    if (space <= 0 || pos <= 0)
        return m_minimum;
    if (pos >= space)
        return m_maximum;
    const qint64 range = qint64(m_maximum) - m_minimum;
    return int(m_minimum + qint64(scaled(quint64(pos), quint64(range), quint64(space))));
}

void QRangeControl::directSetValue(int value)
{
    m_previous = m_value;
    m_value = bound(value);
}

void QRangeControl::valueChange() {}

void QRangeControl::rangeChange() {}

void QRangeControl::stepChange() {}
