#include "skinbase/skinfixture.h"

#include <limits>
#include <type_traits>

using namespace skintest;

namespace
{

// Channels that are multiples of 5 mix at alpha 51 (a fifth) without any rounding.
constexpr int fifth = 51;

QImage fives(int width, int height, int alpha = 255)
{
    QImage picture(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, qRgba(5 * x, 5 * y, 100, alpha));
    return picture;
}

QRgb mixedByFifth(QRgb over, QRgb under)
{
    const auto channel = [](int o, int u) { return (o + 4 * u) / 5; };
    return qRgb(channel(qRed(over), qRed(under)), channel(qGreen(over), qGreen(under)),
                channel(qBlue(over), qBlue(under)));
}

// The columns and rows of a picture that repeats without end, from a place on.
QImage tiled(const QImage& tile, const QPoint& from, const QSize& size)
{
    QImage result(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            result.setPixel(x, y,
                            tile.pixel(((from.x() + x) % tile.width() + tile.width()) % tile.width(),
                                       ((from.y() + y) % tile.height() + tile.height()) % tile.height()));
    return result;
}

// Lays pixels over others where they are, alpha bytes included.
QImage overlaid(QImage under, const QImage& over, const QPoint& at)
{
    for (int y = 0; y < over.height(); ++y)
        for (int x = 0; x < over.width(); ++x)
            if (under.valid(at.x() + x, at.y() + y))
                under.setPixel(at.x() + x, at.y() + y, over.pixel(x, y));
    return under;
}

QPixmap straightPixmap(const QImage& picture)
{
    return QPixmap::fromImage(picture.convertToFormat(QImage::Format_ARGB32), Qt::NoFormatConversion);
}

void addAlphaRows()
{
    QTest::addColumn<int>("alpha");
    for (const int alpha : {0, 1, 77, 128, 254, 255})
        QTest::addRow("%d", alpha) << alpha;
}

} // namespace

class TestSkinBaseRendering : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void stateValues();
    void recordFields();

    void buttonImage_data();
    void buttonImage();
    void buttonImageKeepsAlpha();

    void redrawImageTakesBackgroundAtItsPlace_data();
    void redrawImageTakesBackgroundAtItsPlace();
    void redrawImageOverwritesAlpha_data();
    void redrawImageOverwritesAlpha();
    void redrawImageBlendsByThePicturesAlpha_data();
    void redrawImageBlendsByThePicturesAlpha();
    void redrawImageOverFreeAlphaOfTheBackground();
    void redrawImageFormats_data();
    void redrawImageFormats();
    void redrawImageWithoutBackground();
    void redrawImageOfNullPicture();

    void redrawButtonImagesOrder();
    void redrawButtonImagesPlaces();
    void redrawButtonImagesCutsAgain();
    void redrawButtonImagesSkipsEmptyPictures();
    void redrawButtonImagesSkipsRecordsOutsideTheMap();
    void redrawButtonImagesDoesNotRepaint();

    void alphaOverrideWritesEveryPixel_data();
    void alphaOverrideWritesEveryPixel();
    void alphaOverrideCopiesTranslucentBackground_data();
    void alphaOverrideCopiesTranslucentBackground();
    void alphaOverrideLeavesTheBackgroundPictureAlone();
    void alphaOverrideCalls();
    void alphaOverridePixmapHasTheWidgetsSize();
    void alphaOverrideBeforeLoading();
    void alphaOverrideDoesNotAccumulate();
    void alphaOverrideRepaints();

    void backgroundImageReplaces();
    void backgroundImageIsACopy();
    void backgroundImageFreesTheOldOne();
    void backgroundImageCalls();
    void backgroundImageBeforeLoading();

    void backgroundPixmapTakesThePartUnderThePanel();
    void backgroundPixmapBlendsThePanelsPicture();
    void backgroundPixmapKeepsItsAlpha();
    void backgroundPixmapCalls();
    void backgroundPixmapWithoutPicture();
    void backgroundPixmapOfATopLevelPanel();
    void backgroundPixmapCalledAsToolkitOperation();
    void backgroundPixmapDoesNotAccumulate();

    void paintPreparesEachRectangle();
    void paintCopiesWhatWasDrawn();
    void paintOfAnEmptyRegion();
    void paintOutsideAPaintEvent();
    void paintOfSeveralRectangles();
    void buttonAcrossTwoRectangles();
    void paintNeverErases();
    void paintNeverComposes();
    void paintInOpaqueWindow_data();
    void paintInOpaqueWindow();
    void paintInTranslucentWindow_data();
    void paintInTranslucentWindow();
    void paintBeforeAnyComposition();
    void paintAfterTargetWasReplaced();

    void drawButtonsOrder();
    void drawButtonsPictureOfEachState_data();
    void drawButtonsPictureOfEachState();
    void drawButtonsRectangleOfStatePicture0();
    void drawButtonsIntoAnArea();
    void laterNamesLieAbove();
    void ofEqualNamesTheLaterIsDrawn();
    void focusPictureFollowsTheKeyboardFocus();

    void clippedImage_data();
    void clippedImage();
    void clippedImageOfNullPicture();

    void drawButtonArea_data();
    void drawButtonArea();

    void setButtonState_data();
    void setButtonState();
    void setButtonStateOfPressedReleasesFirst_data();
    void setButtonStateOfPressedReleasesFirst();
    void setButtonStateOfPressedButNotHeld();
    void focusOfTheFocusedButtonKeepsItsState();
    void focusWhileAnotherIsHeld();
    void namedStates_data();
    void namedStates();
    void statesWithoutPicture();
    void unknownNameChangesNothing_data();
    void unknownNameChangesNothing();
    void recordOfAnotherNameIsLeftAlone();
    void hiddenButtonShowsTheBackground();
    void disableFocusedMovesTheFocusFirst();
    void disableOtherLeavesTheFocus();
    void disableWithoutFocus();
    void disableOnlyButtonKeepsTheFocus();

private:
    void load(unsigned char alpha = 255);

    std::unique_ptr<Installation> installation;
    std::unique_ptr<Stage> stage;
    Panel* panel = nullptr;
};

void TestSkinBaseRendering::init()
{
    installation = std::make_unique<Installation>();
    ThreeButtons::install(*installation);
    stage = std::make_unique<Stage>();
    panel = &stage->panel;
}

void TestSkinBaseRendering::cleanup()
{
    stage.reset();
    installation.reset();
}

void TestSkinBaseRendering::load(unsigned char alpha)
{
    panel->do_configloading("Control");
    panel->setAlphaOverride(alpha);
    panel->forget();
}

void TestSkinBaseRendering::stateValues()
{
    QCOMPARE(int(Normal), 0);
    QCOMPARE(int(Pressed), 1);
    QCOMPARE(int(Focus), 2);
    QCOMPARE(int(Disabled), 3);
    QCOMPARE(int(Hidden), 4);
}

void TestSkinBaseRendering::recordFields()
{
    SkinButton button;
    static_assert(std::is_same_v<decltype(button.state), SkinButtonState>);
    static_assert(std::is_same_v<decltype(button.name), QString>);
    static_assert(std::is_same_v<decltype(button.image), QImage>);
    static_assert(std::is_same_v<decltype(button.stateImage), QImage[4]>);
    static_assert(std::is_same_v<decltype(button.workImage), QImage>);
    static_assert(std::is_same_v<decltype(button.mask), unsigned int>);
    static_assert(std::is_same_v<decltype(button.xpos), int> && std::is_same_v<decltype(button.ypos), int>);
    static_assert(std::is_same_v<decltype(button.spare), bool>);
    const QList<const void*> fields{&button.state,         &button.name,      &button.image,
                                    &button.stateImage[0], &button.workImage, &button.mask,
                                    &button.xpos,          &button.ypos,      &button.spare};
    QVERIFY(std::is_sorted(fields.begin(), fields.end()));
}

void TestSkinBaseRendering::buttonImage_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("index");
    QTest::addColumn<QRect>("part");
    QTest::newRow("first of a strip") << QSize(40, 7) << 0 << QRect(0, 0, 10, 7);
    QTest::newRow("second") << QSize(40, 7) << 1 << QRect(10, 0, 10, 7);
    QTest::newRow("third") << QSize(40, 7) << 2 << QRect(20, 0, 10, 7);
    QTest::newRow("last") << QSize(40, 7) << 3 << QRect(30, 0, 10, 7);
    QTest::newRow("163 wide, first") << QSize(163, 2) << 0 << QRect(0, 0, 40, 2);
    QTest::newRow("163 wide, second") << QSize(163, 2) << 1 << QRect(40, 0, 40, 2);
    QTest::newRow("163 wide, third") << QSize(163, 2) << 2 << QRect(80, 0, 40, 2);
    QTest::newRow("163 wide, last") << QSize(163, 2) << 3 << QRect(120, 0, 40, 2);
    QTest::newRow("the whole strip") << QSize(163, 2) << -1 << QRect(0, 0, 163, 2);
    QTest::newRow("the whole strip for any negative index") << QSize(40, 7) << -9 << QRect(0, 0, 40, 7);
    QTest::newRow("beyond the strip") << QSize(40, 7) << 4 << QRect(40, 0, 10, 7);
    QTest::newRow("far beyond the strip") << QSize(40, 7) << 100 << QRect(1000, 0, 10, 7);
    QTest::newRow("the largest index") << QSize(40, 7) << std::numeric_limits<int>::max() << QRect(1000, 0, 10, 7);
    QTest::newRow("partly beyond the strip") << QSize(163, 7) << 4 << QRect(160, 0, 40, 7);
    QTest::newRow("three columns") << QSize(3, 7) << 0 << QRect(0, 0, 0, 7);
    QTest::newRow("null strip") << QSize(0, 0) << 0 << QRect(0, 0, 0, 0);
    QTest::newRow("null strip as a whole") << QSize(0, 0) << -1 << QRect(0, 0, 0, 0);
}

void TestSkinBaseRendering::buttonImage()
{
    QFETCH(QSize, size);
    QFETCH(int, index);
    QFETCH(QRect, part);
    const QImage strip = size.isEmpty() ? QImage() : pattern(size.width(), size.height());
    COMPARE_PICTURES(panel->get_buttonimage(strip, index), part.isEmpty() ? QImage() : strip.copy(part));
}

void TestSkinBaseRendering::buttonImageKeepsAlpha()
{
    const QImage strip = pattern(8, 2, 5, 0);
    COMPARE_PICTURES(panel->get_buttonimage(strip, 1), strip.copy(2, 0, 2, 2));
    COMPARE_PICTURES(panel->get_buttonimage(strip, -1), strip);
}

void TestSkinBaseRendering::redrawImageTakesBackgroundAtItsPlace_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::newRow("origin") << QPoint(0, 0);
    QTest::newRow("inside") << QPoint(13, 7);
    QTest::newRow("over the right and bottom edge") << QPoint(95, 37);
    QTest::newRow("over the left and top edge") << QPoint(-3, -2);
    QTest::newRow("outside") << QPoint(250, 83);
    QTest::newRow("outside on the other side") << QPoint(-250, -83);
}

// A picture that is fully transparent shows nothing but the background.
void TestSkinBaseRendering::redrawImageTakesBackgroundAtItsPlace()
{
    QFETCH(QPoint, at);
    load(30);
    QImage picture = plain(8, 6, 0x00ffffff);
    panel->redrawImage(picture, at.x(), at.y());
    COMPARE_PICTURES(picture, withAlphaBytes(tiled(ThreeButtons::background(), at, QSize(8, 6)), 30));
}

void TestSkinBaseRendering::redrawImageOverwritesAlpha_data()
{
    addAlphaRows();
}

void TestSkinBaseRendering::redrawImageOverwritesAlpha()
{
    QFETCH(int, alpha);
    load(static_cast<unsigned char>(alpha));
    QImage opaque = pattern(20, 10);
    panel->redrawImage(opaque, 3, 4);
    COMPARE_PICTURES(opaque, pattern(20, 10, 0, alpha));
    QCOMPARE(opaque.depth(), 32);
}

void TestSkinBaseRendering::redrawImageBlendsByThePicturesAlpha_data()
{
    addAlphaRows();
}

void TestSkinBaseRendering::redrawImageBlendsByThePicturesAlpha()
{
    QFETCH(int, alpha);
    panel->QWidget::resize(20, 10);
    panel->setBackgroundImage(fives(20, 10));
    panel->setAlphaOverride(static_cast<unsigned char>(alpha));
    const QRgb over = qRgba(200, 50, 250, fifth);
    QImage picture = plain(4, 3, over);
    panel->redrawImage(picture, 6, 2);
    QImage expected(4, 3, QImage::Format_ARGB32);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x)
            expected.setPixel(x, y, withAlpha(mixedByFifth(over, fives(20, 10).pixel(6 + x, 2 + y)), alpha));
    COMPARE_PICTURES(picture, expected);
}

void TestSkinBaseRendering::redrawImageOverFreeAlphaOfTheBackground()
{
    panel->QWidget::resize(20, 10);
    panel->setBackgroundPixmap(straightPixmap(fives(20, 10, 0)));
    const QRgb over = qRgba(200, 50, 250, fifth);
    QImage picture = plain(4, 3, over);
    panel->redrawImage(picture, 6, 2);
    QCOMPARE(picture.pixel(1, 1), withAlpha(mixedByFifth(over, fives(20, 10).pixel(7, 3)), 255));
}

void TestSkinBaseRendering::redrawImageFormats_data()
{
    QTest::addColumn<int>("format");
    QTest::newRow("32 bits without alpha") << int(QImage::Format_RGB32);
    QTest::newRow("32 bits with premultiplied alpha") << int(QImage::Format_ARGB32_Premultiplied);
    QTest::newRow("24 bits") << int(QImage::Format_RGB888);
    QTest::newRow("colour table") << int(QImage::Format_Indexed8);
    QTest::newRow("grey") << int(QImage::Format_Grayscale8);
    QTest::newRow("two colours") << int(QImage::Format_Mono);
}

void TestSkinBaseRendering::redrawImageFormats()
{
    QFETCH(int, format);
    load(66);
    QImage picture = plain(9, 5, 0xffffffff);
    picture.setPixel(2, 1, 0xff000000);
    QImage expected = withAlphaBytes(picture, 66);
    picture.convertTo(static_cast<QImage::Format>(format));
    panel->redrawImage(picture, 1, 1);
    QCOMPARE(picture.depth(), 32);
    COMPARE_PICTURES(picture, expected);
}

void TestSkinBaseRendering::redrawImageWithoutBackground()
{
    QPalette palette = panel->palette();
    palette.setColor(QPalette::Window, QColor(10, 20, 30));
    panel->setPalette(palette);
    QImage picture = overlaid(plain(4, 3, 0), plain(2, 3, green), QPoint());
    panel->redrawImage(picture, 5, 5);
    COMPARE_PICTURES(picture, overlaid(plain(4, 3, qRgb(10, 20, 30)), plain(2, 3, green), QPoint()));
}

void TestSkinBaseRendering::redrawImageOfNullPicture()
{
    load();
    Messages messages;
    QImage picture;
    panel->redrawImage(picture, 5, 5);
    QVERIFY(picture.isNull());
    QCOMPARE(Messages::texts(), QStringList());
}

void TestSkinBaseRendering::redrawButtonImagesOrder()
{
    load();
    panel->redrawButtonImages();
    QStringList expected{"redrawButtonImages()"};
    for (const char* at : {"34,5", "64,3", "4,3"})
        for (int k = 0; k < 4; ++k)
            expected << QStringLiteral("get_buttonimage(%1)").arg(k) << QStringLiteral("redrawImage(%1)").arg(at);
    QCOMPARE(panel->calls, expected);
}

void TestSkinBaseRendering::redrawButtonImagesPlaces()
{
    panel->QWidget::resize(100, 40);
    panel->do_configloading("Control");
    for (SkinButton* button : panel->buttons)
        button->image = plain(40, 6, 0);
    panel->setAlphaOverride(12);
    for (const SkinButton* button : panel->buttons)
        for (const QImage& picture : button->stateImage)
            COMPARE_PICTURES(picture, withAlphaBytes(ThreeButtons::background().copy(button->rect()), 12));
}

void TestSkinBaseRendering::redrawButtonImagesCutsAgain()
{
    load(200);
    for (QImage& picture : panel->buttonMap["a"]->stateImage)
        picture.fill(red);
    panel->redrawButtonImages();
    for (int k = 0; k < 4; ++k)
        COMPARE_PICTURES(panel->buttonMap["a"]->stateImage[k],
                         plain(10, 6, withAlpha(ThreeButtons::pixel('a', k), 200)));
    COMPARE_PICTURES(panel->buttonMap["a"]->image, ThreeButtons::stripOf('a'));
}

void TestSkinBaseRendering::redrawButtonImagesSkipsEmptyPictures()
{
    load();
    panel->buttonMap["a"]->stateImage[2] = QImage();
    panel->redrawButtonImages();
    QVERIFY(panel->buttonMap["a"]->stateImage[2].isNull());
    QVERIFY(!panel->buttonMap["a"]->stateImage[3].isNull());
    QCOMPARE(panel->callsOf("get_buttonimage").size(), 11);
    QCOMPARE(panel->callsOf("redrawImage").size(), 11);
}

void TestSkinBaseRendering::redrawButtonImagesSkipsRecordsOutsideTheMap()
{
    installation->config("player",
                         "[Control]\nbackground = bg.png\ncount = 2\n"
                         "[Control_BUTTON0]\nname = x\nimage = a.png\n[Control_BUTTON1]\nname = x\nimage = b.png\n");
    load(9);
    COMPARE_PICTURES(panel->buttons[0]->stateImage[0], plain(10, 6, ThreeButtons::pixel('a', 0)));
    COMPARE_PICTURES(panel->buttons[1]->stateImage[0], plain(10, 6, withAlpha(ThreeButtons::pixel('b', 0), 9)));
}

void TestSkinBaseRendering::redrawButtonImagesDoesNotRepaint()
{
    load();
    QVERIFY(stage->show());
    QCOMPARE(stage->damage([this] { panel->redrawButtonImages(); }), QRegion());
}

void TestSkinBaseRendering::alphaOverrideWritesEveryPixel_data()
{
    addAlphaRows();
}

void TestSkinBaseRendering::alphaOverrideWritesEveryPixel()
{
    QFETCH(int, alpha);
    load(static_cast<unsigned char>(alpha));
    QCOMPARE(int(panel->alphaOverride), alpha);
    COMPARE_PICTURES(panel->backgroundPixels(), withAlphaBytes(ThreeButtons::background(), alpha));
    for (const SkinButton* button : panel->buttons)
        for (int k = 0; k < 4; ++k)
            COMPARE_PICTURES(button->stateImage[k],
                             plain(10, 6, withAlpha(ThreeButtons::pixel(button->name.at(0).toLatin1(), k), alpha)));
}

void TestSkinBaseRendering::alphaOverrideCopiesTranslucentBackground_data()
{
    addAlphaRows();
}

// The background's own alpha neither blends nor survives.
void TestSkinBaseRendering::alphaOverrideCopiesTranslucentBackground()
{
    QFETCH(int, alpha);
    QImage translucent = pattern(100, 40, 3);
    for (int x = 0; x < 100; ++x)
        for (int y = 0; y < 40; ++y)
            translucent.setPixel(x, y, withAlpha(translucent.pixel(x, y), 5 * y));
    installation->picture("player", "bg.png", translucent);
    load(static_cast<unsigned char>(alpha));
    COMPARE_PICTURES(panel->backgroundPixels(), pattern(100, 40, 3, alpha));
}

void TestSkinBaseRendering::alphaOverrideLeavesTheBackgroundPictureAlone()
{
    load(0);
    COMPARE_PICTURES(*panel->backgroundImage, ThreeButtons::background());
}

void TestSkinBaseRendering::alphaOverrideCalls()
{
    load();
    panel->setAlphaOverride(3);
    QCOMPARE(panel->calls.mid(0, 3),
             QStringList({"setAlphaOverride(3)", "redrawButtonImages()", "get_buttonimage(0)"}));
    QCOMPARE(panel->callsOf("redrawButtonImages").size(), 1);
    // The toolkit's own operation installs the picture, not the panel's.
    QCOMPARE(panel->callsOf("setBackgroundPixmap"), QStringList());
}

void TestSkinBaseRendering::alphaOverridePixmapHasTheWidgetsSize()
{
    load();
    panel->QWidget::resize(120, 30);
    panel->setAlphaOverride(50);
    QCOMPARE(panel->backgroundPixels().size(), QSize(120, 30));
    COMPARE_PICTURES(panel->backgroundPixels().copy(0, 0, 100, 30),
                     withAlphaBytes(ThreeButtons::background().copy(0, 0, 100, 30), 50));
    QCOMPARE(panel->backgroundPixmap()->depth(), 32);
}

void TestSkinBaseRendering::alphaOverrideBeforeLoading()
{
    Messages messages;
    panel->setAlphaOverride(9);
    QCOMPARE(int(panel->alphaOverride), 9);
    panel->do_configloading("Control");
    QCOMPARE(int(panel->alphaOverride), 9);
    QCOMPARE(Messages::texts(), QStringList());
}

void TestSkinBaseRendering::alphaOverrideDoesNotAccumulate()
{
    panel->do_configloading("Control");
    for (SkinButton* button : panel->buttons)
        button->image = plain(40, 6, qRgba(200, 50, 250, 128));
    panel->setAlphaOverride(40);
    const QImage once = panel->buttons[0]->stateImage[1];
    panel->setAlphaOverride(0);
    panel->setAlphaOverride(255);
    panel->setAlphaOverride(40);
    COMPARE_PICTURES(panel->buttons[0]->stateImage[1], once);
}

void TestSkinBaseRendering::alphaOverrideRepaints()
{
    load();
    QVERIFY(stage->show());
    QCOMPARE(stage->damage([this] { panel->setAlphaOverride(5); }), QRegion(0, 0, 100, 40));
}

void TestSkinBaseRendering::backgroundImageReplaces()
{
    load(70);
    panel->setBackgroundImage(pattern(100, 40, 1));
    COMPARE_PICTURES(*panel->backgroundImage, pattern(100, 40, 1));
    COMPARE_PICTURES(panel->backgroundPixels(), pattern(100, 40, 1, 70));
    QCOMPARE(panel->size(), QSize(100, 40));
    panel->setBackgroundImage(pattern(50, 20, 1));
    QCOMPARE(panel->size(), QSize(100, 40));
}

void TestSkinBaseRendering::backgroundImageIsACopy()
{
    load();
    QImage picture = plain(100, 40, red);
    panel->setBackgroundImage(picture);
    picture.fill(green);
    COMPARE_PICTURES(*panel->backgroundImage, plain(100, 40, red));
}

void TestSkinBaseRendering::backgroundImageFreesTheOldOne()
{
    load();
    QImage old = *panel->backgroundImage;
    QVERIFY(!old.isDetached());
    panel->setBackgroundImage(plain(100, 40, red));
    QVERIFY(old.isDetached());
}

void TestSkinBaseRendering::backgroundImageCalls()
{
    load(70);
    panel->setBackgroundImage(plain(100, 40, red));
    QCOMPARE(panel->calls.mid(0, 3),
             QStringList({"setBackgroundImage()", "setAlphaOverride(70)", "redrawButtonImages()"}));
    QCOMPARE(panel->callsOf("setAlphaOverride").size(), 1);
}

void TestSkinBaseRendering::backgroundImageBeforeLoading()
{
    panel->QWidget::resize(30, 20);
    panel->setBackgroundImage(pattern(30, 20));
    COMPARE_PICTURES(*panel->backgroundImage, pattern(30, 20));
    COMPARE_PICTURES(panel->backgroundPixels(), pattern(30, 20));
}

void TestSkinBaseRendering::backgroundPixmapTakesThePartUnderThePanel()
{
    panel->setGeometry(17, 9, 20, 10);
    panel->setBackgroundImage(plain(20, 10, 0));
    panel->setBackgroundPixmap(QPixmap::fromImage(pattern(200, 100)));
    COMPARE_PICTURES(panel->backgroundPixels(), pattern(200, 100).copy(17, 9, 20, 10));
    QCOMPARE(panel->backgroundPixmap()->depth(), 32);
}

void TestSkinBaseRendering::backgroundPixmapBlendsThePanelsPicture()
{
    panel->setGeometry(7, 3, 10, 8);
    const QRgb over = qRgba(200, 50, 250, fifth);
    QImage picture = plain(10, 8, over);
    picture.setPixel(0, 0, 0x00123456);
    picture.setPixel(1, 0, 0xff654321);
    panel->setBackgroundImage(picture);
    panel->setAlphaOverride(7);
    panel->setBackgroundPixmap(QPixmap::fromImage(fives(40, 30)));
    QImage expected(10, 8, QImage::Format_ARGB32);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 10; ++x)
            expected.setPixel(x, y, mixedByFifth(over, fives(40, 30).pixel(7 + x, 3 + y)));
    expected.setPixel(0, 0, fives(40, 30).pixel(7, 3));
    expected.setPixel(1, 0, 0xff654321);
    COMPARE_PICTURES(panel->backgroundPixels(), expected);
}

void TestSkinBaseRendering::backgroundPixmapKeepsItsAlpha()
{
    load(7);
    QImage picture = plain(100, 40, 0x00ffffff);
    picture.setPixel(1, 0, 0xff654321);
    picture.setPixel(2, 0, qRgba(200, 50, 250, fifth));
    panel->setBackgroundImage(picture);
    panel->setBackgroundPixmap(straightPixmap(fives(100, 40, 90)));
    QCOMPARE(panel->backgroundPixels().pixel(0, 0), fives(100, 40, 90).pixel(0, 0));
    QCOMPARE(panel->backgroundPixels().pixel(99, 39), fives(100, 40, 90).pixel(99, 39));
    QCOMPARE(panel->backgroundPixels().pixel(1, 0), 0xff654321U);
    // The colour is that over an opaque background; the alphas add up: 51 and four fifths of 90.
    QCOMPARE(panel->backgroundPixels().pixel(2, 0),
             withAlpha(mixedByFifth(qRgb(200, 50, 250), fives(100, 40).pixel(2, 0)), 123));
    // The buttons take the panel's alpha all the same.
    COMPARE_PICTURES(panel->buttonMap["a"]->stateImage[1], plain(10, 6, withAlpha(ThreeButtons::pixel('a', 1), 7)));
}

void TestSkinBaseRendering::backgroundPixmapCalls()
{
    load();
    panel->setBackgroundPixmap(QPixmap::fromImage(pattern(200, 100)));
    QCOMPARE(panel->calls.mid(0, 3),
             QStringList({"setBackgroundPixmap()", "redrawButtonImages()", "get_buttonimage(0)"}));
    QCOMPARE(panel->callsOf("redrawButtonImages").size(), 1);
    QCOMPARE(panel->callsOf("setAlphaOverride"), QStringList());
    QCOMPARE(panel->callsOf("setBackgroundPixmap").size(), 1);
}

void TestSkinBaseRendering::backgroundPixmapWithoutPicture()
{
    panel->setGeometry(4, 5, 10, 8);
    QCOMPARE(panel->backgroundImage, nullptr);
    panel->setBackgroundPixmap(QPixmap::fromImage(pattern(40, 30)));
    COMPARE_PICTURES(panel->backgroundPixels(), pattern(40, 30).copy(4, 5, 10, 8));
}

// The position of a window is that of its frame.
void TestSkinBaseRendering::backgroundPixmapOfATopLevelPanel()
{
    Panel window(nullptr, "player");
    window.resize(20, 10);
    window.move(30, 20);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    if (window.pos() == window.geometry().topLeft())
        QSKIP("windows have no frames here");
    window.setBackgroundPixmap(QPixmap::fromImage(pattern(200, 200)));
    COMPARE_PICTURES(window.backgroundPixels(), pattern(200, 200).copy(QRect(window.pos(), window.size())));
}

void TestSkinBaseRendering::backgroundPixmapCalledAsToolkitOperation()
{
    load();
    ToolkitWidget<QWidget>* widget = panel;
    widget->setBackgroundPixmap(QPixmap::fromImage(pattern(200, 100)));
    QCOMPARE(panel->callsOf("redrawButtonImages").size(), 1);
}

void TestSkinBaseRendering::backgroundPixmapDoesNotAccumulate()
{
    panel->setGeometry(0, 0, 10, 8);
    panel->setBackgroundImage(plain(10, 8, qRgba(200, 50, 250, fifth)));
    panel->setBackgroundPixmap(QPixmap::fromImage(fives(40, 30)));
    const QImage once = panel->backgroundPixels();
    panel->setBackgroundPixmap(QPixmap::fromImage(fives(40, 30)));
    COMPARE_PICTURES(panel->backgroundPixels(), once);
}

void TestSkinBaseRendering::paintPreparesEachRectangle()
{
    load(99);
    QVERIFY(stage->show());
    const QRect area(13, 7, 20, 11);
    QCOMPARE(stage->damage([&] { panel->update(area); }), QRegion(area));
    QCOMPARE(panel->paintedAreas, QList<QRect>{area});
    COMPARE_PICTURES(panel->targets.first(), withAlphaBytes(ThreeButtons::background().copy(area), 99));
    QCOMPARE(panel->targets.first().depth(), 32);
}

void TestSkinBaseRendering::paintCopiesWhatWasDrawn()
{
    load();
    panel->move(11, 22);
    QVERIFY(stage->show());
    panel->afterDrawButtons = [](QPixmap* target, const QRect&) {
        QPainter painter(target);
        painter.fillRect(1, 2, 3, 1, QColor(red));
    };
    const QImage before = stage->onScreen();
    stage->damage([&] { panel->update(50, 20, 10, 10); });
    const QImage expected = overlaid(before, plain(3, 1, red), QPoint(51, 22));
    COMPARE_PICTURES(stage->onScreen(), expected);
}

void TestSkinBaseRendering::paintOfAnEmptyRegion()
{
    load();
    QVERIFY(stage->show());
    panel->forget();
    Messages messages;
    QPaintEvent event{QRegion()};
    QCoreApplication::sendEvent(panel, &event);
    QCOMPARE(panel->paintEvents.size(), 1);
    QCOMPARE(panel->calls, QStringList());
    QCOMPARE(Messages::texts(), QStringList());
}

// There is nothing to paint on then, but a subclass that draws more sees every rectangle.
void TestSkinBaseRendering::paintOutsideAPaintEvent()
{
    load();
    panel->forget();
    Messages messages;
    const QRegion region = QRegion(2, 2, 10, 5) + QRegion(40, 20, 6, 7);
    QPaintEvent event(region);
    panel->paintEvent(&event);
    QCOMPARE(panel->paintedAreas, QList<QRect>(region.begin(), region.end()));
    QCOMPARE(Messages::texts(), QStringList());
}

void TestSkinBaseRendering::paintOfSeveralRectangles()
{
    load(150);
    QVERIFY(stage->show());
    const QRegion region = QRegion(5, 2, 10, 4) + QRegion(60, 2, 12, 4) + QRegion(30, 20, 7, 9);
    QCOMPARE(stage->damage([&] { panel->update(region); }), region);
    QCOMPARE(panel->paintEvents.size(), 1);
    QCOMPARE(panel->paintedAreas, QList<QRect>(region.begin(), region.end()));
    QCOMPARE(panel->callsOf("drawButtons").size(), 3);
    for (int i = 0; i < 3; ++i)
        COMPARE_PICTURES(panel->targets[i],
                         withAlphaBytes(ThreeButtons::background().copy(panel->paintedAreas[i]), 150));
    QImage expected = ThreeButtons::background();
    for (const SkinButton* button : panel->buttons)
        expected = overlaid(expected, withAlphaBytes(button->stateImage[0], 255), button->rect().topLeft());
    COMPARE_PICTURES(stage->onScreen(), expected);
}

void TestSkinBaseRendering::buttonAcrossTwoRectangles()
{
    load();
    QVERIFY(stage->show());
    panel->buttonMap["a"]->state = Pressed;
    const QImage before = stage->onScreen();
    stage->damage([&] {
        panel->update(30, 4, 8, 4);
        panel->update(40, 4, 10, 4);
    });
    QCOMPARE(panel->paintedAreas.size(), 2);
    // The button lies at (34, 5) and is 10 wide.
    const QRgb pressed = ThreeButtons::pixel('a', 1);
    QImage expected = overlaid(before, plain(4, 3, pressed), QPoint(34, 5));
    expected = overlaid(expected, plain(4, 3, pressed), QPoint(40, 5));
    COMPARE_PICTURES(stage->onScreen(), expected);
    QCOMPARE(before.pixel(38, 5), ThreeButtons::pixel('a', 0));
}

void TestSkinBaseRendering::paintNeverErases()
{
    load();
    QVERIFY(stage->show());
    QVERIFY(stage->settle());
    panel->forget();
    const int before = stage->window.paints;
    panel->update();
    QVERIFY(QTest::qWaitFor([this] { return !panel->paintEvents.isEmpty(); }));
    QCOMPARE(stage->window.paints, before);
}

void TestSkinBaseRendering::paintNeverComposes()
{
    load();
    QVERIFY(stage->show());
    stage->damage([this] { panel->update(); });
    QCOMPARE(panel->callsOf("drawButtons").size(), 1);
    QCOMPARE(panel->callsOf("drawClippedImage").size(), 3);
    QCOMPARE(panel->calls.size(), 4);
}

void TestSkinBaseRendering::paintInOpaqueWindow_data()
{
    addAlphaRows();
}

// The colours that an opaque window shows are the same for every alpha.
void TestSkinBaseRendering::paintInOpaqueWindow()
{
    QFETCH(int, alpha);
    load(static_cast<unsigned char>(alpha));
    QVERIFY(stage->show());
    QImage expected = ThreeButtons::background();
    for (const SkinButton* button : panel->buttons)
        expected = overlaid(expected, plain(10, 6, ThreeButtons::pixel(button->name.at(0).toLatin1(), 0)),
                            button->rect().topLeft());
    COMPARE_PICTURES(stage->onScreen(), expected);
    COMPARE_PICTURES(panel->grab().toImage(), expected);
    COMPARE_PICTURES(stage->window.grab(panel->geometry()).toImage(), expected);
}

void TestSkinBaseRendering::paintInTranslucentWindow_data()
{
    addAlphaRows();
}

// The alpha lets through what is behind the window.
void TestSkinBaseRendering::paintInTranslucentWindow()
{
    QFETCH(int, alpha);
    stage->window.setAttribute(Qt::WA_TranslucentBackground);
    load(static_cast<unsigned char>(alpha));
    QVERIFY(stage->show());
    QImage expected = withAlphaBytes(ThreeButtons::background(), alpha);
    for (const SkinButton* button : panel->buttons)
        expected =
            overlaid(expected, plain(10, 6, withAlpha(ThreeButtons::pixel(button->name.at(0).toLatin1(), 0), alpha)),
                     button->rect().topLeft());
    expected.convertTo(QImage::Format_ARGB32_Premultiplied);
    QImage shown = stage->window.grab(panel->geometry()).toImage();
    QVERIFY(shown.hasAlphaChannel());
    shown.convertTo(QImage::Format_ARGB32_Premultiplied);
    COMPARE_PICTURES(shown, expected);
    // Painting once more does not add up.
    stage->damage([this] { panel->update(); });
    shown = stage->window.grab(panel->geometry()).toImage();
    COMPARE_PICTURES(shown, expected);
}

// Until the first composition the state pictures are the pieces of the strip as they are.
void TestSkinBaseRendering::paintBeforeAnyComposition()
{
    installation->picture("player", "a.png", pattern(40, 6, 1, 60));
    stage->window.setAttribute(Qt::WA_TranslucentBackground);
    panel->do_configloading("Control");
    QVERIFY(stage->show());
    QImage drawn;
    panel->afterDrawButtons = [&drawn](QPixmap* target, const QRect&) { drawn = target->toImage(); };
    stage->damage([this] { panel->update(panel->buttonMap["a"]->rect()); });
    COMPARE_PICTURES(drawn, pattern(40, 6, 1, 60).copy(0, 0, 10, 6));
    COMPARE_PICTURES(panel->targets.first(), plain(10, 6, panel->palette().color(QPalette::Window).rgb()));
}

// A subclass may draw into a pixmap of its own kind; later repaints keep their 32 bits with alpha.
void TestSkinBaseRendering::paintAfterTargetWasReplaced()
{
    load(60);
    QVERIFY(stage->show());
    const QRect area(50, 20, 9, 9);
    panel->afterDrawButtons = [](QPixmap* target, const QRect&) {
        *target = QPixmap(target->size());
        target->fill(QColor(red));
    };
    stage->damage([&] { panel->update(area); });
    COMPARE_PICTURES(stage->onScreen().copy(area), plain(9, 9, red));
    panel->afterDrawButtons = nullptr;
    stage->damage([&] { panel->update(area); });
    COMPARE_PICTURES(panel->targets.first(), withAlphaBytes(ThreeButtons::background().copy(area), 60));
    COMPARE_PICTURES(stage->onScreen().copy(area), ThreeButtons::background().copy(area));
}

void TestSkinBaseRendering::drawButtonsOrder()
{
    load();
    QPixmap target(100, 40);
    panel->drawButtons(&target, QRect(0, 0, 100, 40));
    QCOMPARE(panel->blits.size(), 3);
    const char order[] = {'a', 'b', 'c'};
    for (int i = 0; i < 3; ++i) {
        const SkinButton* button = panel->buttonMap.value(QString(QLatin1Char(order[i])));
        QCOMPARE(panel->blits[i].pictureRect, button->rect());
        QCOMPARE(panel->blits[i].area, QRect(0, 0, 100, 40));
        COMPARE_PICTURES(panel->blits[i].picture, plain(10, 6, ThreeButtons::pixel(order[i], 0)));
    }
}

void TestSkinBaseRendering::drawButtonsPictureOfEachState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("panelHasFocus");
    QTest::addColumn<int>("picture");
    for (const bool focus : {false, true}) {
        const QByteArray suffix = focus ? " in the focused panel" : "";
        QTest::newRow("normal" + suffix) << 0 << focus << 0;
        QTest::newRow("pressed" + suffix) << 1 << focus << 1;
        QTest::newRow("focus" + suffix) << 2 << focus << (focus ? 2 : 0);
        QTest::newRow("disabled" + suffix) << 3 << focus << 3;
        QTest::newRow("hidden" + suffix) << 4 << focus << -1;
    }
}

void TestSkinBaseRendering::drawButtonsPictureOfEachState()
{
    QFETCH(int, state);
    QFETCH(bool, panelHasFocus);
    QFETCH(int, picture);
    load();
    QVERIFY(stage->show());
    QVERIFY(panelHasFocus ? stage->focusPanel() : stage->focusElsewhere());
    panel->buttonMap["a"]->state = static_cast<SkinButtonState>(state);
    stage->damage([this] { panel->update(); });
    QCOMPARE(panel->blits.size(), picture < 0 ? 2 : 3);
    const QRect place = panel->buttonMap["a"]->rect();
    const QImage expected =
        picture < 0 ? ThreeButtons::background().copy(place) : plain(10, 6, ThreeButtons::pixel('a', picture));
    COMPARE_PICTURES(stage->onScreen().copy(place), expected);
}

void TestSkinBaseRendering::drawButtonsRectangleOfStatePicture0()
{
    load();
    SkinButton* button = panel->buttonMap["a"];
    button->state = Pressed;
    button->stateImage[1] = plain(20, 20, red);
    QPixmap target = straightPixmap(plain(100, 40, 0));
    panel->drawButtons(&target, QRect(0, 0, 100, 40));
    QCOMPARE(panel->blits.first().pictureRect, QRect(34, 5, 10, 6));
    COMPARE_PICTURES(target.toImage().copy(30, 0, 30, 20), overlaid(plain(30, 20, 0), plain(10, 6, red), QPoint(4, 5)));
}

void TestSkinBaseRendering::drawButtonsIntoAnArea()
{
    load(31);
    QPixmap target = straightPixmap(plain(12, 8, 0x11223344));
    panel->drawButtons(&target, QRect(32, 4, 12, 8));
    COMPARE_PICTURES(
        target.toImage(),
        overlaid(plain(12, 8, 0x11223344), plain(10, 6, withAlpha(ThreeButtons::pixel('a', 0), 31)), QPoint(2, 1)));
}

void TestSkinBaseRendering::laterNamesLieAbove()
{
    load();
    for (SkinButton* button : panel->buttons)
        button->xpos = 10 + (button->name.at(0).toLatin1() - 'a') * 4;
    for (SkinButton* button : panel->buttons)
        button->ypos = 10;
    QPixmap target = straightPixmap(plain(100, 40, 0));
    panel->drawButtons(&target, QRect(0, 0, 100, 40));
    QImage expected = plain(100, 40, 0);
    for (const char name : {'a', 'b', 'c'})
        expected = overlaid(expected, plain(10, 6, ThreeButtons::pixel(name, 0)), QPoint(10 + (name - 'a') * 4, 10));
    COMPARE_PICTURES(target.toImage(), expected);
}

void TestSkinBaseRendering::ofEqualNamesTheLaterIsDrawn()
{
    installation->config("player", "[Control]\nbackground = bg.png\ncount = 2\n"
                                   "[Control_BUTTON0]\nname = x\nimage = a.png\nxpos = 0\nypos = 0\n"
                                   "[Control_BUTTON1]\nname = x\nimage = b.png\nxpos = 20\nypos = 0\n");
    load();
    QPixmap target = straightPixmap(plain(40, 10, 0));
    panel->drawButtons(&target, QRect(0, 0, 40, 10));
    COMPARE_PICTURES(target.toImage(),
                     overlaid(plain(40, 10, 0), plain(10, 6, ThreeButtons::pixel('b', 0)), QPoint(20, 0)));
}

void TestSkinBaseRendering::focusPictureFollowsTheKeyboardFocus()
{
    load();
    panel->showFocus("a");
    QVERIFY(stage->show());
    QVERIFY(stage->focusElsewhere());
    QVERIFY(stage->settle());
    QCOMPARE(stage->onScreen().pixel(34, 5), ThreeButtons::pixel('a', 0));
    QCOMPARE(stage->damage([this] { QVERIFY(stage->focusPanel()); }), QRegion(34, 5, 44, 11));
    QCOMPARE(stage->onScreen().pixel(34, 5), ThreeButtons::pixel('a', 2));
    QCOMPARE(panel->state("a"), int(Focus));
    QCOMPARE(stage->damage([this] { QVERIFY(stage->focusElsewhere()); }), QRegion(34, 5, 44, 11));
    QCOMPARE(stage->onScreen().pixel(34, 5), ThreeButtons::pixel('a', 0));
    QCOMPARE(panel->state("a"), int(Focus));
}

void TestSkinBaseRendering::clippedImage_data()
{
    QTest::addColumn<QRect>("pictureRect");
    QTest::newRow("inside") << QRect(15, 13, 8, 6);
    QTest::newRow("over the left edge") << QRect(6, 13, 8, 6);
    QTest::newRow("over the right edge") << QRect(26, 13, 8, 6);
    QTest::newRow("over the top edge") << QRect(15, 7, 8, 6);
    QTest::newRow("over the bottom edge") << QRect(15, 22, 8, 6);
    QTest::newRow("over the top left corner") << QRect(3, 5, 8, 6);
    QTest::newRow("over the bottom right corner") << QRect(29, 23, 8, 6);
    QTest::newRow("larger than the area") << QRect(2, 3, 60, 50);
    QTest::newRow("the area itself") << QRect(10, 10, 20, 14);
    QTest::newRow("beside the left edge") << QRect(2, 13, 8, 6);
    QTest::newRow("beside the right edge") << QRect(30, 13, 8, 6);
    QTest::newRow("above") << QRect(15, 4, 8, 6);
    QTest::newRow("below") << QRect(15, 24, 8, 6);
    QTest::newRow("far away") << QRect(500, 500, 8, 6);
    QTest::newRow("empty") << QRect(15, 13, 0, 0);
}

// Every pixel of the picture is copied as it is, however transparent.
void TestSkinBaseRendering::clippedImage()
{
    QFETCH(QRect, pictureRect);
    const QRect area(10, 10, 20, 14);
    for (const int alpha : {0, 1, 100, 255}) {
        const QImage picture = pictureRect.isEmpty() ? QImage(8, 6, QImage::Format_ARGB32)
                                                     : pattern(pictureRect.width(), pictureRect.height(), 9, alpha);
        QPixmap target = straightPixmap(plain(20, 14, 0x55112233));
        panel->drawClippedImage(&target, picture, area, pictureRect);
        const QImage expected = pictureRect.isEmpty() ? plain(20, 14, 0x55112233)
                                                      : overlaid(plain(20, 14, 0x55112233), picture,
                                                                 pictureRect.topLeft() - area.topLeft());
        COMPARE_PICTURES(target.toImage(), expected);
    }
}

void TestSkinBaseRendering::clippedImageOfNullPicture()
{
    Messages messages;
    QPixmap target = straightPixmap(plain(20, 14, 0x55112233));
    panel->drawClippedImage(&target, QImage(), QRect(10, 10, 20, 14), QRect(12, 12, 5, 5));
    COMPARE_PICTURES(target.toImage(), plain(20, 14, 0x55112233));
    QCOMPARE(Messages::texts(), QStringList());
}

void TestSkinBaseRendering::drawButtonArea_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<QRect>("area");
    QTest::newRow("origin: the button alone") << QPoint(0, 0) << QRect(0, 0, 10, 6);
    QTest::newRow("margin grows with the position") << QPoint(4, 3) << QRect(4, 3, 14, 9);
    QTest::newRow("farther out") << QPoint(20, 10) << QRect(20, 10, 30, 16);
    QTest::newRow("cut by the panel") << QPoint(64, 20) << QRect(64, 20, 36, 20);
    QTest::newRow("outside") << QPoint(100, 3) << QRect();
    QTest::newRow("slightly negative") << QPoint(-2, -1) << QRect(0, 0, 6, 4);
}

void TestSkinBaseRendering::drawButtonArea()
{
    QFETCH(QPoint, at);
    QFETCH(QRect, area);
    load();
    SkinButton* button = panel->buttonMap["a"];
    button->xpos = at.x();
    button->ypos = at.y();
    QVERIFY(stage->show());
    QCOMPARE(stage->damage([&] { panel->drawButton(button); }), QRegion(area));
}

void TestSkinBaseRendering::setButtonState_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QStringList>("calls");
    for (const int from : {0, 3, 4})
        for (int to = 0; to <= 4; ++to)
            QTest::addRow("%d to %d", from, to)
                << from << to
                << (to == 2 ? QStringList({"setButtonState(a,2)", "setButtonFocus(a)", "drawButton(a)"})
                            : QStringList({QStringLiteral("setButtonState(a,%1)").arg(to), "drawButton(a)"}));
}

void TestSkinBaseRendering::setButtonState()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QStringList, calls);
    load();
    panel->buttonMap["a"]->state = static_cast<SkinButtonState>(from);
    panel->setButtonState("a", static_cast<SkinButtonState>(to));
    QCOMPARE(panel->calls, calls);
    QCOMPARE(panel->state("a"), to);
    QCOMPARE(panel->focused(), to == 2 ? QStringLiteral("a") : QStringLiteral("none"));
    QCOMPARE(panel->state("b"), int(Normal));
    QVERIFY(panel->clicks.isEmpty());
}

void TestSkinBaseRendering::setButtonStateOfPressedReleasesFirst_data()
{
    QTest::addColumn<int>("to");
    for (int to = 0; to <= 4; ++to)
        QTest::addRow("to %d", to) << to;
}

void TestSkinBaseRendering::setButtonStateOfPressedReleasesFirst()
{
    QFETCH(int, to);
    load();
    panel->pressButton("a");
    panel->forget();
    int stateAtClick = -1;
    bool heldAtClick = true;
    connect(panel, &SkinBase::button_clicked, panel, [&] {
        stateAtClick = panel->state("a");
        heldAtClick = panel->buttonHeld;
    });
    panel->setButtonState("a", static_cast<SkinButtonState>(to));
    QStringList expected{QStringLiteral("setButtonState(a,%1)").arg(to), "releaseButton(a)", "drawButton(a)",
                         "button_clicked(a)"};
    if (to == 2)
        expected << "setButtonFocus(a)";
    expected << "drawButton(a)";
    QCOMPARE(panel->calls, expected);
    QCOMPARE(panel->state("a"), to);
    QCOMPARE(stateAtClick, int(Focus));
    QCOMPARE(heldAtClick, false);
    QCOMPARE(panel->clicks.size(), 1);
}

void TestSkinBaseRendering::setButtonStateOfPressedButNotHeld()
{
    load();
    panel->setButtonState("a", Pressed);
    QCOMPARE(panel->buttonHeld, false);
    panel->forget();
    panel->setButtonState("a", Normal);
    QCOMPARE(panel->calls, QStringList({"setButtonState(a,0)", "releaseButton(a)", "drawButton(a)"}));
    QCOMPARE(panel->state("a"), int(Normal));
    QVERIFY(panel->clicks.isEmpty());
}

// Intended: only a focus that moves sets the state.
void TestSkinBaseRendering::focusOfTheFocusedButtonKeepsItsState()
{
    load();
    panel->showFocus("a");
    panel->hideButton("a");
    panel->forget();
    panel->showFocus("a");
    QCOMPARE(panel->state("a"), int(Hidden));
    QCOMPARE(panel->focused(), QStringLiteral("a"));
    QCOMPARE(panel->callsOf("drawButton"), QStringList("drawButton(a)"));
}

void TestSkinBaseRendering::focusWhileAnotherIsHeld()
{
    load();
    panel->pressButton("b");
    panel->forget();
    panel->setButtonState("a", Focus);
    QCOMPARE(panel->state("a"), int(Normal));
    QCOMPARE(panel->state("b"), int(Pressed));
    QCOMPARE(panel->focused(), QStringLiteral("b"));
    QCOMPARE(panel->calls, QStringList({"setButtonState(a,2)", "setButtonFocus(a)", "drawButton(a)"}));
}

void TestSkinBaseRendering::namedStates_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<int>("state");
    QTest::newRow("hideButton") << "hideButton"
                                << QStringList({"hideButton(a)", "setButtonState(a,4)", "drawButton(a)"}) << 4;
    QTest::newRow("showNormal") << "showNormal"
                                << QStringList({"showNormal(a)", "setButtonState(a,0)", "drawButton(a)"}) << 0;
    QTest::newRow("showFocus") << "showFocus"
                               << QStringList(
                                      {"showFocus(a)", "setButtonState(a,2)", "setButtonFocus(a)", "drawButton(a)"})
                               << 2;
    QTest::newRow("disableButton") << "disableButton"
                                   << QStringList({"disableButton(a)", "setButtonState(a,3)", "drawButton(a)"}) << 3;
}

void callByName(Panel* panel, const QString& operation, const QString& name)
{
    if (operation == QLatin1String("hideButton"))
        panel->hideButton(name);
    else if (operation == QLatin1String("showNormal"))
        panel->showNormal(name);
    else if (operation == QLatin1String("showFocus"))
        panel->showFocus(name);
    else if (operation == QLatin1String("disableButton"))
        panel->disableButton(name);
    else if (operation == QLatin1String("setButtonState"))
        panel->setButtonState(name, Pressed);
    else if (operation == QLatin1String("pressButton"))
        panel->pressButton(name);
    else if (operation == QLatin1String("releaseButton"))
        panel->releaseButton(name);
    else
        qFatal("no such operation");
}

void TestSkinBaseRendering::namedStates()
{
    QFETCH(QString, operation);
    QFETCH(QStringList, calls);
    QFETCH(int, state);
    load();
    panel->buttonMap["a"]->state = state == 0 ? Hidden : Normal;
    callByName(panel, operation, "a");
    QCOMPARE(panel->calls, calls);
    QCOMPARE(panel->state("a"), state);
}

void TestSkinBaseRendering::statesWithoutPicture()
{
    load();
    panel->setAlphaOverride(255);
    panel->buttonMap["a"]->state = Hidden;
    const QImage hidden = panel->grab().toImage();
    for (const int state : {-1, 5, 7, 1000}) {
        panel->buttonMap["a"]->state = static_cast<SkinButtonState>(state);
        COMPARE_PICTURES(panel->grab().toImage(), hidden);
    }
}

void TestSkinBaseRendering::unknownNameChangesNothing_data()
{
    QTest::addColumn<QString>("operation");
    for (const char* operation :
         {"hideButton", "showNormal", "showFocus", "disableButton", "setButtonState", "pressButton", "releaseButton"})
        QTest::newRow(operation) << operation;
}

void TestSkinBaseRendering::unknownNameChangesNothing()
{
    QFETCH(QString, operation);
    load();
    panel->setButtonFocus("a");
    QVERIFY(stage->show());
    for (const QString& name : {QStringLiteral("d"), QStringLiteral("A"), QString(), QStringLiteral("a ")}) {
        QCOMPARE(stage->damage([&] { callByName(panel, operation, name); }), QRegion());
        QCOMPARE(panel->buttonMap.keys(), QStringList({"a", "b", "c"}));
        QCOMPARE(panel->callsOf("drawButton"), QStringList());
        QCOMPARE(panel->focused(), QStringLiteral("a"));
        QCOMPARE(panel->state("a"), int(Focus));
        QCOMPARE(panel->state("b"), int(Normal));
        QCOMPARE(panel->state("c"), int(Normal));
        QCOMPARE(panel->buttonHeld, false);
    }
}

// A record that a subclass entered under a name that it does not carry.
void TestSkinBaseRendering::recordOfAnotherNameIsLeftAlone()
{
    load();
    panel->buttonMap["a"]->name = "z";
    panel->setButtonState("a", Hidden);
    panel->pressButton("a");
    QCOMPARE(panel->state("a"), int(Normal));
    QCOMPARE(panel->buttonHeld, false);
    QCOMPARE(panel->callsOf("drawButton"), QStringList());
}

void TestSkinBaseRendering::hiddenButtonShowsTheBackground()
{
    load();
    QVERIFY(stage->show());
    QCOMPARE(stage->onScreen().pixel(34, 5), ThreeButtons::pixel('a', 0));
    QCOMPARE(stage->damage([this] { panel->hideButton("a"); }), QRegion(34, 5, 44, 11));
    const QRect place(34, 5, 10, 6);
    COMPARE_PICTURES(stage->onScreen().copy(place), ThreeButtons::background().copy(place));
    QCOMPARE(stage->damage([this] { panel->showNormal("a"); }), QRegion(34, 5, 44, 11));
    COMPARE_PICTURES(stage->onScreen().copy(place), plain(10, 6, ThreeButtons::pixel('a', 0)));
}

void TestSkinBaseRendering::disableFocusedMovesTheFocusFirst()
{
    load();
    panel->showFocus("c");
    panel->forget();
    panel->disableButton("c");
    QCOMPARE(panel->calls, QStringList({"disableButton(c)", "focusNextButton()", "setButtonFocus(a)", "drawButton(c)",
                                        "drawButton(a)", "setButtonState(c,3)", "drawButton(c)"}));
    QCOMPARE(panel->focused(), QStringLiteral("a"));
    QCOMPARE(panel->state("a"), int(Focus));
    QCOMPARE(panel->state("c"), int(Disabled));
}

void TestSkinBaseRendering::disableOtherLeavesTheFocus()
{
    load();
    panel->showFocus("c");
    panel->forget();
    panel->disableButton("a");
    QCOMPARE(panel->calls, QStringList({"disableButton(a)", "setButtonState(a,3)", "drawButton(a)"}));
    QCOMPARE(panel->focused(), QStringLiteral("c"));
    QCOMPARE(panel->state("c"), int(Focus));
}

void TestSkinBaseRendering::disableWithoutFocus()
{
    load();
    panel->disableButton("a");
    QCOMPARE(panel->focused(), QStringLiteral("none"));
    QCOMPARE(panel->callsOf("focusNextButton"), QStringList());
}

void TestSkinBaseRendering::disableOnlyButtonKeepsTheFocus()
{
    load();
    panel->hideButton("a");
    panel->hideButton("b");
    panel->showFocus("c");
    panel->disableButton("c");
    QCOMPARE(panel->state("c"), int(Disabled));
    QCOMPARE(panel->focused(), QStringLiteral("c"));
}

QTEST_MAIN(TestSkinBaseRendering)
#include "tst_skinbase_rendering.moc"
