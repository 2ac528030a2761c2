#include "lifetimefixture.h"
#include "media/timeskin.h"
#include "media/volumefixture.h"

#include <QWindow>

#include <memory>

using namespace mediatest;

namespace
{

// A slider at (0, 0) of its parent. Range 0 to 19, value 7 at pixel 70.
struct SliderScene : HeapScene<Slider> {
    SliderScene() : HeapScene("Seek")
    {
        widget->setRange(0, 19);
        widget->setSteps(1, 3);
        widget->setValue(7);
        recorder.watchSignals(widget);
    }

    Recorder recorder;
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

// A volume panel with level 5 whose mute_off button shows, and the slider in it.
struct VolumeScene : HeapScene<Volume> {
    VolumeScene() : HeapScene("Volume", "volume")
    {
        widget->set_volumeRange(0, 10, 2);
        widget->set_volumeValue(5);
        slider = widget->slider;
    }

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

} // namespace

// Receivers that delete the sender, its parent or its window, and receivers that call back.
class TestMediaLifetime : public QuietTest
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
        what.before(scene.widget);
    QVERIFY(scene.widget);
    scene.recorder.take();
    const QPointer<QWidget> condemned = scene.victim(Victim(victim));
    int seen = 0;
    const auto maybeDelete = [&] {
        if (scene.recorder.log.last() == what.line && ++seen == what.occurrence)
            delete condemned;
    };
    connect(scene.widget, &SliderSkin::valueChanged, &scene.recorder, maybeDelete);
    connect(scene.widget, &SliderSkin::sliderMoved, &scene.recorder, maybeDelete);
    connect(scene.widget, &SliderSkin::sliderPressed, &scene.recorder, maybeDelete);
    connect(scene.widget, &SliderSkin::seekReleased, &scene.recorder, maybeDelete);
    what.act(scene.widget);
    QVERIFY(!condemned);
    QVERIFY(!scene.widget);
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
    QVERIFY(scene.window->expose());
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
    QVERIFY(scene.window->expose());
    const QPointer<QWidget> condemned = scene.victim(Victim(victim));
    const auto maybeDelete = [&] {
        if (scene.recorder.log.last() == line)
            delete condemned;
    };
    connect(scene.widget, &SliderSkin::valueChanged, &scene.recorder, maybeDelete);
    connect(scene.widget, &SliderSkin::sliderMoved, &scene.recorder, maybeDelete);
    connect(scene.widget, &SliderSkin::sliderPressed, &scene.recorder, maybeDelete);
    connect(scene.widget, &SliderSkin::seekReleased, &scene.recorder, maybeDelete);
    QWindow* window = scene.window->windowHandle();
    QTest::mousePress(window, Qt::LeftButton, {}, QPoint(74, 5));
    QTest::mouseMove(window, QPoint(94, 5));
    QTest::mouseRelease(window, Qt::LeftButton, {}, QPoint(94, 5));
    QVERIFY(!scene.widget);
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
        what.before(scene.widget);
    QVERIFY(scene.widget);
    const QPointer<QWidget> condemned = scene.victim(Victim(victim));
    Executioner executioner(condemned);
    QObject* sender = ofSlider ? static_cast<QObject*>(scene.slider) : scene.widget;
    QVERIFY(connect(sender, what.signal, &executioner, SLOT(execute())));
    what.act(scene.widget);
    QCOMPARE(executioner.calls, 1);
    QVERIFY(!condemned);
    QVERIFY(!scene.widget && !scene.slider);
}

void TestMediaLifetime::volumeSignals()
{
    VolumeScene scene;
    QCOMPARE(scene.widget->size(), QSize(120, 40));
    runVolume(scene, volumeActions(), false);
}

void TestMediaLifetime::volumeSignalsInAShownWindow_data()
{
    volumeSignals_data();
}

void TestMediaLifetime::volumeSignalsInAShownWindow()
{
    VolumeScene scene;
    QVERIFY(scene.window->expose());
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
        what.before(scene.widget);
    Executioner executioner(scene.slider);
    QVERIFY(connect(scene.slider, what.signal, &executioner, SLOT(execute())));
    what.act(scene.widget);
    QCOMPARE(executioner.calls, 1);
    QVERIFY(scene.widget && !scene.slider);
    QVERIFY(!scene.widget->slider);
    scene.widget->grab();
}

void TestMediaLifetime::panelWithoutLevel()
{
    VolumeScene scene;
    // Also where nobody is to hear of it.
    scene.slider->blockSignals(true);
    delete scene.slider;
    QVERIFY(!scene.widget->slider);
    scene.widget->set_volumeRange(0, 10, 1);
    scene.widget->set_volumeValue(4);
    scene.widget->change_muteButton(true);
    scene.widget->change_volumebutton();
    scene.widget->button_event(scene.widget, "mute_off");
    scene.widget->setAlphaOverride(9);
    scene.widget->setBackgroundPixmap(pixmap(pattern(50, 50)));
    QFocusEvent in(QEvent::FocusIn);
    QVERIFY(!static_cast<QObject*>(scene.widget)->eventFilter(scene.widget, &in));
    scene.widget->grab();
}

// The panel takes a new slider, and lets go of the old one for good.
void TestMediaLifetime::sliderReplaced()
{
    VolumeScene scene;
    scene.widget->init_volumeskin("Volume");
    QVERIFY(!scene.slider);
    scene.slider = scene.widget->slider;
    QCOMPARE(scene.widget->findChildren<SliderSkin*>(), QList<SliderSkin*>{scene.slider});
    delete scene.slider;
    QVERIFY(!scene.widget->slider);
    scene.widget->set_volumeValue(3);
    scene.widget->init_volumeskin("Volume");
    QVERIFY(scene.widget->slider);
}

// The rest of the move counts in the new range.
void TestMediaLifetime::rangeChangedWhileMoved()
{
    SliderScene scene;
    hold(scene.widget);
    connect(scene.widget, &SliderSkin::sliderMoved, scene.widget, [&] { scene.widget->setRange(0, 5); });
    scene.recorder.take();
    move(scene.widget, {124, 5});
    QCOMPARE(scene.widget->value(), 3);
    QCOMPARE(scene.widget->sliderVal, 3);
    QCOMPARE(scene.widget->sliderPos, scene.widget->positionFromValue(3));
    QCOMPARE(scene.recorder.log.last(), QString("valueChanged(3)"));
}

void TestMediaLifetime::disabledWhilePressed()
{
    SliderScene scene;
    connect(scene.widget, &SliderSkin::sliderPressed, scene.widget, [&] { scene.widget->setDisable(true); });
    press(scene.widget, {120, 5});
    move(scene.widget, {30, 5});
    release(scene.widget, {30, 5});
    QCOMPARE(scene.recorder.take(), (QStringList{"sliderMoved(12)", "sliderPressed()"}));
    QCOMPARE(int(scene.widget->state), int(SliderState::Inactive));
}

void TestMediaLifetime::disabledWhileMoved()
{
    SliderScene scene;
    hold(scene.widget);
    connect(scene.widget, &SliderSkin::sliderMoved, scene.widget, [&] { scene.widget->setDisable(true); });
    scene.recorder.take();
    move(scene.widget, {94, 5});
    move(scene.widget, {34, 5});
    release(scene.widget, {34, 5});
    QCOMPARE(scene.recorder.take(), (QStringList{"sliderMoved(9)", "valueChanged(9)", "valueChanged(9)"}));
    QCOMPARE(int(scene.widget->state), int(SliderState::Inactive));
}

void TestMediaLifetime::valueSetInValueChanged()
{
    SliderScene scene;
    connect(scene.widget, &SliderSkin::valueChanged, scene.widget, [&](unsigned int value) {
        if (value == 9)
            scene.widget->setValue(2);
    });
    scene.widget->setValue(9);
    QCOMPARE(scene.recorder.take(), (QStringList{"valueChanged(9)", "valueChanged(2)"}));
    QCOMPARE(scene.widget->value(), 2);
    QCOMPARE(scene.widget->sliderVal, 2);
    QCOMPARE(scene.widget->sliderPos, 20);
}

void TestMediaLifetime::setValueInitInValueChanged()
{
    SliderScene scene;
    int calls = 0;
    connect(scene.widget, &SliderSkin::valueChanged, scene.widget, [&] {
        if (++calls == 1)
            scene.widget->setValueInit(0, 100, 5);
    });
    scene.widget->setValueInit(9, 15, 2);
    QCOMPARE((QList<int>{scene.widget->minValue(), scene.widget->maxValue(), scene.widget->pageStep(),
                         scene.widget->value()}),
             (QList<int>{0, 15, 2, 9}));
    QCOMPARE(scene.widget->sliderPos, 0);
}

void TestMediaLifetime::volumeSetInAppVolumes()
{
    VolumeScene scene;
    QList<unsigned int> volumes;
    connect(scene.widget, &VolumeSkin::app_volumes, scene.widget, [&](unsigned int volume) {
        volumes << volume;
        // Ignored: the slider is dragged until the signal returns.
        scene.widget->set_volumeValue(1);
    });
    holdLevel(scene.widget);
    move(scene.slider, {30, 4});
    release(scene.slider, {30, 4});
    QCOMPARE(volumes, QList<unsigned int>{7});
    QCOMPARE(scene.slider->value(), 7);
}

// The button follows the level that the receiver set.
void TestMediaLifetime::volumeSetInAppMute()
{
    VolumeScene scene;
    connect(scene.widget, &VolumeSkin::app_mute, scene.widget, [&] { scene.widget->set_volumeValue(0); });
    scene.widget->button_event(scene.widget, "mute_on");
    QCOMPARE(scene.slider->value(), 0);
    QCOMPARE(scene.widget->state("mute_off"), int(Hidden));
    QCOMPARE(scene.widget->state("mute_on"), int(Focus));
}

// The click of a button that is held while the level changes counts, and exactly one button shows in the end.
void TestMediaLifetime::heldButtonAndNewLevel()
{
    VolumeScene scene;
    QStringList log;
    connect(scene.widget, &VolumeSkin::app_mute, this, [&](bool mute) { log << (mute ? "mute" : "sound"); });
    connect(scene.widget, &SkinBase::button_clicked, this, [&](const QObject*, const QString& name) { log << name; });
    holdButton(scene.widget);
    scene.widget->set_volumeValue(3);
    QCOMPARE(log, (QStringList{"mute", "mute_off"}));
    QVERIFY(scene.widget->muted && !scene.widget->buttonHeld);
    QCOMPARE(scene.widget->state("mute_off"), int(Hidden));
    QCOMPARE(scene.widget->state("mute_on"), int(Focus));
    release(scene.widget, VolumeSkins::button);
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
