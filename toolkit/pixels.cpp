#include "toolkit/pixels.h"

#include <QPainter>

#include <utility>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace skinwidgets
{

namespace
{

constexpr QRgb colourBits = 0x00ffffff;

constexpr QRgb asItIs(QRgb pixel)
{
    return pixel;
}

// Every byte of the pixel times factor / 255, rounded as the toolkit's own painter does it.
QRgb scaledBytes(QRgb pixel, uint factor)
{
    constexpr quint64 bytes = 0x00ff00ff00ff00ff;
    quint64 spread = (pixel | quint64(pixel) << 24) & bytes;
    spread *= factor;
    spread = ((spread + ((spread >> 8) & bytes) + 0x0080008000800080) >> 8) & bytes;
    return static_cast<QRgb>(spread) | static_cast<QRgb>(spread >> 24);
}

// One pass without a painter: small pictures are blended at every repaint. The colours are those of the painter on an
// opaque target, to the bit, and the alpha byte goes through the same sum.
template <QRgb (*premultiplied)(QRgb)>
void blendPixels(QRgb* to, const QRgb* from, int count)
{
    for (int x = 0; x < count; ++x) {
        const uint alpha = from[x] >> 24;
        if (alpha == 255)
            to[x] = from[x];
        else if (alpha > 0)
            to[x] = premultiplied(from[x]) + scaledBytes(to[x], 255 - alpha);
    }
}

#ifdef __SSE2__

__m128i scaledLanes(__m128i lanes, __m128i factors)
{
    const __m128i product = _mm_mullo_epi16(lanes, factors);
    const __m128i rounded = _mm_add_epi16(_mm_add_epi16(product, _mm_srli_epi16(product, 8)), _mm_set1_epi16(0x80));
    return _mm_srli_epi16(rounded, 8);
}

// Two straight pixels over two others, 16 bits a channel.
__m128i blendLanes(__m128i from, __m128i to)
{
    const __m128i alphas = _mm_shufflehi_epi16(_mm_shufflelo_epi16(from, 0xff), 0xff);
    // The alpha channel itself counts whole: alpha times 255 / 255.
    const __m128i colours = _mm_or_si128(from, _mm_set_epi16(255, 0, 0, 0, 255, 0, 0, 0));
    return _mm_add_epi16(scaledLanes(colours, alphas), scaledLanes(to, _mm_sub_epi16(_mm_set1_epi16(255), alphas)));
}

bool areAll(__m128i lanes, int value)
{
    return _mm_movemask_epi8(_mm_cmpeq_epi32(lanes, _mm_set1_epi32(value))) == 0xffff;
}

// The same sums as blendPixels(), four pixels at a time.
void blendStraight(QRgb* to, const QRgb* from, int count)
{
    const __m128i zero = _mm_setzero_si128();
    int x = 0;
    for (; x + 4 <= count; x += 4) {
        auto* const target = reinterpret_cast<__m128i*>(to + x);
        const __m128i source = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + x));
        const __m128i alphas = _mm_srli_epi32(source, 24);
        if (areAll(alphas, 0))
            continue;
        if (areAll(alphas, 255)) {
            _mm_storeu_si128(target, source);
            continue;
        }
        const __m128i old = _mm_loadu_si128(target);
        const __m128i low = blendLanes(_mm_unpacklo_epi8(source, zero), _mm_unpacklo_epi8(old, zero));
        const __m128i high = blendLanes(_mm_unpackhi_epi8(source, zero), _mm_unpackhi_epi8(old, zero));
        _mm_storeu_si128(target, _mm_packus_epi16(low, high));
    }
    blendPixels<qPremultiply>(to + x, from + x, count - x);
}

#else

void blendStraight(QRgb* to, const QRgb* from, int count)
{
    blendPixels<qPremultiply>(to, from, count);
}

#endif

} // namespace

QPixmap createPixmap32(const QSize& size)
{
    if (size.isEmpty())
        return {};
    QImage image(size, QImage::Format_ARGB32);
    image.fill(0);
    return pixmapFromStraight(std::move(image));
}

QImage toStraight(const QImage& picture)
{
    return picture.convertToFormat(QImage::Format_ARGB32);
}

QPixmap toStraight(const QPixmap& pixmap)
{
    const QImage image = pixmap.toImage();
    if (image.isNull() || image.format() == QImage::Format_ARGB32)
        return pixmap;
    return pixmapFromStraight(toStraight(image));
}

QPixmap pixmapFromStraight(QImage straight)
{
    // Any other conversion would choose premultiplied pixels and lose the colours of transparent ones.
    return QPixmap::fromImage(std::move(straight), Qt::NoFormatConversion);
}

QImage withoutAlpha(const QImage& picture)
{
    if (picture.format() != QImage::Format_ARGB32)
        return picture.convertToFormat(QImage::Format_RGB32);
    return {picture.constBits(), picture.width(), picture.height(), picture.bytesPerLine(), QImage::Format_RGB32};
}

void overwriteAlpha(QImage& picture, uchar alpha)
{
    overwriteAlpha(picture, picture.rect(), alpha);
}

void overwriteAlpha(QImage& picture, const QRect& area, uchar alpha)
{
    if (picture.format() != QImage::Format_ARGB32)
        picture = toStraight(picture);
    const QRgb alphaBits = static_cast<QRgb>(alpha) << 24;
    const QRect inside = area & picture.rect();
    if (inside.isEmpty())
        return;
    // Asking the picture for each line costs as much as writing a narrow one.
    uchar* place = picture.bits() + inside.top() * picture.bytesPerLine() + inside.left() * qsizetype(sizeof(QRgb));
    for (int y = 0; y < inside.height(); ++y, place += picture.bytesPerLine()) {
        auto* line = reinterpret_cast<QRgb*>(place);
        for (int x = 0; x < inside.width(); ++x)
            line[x] = (line[x] & colourBits) | alphaBits;
    }
}

void blendColours(QImage& target, const QImage& picture, const QPoint& at)
{
    if (target.isNull() || picture.isNull())
        return;
    Q_ASSERT(target.format() == QImage::Format_ARGB32);
    QImage opaque(target.bits(), target.width(), target.height(), target.bytesPerLine(), QImage::Format_RGB32);
    QPainter(&opaque).drawImage(at, picture);
}

void blendOver(QImage& target, const QImage& picture, const QPoint& at)
{
    const QRect area = QRect(at, picture.size()) & target.rect();
    if (area.isEmpty())
        return;
    Q_ASSERT(target.format() == QImage::Format_ARGB32);
    const bool straight = picture.format() == QImage::Format_ARGB32;
    const QImage source = straight ? picture : picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const auto blend = straight ? blendStraight : blendPixels<asItIs>;
    // Not line by line through the picture: asking it for each line costs as much as blending a narrow one.
    uchar* to = target.bits() + area.top() * target.bytesPerLine() + area.left() * qsizetype(sizeof(QRgb));
    const uchar* from = source.constBits() + (area.top() - at.y()) * source.bytesPerLine() +
                        (area.left() - at.x()) * qsizetype(sizeof(QRgb));
    for (int y = 0; y < area.height(); ++y) {
        blend(reinterpret_cast<QRgb*>(to), reinterpret_cast<const QRgb*>(from), area.width());
        to += target.bytesPerLine();
        from += source.bytesPerLine();
    }
}

} // namespace skinwidgets
