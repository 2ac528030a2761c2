#include "skinbase/skinfixture.h"

#include <QPointer>

using namespace skintest;

namespace
{

enum class Victim { Panel, Parent, Window };
enum class Way {
    ReturnKey,
    Stylus,
    Release,
    SetState,
    SetFocusState,
    Hide,
    ShowNormal,
    ShowFocus,
    Disable,
    DirectHandlers
};

} // namespace

Q_DECLARE_METATYPE(Victim)
Q_DECLARE_METATYPE(Way)

class TestSkinBaseLifetime : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void deletedByReceiver_data();
    void deletedByReceiver();
    void deletedLater_data();
    void deletedLater();
    void deletedByOneOfSeveralReceivers();

    void slotPressesAnotherButton();
    void slotPressesTheSameButton();
    void slotHidesTheButton();
    void slotDisablesTheButton();
    void slotRemovesTheFocus();
    void slotMovesTheFocus();
    void slotLoadsAnotherSection_data();
    void slotLoadsAnotherSection();
    void slotChangesTheSkinAndRecomposes();
    void slotReleasesAgain();
    void slotTakesTheWidgetFocusAway();
    void slotRunsTheEventLoop();

    void destroyedWithParent();
    void destroyedWhileHeld();
    void destroyedWithFocus();

private:
    // A window with a box and in it the panel, each of which a receiver may delete.
    void build();
    void trigger(Way way);
    QWidget* victimOf(Victim victim) const
    {
        return victim == Victim::Panel ? panel.data() : victim == Victim::Parent ? box.data() : window.data();
    }

    std::unique_ptr<Installation> installation;
    QPointer<QWidget> window;
    QPointer<QWidget> box;
    QPointer<Panel> panel;
};

void TestSkinBaseLifetime::init()
{
    installation = std::make_unique<Installation>();
    ThreeButtons::install(*installation);
    build();
}

void TestSkinBaseLifetime::cleanup()
{
    delete window;
    installation.reset();
}

void TestSkinBaseLifetime::build()
{
    window = new QWidget;
    window->setObjectName("player");
    window->resize(200, 100);
    box = new QWidget(window);
    box->resize(200, 100);
    panel = new Panel(box);
    panel->do_configloading("Control");
    panel->setAlphaOverride(255);
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    panel->setFocus();
    QTRY_VERIFY(panel->hasFocus());
}

// Brings button a from Normal to a click.
void TestSkinBaseLifetime::trigger(Way way)
{
    switch (way) {
    case Way::ReturnKey:
        panel->showFocus("a");
        QTest::keyPress(panel, Qt::Key_Return);
        QTest::keyRelease(panel, Qt::Key_Return);
        return;
    case Way::Stylus:
        QTest::mousePress(panel, Qt::LeftButton, {}, ThreeButtons::pointInA);
        QTest::mouseRelease(panel, Qt::LeftButton, {}, ThreeButtons::pointInA);
        return;
    case Way::DirectHandlers:
        sendMouse(*panel, QEvent::MouseButtonPress, ThreeButtons::pointInA);
        sendKey(*panel, QEvent::KeyRelease, Qt::Key_Return);
        return;
    default:
        break;
    }
    panel->pressButton("a");
    if (way == Way::Release)
        panel->releaseButton("a");
    else if (way == Way::SetState)
        panel->setButtonState("a", Pressed);
    else if (way == Way::SetFocusState)
        panel->setButtonState("a", Focus);
    else if (way == Way::Hide)
        panel->hideButton("a");
    else if (way == Way::ShowNormal)
        panel->showNormal("a");
    else if (way == Way::ShowFocus)
        panel->showFocus("a");
    else if (way == Way::Disable)
        panel->disableButton("a");
}

void TestSkinBaseLifetime::deletedByReceiver_data()
{
    QTest::addColumn<Victim>("victim");
    QTest::addColumn<Way>("way");
    const std::pair<const char*, Victim> victims[] = {
        {"panel", Victim::Panel}, {"parent", Victim::Parent}, {"window", Victim::Window}};
    const std::pair<const char*, Way> ways[] = {
        {"Return", Way::ReturnKey},
        {"the stylus", Way::Stylus},
        {"handlers called directly", Way::DirectHandlers},
        {"releaseButton", Way::Release},
        {"setButtonState", Way::SetState},
        {"setButtonState with Focus", Way::SetFocusState},
        {"hideButton", Way::Hide},
        {"showNormal", Way::ShowNormal},
        {"showFocus", Way::ShowFocus},
        {"disableButton", Way::Disable},
    };
    for (const auto& [victimName, victim] : victims)
        for (const auto& [wayName, way] : ways)
            QTest::addRow("%s by %s", victimName, wayName) << victim << way;
}

void TestSkinBaseLifetime::deletedByReceiver()
{
    QFETCH(Victim, victim);
    QFETCH(Way, way);
    int clicks = 0;
    connect(panel, &SkinBase::button_clicked, this, [&] {
        ++clicks;
        delete victimOf(victim);
    });
    // A second held button would tempt the walk over the buttons to go on.
    panel->buttonMap["c"]->state = Pressed;
    trigger(way);
    QCOMPARE(clicks, 1);
    QVERIFY(panel.isNull());
    QCoreApplication::processEvents();
}

void TestSkinBaseLifetime::deletedLater_data()
{
    deletedByReceiver_data();
}

void TestSkinBaseLifetime::deletedLater()
{
    QFETCH(Victim, victim);
    QFETCH(Way, way);
    connect(panel, &SkinBase::button_clicked, this, [&] { victimOf(victim)->deleteLater(); });
    trigger(way);
    QTRY_VERIFY(panel.isNull());
}

void TestSkinBaseLifetime::deletedByOneOfSeveralReceivers()
{
    int late = 0;
    connect(panel, &SkinBase::button_clicked, this, [this] { delete panel; });
    connect(panel, &SkinBase::button_clicked, this, [&late] { ++late; });
    trigger(Way::Stylus);
    QVERIFY(panel.isNull());
    QCOMPARE(late, 0);
}

void TestSkinBaseLifetime::slotPressesAnotherButton()
{
    connect(panel, &SkinBase::button_clicked, this, [this](const QObject*, const QString& name) {
        if (name == QLatin1String("a"))
            panel->pressButton("b");
    });
    panel->pressButton("a");
    sendMouse(*panel, QEvent::MouseButtonRelease, ThreeButtons::pointInA);
    // The walk reaches b after a, in state Pressed, so that one is released as well.
    QCOMPARE(panel->callsOf("button_clicked"), QStringList({"button_clicked(a)", "button_clicked(b)"}));
    QCOMPARE(panel->state("a"), int(Normal));
    QCOMPARE(panel->state("b"), int(Focus));
    QCOMPARE(panel->buttonHeld, false);
}

void TestSkinBaseLifetime::slotPressesTheSameButton()
{
    connect(panel, &SkinBase::button_clicked, this, [this] { panel->pressButton("a"); });
    panel->pressButton("a");
    sendKey(*panel, QEvent::KeyRelease, Qt::Key_Return);
    QCOMPARE(panel->clicks.size(), 1);
    QCOMPARE(panel->state("a"), int(Pressed));
    QCOMPARE(panel->buttonHeld, true);
}

void TestSkinBaseLifetime::slotHidesTheButton()
{
    connect(panel, &SkinBase::button_clicked, this,
            [this](const QObject*, const QString& name) { panel->hideButton(name); });
    trigger(Way::Stylus);
    QCOMPARE(panel->state("a"), int(Hidden));
    QCOMPARE(panel->clicks.size(), 1);
    // Asked for by an operation, that operation's own state comes last.
    panel->showNormal("a");
    panel->pressButton("a");
    panel->setButtonState("a", Disabled);
    QCOMPARE(panel->state("a"), int(Disabled));
}

void TestSkinBaseLifetime::slotDisablesTheButton()
{
    connect(panel, &SkinBase::button_clicked, this,
            [this](const QObject*, const QString& name) { panel->disableButton(name); });
    trigger(Way::Stylus);
    QCOMPARE(panel->state("a"), int(Disabled));
    QCOMPARE(panel->focused(), QStringLiteral("b"));
    trigger(Way::Disable);
    QCOMPARE(panel->state("a"), int(Disabled));
    QCOMPARE(panel->clicks.size(), 2);
}

void TestSkinBaseLifetime::slotRemovesTheFocus()
{
    connect(panel, &SkinBase::button_clicked, this, [this] { panel->setButtonFocus("nobody"); });
    trigger(Way::ReturnKey);
    QCOMPARE(panel->focused(), QStringLiteral("none"));
    QCOMPARE(panel->state("a"), int(Normal));
}

void TestSkinBaseLifetime::slotMovesTheFocus()
{
    connect(panel, &SkinBase::button_clicked, this, [this] { panel->focusNextButton(); });
    trigger(Way::ReturnKey);
    QCOMPARE(panel->focused(), QStringLiteral("b"));
    QCOMPARE(panel->state("a"), int(Normal));
    QCOMPARE(panel->state("b"), int(Focus));
}

void TestSkinBaseLifetime::slotLoadsAnotherSection_data()
{
    QTest::addColumn<Way>("way");
    QTest::newRow("Return") << Way::ReturnKey;
    QTest::newRow("stylus") << Way::Stylus;
    QTest::newRow("hideButton") << Way::Hide;
    QTest::newRow("disableButton") << Way::Disable;
    QTest::newRow("showFocus") << Way::ShowFocus;
}

void TestSkinBaseLifetime::slotLoadsAnotherSection()
{
    QFETCH(Way, way);
    connect(panel, &SkinBase::button_clicked, this, [this] {
        for (int i = 0; i < 10; ++i)
            panel->do_configloading("Control");
    });
    trigger(way);
    QCOMPARE(panel->clicks.size(), 1);
    QCOMPARE(panel->buttons.size(), size_t(33));
    QCOMPARE(panel->buttonMap.size(), 3);
    trigger(Way::Stylus);
    QVERIFY(panel->clicks.size() >= 1);
}

void TestSkinBaseLifetime::slotChangesTheSkinAndRecomposes()
{
    connect(panel, &SkinBase::button_clicked, this, [this] {
        panel->setBackgroundImage(plain(100, 40, red));
        panel->setAlphaOverride(20);
        panel->setBackgroundPixmap(QPixmap::fromImage(pattern(200, 100)));
        panel->repaint();
    });
    trigger(Way::ReturnKey);
    QCOMPARE(panel->clicks.size(), 1);
    QCOMPARE(panel->state("a"), int(Focus));
}

void TestSkinBaseLifetime::slotReleasesAgain()
{
    connect(panel, &SkinBase::button_clicked, this,
            [this](const QObject*, const QString& name) { panel->releaseButton(name); });
    trigger(Way::Stylus);
    QCOMPARE(panel->clicks.size(), 1);
}

void TestSkinBaseLifetime::slotTakesTheWidgetFocusAway()
{
    box->setFocusPolicy(Qt::StrongFocus);
    connect(panel, &SkinBase::button_clicked, this, [this] { box->setFocus(); });
    trigger(Way::ReturnKey);
    QVERIFY(!panel->hasFocus());
    QCOMPARE(panel->state("a"), int(Focus));
    QCOMPARE(panel->focused(), QStringLiteral("a"));
}

void TestSkinBaseLifetime::slotRunsTheEventLoop()
{
    connect(panel, &SkinBase::button_clicked, this, [this](const QObject*, const QString& name) {
        if (name != QLatin1String("a"))
            return;
        QTest::mouseClick(panel, Qt::LeftButton, {}, ThreeButtons::pointInB);
        QCoreApplication::processEvents();
    });
    trigger(Way::Stylus);
    QCOMPARE(panel->callsOf("button_clicked"), QStringList({"button_clicked(a)", "button_clicked(b)"}));
    QCOMPARE(panel->buttonHeld, false);
    QCOMPARE(panel->focused(), QStringLiteral("b"));
}

void TestSkinBaseLifetime::destroyedWithParent()
{
    QImage background = *panel->backgroundImage;
    QVERIFY(!background.isDetached());
    delete window;
    QVERIFY(panel.isNull());
    QVERIFY(background.isDetached());
}

void TestSkinBaseLifetime::destroyedWhileHeld()
{
    int clicks = 0;
    connect(panel, &SkinBase::button_clicked, this, [&clicks] { ++clicks; });
    QTest::mousePress(panel, Qt::LeftButton, {}, ThreeButtons::pointInA);
    delete panel;
    QTest::mouseRelease(window, Qt::LeftButton, {}, ThreeButtons::pointInA);
    QCOMPARE(clicks, 0);
}

void TestSkinBaseLifetime::destroyedWithFocus()
{
    panel->showFocus("a");
    QVERIFY(panel->hasFocus());
    delete panel;
    QCoreApplication::processEvents();
    QVERIFY(window);
}

QTEST_MAIN(TestSkinBaseLifetime)
#include "tst_skinbase_lifetime.moc"
