#ifndef SKINWIDGETS_LISTBOX_TEXTWIDTHS_H
#define SKINWIDGETS_LISTBOX_TEXTWIDTHS_H

#include <QFont>
#include <QFontMetrics>

#include <memory>

namespace skinwidgets
{

class PairWidths;

/*
 * Measures many texts in one font, each exactly as QFontMetrics::horizontalAdvance() does.
 *
 * Setting a text glyph by glyph takes microseconds. In a text of Latin letters, digits and punctuation most fonts do no
 * more than add up the characters' widths and kern neighbours; where the font's tables prove that, the sum is made of
 * widths and kernings that were measured once. Everything else is measured by the toolkit.
 */
class TextWidths
{
public:
    TextWidths(const QFont& font, const QFontMetrics& metrics);
    ~TextWidths();

    // What is known of fonts is worthless once fonts have come or gone.
    static void forgetFonts();

    const QFontMetrics& metrics() const { return m_metrics; }
    int width(const QString& text);

private:
    QFont m_font;
    QFontMetrics m_metrics;
    int m_measured = 0;
    std::shared_ptr<PairWidths> m_pairs;
};

} // namespace skinwidgets

#endif
