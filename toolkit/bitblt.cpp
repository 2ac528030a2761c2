#include "toolkit/offscreen.h"
#include "toolkit/pixels.h"
#include "toolkit/toolkit.h"

#include <QPainter>
#include <QWidget>

namespace
{

using namespace skinwidgets;

// Cuts a copy down to what both ends have.
struct Copy {
    QRect from;
    QPoint to;

    Copy(const QPoint& target, const QSize& targetSize, const QRect& source, const QSize& sourceSize)
    {
        const QRect wanted(source.topLeft(),
                           QSize(source.width() < 0 ? sourceSize.width() - source.x() : source.width(),
                                 source.height() < 0 ? sourceSize.height() - source.y() : source.height()));
        const QPoint shift = target - source.topLeft();
        from = wanted & QRect(QPoint(), sourceSize);
        from = from.translated(shift) & QRect(QPoint(), targetSize);
        to = from.topLeft();
        from.translate(-shift);
    }
};

void copyPixels(QPaintDevice* device, const QPoint& to, const QImage& source, const QRect& from, bool keepAlpha)
{
    QPainter painter(device);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(to, keepAlpha ? source : withoutAlpha(source), from);
}

void copyToImage(QImage* target, const QPoint& to, const QImage& source, const QRect& from)
{
    if (target->isNull())
        return;
    if (target->hasAlphaChannel() && target->format() != QImage::Format_ARGB32)
        *target = toStraight(*target);
    copyPixels(target, to, source, from, target->hasAlphaChannel());
}

void copyToPixmap(QPixmap* target, const QPoint& to, const QImage& source, const QRect& from)
{
    if (target->isNull())
        return;
    const bool keepAlpha = target->hasAlphaChannel();
    if (keepAlpha)
        *target = toStraight(*target);
    copyPixels(target, to, source, from, keepAlpha);
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

void copyTo(QPaintDevice* target, const QPoint& to, const QImage& source, const QRect& from)
{
    if (!target || source.isNull())
        return;
    const Copy copy(to, QSize(target->width(), target->height()), from, source.size());
    if (copy.from.isEmpty())
        return;
    switch (target->devType()) {
    case QInternal::Image:
        copyToImage(static_cast<QImage*>(target), copy.to, source, copy.from);
        break;
    case QInternal::Pixmap:
        copyToPixmap(static_cast<QPixmap*>(target), copy.to, source, copy.from);
        break;
    case QInternal::Widget: {
        QPainter painter(target);
        copyToWidget(painter, static_cast<const QWidget*>(target), copy.to, source.copy(copy.from));
        break;
    }
    default:
        break;
    }
}

} // namespace

void bitBlt(QPaintDevice* dst, int dx, int dy, const QPaintDevice* src, int sx, int sy, int sw, int sh, Qt::RasterOp,
            bool)
{
    copyTo(dst, QPoint(dx, dy), imageOf(src), QRect(sx, sy, sw, sh));
}

void bitBlt(QPaintDevice* dst, int dx, int dy, const QImage* src, int sx, int sy, int sw, int sh, int)
{
    if (src)
        copyTo(dst, QPoint(dx, dy), *src, QRect(sx, sy, sw, sh));
}

void bitBlt(QImage* dst, int dx, int dy, const QImage* src, int sx, int sy, int sw, int sh, int)
{
    if (src)
        copyTo(dst, QPoint(dx, dy), *src, QRect(sx, sy, sw, sh));
}
