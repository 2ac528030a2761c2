#include "listbox/listbox_skin.h"
#include "listbox/textwidths.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QRandomGenerator>
#include <QRawFont>
#include <QtTest>

#include <algorithm>
#include <map>

using skinwidgets::TextWidths;
using Tables = std::map<QByteArray, QByteArray>;

Q_DECLARE_METATYPE(Tables)

namespace
{

// Big-endian numbers, one behind another.
class Table
{
public:
    Table& number16(int number)
    {
        m_bytes.append(char(number >> 8));
        m_bytes.append(char(number));
        return *this;
    }
    Table& number32(quint32 number) { return number16(int(number >> 16)).number16(int(number & 0xffff)); }
    Table& numbers16(const QList<int>& numbers)
    {
        for (const int number : numbers)
            number16(number);
        return *this;
    }
    Table& raw(const QByteArray& bytes)
    {
        m_bytes.append(bytes);
        return *this;
    }
    // Behind a list of numbers, the offsets of parts that follow them, and the parts.
    Table& parts(const QList<QByteArray>& all)
    {
        int at = int(m_bytes.size()) + 2 * int(all.size());
        for (const QByteArray& part : all) {
            number16(at);
            at += int(part.size());
        }
        for (const QByteArray& part : all)
            m_bytes.append(part);
        return *this;
    }
    const QByteArray& bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

QByteArray fontFile(const Tables& tables)
{
    Table directory;
    directory.number32(tables.count("CFF ") > 0 ? 0x4f54544f : 0x00010000);
    directory.numbers16({int(tables.size()), 0, 0, 0});
    QByteArray bodies;
    for (const auto& [tag, bytes] : tables) {
        const auto start = quint32(12 + 16 * tables.size() + size_t(bodies.size()));
        directory.raw(tag).number32(0).number32(start).number32(quint32(bytes.size()));
        bodies += bytes;
        bodies += QByteArray((4 - bodies.size() % 4) % 4, '\0');
    }
    return directory.bytes() + bodies;
}

QByteArray nameTable(const QString& family)
{
    const QList<std::pair<int, QString>> names{{1, family}, {2, "Regular"}, {4, family}, {6, family}};
    Table table;
    table.numbers16({0, int(names.size()), 6 + 12 * int(names.size())});
    Table texts;
    for (const auto& [id, text] : names) {
        // Windows, Unicode, US English.
        table.numbers16({3, 1, 0x409, id, int(text.size()) * 2, int(texts.bytes().size())});
        for (const QChar letter : text)
            texts.number16(letter.unicode());
    }
    return table.raw(texts.bytes()).bytes();
}

int glyphOf(char letter)
{
    const QList<quint32> glyphs = QRawFont::fromFont(QFont()).glyphIndexesForString(QString(QLatin1Char(letter)));
    return glyphs.isEmpty() ? 0 : int(glyphs.first());
}

QByteArray coverage(const QByteArray& letters)
{
    QList<int> glyphs;
    for (const char letter : letters)
        glyphs << glyphOf(letter);
    std::sort(glyphs.begin(), glyphs.end());
    return Table().numbers16({1, int(glyphs.size())}).numbers16(glyphs).bytes();
}

QByteArray lookup(int type, int flags, const QByteArray& subtable)
{
    return Table().numbers16({type, flags, 1}).parts({subtable}).bytes();
}

// A table with one feature that has the first lookup alone.
QByteArray layoutTable(const QByteArray& feature, const QList<QByteArray>& lookups)
{
    const QByteArray language = Table().numbers16({0, 0xffff, 1, 0}).bytes();
    const QByteArray script = Table().number16(4).number16(0).raw(language).bytes();
    const QByteArray scripts =
        Table().number16(2).raw("DFLT").number16(14).raw("latn").number16(14).raw(script).bytes();
    const QByteArray features = Table().number16(1).raw(feature).number16(8).numbers16({0, 1, 0}).bytes();
    const QByteArray list = Table().number16(int(lookups.size())).parts(lookups).bytes();
    return Table().numbers16({1, 0}).parts({scripts, features, list}).bytes();
}

// What is drawn for the letters "ft" is the letter W.
QByteArray ligature(int flags)
{
    const QByteArray one = Table().numbers16({glyphOf('W'), 2, glyphOf('t')}).bytes();
    const QByteArray set = Table().number16(1).parts({one}).bytes();
    Table subtable;
    subtable.numbers16({1, 8 + int(set.size()), 1, 8}).raw(set).raw(coverage("f"));
    return layoutTable("liga", {lookup(4, flags, subtable.bytes())});
}

// Between a and c, b becomes W.
QByteArray chainedContext()
{
    const QByteArray a = coverage("a");
    const QByteArray b = coverage("b");
    const int at = 20;
    const int afterA = at + int(a.size());
    Table context;
    context.numbers16({3, 1, at, 1, afterA, 1, afterA + int(b.size()), 1, 0, 1}).raw(a).raw(b).raw(coverage("c"));
    const int difference = (glyphOf('W') - glyphOf('b')) & 0xffff;
    const QByteArray single = Table().numbers16({1, 6, difference}).raw(b).bytes();
    return layoutTable("calt", {lookup(6, 0, context.bytes()), lookup(1, 0, single)});
}

// The pairs "ab" and "bc" are moved apart, and what follows the pair, too, if wanted.
QByteArray pairKerning(int flags, bool movesSecond)
{
    constexpr int xAdvance = 4;
    const auto pairs = [movesSecond](char second, int by) {
        Table set;
        set.numbers16({1, glyphOf(second), by});
        return movesSecond ? set.number16(200).bytes() : set.bytes();
    };
    const QByteArray first = pairs('b', 300);
    const QByteArray next = pairs('c', 500);
    const int at = 14;
    const int afterFirst = at + int(first.size());
    Table subtable;
    subtable.numbers16({1, afterFirst + int(next.size()), xAdvance, movesSecond ? xAdvance : 0, 2, at, afterFirst});
    return layoutTable("kern", {lookup(2, flags, subtable.raw(first).raw(next).raw(coverage("ab")).bytes())});
}

// The letter q is moved wherever it stands.
QByteArray singleKerning()
{
    return layoutTable("kern", {lookup(1, 0, Table().numbers16({1, 8, 4, 700}).raw(coverage("q")).bytes())});
}

// All printable characters are base glyphs, but f and t, which are ligatures, and x, which is a mark if wanted.
QByteArray glyphClasses(bool mark)
{
    std::map<int, int> classes;
    for (char letter = 0x20; letter < 0x7f; ++letter) {
        const bool ligature = letter == 'f' || letter == 't';
        classes[glyphOf(letter)] = mark && letter == 'x' ? 3 : ligature ? 2 : 1;
    }
    Table table;
    table.numbers16({1, 0, 12, 0, 0, 0, 2, int(classes.size())});
    for (const auto& [glyph, number] : classes)
        table.numbers16({glyph, glyph, number});
    return table.bytes();
}

// The old kerning table, in which every pair of capital letters has a kerning of its own.
QByteArray oldKerning()
{
    std::map<std::pair<int, int>, int> pairs;
    for (char first = 'A'; first <= 'Z'; ++first)
        for (char second = 'A'; second <= 'Z'; ++second)
            pairs[{glyphOf(first), glyphOf(second)}] = (first * 31 + second * 17) % 211 - 100;
    Table table;
    table.numbers16({0, 1, 0, 14 + 6 * int(pairs.size()), 1, int(pairs.size()), 0, 0, 0});
    for (const auto& [pair, kerning] : pairs)
        table.numbers16({pair.first, pair.second, kerning});
    return table.bytes();
}

// The tables of the machine's font without those that tell how glyphs go together.
Tables plainTables()
{
    const QRawFont raw = QRawFont::fromFont(QFont());
    Tables tables;
    for (const char* tag :
         {"head", "hhea", "hmtx", "maxp", "cmap", "glyf", "loca", "CFF ", "post", "OS/2", "cvt ", "fpgm", "prep"}) {
        const QByteArray bytes = raw.fontTable(tag);
        if (!bytes.isEmpty())
            tables[tag] = bytes;
    }
    return tables;
}

QString randomText(QRandomGenerator& random)
{
    static const QStringList pieces{"f",
                                    "i",
                                    "l",
                                    "fi",
                                    "ft",
                                    "fxt",
                                    "ab",
                                    "abc",
                                    "bc",
                                    "axb",
                                    "q",
                                    "AV",
                                    "To",
                                    "Wa",
                                    "r.",
                                    "11",
                                    "7",
                                    "-",
                                    " ",
                                    "  ",
                                    "(",
                                    "/",
                                    "\u00e4",
                                    "\u00c5",
                                    "\u00d7",
                                    "\u00df",
                                    "\u00ff",
                                    "\u00a0",
                                    "\u00ad",
                                    "\u009c",
                                    "\u0301",
                                    "\u0131",
                                    "\ufb01",
                                    "\u05d0",
                                    "\u0627\u0644",
                                    "\U0001f600",
                                    "\U0001d400",
                                    QString(QChar(0xd800)),
                                    "\u200d",
                                    "\u2014",
                                    "\t",
                                    "\n"};
    const int kind = random.bounded(4);
    QString text;
    for (int i = random.bounded(1, 20); i > 0; --i) {
        if (kind == 0)
            text += QChar(random.bounded(0x20, 0x7f));
        else if (kind == 1)
            text += QChar(random.bounded(0x20, 0x40));
        else if (kind == 2)
            text += pieces[random.bounded(22)];
        else
            text += pieces[random.bounded(int(pieces.size()))];
    }
    return text;
}

QString newFamily()
{
    static int number = 0;
    return QStringLiteral("Widths %1").arg(++number);
}

// Empty where the machine's font cannot be taken apart.
QString addFont(const Tables& rules, const QString& family = newFamily())
{
    Tables tables = plainTables();
    for (const auto& [tag, bytes] : rules)
        tables[tag] = bytes;
    tables["name"] = nameTable(family);
    const int id = QFontDatabase::addApplicationFontFromData(fontFile(tables));
    return QFontDatabase::applicationFontFamilies(id).contains(family) ? family : QString();
}

// True where all widths are the toolkit's own.
bool sameWidths(const QFont& font, quint32 seed)
{
    QRandomGenerator random(seed);
    const QFontMetrics metrics(font);
    TextWidths widths(font, metrics);
    for (int i = 0; i < 1500; ++i) {
        const QString text = randomText(random);
        const int width = widths.width(text);
        const int expected = metrics.horizontalAdvance(text);
        if (width == expected)
            continue;
        qWarning() << font << text << width << "expected" << expected;
        return false;
    }
    return true;
}

} // namespace

// Every width is the toolkit's own, whatever the font does with the text.
class TestTextWidths : public QObject
{
    Q_OBJECT

private slots:
    void installedFonts();
    void fontsWithRules_data();
    void fontsWithRules();
    void longTexts();
    void fontsThatComeLater();
};

void TestTextWidths::installedFonts()
{
    const QStringList families = QFontDatabase::families();
    QStringList some = families.mid(0, 12);
    some << QStringLiteral("no font of this name");
    quint32 seed = 1;
    for (const QString& family : qAsConst(some)) {
        QFont font(family);
        QVERIFY(sameWidths(font, ++seed));
        font.setPixelSize(7);
        font.setBold(true);
        QVERIFY(sameWidths(font, ++seed));
        font.setPointSizeF(17.3);
        font.setHintingPreference(QFont::PreferNoHinting);
        QVERIFY(sameWidths(font, ++seed));
        font.setItalic(true);
        font.setHintingPreference(QFont::PreferFullHinting);
        QVERIFY(sameWidths(font, ++seed));
        font.setKerning(false);
        QVERIFY(sameWidths(font, ++seed));
        font.setStretch(QFont::Condensed);
        QVERIFY(sameWidths(font, ++seed));
        font.setLetterSpacing(QFont::AbsoluteSpacing, 1.3);
        QVERIFY(sameWidths(font, ++seed));
        font.setLetterSpacing(QFont::PercentageSpacing, 90);
        font.setWordSpacing(2.6);
        QVERIFY(sameWidths(font, ++seed));
        font.setWordSpacing(0);
        font.setCapitalization(QFont::SmallCaps);
        QVERIFY(sameWidths(font, ++seed));
    }
}

void TestTextWidths::fontsWithRules_data()
{
    constexpr int skipsBases = 2;
    constexpr int skipsLigatures = 4;
    constexpr int skipsMarks = 8;
    QTest::addColumn<Tables>("rules");
    QTest::newRow("none") << Tables{};
    QTest::newRow("old kerning") << Tables{{"kern", oldKerning()}};
    QTest::newRow("pairs") << Tables{{"GPOS", pairKerning(0, false)}};
    QTest::newRow("pairs that place both") << Tables{{"GPOS", pairKerning(0, true)}};
    QTest::newRow("pairs across ligatures")
        << Tables{{"GPOS", pairKerning(skipsLigatures, false)}, {"GDEF", glyphClasses(false)}};
    QTest::newRow("pairs across marks") << Tables{{"GPOS", pairKerning(skipsMarks, false)},
                                                  {"GDEF", glyphClasses(true)}};
    QTest::newRow("single glyphs") << Tables{{"GPOS", singleKerning()}};
    QTest::newRow("ligature") << Tables{{"GSUB", ligature(0)}};
    QTest::newRow("ligature across bases") << Tables{{"GSUB", ligature(skipsBases)}, {"GDEF", glyphClasses(false)}};
    QTest::newRow("ligature across marks") << Tables{{"GSUB", ligature(skipsMarks)}, {"GDEF", glyphClasses(true)}};
    QTest::newRow("ligature and old kerning") << Tables{{"GSUB", ligature(0)}, {"kern", oldKerning()}};
    QTest::newRow("context") << Tables{{"GSUB", chainedContext()}};
    QTest::newRow("context and pairs") << Tables{{"GSUB", chainedContext()}, {"GPOS", pairKerning(0, false)}};
    QTest::newRow("no table at all") << Tables{{"GSUB", QByteArray(3, '\x01')}, {"GPOS", QByteArray(2, '\0')}};
    QByteArray cut = ligature(0);
    cut.chop(9);
    QTest::newRow("a table cut short") << Tables{{"GSUB", cut}};
}

void TestTextWidths::fontsWithRules()
{
    QFETCH(Tables, rules);
    const QString family = addFont(rules);
    if (family.isEmpty())
        QSKIP("The machine's font has no tables of its own.");
    QFont font(family);
    for (const auto hinting : {QFont::PreferDefaultHinting, QFont::PreferNoHinting, QFont::PreferFullHinting}) {
        font.setHintingPreference(hinting);
        for (const int size : {9, 13, 40}) {
            font.setPixelSize(size);
            QVERIFY(sameWidths(font, quint32(size)));
        }
    }
}

void TestTextWidths::longTexts()
{
    const QFont font;
    const QFontMetrics metrics(font);
    TextWidths widths(font, metrics);
    QRandomGenerator random(3);
    QString text;
    while (text.size() < 9000) {
        text += QChar(random.bounded(0x20, 0x7f));
        if (text.size() % 37 == 0)
            QCOMPARE(widths.width(text), metrics.horizontalAdvance(text));
    }
}

// The same font measures otherwise once its family is there.
void TestTextWidths::fontsThatComeLater()
{
    QStringList texts;
    QRandomGenerator random(4);
    for (int i = 0; i < 200; ++i)
        texts << QStringLiteral("fact ") + QChar(random.bounded(0x20, 0x7f)) + " ft";
    const QString family = newFamily();
    ListBoxSkin box;
    box.setFont(QFont(family, 20));
    box.setRowMode(1);
    box.setVariableWidth(true);
    box.insertStringList(texts);
    const auto sum = [&] {
        int width = 0;
        for (const QString& text : qAsConst(texts))
            width += box.fontMetrics().horizontalAdvance(text) + 6;
        return width;
    };
    const int before = sum();
    QCOMPARE(int(box.maxItemWidth()), before);
    if (addFont({{"GSUB", ligature(0)}}, family).isEmpty())
        QSKIP("The machine's font has no tables of its own.");
    QVERIFY(sum() != before);
    QCOMPARE(int(box.maxItemWidth()), sum());
}

QTEST_MAIN(TestTextWidths)
#include "tst_textwidths.moc"
