#include "scroll/scrollbarfixture.h"
#include "scroll/scrollbarpictures.h"

using namespace bartest;
using skinwidgets::BarPieces;

namespace
{

QImage clear(int width, int height)
{
    return plain(width, height, 0);
}

// Pieces in which no two pixels are equal, with alpha values from 0 to 255.
QImage shaded(int width, int height, int seed)
{
    QImage picture(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, qRgba(10 * x + seed, 10 * y + seed, 9 * seed, (x + y + seed) % 4 * 85));
    return picture;
}

BarPieces shadedPieces(int top, int centre, int bottom)
{
    return {shaded(5, top, 1), shaded(5, centre, 8), shaded(5, bottom, 15)};
}

BarPieces troughPieces()
{
    return {builtin("scroll_bg_top"), builtin("scroll_bg_middle"), builtin("scroll_bg_bottom")};
}

BarPieces thumbPieces(const QByteArray& look)
{
    return {builtin("scroll_thumb_top_" + look), builtin("scroll_thumb_center_" + look),
            builtin("scroll_thumb_bottom_" + look)};
}

// The trough told row by row, the way that lets the last middle piece end above the cap.
QImage toldTrough(const BarPieces& pieces, int h)
{
    const int cap = pieces.top.height();
    const int middle = pieces.centre.height();
    QImage trough = clear(pieces.centre.width(), h);
    put(trough, pieces.top, pieces.top.rect(), {0, 0});
    int y = cap;
    for (; y < h - cap; y += middle)
        put(trough, pieces.centre, pieces.centre.rect(), {0, y});
    if (y != h - cap) {
        const int from = middle - (h - cap - y);
        put(trough, pieces.centre, QRect(0, from, pieces.centre.width(), middle - from), {0, y});
    }
    put(trough, pieces.bottom, pieces.bottom.rect(), {0, h - cap});
    return trough;
}

// The same for a thumb, into a picture that exists.
QImage toldThumb(const QImage& under, const BarPieces& pieces, int cap)
{
    QImage thumb = under;
    put(thumb, pieces.top, pieces.top.rect(), {0, 0});
    int y = cap;
    for (; y < thumb.height() - 2 * cap; y += pieces.centre.height())
        put(thumb, pieces.centre, pieces.centre.rect(), {0, y});
    put(thumb, pieces.bottom, pieces.bottom.rect(), {0, y});
    return thumb;
}

QImage toldThumb(int length)
{
    return toldThumb(clear(8, length), thumbPieces("normal"), 5);
}

QImage toldPressedThumb(int length)
{
    return toldThumb(toldThumb(length), thumbPieces("focus"), 5);
}

// What the display shows of a bar, with opaque pixels.
QImage onDisplay(QWidget& widget)
{
    return withAlphaBytes(shown(widget), 255);
}

} // namespace

class TestScrollBarSkinPainting : public QuietTest
{
    Q_OBJECT

private slots:
    void composeTrough_data();
    void composeTrough();
    void composeTroughOfOddPieces_data();
    void composeTroughOfOddPieces();
    void composeThumb_data();
    void composeThumb();
    void composeThumbOfOddPieces_data();
    void composeThumbOfOddPieces();
    void thumbRowsBelowTheCap();

    void wholePicture_data();
    void wholePicture();
    void troughImage_data();
    void troughImage();
    void troughNeedsItsCap_data();
    void troughNeedsItsCap();
    void thumbImages_data();
    void thumbImages();
    void composedOverTheBackground();
    void background_data();
    void background();
    void wideBar();
    void lowBar_data();
    void lowBar();

    void plainBarDrawsNothing_data();
    void plainBarDrawsNothing();
    void firstResizeBringsTheButtons_data();
    void firstResizeBringsTheButtons();
    void loadPicturesBringsEverything_data();
    void loadPicturesBringsEverything();
    void loadPicturesComposesInOrder();
    void redrawButtons();
    void redrawMiddle();
    void redrawThumb();
    void redrawsRepaintNothing();
    void changesComposeWhatTheyMust();

    void setAlphaOverride_data();
    void setAlphaOverride();
    void alphaLeavesColoursAlone();
    void alphaIsVirtual();

    void paintThumb_data();
    void paintThumb();
    void paintThumbOutside_data();
    void paintThumbOutside();
    void paintThumbAlpha_data();
    void paintThumbAlpha();
    void paintThumbWhileDragged();
    void paintThumbWithStalePicture_data();
    void paintThumbWithStalePicture();
    void paintThumbIntoAnOpenPixmap();

    void paintsEachRectangle();
    void paintsNothingOfNothing();
    void pressedPictures_data();
    void pressedPictures();
    void pressAndReleaseOnScreen();
    void translucentWindow();
};

void TestScrollBarSkinPainting::composeTrough_data()
{
    QTest::addColumn<int>("height");
    for (int height = 8; height <= 40; ++height)
        QTest::addRow("%d rows", height) << height;
    QTest::addRow("%d rows", 1000) << 1000;
}

void TestScrollBarSkinPainting::composeTrough()
{
    QFETCH(int, height);
    COMPARE_PICTURES(skinwidgets::composeTrough(troughPieces(), height), toldTrough(troughPieces(), height));
    const BarPieces pieces = shadedPieces(8, 3, 8);
    const QImage trough = skinwidgets::composeTrough(pieces, height);
    COMPARE_PICTURES(trough, toldTrough(pieces, height));
    // The bottom cap ends flush, whether the last middle piece fits or not.
    COMPARE_PICTURES(trough.copy(0, height - 8, 5, 8), pieces.bottom);
}

void TestScrollBarSkinPainting::composeTroughOfOddPieces_data()
{
    QTest::addColumn<QList<int>>("heights");
    QTest::addColumn<int>("height");
    QTest::newRow("low bottom cap") << QList<int>{6, 4, 2} << 21;
    QTest::newRow("low bottom cap, pieces fit") << QList<int>{6, 4, 2} << 20;
    QTest::newRow("high bottom cap") << QList<int>{3, 4, 9} << 21;
    QTest::newRow("middle of one row") << QList<int>{3, 1, 3} << 17;
    QTest::newRow("middle higher than the trough") << QList<int>{3, 50, 3} << 17;
    QTest::newRow("no room for the middle") << QList<int>{5, 3, 5} << 10;
    QTest::newRow("caps overlap") << QList<int>{5, 3, 5} << 7;
    QTest::newRow("as high as the top cap") << QList<int>{5, 3, 5} << 5;
}

void TestScrollBarSkinPainting::composeTroughOfOddPieces()
{
    QFETCH(QList<int>, heights);
    QFETCH(int, height);
    const BarPieces pieces = shadedPieces(heights[0], heights[1], heights[2]);
    COMPARE_PICTURES(skinwidgets::composeTrough(pieces, height), toldTrough(pieces, height));

    // Without caps the middle reaches from end to end; without a middle there is no width.
    const QImage bare = skinwidgets::composeTrough({{}, pieces.centre, {}}, height);
    COMPARE_PICTURES(bare, toldTrough({QImage(), pieces.centre, QImage()}, height));
    QVERIFY(skinwidgets::composeTrough({pieces.top, {}, pieces.bottom}, height).isNull());
    QVERIFY(skinwidgets::composeTrough(pieces, 0).isNull());
    QVERIFY(skinwidgets::composeTrough(pieces, -1).isNull());
}

void TestScrollBarSkinPainting::composeThumb_data()
{
    QTest::addColumn<int>("length");
    for (int length = 1; length <= 40; ++length)
        QTest::addRow("%d rows", length) << length;
}

void TestScrollBarSkinPainting::composeThumb()
{
    QFETCH(int, length);
    const auto [idle, dragged] = skinwidgets::composeThumbs(thumbPieces("normal"), thumbPieces("focus"), length);
    COMPARE_PICTURES(idle, toldThumb(length));
    COMPARE_PICTURES(dragged, toldPressedThumb(length));
    const BarPieces pieces = shadedPieces(5, 1, 5);
    COMPARE_PICTURES(skinwidgets::composeThumbs(pieces, pieces, length).first, toldThumb(clear(5, length), pieces, 5));
}

void TestScrollBarSkinPainting::composeThumbOfOddPieces_data()
{
    QTest::addColumn<QList<int>>("normal");
    QTest::addColumn<QList<int>>("focus");
    QTest::newRow("equal") << QList<int>{4, 1, 4} << QList<int>{4, 1, 4};
    QTest::newRow("low top cap") << QList<int>{2, 1, 5} << QList<int>{5, 1, 5};
    QTest::newRow("high top cap") << QList<int>{9, 1, 5} << QList<int>{5, 1, 5};
    QTest::newRow("high centre") << QList<int>{4, 7, 4} << QList<int>{4, 5, 4};
    QTest::newRow("centre higher than the thumb") << QList<int>{4, 70, 4} << QList<int>{4, 1, 4};
    QTest::newRow("dragged centre higher than the thumb") << QList<int>{4, 1, 4} << QList<int>{4, 70, 4};
    QTest::newRow("dragged bottom cap lower") << QList<int>{4, 3, 4} << QList<int>{4, 3, 2};
    QTest::newRow("dragged caps higher") << QList<int>{2, 1, 2} << QList<int>{6, 1, 6};
    QTest::newRow("dragged without caps") << QList<int>{4, 3, 4} << QList<int>{0, 3, 0};
    QTest::newRow("without a top cap") << QList<int>{0, 3, 4} << QList<int>{3, 3, 3};
}

void TestScrollBarSkinPainting::composeThumbOfOddPieces()
{
    QFETCH(QList<int>, normal);
    QFETCH(QList<int>, focus);
    const BarPieces pieces = shadedPieces(normal[0], normal[1], normal[2]);
    const BarPieces other = shadedPieces(focus[0], focus[1], focus[2]);
    const int cap = normal[0];
    for (const int length : {1, 10, 23, 30}) {
        const auto [idle, dragged] = skinwidgets::composeThumbs(pieces, other, length);
        const QImage told = toldThumb(clear(5, length), pieces, cap);
        COMPARE_PICTURES(idle, told);
        COMPARE_PICTURES(dragged, toldThumb(told, other, cap));
    }
    // Without a dragged centre there are the caps.
    QImage caps = toldThumb(clear(5, 20), pieces, cap);
    COMPARE_PICTURES(skinwidgets::composeThumbs(pieces, {}, 20).second, caps);
    put(caps, other.top, other.top.rect(), {0, 0});
    put(caps, other.bottom, other.bottom.rect(), {0, cap});
    COMPARE_PICTURES(skinwidgets::composeThumbs(pieces, {other.top, {}, other.bottom}, 20).second, caps);
    for (const int length : {0, -1}) {
        QVERIFY(skinwidgets::composeThumbs(pieces, other, length).first.isNull());
        QVERIFY(skinwidgets::composeThumbs(pieces, other, length).second.isNull());
    }
    QVERIFY(skinwidgets::composeThumbs({pieces.top, {}, pieces.bottom}, other, 20).first.isNull());
    QVERIFY(skinwidgets::composeThumbs({pieces.top, {}, pieces.bottom}, other, 20).second.isNull());
}

// The centre stops two caps above the end, so that five rows stay transparent.
void TestScrollBarSkinPainting::thumbRowsBelowTheCap()
{
    BarStage stage;
    QVERIFY(stage.begin(0));
    for (const QImage& thumb : {stage.bar.thumbImage, stage.bar.thumbPressedImage}) {
        QCOMPARE(thumb.height(), 20);
        for (int y = 15; y < 20; ++y)
            for (int x = 0; x < 8; ++x)
                QCOMPARE(thumb.pixel(x, y), QRgb(0));
        QVERIFY(qAlpha(thumb.pixel(4, 14)) > 0);
    }
    // A thumb of 10 has no centre.
    stage.bar.setRange(0, 8000);
    QCOMPARE(stage.bar.thumbImage.size(), QSize(8, 10));
    COMPARE_PICTURES(stage.bar.thumbImage.copy(0, 0, 8, 5), builtin("scroll_thumb_top_normal"));
    COMPARE_PICTURES(stage.bar.thumbImage.copy(0, 5, 8, 5), builtin("scroll_thumb_bottom_normal"));
    COMPARE_PICTURES(stage.bar.thumbPressedImage.copy(0, 0, 8, 5), builtin("scroll_thumb_top_focus"));
    COMPARE_PICTURES(stage.bar.thumbPressedImage.copy(0, 5, 8, 5), builtin("scroll_thumb_bottom_focus"));
}

void TestScrollBarSkinPainting::wholePicture_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("pressed");
    QTest::addColumn<int>("alpha");
    for (const ScrollBarControl control : {None, SubLine, AddLine, SubPage, AddPage, Slider, First, Last})
        QTest::addRow("part %d pressed", control) << 140 << 30 << int(control) << 255;
    for (const int value : {0, 1, 40, 80})
        QTest::addRow("value %d", value) << 140 << value << int(None) << 255;
    for (int height = 56; height <= 66; ++height)
        QTest::addRow("%d rows", height) << height << 40 << int(Slider) << 255;
    for (const int alpha : {0, 1, 128, 254})
        QTest::addRow("alpha %d", alpha) << 140 << 50 << int(Slider) << alpha;
}

void TestScrollBarSkinPainting::wholePicture()
{
    QFETCH(int, height);
    QFETCH(int, value);
    QFETCH(int, pressed);
    QFETCH(int, alpha);
    BarStage stage;
    QVERIFY(stage.begin(value));
    Bar& bar = stage.bar;
    bar.resize(20, height);
    bar.setAlphaOverride(static_cast<unsigned char>(alpha));
    bar.pressedControl = static_cast<ScrollBarControl>(pressed);

    // The alpha never changes a colour.
    QImage expected = plain(20, height, red);
    put(expected, toldTrough(troughPieces(), height - 40), QRect(0, 0, 20, height - 40), {0, 20});
    put(expected, builtin(pressed == SubLine ? "scroll_sub_press" : "scroll_sub_normal"), QRect(0, 0, 20, 20), {0, 0});
    put(expected, builtin(pressed == AddLine ? "scroll_add_press" : "scroll_add_normal"), QRect(0, 0, 20, 20),
        {0, height - 20});
    const int length = bar.sliderRect().height();
    const QImage thumb = pressed == Slider ? toldPressedThumb(length) : toldThumb(length);
    expected = blended(expected, thumb, {6, bar.sliderPos});
    COMPARE_PICTURES(onDisplay(bar), expected);
}

void TestScrollBarSkinPainting::troughImage_data()
{
    QTest::addColumn<int>("height");
    for (const int height : {48, 55, 56, 57, 58, 59, 140, 141, 142})
        QTest::addRow("%d rows", height) << height;
}

void TestScrollBarSkinPainting::troughImage()
{
    QFETCH(int, height);
    BarStage stage;
    QVERIFY(stage.begin(0));
    stage.bar.resize(20, height);
    COMPARE_PICTURES(stage.bar.troughImage, toldTrough(troughPieces(), height - 40));
}

void TestScrollBarSkinPainting::troughNeedsItsCap_data()
{
    QTest::addColumn<int>("height");
    for (const int height : {47, 41, 40, 39, 20, 1, 0})
        QTest::addRow("%d rows", height) << height;
}

void TestScrollBarSkinPainting::troughNeedsItsCap()
{
    QFETCH(int, height);
    BarStage stage;
    QVERIFY(stage.begin(0));
    const QImage before = stage.bar.troughImage;
    stage.bar.trace = &stage.recorder;
    stage.take();
    stage.bar.resize(20, height);
    // Nothing is done, so the old one stays.
    COMPARE_PICTURES(stage.bar.troughImage, before);
    QCOMPARE(stage.take().filter("redrawImage").size(), 4);
}

void TestScrollBarSkinPainting::thumbImages_data()
{
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("page");
    QTest::newRow("20 rows") << 80 << 20;
    QTest::newRow("least") << 8000 << 20;
    QTest::newRow("11 rows") << 89 << 11;
    QTest::newRow("15 rows") << 85 << 15;
    QTest::newRow("16 rows") << 84 << 16;
    QTest::newRow("half") << 50 << 50;
    QTest::newRow("whole trough") << 0 << 20;
}

void TestScrollBarSkinPainting::thumbImages()
{
    QFETCH(int, maximum);
    QFETCH(int, page);
    BarStage stage;
    QVERIFY(stage.begin(0));
    stage.bar.setSteps(1, page);
    stage.bar.setRange(0, maximum);
    stage.bar.redrawThumb();
    const int length = stage.bar.sliderRect().height();
    COMPARE_PICTURES(stage.bar.thumbImage, toldThumb(length));
    COMPARE_PICTURES(stage.bar.thumbPressedImage, toldPressedThumb(length));
    QCOMPARE(stage.bar.thumbRect, QRect(6, 20, 8, length));
}

// Where each picture gets its background from; the trough's place is that of the top button, which is intended.
void TestScrollBarSkinPainting::composedOverTheBackground()
{
    BarStage stage;
    QVERIFY(stage.begin(0));
    stage.bar.trace = &stage.recorder;
    stage.take();
    stage.bar.redrawAddButton();
    QCOMPARE(stage.take(), (QStringList{"redrawImage 0,120 20x20", "redrawImage 0,120 20x20"}));
    stage.bar.redrawSubButton();
    QCOMPARE(stage.take(), (QStringList{"redrawImage 0,0 20x20", "redrawImage 0,0 20x20"}));
    stage.bar.redrawMiddle();
    QCOMPARE(stage.take(), QStringList{"redrawImage 0,0 20x100"});
    stage.bar.redrawThumb();
    QCOMPARE(stage.take(), QStringList());
    // The places are those of the rectangles, whatever these are.
    stage.bar.subRect.moveTo(3, 4);
    stage.bar.middleRect.moveTo(7, 31);
    stage.bar.addRect.moveTo(5, 66);
    stage.bar.redrawMiddle();
    stage.bar.redrawSubButton();
    stage.bar.redrawAddButton();
    QCOMPARE(stage.take(), (QStringList{"redrawImage 7,4 20x100", "redrawImage 3,4 20x20", "redrawImage 3,4 20x20",
                                        "redrawImage 5,66 20x20", "redrawImage 5,66 20x20"}));
}

void TestScrollBarSkinPainting::background_data()
{
    QTest::addColumn<int>("alpha");
    for (const int alpha : {0, 100, 255})
        QTest::addRow("alpha %d", alpha) << alpha;
}

// A bar that is wider than its pictures shows its background beside them.
void TestScrollBarSkinPainting::background()
{
    QFETCH(int, alpha);
    BarStage stage;
    QVERIFY(stage.begin(30));
    Bar& bar = stage.bar;
    bar.resize(28, 140);
    const QImage under = pattern(28, 140, 99);
    bar.setBackgroundPixmap(pixmap(under));
    bar.setAlphaOverride(static_cast<unsigned char>(alpha));
    QImage expected = under;
    put(expected, toldTrough(troughPieces(), 100), QRect(0, 0, 20, 100), {0, 20});
    put(expected, builtin("scroll_sub_normal"), QRect(0, 0, 20, 20), {0, 0});
    put(expected, builtin("scroll_add_normal"), QRect(0, 0, 20, 20), {0, 120});
    expected = blended(expected, toldThumb(bar.sliderRect().height()), {6, bar.sliderPos});
    COMPARE_PICTURES(onDisplay(bar), expected);
}

void TestScrollBarSkinPainting::wideBar()
{
    BarStage stage;
    QVERIFY(stage.begin(0));
    stage.bar.resize(30, 140);
    const QImage picture = onDisplay(stage.bar);
    const QRgb beside = stage.bar.palette().color(QPalette::Window).rgb();
    for (int y = 0; y < 140; ++y) {
        QVERIFY(picture.pixel(19, y) != beside);
        QCOMPARE(picture.pixel(20, y), beside);
        QCOMPARE(picture.pixel(29, y), beside);
    }
    // The thumb begins where the reacting part does: below 30 rows, not below the button's picture.
    QCOMPARE(stage.bar.thumbRect.top(), 30);
    QCOMPARE(picture.pixel(10, 35), toldThumb(16).pixel(4, 5));
}

void TestScrollBarSkinPainting::lowBar_data()
{
    QTest::addColumn<int>("height");
    for (const int height : {40, 39, 30, 20, 5, 2, 1})
        QTest::addRow("%d rows", height) << height;
}

// The buttons overlap, the bottom one in front, and the thumb lies over both.
void TestScrollBarSkinPainting::lowBar()
{
    QFETCH(int, height);
    BarStage stage;
    QVERIFY(stage.begin(0));
    stage.bar.resize(20, height);
    QImage expected = plain(20, height, red);
    put(expected, builtin("scroll_sub_normal"), QRect(0, 0, 20, 20), {0, 0});
    put(expected, builtin("scroll_add_normal"), QRect(0, 0, 20, 20), {0, height - 20});
    const QRect thumb = stage.bar.sliderRect();
    if (thumb.height() > 0)
        expected = blended(expected, toldThumb(thumb.height()), thumb.topLeft());
    COMPARE_PICTURES(onDisplay(stage.bar), expected);
}

void TestScrollBarSkinPainting::plainBarDrawsNothing_data()
{
    QTest::addColumn<bool>("ranged");
    QTest::newRow("with a range") << true;
    QTest::newRow("with a size") << false;
}

// Nor do a new value or range bring pictures.
void TestScrollBarSkinPainting::plainBarDrawsNothing()
{
    QFETCH(bool, ranged);
    QWidget parent;
    const std::unique_ptr<Bar> bar(ranged ? new Bar(0, 80, 3, 20, 30, &parent) : new Bar(QSize(20, 140), &parent));
    bar->resize(20, 140);
    bar->setValue(40);
    bar->setRange(0, 60);
    const QImage under = pattern(20, 140, 50);
    QPixmap target = pixmap(under);
    bar->paintThumb(&target, QRect(0, 0, 20, 140));
    COMPARE_PICTURES(target.toImage(), under);
    QVERIFY(bar->troughImage.isNull());
    QVERIFY(bar->thumbImage.isNull());
    QVERIFY(bar->thumbPressedImage.isNull());
}

void TestScrollBarSkinPainting::firstResizeBringsTheButtons_data()
{
    plainBarDrawsNothing_data();
}

void TestScrollBarSkinPainting::firstResizeBringsTheButtons()
{
    QFETCH(bool, ranged);
    Window window;
    const std::unique_ptr<Bar> bar(ranged ? new Bar(0, 80, 3, 20, 30, &window) : new Bar(QSize(20, 140), &window));
    bar->setGeometry(0, 0, 20, 140);
    QVERIFY(window.expose());
    QImage expected = plain(20, 140, bar->palette().color(QPalette::Window).rgb());
    put(expected, builtin("scroll_sub_normal"), QRect(0, 0, 20, 20), {0, 0});
    put(expected, builtin("scroll_add_normal"), QRect(0, 0, 20, 20), {0, 120});
    COMPARE_PICTURES(onDisplay(*bar), expected);
    bar->pressedControl = AddLine;
    put(expected, builtin("scroll_add_press"), QRect(0, 0, 20, 20), {0, 120});
    COMPARE_PICTURES(onDisplay(*bar), expected);
    bar->pressedControl = None;

    // No resize brings the rest.
    bar->resize(20, 100);
    QVERIFY(bar->troughImage.isNull());
    QVERIFY(bar->thumbImage.isNull());
    QVERIFY(bar->thumbPressedImage.isNull());
    QCOMPARE(bar->subRect, QRect(0, 0, 20, 20));
    QCOMPARE(bar->addRect, QRect(0, 80, 20, 20));
    expected = plain(20, 100, bar->palette().color(QPalette::Window).rgb());
    put(expected, builtin("scroll_sub_normal"), QRect(0, 0, 20, 20), {0, 0});
    put(expected, builtin("scroll_add_normal"), QRect(0, 0, 20, 20), {0, 80});
    COMPARE_PICTURES(onDisplay(*bar), expected);
}

void TestScrollBarSkinPainting::loadPicturesBringsEverything_data()
{
    plainBarDrawsNothing_data();
}

void TestScrollBarSkinPainting::loadPicturesBringsEverything()
{
    QFETCH(bool, ranged);
    Window window;
    Bar usual(&window);
    const std::unique_ptr<Bar> bar(ranged ? new Bar(0, 99, 1, 10, 0, &window) : new Bar(QSize(20, 140), &window));
    for (Bar* one : {&usual, bar.get()})
        one->setGeometry(0, 0, 20, 140);
    QVERIFY(window.expose());
    for (Bar* one : {&usual, bar.get()})
        one->setValue(30);
    bar->loadPictures();
    COMPARE_PICTURES(bar->troughImage, usual.troughImage);
    COMPARE_PICTURES(bar->thumbImage, usual.thumbImage);
    COMPARE_PICTURES(bar->thumbPressedImage, usual.thumbPressedImage);
    QCOMPARE(bar->thumbRect, usual.thumbRect);
    for (const ScrollBarControl control : {None, Slider, SubLine, AddLine}) {
        usual.pressedControl = control;
        bar->pressedControl = control;
        COMPARE_PICTURES(onDisplay(*bar), onDisplay(usual));
    }
}

void TestScrollBarSkinPainting::loadPicturesComposesInOrder()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.trace = &stage.recorder;
    stage.bar.subRect = QRect();
    stage.take();
    stage.bar.loadPictures();
    QCOMPARE(stage.take(), (QStringList{"redrawImage 0,120 20x20", "redrawImage 0,120 20x20", "redrawImage 0,0 20x20",
                                        "redrawImage 0,0 20x20", "redrawImage 0,0 20x100"}));
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

// The pictures are taken from the table each time, so that composing never adds up.
void TestScrollBarSkinPainting::redrawButtons()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    const QImage before = onDisplay(stage.bar);
    for (const int alpha : {10, 200, 0, 255})
        stage.bar.setAlphaOverride(static_cast<unsigned char>(alpha));
    stage.bar.redrawAddButton();
    stage.bar.redrawSubButton();
    stage.bar.blits.clear();
    COMPARE_PICTURES(onDisplay(stage.bar), before);
    COMPARE_PICTURES(stage.bar.blits[1].picture, builtin("scroll_sub_normal"));
    COMPARE_PICTURES(stage.bar.blits[2].picture, builtin("scroll_add_normal"));
}

void TestScrollBarSkinPainting::redrawMiddle()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.middleRect.setHeight(33);
    stage.bar.redrawMiddle();
    COMPARE_PICTURES(stage.bar.troughImage, toldTrough(troughPieces(), 33));
    stage.bar.middleRect.setHeight(8);
    stage.bar.redrawMiddle();
    COMPARE_PICTURES(stage.bar.troughImage, toldTrough(troughPieces(), 8));
    stage.bar.middleRect.setHeight(7);
    stage.bar.redrawMiddle();
    QCOMPARE(stage.bar.troughImage.height(), 8);
    stage.bar.middleRect.setHeight(0);
    stage.bar.redrawMiddle();
    QCOMPARE(stage.bar.troughImage.height(), 8);
}

void TestScrollBarSkinPainting::redrawThumb()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.setPageStep(80);
    stage.bar.sliderPos = 33;
    stage.bar.redrawThumb();
    COMPARE_PICTURES(stage.bar.thumbImage, toldThumb(50));
    COMPARE_PICTURES(stage.bar.thumbPressedImage, toldPressedThumb(50));
    QCOMPARE(stage.bar.thumbRect, QRect(6, 33, 8, 50));
    // A thumb without a length has no pictures.
    stage.bar.resize(20, 39);
    QVERIFY(stage.bar.thumbImage.isNull());
    QVERIFY(stage.bar.thumbPressedImage.isNull());
}

void TestScrollBarSkinPainting::redrawsRepaintNothing()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.redrawAddButton();
    stage.bar.redrawSubButton();
    stage.bar.redrawMiddle();
    stage.bar.redrawThumb();
    stage.bar.loadPictures();
    stage.bar.init_position();
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

// A new range composes the thumb, a new value nothing.
void TestScrollBarSkinPainting::changesComposeWhatTheyMust()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.trace = &stage.recorder;
    const auto key = [](const QImage& image) { return image.cacheKey(); };
    qint64 trough = key(stage.bar.troughImage);
    qint64 thumb = key(stage.bar.thumbImage);
    stage.bar.setValue(50);
    QCOMPARE(key(stage.bar.thumbImage), thumb);
    QCOMPARE(key(stage.bar.troughImage), trough);
    stage.bar.setRange(0, 81);
    QVERIFY(key(stage.bar.thumbImage) != thumb);
    QCOMPARE(key(stage.bar.troughImage), trough);
    QCOMPARE(stage.take().filter("redrawImage"), QStringList());
}

void TestScrollBarSkinPainting::setAlphaOverride_data()
{
    QTest::addColumn<int>("alpha");
    for (const int alpha : {0, 1, 128, 254, 255})
        QTest::addRow("alpha %d", alpha) << alpha;
}

void TestScrollBarSkinPainting::setAlphaOverride()
{
    QFETCH(int, alpha);
    BarStage stage;
    QVERIFY(stage.begin(30));
    Bar& bar = stage.bar;
    const QImage under = pattern(20, 140, 99, 7);
    bar.setBackgroundPixmap(pixmap(under));
    QVERIFY(stage.window.settle());
    bar.trace = &stage.recorder;
    const qint64 thumb = bar.thumbImage.cacheKey();
    stage.take();
    bar.setAlphaOverride(static_cast<unsigned char>(alpha));
    QCOMPARE(int(bar.alphaOverride), alpha);
    // Bottom button, trough, top button.
    QCOMPARE(stage.take(), (QStringList{"redrawImage 0,120 20x20", "redrawImage 0,120 20x20", "redrawImage 0,0 20x100",
                                        "redrawImage 0,0 20x20", "redrawImage 0,0 20x20"}));
    // Neither the thumb nor the background is composed.
    QCOMPARE(bar.thumbImage.cacheKey(), thumb);
    COMPARE_PICTURES(bar.backgroundPixmap()->toImage(), under);
    COMPARE_PICTURES(bar.troughImage, withAlphaBytes(toldTrough(troughPieces(), 100), alpha));
    // Nothing is repainted.
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());

    bar.blits.clear();
    bar.pressedControl = SubLine;
    bar.repaint(true);
    COMPARE_PICTURES(bar.blits[1].picture, withAlphaBytes(builtin("scroll_sub_press"), alpha));
    COMPARE_PICTURES(bar.blits[2].picture, withAlphaBytes(builtin("scroll_add_normal"), alpha));
    bar.pressedControl = AddLine;
    bar.blits.clear();
    bar.repaint(true);
    COMPARE_PICTURES(bar.blits[1].picture, withAlphaBytes(builtin("scroll_sub_normal"), alpha));
    COMPARE_PICTURES(bar.blits[2].picture, withAlphaBytes(builtin("scroll_add_press"), alpha));
}

void TestScrollBarSkinPainting::alphaLeavesColoursAlone()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    const QImage before = onDisplay(stage.bar);
    for (const int alpha : {0, 77, 255}) {
        stage.bar.setAlphaOverride(static_cast<unsigned char>(alpha));
        COMPARE_PICTURES(onDisplay(stage.bar), before);
    }
}

void TestScrollBarSkinPainting::alphaIsVirtual()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.trace = &stage.recorder;
    stage.take();
    static_cast<SkinBase&>(stage.bar).setAlphaOverride(9);
    QCOMPARE(int(stage.bar.alphaOverride), 9);
    QCOMPARE(stage.take().size(), 5);
    COMPARE_PICTURES(stage.bar.troughImage, withAlphaBytes(toldTrough(troughPieces(), 100), 9));
}

void TestScrollBarSkinPainting::paintThumb_data()
{
    QTest::addColumn<QRect>("area");
    QTest::newRow("exactly the thumb") << QRect(6, 50, 8, 20);
    QTest::newRow("whole bar") << QRect(0, 0, 20, 140);
    QTest::newRow("upper part") << QRect(0, 40, 20, 17);
    QTest::newRow("lower part") << QRect(0, 61, 20, 30);
    QTest::newRow("left part") << QRect(3, 45, 5, 40);
    QTest::newRow("right part") << QRect(11, 45, 9, 40);
    QTest::newRow("inside") << QRect(8, 53, 3, 4);
    QTest::newRow("first pixel") << QRect(6, 50, 1, 1);
    QTest::newRow("last pixel") << QRect(13, 69, 1, 1);
    QTest::newRow("reaching out of the bar") << QRect(-10, -20, 60, 300);
}

void TestScrollBarSkinPainting::paintThumb()
{
    QFETCH(QRect, area);
    BarStage stage;
    QVERIFY(stage.begin(30));
    const QImage under = pattern(area.width(), area.height() % 256, 50);
    for (const ScrollBarControl control : {None, Slider, AddLine}) {
        stage.bar.pressedControl = control;
        QPixmap target = pixmap(under);
        stage.bar.paintThumb(&target, area);
        const QImage thumb = control == Slider ? toldPressedThumb(20) : toldThumb(20);
        COMPARE_PICTURES(target.toImage(), blended(under, thumb, QPoint(6, 50) - area.topLeft()));
    }
}

void TestScrollBarSkinPainting::paintThumbOutside_data()
{
    QTest::addColumn<QRect>("area");
    QTest::newRow("above") << QRect(0, 30, 20, 20);
    QTest::newRow("below") << QRect(0, 70, 20, 20);
    QTest::newRow("left") << QRect(0, 50, 6, 20);
    QTest::newRow("right") << QRect(14, 50, 6, 20);
    QTest::newRow("far away") << QRect(1000, 1000, 10, 10);
}

void TestScrollBarSkinPainting::paintThumbOutside()
{
    QFETCH(QRect, area);
    BarStage stage;
    QVERIFY(stage.begin(30));
    const QImage under = pattern(area.width(), area.height(), 50, 13);
    for (const int alpha : {0, 100, 255}) {
        stage.bar.setAlphaOverride(static_cast<unsigned char>(alpha));
        QPixmap target = pixmap(under);
        stage.bar.paintThumb(&target, area);
        COMPARE_PICTURES(target.toImage(), under);
    }
}

void TestScrollBarSkinPainting::paintThumbAlpha_data()
{
    QTest::addColumn<int>("alpha");
    for (const int alpha : {0, 1, 128, 254, 255})
        QTest::addRow("alpha %d", alpha) << alpha;
}

// The byte is written over the thumb's whole rectangle, its transparent rows included, and nowhere else.
void TestScrollBarSkinPainting::paintThumbAlpha()
{
    QFETCH(int, alpha);
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.setAlphaOverride(static_cast<unsigned char>(alpha));
    const QImage under = pattern(20, 60, 50);
    const QRect area(0, 45, 20, 60);
    for (const bool pressed : {false, true}) {
        stage.bar.pressedControl = pressed ? Slider : None;
        QPixmap target = pixmap(under);
        stage.bar.paintThumb(&target, area);
        QImage expected = blended(under, pressed ? toldPressedThumb(20) : toldThumb(20), {6, 5});
        put(expected, withAlphaBytes(expected.copy(6, 5, 8, 20), alpha), QRect(0, 0, 8, 20), {6, 5});
        COMPARE_PICTURES(target.toImage(), expected);
    }
}

void TestScrollBarSkinPainting::paintThumbWhileDragged()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    press(&stage.bar, {10, 60});
    move(&stage.bar, {10, 70});
    QImage expected = plain(20, 140, red);
    put(expected, toldTrough(troughPieces(), 100), QRect(0, 0, 20, 100), {0, 20});
    COMPARE_PICTURES(onDisplay(stage.bar).copy(0, 20, 20, 100),
                     blended(expected, toldPressedThumb(20), {6, 60}).copy(0, 20, 20, 100));
    release(&stage.bar, {10, 70});
    COMPARE_PICTURES(onDisplay(stage.bar).copy(0, 20, 20, 100),
                     blended(expected, toldThumb(20), {6, 60}).copy(0, 20, 20, 100));
}

void TestScrollBarSkinPainting::paintThumbWithStalePicture_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("alpha");
    for (const int alpha : {100, 255}) {
        QTest::addRow("picture too short, alpha %d", alpha) << 80 << alpha;
        QTest::addRow("picture too long, alpha %d", alpha) << 0 << alpha;
    }
}

// After a new page step the picture is still that of the old length: what fits is drawn, from the top.
void TestScrollBarSkinPainting::paintThumbWithStalePicture()
{
    QFETCH(int, page);
    QFETCH(int, alpha);
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.setAlphaOverride(static_cast<unsigned char>(alpha));
    stage.bar.setPageStep(page);
    const QRect slider = stage.bar.sliderRect();
    QCOMPARE(slider, QRect(6, 50, 8, page ? 50 : 10));
    const QImage under = pattern(20, 140, 50);
    QPixmap target = pixmap(under);
    stage.bar.paintThumb(&target, QRect(0, 0, 20, 140));
    QImage expected = blended(under, toldThumb(20).copy(0, 0, 8, qMin(20, slider.height())), {6, 50});
    put(expected, withAlphaBytes(expected.copy(slider), alpha), QRect(QPoint(), slider.size()), slider.topLeft());
    COMPARE_PICTURES(target.toImage(), expected);
}

void TestScrollBarSkinPainting::paintThumbIntoAnOpenPixmap()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    const QImage under = pattern(20, 140, 50);
    QPixmap target = pixmap(under);
    {
        const QPainter painter(&target);
        stage.bar.paintThumb(&target, QRect(0, 0, 20, 140));
    }
    COMPARE_PICTURES(withAlphaBytes(target.toImage(), 255), blended(under, toldThumb(20), {6, 50}));
}

void TestScrollBarSkinPainting::paintsEachRectangle()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    const QImage whole = onDisplay(stage.bar);
    stage.bar.blits.clear();
    stage.take();
    const QRect one(2, 10, 10, 50);
    const QRect other(8, 100, 12, 35);
    stage.bar.QWidget::repaint(QRegion(one) + other);
    QCOMPARE(stage.take(), (QStringList{"paint 2,10 10x50", "paint 8,100 12x35"}));
    QCOMPARE(stage.bar.blits.size(), 6);
    for (int i = 0; i < 6; ++i) {
        const Bar::Blit& blit = stage.bar.blits[i];
        const QRect area = i < 3 ? one : other;
        QCOMPARE(blit.area, area);
        QCOMPARE(blit.target, area.size());
        QCOMPARE(blit.depth, 32);
        // Back to front: trough, top button, bottom button.
        const QRect places[] = {QRect(0, 20, 20, 100), QRect(0, 0, 20, 20), QRect(0, 120, 20, 20)};
        QCOMPARE(blit.pictureRect, places[i % 3]);
    }
    COMPARE_PICTURES(stage.bar.blits[3].picture, stage.bar.troughImage);
    COMPARE_PICTURES(onDisplay(stage.bar), whole);
    // A part that is painted alone looks as it does in the whole.
    for (const QRect& area : {one, other, QRect(6, 50, 8, 20), QRect(0, 19, 20, 2), QRect(0, 119, 20, 2)})
        COMPARE_PICTURES(withAlphaBytes(stage.bar.grab(area).toImage(), 255), whole.copy(area));
}

void TestScrollBarSkinPainting::paintsNothingOfNothing()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.blits.clear();
    QPaintEvent event{QRegion()};
    QCoreApplication::sendEvent(&stage.bar, &event);
    QCOMPARE(stage.bar.blits.size(), 0);
}

void TestScrollBarSkinPainting::pressedPictures_data()
{
    QTest::addColumn<int>("control");
    QTest::addColumn<QByteArray>("sub");
    QTest::addColumn<QByteArray>("add");
    const QByteArray subNormal("scroll_sub_normal");
    const QByteArray addNormal("scroll_add_normal");
    for (const ScrollBarControl control : {None, Slider, SubPage, AddPage, First, Last})
        QTest::addRow("part %d", control) << int(control) << subNormal << addNormal;
    QTest::newRow("SubLine") << int(SubLine) << QByteArray("scroll_sub_press") << addNormal;
    QTest::newRow("AddLine") << int(AddLine) << subNormal << QByteArray("scroll_add_press");
}

void TestScrollBarSkinPainting::pressedPictures()
{
    QFETCH(int, control);
    QFETCH(QByteArray, sub);
    QFETCH(QByteArray, add);
    BarStage stage;
    QVERIFY(stage.begin(30));
    stage.bar.setFocusPolicy(Qt::StrongFocus);
    stage.window.activateWindow();
    stage.bar.setFocus();
    stage.bar.pressedControl = static_cast<ScrollBarControl>(control);
    stage.bar.blits.clear();
    stage.bar.repaint(true);
    // The focus pictures never show, not even with the keyboard focus.
    COMPARE_PICTURES(stage.bar.blits[1].picture, builtin(sub));
    COMPARE_PICTURES(stage.bar.blits[2].picture, builtin(add));
}

// What the stylus does is on the display at once.
void TestScrollBarSkinPainting::pressAndReleaseOnScreen()
{
    BarStage stage;
    QVERIFY(stage.begin(30));
    const auto screen = [&](const QRect& area) {
        return stage.window.screen()
            ->grabWindow(stage.window.winId(), area.x(), area.y(), area.width(), area.height())
            .toImage();
    };
    press(&stage.bar, {10, 130});
    COMPARE_PICTURES(screen(QRect(0, 120, 20, 20)), builtin("scroll_add_press"));
    COMPARE_PICTURES(screen(QRect(0, 0, 20, 20)), builtin("scroll_sub_normal"));
    release(&stage.bar, {10, 130});
    COMPARE_PICTURES(screen(QRect(0, 120, 20, 20)), builtin("scroll_add_normal"));
    press(&stage.bar, {10, 10});
    COMPARE_PICTURES(screen(QRect(0, 0, 20, 20)), builtin("scroll_sub_press"));
    release(&stage.bar, {10, 10});
    COMPARE_PICTURES(screen(QRect(0, 0, 20, 20)), builtin("scroll_sub_normal"));
    const QRgb idle = toldThumb(20).pixel(4, 8);
    const QRgb grabbed = toldPressedThumb(20).pixel(4, 8);
    QVERIFY(idle != grabbed);
    press(&stage.bar, {10, 60});
    QCOMPARE(screen(QRect(10, 58, 1, 1)).pixel(0, 0), grabbed);
    move(&stage.bar, {10, 75});
    QCOMPARE(screen(QRect(10, 73, 1, 1)).pixel(0, 0), grabbed);
    // No trace is left at the old place.
    QCOMPARE(screen(QRect(10, 58, 1, 1)).pixel(0, 0), stage.bar.troughImage.pixel(10, 38));
    release(&stage.bar, {10, 75});
    QCOMPARE(screen(QRect(10, 73, 1, 1)).pixel(0, 0), idle);
}

void TestScrollBarSkinPainting::translucentWindow()
{
    Window window;
    window.setAttribute(Qt::WA_TranslucentBackground);
    Bar bar(&window);
    bar.setGeometry(0, 0, 20, 140);
    QVERIFY(window.expose());
    bar.setAlphaOverride(128);
    QImage target = clear(20, 140);
    bar.render(&target, QPoint(), QRegion(), QWidget::RenderFlags());
    for (int y = 0; y < 140; ++y)
        for (int x = 0; x < 20; ++x)
            QCOMPARE(qAlpha(target.pixel(x, y)), 128);
}

QTEST_MAIN(TestScrollBarSkinPainting)

#include "tst_scrollbarskin_painting.moc"
