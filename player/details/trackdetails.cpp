#include "player/details/trackdetails.h"

#include "player/displaytext.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QMediaMetaData>

#include <algorithm>

namespace
{

QString tag(const QMediaMetaData& tags, QMediaMetaData::Key key)
{
    return displaytext::oneLine(tags.stringValue(key));
}

QString firstOf(std::initializer_list<QString> values)
{
    const auto* const found = std::find_if(values.begin(), values.end(), [](const QString& s) { return !s.isEmpty(); });
    return found == values.end() ? QString() : *found;
}

QDate date(const QMediaMetaData& tags)
{
    return tags.value(QMediaMetaData::Date).toDateTime().date();
}

QString albumText(const QMediaMetaData& tags)
{
    const QString album = tag(tags, QMediaMetaData::AlbumTitle);
    const QString year = date(tags).isValid() ? QString::number(date(tags).year()) : QString();
    if (album.isEmpty() || year.isEmpty())
        return album + year;
    return album + QStringLiteral(" (") + year + QLatin1Char(')');
}

QString codecText(const QMediaMetaData& tags)
{
    // Some backends give the name itself, which stringValue() takes for the first codec that it knows.
    const QVariant value = tags.value(QMediaMetaData::AudioCodec);
    const QString codec = value.userType() == QMetaType::QString ? displaytext::oneLine(value.toString())
                                                                 : tag(tags, QMediaMetaData::AudioCodec);
    return codec == QLatin1String("Unspecified") || codec == QLatin1String("Invalid") ? QString() : codec;
}

QString bitRateText(const QMediaMetaData& tags)
{
    const int rate = tags.value(QMediaMetaData::AudioBitRate).toInt();
    return rate > 0 ? TrackDetails::tr("%1 kbit/s").arg(rate / 1000 + (rate % 1000 >= 500 ? 1 : 0)) : QString();
}

} // namespace

TrackDetails TrackDetails::of(const QString& file, const QMediaMetaData& tags, qint64 duration,
                              const QString& listedTitle)
{
    TrackDetails details;
    if (file.isEmpty())
        return details;
    const QFileInfo info(file);
    const QString name = displaytext::oneLine(info.fileName());
    details.title = firstOf({tag(tags, QMediaMetaData::Title), displaytext::oneLine(listedTitle), name});
    details.artist = firstOf({tag(tags, QMediaMetaData::ContributingArtist), tag(tags, QMediaMetaData::LeadPerformer),
                              tag(tags, QMediaMetaData::AlbumArtist), tag(tags, QMediaMetaData::Author)});
    details.album = albumText(tags);
    for (const auto key : {QMediaMetaData::CoverArtImage, QMediaMetaData::ThumbnailImage})
        if (details.cover.isNull())
            details.cover = tags.value(key).value<QImage>();

    const auto add = [&details](const QString& label, const QString& value) {
        if (!value.isEmpty())
            details.entries += {label, value};
    };
    const QString albumArtist = tag(tags, QMediaMetaData::AlbumArtist);
    add(tr("Album artist"), albumArtist == details.artist ? QString() : albumArtist);
    add(tr("Composer"), tag(tags, QMediaMetaData::Composer));
    add(tr("Track"), tag(tags, QMediaMetaData::TrackNumber));
    add(tr("Genre"), tag(tags, QMediaMetaData::Genre));
    add(tr("Comment"), firstOf({tag(tags, QMediaMetaData::Comment), tag(tags, QMediaMetaData::Description)}));
    add(tr("Publisher"), tag(tags, QMediaMetaData::Publisher));
    add(tr("Copyright"), tag(tags, QMediaMetaData::Copyright));
    add(tr("Length"), duration > 0 ? timeText(duration) : QString());
    add(tr("Codec"), codecText(tags));
    add(tr("Bit rate"), bitRateText(tags));
    add(tr("Size"), info.isFile() ? QLocale().formattedDataSize(info.size(), 1) : QString());
    add(tr("File"), name);
    add(tr("Folder"), displaytext::oneLine(QDir::toNativeSeparators(info.absolutePath())));
    return details;
}

QString TrackDetails::timeText(qint64 milliseconds)
{
    const qint64 seconds = std::max<qint64>(milliseconds, 0) / 1000;
    const auto twoDigits = [](qint64 number) { return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')); };
    const QString tail = QLatin1Char(':') + twoDigits(seconds % 60);
    if (seconds < 3600)
        return QString::number(seconds / 60) + tail;
    return QString::number(seconds / 3600) + QLatin1Char(':') + twoDigits(seconds / 60 % 60) + tail;
}
