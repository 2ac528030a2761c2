#ifndef SKINWIDGETS_LISTBOX_GLYPHCONTEXTS_H
#define SKINWIDGETS_LISTBOX_GLYPHCONTEXTS_H

#include <QByteArray>
#include <QRawFont>

#include <set>
#include <utility>
#include <vector>

namespace skinwidgets
{

/*
 * Which of some glyphs a font draws in another way, or places elsewhere, because of what stands beside them, kerning of
 * two neighbours apart. Of a text of all other glyphs, without those pairs, the width is the sum of the glyphs' widths
 * and of what each two neighbours are kerned.
 *
 * Read from the font's OpenType tables, of which any bytes may come. Where a font is beyond understanding, all glyphs
 * count as such.
 */
class GlyphContexts
{
public:
    // Glyph numbers of the font, each once and none 0.
    GlyphContexts(const QRawFont& font, const std::vector<quint32>& glyphs);

    // Numbers are places in the list of glyphs.
    bool dependsOnContext(int glyph) const { return m_dependent[size_t(glyph)]; }
    bool formsLigature(int first, int second) const;

private:
    class Table;

    static bool hasKerning(const QByteArray& bytes);
    void readTable(const QByteArray& bytes, bool positioning);
    void readLookup(Table& table, int lookup, bool positioning);
    void readSubtable(Table& table, int subtable, int type, int flags, bool positioning);
    void readLigatures(Table& table, int subtable);
    void readContext(Table& table, int subtable, bool chained);
    template <class IsOurs>
    static bool isPossible(Table& table, int rule, bool chained, const IsOurs& isOurs);
    void readCoverageContext(Table& table, int subtable, bool chained);
    std::vector<int> classesIn(Table& table, int definition) const;
    void readMarks(Table& table);
    bool coversAny(Table& table, int coverage) const;
    void markCovered(Table& table, int coverage);
    template <class Visit>
    void visitCovered(Table& table, int coverage, const Visit& visit) const;
    int placeOf(int glyph) const;
    void giveUp();

    std::vector<quint32> m_glyphs;
    // By glyph number; -1 for others.
    std::vector<short> m_places;
    std::vector<bool> m_dependent;
    std::set<std::pair<int, int>> m_ligatures;
};

} // namespace skinwidgets

#endif
