#include "player/details/wrappedtext.h"

#include <QFontMetrics>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace
{

// What is given to the text layout at a time, so that a paragraph of any length is laid out in portions.
constexpr qsizetype longestPiece = 2000;

qsizetype pieceLength(QStringView paragraph)
{
    if (paragraph.size() <= longestPiece)
        return paragraph.size();
    // Half of a character in two parts must not stand alone.
    return paragraph.at(longestPiece - 1).isHighSurrogate() ? longestPiece - 1 : longestPiece;
}

} // namespace

WrappedText::WrappedText(const QString& text, const QFont& font, int width, int lineHeight)
    : m_text(text),
      m_font(font),
      m_width(std::max(width, 1)),
      m_lineHeight(std::max(lineHeight, 1))
{
}

WrappedText::WrappedText(const QString& text, const QFont& font, int width)
    : WrappedText(text, font, width, QFontMetrics(font).lineSpacing())
{
    if (!isEmpty())
        breakLines(QDeadlineTimer(QDeadlineTimer::Forever));
}

QString WrappedText::line(int index) const
{
    const Line& line = m_lines.at(index);
    return m_text.mid(line.start, line.length);
}

void WrappedText::breakLines(const QDeadlineTimer& deadline)
{
    do {
        if (isBroken())
            return;
        breakPiece();
    } while (!deadline.hasExpired());
}

void WrappedText::breakPiece()
{
    const qsizetype lineFeed = m_text.indexOf(QLatin1Char('\n'), m_at);
    const qsizetype end = lineFeed < 0 ? m_text.size() : lineFeed;
    const QStringView rest = QStringView(m_text).mid(m_at, end - m_at);
    if (!m_inParagraph)
        m_isRightToLeft = rest.left(longestPiece).isRightToLeft();
    const qsizetype length = pieceLength(rest);
    const bool endsParagraph = length == rest.size();
    breakPiece(rest.left(length), m_isRightToLeft, endsParagraph);
    m_inParagraph = !endsParagraph;
    if (endsParagraph) {
        m_at = end + 1;
        ++m_paragraph;
    }
}

void WrappedText::breakPiece(QStringView piece, bool isRightToLeft, bool endsParagraph)
{
    const int start = static_cast<int>(m_at);
    if (piece.isEmpty()) {
        m_lines.push_back({start, 0, m_paragraph, isRightToLeft});
        return;
    }
    QTextLayout layout(piece.toString(), m_font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    layout.setTextOption(option);
    const size_t before = m_lines.size();
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(m_width);
        m_lines.push_back({start + line.textStart(), line.textLength(), m_paragraph, isRightToLeft});
    }
    layout.endLayout();
    if (endsParagraph)
        return;
    // The last line goes on in the next piece.
    m_at += piece.size();
    if (m_lines.size() - before > 1) {
        m_at = m_lines.back().start;
        m_lines.pop_back();
    }
}

WrappedText::Range WrappedText::linesOf(int paragraph) const
{
    const auto isBefore = [](const Line& line, int number) { return line.paragraph < number; };
    const auto first = std::lower_bound(m_lines.begin(), m_lines.end(), paragraph, isBefore);
    const auto last = std::lower_bound(first, m_lines.end(), paragraph + 1, isBefore);
    return {static_cast<int>(first - m_lines.begin()), static_cast<int>(last - first)};
}

void WrappedText::draw(QPainter* painter, const QPoint& at, int top, int bottom) const
{
    const int first = std::max(top - at.y(), 0) / m_lineHeight;
    const int beyond = (std::max(bottom - at.y(), 0) + m_lineHeight - 1) / m_lineHeight;
    drawLines(painter, at, {first, beyond - first});
}

void WrappedText::drawLines(QPainter* painter, const QPoint& at, Range lines) const
{
    painter->setFont(m_font);
    const int beyond = std::min(lines.first + lines.count, lineCount());
    for (int i = lines.first; i < beyond; ++i) {
        const Line& line = m_lines.at(i);
        painter->setLayoutDirection(line.isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
        painter->drawText(QRect(at.x(), at.y() + i * m_lineHeight, m_width, m_lineHeight),
                          Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip, this->line(i));
    }
}
