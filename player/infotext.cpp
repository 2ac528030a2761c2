#include "player/infotext.h"

#include "player/displaytext.h"

#include <QFontMetrics>
#include <QPainter>

namespace
{

struct Line {
    const QString& text;
    QColor color;
    int pixelSize;
    bool isBold;
};

} // namespace

InfoText::InfoText(const Colors& colors, QWidget* parent) : QWidget(parent), m_colors(colors)
{
    setObjectName(QStringLiteral("info"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

InfoText::~InfoText() = default;

void InfoText::setTexts(const Texts& texts)
{
    m_texts = texts;
    update();
}

void InfoText::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    int y = 0;
    for (const Line& line :
         {Line{m_texts.title, m_colors.title, 17, true}, Line{m_texts.artist, m_colors.artist, 14, false},
          Line{m_texts.album, m_colors.album, 12, false}}) {
        if (line.text.isEmpty())
            continue;
        QFont lineFont = font();
        lineFont.setPixelSize(line.pixelSize);
        lineFont.setBold(line.isBold);
        const int lineHeight = QFontMetrics(lineFont).height();
        if (y > 0 && y + lineHeight > height())
            break;
        painter.setFont(lineFont);
        painter.setPen(line.color);
        painter.drawText(QRect(0, y, width(), lineHeight), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         displaytext::elided(line.text, lineFont, width()));
        y += lineHeight;
    }
}
