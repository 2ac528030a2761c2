#include "media/timeskin.h"
#include "media/volumefixture.h"

#include <QWindow>

#include <memory>

using namespace mediatest;

namespace
{

// What a receiver deletes.
enum Victim { Sender, Parent, TopLevel };

const char* nameOf(Victim victim)
{
    return victim == Sender ? "the sender" : victim == Parent ? "its parent" : "its window";
}

// A slider at (0, 0) of a parent in a window, all on the heap. Range 0 to 19, value 7 at pixel 70.
struct SliderScene {
    SliderScene()
    {
        slider->setRange(0, 19);
        slider->setSteps(1, 3);
        slider->setValue(7);
        recorder.watchSignals(slider);
    }
    ~SliderScene() { delete window; }
    Q_DISABLE_COPY_MOVE(SliderScene)

    QWidget* victim(Victim which) const
    {
        return which == Sender ? slider.data() : which == Parent ? parent.data() : window.data();
    }

    Recorder recorder;
    QPointer<QWidget> window = new Window;
    QPointer<QWidget> parent = new QWidget(window);
    QPointer<Slider> slider = new Slider(parent, "Seek");
};

struct SliderAction {
    const char* name;
    // The line of the recorder at whose first occurrence (or second, where told) the receiver deletes.
    QString line;
    std::function<void(Slider*)> before;
    std::function<void(Slider*)> act;
    int occurrence = 1;
};

void hold(Slider* slider)
{
    press(slider, {74, 5});
}

const QList<SliderAction>& sliderActions()
{
    static const QList<SliderAction> actions{
        {"setValue", "valueChanged(9)", {}, [](Slider* s) { s->setValue(9); }},
        {"setValue of the range control", "valueChanged(9)", {}, [](Slider* s) { s->QRangeControl::setValue(9); }},
        {"addStep", "valueChanged(10)", {}, [](Slider* s) { s->addStep(); }},
        {"subtractStep", "valueChanged(4)", {}, [](Slider* s) { s->subtractStep(); }},
        {"addLine", "valueChanged(8)", {}, [](Slider* s) { s->addLine(); }},
        {"subtractLine", "valueChanged(6)", {}, [](Slider* s) { s->subtractLine(); }},
        {"setRange", "valueChanged(3)", {}, [](Slider* s) { s->setRange(0, 3); }},
        {"setMinValue", "valueChanged(9)", {}, [](Slider* s) { s->setMinValue(9); }},
        {"setMaxValue", "valueChanged(3)", {}, [](Slider* s) { s->setMaxValue(3); }},
        {"setValueInit, minimum", "valueChanged(9)", {}, [](Slider* s) { s->setValueInit(9, 15, 2); }},
        {"setValueInit, maximum", "valueChanged(3)", {}, [](Slider* s) { s->setValueInit(0, 3, 2); }},
        {"valueChange", "valueChanged(7)", {}, [](Slider* s) { s->valueChange(); }},
        {"move, the changed value", "valueChanged(9)", hold,
         [](Slider* s) {
             move(s, {94, 5});
         }},
        {"move, told again", "valueChanged(9)", hold,
         [](Slider* s) {
             move(s, {94, 5});
         },
         2},
        {"move within a value", "valueChanged(7)", hold,
         [](Slider* s) {
             move(s, {75, 5});
         }},
        {"move", "sliderMoved(9)", hold,
         [](Slider* s) {
             move(s, {94, 5});
         }},
        {"moveSlider", "sliderMoved(9)", {}, [](Slider* s) { s->moveSlider(90); }},
        {"press on the groove",
         "sliderMoved(12)",
         {},
         [](Slider* s) {
             press(s, {120, 5});
         }},
        {"press on the groove",
         "sliderPressed()",
         {},
         [](Slider* s) {
             press(s, {120, 5});
         }},
        {"press on the bar", "sliderPressed()", {}, hold},
        {"release", "seekReleased(7)", hold,
         [](Slider* s) {
             release(s, {74, 5});
         }},
        {"another press", "seekReleased(7)", hold,
         [](Slider* s) {
             press(s, {74, 5}, Qt::RightButton);
         }},
        {"resetState", "seekReleased(7)", hold, [](Slider* s) { s->resetState(); }},
    };
    return actions;
}

// A volume panel with level 5 whose mute_off button shows, in a parent in a window, all on the heap.
struct VolumeScene {
    VolumeScene()
    {
        panel->set_volumeRange(0, 10, 2);
        panel->set_volumeValue(5);
        slider = panel->slider;
    }
    ~VolumeScene() { delete window; }
    Q_DISABLE_COPY_MOVE(VolumeScene)

    QWidget* victim(Victim which) const
    {
        return which == Sender ? panel.data() : which == Parent ? parent.data() : window.data();
    }

    QPointer<QWidget> window = new Window("volume");
    QPointer<QWidget> parent = new QWidget(window);
    QPointer<Volume> panel = new Volume(parent, "Volume");
    QPointer<SliderSkin> slider;
};

struct VolumeAction {
    const char* name;
    const char* signal;
    std::function<void(Volume*)> before;
    std::function<void(Volume*)> act;
};

void holdLevel(Volume* panel)
{
    press(panel->slider, {22, 4});
}

void holdButton(Volume* panel)
{
    press(panel, VolumeSkins::button);
}

const QList<VolumeAction>& volumeActions()
{
    static const QList<VolumeAction> actions{
        {"release of a drag", SIGNAL(app_volumes(unsigned int)),
         [](Volume* v) {
             holdLevel(v);
             move(v->slider, {30, 4});
         },
         [](Volume* v) {
             release(v->slider, {30, 4});
         }},
        {"release without a move", SIGNAL(app_volumes(unsigned int)), holdLevel,
         [](Volume* v) {
             release(v->slider, {22, 4});
         }},
        {"another press", SIGNAL(app_volumes(unsigned int)), holdLevel,
         [](Volume* v) {
             press(v->slider, {40, 4});
         }},
        {"release of the button", SIGNAL(app_mute(bool)), holdButton,
         [](Volume* v) {
             release(v, {10, 10});
         }},
        {"release of the key", SIGNAL(app_mute(bool)), [](Volume* v) { key(v, QEvent::KeyPress, Qt::Key_Return); },
         [](Volume* v) { key(v, QEvent::KeyRelease, Qt::Key_Return); }},
        {"releaseButton", SIGNAL(app_mute(bool)), holdButton, [](Volume* v) { v->releaseButton("mute_off"); }},
        {"button_event", SIGNAL(app_mute(bool)), {}, [](Volume* v) { v->button_event(v, "mute_off"); }},
        {"button_event, unmuting", SIGNAL(app_mute(bool)), {}, [](Volume* v) { v->button_event(v, "mute_on"); }},
        {"button_clicked", SIGNAL(app_mute(bool)), {}, [](Volume* v) { emit v->button_clicked(v, "mute_off"); }},
        {"hideButton of the held button", SIGNAL(app_mute(bool)), holdButton,
         [](Volume* v) { v->hideButton("mute_off"); }},
        {"set_volumeValue with a held button", SIGNAL(app_mute(bool)), holdButton,
         [](Volume* v) { v->set_volumeValue(3); }},
        {"change_volumebutton with a held button", SIGNAL(app_mute(bool)), holdButton,
         [](Volume* v) { v->change_volumebutton(); }},
        {"change_muteButton(true) with a held button", SIGNAL(app_mute(bool)), holdButton,
         [](Volume* v) { v->change_muteButton(true); }},
        {"change_muteButton(false) with a held button", SIGNAL(app_mute(bool)), holdButton,
         [](Volume* v) { v->change_muteButton(false); }},
        {"release of the button", SIGNAL(button_clicked(const QObject*, const QString)), holdButton,
         [](Volume* v) {
             release(v, {10, 10});
         }},
        {"set_volumeValue with a held button", SIGNAL(button_clicked(const QObject*, const QString)), holdButton,
         [](Volume* v) { v->set_volumeValue(0); }},
        {"release of a drag with a held button", SIGNAL(app_mute(bool)),
         [](Volume* v) {
             holdLevel(v);
             holdButton(v);
         },
         [](Volume* v) {
             release(v->slider, {22, 4});
         }},
    };
    return actions;
}

// The same for signals of the slider inside the panel.
const QList<VolumeAction>& levelActions()
{
    static const QList<VolumeAction> actions{
        {"set_volumeValue", SIGNAL(valueChanged(unsigned int)), {}, [](Volume* v) { v->set_volumeValue(3); }},
        {"set_volumeRange", SIGNAL(valueChanged(unsigned int)), {}, [](Volume* v) { v->set_volumeRange(0, 3, 1); }},
        {"set_volumeRange, minimum",
         SIGNAL(valueChanged(unsigned int)),
         {},
         [](Volume* v) { v->set_volumeRange(8, 10, 1); }},
        {"move", SIGNAL(valueChanged(unsigned int)), holdLevel,
         [](Volume* v) {
             move(v->slider, {30, 4});
         }},
        {"move", SIGNAL(sliderMoved(int)), holdLevel,
         [](Volume* v) {
             move(v->slider, {30, 4});
         }},
        {"press on the bar", SIGNAL(sliderPressed()), {}, holdLevel},
        {"press on the groove",
         SIGNAL(sliderPressed()),
         {},
         [](Volume* v) {
             press(v->slider, {40, 4});
         }},
        {"press on the groove",
         SIGNAL(sliderMoved(int)),
         {},
         [](Volume* v) {
             press(v->slider, {40, 4});
         }},
        {"release", SIGNAL(seekReleased(unsigned int)), holdLevel,
         [](Volume* v) {
             release(v->slider, {22, 4});
         }},
    };
    return actions;
}

template <class Action>
void addRows(const QList<Action>& actions, const std::function<QString(const Action&)>& signal)
{
    QTest::addColumn<int>("action");
    QTest::addColumn<int>("victim");
    for (int i = 0; i < actions.size(); ++i)
        for (const Victim victim : {Sender, Parent, TopLevel})
            QTest::addRow("%s, %s deletes %s", actions[i].name, qPrintable(signal(actions[i])), nameOf(victim))
                << i << int(victim);
}

// Deletes when it is told to, once.
class Executioner : public QObject
{
    Q_OBJECT

public:
    explicit Executioner(QWidget* victim) : m_victim(victim) {}
    int calls = 0;

public slots:
    void execute()
    {
        ++calls;
        delete m_victim;
    }

private:
    QPointer<QWidget> m_victim;
};

} // namespace

// Receivers that delete the sender, its parent or its window, and receivers that call back.
class TestMediaLifetime : public QObject
{
    Q_OBJECT

private slots:
    // Once for all rows, which only read the skins: writing them costs more than most rows.
    void initTestCase()
    {
        installation = std::make_unique<Installation>();
        SliderSkins::install(*installation);
        VolumeSkins::install(*installation, "volume");
    }
    void cleanupTestCase() { installation.reset(); }
    void init() { messages = std::make_unique<Messages>(); }
    void cleanup()
    {
        QCoreApplication::processEvents();
        const QStringList printed = Messages::texts();
        messages.reset();
        QCOMPARE(printed, QStringList());
    }

    void sliderSignals_data();
    void sliderSignals();
    void sliderSignalsInAShownWindow_data();
    void sliderSignalsInAShownWindow();
    void sliderThroughTheWindow_data();
    void sliderThroughTheWindow();
    void volumeSignals_data();
    void volumeSignals();
    void volumeSignalsInAShownWindow_data();
    void volumeSignalsInAShownWindow();
    void levelSignals_data();
    void levelSignals();
    void levelDeletedAlone_data();
    void levelDeletedAlone();
    void panelWithoutLevel();
    void sliderReplaced();

    void rangeChangedWhileMoved();
    void disabledWhilePressed();
    void disabledWhileMoved();
    void valueSetInValueChanged();
    void setValueInitInValueChanged();
    void volumeSetInAppVolumes();
    void volumeSetInAppMute();
    void heldButtonAndNewLevel();

    void destructorsFreeEverything();

private:
    void runSlider(SliderScene& scene);
    void runVolume(VolumeScene& scene, const QList<VolumeAction>& actions, bool ofSlider);

    std::unique_ptr<Installation> installation;
    std::unique_ptr<Messages> messages;
};

void TestMediaLifetime::sliderSignals_data()
{
    addRows<SliderAction>(sliderActions(), [](const SliderAction& action) { return action.line; });
}

void TestMediaLifetime::runSlider(SliderScene& scene)
{
    QFETCH(int, action);
    QFETCH(int, victim);
    const SliderAction& what = sliderActions().at(action);
    if (what.before)
        what.before(scene.slider);
    QVERIFY(scene.slider);
    scene.recorder.take();
    const QPointer<QWidget> condemned = scene.victim(Victim(victim));
    int seen = 0;
    const auto maybeDelete = [&] {
        if (scene.recorder.log.last() == what.line && ++seen == what.occurrence)
            delete condemned;
    };
    connect(scene.slider, &SliderSkin::valueChanged, &scene.recorder, maybeDelete);
    connect(scene.slider, &SliderSkin::sliderMoved, &scene.recorder, maybeDelete);
    connect(scene.slider, &SliderSkin::sliderPressed, &scene.recorder, maybeDelete);
    connect(scene.slider, &SliderSkin::seekReleased, &scene.recorder, maybeDelete);
    what.act(scene.slider);
    QVERIFY(!condemned);
    QVERIFY(!scene.slider);
    // Nothing is heard of the slider after that.
    QCOMPARE(scene.recorder.log.last(), what.line);
    QCOMPARE(scene.recorder.log.count(what.line), what.occurrence);
}

void TestMediaLifetime::sliderSignals()
{
    SliderScene scene;
    runSlider(scene);
}

void TestMediaLifetime::sliderSignalsInAShownWindow_data()
{
    sliderSignals_data();
}

void TestMediaLifetime::sliderSignalsInAShownWindow()
{
    SliderScene scene;
    QVERIFY(static_cast<Window*>(scene.window.data())->expose());
    runSlider(scene);
}

void TestMediaLifetime::sliderThroughTheWindow_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("victim");
    for (const char* line : {"sliderPressed()", "sliderMoved(9)", "valueChanged(9)", "seekReleased(9)"})
        for (const Victim victim : {Sender, Parent})
            QTest::addRow("%s deletes %s", line, nameOf(victim)) << QString(line) << int(victim);
}

void TestMediaLifetime::sliderThroughTheWindow()
{
    QFETCH(QString, line);
    QFETCH(int, victim);
    SliderScene scene;
    scene.parent->setGeometry(scene.window->rect());
    QVERIFY(static_cast<Window*>(scene.window.data())->expose());
    const QPointer<QWidget> condemned = scene.victim(Victim(victim));
    const auto maybeDelete = [&] {
        if (scene.recorder.log.last() == line)
            delete condemned;
    };
    connect(scene.slider, &SliderSkin::valueChanged, &scene.recorder, maybeDelete);
    connect(scene.slider, &SliderSkin::sliderMoved, &scene.recorder, maybeDelete);
    connect(scene.slider, &SliderSkin::sliderPressed, &scene.recorder, maybeDelete);
    connect(scene.slider, &SliderSkin::seekReleased, &scene.recorder, maybeDelete);
    QWindow* window = scene.window->windowHandle();
    QTest::mousePress(window, Qt::LeftButton, {}, QPoint(74, 5));
    QTest::mouseMove(window, QPoint(94, 5));
    QTest::mouseRelease(window, Qt::LeftButton, {}, QPoint(94, 5));
    QVERIFY(!scene.slider);
    QCOMPARE(scene.recorder.log.last(), line);
}

void TestMediaLifetime::volumeSignals_data()
{
    addRows<VolumeAction>(volumeActions(), [](const VolumeAction& action) { return QString(action.signal).mid(1); });
}

void TestMediaLifetime::runVolume(VolumeScene& scene, const QList<VolumeAction>& actions, bool ofSlider)
{
    QFETCH(int, action);
    QFETCH(int, victim);
    const VolumeAction& what = actions.at(action);
    if (what.before)
        what.before(scene.panel);
    QVERIFY(scene.panel);
    const QPointer<QWidget> condemned = scene.victim(Victim(victim));
    Executioner executioner(condemned);
    QObject* sender = ofSlider ? static_cast<QObject*>(scene.slider) : scene.panel;
    QVERIFY(connect(sender, what.signal, &executioner, SLOT(execute())));
    what.act(scene.panel);
    QCOMPARE(executioner.calls, 1);
    QVERIFY(!condemned);
    QVERIFY(!scene.panel && !scene.slider);
}

void TestMediaLifetime::volumeSignals()
{
    VolumeScene scene;
    QCOMPARE(scene.panel->size(), QSize(120, 40));
    runVolume(scene, volumeActions(), false);
}

void TestMediaLifetime::volumeSignalsInAShownWindow_data()
{
    volumeSignals_data();
}

void TestMediaLifetime::volumeSignalsInAShownWindow()
{
    VolumeScene scene;
    QVERIFY(static_cast<Window*>(scene.window.data())->expose());
    runVolume(scene, volumeActions(), false);
}

void TestMediaLifetime::levelSignals_data()
{
    addRows<VolumeAction>(levelActions(), [](const VolumeAction& action) { return QString(action.signal).mid(1); });
}

void TestMediaLifetime::levelSignals()
{
    VolumeScene scene;
    runVolume(scene, levelActions(), true);
}

void TestMediaLifetime::levelDeletedAlone_data()
{
    QTest::addColumn<int>("action");
    const QList<VolumeAction>& actions = levelActions();
    for (int i = 0; i < actions.size(); ++i)
        QTest::addRow("%s, %s", actions[i].name, actions[i].signal + 1) << i;
}

// A receiver may take the slider out of a panel that lives on.
void TestMediaLifetime::levelDeletedAlone()
{
    QFETCH(int, action);
    VolumeScene scene;
    const VolumeAction& what = levelActions().at(action);
    if (what.before)
        what.before(scene.panel);
    Executioner executioner(scene.slider);
    QVERIFY(connect(scene.slider, what.signal, &executioner, SLOT(execute())));
    what.act(scene.panel);
    QCOMPARE(executioner.calls, 1);
    QVERIFY(scene.panel && !scene.slider);
    QVERIFY(!scene.panel->slider);
    scene.panel->grab();
}

void TestMediaLifetime::panelWithoutLevel()
{
    VolumeScene scene;
    // Also where nobody is to hear of it.
    scene.slider->blockSignals(true);
    delete scene.slider;
    QVERIFY(!scene.panel->slider);
    scene.panel->set_volumeRange(0, 10, 1);
    scene.panel->set_volumeValue(4);
    scene.panel->change_muteButton(true);
    scene.panel->change_volumebutton();
    scene.panel->button_event(scene.panel, "mute_off");
    scene.panel->setAlphaOverride(9);
    scene.panel->setBackgroundPixmap(pixmap(pattern(50, 50)));
    QFocusEvent in(QEvent::FocusIn);
    QVERIFY(!static_cast<QObject*>(scene.panel)->eventFilter(scene.panel, &in));
    scene.panel->grab();
}

// The panel takes a new slider, and lets go of the old one for good.
void TestMediaLifetime::sliderReplaced()
{
    VolumeScene scene;
    scene.panel->init_volumeskin("Volume");
    QVERIFY(!scene.slider);
    scene.slider = scene.panel->slider;
    QCOMPARE(scene.panel->findChildren<SliderSkin*>(), QList<SliderSkin*>{scene.slider});
    delete scene.slider;
    QVERIFY(!scene.panel->slider);
    scene.panel->set_volumeValue(3);
    scene.panel->init_volumeskin("Volume");
    QVERIFY(scene.panel->slider);
}

// The rest of the move counts in the new range.
void TestMediaLifetime::rangeChangedWhileMoved()
{
    SliderScene scene;
    hold(scene.slider);
    connect(scene.slider, &SliderSkin::sliderMoved, scene.slider, [&] { scene.slider->setRange(0, 5); });
    scene.recorder.take();
    move(scene.slider, {124, 5});
    QCOMPARE(scene.slider->value(), 3);
    QCOMPARE(scene.slider->sliderVal, 3);
    QCOMPARE(scene.slider->sliderPos, scene.slider->positionFromValue(3));
    QCOMPARE(scene.recorder.log.last(), QString("valueChanged(3)"));
}

void TestMediaLifetime::disabledWhilePressed()
{
    SliderScene scene;
    connect(scene.slider, &SliderSkin::sliderPressed, scene.slider, [&] { scene.slider->setDisable(true); });
    press(scene.slider, {120, 5});
    move(scene.slider, {30, 5});
    release(scene.slider, {30, 5});
    QCOMPARE(scene.recorder.take(), (QStringList{"sliderMoved(12)", "sliderPressed()"}));
    QCOMPARE(int(scene.slider->state), int(SliderState::Inactive));
}

void TestMediaLifetime::disabledWhileMoved()
{
    SliderScene scene;
    hold(scene.slider);
    connect(scene.slider, &SliderSkin::sliderMoved, scene.slider, [&] { scene.slider->setDisable(true); });
    scene.recorder.take();
    move(scene.slider, {94, 5});
    move(scene.slider, {34, 5});
    release(scene.slider, {34, 5});
    QCOMPARE(scene.recorder.take(), (QStringList{"sliderMoved(9)", "valueChanged(9)", "valueChanged(9)"}));
    QCOMPARE(int(scene.slider->state), int(SliderState::Inactive));
}

void TestMediaLifetime::valueSetInValueChanged()
{
    SliderScene scene;
    connect(scene.slider, &SliderSkin::valueChanged, scene.slider, [&](unsigned int value) {
        if (value == 9)
            scene.slider->setValue(2);
    });
    scene.slider->setValue(9);
    QCOMPARE(scene.recorder.take(), (QStringList{"valueChanged(9)", "valueChanged(2)"}));
    QCOMPARE(scene.slider->value(), 2);
    QCOMPARE(scene.slider->sliderVal, 2);
    QCOMPARE(scene.slider->sliderPos, 20);
}

void TestMediaLifetime::setValueInitInValueChanged()
{
    SliderScene scene;
    int calls = 0;
    connect(scene.slider, &SliderSkin::valueChanged, scene.slider, [&] {
        if (++calls == 1)
            scene.slider->setValueInit(0, 100, 5);
    });
    scene.slider->setValueInit(9, 15, 2);
    QCOMPARE((QList<int>{scene.slider->minValue(), scene.slider->maxValue(), scene.slider->pageStep(),
                         scene.slider->value()}),
             (QList<int>{0, 15, 2, 9}));
    QCOMPARE(scene.slider->sliderPos, 0);
}

void TestMediaLifetime::volumeSetInAppVolumes()
{
    VolumeScene scene;
    QList<unsigned int> volumes;
    connect(scene.panel, &VolumeSkin::app_volumes, scene.panel, [&](unsigned int volume) {
        volumes << volume;
        // Ignored: the slider is dragged until the signal returns.
        scene.panel->set_volumeValue(1);
    });
    holdLevel(scene.panel);
    move(scene.slider, {30, 4});
    release(scene.slider, {30, 4});
    QCOMPARE(volumes, QList<unsigned int>{7});
    QCOMPARE(scene.slider->value(), 7);
}

// The button follows the level that the receiver set.
void TestMediaLifetime::volumeSetInAppMute()
{
    VolumeScene scene;
    connect(scene.panel, &VolumeSkin::app_mute, scene.panel, [&] { scene.panel->set_volumeValue(0); });
    scene.panel->button_event(scene.panel, "mute_on");
    QCOMPARE(scene.slider->value(), 0);
    QCOMPARE(scene.panel->state("mute_off"), int(Hidden));
    QCOMPARE(scene.panel->state("mute_on"), int(Focus));
}

// The click of a button that is held while the level changes counts, and exactly one button shows in the end.
void TestMediaLifetime::heldButtonAndNewLevel()
{
    VolumeScene scene;
    QStringList log;
    connect(scene.panel, &VolumeSkin::app_mute, this, [&](bool mute) { log << (mute ? "mute" : "sound"); });
    connect(scene.panel, &SkinBase::button_clicked, this, [&](const QObject*, const QString& name) { log << name; });
    holdButton(scene.panel);
    scene.panel->set_volumeValue(3);
    QCOMPARE(log, (QStringList{"mute", "mute_off"}));
    QVERIFY(scene.panel->muted && !scene.panel->buttonHeld);
    QCOMPARE(scene.panel->state("mute_off"), int(Hidden));
    QCOMPARE(scene.panel->state("mute_on"), int(Focus));
    release(scene.panel, VolumeSkins::button);
    QCOMPARE(log.size(), 2);
}

// Leaks are seen by the address sanitizer.
void TestMediaLifetime::destructorsFreeEverything()
{
    for (int i = 0; i < 3; ++i) {
        Window window("volume");
        TimeSkin time(&window, "Volume_SLIDER");
        time.do_configloading("Volume_SLIDER");
        auto* panel = new Volume(&window, "Volume");
        panel->init_volumeskin("Volume");
        panel->setBackgroundImage(pattern(9, 9));
        auto* slider = new Slider(&window, "Volume_SLIDER");
        slider->setBackgroundImage(pattern(5, 5));
        slider->do_configloading("Volume_SLIDER");
        QCOMPARE(panel->findChildren<SliderSkin*>().size(), 1);
    }
}

QTEST_MAIN(TestMediaLifetime)
#include "tst_media_lifetime.moc"
