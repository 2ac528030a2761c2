#include "skinbase/skinfixture.h"

using namespace skintest;

namespace
{

// Connected by the signal's text, as applications do.
class Listener : public QObject
{
    Q_OBJECT

public:
    QList<std::pair<const QObject*, QString>> heard;

public slots:
    void button_event(const QObject* panel, const QString name) { heard.append({panel, name}); }
};

// Overrides nothing, so that what tests see is SkinBase alone; counts the key events that it gets from its children.
class KeyCatcher : public QWidget
{
public:
    using QWidget::QWidget;
    int presses = 0;
    int releases = 0;

protected:
    void keyPressEvent(QKeyEvent*) override { ++presses; }
    void keyReleaseEvent(QKeyEvent*) override { ++releases; }
};

constexpr int unhandledKeys[] = {Qt::Key_Up,  Qt::Key_Down,   Qt::Key_Enter,     Qt::Key_Space, Qt::Key_A,
                                 Qt::Key_F1,  Qt::Key_Escape, Qt::Key_Backspace, Qt::Key_Home,  Qt::Key_PageDown,
                                 Qt::Key_End, Qt::Key_Select, Qt::Key_Delete};

} // namespace

class TestSkinBaseInput : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void signalSignature();
    void noSlots();
    void signalConnectedByText();
    void updateStateDoesNothing();
    void updateStateIsNeverCalled();

    void press();
    void pressWhileHeld();
    void pressOfPressedButton();
    void pressUnknown();
    void pressDisabledByName();
    void pressMovesTheFocus();
    void release();
    void releaseOfAnotherButton();
    void releaseNotHeld();
    void releaseHeldButNotPressed();
    void stateAtTheTimeOfTheClick();

    void drawsAfterTheChange();

    void setButtonFocus();
    void setButtonFocusWhileHeld();
    void setButtonFocusAgain();
    void setButtonFocusLeavesOtherStatesAlone();
    void setButtonFocusUnknown();
    void setButtonFocusFindsTheRecordOfTheMap();

    void focusNext_data();
    void focusNext();
    void focusNextCalls();
    void focusPrevCalls();
    void focusNextToAnEqualName();
    void focusNextWithoutCandidate_data();
    void focusNextWithoutCandidate();
    void focusReachesTheLastOfARound();
    void focusRoundTrip();
    void focusTravelOnEmptyPanel();
    void focusTravelWhileHeld();
    void disabledIsSkipped();

    void getFocus();

    void keyCalls_data();
    void keyCalls();
    void returnPressesFocusedButton();
    void returnWithoutFocusedButton();
    void returnPressesEveryFocusButton();
    void returnReleaseReleasesEveryPressedButton();
    void otherReleaseKeepsItHeld();
    void autoRepeatIsNotExamined();
    void keysAreAcceptedAndStayHere_data();
    void keysAreAcceptedAndStayHere();
    void realKeys();
    void arrowKeysWhileHeld();

    void stylusHitsByColour_data();
    void stylusHitsByColour();
    void stylusComparesTheWholePixel_data();
    void stylusComparesTheWholePixel();
    void stylusMaskOfTransparentBlack();
    void stylusIgnoresButtonRectangles();
    void stylusOnDisabledOrHidden_data();
    void stylusOnDisabledOrHidden();
    void stylusPressesFirstMatchByName();
    void stylusPassesDisabledMatch();
    void stylusCalls();
    void anyMouseButton_data();
    void anyMouseButton();
    void stylusLiftedAnywhere_data();
    void stylusLiftedAnywhere();
    void stylusReleaseWithoutPress();
    void secondPressWhileHeld();
    void realStylus();
    void doubleTapClicksTwice();
    void stylusOutsideTheMask_data();
    void stylusOutsideTheMask();
    void stylusTapStates();
    void stylusRepaints();

    void focusEventsRedrawTheFocusedButton();
    void focusEventsWithoutFocusedButton();
    void keyAndStylusMixed();

private:
    std::unique_ptr<Installation> installation;
    std::unique_ptr<Stage> stage;
    Panel* panel = nullptr;
};

void TestSkinBaseInput::init()
{
    installation = std::make_unique<Installation>();
    ThreeButtons::install(*installation);
    stage = std::make_unique<Stage>();
    panel = &stage->panel;
    panel->do_configloading("Control");
    panel->setAlphaOverride(255);
    panel->forget();
}

void TestSkinBaseInput::cleanup()
{
    stage.reset();
    installation.reset();
}

void TestSkinBaseInput::signalSignature()
{
    const QMetaObject& meta = SkinBase::staticMetaObject;
    const int index =
        meta.indexOfSignal(QMetaObject::normalizedSignature("button_clicked(const QObject*,const QString)"));
    QVERIFY(index >= meta.methodOffset());
    QCOMPARE(index, meta.indexOfSignal("button_clicked(const QObject*,QString)"));
    QCOMPARE(meta.method(index).returnType(), int(QMetaType::Void));
}

void TestSkinBaseInput::noSlots()
{
    const QMetaObject& meta = SkinBase::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Signal);
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
}

void TestSkinBaseInput::signalConnectedByText()
{
    Listener listener;
    QVERIFY(connect(panel, SIGNAL(button_clicked(const QObject*, QString)), &listener,
                    SLOT(button_event(const QObject*, QString))));
    panel->pressButton("a");
    panel->releaseButton("a");
    QCOMPARE(listener.heard.size(), 1);
    QCOMPARE(listener.heard[0].first, panel);
    QCOMPARE(listener.heard[0].second, QStringLiteral("a"));
}

void TestSkinBaseInput::updateStateDoesNothing()
{
    QVERIFY(stage->show());
    QCOMPARE(stage->damage([this] { panel->update_state("a"); }), QRegion());
    QCOMPARE(panel->callsOf("update_state").size(), 1);
    QCOMPARE(panel->state("a"), int(Normal));
}

void TestSkinBaseInput::updateStateIsNeverCalled()
{
    QVERIFY(stage->show());
    QVERIFY(stage->focusPanel());
    QTest::keyClick(panel, Qt::Key_Right);
    QTest::keyClick(panel, Qt::Key_Return);
    QTest::mouseClick(panel, Qt::LeftButton, {}, ThreeButtons::pointInB);
    panel->disableButton("a");
    panel->setAlphaOverride(3);
    QVERIFY(panel->clicks.size() == 2);
    QCOMPARE(panel->callsOf("update_state"), QStringList());
}

void TestSkinBaseInput::press()
{
    panel->pressButton("a");
    QCOMPARE(panel->calls, QStringList({"pressButton(a)", "setButtonFocus(a)", "drawButton(a)"}));
    QCOMPARE(panel->state("a"), int(Pressed));
    QCOMPARE(panel->buttonHeld, true);
    QCOMPARE(panel->focused(), QStringLiteral("a"));
    QVERIFY(panel->clicks.isEmpty());
}

void TestSkinBaseInput::pressWhileHeld()
{
    panel->pressButton("a");
    panel->forget();
    panel->pressButton("b");
    QCOMPARE(panel->calls, QStringList("pressButton(b)"));
    QCOMPARE(panel->state("b"), int(Normal));
    QCOMPARE(panel->state("a"), int(Pressed));
    QCOMPARE(panel->focused(), QStringLiteral("a"));
}

void TestSkinBaseInput::pressOfPressedButton()
{
    panel->pressButton("a");
    panel->forget();
    panel->pressButton("a");
    QCOMPARE(panel->calls, QStringList("pressButton(a)"));
    QCOMPARE(panel->state("a"), int(Pressed));
}

void TestSkinBaseInput::pressUnknown()
{
    panel->setButtonFocus("b");
    panel->forget();
    panel->pressButton("z");
    QCOMPARE(panel->calls, QStringList("pressButton(z)"));
    QCOMPARE(panel->buttonHeld, false);
    QCOMPARE(panel->focused(), QStringLiteral("b"));
    QCOMPARE(panel->buttonMap.size(), 3);
}

// Only the stylus looks at the state before it presses.
void TestSkinBaseInput::pressDisabledByName()
{
    panel->disableButton("a");
    panel->pressButton("a");
    QCOMPARE(panel->state("a"), int(Pressed));
    panel->releaseButton("a");
    QCOMPARE(panel->clicks.size(), 1);
    QCOMPARE(panel->state("a"), int(Focus));
}

void TestSkinBaseInput::pressMovesTheFocus()
{
    panel->showFocus("c");
    panel->forget();
    panel->pressButton("a");
    QCOMPARE(panel->calls, QStringList({"pressButton(a)", "setButtonFocus(a)", "drawButton(c)", "drawButton(a)"}));
    QCOMPARE(panel->state("c"), int(Normal));
    QCOMPARE(panel->focused(), QStringLiteral("a"));
}

void TestSkinBaseInput::release()
{
    panel->pressButton("a");
    panel->forget();
    panel->releaseButton("a");
    QCOMPARE(panel->calls, QStringList({"releaseButton(a)", "drawButton(a)", "button_clicked(a)"}));
    QCOMPARE(panel->state("a"), int(Focus));
    QCOMPARE(panel->buttonHeld, false);
    QCOMPARE(panel->focused(), QStringLiteral("a"));
    QCOMPARE(panel->clicks.size(), 1);
    QCOMPARE(panel->clicks[0].first, panel);
    QCOMPARE(panel->clicks[0].second, QStringLiteral("a"));
}

void TestSkinBaseInput::releaseOfAnotherButton()
{
    panel->pressButton("a");
    panel->forget();
    panel->releaseButton("b");
    panel->releaseButton("z");
    QCOMPARE(panel->calls, QStringList({"releaseButton(b)", "releaseButton(z)"}));
    QCOMPARE(panel->buttonHeld, true);
    QCOMPARE(panel->state("a"), int(Pressed));
    QCOMPARE(panel->state("b"), int(Normal));
}

void TestSkinBaseInput::releaseNotHeld()
{
    panel->setButtonState("a", Pressed);
    panel->forget();
    panel->releaseButton("a");
    QCOMPARE(panel->calls, QStringList("releaseButton(a)"));
    QCOMPARE(panel->state("a"), int(Pressed));
}

void TestSkinBaseInput::releaseHeldButNotPressed()
{
    panel->pressButton("a");
    panel->buttonMap["a"]->state = Disabled;
    panel->forget();
    panel->releaseButton("a");
    QCOMPARE(panel->calls, QStringList("releaseButton(a)"));
    QCOMPARE(panel->buttonHeld, true);
    QCOMPARE(panel->state("a"), int(Disabled));
}

void TestSkinBaseInput::stateAtTheTimeOfTheClick()
{
    int clicks = 0;
    connect(panel, &SkinBase::button_clicked, panel, [&] {
        ++clicks;
        QCOMPARE(panel->state("a"), int(Focus));
        QCOMPARE(panel->buttonHeld, false);
        QCOMPARE(panel->focused(), QStringLiteral("a"));
    });
    panel->pressButton("a");
    panel->releaseButton("a");
    QCOMPARE(clicks, 1);
}

void TestSkinBaseInput::drawsAfterTheChange()
{
    panel->pressButton("a");
    QCOMPARE(panel->drawnStates, QList<int>({Pressed}));
    panel->forget();
    panel->releaseButton("a");
    QCOMPARE(panel->drawnStates, QList<int>({Focus}));
    panel->forget();
    panel->focusNextButton();
    QCOMPARE(panel->drawnStates, QList<int>({Normal, Focus}));
    panel->forget();
    panel->setButtonState("b", Disabled);
    QCOMPARE(panel->drawnStates, QList<int>({Disabled}));
}

void TestSkinBaseInput::setButtonFocus()
{
    panel->setButtonFocus("a");
    QCOMPARE(panel->state("a"), int(Focus));
    QVERIFY(panel->focusButton == panel->buttons.begin() + 1);
    // The button that gets the focus is left to the caller; the one that loses it is drawn.
    QCOMPARE(panel->calls, QStringList("setButtonFocus(a)"));
    panel->forget();
    panel->setButtonFocus("b");
    QCOMPARE(panel->calls, QStringList({"setButtonFocus(b)", "drawButton(a)"}));
    QCOMPARE(panel->state("a"), int(Normal));
    QCOMPARE(panel->state("b"), int(Focus));
    QVERIFY(panel->focusButton == panel->buttons.begin() + 2);
}

void TestSkinBaseInput::setButtonFocusWhileHeld()
{
    panel->pressButton("a");
    panel->forget();
    panel->setButtonFocus("b");
    panel->setButtonFocus("z");
    QCOMPARE(panel->calls, QStringList({"setButtonFocus(b)", "setButtonFocus(z)"}));
    QCOMPARE(panel->focused(), QStringLiteral("a"));
    QCOMPARE(panel->state("b"), int(Normal));
}

void TestSkinBaseInput::setButtonFocusAgain()
{
    panel->setButtonFocus("a");
    panel->buttonMap["a"]->state = Disabled;
    panel->forget();
    panel->setButtonFocus("a");
    QCOMPARE(panel->calls, QStringList("setButtonFocus(a)"));
    QCOMPARE(panel->state("a"), int(Disabled));
}

void TestSkinBaseInput::setButtonFocusLeavesOtherStatesAlone()
{
    panel->setButtonFocus("a");
    panel->buttonMap["a"]->state = Hidden;
    panel->forget();
    panel->setButtonFocus("b");
    QCOMPARE(panel->calls, QStringList("setButtonFocus(b)"));
    QCOMPARE(panel->state("a"), int(Hidden));
    QCOMPARE(panel->state("b"), int(Focus));
}

void TestSkinBaseInput::setButtonFocusUnknown()
{
    panel->setButtonFocus("a");
    panel->forget();
    panel->setButtonFocus("z");
    QCOMPARE(panel->calls, QStringList({"setButtonFocus(z)", "drawButton(a)"}));
    QVERIFY(panel->focusButton == panel->buttons.end());
    QCOMPARE(panel->state("a"), int(Normal));
    QCOMPARE(panel->getFocus(), QString());
    QCOMPARE(panel->buttonMap.size(), 3);
}

void TestSkinBaseInput::setButtonFocusFindsTheRecordOfTheMap()
{
    installation->config("player", "[Control]\ncount = 3\n[Control_BUTTON0]\nname = x\n[Control_BUTTON1]\nname = y\n"
                                   "[Control_BUTTON2]\nname = x\n");
    Stage other;
    other.panel.do_configloading("Control");
    other.panel.setButtonFocus("x");
    QVERIFY(other.panel.focusButton == other.panel.buttons.begin() + 2);
    QCOMPARE(other.panel.buttons[0]->state, Normal);
    QCOMPARE(other.panel.buttons[2]->state, Focus);
}

void TestSkinBaseInput::focusNext_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("next");
    QTest::addColumn<QString>("previous");
    QTest::newRow("none: an end of the row") << ""
                                             << "c"
                                             << "b";
    QTest::newRow("first") << "c"
                           << "a"
                           << "b";
    QTest::newRow("middle") << "a"
                            << "b"
                            << "c";
    QTest::newRow("last") << "b"
                          << "c"
                          << "a";
}

// The order is that of the file: c, a, b.
void TestSkinBaseInput::focusNext()
{
    QFETCH(QString, start);
    QFETCH(QString, next);
    QFETCH(QString, previous);
    panel->setButtonFocus(start);
    panel->focusNextButton();
    QCOMPARE(panel->getFocus(), next);
    QCOMPARE(panel->state(next), int(Focus));
    panel->setButtonFocus(start);
    panel->focusPrevButton();
    QCOMPARE(panel->getFocus(), previous);
    QCOMPARE(panel->state(previous), int(Focus));
}

void TestSkinBaseInput::focusNextCalls()
{
    panel->setButtonFocus("c");
    panel->forget();
    panel->focusNextButton();
    QCOMPARE(panel->calls, QStringList({"focusNextButton()", "setButtonFocus(a)", "drawButton(c)", "drawButton(a)"}));
}

void TestSkinBaseInput::focusPrevCalls()
{
    panel->focusPrevButton();
    QCOMPARE(panel->calls, QStringList({"focusPrevButton()", "setButtonFocus(b)", "drawButton(b)"}));
}

// The name leads to the later button of that name, which has the focus then and is drawn.
void TestSkinBaseInput::focusNextToAnEqualName()
{
    installation->config("player", "[Control]\ncount = 2\n[Control_BUTTON0]\nname = x\n[Control_BUTTON1]\nname = x\n");
    Panel twins(nullptr, "player");
    twins.do_configloading("Control");
    twins.forget();
    twins.focusNextButton();
    QVERIFY(twins.focusButton == twins.buttons.begin() + 1);
    QCOMPARE(twins.buttons[0]->state, Normal);
    QCOMPARE(twins.drawnStates, QList<int>({Focus}));
}

void TestSkinBaseInput::focusNextWithoutCandidate_data()
{
    QTest::addColumn<int>("c");
    QTest::addColumn<int>("a");
    QTest::addColumn<int>("b");
    QTest::addColumn<QString>("focus");
    QTest::newRow("the focused one alone") << 2 << 3 << 4 << "c";
    QTest::newRow("the focused one alone, which is normal") << 0 << 3 << 4 << "c";
    QTest::newRow("the focused one alone at the end") << 3 << 4 << 2 << "b";
    QTest::newRow("the others in state pressed and focus") << 2 << 1 << 2 << "c";
    QTest::newRow("no focus, none normal") << 1 << 2 << 3 << "";
    QTest::newRow("no focus, all hidden") << 4 << 4 << 4 << "";
    QTest::newRow("no focus, all disabled") << 3 << 3 << 3 << "";
}

void TestSkinBaseInput::focusNextWithoutCandidate()
{
    QFETCH(int, c);
    QFETCH(int, a);
    QFETCH(int, b);
    QFETCH(QString, focus);
    panel->setButtonFocus(focus);
    panel->buttonMap["c"]->state = static_cast<SkinButtonState>(c);
    panel->buttonMap["a"]->state = static_cast<SkinButtonState>(a);
    panel->buttonMap["b"]->state = static_cast<SkinButtonState>(b);
    panel->forget();
    panel->focusNextButton();
    panel->focusPrevButton();
    QCOMPARE(panel->calls, QStringList({"focusNextButton()", "focusPrevButton()"}));
    QCOMPARE(panel->getFocus(), focus);
    QCOMPARE(panel->state("c"), c);
    QCOMPARE(panel->state("a"), a);
    QCOMPARE(panel->state("b"), b);
}

// With no focused button the round has as many steps as there are buttons.
void TestSkinBaseInput::focusReachesTheLastOfARound()
{
    panel->hideButton("c");
    panel->hideButton("a");
    panel->focusNextButton();
    QCOMPARE(panel->getFocus(), QStringLiteral("b"));
    panel->setButtonFocus("nobody");
    panel->showNormal("c");
    panel->hideButton("b");
    panel->focusPrevButton();
    QCOMPARE(panel->getFocus(), QStringLiteral("c"));
}

void TestSkinBaseInput::focusRoundTrip()
{
    QStringList visited;
    for (int i = 0; i < 4; ++i) {
        panel->focusNextButton();
        visited << panel->getFocus();
    }
    for (int i = 0; i < 4; ++i) {
        panel->focusPrevButton();
        visited << panel->getFocus();
    }
    QCOMPARE(visited, QStringList({"c", "a", "b", "c", "b", "a", "c", "b"}));
}

void TestSkinBaseInput::focusTravelOnEmptyPanel()
{
    Panel empty;
    empty.focusNextButton();
    empty.focusPrevButton();
    QCOMPARE(empty.calls, QStringList({"focusNextButton()", "focusPrevButton()"}));
    QCOMPARE(empty.getFocus(), QString());
}

void TestSkinBaseInput::focusTravelWhileHeld()
{
    panel->pressButton("c");
    panel->focusNextButton();
    QCOMPARE(panel->focused(), QStringLiteral("c"));
    panel->focusPrevButton();
    QCOMPARE(panel->focused(), QStringLiteral("c"));
    QCOMPARE(panel->state("c"), int(Pressed));
    QCOMPARE(panel->state("a"), int(Normal));
}

void TestSkinBaseInput::disabledIsSkipped()
{
    panel->disableButton("a");
    panel->setButtonFocus("c");
    sendKey(*panel, QEvent::KeyPress, Qt::Key_Right);
    QCOMPARE(panel->getFocus(), QStringLiteral("b"));
    sendKey(*panel, QEvent::KeyPress, Qt::Key_Right);
    QCOMPARE(panel->getFocus(), QStringLiteral("c"));
    panel->hideButton("b");
    sendKey(*panel, QEvent::KeyPress, Qt::Key_Left);
    QCOMPARE(panel->getFocus(), QStringLiteral("c"));
}

void TestSkinBaseInput::getFocus()
{
    QCOMPARE(panel->getFocus(), QString());
    QVERIFY(!panel->getFocus().isNull());
    panel->setButtonFocus("b");
    QCOMPARE(panel->getFocus(), QStringLiteral("b"));
    panel->pressButton("a");
    QCOMPARE(panel->getFocus(), QStringLiteral("a"));
    panel->releaseButton("a");
    QCOMPARE(panel->getFocus(), QStringLiteral("a"));
}

void TestSkinBaseInput::keyCalls_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QStringList>("press");
    QTest::addColumn<QStringList>("release");
    QTest::newRow("left") << int(Qt::Key_Left)
                          << QStringList({"focusPrevButton()", "setButtonFocus(c)", "drawButton(a)", "drawButton(c)"})
                          << QStringList();
    QTest::newRow("right") << int(Qt::Key_Right)
                           << QStringList({"focusNextButton()", "setButtonFocus(b)", "drawButton(a)", "drawButton(b)"})
                           << QStringList();
    QTest::newRow("return") << int(Qt::Key_Return)
                            << QStringList({"pressButton(a)", "setButtonFocus(a)", "drawButton(a)"})
                            << QStringList({"releaseButton(a)", "drawButton(a)", "button_clicked(a)"});
    for (const int key : unhandledKeys)
        QTest::addRow("key %x", key) << key << QStringList() << QStringList();
}

void TestSkinBaseInput::keyCalls()
{
    QFETCH(int, key);
    QFETCH(QStringList, press);
    QFETCH(QStringList, release);
    panel->setButtonFocus("a");
    panel->forget();
    sendKey(*panel, QEvent::KeyPress, key);
    QCOMPARE(panel->calls, press);
    panel->forget();
    sendKey(*panel, QEvent::KeyRelease, key);
    QCOMPARE(panel->calls, release);
}

void TestSkinBaseInput::returnPressesFocusedButton()
{
    panel->setButtonFocus("a");
    sendKey(*panel, QEvent::KeyPress, Qt::Key_Return);
    QCOMPARE(panel->state("a"), int(Pressed));
    QVERIFY(panel->clicks.isEmpty());
    sendKey(*panel, QEvent::KeyRelease, Qt::Key_Return);
    QCOMPARE(panel->state("a"), int(Focus));
    QCOMPARE(panel->clicks.size(), 1);
    QCOMPARE(panel->clicks[0].first, panel);
    QCOMPARE(panel->clicks[0].second, QStringLiteral("a"));
    sendKey(*panel, QEvent::KeyRelease, Qt::Key_Return);
    QCOMPARE(panel->clicks.size(), 1);
}

void TestSkinBaseInput::returnWithoutFocusedButton()
{
    sendKey(*panel, QEvent::KeyPress, Qt::Key_Return);
    sendKey(*panel, QEvent::KeyRelease, Qt::Key_Return);
    QCOMPARE(panel->calls, QStringList());
    QCOMPARE(panel->buttonHeld, false);
    for (const SkinButton* button : panel->buttons)
        QCOMPARE(button->state, Normal);
}

// Two buttons in state Focus: both are tried in name order, the second is refused as the first is held.
void TestSkinBaseInput::returnPressesEveryFocusButton()
{
    panel->setButtonFocus("c");
    panel->buttonMap["b"]->state = Focus;
    panel->forget();
    sendKey(*panel, QEvent::KeyPress, Qt::Key_Return);
    QCOMPARE(panel->callsOf("pressButton"), QStringList("pressButton(b)"));
    QCOMPARE(panel->state("b"), int(Pressed));
    // The focus moved to b, which took c out of state Focus.
    QCOMPARE(panel->state("c"), int(Normal));
    panel->releaseButton("b");
    panel->buttonMap["c"]->state = Focus;
    panel->forget();
    sendKey(*panel, QEvent::KeyPress, Qt::Key_Return);
    QCOMPARE(panel->callsOf("pressButton"), QStringList({"pressButton(b)", "pressButton(c)"}));
    QCOMPARE(panel->state("c"), int(Focus));
}

void TestSkinBaseInput::returnReleaseReleasesEveryPressedButton()
{
    panel->setButtonState("c", Pressed);
    panel->pressButton("b");
    panel->forget();
    sendKey(*panel, QEvent::KeyRelease, Qt::Key_Return);
    QCOMPARE(panel->callsOf("releaseButton"), QStringList({"releaseButton(b)", "releaseButton(c)"}));
    QCOMPARE(panel->clicks.size(), 1);
    QCOMPARE(panel->state("c"), int(Pressed));
}

void TestSkinBaseInput::otherReleaseKeepsItHeld()
{
    panel->pressButton("a");
    for (const int key : unhandledKeys)
        sendKey(*panel, QEvent::KeyRelease, key);
    sendKey(*panel, QEvent::KeyRelease, Qt::Key_Left);
    sendKey(*panel, QEvent::KeyRelease, Qt::Key_Right);
    QCOMPARE(panel->state("a"), int(Pressed));
    QVERIFY(panel->clicks.isEmpty());
}

void TestSkinBaseInput::autoRepeatIsNotExamined()
{
    panel->setButtonFocus("a");
    for (int i = 0; i < 3; ++i) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
        panel->keyPressEvent(&press);
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier, QString(), true);
        panel->keyReleaseEvent(&release);
    }
    QCOMPARE(panel->clicks.size(), 3);
    QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier, QString(), true);
    panel->keyPressEvent(&right);
    QCOMPARE(panel->getFocus(), QStringLiteral("b"));
}

void TestSkinBaseInput::keysAreAcceptedAndStayHere_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("left") << int(Qt::Key_Left);
    QTest::newRow("right") << int(Qt::Key_Right);
    QTest::newRow("return") << int(Qt::Key_Return);
    for (const int key : unhandledKeys)
        QTest::addRow("key %x", key) << key;
}

void TestSkinBaseInput::keysAreAcceptedAndStayHere()
{
    QFETCH(int, key);
    KeyCatcher window;
    window.setObjectName("player");
    SkinBase child(&window);
    child.do_configloading("Control");
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    child.setFocus();
    QTRY_VERIFY(child.hasFocus());
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QVERIFY(QCoreApplication::sendEvent(&child, &event));
        QVERIFY(event.isAccepted());
    }
    QTest::keyClick(&child, static_cast<Qt::Key>(key));
    QCOMPARE(window.presses, 0);
    QCOMPARE(window.releases, 0);
}

void TestSkinBaseInput::realKeys()
{
    QVERIFY(stage->show());
    QVERIFY(stage->focusPanel());
    QTest::keyClick(stage->window.windowHandle(), Qt::Key_Right);
    QCOMPARE(panel->getFocus(), QStringLiteral("c"));
    QTest::keyClick(stage->window.windowHandle(), Qt::Key_Right);
    QCOMPARE(panel->getFocus(), QStringLiteral("a"));
    QTest::keyPress(stage->window.windowHandle(), Qt::Key_Return);
    QCOMPARE(panel->state("a"), int(Pressed));
    QTest::keyRelease(stage->window.windowHandle(), Qt::Key_Return);
    QCOMPARE(panel->state("a"), int(Focus));
    QTest::keyClick(stage->window.windowHandle(), Qt::Key_Left);
    QCOMPARE(panel->getFocus(), QStringLiteral("c"));
    QCOMPARE(panel->clicks.size(), 1);
    QCOMPARE(panel->clicks[0].second, QStringLiteral("a"));
}

void TestSkinBaseInput::arrowKeysWhileHeld()
{
    panel->setButtonFocus("a");
    sendKey(*panel, QEvent::KeyPress, Qt::Key_Return);
    sendKey(*panel, QEvent::KeyPress, Qt::Key_Right);
    sendKey(*panel, QEvent::KeyPress, Qt::Key_Left);
    QCOMPARE(panel->focused(), QStringLiteral("a"));
    QCOMPARE(panel->state("a"), int(Pressed));
    sendKey(*panel, QEvent::KeyRelease, Qt::Key_Return);
    QCOMPARE(panel->clicks.size(), 1);
}

void TestSkinBaseInput::stylusHitsByColour_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<QString>("button");
    QTest::newRow("first column of c") << QPoint(0, 0) << "c";
    QTest::newRow("last column of c") << QPoint(29, 39) << "c";
    QTest::newRow("first column of a") << QPoint(30, 0) << "a";
    QTest::newRow("last column of a") << QPoint(59, 39) << "a";
    QTest::newRow("first column of b") << QPoint(60, 39) << "b";
    QTest::newRow("last column of b") << QPoint(89, 0) << "b";
    QTest::newRow("a colour of nobody") << QPoint(90, 0) << "";
    QTest::newRow("last pixel") << QPoint(99, 39) << "";
}

void TestSkinBaseInput::stylusHitsByColour()
{
    QFETCH(QPoint, at);
    QFETCH(QString, button);
    sendMouse(*panel, QEvent::MouseButtonPress, at);
    QCOMPARE(panel->callsOf("pressButton"),
             button.isEmpty() ? QStringList() : QStringList(QStringLiteral("pressButton(%1)").arg(button)));
    QCOMPARE(panel->buttonHeld, !button.isEmpty());
    for (const SkinButton* any : panel->buttons)
        QCOMPARE(any->state, any->name == button ? Pressed : Normal);
}

void TestSkinBaseInput::stylusComparesTheWholePixel_data()
{
    QTest::addColumn<unsigned int>("pixel");
    QTest::addColumn<bool>("alpha");
    QTest::addColumn<QByteArray>("mask");
    QTest::addColumn<bool>("hit");
    QTest::newRow("no alpha, eight digits") << 0xff00ff10U << false << QByteArray("ff00ff10") << true;
    QTest::newRow("no alpha, six digits") << 0xff00ff10U << false << QByteArray("00ff10") << false;
    QTest::newRow("alpha 0") << 0x0000ff10U << true << QByteArray("00ff10") << true;
    QTest::newRow("alpha 0 and eight digits") << 0x0000ff10U << true << QByteArray("ff00ff10") << false;
    QTest::newRow("alpha 128") << 0x8000ff10U << true << QByteArray("8000ff10") << true;
    QTest::newRow("alpha 127") << 0x7f00ff10U << true << QByteArray("8000ff10") << false;
    QTest::newRow("other red") << 0xff01ff10U << true << QByteArray("ff00ff10") << false;
    QTest::newRow("other green") << 0xff00fe10U << true << QByteArray("ff00ff10") << false;
    QTest::newRow("other blue") << 0xff00ff11U << true << QByteArray("ff00ff10") << false;
}

void TestSkinBaseInput::stylusComparesTheWholePixel()
{
    QFETCH(unsigned int, pixel);
    QFETCH(bool, alpha);
    QFETCH(QByteArray, mask);
    QFETCH(bool, hit);
    QImage picture = plain(8, 8, pixel);
    if (!alpha)
        picture.convertTo(QImage::Format_RGB32);
    installation->picture("player", "mask.png", picture);
    installation->config(
        "player", "[Control]\nmaskimage = mask.png\ncount = 1\n[Control_BUTTON0]\nname = x\nmask = " + mask + "\n");
    Stage other;
    other.panel.do_configloading("Control");
    sendMouse(other.panel, QEvent::MouseButtonPress, QPoint(3, 3));
    QCOMPARE(other.panel.buttonHeld, hit);
}

// A button without a mask claims the pixels that are 0.
void TestSkinBaseInput::stylusMaskOfTransparentBlack()
{
    QImage picture = plain(8, 8, 0x00000000);
    picture.setPixel(1, 1, 0xff000000);
    installation->picture("player", "mask.png", picture);
    installation->config("player",
                         "[Control]\nmaskimage = mask.png\ncount = 1\n[Control_BUTTON0]\nname = x\nmask = red\n");
    Stage other;
    other.panel.do_configloading("Control");
    sendMouse(other.panel, QEvent::MouseButtonPress, QPoint(1, 1));
    QCOMPARE(other.panel.buttonHeld, false);
    sendMouse(other.panel, QEvent::MouseButtonPress, QPoint(2, 1));
    QCOMPARE(other.panel.buttonHeld, true);
}

void TestSkinBaseInput::stylusIgnoresButtonRectangles()
{
    QVERIFY(!panel->buttonMap["a"]->rect().contains(55, 35));
    sendMouse(*panel, QEvent::MouseButtonPress, QPoint(55, 35));
    QCOMPARE(panel->state("a"), int(Pressed));
    panel->releaseButton("a");
    // Its rectangle moved away; its colour did not.
    panel->buttonMap["b"]->xpos = 4;
    panel->forget();
    sendMouse(*panel, QEvent::MouseButtonPress, QPoint(6, 5));
    QCOMPARE(panel->callsOf("pressButton"), QStringList("pressButton(c)"));
}

void TestSkinBaseInput::stylusOnDisabledOrHidden_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("pressed");
    QTest::newRow("normal") << int(Normal) << true;
    QTest::newRow("focus") << int(Focus) << true;
    QTest::newRow("disabled") << int(Disabled) << false;
    QTest::newRow("hidden") << int(Hidden) << false;
}

void TestSkinBaseInput::stylusOnDisabledOrHidden()
{
    QFETCH(int, state);
    QFETCH(bool, pressed);
    panel->setButtonState("a", static_cast<SkinButtonState>(state));
    panel->forget();
    sendMouse(*panel, QEvent::MouseButtonPress, ThreeButtons::pointInA);
    QCOMPARE(panel->callsOf("pressButton").size(), pressed ? 1 : 0);
    QCOMPARE(panel->state("a"), pressed ? int(Pressed) : state);
    sendMouse(*panel, QEvent::MouseButtonRelease, ThreeButtons::pointInA);
    QCOMPARE(panel->clicks.size(), pressed ? 1 : 0);
}

void TestSkinBaseInput::stylusPressesFirstMatchByName()
{
    panel->buttonMap["c"]->mask = ThreeButtons::maskOfA;
    panel->buttonMap["b"]->mask = ThreeButtons::maskOfA;
    panel->forget();
    sendMouse(*panel, QEvent::MouseButtonPress, ThreeButtons::pointInA);
    QCOMPARE(panel->callsOf("pressButton"), QStringList({"pressButton(a)", "pressButton(b)", "pressButton(c)"}));
    QCOMPARE(panel->state("a"), int(Pressed));
    QCOMPARE(panel->state("b"), int(Normal));
    QCOMPARE(panel->state("c"), int(Normal));
}

void TestSkinBaseInput::stylusPassesDisabledMatch()
{
    panel->buttonMap["b"]->mask = ThreeButtons::maskOfA;
    panel->disableButton("a");
    sendMouse(*panel, QEvent::MouseButtonPress, ThreeButtons::pointInA);
    QCOMPARE(panel->state("a"), int(Disabled));
    QCOMPARE(panel->state("b"), int(Pressed));
}

void TestSkinBaseInput::stylusCalls()
{
    sendMouse(*panel, QEvent::MouseButtonPress, ThreeButtons::pointInA);
    QCOMPARE(panel->calls, QStringList({"pressButton(a)", "setButtonFocus(a)", "drawButton(a)"}));
    panel->forget();
    sendMouse(*panel, QEvent::MouseButtonRelease, ThreeButtons::pointInA);
    QCOMPARE(panel->calls, QStringList({"releaseButton(a)", "drawButton(a)", "button_clicked(a)"}));
}

void TestSkinBaseInput::anyMouseButton_data()
{
    QTest::addColumn<int>("button");
    QTest::newRow("left") << int(Qt::LeftButton);
    QTest::newRow("right") << int(Qt::RightButton);
    QTest::newRow("middle") << int(Qt::MiddleButton);
    QTest::newRow("back") << int(Qt::BackButton);
}

void TestSkinBaseInput::anyMouseButton()
{
    QFETCH(int, button);
    QVERIFY(stage->show());
    QTest::mouseClick(panel, static_cast<Qt::MouseButton>(button), {}, ThreeButtons::pointInB);
    QCOMPARE(panel->clicks.size(), 1);
    QCOMPARE(panel->clicks[0].second, QStringLiteral("b"));
}

void TestSkinBaseInput::stylusLiftedAnywhere_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::newRow("same place") << ThreeButtons::pointInA;
    QTest::newRow("another button") << ThreeButtons::pointInB;
    QTest::newRow("no button") << ThreeButtons::pointInNone;
    QTest::newRow("outside the panel") << QPoint(300, 200);
    QTest::newRow("above and left of the panel") << QPoint(-30, -20);
}

void TestSkinBaseInput::stylusLiftedAnywhere()
{
    QFETCH(QPoint, at);
    sendMouse(*panel, QEvent::MouseButtonPress, ThreeButtons::pointInA);
    sendMouse(*panel, QEvent::MouseButtonRelease, at);
    QCOMPARE(panel->clicks.size(), 1);
    QCOMPARE(panel->clicks[0].second, QStringLiteral("a"));
    QCOMPARE(panel->state("a"), int(Focus));
    QCOMPARE(panel->state("b"), int(Normal));
}

void TestSkinBaseInput::stylusReleaseWithoutPress()
{
    panel->setButtonFocus("a");
    panel->forget();
    sendMouse(*panel, QEvent::MouseButtonRelease, ThreeButtons::pointInA);
    QCOMPARE(panel->calls, QStringList());
}

void TestSkinBaseInput::secondPressWhileHeld()
{
    sendMouse(*panel, QEvent::MouseButtonPress, ThreeButtons::pointInA);
    sendMouse(*panel, QEvent::MouseButtonPress, ThreeButtons::pointInB, Qt::RightButton);
    QCOMPARE(panel->state("a"), int(Pressed));
    QCOMPARE(panel->state("b"), int(Normal));
    sendMouse(*panel, QEvent::MouseButtonRelease, ThreeButtons::pointInB, Qt::RightButton);
    QCOMPARE(panel->clicks.size(), 1);
    QCOMPARE(panel->clicks[0].second, QStringLiteral("a"));
    sendMouse(*panel, QEvent::MouseButtonRelease, ThreeButtons::pointInA);
    QCOMPARE(panel->clicks.size(), 1);
}

void TestSkinBaseInput::realStylus()
{
    panel->move(40, 30);
    QVERIFY(stage->show());
    QWindow* window = stage->window.windowHandle();
    const QPoint shift(40, 30);
    QTest::mousePress(window, Qt::LeftButton, {}, ThreeButtons::pointInA + shift);
    QCOMPARE(panel->state("a"), int(Pressed));
    QVERIFY(panel->hasFocus());
    QTest::mouseMove(window, QPoint(300, 250));
    QCOMPARE(panel->state("a"), int(Pressed));
    QTest::mouseRelease(window, Qt::LeftButton, {}, QPoint(300, 250));
    QCOMPARE(panel->clicks.size(), 1);
    QCOMPARE(panel->clicks[0].second, QStringLiteral("a"));
    QTest::mouseClick(window, Qt::LeftButton, {}, ThreeButtons::pointInNone + shift);
    QCOMPARE(panel->clicks.size(), 1);
}

void TestSkinBaseInput::doubleTapClicksTwice()
{
    QVERIFY(stage->show());
    QTest::mouseDClick(stage->window.windowHandle(), Qt::LeftButton, {}, ThreeButtons::pointInA);
    QCOMPARE(panel->clicks.size(), 2);
    QCOMPARE(panel->buttonHeld, false);
}

void TestSkinBaseInput::stylusOutsideTheMask_data()
{
    QTest::addColumn<QPointF>("at");
    QTest::newRow("right of it") << QPointF(100, 5);
    QTest::newRow("below it") << QPointF(5, 40);
    QTest::newRow("left of it") << QPointF(-1, 5);
    QTest::newRow("above it") << QPointF(5, -1);
    QTest::newRow("far out") << QPointF(1e6, 1e6);
    QTest::newRow("far out on the other side") << QPointF(-1e6, -1e6);
}

void TestSkinBaseInput::stylusOutsideTheMask()
{
    QFETCH(QPointF, at);
    // What a lookup outside a picture gives must claim nothing either.
    panel->buttonMap["a"]->mask = 12345;
    panel->buttonMap["b"]->mask = 0;
    panel->buttonMap["c"]->mask = 0xff000000;
    Messages messages;
    sendMouse(*panel, QEvent::MouseButtonPress, at);
    QCOMPARE(panel->calls, QStringList());
    QCOMPARE(panel->buttonHeld, false);
    QCOMPARE(Messages::texts(), QStringList());
}

void TestSkinBaseInput::stylusTapStates()
{
    QCOMPARE(panel->state("a"), int(Normal));
    sendMouse(*panel, QEvent::MouseButtonPress, ThreeButtons::pointInA);
    QCOMPARE(panel->state("a"), int(Pressed));
    QCOMPARE(panel->focused(), QStringLiteral("a"));
    sendMouse(*panel, QEvent::MouseButtonRelease, ThreeButtons::pointInA);
    QCOMPARE(panel->state("a"), int(Focus));
    QCOMPARE(panel->focused(), QStringLiteral("a"));
    sendMouse(*panel, QEvent::MouseButtonPress, ThreeButtons::pointInB);
    QCOMPARE(panel->state("a"), int(Normal));
    QCOMPARE(panel->state("b"), int(Pressed));
}

void TestSkinBaseInput::stylusRepaints()
{
    QVERIFY(stage->show());
    QVERIFY(stage->focusPanel());
    const QRect drawn(34, 5, 44, 11);
    QCOMPARE(stage->damage([this] { sendMouse(*panel, QEvent::MouseButtonPress, ThreeButtons::pointInA); }),
             QRegion(drawn));
    QCOMPARE(stage->onScreen().pixel(34, 5), ThreeButtons::pixel('a', 1));
    QCOMPARE(stage->damage([this] { sendMouse(*panel, QEvent::MouseButtonRelease, ThreeButtons::pointInA); }),
             QRegion(drawn));
    QCOMPARE(stage->onScreen().pixel(34, 5), ThreeButtons::pixel('a', 2));
}

void TestSkinBaseInput::focusEventsRedrawTheFocusedButton()
{
    panel->setButtonFocus("a");
    QVERIFY(stage->show());
    for (const QEvent::Type type : {QEvent::FocusIn, QEvent::FocusOut}) {
        QCOMPARE(stage->damage([&] {
            QFocusEvent event(type);
            type == QEvent::FocusIn ? panel->focusInEvent(&event) : panel->focusOutEvent(&event);
            QCOMPARE(panel->calls, QStringList("drawButton(a)"));
        }),
                 QRegion(34, 5, 44, 11));
        QCOMPARE(panel->state("a"), int(Focus));
        QCOMPARE(panel->focused(), QStringLiteral("a"));
    }
}

void TestSkinBaseInput::focusEventsWithoutFocusedButton()
{
    QVERIFY(stage->show());
    QVERIFY(stage->focusElsewhere());
    QCOMPARE(stage->damage([this] { QVERIFY(stage->focusPanel()); }), QRegion());
    QCOMPARE(panel->calls, QStringList());
    QCOMPARE(stage->damage([this] { QVERIFY(stage->focusElsewhere()); }), QRegion());
    QCOMPARE(panel->calls, QStringList());
    QCOMPARE(panel->getFocus(), QString());
}

// At most one button is held, whatever holds it.
void TestSkinBaseInput::keyAndStylusMixed()
{
    panel->setButtonFocus("a");
    sendKey(*panel, QEvent::KeyPress, Qt::Key_Return);
    sendMouse(*panel, QEvent::MouseButtonPress, ThreeButtons::pointInB);
    QCOMPARE(panel->state("b"), int(Normal));
    sendMouse(*panel, QEvent::MouseButtonRelease, ThreeButtons::pointInB);
    QCOMPARE(panel->clicks.size(), 1);
    QCOMPARE(panel->clicks[0].second, QStringLiteral("a"));
    sendKey(*panel, QEvent::KeyRelease, Qt::Key_Return);
    QCOMPARE(panel->clicks.size(), 1);
}

QTEST_MAIN(TestSkinBaseInput)
#include "tst_skinbase_input.moc"
