#include "controls/imagebutton.h"
#include "controls/labelimage.h"
#include "controls/titlebar.h"
#include "player/details/coverpicture.h"
#include "player/infotext.h"
#include "player/mediabackend.h"
#include "player/messagefilter.h"
#include "player/messagelabel.h"
#include "player/playerwindow.h"
#include "player/soundfiles.h"
#include "skinbase/skinbase.h"

#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace
{

// These read what is there for subclasses.
class TitleReader : public TitleBar
{
public:
    static QString titleOf(const TitleBar* bar) { return bar->*&TitleReader::title; }
    static QString fileOf(const TitleBar* bar) { return bar->*&TitleReader::fileName; }
    static ImageButton* closeOf(const TitleBar* bar) { return bar->*&TitleReader::closeButton; }
};

class ButtonReader : public ImageButton
{
public:
    enum { Normal, Pressed, Focused };
    static int stateOf(const ImageButton* button) { return button->*&ButtonReader::state; }
};

} // namespace

/* Title bar, cover, messages and toggle buttons of the player's first screen, by real keys and a real pointer. */
class TestPlayingScreen : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void liesWhereTheSkinSays();
    void titleBeforeTheFirstFile();
    void titleOfATaggedFile();
    void titleOfAFileWithoutTags();
    void titleStaysClearOfTheCloseButton_data();
    void titleStaysClearOfTheCloseButton();
    void closeButtonEndsThePlayer();
    void textsShowWhatPlays();
    void titleOfThePlaylist();
    void coverOfTheFile();
    void coverBesideTheFile();
    void coverInTheTags_data();
    void coverInTheTags();
    void damagedCoversGiveTheSkinsOne_data();
    void damagedCoversGiveTheSkinsOne();
    void lineOfACoverFillsTheLabel_data();
    void lineOfACoverFillsTheLabel();
    void nextFileTakesTheCoverAlong();
    void pointerToggles_data();
    void pointerToggles();
    void keysToggle_data();
    void keysToggle();
    void returnTogglesTheFocusedButton();
    void leftAndRightLeadBackToThePanel_data();
    void leftAndRightLeadBackToThePanel();
    void playbackMovesTheButtons();
    void messagesTellOfChanges();
    void messageTellsWhatCannotBePlayed();
    void messageTellsTheEndOfTheList();
    void messageTakesThePlaceOfTheTexts();
    void messagesMayHaveAPlaceOfTheirOwn();
    void nothingIsToldBeforeThePlayerShows();
    void hugeTagsAreHarmless_data();
    void hugeTagsAreHarmless();
    void skinMayLackWidgets_data();
    void skinMayLackWidgets();
    void skinMayLackPictures();
    void badPlacesAreHarmless_data();
    void badPlacesAreHarmless();

private:
    PlayingScreen* screen() const { return m_window->playingScreen(); }
    Playback* playback() const { return m_window->playback(); }
    QString title() const { return TitleReader::titleOf(screen()->titleBar()); }
    QString file() const { return TitleReader::fileOf(screen()->titleBar()); }
    QString message() const { return screen()->message()->message(); }
    void type(Qt::Key key) { QTest::keyClick(m_window->windowHandle(), key); }
    void tap(const QWidget* widget)
    {
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          widget->mapTo(m_window.get(), widget->rect().center()));
    }
    ImageButton* toggle(const QString& name) const
    {
        return name == QLatin1String("shuffle") ? screen()->shuffleButton() : screen()->repeatButton();
    }
    bool isOn(const QString& name) const
    {
        return name == QLatin1String("shuffle") ? playback()->isShuffled() : playback()->isRepeated();
    }
    QImage shownCover() const { return screen()->cover()->grab().toImage().convertToFormat(QImage::Format_RGB32); }
    QString skinFile(const QString& name) const { return QString::fromLocal8Bit(m_dataDirectory) + name; }
    QImage skinCover() const { return QImage(skinFile("pics/night/cover.png")).convertToFormat(QImage::Format_RGB32); }
    QString shippedSound() const { return skinFile("sounds/night_walk.ogg"); }
    void openWindow()
    {
        m_window = std::make_unique<PlayerWindow>(QStringLiteral("night"));
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    // Opens the window with a copy of the skin whose config was changed by the function.
    template <typename Change>
    void openChangedSkin(Change change);

    SoundFiles m_sounds;
    QString m_long;
    QString m_short;
    QByteArray m_dataDirectory;
    std::unique_ptr<QTemporaryDir> m_skins;
    std::unique_ptr<PlayerWindow> m_window;
};

void TestPlayingScreen::initTestCase()
{
    mediabackend::choose();
    installMessageFilter();
    // By which the pictures are found.
    QApplication::setApplicationName(QStringLiteral("skinplayer"));
    m_dataDirectory = qgetenv("QPEDIR");
    m_long = m_sounds.tone("long.wav", 20000);
    m_short = m_sounds.tone("short.wav", 300);
}

void TestPlayingScreen::init()
{
    openWindow();
}

void TestPlayingScreen::cleanup()
{
    m_window.reset();
    m_skins.reset();
    qputenv("QPEDIR", m_dataDirectory);
    for (const char* name : {"cover.png", "cover.jpg"})
        QFile::remove(m_sounds.path(name));
}

template <typename Change>
void TestPlayingScreen::openChangedSkin(Change change)
{
    m_window.reset();
    m_skins = std::make_unique<QTemporaryDir>();
    for (const char* skin : {"pics/night/", "pics/skinplayer/"}) {
        const QDir from(skinFile(skin));
        QVERIFY(QDir(m_skins->path()).mkpath(skin));
        for (const QString& name : from.entryList(QDir::Files))
            QVERIFY(QFile::copy(from.filePath(name), m_skins->filePath(skin + name)));
    }
    QFile original(skinFile("pics/night/config"));
    QVERIFY(original.open(QIODevice::ReadOnly));
    QByteArray text = original.readAll();
    change(text);
    QFile config(m_skins->filePath("pics/night/config"));
    QVERIFY(config.remove() && config.open(QIODevice::WriteOnly));
    config.write(text);
    config.close();
    qputenv("QPEDIR", m_skins->path().toLocal8Bit());
    openWindow();
}

void TestPlayingScreen::liesWhereTheSkinSays()
{
    QCOMPARE(screen()->titleBar()->geometry(), QRect(0, 0, 480, 23));
    QCOMPARE(screen()->cover()->geometry(), QRect(14, 34, 104, 104));
    QCOMPARE(screen()->shuffleButton()->geometry(), QRect(22, 214, 32, 26));
    QCOMPARE(screen()->repeatButton()->geometry(), QRect(58, 214, 32, 26));
    QCOMPARE(screen()->info()->geometry().topLeft(), QPoint(134, 31));
    QCOMPARE(screen()->message()->geometry(), screen()->info()->geometry());
    // The pictures contain the ground that they stand on.
    const QImage background(skinFile("pics/night/player_bg.png"));
    for (const ImageButton* button : {screen()->shuffleButton(), screen()->repeatButton()}) {
        const QImage shown = const_cast<ImageButton*>(button)->grab().toImage();
        QCOMPARE(shown.pixelColor(0, 0).rgb(), background.pixelColor(button->pos()).rgb());
        QCOMPARE(shown.pixelColor(31, 25).rgb(), background.pixelColor(button->pos() + QPoint(31, 25)).rgb());
    }
    // Without a file the cover is the skin's.
    QCOMPARE(shownCover(), skinCover());
}

void TestPlayingScreen::titleBeforeTheFirstFile()
{
    QCOMPARE(title(), QStringLiteral("skinplayer"));
    QVERIFY(file().isNull());
}

void TestPlayingScreen::titleOfATaggedFile()
{
    playback()->open({shippedSound()});
    QTRY_COMPARE(title(), QStringLiteral("Night walk"));
    QCOMPARE(file(), QStringLiteral("night_walk.ogg"));
}

void TestPlayingScreen::titleOfAFileWithoutTags()
{
    playback()->open({m_long});
    QTRY_VERIFY(playback()->position() > 0);
    QCOMPARE(title(), QStringLiteral("long.wav"));
    QVERIFY(file().isNull());
}

void TestPlayingScreen::titleStaysClearOfTheCloseButton_data()
{
    QTest::addColumn<QByteArray>("title");
    QTest::addColumn<QString>("name");
    QTest::newRow("long title") << QByteArray(10000, 'W') << "song.wav";
    QTest::newRow("long name") << QByteArray("Song") << QString(240, QLatin1Char('n')) + ".wav";
    QTest::newRow("long both") << QByteArray(500, 'W') << QString(240, QLatin1Char('m')) + ".wav";
    QTest::newRow("no title") << QByteArray() << QString(240, QLatin1Char('o')) + ".wav";
    QTest::newRow("right to left") << QByteArray("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d ").repeated(100) << "song.wav";
    QTest::newRow("line breaks") << QByteArray("one\ntwo\r\n").repeated(200) << "song.wav";
}

void TestPlayingScreen::titleStaysClearOfTheCloseButton()
{
    QFETCH(QByteArray, title);
    QFETCH(QString, name);
    const QString sound = title.isEmpty() ? m_sounds.tone(name, 20000) : m_sounds.tone(name, 20000, {{"INAM", title}});
    playback()->open({sound});
    QTRY_VERIFY(playback()->position() > 0);
    if (!title.isEmpty())
        QTRY_VERIFY(!file().isNull());
    QVERIFY(!this->title().contains(QLatin1Char('\n')));
    const QImage shown = screen()->titleBar()->grab().toImage();
    const QImage bare(skinFile("pics/skinplayer/title_bg.png"));
    int rightmost = 0;
    for (int x = 0; x < 450; ++x)
        for (int y = 0; y < 23; ++y)
            if (shown.pixelColor(x, y).rgb() != bare.pixelColor(x, y).rgb())
                rightmost = x;
    QVERIFY2(rightmost > 380, qPrintable(QString::number(rightmost)));
    QVERIFY2(rightmost < 444, qPrintable(QString::number(rightmost)));
    QVERIFY(QFile::remove(sound));
}

void TestPlayingScreen::closeButtonEndsThePlayer()
{
    QVERIFY(TitleReader::closeOf(screen()->titleBar()));
    tap(TitleReader::closeOf(screen()->titleBar()));
    QVERIFY(!m_window->isVisible());
}

void TestPlayingScreen::textsShowWhatPlays()
{
    playback()->open({shippedSound()});
    QTRY_COMPARE(screen()->info()->texts().artist, QStringLiteral("SkinWidgets"));
    QCOMPARE(screen()->info()->texts().title, QStringLiteral("Night walk"));
    QVERIFY(!screen()->info()->texts().album.isEmpty());
    playback()->open({m_long});
    QTRY_COMPARE(screen()->info()->texts().title, QStringLiteral("long.wav"));
    QCOMPARE(screen()->info()->texts().artist, QString());
}

void TestPlayingScreen::titleOfThePlaylist()
{
    const QString tagged = m_sounds.tone("tagged.wav", 20000, {{"INAM", "Tagged"}});
    playback()->openEntries({{m_long, "One of the list", -1, false},
                             {m_long, "Another one", -1, false},
                             {tagged, "Not this one", -1, false}});
    QCOMPARE(screen()->info()->texts().title, QStringLiteral("One of the list"));
    QCOMPARE(title(), QStringLiteral("One of the list"));
    QCOMPARE(file(), QStringLiteral("long.wav"));
    QTRY_VERIFY(playback()->position() > 0);
    QCOMPARE(screen()->info()->texts().title, QStringLiteral("One of the list"));
    playback()->next();
    QCOMPARE(screen()->info()->texts().title, QStringLiteral("Another one"));
    playback()->next();
    QTRY_COMPARE(screen()->info()->texts().title, QStringLiteral("Tagged"));
    QVERIFY(QFile::remove(tagged));
}

void TestPlayingScreen::coverOfTheFile()
{
    playback()->open({shippedSound()});
    QTRY_VERIFY(shownCover() != skinCover());
    // It is a scene at night with a moon, not stretched: the label is as square as the picture.
    QVERIFY(shownCover().pixelColor(75, 23).lightness() > 200);
}

void TestPlayingScreen::coverBesideTheFile()
{
    QImage cover(300, 200, QImage::Format_RGB32);
    cover.fill(Qt::green);
    QVERIFY(cover.save(m_sounds.path("cover.png")));
    playback()->open({m_long});
    QImage green(104, 104, QImage::Format_RGB32);
    green.fill(Qt::green);
    QCOMPARE(shownCover(), green);
}

void TestPlayingScreen::coverInTheTags_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("shows");
    QByteArray png;
    QBuffer buffer(&png);
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    QImage cover(300, 300, QImage::Format_RGB32);
    cover.fill(Qt::green);
    QVERIFY(cover.save(&buffer, "PNG"));
    QTest::newRow("whole") << png << true;
    QTest::newRow("only a beginning") << png.left(40) << false;
    QTest::newRow("bytes of something else") << QByteArray(1000, '\x55') << false;
    QTest::newRow("empty") << QByteArray() << false;
}

void TestPlayingScreen::coverInTheTags()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, shows);
    const QString sound = m_sounds.toneWithCover("covered.wav", 20000, "Covered", bytes);
    playback()->open({sound});
    QTRY_COMPARE(screen()->info()->texts().title, QStringLiteral("Covered"));
    QTRY_VERIFY(playback()->position() > 0);
    QImage green(104, 104, QImage::Format_RGB32);
    green.fill(Qt::green);
    QTRY_COMPARE(shownCover(), shows ? green : skinCover());
    m_window->showDetails();
    QTRY_VERIFY(m_window->currentScreen() != screen());
    QVERIFY(!m_window->grab().isNull());
    QVERIFY(QFile::remove(sound));
}

void TestPlayingScreen::damagedCoversGiveTheSkinsOne_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("no picture");
    QTest::newRow("only a beginning") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x01\0\0\0\x01\0\x08\x02\0\0\0",
                                                    29);
    QTest::newRow("huge by its header") << QByteArray(
        "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\x7f\xff\xff\xff\x7f\xff\xff\xff\x08\x02\0\0\0\0\0\0\0", 33);
}

void TestPlayingScreen::damagedCoversGiveTheSkinsOne()
{
    QFETCH(QByteArray, bytes);
    m_sounds.file("cover.png", bytes);
    playback()->open({m_long});
    QTRY_VERIFY(playback()->position() > 0);
    QCOMPARE(shownCover(), skinCover());
}

void TestPlayingScreen::lineOfACoverFillsTheLabel_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("wide") << QSize(10000, 1);
    QTest::newRow("high") << QSize(1, 10000);
    QTest::newRow("one pixel") << QSize(1, 1);
}

void TestPlayingScreen::lineOfACoverFillsTheLabel()
{
    QFETCH(QSize, size);
    QImage line(size, QImage::Format_RGB32);
    line.fill(Qt::blue);
    QVERIFY(line.save(m_sounds.path("cover.png")));
    QElapsedTimer clock;
    clock.start();
    playback()->open({m_long});
    QImage blue(104, 104, QImage::Format_RGB32);
    blue.fill(Qt::blue);
    QCOMPARE(shownCover(), blue);
    QVERIFY(clock.elapsed() < 5000);
}

void TestPlayingScreen::nextFileTakesTheCoverAlong()
{
    playback()->open({shippedSound(), m_long});
    QTRY_VERIFY(shownCover() != skinCover());
    playback()->next();
    QTRY_COMPARE(shownCover(), skinCover());
    QCOMPARE(title(), QStringLiteral("long.wav"));
    playback()->previous();
    QTRY_VERIFY(shownCover() != skinCover());
    QTRY_COMPARE(title(), QStringLiteral("Night walk"));
}

void TestPlayingScreen::pointerToggles_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("shuffle") << "shuffle";
    QTest::newRow("repeat") << "repeat";
}

void TestPlayingScreen::pointerToggles()
{
    QFETCH(QString, name);
    QVERIFY(!isOn(name));
    for (const bool on : {true, false, true}) {
        tap(toggle(name));
        QCOMPARE(isOn(name), on);
        QCOMPARE(toggle(name)->toggledState(), on);
    }
    QVERIFY(!isOn(name == QLatin1String("shuffle") ? "repeat" : "shuffle"));
}

void TestPlayingScreen::keysToggle_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("key");
    QTest::newRow("S") << "shuffle" << int(Qt::Key_S);
    QTest::newRow("R") << "repeat" << int(Qt::Key_R);
}

void TestPlayingScreen::keysToggle()
{
    QFETCH(QString, name);
    QFETCH(int, key);
    for (const bool on : {true, false}) {
        type(Qt::Key(key));
        QCOMPARE(isOn(name), on);
        QCOMPARE(toggle(name)->toggledState(), on);
    }
    // The focus stays where it was.
    QVERIFY(m_window->panel()->hasFocus());
    // And they work while a button has it.
    tap(toggle(name));
    type(Qt::Key(key));
    QVERIFY(!isOn(name));
}

void TestPlayingScreen::returnTogglesTheFocusedButton()
{
    tap(screen()->shuffleButton());
    QVERIFY(screen()->shuffleButton()->hasFocus());
    type(Qt::Key_Return);
    QVERIFY(!playback()->isShuffled());
    QTest::keyClick(m_window->windowHandle(), Qt::Key_Tab);
    QVERIFY(screen()->repeatButton()->hasFocus());
    QCOMPARE(ButtonReader::stateOf(screen()->repeatButton()), int(ButtonReader::Focused));
    QCOMPARE(ButtonReader::stateOf(screen()->shuffleButton()), int(ButtonReader::Normal));
    type(Qt::Key_Return);
    QVERIFY(playback()->isRepeated());
}

void TestPlayingScreen::leftAndRightLeadBackToThePanel_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Left") << int(Qt::Key_Left);
    QTest::newRow("Right") << int(Qt::Key_Right);
}

void TestPlayingScreen::leftAndRightLeadBackToThePanel()
{
    QFETCH(int, key);
    tap(screen()->repeatButton());
    QVERIFY(!m_window->panel()->hasFocus());
    type(Qt::Key(key));
    QVERIFY(m_window->panel()->hasFocus());
    QCOMPARE(m_window->panel()->getFocus(), QStringLiteral("play"));
    QCOMPARE(ButtonReader::stateOf(screen()->repeatButton()), int(ButtonReader::Normal));
    QVERIFY(playback()->isRepeated());

    // From the close button, too, which keeps the focus where a press ends beside it.
    QTest::mousePress(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(460, 11));
    QTest::mouseRelease(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(300, 11));
    QVERIFY(m_window->isVisible());
    QVERIFY(TitleReader::closeOf(screen()->titleBar())->hasFocus());
    type(Qt::Key(key));
    QVERIFY(m_window->panel()->hasFocus());
}

void TestPlayingScreen::playbackMovesTheButtons()
{
    QSignalSpy changes(playback(), &Playback::shuffledChanged);
    playback()->setShuffled(true);
    QVERIFY(screen()->shuffleButton()->toggledState());
    QCOMPARE(changes, (QList<QVariantList>{{true}}));
    playback()->setRepeated(true);
    QVERIFY(screen()->repeatButton()->toggledState());
}

void TestPlayingScreen::messagesTellOfChanges()
{
    QVERIFY(message().isEmpty());
    playback()->setVolume(50);
    QCOMPARE(message(), QStringLiteral("Volume 50 %"));
    QVERIFY(screen()->message()->isVisible());
    type(Qt::Key_M);
    QCOMPARE(message(), QStringLiteral("Sound off"));
    type(Qt::Key_M);
    QCOMPARE(message(), QStringLiteral("Sound on"));
    type(Qt::Key_S);
    QCOMPARE(message(), QStringLiteral("Shuffle on"));
    type(Qt::Key_S);
    QCOMPARE(message(), QStringLiteral("Shuffle off"));
    tap(screen()->repeatButton());
    QCOMPARE(message(), QStringLiteral("Repeat on"));
    tap(screen()->repeatButton());
    QCOMPARE(message(), QStringLiteral("Repeat off"));
}

void TestPlayingScreen::messageTellsWhatCannotBePlayed()
{
    playback()->open({m_sounds.path("missing.ogg"), m_long});
    QTRY_COMPARE(message(), QStringLiteral("Cannot play missing.ogg: no such file"));
    QTRY_VERIFY(playback()->position() > 0);
    QCOMPARE(message(), QStringLiteral("Cannot play missing.ogg: no such file"));
}

void TestPlayingScreen::messageTellsTheEndOfTheList()
{
    playback()->open({m_short});
    QTRY_COMPARE(message(), QStringLiteral("End of the playlist"));
    QVERIFY(!playback()->isPlaying());
}

void TestPlayingScreen::messageTakesThePlaceOfTheTexts()
{
    QVERIFY(screen()->info()->isVisible());
    screen()->showMessage(QStringLiteral("Something"));
    QVERIFY(!screen()->info()->isVisible());
    auto* timer = screen()->message()->findChild<QTimer*>(QStringLiteral("message"));
    QVERIFY(timer && timer->isActive());
    timer->start(0);
    QTRY_VERIFY(screen()->info()->isVisible());
    QVERIFY(!screen()->message()->isVisible());
}

void TestPlayingScreen::messagesMayHaveAPlaceOfTheirOwn()
{
    openChangedSkin([](QByteArray& config) {
        config.replace("\n[Screen]\n",
                       "\n[Screen]\nmessage_x = 120\nmessage_y = 2\nmessage_width = 300\nmessage_height = 20\n");
    });
    QCOMPARE(screen()->message()->geometry(), QRect(120, 2, 300, 20));
    screen()->showMessage(QStringLiteral("Something"));
    QVERIFY(screen()->message()->isVisible());
    QVERIFY(screen()->info()->isVisible());
}

void TestPlayingScreen::nothingIsToldBeforeThePlayerShows()
{
    PlayerWindow window(QStringLiteral("night"));
    window.playback()->setShuffled(true);
    window.playback()->setVolume(20);
    QVERIFY(window.playingScreen()->shuffleButton()->toggledState());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.playingScreen()->message()->message().isEmpty());
}

void TestPlayingScreen::hugeTagsAreHarmless_data()
{
    QTest::addColumn<QByteArray>("tag");
    QTest::newRow("10,000 characters") << QByteArray(10000, 'W');
    QTest::newRow("control characters") << QByteArray("\x01\x07\x1b[31m\x7f").repeated(500);
    QTest::newRow("line breaks only") << QByteArray("\r\n").repeated(500);
    QTest::newRow("turned direction") << QByteArray("\xe2\x80\xae"
                                                    "abc")
                                             .repeated(100);
    QTest::newRow("no UTF-8") << QByteArray("\xff\xfe\xc0\x80").repeated(200);
}

void TestPlayingScreen::hugeTagsAreHarmless()
{
    QFETCH(QByteArray, tag);
    QElapsedTimer clock;
    clock.start();
    const QString sound = m_sounds.tone("tagged.wav", 20000, {{"INAM", tag}, {"IART", tag}, {"IPRD", tag}});
    playback()->open({sound});
    QTRY_VERIFY(playback()->position() > 0);
    m_window->grab();
    for (const QString& shown : {title(), file()})
        for (const QChar c : shown)
            QVERIFY(c.category() != QChar::Other_Control && c.unicode() != 0x202e);
    QVERIFY(QFontMetrics(screen()->titleBar()->font()).horizontalAdvance(title()) < 440);
    QVERIFY(clock.elapsed() < 10000);
}

void TestPlayingScreen::skinMayLackWidgets_data()
{
    QTest::addColumn<QByteArray>("key");
    for (const char* key : {"title", "shuffle", "repeat", "cover", "info"})
        QTest::newRow(key) << QByteArray(key);
    QTest::newRow("all") << QByteArray();
}

void TestPlayingScreen::skinMayLackWidgets()
{
    QFETCH(QByteArray, key);
    openChangedSkin([&key](QByteArray& config) {
        if (key.isEmpty())
            config.replace("[Screen]", "[Elsewhere]");
        else
            config.replace("\n" + key + "_x =", "\nno_x =").replace("\n" + key + "_width =", "\nno_width =");
    });
    const bool all = key.isEmpty();
    QCOMPARE(!screen()->titleBar(), all || key == "title");
    QCOMPARE(!screen()->shuffleButton(), all || key == "shuffle");
    QCOMPARE(!screen()->repeatButton(), all || key == "repeat");
    QCOMPARE(!screen()->cover(), all || key == "cover");
    QCOMPARE(!screen()->info(), all || key == "info");
    QCOMPARE(!screen()->message(), all || key == "info");
    // The keys work all the same.
    type(Qt::Key_S);
    QVERIFY(playback()->isShuffled());
    type(Qt::Key_R);
    QVERIFY(playback()->isRepeated());
    playback()->open({shippedSound(), m_sounds.path("missing.ogg")});
    QTRY_VERIFY(playback()->position() > 0);
    type(Qt::Key_Escape);
    QVERIFY(!m_window->isVisible());
}

void TestPlayingScreen::skinMayLackPictures()
{
    openChangedSkin([this](QByteArray& config) {
        config.replace("cover = cover.png", "cover = none.png");
        QVERIFY(QDir(m_skins->filePath("pics/skinplayer")).removeRecursively());
    });
    QVERIFY(!screen()->shuffleButton());
    QVERIFY(!screen()->repeatButton());
    // The texts show, the close button cannot be seen.
    playback()->open({shippedSound()});
    QTRY_COMPARE(title(), QStringLiteral("Night walk"));
    // The cover's place is bare.
    playback()->open({m_long});
    const QImage bare = QImage(skinFile("pics/night/player_bg.png")).copy(14, 34, 104, 104);
    QTRY_COMPARE(shownCover(), bare.convertToFormat(QImage::Format_RGB32));
    m_window->grab();
}

void TestPlayingScreen::badPlacesAreHarmless_data()
{
    QTest::addColumn<QByteArray>("value");
    for (const char* value : {"2147483647", "-2147483648", "99999999999999", "-1", "no number", ""})
        QTest::newRow(*value ? value : "empty") << QByteArray(value);
}

void TestPlayingScreen::badPlacesAreHarmless()
{
    QFETCH(QByteArray, value);
    openChangedSkin([&value](QByteArray& config) {
        QByteArray changed;
        bool isScreen = false;
        for (const QByteArray& line : config.split('\n')) {
            if (line.startsWith('['))
                isScreen = line == "[Screen]";
            const bool isNumber = isScreen && line.contains('=') && !line.contains('#');
            changed += (isNumber ? line.left(line.indexOf('=') + 1) + value : line) + '\n';
        }
        config = changed;
    });
    playback()->open({shippedSound()});
    QTRY_VERIFY(playback()->position() > 0);
    screen()->showMessage(QStringLiteral("Something"));
    QCOMPARE(m_window->grab().size(), QSize(480, 272));
    QVERIFY(!screen()->cover() || screen()->panel()->rect().contains(screen()->cover()->geometry()));
}

QTEST_MAIN(TestPlayingScreen)
#include "tst_playingscreen.moc"
