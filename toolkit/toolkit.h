#ifndef SKINWIDGETS_TOOLKIT_TOOLKIT_H
#define SKINWIDGETS_TOOLKIT_TOOLKIT_H

#include "toolkit/export.h"

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QtCore/qnamespace.h>

class QImage;
class QPaintDevice;

// Numbers of the old interface; they are translated into what they mean, never cast to today's window flags.
using WFlags = unsigned int;

namespace Qt
{

// Widget flags of the old interface, with their old numbers.
enum WidgetFlags : unsigned int {
    WType_TopLevel = 0x00000001,
    WType_Modal = 0x00000002,
    WType_Popup = 0x00000004,
    WType_Desktop = 0x00000008,
    WType_Mask = 0x0000000f,

    WStyle_Customize = 0x00000010,
    WStyle_NormalBorder = 0x00000020,
    WStyle_DialogBorder = 0x00000040,
    WStyle_NoBorder = 0x00000000,
    WStyle_Title = 0x00000080,
    WStyle_SysMenu = 0x00000100,
    WStyle_Minimize = 0x00000200,
    WStyle_Maximize = 0x00000400,
    WStyle_MinMax = WStyle_Minimize | WStyle_Maximize,
    WStyle_Tool = 0x00000800,
    WStyle_StaysOnTop = 0x00001000,
    WStyle_Dialog = 0x00002000,
    WStyle_ContextHelp = 0x00004000,
    WStyle_NoBorderEx = 0x00008000,
    WStyle_Mask = 0x0000fff0,

    WDestructiveClose = 0x00010000,
    WPaintDesktop = 0x00020000,
    WPaintUnclipped = 0x00040000,
    WPaintClever = 0x00080000,
    WResizeNoErase = 0x00100000,
    WMouseNoMask = 0x00200000,
    WNorthWestGravity = 0x00400000,
    WRepaintNoErase = 0x00800000,
    WX11BypassWM = 0x01000000,
    WGroupLeader = 0x02000000
};

// The one raster operation that the library uses: source pixels replace target pixels, alpha byte included.
enum RasterOp { CopyROP };

using AlignmentFlags = Alignment;

inline constexpr Key Key_Prior = Key_PageUp;
inline constexpr Key Key_Next = Key_PageDown;

} // namespace Qt

// The smallest size, in pixels, that an interactive part of a widget may have; 0 x 0 at start. Negative sides count as
// 0.
SKINWIDGETS_EXPORT QSize globalStrut();
SKINWIDGETS_EXPORT void setGlobalStrut(const QSize& strut);

// Whether vertical scroll bars stand at the left of their views; false at start. Read at each layout of a view.
SKINWIDGETS_EXPORT extern bool qt_left_hand_scrollbars;

// Brings everything to the display before it returns, also what is only scheduled to be painted. No other event is
// delivered.
SKINWIDGETS_EXPORT void syncX();

/*
 * Copies the pixels of a rectangle of src (a QPixmap or QImage) into dst (a QPixmap or QImage, or a QWidget inside its
 * paint event) at (dx, dy). Nothing is blended: the alpha byte is copied along, 0 included, and the colours never
 * depend on it. A target with premultiplied pixels becomes one with straight 32-bit pixels; one without alpha keeps the
 * colours only. sw and sh may be negative: the rest of the source. What lies outside src or dst is left out; a null
 * device does nothing, nor does a widget outside its paint event. A painter that is open on the target may stay so; its
 * transformation plays no part, and on a widget neither do its clip, opacity and mode.
 */
SKINWIDGETS_EXPORT void bitBlt(QPaintDevice* dst, int dx, int dy, const QPaintDevice* src, int sx = 0, int sy = 0,
                               int sw = -1, int sh = -1, Qt::RasterOp rop = Qt::CopyROP, bool ignoreMask = false);
SKINWIDGETS_EXPORT void bitBlt(QPaintDevice* dst, int dx, int dy, const QImage* src, int sx = 0, int sy = 0,
                               int sw = -1, int sh = -1, int conversionFlags = 0);
SKINWIDGETS_EXPORT void bitBlt(QImage* dst, int dx, int dy, const QImage* src, int sx = 0, int sy = 0, int sw = -1,
                               int sh = -1, int conversionFlags = 0);
inline void bitBlt(QPaintDevice* dst, const QPoint& to, const QPaintDevice* src,
                   const QRect& from = QRect(0, 0, -1, -1), Qt::RasterOp rop = Qt::CopyROP, bool ignoreMask = false)
{
    bitBlt(dst, to.x(), to.y(), src, from.x(), from.y(), from.width(), from.height(), rop, ignoreMask);
}

#endif
