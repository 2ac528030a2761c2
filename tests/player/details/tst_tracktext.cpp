#include "player/details/tracktext.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/* Lyrics and notes beside a sound file. */
class TestTrackText : public QObject
{
    Q_OBJECT

private slots:
    void decodes_data();
    void decodes();
    void cleans_data();
    void cleans();
    void readsStamps_data();
    void readsStamps();
    void boundsRepeatedLines();
    void tellsTheLineThatIsDue();
    void findsTheFileBeside_data();
    void findsTheFileBeside();
    void tellsTheStateOfAFile_data();
    void tellsTheStateOfAFile();
    void readsNoMoreThanTheLimit_data();
    void readsNoMoreThanTheLimit();
    void readsNoPipeAndNoDirectory();

private:
    QString write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(m_directory.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
        return file.fileName();
    }

    QTemporaryDir m_directory;
};

namespace
{

QByteArray randomBytes(int count)
{
    QByteArray bytes;
    quint32 state = 1;
    for (int i = 0; i < count; ++i) {
        state = state * 1664525 + 1013904223;
        bytes += char(state >> 24);
    }
    return bytes;
}

} // namespace

void TestTrackText::decodes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isWhole");
    QTest::addColumn<bool>("isText");
    QTest::addColumn<QString>("text");
    const QString umlaut = QStringLiteral("gr\u00fcn");
    QTest::newRow("nothing") << QByteArray() << true << true << QString();
    QTest::newRow("UTF-8") << QByteArray("gr\xc3\xbcn") << true << true << umlaut;
    QTest::newRow("UTF-8 with its mark") << QByteArray("\xef\xbb\xbfgr\xc3\xbcn") << true << true << umlaut;
    QTest::newRow("Latin-1") << QByteArray("gr\xfcn") << true << true << umlaut;
    QTest::newRow("Latin-1 to the last byte") << QByteArray("gr\xfc") << true << true << QStringLiteral("gr\u00fc");
    QTest::newRow("UTF-16 with its mark") << QByteArray("\xff\xfeg\0r\0\xfc\0n\0", 10) << true << true << umlaut;
    QTest::newRow("cut within a character") << QByteArray("gr\xc3") << false << true << QStringLiteral("gr");
    QTest::newRow("zero byte") << QByteArray("a\0b", 3) << true << false << QString();
    QTest::newRow("few control characters")
        << QByteArray("a verse with one \x02 in it") << true << true << QStringLiteral("a verse with one \u0002 in it");
    QTest::newRow("many control characters") << QByteArray("\x01\x02 ab\x03\x04") << true << false << QString();
    QTest::newRow("noise") << randomBytes(5000).replace('\0', 'x') << true << false << QString();
}

void TestTrackText::decodes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isWhole);
    QFETCH(bool, isText);
    QFETCH(QString, text);
    const auto decoded = tracktext::decoded(bytes, isWhole);
    QCOMPARE(decoded.has_value(), isText);
    if (decoded)
        QCOMPARE(*decoded, text);
}

void TestTrackText::cleans_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("clean");
    QTest::newRow("unix lines") << QStringLiteral("a\n\nb\n") << QStringLiteral("a\n\nb\n");
    QTest::newRow("DOS lines") << QStringLiteral("a\r\n\r\nb\r\n") << QStringLiteral("a\n\nb\n");
    QTest::newRow("old lines") << QStringLiteral("a\r\rb\r") << QStringLiteral("a\n\nb\n");
    QTest::newRow("separators") << QStringLiteral("a\u2028b\u2029c\fd\ve") << QStringLiteral("a\nb\nc\nd\ne");
    QTest::newRow("tab") << QStringLiteral("a\tb") << QStringLiteral("a    b");
    QTest::newRow("controls") << QStringLiteral("a\u0001\u001b[1mb\u009f") << QStringLiteral("a[1mb");
    QTest::newRow("mark in the middle") << QStringLiteral("a\ufeffb") << QStringLiteral("ab");
}

void TestTrackText::cleans()
{
    QFETCH(QString, text);
    QFETCH(QString, clean);
    QCOMPARE(tracktext::cleaned(text), clean);
}

void TestTrackText::readsStamps_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<qint64>>("times");
    using Times = QList<qint64>;
    QTest::newRow("hundredths") << "[00:01.05]a\n[01:02.50]b"
                                << "a\nb" << Times{1050, 62500};
    QTest::newRow("seconds, tenths, thousandths") << "[0:01]a\n[0:01.5]b\n[0:01.505]c"
                                                  << "a\nb\nc" << Times{1000, 1500, 1505};
    QTest::newRow("colon before the hundredths") << "[00:01:05]a"
                                                 << "a" << Times{1050};
    QTest::newRow("chorus") << "[00:01][00:05]chorus\n[00:03]verse"
                            << "chorus\nverse\nchorus" << Times{1000, 3000, 5000};
    QTest::newRow("blanks around") << "  [00:01] [00:02]  a  "
                                   << "a\na" << Times{1000, 2000};
    QTest::newRow("break") << "[00:01]a\n[00:02]\n[00:03]b"
                           << "a\n\nb" << Times{1000, 2000, 3000};
    QTest::newRow("equal times keep their order") << "[00:01]a\n[00:01]b"
                                                  << "a\nb" << Times{1000, 1000};
    QTest::newRow("headings") << "[ti:Title]\n[AR: Someone]\n[#:x]\n[00:01]a"
                              << "a" << Times{1000};
    QTest::newRow("other brackets") << "[00:01]a\n[Chorus: all]\n[x]"
                                    << "a\n[Chorus: all]\n[x]" << Times{1000, 1000, 1000};
    QTest::newRow("line without a stamp follows") << "[00:09]b\nand c\n[00:01]a"
                                                  << "a\nb\nand c" << Times{1000, 9000, 9000};
    QTest::newRow("offset") << "[offset:+500]\n[00:01]a\n[00:00.20]b"
                            << "b\na" << Times{0, 500};
    QTest::newRow("offset to later") << "[offset:-500]\n[00:01]a"
                                     << "a" << Times{1500};
    QTest::newRow("offset in words") << "[offset:soon]\n[00:01]a"
                                     << "a" << Times{1000};
    QTest::newRow("words") << "[00:01]<00:01.00>one <00:01.50>two"
                           << "one two" << Times{1000};
    QTest::newRow("angles that are none") << "[00:01]a <3 b <b> <00:x>"
                                          << "a <3 b <b> <00:x>" << Times{1000};
    QTest::newRow("no stamps at all") << "b\na\n[ti:T]\n"
                                      << "b\na\n"
                                      << Times{};
    QTest::newRow("half stamps") << "[00:]a\n[00:01b\n[:01]c\n[00:01.]d\n[00:01.1234]e"
                                 << "[00:]a\n[00:01b\n[:01]c\n[00:01.]d\n[00:01.1234]e" << Times{};
    QTest::newRow("numbers too long") << "[123456789:00]a\n[00:123]b"
                                      << "[123456789:00]a\n[00:123]b" << Times{};
    QTest::newRow("nothing") << ""
                             << "" << Times{};
}

void TestTrackText::readsStamps()
{
    QFETCH(QString, source);
    QFETCH(QString, text);
    QFETCH(QList<qint64>, times);
    TrackText read;
    read.text = source;
    tracktext::readStamps(read);
    QCOMPARE(read.text, text);
    QCOMPARE(read.times, times);
}

void TestTrackText::boundsRepeatedLines()
{
    // A long line, sung so often that the text would need a thousand million characters.
    TrackText read;
    read.text = QStringLiteral("[00:01]").repeated(10000) + QString(100000, QLatin1Char('a'));
    tracktext::readStamps(read);
    QVERIFY(read.text.size() > TrackText::largestFile);
    QVERIFY(read.text.size() <= 2 * TrackText::largestFile);
    QCOMPARE(read.times.size(), read.text.count(QLatin1Char('\n')) + 1);
}

void TestTrackText::tellsTheLineThatIsDue()
{
    TrackText text;
    QCOMPARE(text.lineAt(5), -1);
    text.times = {1000, 2000, 2000, 3000};
    QCOMPARE(text.lineAt(0), -1);
    QCOMPARE(text.lineAt(999), -1);
    QCOMPARE(text.lineAt(1000), 0);
    QCOMPARE(text.lineAt(2000), 2);
    QCOMPARE(text.lineAt(2999), 2);
    QCOMPARE(text.lineAt(std::numeric_limits<qint64>::max()), 3);
}

void TestTrackText::findsTheFileBeside_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("sound");
    QTest::addColumn<QString>("found");
    QTest::newRow("none") << QStringList{"a.ogg"} << "a.ogg"
                          << "";
    QTest::newRow("text") << QStringList{"b.ogg", "b.txt"} << "b.ogg"
                          << "b.txt";
    QTest::newRow("lyrics before text") << QStringList{"c.ogg", "c.txt", "c.lrc"} << "c.ogg"
                                        << "c.lrc";
    QTest::newRow("capitals") << QStringList{"d.ogg", "d.LRC"} << "d.ogg"
                              << "d.LRC";
    QTest::newRow("dots in the name") << QStringList{"e.f.ogg", "e.f.txt", "e.txt"} << "e.f.ogg"
                                      << "e.f.txt";
    QTest::newRow("other name") << QStringList{"g.ogg", "gg.txt"} << "g.ogg"
                                << "";
    QTest::newRow("the text itself") << QStringList{"h.txt"} << "h.txt"
                                     << "";
}

void TestTrackText::findsTheFileBeside()
{
    QFETCH(QStringList, files);
    QFETCH(QString, sound);
    QFETCH(QString, found);
    for (const QString& file : files)
        write(file, "words");
    const TrackText text = TrackText::beside(m_directory.filePath(sound));
    QCOMPARE(text.fileName, found);
    QCOMPARE(text.state, found.isEmpty() ? TrackText::Missing : TrackText::Complete);
    QCOMPARE(text.hasText(), !found.isEmpty());
}

void TestTrackText::tellsTheStateOfAFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<TrackText::State>("state");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<qint64>>("times");
    using Times = QList<qint64>;
    QTest::newRow("empty") << "a.txt" << QByteArray() << TrackText::Empty << "" << Times{};
    QTest::newRow("blank") << "a.txt" << QByteArray(" \n\t\r\n ") << TrackText::Empty << "" << Times{};
    QTest::newRow("nothing but headings")
        << "a.lrc" << QByteArray("[ti:T]\n[ar:A]") << TrackText::Empty << "" << Times{};
    QTest::newRow("nothing but stamps") << "a.lrc" << QByteArray("[00:01]\n[00:02]") << TrackText::Empty << ""
                                        << Times{};
    QTest::newRow("binary") << "a.txt" << randomBytes(4096) << TrackText::NoText << "" << Times{};
    QTest::newRow("blank lines at the ends")
        << "a.txt" << QByteArray("\n \n  a\n\nb \n\n") << TrackText::Complete << "  a\n\nb" << Times{};
    QTest::newRow("stamps") << "a.lrc" << QByteArray("[ti:T]\n\n[00:01]\n[00:02]a\n[00:03]b\n[00:04]")
                            << TrackText::Complete << "a\nb" << Times{2000, 3000};
    QTest::newRow("stamps in a text") << "a.txt" << QByteArray("[00:01]a") << TrackText::Complete << "[00:01]a"
                                      << Times{};
}

void TestTrackText::tellsTheStateOfAFile()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(TrackText::State, state);
    QFETCH(QString, text);
    QFETCH(QList<qint64>, times);
    const TrackText read = TrackText::read(write(name, bytes));
    QCOMPARE(read.state, state);
    QCOMPARE(read.text, text);
    QCOMPARE(read.times, times);
    QCOMPARE(read.fileName, name);
}

void TestTrackText::readsNoMoreThanTheLimit_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<TrackText::State>("state");
    QTest::addColumn<qsizetype>("size");
    const qsizetype limit = TrackText::largestFile;
    const QByteArray line = QByteArray(98, 'x') + '\n';
    QTest::newRow("exactly") << QByteArray(limit, 'x') << TrackText::Complete << limit;
    QTest::newRow("one more") << QByteArray(limit + 1, 'x') << TrackText::Shortened << limit;
    QTest::newRow("5 MB of lines") << line.repeated(50000) << TrackText::Shortened << limit / 99 * 99 - 1;
    // Every character has three bytes, so the limit cuts one.
    QTest::newRow("cut character") << QByteArray("\xe2\x82\xac").repeated(400000) << TrackText::Shortened << limit / 3;
}

void TestTrackText::readsNoMoreThanTheLimit()
{
    QFETCH(QByteArray, bytes);
    QFETCH(TrackText::State, state);
    QFETCH(qsizetype, size);
    const TrackText read = TrackText::read(write(QStringLiteral("long.txt"), bytes));
    QCOMPARE(read.state, state);
    QCOMPARE(read.text.size(), size);
}

void TestTrackText::readsNoPipeAndNoDirectory()
{
    QVERIFY(QDir(m_directory.path()).mkpath(QStringLiteral("k.txt")));
    QCOMPARE(TrackText::beside(m_directory.filePath(QStringLiteral("k.ogg"))).state, TrackText::Missing);
    QCOMPARE(TrackText::read(m_directory.filePath(QStringLiteral("k.txt"))).state, TrackText::Unreadable);
    QCOMPARE(TrackText::read(m_directory.filePath(QStringLiteral("none.txt"))).state, TrackText::Unreadable);
    QCOMPARE(TrackText::read(QStringLiteral("/dev/zero")).state, TrackText::Unreadable);
}

QTEST_GUILESS_MAIN(TestTrackText)
#include "tst_tracktext.moc"
