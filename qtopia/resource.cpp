#include "qtopia/resource.h"

#include "qtopia/qpeapplication.h"
#include "toolkit/pictureloader.h"
#include "toolkit/skinlog.h"

#include <QFileInfo>
#include <QImageReader>

namespace
{

// The file name endings, in the order in which they are tried.
QByteArrayList pictureFormats()
{
    const QByteArray preferred("png");
    QByteArrayList formats = QImageReader::supportedImageFormats();
    formats.removeAll(preferred);
    formats.prepend(preferred);
    return formats;
}

// A name must not lead out of the picture directory.
bool isPictureName(const QString& name)
{
    if (name.isEmpty() || name.startsWith(QLatin1Char('/')) || name.endsWith(QLatin1Char('/')))
        return false;
    return !name.contains(QChar::Null) && !name.split(QLatin1Char('/')).contains(QLatin1String(".."));
}

// The picture's path up to its file name ending.
QString stemOf(const QString& name)
{
    return QPEApplication::qpeDir() + QLatin1String("pics/") + name + QLatin1Char('.');
}

} // namespace

QPixmap Resource::loadPixmap(const QString& name)
{
    return QPixmap::fromImage(loadImage(name));
}

QImage Resource::loadImage(const QString& name)
{
    const QString path = findPixmap(name);
    if (path.isEmpty()) {
        if (skinLog().isDebugEnabled())
            qCDebug(skinLog).noquote() << stemOf(name) + QLatin1Char('*') << "picture is missing";
        return {};
    }
    QString error;
    QImage picture = skinwidgets::loadPicture(path, &error);
    if (picture.isNull())
        qCDebug(skinLog).noquote() << path << error;
    return picture;
}

QString Resource::findPixmap(const QString& name)
{
    if (!isPictureName(name))
        return QString();
    const QString stem = stemOf(name);
    const QByteArrayList formats = pictureFormats();
    for (const QByteArray& format : formats) {
        const QString path = stem + QString::fromLatin1(format);
        if (QFileInfo(path).isFile())
            return path;
    }
    return QString();
}
