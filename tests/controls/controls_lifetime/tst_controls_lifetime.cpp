#include "controls/controlsfixture.h"
#include "controls/labelimage.h"
#include "controls/labelskin.h"
#include "controls/whineexitbutton.h"
#include "lifetimefixture.h"

#include <QWindow>

using namespace controlstest;

namespace
{

// A widget at (0, 0) of its parent.
template <class Widget>
struct Scene : HeapScene<Widget> {
    Scene() : HeapScene<Widget>("play")
    {
        this->parent->setGeometry(0, 0, 300, 200);
        this->widget->setGeometry(0, 0, 20, 21);
    }
};

template <class Widget>
struct Action {
    const char* name;
    const char* signal;
    std::function<void(Widget*)> before;
    std::function<void(Widget*)> act;
};

void makeToggle(Button* button)
{
    button->setToggle();
}

void pressStylus(Button* button)
{
    press(button, {5, 5});
}

void pressToggle(Button* button)
{
    makeToggle(button);
    pressStylus(button);
}

void liftStylus(Button* button)
{
    release(button, {5, 5});
}

void pressReturn(Button* button)
{
    key(button, QEvent::KeyPress, Qt::Key_Return);
}

void liftReturn(Button* button)
{
    key(button, QEvent::KeyRelease, Qt::Key_Return);
}

const QList<Action<Button>>& buttonActions()
{
    static const QList<Action<Button>> actions{
        {"stylus press", SIGNAL(pressed()), {}, pressStylus},
        {"stylus press, toggle", SIGNAL(pressed()), makeToggle, pressStylus},
        {"stylus release", SIGNAL(clicked()), pressStylus, liftStylus},
        {"stylus release, toggle", SIGNAL(toggled(bool)), pressToggle, liftStylus},
        {"Return", SIGNAL(pressed()), {}, pressReturn},
        {"Return, toggle", SIGNAL(pressed()), makeToggle, pressReturn},
        {"Return, toggle", SIGNAL(toggled(bool)), makeToggle, pressReturn},
        {"Return released", SIGNAL(clicked()), {}, liftReturn},
        {"changeToggleState", SIGNAL(toggled(bool)), {}, [](Button* b) { b->changeToggleState(true); }},
    };
    return actions;
}

const QList<Action<Bar>>& barActions()
{
    static const QList<Action<Bar>> actions{
        {"sendClicked", SIGNAL(exitClicked()), {}, [](Bar* b) { b->sendClicked(); }},
        {"tap on the close button",
         SIGNAL(exitClicked()),
         {},
         [](Bar* b) {
             press(b->closeButton, {5, 5});
             release(b->closeButton, {5, 5});
         }},
        {"Return in the close button",
         SIGNAL(exitClicked()),
         {},
         [](Bar* b) {
             key(b->closeButton, QEvent::KeyPress, Qt::Key_Return);
             key(b->closeButton, QEvent::KeyRelease, Qt::Key_Return);
         }},
    };
    return actions;
}

const QList<Action<WhineExitButton>>& exitActions()
{
    using Exit = WhineExitButton;
    const auto hold = [](Exit* b) { press(b, {5, 5}); };
    static const QList<Action<Exit>> actions{
        {"stylus press", SIGNAL(pressed()), {}, hold},
        {"stylus release", SIGNAL(released()), hold,
         [](Exit* b) {
             release(b, {5, 5});
         }},
        {"stylus release", SIGNAL(clicked()), hold,
         [](Exit* b) {
             release(b, {5, 5});
         }},
        {"space", SIGNAL(pressed()), {}, [](Exit* b) { key(b, QEvent::KeyPress, Qt::Key_Space); }},
        {"space released", SIGNAL(released()), [](Exit* b) { key(b, QEvent::KeyPress, Qt::Key_Space); },
         [](Exit* b) { key(b, QEvent::KeyRelease, Qt::Key_Space); }},
        {"focus leaves it while held", SIGNAL(released()), hold,
         [](Exit* b) {
             QFocusEvent event(QEvent::FocusOut);
             QCoreApplication::sendEvent(b, &event);
         }},
    };
    return actions;
}

template <class Widget>
void addRows(const QList<Action<Widget>>& actions)
{
    QTest::addColumn<int>("action");
    QTest::addColumn<int>("victim");
    for (int i = 0; i < actions.size(); ++i)
        for (const Victim victim : {Sender, Parent, TopLevel})
            QTest::addRow("%s, %s deletes %s", actions[i].name, actions[i].signal + 1, nameOf(victim))
                << i << int(victim);
}

// Whether the widget ends with one call of the receiver.
template <class Widget>
bool dies(const Action<Widget>& action, Victim victim, bool inAShownWindow)
{
    Scene<Widget> scene;
    if (inAShownWindow && !scene.window->activate())
        return false;
    if (action.before)
        action.before(scene.widget);
    Executioner executioner(scene.victim(victim));
    QObject::connect(scene.widget, action.signal, &executioner, SLOT(execute()));
    action.act(scene.widget);
    return executioner.calls == 1 && !scene.widget;
}

} // namespace

// Receivers that delete the sender, its parent or its window.
class TestControlsLifetime : public ControlsTest
{
    Q_OBJECT

private slots:
    void buttonSignals_data() { addRows(buttonActions()); }
    void buttonSignals();
    void barSignals_data() { addRows(barActions()); }
    void barSignals();
    void exitButtonSignals_data() { addRows(exitActions()); }
    void exitButtonSignals();
    void throughTheWindow_data();
    void throughTheWindow();
    void nothingMoreIsEmitted();

    void parentDeletesAtAKey_data();
    void parentDeletesAtAKey();

    void withoutCloseButton();
    void buttonWithoutItsFilter();
    void labelsGoWithTheirPictures();
};

void TestControlsLifetime::buttonSignals()
{
    QFETCH(int, action);
    QFETCH(int, victim);
    for (const bool inAShownWindow : {false, true})
        QVERIFY(dies(buttonActions()[action], Victim(victim), inAShownWindow));
}

void TestControlsLifetime::barSignals()
{
    QFETCH(int, action);
    QFETCH(int, victim);
    for (const bool inAShownWindow : {false, true})
        QVERIFY(dies(barActions()[action], Victim(victim), inAShownWindow));
}

void TestControlsLifetime::exitButtonSignals()
{
    QFETCH(int, action);
    QFETCH(int, victim);
    for (const bool inAShownWindow : {false, true})
        QVERIFY(dies(exitActions()[action], Victim(victim), inAShownWindow));
}

void TestControlsLifetime::throughTheWindow_data()
{
    QTest::addColumn<int>("victim");
    for (const Victim victim : {Sender, Parent, TopLevel})
        QTest::addRow("clicked() deletes %s", nameOf(victim)) << int(victim);
}

// With all that the toolkit does around a click.
void TestControlsLifetime::throughTheWindow()
{
    QFETCH(int, victim);
    Scene<Button> scene;
    QVERIFY(scene.window->activate());
    Executioner executioner(scene.victim(Victim(victim)));
    connect(scene.widget, SIGNAL(clicked()), &executioner, SLOT(execute()));
    QTest::mousePress(scene.window->windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
    QVERIFY(scene.widget);
    QTest::mouseRelease(scene.window->windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
    QCOMPARE(executioner.calls, 1);
    QVERIFY(!scene.widget);
}

void TestControlsLifetime::nothingMoreIsEmitted()
{
    Scene<Button> scene;
    scene.widget->setToggle();
    Executioner executioner(scene.widget);
    connect(scene.widget, SIGNAL(pressed()), &executioner, SLOT(execute()));
    int toggles = 0;
    connect(scene.widget.data(), &ImageButton::toggled, this, [&] { ++toggles; });
    pressReturn(scene.widget);
    QVERIFY(!scene.widget);
    QCOMPARE(toggles, 0);
}

void TestControlsLifetime::parentDeletesAtAKey_data()
{
    QTest::addColumn<bool>("button");
    QTest::addColumn<bool>("accepts");
    for (const bool button : {false, true})
        for (const bool accepts : {false, true})
            QTest::addRow("%s, %s", button ? "the button" : "itself", accepts ? "accepted" : "not accepted")
                << button << accepts;
}

void TestControlsLifetime::parentDeletesAtAKey()
{
    QFETCH(bool, button);
    QFETCH(bool, accepts);
    Window window;
    QPointer<Receiver> parent = new Receiver(&window);
    QPointer<Button> child = new Button(parent, "play");
    parent->accepts = accepts;
    // Not from within the parent's own handler, which would be the parent's business.
    struct Killer : QObject {
        QPointer<QWidget> victim;
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() != QEvent::KeyPress)
                return false;
            delete victim;
            return true;
        }
    };
    Killer killer;
    killer.victim = button ? static_cast<QWidget*>(child) : parent;
    parent->installEventFilter(&killer);
    key(child, QEvent::KeyPress, Qt::Key_Escape);
    QVERIFY(!child);
    QCOMPARE(parent.isNull(), !button);
}

void TestControlsLifetime::withoutCloseButton()
{
    Bar bar;
    delete bar.closeButton;
    QVERIFY(!bar.closeButton);
    bar.setTitleBarText("title");
    bar.setFileNameText("name");
    bar.sendClicked();
    bar.grab();
}

void TestControlsLifetime::buttonWithoutItsFilter()
{
    // The parent that the button was born with is no longer its parent, nor there at all.
    auto parent = std::make_unique<QWidget>();
    QWidget other;
    Button button(parent.get(), "play");
    button.setParent(&other);
    parent.reset();
    pressStylus(&button);
    key(&button, QEvent::KeyPress, Qt::Key_Escape);
    liftStylus(&button);
    QCOMPARE(button.state, 2);
}

void TestControlsLifetime::labelsGoWithTheirPictures()
{
    QWidget parent;
    auto* const label = new LabelImage(new QImage(pattern(9, 9)), &parent, "cover");
    label->set_image(pattern(4, 4));
    label->set_image(pattern(5, 5));
    label->setBackgroundPixmap(pixmap(pattern(40, 40)));
    label->setBackgroundPixmap(pixmap(pattern(50, 40)));
    delete label;
    delete new LabelImage(&parent);
    auto* const text = new LabelSkin(&parent, "text");
    text->setText("text");
    QVERIFY(parent.findChildren<QWidget*>().size() == 1);
}

QTEST_MAIN(TestControlsLifetime)
#include "tst_controls_lifetime.moc"
