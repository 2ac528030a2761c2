#include "toolkit/pictureloader.h"

#include <QByteArray>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QImage picture = skinwidgets::loadPicture(bytes);
    if (qint64(picture.width()) * picture.height() > skinwidgets::largestPicturePixels)
        abort();
    return 0;
}
