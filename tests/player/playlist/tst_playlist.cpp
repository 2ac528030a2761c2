#include "player/playlist/playlist.h"
#include "player/playlist/playlistfilter.h"
#include "player/playlist/soundtypes.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

namespace
{

QList<PlaylistEntry> entriesOf(const QStringList& files)
{
    QList<PlaylistEntry> entries;
    for (const QString& file : files)
        entries.append({file, QString(), -1, false});
    return entries;
}

} // namespace

/* The list of what there is to play, and what is told of a file by its name. */
class TestPlaylist : public QObject
{
    Q_OBJECT

private slots:
    void isEmptyAtFirst();
    void tellsOfEveryChange();
    void removesSeveral_data();
    void removesSeveral();
    void removesHalfOfManyAtOnce();
    void tellsOfAnEntryOnlyWhenItChanges();
    void namesEntries_data();
    void namesEntries();
    void findsAFile();
    void receiverMayDeleteIt();
    void filters_data();
    void filters();
    void knowsSounds_data();
    void knowsSounds();
    void knowsPlaylists_data();
    void knowsPlaylists();
};

void TestPlaylist::isEmptyAtFirst()
{
    const Playlist playlist;
    QVERIFY(playlist.isEmpty());
    QCOMPARE(playlist.count(), 0);
    QCOMPARE(playlist.file(0), QString());
    QCOMPARE(playlist.file(-1), QString());
    QCOMPARE(playlist.files(), QStringList());
    QVERIFY(!playlist.contains(0));
    QVERIFY(!playlist.isGrowing());
}

void TestPlaylist::tellsOfEveryChange()
{
    Playlist playlist;
    QStringList told;
    connect(&playlist, &Playlist::replaced, this, [&] { told << "replaced"; });
    connect(&playlist, &Playlist::appended, this,
            [&](int first, int count) { told << QStringLiteral("appended %1 %2").arg(first).arg(count); });
    connect(&playlist, &Playlist::removed, this,
            [&](const QList<int>& gone) { told << QStringLiteral("removed %1").arg(gone.size()); });
    connect(&playlist, &Playlist::countChanged, this, [&](int count) { told << QString::number(count); });
    connect(&playlist, &Playlist::growingChanged, this, [&](bool grows) { told << (grows ? "grows" : "grown"); });

    playlist.replace(entriesOf({"/a", "/b"}));
    playlist.setGrowing(true);
    playlist.setGrowing(true);
    playlist.append(entriesOf({"/c"}));
    playlist.append({});
    playlist.setGrowing(false);
    playlist.remove({0, 2});
    playlist.remove({7});
    QCOMPARE(told, (QStringList{"replaced", "2", "grows", "appended 2 1", "3", "grown", "removed 2", "1"}));
    QCOMPARE(playlist.files(), QStringList{"/b"});
}

void TestPlaylist::removesSeveral_data()
{
    QTest::addColumn<QList<int>>("asked");
    QTest::addColumn<QList<int>>("told");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("first") << QList<int>{0} << QList<int>{0} << QStringList{"/b", "/c", "/d"};
    QTest::newRow("last") << QList<int>{3} << QList<int>{3} << QStringList{"/a", "/b", "/c"};
    QTest::newRow("any order and twice") << QList<int>{2, 0, 2} << QList<int>{0, 2} << QStringList{"/b", "/d"};
    QTest::newRow("all") << QList<int>{0, 1, 2, 3} << QList<int>{0, 1, 2, 3} << QStringList();
    QTest::newRow("outside") << QList<int>{-1, 4, 1} << QList<int>{1} << QStringList{"/a", "/c", "/d"};
}

void TestPlaylist::removesSeveral()
{
    QFETCH(QList<int>, asked);
    QFETCH(QList<int>, told);
    QFETCH(QStringList, left);
    Playlist playlist;
    playlist.replace(entriesOf({"/a", "/b", "/c", "/d"}));
    QSignalSpy removed(&playlist, &Playlist::removed);
    playlist.remove(asked);
    QCOMPARE(removed.count(), 1);
    QCOMPARE(removed[0][0].value<QList<int>>(), told);
    QCOMPARE(playlist.files(), left);
}

void TestPlaylist::removesHalfOfManyAtOnce()
{
    QList<PlaylistEntry> entries;
    QList<int> odd;
    for (int i = 0; i < 100000; ++i) {
        entries.append({QStringLiteral("/music/%1.ogg").arg(i), QString(), -1, false});
        if (i % 2)
            odd.append(i);
    }
    Playlist playlist;
    playlist.replace(entries);
    QElapsedTimer clock;
    clock.start();
    playlist.remove(odd);
    // Some milliseconds here; one by one it would be minutes.
    QVERIFY2(clock.elapsed() < 2000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(playlist.count(), 50000);
    QCOMPARE(playlist.file(49999), QStringLiteral("/music/99998.ogg"));
}

void TestPlaylist::tellsOfAnEntryOnlyWhenItChanges()
{
    Playlist playlist;
    playlist.replace(entriesOf({"/a", "/b"}));
    QSignalSpy changed(&playlist, &Playlist::entryChanged);
    playlist.setSeconds(1, 61);
    playlist.setSeconds(1, 61);
    playlist.setMissing(0, false);
    playlist.setMissing(0, true);
    playlist.setMissing(2, true);
    playlist.setSeconds(-1, 5);
    QCOMPARE(changed, (QList<QVariantList>{{1}, {0}}));
    QCOMPARE(playlist.at(1).seconds, 61);
    QVERIFY(playlist.at(0).isMissing);
}

void TestPlaylist::namesEntries_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("name");
    QTest::newRow("file name") << QStringLiteral("/music/01 song.ogg") << QString() << QStringLiteral("01 song");
    QTest::newRow("title") << QStringLiteral("/music/01 song.ogg") << QStringLiteral("Song") << QStringLiteral("Song");
    QTest::newRow("dots") << QStringLiteral("/a.b/c.d.ogg") << QString() << QStringLiteral("c.d");
    QTest::newRow("no ending") << QStringLiteral("/a.b/song") << QString() << QStringLiteral("song");
    QTest::newRow("leading dot") << QStringLiteral("/a/.song") << QString() << QStringLiteral(".song");
    QTest::newRow("nothing") << QString() << QString() << QString();
}

void TestPlaylist::namesEntries()
{
    QFETCH(QString, file);
    QFETCH(QString, title);
    QFETCH(QString, name);
    const PlaylistEntry entry{file, title, -1, false};
    QCOMPARE(entry.name().toString(), name);
}

void TestPlaylist::findsAFile()
{
    Playlist playlist;
    playlist.replace(entriesOf({"/a", "/b", "/b"}));
    QCOMPARE(playlist.indexOf(QStringLiteral("/b")), 1);
    QCOMPARE(playlist.indexOf(QStringLiteral("/c")), -1);
}

void TestPlaylist::receiverMayDeleteIt()
{
    auto* playlist = new Playlist;
    QSignalSpy counts(playlist, &Playlist::countChanged);
    connect(playlist, &Playlist::replaced, this, [playlist] { delete playlist; });
    playlist->replace(entriesOf({"/a"}));
    QCOMPARE(counts.count(), 0);
}

void TestPlaylist::filters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("matches");
    QTest::newRow("nothing asked") << QString() << QStringLiteral("Song") << true;
    QTest::newRow("blanks") << QStringLiteral("  ") << QStringLiteral("Song") << true;
    QTest::newRow("beginning") << QStringLiteral("so") << QStringLiteral("Song") << true;
    QTest::newRow("middle") << QStringLiteral("ON") << QStringLiteral("Song") << true;
    QTest::newRow("other") << QStringLiteral("sing") << QStringLiteral("Song") << false;
    QTest::newRow("words in any order") << QStringLiteral("walk night") << QStringLiteral("Night walk") << true;
    QTest::newRow("one word is not there") << QStringLiteral("night run") << QStringLiteral("Night walk") << false;
    QTest::newRow("umlaut") << QString::fromUtf8("ÄPFEL") << QString::fromUtf8("äpfel") << true;
    QTest::newRow("no pattern") << QStringLiteral(".*") << QStringLiteral("Song") << false;
}

void TestPlaylist::filters()
{
    QFETCH(QString, text);
    QFETCH(QString, name);
    QFETCH(bool, matches);
    QCOMPARE(PlaylistFilter(text).matches(name), matches);
}

void TestPlaylist::knowsSounds_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("isSound");
    for (const char* sound : {"a.ogg", "/x/a.MP3", "a.b.flac", "a.wav", "a.opus", "a.m4a", "a.aiff", "a.au"})
        QTest::newRow(sound) << QString::fromLatin1(sound) << true;
    for (const char* other : {"a.txt", "a.jpg", "ogg", ".ogg", "a.", "", "a.m3u", "a.m3u8", "a.pls", "a.xspf", "a.lrc",
                              "/x.ogg/a", "a.ogg.part", "a.mid.zip"})
        QTest::newRow(other) << QString::fromLatin1(other) << false;
}

void TestPlaylist::knowsSounds()
{
    QFETCH(QString, file);
    QFETCH(bool, isSound);
    QCOMPARE(soundtypes::isSound(file), isSound);
    // What is known is answered alike.
    QCOMPARE(soundtypes::isSound(file), isSound);
}

void TestPlaylist::knowsPlaylists_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("isPlaylist");
    QTest::newRow("m3u") << QStringLiteral("/x/a.m3u") << true;
    QTest::newRow("upper case") << QStringLiteral("A.M3U8") << true;
    QTest::newRow("sound") << QStringLiteral("a.ogg") << false;
    QTest::newRow("folder of that name") << QStringLiteral("/a.m3u/b") << false;
}

void TestPlaylist::knowsPlaylists()
{
    QFETCH(QString, file);
    QFETCH(bool, isPlaylist);
    QCOMPARE(soundtypes::isPlaylist(file), isPlaylist);
}

QTEST_GUILESS_MAIN(TestPlaylist)
#include "tst_playlist.moc"
