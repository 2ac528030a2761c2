#include "player/playlist/playlistreader.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

#include <sys/stat.h>

namespace
{

constexpr int patience = 60000;

} // namespace

/* Folders and playlists that are read in the background. */
class TestPlaylistReader : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void returnsAtOnce();
    void filesComeAsTheyAre();
    void foldersComeInNaturalOrder();
    void foldersGiveSoundsOnly();
    void pathsKeepTheirOrder();
    void circlesOfLinksComeToAnEnd();
    void linkToAFileIsAFile();
    void samePathTwiceComesTwice();
    void unreadableFolderIsTold();
    void folderThatGoesAwayDoesNoHarm();
    void playlistsGiveTheirEntries();
    void playlistsInPlaylists();
    void circlesOfPlaylistsComeToAnEnd();
    void deepPlaylistsComeToAnEnd();
    void damagedPlaylistIsTold();
    void unreadablePlaylistIsTold();
    void deepFoldersComeToAnEnd();
    void plainPlaylistIsTakenAsItIs();
    void readsAfterWhatIsBeingRead();
    void cancelDropsTheRest();
    void receiverMayCancel();
    void receiverMayDelete();
    void manyFilesLetOtherEventsIn();

private:
    QString path(const QString& name = QString()) const
    {
        return name.isEmpty() ? m_directory->path() : m_directory->filePath(name);
    }
    QString write(const QString& name, const QByteArray& bytes = QByteArray()) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
        return file.fileName();
    }
    // What comes of the paths, those below the test's directory without it.
    QStringList readAll(const QStringList& paths)
    {
        PlaylistReader reader;
        reader.read(paths);
        return collect(reader);
    }
    QStringList collect(PlaylistReader& reader)
    {
        QStringList files;
        const auto take = [&](const QList<PlaylistEntry>& entries) {
            for (const PlaylistEntry& entry : entries)
                files << QDir(path()).relativeFilePath(entry.file);
        };
        const auto connection = connect(&reader, &PlaylistReader::found, this, take);
        QSignalSpy finished(&reader, &PlaylistReader::finished);
        QSignalSpy failed(&reader, &PlaylistReader::failed);
        if (!QTest::qWaitFor([&] { return finished.count() > 0; }, patience))
            files << QStringLiteral("not finished");
        disconnect(connection);
        m_failed = failed;
        return files;
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    // Arguments of failed() in the last collect().
    QList<QVariantList> m_failed;
};

void TestPlaylistReader::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
    m_failed.clear();
}

void TestPlaylistReader::returnsAtOnce()
{
    write("a.ogg");
    PlaylistReader reader;
    QSignalSpy found(&reader, &PlaylistReader::found);
    QVERIFY(!reader.isReading());
    reader.read({});
    QVERIFY(!reader.isReading());
    reader.read({path()});
    QVERIFY(reader.isReading());
    QCOMPARE(found.count(), 0);
    QCOMPARE(collect(reader), QStringList{"a.ogg"});
    QVERIFY(!reader.isReading());
    QCOMPARE(reader.foundCount(), 1);
}

void TestPlaylistReader::filesComeAsTheyAre()
{
    write("b.txt");
    write("a.ogg");
    PlaylistReader reader;
    QSignalSpy found(&reader, &PlaylistReader::found);
    reader.read({path("b.txt"), path("gone.ogg"), path("a.ogg")});
    QCOMPARE(collect(reader), (QStringList{"b.txt", "gone.ogg", "a.ogg"}));
    QList<PlaylistEntry> entries;
    for (const QVariantList& arguments : found)
        entries += arguments[0].value<QList<PlaylistEntry>>();
    QVERIFY(!entries[0].isMissing);
    QVERIFY(entries[1].isMissing);
    QCOMPARE(m_failed.size(), 0);
}

void TestPlaylistReader::foldersComeInNaturalOrder()
{
    for (const char* name :
         {"10 ten.ogg", "2 two.ogg", "1 one.ogg", "b.ogg", "A.ogg", "c/2.ogg", "c/10.ogg", "c/deep/x.ogg", "B/1.ogg"})
        write(name);
    QCOMPARE(readAll({path()}), (QStringList{"1 one.ogg", "2 two.ogg", "10 ten.ogg", "A.ogg", "b.ogg", "B/1.ogg",
                                             "c/2.ogg", "c/10.ogg", "c/deep/x.ogg"}));
}

void TestPlaylistReader::foldersGiveSoundsOnly()
{
    for (const char* name :
         {"a.ogg", "cover.jpg", "a.lrc", "list.m3u", ".hidden.ogg", ".folder/b.ogg", "c.MP3", "README"})
        write(name);
    QCOMPARE(mkfifo(qPrintable(path("pipe.ogg")), 0600), 0);
    QVERIFY(QFile::link(path("gone.ogg"), path("broken.ogg")));
    QCOMPARE(readAll({path()}), (QStringList{"a.ogg", "c.MP3"}));
}

void TestPlaylistReader::pathsKeepTheirOrder()
{
    write("z/1.ogg");
    write("z/2.ogg");
    write("a.ogg");
    write("b/3.ogg");
    QCOMPARE(readAll({path("z"), path("a.ogg"), path("b/")}), (QStringList{"z/1.ogg", "z/2.ogg", "a.ogg", "b/3.ogg"}));
}

void TestPlaylistReader::circlesOfLinksComeToAnEnd()
{
    write("a/1.ogg");
    write("b/2.ogg");
    QVERIFY(QFile::link(path(), path("a/up")));
    QVERIFY(QFile::link(path("a"), path("b/side")));
    QVERIFY(QFile::link(path("self"), path("self")));
    QVERIFY(QFile::link(QStringLiteral("."), path("a/here")));
    QCOMPARE(readAll({path()}), (QStringList{"a/1.ogg", "b/2.ogg"}));
}

void TestPlaylistReader::linkToAFileIsAFile()
{
    write("a/1.ogg");
    QVERIFY(QDir(path()).mkdir("b"));
    QVERIFY(QFile::link(path("a/1.ogg"), path("b/2.ogg")));
    QCOMPARE(readAll({path("b")}), QStringList{"b/2.ogg"});
}

void TestPlaylistReader::samePathTwiceComesTwice()
{
    write("a/1.ogg");
    QCOMPARE(readAll({path("a"), path("a")}), (QStringList{"a/1.ogg", "a/1.ogg"}));
}

void TestPlaylistReader::unreadableFolderIsTold()
{
    write("a/1.ogg");
    write("b/2.ogg");
    const QFile::Permissions before = QFile::permissions(path("a"));
    QVERIFY(QFile::setPermissions(path("a"), {}));
    const bool isClosed = !QFileInfo(path("a")).isReadable();
    const QStringList files = readAll({path()});
    QVERIFY(QFile::setPermissions(path("a"), before));
    if (!isClosed)
        QSKIP("this user reads everything");
    QCOMPARE(files, QStringList{"b/2.ogg"});
    QCOMPARE(m_failed.size(), 1);
    QCOMPARE(m_failed[0][0].toString(), path("a"));
}

void TestPlaylistReader::folderThatGoesAwayDoesNoHarm()
{
    for (int i = 0; i < 20000; ++i)
        write(QStringLiteral("a/%1.ogg").arg(i));
    write("b/2.ogg");
    PlaylistReader reader;
    reader.read({path("a"), path("b"), path()});
    // Somewhere in the middle of the first folder.
    QSignalSpy progressed(&reader, &PlaylistReader::progressed);
    QVERIFY(QTest::qWaitFor([&] { return progressed.count() > 0; }, patience));
    QVERIFY(QDir(path("b")).removeRecursively());
    const QStringList files = collect(reader);
    QVERIFY(!files.contains("b/2.ogg"));
    QVERIFY(files.contains("a/19999.ogg"));
}

void TestPlaylistReader::playlistsGiveTheirEntries()
{
    write("music/a.ogg");
    write("music/folder/2.ogg");
    write("music/folder/1.ogg");
    write("music/list.m3u", "a.ogg\nfolder\ngone.ogg\n#EXTINF:3,A\na.ogg\n");
    PlaylistReader reader;
    QSignalSpy found(&reader, &PlaylistReader::found);
    reader.read({path("music/list.m3u")});
    QCOMPARE(collect(reader),
             (QStringList{"music/a.ogg", "music/folder/1.ogg", "music/folder/2.ogg", "music/gone.ogg", "music/a.ogg"}));
    const auto last = found.last()[0].value<QList<PlaylistEntry>>().last();
    QCOMPARE(last.title, QStringLiteral("A"));
    QCOMPARE(last.seconds, 3);
}

void TestPlaylistReader::playlistsInPlaylists()
{
    write("a.ogg");
    write("b.ogg");
    write("sub/c.ogg");
    write("sub/inner.m3u8", "c.ogg\n");
    write("outer.m3u", "a.ogg\nsub/inner.m3u8\nb.ogg\ngone.m3u\n");
    QCOMPARE(readAll({path("outer.m3u")}), (QStringList{"a.ogg", "sub/c.ogg", "b.ogg", "gone.m3u"}));
}

void TestPlaylistReader::circlesOfPlaylistsComeToAnEnd()
{
    write("a.ogg");
    write("one.m3u", "a.ogg\none.m3u\ntwo.m3u\n.\n");
    write("two.m3u", "one.m3u\na.ogg\n");
    QCOMPARE(readAll({path("one.m3u")}), (QStringList{"a.ogg", "a.ogg", "a.ogg"}));
}

void TestPlaylistReader::deepPlaylistsComeToAnEnd()
{
    constexpr int depth = 2 * PlaylistReader::maxDepth;
    for (int i = 0; i < depth; ++i)
        write(QStringLiteral("%1.m3u").arg(i), QByteArray::number(i) + ".ogg\n" + QByteArray::number(i + 1) + ".m3u\n");
    const QStringList files = readAll({path("0.m3u")});
    QCOMPARE(files.first(), QStringLiteral("0.ogg"));
    QVERIFY(files.size() > 100 && files.size() < depth);
    QCOMPARE(m_failed.size(), 1);
}

void TestPlaylistReader::damagedPlaylistIsTold()
{
    write("list.m3u", "a.ogg\n\x01\x02\nb.ogg\n" + QByteArray(100000, 'x'));
    QCOMPARE(readAll({path("list.m3u")}), (QStringList{"a.ogg", "b.ogg"}));
    QCOMPARE(m_failed.size(), 1);
    QCOMPARE(m_failed[0][0].toString(), path("list.m3u"));
    QVERIFY(m_failed[0][1].toString().contains('2'));
}

void TestPlaylistReader::unreadablePlaylistIsTold()
{
    write("list.m3u", "a.ogg\n");
    write("b.ogg");
    QVERIFY(QFile::setPermissions(path("list.m3u"), {}));
    if (QFileInfo(path("list.m3u")).isReadable())
        QSKIP("this user reads everything");
    QCOMPARE(readAll({path("list.m3u"), path("b.ogg")}), QStringList{"b.ogg"});
    QCOMPARE(m_failed.size(), 1);
}

void TestPlaylistReader::deepFoldersComeToAnEnd()
{
    QString folder = path();
    for (int i = 0; i < PlaylistReader::maxDepth + 50; ++i)
        folder += QStringLiteral("/f");
    QVERIFY(QDir().mkpath(folder));
    write("f/f/a.ogg");
    QCOMPARE(readAll({path()}), QStringList{"f/f/a.ogg"});
    QCOMPARE(m_failed.size(), 1);
}

void TestPlaylistReader::plainPlaylistIsTakenAsItIs()
{
    write("folder/1.ogg");
    write("inner.m3u", "a.ogg\n");
    write("list.m3u8", "folder\ninner.m3u\nlist.m3u8\n");
    PlaylistReader reader;
    reader.readPlain(path("list.m3u8"));
    QCOMPARE(collect(reader), (QStringList{"folder", "inner.m3u", "list.m3u8"}));
    reader.readPlain(path("none.m3u8"));
    QCOMPARE(collect(reader), QStringList());
    QCOMPARE(m_failed.size(), 1);
}

void TestPlaylistReader::readsAfterWhatIsBeingRead()
{
    write("a/1.ogg");
    write("b/2.ogg");
    write("list.m3u", "c.ogg\n");
    PlaylistReader reader;
    reader.readPlain(path("list.m3u"));
    reader.read({path("a")});
    reader.read({path("b")});
    QCOMPARE(collect(reader), (QStringList{"c.ogg", "a/1.ogg", "b/2.ogg"}));
    QCOMPARE(reader.foundCount(), 3);
}

void TestPlaylistReader::cancelDropsTheRest()
{
    write("a.ogg");
    PlaylistReader reader;
    QSignalSpy found(&reader, &PlaylistReader::found);
    QSignalSpy finished(&reader, &PlaylistReader::finished);
    reader.read({path()});
    reader.cancel();
    QVERIFY(!reader.isReading());
    QTest::qWait(50);
    QCOMPARE(found.count(), 0);
    QCOMPARE(finished.count(), 0);
    // And it begins anew.
    reader.read({path("a.ogg")});
    QCOMPARE(collect(reader), QStringList{"a.ogg"});
}

void TestPlaylistReader::receiverMayCancel()
{
    write("a.ogg");
    PlaylistReader reader;
    QSignalSpy finished(&reader, &PlaylistReader::finished);
    QSignalSpy progressed(&reader, &PlaylistReader::progressed);
    connect(&reader, &PlaylistReader::found, &reader, [&] {
        reader.cancel();
        reader.read({path("a.ogg")});
        reader.disconnect(&reader);
    });
    reader.read({path()});
    QVERIFY(QTest::qWaitFor([&] { return finished.count() > 0; }, patience));
    QTest::qWait(50);
    QCOMPARE(finished.count(), 1);
    QVERIFY(progressed.count() >= 2);
}

void TestPlaylistReader::receiverMayDelete()
{
    write("a.ogg");
    auto* reader = new PlaylistReader;
    QSignalSpy destroyed(reader, &QObject::destroyed);
    connect(reader, &PlaylistReader::found, this, [reader] { delete reader; });
    reader->read({path(), path("gone")});
    QVERIFY(QTest::qWaitFor([&] { return destroyed.count() > 0; }, patience));
}

void TestPlaylistReader::manyFilesLetOtherEventsIn()
{
    QByteArray list;
    for (int i = 0; i < 100000; ++i)
        list += "song " + QByteArray::number(i) + ".ogg\n";
    write("list.m3u", list);
    PlaylistReader reader;
    // Counts how often other work gets its turn.
    QTimer other;
    int turns = 0;
    connect(&other, &QTimer::timeout, this, [&] { ++turns; });
    other.start(0);
    QElapsedTimer clock;
    qint64 longest = 0;
    connect(&reader, &PlaylistReader::progressed, this, [&] { longest = qMax(longest, clock.restart()); });
    clock.start();
    reader.read({path("list.m3u")});
    QCOMPARE(collect(reader).size(), 100000);
    qInfo("the longest pause was %lld ms", longest);
    QVERIFY(turns >= 5);
    QVERIFY(longest < 2000);
}

QTEST_GUILESS_MAIN(TestPlaylistReader)
#include "tst_playlistreader.moc"
