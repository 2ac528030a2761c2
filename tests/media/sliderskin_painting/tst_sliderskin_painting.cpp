#include "media/mediafixture.h"

using namespace mediatest;

namespace
{

// A skin small enough to tell every pixel: the bar moves over 8 pixels, with the range 0 to 8 one for each value.
// Bar and markers have every kind of alpha.
struct SmallSkins {
    static QImage back(bool lying)
    {
        return lying ? halves(groove(true), fill(true)) : halves(groove(false), fill(false));
    }
    static QImage groove(bool lying) { return lying ? shaded(12, 6, 1) : shaded(6, 12, 2); }
    static QImage fill(bool lying) { return lying ? shaded(12, 6, 3) : shaded(6, 12, 4); }
    static QImage bar() { return shaded(4, 4, 5); }
    static QImage barPressed() { return shaded(4, 4, 6); }
    static QImage marker(int kind) { return shaded(3 + kind, 2 + kind, 7 + kind); }
    static QImage background() { return pattern(12, 12, 99); }

    // Colours and alpha change from pixel to pixel; 0 and 255 are among the alpha values.
    static QImage shaded(int width, int height, int seed)
    {
        QImage picture(width, height, QImage::Format_ARGB32);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const int alpha = (x + y + seed) % 4 * 85;
                picture.setPixel(x, y, qRgba(17 * x + seed, 20 * y + seed, 25 * seed, alpha));
            }
        }
        return picture;
    }

    static void install(const Installation& installation)
    {
        installation.picture("small", "lying.png", back(true));
        installation.picture("small", "standing.png", back(false));
        installation.picture("small", "bar.png", halves(bar(), barPressed()));
        QByteArray markers;
        for (int kind = 0; kind < 3; ++kind) {
            installation.picture("small", QStringLiteral("m%1.png").arg(kind), marker(kind));
            markers += "marker_" + QByteArray::number(kind + 1) + " = m" + QByteArray::number(kind) + ".png\n";
        }
        installation.config("small", "[Lying]\nback_image = lying.png\nbar_image = bar.png\n" + markers +
                                         "[Standing]\nback_image = standing.png\nbar_image = bar.png\n" + markers);
    }
};

QImage opaque(const QImage& picture)
{
    return withAlphaBytes(picture, 255);
}

// A slider that is not shown is told of its size when it is grabbed, and moves the bar then; so it is shown before a
// test puts the bar somewhere.
void settleSize(Slider& slider)
{
    slider.window()->show();
    if (!QTest::qWaitForWindowExposed(slider.window()))
        qFatal("the window does not come up");
    slider.blits.clear();
}

struct SmallSlider {
    explicit SmallSlider(bool lies) : lying(lies), slider(&window, lies ? "Lying" : "Standing")
    {
        slider.setRange(0, 8);
        settleSize(slider);
    }

    const bool lying;
    Window window{"small", QSize(60, 60)};
    Slider slider;

    // What the slider is to look like, told pixel by pixel over what is beneath it.
    QImage expected(const QImage& beneath) const
    {
        QImage result = opaque(beneath.copy(slider.rect()));
        const QRect whole(0, 0, slider.width(), slider.height());
        put(result, blended(result.copy(), SmallSkins::groove(lying)), SmallSkins::groove(lying).rect(), QPoint());
        const QImage fill = blended(opaque(beneath.copy(slider.rect())), SmallSkins::fill(lying));
        if (lying)
            put(result, fill, QRect(0, 0, slider.sliderPos + 3, 6), QPoint());
        else
            // The fill's own top comes at the bar's centre.
            put(result, fill, whole, QPoint(0, slider.sliderPos + 2));
        const QImage bar = slider.state == 1 || slider.state == 2 ? SmallSkins::barPressed() : SmallSkins::bar();
        result = blended(result, bar, lying ? QPoint(slider.sliderPos, 0) : QPoint(0, slider.sliderPos));
        for (const SliderMarker& marker : slider.markers)
            if (marker.used)
                result = blended(result, marker.image, marker.rect.topLeft());
        return result;
    }
};

} // namespace

class TestSliderSkinPainting : public InstalledTest
{
    Q_OBJECT

private slots:
    void wholePicture_data();
    void wholePicture();
    void blendingIsExact();
    void coloursNeverDependOnAlpha_data();
    void coloursNeverDependOnAlpha();
    void translucentWindowShowsAlpha_data();
    void translucentWindowShowsAlpha();
    void partsPaintedAlone_data();
    void partsPaintedAlone();

    void regionRectangleByRectangle();
    void emptyRegionPaintsNothing();
    void offScreenPixmapHoldsBackground();
    void playedPart_data();
    void playedPart();
    void playedPartTruncatesHalfTheBar_data();
    void playedPartTruncatesHalfTheBar();
    void widgetLargerThanGroove();
    void neverErased();

    void composedPictures_data();
    void composedPictures();
    void alphaRebuildsInOrder();
    void backgroundPixmapRebuildsInOrder();
    void backgroundPixmapUnderTheSlider();
    void backgroundImage();
    void composingNeverAccumulates();
    void redrawBackRepaintsNothing();
    void withoutBackPicture();
    void scheduledRepaints_data();
    void scheduledRepaints();

    void barPicture_data();
    void barPicture();
    void barPlace_data();
    void barPlace();
    void barKeepsItsOwnAlpha();
    void barAlphaOverride_data();
    void barAlphaOverride();
    void barOnPlainPixmap();
    void markerPlace_data();
    void markerPlace();
    void markersOfUsedSlotsOnly();
    void laterSlotsLieOverEarlier();
    void markersKeepTheirOwnAlpha();
    void markerAlphaOverride_data();
    void markerAlphaOverride();
    void markersLieOverTheBar();

    void reallyMoveSlider_data();
    void reallyMoveSlider();
    void reallyMoveSliderLeavesValues();
    void moveSlider_data();
    void moveSlider();
    void setValueRepaints_data();
    void setValueRepaints();
    void setValueRemembersTheOldPosition();
    void setValueMakesIdle_data();
    void setValueMakesIdle();
    void setValueIgnoredWhileDragging();
    void setValueThroughTheMetaObject();
    void stepsArePages();
    void stepsLeaveTheState_data();
    void stepsLeaveTheState();

private:
    void installSkins() override
    {
        SliderSkins::install(*installation);
        SmallSkins::install(*installation);
    }
};

void TestSliderSkinPainting::wholePicture_data()
{
    QTest::addColumn<bool>("lying");
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("alpha");
    for (const bool lying : {true, false}) {
        for (const int state : {0, 1, 2, 3})
            QTest::addRow("%s, state %d", lying ? "lying" : "standing", state) << lying << state << 3 << 255;
        for (const int position : {0, 5, 8, -2, 11})
            QTest::addRow("%s, bar at %d", lying ? "lying" : "standing", position) << lying << 0 << position << 255;
        for (const int alpha : {0, 1, 128, 254})
            QTest::addRow("%s, alpha %d", lying ? "lying" : "standing", alpha) << lying << 2 << 3 << alpha;
    }
}

void TestSliderSkinPainting::wholePicture()
{
    QFETCH(bool, lying);
    QFETCH(int, state);
    QFETCH(int, position);
    QFETCH(int, alpha);
    SmallSlider small(lying);
    Slider& slider = small.slider;
    slider.setBackgroundImage(SmallSkins::background());
    slider.setAlphaOverride(static_cast<unsigned char>(alpha));
    slider.insertMarker(Marker_1, 2);
    slider.insertMarker(Marker_2, 3);
    slider.insertMarker(Marker_3, 8);
    slider.sliderPos = position;
    slider.setState(state);
    COMPARE_PICTURES(shown(slider), small.expected(SmallSkins::background()));
}

// The model of wholePicture blends with the painter; this one with the formula.
void TestSliderSkinPainting::blendingIsExact()
{
    SmallSlider small(true);
    Slider& slider = small.slider;
    slider.setBackgroundImage(SmallSkins::background());
    slider.sliderPos = 8;
    slider.setState(3);
    const QImage picture = shown(slider);
    const QImage groove = slider.grooveImage;
    for (int y = 0; y < 4; ++y) {
        for (int x = 10; x < 12; ++x) {
            const QRgb under = x <= 10 ? slider.fillImage.pixel(x, y) : groove.pixel(x, y);
            const QRgb over = SmallSkins::bar().pixel(x - 8, y);
            const int alpha = qAlpha(over);
            const auto mixed = [alpha](int top, int bottom) { return (top * alpha + bottom * (255 - alpha)) / 255.0; };
            const QRgb result = picture.pixel(x, y);
            QVERIFY(qAbs(qRed(result) - mixed(qRed(over), qRed(under))) <= 1);
            QVERIFY(qAbs(qGreen(result) - mixed(qGreen(over), qGreen(under))) <= 1);
            QVERIFY(qAbs(qBlue(result) - mixed(qBlue(over), qBlue(under))) <= 1);
            if (alpha == 0)
                QCOMPARE(result, withAlpha(under, 255));
            if (alpha == 255)
                QCOMPARE(result, over);
        }
    }
}

void TestSliderSkinPainting::coloursNeverDependOnAlpha_data()
{
    QTest::addColumn<bool>("lying");
    QTest::addColumn<bool>("background");
    for (const bool lying : {true, false})
        for (const bool background : {true, false})
            QTest::addRow("%s, %s background", lying ? "lying" : "standing", background ? "with" : "without")
                << lying << background;
}

void TestSliderSkinPainting::coloursNeverDependOnAlpha()
{
    QFETCH(bool, lying);
    QFETCH(bool, background);
    SmallSlider small(lying);
    if (background)
        small.slider.setBackgroundImage(SmallSkins::background());
    small.slider.insertMarker(Marker_3, 4);
    small.slider.setValue(3);
    const QImage before = shown(small.slider);
    for (const int alpha : {0, 1, 128, 255}) {
        small.slider.setAlphaOverride(static_cast<unsigned char>(alpha));
        COMPARE_PICTURES(shown(small.slider), before);
    }
}

void TestSliderSkinPainting::translucentWindowShowsAlpha_data()
{
    QTest::addColumn<int>("alpha");
    for (const int alpha : {0, 1, 128, 255})
        QTest::addRow("alpha %d", alpha) << alpha;
}

void TestSliderSkinPainting::translucentWindowShowsAlpha()
{
    QFETCH(int, alpha);
    SmallSlider small(true);
    small.window.setAttribute(Qt::WA_TranslucentBackground);
    small.slider.setBackgroundImage(SmallSkins::background());
    small.slider.setAlphaOverride(static_cast<unsigned char>(alpha));
    small.slider.insertMarker(Marker_3, 4);
    small.slider.sliderPos = 3;
    QImage picture(12, 6, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    small.slider.render(&picture);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 12; ++x)
            QCOMPARE(qAlpha(picture.pixel(x, y)), alpha);
}

void TestSliderSkinPainting::partsPaintedAlone_data()
{
    QTest::addColumn<bool>("lying");
    QTest::newRow("lying") << true;
    QTest::newRow("standing") << false;
}

// Whatever rectangle is damaged, its pixels are those of the whole picture.
void TestSliderSkinPainting::partsPaintedAlone()
{
    QFETCH(bool, lying);
    SmallSlider small(lying);
    Slider& slider = small.slider;
    slider.setBackgroundImage(SmallSkins::background());
    slider.setAlphaOverride(50);
    slider.insertMarker(Marker_3, 4);
    slider.insertMarker(Marker_2, 0);
    slider.sliderPos = 3;
    const QImage whole = shown(slider);
    for (int x = 0; x < slider.width(); ++x) {
        for (int y = 0; y < slider.height(); ++y) {
            const QRect part(x, y, qMin(3, slider.width() - x), qMin(2, slider.height() - y));
            COMPARE_PICTURES(slider.grab(part).toImage().convertToFormat(QImage::Format_ARGB32), whole.copy(part));
        }
    }
}

void TestSliderSkinPainting::regionRectangleByRectangle()
{
    SliderStage stage;
    QVERIFY(stage.begin(4));
    stage.slider.blits.clear();
    const QRegion region = QRegion(5, 2, 10, 3) + QRegion(60, 2, 7, 3) + QRegion(30, 10, 4, 8);
    const QList<QRect> areas(region.begin(), region.end());
    QCOMPARE(areas.size(), 3);
    stage.slider.repaint(region);
    QCOMPARE(stage.slider.blits.size(), 6);
    for (int i = 0; i < 3; ++i) {
        const Slider::Blit& groove = stage.slider.blits.at(2 * i);
        const Slider::Blit& fill = stage.slider.blits.at(2 * i + 1);
        QCOMPARE(groove.area, areas.at(i));
        QCOMPARE(fill.area, areas.at(i));
        COMPARE_PICTURES(groove.picture, stage.slider.grooveImage);
        COMPARE_PICTURES(fill.picture, stage.slider.fillImage);
        QCOMPARE(groove.pictureRect, QRect(0, 0, 200, 20));
        QCOMPARE(groove.before.size(), areas.at(i).size());
        QCOMPARE(groove.depth, 32);
        // The groove is in the pixmap by then.
        COMPARE_PICTURES(fill.before, SliderSkins::groove().copy(areas.at(i)));
    }
}

void TestSliderSkinPainting::emptyRegionPaintsNothing()
{
    SmallSlider small(true);
    QPaintEvent nothing{QRegion()};
    small.slider.paintEvent(&nothing);
    QVERIFY(small.slider.blits.isEmpty());
    QCOMPARE(Messages::texts(), QStringList());
}

void TestSliderSkinPainting::offScreenPixmapHoldsBackground()
{
    // The groove leaves some of the slider free, so that the background shows.
    SmallSlider small(true);
    Slider& slider = small.slider;
    slider.resize(14, 8);
    slider.setBackgroundImage(pattern(14, 8, 99));
    slider.setAlphaOverride(31);
    QVERIFY(small.window.settle());
    slider.blits.clear();
    slider.repaint(QRect(4, 2, 5, 3));
    QCOMPARE(slider.blits.value(0).area, QRect(4, 2, 5, 3));
    COMPARE_PICTURES(slider.blits.value(0).before, withAlphaBytes(pattern(14, 8, 99).copy(QRect(4, 2, 5, 3)), 31));
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(1, 2, 3));
    SmallSlider bare(true);
    bare.slider.setPalette(palette);
    bare.slider.resize(14, 8);
    QVERIFY(bare.window.settle());
    bare.slider.blits.clear();
    bare.slider.repaint(QRect(4, 2, 5, 3));
    COMPARE_PICTURES(bare.slider.blits.value(0).before, plain(5, 3, 0xff010203));
}

void TestSliderSkinPainting::playedPart_data()
{
    QTest::addColumn<bool>("lying");
    QTest::addColumn<int>("position");
    QTest::addColumn<QRect>("fill");
    QTest::newRow("lying, start") << true << 0 << QRect(QPoint(0, 0), QPoint(5, 19));
    QTest::newRow("lying, middle") << true << 60 << QRect(QPoint(0, 0), QPoint(65, 19));
    QTest::newRow("lying, end") << true << 190 << QRect(QPoint(0, 0), QPoint(195, 19));
    QTest::newRow("standing, top") << false << 0 << QRect(QPoint(0, 5), QPoint(19, 199));
    QTest::newRow("standing, middle") << false << 60 << QRect(QPoint(0, 65), QPoint(19, 199));
    QTest::newRow("standing, bottom") << false << 190 << QRect(QPoint(0, 195), QPoint(19, 199));
}

void TestSliderSkinPainting::playedPart()
{
    QFETCH(bool, lying);
    QFETCH(int, position);
    QFETCH(QRect, fill);
    Window window;
    Slider slider(&window, lying ? "Seek" : "Level");
    settleSize(slider);
    slider.sliderPos = position;
    const QImage picture = shown(slider);
    QCOMPARE(slider.blits.value(1).pictureRect, fill);
    QCOMPARE(slider.blits.value(0).pictureRect, slider.rect());
    // Beside the bar the fill ends at the bar's centre.
    if (lying) {
        QCOMPARE(picture.pixel(fill.right(), 15), SliderSkins::fill().pixel(fill.right(), 15));
        QCOMPARE(picture.pixel(fill.right() + 1, 15), SliderSkins::groove().pixel(fill.right() + 1, 15));
    } else {
        QCOMPARE(picture.pixel(15, fill.top()), SliderSkins::standingFill().pixel(15, 0));
        QCOMPARE(picture.pixel(15, fill.top() - 1), SliderSkins::standingGroove().pixel(15, fill.top() - 1));
    }
}

void TestSliderSkinPainting::playedPartTruncatesHalfTheBar_data()
{
    QTest::addColumn<bool>("lying");
    QTest::addColumn<QSize>("bar");
    QTest::addColumn<QRect>("fill");
    QTest::newRow("lying, odd bar") << true << QSize(7, 3) << QRect(QPoint(0, 0), QPoint(43, 19));
    QTest::newRow("lying, one pixel") << true << QSize(1, 3) << QRect(QPoint(0, 0), QPoint(40, 19));
    QTest::newRow("lying, no bar") << true << QSize() << QRect(QPoint(0, 0), QPoint(40, 19));
    QTest::newRow("standing, odd bar") << false << QSize(3, 7) << QRect(QPoint(0, 43), QPoint(19, 199));
    QTest::newRow("standing, no bar") << false << QSize() << QRect(QPoint(0, 40), QPoint(19, 199));
}

void TestSliderSkinPainting::playedPartTruncatesHalfTheBar()
{
    QFETCH(bool, lying);
    QFETCH(QSize, bar);
    QFETCH(QRect, fill);
    Window window;
    Slider slider(&window, lying ? "Seek" : "Level");
    settleSize(slider);
    slider.barImage = bar.isEmpty() ? QImage() : pattern(bar.width(), bar.height());
    // The idle picture decides.
    slider.barPressedImage = pattern(20, 20);
    slider.sliderPos = 40;
    shown(slider);
    QCOMPARE(slider.blits.value(1).pictureRect, fill);
}

void TestSliderSkinPainting::widgetLargerThanGroove()
{
    SmallSlider small(true);
    Slider& slider = small.slider;
    slider.resize(20, 10);
    settleSize(slider);
    slider.setBackgroundImage(pattern(20, 10, 99));
    slider.sliderPos = 30;
    const QImage picture = shown(slider);
    QCOMPARE(slider.blits.value(0).pictureRect, QRect(0, 0, 20, 10));
    QCOMPARE(slider.blits.value(1).pictureRect, QRect(QPoint(0, 0), QPoint(32, 9)));
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 20; ++x)
            if (x >= 12 || y >= 6)
                QCOMPARE(picture.pixel(x, y), qRgb(x, y, 99));
            else
                QCOMPARE(picture.pixel(x, y), slider.fillImage.pixel(x, y));
}

void TestSliderSkinPainting::neverErased()
{
    SmallSlider small(true);
    QVERIFY(small.slider.testWFlags(Qt::WRepaintNoErase));
    QVERIFY(small.slider.testWFlags(Qt::WResizeNoErase));
    QVERIFY(small.slider.testAttribute(Qt::WA_OpaquePaintEvent));
}

void TestSliderSkinPainting::composedPictures_data()
{
    QTest::addColumn<bool>("lying");
    QTest::addColumn<int>("alpha");
    for (const bool lying : {true, false})
        for (const int alpha : {0, 1, 128, 255})
            QTest::addRow("%s, alpha %d", lying ? "lying" : "standing", alpha) << lying << alpha;
}

void TestSliderSkinPainting::composedPictures()
{
    QFETCH(bool, lying);
    QFETCH(int, alpha);
    SmallSlider small(lying);
    Slider& slider = small.slider;
    slider.setBackgroundImage(SmallSkins::background());
    SkinBase& base = slider;
    base.setAlphaOverride(static_cast<unsigned char>(alpha));
    const QImage beneath = SmallSkins::background().copy(slider.rect());
    COMPARE_PICTURES(slider.grooveImage, withAlphaBytes(blended(beneath, SmallSkins::groove(lying)), alpha));
    COMPARE_PICTURES(slider.fillImage, withAlphaBytes(blended(beneath, SmallSkins::fill(lying)), alpha));
    COMPARE_PICTURES(slider.backImage, SmallSkins::back(lying));
    COMPARE_PICTURES(slider.barImage, SmallSkins::bar());
    QCOMPARE(int(slider.alphaOverride), alpha);
}

void TestSliderSkinPainting::alphaRebuildsInOrder()
{
    SmallSlider small(true);
    Recorder recorder;
    small.slider.trace = &recorder;
    static_cast<SkinBase&>(small.slider).setAlphaOverride(9);
    QCOMPARE(recorder.take(), (QStringList{"redrawButtonImages()", "redrawImage 0,0 12x6", "redrawImage 0,0 12x6"}));
    COMPARE_PICTURES(small.slider.composed.value(0), SmallSkins::groove(true));
    COMPARE_PICTURES(small.slider.composed.value(1), SmallSkins::fill(true));
    small.slider.redrawBack();
    QCOMPARE(recorder.take(), (QStringList{"redrawImage 0,0 12x6", "redrawImage 0,0 12x6"}));
}

void TestSliderSkinPainting::backgroundPixmapRebuildsInOrder()
{
    SmallSlider small(true);
    Recorder recorder;
    small.slider.trace = &recorder;
    ToolkitWidget<QWidget>& base = small.slider;
    base.setBackgroundPixmap(pixmap(SmallSkins::background()));
    QCOMPARE(recorder.take(), (QStringList{"redrawButtonImages()", "redrawImage 0,0 12x6", "redrawImage 0,0 12x6"}));
    COMPARE_PICTURES(small.slider.composed.value(0), SmallSkins::groove(true));
}

void TestSliderSkinPainting::backgroundPixmapUnderTheSlider()
{
    SmallSlider small(true);
    Slider& slider = small.slider;
    slider.move(7, 3);
    const QImage parent = pattern(60, 60, 55);
    static_cast<SkinBase&>(slider).setBackgroundPixmap(pixmap(parent));
    const QImage beneath = parent.copy(7, 3, 12, 6);
    COMPARE_PICTURES(slider.grooveImage, blended(beneath, SmallSkins::groove(true)));
    COMPARE_PICTURES(slider.fillImage, blended(beneath, SmallSkins::fill(true)));
    COMPARE_PICTURES(shown(slider), small.expected(beneath));
    // With a picture of its own, that one lies over the parent's.
    slider.setBackgroundImage(SmallSkins::shaded(12, 6, 11));
    slider.setBackgroundPixmap(pixmap(parent));
    COMPARE_PICTURES(slider.grooveImage,
                     blended(blended(beneath, SmallSkins::shaded(12, 6, 11)), SmallSkins::groove(true)));
    slider.setAlphaOverride(5);
    slider.setBackgroundPixmap(pixmap(parent));
    COMPARE_PICTURES(
        slider.grooveImage,
        withAlphaBytes(blended(blended(beneath, SmallSkins::shaded(12, 6, 11)), SmallSkins::groove(true)), 5));
}

void TestSliderSkinPainting::backgroundImage()
{
    SmallSlider small(false);
    Slider& slider = small.slider;
    slider.setAlphaOverride(60);
    static_cast<SkinBase&>(slider).setBackgroundImage(SmallSkins::background());
    const QImage beneath = SmallSkins::background().copy(slider.rect());
    COMPARE_PICTURES(slider.grooveImage, withAlphaBytes(blended(beneath, SmallSkins::groove(false)), 60));
    COMPARE_PICTURES(shown(slider), small.expected(beneath));
}

void TestSliderSkinPainting::composingNeverAccumulates()
{
    SmallSlider small(true);
    Slider& slider = small.slider;
    slider.setBackgroundImage(SmallSkins::background());
    const QImage once = slider.grooveImage;
    for (int i = 0; i < 3; ++i) {
        slider.redrawBack();
        slider.setAlphaOverride(12);
        slider.setAlphaOverride(255);
    }
    COMPARE_PICTURES(slider.grooveImage, once);
}

void TestSliderSkinPainting::redrawBackRepaintsNothing()
{
    SliderStage stage;
    QVERIFY(stage.begin(4));
    stage.slider.redrawBack();
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestSliderSkinPainting::withoutBackPicture()
{
    Window window;
    Slider slider(&window, "no such group");
    slider.setAlphaOverride(3);
    slider.setBackgroundPixmap(pixmap(pattern(50, 50)));
    slider.setBackgroundImage(pattern(5, 5));
    slider.setBackgroundPixmap(pixmap(pattern(50, 50)));
    QVERIFY(slider.grooveImage.isNull() && slider.fillImage.isNull());
    slider.resize(6, 6);
    slider.setBackgroundImage(pattern(6, 6, 7));
    COMPARE_PICTURES(shown(slider), pattern(6, 6, 7));
}

void TestSliderSkinPainting::scheduledRepaints_data()
{
    QTest::addColumn<int>("action");
    QTest::addColumn<QStringList>("log");
    const QStringList bar{"paint 70,0 10x12"};
    const QStringList whole{"paint 0,0 200x20"};
    QTest::newRow("press on the bar: it turns into the pressed one") << 0 << bar;
    QTest::newRow("disabled in a drag: the bar turns back") << 1 << bar;
    QTest::newRow("disabled while idle") << 2 << QStringList();
    QTest::newRow("alpha override") << 3 << whole;
    QTest::newRow("background picture") << 4 << whole;
    QTest::newRow("background pixmap") << 5 << whole;
    QTest::newRow("another skin of the same size") << 6 << whole;
    QTest::newRow("init") << 7 << QStringList();
}

// What is left to be painted after an operation has returned.
void TestSliderSkinPainting::scheduledRepaints()
{
    QFETCH(int, action);
    QFETCH(QStringList, log);
    SliderStage stage;
    QVERIFY(stage.begin(7));
    Slider& slider = stage.slider;
    if (action < 2)
        press(&slider, stage.at(74));
    if (action == 1)
        QVERIFY(stage.window.settle());
    if (action == 1 || action == 2)
        slider.setDisable(true);
    else if (action == 3)
        slider.setAlphaOverride(9);
    else if (action == 4)
        slider.setBackgroundImage(pattern(200, 20));
    else if (action == 5)
        slider.setBackgroundPixmap(pixmap(pattern(200, 20)));
    else if (action == 6)
        slider.do_configloading("Seek");
    else if (action == 7)
        slider.SliderSkin::init();
    stage.take();
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), log);
}

void TestSliderSkinPainting::barPicture_data()
{
    QTest::addColumn<bool>("lying");
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("pressed");
    for (const bool lying : {true, false}) {
        const char* way = lying ? "lying" : "standing";
        QTest::addRow("%s, idle", way) << lying << 0 << false;
        QTest::addRow("%s, state 1", way) << lying << 1 << true;
        QTest::addRow("%s, dragging", way) << lying << 2 << true;
        QTest::addRow("%s, inactive", way) << lying << 3 << false;
    }
}

void TestSliderSkinPainting::barPicture()
{
    QFETCH(bool, lying);
    QFETCH(int, state);
    QFETCH(bool, pressed);
    SmallSlider small(lying);
    small.slider.setState(state);
    const QImage under = plain(12, 12, 0xff203040);
    QPixmap target = pixmap(under);
    small.slider.paintSlider(&target, QRect(0, 0, 12, 12));
    COMPARE_PICTURES(target.toImage(), blended(under, pressed ? SmallSkins::barPressed() : SmallSkins::bar()));
}

void TestSliderSkinPainting::barPlace_data()
{
    QTest::addColumn<bool>("lying");
    QTest::addColumn<int>("position");
    QTest::addColumn<QRect>("area");
    QTest::newRow("whole bar") << true << 5 << QRect(2, 0, 12, 6);
    QTest::newRow("left of the bar") << true << 5 << QRect(0, 0, 7, 6);
    QTest::newRow("right part of the bar") << true << 5 << QRect(7, 0, 9, 6);
    QTest::newRow("lower part of the bar") << true << 5 << QRect(0, 2, 12, 4);
    QTest::newRow("middle of the bar") << true << 5 << QRect(6, 1, 2, 2);
    QTest::newRow("one pixel") << true << 5 << QRect(8, 3, 1, 1);
    QTest::newRow("just before the bar") << true << 5 << QRect(0, 0, 5, 6);
    QTest::newRow("just behind the bar") << true << 5 << QRect(9, 0, 5, 6);
    QTest::newRow("just below the bar") << true << 5 << QRect(0, 4, 12, 3);
    QTest::newRow("bar half outside") << true << -2 << QRect(0, 0, 12, 6);
    QTest::newRow("standing, whole bar") << false << 5 << QRect(0, 2, 6, 12);
    QTest::newRow("standing, lower part") << false << 5 << QRect(0, 7, 6, 9);
    QTest::newRow("standing, just above the bar") << false << 5 << QRect(0, 0, 6, 5);
    QTest::newRow("standing, just beside the bar") << false << 5 << QRect(4, 0, 6, 12);
}

void TestSliderSkinPainting::barPlace()
{
    QFETCH(bool, lying);
    QFETCH(int, position);
    QFETCH(QRect, area);
    SmallSlider small(lying);
    small.slider.sliderPos = position;
    const QImage under = pattern(area.width(), area.height(), 123);
    const QPoint at = (lying ? QPoint(position, 0) : QPoint(0, position)) - area.topLeft();
    for (const int alpha : {255, 90}) {
        small.slider.setAlphaOverride(static_cast<unsigned char>(alpha));
        QPixmap target = pixmap(under);
        small.slider.paintSlider(&target, area);
        QImage expected = blended(under, SmallSkins::bar(), at);
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 4; ++x)
                if (const QPoint pixel = at + QPoint(x, y); expected.valid(pixel))
                    expected.setPixel(pixel, withAlpha(expected.pixel(pixel), alpha));
        COMPARE_PICTURES(target.toImage(), expected);
        QCOMPARE(target.depth(), 32);
    }
}

// At override 255 nothing is overwritten: on an opaque pixmap the bar stays opaque, on a clear one it has the alpha of
// its picture.
void TestSliderSkinPainting::barKeepsItsOwnAlpha()
{
    SmallSlider small(true);
    QPixmap target = pixmap(plain(4, 4, 0xff808080));
    small.slider.paintSlider(&target, QRect(0, 0, 4, 4));
    COMPARE_PICTURES(target.toImage(), blended(plain(4, 4, 0xff808080), SmallSkins::bar()));
    target = pixmap(plain(4, 4, 0x00808080));
    small.slider.paintSlider(&target, QRect(0, 0, 4, 4));
    const QImage result = target.toImage();
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            QCOMPARE(qAlpha(result.pixel(x, y)), qAlpha(SmallSkins::bar().pixel(x, y)));
    COMPARE_PICTURES(opaque(result), blended(plain(4, 4, 0xff808080), SmallSkins::bar()));
}

void TestSliderSkinPainting::barAlphaOverride_data()
{
    QTest::addColumn<int>("alpha");
    QTest::addColumn<int>("targetAlpha");
    for (const int alpha : {0, 1, 128, 254})
        for (const int targetAlpha : {0, 77, 255})
            QTest::addRow("override %d on alpha %d", alpha, targetAlpha) << alpha << targetAlpha;
}

void TestSliderSkinPainting::barAlphaOverride()
{
    QFETCH(int, alpha);
    QFETCH(int, targetAlpha);
    SmallSlider small(true);
    small.slider.setAlphaOverride(static_cast<unsigned char>(alpha));
    const QImage under = pattern(8, 6, 44, targetAlpha);
    QPixmap target = pixmap(under);
    small.slider.sliderPos = 3;
    small.slider.paintSlider(&target, QRect(1, 0, 8, 6));
    const QImage colours = blended(under, SmallSkins::bar(), QPoint(2, 0));
    QImage expected = under;
    for (int y = 0; y < 4; ++y)
        for (int x = 2; x < 6; ++x)
            expected.setPixel(x, y, withAlpha(colours.pixel(x, y), alpha));
    COMPARE_PICTURES(target.toImage(), expected);
}

void TestSliderSkinPainting::barOnPlainPixmap()
{
    SmallSlider small(true);
    for (const int alpha : {255, 128}) {
        small.slider.setAlphaOverride(static_cast<unsigned char>(alpha));
        QPixmap target(8, 6);
        target.fill(QColor(10, 20, 30));
        small.slider.paintSlider(&target, QRect(0, 0, 8, 6));
        COMPARE_PICTURES(opaque(target.toImage()), blended(plain(8, 6, qRgb(10, 20, 30)), SmallSkins::bar()));
    }
}

void TestSliderSkinPainting::markerPlace_data()
{
    QTest::addColumn<bool>("lying");
    QTest::addColumn<int>("value");
    QTest::addColumn<QRect>("area");
    QTest::newRow("whole marker") << true << 4 << QRect(0, 0, 12, 6);
    QTest::newRow("right part") << true << 4 << QRect(6, 0, 6, 6);
    QTest::newRow("one pixel") << true << 4 << QRect(7, 2, 1, 1);
    QTest::newRow("beside the marker") << true << 0 << QRect(4, 0, 6, 6);
    QTest::newRow("below the marker") << true << 4 << QRect(0, 3, 12, 3);
    QTest::newRow("standing") << false << 4 << QRect(0, 0, 6, 12);
    QTest::newRow("standing, right part") << false << 2 << QRect(4, 1, 2, 4);
}

void TestSliderSkinPainting::markerPlace()
{
    QFETCH(bool, lying);
    QFETCH(int, value);
    QFETCH(QRect, area);
    SmallSlider small(lying);
    small.slider.insertMarker(Marker_2, value);
    QCOMPARE(small.slider.markers[0].rect, QRect(value, 0, 4, 3));
    const QImage under = pattern(area.width(), area.height(), 123);
    const QPoint at = QPoint(value, 0) - area.topLeft();
    for (const int alpha : {255, 90}) {
        small.slider.setAlphaOverride(static_cast<unsigned char>(alpha));
        QPixmap target = pixmap(under);
        small.slider.paintMarkers(&target, area);
        QImage expected = blended(under, SmallSkins::marker(1), at);
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 4; ++x)
                if (const QPoint pixel = at + QPoint(x, y); expected.valid(pixel))
                    expected.setPixel(pixel, withAlpha(expected.pixel(pixel), alpha));
        COMPARE_PICTURES(target.toImage(), expected);
    }
}

void TestSliderSkinPainting::markersOfUsedSlotsOnly()
{
    SmallSlider small(true);
    small.slider.insertMarker(Marker_1, 1);
    small.slider.insertMarker(Marker_1, 5);
    small.slider.markers[0].used = false;
    const QImage under = pattern(12, 6, 123);
    QPixmap target = pixmap(under);
    small.slider.paintMarkers(&target, QRect(0, 0, 12, 6));
    COMPARE_PICTURES(target.toImage(), blended(under, SmallSkins::marker(0), QPoint(6, 0)));
}

void TestSliderSkinPainting::laterSlotsLieOverEarlier()
{
    SmallSlider small(true);
    for (int slot = 0; slot < 10; ++slot)
        small.slider.insertMarker(MarkerType(slot % 3), 3 + slot % 2);
    QImage expected = pattern(12, 6, 123);
    QPixmap target = pixmap(expected);
    small.slider.paintMarkers(&target, QRect(0, 0, 12, 6));
    for (const SliderMarker& marker : small.slider.markers)
        expected = blended(expected, marker.image, marker.rect.topLeft());
    COMPARE_PICTURES(target.toImage(), expected);
}

void TestSliderSkinPainting::markersKeepTheirOwnAlpha()
{
    SmallSlider small(true);
    small.slider.insertMarker(Marker_3, 0);
    QPixmap target = pixmap(plain(8, 6, 0x00808080));
    small.slider.paintMarkers(&target, QRect(0, 0, 8, 6));
    const QRect place = small.slider.markers[0].rect;
    const QImage result = target.toImage();
    for (int y = 0; y < place.height(); ++y)
        for (int x = 0; x < place.width(); ++x)
            QCOMPARE(qAlpha(result.pixel(place.topLeft() + QPoint(x, y))), qAlpha(SmallSkins::marker(2).pixel(x, y)));
    COMPARE_PICTURES(opaque(result), blended(plain(8, 6, 0xff808080), SmallSkins::marker(2), place.topLeft()));
}

void TestSliderSkinPainting::markerAlphaOverride_data()
{
    barAlphaOverride_data();
}

void TestSliderSkinPainting::markerAlphaOverride()
{
    QFETCH(int, alpha);
    QFETCH(int, targetAlpha);
    SmallSlider small(true);
    small.slider.setAlphaOverride(static_cast<unsigned char>(alpha));
    small.slider.insertMarker(Marker_1, 1);
    small.slider.insertMarker(Marker_3, 4);
    const QImage under = pattern(12, 6, 44, targetAlpha);
    QPixmap target = pixmap(under);
    small.slider.paintMarkers(&target, QRect(0, 0, 12, 6));
    QImage colours = under;
    QImage expected = under;
    for (int slot = 0; slot < 2; ++slot) {
        const QRect place = small.slider.markers[slot].rect;
        colours = blended(colours, small.slider.markers[slot].image, place.topLeft());
        for (int y = place.top(); y <= place.bottom(); ++y)
            for (int x = place.left(); x <= place.right(); ++x)
                expected.setPixel(x, y, withAlpha(colours.pixel(x, y), alpha));
    }
    COMPARE_PICTURES(target.toImage(), expected);
}

void TestSliderSkinPainting::markersLieOverTheBar()
{
    const QImage marker = plain(3, 2, 0xff00ff00);
    SmallSlider small(true);
    small.slider.setBackgroundImage(SmallSkins::background());
    small.slider.markerImages[0] = marker;
    small.slider.setValue(4);
    small.slider.insertMarker(Marker_1, 4);
    const QImage picture = shown(small.slider);
    const QRect place = small.slider.markers[0].rect;
    QVERIFY(small.slider.barRect().contains(place));
    COMPARE_PICTURES(picture.copy(place), marker);
}

void TestSliderSkinPainting::reallyMoveSlider_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QRect>("painted");
    QTest::newRow("right") << QByteArray("Seek") << 30 << 80 << QRect(30, 0, 60, 12);
    QTest::newRow("left") << QByteArray("Seek") << 80 << 30 << QRect(30, 0, 60, 12);
    QTest::newRow("right by one") << QByteArray("Seek") << 30 << 31 << QRect(30, 0, 11, 12);
    QTest::newRow("left by one") << QByteArray("Seek") << 30 << 29 << QRect(29, 0, 11, 12);
    QTest::newRow("same place") << QByteArray("Seek") << 30 << 30 << QRect(30, 0, 10, 12);
    QTest::newRow("beyond the right edge") << QByteArray("Seek") << 30 << 500 << QRect(30, 0, 170, 12);
    QTest::newRow("beyond the left edge") << QByteArray("Seek") << 30 << -50 << QRect(0, 0, 40, 12);
    QTest::newRow("down") << QByteArray("Level") << 30 << 80 << QRect(0, 30, 12, 60);
    QTest::newRow("up") << QByteArray("Level") << 80 << 30 << QRect(0, 30, 12, 60);
    QTest::newRow("down by one") << QByteArray("Level") << 30 << 31 << QRect(0, 30, 12, 11);
    QTest::newRow("up by one") << QByteArray("Level") << 30 << 29 << QRect(0, 29, 12, 11);
    QTest::newRow("same height") << QByteArray("Level") << 30 << 30 << QRect(0, 30, 12, 10);
}

void TestSliderSkinPainting::reallyMoveSlider()
{
    QFETCH(QByteArray, group);
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QRect, painted);
    SliderStage stage(group.constData());
    stage.slider.sliderPos = from;
    stage.slider.sliderVal = from / 10;
    stage.slider.setRange(-100, 1000);
    stage.slider.sliderPos = from;
    QVERIFY(stage.window.expose());
    stage.slider.sliderPos = from;
    QVERIFY(stage.begin());
    stage.take();
    stage.slider.reallyMoveSlider(to);
    // At once, not after a return to the event loop.
    QCOMPARE(stage.take(), QStringList{"paint " + rectText(painted)});
    QCOMPARE(stage.slider.sliderPos, to);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestSliderSkinPainting::reallyMoveSliderLeavesValues()
{
    SliderStage stage;
    QVERIFY(stage.begin(4));
    stage.slider.reallyMoveSlider(150);
    QCOMPARE(stage.slider.sliderVal, 4);
    QCOMPARE(stage.slider.value(), 4);
    QCOMPARE(int(stage.slider.state), int(SliderState::Idle));
    QCOMPARE(stage.take().filter("("), QStringList());
}

void TestSliderSkinPainting::moveSlider_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("value");
    QTest::addColumn<QStringList>("log");
    const QByteArray seek("Seek");
    const QByteArray level("Level");
    // From value 4 at pixel 40.
    QTest::newRow("to the right") << seek << 80 << 8 << QStringList{"sliderMoved(8)", "paint 40,0 50x12"};
    QTest::newRow("to the left") << seek << 20 << 2 << QStringList{"sliderMoved(2)", "paint 20,0 30x12"};
    QTest::newRow("snaps down to a whole value")
        << seek << 84 << 8 << QStringList{"sliderMoved(8)", "paint 40,0 50x12"};
    QTest::newRow("snaps up to a whole value") << seek << 85 << 9 << QStringList{"sliderMoved(9)", "paint 40,0 60x12"};
    QTest::newRow("the same place") << seek << 40 << 4 << QStringList();
    QTest::newRow("within the same value") << seek << 43 << 4 << QStringList();
    QTest::newRow("to the start") << seek << 0 << 0 << QStringList{"sliderMoved(0)", "paint 0,0 50x12"};
    QTest::newRow("before the start") << seek << -1 << 0 << QStringList{"sliderMoved(0)", "paint 0,0 50x12"};
    QTest::newRow("far before the start") << seek << lowest << 0 << QStringList{"sliderMoved(0)", "paint 0,0 50x12"};
    QTest::newRow("to the end") << seek << 190 << 19 << QStringList{"sliderMoved(19)", "paint 40,0 160x12"};
    QTest::newRow("behind the end") << seek << 191 << 19 << QStringList{"sliderMoved(19)", "paint 40,0 160x12"};
    QTest::newRow("far behind the end") << seek << highest << 19 << QStringList{"sliderMoved(19)", "paint 40,0 160x12"};
    QTest::newRow("down") << level << 80 << 8 << QStringList{"sliderMoved(8)", "paint 0,40 12x50"};
    QTest::newRow("up") << level << 20 << 2 << QStringList{"sliderMoved(2)", "paint 0,20 12x30"};
    QTest::newRow("below the bottom") << level << 999 << 19 << QStringList{"sliderMoved(19)", "paint 0,40 12x160"};
}

void TestSliderSkinPainting::moveSlider()
{
    QFETCH(QByteArray, group);
    QFETCH(int, position);
    QFETCH(int, value);
    QFETCH(QStringList, log);
    SliderStage stage(group.constData());
    QVERIFY(stage.begin(4));
    stage.slider.moveSlider(position);
    QCOMPARE(stage.take(), log);
    QCOMPARE(stage.slider.sliderVal, value);
    QCOMPARE(stage.slider.sliderPos, 10 * value);
    // The range control is left alone.
    QCOMPARE(stage.slider.value(), 4);
    // A second time nothing is left to do.
    stage.slider.moveSlider(position);
    QCOMPARE(stage.take(), QStringList());
}

void TestSliderSkinPainting::setValueRepaints_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<int>("value");
    QTest::addColumn<QStringList>("log");
    const QByteArray seek("Seek");
    const QByteArray level("Level");
    // From value 3 at pixel 30. The second rectangle begins at the old position and is as wide as the new one.
    QTest::newRow("up") << seek << 5 << QStringList{"paint 30,0 30x12", "valueChanged(5)", "paint 30,0 50x20"};
    QTest::newRow("down") << seek << 1 << QStringList{"paint 10,0 30x12", "valueChanged(1)", "paint 30,0 10x20"};
    QTest::newRow("to the minimum: no width") << seek << 0 << QStringList{"paint 0,0 40x12", "valueChanged(0)"};
    QTest::newRow("the same value") << seek << 3 << QStringList{"paint 30,0 30x20"};
    QTest::newRow("far up, cut at the edge")
        << seek << 18 << QStringList{"paint 30,0 160x12", "valueChanged(18)", "paint 30,0 170x20"};
    QTest::newRow("above the range") << seek << 1000
                                     << QStringList{"paint 30,0 170x12", "valueChanged(19)", "paint 30,0 170x20"};
    QTest::newRow("below the range") << seek << lowest << QStringList{"paint 0,0 40x12", "valueChanged(0)"};
    // Intended: also along x on a standing slider.
    QTest::newRow("standing") << level << 1 << QStringList{"paint 0,10 12x30", "valueChanged(1)"};
}

void TestSliderSkinPainting::setValueRepaints()
{
    QFETCH(QByteArray, group);
    QFETCH(int, value);
    QFETCH(QStringList, log);
    SliderStage stage(group.constData());
    QVERIFY(stage.begin(3));
    stage.slider.setValue(value);
    QCOMPARE(stage.take(), log);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.slider.value(), qBound(0, value, 19));
    QCOMPARE(stage.slider.sliderVal, stage.slider.value());
    QCOMPARE(stage.slider.sliderPos, 10 * stage.slider.value());
}

void TestSliderSkinPainting::setValueRemembersTheOldPosition()
{
    SliderStage stage("Level");
    QVERIFY(stage.begin(1));
    stage.slider.setValue(3);
    // The rectangle lies at x = 10 and is as high as the groove.
    QCOMPARE(stage.take(), (QStringList{"paint 0,10 12x30", "valueChanged(3)", "paint 10,0 10x200"}));
    // A groove lower than the widget decides about the height.
    stage.slider.grooveImage = pattern(5, 17);
    stage.slider.sliderPos = 2;
    stage.slider.setValue(3);
    QCOMPARE(stage.take(), QStringList{"paint 2,0 18x17"});
}

void TestSliderSkinPainting::setValueMakesIdle_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::newRow("inactive") << 3 << 0;
    QTest::newRow("idle") << 0 << 0;
    QTest::newRow("dragging") << 2 << 2;
}

void TestSliderSkinPainting::setValueMakesIdle()
{
    QFETCH(int, before);
    QFETCH(int, after);
    SliderStage stage;
    stage.slider.setState(before);
    stage.slider.setValue(stage.slider.value());
    QCOMPARE(int(stage.slider.state), after);
    // Idle already when the signal tells of the value.
    stage.slider.setState(before);
    int seen = -1;
    connect(&stage.slider, &SliderSkin::valueChanged, &stage.slider, [&] { seen = stage.slider.state; });
    stage.slider.setValue(7);
    QCOMPARE(seen, before == 2 ? -1 : 0);
}

void TestSliderSkinPainting::setValueIgnoredWhileDragging()
{
    SliderStage stage;
    QVERIFY(stage.begin(3));
    press(&stage.slider, stage.at(33));
    stage.take();
    stage.slider.setValue(9);
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.slider.value(), 3);
    QCOMPARE(stage.slider.sliderPos, 30);
    QCOMPARE(int(stage.slider.state), int(SliderState::Dragging));
}

void TestSliderSkinPainting::setValueThroughTheMetaObject()
{
    SliderStage stage;
    Recorder recorder;
    recorder.watchSignals(&stage.slider);
    stage.slider.trace = &recorder;
    QVERIFY(QMetaObject::invokeMethod(&stage.slider, "setValue", Q_ARG(int, 6)));
    QVERIFY(QMetaObject::invokeMethod(&stage.slider, "addStep"));
    QVERIFY(QMetaObject::invokeMethod(&stage.slider, "subtractStep"));
    static_cast<SliderSkin&>(stage.slider).setValue(2);
    QCOMPARE(recorder.take(), (QStringList{"setValue(6)", "valueChanged(6)", "valueChanged(9)", "valueChanged(6)",
                                           "setValue(2)", "valueChanged(2)"}));
}

void TestSliderSkinPainting::stepsArePages()
{
    SliderStage stage;
    QVERIFY(stage.begin(10));
    stage.slider.addStep();
    QCOMPARE(stage.take(), (QStringList{"paint 100,0 40x12", "valueChanged(13)"}));
    stage.slider.subtractStep();
    QCOMPARE(stage.take(), (QStringList{"paint 100,0 40x12", "valueChanged(10)"}));
    stage.slider.setPageStep(100);
    stage.slider.addStep();
    QCOMPARE(stage.take().filter("("), QStringList{"valueChanged(19)"});
    stage.slider.addStep();
    QCOMPARE(stage.take(), QStringList());
    stage.slider.subtractStep();
    QCOMPARE(stage.take().filter("("), QStringList{"valueChanged(0)"});
    stage.slider.subtractStep();
    QCOMPARE(stage.take(), QStringList());
}

void TestSliderSkinPainting::stepsLeaveTheState_data()
{
    QTest::addColumn<int>("state");
    for (const int state : {0, 2, 3})
        QTest::addRow("state %d", state) << state;
}

void TestSliderSkinPainting::stepsLeaveTheState()
{
    QFETCH(int, state);
    SliderStage stage;
    stage.slider.setState(state);
    stage.slider.addStep();
    QCOMPARE(stage.slider.value(), 3);
    QCOMPARE(stage.slider.sliderPos, 30);
    QCOMPARE(int(stage.slider.state), state);
}

QTEST_MAIN(TestSliderSkinPainting)
#include "tst_sliderskin_painting.moc"
