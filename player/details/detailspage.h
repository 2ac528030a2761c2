#ifndef SKINWIDGETS_PLAYER_DETAILS_DETAILSPAGE_H
#define SKINWIDGETS_PLAYER_DETAILS_DETAILSPAGE_H

#include "player/details/trackdetails.h"
#include "player/details/tracktext.h"
#include "player/details/wrappedtext.h"

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QRect>

#include <vector>

class QDeadlineTimer;
class QPainter;

/*
 * The page that tells about a file: its cover with title, artist and album beside it, the other details in two columns,
 * and below them the lyrics or notes. It needs no window: it is laid out to a width and drawn onto a painter, in
 * coordinates of its own from (0, 0).
 *
 * A long text is laid out in portions, and the page grows as it goes on.
 */
class DetailsPage
{
public:
    struct Look {
        QColor title = QColor(0xf4, 0xf8, 0xff);
        QColor text = QColor(0xc6, 0xd2, 0xe4);
        QColor label = QColor(0x7f, 0x90, 0xab);
        QColor accent = QColor(0xff, 0xa2, 0x4d);
        QFont font;
        // For a file that brings no picture.
        QPixmap cover;
    };

    // Pixels.
    static constexpr int coverSide = 104;
    static constexpr int scrollStep = 20;

    void setLook(const Look& look);
    // A null cover shows that of the look.
    void setTrack(const TrackDetails& track, const QImage& cover);
    void setText(const TrackText& text);

    // Lays out all but the end of a long text. To be called after the setters.
    void layOut(int width);
    bool isLaidOut() const { return m_text.isEmpty() || m_text.isBroken(); }
    // Goes on with the text until the deadline.
    void layOutText(const QDeadlineTimer& deadline);

    const TrackDetails& track() const { return m_track; }
    int width() const { return m_width; }
    int height() const;
    QRect coverRect() const;
    // The lyrics or notes; empty where there are none.
    QRect textRect() const;
    // A line of a text with times, wherever it lies; empty for one that there is not.
    QRect timedLineRect(int line) const;

    // Makes a line of the text stand out, none with -1.
    void setCurrentLine(int line) { m_currentLine = line; }
    int currentLine() const { return m_currentLine; }

    // Draws what lies in the rectangle.
    void draw(QPainter* painter, const QRect& exposed) const;

private:
    struct Part {
        QPoint at;
        WrappedText text;
        QColor color;

        int bottom() const { return at.y() + text.height(); }
        bool touches(const QRect& rect) const { return rect.top() < bottom() && at.y() <= rect.bottom(); }
    };

    void layOutHeader();
    void layOutEntries();
    void layOutHeading();
    int addPart(const QString& text, const QFont& font, const QColor& color, const QRect& column);
    QFont fontOf(int pixelSize, bool bold = false) const;
    void drawCover(QPainter* painter) const;
    void drawRule(QPainter* painter, int left, int y) const;
    void drawText(QPainter* painter, const QRect& exposed) const;
    QPoint textAt() const;

    Look m_look;
    TrackDetails m_track;
    QPixmap m_cover;
    TrackText m_content;

    int m_width = 0;
    // Everything but the lyrics or notes, from top to bottom.
    std::vector<Part> m_parts;
    int m_entriesTop = 0;
    int m_headingTop = 0;
    int m_headingRight = 0;
    int m_textTop = 0;
    WrappedText m_text;
    int m_currentLine = -1;
};

#endif
