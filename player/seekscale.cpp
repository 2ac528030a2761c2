#include "player/seekscale.h"

#include <algorithm>

SeekScale::SeekScale(qint64 duration)
    : m_duration(std::max<qint64>(duration, 0)),
      m_unit(std::max<qint64>((m_duration - 1) / largestValue + 1, 1))
{
}

int SeekScale::value(qint64 position) const
{
    return static_cast<int>(std::clamp<qint64>(position, 0, m_duration) / m_unit);
}

qint64 SeekScale::position(int value) const
{
    if (value >= maximum())
        return m_duration;
    return std::max(value, 0) * m_unit;
}
