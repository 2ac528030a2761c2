#ifndef SKINWIDGETS_TOOLKIT_PICTURELOADER_H
#define SKINWIDGETS_TOOLKIT_PICTURELOADER_H

#include "toolkit/export.h"

#include <QImage>
#include <QString>

namespace skinwidgets
{

// Pictures beyond these limits are not loaded. They lie far above what any screen of a small device shows, and keep the
// memory that one hostile file can ask for below 64 MiB.
constexpr int largestPictureSide = 16384;
constexpr qint64 largestPicturePixels = qint64(16) * 1024 * 1024;
constexpr qint64 largestPictureFile = qint64(64) * 1024 * 1024;

// Loads a picture file of any format that Qt reads, as 32-bit pixels: straight ARGB where the file has alpha, RGB
// otherwise. Anything but a regular file within the limits that decodes whole gives a null picture. Nothing is printed;
// why a picture was refused is told through error, where one is given.
SKINWIDGETS_EXPORT QImage loadPicture(const QString& path, QString* error = nullptr);

// The same for a picture held in memory.
SKINWIDGETS_EXPORT QImage loadPicture(const QByteArray& data, QString* error = nullptr);

} // namespace skinwidgets

#endif
