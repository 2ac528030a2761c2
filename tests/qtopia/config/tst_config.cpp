#include "qtopia/config.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

class TestConfig : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void readsEntries_data();
    void readsEntries();
    void missingKeysGiveTheFallback_data();
    void missingKeysGiveTheFallback();
    void emptyValuesAreNotNull();
    void otherCommentSignsBelongToTheKey();
    void readsNumbers_data();
    void readsNumbers();
    void readsBooleans_data();
    void readsBooleans();
    void readsLists_data();
    void readsLists();
    void switchesGroups();
    void knowsGroupsAndKeys();
    void mergesGroups();
    void laterKeysWin_data();
    void laterKeysWin();
    void noFileGivesDefaults_data();
    void noFileGivesDefaults();
    void emptyFileIsValid();
    void readsTheUsersFiles();
    void readsOnceAtConstruction();
    void decodesUtf8_data();
    void decodesUtf8();
    void survivesAnyBytes_data();
    void survivesAnyBytes();
    void readsUpToTheLimit_data();
    void readsUpToTheLimit();
    void readsAFileOfTheLimit();
    void readsHugeFilesInBoundedTime();
    void readsLargeFilesInBoundedTime_data();
    void readsLargeFilesInBoundedTime();

private:
    QString pathOf(const QString& name) const { return m_directory.filePath(name); }
    QString write(const QByteArray& bytes) const;

    QTemporaryDir m_directory;
};

void TestConfig::init()
{
    QTest::failOnWarning(QRegularExpression(".*"));
}

QString TestConfig::write(const QByteArray& bytes) const
{
    QFile file(pathOf("config"));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

void TestConfig::readsEntries_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");

    QTest::newRow("plain") << QByteArray("[g]\nk=v\n") << "v";
    QTest::newRow("blanks around the equals sign") << QByteArray("[g]\nk = v\n") << "v";
    QTest::newRow("blanks around everything") << QByteArray(" \t[ g\t] \n \tk \t= \tv \t\n") << "v";
    QTest::newRow("blanks inside the value") << QByteArray("[g]\nk = a  b\tc\n") << "a  b\tc";
    QTest::newRow("no newline at the end") << QByteArray("[g]\nk = v") << "v";
    QTest::newRow("CR LF") << QByteArray("[g]\r\nk = v\r\n\r\nx = y\r\n") << "v";
    QTest::newRow("CR LF without the last one") << QByteArray("[g]\r\nk = v\r") << "v";
    QTest::newRow("LF and CR LF mixed") << QByteArray("[g]\r\n\nx = y\nk = v\r\n") << "v";
    QTest::newRow("CR inside the value") << QByteArray("[g]\nk = a\rb\n") << "a\rb";
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf[g]\nk = v\n") << "v";
    QTest::newRow("comments") << QByteArray("# one\n[g]\n  # two\nk = v\n#k = w\n\t#k = x\n") << "v";
    QTest::newRow("comment sign inside the value") << QByteArray("[g]\nk = v # not a comment\n") << "v # not a comment";
    QTest::newRow("value of a comment sign") << QByteArray("[g]\nk = #ff00ff\n") << "#ff00ff";
    QTest::newRow("other comment signs are none") << QByteArray("[g]\nk = v\n;k = w\n//k = x\n") << "v";
    QTest::newRow("equals signs in the value") << QByteArray("[g]\nk = a=b = c=\n") << "a=b = c=";
    QTest::newRow("nothing is unescaped")
        << QByteArray("[g]\nk = a\\nb\\\\c\\x41%20&amp;\\\n") << "a\\nb\\\\c\\x41%20&amp;\\";
    QTest::newRow("quotes stay") << QByteArray("[g]\nk = \"a b\"\n") << "\"a b\"";
    QTest::newRow("no splitting at commas") << QByteArray("[g]\nk = a, b;c\n") << "a, b;c";
    QTest::newRow("brackets in the value") << QByteArray("[g]\nk = [x]\n") << "[x]";
    QTest::newRow("text behind the heading") << QByteArray("[g] # the group ]\nk = v\n") << "v";
    QTest::newRow("heading without its end") << QByteArray("[g\nk = v\n") << "v";
    QTest::newRow("heading without its end, with blanks") << QByteArray("[ g \r\nk = v\n") << "v";
    QTest::newRow("lines of nothing") << QByteArray("[g]\n\n \nno equals sign\n= no key\n = \n]\nk = v\n") << "v";
    QTest::newRow("key of the entry above in another case") << QByteArray("[g]\nk = v\nK = w\n") << "v";
    QTest::newRow("group in another case") << QByteArray("[g]\nk = v\n[G]\nk = w\n") << "v";
    QTest::newRow("other groups around") << QByteArray("[a]\nk = 1\n[g]\nk = v\n[z]\nk = 2\n") << "v";
    QTest::newRow("continued lines are none") << QByteArray("[g]\nk = a\\\nb\n") << "a\\";
}

void TestConfig::readsEntries()
{
    QFETCH(QByteArray, bytes);
    Config config(write(bytes), Config::File);
    QVERIFY(config.isValid());
    config.setGroup("g");
    QVERIFY(config.hasKey("k"));
    QTEST(config.readEntry("k"), "expected");
    QTEST(config.readEntry("k", "fallback"), "expected");
}

void TestConfig::missingKeysGiveTheFallback_data()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("key");

    QTest::newRow("absent key") << "g"
                                << "absent";
    QTest::newRow("absent group") << "absent"
                                  << "k";
    QTest::newRow("key of another group") << "g"
                                          << "other";
    QTest::newRow("other case") << "g"
                                << "K";
    QTest::newRow("group in another case") << "G"
                                           << "k";
    QTest::newRow("key with blanks") << "g"
                                     << " k";
    QTest::newRow("empty key") << "g"
                               << "";
    QTest::newRow("null key") << "g" << QString();
    QTest::newRow("empty group") << ""
                                 << "k";
    QTest::newRow("commented key") << "g"
                                   << "c";
    QTest::newRow("comment as key") << "g"
                                    << "#c";
    QTest::newRow("line without an equals sign") << "g"
                                                 << "word";
}

void TestConfig::missingKeysGiveTheFallback()
{
    QFETCH(QString, group);
    QFETCH(QString, key);
    Config config(write("[g]\nk = v\n#c = 1\nword\n = empty\n[h]\nother = 1\n"), Config::File);
    config.setGroup(group);
    QVERIFY(!config.hasKey(key));
    QVERIFY(config.readEntry(key).isNull());
    QCOMPARE(config.readEntry(key, "fallback"), QString("fallback"));
    QCOMPARE(config.readNumEntry(key), -1);
    QCOMPARE(config.readNumEntry(key, 17), 17);
    QCOMPARE(config.readBoolEntry(key), false);
    QCOMPARE(config.readBoolEntry(key, true), true);
    QCOMPARE(config.readListEntry(key, ','), QStringList());
}

void TestConfig::emptyValuesAreNotNull()
{
    Config config(write("[g]\nk =\nblanks =  \t\nlast="), Config::File);
    config.setGroup("g");
    for (const char* key : {"k", "blanks", "last"}) {
        QVERIFY(config.hasKey(key));
        QVERIFY(!config.readEntry(key, "fallback").isNull());
        QCOMPARE(config.readEntry(key, "fallback"), QString(""));
        QCOMPARE(config.readListEntry(key, ','), QStringList());
    }
}

void TestConfig::otherCommentSignsBelongToTheKey()
{
    Config config(write("[g]\n;k = v\n//k = w\n"), Config::File);
    config.setGroup("g");
    QCOMPARE(config.readEntry(";k"), QString("v"));
    QCOMPARE(config.readEntry("//k"), QString("w"));
}

void TestConfig::readsNumbers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("expected");

    QTest::newRow("zero") << QByteArray("0") << 0;
    QTest::newRow("positive") << QByteArray("42") << 42;
    QTest::newRow("negative") << QByteArray("-42") << -42;
    QTest::newRow("plus sign") << QByteArray("+42") << 42;
    QTest::newRow("leading zeros are decimal") << QByteArray("0010") << 10;
    QTest::newRow("highest") << QByteArray("2147483647") << 2147483647;
    QTest::newRow("lowest") << QByteArray("-2147483648") << -2147483647 - 1;
    QTest::newRow("above the highest") << QByteArray("2147483648") << 0;
    QTest::newRow("below the lowest") << QByteArray("-2147483649") << 0;
    QTest::newRow("far too large") << QByteArray(1000, '9') << 0;
    QTest::newRow("empty") << QByteArray("") << 0;
    QTest::newRow("word") << QByteArray("many") << 0;
    QTest::newRow("number and word") << QByteArray("12px") << 0;
    QTest::newRow("two numbers") << QByteArray("1 2") << 0;
    QTest::newRow("sign alone") << QByteArray("-") << 0;
    QTest::newRow("sign and blank") << QByteArray("- 5") << 0;
    QTest::newRow("two signs") << QByteArray("--5") << 0;
    QTest::newRow("fraction") << QByteArray("1.5") << 0;
    QTest::newRow("exponent") << QByteArray("1e3") << 0;
    QTest::newRow("hexadecimal") << QByteArray("0x10") << 0;
    QTest::newRow("hexadecimal digits") << QByteArray("ff") << 0;
    QTest::newRow("group separator") << QByteArray("1,000") << 0;
    QTest::newRow("comment behind it") << QByteArray("5 # five") << 0;
    QTest::newRow("other digits") << QByteArray("\xd9\xa1\xd9\xa2") << 0;
    QTest::newRow("NUL behind it") << QByteArray("12\0", 3) << 0;
    QTest::newRow("NUL inside") << QByteArray("1\0"
                                              "2",
                                              3)
                                << 0;
}

void TestConfig::readsNumbers()
{
    QFETCH(QByteArray, text);
    Config config(write("[g]\nk = " + text + "\n"), Config::File);
    config.setGroup("g");
    QTEST(config.readNumEntry("k"), "expected");
    QTEST(config.readNumEntry("k", 17), "expected");
}

void TestConfig::readsBooleans_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("expected");

    QTest::newRow("one") << QByteArray("1") << true;
    QTest::newRow("zero") << QByteArray("0") << false;
    QTest::newRow("negative") << QByteArray("-3") << true;
    QTest::newRow("true") << QByteArray("true") << true;
    QTest::newRow("TRUE") << QByteArray("TRUE") << true;
    QTest::newRow("false") << QByteArray("false") << false;
    QTest::newRow("empty") << QByteArray("") << false;
    QTest::newRow("word") << QByteArray("perhaps") << false;
    QTest::newRow("too large") << QByteArray("99999999999") << false;
}

void TestConfig::readsBooleans()
{
    QFETCH(QByteArray, text);
    Config config(write("[g]\nk = " + text + "\n"), Config::File);
    config.setGroup("g");
    QTEST(config.readBoolEntry("k", false), "expected");
    QTEST(config.readBoolEntry("k", true), "expected");
}

void TestConfig::readsLists_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QChar>("separator");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("commas") << QByteArray("a,b,c") << QChar(',') << QStringList{"a", "b", "c"};
    QTest::newRow("other separator") << QByteArray("a,b;c") << QChar(';') << QStringList{"a,b", "c"};
    QTest::newRow("one part") << QByteArray("abc") << QChar(',') << QStringList{"abc"};
    QTest::newRow("empty parts are left out") << QByteArray(",a,,b,") << QChar(',') << QStringList{"a", "b"};
    QTest::newRow("separators alone") << QByteArray(",,,") << QChar(',') << QStringList{};
    QTest::newRow("blanks stay") << QByteArray("a, b ,c") << QChar(',') << QStringList{"a", " b ", "c"};
    QTest::newRow("blank as separator") << QByteArray("a  b") << QChar(' ') << QStringList{"a", "b"};
    QTest::newRow("nothing is unescaped") << QByteArray("a\\,b") << QChar(',') << QStringList{"a\\", "b"};
}

void TestConfig::readsLists()
{
    QFETCH(QByteArray, text);
    QFETCH(QChar, separator);
    Config config(write("[g]\nk = " + text + "\n"), Config::File);
    config.setGroup("g");
    QTEST(config.readListEntry("k", separator), "expected");
}

void TestConfig::switchesGroups()
{
    Config config(write("above = 0\n[a]\nk = 1\n[b]\nk = 2\n[]\nunnamed = 3\n"), Config::File);
    QCOMPARE(config.readNumEntry("above"), 0);
    QCOMPARE(config.readNumEntry("unnamed"), 3);
    QVERIFY(!config.hasKey("k"));
    config.setGroup("a");
    QCOMPARE(config.readNumEntry("k"), 1);
    QVERIFY(!config.hasKey("above"));
    config.setGroup("b");
    QCOMPARE(config.readNumEntry("k"), 2);
    config.setGroup("absent");
    QVERIFY(!config.hasKey("k"));
    config.setGroup("a");
    QCOMPARE(config.readNumEntry("k"), 1);
    config.setGroup(QString());
    QCOMPARE(config.readNumEntry("above"), 0);
}

void TestConfig::knowsGroupsAndKeys()
{
    Config config(write("[a]\nk = 1\n[empty]\n[ b c ]\nk =\n#[commented]\n"), Config::File);
    QVERIFY(config.hasGroup("a"));
    QVERIFY(config.hasGroup("empty"));
    QVERIFY(config.hasGroup("b c"));
    QVERIFY(!config.hasGroup("A"));
    QVERIFY(!config.hasGroup("commented"));
    QVERIFY(!config.hasGroup(""));
    config.setGroup("absent");
    QVERIFY(!config.hasGroup("absent"));
    config.setGroup("b c");
    QVERIFY(config.hasKey("k"));
    config.setGroup("empty");
    QVERIFY(!config.hasKey("k"));
}

void TestConfig::mergesGroups()
{
    Config config(write("[g]\na = 1\nb = 1\n[h]\na = 2\n[g]\nb = 3\nc = 3\n"), Config::File);
    config.setGroup("g");
    QCOMPARE(config.readNumEntry("a"), 1);
    QCOMPARE(config.readNumEntry("b"), 3);
    QCOMPARE(config.readNumEntry("c"), 3);
    config.setGroup("h");
    QCOMPARE(config.readNumEntry("a"), 2);
    QVERIFY(!config.hasKey("b"));
}

void TestConfig::laterKeysWin_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");

    QTest::newRow("next line") << QByteArray("[g]\nk = 1\nk = 2\n") << "2";
    QTest::newRow("three") << QByteArray("[g]\nk = 1\nk = 2\nx = 9\nk = 3\n") << "3";
    QTest::newRow("an empty one") << QByteArray("[g]\nk = 1\nk =\n") << "";
    QTest::newRow("in the group's second heading") << QByteArray("[g]\nk = 1\n[h]\nk = 9\n[g]\nk = 2\n") << "2";
    QTest::newRow("other blanks") << QByteArray("[g]\nk = 1\n  k\t=2\n") << "2";
    QTest::newRow("a line without an equals sign") << QByteArray("[g]\nk = 1\nk\n") << "1";
}

void TestConfig::laterKeysWin()
{
    QFETCH(QByteArray, bytes);
    Config config(write(bytes), Config::File);
    config.setGroup("g");
    QTEST(config.readEntry("k"), "expected");
}

void TestConfig::noFileGivesDefaults_data()
{
    QTest::addColumn<QString>("path");

    const QString fifo = pathOf("fifo");
    mkfifo(QFile::encodeName(fifo).constData(), 0600);
    const QString fifoLink = pathOf("fifo link");
    QFile::link(fifo, fifoLink);
    const QString dangling = pathOf("dangling");
    QFile::link(pathOf("absent"), dangling);
    const QString loop = pathOf("loop");
    QFile::link(loop, loop);

    QTest::newRow("missing") << pathOf("absent");
    QTest::newRow("missing directory") << pathOf("absent/config");
    QTest::newRow("null name") << QString();
    QTest::newRow("empty name") << "";
    QTest::newRow("directory") << m_directory.path();
    QTest::newRow("FIFO") << fifo;
    QTest::newRow("link to a FIFO") << fifoLink;
    QTest::newRow("dangling link") << dangling;
    QTest::newRow("link to itself") << loop;
    QTest::newRow("endless device") << "/dev/zero";
    QTest::newRow("empty device") << "/dev/null";
    QTest::newRow("NUL in the name") << pathOf("config") + QChar(0);
    QTest::newRow("very long name") << QString(100000, 'x');
}

void TestConfig::noFileGivesDefaults()
{
    QFETCH(QString, path);
    write("[g]\nk = v\n");
    Config config(path, Config::File);
    QVERIFY(!config.isValid());
    QVERIFY(!config.hasGroup("g"));
    config.setGroup("g");
    QVERIFY(!config.hasKey("k"));
    QVERIFY(config.readEntry("k").isNull());
    QCOMPARE(config.readEntry("k", "fallback"), QString("fallback"));
    QCOMPARE(config.readNumEntry("k"), -1);
    QCOMPARE(config.readListEntry("k", ','), QStringList());
}

void TestConfig::emptyFileIsValid()
{
    Config config(write(""), Config::File);
    QVERIFY(config.isValid());
    QVERIFY(!config.hasGroup(""));
    QVERIFY(config.readEntry("k").isNull());
}

void TestConfig::readsTheUsersFiles()
{
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", QFile::encodeName(m_directory.path()));
    QVERIFY(QDir(m_directory.path()).mkpath("Settings"));
    QVERIFY(QFile::copy(write("[g]\nk = v\n"), pathOf("Settings/player.conf")));
    Config byDefault("player");
    Config byDomain("player", Config::User);
    Config absent("absent");
    const Config path("player", Config::File);
    qputenv("HOME", home);

    byDefault.setGroup("g");
    QCOMPARE(byDefault.readEntry("k"), QString("v"));
    byDomain.setGroup("g");
    QCOMPARE(byDomain.readEntry("k"), QString("v"));
    QVERIFY(!absent.isValid());
    QVERIFY(!path.isValid());
}

void TestConfig::readsOnceAtConstruction()
{
    const QString path = write("[g]\nk = old\n");
    Config config(path, Config::File);
    write("[g]\nk = new\n[h]\n");
    config.setGroup("g");
    QCOMPARE(config.readEntry("k"), QString("old"));
    QVERIFY(QFile::remove(path));
    QCOMPARE(config.readEntry("k"), QString("old"));
    QVERIFY(!config.hasGroup("h"));
    QVERIFY(config.isValid());
}

void TestConfig::decodesUtf8_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("two bytes") << QByteArray("\xc3\xbc") << QString(QChar(0xfc));
    QTest::newRow("three bytes") << QByteArray("\xe2\x82\xac") << QString(QChar(0x20ac));
    QTest::newRow("four bytes") << QByteArray("\xf0\x9f\x8e\xb5") << QString::fromUcs4(U"\U0001f3b5");
    QTest::newRow("invalid byte") << QByteArray("a\xff"
                                                "b")
                                  << QString("a") + QChar(0xfffd) + "b";
    QTest::newRow("NUL inside") << QByteArray("a\0b", 3) << QString("a") + QChar(0) + "b";
    QTest::newRow("byte order mark further on") << QByteArray("a\xef\xbb\xbf") << QString("a") + QChar(0xfeff);
}

void TestConfig::decodesUtf8()
{
    QFETCH(QByteArray, text);
    Config config(write("[g]\nk = " + text + "\n" + text + " = key\n[" + text + "]\nk = group\n"), Config::File);
    config.setGroup("g");
    QTEST(config.readEntry("k"), "expected");
    QFETCH(QString, expected);
    QCOMPARE(config.readEntry(expected), QString("key"));
    QVERIFY(config.hasGroup(expected));
    config.setGroup(expected);
    QCOMPARE(config.readEntry("k"), QString("group"));
}

void TestConfig::survivesAnyBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("NUL bytes") << QByteArray(1000, '\0');
    QTest::newRow("lonely byte order mark") << QByteArray("\xef\xbb\xbf");
    QTest::newRow("half a byte order mark") << QByteArray("\xef\xbb");
    QTest::newRow("half a character") << QByteArray("[g]\nk = \xe2\x82");
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe[\0g\0]\0\n\0", 10);
    QTest::newRow("brackets") << QByteArray("[\n]\n[]\n[[\n]]\n[=\n=]\n");
    QTest::newRow("equals signs") << QByteArray("=\n==\n= =\n===");
    QTest::newRow("comment signs") << QByteArray("#\n##\n#=#\n[#]\n#[");
    QTest::newRow("returns") << QByteArray("\r\r\n\r\n\r");
    QRandomGenerator random(1);
    for (int row = 0; row < 40; ++row) {
        QByteArray bytes(random.bounded(2000), Qt::Uninitialized);
        const QByteArray likely("[]=# \t\r\n\n\n=ab\0", 15);
        for (char& byte : bytes)
            byte = row % 2 ? char(random.bounded(256)) : likely.at(random.bounded(likely.size()));
        QTest::addRow("random bytes %d", row) << bytes;
    }
}

void TestConfig::survivesAnyBytes()
{
    QFETCH(QByteArray, bytes);
    // Whatever stands above, a group further down is read.
    Config config(write(bytes + "\n[known group]\nknown key = value\n"), Config::File);
    QVERIFY(config.isValid());
    config.setGroup("known group");
    QCOMPARE(config.readEntry("known key"), QString("value"));
    QVERIFY(config.readEntry("no such key").isNull());
}

void TestConfig::readsUpToTheLimit_data()
{
    QTest::addColumn<int>("bytesBeyond");
    QTest::addColumn<bool>("expected");

    // Counted from the end of the last line, its newline included.
    QTest::newRow("line ends one byte early") << -1 << true;
    QTest::newRow("line ends at the limit") << 0 << true;
    QTest::newRow("newline lies behind the limit") << 1 << false;
    QTest::newRow("half of the line lies behind the limit") << 4 << false;
    QTest::newRow("line begins at the limit") << 8 << false;
}

void TestConfig::readsUpToTheLimit()
{
    QFETCH(int, bytesBeyond);
    const QByteArray head("[g]\nfirst = 1\n#");
    const QByteArray tail("k = 12\n");
    QByteArray bytes = head;
    bytes += QByteArray(Config::largestFile - head.size() - tail.size() - 1 + bytesBeyond, 'x');
    bytes += '\n' + tail + "late = 1\n";
    Config config(write(bytes), Config::File);
    QVERIFY(config.isValid());
    config.setGroup("g");
    QCOMPARE(config.readNumEntry("first"), 1);
    QTEST(config.hasKey("k"), "expected");
    QVERIFY(!config.hasKey("late"));
}

// Nothing is cut there, so the last line needs no newline.
void TestConfig::readsAFileOfTheLimit()
{
    const QByteArray head("[g]\n#");
    const QByteArray tail("\nk = 12");
    const QByteArray filling(Config::largestFile - head.size() - tail.size(), 'x');
    Config config(write(head + filling + tail), Config::File);
    config.setGroup("g");
    QCOMPARE(config.readNumEntry("k"), 12);
}

void TestConfig::readsHugeFilesInBoundedTime()
{
    const QString path = write("[g]\nk = v\nlong = ");
    // Sparse: it takes no room.
    QVERIFY(QFile::resize(path, qint64(64) * 1024 * 1024 * 1024));
    QElapsedTimer timer;
    timer.start();
    Config config(path, Config::File);
    QVERIFY(timer.elapsed() < 5000);
    QVERIFY(config.isValid());
    config.setGroup("g");
    QCOMPARE(config.readEntry("k"), QString("v"));
    QVERIFY(!config.hasKey("long"));
    QVERIFY(QFile::remove(path));
}

void TestConfig::readsLargeFilesInBoundedTime_data()
{
    QTest::addColumn<QByteArray>("bytes");

    const auto filledWith = [](const QByteArray& part) { return part.repeated(Config::largestFile / part.size()); };
    QTest::newRow("lines of nothing") << filledWith("\n");
    QTest::newRow("one line of equals signs") << filledWith("=");
    QTest::newRow("one line of brackets") << filledWith("[");
    QTest::newRow("one line of blanks") << filledWith(" ");
    QTest::newRow("one line of NUL bytes") << filledWith(QByteArray(1, '\0'));
    QTest::newRow("invalid bytes") << filledWith("\xff");
    QTest::newRow("one group over and over") << filledWith("[g]\n");
    QTest::newRow("one key over and over") << filledWith("a=\n");
    QByteArray bytes;
    for (int number = 0; bytes.size() < Config::largestFile; ++number)
        bytes += QByteArray("[%1]\na%1=1\nb%1=2\n").replace("%1", QByteArray::number(number));
    QTest::newRow("ever other groups and keys") << bytes;
}

void TestConfig::readsLargeFilesInBoundedTime()
{
    QFETCH(QByteArray, bytes);
    const QString path = write("[known]\nk = v\n" + bytes);
    QElapsedTimer timer;
    timer.start();
    Config config(path, Config::File);
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    config.setGroup("known");
    QCOMPARE(config.readEntry("k"), QString("v"));
}

QTEST_GUILESS_MAIN(TestConfig)
#include "tst_config.moc"
