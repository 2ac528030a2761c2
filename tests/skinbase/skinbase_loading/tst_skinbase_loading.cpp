#include "skinbase/skinfixture.h"

#include <QElapsedTimer>
#include <QLineEdit>

#include <type_traits>

using namespace skintest;

namespace
{

constexpr auto workedExample = "[Control]\n"
                               "background = control_bg.png\n"
                               "maskimage = control_mask.png\n"
                               "count = 2\n"
                               "\n"
                               "[Control_BUTTON0]\n"
                               "name = play\n"
                               "image = play_strip.png\n"
                               "xpos = 12\n"
                               "ypos = 4\n"
                               "mask = ff00ff\n"
                               "\n"
                               "[Control_BUTTON1]\n"
                               "name = stop\n"
                               "image = stop_strip.png\n"
                               "xpos = 60\n"
                               "ypos = 4\n";

// Lays its state pictures out from top to bottom.
class VerticalPanel : public Panel
{
public:
    using Panel::Panel;
    QImage get_buttonimage(QImage strip, int index) override
    {
        calls << QStringLiteral("get_buttonimage(%1)").arg(index);
        const int height = strip.height() / 4;
        return strip.copy(0, height * index, strip.width(), height);
    }
};

// Knows how large it was when its strips were cut, and with what.
class WatchfulPanel : public Panel
{
public:
    using Panel::Panel;
    QList<QSize> sizes;
    QList<QImage> strips;

    QImage get_buttonimage(QImage strip, int index) override
    {
        sizes << size();
        strips << strip;
        return Panel::get_buttonimage(strip, index);
    }
};

} // namespace

class TestSkinBaseLoading : public QObject
{
    Q_OBJECT

private slots:
    void init() { installation = std::make_unique<Installation>(); }
    void cleanup() { installation.reset(); }

    void baseIsAWidget();
    void constructorPassesParentAndName();
    void constructorPassesFlags();
    void constructorDefaults();
    void emptyAfterConstruction();
    void strongFocusAfterConstruction();
    void neverErased();
    void constructorReadsNoSkin();

    void skinOfTheWindow();
    void installationDirectory_data();
    void installationDirectory();
    void installationDirectoryReadAtEveryLoad();
    void ownNameCountsOnlyAsWindow();
    void nestedPanelUsesItsWindow();
    void windowNameIsLatin1();
    void panelsOfAWindowShareASkin();
    void windowsHaveSkinsOfTheirOwn();
    void renamedWindowChangesLaterPanels();
    void picturesInSubdirectories();

    void workedExampleLoads();
    void fillsPicturesExactly();
    void resizesThroughTheVirtual();
    void resizesBeforeCuttingStrips();
    void cutsFourPicturesOfEachStrip();
    void cutsThroughTheVirtual();
    void loadingDrawsNothing();
    void oddStripLosesItsLastColumns();
    void workImage();
    void buttonStartsNormal();
    void mapByNameVectorByFile();
    void noFocusedButtonAfterLoading();
    void groupNamesCountDecimalFromZero();
    void groupNamesFollowTheSection();
    void nothingOutsideTheSectionIsRead();
    void formatIsFoundInTheContents();

    void count_data();
    void count();
    void countZeroTakesNoFocus();
    void countZeroDrawsTheBackground();
    void countZeroLeavesTheFocusedButton();
    void mask_data();
    void mask();
    void position_data();
    void position();

    void configFormat_data();
    void configFormat();
    void noConfigFile();
    void noSuchSection();
    void pictureMissing_data();
    void pictureMissing();
    void buttonGroupMissing();
    void buttonKeyMissing_data();
    void buttonKeyMissing();
    void equalNames();

    void destructorFreesEverything();
    void destructorFreesRecordsOfTheMap();
    void destructorFreesRecordsOfEqualNames();
    void secondLoadAppends();

private:
    // A panel of the window "player" that has loaded a section.
    struct Loaded {
        explicit Loaded(const QString& section = QStringLiteral("Control")) { panel.do_configloading(section); }
        SkinButton* button(size_t index) const { return panel.buttons.at(index); }

        QWidget window;
        Panel& panel = *makePanel(&window);

    private:
        static Panel* makePanel(QWidget* window)
        {
            window->setObjectName("player");
            return new Panel(window);
        }
    };

    std::unique_ptr<Installation> installation;
};

void TestSkinBaseLoading::baseIsAWidget()
{
    static_assert(std::is_base_of_v<QWidget, SkinBase>);
    static_assert(std::has_virtual_destructor_v<SkinBase>);
    static_assert(std::is_constructible_v<SkinBase, QWidget*, const char*, WFlags>);
    QVERIFY(SkinBase::staticMetaObject.inherits(&QWidget::staticMetaObject));
    QCOMPARE(SkinBase::staticMetaObject.className(), "SkinBase");
}

void TestSkinBaseLoading::constructorPassesParentAndName()
{
    QWidget window;
    SkinBase panel(&window, "transport", 0);
    QCOMPARE(panel.parentWidget(), &window);
    QCOMPARE(panel.objectName(), QStringLiteral("transport"));
    QCOMPARE(panel.name(), "transport");
    QVERIFY(!panel.isWindow());
}

void TestSkinBaseLoading::constructorPassesFlags()
{
    QWidget window;
    SkinBase panel(&window, "popup", Qt::WType_Popup | Qt::WDestructiveClose);
    QVERIFY(panel.isWindow());
    QCOMPARE(panel.windowType(), Qt::Popup);
    QVERIFY(panel.testAttribute(Qt::WA_DeleteOnClose));
    QVERIFY(panel.testWFlags(Qt::WType_Popup));
    QCOMPARE(panel.parentWidget(), &window);
}

void TestSkinBaseLoading::constructorDefaults()
{
    SkinBase panel;
    QCOMPARE(panel.parentWidget(), nullptr);
    QVERIFY(panel.isWindow());
    QCOMPARE(panel.objectName(), QString());
}

void TestSkinBaseLoading::emptyAfterConstruction()
{
    Panel panel;
    QVERIFY(panel.buttonMap.isEmpty());
    QVERIFY(panel.buttons.empty());
    QVERIFY(panel.focusButton == panel.buttons.end());
    QCOMPARE(panel.backgroundImage, nullptr);
    QCOMPARE(panel.maskImage, nullptr);
    QCOMPARE(panel.buttonHeld, false);
    QCOMPARE(panel.alphaOverride, static_cast<unsigned char>(255));
    static_assert(std::is_same_v<decltype(panel.alphaOverride), unsigned char>);
}

void TestSkinBaseLoading::strongFocusAfterConstruction()
{
    SkinBase panel;
    QCOMPARE(panel.focusPolicy(), Qt::StrongFocus);
}

void TestSkinBaseLoading::neverErased()
{
    SkinBase panel;
    QVERIFY(panel.testWFlags(Qt::WResizeNoErase));
    QVERIFY(panel.testWFlags(Qt::WRepaintNoErase));
    QVERIFY(panel.testAttribute(Qt::WA_OpaquePaintEvent));
}

void TestSkinBaseLoading::constructorReadsNoSkin()
{
    ThreeButtons::install(*installation);
    QWidget window;
    window.setObjectName("player");
    Panel panel(&window, "Control");
    QCOMPARE(panel.backgroundImage, nullptr);
    QVERIFY(panel.buttons.empty());
    QVERIFY(panel.size() != QSize(100, 40));
}

void TestSkinBaseLoading::skinOfTheWindow()
{
    installation->picture("player", "bg.png", plain(17, 9, red));
    installation->config("player", "[Control]\nbackground = bg.png\n");
    QCOMPARE(Loaded().panel.size(), QSize(17, 9));
}

void TestSkinBaseLoading::installationDirectory_data()
{
    QTest::addColumn<bool>("slash");
    QTest::newRow("without a slash at the end") << false;
    QTest::newRow("with a slash at the end") << true;
}

void TestSkinBaseLoading::installationDirectory()
{
    QFETCH(bool, slash);
    installation->picture("player", "bg.png", plain(17, 9, red));
    installation->config("player", "[Control]\nbackground = bg.png\n");
    qputenv("QPEDIR", QFile::encodeName(installation->root() + (slash ? "/" : "")));
    QCOMPARE(Loaded().panel.size(), QSize(17, 9));
}

void TestSkinBaseLoading::installationDirectoryReadAtEveryLoad()
{
    installation->picture("player", "bg.png", plain(17, 9, red));
    installation->config("player", "[Control]\nbackground = bg.png\n");
    const Loaded first;
    const Installation other;
    other.picture("player", "bg.png", plain(21, 22, red));
    other.config("player", "[Control]\nbackground = bg.png\n");
    const Loaded second;
    QCOMPARE(first.panel.size(), QSize(17, 9));
    QCOMPARE(second.panel.size(), QSize(21, 22));
}

void TestSkinBaseLoading::ownNameCountsOnlyAsWindow()
{
    installation->picture("player", "bg.png", plain(17, 9, red));
    installation->config("player", "[Control]\nbackground = bg.png\n");
    installation->picture("panel", "bg.png", plain(5, 6, red));
    installation->config("panel", "[Control]\nbackground = bg.png\n");
    QWidget window;
    window.setObjectName("player");
    Panel child(&window, "panel");
    child.do_configloading("Control");
    QCOMPARE(child.size(), QSize(17, 9));
    Panel topLevel(nullptr, "panel");
    topLevel.do_configloading("Control");
    QCOMPARE(topLevel.backgroundImage->size(), QSize(5, 6));
}

void TestSkinBaseLoading::nestedPanelUsesItsWindow()
{
    installation->picture("player", "bg.png", plain(17, 9, red));
    installation->config("player", "[Control]\nbackground = bg.png\n");
    QWidget window;
    window.setObjectName("player");
    QWidget box(&window);
    box.setObjectName("box");
    QWidget innerBox(&box);
    innerBox.setObjectName("inner");
    Panel panel(&innerBox);
    panel.do_configloading("Control");
    QCOMPARE(panel.size(), QSize(17, 9));
}

void TestSkinBaseLoading::windowNameIsLatin1()
{
    const QString name = QString::fromLatin1("h\xf6ren");
    installation->picture(name, "bg.png", plain(17, 9, red));
    installation->config(name, "[Control]\nbackground = bg.png\n");
    Panel byToolkitName(nullptr, "h\xf6ren");
    byToolkitName.do_configloading("Control");
    QCOMPARE(byToolkitName.backgroundImage->size(), QSize(17, 9));
    QWidget window;
    window.setObjectName(name);
    Panel panel(&window);
    panel.do_configloading("Control");
    QCOMPARE(panel.size(), QSize(17, 9));
}

void TestSkinBaseLoading::panelsOfAWindowShareASkin()
{
    for (const char* file : {"v0.png", "v1.png", "t0.png"})
        installation->picture("player", file, strip(3, 3, {red, green, blue, grey}));
    installation->config("player", "[Volume]\ncount = 2\n[Volume_BUTTON0]\nname = louder\n"
                                   "[Volume_BUTTON1]\nname = softer\n"
                                   "[Time]\ncount = 1\n[Time_BUTTON0]\nname = total\n");
    QWidget window;
    window.setObjectName("player");
    Panel volume(&window, "x");
    Panel time(&window, "y");
    volume.do_configloading("Volume");
    time.do_configloading("Time");
    QCOMPARE(volume.buttonMap.keys(), QStringList({"louder", "softer"}));
    QCOMPARE(time.buttonMap.keys(), QStringList({"total"}));
}

void TestSkinBaseLoading::windowsHaveSkinsOfTheirOwn()
{
    installation->config("player", "[Control]\ncount = 1\n[Control_BUTTON0]\nname = play\n");
    installation->config("recorder", "[Control]\ncount = 1\n[Control_BUTTON0]\nname = record\n");
    QWidget player;
    player.setObjectName("player");
    QWidget recorder;
    recorder.setObjectName("recorder");
    Panel ofPlayer(&player);
    Panel ofRecorder(&recorder);
    ofPlayer.do_configloading("Control");
    ofRecorder.do_configloading("Control");
    QCOMPARE(ofPlayer.buttonMap.keys(), QStringList("play"));
    QCOMPARE(ofRecorder.buttonMap.keys(), QStringList("record"));
}

void TestSkinBaseLoading::renamedWindowChangesLaterPanels()
{
    installation->config("day", "[Control]\ncount = 1\n[Control_BUTTON0]\nname = sun\n");
    installation->config("night", "[Control]\ncount = 1\n[Control_BUTTON0]\nname = moon\n");
    QWidget window;
    window.setObjectName("day");
    Panel before(&window);
    Panel after(&window);
    before.do_configloading("Control");
    window.setObjectName("night");
    after.do_configloading("Control");
    QCOMPARE(before.buttonMap.keys(), QStringList("sun"));
    QCOMPARE(after.buttonMap.keys(), QStringList("moon"));
}

void TestSkinBaseLoading::picturesInSubdirectories()
{
    installation->picture("player", "pictures/bg.png", plain(17, 9, red));
    installation->config("player", "[Control]\nbackground = pictures/bg.png\n");
    QCOMPARE(Loaded().panel.size(), QSize(17, 9));
}

void TestSkinBaseLoading::workedExampleLoads()
{
    const QImage playStrip = strip(40, 30, {red, green, blue, grey});
    const QImage stopStrip = strip(20, 10, {yellow, grey, red, blue});
    installation->picture("player", "control_bg.png", pattern(120, 50));
    installation->picture("player", "control_mask.png", plain(120, 50, 0x00ff00ff));
    installation->picture("player", "play_strip.png", playStrip);
    installation->picture("player", "stop_strip.png", stopStrip);
    installation->config("player", workedExample);
    const Loaded loaded;
    QCOMPARE(loaded.panel.size(), QSize(120, 50));
    COMPARE_PICTURES(*loaded.panel.backgroundImage, pattern(120, 50));
    COMPARE_PICTURES(*loaded.panel.maskImage, plain(120, 50, 0x00ff00ff));
    QCOMPARE(loaded.panel.buttons.size(), size_t(2));

    const SkinButton* play = loaded.button(0);
    QCOMPARE(play->name, QStringLiteral("play"));
    QCOMPARE(play->rect(), QRect(12, 4, 40, 30));
    QCOMPARE(play->mask, 0xff00ffU);
    const QRgb colours[] = {red, green, blue, grey};
    for (int k = 0; k < 4; ++k)
        COMPARE_PICTURES(play->stateImage[k], plain(40, 30, colours[k]));

    const SkinButton* stop = loaded.button(1);
    QCOMPARE(stop->name, QStringLiteral("stop"));
    QCOMPARE(stop->rect(), QRect(60, 4, 20, 10));
    QCOMPARE(stop->mask, 0U);

    loaded.panel.focusNextButton();
    QCOMPARE(loaded.panel.getFocus(), QStringLiteral("play"));
    loaded.panel.focusNextButton();
    QCOMPARE(loaded.panel.getFocus(), QStringLiteral("stop"));
    QCOMPARE(loaded.panel.buttonMap.keys(), QStringList({"play", "stop"}));
}

void TestSkinBaseLoading::fillsPicturesExactly()
{
    installation->picture("player", "bg.png", pattern(30, 20, 9, 100));
    installation->picture("player", "mask.png", pattern(31, 21, 8, 0));
    installation->picture("player", "strip.png", pattern(40, 6, 7, 1));
    installation->config("player", "[Control]\nbackground = bg.png\nmaskimage = mask.png\ncount = 1\n"
                                   "[Control_BUTTON0]\nimage = strip.png\n");
    const Loaded loaded;
    COMPARE_PICTURES(*loaded.panel.backgroundImage, pattern(30, 20, 9, 100));
    COMPARE_PICTURES(*loaded.panel.maskImage, pattern(31, 21, 8, 0));
    COMPARE_PICTURES(loaded.button(0)->image, pattern(40, 6, 7, 1));
    for (int k = 0; k < 4; ++k)
        COMPARE_PICTURES(loaded.button(0)->stateImage[k], pattern(40, 6, 7, 1).copy(10 * k, 0, 10, 6));
}

void TestSkinBaseLoading::resizesThroughTheVirtual()
{
    ThreeButtons::install(*installation);
    const Loaded loaded;
    QCOMPARE(loaded.panel.callsOf("resize"), QStringList("resize(100,40)"));
    QCOMPARE(loaded.panel.size(), QSize(100, 40));
}

void TestSkinBaseLoading::resizesBeforeCuttingStrips()
{
    ThreeButtons::install(*installation);
    WatchfulPanel panel(nullptr, "player");
    panel.do_configloading("Control");
    QCOMPARE(panel.sizes, QList<QSize>(12, QSize(100, 40)));
}

void TestSkinBaseLoading::cutsFourPicturesOfEachStrip()
{
    ThreeButtons::install(*installation);
    WatchfulPanel panel(nullptr, "player");
    panel.do_configloading("Control");
    const QStringList onePass{"get_buttonimage(0)", "get_buttonimage(1)", "get_buttonimage(2)", "get_buttonimage(3)"};
    QCOMPARE(panel.callsOf("get_buttonimage"), onePass + onePass + onePass);
    QCOMPARE(panel.strips.size(), 12);
    const char order[] = {'c', 'a', 'b'};
    for (int i = 0; i < 12; ++i)
        COMPARE_PICTURES(panel.strips[i], ThreeButtons::stripOf(order[i / 4]));
}

void TestSkinBaseLoading::cutsThroughTheVirtual()
{
    const QImage sideways = strip(5, 3, {red, green, blue, grey}).transformed(QTransform().rotate(90));
    installation->picture("player", "strip.png", sideways);
    installation->config("player", "[Control]\ncount = 1\n[Control_BUTTON0]\nimage = strip.png\n");
    VerticalPanel panel(nullptr, "player");
    panel.do_configloading("Control");
    const QRgb colours[] = {red, green, blue, grey};
    for (int k = 0; k < 4; ++k)
        COMPARE_PICTURES(panel.buttons[0]->stateImage[k], plain(3, 5, colours[k]));
    QCOMPARE(panel.buttons[0]->workImage.size(), QSize(3, 5));
}

void TestSkinBaseLoading::loadingDrawsNothing()
{
    ThreeButtons::install(*installation);
    Stage stage;
    stage.panel.QWidget::resize(100, 40);
    QVERIFY(stage.show());
    const QRegion damage = stage.damage([&] { stage.panel.do_configloading("Control"); });
    QCOMPARE(damage, QRegion());
    for (const char* operation : {"drawButton", "drawButtons", "redrawButtonImages", "redrawImage", "setAlphaOverride",
                                  "setBackgroundImage", "setBackgroundPixmap"})
        QCOMPARE(stage.panel.callsOf(operation), QStringList());
}

void TestSkinBaseLoading::oddStripLosesItsLastColumns()
{
    installation->picture("player", "strip.png", pattern(163, 5));
    installation->config("player", "[Control]\ncount = 1\n[Control_BUTTON0]\nimage = strip.png\n");
    const Loaded loaded;
    QCOMPARE(loaded.button(0)->image.width(), 163);
    for (int k = 0; k < 4; ++k)
        COMPARE_PICTURES(loaded.button(0)->stateImage[k], pattern(163, 5).copy(40 * k, 0, 40, 5));
}

void TestSkinBaseLoading::workImage()
{
    ThreeButtons::install(*installation);
    const Loaded loaded;
    const QImage& work = loaded.button(0)->workImage;
    COMPARE_PICTURES(work, plain(10, 6, 0x00ffffff));
    QCOMPARE(work.depth(), 32);
    QCOMPARE(work.colorCount(), 0);
    QVERIFY(work.hasAlphaChannel());
}

void TestSkinBaseLoading::buttonStartsNormal()
{
    ThreeButtons::install(*installation);
    const Loaded loaded;
    for (const SkinButton* button : loaded.panel.buttons) {
        QCOMPARE(button->state, Normal);
        QCOMPARE(button->spare, false);
    }
    QCOMPARE(loaded.panel.buttonHeld, false);
}

void TestSkinBaseLoading::mapByNameVectorByFile()
{
    ThreeButtons::install(*installation);
    const Loaded loaded;
    QStringList inFile;
    for (const SkinButton* button : loaded.panel.buttons)
        inFile << button->name;
    QCOMPARE(inFile, QStringList({"c", "a", "b"}));
    QCOMPARE(loaded.panel.buttonMap.keys(), QStringList({"a", "b", "c"}));
    QCOMPARE(loaded.panel.buttonMap.value("a"), loaded.button(1));
    QCOMPARE(loaded.panel.buttonMap.value("c"), loaded.button(0));
}

void TestSkinBaseLoading::noFocusedButtonAfterLoading()
{
    ThreeButtons::install(*installation);
    const Loaded loaded;
    QVERIFY(loaded.panel.focusButton == loaded.panel.buttons.end());
    QCOMPARE(loaded.panel.getFocus(), QString());
    QCOMPARE(loaded.panel.focusPolicy(), Qt::StrongFocus);
}

void TestSkinBaseLoading::groupNamesCountDecimalFromZero()
{
    QByteArray config = "[Control]\ncount = 12\n";
    for (int i = 0; i < 13; ++i)
        config += "[Control_BUTTON" + QByteArray::number(i) + "]\nname = n" + QByteArray::number(i) + "\n";
    config += "[Control_BUTTON00]\nname = zeros\n[Control_BUTTON_1]\nname = separator\n[ControlBUTTON2]\nname = none\n"
              "[Control_BUTTON]\nname = unnumbered\n[Control_BUTTONa]\nname = hexadecimal\n";
    installation->config("player", config);
    const Loaded loaded;
    QCOMPARE(loaded.panel.buttons.size(), size_t(12));
    for (size_t i = 0; i < 12; ++i)
        QCOMPARE(loaded.button(i)->name, QStringLiteral("n%1").arg(i));
}

void TestSkinBaseLoading::groupNamesFollowTheSection()
{
    installation->config("player", "[panel]\ncount = 1\n[panel_BUTTON0]\nname = byWidgetName\n"
                                   "[Main Panel]\ncount = 1\n[Main Panel_BUTTON0]\nname = bySection\n");
    const Loaded loaded("Main Panel");
    QCOMPARE(loaded.panel.buttonMap.keys(), QStringList("bySection"));
}

void TestSkinBaseLoading::nothingOutsideTheSectionIsRead()
{
    installation->picture("player", "bg.png", plain(9, 9, red));
    installation->config("player", "background = bg.png\nmaskimage = bg.png\ncount = 7\nname = top\nxpos = 3\n"
                                   "[Other]\nbackground = bg.png\nmaskimage = bg.png\ncount = 5\n"
                                   "[Control]\ncount = 1\nname = section\nxpos = 4\nimage = bg.png\n"
                                   "[Other_BUTTON0]\nname = other\nmask = 12\n");
    const Loaded loaded;
    QVERIFY(loaded.panel.backgroundImage->isNull());
    QVERIFY(loaded.panel.maskImage->isNull());
    QCOMPARE(loaded.panel.buttons.size(), size_t(1));
    QCOMPARE(loaded.button(0)->name, QString());
    QCOMPARE(loaded.button(0)->xpos, -1);
    QCOMPARE(loaded.button(0)->mask, 0U);
    QVERIFY(loaded.button(0)->image.isNull());
}

void TestSkinBaseLoading::formatIsFoundInTheContents()
{
    installation->picture("player", "bg.jpg", plain(17, 9, red), "PNG");
    installation->picture("player", "mask", plain(18, 9, red), "BMP");
    installation->picture("player", "strip.png", plain(8, 2, green), "PPM");
    installation->config("player", "[Control]\nbackground = bg.jpg\nmaskimage = mask\ncount = 1\n"
                                   "[Control_BUTTON0]\nimage = strip.png\n");
    const Loaded loaded;
    COMPARE_PICTURES(*loaded.panel.backgroundImage, plain(17, 9, red));
    COMPARE_PICTURES(*loaded.panel.maskImage, plain(18, 9, red));
    COMPARE_PICTURES(loaded.button(0)->image, plain(8, 2, green));
}

void TestSkinBaseLoading::count_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("buttons");
    QTest::newRow("missing") << QByteArray() << 0;
    QTest::newRow("empty") << QByteArray("count =\n") << 0;
    QTest::newRow("0") << QByteArray("count = 0\n") << 0;
    QTest::newRow("negative") << QByteArray("count = -5\n") << 0;
    QTest::newRow("lowest") << QByteArray("count = -2147483648\n") << 0;
    QTest::newRow("no number") << QByteArray("count = abc\n") << 0;
    QTest::newRow("begins with a number") << QByteArray("count = 2x\n") << 0;
    QTest::newRow("1") << QByteArray("count = 1\n") << 1;
    QTest::newRow("more than groups") << QByteArray("count = 3\n") << 3;
    QTest::newRow("the most") << QByteArray("count = 1024\n") << 1024;
    QTest::newRow("beyond the most") << QByteArray("count = 1025\n") << 1024;
    QTest::newRow("highest") << QByteArray("count = 2147483647\n") << 1024;
    QTest::newRow("beyond int") << QByteArray("count = 99999999999\n") << 0;
}

void TestSkinBaseLoading::count()
{
    QFETCH(QByteArray, line);
    QFETCH(int, buttons);
    installation->config("player", "[Control]\n" + line + "[Control_BUTTON0]\nname = x\n[Control_BUTTON1]\nname = y\n");
    const Loaded loaded;
    QCOMPARE(int(loaded.panel.buttons.size()), buttons);
    QCOMPARE(loaded.panel.focusPolicy(), buttons > 0 ? Qt::StrongFocus : Qt::NoFocus);
    QVERIFY(loaded.panel.focusButton == loaded.panel.buttons.end());
    if (buttons > 2)
        QCOMPARE(loaded.button(2)->name, QString());
}

void TestSkinBaseLoading::countZeroTakesNoFocus()
{
    installation->picture("player", "bg.png", plain(40, 20, red));
    installation->config("player", "[Control]\nbackground = bg.png\ncount = 0\n");
    Stage stage;
    stage.panel.do_configloading("Control");
    QVERIFY(stage.show());
    QTest::mouseClick(&stage.panel, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    QVERIFY(!stage.panel.hasFocus());
    QTest::keyClick(&stage.window, Qt::Key_Tab);
    QVERIFY(!stage.panel.hasFocus());
}

void TestSkinBaseLoading::countZeroDrawsTheBackground()
{
    installation->picture("player", "bg.png", pattern(40, 20));
    installation->config("player", "[Control]\nbackground = bg.png\ncount = 0\n");
    Loaded loaded;
    loaded.panel.setAlphaOverride(255);
    COMPARE_PICTURES(loaded.panel.grab().toImage(), pattern(40, 20));
}

void TestSkinBaseLoading::countZeroLeavesTheFocusedButton()
{
    ThreeButtons::install(*installation);
    Loaded loaded;
    loaded.panel.setButtonFocus("a");
    loaded.panel.do_configloading("NoSuchSection");
    QCOMPARE(loaded.panel.focused(), QStringLiteral("a"));
    QCOMPARE(loaded.panel.focusPolicy(), Qt::NoFocus);
}

void TestSkinBaseLoading::mask_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<unsigned int>("value");
    QTest::newRow("upper case") << QByteArray("mask = FF00FF\n") << 0xff00ffU;
    QTest::newRow("lower case") << QByteArray("mask = ff00ff\n") << 0xff00ffU;
    QTest::newRow("mixed case") << QByteArray("mask = fF00Ff\n") << 0xff00ffU;
    QTest::newRow("eight digits") << QByteArray("mask = ff00ff01\n") << 0xff00ff01U;
    QTest::newRow("highest") << QByteArray("mask = ffffffff\n") << 0xffffffffU;
    QTest::newRow("always hexadecimal") << QByteArray("mask = 10\n") << 0x10U;
    QTest::newRow("with the prefix of hexadecimal numbers") << QByteArray("mask = 0xff00ff\n") << 0xff00ffU;
    QTest::newRow("a colour name") << QByteArray("mask = red\n") << 0U;
    QTest::newRow("a colour with its sign") << QByteArray("mask = #ff00ff\n") << 0U;
    QTest::newRow("nine digits") << QByteArray("mask = 1ff00ff00\n") << 0U;
    QTest::newRow("blank inside") << QByteArray("mask = ff 00\n") << 0U;
    QTest::newRow("empty") << QByteArray("mask =\n") << 0U;
    QTest::newRow("missing") << QByteArray() << 0U;
}

void TestSkinBaseLoading::mask()
{
    QFETCH(QByteArray, line);
    QFETCH(unsigned int, value);
    installation->config("player", "[Control]\ncount = 1\n[Control_BUTTON0]\n" + line);
    const Loaded loaded;
    QCOMPARE(loaded.button(0)->mask, value);
}

void TestSkinBaseLoading::position_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QPoint>("position");
    QTest::newRow("missing") << QByteArray() << QPoint(-1, -1);
    QTest::newRow("x alone") << QByteArray("xpos = 12\n") << QPoint(12, -1);
    QTest::newRow("y alone") << QByteArray("ypos = 13\n") << QPoint(-1, 13);
    QTest::newRow("both") << QByteArray("xpos = 12\nypos = 13\n") << QPoint(12, 13);
    QTest::newRow("negative") << QByteArray("xpos = -12\nypos = -13\n") << QPoint(-12, -13);
    QTest::newRow("no numbers") << QByteArray("xpos = left\nypos = 0x10\n") << QPoint(0, 0);
    QTest::newRow("empty") << QByteArray("xpos =\nypos =\n") << QPoint(0, 0);
    QTest::newRow("extreme") << QByteArray("xpos = 2147483647\nypos = -2147483648\n") << QPoint(INT_MAX, INT_MIN);
}

void TestSkinBaseLoading::position()
{
    QFETCH(QByteArray, lines);
    QFETCH(QPoint, position);
    installation->config("player", "[Control]\ncount = 1\n[Control_BUTTON0]\n" + lines);
    const Loaded loaded;
    QCOMPARE(QPoint(loaded.button(0)->xpos, loaded.button(0)->ypos), position);
}

void TestSkinBaseLoading::configFormat_data()
{
    QTest::addColumn<QByteArray>("config");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QByteArray("[Control]\ncount=1\n[Control_BUTTON0]\nname=play\n") << "play";
    QTest::newRow("blanks") << QByteArray("  [Control]  \n count\t=  1 \n[Control_BUTTON0]\n\tname = play \t\n")
                            << "play";
    QTest::newRow("carriage returns") << QByteArray("[Control]\r\ncount = 1\r\n[Control_BUTTON0]\r\nname = play\r\n")
                                      << "play";
    QTest::newRow("no end of line at the end")
        << QByteArray("[Control]\ncount = 1\n[Control_BUTTON0]\nname = play") << "play";
    QTest::newRow("comments") << QByteArray("# skin\n[Control]\n#count = 7\ncount = 1\n # x\n[Control_BUTTON0]\n"
                                            "#name = pause\nname = play\n")
                              << "play";
    QTest::newRow("of equal keys the later one")
        << QByteArray("[Control]\ncount = 1\n[Control_BUTTON0]\nname = pause\nname = play\n") << "play";
    QTest::newRow("keys with case") << QByteArray("[Control]\ncount = 1\n[Control_BUTTON0]\nname = play\nName = stop\n")
                                    << "play";
    QTest::newRow("groups with case")
        << QByteArray("[control]\ncount = 9\n[Control]\ncount = 1\n[control_BUTTON0]\nname = stop\n"
                      "[Control_BUTTON0]\nname = play\n[Control_button0]\nname = stop\n")
        << "play";
    QTest::newRow("value with equals sign")
        << QByteArray("[Control]\ncount = 1\n[Control_BUTTON0]\nname = a=b\n") << "a=b";
    QTest::newRow("value with comma") << QByteArray("[Control]\ncount = 1\n[Control_BUTTON0]\nname = a, b\n") << "a, b";
    QTest::newRow("value with backslash")
        << QByteArray("[Control]\ncount = 1\n[Control_BUTTON0]\nname = a\\nb\n") << "a\\nb";
    QTest::newRow("groups in any order") << QByteArray("[Control_BUTTON0]\nname = play\n[Control]\ncount = 1\n")
                                         << "play";
}

void TestSkinBaseLoading::configFormat()
{
    QFETCH(QByteArray, config);
    QFETCH(QString, name);
    installation->config("player", config);
    const Loaded loaded;
    QCOMPARE(loaded.panel.buttonMap.keys(), QStringList(name));
    QCOMPARE(loaded.panel.buttons.size(), size_t(1));
}

void TestSkinBaseLoading::noConfigFile()
{
    QDir().mkpath(installation->skin("player"));
    Messages messages;
    const Loaded loaded;
    QVERIFY(loaded.panel.backgroundImage != nullptr);
    QVERIFY(loaded.panel.backgroundImage->isNull());
    QVERIFY(loaded.panel.maskImage != nullptr);
    QVERIFY(loaded.panel.maskImage->isNull());
    QVERIFY(loaded.panel.buttons.empty());
    QVERIFY(loaded.panel.buttonMap.isEmpty());
    QCOMPARE(loaded.panel.focusPolicy(), Qt::NoFocus);
    QCOMPARE(loaded.panel.size(), QSize(0, 0));
    QCOMPARE(loaded.panel.callsOf("resize"), QStringList("resize(0,0)"));
    QCOMPARE(Messages::texts(), QStringList());
}

void TestSkinBaseLoading::noSuchSection()
{
    ThreeButtons::install(*installation);
    Messages messages;
    const Loaded loaded("Contr");
    QVERIFY(loaded.panel.backgroundImage->isNull());
    QVERIFY(loaded.panel.maskImage->isNull());
    QVERIFY(loaded.panel.buttons.empty());
    QCOMPARE(loaded.panel.focusPolicy(), Qt::NoFocus);
    QCOMPARE(loaded.panel.size(), QSize(0, 0));
    QCOMPARE(Messages::texts(), QStringList());
}

void TestSkinBaseLoading::pictureMissing_data()
{
    QTest::addColumn<QByteArray>("background");
    QTest::addColumn<QByteArray>("maskimage");
    QTest::addColumn<bool>("hasBackground");
    QTest::addColumn<bool>("hasMask");
    const QByteArray file = "background = bg.png\n";
    const QByteArray maskFile = "maskimage = bg.png\n";
    QTest::newRow("both there") << file << maskFile << true << true;
    QTest::newRow("background without key") << QByteArray() << maskFile << false << true;
    QTest::newRow("background without file") << QByteArray("background = x.png\n") << maskFile << false << true;
    QTest::newRow("background unreadable") << QByteArray("background = config\n") << maskFile << false << true;
    QTest::newRow("mask without key") << file << QByteArray() << true << false;
    QTest::newRow("mask without file") << file << QByteArray("maskimage = x.png\n") << true << false;
    QTest::newRow("mask unreadable") << file << QByteArray("maskimage = config\n") << true << false;
}

void TestSkinBaseLoading::pictureMissing()
{
    QFETCH(QByteArray, background);
    QFETCH(QByteArray, maskimage);
    QFETCH(bool, hasBackground);
    QFETCH(bool, hasMask);
    installation->picture("player", "bg.png", plain(17, 9, red));
    installation->config("player", "[Control]\ncount = 1\n" + background + maskimage + "[Control_BUTTON0]\nname = x\n");
    Messages messages;
    const Loaded loaded;
    QVERIFY(loaded.panel.backgroundImage != nullptr);
    QVERIFY(loaded.panel.maskImage != nullptr);
    QCOMPARE(!loaded.panel.backgroundImage->isNull(), hasBackground);
    QCOMPARE(!loaded.panel.maskImage->isNull(), hasMask);
    QCOMPARE(loaded.panel.size(), hasBackground ? QSize(17, 9) : QSize(0, 0));
    // The rest is loaded all the same.
    QCOMPARE(loaded.panel.buttonMap.keys(), QStringList("x"));
    QCOMPARE(loaded.panel.focusPolicy(), Qt::StrongFocus);
    QCOMPARE(Messages::texts(), QStringList());
}

void TestSkinBaseLoading::buttonGroupMissing()
{
    installation->config("player", "[Control]\ncount = 3\n[Control_BUTTON0]\nname = x\n[Control_BUTTON1]\nname = y\n");
    const Loaded loaded;
    QCOMPARE(loaded.panel.buttons.size(), size_t(3));
    const SkinButton* third = loaded.button(2);
    QVERIFY(third->name.isNull());
    QCOMPARE(third->mask, 0U);
    QCOMPARE(QPoint(third->xpos, third->ypos), QPoint(-1, -1));
    QVERIFY(third->image.isNull());
    for (const QImage& picture : third->stateImage)
        QVERIFY(picture.isNull());
    QVERIFY(third->workImage.isNull());
    QCOMPARE(third->state, Normal);
    QCOMPARE(loaded.panel.buttonMap.value(QString()), third);
}

void TestSkinBaseLoading::buttonKeyMissing_data()
{
    QTest::addColumn<QByteArray>("missing");
    for (const char* key : {"name", "mask", "xpos", "ypos", "image"})
        QTest::newRow(key) << QByteArray(key);
}

void TestSkinBaseLoading::buttonKeyMissing()
{
    QFETCH(QByteArray, missing);
    installation->picture("player", "s.png", strip(3, 3, {red, green, blue, grey}));
    QByteArray config = "[Control]\ncount = 1\n[Control_BUTTON0]\n";
    for (const char* line : {"name = x\n", "mask = 12\n", "xpos = 3\n", "ypos = 4\n", "image = s.png\n"})
        if (!QByteArray(line).startsWith(missing))
            config += line;
    installation->config("player", config);
    const Loaded loaded;
    QCOMPARE(loaded.panel.buttons.size(), size_t(1));
    QCOMPARE(loaded.button(0)->name, missing == "name" ? QString() : QStringLiteral("x"));
    QCOMPARE(loaded.button(0)->mask, missing == "mask" ? 0U : 0x12U);
    QCOMPARE(loaded.button(0)->xpos, missing == "xpos" ? -1 : 3);
    QCOMPARE(loaded.button(0)->ypos, missing == "ypos" ? -1 : 4);
    QCOMPARE(loaded.button(0)->image.isNull(), missing == "image");
    QCOMPARE(loaded.button(0)->workImage.isNull(), missing == "image");
}

void TestSkinBaseLoading::equalNames()
{
    installation->config("player", "[Control]\ncount = 3\n[Control_BUTTON0]\nname = x\nxpos = 1\n"
                                   "[Control_BUTTON1]\nname = y\n[Control_BUTTON2]\nname = x\nxpos = 2\n");
    const Loaded loaded;
    QCOMPARE(loaded.panel.buttons.size(), size_t(3));
    QCOMPARE(loaded.panel.buttonMap.keys(), QStringList({"x", "y"}));
    QCOMPARE(loaded.panel.buttonMap.value("x"), loaded.button(2));
    QCOMPARE(loaded.button(0)->xpos, 1);
    // By name only the later one is reached.
    loaded.panel.hideButton("x");
    QCOMPARE(loaded.button(0)->state, Normal);
    QCOMPARE(loaded.button(2)->state, Hidden);
    // Both take part in focus travel: the first is a candidate, although its name leads to the later one.
    loaded.panel.showNormal("x");
    loaded.panel.hideButton("y");
    loaded.panel.focusNextButton();
    QVERIFY(loaded.panel.focusButton == loaded.panel.buttons.begin() + 2);
}

// A picture that the panel held is the test's alone once the panel has freed it.
void TestSkinBaseLoading::destructorFreesEverything()
{
    ThreeButtons::install(*installation);
    auto panel = std::make_unique<Panel>(nullptr, "player");
    panel->do_configloading("Control");
    QList<QImage> held{*panel->backgroundImage, *panel->maskImage};
    for (const SkinButton* button : panel->buttons)
        held << button->image;
    for (const QImage& picture : std::as_const(held))
        QVERIFY(!picture.isDetached());
    panel.reset();
    for (const QImage& picture : std::as_const(held))
        QVERIFY(picture.isDetached());
}

void TestSkinBaseLoading::destructorFreesRecordsOfTheMap()
{
    QImage picture = plain(4, 4, red);
    {
        Panel panel;
        auto* button = new SkinButton;
        button->name = "own";
        button->image = picture;
        panel.buttonMap.insert(button->name, button);
        QVERIFY(!picture.isDetached());
    }
    QVERIFY(picture.isDetached());
}

void TestSkinBaseLoading::destructorFreesRecordsOfEqualNames()
{
    ThreeButtons::install(*installation);
    installation->config("player", "[Control]\ncount = 2\n[Control_BUTTON0]\nname = x\nimage = a.png\n"
                                   "[Control_BUTTON1]\nname = x\nimage = b.png\n");
    auto loaded = std::make_unique<Loaded>();
    const QImage first = loaded->button(0)->image;
    const QImage second = loaded->button(1)->image;
    QVERIFY(!first.isDetached() && !second.isDetached());
    loaded.reset();
    QVERIFY(first.isDetached());
    QVERIFY(second.isDetached());
}

void TestSkinBaseLoading::secondLoadAppends()
{
    ThreeButtons::install(*installation);
    installation->picture("player", "small.png", plain(8, 8, red));
    installation->config("player", "[Control]\ncount = 2\nbackground = bg.png\n[Control_BUTTON0]\nname = c\n"
                                   "[Control_BUTTON1]\nname = a\n"
                                   "[More]\ncount = 2\nbackground = small.png\n[More_BUTTON0]\nname = b\n"
                                   "[More_BUTTON1]\nname = a\n");
    Loaded loaded;
    loaded.panel.setButtonFocus("c");
    loaded.panel.do_configloading("More");
    QCOMPARE(loaded.panel.buttons.size(), size_t(4));
    QCOMPARE(loaded.panel.buttonMap.keys(), QStringList({"a", "b", "c"}));
    QCOMPARE(loaded.panel.buttonMap.value("a"), loaded.button(3));
    QVERIFY(loaded.panel.focusButton == loaded.panel.buttons.end());
    QCOMPARE(loaded.panel.size(), QSize(8, 8));
    COMPARE_PICTURES(*loaded.panel.backgroundImage, plain(8, 8, red));
}

QTEST_MAIN(TestSkinBaseLoading)
#include "tst_skinbase_loading.moc"
