#ifndef SKINWIDGETS_TOOLKIT_QRANGECONTROL_H
#define SKINWIDGETS_TOOLKIT_QRANGECONTROL_H

#include "toolkit/export.h"

#include <QtGlobal>

/*
 * An integer value within a range, moved by lines and pages: the second base of sliders and scroll bars.
 *
 * The value always lies in the range, except during the rangeChange() that tells of a new range. Every int is valid
 * everywhere; no operation overflows. Each notification is the last thing that its operation does with this object,
 * or is followed by a check that the object still exists, so that a subclass may delete itself in any of them.
 */
class SKINWIDGETS_EXPORT QRangeControl
{
public:
    // 0 to 99, line step 1, page step 10, value 0.
    QRangeControl();
    // Takes the range and the steps as setRange() and setSteps() do, the value as bound() gives it. The previous value
    // is one below the minimum. Nothing is notified.
    QRangeControl(int minValue, int maxValue, int lineStep, int pageStep, int value);
    virtual ~QRangeControl();
    Q_DISABLE_COPY_MOVE(QRangeControl)

    // The value, within the range.
    int value() const { return m_value; }
    // directSetValue(), then valueChange() if the value is another one now.
    void setValue(int value);

    // One step up or down, as setValue() does it; the step ends at the end of the range.
    void addPage();
    void subtractPage();
    void addLine();
    void subtractLine();

    // The range; the minimum is never above the maximum.
    int minValue() const { return m_minimum; }
    int maxValue() const { return m_maximum; }
    // A maximum below the minimum makes the minimum the only value. With another range than before: rangeChange(),
    // then, if the value lay outside, the value moves to the nearer end and valueChange() follows.
    void setRange(int minValue, int maxValue);

    // Never negative.
    int lineStep() const { return m_lineStep; }
    int pageStep() const { return m_pageStep; }
    // Steps count without their sign; that of INT_MIN is INT_MAX. stepChange() if a step is another one now.
    void setSteps(int lineStep, int pageStep);

    // The value itself, or the nearer end of the range.
    int bound(int value) const;

protected:
    // Where a value stands in a span of space pixels: 0 for the minimum, space for the maximum, rounded to the nearest
    // pixel, halves up. A value outside the range gives the end; an empty range or span gives 0.
    int positionFromValue(int value, int space) const;
    // The value at a position in a span of space pixels, rounded to the nearest, halves up. A position outside the span
    // gives the end of the range; an empty span gives the minimum.
    int valueFromPosition(int pos, int space) const;

    // Takes bound(value) and remembers the value so far as the previous one. Nothing is notified.
    void directSetValue(int value);
    // The value before the last one set, the same one set again included. It may lie outside the range.
    int prevValue() const { return m_previous; }

    // Notifications; these do nothing.
    virtual void valueChange();
    virtual void rangeChange();
    virtual void stepChange();

private:
    class Watch;

    void stepBy(qint64 distance);

    int m_minimum = 0;
    int m_maximum = 99;
    int m_lineStep = 1;
    int m_pageStep = 10;
    int m_value = 0;
    int m_previous = -1;
    // The innermost of the notifications under way that have work left on this object.
    Watch* m_watch = nullptr;
};

#endif
