#include "media/volumefixture.h"

#include <QMetaMethod>
#include <QWindow>

#include <type_traits>

using namespace mediatest;

namespace
{

const QStringList showsOff{"hideButton(mute_on)", "showFocus(mute_off)"};
const QStringList showsOn{"hideButton(mute_off)", "showFocus(mute_on)"};

} // namespace

class TestVolumeSkin : public InstalledTest
{
    Q_OBJECT

private slots:
    void basesSignalsAndSlots_data();
    void basesSignalsAndSlots();
    void dataModel();
    void constructorArguments();
    void loadsItsOwnGroup();
    void takesNoFocus();
    void freshState();
    void sliderIsAChild();
    void sliderComesFromPaths();
    void sliderOfAnotherName();
    void standingSlider();
    void skinOfTheWindow();
    void missingSliderKey_data();
    void missingSliderKey();
    void sliderPosition_data();
    void sliderPosition();
    void noSkin();
    void deletedWithThePanel();
    void newSliderSounds();

    void sliderStandsOnThePanelsBackground();
    void wholePicture_data();
    void wholePicture();
    void alphaReachesTheSliderFirst();
    void alpha_data();
    void alpha();
    void backgroundPixmapReachesThePanelFirst();
    void backgroundPixmap();

    void volumeRange();
    void volumeValue_data();
    void volumeValue();
    void volumeValueInOrder();
    void volumeValueThroughTheMetaObject();
    void volumeValueWhileDragging();
    void volumeButton_data();
    void volumeButton();
    void muteButton_data();
    void muteButton();
    void muteButtonIsForgotten();
    void hiddenButtonShowsAgain();

    void buttonEvent_data();
    void buttonEvent();
    void buttonEventAtLevelZero_data();
    void buttonEventAtLevelZero();
    void levelIsThatOfTheRangeControl();
    void stylusMutesAndUnmutes();
    void keysMuteAndUnmute();
    void stylusAtLevelZero();
    void clickReachesTheSlotByTheSignal();

    void dragAndRelease();
    void dragToZero();
    void dragWhileMuted();
    void groovePressWithoutMove();
    void inactiveSliderAtFirst();
    void throughTheWindow();

    void focusPassesOn_data();
    void focusPassesOn();
    void focusOfTheSliderGoesToThePanel();

private:
    void installSkins() override { VolumeSkins::install(*installation); }
};

void TestVolumeSkin::basesSignalsAndSlots_data()
{
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<int>("type");
    QTest::newRow("app_volumes") << QByteArray("app_volumes( unsigned int )") << int(QMetaMethod::Signal);
    QTest::newRow("app_mute") << QByteArray("app_mute(bool)") << int(QMetaMethod::Signal);
    QTest::newRow("set_volumeValue") << QByteArray("set_volumeValue( unsigned int )") << int(QMetaMethod::Slot);
    QTest::newRow("button_event") << QByteArray("button_event( const QObject*, const QString )")
                                  << int(QMetaMethod::Slot);
    QTest::newRow("eventFilter") << QByteArray("eventFilter(QObject*,QEvent*)") << int(QMetaMethod::Slot);
}

void TestVolumeSkin::basesSignalsAndSlots()
{
    QFETCH(QByteArray, signature);
    QFETCH(int, type);
    static_assert(std::is_base_of_v<SkinBase, VolumeSkin>);
    const QMetaObject& meta = VolumeSkin::staticMetaObject;
    QCOMPARE(meta.superClass(), &SkinBase::staticMetaObject);
    const int index = meta.indexOfMethod(QMetaObject::normalizedSignature(signature));
    QVERIFY(index >= meta.methodOffset());
    QCOMPARE(int(meta.method(index).methodType()), type);
    QCOMPARE(meta.method(index).access(), QMetaMethod::Public);
}

// What a subclass reads has these types; the slider can be taken for one of a subclass.
void TestVolumeSkin::dataModel()
{
    static_assert(std::is_same_v<decltype(Volume::slider), SliderSkin*>);
    static_assert(std::is_same_v<decltype(Volume::muted), bool>);
    Window window;
    const Volume panel(&window, "Volume");
    const auto* const slider = panel.slider;
    QVERIFY(slider && slider == panel.findChild<SliderSkin*>("Volume_SLIDER"));
}

void TestVolumeSkin::constructorArguments()
{
    const VolumeSkin bare;
    QVERIFY(!bare.parent() && bare.objectName().isEmpty());
    Window window;
    const unsigned int flags = Qt::WMouseNoMask;
    const VolumeSkin panel(&window, "Volume", flags);
    QCOMPARE(panel.parentWidget(), &window);
    QCOMPARE(panel.name(), "Volume");
    QVERIFY(panel.testWFlags(Qt::WMouseNoMask));
}

void TestVolumeSkin::loadsItsOwnGroup()
{
    Window window;
    const Volume panel(&window, "Volume");
    QCOMPARE(panel.size(), QSize(120, 40));
    QCOMPARE(panel.buttonMap.keys(), (QStringList{"mute_off", "mute_on"}));
    COMPARE_PICTURES(*panel.backgroundImage, VolumeSkins::background());
    const Volume other(&window, "Other");
    QVERIFY(other.size().isEmpty());
    QVERIFY(other.buttonMap.isEmpty());
}

// Though it has buttons, which give a panel the focus otherwise.
void TestVolumeSkin::takesNoFocus()
{
    Window window;
    const Volume panel(&window, "Volume");
    QCOMPARE(int(panel.focusPolicy()), int(Qt::NoFocus));
    QCOMPARE(int(panel.slider->focusPolicy()), int(Qt::NoFocus));
}

void TestVolumeSkin::freshState()
{
    Window window;
    Volume panel(&window, "Volume");
    QVERIFY(!panel.muted);
    // Both buttons are as the skin left them.
    QCOMPARE(panel.state("mute_off"), int(Normal));
    QCOMPARE(panel.state("mute_on"), int(Normal));
    QCOMPARE(panel.getFocus(), QString(""));
    QCOMPARE(OpenSlider::stateOf(panel.slider), int(SliderState::Inactive));
    QCOMPARE(panel.slider->value(), 0);
}

void TestVolumeSkin::sliderIsAChild()
{
    Window window;
    Volume panel(&window, "Volume");
    const QList<SliderSkin*> sliders = panel.findChildren<SliderSkin*>();
    QCOMPARE(sliders.size(), 1);
    QCOMPARE(sliders.at(0), panel.slider);
    QCOMPARE(sliders.at(0)->parentWidget(), &panel);
    QCOMPARE(sliders.at(0)->name(), "Volume_SLIDER");
    QCOMPARE(sliders.at(0)->geometry(), QRect(60, 14, 50, 12));
    QVERIFY(!sliders.at(0)->isHidden());
}

void TestVolumeSkin::sliderComesFromPaths()
{
    Window window;
    const Volume panel(&window, "Volume");
    const SliderSkin* slider = panel.slider;
    QCOMPARE((QList<int>{slider->minValue(), slider->maxValue(), slider->lineStep(), slider->pageStep()}),
             (QList<int>{0, 99, 1, 10}));
    COMPARE_PICTURES(OpenSlider::bar(slider), VolumeSkins::bar());
    // The group has a marker, but this slider takes none.
    QVERIFY(OpenSlider::marker(slider).isNull());
}

void TestVolumeSkin::sliderOfAnotherName()
{
    installation->config("player",
                         QByteArray(VolumeSkins::panelGroups) + VolumeSkins::sliderGroup +
                             "[Small]\nbackground = bg.png\n"
                             "[Small_SLIDER]\nback_image = back.png\nbar_image = bar.png\nxpos = 1\nypos = 2\n");
    Window window;
    const Volume small(&window, "Small");
    QCOMPARE(small.slider->geometry(), QRect(1, 2, 50, 12));
    QCOMPARE(small.slider->objectName(), QString("Small_SLIDER"));
    const Volume panel(&window, "Volume");
    QCOMPARE(panel.slider->pos(), QPoint(60, 14));
}

void TestVolumeSkin::standingSlider()
{
    installation->picture("player", "back.png", pattern(20, 30));
    Window window;
    const Volume panel(&window, "Volume");
    QCOMPARE(panel.slider->geometry(), QRect(60, 14, 10, 30));
    QCOMPARE(panel.slider->goodPart(QPoint(1, 2)), 2);
}

void TestVolumeSkin::skinOfTheWindow()
{
    VolumeSkins::install(*installation, "other");
    installation->picture("other", "bg.png", pattern(90, 35));
    Window window("other");
    QWidget parent(&window);
    parent.setObjectName("player");
    const Volume panel(&parent, "Volume");
    QCOMPARE(panel.size(), QSize(90, 35));
    QCOMPARE(panel.slider->size(), QSize(50, 12));
    QFile::remove(installation->skin("other") + "/back.png");
    const Volume withoutSlider(&parent, "Volume");
    QVERIFY(withoutSlider.slider->size().isEmpty());
}

void TestVolumeSkin::missingSliderKey_data()
{
    QTest::addColumn<QByteArray>("key");
    for (const char* key : {"back_image", "bar_image", "xpos", "ypos"})
        QTest::newRow(key) << QByteArray(key);
}

void TestVolumeSkin::missingSliderKey()
{
    QFETCH(QByteArray, key);
    QByteArray config = QByteArray(VolumeSkins::panelGroups) + "[Volume_SLIDER]\n";
    for (const QByteArray line : {"back_image = back.png\n", "bar_image = bar.png\n", "xpos = 60\n", "ypos = 14\n"})
        if (!line.startsWith(key))
            config += line;
    installation->config("player", config);
    Window window;
    const Volume panel(&window, "Volume");
    QCOMPARE(panel.slider->x(), key == "xpos" ? -1 : 60);
    QCOMPARE(panel.slider->y(), key == "ypos" ? -1 : 14);
    QCOMPARE(panel.slider->size(), key == "back_image" ? QSize(0, 0) : QSize(50, 12));
    QCOMPARE(OpenSlider::bar(panel.slider).isNull(), key == "bar_image");
}

void TestVolumeSkin::sliderPosition_data()
{
    QTest::addColumn<QByteArray>("entries");
    QTest::addColumn<QPoint>("position");
    QTest::newRow("origin") << QByteArray("xpos = 0\nypos = 0\n") << QPoint(0, 0);
    QTest::newRow("negative") << QByteArray("xpos = -20\nypos = -3\n") << QPoint(-20, -3);
    QTest::newRow("no numbers") << QByteArray("xpos = left\nypos = 3px\n") << QPoint(0, 0);
    QTest::newRow("no entries") << QByteArray() << QPoint(-1, -1);
}

void TestVolumeSkin::sliderPosition()
{
    QFETCH(QByteArray, entries);
    QFETCH(QPoint, position);
    installation->config("player", QByteArray(VolumeSkins::panelGroups) +
                                       "[Volume_SLIDER]\nback_image = back.png\nbar_image = bar.png\n" + entries);
    Window window;
    const Volume panel(&window, "Volume");
    QCOMPARE(panel.slider->pos(), position);
}

void TestVolumeSkin::noSkin()
{
    Window window("nowhere");
    Volume panel(&window, "Volume");
    QVERIFY(panel.size().isEmpty());
    QCOMPARE(panel.slider->pos(), QPoint(-1, -1));
    QVERIFY(panel.slider->size().isEmpty());
    panel.set_volumeRange(0, 10, 2);
    panel.set_volumeValue(5);
    panel.change_muteButton(true);
    panel.setAlphaOverride(5);
    panel.setBackgroundPixmap(pixmap(pattern(50, 50)));
    QCOMPARE(panel.slider->value(), 5);
}

void TestVolumeSkin::deletedWithThePanel()
{
    Window window;
    auto panel = std::make_unique<Volume>(&window, "Volume");
    const QPointer<SliderSkin> slider = panel->slider;
    QVERIFY(slider);
    panel.reset();
    QVERIFY(!slider);
}

void TestVolumeSkin::newSliderSounds()
{
    Window window;
    Volume panel(&window, "Volume");
    panel.muted = true;
    panel.init_volumeskin("Volume");
    QVERIFY(!panel.muted);
}

// The slider's pictures are composed over the piece of the panel's background that lies under them.
void TestVolumeSkin::sliderStandsOnThePanelsBackground()
{
    Window window;
    const Volume panel(&window, "Volume");
    const QImage piece = VolumeSkins::background().copy(60, 14, 50, 12);
    QVERIFY(OpenSlider::background(panel.slider));
    COMPARE_PICTURES(*OpenSlider::background(panel.slider), piece);
    COMPARE_PICTURES(OpenSlider::groove(panel.slider), blended(piece, VolumeSkins::groove()));
    COMPARE_PICTURES(OpenSlider::fill(panel.slider), blended(piece, VolumeSkins::fill()));
    QVERIFY(panel.slider->backgroundPixmap());
    COMPARE_PICTURES(panel.slider->backgroundPixmap()->toImage(), piece);
}

void TestVolumeSkin::wholePicture_data()
{
    QTest::addColumn<int>("alpha");
    for (const int alpha : {255, 128, 1, 0})
        QTest::addRow("alpha %d", alpha) << alpha;
}

void TestVolumeSkin::wholePicture()
{
    QFETCH(int, alpha);
    VolumeStage stage;
    stage.panel.set_volumeValue(5);
    stage.panel.setAlphaOverride(static_cast<unsigned char>(alpha));
    const QImage piece = VolumeSkins::background().copy(60, 14, 50, 12);
    QImage slider = blended(piece, VolumeSkins::groove());
    put(slider, blended(piece, VolumeSkins::fill()), QRect(0, 0, 26, 12), QPoint());
    slider = blended(slider, VolumeSkins::bar(), QPoint(20, 0));
    QImage panel = VolumeSkins::background();
    put(panel, plain(20, 20, 0xff110000), QRect(0, 0, 20, 20), QPoint(4, 4));
    put(panel, slider, slider.rect(), QPoint(60, 14));
    COMPARE_PICTURES(shown(stage.panel), panel);
}

void TestVolumeSkin::alphaReachesTheSliderFirst()
{
    Window window;
    Volume panel(&window, "Volume");
    int seen = -1;
    panel.whenRebuilt = [&] { seen = qAlpha(OpenSlider::groove(panel.slider).pixel(0, 0)); };
    static_cast<SkinBase&>(panel).setAlphaOverride(77);
    QCOMPARE(seen, 77);
    QCOMPARE(int(panel.alphaOverride), 77);
}

void TestVolumeSkin::alpha_data()
{
    wholePicture_data();
}

void TestVolumeSkin::alpha()
{
    QFETCH(int, alpha);
    Window window;
    Volume panel(&window, "Volume");
    panel.setAlphaOverride(static_cast<unsigned char>(alpha));
    const QImage piece = VolumeSkins::background().copy(60, 14, 50, 12);
    COMPARE_PICTURES(OpenSlider::groove(panel.slider), withAlphaBytes(blended(piece, VolumeSkins::groove()), alpha));
    COMPARE_PICTURES(panel.slider->backgroundPixmap()->toImage(), withAlphaBytes(piece, alpha));
    COMPARE_PICTURES(panel.backgroundPixmap()->toImage(), withAlphaBytes(VolumeSkins::background(), alpha));
    COMPARE_PICTURES(panel.buttonMap.value("mute_on")->stateImage[1], withAlphaBytes(plain(20, 20, 0xff002200), alpha));
}

void TestVolumeSkin::backgroundPixmapReachesThePanelFirst()
{
    installation->picture("player", "bg.png", VolumeSkins::background(0));
    Window window;
    Volume panel(&window, "Volume");
    QRgb seenOnPanel = 0;
    QRgb seenOnSlider = 0;
    panel.whenRebuilt = [&] {
        seenOnPanel = panel.backgroundPixmap()->toImage().pixel(0, 0);
        seenOnSlider = panel.slider->backgroundPixmap()->toImage().pixel(0, 0);
    };
    const QImage parent = plain(300, 200, 0xff010203);
    static_cast<SkinBase&>(panel).setBackgroundPixmap(pixmap(parent));
    QCOMPARE(seenOnPanel, 0xff010203U);
    QVERIFY(seenOnSlider != 0xff010203U);
    QCOMPARE(panel.slider->backgroundPixmap()->toImage().pixel(0, 0), 0xff010203U);
}

// Intended: the slider takes the piece of the same pixmap at its own place on the panel.
void TestVolumeSkin::backgroundPixmap()
{
    installation->picture("player", "bg.png", VolumeSkins::background(85));
    Window window;
    Volume panel(&window, "Volume");
    panel.move(30, 20);
    const QImage parent = pattern(200, 100, 7);
    panel.setBackgroundPixmap(pixmap(parent));
    const QImage beneathPanel = blended(parent.copy(30, 20, 120, 40), VolumeSkins::background(85));
    COMPARE_PICTURES(panel.backgroundPixmap()->toImage(), beneathPanel);
    const QImage beneathSlider = blended(parent.copy(60, 14, 50, 12), VolumeSkins::background(85).copy(60, 14, 50, 12));
    COMPARE_PICTURES(OpenSlider::groove(panel.slider), blended(beneathSlider, VolumeSkins::groove()));
    COMPARE_PICTURES(OpenSlider::fill(panel.slider), blended(beneathSlider, VolumeSkins::fill()));
}

void TestVolumeSkin::volumeRange()
{
    Window window;
    Volume panel(&window, "Volume");
    panel.set_volumeRange(3, 30, 7);
    const SliderSkin* slider = panel.slider;
    QCOMPARE(
        (QList<int>{slider->minValue(), slider->maxValue(), slider->lineStep(), slider->pageStep(), slider->value()}),
        (QList<int>{3, 30, 1, 7, 3}));
    // As setValueInit() does it: minimum first, the bar at 0, the state as it was.
    panel.set_volumeValue(20);
    panel.set_volumeRange(0, 25, 7);
    QCOMPARE(slider->value(), 20);
    QCOMPARE(OpenSlider::position(slider), 0);
    QCOMPARE(OpenSlider::shown(slider), 20);
    // The buttons are left alone.
    panel.set_volumeRange(0, 0, 1);
    QCOMPARE(slider->value(), 0);
    QCOMPARE(panel.state("mute_on"), int(Hidden));
}

void TestVolumeSkin::volumeValue_data()
{
    QTest::addColumn<unsigned int>("value");
    QTest::addColumn<int>("level");
    QTest::newRow("0") << 0U << 0;
    QTest::newRow("7") << 7U << 7;
    QTest::newRow("highest level") << 10U << 10;
    QTest::newRow("above the range") << 11U << 10;
    QTest::newRow("highest int") << unsigned(highest) << 10;
    QTest::newRow("beyond the ints counts as negative") << 2147483648U << 0;
    QTest::newRow("highest") << 4294967295U << 0;
}

void TestVolumeSkin::volumeValue()
{
    QFETCH(unsigned int, value);
    QFETCH(int, level);
    VolumeStage stage;
    stage.panel.set_volumeValue(4);
    stage.begin();
    stage.panel.set_volumeValue(value);
    QCOMPARE(stage.panel.slider->value(), level);
    QCOMPARE(OpenSlider::stateOf(stage.panel.slider), int(SliderState::Idle));
    QCOMPARE(stage.shownButton(), level == 0 ? QString("mute_on") : QString("mute_off"));
    QVERIFY(!stage.panel.muted);
    QCOMPARE(stage.take().filter("app_"), QStringList());
}

void TestVolumeSkin::volumeValueInOrder()
{
    VolumeStage stage;
    stage.begin();
    stage.panel.set_volumeValue(4);
    QCOMPARE(stage.take(), QStringList("slider: valueChanged(4)") + showsOff);
    stage.panel.set_volumeValue(4);
    QCOMPARE(stage.take(), showsOff);
    stage.panel.set_volumeValue(0);
    QCOMPARE(stage.take(), QStringList("slider: valueChanged(0)") + showsOn);
}

void TestVolumeSkin::volumeValueThroughTheMetaObject()
{
    VolumeStage stage;
    QVERIFY(QMetaObject::invokeMethod(&stage.panel, "set_volumeValue", Q_ARG(unsigned int, 6U)));
    QCOMPARE(stage.panel.slider->value(), 6);
}

void TestVolumeSkin::volumeValueWhileDragging()
{
    VolumeStage stage;
    stage.begin(5);
    press(stage.panel.slider, {24, 4});
    stage.take();
    stage.panel.set_volumeValue(0);
    QCOMPARE(stage.panel.slider->value(), 5);
    QCOMPARE(stage.take(), showsOff);
}

void TestVolumeSkin::volumeButton_data()
{
    QTest::addColumn<bool>("muted");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("level");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("sounding, level 5") << false << 0 << 5 << showsOff;
    QTest::newRow("sounding, level 0") << false << 0 << 0 << showsOn;
    QTest::newRow("muted, level 5") << true << 0 << 5 << showsOn;
    QTest::newRow("muted, level 0") << true << 0 << 0 << showsOn;
    QTest::newRow("sounding, level below 0") << false << -10 << -3 << showsOff;
}

void TestVolumeSkin::volumeButton()
{
    QFETCH(bool, muted);
    QFETCH(int, minimum);
    QFETCH(int, level);
    QFETCH(QStringList, calls);
    VolumeStage stage;
    stage.panel.set_volumeRange(minimum, 10, 2);
    stage.panel.slider->setValue(level);
    stage.panel.muted = muted;
    stage.begin();
    stage.panel.change_volumebutton();
    QCOMPARE(stage.take(), calls);
    QCOMPARE(stage.panel.muted, muted);
    const bool off = calls == showsOff;
    QCOMPARE(stage.panel.state("mute_off"), off ? int(Focus) : int(Hidden));
    QCOMPARE(stage.panel.state("mute_on"), off ? int(Hidden) : int(Focus));
    QCOMPARE(stage.panel.getFocus(), off ? QString("mute_off") : QString("mute_on"));
}

void TestVolumeSkin::muteButton_data()
{
    QTest::addColumn<bool>("muted");
    QTest::addColumn<bool>("mute");
    for (const bool muted : {false, true})
        for (const bool mute : {false, true})
            QTest::addRow("%s, shown as %s", muted ? "muted" : "sounding", mute ? "muted" : "sounding")
                << muted << mute;
}

void TestVolumeSkin::muteButton()
{
    QFETCH(bool, muted);
    QFETCH(bool, mute);
    VolumeStage stage;
    stage.begin(5);
    stage.panel.muted = muted;
    stage.panel.change_muteButton(mute);
    QCOMPARE(stage.take(), mute ? showsOn : showsOff);
    QCOMPARE(stage.panel.muted, muted);
    QCOMPARE(stage.shownButton(), mute ? QString("mute_on") : QString("mute_off"));
}

void TestVolumeSkin::muteButtonIsForgotten()
{
    VolumeStage stage;
    stage.begin(5);
    stage.panel.change_muteButton(true);
    QCOMPARE(stage.shownButton(), QString("mute_on"));
    stage.panel.set_volumeValue(3);
    QCOMPARE(stage.shownButton(), QString("mute_off"));
}

// A button that has the focus already gets none by showFocus(), and shows all the same.
void TestVolumeSkin::hiddenButtonShowsAgain()
{
    VolumeStage stage;
    stage.begin(5);
    stage.panel.hideButton("mute_off");
    QCOMPARE(stage.shownButton(), QString());
    stage.panel.change_volumebutton();
    QCOMPARE(stage.shownButton(), QString("mute_off"));
    stage.panel.hideButton("mute_off");
    stage.panel.change_muteButton(false);
    QCOMPARE(stage.shownButton(), QString("mute_off"));
}

void TestVolumeSkin::buttonEvent_data()
{
    QTest::addColumn<bool>("muted");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("calls");
    for (const bool muted : {false, true}) {
        const char* before = muted ? "muted" : "sounding";
        QTest::addRow("%s, mute_off", before) << muted << "mute_off" << QStringList("app_mute(true)") + showsOn;
        QTest::addRow("%s, mute_on", before) << muted << "mute_on" << QStringList("app_mute(false)") + showsOff;
        QTest::addRow("%s, another button", before) << muted << "any" << QStringList("app_mute(false)") + showsOff;
        QTest::addRow("%s, no name", before) << muted << QString() << QStringList("app_mute(false)") + showsOff;
    }
}

void TestVolumeSkin::buttonEvent()
{
    QFETCH(bool, muted);
    QFETCH(QString, name);
    QFETCH(QStringList, calls);
    VolumeStage stage;
    stage.begin(5);
    stage.panel.muted = muted;
    bool seen = false;
    connect(&stage.panel, &VolumeSkin::app_mute, &stage.panel, [&] { seen = stage.panel.muted; });
    stage.panel.button_event(nullptr, name);
    QCOMPARE(stage.take(), calls);
    QCOMPARE(stage.panel.muted, name == "mute_off");
    // Set before the signal is emitted.
    QCOMPARE(seen, stage.panel.muted);
}

void TestVolumeSkin::buttonEventAtLevelZero_data()
{
    QTest::addColumn<bool>("muted");
    QTest::addColumn<QString>("name");
    for (const bool muted : {false, true})
        for (const char* name : {"mute_off", "mute_on", "any"})
            QTest::addRow("%s, %s", muted ? "muted" : "sounding", name) << muted << name;
}

void TestVolumeSkin::buttonEventAtLevelZero()
{
    QFETCH(bool, muted);
    QFETCH(QString, name);
    VolumeStage stage;
    stage.begin(0);
    stage.panel.muted = muted;
    stage.panel.button_event(&stage.panel, name);
    QCOMPARE(stage.take(), QStringList());
    QCOMPARE(stage.panel.muted, muted);
}

// A press on the groove without a move changes what the slider shows, not its value.
void TestVolumeSkin::levelIsThatOfTheRangeControl()
{
    VolumeStage stage;
    stage.begin(0);
    press(stage.panel.slider, {24, 4});
    release(stage.panel.slider, {24, 4});
    QCOMPARE(OpenSlider::shown(stage.panel.slider), 6);
    QCOMPARE(stage.panel.slider->value(), 0);
    stage.take();
    stage.panel.button_event(&stage.panel, "mute_off");
    QCOMPARE(stage.take(), QStringList());
    stage.panel.change_volumebutton();
    QCOMPARE(stage.take(), showsOn);
}

void TestVolumeSkin::stylusMutesAndUnmutes()
{
    VolumeStage stage;
    stage.begin(5);
    press(&stage.panel, VolumeSkins::button);
    QCOMPARE(stage.panel.state("mute_off"), int(Pressed));
    QCOMPARE(stage.take(), QStringList());
    release(&stage.panel, VolumeSkins::button);
    // The panel acts on the click before anybody else hears of it.
    QCOMPARE(stage.take(), QStringList("app_mute(true)") + showsOn + QStringList("button_clicked(mute_off)"));
    QVERIFY(stage.panel.muted);
    QCOMPARE(stage.shownButton(), QString("mute_on"));
    press(&stage.panel, VolumeSkins::button);
    QCOMPARE(stage.panel.state("mute_on"), int(Pressed));
    release(&stage.panel, VolumeSkins::button);
    QCOMPARE(stage.take(), QStringList("app_mute(false)") + showsOff + QStringList("button_clicked(mute_on)"));
    QVERIFY(!stage.panel.muted);
    QCOMPARE(stage.shownButton(), QString("mute_off"));
}

void TestVolumeSkin::keysMuteAndUnmute()
{
    VolumeStage stage;
    stage.begin(5);
    for (const QString& line : {QString("app_mute(true)"), QString("app_mute(false)")}) {
        key(&stage.panel, QEvent::KeyPress, Qt::Key_Return);
        key(&stage.panel, QEvent::KeyRelease, Qt::Key_Return);
        QCOMPARE(stage.take().filter("app_"), QStringList{line});
    }
}

void TestVolumeSkin::stylusAtLevelZero()
{
    VolumeStage stage;
    stage.begin(0);
    QCOMPARE(stage.shownButton(), QString("mute_on"));
    press(&stage.panel, VolumeSkins::button);
    release(&stage.panel, VolumeSkins::button);
    QCOMPARE(stage.take(), QStringList{"button_clicked(mute_on)"});
    QVERIFY(!stage.panel.muted);
    QCOMPARE(stage.shownButton(), QString("mute_on"));
}

void TestVolumeSkin::clickReachesTheSlotByTheSignal()
{
    VolumeStage stage;
    stage.begin(5);
    emit stage.panel.button_clicked(&stage.panel, "mute_off");
    QCOMPARE(stage.take().filter("app_"), QStringList{"app_mute(true)"});
    emit stage.panel.button_clicked(nullptr, "anything");
    QCOMPARE(stage.take().filter("app_"), QStringList{"app_mute(false)"});
}

void TestVolumeSkin::dragAndRelease()
{
    VolumeStage stage;
    stage.begin(5);
    SliderSkin* slider = stage.panel.slider;
    press(slider, {22, 4});
    move(slider, {30, 4});
    QCOMPARE(stage.take(), (QStringList{"slider: sliderPressed()", "slider: sliderMoved(7)", "slider: valueChanged(7)",
                                        "slider: valueChanged(7)"}));
    release(slider, {30, 4});
    QCOMPARE(stage.take(), showsOff + QStringList({"app_volumes(7)", "slider: seekReleased(7)"}));
    QCOMPARE(slider->value(), 7);
    QCOMPARE(OpenSlider::stateOf(slider), int(SliderState::Idle));
}

void TestVolumeSkin::dragToZero()
{
    VolumeStage stage;
    stage.begin(5);
    SliderSkin* slider = stage.panel.slider;
    press(slider, {22, 4});
    move(slider, {-50, 4});
    stage.take();
    release(slider, {-50, 4});
    QCOMPARE(stage.take(), showsOn + QStringList({"app_volumes(0)", "slider: seekReleased(0)"}));
    QCOMPARE(stage.shownButton(), QString("mute_on"));
    QVERIFY(!stage.panel.muted);
}

void TestVolumeSkin::dragWhileMuted()
{
    VolumeStage stage;
    stage.begin(5);
    stage.panel.button_event(&stage.panel, "mute_off");
    SliderSkin* slider = stage.panel.slider;
    press(slider, {22, 4});
    move(slider, {30, 4});
    stage.take();
    release(slider, {30, 4});
    QCOMPARE(stage.take(), showsOn + QStringList({"app_volumes(7)", "slider: seekReleased(7)"}));
    QVERIFY(stage.panel.muted);
}

void TestVolumeSkin::groovePressWithoutMove()
{
    VolumeStage stage;
    stage.begin(0);
    SliderSkin* slider = stage.panel.slider;
    press(slider, {32, 4});
    release(slider, {32, 4});
    // Intended: the level is that of before, the signal carries what the slider shows.
    QCOMPARE(stage.take(), QStringList({"slider: sliderMoved(8)", "slider: sliderPressed()"}) + showsOn +
                               QStringList({"app_volumes(8)", "slider: seekReleased(8)"}));
    QCOMPARE(slider->value(), 0);
    QCOMPARE(OpenSlider::position(slider), 32);
}

void TestVolumeSkin::inactiveSliderAtFirst()
{
    VolumeStage stage;
    stage.begin();
    SliderSkin* slider = stage.panel.slider;
    press(slider, {3, 4});
    move(slider, {30, 4});
    release(slider, {30, 4});
    QCOMPARE(stage.take(), QStringList());
    stage.panel.set_volumeValue(0);
    stage.take();
    press(slider, {3, 4});
    QCOMPARE(stage.take(), QStringList{"slider: sliderPressed()"});
}

void TestVolumeSkin::throughTheWindow()
{
    VolumeStage stage;
    stage.panel.move(100, 50);
    QVERIFY(stage.window.expose());
    stage.begin(5);
    QWindow* window = stage.window.windowHandle();
    const QPoint bar = QPoint(100, 50) + QPoint(60, 14) + QPoint(22, 4);
    QTest::mousePress(window, Qt::LeftButton, {}, bar);
    QTest::mouseMove(window, bar + QPoint(8, 90));
    QTest::mouseRelease(window, Qt::LeftButton, {}, bar + QPoint(8, 90));
    QCOMPARE(stage.take().filter("app_"), QStringList{"app_volumes(7)"});
    const QPoint button = QPoint(100, 50) + VolumeSkins::button;
    QTest::mousePress(window, Qt::LeftButton, {}, button);
    QTest::mouseRelease(window, Qt::LeftButton, {}, button + QPoint(150, 100));
    QCOMPARE(stage.take().filter("app_"), QStringList{"app_mute(true)"});
}

void TestVolumeSkin::focusPassesOn_data()
{
    QTest::addColumn<bool>("ofSlider");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("takesFocus");
    QTest::newRow("focus-in of the slider") << true << int(QEvent::FocusIn) << true;
    QTest::newRow("focus-out of the slider") << true << int(QEvent::FocusOut) << false;
    QTest::newRow("another event of the slider") << true << int(QEvent::User) << false;
    QTest::newRow("focus-in of another object") << false << int(QEvent::FocusIn) << false;
}

void TestVolumeSkin::focusPassesOn()
{
    QFETCH(bool, ofSlider);
    QFETCH(int, type);
    QFETCH(bool, takesFocus);
    struct Focused : Volume {
        using Volume::Volume;
        int focusCalls = 0;
        void setFocus() override { ++focusCalls; }
    };
    Window window;
    Focused panel(&window, "Volume");
    QVERIFY(window.activate());
    QObject other;
    QFocusEvent focusEvent(static_cast<QEvent::Type>(type == QEvent::User ? QEvent::FocusOut : type));
    QEvent plainEvent(QEvent::User);
    QEvent* event = type == QEvent::User ? &plainEvent : static_cast<QEvent*>(&focusEvent);
    QObject* object = ofSlider ? static_cast<QObject*>(panel.slider) : &other;
    QVERIFY(!static_cast<QObject&>(panel).eventFilter(object, event));
    QCOMPARE(panel.focusCalls > 0 || panel.hasFocus(), takesFocus);
}

void TestVolumeSkin::focusOfTheSliderGoesToThePanel()
{
    struct Counter : QObject {
        int focusIns = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            focusIns += event->type() == QEvent::FocusIn;
            return false;
        }
    };
    VolumeStage stage;
    QVERIFY(stage.window.activate());
    QVERIFY(!stage.panel.hasFocus());
    Counter counter;
    // Filters installed later run first, so this one sees what reaches the panel's filter as well.
    stage.panel.slider->installEventFilter(&counter);
    stage.panel.slider->setFocus();
    QVERIFY(stage.panel.hasFocus());
    QVERIFY(!stage.panel.slider->hasFocus());
    QCOMPARE(counter.focusIns, 1);
}

QTEST_MAIN(TestVolumeSkin)
#include "tst_volumeskin.moc"
