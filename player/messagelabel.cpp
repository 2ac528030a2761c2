#include "player/messagelabel.h"

#include "player/displaytext.h"

#include <QBitmap>
#include <QImage>
#include <QPainter>

#include <algorithm>

namespace
{

// Milliseconds.
constexpr int shortestTime = 4000;
constexpr int timePerCharacter = 60;
constexpr int longestTime = 12000;

// Pixels.
constexpr int outline = 1;
// How opaque a pixel of a letter's edge is that has the outline beside it; a fainter one is part of the outline.
constexpr int leastLetter = 64;

QColor contrastTo(const QColor& color)
{
    return qGray(color.rgb()) > 127 ? Qt::black : Qt::white;
}

void markAround(QImage& mask, const QPoint& at)
{
    const QRect around(at - QPoint(outline, outline), at + QPoint(outline, outline));
    const QRect inside = around.intersected(mask.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        for (int x = inside.left(); x <= inside.right(); ++x)
            mask.setPixel(x, y, 1);
}

} // namespace

MessageLabel::MessageLabel(QWidget* parent, const char* name) : LabelSkin(parent, name)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setMargin(outline);
    setColor(Qt::white);
    hide();
    m_timer.setObjectName(QStringLiteral("message"));
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] { showMessage(QString()); });
}

MessageLabel::~MessageLabel() = default;

void MessageLabel::setColor(const QColor& color)
{
    set_textColor(color);
    // The mask is as wide as the outline, so what the letters leave of it is the outline.
    set_bgColor(contrastTo(color));
}

int MessageLabel::timeFor(const QString& message)
{
    return std::min(shortestTime + timePerCharacter * static_cast<int>(message.left(displaytext::longest).size()),
                    longestTime);
}

void MessageLabel::showMessage(const QString& message)
{
    const bool wasShowing = !m_message.isEmpty();
    m_message = displaytext::oneLine(message);
    const bool isShowing = !m_message.isEmpty();
    setText(displaytext::wrapped(m_message, font(), contentsRect().size() - QSize(2, 2) * outline));
    setVisible(isShowing);
    if (isShowing) {
        raise();
        m_timer.start(timeFor(m_message));
    } else {
        m_timer.stop();
    }
    if (isShowing != wasShowing)
        emit showingChanged(isShowing);
}

// The letters, and what is beside them in any direction.
void MessageLabel::updateMask()
{
    if (size().isEmpty())
        return;
    QImage letters(size(), QImage::Format_ARGB32_Premultiplied);
    letters.fill(Qt::transparent);
    QPainter painter(&letters);
    painter.setFont(font());
    drawContents(&painter);
    painter.end();
    QImage mask(size(), QImage::Format_MonoLSB);
    mask.setColorTable({QColor(Qt::color0).rgb(), QColor(Qt::color1).rgb()});
    mask.fill(Qt::color0);
    for (int y = 0; y < letters.height(); ++y)
        for (int x = 0; x < letters.width(); ++x)
            if (qAlpha(letters.pixel(x, y)) >= leastLetter)
                markAround(mask, {x, y});
    setMaskBitmap(QBitmap::fromImage(mask));
    repaint(true);
}

// With soft edges, which mix with the outline and not with what lies beneath: a label skin has hard ones on purpose.
void MessageLabel::drawContents(QPainter* painter)
{
    ToolkitLabel::drawContents(painter); // NOLINT(bugprone-parent-virtual-call)
}
