#include "listbox/textwidths.h"

#include "listbox/glyphcontexts.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QRawFont>

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

namespace skinwidgets
{

namespace
{

// Before this, measuring directly costs less than getting to know the font.
constexpr int fewTexts = 64;
// Longer texts are set in parts.
constexpr qsizetype longText = 1000;
constexpr size_t keptFonts = 4;

// Printable ASCII and the Latin letters of the next 128 characters.
constexpr int codes = 256;
constexpr bool isSimple(int code)
{
    return (code >= 0x20 && code < 0x7f) || (code >= 0xc0 && code != 0xd7 && code != 0xf7);
}

bool isLatinLetter(int code)
{
    return QChar::script(uint(code)) == QChar::Script_Latin;
}

} // namespace

// The widths of characters, and the kernings of two, in 64ths of a pixel, as the toolkit adds them up.
class PairWidths
{
public:
    PairWidths(const QFont& font, const QFontMetrics& metrics);

    bool isFor(const QFont& font, const QFontMetrics& metrics) const
    {
        return m_font == font && m_plainMetrics == metrics;
    }
    bool isUsable() const { return m_usable; }
    // False where this text is none for adding up.
    bool add(const QString& text, int& width);

private:
    static constexpr int unknown = std::numeric_limits<int>::min();
    static constexpr int impossible = unknown + 1;

    // A text without a letter is in no script, which has other kernings.
    using Steps = std::vector<int>;
    int measure(const QString& text) const { return qRound(m_metrics.horizontalAdvance(text) * 64); }
    int measureStep(int first, int second, bool latin) const;

    QFont m_font;
    QFontMetrics m_plainMetrics;
    QFontMetricsF m_metrics;
    bool m_usable = false;
    // Places among the characters that may be added up, from 0; -1 for others.
    std::array<short, codes> m_places;
    std::array<bool, codes> m_letters{};
    std::vector<int> m_codes;
    std::vector<int> m_widths;
    // What a character adds to the width behind another one: its own width and the kerning.
    Steps m_latinSteps;
    Steps m_plainSteps;
};

PairWidths::PairWidths(const QFont& font, const QFontMetrics& metrics)
    : m_font(font),
      m_plainMetrics(metrics),
      m_metrics(metrics)
{
    m_places.fill(-1);
    if (font.letterSpacing() != 0 || font.wordSpacing() != 0 || font.capitalization() != QFont::MixedCase)
        return;
    const QRawFont raw = QRawFont::fromFont(font);
    if (!raw.isValid() || !(raw == QRawFont::fromFont(font, QFontDatabase::Latin)))
        return;

    std::vector<int> candidates;
    std::vector<quint32> glyphs;
    for (int code = 0; code < codes; ++code) {
        const QList<quint32> found =
            isSimple(code) ? raw.glyphIndexesForString(QString(QChar(code))) : QList<quint32>();
        // Two characters with one glyph cannot be told apart in the font's tables.
        if (found.size() != 1 || found.first() == 0 ||
            std::find(glyphs.begin(), glyphs.end(), found.first()) != glyphs.end())
            continue;
        candidates.push_back(code);
        glyphs.push_back(found.first());
    }
    const GlyphContexts contexts(raw, glyphs);
    std::vector<int> glyphPlaces;
    for (size_t i = 0; i < candidates.size(); ++i) {
        if (contexts.dependsOnContext(int(i)))
            continue;
        const int code = candidates[i];
        m_places[size_t(code)] = short(m_codes.size());
        m_letters[size_t(code)] = isLatinLetter(code);
        m_codes.push_back(code);
        m_widths.push_back(measure(QString(QChar(code))));
        glyphPlaces.push_back(int(i));
    }
    const size_t count = m_codes.size();
    m_latinSteps.assign(count * count, unknown);
    m_plainSteps.assign(count * count, unknown);
    for (size_t first = 0; first < count; ++first)
        for (size_t second = 0; second < count; ++second)
            if (contexts.formsLigature(glyphPlaces[first], glyphPlaces[second]))
                m_latinSteps[first * count + second] = m_plainSteps[first * count + second] = impossible;
    // Kernings between others than letters are measured behind a letter.
    const int letter = m_places['n'];
    if (letter < 0)
        return;
    const auto behindIt = m_latinSteps.begin() + letter * std::ptrdiff_t(count);
    m_usable = std::find(behindIt, behindIt + std::ptrdiff_t(count), impossible) == behindIt + std::ptrdiff_t(count);
}

int PairWidths::measureStep(int first, int second, bool latin) const
{
    const QString pair = QString(QChar(m_codes[size_t(first)])) + QChar(m_codes[size_t(second)]);
    const bool hasLetter = m_letters[size_t(m_codes[size_t(first)])] || m_letters[size_t(m_codes[size_t(second)])];
    if (hasLetter || !latin)
        return measure(pair) - m_widths[size_t(first)];
    return measure(QLatin1Char('n') + pair) - measure(QLatin1Char('n') + pair.left(1));
}

bool PairWidths::add(const QString& text, int& width)
{
    const qsizetype length = text.size();
    if (length == 0 || length > longText)
        return false;
    const QChar* letters = text.constData();
    const auto placeOf = [this](QChar letter) { return letter.unicode() < codes ? m_places[letter.unicode()] : -1; };
    bool latin = false;
    for (qsizetype i = 0; i < length && !latin; ++i) {
        if (letters[i].unicode() >= codes)
            return false;
        latin = m_letters[letters[i].unicode()];
    }

    Steps& steps = latin ? m_latinSteps : m_plainSteps;
    const size_t count = m_codes.size();
    int before = placeOf(letters[0]);
    if (before < 0)
        return false;
    int sum = m_widths[size_t(before)];
    for (qsizetype i = 1; i < length; ++i) {
        const int place = placeOf(letters[i]);
        if (place < 0)
            return false;
        int& step = steps[size_t(before) * count + size_t(place)];
        if (step == impossible)
            return false;
        if (step == unknown)
            step = measureStep(before, place, latin);
        sum += step;
        before = place;
    }
    // Halves up, as the toolkit rounds.
    width = (sum + 32) >> 6;
    return true;
}

namespace
{

// The last few fonts are kept: an application has few.
std::vector<std::shared_ptr<PairWidths>>& keptPairs()
{
    static std::vector<std::shared_ptr<PairWidths>> kept;
    return kept;
}

std::shared_ptr<PairWidths> pairsOf(const QFont& font, const QFontMetrics& metrics)
{
    std::vector<std::shared_ptr<PairWidths>>& kept = keptPairs();
    for (const auto& each : kept)
        if (each->isFor(font, metrics))
            return each;
    // Fonts must not outlive the application object.
    if (kept.empty())
        qAddPostRoutine([] { keptPairs().clear(); });
    if (kept.size() == keptFonts)
        kept.erase(kept.begin());
    kept.push_back(std::make_shared<PairWidths>(font, metrics));
    return kept.back();
}

} // namespace

TextWidths::TextWidths(const QFont& font, const QFontMetrics& metrics) : m_font(font), m_metrics(metrics) {}

TextWidths::~TextWidths() = default;

void TextWidths::forgetFonts()
{
    keptPairs().clear();
}

int TextWidths::width(const QString& text)
{
    if (!m_pairs && ++m_measured > fewTexts)
        m_pairs = pairsOf(m_font, m_metrics);
    int sum = 0;
    if (m_pairs && m_pairs->isUsable() && m_pairs->add(text, sum))
        return sum;
    return m_metrics.horizontalAdvance(text);
}

} // namespace skinwidgets
