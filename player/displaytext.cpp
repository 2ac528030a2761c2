#include "player/displaytext.h"

#include <QFontMetrics>
#include <QStringList>
#include <QTextLayout>
#include <QTextOption>
#include <QtMath>

#include <algorithm>

namespace
{

bool turnsDirection(QChar c)
{
    const char16_t code = c.unicode();
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

// Without half a character at its end.
QString beginning(const QString& text, qsizetype length)
{
    QString cut = text.left(length);
    if (!cut.isEmpty() && cut.back().isHighSurrogate())
        cut.chop(1);
    return cut;
}

// Punctuation at the ends of a right-to-left text goes with it, even where it is drawn as part of a left-to-right line.
QString marked(const QString& text)
{
    const QChar mark(0x200F);
    return text.isRightToLeft() ? mark + text + mark : text;
}

// The least width at which it is not shortened: QFontMetrics would round the sum of widths down, too.
int widthOf(const QString& text, const QFont& font)
{
    return qCeil(QFontMetricsF(font).horizontalAdvance(text));
}

} // namespace

QString displaytext::oneLine(const QString& text)
{
    // Cut before the work on it, for a tag may be as large as its file.
    QString line = beginning(text, 2 * longest);
    for (QChar& c : line)
        if (c.category() == QChar::Other_Control)
            c = QLatin1Char(' ');
    line.removeIf(turnsDirection);
    line = line.simplified();
    return line.size() <= longest ? line : beginning(line, longest - 1) + QChar(0x2026);
}

QString displaytext::elided(const QString& text, const QFont& font, int width, Qt::TextElideMode mode)
{
    return marked(QFontMetrics(font).elidedText(oneLine(text), mode, std::max(width, 0)));
}

QString displaytext::wrapped(const QString& text, const QFont& font, const QSize& size)
{
    const QString whole = oneLine(text);
    const int most = std::max(size.height() / std::max(QFontMetrics(font).lineSpacing(), 1), 1);
    QTextLayout layout(whole, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(Qt::LayoutDirectionAuto);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(size.width(), 1));
        if (lines.size() + 1 == most) {
            lines += elided(whole.mid(line.textStart()), font, size.width());
            break;
        }
        lines += marked(whole.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines.join(QLatin1Char('\n'));
}

displaytext::Heading displaytext::heading(const QString& title, const QString& file, const QFont& font, int gap,
                                          int width)
{
    const QString wholeTitle = oneLine(title);
    const QString wholeFile = oneLine(file);
    if (wholeTitle.isEmpty())
        return {elided(wholeFile, font, width, Qt::ElideMiddle), QString()};
    if (wholeFile.isEmpty())
        return {elided(wholeTitle, font, width), QString()};
    const int room = width - gap;
    const int least = std::min(widthOf(wholeFile, font), room / 3);
    const QString shownTitle = elided(wholeTitle, font, room - least);
    const int left = room - QFontMetrics(font).horizontalAdvance(shownTitle);
    return {shownTitle, elided(wholeFile, font, left, Qt::ElideMiddle)};
}
