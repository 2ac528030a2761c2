#ifndef SKINWIDGETS_SCROLL_SCROLLBARPICTURES_H
#define SKINWIDGETS_SCROLL_SCROLLBARPICTURES_H

#include "toolkit/export.h"

#include <QImage>

namespace skinwidgets
{

// What a trough or a thumb is put together from: a cap at either end and a piece that is repeated between them.
struct BarPieces {
    QImage top;
    QImage centre;
    QImage bottom;
};

// A trough of this height, as wide as its centre piece. The bottom cap ends flush with it. Null without a centre piece.
// The height must not be less than the top cap's.
SKINWIDGETS_EXPORT QImage composeTrough(const BarPieces& pieces, int height);

// Puts a thumb as high as the picture into it; both caps count as high as capHeight. Rows below the bottom cap stay as
// they are.
SKINWIDGETS_EXPORT void composeThumb(QImage& thumb, const BarPieces& pieces, int capHeight);

} // namespace skinwidgets

#endif
