#include "controls/controlsfixture.h"

#include <QWindow>

using namespace controlstest;

class TestImageButton : public ControlsTest
{
    Q_OBJECT

private slots:
    void construction();
    void constructionWithoutAnything();
    void membersInOrder();
    void signalsAndSlotsInOrder();
    void parentSeesEventsFirst();

    void separateFiles();
    void separateFilesOfAToggleButton();
    void separateFilesTwice();
    void applicationNameWithoutObjectName();
    void stripCut_data();
    void stripCut();
    void stripsOfAToggleButton();
    void secondStripIsCutLikeTheFirst_data();
    void secondStripIsCutLikeTheFirst();
    void stripKeepsPixels();
    void missingPictures();
    void picturesGoAgain();
    void loadingNeitherResizesNorRepaints();

    void painting_data();
    void painting();
    void paintsAtTheCornerOnly();
    void paintsWithAlpha();
    void paintsNothingInOtherStates();

    void toggleMode();
    void changeToggleState_data();
    void changeToggleState();

    void disabling_data();
    void disabling();
    void disabledTwice();
    void enabledButtonIsEnabledAgain();
    void setDisabledIsTheContrary();
    void enablingThroughPlainPointer();
    void enablingThroughTheParent();
    void plainlyDisabledButtonIsEnabledBySlot();
    void stateSlotsThroughToolkitPointer();

    void stylus_data();
    void stylus();
    void stylusReleasePoints_data();
    void stylusReleasePoints();
    void stylusIsNotPassedOn();
    void stylusThroughTheWindow();

    void keys_data();
    void keys();
    void keysForTheParent_data();
    void keysForTheParent();
    void keysForTheParentWithoutParent();
    void keyPassedOnReachesAncestorsOnce();
    void keysEndHere_data();
    void keysEndHere();

    void focusEvents_data();
    void focusEvents();
    void focusCalls();
    void focusCallsInAnInactiveWindow();
    void focusThroughPlainPointer();
    void focusByTab();
    void toolkitHandlers();

    void disabledByAReceiver_data();
    void disabledByAReceiver();
    void toggledByAReceiver();
    void slotsByName();

private:
    void install(const QString& name, const QString& suffix = {}) const
    {
        const char* const states[] = {"_normal", "_press", "_focus", "_disable"};
        for (int k = 0; k < 4; ++k)
            surroundings->picture(name + states[k] + suffix, picture(k, suffix));
    }
    static QImage picture(int k, const QString& suffix = {}) { return pattern(8, 5, 10 * k + int(suffix.size())); }
};

namespace
{

// A button and the list of what happens to it once the window is active.
struct Scene : ButtonScene<Button> {
    Scene() : ButtonScene("play") {}
    bool activate()
    {
        if (!ButtonScene::activate() || !window.settle())
            return false;
        button.watch(recorder);
        return true;
    }

    Recorder recorder;
};

const QString whole = QStringLiteral("paint 0,0 20x21 in %1");

// A slot for any signal.
class Slots : public QObject
{
    Q_OBJECT

public:
    explicit Slots(std::function<void()> act) : m_act(std::move(act)) {}
    int calls = 0;

public slots:
    void call()
    {
        ++calls;
        m_act();
    }

private:
    std::function<void()> m_act;
};

} // namespace

void TestImageButton::construction()
{
    QWidget parent;
    const Button button(&parent, "play", Qt::WRepaintNoErase);
    QCOMPARE(button.parentWidget(), &parent);
    QCOMPARE(button.objectName(), QString("play"));
    QVERIFY(button.testWFlags(Qt::WRepaintNoErase));
    QCOMPARE(button.state, 0);
    QCOMPARE(button.imageName, QString("play"));
    QVERIFY(!button.toggleOn);
    QVERIFY(!button.toggleMode);
    QVERIFY(!button.toggledState());
    QCOMPARE(button.savedState, 0);
    for (const auto& set : button.pixmaps)
        for (const QPixmap& picture : set)
            QVERIFY(picture.isNull());
    QCOMPARE(button.focusPolicy(), Qt::StrongFocus);
    QVERIFY(button.isEnabled());
}

void TestImageButton::constructionWithoutAnything()
{
    Button button;
    QVERIFY(!button.parentWidget());
    QCOMPARE(button.imageName, QString());
    QCOMPARE(button.focusPolicy(), Qt::StrongFocus);
    button.setName("late");
    // The pictures keep the name that the button was born with.
    QCOMPARE(button.imageName, QString());
}

void TestImageButton::membersInOrder()
{
    const Button button;
    const QList<const void*> addresses{&button.state,    &button.imageName,  &button.pixmaps,
                                       &button.toggleOn, &button.toggleMode, &button.savedState};
    for (int i = 1; i < addresses.size(); ++i)
        QVERIFY2(std::less<>()(addresses[i - 1], addresses[i]), QByteArray::number(i));
}

void TestImageButton::signalsAndSlotsInOrder()
{
    const QMetaObject& type = ImageButton::staticMetaObject;
    QCOMPARE(methods(type, QMetaMethod::Signal), QStringList({"clicked()", "pressed()", "toggled(bool)"}));
    QCOMPARE(methods(type, QMetaMethod::Slot),
             QStringList({"setEnabled(bool)", "setDisabled(bool)", "setFocus()", "clearFocus()"}));
}

void TestImageButton::parentSeesEventsFirst()
{
    struct Parent : QWidget {
        QStringList seen;
        bool swallows = false;
        Button* button = nullptr;
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            if (watched == button && event->type() == QEvent::MouseButtonPress)
                seen << "press in " + QString::number(button->state);
            return swallows;
        }
    };
    Parent parent;
    Button button(&parent, "play");
    parent.button = &button;
    press(&button, {1, 1});
    QCOMPARE(parent.seen, QStringList({"press in 0"}));
    QCOMPARE(button.state, 1);
    release(&button, {1, 1});
    parent.swallows = true;
    press(&button, {1, 1});
    QCOMPARE(parent.seen, QStringList({"press in 0", "press in 2"}));
    QCOMPARE(button.state, 2);
}

void TestImageButton::separateFiles()
{
    install("app/play");
    install("app/play", "2");
    Button button(nullptr, "play");
    button.setButtonImage(true);
    QCOMPARE(button.imageName, QString("app/play"));
    for (int k = 0; k < 4; ++k) {
        COMPARE_PICTURES(button.pixmaps[0][k].toImage(), picture(k));
        // Without toggle mode there is no second set.
        QVERIFY(button.pixmaps[1][k].isNull());
    }
}

void TestImageButton::separateFilesOfAToggleButton()
{
    install("app/play");
    install("app/play", "2");
    Button button(nullptr, "play");
    button.setToggle();
    button.setButtonImage(true);
    QCOMPARE(button.imageName, QString("app/play"));
    for (int k = 0; k < 4; ++k) {
        COMPARE_PICTURES(button.pixmaps[0][k].toImage(), picture(k));
        COMPARE_PICTURES(button.pixmaps[1][k].toImage(), picture(k, "2"));
    }
}

void TestImageButton::separateFilesTwice()
{
    install("app/play");
    Button button(nullptr, "play");
    button.setButtonImage(true);
    QVERIFY(!button.pixmaps[0][0].isNull());
    button.setButtonImage(true);
    QCOMPARE(button.imageName, QString("app/app/play"));
    for (const QPixmap& each : button.pixmaps[0])
        QVERIFY(each.isNull());
    // It is the name that counts, not the number of calls.
    install("app/app/app/play");
    button.setButtonImage(true);
    for (int k = 0; k < 4; ++k)
        COMPARE_PICTURES(button.pixmaps[0][k].toImage(), picture(k));
}

void TestImageButton::applicationNameWithoutObjectName()
{
    install("other/play");
    qApp->setObjectName(QString());
    const QString before = QCoreApplication::applicationName();
    QCoreApplication::setApplicationName("other");
    Button button(nullptr, "play");
    button.setButtonImage(true);
    QCoreApplication::setApplicationName(before);
    QCOMPARE(button.imageName, QString("other/play"));
    COMPARE_PICTURES(button.pixmaps[0][2].toImage(), picture(2));
}

void TestImageButton::stripCut_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("120") << 120 << 9;
    QTest::newRow("121: the last column is unused") << 121 << 9;
    QTest::newRow("123: the last three columns are unused") << 123 << 9;
    QTest::newRow("4") << 4 << 1;
    QTest::newRow("7") << 7 << 3;
}

void TestImageButton::stripCut()
{
    QFETCH(int, width);
    QFETCH(int, height);
    const QImage strip = pattern(width, height, 3);
    surroundings->picture("play_bt", strip);
    // No other name is looked for.
    surroundings->picture("app/play_bt", pattern(8, 8));
    surroundings->picture("play2_bt", pattern(8, 8));
    Button button(nullptr, "play");
    button.setButtonImage(false);
    QCOMPARE(button.imageName, QString("play"));
    const int w = width / 4;
    for (int k = 0; k < 4; ++k) {
        QCOMPARE(button.pixmaps[0][k].depth(), 32);
        COMPARE_PICTURES(button.pixmaps[0][k].toImage(), strip.copy(k * w, 0, w, height));
        QVERIFY(button.pixmaps[1][k].isNull());
    }
    // The stored name stays, so that it finds the strip again.
    button.setButtonImage(false);
    COMPARE_PICTURES(button.pixmaps[0][3].toImage(), strip.copy(3 * w, 0, w, height));
}

void TestImageButton::stripsOfAToggleButton()
{
    const QImage first = pattern(40, 6, 3);
    const QImage second = pattern(40, 6, 99);
    surroundings->picture("play_bt", first);
    surroundings->picture("play2_bt", second);
    Button button(nullptr, "play");
    button.setToggle();
    button.setButtonImage(false);
    QCOMPARE(button.imageName, QString("play2"));
    for (int k = 0; k < 4; ++k) {
        COMPARE_PICTURES(button.pixmaps[0][k].toImage(), first.copy(k * 10, 0, 10, 6));
        COMPARE_PICTURES(button.pixmaps[1][k].toImage(), second.copy(k * 10, 0, 10, 6));
        QCOMPARE(button.pixmaps[1][k].depth(), 32);
    }
    // The name keeps the ending, so a second call starts from there.
    button.setButtonImage(false);
    QCOMPARE(button.imageName, QString("play22"));
    COMPARE_PICTURES(button.pixmaps[0][1].toImage(), second.copy(10, 0, 10, 6));
    QCOMPARE(button.pixmaps[1][1].toImage().convertToFormat(QImage::Format_ARGB32), plain(10, 6, 0));
}

void TestImageButton::secondStripIsCutLikeTheFirst_data()
{
    QTest::addColumn<QSize>("second");
    QTest::newRow("wider and higher") << QSize(80, 12);
    QTest::newRow("narrower and lower") << QSize(25, 4);
    QTest::newRow("missing") << QSize();
}

void TestImageButton::secondStripIsCutLikeTheFirst()
{
    QFETCH(QSize, second);
    surroundings->picture("play_bt", pattern(40, 6, 3));
    const QImage strip = second.isEmpty() ? QImage() : pattern(second.width(), second.height(), 99);
    if (!strip.isNull())
        surroundings->picture("play2_bt", strip);
    Button button(nullptr, "play");
    button.setToggle();
    button.setButtonImage(false);
    for (int k = 0; k < 4; ++k) {
        QImage piece = plain(10, 6, 0);
        put(piece, strip, QRect(k * 10, 0, 10, 6), {});
        COMPARE_PICTURES(button.pixmaps[1][k].toImage(), piece);
    }
}

void TestImageButton::stripKeepsPixels()
{
    // Opaque, half and wholly transparent pixels, copied and not blended.
    QImage strip = pattern(8, 2, 50);
    strip.setPixel(0, 0, 0x80ff8040);
    strip.setPixel(1, 0, 0x00000000);
    surroundings->picture("play_bt", strip);
    Button button(nullptr, "play");
    button.setButtonImage(false);
    // As a pixmap stores it.
    const QImage stored = QPixmap::fromImage(strip).toImage().convertToFormat(QImage::Format_ARGB32);
    for (int k = 0; k < 4; ++k)
        COMPARE_PICTURES(button.pixmaps[0][k].toImage(), stored.copy(k * 2, 0, 2, 2));
}

void TestImageButton::missingPictures()
{
    Button separate(nullptr, "play");
    separate.setToggle();
    separate.setButtonImage(true);
    Button cut(nullptr, "play");
    cut.setToggle();
    cut.setButtonImage(false);
    for (const Button* button : {&separate, &cut})
        for (const auto& set : button->pixmaps)
            for (const QPixmap& picture : set)
                QVERIFY(picture.isNull());
    // A second strip without the first has no size to be cut to.
    surroundings->picture("stop2_bt", pattern(40, 6));
    Button half(nullptr, "stop");
    half.setToggle();
    half.setButtonImage(false);
    for (const QPixmap& picture : half.pixmaps[1])
        QVERIFY(picture.isNull());
    // One file of four.
    surroundings->picture("app/next_focus", pattern(3, 3));
    Button one(nullptr, "next");
    one.setButtonImage(true);
    for (int k = 0; k < 4; ++k)
        QCOMPARE(one.pixmaps[0][k].isNull(), k != 2);
    one.resize(10, 10);
    setWindowColour(one, blue);
    COMPARE_PICTURES(shown(one), plain(10, 10, blue));
}

void TestImageButton::picturesGoAgain()
{
    surroundings->picture("play_bt", pattern(40, 6, 3));
    Button button(nullptr, "play");
    button.setButtonImage(false);
    QVERIFY(!button.pixmaps[0][0].isNull());
    button.imageName = "nothing";
    button.setButtonImage(false);
    for (const QPixmap& picture : button.pixmaps[0])
        QVERIFY(picture.isNull());
}

void TestImageButton::loadingNeitherResizesNorRepaints()
{
    install("app/play");
    Window window;
    Button button(&window, "play");
    button.setGeometry(3, 4, 50, 60);
    QVERIFY(window.expose());
    Recorder recorder;
    recorder.watchPaints(&button);
    button.setButtonImage(true);
    QVERIFY(window.settle());
    QCOMPARE(button.geometry(), QRect(3, 4, 50, 60));
    QCOMPARE(recorder.take(), QStringList());
}

void TestImageButton::painting_data()
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<int>("state");
    for (const bool on : {false, true})
        for (int state = 0; state < 4; ++state)
            QTest::addRow("position %d, state %d", int(on), state) << on << state;
}

void TestImageButton::painting()
{
    QFETCH(bool, on);
    QFETCH(int, state);
    Button button;
    button.resize(20, 21);
    button.fill();
    button.toggleOn = on;
    button.state = state;
    COMPARE_PICTURES(shown(button), plain(20, 21, Button::pixelOf(on, state)));
}

void TestImageButton::paintsAtTheCornerOnly()
{
    Button button;
    setWindowColour(button, blue);
    button.pixmaps[0][0] = pixmap(pattern(8, 5));
    button.resize(12, 9);
    QImage expected = plain(12, 9, blue);
    put(expected, pattern(8, 5), QRect(0, 0, 8, 5), {});
    COMPARE_PICTURES(shown(button), expected);
    // Nothing is scaled, however small the button is, and no focus frame drawn.
    button.resize(3, 3);
    COMPARE_PICTURES(shown(button), pattern(8, 5).copy(0, 0, 3, 3));
}

void TestImageButton::paintsWithAlpha()
{
    Button button;
    setWindowColour(button, blue);
    button.resize(8, 5);
    button.pixmaps[0][0] = pixmap(pattern(8, 5, 30, 100));
    COMPARE_PICTURES(shown(button), blended(plain(8, 5, blue), pattern(8, 5, 30, 100)));
    button.setBackgroundPixmap(pixmap(pattern(8, 5, 99)));
    COMPARE_PICTURES(shown(button), blended(pattern(8, 5, 99), pattern(8, 5, 30, 100)));
}

void TestImageButton::paintsNothingInOtherStates()
{
    Button button;
    setWindowColour(button, blue);
    button.resize(20, 21);
    button.fill();
    for (const int state : {-1, 4, lowest, highest}) {
        button.state = state;
        COMPARE_PICTURES(shown(button), plain(20, 21, blue));
    }
}

void TestImageButton::toggleMode()
{
    Button button;
    QVERIFY(!button.toggleMode);
    button.setToggle();
    QVERIFY(button.toggleMode);
    QVERIFY(!button.toggledState());
    button.setToggle();
    QVERIFY(button.toggleMode);
}

void TestImageButton::changeToggleState_data()
{
    QTest::addColumn<bool>("toggle");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("on");
    for (const bool toggle : {false, true})
        for (const bool before : {false, true})
            for (const bool on : {false, true})
                QTest::addRow("%s: %d to %d", toggle ? "toggle" : "plain", before, on) << toggle << before << on;
}

void TestImageButton::changeToggleState()
{
    QFETCH(bool, toggle);
    QFETCH(bool, before);
    QFETCH(bool, on);
    Scene scene;
    if (toggle)
        scene.button.setToggle();
    scene.button.toggleOn = before;
    QVERIFY(scene.activate());
    bool seen = !on;
    connect(&scene.button, &ImageButton::toggled, &scene.recorder, [&] { seen = scene.button.toggledState(); });
    scene.button.changeToggleState(on);
    QCOMPARE(scene.recorder.take(), QStringList({on ? "toggled(true) in 0" : "toggled(false) in 0", whole.arg(0)}));
    QCOMPARE(seen, on);
    QCOMPARE(scene.button.toggledState(), on);
    QVERIFY(scene.window.settle());
    QCOMPARE(scene.recorder.take(), QStringList());
}

void TestImageButton::disabling_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("afterwards");
    QTest::newRow("normal") << 0 << 0;
    QTest::newRow("pressed") << 1 << 0;
    QTest::newRow("focused") << 2 << 2;
}

void TestImageButton::disabling()
{
    QFETCH(int, state);
    QFETCH(int, afterwards);
    Scene scene;
    QVERIFY(scene.activate());
    scene.button.state = state;
    scene.button.setEnabled(false);
    QCOMPARE(scene.button.state, 3);
    QCOMPARE(scene.button.savedState, state);
    QCOMPARE(scene.recorder.take(), QStringList({whole.arg(3)}));
    // For the toolkit it is as enabled as ever.
    QVERIFY(scene.button.isEnabled());
    scene.button.setEnabled(true);
    QCOMPARE(scene.button.state, afterwards);
    QCOMPARE(scene.recorder.take(), QStringList({whole.arg(afterwards)}));
    QVERIFY(scene.button.isEnabled());
    QVERIFY(scene.window.settle());
    QCOMPARE(scene.recorder.take(), QStringList());
}

void TestImageButton::disabledTwice()
{
    Button button;
    button.state = 2;
    button.setEnabled(false);
    button.setEnabled(false);
    QCOMPARE(button.savedState, 3);
    button.setEnabled(true);
    QCOMPARE(button.state, 0);
}

void TestImageButton::enabledButtonIsEnabledAgain()
{
    Button button;
    button.state = 2;
    button.setEnabled(true);
    QCOMPARE(button.state, 0);
    button.state = 1;
    button.savedState = 2;
    button.setEnabled(true);
    QCOMPARE(button.state, 2);
}

void TestImageButton::setDisabledIsTheContrary()
{
    Scene scene;
    QVERIFY(scene.activate());
    scene.button.state = 2;
    scene.button.setDisabled(true);
    QCOMPARE(scene.button.state, 3);
    QCOMPARE(scene.button.savedState, 2);
    QVERIFY(scene.button.isEnabled());
    scene.button.setDisabled(false);
    QCOMPARE(scene.button.state, 2);
    QCOMPARE(scene.recorder.take(), QStringList({whole.arg(3), whole.arg(2)}));
}

void TestImageButton::enablingThroughPlainPointer()
{
    Button button;
    QWidget& plain = button;
    plain.setEnabled(false);
    QCOMPARE(button.state, 3);
    plain.setEnabled(true);
    QCOMPARE(button.state, 0);
    plain.setDisabled(true);
    QCOMPARE(button.state, 3);
    plain.setDisabled(false);
    QCOMPARE(button.state, 0);
    button.setProperty("enabled", false);
    QCOMPARE(button.state, 3);
    button.setProperty("enabled", true);
    QCOMPARE(button.state, 0);
}

void TestImageButton::enablingThroughTheParent()
{
    QWidget parent;
    Button button(&parent, "play");
    button.state = 2;
    parent.setEnabled(false);
    QCOMPARE(button.state, 3);
    parent.setEnabled(true);
    QCOMPARE(button.state, 2);
}

void TestImageButton::plainlyDisabledButtonIsEnabledBySlot()
{
    Scene scene;
    QVERIFY(scene.activate());
    static_cast<QWidget&>(scene.button).setEnabled(false);
    QVERIFY(!scene.button.isEnabled());
    scene.button.setEnabled(true);
    QCOMPARE(scene.button.state, 0);
    QVERIFY(scene.button.isEnabled());
    scene.recorder.take();
    QTest::mouseClick(scene.window.windowHandle(), Qt::LeftButton, {}, QPoint(15, 15));
    QVERIFY(scene.recorder.take().contains("clicked() in 1"));
}

void TestImageButton::stateSlotsThroughToolkitPointer()
{
    Scene scene;
    QVERIFY(scene.activate());
    ToolkitWidget<QWidget>& base = scene.button;
    base.setFocus();
    QCOMPARE(scene.button.state, 2);
    base.setEnabled(false);
    QCOMPARE(scene.button.state, 3);
    QVERIFY(scene.button.isEnabled());
    base.setEnabled(true);
    QCOMPARE(scene.button.state, 2);
}

void TestImageButton::stylus_data()
{
    QTest::addColumn<bool>("toggle");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("events");
    QTest::addColumn<QStringList>("log");
    QTest::addColumn<int>("afterwards");
    const QString pressed = "pressed() in 1";
    QTest::newRow("press") << false << 0 << "p" << QStringList{pressed, whole.arg(1)} << 1;
    QTest::newRow("press, focused") << false << 2 << "p" << QStringList{pressed, whole.arg(1)} << 1;
    QTest::newRow("press outside") << false << 0 << "P" << QStringList{pressed, whole.arg(1)} << 1;
    QTest::newRow("press, disabled") << false << 3 << "p" << QStringList() << 3;
    QTest::newRow("release") << false << 1 << "r" << QStringList{"clicked() in 1", whole.arg(2)} << 2;
    QTest::newRow("release without a press") << false << 0 << "r" << QStringList{"clicked() in 0", whole.arg(2)} << 2;
    QTest::newRow("release outside") << false << 1 << "R" << QStringList{whole.arg(2)} << 2;
    QTest::newRow("release, disabled") << false << 3 << "r" << QStringList() << 3;
    QTest::newRow("tap") << false << 0 << "pr" << QStringList{pressed, whole.arg(1), "clicked() in 1", whole.arg(2)}
                         << 2;
    QTest::newRow("press inside, release outside")
        << false << 0 << "pR" << QStringList{pressed, whole.arg(1), whole.arg(2)} << 2;
    QTest::newRow("tap, disabled") << false << 3 << "pr" << QStringList() << 3;
    QTest::newRow("toggle: press") << true << 0 << "p" << QStringList{pressed, whole.arg(1)} << 1;
    QTest::newRow("toggle: tap") << true << 0 << "pr"
                                 << QStringList{pressed, whole.arg(1), "toggled(true) in 1", whole.arg(2)} << 2;
    QTest::newRow("toggle: two taps") << true << 0 << "prpr"
                                      << QStringList{pressed, whole.arg(1), "toggled(true) in 1",  whole.arg(2),
                                                     pressed, whole.arg(1), "toggled(false) in 1", whole.arg(2)}
                                      << 2;
    QTest::newRow("toggle: release outside") << true << 1 << "R" << QStringList{whole.arg(2)} << 2;
    QTest::newRow("toggle: tap, disabled") << true << 3 << "pr" << QStringList() << 3;
}

// Capital letters stand for points outside.
void TestImageButton::stylus()
{
    QFETCH(bool, toggle);
    QFETCH(int, state);
    QFETCH(QString, events);
    QFETCH(QStringList, log);
    QFETCH(int, afterwards);
    Scene scene;
    if (toggle)
        scene.button.setToggle();
    QVERIFY(scene.activate());
    scene.button.state = state;
    for (const QChar event : events) {
        const QPointF at = event.isUpper() ? QPointF(100, 5) : QPointF(5, 5);
        if (event.toLower() == 'p')
            press(&scene.button, at);
        else
            release(&scene.button, at);
    }
    QCOMPARE(scene.recorder.take(), log);
    QCOMPARE(scene.button.state, afterwards);
    QCOMPARE(scene.button.toggledState(), log.join(' ').count("toggled") == 1);
}

void TestImageButton::stylusReleasePoints_data()
{
    QTest::addColumn<QPointF>("at");
    QTest::addColumn<bool>("inside");
    QTest::newRow("top left") << QPointF(0, 0) << true;
    QTest::newRow("bottom right") << QPointF(19, 20) << true;
    QTest::newRow("left of it") << QPointF(-1, 0) << false;
    QTest::newRow("above it") << QPointF(0, -1) << false;
    QTest::newRow("right of it") << QPointF(20, 20) << false;
    QTest::newRow("below it") << QPointF(19, 21) << false;
    QTest::newRow("far away") << QPointF(1e6, 1e6) << false;
}

void TestImageButton::stylusReleasePoints()
{
    QFETCH(QPointF, at);
    QFETCH(bool, inside);
    Button button;
    button.resize(20, 21);
    Recorder recorder;
    button.watch(recorder);
    press(&button, {5, 5}, Qt::RightButton);
    release(&button, at, Qt::RightButton);
    QCOMPARE(recorder.log.contains("clicked() in 1"), inside);
    QCOMPARE(button.state, 2);
}

void TestImageButton::stylusIsNotPassedOn()
{
    Receiver parent;
    Button button(&parent, "play");
    for (const int state : {0, 3}) {
        button.state = state;
        press(&button, {5, 5});
        release(&button, {5, 5});
        release(&button, {500, 5});
    }
    QCOMPARE(parent.received, QStringList());
}

void TestImageButton::stylusThroughTheWindow()
{
    Scene scene;
    QVERIFY(scene.activate());
    QWindow* const handle = scene.window.windowHandle();
    QTest::mousePress(handle, Qt::LeftButton, {}, QPoint(15, 15));
    QVERIFY(scene.button.hasFocus());
    QCOMPARE(scene.recorder.take(), QStringList({whole.arg(2), "pressed() in 1", whole.arg(1)}));
    QTest::mouseRelease(handle, Qt::LeftButton, {}, QPoint(15, 15));
    QCOMPARE(scene.recorder.take(), QStringList({"clicked() in 1", whole.arg(2)}));
    scene.other.setFocus();
    QTRY_VERIFY(scene.other.hasFocus());
    QCOMPARE(scene.button.state, 0);
}

void TestImageButton::keys_data()
{
    QTest::addColumn<bool>("toggle");
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("code");
    QTest::addColumn<QStringList>("pressLog");
    QTest::addColumn<int>("pressState");
    QTest::addColumn<QStringList>("releaseLog");
    const QStringList nothing;
    const QStringList released{"clicked() in 2", whole.arg(2)};
    QTest::newRow("Return") << false << 2 << int(Qt::Key_Return) << QStringList{"pressed() in 1", whole.arg(1)} << 1
                            << released;
    QTest::newRow("Return, not focused") << false << 0 << int(Qt::Key_Return)
                                         << QStringList{"pressed() in 1", whole.arg(1)} << 1 << released;
    QTest::newRow("Return, disabled") << false << 3 << int(Qt::Key_Return) << nothing << 3 << released;
    QTest::newRow("Return, toggle") << true << 2 << int(Qt::Key_Return)
                                    << QStringList{"pressed() in 1", "toggled(true) in 1", whole.arg(1)} << 1
                                    << released;
    QTest::newRow("Return, toggle, disabled") << true << 3 << int(Qt::Key_Return) << nothing << 3 << released;
    for (const int code : {int(Qt::Key_Space), int(Qt::Key_Enter), int(Qt::Key_Left), int(Qt::Key_A)}) {
        QTest::addRow("%x", unsigned(code))
            << false << 2 << code << QStringList{whole.arg(2)} << 2 << QStringList{whole.arg(2)};
        QTest::addRow("%x, toggle", unsigned(code))
            << true << 0 << code << QStringList{whole.arg(0)} << 0 << QStringList{whole.arg(2)};
        QTest::addRow("%x, disabled", unsigned(code))
            << false << 3 << code << QStringList{whole.arg(3)} << 3 << QStringList{whole.arg(2)};
    }
    for (const int code : {int(Qt::Key_Escape), 0x2104, 0x2109}) {
        QTest::addRow("%x", unsigned(code))
            << false << 1 << code << QStringList{whole.arg(1)} << 1 << QStringList{whole.arg(2)};
        QTest::addRow("%x, disabled", unsigned(code))
            << false << 3 << code << QStringList{whole.arg(3)} << 3 << QStringList{whole.arg(2)};
    }
}

void TestImageButton::keys()
{
    QFETCH(bool, toggle);
    QFETCH(int, state);
    QFETCH(int, code);
    QFETCH(QStringList, pressLog);
    QFETCH(int, pressState);
    QFETCH(QStringList, releaseLog);
    Scene scene;
    if (toggle)
        scene.button.setToggle();
    QVERIFY(scene.activate());
    scene.button.state = state;
    key(&scene.button, QEvent::KeyPress, code);
    QCOMPARE(scene.recorder.take(), pressLog);
    QCOMPARE(scene.button.state, pressState);
    QCOMPARE(scene.button.toggledState(), pressLog.contains("toggled(true) in 1"));
    key(&scene.button, QEvent::KeyRelease, code);
    QCOMPARE(scene.recorder.take(), releaseLog);
    QCOMPARE(scene.button.state, 2);
    QCOMPARE(scene.button.toggledState(), pressLog.contains("toggled(true) in 1"));
}

void TestImageButton::keysForTheParent_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<bool>("accepts");
    QTest::addColumn<bool>("disabled");
    for (const int code : {int(Qt::Key_Escape), 0x2104, 0x2105, 0x2106, 0x2107, 0x2108, 0x2109})
        for (const bool accepts : {false, true})
            for (const bool disabled : {false, true})
                QTest::addRow("%x, %s%s", unsigned(code), accepts ? "accepted" : "not accepted",
                              disabled ? ", disabled" : "")
                    << code << accepts << disabled;
}

void TestImageButton::keysForTheParent()
{
    QFETCH(int, code);
    QFETCH(bool, accepts);
    QFETCH(bool, disabled);
    Window window;
    Receiver parent(&window);
    Button button(&parent, "play");
    button.resize(20, 21);
    QVERIFY(window.expose());
    const int state = disabled ? 3 : 0;
    button.state = state;
    QVERIFY(window.settle());
    Recorder recorder;
    button.watch(recorder);
    parent.accepts = accepts;
    parent.act = [&] { recorder.add("parent"); };
    key(&button, QEvent::KeyPress, code);
    QCOMPARE(parent.received, QStringList("press of " + QString::number(code, 16)));
    // Handed over first, repainted afterwards.
    QCOMPARE(recorder.take(), QStringList({"parent", whole.arg(state)}));
    key(&button, QEvent::KeyRelease, code);
    QCOMPARE(parent.received.size(), 1);
}

void TestImageButton::keysForTheParentWithoutParent()
{
    Button button;
    for (const int code : {int(Qt::Key_Escape), 0x2104}) {
        QKeyEvent event(QEvent::KeyPress, code, Qt::NoModifier);
        QCoreApplication::sendEvent(&button, &event);
        QVERIFY(event.isAccepted());
    }
    QCOMPARE(button.state, 0);
}

void TestImageButton::keyPassedOnReachesAncestorsOnce()
{
    Receiver window;
    Receiver parent(&window);
    Button button(&parent, "play");
    key(&button, QEvent::KeyPress, Qt::Key_Escape);
    QCOMPARE(parent.received.size(), 1);
    QCOMPARE(window.received.size(), 1);
    parent.accepts = true;
    key(&button, QEvent::KeyPress, Qt::Key_Escape);
    QCOMPARE(parent.received.size(), 2);
    QCOMPARE(window.received.size(), 1);
}

void TestImageButton::keysEndHere_data()
{
    QTest::addColumn<int>("code");
    for (const int code : {int(Qt::Key_Return), int(Qt::Key_Space), int(Qt::Key_Left), 0x1000, 0x2103, 0x210a})
        QTest::addRow("%x", unsigned(code)) << code;
}

void TestImageButton::keysEndHere()
{
    QFETCH(int, code);
    Receiver parent;
    Button button(&parent, "play");
    for (const int state : {0, 3}) {
        button.state = state;
        key(&button, QEvent::KeyPress, code);
        key(&button, QEvent::KeyRelease, code);
    }
    QCOMPARE(parent.received, QStringList());
}

void TestImageButton::focusEvents_data()
{
    QTest::addColumn<bool>("in");
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("afterwards");
    QTest::newRow("in, normal") << true << 0 << 2;
    QTest::newRow("in, pressed") << true << 1 << 2;
    QTest::newRow("in, disabled") << true << 3 << 3;
    QTest::newRow("out, focused") << false << 2 << 0;
    QTest::newRow("out, pressed") << false << 1 << 0;
    QTest::newRow("out, disabled") << false << 3 << 3;
}

void TestImageButton::focusEvents()
{
    QFETCH(bool, in);
    QFETCH(int, state);
    QFETCH(int, afterwards);
    Scene scene;
    QVERIFY(scene.activate());
    scene.button.state = state;
    scene.button.setAutoMask(true);
    scene.recorder.take();
    QFocusEvent event(in ? QEvent::FocusIn : QEvent::FocusOut);
    QCoreApplication::sendEvent(&scene.button, &event);
    QCOMPARE(scene.button.state, afterwards);
    // The toolkit's handler, which looks after the mask, comes last and not at all when the button is disabled.
    const QString mask = "updateMask() in " + QString::number(afterwards);
    QCOMPARE(scene.recorder.take(), state == 3 ? QStringList() : QStringList({whole.arg(afterwards), mask}));
}

void TestImageButton::focusCalls()
{
    Scene scene;
    QVERIFY(scene.activate());
    scene.button.setFocus();
    QVERIFY(scene.button.hasFocus());
    QCOMPARE(scene.button.state, 2);
    // Once for the event and once for the call.
    QCOMPARE(scene.recorder.take(), QStringList({whole.arg(2), whole.arg(2)}));
    scene.button.clearFocus();
    QVERIFY(!scene.button.hasFocus());
    QCOMPARE(scene.button.state, 0);
    QCOMPARE(scene.recorder.take(), QStringList({whole.arg(0), whole.arg(0)}));

    // A disabled button neither takes nor loses it.
    scene.button.setEnabled(false);
    scene.recorder.take();
    scene.button.setFocus();
    QVERIFY(!scene.button.hasFocus());
    scene.button.setEnabled(true);
    scene.button.setFocus();
    scene.button.setEnabled(false);
    scene.recorder.take();
    scene.button.clearFocus();
    QVERIFY(scene.button.hasFocus());
    QCOMPARE(scene.button.state, 3);
    QCOMPARE(scene.recorder.take(), QStringList());
    scene.button.setEnabled(true);
    QCOMPARE(scene.button.state, 2);
}

void TestImageButton::focusCallsInAnInactiveWindow()
{
    QWidget window;
    Button button(&window, "play");
    button.setFocus();
    QCOMPARE(button.state, 2);
    QCOMPARE(window.focusWidget(), &button);
    button.clearFocus();
    QCOMPARE(button.state, 0);
    QVERIFY(!window.focusWidget());
}

void TestImageButton::focusThroughPlainPointer()
{
    Scene scene;
    QVERIFY(scene.activate());
    QWidget& plain = scene.button;
    plain.setFocus();
    QTRY_VERIFY(plain.hasFocus());
    QCOMPARE(scene.button.state, 2);
    plain.clearFocus();
    QCOMPARE(scene.button.state, 0);
    plain.setFocus(Qt::TabFocusReason);
    QCOMPARE(scene.button.state, 2);
    // In this class, too, for callers who give a reason.
    scene.other.setFocus();
    QCOMPARE(scene.button.state, 0);
    scene.button.setFocus(Qt::OtherFocusReason);
    QCOMPARE(scene.button.state, 2);
}

void TestImageButton::focusByTab()
{
    Scene scene;
    QVERIFY(scene.activate());
    QTest::keyPress(&scene.other, Qt::Key_Tab);
    QTRY_VERIFY(scene.button.hasFocus());
    QCOMPARE(scene.button.state, 2);
    QTest::keyPress(&scene.button, Qt::Key_Tab);
    QTRY_VERIFY(!scene.button.hasFocus());
    QCOMPARE(scene.button.state, 0);
}

// A popup is closed by a press outside of it.
void TestImageButton::toolkitHandlers()
{
    Window window;
    QVERIFY(window.expose());
    Button popup(&window, "popup", Qt::WType_Popup);
    popup.setGeometry(20, 20, 30, 30);
    popup.show();
    QVERIFY(QTest::qWaitForWindowExposed(&popup));
    bool visibleInSlot = false;
    connect(&popup, &ImageButton::pressed, &popup, [&] { visibleInSlot = popup.isVisible(); });
    press(&popup, {5, 5});
    QVERIFY(popup.isVisible());
    press(&popup, {100, 100});
    QVERIFY(visibleInSlot);
    QVERIFY(!popup.isVisible());
    // The platform without a display tells that it cannot grab the pointer for a popup.
    Messages::all().clear();
}

void TestImageButton::disabledByAReceiver_data()
{
    QTest::addColumn<bool>("toggle");
    QTest::addColumn<QString>("events");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<int>("state");
    QTest::newRow("stylus press") << false << "p" << QByteArray(SIGNAL(pressed())) << 3;
    QTest::newRow("stylus release") << false << "pr" << QByteArray(SIGNAL(clicked())) << 3;
    QTest::newRow("stylus release, toggle") << true << "pr" << QByteArray(SIGNAL(toggled(bool))) << 3;
    QTest::newRow("press, then the release") << false << "pr" << QByteArray(SIGNAL(pressed())) << 3;
    QTest::newRow("Return") << false << "k" << QByteArray(SIGNAL(pressed())) << 3;
    QTest::newRow("Return, toggle") << true << "k" << QByteArray(SIGNAL(toggled(bool))) << 3;
    QTest::newRow("Return released") << false << "ku" << QByteArray(SIGNAL(clicked())) << 3;
    // A key's release shows it focused, as it does with every disabled button.
    QTest::newRow("Return, then its release") << false << "ku" << QByteArray(SIGNAL(pressed())) << 2;
}

void TestImageButton::disabledByAReceiver()
{
    QFETCH(bool, toggle);
    QFETCH(QString, events);
    QFETCH(QByteArray, signal);
    QFETCH(int, state);
    Button button;
    button.resize(20, 21);
    if (toggle)
        button.setToggle();
    Slots receiver([&] { button.setEnabled(false); });
    connect(&button, signal.constData(), &receiver, SLOT(call()));
    for (const QChar event : events) {
        if (event == 'p')
            press(&button, {5, 5});
        else if (event == 'r')
            release(&button, {5, 5});
        else
            key(&button, event == 'k' ? QEvent::KeyPress : QEvent::KeyRelease, Qt::Key_Return);
    }
    QCOMPARE(receiver.calls, 1);
    QCOMPARE(button.state, state);
}

void TestImageButton::toggledByAReceiver()
{
    Button button;
    button.resize(20, 21);
    button.setToggle();
    QStringList log;
    connect(&button, &ImageButton::toggled, &button, [&](bool on) {
        log << QString::number(on);
        if (on)
            button.changeToggleState(false);
    });
    press(&button, {5, 5});
    release(&button, {5, 5});
    QCOMPARE(log, QStringList({"1", "0"}));
    QVERIFY(!button.toggledState());
}

void TestImageButton::slotsByName()
{
    Button button;
    QWidget& plain = button;
    QVERIFY(QMetaObject::invokeMethod(&plain, "setEnabled", Q_ARG(bool, false)));
    QCOMPARE(button.state, 3);
    QVERIFY(button.isEnabled());
    QVERIFY(QMetaObject::invokeMethod(&plain, "setDisabled", Q_ARG(bool, false)));
    QCOMPARE(button.state, 0);
    QVERIFY(QMetaObject::invokeMethod(&plain, "setFocus"));
    QCOMPARE(button.state, 2);
    QVERIFY(QMetaObject::invokeMethod(&plain, "clearFocus"));
    QCOMPARE(button.state, 0);
}

QTEST_MAIN(TestImageButton)
#include "tst_imagebutton.moc"
