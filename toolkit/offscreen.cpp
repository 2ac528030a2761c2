#include "toolkit/offscreen.h"

#include "toolkit/pixels.h"
#include "toolkit/toolkit.h"
#include "toolkit/widgetbackground.h"

#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

#include <utility>

namespace skinwidgets
{

namespace
{

// Repaints mostly come in the size of the last one, so its memory is kept; larger pictures than this are let go.
constexpr qsizetype largestKeptPicture = qsizetype(8) * 1024 * 1024;

QImage& keptPicture()
{
    static QImage picture;
    return picture;
}

QImage takePicture(const QSize& size)
{
    QImage picture = std::exchange(keptPicture(), QImage());
    if (picture.size() != size || picture.format() != QImage::Format_ARGB32)
        picture = QImage(size, QImage::Format_ARGB32);
    return picture;
}

void keepPicture(QImage picture)
{
    if (picture.sizeInBytes() <= largestKeptPicture)
        keptPicture() = std::move(picture);
}

// A widget paints into another device during its paint event; only the widget knows which.
struct PaintTarget : QPaintDevice {
    using QPaintDevice::redirected;
    using QPaintDevice::sharedPainter;
};

const QPaintEngine* engineInUse(const QWidget* widget)
{
    // A rendering through a painter has all widgets share it.
    if (const QPainter* shared = (widget->*&PaintTarget::sharedPainter)())
        return shared->paintEngine();
    QPoint offset;
    const QPaintDevice* device = (widget->*&PaintTarget::redirected)(&offset);
    return device && device->paintingActive() ? device->paintEngine() : nullptr;
}

bool deviceHasAlpha(const QPainter& painter)
{
    const QPaintDevice* device = painter.paintEngine()->paintDevice();
    if (device->devType() == QInternal::Image)
        return static_cast<const QImage*>(device)->hasAlphaChannel();
    return device->devType() != QInternal::Pixmap || static_cast<const QPixmap*>(device)->hasAlphaChannel();
}

} // namespace

bool isInPaintEvent(const QWidget* widget)
{
    return widget->testAttribute(Qt::WA_WState_InPaintEvent);
}

QPainter* openPainter(const QWidget* widget)
{
    const QPaintEngine* engine = engineInUse(widget);
    QPainter* painter = engine ? engine->painter() : nullptr;
    return painter && painter->device() == widget ? painter : nullptr;
}

void blendIntoArea(QPixmap& target, const QRect& area, const QImage& picture, const QRect& pictureRect, uchar alpha)
{
    if (area.isEmpty() || pictureRect.isEmpty() || !area.intersects(pictureRect))
        return;
    QImage pixels = toStraight(target.toImage());
    const bool inPlace = !target.paintingActive();
    // Let go of the pixels, so that they are written in place.
    if (inPlace)
        target = QPixmap();
    const QSize fitting = picture.size().boundedTo(pictureRect.size());
    blendOver(pixels, picture.size() == fitting ? picture : picture.copy(QRect(QPoint(), fitting)),
              pictureRect.topLeft() - area.topLeft());
    if (alpha < 255)
        overwriteAlpha(pixels, (area & pictureRect).translated(-area.topLeft()), alpha);
    if (inPlace)
        target = pixmapFromStraight(std::move(pixels));
    else
        bitBlt(&target, 0, 0, &pixels);
}

void copyToWidget(QPainter& painter, const QWidget* widget, const QPoint& at, const QImage& picture)
{
    if (widget->window()->testAttribute(Qt::WA_TranslucentBackground)) {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(at, picture);
        return;
    }
    if (deviceHasAlpha(painter)) {
        // A target that keeps alpha would take the free alpha byte for its own.
        painter.drawImage(at, withoutAlpha(picture).convertToFormat(QImage::Format_ARGB32));
        return;
    }
    painter.drawImage(at, withoutAlpha(picture));
}

void paintThroughPixmap(QWidget* widget, const QRegion& region, Prepared prepared, const DrawArea& draw)
{
    if (region.isEmpty())
        return;
    QPainter painter;
    if (isInPaintEvent(widget) && !openPainter(widget))
        painter.begin(widget);
    for (const QRect& area : region) {
        QImage picture = takePicture(area.size());
        if (prepared == Prepared::FromBackground)
            fillFromBackground(picture, widget, area.topLeft());
        else if (prepared == Prepared::Blank)
            picture.fill(0);
        QPixmap pixmap = pixmapFromStraight(std::move(picture));
        draw(pixmap, area);
        QImage drawn = pixmap.toImage();
        pixmap = QPixmap();
        if (painter.isActive())
            copyToWidget(painter, widget, area.topLeft(), toStraight(drawn));
        else
            bitBlt(widget, area.topLeft(), &drawn);
        keepPicture(std::move(drawn));
    }
}

} // namespace skinwidgets
