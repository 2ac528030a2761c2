#ifndef SKINWIDGETS_TOOLKIT_OFFSCREEN_H
#define SKINWIDGETS_TOOLKIT_OFFSCREEN_H

#include "toolkit/export.h"

#include <QPixmap>
#include <QRegion>

#include <functional>

class QPainter;
class QWidget;

namespace skinwidgets
{

// What an off-screen pixmap holds before a widget draws into it. Undefined is for a widget that draws every pixel.
enum class Prepared { FromBackground, Blank, Undefined };

// Draws into a pixmap that stands for an area of the widget: its pixel (0, 0) is the area's top-left corner.
using DrawArea = std::function<void(QPixmap& target, const QRect& area)>;

// Whether the widget can be painted now: outside its paint event there is nothing to paint on.
bool isInPaintEvent(const QWidget* widget);

// The painter that is open on the widget in its paint event, null where there is none.
QPainter* openPainter(const QWidget* widget);

// Inside the widget's paint event: for each rectangle of the region, in the region's order, prepares a 32-bit pixmap of
// its size, lets draw fill it and copies it to the widget, through the painter that is open on it where there is one.
// An empty region paints nothing. Outside a paint event everything happens but the copying.
SKINWIDGETS_EXPORT void paintThroughPixmap(QWidget* widget, const QRegion& region, Prepared prepared,
                                           const DrawArea& draw);

// Blends the picture, whose place on the widget is pictureRect, over a pixmap that stands for an area of the widget,
// with the picture's own alpha. All pixels of pictureRect then get the alpha byte, 255 leaving them as they
// came out. Nothing is drawn outside pictureRect or the area.
SKINWIDGETS_EXPORT void blendIntoArea(QPixmap& target, const QRect& area, const QImage& picture,
                                      const QRect& pictureRect, uchar alpha);

// Copies straight 32-bit pixels to the screen: the colours alone in an opaque window, and with their alpha in a window
// with a translucent background, where they let through what is behind it.
SKINWIDGETS_EXPORT void copyToWidget(QPainter& painter, const QWidget* widget, const QPoint& at, const QImage& picture);

} // namespace skinwidgets

#endif
