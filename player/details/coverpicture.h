#ifndef SKINWIDGETS_PLAYER_DETAILS_COVERPICTURE_H
#define SKINWIDGETS_PLAYER_DETAILS_COVERPICTURE_H

#include <QImage>
#include <QSize>
#include <QString>

// Pictures of albums. A picture file has up to largestFile bytes and sides up to largestSide; what is larger or cannot
// be read gives a null picture.
namespace coverpicture
{

// Bytes.
constexpr qint64 largestFile = qint64(32) * 1024 * 1024;
// Pixels.
constexpr int largestSide = 16384;

// The cover, folder or front picture (.jpg, .jpeg or .png) in the directory of the sound file: the first of these that
// can be read, no larger than needed to fill the size.
QImage beside(const QString& soundFile, const QSize& size);

// As it is in the file, or scaled down so that it just fills the size.
QImage read(const QString& file, const QSize& size);

// Exactly of that size: scaled so that it just fills it, and cut to its middle. A null picture stays null.
QImage filling(const QImage& picture, const QSize& size);

} // namespace coverpicture

#endif
