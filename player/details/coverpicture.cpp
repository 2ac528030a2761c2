#include "player/details/coverpicture.h"

#include <QFileInfo>
#include <QImageReader>

namespace
{

// Players on other systems write the name with a capital letter.
constexpr const char* names[] = {"cover", "Cover", "folder", "Folder", "front", "Front"};
constexpr const char* endings[] = {".jpg", ".jpeg", ".png", ".JPG", ".PNG"};

bool isTooLarge(const QSize& size)
{
    return size.width() > coverpicture::largestSide || size.height() > coverpicture::largestSide;
}

// A picture a thousand times as wide as high would be scaled to a line of that ratio.
QSize scaledSize(const QSize& size, const QSize& place)
{
    return size.scaled(place, Qt::KeepAspectRatioByExpanding)
        .boundedTo(QSize(coverpicture::largestSide, coverpicture::largestSide));
}

} // namespace

QImage coverpicture::beside(const QString& soundFile, const QSize& size)
{
    const QString folder = QFileInfo(soundFile).path() + QLatin1Char('/');
    for (const char* name : names) {
        for (const char* ending : endings) {
            const QString file = folder + QLatin1String(name) + QLatin1String(ending);
            if (!QFileInfo(file).isFile())
                continue;
            const QImage picture = read(file, size);
            if (!picture.isNull())
                return picture;
        }
    }
    return {};
}

QImage coverpicture::read(const QString& file, const QSize& size)
{
    if (!QFileInfo(file).isFile() || QFileInfo(file).size() > largestFile)
        return {};
    QImageReader reader(file);
    // The ending of a downloaded picture often lies.
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize original = reader.size();
    if (original.isEmpty() || isTooLarge(original))
        return {};
    const QSize scaled = scaledSize(original, size);
    // Some formats then decode no more than is needed.
    if (scaled.width() < original.width() && scaled.height() < original.height())
        reader.setScaledSize(scaled);
    return reader.read();
}

QImage coverpicture::filling(const QImage& picture, const QSize& size)
{
    if (picture.isNull() || size.isEmpty() || isTooLarge(picture.size()))
        return {};
    const QSize scaled = scaledSize(picture.size(), size).expandedTo(size);
    const QImage whole = picture.scaled(scaled, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return whole.copy(QRect(QPoint((scaled.width() - size.width()) / 2, (scaled.height() - size.height()) / 2), size));
}
