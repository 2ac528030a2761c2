#ifndef SKINWIDGETS_QTOPIA_RESOURCE_H
#define SKINWIDGETS_QTOPIA_RESOURCE_H

#include "toolkit/export.h"

#include <QImage>
#include <QPixmap>
#include <QString>

/*
 * Finds pictures by name in pics/ under QPEApplication::qpeDir().
 *
 * A name is a path relative to pics/ without the file name ending, "player/play" for pics/player/play.png. An empty
 * name, an absolute one, one with a part ".." and one that ends in a slash find nothing. Of several files of that name
 * with endings of picture formats that Qt reads, png counts first, then the order of
 * QImageReader::supportedImageFormats(). Only regular files count.
 *
 * Nothing is cached: what changes on disk shows at the next call. A picture that is missing or cannot be read is told
 * of in the logging category skinwidgets.skin, which is off by default.
 */
class SKINWIDGETS_EXPORT Resource
{
public:
    // The picture; null where none is found, or where the one found is damaged or larger than
    // skinwidgets::loadPicture() takes. loadPixmap() needs an application object.
    static QPixmap loadPixmap(const QString& name);
    static QImage loadImage(const QString& name);

    // The path of the picture's file, null where there is none. The file need not be readable.
    static QString findPixmap(const QString& name);
};

#endif
