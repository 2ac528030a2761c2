#include "scroll/scrollbarpictures.h"

#include "toolkit/toolkit.h"

namespace skinwidgets
{

namespace
{

// Copies the piece below itself from y on until the end is reached, and tells where it stopped.
int tile(QImage& target, const QImage& piece, int y, int end)
{
    if (piece.height() <= 0)
        return y;
    for (; y < end; y += piece.height())
        bitBlt(&target, 0, y, &piece);
    return y;
}

void composeThumb(QImage& thumb, const BarPieces& pieces, int capHeight)
{
    bitBlt(&thumb, 0, 0, &pieces.top);
    // Intended: the centre ends two caps above the end, so that rows below the bottom cap may stay empty.
    const int bottomTop = tile(thumb, pieces.centre, capHeight, thumb.height() - 2 * capHeight);
    bitBlt(&thumb, 0, bottomTop, &pieces.bottom);
}

} // namespace

QImage composeTrough(const BarPieces& pieces, int height)
{
    if (pieces.centre.isNull())
        return {};
    QImage trough(pieces.centre.width(), height, QImage::Format_ARGB32);
    trough.fill(0);
    // Intended: both caps count as high as the top one.
    const int bottomTop = height - pieces.top.height();
    bitBlt(&trough, 0, 0, &pieces.top);
    // The last piece may reach below that line; the cap covers it.
    tile(trough, pieces.centre, pieces.top.height(), bottomTop);
    bitBlt(&trough, 0, bottomTop, &pieces.bottom);
    return trough;
}

std::pair<QImage, QImage> composeThumbs(const BarPieces& normal, const BarPieces& focus, int length)
{
    QImage idle(normal.centre.width(), length, QImage::Format_ARGB32);
    idle.fill(0);
    // Intended: the normal caps' height counts for both, and the dragged thumb is put over the idle one.
    const int capHeight = normal.top.height();
    composeThumb(idle, normal, capHeight);
    QImage dragged = idle;
    composeThumb(dragged, focus, capHeight);
    return {idle, dragged};
}

} // namespace skinwidgets
