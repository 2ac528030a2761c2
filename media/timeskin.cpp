#include "media/timeskin.h"

#include "skinbase/skinreader.h"
#include "toolkit/offscreen.h"
#include "toolkit/pictureloader.h"

#include <algorithm>
#include <array>

using skinwidgets::largestPicturePixels;
using skinwidgets::largestPictureSide;
using skinwidgets::SkinReader;

namespace
{

using Figures = std::array<int, 6>;

Figures figuresOf(unsigned int seconds)
{
    const unsigned int minutes = seconds / 60;
    const unsigned int hours = minutes / 60;
    const std::array<unsigned int, 6> figures = {std::min(hours / 10, 9U), hours % 10,        minutes % 60 / 10,
                                                 minutes % 60 % 10,        seconds % 60 / 10, seconds % 60 % 10};
    Figures result;
    std::copy(figures.begin(), figures.end(), result.begin());
    return result;
}

// Hands out places from left to right.
class Row
{
public:
    explicit Row(int spacing) : m_spacing(spacing) {}

    QRect place(const QSize& wanted)
    {
        // The bounds lie beyond any real row; rectangles can still be computed from them.
        const QSize size = wanted.boundedTo(QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        const QRect rect(QPoint(m_left, 0), size);
        const qint64 next = qint64(m_left) + m_spacing + size.width();
        m_left = static_cast<int>(std::clamp<qint64>(next, -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        return rect;
    }

private:
    int m_spacing;
    int m_left = 0;
};

} // namespace

TimeSkin::TimeSkin(QWidget* parent, const char* name, unsigned int flags) : SkinBase(parent, name, flags)
{
    setFocusPolicy(Qt::NoFocus);
    TimeSkin::do_configloading(objectName());
}

TimeSkin::~TimeSkin()
{
    delete numberImage;
    delete colonImage;
}

void TimeSkin::do_configloading(QString group)
{
    SkinReader skin(this);
    skin.setGroup(group);
    delete colonImage;
    colonImage = new QImage(skinwidgets::toStraight(skin.picture(QStringLiteral("colon_image"))));
    delete numberImage;
    numberImage = new QImage(skinwidgets::toStraight(skin.picture(QStringLiteral("number_image"))));
    spacing = skin.number(QStringLiteral("spacing"));

    // The constructor gets this class's own layout, a later call that of a subclass.
    // NOLINTBEGIN(clang-analyzer-optin.cplusplus.VirtualCall)
    init_positions(numberImage->size(), colonImage->size());
    redrawDigits();
    redrawColons();
    // NOLINTEND(clang-analyzer-optin.cplusplus.VirtualCall)
    sizeToFigures();
    update();
}

void TimeSkin::sizeToFigures()
{
    const TimeDigit& last = digits[5];
    const int height = last.images[0].height();
    const qint64 widest = std::min<qint64>(largestPictureSide, largestPicturePixels / std::max(height, 1));
    const qint64 width = qint64(last.rect.left()) + last.images[0].width();
    resize(static_cast<int>(std::min(width, widest)), height);
}

void TimeSkin::init_positions(const QSize& number, const QSize& colon)
{
    const QSize digit(number.width() / 10, number.height());
    Row row(spacing);
    digits[0].rect = row.place(digit);
    digits[1].rect = row.place(digit);
    colon1Rect = row.place(colon);
    digits[2].rect = row.place(digit);
    digits[3].rect = row.place(digit);
    colon2Rect = row.place(colon);
    digits[4].rect = row.place(digit);
    digits[5].rect = row.place(digit);
}

QImage TimeSkin::figure(int number) const
{
    const int width = numberImage->width() / 10;
    return numberImage->copy(width * number, 0, width, numberImage->height());
}

void TimeSkin::redrawDigits()
{
    for (TimeDigit& digit : digits) {
        for (int number = 0; number < 10; ++number) {
            digit.images[number] = figure(number);
            redrawImage(digit.images[number], digit.rect.left(), digit.rect.top());
        }
    }
}

void TimeSkin::redrawColons()
{
    colonImage1 = *colonImage;
    redrawImage(colonImage1, colon1Rect.left(), colon1Rect.top());
    colonImage2 = *colonImage;
    redrawImage(colonImage2, colon2Rect.left(), colon2Rect.top());
}

void TimeSkin::setAlphaOverride(unsigned char alpha)
{
    SkinBase::setAlphaOverride(alpha);
    redrawDigits();
    redrawColons();
    update();
}

void TimeSkin::setBackgroundPixmap(const QPixmap& pm)
{
    SkinBase::setBackgroundPixmap(pm);
    redrawDigits();
    redrawColons();
}

void TimeSkin::update_time(unsigned int seconds)
{
    if (seconds == currentTime)
        return;
    currentTime = seconds;
    const Figures figures = figuresOf(seconds);
    for (size_t i = 0; i < figures.size(); ++i) {
        if (digits[i].current == figures[i])
            continue;
        digits[i].current = figures[i];
        repaint(digits[i].rect, false);
    }
}

void TimeSkin::paintEvent(QPaintEvent* event)
{
    skinwidgets::paintThroughPixmap(this, event->region(), skinwidgets::Prepared::FromBackground,
                                    [this](QPixmap& target, const QRect& area) {
                                        drawDigits(&target, area);
                                        drawClippedImage(&target, colonImage1, area, colon1Rect);
                                        drawClippedImage(&target, colonImage2, area, colon2Rect);
                                    });
}

void TimeSkin::drawDigits(QPixmap* pm, const QRect& r)
{
    for (const TimeDigit& digit : digits)
        drawClippedImage(pm, digit.images[digit.current], r, digit.rect);
}

void TimeSkin::mousePressEvent(QMouseEvent* /*event*/) {}

void TimeSkin::mouseReleaseEvent(QMouseEvent* /*event*/) {}

void TimeSkin::keyPressEvent(QKeyEvent* /*event*/) {}

void TimeSkin::keyReleaseEvent(QKeyEvent* /*event*/) {}

void TimeSkin::focusInEvent(QFocusEvent* /*event*/) {}

void TimeSkin::focusOutEvent(QFocusEvent* /*event*/) {}
