#include "media/mediafixture.h"

#include <QMetaMethod>
#include <QProxyStyle>
#include <QStyleFactory>

#include <memory>
#include <type_traits>

using namespace mediatest;

namespace
{

// Gives slider handles a length that no style has.
class LongHandles : public QProxyStyle
{
public:
    LongHandles() : QProxyStyle(QStyleFactory::create("Fusion")) {}
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        if (metric != PM_SliderLength)
            return QProxyStyle::pixelMetric(metric, option, widget);
        asked << widget;
        return 137;
    }
    mutable QList<const QWidget*> asked;
};

} // namespace

// Construction, skins, range, geometry and markers. Painting and the stylus have programs of their own.
class TestSliderSkin : public InstalledTest
{
    Q_OBJECT

private slots:
    // Before any slider was pressed.
    void initTestCase() { QCOMPARE(Slider::sliderStartVal, 0); }
    void bases();
    void dataModel();
    void enumerations();
    void signalsAndSlots_data();
    void signalsAndSlots();

    void freshState_data();
    void freshState();
    void constructorArguments();
    void rangeConstructorKeepsValueUnbounded_data();
    void rangeConstructorKeepsValueUnbounded();
    void focusPolicy_data();
    void focusPolicy();
    void configuredFlag_data();
    void configuredFlag();
    void initResets();
    void inactiveUntilSetValue_data();
    void inactiveUntilSetValue();
    void pathsAreFilesNotNames();
    void twoPathsHaveNoMarkers();
    void fourPathsGiveKindsOneTwoTwo();
    void pathConstructorsReadNoSkin();

    void loadsTheGroupOfItsName();
    void loadsThroughTheBase();
    void skinOfTheWindow();
    void windowSliderIsItsOwnSkin();
    void picturesOfASkin();
    void barIsNotComposed();
    void missingKey_data();
    void missingKey();
    void missingFile_data();
    void missingFile();
    void halvesOfPictures_data();
    void halvesOfPictures();
    void getImage_data();
    void getImage();
    void orientation_data();
    void orientation();
    void orientationOfPaths_data();
    void orientationOfPaths();
    void loadingAgainReplaces();
    void buttonsOfTheBaseStayEmpty();

    void rangeReaders();
    void rangeSetters_data();
    void rangeSetters();
    void rangeSetterAsksTheOther();
    void setValueInit_data();
    void setValueInit();
    void setValueInitLeavesValueAndState_data();
    void setValueInitLeavesValueAndState();
    void setDisable();
    void setDisableFalseStaysInactive();
    void setDisableWhileDragging();

    void available_data();
    void available();
    void positionsAndValues_data();
    void positionsAndValues();
    void barRectangle();
    void standingBarRectangleFollowsPressedPicture();
    void lyingBarRectangleFollowsIdlePicture();
    void progRect();
    void goodPart();
    void slideLength();

    void valueChangeMovesTheBar();
    void valueChangeKeepsTheShownValue();
    void valueChangeHandsValueBack();
    void negativeValues();
    void valueChangeThroughRangeControl();
    void rangeChangeMovesTheBar();
    void stepChangeMovesTheBar();
    void rangeChangeBeforeValueChange();
    void resizeMovesTheBar();
    void resizeUpdatesAutoMask();
    void showTellsOfTheSize();

    void markersFillSlotsInOrder();
    void eleventhMarker();
    void freedSlotIsTakenFirst();
    void markerPlace_data();
    void markerPlace();
    void markerKind_data();
    void markerKind();
    void insertingRepaintsNothing();
    void removeMarkerWarnsAndRepaints();
    void removedBeforeItsPlaceIsPainted();
    void removeMarkerIgnores_data();
    void removeMarkerIgnores();
    void removedMarkerKeepsItsPlace();
    void updateMarkerRepaints();
    void updateMarkerIgnores_data();
    void updateMarkerIgnores();
    void clearMarkersInOrder();

private:
    void installSkins() override { SliderSkins::install(*installation); }

    QString file(const QString& name) const { return installation->skin("player") + QLatin1Char('/') + name; }
    std::unique_ptr<Slider> makeSlider(const QString& constructor, QWidget* parent, const char* name = "Seek") const;
};

std::unique_ptr<Slider> TestSliderSkin::makeSlider(const QString& constructor, QWidget* parent, const char* name) const
{
    if (constructor == "range")
        return std::make_unique<Slider>(5, 25, 4, 15, parent, name);
    if (constructor == "skin")
        return std::make_unique<Slider>(parent, name);
    if (constructor == "two paths")
        return std::make_unique<Slider>(file("seek_back.png"), file("seek_bar.png"), parent, name);
    return std::make_unique<Slider>(file("seek_back.png"), file("seek_bar.png"), file("marker_1.png"),
                                    file("marker_2.png"), parent, name);
}

void TestSliderSkin::bases()
{
    static_assert(std::is_base_of_v<SkinBase, SliderSkin>);
    static_assert(std::is_base_of_v<QRangeControl, SliderSkin>);
    static_assert(std::is_convertible_v<SliderSkin*, SkinBase*> && std::is_convertible_v<SliderSkin*, QRangeControl*>);
    static_assert(std::extent_v<decltype(Slider::markers)> == 10);
    static_assert(std::extent_v<decltype(Slider::markerImages)> == 3);
    QCOMPARE(SliderSkin::staticMetaObject.superClass(), &SkinBase::staticMetaObject);
    SliderSkin slider;
    QCOMPARE(static_cast<void*>(static_cast<SkinBase*>(&slider)), static_cast<void*>(&slider));
    const SliderMarker fresh;
    QCOMPARE(fresh.rect, QRect(QPoint(0, 0), QPoint(-1, -1)));
    QVERIFY(fresh.image.isNull());
    QVERIFY(!fresh.used);
}

// What a subclass reads has these types.
void TestSliderSkin::dataModel()
{
    static_assert(std::is_same_v<decltype(Slider::grooveImage), QImage>);
    static_assert(std::is_same_v<decltype(Slider::fillImage), QImage>);
    static_assert(std::is_same_v<decltype(Slider::barImage), QImage>);
    static_assert(std::is_same_v<decltype(Slider::barPressedImage), QImage>);
    static_assert(std::is_same_v<decltype(Slider::markerImages), QImage[3]>);
    static_assert(std::is_same_v<decltype(Slider::backImage), QImage>);
    static_assert(std::is_same_v<decltype(Slider::markers), SliderMarker[10]>);
    static_assert(std::is_same_v<decltype(Slider::sliderPos), int>);
    static_assert(std::is_same_v<decltype(Slider::sliderVal), int>);
    static_assert(std::is_same_v<decltype(Slider::clickOffset), int>);
    static_assert(std::is_same_v<decltype(Slider::state), int>);
    static_assert(std::is_same_v<decltype(Slider::orient), int>);
    static_assert(std::is_same_v<decltype(Slider::configured), bool>);
    static_assert(std::is_same_v<decltype(&Slider::sliderStartVal), int*>);
}

void TestSliderSkin::enumerations()
{
    QCOMPARE(int(SliderState::Idle), 0);
    QCOMPARE(int(SliderState::Dragging), 2);
    QCOMPARE(int(SliderState::Inactive), 3);
    QCOMPARE(int(MarkerType::Marker_1), 0);
    QCOMPARE(int(MarkerType::Marker_2), 1);
    QCOMPARE(int(MarkerType::Marker_3), 2);
}

void TestSliderSkin::signalsAndSlots_data()
{
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<int>("type");
    QTest::newRow("valueChanged") << QByteArray("valueChanged(unsigned int)") << int(QMetaMethod::Signal);
    QTest::newRow("sliderPressed") << QByteArray("sliderPressed()") << int(QMetaMethod::Signal);
    QTest::newRow("sliderMoved") << QByteArray("sliderMoved(int)") << int(QMetaMethod::Signal);
    QTest::newRow("seekReleased") << QByteArray("seekReleased( unsigned int )") << int(QMetaMethod::Signal);
    QTest::newRow("setValue") << QByteArray("setValue(int)") << int(QMetaMethod::Slot);
    QTest::newRow("addStep") << QByteArray("addStep()") << int(QMetaMethod::Slot);
    QTest::newRow("subtractStep") << QByteArray("subtractStep()") << int(QMetaMethod::Slot);
}

void TestSliderSkin::signalsAndSlots()
{
    QFETCH(QByteArray, signature);
    QFETCH(int, type);
    const QMetaObject& meta = SliderSkin::staticMetaObject;
    const int index = meta.indexOfMethod(QMetaObject::normalizedSignature(signature));
    QVERIFY(index >= meta.methodOffset());
    QCOMPARE(int(meta.method(index).methodType()), type);
    QCOMPARE(meta.method(index).access(), QMetaMethod::Public);
}

void TestSliderSkin::freshState_data()
{
    QTest::addColumn<QList<int>>("range");
    QTest::addColumn<int>("shown");
    QTest::newRow("range") << QList<int>{5, 25, 1, 4, 15} << 15;
    QTest::newRow("skin") << QList<int>{0, 99, 1, 10, 0} << 0;
    QTest::newRow("two paths") << QList<int>{0, 99, 1, 10, 0} << 0;
    QTest::newRow("four paths") << QList<int>{0, 99, 1, 10, 0} << 0;
}

void TestSliderSkin::freshState()
{
    QFETCH(QList<int>, range);
    QFETCH(int, shown);
    Window window;
    const auto slider = makeSlider(QTest::currentDataTag(), &window);
    QCOMPARE(
        (QList<int>{slider->minValue(), slider->maxValue(), slider->lineStep(), slider->pageStep(), slider->value()}),
        range);
    QCOMPARE(slider->sliderVal, shown);
    QCOMPARE(int(slider->state), int(SliderState::Inactive));
    QCOMPARE(slider->sliderPos, 0);
    QCOMPARE(slider->clickOffset, 0);
    for (const SliderMarker& marker : slider->markers) {
        QVERIFY(!marker.used);
        QCOMPARE(marker.rect, QRect());
    }
    QCOMPARE(slider->orient, 0);
    QCOMPARE(slider->size(), QSize(200, 20));
}

void TestSliderSkin::constructorArguments()
{
    const SliderSkin bare;
    QVERIFY(!bare.parent() && bare.objectName().isEmpty());
    const SliderSkin ranged(1, 2, 3, 2);
    QVERIFY(!ranged.parent() && ranged.objectName().isEmpty());
    const SliderSkin twoPaths{QString(), QString()};
    QVERIFY(!twoPaths.parent() && twoPaths.objectName().isEmpty());
    const SliderSkin fourPaths{QString(), QString(), QString(), QString()};
    QVERIFY(!fourPaths.parent() && fourPaths.objectName().isEmpty());
    Window window;
    for (const char* constructor : {"range", "skin", "two paths", "four paths"}) {
        const auto slider = makeSlider(constructor, &window, "my name");
        QCOMPARE(slider->parentWidget(), &window);
        QCOMPARE(slider->name(), "my name");
    }
}

void TestSliderSkin::rangeConstructorKeepsValueUnbounded_data()
{
    QTest::addColumn<QList<int>>("arguments");
    QTest::addColumn<QList<int>>("control");
    QTest::newRow("inside") << QList<int>{0, 10, 2, 7} << QList<int>{0, 10, 2, 7};
    QTest::newRow("above") << QList<int>{0, 10, 2, 70} << QList<int>{0, 10, 2, 10};
    QTest::newRow("below") << QList<int>{0, 10, 2, -70} << QList<int>{0, 10, 2, 0};
    QTest::newRow("range turned round") << QList<int>{50, 10, 2, 20} << QList<int>{50, 50, 2, 50};
    QTest::newRow("widest") << QList<int>{lowest, highest, highest, highest}
                            << QList<int>{lowest, highest, highest, highest};
}

void TestSliderSkin::rangeConstructorKeepsValueUnbounded()
{
    QFETCH(QList<int>, arguments);
    QFETCH(QList<int>, control);
    Window window;
    const Slider slider(arguments[0], arguments[1], arguments[2], arguments[3], &window, "Seek");
    QCOMPARE((QList<int>{slider.minValue(), slider.maxValue(), slider.pageStep(), slider.value()}), control);
    QCOMPARE(slider.sliderVal, arguments[3]);
    QCOMPARE(slider.sliderPos, 0);
}

void TestSliderSkin::focusPolicy_data()
{
    QTest::addColumn<int>("policy");
    QTest::newRow("range") << int(Qt::StrongFocus);
    QTest::newRow("skin") << int(Qt::NoFocus);
    QTest::newRow("two paths") << int(Qt::NoFocus);
    QTest::newRow("four paths") << int(Qt::NoFocus);
}

void TestSliderSkin::focusPolicy()
{
    QFETCH(int, policy);
    Window window;
    QCOMPARE(int(makeSlider(QTest::currentDataTag(), &window)->focusPolicy()), policy);
}

void TestSliderSkin::configuredFlag_data()
{
    QTest::addColumn<bool>("configured");
    QTest::newRow("range") << false;
    QTest::newRow("skin") << true;
    QTest::newRow("two paths") << true;
    QTest::newRow("four paths") << true;
}

void TestSliderSkin::configuredFlag()
{
    QFETCH(bool, configured);
    Window window;
    const auto slider = makeSlider(QTest::currentDataTag(), &window);
    QCOMPARE(slider->configured, configured);
    slider->configured = false;
    slider->setValueInit(0, 10, 1);
    QVERIFY(slider->configured);
}

void TestSliderSkin::initResets()
{
    Window window;
    Slider slider(&window, "Seek");
    slider.setValue(50);
    slider.clickOffset = 4;
    slider.insertMarker(Marker_1, 3);
    slider.insertMarker(Marker_2, 4);
    slider.SliderSkin::init();
    QCOMPARE(int(slider.state), int(SliderState::Inactive));
    QCOMPARE(slider.sliderPos, 0);
    QCOMPARE(slider.sliderVal, 0);
    QCOMPARE(slider.clickOffset, 0);
    QCOMPARE(slider.value(), 50);
    for (const SliderMarker& marker : slider.markers)
        QVERIFY(!marker.used);
}

void TestSliderSkin::inactiveUntilSetValue_data()
{
    QTest::addColumn<QString>("constructor");
    for (const char* constructor : {"range", "skin", "two paths", "four paths"})
        QTest::newRow(constructor) << constructor;
}

void TestSliderSkin::inactiveUntilSetValue()
{
    QFETCH(QString, constructor);
    Window window;
    const auto slider = makeSlider(constructor, &window);
    Recorder recorder;
    recorder.watchSignals(slider.get());
    press(slider.get(), {3, 3});
    move(slider.get(), {60, 3});
    release(slider.get(), {60, 3});
    QCOMPARE(recorder.take(), QStringList());
    slider->setValue(slider->value());
    QCOMPARE(int(slider->state), int(SliderState::Idle));
    press(slider.get(), {3, 3});
    QCOMPARE(recorder.take(), QStringList{"sliderPressed()"});
}

void TestSliderSkin::pathsAreFilesNotNames()
{
    Window window;
    const Slider byName("seek_back.png", "seek_bar.png", &window, "Seek");
    QVERIFY(byName.backImage.isNull());
    QVERIFY(byName.size().isEmpty());
    const Slider byPath(file("seek_back.png"), file("seek_bar.png"), &window, "no such group");
    QCOMPARE(byPath.size(), QSize(200, 20));
    COMPARE_PICTURES(byPath.backImage, halves(SliderSkins::groove(), SliderSkins::fill()));
    COMPARE_PICTURES(byPath.barImage, SliderSkins::bar());
    COMPARE_PICTURES(byPath.barPressedImage, SliderSkins::barPressed());
}

void TestSliderSkin::twoPathsHaveNoMarkers()
{
    Window window;
    const Slider slider(file("seek_back.png"), file("seek_bar.png"), &window, "Seek");
    for (const QImage& picture : slider.markerImages)
        QVERIFY(picture.isNull());
}

void TestSliderSkin::fourPathsGiveKindsOneTwoTwo()
{
    Window window;
    Slider slider(file("seek_back.png"), file("seek_bar.png"), file("marker_1.png"), file("marker_2.png"), &window,
                  "x");
    COMPARE_PICTURES(slider.markerImages[0], SliderSkins::marker(0));
    COMPARE_PICTURES(slider.markerImages[1], SliderSkins::marker(1));
    COMPARE_PICTURES(slider.markerImages[2], SliderSkins::marker(1));
    slider.insertMarker(Marker_3, 0);
    COMPARE_PICTURES(slider.markers[0].image, SliderSkins::marker(1));
    COMPARE_PICTURES(slider.barImage, SliderSkins::bar());
    COMPARE_PICTURES(slider.barPressedImage, SliderSkins::barPressed());
}

void TestSliderSkin::pathConstructorsReadNoSkin()
{
    Window window;
    const Slider slider(file("level_back.png"), file("level_bar.png"), &window, "Seek");
    QCOMPARE(slider.size(), QSize(20, 200));
    const Slider nothing(QString(), QString(), &window, "Seek");
    QVERIFY(nothing.size().isEmpty());
    QVERIFY(nothing.backImage.isNull() && nothing.barImage.isNull());
}

void TestSliderSkin::loadsTheGroupOfItsName()
{
    Window window;
    const Slider seek(&window, "Seek");
    QCOMPARE(seek.size(), QSize(200, 20));
    const Slider level(&window, "Level");
    QCOMPARE(level.size(), QSize(20, 200));
    const Slider ranged(0, 10, 1, 5, &window, "Level");
    QCOMPARE(ranged.size(), QSize(20, 200));
    const Slider other(&window, "seek");
    QVERIFY(other.size().isEmpty());
}

void TestSliderSkin::loadsThroughTheBase()
{
    Window window;
    Slider slider(&window, "Seek");
    static_cast<SkinBase&>(slider).do_configloading("Level");
    QCOMPARE(slider.size(), QSize(20, 200));
    QCOMPARE(slider.orient, 1);
    QCOMPARE(slider.objectName(), QString("Seek"));
}

void TestSliderSkin::skinOfTheWindow()
{
    SliderSkins::install(*installation, "other");
    installation->picture("other", "seek_back.png", halves(pattern(50, 10), pattern(50, 10)));
    Window window("other");
    QWidget parent(&window);
    parent.setObjectName("player");
    const Slider slider(&parent, "Seek");
    QCOMPARE(slider.size(), QSize(50, 10));
    window.setObjectName("player");
    const Slider later(&parent, "Seek");
    QCOMPARE(later.size(), QSize(200, 20));
    window.setObjectName("none");
    const Slider nothing(&parent, "Seek");
    QVERIFY(nothing.size().isEmpty());
}

void TestSliderSkin::windowSliderIsItsOwnSkin()
{
    installation->picture("Seek", "back.png", halves(pattern(30, 7), pattern(30, 7)));
    installation->config("Seek", "[Seek]\nback_image = back.png\n");
    const Slider slider(nullptr, "Seek");
    QCOMPARE(slider.size(), QSize(30, 7));
}

void TestSliderSkin::picturesOfASkin()
{
    Window window;
    const Slider slider(&window, "Seek");
    COMPARE_PICTURES(slider.backImage, halves(SliderSkins::groove(), SliderSkins::fill()));
    COMPARE_PICTURES(slider.grooveImage, SliderSkins::groove());
    COMPARE_PICTURES(slider.fillImage, SliderSkins::fill());
    COMPARE_PICTURES(slider.barImage, SliderSkins::bar());
    COMPARE_PICTURES(slider.barPressedImage, SliderSkins::barPressed());
    for (int kind = 0; kind < 3; ++kind)
        COMPARE_PICTURES(slider.markerImages[kind], SliderSkins::marker(kind));
}

// Only the back picture goes through redrawImage; bar and markers keep their own alpha.
void TestSliderSkin::barIsNotComposed()
{
    const QImage bar = pattern(8, 6, 1, 77);
    const QImage marker = pattern(3, 3, 2, 0);
    installation->picture("player", "bar.png", halves(bar, bar));
    installation->picture("player", "marker.png", marker);
    installation->config("player", "[Thin]\nback_image = seek_back.png\nbar_image = bar.png\nmarker_2 = marker.png\n");
    Window window;
    Slider slider(&window, "Thin");
    Recorder recorder;
    slider.trace = &recorder;
    slider.do_configloading("Thin");
    QCOMPARE(recorder.take(), (QStringList{"redrawImage 0,0 200x20", "redrawImage 0,0 200x20"}));
    COMPARE_PICTURES(slider.composed.value(0), SliderSkins::groove());
    COMPARE_PICTURES(slider.composed.value(1), SliderSkins::fill());
    slider.setAlphaOverride(100);
    COMPARE_PICTURES(slider.barImage, bar);
    COMPARE_PICTURES(slider.barPressedImage, bar);
    COMPARE_PICTURES(slider.markerImages[1], marker);
}

void TestSliderSkin::missingKey_data()
{
    QTest::addColumn<QByteArray>("key");
    for (const char* key : {"back_image", "bar_image", "marker_1", "marker_2", "marker_3"})
        QTest::newRow(key) << QByteArray(key);
}

void TestSliderSkin::missingKey()
{
    QFETCH(QByteArray, key);
    QByteArray config = "[Seek]\n";
    for (const QByteArray line :
         {"back_image = seek_back.png\n", "bar_image = seek_bar.png\n", "marker_1 = marker_1.png\n",
          "marker_2 = marker_2.png\n", "marker_3 = marker_3.png\n"})
        if (!line.startsWith(key))
            config += line;
    installation->config("player", config);
    Window window;
    const Slider slider(&window, "Seek");
    QCOMPARE(slider.backImage.isNull(), key == "back_image");
    QCOMPARE(slider.grooveImage.isNull(), key == "back_image");
    QCOMPARE(slider.fillImage.isNull(), key == "back_image");
    QCOMPARE(slider.size(), key == "back_image" ? QSize(0, 0) : QSize(200, 20));
    QCOMPARE(slider.barImage.isNull(), key == "bar_image");
    QCOMPARE(slider.barPressedImage.isNull(), key == "bar_image");
    for (int kind = 0; kind < 3; ++kind)
        QCOMPARE(slider.markerImages[kind].isNull(), key == "marker_" + QByteArray::number(kind + 1));
}

void TestSliderSkin::missingFile_data()
{
    missingKey_data();
}

void TestSliderSkin::missingFile()
{
    QFETCH(QByteArray, key);
    const QString name = key == "back_image" ? "seek_back.png" : key == "bar_image" ? "seek_bar.png" : key + ".png";
    QVERIFY(QFile::remove(file(name)));
    Window window;
    const Slider slider(&window, "Seek");
    QCOMPARE(slider.backImage.isNull(), key == "back_image");
    QCOMPARE(slider.size(), key == "back_image" ? QSize(0, 0) : QSize(200, 20));
    QCOMPARE(slider.orient, key == "back_image" ? 1 : 0);
    QCOMPARE(slider.barImage.isNull(), key == "bar_image");
    QCOMPARE(slider.barPressedImage.isNull(), key == "bar_image");
    for (int kind = 0; kind < 3; ++kind)
        QCOMPARE(slider.markerImages[kind].isNull(), key == "marker_" + QByteArray::number(kind + 1));
}

void TestSliderSkin::halvesOfPictures_data()
{
    QTest::addColumn<int>("surplus");
    QTest::addColumn<bool>("fromPaths");
    QTest::newRow("skin, even") << 0 << false;
    QTest::newRow("skin, odd width loses its last column") << 1 << false;
    QTest::newRow("paths, even") << 0 << true;
    QTest::newRow("paths, odd width loses its last column") << 1 << true;
}

void TestSliderSkin::halvesOfPictures()
{
    QFETCH(int, surplus);
    QFETCH(bool, fromPaths);
    const QImage back = halves(pattern(30, 20, 1), pattern(30, 20, 2), surplus);
    const QImage bar = halves(pattern(5, 6, 3), pattern(5, 6, 4), surplus);
    installation->picture("player", "back.png", back);
    installation->picture("player", "bar.png", bar);
    installation->config("player", "[Odd]\nback_image = back.png\nbar_image = bar.png\n");
    Window window;
    const auto slider = fromPaths ? std::make_unique<Slider>(file("back.png"), file("bar.png"), &window, "Odd")
                                  : std::make_unique<Slider>(&window, "Odd");
    COMPARE_PICTURES(slider->backImage, back);
    COMPARE_PICTURES(slider->grooveImage, pattern(30, 20, 1));
    COMPARE_PICTURES(slider->fillImage, pattern(30, 20, 2));
    COMPARE_PICTURES(slider->barImage, pattern(5, 6, 3));
    COMPARE_PICTURES(slider->barPressedImage, pattern(5, 6, 4));
    QCOMPARE(slider->size(), QSize(30, 20));
}

void TestSliderSkin::getImage_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("index");
    QTest::addColumn<QRect>("piece");
    QTest::newRow("left half") << QSize(20, 4) << 0 << QRect(0, 0, 10, 4);
    QTest::newRow("right half") << QSize(20, 4) << 1 << QRect(10, 0, 10, 4);
    QTest::newRow("whole") << QSize(20, 4) << -1 << QRect(0, 0, 20, 4);
    QTest::newRow("left half of odd width") << QSize(21, 4) << 0 << QRect(0, 0, 10, 4);
    QTest::newRow("right half of odd width") << QSize(21, 4) << 1 << QRect(10, 0, 10, 4);
    QTest::newRow("whole of odd width") << QSize(21, 4) << -1 << QRect(0, 0, 21, 4);
    QTest::newRow("half of two columns") << QSize(2, 3) << 1 << QRect(1, 0, 1, 3);
    QTest::newRow("half of one column") << QSize(1, 3) << 0 << QRect();
}

void TestSliderSkin::getImage()
{
    QFETCH(QSize, size);
    QFETCH(int, index);
    QFETCH(QRect, piece);
    SliderSkin slider;
    const QImage whole = pattern(size.width(), size.height(), 9, 3);
    const QImage half = slider.get_image(whole, index);
    if (piece.isEmpty())
        QVERIFY(half.isNull());
    else
        COMPARE_PICTURES(half, whole.copy(piece));
}

void TestSliderSkin::orientation_data()
{
    QTest::addColumn<QSize>("back");
    QTest::addColumn<int>("orient");
    QTest::addColumn<QSize>("size");
    QTest::newRow("60 x 20 lies") << QSize(60, 20) << 0 << QSize(30, 20);
    QTest::newRow("40 x 20 has square halves and stands") << QSize(40, 20) << 1 << QSize(20, 20);
    QTest::newRow("41 x 20 has square halves and stands") << QSize(41, 20) << 1 << QSize(20, 20);
    QTest::newRow("42 x 20 lies") << QSize(42, 20) << 0 << QSize(21, 20);
    QTest::newRow("20 x 60 stands") << QSize(20, 60) << 1 << QSize(10, 60);
    QTest::newRow("30 x 20 stands though it is wider than high") << QSize(30, 20) << 1 << QSize(15, 20);
}

void TestSliderSkin::orientation()
{
    QFETCH(QSize, back);
    QFETCH(int, orient);
    QFETCH(QSize, size);
    installation->picture("player", "back.png", pattern(back.width(), back.height()));
    installation->config("player", "[Any]\nback_image = back.png\n");
    Window window;
    const Slider slider(&window, "Any");
    QCOMPARE(slider.orient, orient);
    QCOMPARE(slider.size(), size);
}

void TestSliderSkin::orientationOfPaths_data()
{
    orientation_data();
}

void TestSliderSkin::orientationOfPaths()
{
    QFETCH(QSize, back);
    QFETCH(int, orient);
    QFETCH(QSize, size);
    installation->picture("player", "back.png", pattern(back.width(), back.height()));
    Window window;
    const Slider two(file("back.png"), file("seek_bar.png"), &window);
    QCOMPARE(two.orient, orient);
    QCOMPARE(two.size(), size);
    const Slider four(file("back.png"), file("seek_bar.png"), QString(), QString(), &window);
    QCOMPARE(four.orient, orient);
    QCOMPARE(four.size(), size);
}

void TestSliderSkin::loadingAgainReplaces()
{
    Window window;
    Slider slider(&window, "Level");
    slider.do_configloading("Seek");
    COMPARE_PICTURES(slider.backImage, halves(SliderSkins::groove(), SliderSkins::fill()));
    COMPARE_PICTURES(slider.grooveImage, SliderSkins::groove());
    COMPARE_PICTURES(slider.barImage, SliderSkins::bar());
    QCOMPARE(slider.orient, 0);
    slider.do_configloading("nothing");
    QVERIFY(slider.backImage.isNull() && slider.grooveImage.isNull() && slider.fillImage.isNull());
    QVERIFY(slider.barImage.isNull() && slider.barPressedImage.isNull());
    for (const QImage& picture : slider.markerImages)
        QVERIFY(picture.isNull());
    QVERIFY(slider.size().isEmpty());
}

void TestSliderSkin::buttonsOfTheBaseStayEmpty()
{
    installation->config("player", "[Seek]\nback_image = seek_back.png\nbackground = seek_back.png\ncount = 3\n");
    Window window;
    Slider slider(&window, "Seek");
    QVERIFY(!slider.backgroundImage);
    QCOMPARE(slider.getFocus(), QString(""));
    slider.focusNextButton();
    QCOMPARE(slider.getFocus(), QString(""));
}

void TestSliderSkin::rangeReaders()
{
    SliderSkin slider(3, 30, 7, 12);
    const QRangeControl& control = slider;
    QCOMPARE(slider.minValue(), 3);
    QCOMPARE(slider.maxValue(), 30);
    QCOMPARE(slider.lineStep(), 1);
    QCOMPARE(slider.pageStep(), 7);
    QCOMPARE(slider.value(), 12);
    slider.setRange(-5, 5);
    slider.setSteps(2, 4);
    QCOMPARE(
        (QList<int>{slider.minValue(), slider.maxValue(), slider.lineStep(), slider.pageStep(), slider.value()}),
        (QList<int>{control.minValue(), control.maxValue(), control.lineStep(), control.pageStep(), control.value()}));
    QCOMPARE((QList<int>{slider.minValue(), slider.maxValue(), slider.lineStep(), slider.pageStep(), slider.value()}),
             (QList<int>{-5, 5, 2, 4, 5}));
}

void TestSliderSkin::rangeSetters_data()
{
    QTest::addColumn<QString>("setter");
    QTest::addColumn<int>("argument");
    QTest::addColumn<QList<int>>("range");
    QTest::newRow("minimum") << "min" << 5 << QList<int>{5, 19, 1, 3, 10};
    QTest::newRow("minimum moves the value") << "min" << 12 << QList<int>{12, 19, 1, 3, 12};
    QTest::newRow("minimum above the maximum") << "min" << 30 << QList<int>{30, 30, 1, 3, 30};
    QTest::newRow("lowest minimum") << "min" << lowest << QList<int>{lowest, 19, 1, 3, 10};
    QTest::newRow("maximum") << "max" << 15 << QList<int>{0, 15, 1, 3, 10};
    QTest::newRow("maximum moves the value") << "max" << 7 << QList<int>{0, 7, 1, 3, 7};
    QTest::newRow("maximum below the minimum") << "max" << -4 << QList<int>{0, 0, 1, 3, 0};
    QTest::newRow("highest maximum") << "max" << highest << QList<int>{0, highest, 1, 3, 10};
    QTest::newRow("line step") << "line" << 2 << QList<int>{0, 19, 2, 3, 10};
    QTest::newRow("negative line step") << "line" << -2 << QList<int>{0, 19, 2, 3, 10};
    QTest::newRow("page step") << "page" << 8 << QList<int>{0, 19, 1, 8, 10};
    QTest::newRow("negative page step") << "page" << -8 << QList<int>{0, 19, 1, 8, 10};
}

void TestSliderSkin::rangeSetters()
{
    QFETCH(QString, setter);
    QFETCH(int, argument);
    QFETCH(QList<int>, range);
    SliderStage stage;
    stage.slider.setValue(10);
    if (setter == "min")
        stage.slider.setMinValue(argument);
    else if (setter == "max")
        stage.slider.setMaxValue(argument);
    else if (setter == "line")
        stage.slider.setLineStep(argument);
    else
        stage.slider.setPageStep(argument);
    const Slider& slider = stage.slider;
    QCOMPARE((QList<int>{slider.minValue(), slider.maxValue(), slider.lineStep(), slider.pageStep(), slider.value()}),
             range);
}

void TestSliderSkin::rangeSetterAsksTheOther()
{
    SliderSkin slider;
    slider.setMaxValue(50);
    slider.setMinValue(40);
    slider.setLineStep(3);
    slider.setPageStep(9);
    QCOMPARE((QList<int>{slider.minValue(), slider.maxValue(), slider.lineStep(), slider.pageStep()}),
             (QList<int>{40, 50, 3, 9}));
}

void TestSliderSkin::setValueInit_data()
{
    QTest::addColumn<QList<int>>("arguments");
    QTest::addColumn<QList<int>>("range");
    QTest::addColumn<QStringList>("log");
    const QString whole = "paint 0,0 200x20";
    // The value is 10, at pixel 100 of the range 0 to 19.
    QTest::newRow("the same again") << QList<int>{0, 19, 3} << QList<int>{0, 19, 1, 3, 10} << QStringList{whole};
    QTest::newRow("page step only") << QList<int>{0, 19, 5} << QList<int>{0, 19, 1, 5, 10} << QStringList{whole};
    QTest::newRow("wider range moves the bar first")
        << QList<int>{0, 38, 3} << QList<int>{0, 38, 1, 3, 10} << QStringList{"paint 50,0 60x12", whole};
    QTest::newRow("minimum above the value")
        << QList<int>{12, 19, 3} << QList<int>{12, 19, 1, 3, 12}
        << QStringList{"paint 0,0 110x12", "paint 0,0 10x12", "valueChanged(12)", whole};
    QTest::newRow("maximum below the value")
        << QList<int>{0, 5, 3} << QList<int>{0, 5, 1, 3, 5}
        << QStringList{"paint 100,0 100x12", "paint 190,0 10x12", "valueChanged(5)", whole};
    QTest::newRow("minimum first, above the old maximum")
        << QList<int>{100, 200, 3} << QList<int>{100, 200, 1, 3, 100}
        << QStringList{"paint 0,0 110x12", "paint 0,0 10x12", "valueChanged(100)", whole};
    QTest::newRow("turned round") << QList<int>{12, 3, 3} << QList<int>{12, 12, 1, 3, 12}
                                  << QStringList{"paint 0,0 110x12", "paint 0,0 10x12", "valueChanged(12)", whole};
}

void TestSliderSkin::setValueInit()
{
    QFETCH(QList<int>, arguments);
    QFETCH(QList<int>, range);
    QFETCH(QStringList, log);
    SliderStage stage;
    QVERIFY(stage.begin(10));
    stage.slider.setValueInit(arguments[0], arguments[1], arguments[2]);
    QCOMPARE(stage.take(), log);
    const Slider& slider = stage.slider;
    QCOMPARE((QList<int>{slider.minValue(), slider.maxValue(), slider.lineStep(), slider.pageStep(), slider.value()}),
             range);
    QCOMPARE(slider.sliderPos, 0);
}

void TestSliderSkin::setValueInitLeavesValueAndState_data()
{
    QTest::addColumn<int>("state");
    for (const int state : {0, 2, 3})
        QTest::addRow("state %d", state) << state;
}

void TestSliderSkin::setValueInitLeavesValueAndState()
{
    QFETCH(int, state);
    SliderStage stage;
    stage.slider.setValue(10);
    stage.slider.sliderVal = 4;
    stage.slider.setState(state);
    stage.slider.setValueInit(0, 30, 5);
    QCOMPARE(stage.slider.sliderVal, 4);
    QCOMPARE(stage.slider.value(), 10);
    QCOMPARE(int(stage.slider.state), state);
}

void TestSliderSkin::setDisable()
{
    SliderStage stage;
    QVERIFY(stage.begin(10));
    stage.slider.setDisable(true);
    QCOMPARE(int(stage.slider.state), int(SliderState::Inactive));
    press(&stage.slider, stage.at(103));
    move(&stage.slider, stage.at(13));
    release(&stage.slider, stage.at(13));
    QCOMPARE(stage.take(), QStringList());
    stage.slider.setValue(10);
    QCOMPARE(int(stage.slider.state), int(SliderState::Idle));
}

void TestSliderSkin::setDisableFalseStaysInactive()
{
    Window window;
    Slider slider(&window, "Seek");
    slider.setDisable(false);
    QCOMPARE(int(slider.state), int(SliderState::Inactive));
    slider.setValue(1);
    slider.setDisable(false);
    QCOMPARE(int(slider.state), int(SliderState::Idle));
    slider.setDisable(true);
    slider.setDisable(false);
    QCOMPARE(int(slider.state), int(SliderState::Inactive));
}

void TestSliderSkin::setDisableWhileDragging()
{
    SliderStage stage;
    QVERIFY(stage.begin(10));
    press(&stage.slider, stage.at(103));
    move(&stage.slider, stage.at(53));
    stage.take();
    stage.slider.setDisable(false);
    QCOMPARE(int(stage.slider.state), int(SliderState::Dragging));
    stage.slider.setDisable(true);
    QCOMPARE(int(stage.slider.state), int(SliderState::Inactive));
    move(&stage.slider, stage.at(83));
    release(&stage.slider, stage.at(83));
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.slider.value(), 5);
    QCOMPARE(stage.slider.sliderPos, 50);
}

void TestSliderSkin::available_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("span");
    QTest::newRow("lying, 200 wide with a bar 10 wide") << QByteArray("Seek") << QSize(200, 20) << 190;
    QTest::newRow("standing, 200 high with a bar 10 high") << QByteArray("Level") << QSize(20, 200) << 190;
    QTest::newRow("lying, resized") << QByteArray("Seek") << QSize(77, 50) << 67;
    QTest::newRow("standing, resized") << QByteArray("Level") << QSize(50, 77) << 67;
    QTest::newRow("as wide as the bar") << QByteArray("Seek") << QSize(10, 20) << 0;
    QTest::newRow("narrower than the bar") << QByteArray("Seek") << QSize(4, 20) << -6;
    QTest::newRow("lower than the bar") << QByteArray("Level") << QSize(20, 3) << -7;
}

void TestSliderSkin::available()
{
    QFETCH(QByteArray, group);
    QFETCH(QSize, size);
    QFETCH(int, span);
    Window window;
    Slider slider(&window, group.constData());
    slider.resize(size);
    QCOMPARE(slider.available(), span);
    slider.barPressedImage = pattern(1, 1);
    QCOMPARE(slider.available(), span);
}

void TestSliderSkin::positionsAndValues_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("positionBack");
    QTest::addColumn<int>("valueBack");
    for (const QByteArray group : {"Seek", "Level"}) {
        const auto row = [&](const char* name) -> QTestData& {
            return QTest::newRow((group + ", " + name).constData()) << group;
        };
        row("minimum at 0") << 0 << 19 << 0 << 0 << 0 << 0;
        row("maximum at the end") << 0 << 19 << 19 << 190 << 190 << 19;
        row("between") << 0 << 19 << 7 << 70 << 70 << 7;
        row("below the range") << 0 << 19 << -5 << 0 << -5 << 0;
        row("above the range") << 0 << 19 << 50 << 190 << 500 << 19;
        row("position rounds to the nearest") << 0 << 1900 << 14 << 1 << 1 << 10;
        row("position rounds halves up") << 0 << 1900 << 15 << 2 << 2 << 20;
        row("value rounds down below a half") << 0 << 19 << 10 << 100 << 104 << 10;
        row("value rounds halves up") << 0 << 19 << 11 << 110 << 105 << 11;
        row("range below zero") << -30 << -11 << -20 << 100 << 100 << -20;
        row("empty range") << 5 << 5 << 5 << 0 << 100 << 5;
        row("widest range, middle") << lowest << highest << 0 << 95 << 190 << highest;
        row("widest range, lowest") << lowest << highest << lowest << 0 << 0 << lowest;
    }
}

void TestSliderSkin::positionsAndValues()
{
    QFETCH(QByteArray, group);
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(int, value);
    QFETCH(int, position);
    QFETCH(int, positionBack);
    QFETCH(int, valueBack);
    Window window;
    Slider slider(&window, group.constData());
    slider.setRange(minimum, maximum);
    QCOMPARE(slider.positionFromValue(value), position);
    QCOMPARE(slider.valueFromPosition(positionBack), valueBack);
}

void TestSliderSkin::barRectangle()
{
    Window window;
    Slider lying(&window, "Seek");
    lying.sliderPos = 33;
    QCOMPARE(lying.barRect(), QRect(33, 0, 10, 12));
    Slider standing(&window, "Level");
    standing.sliderPos = 33;
    QCOMPARE(standing.barRect(), QRect(0, 33, 12, 10));
}

void TestSliderSkin::standingBarRectangleFollowsPressedPicture()
{
    Window window;
    Slider slider(&window, "Level");
    slider.barPressedImage = pattern(5, 6);
    QCOMPARE(slider.barRect(), QRect(0, 0, 5, 6));
    QCOMPARE(slider.available(), 190);
}

void TestSliderSkin::lyingBarRectangleFollowsIdlePicture()
{
    Window window;
    Slider slider(&window, "Seek");
    slider.barPressedImage = pattern(5, 6);
    QCOMPARE(slider.barRect(), QRect(0, 0, 10, 12));
    slider.barImage = pattern(3, 4);
    QCOMPARE(slider.barRect(), QRect(0, 0, 3, 4));
}

void TestSliderSkin::progRect()
{
    Window window;
    Slider lying(&window, "Seek");
    lying.sliderPos = 33;
    lying.resize(150, 15);
    // Intended: as high as the groove is wide.
    QCOMPARE(lying.progRect(), QRect(0, 0, 33, 200));
    Slider standing(&window, "Level");
    standing.sliderPos = 33;
    standing.resize(15, 150);
    QCOMPARE(standing.progRect(), QRect(0, 0, 33, 200));
    standing.do_configloading("Seek");
    standing.orient = 1;
    QCOMPARE(standing.progRect(), QRect(0, 0, 33, 20));
}

void TestSliderSkin::goodPart()
{
    Window window;
    const Slider lying(&window, "Seek");
    QCOMPARE(lying.goodPart(QPoint(3, 8)), 3);
    const Slider standing(&window, "Level");
    QCOMPARE(standing.goodPart(QPoint(3, 8)), 8);
}

void TestSliderSkin::slideLength()
{
    LongHandles style;
    Slider slider;
    slider.setStyle(&style);
    style.asked.clear();
    QCOMPARE(slider.slideLength(), 137);
    QCOMPARE(style.asked.value(0), &slider);
    slider.setStyle(nullptr);
}

void TestSliderSkin::valueChangeMovesTheBar()
{
    SliderStage stage;
    QVERIFY(stage.begin());
    static_cast<QRangeControl&>(stage.slider).setValue(4);
    QCOMPARE(stage.take(), (QStringList{"paint 0,0 50x12", "valueChanged(4)"}));
    QCOMPARE(stage.slider.sliderVal, 4);
    QCOMPARE(stage.slider.sliderPos, 40);
    // The range control does not make the slider active.
    QCOMPARE(int(stage.slider.state), int(SliderState::Inactive));
    // A value that stands at the same pixel moves the bar all the same.
    stage.slider.setRange(0, 19000);
    static_cast<QRangeControl&>(stage.slider).setValue(4000);
    stage.take();
    static_cast<QRangeControl&>(stage.slider).setValue(4001);
    QCOMPARE(stage.take(), (QStringList{"paint 40,0 10x12", "valueChanged(4001)"}));
}

void TestSliderSkin::valueChangeKeepsTheShownValue()
{
    SliderStage stage;
    QVERIFY(stage.begin(4));
    stage.slider.sliderVal = 9;
    stage.slider.sliderPos = 11;
    static_cast<QRangeControl&>(stage.slider).setValue(9);
    QCOMPARE(stage.take(), QStringList{"valueChanged(9)"});
    QCOMPARE(stage.slider.sliderPos, 11);
    stage.slider.valueChange();
    QCOMPARE(stage.take(), QStringList{"valueChanged(9)"});
}

void TestSliderSkin::valueChangeHandsValueBack()
{
    SliderStage stage;
    stage.slider.setValue(4);
    QCOMPARE(stage.slider.prevValue(), 4);
    stage.slider.setValue(9);
    QCOMPARE(stage.slider.prevValue(), 9);
    // Also where the bar showed the value already.
    stage.slider.sliderVal = 6;
    stage.slider.setValue(6);
    QCOMPARE(stage.slider.prevValue(), 6);
}

void TestSliderSkin::negativeValues()
{
    SliderStage stage;
    QVERIFY(stage.begin());
    stage.slider.setRange(-19, 0);
    stage.take();
    stage.slider.setValue(-5);
    QCOMPARE(stage.slider.sliderPos, 140);
    QCOMPARE(stage.take().filter("valueChanged"), QStringList{"valueChanged(4294967291)"});
}

void TestSliderSkin::valueChangeThroughRangeControl()
{
    SliderStage stage;
    Recorder recorder;
    recorder.watchSignals(&stage.slider);
    QRangeControl& control = stage.slider;
    control.addLine();
    control.addPage();
    control.subtractLine();
    control.subtractPage();
    control.subtractPage();
    QCOMPARE(recorder.take(),
             (QStringList{"valueChanged(1)", "valueChanged(4)", "valueChanged(3)", "valueChanged(0)"}));
    QCOMPARE(stage.slider.sliderPos, 0);
}

void TestSliderSkin::rangeChangeMovesTheBar()
{
    SliderStage stage;
    QVERIFY(stage.begin(10));
    static_cast<QRangeControl&>(stage.slider).setRange(0, 38);
    QCOMPARE(stage.take(), QStringList{"paint 50,0 60x12"});
    QCOMPARE(stage.slider.sliderPos, 50);
    QCOMPARE(stage.slider.sliderVal, 10);
    // Where the position is the same nothing is painted.
    stage.slider.setRange(-10, 66);
    QCOMPARE(stage.slider.positionFromValue(10), 50);
    QCOMPARE(stage.take(), QStringList());
    stage.slider.sliderPos = 7;
    stage.slider.rangeChange();
    QCOMPARE(stage.take(), QStringList{"paint 7,0 53x12"});
}

void TestSliderSkin::stepChangeMovesTheBar()
{
    SliderStage stage;
    QVERIFY(stage.begin(10));
    stage.slider.setPageStep(5);
    QCOMPARE(stage.take(), QStringList());
    stage.slider.sliderPos = 7;
    stage.slider.setPageStep(6);
    QCOMPARE(stage.take(), QStringList{"paint 7,0 103x12"});
    QCOMPARE(stage.slider.sliderPos, 100);
    stage.slider.sliderPos = 7;
    stage.slider.setLineStep(6);
    QCOMPARE(stage.slider.sliderPos, 100);
}

void TestSliderSkin::rangeChangeBeforeValueChange()
{
    SliderStage stage;
    QVERIFY(stage.begin(10));
    stage.slider.setRange(0, 5);
    QCOMPARE(stage.take(), (QStringList{"paint 100,0 100x12", "paint 190,0 10x12", "valueChanged(5)"}));
}

void TestSliderSkin::resizeMovesTheBar()
{
    SliderStage stage;
    QVERIFY(stage.begin(19));
    QCOMPARE(stage.slider.sliderPos, 190);
    stage.slider.resize(105, 20);
    QCOMPARE(stage.slider.sliderPos, 95);
    QCOMPARE(stage.slider.value(), 19);
    stage.slider.resize(5, 20);
    QCOMPARE(stage.slider.sliderPos, 0);
    QCOMPARE(stage.take().filter("valueChanged"), QStringList());
}

void TestSliderSkin::resizeUpdatesAutoMask()
{
    SliderStage stage;
    QVERIFY(stage.begin(19));
    stage.slider.resize(180, 20);
    QCOMPARE(stage.slider.maskUpdates, 0);
    stage.slider.setAutoMask(true);
    stage.slider.maskUpdates = 0;
    stage.slider.trace = &stage.recorder;
    stage.take();
    stage.slider.resize(105, 20);
    QCOMPARE(stage.slider.maskUpdates, 1);
    // The mask is made for the bar's new place.
    QCOMPARE(stage.take().filter("updateMask"), QStringList{"updateMask() at 95"});
    stage.slider.setAutoMask(false);
    stage.slider.maskUpdates = 0;
    stage.slider.resize(200, 20);
    QCOMPARE(stage.slider.maskUpdates, 0);
}

void TestSliderSkin::showTellsOfTheSize()
{
    Window window;
    Slider slider(0, 19, 3, 10, &window, "Seek");
    QCOMPARE(slider.sliderPos, 0);
    QVERIFY(window.expose());
    QCOMPARE(slider.sliderPos, 100);
}

void TestSliderSkin::markersFillSlotsInOrder()
{
    Window window;
    Slider slider(&window, "Seek");
    for (int slot = 0; slot < 10; ++slot) {
        QCOMPARE(slider.insertMarker(Marker_1, slot), slot);
        QVERIFY(slider.markers[slot].used);
        QVERIFY(slot == 9 || !slider.markers[slot + 1].used);
    }
}

void TestSliderSkin::eleventhMarker()
{
    Window window;
    Slider slider(&window, "Seek");
    for (int slot = 0; slot < 10; ++slot)
        slider.insertMarker(Marker_1, slot);
    const QRect last = slider.markers[9].rect;
    QCOMPARE(slider.insertMarker(Marker_2, 50), -1);
    QCOMPARE(slider.markers[9].rect, last);
    COMPARE_PICTURES(slider.markers[0].image, SliderSkins::marker(0));
}

void TestSliderSkin::freedSlotIsTakenFirst()
{
    Window window;
    Slider slider(&window, "Seek");
    for (int slot = 0; slot < 10; ++slot)
        slider.insertMarker(Marker_1, slot);
    slider.removeMarker(7);
    slider.removeMarker(3);
    expectedMessages = {" index =7", " index =3"};
    QCOMPARE(slider.insertMarker(Marker_2, 50), 3);
    COMPARE_PICTURES(slider.markers[3].image, SliderSkins::marker(1));
    QCOMPARE(slider.insertMarker(Marker_2, 50), 7);
    QCOMPARE(slider.insertMarker(Marker_2, 50), -1);
}

void TestSliderSkin::markerPlace_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("value");
    QTest::addColumn<QRect>("rect");
    // Half the bar is 5 (lying) or 6 (standing, whose bar is 12 wide).
    QTest::newRow("lying, even width") << QByteArray("Seek") << 0 << 7 << QRect(72, 0, 6, 4);
    QTest::newRow("lying, odd width truncates") << QByteArray("Seek") << 1 << 7 << QRect(72, 0, 7, 5);
    QTest::newRow("lying, wider than the bar") << QByteArray("Seek") << 2 << 7 << QRect(68, 0, 15, 20);
    QTest::newRow("lying, minimum") << QByteArray("Seek") << 2 << 0 << QRect(-2, 0, 15, 20);
    QTest::newRow("lying, maximum") << QByteArray("Seek") << 0 << 19 << QRect(192, 0, 6, 4);
    QTest::newRow("lying, below the range") << QByteArray("Seek") << 0 << lowest << QRect(2, 0, 6, 4);
    QTest::newRow("lying, above the range") << QByteArray("Seek") << 0 << highest << QRect(192, 0, 6, 4);
    QTest::newRow("standing, still along x") << QByteArray("Level") << 0 << 7 << QRect(73, 0, 6, 4);
    QTest::newRow("standing, odd width truncates") << QByteArray("Level") << 1 << 7 << QRect(73, 0, 7, 5);
    QTest::newRow("standing, maximum") << QByteArray("Level") << 0 << 19 << QRect(193, 0, 6, 4);
}

void TestSliderSkin::markerPlace()
{
    QFETCH(QByteArray, group);
    QFETCH(int, kind);
    QFETCH(int, value);
    QFETCH(QRect, rect);
    SliderStage stage(group.constData());
    QCOMPARE(stage.slider.insertMarker(MarkerType(kind), value), 0);
    QCOMPARE(stage.slider.markers[0].rect, rect);
    COMPARE_PICTURES(stage.slider.markers[0].image, SliderSkins::marker(kind));
    // A marker stays where it was put.
    stage.slider.setRange(0, 1000);
    stage.slider.setValue(500);
    QCOMPARE(stage.slider.markers[0].rect, rect);
}

void TestSliderSkin::markerKind_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("slot");
    QTest::newRow("first") << 0 << 0;
    QTest::newRow("last") << 2 << 0;
    QTest::newRow("beyond the last") << 3 << -1;
    QTest::newRow("far beyond") << 1000 << -1;
    QTest::newRow("negative") << -1 << -1;
    QTest::newRow("lowest") << lowest << -1;
    QTest::newRow("highest") << highest << -1;
}

void TestSliderSkin::markerKind()
{
    QFETCH(int, kind);
    QFETCH(int, slot);
    Window window;
    Slider slider(&window, "Seek");
    QCOMPARE(slider.insertMarker(static_cast<MarkerType>(kind), 10), slot);
    QCOMPARE(slider.markers[0].used, slot == 0);
    QCOMPARE(slider.insertMarker(Marker_1, 10), slot + 1);
}

void TestSliderSkin::insertingRepaintsNothing()
{
    SliderStage stage;
    QVERIFY(stage.begin(5));
    stage.slider.insertMarker(Marker_1, 10);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestSliderSkin::removeMarkerWarnsAndRepaints()
{
    SliderStage stage;
    QVERIFY(stage.begin(5));
    for (int slot = 0; slot < 5; ++slot)
        stage.slider.insertMarker(Marker_1, 2 * slot);
    stage.slider.removeMarker(3);
    QCOMPARE(stage.take(), QStringList{"paint 62,0 6x4"});
    QVERIFY(!stage.slider.markers[3].used);
    QVERIFY(stage.slider.markers[2].used && stage.slider.markers[4].used);
    QCOMPARE(Messages::all().size(), 1);
    QCOMPARE(int(Messages::all().at(0).type), int(QtWarningMsg));
    QCOMPARE(Messages::all().at(0).category, QByteArray("default"));
    expectedMessages = {" index =3"};
}

void TestSliderSkin::removedBeforeItsPlaceIsPainted()
{
    struct Watching : Slider {
        using Slider::Slider;
        QList<bool> seen;
        void paintEvent(QPaintEvent* event) override
        {
            seen << markers[0].used;
            Slider::paintEvent(event);
        }
    };
    Window window;
    Watching slider(&window, "Seek");
    QVERIFY(window.expose());
    slider.insertMarker(Marker_1, 10);
    slider.seen.clear();
    slider.removeMarker(0);
    expectedMessages = {" index =0"};
    QCOMPARE(slider.seen, QList<bool>{false});
}

void TestSliderSkin::removeMarkerIgnores_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("unused") << 5;
    QTest::newRow("removed before") << 1;
    QTest::newRow("first beyond") << 10;
    QTest::newRow("negative") << -1;
    QTest::newRow("lowest") << lowest;
    QTest::newRow("highest") << highest;
}

void TestSliderSkin::removeMarkerIgnores()
{
    QFETCH(int, index);
    SliderStage stage;
    QVERIFY(stage.begin(5));
    stage.slider.insertMarker(Marker_1, 3);
    stage.slider.insertMarker(Marker_1, 3);
    stage.slider.removeMarker(1);
    stage.take();
    expectedMessages = {" index =1"};
    stage.slider.removeMarker(index);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
    QVERIFY(stage.slider.markers[0].used);
}

void TestSliderSkin::removedMarkerKeepsItsPlace()
{
    SliderStage stage;
    QVERIFY(stage.begin(5));
    stage.slider.insertMarker(Marker_1, 10);
    stage.slider.removeMarker(0);
    expectedMessages = {" index =0"};
    stage.take();
    stage.slider.updateMarker(0);
    QCOMPARE(stage.take(), QStringList{"paint 102,0 6x4"});
}

void TestSliderSkin::updateMarkerRepaints()
{
    SliderStage stage;
    QVERIFY(stage.begin(5));
    stage.slider.insertMarker(Marker_1, 10);
    stage.slider.insertMarker(Marker_2, 12);
    stage.slider.updateMarker(1);
    QCOMPARE(stage.take(), QStringList{"paint 122,0 7x5"});
    stage.slider.updateMarker(0);
    QCOMPARE(stage.take(), QStringList{"paint 102,0 6x4"});
}

void TestSliderSkin::updateMarkerIgnores_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("never used") << 5;
    QTest::newRow("first beyond") << 10;
    QTest::newRow("negative") << -1;
    QTest::newRow("lowest") << lowest;
    QTest::newRow("highest") << highest;
}

void TestSliderSkin::updateMarkerIgnores()
{
    QFETCH(int, index);
    SliderStage stage;
    QVERIFY(stage.begin(5));
    stage.slider.updateMarker(index);
    QVERIFY(stage.window.settle());
    QCOMPARE(stage.take(), QStringList());
}

void TestSliderSkin::clearMarkersInOrder()
{
    SliderStage stage;
    QVERIFY(stage.begin(5));
    for (int slot = 0; slot < 10; ++slot)
        stage.slider.insertMarker(Marker_1, slot);
    stage.slider.removeMarker(4);
    stage.take();
    stage.slider.clearMarkers();
    expectedMessages = {" index =4"};
    QStringList log;
    for (int slot = 0; slot < 10; ++slot) {
        QVERIFY(!stage.slider.markers[slot].used);
        if (slot == 4)
            continue;
        expectedMessages << QStringLiteral(" index =%1").arg(slot);
        log << QStringLiteral("paint %1,0 6x4").arg(10 * slot + 2);
    }
    QCOMPARE(stage.take(), log);
    stage.slider.clearMarkers();
    QCOMPARE(stage.take(), QStringList());
}

QTEST_MAIN(TestSliderSkin)
#include "tst_sliderskin.moc"
