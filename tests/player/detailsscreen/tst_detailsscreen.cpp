#include "player/details/detailsview.h"
#include "player/mediabackend.h"
#include "player/messagefilter.h"
#include "player/playerwindow.h"
#include "player/seekcontrol.h"
#include "player/soundfiles.h"
#include "scroll/scrollbarskin.h"
#include "skinbase/skinbase.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>
#include <limits>
#include <memory>

namespace
{

// Reads a panel's buttons, which are there for subclasses.
class ButtonReader : public SkinBase
{
public:
    static QPoint centre(const SkinBase* panel, const QString& name)
    {
        const SkinButton* button = (panel->*&ButtonReader::buttonMap).value(name);
        return QRect(QPoint(button->xpos, button->ypos), button->stateImage[0].size()).center();
    }
};

QByteArray manyLines(int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += "line " + QByteArray::number(i) + " of a long text beside the sound\n";
    return text;
}

} // namespace

/* The screen with the details of the current file, operated as a user does. */
class TestDetailsScreen : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void opensAndClosesByKey_data();
    void opensAndClosesByKey();
    void opensAndClosesByPointer();
    void keysBelongToTheScreenThatShows();
    void keysScroll();
    void wheelScrolls();
    void wheelOfFineStepsAddsUp();
    void dragScrolls();
    void trembleScrollsNothing();
    void otherButtonsScrollNothing();
    void barScrolls();
    void showsTheTagsOfTheFile();
    void showsTheShippedSound();
    void showsAFileWithoutTags();
    void showsNothingWithoutAFile();
    void followsTheList();
    void keepsItsPlaceWhenTagsArrive();
    void showsTheTextBeside_data();
    void showsTheTextBeside();
    void brokenCoverGivesTheSkinsOne();
    void coverBesideIsShown();
    void lyricsFollowPlayback();
    void lyricsLetTheUserReadElsewhere();
    void longTextScrollsWithoutAPause();
    void textOfEmptyLinesIsLaidOutInPortions();
    void skinMayLackTheScreen();
    void skinMayGiveNothingButThePanel();

private:
    void type(Qt::Key key) { QTest::keyClick(m_window->windowHandle(), key); }
    void tap(const SkinBase* panel, const QString& button)
    {
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          panel->mapTo(m_window.get(), ButtonReader::centre(panel, button)));
    }
    void turnWheel(int angle)
    {
        const QPointF at = view()->mapTo(m_window.get(), QPointF(100, 100));
        QWheelEvent event(at, m_window->mapToGlobal(at), QPoint(), QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_window->windowHandle(), &event);
    }
    QPoint inView(int x, int y) const { return view()->mapTo(m_window.get(), QPoint(x, y)); }
    void press(const QPoint& at, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(m_window->windowHandle(), button, Qt::NoModifier, at);
    }
    void move(const QPoint& to) { QTest::mouseMove(m_window->windowHandle(), to); }
    void release(const QPoint& at, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(m_window->windowHandle(), button, Qt::NoModifier, at);
    }

    void open(const QString& file)
    {
        m_window->playback()->open({file});
        m_window->showDetails();
        QVERIFY(m_window->detailsScreen()->isVisible());
    }
    // A file whose text is longer than the screen.
    void openLong() { open(m_long); }

    DetailsView* view() const { return m_window->detailsScreen()->view(); }
    const DetailsPage& page() const { return view()->page(); }
    int position() const { return view()->contentsY(); }
    int lastPosition() const { return view()->contentsHeight() - view()->visibleHeight(); }
    bool showsDetails() const { return m_window->detailsScreen()->isVisible(); }
    QString value(const QString& label) const
    {
        for (const TrackDetails::Entry& entry : page().track().entries)
            if (entry.label == label)
                return entry.value;
        return {};
    }
    QImage drawn(const QRect& part) const
    {
        QImage image(part.size(), QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.translate(-part.topLeft());
        page().draw(&painter, part);
        return image;
    }
    QImage drawnCover() const { return drawn(page().coverRect()); }
    // Pixels in the colour of highlights, however light.
    int countWarm(const QRect& part) const
    {
        const QImage image = drawn(part);
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y).red() > image.pixelColor(x, y).blue() + 40;
        return count;
    }
    QImage skinCover() const
    {
        return QImage(qEnvironmentVariable("QPEDIR") + QStringLiteral("pics/night/cover.png"))
            .convertToFormat(QImage::Format_RGB32);
    }
    QString shippedSound() const { return qEnvironmentVariable("QPEDIR") + QStringLiteral("sounds/night_walk.ogg"); }

    SoundFiles m_sounds;
    QString m_long;
    QByteArray m_dataDirectory;
    std::unique_ptr<PlayerWindow> m_window;
};

void TestDetailsScreen::initTestCase()
{
    mediabackend::choose();
    installMessageFilter();
    m_dataDirectory = qgetenv("QPEDIR");
    m_long = m_sounds.tone("long.wav", 20000);
    m_sounds.file("long.txt", manyLines(200));
}

void TestDetailsScreen::init()
{
    m_window = std::make_unique<PlayerWindow>(QStringLiteral("night"));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QVERIFY(!showsDetails());
}

void TestDetailsScreen::cleanup()
{
    m_window.reset();
    qputenv("QPEDIR", m_dataDirectory);
}

void TestDetailsScreen::opensAndClosesByKey_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("I") << int(Qt::Key_I);
    QTest::newRow("Escape") << int(Qt::Key_Escape);
    QTest::newRow("Back") << int(Qt::Key_Back);
    // The close button has the focus.
    QTest::newRow("Return") << int(Qt::Key_Return);
}

void TestDetailsScreen::opensAndClosesByKey()
{
    QFETCH(int, key);
    m_window->playback()->open({m_long});
    type(Qt::Key_I);
    QVERIFY(showsDetails());
    QVERIFY(!m_window->playingScreen()->isVisible());
    QCOMPARE(m_window->currentScreen(), m_window->detailsScreen());
    QVERIFY(m_window->detailsScreen()->panel()->hasFocus());
    QVERIFY(m_window->playback()->isPlaying());

    type(static_cast<Qt::Key>(key));
    QVERIFY(!showsDetails());
    QVERIFY(m_window->isVisible());
    QVERIFY(m_window->playingScreen()->isVisible());
    QVERIFY(m_window->panel()->hasFocus());
    QVERIFY(m_window->playback()->isPlaying());
}

void TestDetailsScreen::opensAndClosesByPointer()
{
    m_window->playback()->open({m_long});
    tap(m_window->panel(), QStringLiteral("details"));
    QVERIFY(showsDetails());
    tap(m_window->detailsScreen()->panel(), QStringLiteral("close"));
    QVERIFY(!showsDetails());
    QVERIFY(m_window->isVisible());
}

void TestDetailsScreen::keysBelongToTheScreenThatShows()
{
    m_window->playback()->open({m_long});
    const int volume = m_window->playback()->volume();
    type(Qt::Key_I);
    type(Qt::Key_Up);
    type(Qt::Key_B);
    QCOMPARE(m_window->playback()->volume(), volume);
    QCOMPARE(m_window->seekControl()->bookmarks(), QList<qint64>());
    type(Qt::Key_Down);
    QCOMPARE(position(), DetailsPage::scrollStep);
    type(Qt::Key_I);
    type(Qt::Key_Down);
    QCOMPARE(m_window->playback()->volume(), volume - 5);
    QCOMPARE(position(), DetailsPage::scrollStep);
    type(Qt::Key_Escape);
    QVERIFY(!m_window->isVisible());
}

void TestDetailsScreen::keysScroll()
{
    openLong();
    QCOMPARE(position(), 0);
    type(Qt::Key_Up);
    QCOMPARE(position(), 0);
    type(Qt::Key_Down);
    type(Qt::Key_Down);
    QCOMPARE(position(), 2 * DetailsPage::scrollStep);
    type(Qt::Key_Up);
    QCOMPARE(position(), DetailsPage::scrollStep);
    type(Qt::Key_PageDown);
    QCOMPARE(position(), view()->visibleHeight());
    type(Qt::Key_PageUp);
    QCOMPARE(position(), DetailsPage::scrollStep);
    QTRY_VERIFY(page().isLaidOut());
    type(Qt::Key_End);
    QCOMPARE(position(), lastPosition());
    type(Qt::Key_PageDown);
    QCOMPARE(position(), lastPosition());
    QCOMPARE(view()->verticalScrollBar()->value(), lastPosition());
    type(Qt::Key_Home);
    QCOMPARE(position(), 0);
    // Also after a press on the panel or the contents.
    tap(m_window->detailsScreen()->panel(), QStringLiteral("close"));
    type(Qt::Key_I);
    press(inView(300, 150));
    release(inView(300, 150));
    type(Qt::Key_Down);
    QCOMPARE(position(), DetailsPage::scrollStep);
}

void TestDetailsScreen::wheelScrolls()
{
    openLong();
    turnWheel(-120);
    QCOMPARE(position(), 3 * DetailsPage::scrollStep);
    turnWheel(120);
    QCOMPARE(position(), 0);
    turnWheel(120);
    QCOMPARE(position(), 0);
}

void TestDetailsScreen::wheelOfFineStepsAddsUp()
{
    openLong();
    // Each alone is less than a pixel.
    for (int i = 0; i < 120; ++i)
        turnWheel(-1);
    QCOMPARE(position(), 3 * DetailsPage::scrollStep);
}

void TestDetailsScreen::dragScrolls()
{
    openLong();
    const int threshold = QApplication::startDragDistance();
    press(inView(200, 200));
    // No jump where the drag begins, and every pixel from there on.
    move(inView(200, 200 - threshold));
    QCOMPARE(position(), 0);
    move(inView(200, 200 - threshold - 1));
    QCOMPARE(position(), 1);
    move(inView(200, 200 - threshold - 80));
    QCOMPARE(position(), 80);
    // Back over the place of the press, beyond the start, outside of the view.
    move(inView(200, 200 - threshold - 30));
    QCOMPARE(position(), 30);
    move(inView(200, 240));
    QCOMPARE(position(), 0);
    move(inView(200, 200 - threshold - 60));
    QCOMPARE(position(), 60);
    release(inView(200, 200 - threshold - 60));
    move(inView(200, 20));
    QCOMPARE(position(), 60);
    QVERIFY(showsDetails());
}

void TestDetailsScreen::trembleScrollsNothing()
{
    openLong();
    const int threshold = QApplication::startDragDistance();
    press(inView(200, 200));
    for (const int distance : {1, -1, threshold - 1, 1 - threshold, 0})
        move(inView(200, 200 + distance));
    release(inView(200, 200));
    QCOMPARE(position(), 0);
}

void TestDetailsScreen::otherButtonsScrollNothing()
{
    openLong();
    press(inView(200, 200), Qt::RightButton);
    move(inView(200, 100));
    release(inView(200, 100), Qt::RightButton);
    QCOMPARE(position(), 0);
}

void TestDetailsScreen::barScrolls()
{
    openLong();
    QTRY_VERIFY(page().isLaidOut());
    const ScrollBarSkin* bar = view()->verticalScrollBar();
    QVERIFY(bar->isVisible());
    const QPoint thumb = bar->mapTo(m_window.get(), bar->sliderRect().center());
    press(thumb);
    move(thumb + QPoint(0, 50));
    release(thumb + QPoint(0, 50));
    QVERIFY(position() > 0);
    QCOMPARE(position(), bar->value());
    const int dragged = position();
    const QPoint trough = bar->mapTo(m_window.get(), QPoint(10, bar->height() - 30));
    press(trough);
    release(trough);
    QCOMPARE(position(), dragged + view()->visibleHeight());
    QCOMPARE(position(), bar->value());
}

void TestDetailsScreen::showsTheTagsOfTheFile()
{
    const QString file = m_sounds.tone("tagged.wav", 65000,
                                       {{"INAM", "A \xc3\xa9tude"},
                                        {"IART", "Somebody"},
                                        {"IPRD", "An album"},
                                        {"IGNR", "Study"},
                                        {"ICMT", "Two\nlines"}});
    open(file);
    QTRY_COMPARE(page().track().title, QStringLiteral("A \u00e9tude"));
    QTRY_COMPARE(value(QStringLiteral("Length")), QStringLiteral("1:05"));
    QCOMPARE(page().track().artist, QStringLiteral("Somebody"));
    QCOMPARE(value(QStringLiteral("Genre")), QStringLiteral("Study"));
    QVERIFY2(value(QStringLiteral("Codec")).contains(QLatin1String("PCM")), qPrintable(value(QStringLiteral("Codec"))));
    QCOMPARE(value(QStringLiteral("Comment")), QStringLiteral("Two lines"));
    QCOMPARE(value(QStringLiteral("File")), QStringLiteral("tagged.wav"));
    QCOMPARE(value(QStringLiteral("Folder")), QFileInfo(file).absolutePath());
    QVERIFY(!value(QStringLiteral("Size")).isEmpty());
}

void TestDetailsScreen::showsTheShippedSound()
{
    open(shippedSound());
    QTRY_COMPARE(page().track().title, QStringLiteral("Night walk"));
    QTRY_COMPARE(value(QStringLiteral("Length")), QStringLiteral("0:20"));
    QCOMPARE(page().track().artist, QStringLiteral("SkinWidgets"));
    QCOMPARE(page().track().album, QStringLiteral("Sounds for skins (2026)"));
    QCOMPARE(value(QStringLiteral("Codec")), QStringLiteral("Vorbis"));
    QCOMPARE(value(QStringLiteral("Bit rate")), QStringLiteral("160 kbit/s"));
    QVERIFY(!page().track().cover.isNull());
    QVERIFY(drawnCover() != skinCover());
    QVERIFY(!page().textRect().isEmpty());
    // The view shows what the page draws.
    const QImage shown = view()->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    QCOMPARE(shown.copy(page().coverRect()), drawnCover());
}

void TestDetailsScreen::showsAFileWithoutTags()
{
    open(m_sounds.tone("plain.wav", 20000));
    QTRY_COMPARE(value(QStringLiteral("Length")), QStringLiteral("0:20"));
    QCOMPARE(page().track().title, QStringLiteral("plain.wav"));
    QCOMPARE(page().track().artist, QString());
    QCOMPARE(page().track().album, QString());
    QVERIFY(page().textRect().isEmpty());
    QCOMPARE(drawnCover(), skinCover());

    // Nor one that cannot be played.
    m_window->playback()->open({m_sounds.text("text.ogg")});
    QCOMPARE(page().track().title, QStringLiteral("text.ogg"));
    QTRY_VERIFY(!m_window->playback()->isPlaying());
    QCOMPARE(value(QStringLiteral("File")), QStringLiteral("text.ogg"));
    QCOMPARE(value(QStringLiteral("Length")), QString());
}

void TestDetailsScreen::showsNothingWithoutAFile()
{
    type(Qt::Key_I);
    QVERIFY(showsDetails());
    QCOMPARE(page().track().title, QString());
    QCOMPARE(page().track().entries.size(), 0);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_PageDown, Qt::Key_End})
        type(key);
    QCOMPARE(position(), 0);
    type(Qt::Key_Escape);
    QVERIFY(!showsDetails());
}

void TestDetailsScreen::followsTheList()
{
    const QString other = m_sounds.tone("other.wav", 20000);
    m_window->playback()->open({m_long, other});
    type(Qt::Key_I);
    QCOMPARE(page().track().title, QStringLiteral("long.wav"));
    QTRY_VERIFY(page().isLaidOut());
    type(Qt::Key_End);
    m_window->playback()->next();
    QCOMPARE(page().track().title, QStringLiteral("other.wav"));
    QVERIFY(page().textRect().isEmpty());
    QCOMPARE(position(), 0);
    // Also while another screen shows.
    type(Qt::Key_I);
    m_window->playback()->next();
    type(Qt::Key_I);
    QCOMPARE(page().track().title, QStringLiteral("long.wav"));
    QVERIFY(!page().textRect().isEmpty());
}

void TestDetailsScreen::keepsItsPlaceWhenTagsArrive()
{
    const QString file = m_sounds.tone("late.wav", 20000, {{"INAM", "Late title"}});
    m_sounds.file("late.txt", manyLines(100));
    open(file);
    QCOMPARE(page().track().title, QStringLiteral("late.wav"));
    type(Qt::Key_PageDown);
    const int before = position();
    QVERIFY(before > 0);
    QTRY_COMPARE(page().track().title, QStringLiteral("Late title"));
    QCOMPARE(position(), before);
    QVERIFY(!page().textRect().isEmpty());
}

void TestDetailsScreen::showsTheTextBeside_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isText");
    QTest::addColumn<bool>("isLong");
    QTest::newRow("empty") << QByteArray() << false << false;
    QTest::newRow("binary") << QByteArray(5000, '\0') << false << false;
    QTest::newRow("short") << QByteArray("a verse\n") << true << false;
    QTest::newRow("5 MB") << manyLines(110000) << true << true;
    QTest::newRow("5 MB in one line") << QByteArray("word ").repeated(1000000) << true << true;
}

void TestDetailsScreen::showsTheTextBeside()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isText);
    QFETCH(bool, isLong);
    const QString file = m_sounds.tone("text.wav", 20000);
    m_sounds.file("text.txt", bytes);
    QElapsedTimer clock;
    clock.start();
    open(file);
    // The whole would take longer, whatever the machine.
    QVERIFY(clock.elapsed() < 5000);
    QCOMPARE(!page().textRect().isEmpty(), isText);
    QTRY_VERIFY_WITH_TIMEOUT(page().isLaidOut(), 60000);
    QCOMPARE(view()->contentsHeight(), page().height());
    QCOMPARE(view()->contentsHeight() > 20000, isLong);
    type(Qt::Key_End);
    QCOMPARE(position(), lastPosition());
    QVERIFY(!view()->viewport()->grab().isNull());
}

void TestDetailsScreen::brokenCoverGivesTheSkinsOne()
{
    const SoundFiles folder;
    folder.file("cover.jpg", "\xff\xd8\xff\xe0 no more than a beginning");
    folder.file("folder.png", "");
    open(folder.tone("song.wav", 5000));
    QCOMPARE(drawnCover(), skinCover());
}

void TestDetailsScreen::coverBesideIsShown()
{
    const SoundFiles folder;
    QImage red(300, 200, QImage::Format_RGB32);
    red.fill(Qt::red);
    QVERIFY(red.save(folder.path("cover.png")));
    open(folder.tone("song.wav", 5000));
    QImage expected(page().coverRect().size(), QImage::Format_RGB32);
    expected.fill(Qt::red);
    QCOMPARE(drawnCover(), expected);
}

void TestDetailsScreen::lyricsFollowPlayback()
{
    const QString file = m_sounds.tone("sung.wav", 60000);
    QByteArray lyrics;
    for (int second = 1; second < 60; ++second)
        lyrics += "[00:" + QByteArray::number(second).rightJustified(2, '0') + "]words\n";
    m_sounds.file("sung.lrc", lyrics);
    open(file);
    QCOMPARE(page().currentLine(), -1);
    m_window->playback()->pause();

    view()->setPosition(1500);
    QCOMPARE(page().currentLine(), 0);
    // It stands out, alone.
    QVERIFY(countWarm(page().timedLineRect(0)) > 10);
    QCOMPARE(countWarm(page().timedLineRect(1)), 0);
    // Where the user looks the lines stay in sight, step by step.
    type(Qt::Key_End);
    view()->setContentsPos(0, page().timedLineRect(0).top() - 20);
    for (qint64 position = 2500; position < 60000; position += 1000) {
        view()->setPosition(position);
        const QRect line = page().timedLineRect(page().currentLine());
        QCOMPARE(page().currentLine(), int(position / 1000) - 1);
        QVERIFY(line.top() >= view()->contentsY());
        QVERIFY(line.bottom() < view()->contentsY() + view()->visibleHeight());
    }
    QVERIFY(position() > 0);
}

void TestDetailsScreen::lyricsLetTheUserReadElsewhere()
{
    const QString file = m_sounds.tone("sung.wav", 60000);
    m_sounds.file("sung.lrc", "[00:01]a\n[00:02]b\n" + QByteArray("[00:50]c\n").repeated(100));
    open(file);
    m_window->playback()->pause();
    view()->setPosition(1500);
    type(Qt::Key_End);
    const int before = position();
    view()->setPosition(2500);
    QCOMPARE(page().currentLine(), 1);
    QCOMPARE(position(), before);
    // Nor is the page moved under a stylus that drags it.
    view()->setContentsPos(0, page().timedLineRect(1).top());
    press(inView(200, 200));
    move(inView(200, 150));
    move(inView(200, 140));
    const int dragged = position();
    view()->setPosition(51000);
    QCOMPARE(position(), dragged);
    release(inView(200, 140));
}

void TestDetailsScreen::longTextScrollsWithoutAPause()
{
    const QString file = m_sounds.tone("huge.wav", 20000);
    m_sounds.file("huge.txt", manyLines(25000));
    open(file);
    QTRY_VERIFY_WITH_TIMEOUT(page().isLaidOut(), 60000);
    QVERIFY(view()->contentsHeight() > 400000);
    // Of the fastest of several, which no other program on the machine interrupted.
    const auto timeOfAPage = [this](int first) {
        view()->setContentsPos(0, first);
        qint64 fastest = std::numeric_limits<qint64>::max();
        for (int i = 0; i < 50; ++i) {
            QElapsedTimer clock;
            clock.start();
            view()->scrollPages(1);
            view()->viewport()->repaint();
            fastest = std::min(fastest, clock.nsecsElapsed());
        }
        return fastest;
    };
    const qint64 near = timeOfAPage(10000);
    const qint64 far = timeOfAPage(400000);
    QVERIFY2(far < 100000000, qPrintable(QString::number(far)));
    // What a page costs does not depend on how many lie before it.
    QVERIFY2(far < 10 * near, qPrintable(QStringLiteral("%1 ns, %2 ns").arg(near).arg(far)));
}

void TestDetailsScreen::textOfEmptyLinesIsLaidOutInPortions()
{
    const QString file = m_sounds.tone("feeds.wav", 20000);
    m_sounds.file("feeds.txt", 'a' + QByteArray("\n\n\n\na").repeated(200000));
    open(file);
    QVERIFY(!page().isLaidOut());
    // It can be used at once and grows meanwhile.
    type(Qt::Key_End);
    QVERIFY(position() > 0);
    const int height = view()->contentsHeight();
    QTRY_VERIFY_WITH_TIMEOUT(view()->contentsHeight() > height, 60000);
    type(Qt::Key_Escape);
    QVERIFY(!showsDetails());
}

void TestDetailsScreen::skinMayLackTheScreen()
{
    QTemporaryDir root;
    const QString skin = root.filePath(QStringLiteral("pics/bare/"));
    QVERIFY(QDir().mkpath(skin));
    QVERIFY(QFile::copy(QString::fromLocal8Bit(m_dataDirectory) + QStringLiteral("pics/night/player_bg.png"),
                        skin + QStringLiteral("player_bg.png")));
    QFile config(skin + QStringLiteral("config"));
    QVERIFY(config.open(QIODevice::WriteOnly));
    config.write("[Player]\nbackground = player_bg.png\n");
    config.close();
    qputenv("QPEDIR", root.path().toLocal8Bit());

    m_window = std::make_unique<PlayerWindow>(QStringLiteral("bare"));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_window->playback()->open({m_long});
    type(Qt::Key_I);
    QVERIFY(!showsDetails());
    QVERIFY(m_window->playingScreen()->isVisible());
    type(Qt::Key_Escape);
    QVERIFY(!m_window->isVisible());
}

void TestDetailsScreen::skinMayGiveNothingButThePanel()
{
    QTemporaryDir root;
    const QString skin = root.filePath(QStringLiteral("pics/bare/"));
    QVERIFY(QDir().mkpath(skin));
    QVERIFY(QFile::copy(QString::fromLocal8Bit(m_dataDirectory) + QStringLiteral("pics/night/player_bg.png"),
                        skin + QStringLiteral("player_bg.png")));
    QFile config(skin + QStringLiteral("config"));
    QVERIFY(config.open(QIODevice::WriteOnly));
    config.write("[Player]\nbackground = player_bg.png\n"
                 "[Details]\nbackground = player_bg.png\ncover = none.png\ntext_color = nonsense\n"
                 "view_x = 2147483647\nview_width = -5\n");
    config.close();
    qputenv("QPEDIR", root.path().toLocal8Bit());

    m_window = std::make_unique<PlayerWindow>(QStringLiteral("bare"));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_window->playback()->open({m_long});
    type(Qt::Key_I);
    QVERIFY(showsDetails());
    QCOMPARE(view()->geometry(), QRect(0, 0, 480, 272));
    type(Qt::Key_PageDown);
    QVERIFY(position() > 0);
    type(Qt::Key_Escape);
    QVERIFY(!showsDetails());
}

QTEST_MAIN(TestDetailsScreen)
#include "tst_detailsscreen.moc"
