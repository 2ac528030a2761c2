#ifndef SKINWIDGETS_TOOLKIT_WIDGETBACKGROUND_H
#define SKINWIDGETS_TOOLKIT_WIDGETBACKGROUND_H

#include "toolkit/export.h"

#include <QPixmap>

class QImage;
class QRegion;
class QWidget;

// What a widget is erased with before it paints. The picture belongs to the widget itself and never spreads to
// children.
class SKINWIDGETS_EXPORT WidgetBackground
{
public:
    // What the widget is erased with: a colour, the background picture, nothing, or what its palette says.
    enum BackgroundMode { FixedColor, FixedPixmap, NoBackground, PaletteBackground };
    // Where the top-left corner of the background picture lies. With AncestorOrigin it is where the parent's lies.
    enum BackgroundOrigin { WidgetOrigin, ParentOrigin, WindowOrigin, AncestorOrigin };

    virtual ~WidgetBackground();

    // The background picture as straight 32-bit pixels, null where none is set. Owned by the widget.
    const QPixmap* backgroundPixmap() const { return m_pixmap.isNull() ? nullptr : &m_pixmap; }
    // PaletteBackground and WidgetOrigin at start.
    BackgroundMode backgroundMode() const { return m_mode; }
    BackgroundOrigin backgroundOrigin() const { return m_origin; }

protected:
    WidgetBackground() = default;
    Q_DISABLE_COPY(WidgetBackground)

    // What the operations of the same names return; a null pixmap is no picture.
    QPixmap m_pixmap;
    BackgroundMode m_mode = PaletteBackground;
    BackgroundOrigin m_origin = WidgetOrigin;
};

namespace skinwidgets
{

// The background of a widget of this toolkit, null for any other widget.
SKINWIDGETS_EXPORT const WidgetBackground* backgroundOf(const QWidget* widget);

// Where the widget's top-left corner lies in the coordinates of its background picture, before tiling.
SKINWIDGETS_EXPORT QPoint backgroundOffset(const QWidget* widget);

// Fills the target with what the widget's background shows from offset (in widget coordinates) on: the background
// picture, tiled from its origin, or the palette's window colour, opaque, where there is none. The image must be
// straight 32-bit ARGB.
SKINWIDGETS_EXPORT void fillFromBackground(QImage& target, const QWidget* widget, const QPoint& offset);
SKINWIDGETS_EXPORT void fillFromBackground(QPixmap& target, const QWidget* widget, int x, int y);

// Inside a paint event: draws the background over the region.
SKINWIDGETS_EXPORT void eraseWithBackground(QWidget* widget, const QRegion& region);

} // namespace skinwidgets

#endif
