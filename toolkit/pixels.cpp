#include "toolkit/pixels.h"

#include <QPainter>

#include <utility>

namespace skinwidgets
{

namespace
{

constexpr QRgb colourBits = 0x00ffffff;

uchar alphaOver(int source, int target)
{
    return static_cast<uchar>(source + (target * (255 - source) + 127) / 255);
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
    const QImage before = target.copy(area);
    blendColours(target, picture, at);
    const QImage source = toStraight(picture);
    for (int y = 0; y < area.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(source.constScanLine(area.top() - at.y() + y));
        const auto* old = reinterpret_cast<const QRgb*>(before.constScanLine(y));
        auto* to = reinterpret_cast<QRgb*>(target.scanLine(area.top() + y));
        for (int x = 0; x < area.width(); ++x) {
            const uchar alpha = alphaOver(qAlpha(from[area.left() - at.x() + x]), qAlpha(old[x]));
            QRgb& pixel = to[area.left() + x];
            pixel = (pixel & colourBits) | (static_cast<QRgb>(alpha) << 24);
        }
    }
}

} // namespace skinwidgets
