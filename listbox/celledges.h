#ifndef SKINWIDGETS_LISTBOX_CELLEDGES_H
#define SKINWIDGETS_LISTBOX_CELLEDGES_H

#include <QtGlobal>

#include <vector>

namespace skinwidgets
{

/*
 * Where the columns, or the rows, of a grid begin, in pixels from 0: one edge for each and one more for the end of the
 * last. Edges never decrease and end at the largest int. Cells of one length cost no memory.
 */
class CellEdges
{
public:
    // At least 0.
    int cells() const { return m_cells; }
    // edge: 0 to cells().
    int at(qint64 edge) const;
    int total() const { return at(m_cells); }
    int length(qint64 cell) const { return at(cell + 1) - at(cell); }
    // The last cell that begins at the position or before it; 0 for negative positions and without cells.
    int cellAt(int position) const;
    // The last cell that begins before the end position and ends after the start, each exclusive; first > last where
    // there is none.
    void cellsBetween(int start, int end, int& first, int& last) const;

    // The first used cells have the length, the others none. Negative lengths count as 0.
    void setEqual(int cells, int used, int length);
    // The first cells have these lengths, the others none.
    void setLengths(int cells, const std::vector<int>& lengths);

private:
    int m_cells = 0;
    int m_used = 0;
    int m_length = 0;
    // Empty while all used cells have m_length.
    std::vector<int> m_edges;
};

} // namespace skinwidgets

#endif
