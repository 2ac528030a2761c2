#include "listbox/glyphcontexts.h"

#include <algorithm>
#include <array>
#include <set>

namespace skinwidgets
{

namespace
{

constexpr size_t glyphNumbers = 0x10000;
// Far more than any real font needs.
constexpr int mostReads = 4'000'000;
constexpr int noFeature = 0xffff;

constexpr int ignoreBaseGlyphs = 0x02;
constexpr int ignoreLigatures = 0x04;
constexpr int markClass = 3;

// What is switched on for every text in a script without rules of its own.
constexpr std::array<const char*, 22> defaultFeatures = {"abvm", "blwm", "calt", "ccmp", "clig", "curs", "dist", "kern",
                                                         "liga", "locl", "ltra", "ltrm", "mark", "mkmk", "rand", "rclt",
                                                         "rlig", "rvrn", "BUZZ", "Buzz", "HARF", "Harf"};

// Other ways in which a font may tell how to place glyphs.
constexpr std::array<const char*, 6> foreignTables = {"morx", "mort", "kerx", "Silf", "trak", "fvar"};

// The parts of a context: what stands before, the context itself, what stands after.
constexpr size_t before = 0;
constexpr size_t context = 1;
constexpr size_t after = 2;

// Kinds of lookups.
constexpr int ligatureSubstitution = 4;
constexpr int pairPositioning = 2;

} // namespace

// A table's big-endian numbers. Reading outside, or without end, spoils the table.
class GlyphContexts::Table
{
public:
    explicit Table(const QByteArray& bytes) : m_bytes(bytes) {}

    bool isSpoilt() const { return m_reads > mostReads; }
    int size() const { return int(m_bytes.size()); }
    int number16(qint64 at)
    {
        if (at < 0 || at + 2 > m_bytes.size())
            m_reads = mostReads;
        if (++m_reads > mostReads)
            return 0;
        const auto* bytes = reinterpret_cast<const uchar*>(m_bytes.constData()) + at;
        return bytes[0] << 8 | bytes[1];
    }
    qint64 number32(qint64 at)
    {
        const qint64 high = number16(at);
        return high << 16 | number16(at + 2);
    }
    QByteArray tag(qint64 at)
    {
        number32(at);
        return isSpoilt() ? QByteArray() : m_bytes.mid(at, 4);
    }
    // An offset stored at a place, counted from a base; a base that is spoilt stays so by being outside.
    int offset(int base, qint64 at) { return base + number16(at); }

private:
    QByteArray m_bytes;
    int m_reads = 0;
};

GlyphContexts::GlyphContexts(const QRawFont& font, const std::vector<quint32>& glyphs)
    : m_glyphs(glyphs),
      m_places(glyphNumbers, short(-1)),
      m_dependent(glyphs.size(), false)
{
    for (size_t i = 0; i < glyphs.size(); ++i) {
        if (glyphs[i] == 0 || glyphs[i] >= glyphNumbers) {
            giveUp();
            return;
        }
        m_places[glyphs[i]] = short(i);
    }
    for (const char* tag : foreignTables)
        if (!font.fontTable(tag).isEmpty())
            giveUp();
    const QByteArray positions = font.fontTable("GPOS");
    // The old kerning divides each pair's between both glyphs, and each glyph is rounded by itself.
    if (!font.fontTable("kern").isEmpty() && !hasKerning(positions))
        giveUp();
    Table classes(font.fontTable("GDEF"));
    if (classes.size() > 0)
        readMarks(classes);
    readTable(font.fontTable("GSUB"), false);
    readTable(positions, true);
}

bool GlyphContexts::formsLigature(int first, int second) const
{
    return m_ligatures.count({first, second}) > 0;
}

void GlyphContexts::giveUp()
{
    m_dependent.assign(m_glyphs.size(), true);
}

int GlyphContexts::placeOf(int glyph) const
{
    return m_places[size_t(glyph)];
}

// True where no language of Latin texts, and of those in no script, is without kerning.
bool GlyphContexts::hasKerning(const QByteArray& bytes)
{
    if (bytes.isEmpty())
        return false;
    Table table(bytes);
    const int scripts = table.offset(0, 4);
    const int features = table.offset(0, 6);
    const auto kerns = [&](int language) {
        for (int i = table.number16(language + 4); i > 0 && !table.isSpoilt(); --i)
            if (table.tag(features + 2 + 6 * qint64(table.number16(language + 4 + 2 * qint64(i)))) == "kern")
                return true;
        return false;
    };
    bool any = false;
    bool all = true;
    for (int i = table.number16(scripts) - 1; i >= 0 && !table.isSpoilt(); --i) {
        const qint64 at = scripts + 2 + 6 * qint64(i);
        const QByteArray tag = table.tag(at).toLower();
        if (tag != "latn" && tag != "dflt")
            continue;
        any = true;
        const int script = table.offset(scripts, at + 4);
        all = all && table.number16(script) != 0 && kerns(table.offset(script, script));
        for (int k = table.number16(script + 2) - 1; k >= 0 && all; --k)
            all = kerns(table.offset(script, script + 8 + 6 * qint64(k)));
    }
    return any && all && !table.isSpoilt();
}

void GlyphContexts::readTable(const QByteArray& bytes, bool positioning)
{
    if (bytes.isEmpty())
        return;
    Table table(bytes);
    const int scripts = table.offset(0, 4);
    const int features = table.offset(0, 6);
    const int lookups = table.offset(0, 8);
    // A later minor version may exchange features.
    bool understood = table.number16(0) == 1 && (table.number16(2) == 0 || table.number32(10) == 0);

    std::set<int> wanted;
    const auto want = [&](int feature) {
        const int at = table.offset(features, features + 6 + 6 * qint64(feature));
        for (int i = table.number16(at + 2); i > 0 && !table.isSpoilt(); --i)
            wanted.insert(table.number16(at + 2 + 2 * qint64(i)));
    };
    for (int i = table.number16(features) - 1; i >= 0 && !table.isSpoilt(); --i) {
        const QByteArray tag = table.tag(features + 2 + 6 * qint64(i));
        if (std::find(defaultFeatures.begin(), defaultFeatures.end(), tag) != defaultFeatures.end())
            want(i);
    }
    // Languages may require features of any name.
    const auto wantRequired = [&](int language) {
        const int feature = table.number16(language + 2);
        if (feature != noFeature)
            want(feature);
    };
    for (int i = table.number16(scripts) - 1; i >= 0 && !table.isSpoilt(); --i) {
        const int script = table.offset(scripts, scripts + 6 + 6 * qint64(i));
        if (table.number16(script) != 0)
            wantRequired(table.offset(script, script));
        for (int k = table.number16(script + 2) - 1; k >= 0 && !table.isSpoilt(); --k)
            wantRequired(table.offset(script, script + 8 + 6 * qint64(k)));
    }

    const int count = table.number16(lookups);
    for (const int lookup : wanted) {
        if (lookup < count && !table.isSpoilt())
            readLookup(table, table.offset(lookups, lookups + 2 + 2 * qint64(lookup)), positioning);
    }
    understood = understood && !table.isSpoilt();
    if (!understood)
        giveUp();
}

void GlyphContexts::readLookup(Table& table, int lookup, bool positioning)
{
    const int extension = positioning ? 9 : 7;
    const int type = table.number16(lookup);
    const int flags = table.number16(lookup + 2);
    for (int i = table.number16(lookup + 4); i > 0 && !table.isSpoilt(); --i) {
        const int subtable = table.offset(lookup, lookup + 4 + 2 * qint64(i));
        if (type != extension) {
            readSubtable(table, subtable, type, flags, positioning);
            continue;
        }
        const qint64 real = subtable + table.number32(subtable + 4);
        if (real < table.size())
            readSubtable(table, int(real), table.number16(subtable + 2), flags, positioning);
        else
            giveUp();
    }
}

void GlyphContexts::readSubtable(Table& table, int subtable, int type, int flags, bool positioning)
{
    const int coverage = table.offset(subtable, subtable + 2);
    const int contextual = positioning ? 7 : 5;
    if (type == contextual || type == contextual + 1) {
        readContext(table, subtable, type == contextual + 1);
        return;
    }
    // Glyphs that are ignored let others go together across them.
    const bool neighboursOnly = (flags & (ignoreBaseGlyphs | ignoreLigatures)) == 0;
    if (neighboursOnly && !positioning && type == ligatureSubstitution) {
        readLigatures(table, subtable);
        return;
    }
    // A pair whose second glyph is placed, too, keeps that from being the first of the next pair.
    const bool kernsPairs = positioning && type == pairPositioning && table.number16(subtable + 6) == 0;
    // All others are of single glyphs, of marks (which are covered first), or unknown.
    if (!neighboursOnly || !kernsPairs)
        markCovered(table, coverage);
}

void GlyphContexts::readLigatures(Table& table, int subtable)
{
    visitCovered(table, table.offset(subtable, subtable + 2), [&](int first, int index) {
        const int set = table.offset(subtable, subtable + 6 + 2 * qint64(index));
        for (int i = table.number16(set); i > 0 && !table.isSpoilt(); --i) {
            const int ligature = table.offset(set, set + 2 * qint64(i));
            const int parts = table.number16(ligature + 2);
            const int second = parts > 1 ? placeOf(table.number16(ligature + 4)) : -1;
            bool possible = true;
            for (int part = 1; part < parts && possible && !table.isSpoilt(); ++part)
                possible = placeOf(table.number16(ligature + 2 + 2 * qint64(part))) >= 0;
            if (!possible)
                continue;
            if (second < 0)
                m_dependent[size_t(first)] = true;
            else
                m_ligatures.emplace(first, second);
        }
    });
}

// A context counts for its first glyph, if all its glyphs may be ours.
void GlyphContexts::readContext(Table& table, int subtable, bool chained)
{
    const int format = table.number16(subtable);
    if (format == 3) {
        readCoverageContext(table, subtable, chained);
        return;
    }
    // The rules name glyphs, or classes of glyphs with a set of rules for each class of the first glyph.
    const bool byClass = format == 2;
    std::array<std::vector<int>, 3> classes;
    int sets = subtable + 4;
    if (byClass && chained) {
        for (size_t part = 0; part < 3; ++part)
            classes[part] = classesIn(table, table.offset(subtable, subtable + 4 + 2 * qint64(part)));
        sets = subtable + 10;
    } else if (byClass) {
        classes[context] = classesIn(table, table.offset(subtable, subtable + 4));
        sets = subtable + 6;
    }
    const auto isOurs = [&](size_t part, int value) {
        const std::vector<int>& ours = classes[part];
        return byClass ? std::find(ours.begin(), ours.end(), value) != ours.end() : placeOf(value) >= 0;
    };
    visitCovered(table, table.offset(subtable, subtable + 2), [&](int first, int index) {
        const int set = byClass ? classes[context][size_t(first)] : index;
        const int offset = set < table.number16(sets) ? table.number16(sets + 2 + 2 * qint64(set)) : 0;
        if (offset == 0)
            return;
        const int rules = subtable + offset;
        for (int i = table.number16(rules); i > 0 && !table.isSpoilt(); --i)
            if (isPossible(table, table.offset(rules, rules + 2 * qint64(i)), chained, isOurs))
                m_dependent[size_t(first)] = true;
    });
}

template <class IsOurs>
bool GlyphContexts::isPossible(Table& table, int rule, bool chained, const IsOurs& isOurs)
{
    bool possible = true;
    int at = rule;
    for (size_t part = chained ? before : context; part <= (chained ? after : context); ++part) {
        // The context's first glyph stands in the coverage.
        const int count = table.number16(at) - (part == context ? 1 : 0);
        at += chained ? 2 : 4;
        for (int i = 0; i < count && possible && !table.isSpoilt(); ++i)
            possible = isOurs(part, table.number16(at + 2 * qint64(i)));
        at += 2 * std::max(count, 0);
    }
    return possible;
}

void GlyphContexts::readCoverageContext(Table& table, int subtable, bool chained)
{
    int at = subtable + 2;
    int first = 0;
    bool possible = true;
    for (size_t part = chained ? before : context; part <= (chained ? after : context); ++part) {
        const int count = table.number16(at);
        at += chained ? 2 : 4;
        for (int i = 0; i < count && possible && !table.isSpoilt(); ++i) {
            const int coverage = table.offset(subtable, at + 2 * qint64(i));
            possible = coversAny(table, coverage);
            if (part == context && i == 0)
                first = coverage;
        }
        at += 2 * count;
    }
    if (possible && first > 0)
        markCovered(table, first);
}

// The class of each of our glyphs. Those that the definition does not name are in class 0.
std::vector<int> GlyphContexts::classesIn(Table& table, int definition) const
{
    std::vector<int> classes(m_glyphs.size(), 0);
    if (table.number16(definition) == 1) {
        const int start = table.number16(definition + 2);
        const int count = table.number16(definition + 4);
        for (size_t i = 0; i < classes.size(); ++i) {
            const qint64 at = qint64(m_glyphs[i]) - start;
            if (at >= 0 && at < count)
                classes[i] = table.number16(definition + 6 + 2 * at);
        }
        return classes;
    }
    for (int range = table.number16(definition + 2) - 1; range >= 0 && !table.isSpoilt(); --range) {
        const qint64 at = definition + 4 + 6 * qint64(range);
        const quint32 start = quint32(table.number16(at));
        const quint32 end = quint32(table.number16(at + 2));
        for (size_t i = 0; i < classes.size(); ++i)
            if (m_glyphs[i] >= start && m_glyphs[i] <= end)
                classes[i] = table.number16(at + 4);
    }
    return classes;
}

// Marks are left out of other glyphs' contexts, which then reach farther.
void GlyphContexts::readMarks(Table& table)
{
    const int definition = table.number16(4);
    if (definition != 0) {
        const std::vector<int> classes = classesIn(table, definition);
        for (size_t i = 0; i < classes.size(); ++i)
            if (classes[i] == markClass)
                m_dependent[i] = true;
    }
    if (table.isSpoilt())
        giveUp();
}

// Calls visit(place, index in the coverage) for each of our glyphs.
template <class Visit>
void GlyphContexts::visitCovered(Table& table, int coverage, const Visit& visit) const
{
    const int format = table.number16(coverage);
    const int count = table.number16(coverage + 2);
    for (int i = 0; i < count && !table.isSpoilt(); ++i) {
        if (format == 1) {
            const int place = placeOf(table.number16(coverage + 4 + 2 * qint64(i)));
            if (place >= 0)
                visit(place, i);
            continue;
        }
        const qint64 at = coverage + 4 + 6 * qint64(i);
        const quint32 start = quint32(table.number16(at));
        const quint32 end = quint32(table.number16(at + 2));
        const int index = table.number16(at + 4);
        for (size_t place = 0; place < m_glyphs.size(); ++place)
            if (m_glyphs[place] >= start && m_glyphs[place] <= end)
                visit(int(place), index + int(m_glyphs[place] - start));
    }
}

bool GlyphContexts::coversAny(Table& table, int coverage) const
{
    bool any = false;
    visitCovered(table, coverage, [&any](int, int) { any = true; });
    return any;
}

void GlyphContexts::markCovered(Table& table, int coverage)
{
    visitCovered(table, coverage, [this](int place, int) { m_dependent[size_t(place)] = true; });
}

} // namespace skinwidgets
