#include "toolkit/pixels.h"

#include <QPainter>

#include <utility>

namespace skinwidgets
{

namespace
{

constexpr QRgb colourBits = 0x00ffffff;

constexpr QRgb asItIs(QRgb pixel)
{
    return pixel;
}

// Every byte of the pixel times factor / 255, rounded as the toolkit's own painter does it.
QRgb scaledBytes(QRgb pixel, uint factor)
{
    constexpr quint64 bytes = 0x00ff00ff00ff00ff;
    quint64 spread = (pixel | quint64(pixel) << 24) & bytes;
    spread *= factor;
    spread = ((spread + ((spread >> 8) & bytes) + 0x0080008000800080) >> 8) & bytes;
    return static_cast<QRgb>(spread) | static_cast<QRgb>(spread >> 24);
}

// One pass without a painter: small pictures are blended at every repaint. The colours are those of the painter on an
// opaque target, to the bit, and the alpha byte goes through the same sum.
template <QRgb (*premultiplied)(QRgb)>
void blendLine(QRgb* to, const QRgb* from, int count)
{
    for (int x = 0; x < count; ++x) {
        const uint alpha = from[x] >> 24;
        if (alpha == 255)
            to[x] = from[x];
        else if (alpha > 0)
            to[x] = premultiplied(from[x]) + scaledBytes(to[x], 255 - alpha);
    }
}

} // namespace

QPixmap createPixmap32(const QSize& size)
{
    if (size.isEmpty())
        return {};
    QImage image(size, QImage::Format_ARGB32);
    image.fill(0);
    return pixmapFromStraight(std::move(image));
}

QImage toStraight(const QImage& picture)
{
    return picture.convertToFormat(QImage::Format_ARGB32);
}

QPixmap toStraight(const QPixmap& pixmap)
{
    const QImage image = pixmap.toImage();
    if (image.isNull() || image.format() == QImage::Format_ARGB32)
        return pixmap;
    return pixmapFromStraight(toStraight(image));
}

QPixmap pixmapFromStraight(QImage straight)
{
    // Any other conversion would choose premultiplied pixels and lose the colours of transparent ones.
    return QPixmap::fromImage(std::move(straight), Qt::NoFormatConversion);
}

QImage withoutAlpha(const QImage& picture)
{
    if (picture.format() != QImage::Format_ARGB32)
        return picture.convertToFormat(QImage::Format_RGB32);
    return {picture.constBits(), picture.width(), picture.height(), picture.bytesPerLine(), QImage::Format_RGB32};
}

void overwriteAlpha(QImage& picture, uchar alpha)
{
    overwriteAlpha(picture, picture.rect(), alpha);
}

void overwriteAlpha(QImage& picture, const QRect& area, uchar alpha)
{
    if (picture.format() != QImage::Format_ARGB32)
        picture = toStraight(picture);
    const QRgb alphaBits = static_cast<QRgb>(alpha) << 24;
    const QRect inside = area & picture.rect();
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y)) + inside.left();
        for (int x = 0; x < inside.width(); ++x)
            line[x] = (line[x] & colourBits) | alphaBits;
    }
}

void blendColours(QImage& target, const QImage& picture, const QPoint& at)
{
    if (target.isNull() || picture.isNull())
        return;
    Q_ASSERT(target.format() == QImage::Format_ARGB32);
    QImage opaque(target.bits(), target.width(), target.height(), target.bytesPerLine(), QImage::Format_RGB32);
    QPainter(&opaque).drawImage(at, picture);
}

void blendOver(QImage& target, const QImage& picture, const QPoint& at)
{
    const QRect area = QRect(at, picture.size()) & target.rect();
    if (area.isEmpty())
        return;
    Q_ASSERT(target.format() == QImage::Format_ARGB32);
    const bool straight = picture.format() == QImage::Format_ARGB32;
    const QImage source = straight ? picture : picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const auto blend = straight ? blendLine<qPremultiply> : blendLine<asItIs>;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        blend(reinterpret_cast<QRgb*>(target.scanLine(y)) + area.left(),
              reinterpret_cast<const QRgb*>(source.constScanLine(y - at.y())) + area.left() - at.x(), area.width());
    }
}

} // namespace skinwidgets
