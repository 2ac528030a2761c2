#ifndef SKINWIDGETS_SCROLL_SCROLLBARPICTURES_H
#define SKINWIDGETS_SCROLL_SCROLLBARPICTURES_H

#include "toolkit/export.h"

#include <QImage>

#include <utility>

namespace skinwidgets
{

// What a trough or a thumb is put together from: a cap at either end and a piece that is repeated between them.
struct BarPieces {
    // Null: that end has no cap.
    QImage top;
    // Fixes the breadth; null: there is nothing to compose.
    QImage centre;
    // Null: that end has no cap.
    QImage bottom;
};

// A trough of this height, as wide as its centre piece. The bottom cap ends flush with it. Null without a centre piece.
// The height must not be less than the top cap's.
SKINWIDGETS_EXPORT QImage composeTrough(const BarPieces& pieces, int height);

// A thumb of this length, as wide as its normal centre piece: as it looks while idle and while it is dragged. Rows
// below the bottom cap stay transparent. Null without a centre piece or a length.
SKINWIDGETS_EXPORT std::pair<QImage, QImage> composeThumbs(const BarPieces& normal, const BarPieces& focus, int length);

} // namespace skinwidgets

#endif
