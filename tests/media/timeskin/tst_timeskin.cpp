#include "media/mediafixture.h"
#include "media/timeskin.h"

#include <QMetaMethod>

#include <type_traits>

using namespace mediatest;

namespace
{

// Figures 10 x 20 and colons 4 x 20, each pixel with its own colour and an alpha of 0, 85, 170 or 255.
struct TimeSkins {
    static QImage shaded(int width, int height, int seed)
    {
        QImage picture(width, height, QImage::Format_ARGB32);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                picture.setPixel(x, y, qRgba(2 * x, 10 * y, seed, (x + y) % 4 * 85));
        return picture;
    }
    static QImage numbers() { return shaded(100, 20, 40); }
    static QImage colon() { return shaded(4, 20, 80); }
    static QImage figure(int d) { return numbers().copy(10 * d, 0, 10, 20); }

    static void install(const Installation& installation, const QByteArray& spacing = "spacing = 2\n")
    {
        installation.picture("player", "numbers.png", numbers());
        installation.picture("player", "colon.png", colon());
        installation.config("player", "[Time]\nnumber_image = numbers.png\ncolon_image = colon.png\n" + spacing);
    }
};

constexpr int digitPlaces[] = {0, 12, 30, 42, 60, 72};
constexpr int colonPlaces[] = {24, 54};

// A display whose data is in the open and that tells which of its virtual operations are called.
class Time : public TimeSkin
{
public:
    using TimeSkin::TimeSkin;

    using TimeSkin::alphaOverride;
    using TimeSkin::backgroundImage;
    using TimeSkin::buttonMap;
    using TimeSkin::colon1Rect;
    using TimeSkin::colon2Rect;
    using TimeSkin::colonImage;
    using TimeSkin::colonImage1;
    using TimeSkin::colonImage2;
    using TimeSkin::currentTime;
    using TimeSkin::digits;
    using TimeSkin::numberImage;
    using TimeSkin::spacing;

    using TimeSkin::paintEvent;

    struct Blit {
        QImage picture;
        QRect area;
        QRect pictureRect;
        QImage before;
    };

    QStringList calls;
    QList<QImage> composed;
    QList<Blit> blits;

    void init_positions(const QSize& number, const QSize& colon) override
    {
        calls << QStringLiteral("init_positions(%1x%2,%3x%4)")
                     .arg(number.width())
                     .arg(number.height())
                     .arg(colon.width())
                     .arg(colon.height());
        TimeSkin::init_positions(number, colon);
    }
    void redrawDigits() override
    {
        calls << "redrawDigits()";
        TimeSkin::redrawDigits();
    }
    void redrawColons() override
    {
        calls << "redrawColons()";
        TimeSkin::redrawColons();
    }
    void drawDigits(QPixmap* pm, const QRect& r) override
    {
        calls << "drawDigits " + rectText(r);
        TimeSkin::drawDigits(pm, r);
    }
    void redrawButtonImages() override
    {
        calls << "redrawButtonImages()";
        TimeSkin::redrawButtonImages();
    }
    void redrawImage(QImage& picture, int x, int y) override
    {
        calls << "redrawImage " + rectText(QRect(QPoint(x, y), picture.size()));
        composed << picture;
        TimeSkin::redrawImage(picture, x, y);
    }
    void drawClippedImage(QPixmap* target, QImage picture, const QRect& area, const QRect& pictureRect) override
    {
        blits.append({picture, area, pictureRect, target->toImage()});
        TimeSkin::drawClippedImage(target, picture, area, pictureRect);
    }

    QList<int> figures() const
    {
        QList<int> result;
        for (const auto& digit : digits)
            result << digit.current;
        return result;
    }
    QList<QRect> rects() const
    {
        return {digits[0].rect, digits[1].rect, colon1Rect,     digits[2].rect,
                digits[3].rect, colon2Rect,     digits[4].rect, digits[5].rect};
    }
};

QImage expected(const QList<int>& figures, const QImage& beneath)
{
    QImage result = withAlphaBytes(beneath.copy(0, 0, 82, 20), 255);
    for (int i = 0; i < 6; ++i)
        result = blended(result, TimeSkins::figure(figures[i]), QPoint(digitPlaces[i], 0));
    for (const int place : colonPlaces)
        result = blended(result, TimeSkins::colon(), QPoint(place, 0));
    return result;
}

QStringList composingCalls()
{
    QStringList calls;
    for (const int place : digitPlaces)
        for (int d = 0; d < 10; ++d)
            calls << "redrawImage " + rectText(QRect(place, 0, 10, 20));
    calls.prepend("redrawDigits()");
    calls << "redrawColons()";
    for (const int place : colonPlaces)
        calls << "redrawImage " + rectText(QRect(place, 0, 4, 20));
    return calls;
}

} // namespace

class TestTimeSkin : public InstalledTest
{
    Q_OBJECT

private slots:
    void basesAndSlots();
    void dataModel();
    void constructorArguments();
    void fresh();
    void showsMidnightAtFirst();
    void skinOfTheWindow();
    void windowDisplayIsItsOwnSkin();
    void loadsThroughTheBase();
    void loadingInOrder();
    void missingKey_data();
    void missingKey();
    void missingFile_data();
    void missingFile();
    void spacing_data();
    void spacing();
    void sizes_data();
    void sizes();
    void sizeFollowsTheLastPlace();
    void loadingAgainReplaces();

    void positions_data();
    void positions();
    void figuresAreCutFromTheStrip();
    void everyPlaceHasItsOwnFigures();
    void colonsAreComposedForTheirPlaces();
    void alphaRebuildsInOrder();
    void backgroundPixmapRebuildsInOrder();
    void alpha_data();
    void alpha();
    void composingNeverAccumulates();
    void backgroundPixmap();

    void figures_data();
    void figures();
    void updateRepaintsChangedPlaces_data();
    void updateRepaintsChangedPlaces();
    void updateThroughTheMetaObject();
    void sameTimeIsLeftAlone();
    void currentTimeIsKept();

    void drawDigits_data();
    void drawDigits();
    void paintsInOrder();
    void regionRectangleByRectangle();
    void emptyRegionPaintsNothing();
    void wholePicture_data();
    void wholePicture();
    void partsPaintedAlone();
    void paintsOverTheBackground();

    void ignoresInput_data();
    void ignoresInput();
    void inputIsNotPassedOn();

private:
    void installSkins() override { TimeSkins::install(*installation); }
};

void TestTimeSkin::basesAndSlots()
{
    static_assert(std::is_base_of_v<SkinBase, TimeSkin>);
    QCOMPARE(TimeSkin::staticMetaObject.superClass(), &SkinBase::staticMetaObject);
    const QMetaObject& meta = TimeSkin::staticMetaObject;
    const int index = meta.indexOfSlot(QMetaObject::normalizedSignature("update_time(unsigned int)"));
    QVERIFY(index >= meta.methodOffset());
    QCOMPARE(meta.method(index).access(), QMetaMethod::Public);
}

// What a subclass reads has these types.
void TestTimeSkin::dataModel()
{
    static_assert(std::is_same_v<decltype(Time::digits), TimeDigit[6]>);
    static_assert(std::is_same_v<decltype(TimeDigit::images), QImage[10]>);
    static_assert(std::is_same_v<decltype(Time::colonImage1), QImage>);
    static_assert(std::is_same_v<decltype(Time::colon1Rect), QRect>);
    static_assert(std::is_same_v<decltype(Time::colonImage2), QImage>);
    static_assert(std::is_same_v<decltype(Time::colon2Rect), QRect>);
    static_assert(std::is_same_v<decltype(Time::currentTime), unsigned int>);
    static_assert(std::is_same_v<decltype(Time::numberImage), QImage*>);
    static_assert(std::is_same_v<decltype(Time::colonImage), QImage*>);
    static_assert(std::is_same_v<decltype(Time::spacing), int>);
    const TimeDigit fresh;
    QCOMPARE(fresh.rect, QRect(QPoint(0, 0), QPoint(-1, -1)));
    QCOMPARE(fresh.current, 0);
}

void TestTimeSkin::constructorArguments()
{
    const TimeSkin bare;
    QVERIFY(!bare.parent() && bare.objectName().isEmpty());
    Window window;
    const unsigned int flags = Qt::WMouseNoMask;
    const TimeSkin time(&window, "Time", flags);
    QCOMPARE(time.parentWidget(), &window);
    QCOMPARE(time.name(), "Time");
    QVERIFY(time.testWFlags(Qt::WMouseNoMask));
    QCOMPARE(int(time.focusPolicy()), int(Qt::NoFocus));
}

void TestTimeSkin::fresh()
{
    Window window;
    const Time time(&window, "no such group");
    QCOMPARE(int(std::size(time.digits)), 6);
    QCOMPARE(time.figures(), QList<int>({0, 0, 0, 0, 0, 0}));
    QCOMPARE(time.currentTime, 0U);
    QVERIFY(time.numberImage && time.numberImage->isNull());
    QVERIFY(time.colonImage && time.colonImage->isNull());
    for (const auto& digit : time.digits) {
        QCOMPARE(int(std::size(digit.images)), 10);
        for (const QImage& image : digit.images)
            QVERIFY(image.isNull());
    }
    QVERIFY(time.colonImage1.isNull() && time.colonImage2.isNull());
    QVERIFY(time.size().isEmpty());
    QCOMPARE(time.spacing, -1);
}

void TestTimeSkin::showsMidnightAtFirst()
{
    Window window;
    Time time(&window, "Time");
    QCOMPARE(time.figures(), QList<int>({0, 0, 0, 0, 0, 0}));
    QCOMPARE(time.currentTime, 0U);
    time.setBackgroundImage(pattern(82, 20, 7));
    COMPARE_PICTURES(shown(time), expected({0, 0, 0, 0, 0, 0}, pattern(82, 20, 7)));
}

void TestTimeSkin::skinOfTheWindow()
{
    installation->picture("other", "n.png", pattern(50, 6));
    installation->config("other", "[Time]\nnumber_image = n.png\nspacing = 0\n");
    Window window("other");
    QWidget parent(&window);
    parent.setObjectName("player");
    const TimeSkin time(&parent, "Time");
    QCOMPARE(time.size(), QSize(30, 6));
    window.setObjectName("player");
    const TimeSkin later(&parent, "Time");
    QCOMPARE(later.size(), QSize(82, 20));
}

void TestTimeSkin::windowDisplayIsItsOwnSkin()
{
    installation->picture("Clock", "n.png", pattern(50, 6));
    installation->config("Clock", "[Clock]\nnumber_image = n.png\nspacing = 0\n");
    const TimeSkin time(nullptr, "Clock");
    QCOMPARE(time.size(), QSize(30, 6));
}

void TestTimeSkin::loadsThroughTheBase()
{
    Window window;
    Time time(&window, "no such group");
    static_cast<SkinBase&>(time).do_configloading("Time");
    QCOMPARE(time.size(), QSize(82, 20));
    COMPARE_PICTURES(*time.numberImage, TimeSkins::numbers());
}

void TestTimeSkin::loadingInOrder()
{
    Window window;
    Time time(&window, "no such group");
    time.calls.clear();
    time.do_configloading("Time");
    QCOMPARE(time.calls, QStringList("init_positions(100x20,4x20)") + composingCalls());
    COMPARE_PICTURES(*time.numberImage, TimeSkins::numbers());
    COMPARE_PICTURES(*time.colonImage, TimeSkins::colon());
    QCOMPARE(time.spacing, 2);
}

void TestTimeSkin::missingKey_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QSize>("size");
    QTest::newRow("number_image") << QByteArray("number_image") << QSize(0, 0);
    // Six figures of 10 and seven gaps of 2, the colons having no width.
    QTest::newRow("colon_image") << QByteArray("colon_image") << QSize(74, 20);
    QTest::newRow("spacing") << QByteArray("spacing") << QSize(61, 20);
}

void TestTimeSkin::missingKey()
{
    QFETCH(QByteArray, key);
    QFETCH(QSize, size);
    QByteArray config = "[Time]\n";
    for (const QByteArray line : {"number_image = numbers.png\n", "colon_image = colon.png\n", "spacing = 2\n"})
        if (!line.startsWith(key))
            config += line;
    installation->config("player", config);
    Window window;
    const Time time(&window, "Time");
    QCOMPARE(time.numberImage->isNull(), key == "number_image");
    QCOMPARE(time.colonImage->isNull(), key == "colon_image");
    QCOMPARE(time.spacing, key == "spacing" ? -1 : 2);
    if (size.isEmpty())
        QCOMPARE(time.height(), 0);
    else
        QCOMPARE(time.size(), size);
}

void TestTimeSkin::missingFile_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("numbers") << "numbers.png";
    QTest::newRow("colon") << "colon.png";
    QTest::newRow("config") << "config";
}

void TestTimeSkin::missingFile()
{
    QFETCH(QString, file);
    QVERIFY(QFile::remove(installation->skin("player") + '/' + file));
    Window window;
    Time time(&window, "Time");
    QCOMPARE(time.numberImage->isNull(), file != "colon.png");
    QCOMPARE(time.colonImage->isNull(), file != "numbers.png");
    QCOMPARE(time.size().isEmpty(), file != "colon.png");
    time.update_time(3723);
    QCOMPARE(time.figures(), QList<int>({0, 1, 0, 2, 0, 3}));
}

void TestTimeSkin::spacing_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<int>("value");
    QTest::newRow("positive") << QByteArray("spacing = 7\n") << 7;
    QTest::newRow("zero") << QByteArray("spacing = 0\n") << 0;
    QTest::newRow("negative") << QByteArray("spacing = -3\n") << -3;
    QTest::newRow("missing") << QByteArray() << -1;
    QTest::newRow("no number") << QByteArray("spacing = wide\n") << 0;
}

void TestTimeSkin::spacing()
{
    QFETCH(QByteArray, entry);
    QFETCH(int, value);
    TimeSkins::install(*installation, entry);
    Window window;
    const Time time(&window, "Time");
    QCOMPARE(time.spacing, value);
    QCOMPARE(time.digits[1].rect.left(), 10 + value);
    QCOMPARE(time.size(), QSize(68 + 7 * value, 20));
}

void TestTimeSkin::sizes_data()
{
    QTest::addColumn<QSize>("numbers");
    QTest::addColumn<QSize>("colon");
    QTest::addColumn<QSize>("size");
    QTest::newRow("strip 100 x 20, colon 4 x 20") << QSize(100, 20) << QSize(4, 20) << QSize(82, 20);
    QTest::newRow("strip width not a multiple of ten") << QSize(109, 20) << QSize(4, 20) << QSize(82, 20);
    QTest::newRow("colon higher than the figures") << QSize(100, 20) << QSize(4, 30) << QSize(82, 20);
    QTest::newRow("colon lower than the figures") << QSize(100, 20) << QSize(4, 5) << QSize(82, 20);
    QTest::newRow("figures of one pixel") << QSize(10, 1) << QSize(1, 1) << QSize(22, 1);
}

void TestTimeSkin::sizes()
{
    QFETCH(QSize, numbers);
    QFETCH(QSize, colon);
    QFETCH(QSize, size);
    installation->picture("player", "numbers.png", pattern(numbers.width(), numbers.height()));
    installation->picture("player", "colon.png", pattern(colon.width(), colon.height()));
    Window window;
    const Time time(&window, "Time");
    QCOMPARE(time.size(), size);
    QCOMPARE(time.colon1Rect.size(), colon);
    QCOMPARE(time.colonImage2.size(), colon);
    QCOMPARE(time.digits[5].images[9].size(), QSize(numbers.width() / 10, numbers.height()));
}

// The place's left edge and its picture of 0 count, also where a subclass lays the places out differently.
void TestTimeSkin::sizeFollowsTheLastPlace()
{
    struct Wide : Time {
        using Time::Time;
        void init_positions(const QSize& number, const QSize& colon) override
        {
            Time::init_positions(number, colon);
            digits[5].rect = QRect(90, 3, 33, 44);
        }
    };
    Window window;
    Wide time(&window, "Time");
    time.do_configloading("Time");
    QCOMPARE(time.size(), QSize(100, 20));
}

void TestTimeSkin::loadingAgainReplaces()
{
    installation->picture("player", "n.png", pattern(50, 6));
    installation->config("player", "[Time]\nnumber_image = numbers.png\ncolon_image = colon.png\nspacing = 2\n"
                                   "[Other]\nnumber_image = n.png\nspacing = 1\n");
    Window window;
    Time time(&window, "Time");
    time.update_time(3723);
    time.do_configloading("Other");
    QCOMPARE(time.size(), QSize(37, 6));
    QVERIFY(time.colonImage->isNull());
    QVERIFY(time.colonImage1.isNull() && time.colonImage2.isNull());
    COMPARE_PICTURES(*time.numberImage, pattern(50, 6));
    COMPARE_PICTURES(time.digits[3].images[4], pattern(50, 6).copy(20, 0, 5, 6));
    QCOMPARE(time.currentTime, 3723U);
    QCOMPARE(time.figures(), QList<int>({0, 1, 0, 2, 0, 3}));
}

void TestTimeSkin::positions_data()
{
    QTest::addColumn<int>("spacing");
    QTest::addColumn<QSize>("number");
    QTest::addColumn<QSize>("colon");
    QTest::addColumn<QList<int>>("lefts");
    QTest::newRow("gaps of 2") << 2 << QSize(100, 20) << QSize(4, 20) << QList<int>{0, 12, 24, 30, 42, 54, 60, 72};
    QTest::newRow("no gaps") << 0 << QSize(100, 20) << QSize(4, 20) << QList<int>{0, 10, 20, 24, 34, 44, 48, 58};
    QTest::newRow("overlapping by 3") << -3 << QSize(100, 20) << QSize(4, 20)
                                      << QList<int>{0, 7, 14, 15, 22, 29, 30, 37};
    QTest::newRow("odd strip") << 1 << QSize(59, 7) << QSize(2, 9) << QList<int>{0, 6, 12, 15, 21, 27, 30, 36};
    QTest::newRow("overlapping by more than the width")
        << -20 << QSize(100, 20) << QSize(4, 20) << QList<int>{0, -10, -20, -36, -46, -56, -72, -82};
}

void TestTimeSkin::positions()
{
    QFETCH(int, spacing);
    QFETCH(QSize, number);
    QFETCH(QSize, colon);
    QFETCH(QList<int>, lefts);
    Window window;
    Time time(&window, "Time");
    time.spacing = spacing;
    time.init_positions(number, colon);
    const QList<QRect> rects = time.rects();
    for (int i = 0; i < 8; ++i) {
        const bool isColon = i == 2 || i == 5;
        QCOMPARE(rects[i], QRect(QPoint(lefts[i], 0), isColon ? colon : QSize(number.width() / 10, number.height())));
    }
}

void TestTimeSkin::figuresAreCutFromTheStrip()
{
    installation->picture("player", "numbers.png", pattern(109, 20, 3));
    Window window;
    const Time time(&window, "Time");
    for (const auto& digit : time.digits)
        for (int d = 0; d < 10; ++d)
            COMPARE_PICTURES(digit.images[d], pattern(109, 20, 3).copy(10 * d, 0, 10, 20));
}

void TestTimeSkin::everyPlaceHasItsOwnFigures()
{
    Window window;
    Time time(&window, "Time");
    const QImage beneath = pattern(82, 20, 200);
    time.setBackgroundImage(beneath);
    time.setAlphaOverride(30);
    for (int i = 0; i < 6; ++i)
        for (int d = 0; d < 10; ++d)
            COMPARE_PICTURES(
                time.digits[i].images[d],
                withAlphaBytes(blended(beneath.copy(digitPlaces[i], 0, 10, 20), TimeSkins::figure(d)), 30));
}

void TestTimeSkin::colonsAreComposedForTheirPlaces()
{
    Window window;
    Time time(&window, "Time");
    const QImage beneath = pattern(82, 20, 200);
    time.setBackgroundImage(beneath);
    time.setAlphaOverride(30);
    COMPARE_PICTURES(time.colonImage1, withAlphaBytes(blended(beneath.copy(24, 0, 4, 20), TimeSkins::colon()), 30));
    COMPARE_PICTURES(time.colonImage2, withAlphaBytes(blended(beneath.copy(54, 0, 4, 20), TimeSkins::colon()), 30));
    COMPARE_PICTURES(*time.colonImage, TimeSkins::colon());
    COMPARE_PICTURES(*time.numberImage, TimeSkins::numbers());
}

void TestTimeSkin::alphaRebuildsInOrder()
{
    Window window;
    Time time(&window, "Time");
    time.calls.clear();
    static_cast<SkinBase&>(time).setAlphaOverride(9);
    QCOMPARE(time.calls, QStringList("redrawButtonImages()") + composingCalls());
    QCOMPARE(int(time.alphaOverride), 9);
    for (int i = 0; i < 60; ++i)
        COMPARE_PICTURES(time.composed.value(i), TimeSkins::figure(i % 10));
    COMPARE_PICTURES(time.composed.value(60), TimeSkins::colon());
    COMPARE_PICTURES(time.composed.value(61), TimeSkins::colon());
}

void TestTimeSkin::backgroundPixmapRebuildsInOrder()
{
    Window window;
    Time time(&window, "Time");
    time.calls.clear();
    static_cast<ToolkitWidget<QWidget>&>(time).setBackgroundPixmap(pixmap(pattern(82, 20)));
    QCOMPARE(time.calls, QStringList("redrawButtonImages()") + composingCalls());
}

void TestTimeSkin::alpha_data()
{
    QTest::addColumn<int>("alpha");
    for (const int alpha : {0, 1, 128, 255})
        QTest::addRow("alpha %d", alpha) << alpha;
}

void TestTimeSkin::alpha()
{
    QFETCH(int, alpha);
    Window window;
    Time time(&window, "Time");
    time.setBackgroundImage(pattern(82, 20, 200));
    const QImage before = shown(time);
    time.setAlphaOverride(static_cast<unsigned char>(alpha));
    for (const auto& digit : time.digits)
        for (const QImage& image : digit.images)
            COMPARE_PICTURES(image, withAlphaBytes(image, alpha));
    COMPARE_PICTURES(time.colonImage1, withAlphaBytes(time.colonImage1, alpha));
    COMPARE_PICTURES(time.colonImage2, withAlphaBytes(time.colonImage2, alpha));
    // The colours do not depend on it.
    COMPARE_PICTURES(shown(time), before);
}

void TestTimeSkin::composingNeverAccumulates()
{
    Window window;
    Time time(&window, "Time");
    time.setBackgroundImage(pattern(82, 20, 200));
    const QImage figure = time.digits[2].images[7];
    const QImage colon = time.colonImage2;
    for (int i = 0; i < 3; ++i) {
        time.setAlphaOverride(0);
        time.setAlphaOverride(255);
        time.redrawDigits();
        time.redrawColons();
    }
    COMPARE_PICTURES(time.digits[2].images[7], figure);
    COMPARE_PICTURES(time.colonImage2, colon);
}

void TestTimeSkin::backgroundPixmap()
{
    Window window;
    Time time(&window, "Time");
    time.move(9, 13);
    const QImage parent = pattern(200, 100, 77);
    time.setBackgroundPixmap(pixmap(parent));
    COMPARE_PICTURES(shown(time), expected({0, 0, 0, 0, 0, 0}, parent.copy(9, 13, 82, 20)));
}

void TestTimeSkin::figures_data()
{
    QTest::addColumn<unsigned int>("seconds");
    QTest::addColumn<QList<int>>("figures");
    QTest::newRow("00:00:01") << 1U << QList<int>{0, 0, 0, 0, 0, 1};
    QTest::newRow("00:00:59") << 59U << QList<int>{0, 0, 0, 0, 5, 9};
    QTest::newRow("00:01:00") << 60U << QList<int>{0, 0, 0, 1, 0, 0};
    QTest::newRow("00:59:59") << 3599U << QList<int>{0, 0, 5, 9, 5, 9};
    QTest::newRow("01:00:00") << 3600U << QList<int>{0, 1, 0, 0, 0, 0};
    QTest::newRow("01:02:03") << 3723U << QList<int>{0, 1, 0, 2, 0, 3};
    QTest::newRow("12:34:56") << 45296U << QList<int>{1, 2, 3, 4, 5, 6};
    QTest::newRow("10:00:00") << 36000U << QList<int>{1, 0, 0, 0, 0, 0};
    QTest::newRow("hours are not wrapped: 24:00:00") << 86400U << QList<int>{2, 4, 0, 0, 0, 0};
    QTest::newRow("99:59:59") << 359999U << QList<int>{9, 9, 5, 9, 5, 9};
    QTest::newRow("first figure ends at 9: 100 hours") << 360000U << QList<int>{9, 0, 0, 0, 0, 0};
    QTest::newRow("first figure ends at 9: 123:45:06") << 445506U << QList<int>{9, 3, 4, 5, 0, 6};
    QTest::newRow("beyond the signed numbers") << 2147483648U << QList<int>{9, 3, 1, 4, 0, 8};
    QTest::newRow("highest") << 4294967295U << QList<int>{9, 6, 2, 8, 1, 5};
}

void TestTimeSkin::figures()
{
    QFETCH(unsigned int, seconds);
    QFETCH(QList<int>, figures);
    Window window;
    Time time(&window, "Time");
    time.setBackgroundImage(pattern(82, 20, 200));
    time.update_time(seconds);
    QCOMPARE(time.currentTime, seconds);
    QCOMPARE(time.figures(), figures);
    COMPARE_PICTURES(shown(time), expected(figures, pattern(82, 20, 200)));
}

void TestTimeSkin::updateRepaintsChangedPlaces_data()
{
    QTest::addColumn<unsigned int>("from");
    QTest::addColumn<unsigned int>("to");
    QTest::addColumn<QList<int>>("changed");
    QTest::newRow("00:00:00 to 01:02:03") << 0U << 3723U << QList<int>{1, 3, 5};
    QTest::newRow("the same time") << 3723U << 3723U << QList<int>();
    QTest::newRow("midnight again") << 0U << 0U << QList<int>();
    QTest::newRow("next second") << 3723U << 3724U << QList<int>{5};
    QTest::newRow("next minute") << 59U << 60U << QList<int>{3, 4, 5};
    QTest::newRow("all six") << 0U << 45296U << QList<int>{0, 1, 2, 3, 4, 5};
    QTest::newRow("back") << 3600U << 3599U << QList<int>{1, 2, 3, 4, 5};
    QTest::newRow("above 100 hours, same figures") << 360000U << 720000U << QList<int>();
}

void TestTimeSkin::updateRepaintsChangedPlaces()
{
    QFETCH(unsigned int, from);
    QFETCH(unsigned int, to);
    QFETCH(QList<int>, changed);
    Window window;
    Time time(&window, "Time");
    QVERIFY(window.expose());
    time.update_time(from);
    QVERIFY(window.settle());
    Recorder recorder;
    recorder.watchPaints(&time);
    time.update_time(to);
    QStringList log;
    for (const int digit : changed)
        log << "paint " + rectText(QRect(digitPlaces[digit], 0, 10, 20));
    // At once, each place for itself and in their order.
    QCOMPARE(recorder.take(), log);
    QVERIFY(window.settle());
    time.update_time(to);
    QVERIFY(window.settle());
    QCOMPARE(recorder.take(), QStringList());
}

void TestTimeSkin::updateThroughTheMetaObject()
{
    Window window;
    Time time(&window, "Time");
    QVERIFY(QMetaObject::invokeMethod(&time, "update_time", Q_ARG(unsigned int, 3723U)));
    QCOMPARE(time.currentTime, 3723U);
}

// Not even figures that a subclass has put there are looked at.
void TestTimeSkin::sameTimeIsLeftAlone()
{
    Window window;
    Time time(&window, "Time");
    time.update_time(3723);
    time.digits[5].current = 8;
    time.update_time(3723);
    QCOMPARE(time.digits[5].current, 8);
    time.update_time(3724);
    QCOMPARE(time.figures(), QList<int>({0, 1, 0, 2, 0, 4}));
}

void TestTimeSkin::currentTimeIsKept()
{
    Window window;
    Time time(&window, "Time");
    time.update_time(45296);
    time.setAlphaOverride(4);
    time.setBackgroundPixmap(pixmap(pattern(82, 20)));
    QCOMPARE(time.currentTime, 45296U);
    QCOMPARE(time.figures(), QList<int>({1, 2, 3, 4, 5, 6}));
}

void TestTimeSkin::drawDigits_data()
{
    QTest::addColumn<QRect>("area");
    QTest::newRow("everything") << QRect(0, 0, 82, 20);
    QTest::newRow("a part of two digits") << QRect(5, 3, 12, 6);
    QTest::newRow("one pixel") << QRect(75, 19, 1, 1);
    QTest::newRow("a gap") << QRect(10, 0, 2, 20);
    QTest::newRow("a colon") << QRect(24, 0, 4, 20);
    QTest::newRow("more than the display") << QRect(-5, -5, 100, 40);
}

void TestTimeSkin::drawDigits()
{
    QFETCH(QRect, area);
    Window window;
    Time time(&window, "Time");
    time.setBackgroundImage(pattern(82, 20, 200));
    time.setAlphaOverride(128);
    time.update_time(45296);
    const QImage under = pattern(area.width(), area.height(), 66, 9);
    QPixmap target = pixmap(under);
    time.drawDigits(&target, area);
    QImage result = under;
    for (int i = 0; i < 6; ++i)
        put(result, time.digits[i].images[i + 1], QRect(0, 0, 10, 20), QPoint(digitPlaces[i], 0) - area.topLeft());
    // Copied, not blended, alpha byte included; colons are not drawn here.
    COMPARE_PICTURES(target.toImage(), result);
    QCOMPARE(time.blits.size(), 6);
    for (int i = 0; i < 6; ++i) {
        QCOMPARE(time.blits.at(i).area, area);
        QCOMPARE(time.blits.at(i).pictureRect, time.digits[i].rect);
        COMPARE_PICTURES(time.blits.at(i).picture, time.digits[i].images[i + 1]);
    }
}

void TestTimeSkin::paintsInOrder()
{
    Window window;
    Time time(&window, "Time");
    time.setBackgroundImage(pattern(82, 20, 200));
    QVERIFY(window.expose());
    time.calls.clear();
    time.blits.clear();
    time.repaint(QRect(20, 2, 30, 10));
    QCOMPARE(time.calls, QStringList{"drawDigits 20,2 30x10"});
    QCOMPARE(time.blits.size(), 8);
    COMPARE_PICTURES(time.blits.at(0).before, pattern(82, 20, 200).copy(20, 2, 30, 10));
    QCOMPARE(time.blits.at(6).pictureRect, QRect(24, 0, 4, 20));
    COMPARE_PICTURES(time.blits.at(6).picture, time.colonImage1);
    QCOMPARE(time.blits.at(7).pictureRect, QRect(54, 0, 4, 20));
    COMPARE_PICTURES(time.blits.at(7).picture, time.colonImage2);
}

void TestTimeSkin::regionRectangleByRectangle()
{
    Window window;
    Time time(&window, "Time");
    QVERIFY(window.expose());
    time.calls.clear();
    time.blits.clear();
    time.repaint(QRegion(0, 0, 5, 5) + QRegion(40, 0, 6, 5) + QRegion(20, 10, 7, 8));
    QCOMPARE(time.calls, (QStringList{"drawDigits 0,0 5x5", "drawDigits 40,0 6x5", "drawDigits 20,10 7x8"}));
    QCOMPARE(time.blits.size(), 24);
    QCOMPARE(time.blits.at(15).area, QRect(40, 0, 6, 5));
    QCOMPARE(time.blits.at(15).before.size(), QSize(6, 5));
}

void TestTimeSkin::emptyRegionPaintsNothing()
{
    Window window;
    Time time(&window, "Time");
    time.calls.clear();
    QPaintEvent nothing{QRegion()};
    time.paintEvent(&nothing);
    QCOMPARE(time.calls, QStringList());
    QCOMPARE(Messages::texts(), QStringList());
}

void TestTimeSkin::wholePicture_data()
{
    QTest::addColumn<int>("spacing");
    QTest::newRow("with gaps") << 2;
    QTest::newRow("touching") << 0;
    QTest::newRow("overlapping: later digits over earlier, colons over all") << -4;
}

void TestTimeSkin::wholePicture()
{
    QFETCH(int, spacing);
    TimeSkins::install(*installation, "spacing = " + QByteArray::number(spacing) + "\n");
    Window window;
    Time time(&window, "Time");
    const QImage beneath = pattern(time.width(), time.height(), 200);
    time.setBackgroundImage(beneath);
    time.update_time(45296);
    QImage result = beneath;
    for (int i = 0; i < 6; ++i)
        put(result, blended(beneath.copy(time.digits[i].rect), TimeSkins::figure(i + 1)), QRect(0, 0, 10, 20),
            time.digits[i].rect.topLeft());
    for (const QRect& rect : {time.colon1Rect, time.colon2Rect})
        put(result, blended(beneath.copy(rect), TimeSkins::colon()), QRect(0, 0, 4, 20), rect.topLeft());
    COMPARE_PICTURES(shown(time), result);
}

void TestTimeSkin::partsPaintedAlone()
{
    Window window;
    Time time(&window, "Time");
    time.setBackgroundImage(pattern(82, 20, 200));
    time.setAlphaOverride(1);
    time.update_time(45296);
    const QImage whole = shown(time);
    for (int x = 0; x < 82; x += 3) {
        const QRect part(x, x % 13, qMin(7, 82 - x), 5);
        COMPARE_PICTURES(time.grab(part).toImage().convertToFormat(QImage::Format_ARGB32), whole.copy(part));
    }
}

void TestTimeSkin::paintsOverTheBackground()
{
    Window window;
    Time time(&window, "Time");
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(1, 2, 3));
    time.setPalette(palette);
    time.setAlphaOverride(255);
    COMPARE_PICTURES(shown(time), expected({0, 0, 0, 0, 0, 0}, plain(82, 20, 0xff010203)));
    QVERIFY(time.testWFlags(Qt::WRepaintNoErase));
}

void TestTimeSkin::ignoresInput_data()
{
    QTest::addColumn<int>("event");
    QTest::newRow("stylus") << 0;
    QTest::newRow("keys") << 1;
    QTest::newRow("focus") << 2;
}

// Even with buttons, which a display does not load by itself.
void TestTimeSkin::ignoresInput()
{
    QFETCH(int, event);
    ThreeButtons::install(*installation);
    struct Loaded : Time {
        using Time::buttonHeld;
        using Time::focusButton;
        using Time::Time;
    };
    Window window;
    Loaded time(&window, "Time");
    time.SkinBase::do_configloading("Control");
    time.setButtonFocus("a");
    QVERIFY(window.expose());
    QStringList clicks;
    connect(&time, &SkinBase::button_clicked, &time, [&](const QObject*, const QString& name) { clicks << name; });
    Recorder recorder;
    recorder.watchPaints(&time);
    if (event == 0) {
        press(&time, ThreeButtons::pointInB);
        release(&time, ThreeButtons::pointInB);
    } else if (event == 1) {
        key(&time, QEvent::KeyPress, Qt::Key_Right);
        key(&time, QEvent::KeyPress, Qt::Key_Return);
        key(&time, QEvent::KeyRelease, Qt::Key_Return);
    } else {
        QFocusEvent in(QEvent::FocusIn);
        QCoreApplication::sendEvent(&time, &in);
        QFocusEvent out(QEvent::FocusOut);
        QCoreApplication::sendEvent(&time, &out);
    }
    QVERIFY(window.settle());
    QCOMPARE(recorder.take(), QStringList());
    QCOMPARE(clicks, QStringList());
    QCOMPARE(time.getFocus(), QString("a"));
    QVERIFY(!time.buttonHeld);
    // Nor does it release what is pressed otherwise.
    time.pressButton("a");
    release(&time, ThreeButtons::pointInA);
    key(&time, QEvent::KeyRelease, Qt::Key_Return);
    QCOMPARE(clicks, QStringList());
    QVERIFY(time.buttonHeld);
}

void TestTimeSkin::inputIsNotPassedOn()
{
    struct Parent : QWidget {
        QList<int> events;
        bool event(QEvent* event) override
        {
            events << event->type();
            return QWidget::event(event);
        }
    };
    Parent parent;
    parent.setObjectName("player");
    TimeSkin time(&parent, "Time");
    parent.events.clear();
    press(&time, {3, 3});
    release(&time, {3, 3});
    key(&time, QEvent::KeyPress, Qt::Key_Return);
    key(&time, QEvent::KeyRelease, Qt::Key_Return);
    for (const int type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::KeyPress, QEvent::KeyRelease})
        QVERIFY(!parent.events.contains(type));
}

QTEST_MAIN(TestTimeSkin)
#include "tst_timeskin.moc"
