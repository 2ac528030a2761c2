#include "player/details/trackdetails.h"
#include "player/displaytext.h"

#include <QDateTime>
#include <QFile>
#include <QMediaFormat>
#include <QMediaMetaData>
#include <QTemporaryDir>
#include <QTest>

/* What the tags of a file become as texts. */
class TestTrackDetails : public QObject
{
    Q_OBJECT

private slots:
    void namesAFileWithoutTags();
    void saysNothingOfNoFile();
    void takesTheArtistFromTheFirstTagThatIsThere_data();
    void takesTheArtistFromTheFirstTagThatIsThere();
    void addsTheYearToTheAlbum_data();
    void addsTheYearToTheAlbum();
    void namesTheCodec_data();
    void namesTheCodec();
    void writesBitRates_data();
    void writesBitRates();
    void boundsTags();
    void showsNoControlCharacters();
    void titleOfThePlaylistStandsInForTheTag();
    void takesTheCover();
    void writesTimes_data();
    void writesTimes();

private:
    static QString value(const TrackDetails& details, const QString& label)
    {
        for (const TrackDetails::Entry& entry : details.entries)
            if (entry.label == label)
                return entry.value;
        return {};
    }
    static TrackDetails detailsOf(const QMediaMetaData& tags)
    {
        return TrackDetails::of(QStringLiteral("/music/song.ogg"), tags, 0);
    }
};

void TestTrackDetails::namesAFileWithoutTags()
{
    QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("song.ogg")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(QByteArray(2048, 'x')), 2048);
    file.close();
    const TrackDetails details = TrackDetails::of(file.fileName(), {}, 61000);
    QCOMPARE(details.title, QStringLiteral("song.ogg"));
    QCOMPARE(details.artist, QString());
    QCOMPARE(details.album, QString());
    QVERIFY(details.cover.isNull());
    QStringList labels;
    for (const TrackDetails::Entry& entry : details.entries)
        labels << entry.label;
    QCOMPARE(labels, (QStringList{"Length", "Size", "File", "Folder"}));
    QCOMPARE(value(details, QStringLiteral("Length")), QStringLiteral("1:01"));
    QCOMPARE(value(details, QStringLiteral("Size")), QLocale().formattedDataSize(2048, 1));
    QCOMPARE(value(details, QStringLiteral("File")), QStringLiteral("song.ogg"));
    QCOMPARE(value(details, QStringLiteral("Folder")), directory.path());
}

void TestTrackDetails::saysNothingOfNoFile()
{
    QMediaMetaData tags;
    tags.insert(QMediaMetaData::Title, QStringLiteral("left over"));
    const TrackDetails details = TrackDetails::of(QString(), tags, 5000);
    QCOMPARE(details.title, QString());
    QCOMPARE(details.entries.size(), 0);
}

void TestTrackDetails::takesTheArtistFromTheFirstTagThatIsThere_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("artist") << int(QMediaMetaData::ContributingArtist);
    QTest::newRow("performer") << int(QMediaMetaData::LeadPerformer);
    QTest::newRow("of the album") << int(QMediaMetaData::AlbumArtist);
    QTest::newRow("author") << int(QMediaMetaData::Author);
}

void TestTrackDetails::takesTheArtistFromTheFirstTagThatIsThere()
{
    QFETCH(int, key);
    QMediaMetaData tags;
    tags.insert(static_cast<QMediaMetaData::Key>(key), QStringList{QStringLiteral("Somebody")});
    const TrackDetails details = detailsOf(tags);
    QCOMPARE(details.artist, QStringLiteral("Somebody"));
    // Not told twice.
    QCOMPARE(value(details, QStringLiteral("Album artist")), QString());
    tags.insert(QMediaMetaData::ContributingArtist, QStringLiteral("Soloist"));
    QCOMPARE(detailsOf(tags).artist, QStringLiteral("Soloist"));
}

void TestTrackDetails::addsTheYearToTheAlbum_data()
{
    QTest::addColumn<QString>("album");
    QTest::addColumn<QDateTime>("date");
    QTest::addColumn<QString>("text");
    const QDateTime date(QDate(1998, 5, 2), QTime(0, 0));
    QTest::newRow("both") << "Songs" << date << "Songs (1998)";
    QTest::newRow("no date") << "Songs" << QDateTime() << "Songs";
    QTest::newRow("no album") << "" << date << "1998";
    QTest::newRow("neither") << "" << QDateTime() << "";
}

void TestTrackDetails::addsTheYearToTheAlbum()
{
    QFETCH(QString, album);
    QFETCH(QDateTime, date);
    QFETCH(QString, text);
    QMediaMetaData tags;
    tags.insert(QMediaMetaData::AlbumTitle, album);
    tags.insert(QMediaMetaData::Date, date);
    QCOMPARE(detailsOf(tags).album, text);
}

void TestTrackDetails::namesTheCodec_data()
{
    QTest::addColumn<QVariant>("codec");
    QTest::addColumn<QString>("text");
    QTest::newRow("known") << QVariant::fromValue(QMediaFormat::AudioCodec::Vorbis) << "Vorbis";
    QTest::newRow("by its name") << QVariant(QStringLiteral("Some PCM")) << "Some PCM";
    QTest::newRow("unspecified") << QVariant::fromValue(QMediaFormat::AudioCodec::Unspecified) << "";
    QTest::newRow("none") << QVariant() << "";
}

void TestTrackDetails::namesTheCodec()
{
    QFETCH(QVariant, codec);
    QFETCH(QString, text);
    QMediaMetaData tags;
    if (codec.isValid())
        tags.insert(QMediaMetaData::AudioCodec, codec);
    QCOMPARE(value(detailsOf(tags), QStringLiteral("Codec")), text);
}

void TestTrackDetails::writesBitRates_data()
{
    QTest::addColumn<QVariant>("rate");
    QTest::addColumn<QString>("text");
    QTest::newRow("even") << QVariant(160000) << "160 kbit/s";
    QTest::newRow("rounded") << QVariant(127500) << "128 kbit/s";
    QTest::newRow("large") << QVariant(std::numeric_limits<int>::max()) << "2147484 kbit/s";
    QTest::newRow("none") << QVariant(0) << "";
    QTest::newRow("negative") << QVariant(-1) << "";
    QTest::newRow("words") << QVariant(QStringLiteral("fast")) << "";
}

void TestTrackDetails::writesBitRates()
{
    QFETCH(QVariant, rate);
    QFETCH(QString, text);
    QMediaMetaData tags;
    tags.insert(QMediaMetaData::AudioBitRate, rate);
    QCOMPARE(value(detailsOf(tags), QStringLiteral("Bit rate")), text);
}

void TestTrackDetails::boundsTags()
{
    QMediaMetaData tags;
    tags.insert(QMediaMetaData::Title, QString(1000000, QLatin1Char('a')));
    tags.insert(QMediaMetaData::Comment, QStringLiteral("  two\n\tlines  "));
    tags.insert(QMediaMetaData::Genre, QString(5000, QLatin1Char(' ')));
    const TrackDetails details = detailsOf(tags);
    QCOMPARE(details.title.size(), displaytext::longest);
    QVERIFY(details.title.endsWith(QChar(0x2026)));
    QCOMPARE(value(details, QStringLiteral("Comment")), QStringLiteral("two lines"));
    QCOMPARE(value(details, QStringLiteral("Genre")), QString());
    tags.insert(QMediaMetaData::Title, QString(displaytext::longest, QLatin1Char('a')));
    QCOMPARE(detailsOf(tags).title, QString(displaytext::longest, QLatin1Char('a')));
}

void TestTrackDetails::showsNoControlCharacters()
{
    const QString odd = QStringLiteral("a\u0001b\u001b\u202ec\u0085d\ne");
    QMediaMetaData tags;
    tags.insert(QMediaMetaData::Title, odd);
    tags.insert(QMediaMetaData::Comment, odd);
    tags.insert(QMediaMetaData::AudioCodec, odd);
    const TrackDetails details = TrackDetails::of(QStringLiteral("/mu\nsic/so\tng.ogg"), tags, 0);
    QCOMPARE(details.title, QStringLiteral("a b c d e"));
    QCOMPARE(value(details, QStringLiteral("Comment")), QStringLiteral("a b c d e"));
    QCOMPARE(value(details, QStringLiteral("Codec")), QStringLiteral("a b c d e"));
    QCOMPARE(value(details, QStringLiteral("File")), QStringLiteral("so ng.ogg"));
    QCOMPARE(value(details, QStringLiteral("Folder")), QStringLiteral("/mu sic"));
    QCOMPARE(TrackDetails::of(QStringLiteral("/so\tng.ogg"), {}, 0).title, QStringLiteral("so ng.ogg"));
}

void TestTrackDetails::titleOfThePlaylistStandsInForTheTag()
{
    const QString file = QStringLiteral("/music/song.ogg");
    const QString listed = QStringLiteral("Some\tSong");
    QCOMPARE(TrackDetails::of(file, {}, 0, listed).title, QStringLiteral("Some Song"));
    QCOMPARE(TrackDetails::of(file, {}, 0, QStringLiteral(" ")).title, QStringLiteral("song.ogg"));
    QMediaMetaData tags;
    tags.insert(QMediaMetaData::Title, QStringLiteral("From the tag"));
    QCOMPARE(TrackDetails::of(file, tags, 0, listed).title, QStringLiteral("From the tag"));
}

void TestTrackDetails::takesTheCover()
{
    QImage cover(3, 3, QImage::Format_RGB32);
    cover.fill(Qt::red);
    QImage thumbnail(2, 2, QImage::Format_RGB32);
    thumbnail.fill(Qt::blue);
    QMediaMetaData tags;
    tags.insert(QMediaMetaData::ThumbnailImage, thumbnail);
    QCOMPARE(detailsOf(tags).cover, thumbnail);
    tags.insert(QMediaMetaData::CoverArtImage, cover);
    QCOMPARE(detailsOf(tags).cover, cover);
}

void TestTrackDetails::writesTimes_data()
{
    QTest::addColumn<qint64>("milliseconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << qint64(0) << "0:00";
    QTest::newRow("negative") << qint64(-5000) << "0:00";
    QTest::newRow("less than a second") << qint64(999) << "0:00";
    QTest::newRow("minutes") << qint64(185000) << "3:05";
    QTest::newRow("before the hour") << qint64(3599999) << "59:59";
    QTest::newRow("hours") << qint64(3785000) << "1:03:05";
    QTest::newRow("days") << qint64(360000000) << "100:00:00";
}

void TestTrackDetails::writesTimes()
{
    QFETCH(qint64, milliseconds);
    QFETCH(QString, text);
    QCOMPARE(TrackDetails::timeText(milliseconds), text);
}

QTEST_GUILESS_MAIN(TestTrackDetails)
#include "tst_trackdetails.moc"
