#include "toolkit/offscreen.h"
#include "toolkit/pixels.h"
#include "toolkit/toolkit.h"

#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cstring>

namespace
{

using namespace skinwidgets;

// One axis of a copy.
struct Span {
    int from = 0;
    int to = 0;
    int length = 0;
};

// Cuts the axis down to what both ends have. A negative length reaches to the end of the source. Callers may ask for
// any int, so the sums are 64 bits wide.
Span cutDown(qint64 to, int targetLength, qint64 from, int length, int sourceLength)
{
    const qint64 end = length < 0 ? sourceLength : std::min<qint64>(from + length, sourceLength);
    const qint64 first = std::max({from, qint64(0), from - to});
    const qint64 last = std::min(end, from - to + targetLength);
    if (last <= first)
        return {};
    return {static_cast<int>(first), static_cast<int>(first - from + to), static_cast<int>(last - first)};
}

void copyLine(QRgb* to, const QRgb* from, int count, bool keepAlpha)
{
    if (keepAlpha) {
        std::memcpy(to, from, sizeof(QRgb) * static_cast<size_t>(count));
        return;
    }
    for (int x = 0; x < count; ++x)
        to[x] = from[x] | 0xff000000U;
}

bool is32Bits(const QImage& image)
{
    return image.format() == QImage::Format_ARGB32 || image.format() == QImage::Format_RGB32;
}

// Not through a painter: it takes a short cut for single pixels that loses the colours of transparent ones.
void copyLines(QImage& target, const QPoint& to, const QImage& source, const QRect& from)
{
    const bool keepAlpha = target.hasAlphaChannel() && source.hasAlphaChannel();
    const qsizetype targetStride = target.bytesPerLine() / qsizetype(sizeof(QRgb));
    const qsizetype sourceStride = source.bytesPerLine() / qsizetype(sizeof(QRgb));
    QRgb* out = reinterpret_cast<QRgb*>(target.bits()) + to.y() * targetStride + to.x();
    const QRgb* in = reinterpret_cast<const QRgb*>(source.constBits()) + from.y() * sourceStride + from.x();
    for (int y = 0; y < from.height(); ++y, out += targetStride, in += sourceStride)
        copyLine(out, in, from.width(), keepAlpha);
}

bool hasAlpha(const QPaintDevice* device)
{
    if (device->devType() == QInternal::Image)
        return static_cast<const QImage*>(device)->hasAlphaChannel();
    return device->devType() == QInternal::Pixmap && static_cast<const QPixmap*>(device)->hasAlphaChannel();
}

void copyThroughPainter(QPainter& painter, const QPoint& to, const QImage& source, const QRect& from)
{
    painter.save();
    painter.resetTransform();
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.setClipping(false);
    const bool keepAlpha = hasAlpha(painter.device());
    painter.drawImage(to, keepAlpha ? source : withoutAlpha(source), from);
    painter.restore();
}

void copyToImage(QImage& target, const QPoint& to, const QImage& source, const QRect& from)
{
    if (target.isNull())
        return;
    // A painter at work goes on in the format that the target has now. Only premultiplied words can become straight
    // under it.
    if (target.paintingActive() && !is32Bits(target) && target.format() != QImage::Format_ARGB32_Premultiplied) {
        copyThroughPainter(*target.paintEngine()->painter(), to, source, from);
        return;
    }
    if (target.hasAlphaChannel())
        target.convertTo(QImage::Format_ARGB32);
    if (!is32Bits(target)) {
        QPainter painter(&target);
        copyThroughPainter(painter, to, source, from);
    } else if (is32Bits(source)) {
        copyLines(target, to, source, from);
    } else {
        copyLines(target, to, toStraight(source.copy(from)), QRect(QPoint(), from.size()));
    }
}

void copyToPixmap(QPixmap& target, const QPoint& to, const QImage& source, const QRect& from)
{
    if (target.isNull())
        return;
    if (target.paintingActive()) {
        copyThroughPainter(*target.paintEngine()->painter(), to, source, from);
        return;
    }
    QImage image = target.toImage();
    // Let go of the pixels, so that they are written in place.
    target = QPixmap();
    copyToImage(image, to, source, from);
    target = pixmapFromStraight(std::move(image));
}

QImage imageOf(const QPaintDevice* device)
{
    if (!device)
        return {};
    if (device->devType() == QInternal::Image)
        return *static_cast<const QImage*>(device);
    if (device->devType() == QInternal::Pixmap)
        return static_cast<const QPixmap*>(device)->toImage();
    return {};
}

// How the painter has been moved, clipped or set is of no account.
void copyUnmoved(QPainter& painter, const QWidget* widget, const QPoint& to, const QImage& picture)
{
    painter.save();
    painter.resetTransform();
    painter.setClipping(false);
    painter.setOpacity(1);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    copyToWidget(painter, widget, to, picture);
    painter.restore();
}

void copyIntoPaintEvent(QWidget* widget, const QPoint& to, const QImage& picture)
{
    if (!isInPaintEvent(widget))
        return;
    if (QPainter* open = openPainter(widget)) {
        copyUnmoved(*open, widget, to, picture);
        return;
    }
    QPainter painter(widget);
    copyUnmoved(painter, widget, to, picture);
}

// The source comes by value: it may be the target itself, which is then written into a copy.
void copyTo(QPaintDevice* target, int dx, int dy, QImage source, int sx, int sy, int sw, int sh)
{
    if (!target || source.isNull())
        return;
    const Span across = cutDown(dx, target->width(), sx, sw, source.width());
    const Span down = cutDown(dy, target->height(), sy, sh, source.height());
    const QRect from(across.from, down.from, across.length, down.length);
    const QPoint to(across.to, down.to);
    if (from.isEmpty())
        return;
    switch (target->devType()) {
    case QInternal::Image:
        copyToImage(*static_cast<QImage*>(target), to, source, from);
        break;
    case QInternal::Pixmap:
        copyToPixmap(*static_cast<QPixmap*>(target), to, source, from);
        break;
    case QInternal::Widget:
        copyIntoPaintEvent(static_cast<QWidget*>(target), to, source.copy(from));
        break;
    default:
        break;
    }
}

} // namespace

void bitBlt(QPaintDevice* dst, int dx, int dy, const QPaintDevice* src, int sx, int sy, int sw, int sh, Qt::RasterOp,
            bool)
{
    copyTo(dst, dx, dy, imageOf(src), sx, sy, sw, sh);
}

void bitBlt(QPaintDevice* dst, int dx, int dy, const QImage* src, int sx, int sy, int sw, int sh, int)
{
    if (src)
        copyTo(dst, dx, dy, *src, sx, sy, sw, sh);
}

void bitBlt(QImage* dst, int dx, int dy, const QImage* src, int sx, int sy, int sw, int sh, int)
{
    if (src)
        copyTo(dst, dx, dy, *src, sx, sy, sw, sh);
}
