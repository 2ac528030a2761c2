#ifndef SKINWIDGETS_TOOLKIT_PIXELS_H
#define SKINWIDGETS_TOOLKIT_PIXELS_H

#include "toolkit/export.h"

#include <QImage>
#include <QPixmap>

// 32-bit pictures whose alpha byte is free: straight (never premultiplied) ARGB, so the colour bytes survive any alpha.
namespace skinwidgets
{

// A pixmap of 32-bit straight pixels, all 0. A size without area gives a null pixmap.
SKINWIDGETS_EXPORT QPixmap createPixmap32(const QSize& size);

// The picture as straight 32-bit ARGB; shares the pixels when they are that already.
SKINWIDGETS_EXPORT QImage toStraight(const QImage& picture);

// The pixmap that holds the same pixels, straight and 32 bits deep.
SKINWIDGETS_EXPORT QPixmap toStraight(const QPixmap& pixmap);
// The pixmap of a picture that toStraight() made; no pixel is copied.
SKINWIDGETS_EXPORT QPixmap pixmapFromStraight(QImage straight);

// The same pixels seen without their alpha byte. The view is read-only and valid only as long as the picture lives.
SKINWIDGETS_EXPORT QImage withoutAlpha(const QImage& picture);

// Writes the byte into the alpha of every pixel and leaves the colours alone. The picture becomes straight 32-bit ARGB.
SKINWIDGETS_EXPORT void overwriteAlpha(QImage& picture, uchar alpha);
// The same for the part of the picture that lies in area.
SKINWIDGETS_EXPORT void overwriteAlpha(QImage& picture, const QRect& area, uchar alpha);

// Draws the picture at a point over the colours of the target as if the target were opaque. The target's alpha bytes
// under the picture are left undefined: the caller overwrites them. The target must be straight 32-bit ARGB.
SKINWIDGETS_EXPORT void blendColours(QImage& target, const QImage& picture, const QPoint& at);

// As blendColours, but the target's alpha becomes what the picture's alpha adds to it.
SKINWIDGETS_EXPORT void blendOver(QImage& target, const QImage& picture, const QPoint& at);

} // namespace skinwidgets

#endif
