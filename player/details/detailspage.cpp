#include "player/details/detailspage.h"

#include "player/details/coverpicture.h"

#include <QDeadlineTimer>
#include <QFontMetrics>
#include <QLinearGradient>
#include <QPainter>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace
{

constexpr int margin = 16;
constexpr int gap = 16;
constexpr int valueColumn = margin + DetailsPage::coverSide + gap;
constexpr int entryGap = 4;
constexpr int textLineHeight = 21;
// Enough for the first screens of any text; what is longer follows in portions.
constexpr auto firstPortion = 20ms;

QString headingOf(const TrackText& text)
{
    return text.fileName.endsWith(QLatin1String(".lrc"), Qt::CaseInsensitive) ? TrackDetails::tr("Lyrics")
                                                                              : TrackDetails::tr("Notes");
}

// What there is to say about the file with the text itself.
QString remarkOn(const TrackText& text)
{
    switch (text.state) {
    case TrackText::Unreadable:
        return TrackDetails::tr("%1 cannot be read.").arg(text.fileName);
    case TrackText::NoText:
        return TrackDetails::tr("%1 holds no readable text.").arg(text.fileName);
    case TrackText::Empty:
        return TrackDetails::tr("%1 is empty.").arg(text.fileName);
    case TrackText::Shortened:
        return TrackDetails::tr("%1 is long; this is its beginning.").arg(text.fileName);
    case TrackText::Missing:
    case TrackText::Complete:
        break;
    }
    return {};
}

} // namespace

void DetailsPage::setLook(const Look& look)
{
    m_look = look;
}

void DetailsPage::setTrack(const TrackDetails& track, const QImage& cover)
{
    m_track = track;
    const QSize size(coverSide, coverSide);
    const QImage picture = coverpicture::filling(cover, size);
    m_cover = QPixmap::fromImage(picture.isNull() ? coverpicture::filling(m_look.cover.toImage(), size) : picture);
}

void DetailsPage::setText(const TrackText& text)
{
    m_content = text;
    m_text = WrappedText();
    m_currentLine = -1;
}

void DetailsPage::layOut(int width)
{
    const bool isSameText = width == m_width && !m_text.isEmpty();
    m_width = width;
    m_parts.clear();
    layOutHeader();
    layOutEntries();
    layOutHeading();
    if (isSameText || !m_content.hasText())
        return;
    m_text = WrappedText(m_content.text, fontOf(14), width - 2 * margin, textLineHeight);
    m_text.breakLines(QDeadlineTimer(firstPortion));
}

void DetailsPage::layOutText(const QDeadlineTimer& deadline)
{
    m_text.breakLines(deadline);
}

void DetailsPage::layOutHeader()
{
    const auto column = [this](int top) { return QRect(valueColumn, top, m_width - valueColumn - margin, 0); };
    int y = margin;
    const QFont large = fontOf(19, true);
    const bool isLong = QFontMetrics(large).horizontalAdvance(m_track.title) > 2 * column(y).width();
    y = addPart(m_track.title, isLong ? fontOf(15, true) : large, m_look.title, column(y));
    y = addPart(m_track.artist, fontOf(15), m_look.accent, column(y + 5));
    y = addPart(m_track.album, fontOf(13), m_look.label, column(y + 4));
    const int slack = std::max(coverRect().bottom() + 1 - y, 0);
    for (Part& part : m_parts)
        part.at.ry() += slack / 2;
    m_entriesTop = std::max(y, coverRect().bottom() + 1) + gap;
}

void DetailsPage::layOutEntries()
{
    int y = m_entriesTop + 10;
    const int lineHeight = QFontMetrics(fontOf(13)).lineSpacing();
    for (const TrackDetails::Entry& entry : m_track.entries) {
        const QFont font = fontOf(13);
        const int labelWidth = QFontMetrics(font).horizontalAdvance(entry.label);
        const int labelLeft = std::max(margin + coverSide - labelWidth, margin);
        // With the gap, so that no rounded width breaks the label.
        addPart(entry.label, font, m_look.label, QRect(labelLeft, y, labelWidth + gap, lineHeight));
        y = addPart(entry.value, font, m_look.text, QRect(valueColumn, y, m_width - valueColumn - margin, lineHeight));
        y += entryGap;
    }
    m_headingTop = y + gap;
}

void DetailsPage::layOutHeading()
{
    m_textTop = m_headingTop;
    m_headingRight = margin;
    if (m_content.state == TrackText::Missing)
        return;
    const QFont font = fontOf(13, true);
    const QString heading = headingOf(m_content);
    m_headingRight = margin + QFontMetrics(font).horizontalAdvance(heading);
    const QRect column(margin, m_headingTop, m_width - 2 * margin, 0);
    m_textTop = addPart(heading, font, m_look.accent, column) + 6;
    const QString remark = remarkOn(m_content);
    if (!remark.isEmpty())
        m_textTop = addPart(remark, fontOf(13), m_look.label, column.translated(0, m_textTop - m_headingTop)) + 6;
}

// Gives where the next one may begin.
int DetailsPage::addPart(const QString& text, const QFont& font, const QColor& color, const QRect& column)
{
    if (text.isEmpty())
        return column.top();
    m_parts.push_back({column.topLeft(), WrappedText(text, font, column.width()), color});
    return m_parts.back().bottom();
}

QFont DetailsPage::fontOf(int pixelSize, bool bold) const
{
    QFont font = m_look.font;
    font.setPixelSize(pixelSize);
    font.setBold(bold);
    return font;
}

int DetailsPage::height() const
{
    return m_textTop + m_text.height() + margin;
}

QRect DetailsPage::coverRect() const
{
    return {margin, margin, coverSide, coverSide};
}

QPoint DetailsPage::textAt() const
{
    return {margin, m_textTop};
}

QRect DetailsPage::textRect() const
{
    return {textAt(), QSize(m_width - 2 * margin, m_text.height())};
}

QRect DetailsPage::timedLineRect(int line) const
{
    if (line < 0 || line >= m_content.times.size())
        return {};
    const WrappedText::Range lines = m_text.linesOf(line);
    return {0, m_textTop + lines.first * textLineHeight, m_width, lines.count * textLineHeight};
}

void DetailsPage::draw(QPainter* painter, const QRect& exposed) const
{
    painter->save();
    if (exposed.intersects(coverRect().adjusted(-1, -1, 1, 1)))
        drawCover(painter);
    if (!m_track.entries.isEmpty())
        drawRule(painter, margin, m_entriesTop);
    for (const Part& part : m_parts) {
        if (!part.touches(exposed))
            continue;
        painter->setPen(part.color);
        part.text.draw(painter, part.at, exposed.top(), exposed.bottom() + 1);
    }
    if (m_content.state != TrackText::Missing)
        drawRule(painter, m_headingRight + 10, m_headingTop + QFontMetrics(fontOf(13, true)).lineSpacing() / 2);
    if (exposed.intersects(textRect()))
        drawText(painter, exposed);
    painter->restore();
}

void DetailsPage::drawCover(QPainter* painter) const
{
    if (m_cover.isNull())
        return;
    painter->fillRect(coverRect().adjusted(-1, -1, 1, 1), QColor(0x02, 0x04, 0x08));
    painter->drawPixmap(coverRect().topLeft(), m_cover);
}

// A fine groove, dark above light, that fades out to the right.
void DetailsPage::drawRule(QPainter* painter, int left, int y) const
{
    const QRect dark(left, y, m_width - margin - left, 1);
    QColor light = m_look.label;
    QLinearGradient fade(dark.left(), 0, dark.right(), 0);
    light.setAlpha(110);
    fade.setColorAt(0, light);
    light.setAlpha(10);
    fade.setColorAt(1, light);
    painter->fillRect(dark, QColor(0, 0, 0, 90));
    painter->fillRect(dark.translated(0, 1), fade);
}

void DetailsPage::drawText(QPainter* painter, const QRect& exposed) const
{
    painter->setPen(m_look.text);
    const QRect current = timedLineRect(m_currentLine);
    const int top = exposed.top();
    const int bottom = exposed.bottom() + 1;
    if (current.isEmpty()) {
        m_text.draw(painter, textAt(), top, bottom);
        return;
    }
    m_text.draw(painter, textAt(), top, std::min(bottom, current.top()));
    m_text.draw(painter, textAt(), std::max(top, current.bottom() + 1), bottom);
    painter->setPen(m_look.accent);
    m_text.draw(painter, textAt(), std::max(top, current.top()), std::min(bottom, current.bottom() + 1));
}
