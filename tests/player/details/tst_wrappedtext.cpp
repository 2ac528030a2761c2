#include "player/details/wrappedtext.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QTest>

namespace
{

constexpr int height = 20;

QFont font()
{
    QFont result;
    result.setPixelSize(14);
    return result;
}

QDeadlineTimer noLimit()
{
    return QDeadlineTimer(QDeadlineTimer::Forever);
}

WrappedText broken(const QString& text, int width)
{
    WrappedText result(text, font(), width, height);
    result.breakLines(noLimit());
    return result;
}

QStringList linesOf(const WrappedText& text)
{
    QStringList lines;
    for (int i = 0; i < text.lineCount(); ++i)
        lines << text.line(i);
    return lines;
}

} // namespace

/* Breaking a text into lines and drawing some of them. */
class TestWrappedText : public QObject
{
    Q_OBJECT

private slots:
    void breaksAtLineFeeds_data();
    void breaksAtLineFeeds();
    void breaksAtTheWidth();
    void breaksLongParagraphsAsShortOnes();
    void breaksWithoutBlanks();
    void keepsCharactersWhole();
    void goesOnInPortions();
    void findsTheLinesOfAParagraph();
    void drawsTheAskedLinesOnly();
    void drawsRightToLeftAtTheRight();
};

void TestWrappedText::breaksAtLineFeeds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("one") << "a" << QStringList{"a"};
    QTest::newRow("blank line") << "a\n\nb" << QStringList{"a", "", "b"};
    QTest::newRow("at the end") << "a\n" << QStringList{"a", ""};
    QTest::newRow("alone") << "\n" << QStringList{"", ""};
}

void TestWrappedText::breaksAtLineFeeds()
{
    QFETCH(QString, text);
    QFETCH(QStringList, lines);
    const WrappedText wrapped = broken(text, 300);
    QCOMPARE(linesOf(wrapped), lines);
    QCOMPARE(wrapped.height(), int(lines.size()) * height);
    QVERIFY(wrapped.isBroken());
}

void TestWrappedText::breaksAtTheWidth()
{
    const QString text = QStringLiteral("one two three four five six seven eight nine ten");
    const WrappedText wrapped = broken(text, 120);
    QVERIFY(wrapped.lineCount() > 2);
    const QFontMetrics metrics(font());
    for (const QString& line : linesOf(wrapped))
        QVERIFY2(metrics.horizontalAdvance(line.trimmed()) <= 120, qPrintable(line));
    QCOMPARE(linesOf(wrapped).join(QString()), text);
}

void TestWrappedText::breaksLongParagraphsAsShortOnes()
{
    // Far beyond what is laid out at a time, and still every line but the last is full.
    const QString word = QStringLiteral("word ");
    const WrappedText wrapped = broken(word.repeated(5000), 200);
    const QString full = wrapped.line(0);
    QVERIFY(full.size() > word.size());
    for (int i = 0; i + 1 < wrapped.lineCount(); ++i)
        QCOMPARE(wrapped.line(i), full);
    QCOMPARE(linesOf(wrapped).join(QString()), word.repeated(5000));
}

void TestWrappedText::breaksWithoutBlanks()
{
    const QString text(10000, QLatin1Char('m'));
    const WrappedText wrapped = broken(text, 100);
    QVERIFY(wrapped.lineCount() > 100);
    QCOMPARE(linesOf(wrapped).join(QString()), text);
    // Too narrow for any character, and still bounded.
    QCOMPARE(broken(QStringLiteral("mmm"), 0).lineCount(), 3);
}

void TestWrappedText::keepsCharactersWhole()
{
    // Each takes two places in the string; one place before them makes the portions end within one.
    const QString text = QLatin1Char('x') + QStringLiteral("\U0001F3B5").repeated(3000);
    const WrappedText wrapped = broken(text, 100);
    for (const QString& line : linesOf(wrapped))
        QVERIFY(!line.front().isLowSurrogate() && !line.back().isHighSurrogate());
}

void TestWrappedText::goesOnInPortions()
{
    const QString text = QStringLiteral("some words in a line\n").repeated(1000);
    WrappedText wrapped(text, font(), 300, height);
    QVERIFY(!wrapped.isBroken());
    QCOMPARE(wrapped.lineCount(), 0);
    // A deadline that has passed still allows a step, so that it comes to an end.
    int steps = 0;
    for (; !wrapped.isBroken() && steps < 5000; ++steps)
        wrapped.breakLines(QDeadlineTimer(0));
    QCOMPARE(steps, 1001);
    QCOMPARE(linesOf(wrapped), linesOf(broken(text, 300)));
}

void TestWrappedText::findsTheLinesOfAParagraph()
{
    const WrappedText wrapped = broken(QStringLiteral("a\nmmm mmm mmm mmm mmm mmm mmm\n\nb"), 100);
    QCOMPARE(wrapped.linesOf(0).first, 0);
    QCOMPARE(wrapped.linesOf(0).count, 1);
    const int wrappedLines = wrapped.lineCount() - 3;
    QVERIFY(wrappedLines > 1);
    QCOMPARE(wrapped.linesOf(1).first, 1);
    QCOMPARE(wrapped.linesOf(1).count, wrappedLines);
    QCOMPARE(wrapped.linesOf(2).count, 1);
    QCOMPARE(wrapped.linesOf(3).first, wrappedLines + 2);
    QCOMPARE(wrapped.linesOf(4).count, 0);
    QCOMPARE(wrapped.linesOf(-1).count, 0);
}

void TestWrappedText::drawsTheAskedLinesOnly()
{
    const WrappedText wrapped = broken(QStringLiteral("mmm\nmmm\nmmm\nmmm"), 100);
    const auto inkedRows = [&wrapped](int top, int bottom) {
        QImage image(120, 120, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        wrapped.draw(&painter, QPoint(5, 10), top, bottom);
        painter.end();
        QList<int> rows;
        for (int line = 0; line < 4; ++line) {
            const QRect place(0, 10 + line * height, 120, height);
            QImage blank(place.size(), QImage::Format_RGB32);
            blank.fill(Qt::white);
            if (image.copy(place) != blank)
                rows << line;
        }
        return rows;
    };
    QCOMPARE(inkedRows(0, 120), (QList<int>{0, 1, 2, 3}));
    QCOMPARE(inkedRows(35, 45), (QList<int>{1}));
    QCOMPARE(inkedRows(49, 51), (QList<int>{1, 2}));
    QCOMPARE(inkedRows(90, 120), QList<int>{});
    QCOMPARE(inkedRows(-50, 5), QList<int>{});
}

void TestWrappedText::drawsRightToLeftAtTheRight()
{
    const auto leftmostInk = [](const QString& text) {
        QImage image(200, height, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        broken(text, 200).draw(&painter, QPoint(0, 0), 0, height);
        painter.end();
        for (int x = 0; x < image.width(); ++x)
            for (int y = 0; y < image.height(); ++y)
                if (image.pixel(x, y) != qRgb(255, 255, 255))
                    return x;
        return image.width();
    };
    QVERIFY(leftmostInk(QStringLiteral("abc")) < 20);
    QVERIFY(leftmostInk(QStringLiteral("\u05d0\u05d1\u05d2")) > 100);
}

QTEST_MAIN(TestWrappedText)
#include "tst_wrappedtext.moc"
