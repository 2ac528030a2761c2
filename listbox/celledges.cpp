#include "listbox/celledges.h"

#include <algorithm>
#include <limits>

namespace skinwidgets
{

namespace
{

int bounded(qint64 edge)
{
    return int(std::min<qint64>(edge, std::numeric_limits<int>::max()));
}

} // namespace

int CellEdges::at(qint64 edge) const
{
    const qint64 inside = std::clamp<qint64>(edge, 0, m_used);
    return m_edges.empty() ? bounded(inside * m_length) : m_edges[size_t(inside)];
}

int CellEdges::cellAt(int position) const
{
    int low = 0;
    int high = m_cells - 1;
    while (low < high) {
        const int probe = int((qint64(low) + high + 1) / 2);
        if (position < at(probe))
            high = probe - 1;
        else
            low = probe;
    }
    return low;
}

void CellEdges::cellsBetween(int start, int end, int& first, int& last) const
{
    first = 0;
    last = -1;
    if (m_cells == 0 || end <= start || end <= 0 || start >= total())
        return;
    first = cellAt(std::max(start, 0));
    last = cellAt(end - 1);
}

void CellEdges::setEqual(int cells, int used, int length)
{
    m_cells = cells;
    m_used = used;
    m_length = std::max(length, 0);
    m_edges = {};
}

void CellEdges::setLengths(int cells, const std::vector<int>& lengths)
{
    setEqual(cells, int(lengths.size()), 0);
    m_edges.reserve(lengths.size() + 1);
    qint64 edge = 0;
    m_edges.push_back(0);
    for (const int length : lengths) {
        edge += std::max(length, 0);
        m_edges.push_back(bounded(edge));
    }
}

} // namespace skinwidgets
