#include "toolkit/pictureloader.h"

#include "toolkit/pngcheck.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QThread>

namespace skinwidgets
{

namespace
{

// Picture decoders print what they think of a damaged file. A skin's faults are told in one place, so those lines are
// kept from the output; what other threads print meanwhile passes.
class DecoderSilence
{
public:
    DecoderSilence()
    {
        silencedThread = QThread::currentThread();
        handler = qInstallMessageHandler(filter);
    }
    ~DecoderSilence()
    {
        qInstallMessageHandler(handler);
        silencedThread = nullptr;
    }
    Q_DISABLE_COPY(DecoderSilence)

private:
    static void filter(QtMsgType type, const QMessageLogContext& context, const QString& message)
    {
        const bool decoders = QThread::currentThread() == silencedThread && type != QtFatalMsg;
        if (decoders)
            return;
        if (handler)
            handler(type, context, message);
    }

    static inline QThread* silencedThread = nullptr;
    static inline QtMessageHandler handler = nullptr;
};

QImage refuse(QString* error, const QString& reason)
{
    if (error)
        *error = reason;
    return {};
}

bool isWithinLimits(const QSize& size)
{
    return size.width() <= largestPictureSide && size.height() <= largestPictureSide &&
           qint64(size.width()) * size.height() <= largestPicturePixels;
}

QImage as32Bits(QImage picture)
{
    const bool alpha = picture.hasAlphaChannel();
    picture.convertTo(alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    picture.setDevicePixelRatio(1);
    return picture;
}

QImage decode(QIODevice* device, QString* error)
{
    const DecoderSilence silence;
    QImageReader reader(device);
    // The contents decide what the format is; a wrong file name ending is no fault.
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(false);
    const QSize size = reader.size();
    if (!isWithinLimits(size))
        return refuse(error, QStringLiteral("picture is too large"));
    QImage picture;
    if (!reader.read(&picture))
        return refuse(error, reader.errorString());
    if (!isWithinLimits(picture.size()))
        return refuse(error, QStringLiteral("picture is too large"));
    return as32Bits(std::move(picture));
}

} // namespace

QImage loadPicture(const QString& path, QString* error)
{
    if (path.contains(QChar::Null))
        return refuse(error, QStringLiteral("no file name"));
    const QFileInfo info(path);
    if (!info.exists())
        return refuse(error, QStringLiteral("file is missing"));
    // Anything else could block or never end.
    if (!info.isFile())
        return refuse(error, QStringLiteral("not a regular file"));
    if (info.size() > largestPictureFile)
        return refuse(error, QStringLiteral("file is too large"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refuse(error, file.errorString());
    // As much as there is: a buffer of the largest size would be allocated for every small picture.
    return loadPicture(file.read(info.size()), error);
}

QImage loadPicture(const QByteArray& data, QString* error)
{
    if (isPng(data) && !isWholePng(data))
        return refuse(error, QStringLiteral("picture is damaged"));
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    return decode(&buffer, error);
}

} // namespace skinwidgets
