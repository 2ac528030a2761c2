#include "player/mediabackend.h"
#include "player/messagefilter.h"
#include "player/playerwindow.h"
#include "player/soundfiles.h"
#include "skinbase/skinbase.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace
{

// Reads a panel's buttons, which are there for subclasses.
class ButtonReader : public SkinBase
{
public:
    static const SkinButton& button(const SkinBase* panel, const QString& name)
    {
        return *(panel->*&ButtonReader::buttonMap).value(name);
    }
};

} // namespace

class TestPlayerWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void isAsLargeAsItsPanel();
    void startsWithTheFocusOnPlay();
    void keysAlonePlayPauseAndStop();
    void pointerAlonePlaysPausesAndStops();
    void keysStepThroughTheList();
    void pointerStepsThroughTheList();
    void focusElsewhereStaysWhenPlayAndPauseChange();
    void stepsAreDisabledForASingleFile();
    void showsPlayAtTheEndOfTheList();
    void heldPauseIsReleasedAtTheEndOfTheList();
    void titleNamesTheFile();
    void titleTellsWhatCannotBePlayed();
    void escapeCloses();
    void openButtonLetsKeysChooseFiles();
    void choosingTwiceGivesOneDialog();
    void unknownSkinGivesNoPanel();
    void listsSkinsThatHaveAConfig();

private:
    SkinButtonState state(const QString& button) const { return ButtonReader::button(m_window->panel(), button).state; }
    QPoint centre(const QString& button) const
    {
        const SkinButton& record = ButtonReader::button(m_window->panel(), button);
        return QRect(QPoint(record.xpos, record.ypos), record.stateImage[0].size()).center();
    }
    void tap(const QString& button)
    {
        QTest::mouseClick(m_window->panel(), Qt::LeftButton, Qt::NoModifier, centre(button));
    }
    void type(Qt::Key key) { QTest::keyClick(m_window->windowHandle(), key); }
    // Moves the focus to the right until the button has it, at most once around.
    void walkTo(const QString& button)
    {
        for (int i = 0; i < 6 && m_window->panel()->getFocus() != button; ++i)
            type(Qt::Key_Right);
        QCOMPARE(m_window->panel()->getFocus(), button);
    }
    QFileDialog* dialog() const { return m_window->findChild<QFileDialog*>(); }
    QString shippedSound() const { return qEnvironmentVariable("QPEDIR") + QStringLiteral("sounds/night_walk.ogg"); }

    SoundFiles m_sounds;
    QString m_long;
    QString m_short;
    QString m_text;
    std::unique_ptr<PlayerWindow> m_window;
};

void TestPlayerWindow::initTestCase()
{
    mediabackend::choose();
    installMessageFilter();
    m_long = m_sounds.tone("long.wav", 20000);
    m_short = m_sounds.tone("short.wav", 300);
    m_text = m_sounds.text("text.wav");
}

void TestPlayerWindow::init()
{
    m_window = std::make_unique<PlayerWindow>(QStringLiteral("night"));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestPlayerWindow::cleanup()
{
    m_window.reset();
}

void TestPlayerWindow::isAsLargeAsItsPanel()
{
    QVERIFY(m_window->isSkinned());
    QCOMPARE(m_window->size(), QSize(480, 272));
    QCOMPARE(m_window->panel()->geometry(), QRect(0, 0, 480, 272));
    QCOMPARE(m_window->objectName(), QStringLiteral("night"));
}

void TestPlayerWindow::startsWithTheFocusOnPlay()
{
    QVERIFY(m_window->panel()->hasFocus());
    QCOMPARE(m_window->panel()->getFocus(), QStringLiteral("play"));
    QCOMPARE(state("play"), Focus);
    QCOMPARE(state("pause"), Hidden);
    QVERIFY(!m_window->playback()->isPlaying());
}

void TestPlayerWindow::keysAlonePlayPauseAndStop()
{
    Playback* playback = m_window->playback();
    playback->open({shippedSound()});
    QCOMPARE(state("pause"), Focus);
    QCOMPARE(state("play"), Hidden);
    QTRY_VERIFY(playback->position() > 200);

    type(Qt::Key_Return);
    QCOMPARE(state("play"), Focus);
    QCOMPARE(state("pause"), Hidden);
    const qint64 paused = playback->position();
    QTest::qWait(300);
    QCOMPARE(playback->position(), paused);

    type(Qt::Key_Return);
    QCOMPARE(state("pause"), Focus);
    QTRY_VERIFY(playback->position() > paused + 200);

    walkTo("stop");
    type(Qt::Key_Return);
    QCOMPARE(state("play"), Normal);
    QCOMPARE(state("pause"), Hidden);
    QCOMPARE(m_window->panel()->getFocus(), QStringLiteral("stop"));
    QTRY_COMPARE(playback->position(), 0);

    type(Qt::Key_Left);
    QCOMPARE(state("play"), Focus);
    type(Qt::Key_Return);
    QTRY_VERIFY(playback->position() > 0);
}

void TestPlayerWindow::pointerAlonePlaysPausesAndStops()
{
    Playback* playback = m_window->playback();
    playback->open({shippedSound()});
    QTRY_VERIFY(playback->position() > 200);

    // Play and pause share their place: the same tap takes turns.
    tap("pause");
    QCOMPARE(state("play"), Focus);
    const qint64 paused = playback->position();
    QTest::qWait(300);
    QCOMPARE(playback->position(), paused);

    tap("play");
    QCOMPARE(state("pause"), Focus);
    QTRY_VERIFY(playback->position() > paused + 200);

    tap("stop");
    QCOMPARE(state("stop"), Focus);
    QCOMPARE(state("play"), Normal);
    QCOMPARE(state("pause"), Hidden);
    QTRY_COMPARE(playback->position(), 0);

    tap("play");
    QCOMPARE(state("stop"), Normal);
    QTRY_VERIFY(playback->position() > 0);

    tap("open");
    QVERIFY(dialog() && dialog()->isVisible());
}

void TestPlayerWindow::keysStepThroughTheList()
{
    Playback* playback = m_window->playback();
    playback->open({m_long, shippedSound()});
    walkTo("next");
    type(Qt::Key_Return);
    QCOMPARE(playback->currentFile(), shippedSound());
    QCOMPARE(m_window->panel()->getFocus(), QStringLiteral("next"));
    QCOMPARE(state("pause"), Normal);
    QTRY_VERIFY(playback->position() > 0);
    type(Qt::Key_Return);
    QCOMPARE(playback->currentFile(), m_long);
    walkTo("prev");
    type(Qt::Key_Return);
    QCOMPARE(playback->currentFile(), shippedSound());
}

void TestPlayerWindow::pointerStepsThroughTheList()
{
    Playback* playback = m_window->playback();
    playback->open({m_long, shippedSound()});
    tap("prev");
    QCOMPARE(playback->currentFile(), shippedSound());
    tap("next");
    QCOMPARE(playback->currentFile(), m_long);
    QTRY_VERIFY(playback->position() > 0);
}

void TestPlayerWindow::focusElsewhereStaysWhenPlayAndPauseChange()
{
    walkTo("open");
    m_window->playback()->open({m_long});
    QCOMPARE(m_window->panel()->getFocus(), QStringLiteral("open"));
    QCOMPARE(state("pause"), Normal);
    m_window->playback()->pause();
    QCOMPARE(m_window->panel()->getFocus(), QStringLiteral("open"));
    QCOMPARE(state("play"), Normal);
}

void TestPlayerWindow::stepsAreDisabledForASingleFile()
{
    m_window->playback()->open({m_long});
    QCOMPARE(state("prev"), Disabled);
    QCOMPARE(state("next"), Disabled);
    m_window->playback()->open({m_long, m_short});
    QCOMPARE(state("prev"), Normal);
    QCOMPARE(state("next"), Normal);
    walkTo("next");
    m_window->playback()->open({m_long});
    QCOMPARE(state("next"), Disabled);
    QCOMPARE(m_window->panel()->getFocus(), QStringLiteral("open"));
}

void TestPlayerWindow::showsPlayAtTheEndOfTheList()
{
    m_window->playback()->open({m_short, m_short});
    QCOMPARE(state("pause"), Focus);
    QTRY_COMPARE(state("play"), Focus);
    QCOMPARE(state("pause"), Hidden);
    QVERIFY(!m_window->playback()->isPlaying());
    QCOMPARE(m_window->playback()->currentIndex(), 1);
}

void TestPlayerWindow::heldPauseIsReleasedAtTheEndOfTheList()
{
    m_window->playback()->open({m_short});
    QTest::mousePress(m_window->panel(), Qt::LeftButton, Qt::NoModifier, centre("pause"));
    QCOMPARE(state("pause"), Pressed);
    QTRY_COMPARE(state("play"), Focus);
    QCOMPARE(state("pause"), Hidden);
    // Lifting the stylus then finds no button held.
    QTest::mouseRelease(m_window->panel(), Qt::LeftButton, Qt::NoModifier, centre("pause"));
    QCOMPARE(state("play"), Focus);
    QVERIFY(!m_window->playback()->isPlaying());
}

void TestPlayerWindow::titleNamesTheFile()
{
    QCOMPARE(m_window->windowTitle(), QStringLiteral("skinplayer"));
    m_window->playback()->open({m_long});
    QCOMPARE(m_window->windowTitle(), QStringLiteral("long.wav - skinplayer"));
}

void TestPlayerWindow::titleTellsWhatCannotBePlayed()
{
    m_window->playback()->open({m_text, m_long});
    QTRY_COMPARE(m_window->windowTitle(), QStringLiteral("long.wav - cannot play text.wav - skinplayer"));
    QTRY_VERIFY(m_window->playback()->position() > 0);
    tap("pause");
    QCOMPARE(m_window->windowTitle(), QStringLiteral("long.wav - skinplayer"));
}

void TestPlayerWindow::escapeCloses()
{
    type(Qt::Key_Escape);
    QVERIFY(!m_window->isVisible());
}

void TestPlayerWindow::openButtonLetsKeysChooseFiles()
{
    walkTo("open");
    type(Qt::Key_Return);
    QVERIFY(dialog());
    QVERIFY(QTest::qWaitForWindowActive(dialog()));
    QVERIFY(dialog()->testOption(QFileDialog::DontUseNativeDialog));

    auto* names = dialog()->findChild<QLineEdit*>();
    QVERIFY(names && names->hasFocus());
    QTest::keyClicks(names, m_long);
    QTest::keyClick(names, Qt::Key_Return);
    QTRY_VERIFY(!dialog());
    QCOMPARE(m_window->playback()->files(), QStringList{m_long});
    QTRY_VERIFY(m_window->playback()->position() > 0);
    QTRY_VERIFY(m_window->panel()->hasFocus());
    QCOMPARE(m_window->panel()->getFocus(), QStringLiteral("open"));
}

void TestPlayerWindow::choosingTwiceGivesOneDialog()
{
    walkTo("open");
    type(Qt::Key_Return);
    QVERIFY(QTest::qWaitForWindowActive(dialog()));
    m_window->chooseFiles();
    QCOMPARE(m_window->findChildren<QFileDialog*>().size(), 1);
    QTest::keyClick(dialog(), Qt::Key_Escape);
    QTRY_VERIFY(!dialog());
    QVERIFY(m_window->isVisible());
    QCOMPARE(m_window->playback()->files(), QStringList());
}

void TestPlayerWindow::unknownSkinGivesNoPanel()
{
    PlayerWindow window(QStringLiteral("none"));
    QVERIFY(!window.isSkinned());
    // It still runs.
    window.playback()->open({m_short});
    QTRY_VERIFY(!window.playback()->isPlaying());
}

void TestPlayerWindow::listsSkinsThatHaveAConfig()
{
    QVERIFY(PlayerWindow::skins().contains(QStringLiteral("night")));
    const QByteArray before = qgetenv("QPEDIR");
    QTemporaryDir root;
    QVERIFY(QDir(root.path()).mkpath(QStringLiteral("pics/bare")));
    qputenv("QPEDIR", root.path().toLocal8Bit());
    const QStringList skins = PlayerWindow::skins();
    qputenv("QPEDIR", before);
    QCOMPARE(skins, QStringList());
}

QTEST_MAIN(TestPlayerWindow)
#include "tst_playerwindow.moc"
