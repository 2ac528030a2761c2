#include "scroll/builtinpictures.h"
#include "skinbase/skinfixture.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <memory>
#include <utility>

using namespace skintest;
using skinwidgets::BuiltinPicture;
using skinwidgets::builtinPictures;
using skinwidgets::findBuiltinImage;

namespace
{

// What a record promises of its picture.
struct Promise {
    const char* name;
    QSize size;
    bool alpha;
};

// In the table's order.
const Promise promises[] = {
    {"close_normal", {20, 21}, false},
    {"close_press", {20, 21}, false},
    {"close_focus", {20, 21}, false},
    {"close_disable", {20, 21}, false},
    {"setting_title", {480, 23}, false},
    {"scroll_thumb_top_normal", {8, 5}, true},
    {"scroll_thumb_top_focus", {8, 5}, true},
    {"scroll_thumb_center_normal", {8, 1}, false},
    {"scroll_thumb_center_focus", {8, 1}, false},
    {"scroll_thumb_bottom_normal", {8, 5}, true},
    {"scroll_thumb_bottom_focus", {8, 5}, true},
    {"scroll_sub_press", {20, 20}, false},
    {"scroll_sub_normal", {20, 20}, false},
    {"scroll_sub_focus", {20, 20}, false},
    {"scroll_bg_top", {20, 8}, false},
    {"scroll_bg_middle", {20, 3}, false},
    {"scroll_bg_bottom", {20, 8}, false},
    {"scroll_add_press", {20, 20}, false},
    {"scroll_add_normal", {20, 20}, false},
    {"scroll_add_focus", {20, 20}, false},
};

QByteArray bytesOf(const BuiltinPicture& record)
{
    return {reinterpret_cast<const char*>(record.data), qsizetype(record.size)};
}

// Where an array's bytes lie. As text they could be equal in two places.
const void* place(const QByteArray& array)
{
    return array.constData();
}

QImage picture(const char* name)
{
    return QImage::fromData(findBuiltinImage(name), "PNG").convertToFormat(QImage::Format_ARGB32);
}

// The luminance of the web's accessibility rules, 0 to 1.
double luminance(QRgb pixel)
{
    const auto linear = [](int byte) {
        const double part = byte / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(pixel)) + 0.7152 * linear(qGreen(pixel)) + 0.0722 * linear(qBlue(pixel));
}

double contrast(double one, double other)
{
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

// The brightest and the darkest pixel of a part of a picture.
std::pair<double, double> extremes(const QImage& whole, const QRect& part)
{
    double least = 1;
    double most = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            const double light = luminance(whole.pixel(x, y));
            least = std::min(least, light);
            most = std::max(most, light);
        }
    }
    return {least, most};
}

} // namespace

class TestBuiltinPictures : public QObject
{
    Q_OBJECT

private slots:
    void namesAreComparedByContents();

    void order();
    void endRecord();
    void file_data();
    void file();

    void lookup_data();
    void lookup();
    void lookupInAnyOrder();
    void unknownName_data();
    void unknownName();
    void unknownNamesShareTheirArray();
    void arraysAreSharedAndReadOnly();

    void statesDiffer_data();
    void statesDiffer();
    void middleCanBeRepeated_data();
    void middleCanBeRepeated();
    void thumbIsRounded_data();
    void thumbIsRounded();
    void isLegible_data();
    void isLegible();
};

void TestBuiltinPictures::order()
{
    QStringList expected;
    for (const Promise& promise : promises)
        expected << QLatin1String(promise.name);
    QStringList names;
    for (const BuiltinPicture* record = builtinPictures; record->data; ++record)
        names << QLatin1String(record->name);
    QCOMPARE(names, expected);
    QCOMPARE(names.size(), 20);
}

void TestBuiltinPictures::endRecord()
{
    const BuiltinPicture& end = builtinPictures[std::size(promises)];
    QVERIFY(!end.data);
    QVERIFY(!end.name);
    QCOMPARE(end.size, 0U);
}

void TestBuiltinPictures::file_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(promises)); ++i)
        QTest::newRow(promises[i].name) << i;
}

void TestBuiltinPictures::file()
{
    QFETCH(int, index);
    const Promise& promise = promises[index];
    const QByteArray bytes = bytesOf(builtinPictures[index]);
    // A whole PNG file: its signature, its header, its end and nothing behind that.
    QVERIFY(bytes.startsWith("\x89PNG\r\n\x1a\n"));
    QCOMPARE(bytes.mid(12, 4), QByteArray("IHDR"));
    QCOMPARE(bytes.right(12), QByteArray("\0\0\0\0IEND\xae\x42\x60\x82", 12));
    const char* header = bytes.constData() + 16;
    QCOMPARE(qFromBigEndian<quint32>(header), quint32(promise.size.width()));
    QCOMPARE(qFromBigEndian<quint32>(header + 4), quint32(promise.size.height()));
    QCOMPARE(int(header[8]), 8);
    QCOMPARE(int(header[9]), promise.alpha ? 6 : 2);

    QImage decoded;
    QVERIFY(decoded.loadFromData(bytes, "PNG"));
    QCOMPARE(decoded.size(), promise.size);
    QCOMPARE(decoded.hasAlphaChannel(), promise.alpha);
}

void TestBuiltinPictures::lookup_data()
{
    file_data();
}

void TestBuiltinPictures::lookup()
{
    QFETCH(int, index);
    const BuiltinPicture& record = builtinPictures[index];
    const QByteArray first = findBuiltinImage(promises[index].name);
    // The table's own bytes, at the first look-up as at the next.
    QCOMPARE(place(first), static_cast<const void*>(record.data));
    QCOMPARE(first.size(), qsizetype(record.size));
    const QByteArray again = findBuiltinImage(promises[index].name);
    QCOMPARE(place(again), place(first));
    QCOMPARE(again.size(), first.size());
    QCOMPARE(QImage::fromData(again).size(), promises[index].size);
}

void TestBuiltinPictures::lookupInAnyOrder()
{
    for (int i = int(std::size(promises)) - 1; i >= 0; --i)
        QCOMPARE(place(findBuiltinImage(promises[i].name)), static_cast<const void*>(builtinPictures[i].data));
}

void TestBuiltinPictures::unknownName_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("another name") << QByteArray("scroll_page_normal");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("other case") << QByteArray("Scroll_sub_normal");
    QTest::newRow("all capitals") << QByteArray("SCROLL_SUB_NORMAL");
    QTest::newRow("the beginning of a name") << QByteArray("scroll_sub");
    QTest::newRow("a name and more") << QByteArray("scroll_sub_normal_");
    QTest::newRow("with the file's ending") << QByteArray("scroll_sub_normal.png");
    QTest::newRow("with a blank") << QByteArray(" scroll_sub_normal");
    QTest::newRow("very long") << QByteArray(100000, 'x');
    QTest::newRow("not ASCII") << QByteArray("\xff\xfe\x01");
}

void TestBuiltinPictures::unknownName()
{
    QFETCH(QByteArray, name);
    for (int i = 0; i < 3; ++i) {
        const QByteArray nothing = findBuiltinImage(name.constData());
        QVERIFY(nothing.isEmpty());
        QVERIFY(QImage::fromData(nothing).isNull());
    }
    QVERIFY(findBuiltinImage(nullptr).isEmpty());
    // Nothing of it comes in the way of a name that is known.
    QVERIFY(!findBuiltinImage("scroll_sub_normal").isEmpty());
}

void TestBuiltinPictures::unknownNamesShareTheirArray()
{
    const QByteArray one = findBuiltinImage("one");
    QCOMPARE(place(findBuiltinImage("other")), place(one));
    QCOMPARE(place(findBuiltinImage("one")), place(one));
}

// The caller's own memory plays no part, neither when a name is met for the first time nor later. This comes before all
// other look-ups, so that the names are new.
void TestBuiltinPictures::namesAreComparedByContents()
{
    auto name = std::make_unique<char[]>(32);
    std::strcpy(name.get(), "close_normal");
    const void* bytes = place(findBuiltinImage(name.get()));
    QCOMPARE(bytes, static_cast<const void*>(builtinPictures[0].data));
    std::strcpy(name.get(), "close_press");
    QCOMPARE(place(findBuiltinImage("close_normal")), bytes);
    QCOMPARE(place(findBuiltinImage(name.get())), place(findBuiltinImage("close_press")));
    QVERIFY(place(findBuiltinImage(name.get())) != bytes);
    std::strcpy(name.get(), "no such name");
    QVERIFY(findBuiltinImage(name.get()).isEmpty());
    name.reset();
    QCOMPARE(place(findBuiltinImage("close_normal")), bytes);
}

void TestBuiltinPictures::arraysAreSharedAndReadOnly()
{
    QByteArray mine = findBuiltinImage("close_focus");
    const char first = mine.at(0);
    mine[0] = 'x';
    QCOMPARE(findBuiltinImage("close_focus").at(0), first);
    QVERIFY(place(mine) != place(findBuiltinImage("close_focus")));
}

void TestBuiltinPictures::statesDiffer_data()
{
    QTest::addColumn<QByteArrayList>("names");
    QTest::newRow("close button") << QByteArrayList{"close_normal", "close_press", "close_focus", "close_disable"};
    QTest::newRow("top button") << QByteArrayList{"scroll_sub_normal", "scroll_sub_press", "scroll_sub_focus"};
    QTest::newRow("bottom button") << QByteArrayList{"scroll_add_normal", "scroll_add_press", "scroll_add_focus"};
    QTest::newRow("thumb, top") << QByteArrayList{"scroll_thumb_top_normal", "scroll_thumb_top_focus"};
    QTest::newRow("thumb, centre") << QByteArrayList{"scroll_thumb_center_normal", "scroll_thumb_center_focus"};
    QTest::newRow("thumb, bottom") << QByteArrayList{"scroll_thumb_bottom_normal", "scroll_thumb_bottom_focus"};
    QTest::newRow("buttons") << QByteArrayList{"scroll_sub_normal", "scroll_add_normal"};
}

// At a glance: a good part of the pixels is another one.
void TestBuiltinPictures::statesDiffer()
{
    QFETCH(QByteArrayList, names);
    for (int i = 0; i < names.size(); ++i) {
        for (int k = 0; k < i; ++k) {
            const QImage one = picture(names[i].constData());
            const QImage other = picture(names[k].constData());
            int changed = 0;
            for (int y = 0; y < one.height(); ++y)
                for (int x = 0; x < one.width(); ++x)
                    if (one.pixel(x, y) != other.pixel(x, y))
                        ++changed;
            QVERIFY2(changed * 10 >= one.width() * one.height(), (names[i] + " and " + names[k]).constData());
        }
    }
}

void TestBuiltinPictures::middleCanBeRepeated_data()
{
    QTest::addColumn<QByteArrayList>("names");
    QTest::newRow("trough") << QByteArrayList{"scroll_bg_top", "scroll_bg_middle", "scroll_bg_bottom"};
    QTest::newRow("thumb") << QByteArrayList{"scroll_thumb_top_normal", "scroll_thumb_center_normal",
                                             "scroll_thumb_bottom_normal"};
    QTest::newRow("dragged thumb") << QByteArrayList{"scroll_thumb_top_focus", "scroll_thumb_center_focus",
                                                     "scroll_thumb_bottom_focus"};
}

// No seams: the rows where two pieces meet are hardly apart.
void TestBuiltinPictures::middleCanBeRepeated()
{
    QFETCH(QByteArrayList, names);
    const QImage top = picture(names[0].constData());
    const QImage middle = picture(names[1].constData());
    const QImage bottom = picture(names[2].constData());
    const auto step = [](const QImage& upper, int row, const QImage& lower, int next) {
        int most = 0;
        for (int x = 0; x < upper.width(); ++x) {
            const QRgb a = upper.pixel(x, row);
            const QRgb b = lower.pixel(x, next);
            most = std::max({most, qAbs(qRed(a) - qRed(b)), qAbs(qGreen(a) - qGreen(b)), qAbs(qBlue(a) - qBlue(b)),
                             qAbs(qAlpha(a) - qAlpha(b))});
        }
        return most;
    };
    const int last = middle.height() - 1;
    for (int y = 0; y < last; ++y)
        QCOMPARE(step(middle, y, middle, y + 1), 0);
    QVERIFY(step(top, top.height() - 1, middle, 0) <= 12);
    QVERIFY(step(middle, last, bottom, 0) <= 12);
}

void TestBuiltinPictures::thumbIsRounded_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("outerRow");
    QTest::newRow("top") << QByteArray("scroll_thumb_top_normal") << 0;
    QTest::newRow("top, dragged") << QByteArray("scroll_thumb_top_focus") << 0;
    QTest::newRow("bottom") << QByteArray("scroll_thumb_bottom_normal") << 4;
    QTest::newRow("bottom, dragged") << QByteArray("scroll_thumb_bottom_focus") << 4;
}

void TestBuiltinPictures::thumbIsRounded()
{
    QFETCH(QByteArray, name);
    QFETCH(int, outerRow);
    const QImage cap = picture(name.constData());
    QVERIFY(qAlpha(cap.pixel(0, outerRow)) < 64);
    QVERIFY(qAlpha(cap.pixel(7, outerRow)) < 64);
    QVERIFY(qAlpha(cap.pixel(3, outerRow)) > 192);
    QCOMPARE(qAlpha(cap.pixel(0, 4 - outerRow)), 255);
}

void TestBuiltinPictures::isLegible_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QRect>("part");
    QTest::newRow("close button") << QByteArray("close_normal") << QRect(0, 0, 20, 21);
    QTest::newRow("pressed close button") << QByteArray("close_press") << QRect(0, 0, 20, 21);
    QTest::newRow("top button") << QByteArray("scroll_sub_normal") << QRect(4, 4, 12, 12);
    QTest::newRow("pressed top button") << QByteArray("scroll_sub_press") << QRect(4, 4, 12, 12);
    QTest::newRow("bottom button") << QByteArray("scroll_add_normal") << QRect(4, 4, 12, 12);
    QTest::newRow("pressed bottom button") << QByteArray("scroll_add_press") << QRect(4, 4, 12, 12);
}

// The sign stands out from its button, and the thumb from the channel that it runs in.
void TestBuiltinPictures::isLegible()
{
    QFETCH(QByteArray, name);
    QFETCH(QRect, part);
    const auto [least, most] = extremes(picture(name.constData()), part);
    QVERIFY2(contrast(least, most) >= 4.5, QByteArray::number(contrast(least, most)).constData());

    const double channel = extremes(picture("scroll_bg_middle"), QRect(7, 0, 6, 3)).second;
    for (const char* thumb : {"scroll_thumb_center_normal", "scroll_thumb_center_focus"}) {
        const double face = luminance(picture(thumb).pixel(3, 0));
        QVERIFY2(contrast(face, channel) >= 4.5, QByteArray::number(contrast(face, channel)).constData());
    }
}

QTEST_APPLESS_MAIN(TestBuiltinPictures)

#include "tst_builtinpictures.moc"
