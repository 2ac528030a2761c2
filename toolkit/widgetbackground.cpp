#include "toolkit/widgetbackground.h"

#include "toolkit/offscreen.h"
#include "toolkit/pixels.h"

#include <QImage>
#include <QWidget>

#include <algorithm>
#include <cstring>
#include <utility>

WidgetBackground::~WidgetBackground() = default;

namespace skinwidgets
{

namespace
{

int positiveModulo(qint64 value, int modulus)
{
    const auto rest = static_cast<int>(value % modulus);
    return rest < 0 ? rest + modulus : rest;
}

void fillLineTiled(QRgb* line, int width, const QRgb* tile, int tileWidth, int phase)
{
    for (int x = 0; x < width;) {
        const int run = std::min(width - x, tileWidth - phase);
        std::memcpy(line + x, tile + phase, sizeof(QRgb) * static_cast<size_t>(run));
        x += run;
        phase = 0;
    }
}

void fillTiled(QImage& target, const QImage& tile, const QPoint& offset, const QPoint& origin)
{
    const int phaseX = positiveModulo(qint64(offset.x()) + origin.x(), tile.width());
    int tileY = positiveModulo(qint64(offset.y()) + origin.y(), tile.height());
    const qsizetype stride = target.bytesPerLine() / qsizetype(sizeof(QRgb));
    const qsizetype tileStride = tile.bytesPerLine() / qsizetype(sizeof(QRgb));
    auto* out = reinterpret_cast<QRgb*>(target.bits());
    const auto* in = reinterpret_cast<const QRgb*>(tile.constBits());
    if (phaseX == 0 && tileStride == stride && target.width() == tile.width() &&
        tileY + target.height() <= tile.height()) {
        // The common case of a whole repaint: the lines lie in both as they are needed.
        std::memcpy(out, in + tileY * tileStride, static_cast<size_t>(target.sizeInBytes()));
        return;
    }
    for (int y = 0; y < target.height(); ++y, out += stride) {
        fillLineTiled(out, target.width(), in + tileY * tileStride, tile.width(), phaseX);
        tileY = tileY + 1 == tile.height() ? 0 : tileY + 1;
    }
}

} // namespace

const WidgetBackground* backgroundOf(const QWidget* widget)
{
    return dynamic_cast<const WidgetBackground*>(widget);
}

QPoint backgroundOffset(const QWidget* widget)
{
    const WidgetBackground* background = backgroundOf(widget);
    if (!background || widget->isWindow())
        return {};
    switch (background->backgroundOrigin()) {
    case WidgetBackground::ParentOrigin:
        return widget->pos();
    case WidgetBackground::WindowOrigin:
        return widget->mapTo(widget->window(), QPoint());
    case WidgetBackground::AncestorOrigin:
        return widget->pos() + backgroundOffset(widget->parentWidget());
    case WidgetBackground::WidgetOrigin:
        break;
    }
    return {};
}

void fillFromBackground(QImage& target, const QWidget* widget, const QPoint& offset)
{
    Q_ASSERT(target.isNull() || target.format() == QImage::Format_ARGB32);
    const WidgetBackground* background = backgroundOf(widget);
    if (background && background->backgroundPixmap())
        fillTiled(target, background->backgroundPixmap()->toImage(), offset, backgroundOffset(widget));
    else
        target.fill(widget->palette().color(widget->backgroundRole()).rgb());
}

void fillFromBackground(QPixmap& target, const QWidget* widget, int x, int y)
{
    if (target.isNull() || !widget)
        return;
    QImage image(target.size(), QImage::Format_ARGB32);
    fillFromBackground(image, widget, QPoint(x, y));
    target = pixmapFromStraight(std::move(image));
}

void eraseWithBackground(QWidget* widget, const QRegion& region)
{
    paintThroughPixmap(widget, region, Prepared::FromBackground, [](QPixmap&, const QRect&) {});
}

} // namespace skinwidgets
