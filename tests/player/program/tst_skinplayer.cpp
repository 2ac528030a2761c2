#include "player/soundfiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QProcess>
#include <QTest>
#include <QUrl>

/* The program as a user starts it. */
class TestSkinplayer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void helpNamesEveryOption();
    void versionIsThatOfTheProject();
    void badOptionsFail_data();
    void badOptionsFail();
    void unknownSkinIsTold_data();
    void unknownSkinIsTold();
    void skinWithoutPanelIsTold();
    void screenshotShowsThePlayer();
    void orderOfTheLastTimeComesBack();
    void screenshotOfTheDetails();
    void screenshotOfThePlaylist();
    void playlistIsThereAtTheNextStart();
    void playlistFileIsRead();
    void addressOfAFileIsRead();
    void folderIsRead();
    void screenshotAtAPosition_data();
    void screenshotAtAPosition();
    void screenshotThatCannotBeWrittenFails_data();
    void screenshotThatCannotBeWrittenFails();
    void quitAfterEndsTheProgram();
    void silentPlaybackIsToldOnce();
    void unplayableFilesAreToldOnce();

private:
    struct Result {
        int exitCode = -1;
        QByteArray out;
        QByteArray err;
    };
    static Result run(const QStringList& arguments);
    static Result run(const QStringList& arguments, const QProcessEnvironment& environment);
    QString keptList() const { return m_files.path("data/skinplayer/playlist.m3u8"); }
    static QByteArray read(const QString& name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    SoundFiles m_files;
};

TestSkinplayer::Result TestSkinplayer::run(const QStringList& arguments)
{
    return run(arguments, QProcessEnvironment::systemEnvironment());
}

TestSkinplayer::Result TestSkinplayer::run(const QStringList& arguments, const QProcessEnvironment& environment)
{
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(SKINPLAYER_PROGRAM), arguments);
    if (!program.waitForFinished(20000) || program.exitStatus() != QProcess::NormalExit) {
        program.kill();
        program.waitForFinished();
        return {-1, program.readAllStandardOutput(), program.readAllStandardError()};
    }
    return {program.exitCode(), program.readAllStandardOutput(), program.readAllStandardError()};
}

void TestSkinplayer::initTestCase()
{
    // Qt tells on stderr where it has to think of a place for run-time files.
    qputenv("XDG_RUNTIME_DIR", m_files.path(QString()).toLocal8Bit());
    // Not the user's own settings.
    qputenv("XDG_CONFIG_HOME", m_files.path("config").toLocal8Bit());
    // The playlist that the user of this machine keeps is nothing to play with.
    qputenv("XDG_DATA_HOME", m_files.path(QStringLiteral("data")).toLocal8Bit());
}

void TestSkinplayer::helpNamesEveryOption()
{
    const Result result = run({"--help"});
    QCOMPARE(result.exitCode, 0);
    for (const char* option : {"--skin", "--screenshot", "--quit-after", "--position", "--screen", "--no-kept-playlist",
                               "--version", "[files...]"})
        QVERIFY2(result.out.contains(option), option);
    for (const char* key : {"Left, Right, Return", "Page Up, Shift+Left", "Page Down, Shift+Right", "Up, Down", "  M ",
                            "  S, R ", "B, Insert", "Delete, Backspace", "  I ", "  P ", "Escape", "Home, End",
                            "Insert, Delete", "Ctrl+S", "Ctrl+F"})
        QVERIFY2(result.out.contains(key), key);
}

void TestSkinplayer::versionIsThatOfTheProject()
{
    const Result result = run({"--version"});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.out.trimmed(), QByteArray("skinplayer " SKINPLAYER_VERSION));
}

void TestSkinplayer::badOptionsFail_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("told");
    QTest::newRow("unknown") << QStringList{"--loud"} << QByteArray("loud");
    QTest::newRow("no value") << QStringList{"--skin"} << QByteArray("skin");
    QTest::newRow("seconds in words") << QStringList{"--quit-after", "soon"} << QByteArray("soon");
    QTest::newRow("negative seconds") << QStringList{"--quit-after=-1"} << QByteArray("-1");
    QTest::newRow("not a number") << QStringList{"--quit-after", "nan"} << QByteArray("nan");
    QTest::newRow("position in words") << QStringList{"--position", "middle"} << QByteArray("middle");
    QTest::newRow("unknown screen") << QStringList{"--screen", "silver"} << QByteArray("silver");
    QTest::newRow("screenshot without a name") << QStringList{"--screenshot", ""} << QByteArray("--screenshot");
}

void TestSkinplayer::badOptionsFail()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, told);
    const Result result = run(arguments);
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.err.contains(told), result.err);
}

void TestSkinplayer::unknownSkinIsTold_data()
{
    QTest::addColumn<QString>("skin");
    QTest::newRow("no such name") << QStringLiteral("noon");
    QTest::newRow("empty") << QString();
    QTest::newRow("path") << QStringLiteral("../pics/night");
}

void TestSkinplayer::unknownSkinIsTold()
{
    QFETCH(QString, skin);
    const Result result = run({"--skin", skin});
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.contains('"' + skin.toLatin1() + '"'), result.err);
    QVERIFY2(result.err.contains("night"), result.err);
}

void TestSkinplayer::skinWithoutPanelIsTold()
{
    QTemporaryDir root;
    QVERIFY(QDir(root.path()).mkpath(QStringLiteral("pics/bare")));
    QVERIFY(QFile(root.filePath(QStringLiteral("pics/bare/config"))).open(QIODevice::WriteOnly));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QPEDIR"), root.path());
    const Result result = run({"--skin", "bare"}, environment);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.contains("\"bare\" has no player panel"), result.err);
}

void TestSkinplayer::screenshotShowsThePlayer()
{
    const QString file = m_files.path("player.png");
    const Result result = run({"--screenshot", file});
    QCOMPARE(result.exitCode, 0);
    const QImage picture(file);
    QCOMPARE(picture.size(), QSize(480, 272));
    // Where no button lies the picture is the skin's background.
    const QImage background(qEnvironmentVariable("QPEDIR") + QStringLiteral("pics/night/player_bg.png"));
    QCOMPARE(picture.pixelColor(5, 5).rgb(), background.pixelColor(5, 5).rgb());

    // It plays, so the button in the middle is pause, focused.
    const QImage strip(qEnvironmentVariable("QPEDIR") + QStringLiteral("pics/night/pause.png"));
    const int width = strip.width() / 4;
    int compared = 0;
    for (int y = 0; y < strip.height(); ++y) {
        for (int x = 0; x < width; ++x) {
            const QRgb pixel = strip.pixel(2 * width + x, y);
            if (qAlpha(pixel) != 255)
                continue;
            QCOMPARE(picture.pixel(172 + x, 187 + y), pixel);
            ++compared;
        }
    }
    QVERIFY(compared > 100);
}

void TestSkinplayer::orderOfTheLastTimeComesBack()
{
    QVERIFY(QDir().mkpath(m_files.path("config/skinplayer")));
    const QString settings = m_files.file("config/skinplayer/settings.ini", "[order]\nshuffle=true\n");
    const QString file = m_files.path("player.png");
    const Result result = run({"--screenshot", file});
    QVERIFY(QFile::remove(settings));
    QCOMPARE(result.exitCode, 0);
    const QImage picture(file);
    const QString pictures = qEnvironmentVariable("QPEDIR") + QStringLiteral("pics/skinplayer/");
    const auto shown = [&picture](const QPoint& at, const QString& name) {
        const QImage button = QImage(name).convertToFormat(QImage::Format_RGB32);
        return picture.copy(QRect(at, button.size())).convertToFormat(QImage::Format_RGB32) == button;
    };
    QVERIFY(shown(QPoint(22, 214), pictures + QStringLiteral("shuffle_normal2.png")));
    QVERIFY(shown(QPoint(58, 214), pictures + QStringLiteral("repeat_normal.png")));
}

void TestSkinplayer::screenshotOfTheDetails()
{
    // With the tags and the cover of the file, however late they become known.
    QImage cover(104, 104, QImage::Format_RGB32);
    cover.fill(Qt::green);
    QVERIFY(cover.save(m_files.path("cover.png")));
    const QString file = m_files.path("details.png");
    const Result result = run({"--screen", "details", "--screenshot", file, m_files.tone("song.wav", 20000)});
    QVERIFY(QFile::remove(m_files.path("cover.png")));
    QCOMPARE(result.exitCode, 0);
    const QImage picture(file);
    QCOMPARE(picture.size(), QSize(480, 272));
    QCOMPARE(picture.copy(16, 39, 104, 104).convertToFormat(QImage::Format_RGB32), cover);
    const QImage background(qEnvironmentVariable("QPEDIR") + QStringLiteral("pics/night/list_bg.png"));
    QCOMPARE(picture.pixelColor(400, 10).rgb(), background.pixelColor(400, 10).rgb());
}

void TestSkinplayer::screenshotOfThePlaylist()
{
    const QString file = m_files.path("playlist.png");
    const QString tone = m_files.tone("song.wav", 20000);
    const Result result = run({"--screen", "playlist", "--screenshot", file, tone, tone});
    QCOMPARE(result.exitCode, 0);
    const QImage picture(file);
    QCOMPARE(picture.size(), QSize(480, 272));
    // The first of two entries plays and is selected; below them there is the skin's ground.
    QCOMPARE(picture.pixelColor(300, 37), QColor(0xff, 0x66, 0x00));
    const QImage background(qEnvironmentVariable("QPEDIR") + QStringLiteral("pics/night/playlist_bg.png"));
    QCOMPARE(picture.pixelColor(300, 61).rgb(), background.pixelColor(300, 61).rgb());
    QCOMPARE(picture.pixelColor(300, 150).rgb(), background.pixelColor(300, 150).rgb());
}

void TestSkinplayer::playlistIsThereAtTheNextStart()
{
    const QString a = m_files.tone("a.wav", 20000);
    const QString b = m_files.tone("b.wav", 20000);
    QCOMPARE(run({"--quit-after", "1", a, b}).exitCode, 0);
    const QByteArray kept = read(keptList());
    QVERIFY2(kept.contains(a.toUtf8()) && kept.contains(b.toUtf8()), kept);
    // Without files it comes back, and stays.
    QCOMPARE(run({"--quit-after", "1"}).exitCode, 0);
    QCOMPARE(read(keptList()).count(".wav"), 2);
    // Whoever does not want that leaves it alone.
    QCOMPARE(run({"--quit-after", "1", "--no-kept-playlist", b}).exitCode, 0);
    QCOMPARE(read(keptList()).count(".wav"), 2);
    // Zeros in it are told, and lose nothing.
    m_files.file("data/skinplayer/playlist.m3u8", QByteArray(1000, '\0'));
    const Result result = run({"--quit-after", "1"});
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.err.contains("playlist.m3u8"), result.err);
    QCOMPARE(read(m_files.path("data/skinplayer/playlist-before.m3u8")), QByteArray(1000, '\0'));
}

void TestSkinplayer::playlistFileIsRead()
{
    const QString a = m_files.tone("a.wav", 20000);
    const QString list =
        m_files.file("list.m3u", "\xef\xbb\xbf#EXTM3U\r\n#EXTINF:20,The title\r\na.wav\r\ngone.wav\r\n");
    QCOMPARE(run({"--quit-after", "1", list}).exitCode, 0);
    const QByteArray kept = read(keptList());
    QVERIFY2(kept.contains("#EXTINF:20,The title\n" + a.toUtf8() + '\n'), kept);
    QVERIFY2(kept.contains("/gone.wav\n"), kept);
}

void TestSkinplayer::addressOfAFileIsRead()
{
    const QString sound = m_files.tone("a song.wav", 20000);
    QCOMPARE(run({"--quit-after", "1", QUrl::fromLocalFile(sound).toString(QUrl::FullyEncoded)}).exitCode, 0);
    const QByteArray kept = read(keptList());
    QVERIFY2(kept.contains('\n' + sound.toUtf8() + '\n'), kept);
}

void TestSkinplayer::folderIsRead()
{
    QVERIFY(QDir().mkpath(m_files.path("folder/deep")));
    const QString two = m_files.tone("folder/2.wav", 20000);
    const QString ten = m_files.tone("folder/10.wav", 20000);
    const QString deep = m_files.tone("folder/deep/1.wav", 20000);
    m_files.text("folder/read me.txt");
    QCOMPARE(run({"--quit-after", "1", m_files.path("folder")}).exitCode, 0);
    const QByteArray kept = read(keptList());
    QCOMPARE(kept.count(".wav"), 3);
    QCOMPARE(kept.count(".txt"), 0);
    QVERIFY(kept.indexOf(two.toUtf8()) < kept.indexOf(ten.toUtf8()));
    QVERIFY(kept.indexOf(ten.toUtf8()) < kept.indexOf(deep.toUtf8()));
}

void TestSkinplayer::screenshotAtAPosition_data()
{
    QTest::addColumn<QByteArray>("position");
    QTest::addColumn<bool>("isPlayed");
    QTest::newRow("start") << QByteArray("0") << false;
    QTest::newRow("before the middle") << QByteArray("6") << false;
    QTest::newRow("behind the middle") << QByteArray("14") << true;
}

void TestSkinplayer::screenshotAtAPosition()
{
    QFETCH(QByteArray, position);
    QFETCH(bool, isPlayed);
    const QString file = m_files.path("position.png");
    const Result result = run({"--screenshot", file, "--position", position});
    QCOMPARE(result.exitCode, 0);
    const QImage picture(file);
    QCOMPARE(picture.size(), QSize(480, 272));
    // The middle of the groove, which is blue where it is not played and orange where it is.
    const QColor middle = picture.pixelColor(240, 162);
    QCOMPARE(middle.red() > middle.blue(), isPlayed);
}

void TestSkinplayer::screenshotThatCannotBeWrittenFails_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("no directory") << QStringLiteral("no such directory/player.png") << QByteArray("No such file");
    QTest::newRow("no format of pictures") << QStringLiteral("player.nothing") << QByteArray("nsupported image format");
}

void TestSkinplayer::screenshotThatCannotBeWrittenFails()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, reason);
    const QString file = m_files.path(name);
    const Result result = run({"--screenshot", file});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.err.contains("cannot write " + file.toLocal8Bit() + ": "), result.err);
    QVERIFY2(result.err.contains(reason), result.err);
    QVERIFY(!QFile::exists(file));
}

void TestSkinplayer::quitAfterEndsTheProgram()
{
    QElapsedTimer clock;
    clock.start();
    const Result result = run({"--quit-after", "0.5"});
    QCOMPARE(result.exitCode, 0);
    QVERIFY(clock.elapsed() >= 500);
}

void TestSkinplayer::silentPlaybackIsToldOnce()
{
    const QString tone = m_files.tone("tone.wav", 100);
    const Result result = run({"--quit-after", "1", tone, tone});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.err, QByteArray("skinplayer: no sound device found, playing silently\n"));
}

void TestSkinplayer::unplayableFilesAreToldOnce()
{
    const QString text = m_files.text("text.ogg");
    const Result result = run({"--quit-after", "1", text, "missing.ogg", text});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.err.count("text.ogg"), 1);
    QCOMPARE(result.err.count("missing.ogg"), 1);
    QCOMPARE(result.err.count('\n'), 3);
}

QTEST_GUILESS_MAIN(TestSkinplayer)
#include "tst_skinplayer.moc"
