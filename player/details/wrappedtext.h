#ifndef SKINWIDGETS_PLAYER_DETAILS_WRAPPEDTEXT_H
#define SKINWIDGETS_PLAYER_DETAILS_WRAPPEDTEXT_H

#include <QDeadlineTimer>
#include <QFont>
#include <QPoint>
#include <QString>
#include <QStringView>

#include <vector>

class QPainter;

/*
 * A text that is broken into lines of a width once, in portions if it is long, and drawn a few lines at a time. A line
 * feed begins a new paragraph. All lengths are pixels; all lines are equally high.
 */
class WrappedText
{
public:
    WrappedText() = default;
    // Breaks nothing yet.
    WrappedText(const QString& text, const QFont& font, int width, int lineHeight);
    // Of the font's own line height, broken to the end.
    WrappedText(const QString& text, const QFont& font, int width);

    bool isEmpty() const { return m_text.isEmpty(); }
    const QString& text() const { return m_text; }
    int lineHeight() const { return m_lineHeight; }
    // Of the lines that there are by now.
    int height() const { return static_cast<int>(m_lines.size()) * m_lineHeight; }
    int lineCount() const { return static_cast<int>(m_lines.size()); }
    QString line(int index) const;

    bool isBroken() const { return m_at > m_text.size(); }
    // Goes on breaking to the end of the text or the deadline, at least by one piece of a paragraph.
    void breakLines(const QDeadlineTimer& deadline);

    // The lines of a paragraph, count 0 for one that is not broken yet.
    struct Range {
        int first;
        int count;
    };
    Range linesOf(int paragraph) const;

    // Draws the lines between two heights, with the first line of the text at the point. The painter's pen gives the
    // colour.
    void draw(QPainter* painter, const QPoint& at, int top, int bottom) const;
    void drawLines(QPainter* painter, const QPoint& at, Range lines) const;

private:
    struct Line {
        int start;
        int length;
        int paragraph;
        bool isRightToLeft;
    };

    void breakPiece();
    void breakPiece(QStringView piece, bool isRightToLeft, bool endsParagraph);

    QString m_text;
    QFont m_font;
    int m_width = 0;
    int m_lineHeight = 1;
    std::vector<Line> m_lines;
    // Where breaking goes on: behind the text when it is done.
    qsizetype m_at = 0;
    int m_paragraph = 0;
    bool m_isRightToLeft = false;
    bool m_inParagraph = false;
};

#endif
