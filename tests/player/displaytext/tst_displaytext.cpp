#include "player/displaytext.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QTest>

class TestDisplayText : public QObject
{
    Q_OBJECT

private slots:
    void makesOneLine_data();
    void makesOneLine();
    void cutsHugeTexts();
    void cutsNoCharacterInHalf();
    void elidesToTheWidth_data();
    void elidesToTheWidth();
    void rightToLeftTextsKeepTheirPunctuation();
    void wrapsIntoTheSize_data();
    void wrapsIntoTheSize();
    void wrapsBetweenWords();
    void headingKeepsWhatFits();
    void headingKeepsShortFilesWhole();
    void headingFitsTheWidth_data();
    void headingFitsTheWidth();
    void headingWithoutATitleShowsTheFile();
    void headingWithoutAFileShowsTheTitle();

private:
    static QFont font()
    {
        QFont font;
        font.setPixelSize(13);
        return font;
    }
    static int width(const QString& text) { return QFontMetrics(font()).horizontalAdvance(text); }
};

void TestDisplayText::makesOneLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");
    QTest::newRow("null") << QString() << QString();
    QTest::newRow("plain") << "Night walk"
                           << "Night walk";
    QTest::newRow("line breaks") << "a\nb\r\nc\rd"
                                 << "a b c d";
    QTest::newRow("separators") << QStringLiteral("a\u2028b\u2029c") << "a b c";
    QTest::newRow("blanks only") << " \t\n "
                                 << "";
    QTest::newRow("control characters") << QStringLiteral("a\u0001\u001b[2Jb\u0007\u007f\u009bc") << "a [2Jb c";
    QTest::newRow("zero") << QString(QStringLiteral("ab")).replace(1, 0, QChar(0)) << "a b";
    QTest::newRow("right to left") << QStringLiteral("\u05e9\u05dc\u05d5\u05dd")
                                   << QStringLiteral("\u05e9\u05dc\u05d5\u05dd");
    QTest::newRow("turned direction") << QStringLiteral("song\u202egpj.ogg\u202c\u2066x\u2069") << "songgpj.oggx";
    QTest::newRow("markup") << "<b>&amp;&x</b>"
                            << "<b>&amp;&x</b>";
}

void TestDisplayText::makesOneLine()
{
    QFETCH(QString, text);
    QFETCH(QString, line);
    QCOMPARE(displaytext::oneLine(text), line);
}

void TestDisplayText::cutsHugeTexts()
{
    const QString line = displaytext::oneLine(QString(100000000, QLatin1Char('x')));
    QCOMPARE(line, QString(displaytext::longest - 1, QLatin1Char('x')) + QChar(0x2026));
    QCOMPARE(displaytext::oneLine(QString(displaytext::longest, QLatin1Char('x'))).size(), displaytext::longest);
}

void TestDisplayText::cutsNoCharacterInHalf()
{
    const QString note = QString::fromUcs4(U"\U0001d160", 1);
    for (const QString& start : {QString(), QStringLiteral("a")}) {
        const QString line = displaytext::oneLine(start + note.repeated(3000));
        QVERIFY(line.isValidUtf16());
        QVERIFY(line.size() > displaytext::longest - 3 && line.size() <= displaytext::longest);
    }
}

void TestDisplayText::elidesToTheWidth_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("long") << QString(10000, QLatin1Char('W'));
    QTest::newRow("words") << QStringLiteral("word ").repeated(2000);
    QTest::newRow("right to left") << QStringLiteral("\u05e9\u05dc\u05d5\u05dd ").repeated(2000);
    QTest::newRow("lines") << QStringLiteral("W\n").repeated(5000);
}

void TestDisplayText::elidesToTheWidth()
{
    QFETCH(QString, text);
    for (const auto mode : {Qt::ElideRight, Qt::ElideMiddle}) {
        for (const int most : {400, 100, 30}) {
            const QString shown = displaytext::elided(text, font(), most, mode);
            QVERIFY(!shown.isEmpty());
            QVERIFY2(width(shown) <= most, qPrintable(shown));
            QVERIFY(shown.contains(QChar(0x2026)));
        }
        for (const int most : {0, -10})
            QVERIFY(width(displaytext::elided(text, font(), most, mode)) <= width(QChar(0x2026)));
    }
    QCOMPARE(displaytext::elided(QStringLiteral("short"), font(), 400), QStringLiteral("short"));
}

void TestDisplayText::rightToLeftTextsKeepTheirPunctuation()
{
    const QChar mark(0x200f);
    const QString greeting = QStringLiteral("\u05e9\u05dc\u05d5\u05dd!");
    QCOMPARE(displaytext::elided(greeting, font(), 400), mark + greeting + mark);
    QCOMPARE(displaytext::wrapped(greeting, font(), QSize(400, 100)), mark + greeting + mark);
    QCOMPARE(displaytext::heading(greeting, QStringLiteral("a.ogg"), font(), 10, 400).title, mark + greeting + mark);
    // It takes no room.
    QCOMPARE(width(mark + greeting + mark), width(greeting));
}

void TestDisplayText::wrapsIntoTheSize_data()
{
    elidesToTheWidth_data();
    QTest::newRow("file name") << QStringLiteral("Cannot play ") + QString(250, QLatin1Char('m')) +
                                      QStringLiteral(".ogg: no such file");
}

void TestDisplayText::wrapsIntoTheSize()
{
    QFETCH(QString, text);
    const int lineHeight = QFontMetrics(font()).lineSpacing();
    for (const int count : {1, 2, 3}) {
        const QString shown = displaytext::wrapped(text, font(), QSize(200, count * lineHeight + lineHeight / 2));
        const QStringList lines = shown.split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), count);
        for (const QString& line : lines)
            QVERIFY2(!line.isEmpty() && width(line) <= 200, qPrintable(line));
        QVERIFY(lines.last().contains(QChar(0x2026)));
    }
    // No place gives one line of little, and comes to an end.
    QVERIFY(!displaytext::wrapped(text, font(), QSize(0, 0)).contains(QLatin1Char('\n')));
    QVERIFY(!displaytext::wrapped(text, font(), QSize(-5, -5)).contains(QLatin1Char('\n')));
}

void TestDisplayText::wrapsBetweenWords()
{
    const QString text = QStringLiteral("One and two");
    QCOMPARE(displaytext::wrapped(text, font(), QSize(1000, 100)), text);
    QCOMPARE(displaytext::wrapped(text, font(), QSize(width(QStringLiteral("One and ")) + 1, 100)),
             QStringLiteral("One and\ntwo"));
    QCOMPARE(displaytext::wrapped(QString(), font(), QSize(100, 100)), QString());
}

void TestDisplayText::headingKeepsWhatFits()
{
    const auto heading =
        displaytext::heading(QStringLiteral("Night walk"), QStringLiteral("walk.ogg"), font(), 10, 430);
    QCOMPARE(heading.title, QStringLiteral("Night walk"));
    QCOMPARE(heading.file, QStringLiteral("walk.ogg"));
}

void TestDisplayText::headingKeepsShortFilesWhole()
{
    // Widths that are fractions of pixels, of which no rounding may cost letters.
    QFont exact = font();
    exact.setHintingPreference(QFont::PreferNoHinting);
    const QString title = QStringLiteral("A very long title that goes on ").repeated(4);
    for (const char* name : {"tagged.ogg", "walk.ogg", "i.mp3", "ill.flac", "01-tone.ogg", "Wave 7.wav", "lift.m4a"}) {
        const QString file = QString::fromLatin1(name);
        for (int width = 430; width < 460; ++width)
            QCOMPARE(displaytext::heading(title, file, exact, 10, width).file, file);
    }
}

void TestDisplayText::headingFitsTheWidth_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("file");
    const QString longTitle(10000, QLatin1Char('W'));
    const QString longFile = QString(251, QLatin1Char('n')) + QStringLiteral(".ogg");
    QTest::newRow("long title") << longTitle << "walk.ogg";
    QTest::newRow("long file") << "Night walk" << longFile;
    QTest::newRow("both long") << longTitle << longFile;
    QTest::newRow("right to left") << QStringLiteral("\u05e9\u05dc\u05d5\u05dd ").repeated(100) << longFile;
}

void TestDisplayText::headingFitsTheWidth()
{
    QFETCH(QString, title);
    QFETCH(QString, file);
    const auto heading = displaytext::heading(title, file, font(), 10, 430);
    const int both = width(heading.title) + 10 + width(heading.file);
    QVERIFY2(both <= 430, qPrintable(QString::number(both)));
    // Nothing is given away: no more than a letter or two is left free.
    QVERIFY2(both > 400, qPrintable(QString::number(both)));
    // Both can be told, and the kind of file.
    QVERIFY(width(heading.title) >= 60);
    QVERIFY(width(heading.file) >= 50);
    QVERIFY(heading.file.endsWith(QLatin1String("ogg")));
}

void TestDisplayText::headingWithoutATitleShowsTheFile()
{
    const auto heading = displaytext::heading(QStringLiteral(" \n"), QStringLiteral("walk.ogg"), font(), 10, 430);
    QCOMPARE(heading.title, QStringLiteral("walk.ogg"));
    QVERIFY(heading.file.isNull());
    const QString longFile = QString(251, QLatin1Char('n')) + QStringLiteral(".ogg");
    QVERIFY(width(displaytext::heading(QString(), longFile, font(), 10, 430).title) <= 430);
}

void TestDisplayText::headingWithoutAFileShowsTheTitle()
{
    const auto heading = displaytext::heading(QStringLiteral("skinplayer"), QString(), font(), 10, 430);
    QCOMPARE(heading.title, QStringLiteral("skinplayer"));
    QVERIFY(heading.file.isNull());
    QVERIFY(displaytext::heading(QString(), QString(), font(), 10, 430).title.isEmpty());
}

QTEST_MAIN(TestDisplayText)
#include "tst_displaytext.moc"
