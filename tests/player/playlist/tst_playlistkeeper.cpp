#include "player/mediabackend.h"
#include "player/messagefilter.h"
#include "player/playback.h"
#include "player/playlist/playlistkeeper.h"
#include "player/playlist/playlistloader.h"
#include "player/soundfiles.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace
{

constexpr int patience = 30000;

/* What the program has of it from start to end. */
struct Session {
    explicit Session(const QString& directory)
        : keeper(&playback, &loader, directory),
          failed(&loader, SIGNAL(failed(QString)))
    {
    }

    bool restore()
    {
        return keeper.restore() && QTest::qWaitFor([this] { return !loader.isLoading(); }, patience);
    }

    Playback playback;
    PlaylistLoader loader{&playback};
    PlaylistKeeper keeper;
    QSignalSpy failed;
};

} // namespace

/* The playlist that fills itself in the background, and that is there again at the next start. */
class TestPlaylistKeeper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void nothingIsKeptAtFirst();
    void listAndPlaceComeBack();
    void comesBackAtTheFileWhereverItIs_data();
    void comesBackAtTheFileWhereverItIs();
    void savesSomeTimeAfterAChange();
    void emptyListIsKeptAsNone();
    void shippedSoundIsNotKept();
    void oddNamesComeBack();
    void missingFilesComeBack();
    void foldersAndPlaylistsInTheListAreNotRead();
    void damagedListIsPutAside_data();
    void damagedListIsPutAside();
    void damagedPositionDoesNoHarm_data();
    void damagedPositionDoesNoHarm();
    void unreadableListIsPutAside();
    void replacedListIsPutAside();
    void halfAListReplacesNothing();
    void stoppedRestoreIsPutAside();
    void directoryThatCannotBeMadeIsTold();
    void unchangedListIsNotWritten();
    void userMayPlayBeforeItIsBack();

    void openPlaysTheFirst();
    void openReplacesAndGoesOnReading();
    void openOfNothingLeavesTheList();
    void openDropsWhatIsRead();
    void addsInTheirOrder();
    void receiverMayDeleteTheLoader();

private:
    QString path() const { return m_directory->path(); }
    QString listFile() const { return m_directory->filePath("playlist.m3u8"); }
    QString asideFile() const { return m_directory->filePath("playlist-before.m3u8"); }
    static QByteArray read(const QString& name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void write(const QString& name, const QByteArray& bytes)
    {
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(name));
    }
    // A session that ends with these files and the one with that index current.
    void keep(const QStringList& files, int index)
    {
        Session session(path());
        session.playback.open(files);
        session.playback.playAt(index);
    }
    static QByteArray manyLines()
    {
        QByteArray lines;
        for (int i = 0; i < 300000; ++i)
            lines += "/none/" + QByteArray::number(i) + ".ogg\n";
        return lines;
    }

    SoundFiles m_sounds;
    QString m_a;
    QString m_b;
    QString m_c;
    // Quicker to open.
    const QStringList m_missing{QStringLiteral("/none/1.ogg"), QStringLiteral("/none/2.ogg")};
    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestPlaylistKeeper::initTestCase()
{
    mediabackend::choose();
    installMessageFilter();
    m_a = m_sounds.tone("a.wav", 20000);
    m_b = m_sounds.tone("b.wav", 20000);
    m_c = m_sounds.tone("c.wav", 20000);
}

void TestPlaylistKeeper::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void TestPlaylistKeeper::nothingIsKeptAtFirst()
{
    Session session(m_directory->filePath("none/yet"));
    QVERIFY(!session.keeper.restore());
    QVERIFY(!session.loader.isLoading());
}

void TestPlaylistKeeper::listAndPlaceComeBack()
{
    {
        Session session(m_directory->filePath("made/on/the/way"));
        session.playback.openEntries({{m_a, QString(), -1, false}, {m_b, QStringLiteral("Title"), 61, false}}, 1);
    }
    Session session(m_directory->filePath("made/on/the/way"));
    QVERIFY(session.restore());
    QCOMPARE(session.playback.files(), (QStringList{m_a, m_b}));
    QCOMPARE(session.playback.playlist()->at(1).title, QStringLiteral("Title"));
    QCOMPARE(session.playback.currentIndex(), 1);
    QVERIFY(session.playback.isPlaying());
    QCOMPARE(session.failed.count(), 0);
}

void TestPlaylistKeeper::comesBackAtTheFileWhereverItIs_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("index");
    QTest::newRow("in its place") << QStringList{"a", "b", "c"} << 1;
    QTest::newRow("elsewhere") << QStringList{"a", "c", "b"} << 2;
    QTest::newRow("gone") << QStringList{"a", "c"} << 1;
    QTest::newRow("gone from the end") << QStringList{"a"} << 0;
}

void TestPlaylistKeeper::comesBackAtTheFileWhereverItIs()
{
    QFETCH(QStringList, names);
    QFETCH(int, index);
    write(m_directory->filePath("position.ini"), "[current]\nindex=1\nfile=" + m_b.toUtf8() + '\n');
    QByteArray list;
    for (const QString& name : names)
        list += m_sounds.path(name + ".wav").toUtf8() + '\n';
    write(listFile(), list);
    Session session(path());
    QVERIFY(session.restore());
    QCOMPARE(session.playback.currentIndex(), index);
}

void TestPlaylistKeeper::savesSomeTimeAfterAChange()
{
    Session session(path());
    session.playback.open({QStringLiteral("/none/a.wav")});
    QVERIFY(!QFile::exists(listFile()));
    // A crash after that loses nothing.
    QTRY_VERIFY_WITH_TIMEOUT(read(listFile()).contains("a.wav"), patience);
    session.playback.playlist()->append({{m_b, QString(), -1, false}});
    QTRY_VERIFY_WITH_TIMEOUT(read(listFile()).contains("b.wav"), patience);
    QVERIFY(!QFile::exists(asideFile()));
}

void TestPlaylistKeeper::emptyListIsKeptAsNone()
{
    keep(m_missing, 0);
    QVERIFY(QFile::exists(listFile()));
    {
        Session session(path());
        QVERIFY(session.restore());
        session.playback.playlist()->remove({0, 1});
    }
    QVERIFY(!QFile::exists(listFile()));
    Session session(path());
    QVERIFY(!session.keeper.restore());
}

void TestPlaylistKeeper::shippedSoundIsNotKept()
{
    {
        Session session(path());
        session.keeper.setUnkeptFile(m_a);
        session.playback.open({m_a});
    }
    QVERIFY(!QFile::exists(listFile()));
}

void TestPlaylistKeeper::oddNamesComeBack()
{
    const QStringList files{"/m/#1.ogg", "/m/ blank .ogg", "/m/new\nline.ogg", QString::fromUtf8("/m/夜の散歩.ogg")};
    {
        Session session(path());
        QList<PlaylistEntry> entries;
        for (const QString& file : files)
            entries.append({file, QString(), -1, true});
        session.playback.playlist()->replace(entries);
    }
    Session session(path());
    QVERIFY(session.restore());
    QCOMPARE(session.playback.files(), files);
}

void TestPlaylistKeeper::missingFilesComeBack()
{
    keep({m_a, m_sounds.path("gone.wav"), m_b}, 0);
    Session session(path());
    QVERIFY(session.restore());
    QCOMPARE(session.playback.files(), (QStringList{m_a, m_sounds.path("gone.wav"), m_b}));
    QVERIFY(session.playback.playlist()->at(1).isMissing);
}

void TestPlaylistKeeper::foldersAndPlaylistsInTheListAreNotRead()
{
    const QString inner = m_sounds.file("inner.m3u", "a.wav\n");
    write(listFile(), inner.toUtf8() + '\n' + m_sounds.path(".").toUtf8() + '\n');
    Session session(path());
    QVERIFY(session.restore());
    QCOMPARE(session.playback.playlist()->count(), 2);
}

void TestPlaylistKeeper::damagedListIsPutAside_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("count");
    QTest::newRow("zeros") << QByteArray(100000, '\0') << 0;
    QTest::newRow("zeros at the end") << m_sounds.path("a.wav").toUtf8() + '\n' + QByteArray(5000, '\0') << 1;
    QTest::newRow("a line without end") << m_sounds.path("a.wav").toUtf8() + '\n' + QByteArray(500000, 'x') << 1;
}

void TestPlaylistKeeper::damagedListIsPutAside()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, count);
    write(listFile(), bytes);
    {
        Session session(path());
        QVERIFY(session.restore());
        QCOMPARE(session.playback.playlist()->count(), count);
        QCOMPARE(session.failed.count(), 1);
        QVERIFY(session.failed[0][0].toString().contains(listFile()));
        session.playback.playlist()->append({{m_b, QString(), -1, false}});
    }
    QCOMPARE(read(asideFile()), bytes);
    Session session(path());
    QVERIFY(session.restore());
    QCOMPARE(session.playback.playlist()->count(), count + 1);
    QCOMPARE(session.failed.count(), 0);
}

void TestPlaylistKeeper::damagedPositionDoesNoHarm_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("zeros") << QByteArray(1000, '\0');
    QTest::newRow("too large") << QByteArray("[current]\nindex=99999999999\nfile=x\n");
    QTest::newRow("negative") << QByteArray("[current]\nindex=-5\nfile=\n");
    QTest::newRow("no number") << QByteArray("[current]\nindex=@Variant(x)\nfile[=\n");
}

void TestPlaylistKeeper::damagedPositionDoesNoHarm()
{
    QFETCH(QByteArray, bytes);
    keep(m_missing, 0);
    write(m_directory->filePath("position.ini"), bytes);
    Session session(path());
    QVERIFY(session.restore());
    QCOMPARE(session.playback.files(), m_missing);
    QVERIFY(session.playback.currentIndex() >= 0);
}

void TestPlaylistKeeper::unreadableListIsPutAside()
{
    // A directory in the place of the file cannot be read by anybody.
    QVERIFY(QDir(path()).mkpath("playlist.m3u8/inside"));
    {
        Session session(path());
        QVERIFY(session.restore());
        QCOMPARE(session.failed.count(), 1);
        session.playback.open(m_missing);
    }
    QVERIFY(QDir(asideFile() + "/inside").exists());
    Session session(path());
    QVERIFY(session.restore());
    QCOMPARE(session.playback.files(), m_missing);
}

void TestPlaylistKeeper::replacedListIsPutAside()
{
    keep(m_missing, 0);
    const QByteArray before = read(listFile());
    keep({QStringLiteral("/none/c.wav")}, 0);
    QCOMPARE(read(asideFile()), before);
    QVERIFY(read(listFile()).contains("c.wav"));
    // What came back is the user's to change.
    {
        Session session(path());
        QVERIFY(session.restore());
        session.playback.open(m_missing);
    }
    QCOMPARE(read(asideFile()), before);
}

void TestPlaylistKeeper::halfAListReplacesNothing()
{
    const QByteArray list = manyLines();
    write(listFile(), list);
    {
        Session session(path());
        QVERIFY(session.keeper.restore());
        QTRY_VERIFY(session.playback.playlist()->count() > 0);
        QVERIFY(session.loader.isRestoring());
        session.keeper.save();
    }
    QCOMPARE(read(listFile()), list);
    QVERIFY(!QFile::exists(asideFile()));
}

void TestPlaylistKeeper::stoppedRestoreIsPutAside()
{
    const QByteArray list = manyLines();
    write(listFile(), list);
    {
        Session session(path());
        QVERIFY(session.keeper.restore());
        QTRY_VERIFY(session.playback.playlist()->count() > 0);
        session.loader.cancel();
    }
    QCOMPARE(read(asideFile()), list);
}

void TestPlaylistKeeper::directoryThatCannotBeMadeIsTold()
{
    write(m_directory->filePath("file"), "x");
    Session session(m_directory->filePath("file/below"));
    QSignalSpy failed(&session.keeper, &PlaylistKeeper::failed);
    session.playback.open({m_a});
    session.keeper.save();
    QCOMPARE(failed.count(), 1);
    QVERIFY(failed[0][0].toString().contains(QStringLiteral("file/below")));
    QCOMPARE(session.playback.files(), QStringList{m_a});
}

void TestPlaylistKeeper::unchangedListIsNotWritten()
{
    keep(m_missing, 0);
    const QDateTime longAgo = QDateTime::currentDateTime().addDays(-10);
    {
        QFile file(listFile());
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(longAgo, QFileDevice::FileModificationTime));
    }
    {
        Session session(path());
        QVERIFY(session.restore());
    }
    QVERIFY(qAbs(QFileInfo(listFile()).lastModified().secsTo(longAgo)) < 5);
}

void TestPlaylistKeeper::userMayPlayBeforeItIsBack()
{
    write(listFile(), m_a.toUtf8() + '\n' + manyLines() + m_b.toUtf8() + '\n');
    write(m_directory->filePath("position.ini"), "[current]\nindex=300001\nfile=" + m_b.toUtf8() + '\n');
    Session session(path());
    QVERIFY(session.keeper.restore());
    QTRY_VERIFY(session.playback.playlist()->count() > 0);
    session.playback.playAt(0);
    QTRY_VERIFY_WITH_TIMEOUT(!session.loader.isLoading(), patience);
    QCOMPARE(session.playback.playlist()->count(), 300002);
    QCOMPARE(session.playback.currentFile(), m_a);
}

void TestPlaylistKeeper::openPlaysTheFirst()
{
    Session session(path());
    session.loader.open({m_b, m_a});
    QVERIFY(session.loader.isLoading());
    QVERIFY(session.playback.playlist()->isGrowing());
    QTRY_VERIFY(!session.loader.isLoading());
    QVERIFY(!session.playback.playlist()->isGrowing());
    QCOMPARE(session.playback.files(), (QStringList{m_b, m_a}));
    QCOMPARE(session.playback.currentIndex(), 0);
    QVERIFY(session.playback.isPlaying());
}

void TestPlaylistKeeper::openReplacesAndGoesOnReading()
{
    const QString list = m_sounds.file("many.m3u", "a.wav\n" + manyLines());
    Session session(path());
    session.playback.open({m_b, m_c});
    session.loader.open({list});
    QTRY_COMPARE(session.playback.currentFile(), m_a);
    QVERIFY(session.loader.isLoading());
    QTRY_COMPARE_WITH_TIMEOUT(session.playback.playlist()->count(), 300001, patience);
    QCOMPARE(session.playback.currentIndex(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(!session.loader.isLoading(), patience);
}

void TestPlaylistKeeper::openOfNothingLeavesTheList()
{
    Session session(path());
    session.playback.open({m_a});
    session.loader.open({path()});
    QTRY_VERIFY(!session.loader.isLoading());
    QCOMPARE(session.playback.files(), QStringList{m_a});
    QVERIFY(session.playback.isPlaying());
    QCOMPARE(session.failed.count(), 1);
    session.loader.open({});
    QVERIFY(!session.loader.isLoading());
}

void TestPlaylistKeeper::openDropsWhatIsRead()
{
    Session session(path());
    session.loader.add({m_sounds.file("many.m3u", manyLines())});
    QTRY_VERIFY(session.playback.playlist()->count() > 0);
    session.loader.open({m_a});
    QTRY_VERIFY(!session.loader.isLoading());
    QCOMPARE(session.playback.files(), QStringList{m_a});
}

void TestPlaylistKeeper::addsInTheirOrder()
{
    Session session(path());
    session.loader.add({m_a});
    session.loader.add({m_b});
    session.loader.add({m_c});
    QTRY_VERIFY(!session.loader.isLoading());
    QCOMPARE(session.playback.files(), (QStringList{m_a, m_b, m_c}));
    QVERIFY(!session.playback.isPlaying());
    QCOMPARE(session.loader.foundCount(), 3);
}

void TestPlaylistKeeper::receiverMayDeleteTheLoader()
{
    Playback playback;
    auto* loader = new PlaylistLoader(&playback);
    connect(&playback, &Playback::currentChanged, this, [&loader] { delete std::exchange(loader, nullptr); });
    loader->open({m_a, m_b});
    QTRY_VERIFY(!loader);
    QVERIFY(playback.isPlaying());
}

QTEST_GUILESS_MAIN(TestPlaylistKeeper)
#include "tst_playlistkeeper.moc"
