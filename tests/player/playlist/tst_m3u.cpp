#include "player/playlist/m3u.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

namespace
{

using Entries = QList<PlaylistEntry>;

Entries readAll(const QString& file)
{
    m3u::Reader reader(file);
    Entries entries;
    for (;;) {
        PlaylistEntry entry;
        const m3u::Reader::Line line = reader.readLine(entry);
        if (line == m3u::Reader::End)
            return entries;
        if (line == m3u::Reader::Entry)
            entries.append(entry);
    }
}

// Like "a.ogg [Title] 12", the directory left out.
QStringList described(const Entries& entries, const QString& directory)
{
    QStringList all;
    for (const PlaylistEntry& entry : entries) {
        QString one = entry.file;
        if (one.startsWith(directory + '/'))
            one.remove(0, directory.size() + 1);
        if (!entry.title.isEmpty())
            one += QStringLiteral(" [%1]").arg(entry.title);
        if (entry.seconds >= 0)
            one += QStringLiteral(" %1").arg(entry.seconds);
        all << one;
    }
    return all;
}

} // namespace

/* Reading and writing M3U playlists. */
class TestM3u : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void reads_data();
    void reads();
    void tellsWhatIsMissing();
    void whatCannotBeReadIsTold_data();
    void whatCannotBeReadIsTold();
    void garbageGivesNothing_data();
    void garbageGivesNothing();
    void countsDamagedLines();
    void titlesAreBounded();
    void writesWhatItReads();
    void writesRelativePaths();
    void oddNamesComeBack_data();
    void oddNamesComeBack();
    void keepsTheOldFileWhereItCannotWrite();
    void manyEntriesTakeNoTime();

private:
    QString write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(m_directory->filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
        return file.fileName();
    }
    QString path() const { return m_directory->path(); }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestM3u::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void TestM3u::reads_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("empty") << QByteArray() << QStringList();
    QTest::newRow("paths only") << QByteArray("a.ogg\nsub/b.ogg\n") << QStringList{"a.ogg", "sub/b.ogg"};
    QTest::newRow("no line end") << QByteArray("a.ogg\nb.ogg") << QStringList{"a.ogg", "b.ogg"};
    QTest::newRow("CR LF") << QByteArray("#EXTM3U\r\n#EXTINF:5,A\r\na.ogg\r\n") << QStringList{"a.ogg [A] 5"};
    QTest::newRow("mark of UTF-8") << QByteArray("\xef\xbb\xbf#EXTM3U\na.ogg\n") << QStringList{"a.ogg"};
    QTest::newRow("titles") << QByteArray("#EXTM3U\n#EXTINF:61,One - A, B\na.ogg\n#EXTINF:-1,Two\nb.ogg\n")
                            << QStringList{"a.ogg [One - A, B] 61", "b.ogg [Two]"};
    QTest::newRow("title is for one entry")
        << QByteArray("#EXTINF:5,A\na.ogg\nb.ogg\n") << QStringList{"a.ogg [A] 5", "b.ogg"};
    QTest::newRow("title without a length") << QByteArray("#EXTINF:,A\na.ogg\n") << QStringList{"a.ogg [A]"};
    QTest::newRow("title says no more than the name")
        << QByteArray("#EXTINF:5,a\na.ogg\n#EXTINF:6,b c\nx/b  c.ogg\n#EXTINF:7,a\nb.ogg\n")
        << QStringList{"a.ogg 5", "x/b  c.ogg 6", "b.ogg [a] 7"};
    QTest::newRow("length without a title") << QByteArray("#EXTINF:7\na.ogg\n") << QStringList{"a.ogg 7"};
    QTest::newRow("length in fractions") << QByteArray("#EXTINF:7.6,A\na.ogg\n") << QStringList{"a.ogg [A] 8"};
    QTest::newRow("length is no number") << QByteArray("#EXTINF:nan,A\na.ogg\n#EXTINF:1e99,B\nb.ogg\n")
                                         << QStringList{"a.ogg [A]", "b.ogg [B]"};
    QTest::newRow("attributes") << QByteArray("#EXTINF:9 logo=\"x\",A\na.ogg\n") << QStringList{"a.ogg [A] 9"};
    QTest::newRow("other tags and blank lines")
        << QByteArray("\n#PLAYLIST:x\n  \n#EXTGRP:y\na.ogg\n\n#end\n") << QStringList{"a.ogg"};
    QTest::newRow("UTF-8") << QByteArray("m\xc3\xbchle.ogg\n") << QStringList{QString::fromUtf8("mühle.ogg")};
    QTest::newRow("Latin-1") << QByteArray("m\xfchle.ogg\n") << QStringList{QString::fromUtf8("mühle.ogg")};
    QTest::newRow("each line for itself")
        << QByteArray("m\xfchle.ogg\nm\xc3\xbchle.ogg\n")
        << QStringList{QString::fromUtf8("mühle.ogg"), QString::fromUtf8("mühle.ogg")};
    QTest::newRow("dots in the path") << QByteArray("./x/../a.ogg\n") << QStringList{"a.ogg"};
    QTest::newRow("absolute") << QByteArray("/elsewhere/a.ogg\n") << QStringList{"/elsewhere/a.ogg"};
    QTest::newRow("file address") << QByteArray("file:///elsewhere/a%20b.ogg\n") << QStringList{"/elsewhere/a b.ogg"};
    QTest::newRow("other address") << QByteArray("http://host/a.ogg\n") << QStringList{"http://host/a.ogg"};
    QTest::newRow("there are blanks around it") << QByteArray("  there.ogg \n") << QStringList{"there.ogg"};
    QTest::newRow("backslashes") << QByteArray("folder\\in.ogg\n") << QStringList{"folder/in.ogg"};
    QTest::newRow("backslashes lead nowhere") << QByteArray("C:\\a.ogg\n") << QStringList{"C:\\a.ogg"};
    QTest::newRow("control characters") << QByteArray("a\x01.ogg\nb\0.ogg\nc.ogg\n", 20) << QStringList{"c.ogg"};
    QTest::newRow("too long a line") << QByteArray(100000, 'x') + "\na.ogg\n" << QStringList{"a.ogg"};
    QTest::newRow("just not too long") << QByteArray(m3u::maxLineLength - 1, 'x') + "\na.ogg\n"
                                       << QStringList{QString(m3u::maxLineLength - 1, 'x'), "a.ogg"};
    QTest::newRow("one byte too long") << QByteArray(m3u::maxLineLength, 'x') + "\na.ogg\n" << QStringList{"a.ogg"};
    QTest::newRow("too long at the end") << "a.ogg\n" + QByteArray(100000, 'x') << QStringList{"a.ogg"};
}

void TestM3u::reads()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, entries);
    write(QStringLiteral("there.ogg"), QByteArray());
    QVERIFY(QDir(path()).mkdir(QStringLiteral("folder")));
    write(QStringLiteral("folder/in.ogg"), QByteArray());
    const QString file = write(QStringLiteral("list.m3u"), text);
    QCOMPARE(m3u::Reader(file).error(), QString());
    QCOMPARE(described(readAll(file), path()), entries);
}

void TestM3u::tellsWhatIsMissing()
{
    write(QStringLiteral("there.ogg"), QByteArray());
    const Entries entries = readAll(write(QStringLiteral("list.m3u"), "there.ogg\ngone.ogg\nhttp://host/there.ogg\n"));
    QCOMPARE(entries.size(), 3);
    QVERIFY(!entries[0].isMissing);
    QVERIFY(entries[1].isMissing);
    QVERIFY(entries[2].isMissing);
}

void TestM3u::whatCannotBeReadIsTold_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << QStringLiteral("none.m3u");
    QTest::newRow("directory") << QStringLiteral(".");
    QTest::newRow("device without end") << QStringLiteral("/dev/zero");
}

void TestM3u::whatCannotBeReadIsTold()
{
    QFETCH(QString, name);
    m3u::Reader reader(QDir(path()).absoluteFilePath(name));
    QVERIFY(!reader.error().isEmpty());
    PlaylistEntry entry;
    QCOMPARE(reader.readLine(entry), m3u::Reader::End);
}

void TestM3u::garbageGivesNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QByteArray mixed;
    for (quint32 i = 0; i < 1000000; ++i)
        mixed += static_cast<char>(i * 7919 >> 3);
    // In each line of what is no text there is a byte that no text has.
    QTest::newRow("zeros") << QByteArray(1000000, '\0');
    QTest::newRow("one long line") << QByteArray(5000000, 'a');
    QTest::newRow("bytes of all kinds") << mixed;
}

void TestM3u::garbageGivesNothing()
{
    QFETCH(QByteArray, bytes);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(readAll(write(QStringLiteral("list.m3u"), bytes)).size() < 100);
    QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
}

void TestM3u::countsDamagedLines()
{
    m3u::Reader reader(
        write(QStringLiteral("list.m3u"), "a.ogg\nb\x01.ogg\n# c\n" + QByteArray(100000, 'x') + "\nd.ogg\n"));
    PlaylistEntry entry;
    int entries = 0;
    for (m3u::Reader::Line line = m3u::Reader::Other; line != m3u::Reader::End; line = reader.readLine(entry))
        entries += line == m3u::Reader::Entry;
    QCOMPARE(entries, 2);
    QCOMPARE(reader.damagedCount(), 2);
    QCOMPARE(reader.error(), QString());
}

void TestM3u::titlesAreBounded()
{
    const Entries entries =
        readAll(write(QStringLiteral("list.m3u"), "#EXTINF:1," + QByteArray(20000, 't') + "\na.ogg\n"));
    QCOMPARE(entries.size(), 1);
    QCOMPARE(entries[0].title, QString(m3u::maxTitleLength, 't'));
}

void TestM3u::writesWhatItReads()
{
    const Entries entries{{path() + "/a.ogg", QString::fromUtf8("Mühle"), 65, true},
                          {path() + "/sub/b.ogg", QString(), -1, true},
                          {QStringLiteral("/elsewhere/c.ogg"), QStringLiteral("C"), -1, true},
                          {QStringLiteral("http://host/d.ogg"), QString(), -1, true}};
    const QString file = path() + "/list.m3u8";
    QCOMPARE(m3u::write(file, entries), QString());
    QFile written(file);
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll(), QByteArray("#EXTM3U\n#EXTINF:65,M\xc3\xbchle\na.ogg\nsub/b.ogg\n#EXTINF:-1,C\n"
                                           "/elsewhere/c.ogg\nhttp://host/d.ogg\n"));
    QCOMPARE(described(readAll(file), path()), described(entries, path()));
}

void TestM3u::writesRelativePaths()
{
    write(QStringLiteral("song.ogg"), QByteArray());
    QCOMPARE(m3u::write(path() + "/list.m3u", {{path() + "/song.ogg", QString(), -1, false}}), QString());
    // List and file move together.
    QVERIFY(QDir(path()).mkdir(QStringLiteral("moved")));
    QVERIFY(QFile::rename(path() + "/list.m3u", path() + "/moved/list.m3u"));
    QVERIFY(QFile::rename(path() + "/song.ogg", path() + "/moved/song.ogg"));
    const Entries entries = readAll(path() + "/moved/list.m3u");
    QCOMPARE(entries.size(), 1);
    QCOMPARE(entries[0].file, path() + "/moved/song.ogg");
    QVERIFY(!entries[0].isMissing);
}

void TestM3u::oddNamesComeBack_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"#1.ogg", " blank.ogg", "blank.ogg ", "new\nline.ogg", "tab\t.ogg", "back\\slash.ogg",
                             "per%20cent.ogg", "a:b.ogg", "http:.ogg", "quote\".ogg"})
        QTest::newRow(name) << QString::fromLatin1(name);
    QTest::newRow("Latin letters") << QString::fromUtf8("äöü.ogg");
    QTest::newRow("other scripts") << QString::fromUtf8("夜の散歩.ogg");
}

void TestM3u::oddNamesComeBack()
{
    QFETCH(QString, name);
    for (const QString& directory : {path(), QStringLiteral("/elsewhere")}) {
        const QString file = directory + '/' + name;
        QCOMPARE(m3u::write(path() + "/list.m3u", {{file, QStringLiteral("two\nlines"), 3, false}}), QString());
        const Entries entries = readAll(path() + "/list.m3u");
        QCOMPARE(entries.size(), 1);
        QCOMPARE(entries[0].file, file);
        QCOMPARE(entries[0].title, QStringLiteral("two lines"));
    }
}

void TestM3u::keepsTheOldFileWhereItCannotWrite()
{
    QVERIFY(!m3u::write(path() + "/none/list.m3u", Entries{}).isEmpty());
    // A directory in the way.
    QVERIFY(QDir(path()).mkdir(QStringLiteral("taken.m3u")));
    QVERIFY(!m3u::write(path() + "/taken.m3u", Entries{}).isEmpty());
    QCOMPARE(QDir(path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList{"taken.m3u"});
}

void TestM3u::manyEntriesTakeNoTime()
{
    Entries entries;
    for (int i = 0; i < 100000; ++i)
        entries.append({path() + QStringLiteral("/folder %1/song number %2.ogg").arg(i / 100).arg(i),
                        QStringLiteral("Song number %1").arg(i), i % 600, true});
    const QString file = path() + "/list.m3u8";
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(m3u::write(file, entries), QString());
    const qint64 writing = clock.restart();
    const Entries read = readAll(file);
    const qint64 reading = clock.elapsed();
    QCOMPARE(read.size(), entries.size());
    QCOMPARE(read.last().file, entries.last().file);
    QCOMPARE(read.last().title, entries.last().title);
    qInfo("100000 entries: writing %lld ms, reading %lld ms", writing, reading);
    QVERIFY(writing < 5000);
    QVERIFY(reading < 20000);
}

QTEST_GUILESS_MAIN(TestM3u)
#include "tst_m3u.moc"
