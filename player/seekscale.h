#ifndef SKINWIDGETS_PLAYER_SEEKSCALE_H
#define SKINWIDGETS_PLAYER_SEEKSCALE_H

#include <QtGlobal>

/*
 * Which value of a slider stands for which position in a file.
 *
 * A slider counts in int, 24 days of milliseconds. Its unit is the smallest whole number of milliseconds that keeps the
 * largest value at or below largestValue: one millisecond up to 12 days, more in longer files, so that every file is
 * searched as finely as its slider can count.
 */
class SeekScale
{
public:
    // Half of what an int holds, so that a value and a step can be added.
    static constexpr int largestValue = 1 << 30;

    // Milliseconds. A duration of 0 or less is an unknown one.
    explicit SeekScale(qint64 duration = 0);

    // False where the duration is unknown; then every value and every position is 0.
    bool isValid() const { return m_duration > 0; }
    // Milliseconds for a step of 1, at least 1.
    qint64 unit() const { return m_unit; }
    int maximum() const { return static_cast<int>(m_duration / m_unit); }
    // The last value at or before a position; positions outside the file count as its nearer end.
    int value(qint64 position) const;
    // Values out of range count as the nearer end. The maximum is the end of the file, also where that is no whole
    // number of units.
    qint64 position(int value) const;

    bool operator==(const SeekScale& other) const { return m_duration == other.m_duration; }

private:
    qint64 m_duration;
    qint64 m_unit;
};

#endif
