#include "player/mediabackend.h"
#include "player/messagefilter.h"
#include "player/playerwindow.h"
#include "player/playlist/m3u.h"
#include "player/playlist/playlistview.h"
#include "player/soundfiles.h"
#include "skinbase/skinbase.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>
#include <memory>

namespace
{

constexpr int patience = 30000;
constexpr int many = 100000;
// Milliseconds; a tenth of it is what a user does not notice, and machines that run tests are slow.
constexpr int deadline = 2000;

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

/* The screen with the playlist, operated as a user does. */
class TestPlaylistScreen : public QObject
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
    void showsTheEntries();
    void emptyListSaysWhatToDo();
    void returnPlays();
    void doubleClickPlays();
    void currentEntryBearsTheMark();
    void markIsPainted();
    void playingGoesOnAtTheEnd();
    void beginsAtTheCurrentEntry();
    void learnsLengths();
    void missingFilesAreMarked();
    void lettersLeadToNames();
    void filterNarrows();
    void filteredEntriesPlay();
    void filteredEntriesAreRemoved();
    void filterFollowsTheList();
    void escapeEmptiesTheFilterFirst();
    void clearButtonEmptiesTheFilter();
    void deleteRemovesTheSelected();
    void removeButtonRemovesTheSelected();
    void allCanBeRemoved();
    void removedCurrentEntryGivesWay();
    void deleteInTheFilterRemovesLetters();
    void arrowsLeadToTheButtons();
    void readingShowsProgress();
    void readingCanBeStopped();
    void stoppedByKeysTheFocusStaysOnTheButton();
    void unreadablePlaylistIsTold();
    void messageGoesWhenTheUserActs();
    void choosesWhatToAdd_data();
    void choosesWhatToAdd();
    void addsAFolder();
    void savesAsM3u_data();
    void savesAsM3u();
    void saveThatFailsIsTold();
    void emptyListIsNotSaved();
    void manyEntriesOpen();
    void manyEntriesScroll();
    void manyEntriesFilter();
    void manyEntriesLettersLeadToNames();
    void manyEntriesAreRemoved();
    void manyEntriesPlayOn();
    void skinMayLackTheScreen();
    void skinMayGiveNothingButThePanel();

private:
    void type(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(m_window->windowHandle(), key, modifiers);
    }
    void typeText(const QString& text)
    {
        for (const QChar c : text)
            QTest::keyClick(m_window->windowHandle(), c.toLatin1());
    }
    void tap(const SkinBase* panel, const QString& button)
    {
        const SkinButton& record = ButtonReader::button(panel, button);
        const QPoint centre = QRect(QPoint(record.xpos, record.ypos), record.stateImage[0].size()).center();
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          panel->mapTo(m_window.get(), centre));
    }
    void tap(const QString& button) { tap(screen()->panel(), button); }
    SkinButtonState state(const QString& button) const { return ButtonReader::button(screen()->panel(), button).state; }
    QPoint centreOf(int row) const
    {
        return view()->viewport()->mapTo(m_window.get(), view()->itemRect(view()->item(row)).center());
    }

    PlaylistScreen* screen() const { return m_window->playlistScreen(); }
    PlaylistView* view() const { return screen()->view(); }
    QLineEdit* filter() const { return screen()->filterLine(); }
    Playback* playback() const { return m_window->playback(); }
    Playlist* playlist() const { return m_window->playback()->playlist(); }
    bool showsPlaylist() const { return screen()->isVisible(); }
    QStringList shown() const
    {
        QStringList names;
        for (const ListBoxSkinItem* item = view()->firstItem(); item; item = item->next())
            names << item->text();
        return names;
    }
    // The names that bear the mark.
    QStringList marked() const
    {
        QStringList names;
        for (const ListBoxSkinItem* item = view()->firstItem(); item; item = item->next())
            if (item->pixmap())
                names << item->text();
        return names;
    }
    // Names and files for a list that plays when it is asked to.
    void fill(const QStringList& names)
    {
        QList<PlaylistEntry> entries;
        for (const QString& name : names)
            entries.append({m_long, name, -1, false});
        playlist()->replace(entries);
    }
    void fillMany()
    {
        QList<PlaylistEntry> entries;
        for (int i = 0; i < many; ++i)
            entries.append({QStringLiteral("/music/artist %1/%2.ogg").arg(i / 100).arg(i),
                            QStringLiteral("%1%2 song number %2").arg(QChar('a' + i % 26)).arg(i), i % 600, false});
        playlist()->replace(entries);
    }
    void showWith(const QStringList& names)
    {
        fill(names);
        m_window->showPlaylist();
        QVERIFY(view()->hasFocus());
    }
    // Until what is there to be done and painted has been.
    void settle()
    {
        view()->repaint();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    void makeSkin(const QTemporaryDir& root, const QByteArray& config);

    SoundFiles m_sounds;
    QString m_long;
    QByteArray m_dataDirectory;
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<PlayerWindow> m_window;
};

void TestPlaylistScreen::initTestCase()
{
    mediabackend::choose();
    installMessageFilter();
    m_dataDirectory = qgetenv("QPEDIR");
    m_long = m_sounds.tone("long.wav", 20000);
}

void TestPlaylistScreen::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_window = std::make_unique<PlayerWindow>(QStringLiteral("night"));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QVERIFY(!showsPlaylist());
}

void TestPlaylistScreen::cleanup()
{
    m_window.reset();
    m_directory.reset();
    qputenv("QPEDIR", m_dataDirectory);
}

void TestPlaylistScreen::opensAndClosesByKey_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Escape") << int(Qt::Key_Escape);
    QTest::newRow("Back") << int(Qt::Key_Back);
}

void TestPlaylistScreen::opensAndClosesByKey()
{
    QFETCH(int, key);
    playback()->open({m_long});
    type(Qt::Key_P);
    QVERIFY(showsPlaylist());
    QCOMPARE(m_window->currentScreen(), screen());
    QVERIFY(view()->hasFocus());
    QVERIFY(playback()->isPlaying());

    type(static_cast<Qt::Key>(key));
    QVERIFY(!showsPlaylist());
    QVERIFY(m_window->playingScreen()->isVisible());
    QVERIFY(m_window->panel()->hasFocus());
    QVERIFY(playback()->isPlaying());
}

void TestPlaylistScreen::opensAndClosesByPointer()
{
    tap(m_window->panel(), QStringLiteral("playlist"));
    QVERIFY(showsPlaylist());
    tap(QStringLiteral("close"));
    QVERIFY(!showsPlaylist());
    QVERIFY(m_window->isVisible());
}

void TestPlaylistScreen::keysBelongToTheScreenThatShows()
{
    showWith({"a", "b", "c"});
    const int volume = playback()->volume();
    type(Qt::Key_Down);
    QCOMPARE(playback()->volume(), volume);
    QCOMPARE(view()->currentItem(), 1);
    type(Qt::Key_Escape);
    type(Qt::Key_Down);
    QCOMPARE(playback()->volume(), volume - 5);
    QCOMPARE(view()->currentItem(), 1);
    type(Qt::Key_Delete);
    QCOMPARE(playlist()->count(), 3);
}

void TestPlaylistScreen::showsTheEntries()
{
    playlist()->replace({{"/m/one.ogg", QString(), -1, false}, {"/m/two.ogg", QStringLiteral("Second"), 61, false}});
    m_window->showPlaylist();
    QCOMPARE(shown(), (QStringList{"one", "Second"}));
    QTRY_COMPARE(screen()->statusText(), QStringLiteral("2 entries"));
    playlist()->append({{"/m/three.ogg", QString(), -1, false}});
    QCOMPARE(shown(), (QStringList{"one", "Second", "three"}));
    QTRY_COMPARE(screen()->statusText(), QStringLiteral("3 entries"));
    type(Qt::Key_A, Qt::ControlModifier);
    QTRY_COMPARE(screen()->statusText(), QStringLiteral("3 entries, 3 selected"));
    playlist()->remove({1, 2});
    QCOMPARE(shown(), QStringList{"one"});
    QTRY_COMPARE(screen()->statusText(), QStringLiteral("1 entry"));
}

void TestPlaylistScreen::emptyListSaysWhatToDo()
{
    m_window->showPlaylist();
    QTRY_COMPARE(screen()->statusText(), QStringLiteral("0 entries"));
    QCOMPARE(state("remove"), Disabled);
    QCOMPARE(state("save"), Disabled);
    type(Qt::Key_Return);
    type(Qt::Key_Delete);
    type(Qt::Key_Down);
    QVERIFY(!playback()->isPlaying());
    QVERIFY(!m_window->findChild<QFileDialog*>());
    fill({"a"});
    QTRY_COMPARE(state("remove"), Normal);
    QCOMPARE(state("save"), Normal);
}

void TestPlaylistScreen::returnPlays()
{
    showWith({"a", "b", "c"});
    type(Qt::Key_Down);
    type(Qt::Key_Down);
    type(Qt::Key_Return);
    QCOMPARE(playback()->currentIndex(), 2);
    QVERIFY(playback()->isPlaying());
    QVERIFY(showsPlaylist());
}

void TestPlaylistScreen::doubleClickPlays()
{
    showWith({"a", "b", "c"});
    settle();
    QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier, centreOf(1));
    QCOMPARE(playback()->currentIndex(), -1);
    QTest::mouseDClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier, centreOf(1));
    QCOMPARE(playback()->currentIndex(), 1);
    QVERIFY(playback()->isPlaying());
}

void TestPlaylistScreen::currentEntryBearsTheMark()
{
    showWith({"a", "b", "c", "d"});
    QCOMPARE(marked(), QStringList());
    playback()->playAt(1);
    QCOMPARE(marked(), QStringList{"b"});
    playback()->next();
    QCOMPARE(marked(), QStringList{"c"});
    playback()->pause();
    QCOMPARE(marked(), QStringList{"c"});
    playlist()->remove({0});
    QCOMPARE(marked(), QStringList{"c"});
    playlist()->remove({0});
    playlist()->append({{m_long, QStringLiteral("e"), -1, false}});
    QCOMPARE(marked(), QStringList{"c"});
    view()->setFilter(QStringLiteral("e"));
    QCOMPARE(marked(), QStringList());
    view()->setFilter(QString());
    QCOMPARE(marked(), QStringList{"c"});
    playlist()->replace({});
    QCOMPARE(marked(), QStringList());
}

void TestPlaylistScreen::markIsPainted()
{
    showWith({"a", "b", "c"});
    settle();
    const auto warmPixels = [this](int row) {
        const QRect place = view()->itemRect(view()->item(row));
        const QImage picture = view()->viewport()->grab(place).toImage();
        int warm = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < 40; ++x)
                warm += picture.pixelColor(x, y).red() > picture.pixelColor(x, y).blue() + 60;
        return warm;
    };
    // The first row is selected, which is orange all over.
    QCOMPARE(warmPixels(1), 0);
    playback()->playAt(1);
    settle();
    QVERIFY(warmPixels(1) > 20);
    QCOMPARE(warmPixels(2), 0);
}

void TestPlaylistScreen::playingGoesOnAtTheEnd()
{
    const QString brief = m_sounds.tone("brief.wav", 200);
    playlist()->replace({{brief, QStringLiteral("a"), -1, false},
                         {m_sounds.path("none.wav"), QStringLiteral("b"), -1, false},
                         {m_long, QStringLiteral("c"), -1, false}});
    m_window->showPlaylist();
    type(Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(playback()->currentIndex(), 2, patience);
    QCOMPARE(marked(), QStringList{"c"});
    QVERIFY(playback()->isPlaying());
}

void TestPlaylistScreen::beginsAtTheCurrentEntry()
{
    QStringList names;
    for (int i = 0; i < 50; ++i)
        names << QString::number(i);
    fill(names);
    playback()->playAt(30);
    type(Qt::Key_P);
    QCOMPARE(view()->currentItem(), 30);
    QCOMPARE(view()->selectedEntries(), QList<int>{30});
    settle();
    QVERIFY(view()->viewport()->rect().contains(view()->itemRect(view()->item(30))));
}

void TestPlaylistScreen::learnsLengths()
{
    showWith({"a", "b"});
    playback()->playAt(1);
    QTRY_COMPARE(playlist()->at(1).seconds, 20);
    QCOMPARE(playlist()->at(0).seconds, -1);
}

void TestPlaylistScreen::missingFilesAreMarked()
{
    playlist()->replace({{m_sounds.path("gone.wav"), QString(), -1, false}, {m_long, QString(), -1, false}});
    m_window->showPlaylist();
    type(Qt::Key_Return);
    QTRY_COMPARE(playback()->currentIndex(), 1);
    QVERIFY(playlist()->at(0).isMissing);
    QVERIFY(!playlist()->at(1).isMissing);
    QCOMPARE(playlist()->count(), 2);
    QTRY_VERIFY(screen()->statusText().contains(QStringLiteral("gone.wav")));
}

void TestPlaylistScreen::lettersLeadToNames()
{
    showWith({"Alpha", "Beta", "Beech", "Gamma"});
    typeText(QStringLiteral("bee"));
    QCOMPARE(view()->currentItem(), 2);
    // M mutes and P pauses nothing here.
    QTRY_VERIFY(view()->hasFocus());
    QVERIFY(!playback()->isMuted());
    QCOMPARE(view()->selectedEntries(), QList<int>{2});
}

void TestPlaylistScreen::filterNarrows()
{
    showWith({"Night walk", "Day walk", "Night run"});
    type(Qt::Key_Slash);
    QVERIFY(filter()->hasFocus());
    typeText(QStringLiteral("night"));
    QCOMPARE(filter()->text(), QStringLiteral("night"));
    QTRY_COMPARE(shown(), (QStringList{"Night walk", "Night run"}));
    QTRY_COMPARE(screen()->statusText(), QStringLiteral("2 of 3 entries"));
    typeText(QStringLiteral(" wa"));
    QTRY_COMPARE(shown(), QStringList{"Night walk"});
    typeText(QStringLiteral("x"));
    QTRY_COMPARE(shown(), QStringList());
    // No button gets what the filter and the list have no use for.
    type(Qt::Key_Return);
    QVERIFY(view()->hasFocus());
    type(Qt::Key_Return);
    QVERIFY(!m_window->findChild<QFileDialog*>());
    QVERIFY(!playback()->isPlaying());
}

void TestPlaylistScreen::filteredEntriesPlay()
{
    showWith({"a1", "b1", "a2", "b2"});
    type(Qt::Key_F, Qt::ControlModifier);
    typeText(QStringLiteral("b"));
    QTRY_COMPARE(shown(), (QStringList{"b1", "b2"}));
    type(Qt::Key_Down);
    QVERIFY(view()->hasFocus());
    type(Qt::Key_End);
    type(Qt::Key_Return);
    QCOMPARE(playback()->currentIndex(), 3);
    QCOMPARE(marked(), QStringList{"b2"});
}

void TestPlaylistScreen::filteredEntriesAreRemoved()
{
    showWith({"a1", "b1", "a2", "b2"});
    view()->setFilter(QStringLiteral("b"));
    type(Qt::Key_A, Qt::ControlModifier);
    type(Qt::Key_Delete);
    QCOMPARE(shown(), QStringList());
    view()->setFilter(QString());
    QCOMPARE(shown(), (QStringList{"a1", "a2"}));
}

void TestPlaylistScreen::filterFollowsTheList()
{
    showWith({"a1", "b1"});
    view()->setFilter(QStringLiteral("b"));
    playlist()->append({{m_long, QStringLiteral("a2"), -1, false}, {m_long, QStringLiteral("b2"), -1, false}});
    QCOMPARE(shown(), (QStringList{"b1", "b2"}));
    playlist()->remove({0});
    QCOMPARE(shown(), (QStringList{"b1", "b2"}));
    type(Qt::Key_End);
    type(Qt::Key_Return);
    QCOMPARE(playback()->currentIndex(), 2);
}

void TestPlaylistScreen::escapeEmptiesTheFilterFirst()
{
    showWith({"a", "b"});
    type(Qt::Key_Slash);
    typeText(QStringLiteral("b"));
    QTRY_COMPARE(shown(), QStringList{"b"});
    type(Qt::Key_Escape);
    QCOMPARE(shown(), (QStringList{"a", "b"}));
    QCOMPARE(filter()->text(), QString());
    QVERIFY(view()->hasFocus());
    QVERIFY(showsPlaylist());
    type(Qt::Key_Escape);
    QVERIFY(!showsPlaylist());
}

void TestPlaylistScreen::clearButtonEmptiesTheFilter()
{
    showWith({"a", "b"});
    QTRY_COMPARE(state("clear"), Hidden);
    type(Qt::Key_Slash);
    typeText(QStringLiteral("b"));
    QTRY_COMPARE(shown(), QStringList{"b"});
    QTRY_COMPARE(state("clear"), Normal);
    tap(QStringLiteral("clear"));
    QCOMPARE(shown(), (QStringList{"a", "b"}));
    QTRY_COMPARE(state("clear"), Hidden);
}

void TestPlaylistScreen::deleteRemovesTheSelected()
{
    showWith({"a", "b", "c", "d", "e"});
    type(Qt::Key_Down);
    type(Qt::Key_Down, Qt::ShiftModifier);
    type(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(view()->selectedEntries(), (QList<int>{1, 2, 3}));
    type(Qt::Key_Delete);
    QCOMPARE(shown(), (QStringList{"a", "e"}));
    // The next one can be removed at once.
    QCOMPARE(view()->selectedEntries(), QList<int>{1});
    type(Qt::Key_Delete);
    QCOMPARE(shown(), QStringList{"a"});
    QCOMPARE(view()->selectedEntries(), QList<int>{0});
}

void TestPlaylistScreen::removeButtonRemovesTheSelected()
{
    showWith({"a", "b", "c", "d"});
    settle();
    QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier, centreOf(0));
    QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::ControlModifier, centreOf(2));
    QCOMPARE(view()->selectedEntries(), (QList<int>{0, 2}));
    tap(QStringLiteral("remove"));
    QCOMPARE(shown(), (QStringList{"b", "d"}));
    QVERIFY(view()->hasFocus());
}

void TestPlaylistScreen::allCanBeRemoved()
{
    showWith({"a", "b", "c"});
    playback()->playAt(1);
    type(Qt::Key_A, Qt::ControlModifier);
    type(Qt::Key_Delete);
    QCOMPARE(shown(), QStringList());
    QCOMPARE(playback()->currentIndex(), -1);
    QVERIFY(!playback()->isPlaying());
    QTRY_COMPARE(state("remove"), Disabled);
}

void TestPlaylistScreen::removedCurrentEntryGivesWay()
{
    const QString other = m_sounds.tone("other.wav", 20000);
    playlist()->replace({{m_long, QStringLiteral("a"), -1, false}, {other, QStringLiteral("b"), -1, false}});
    m_window->showPlaylist();
    type(Qt::Key_Return);
    QCOMPARE(playback()->currentFile(), m_long);
    type(Qt::Key_Delete);
    QCOMPARE(playback()->currentFile(), other);
    QVERIFY(playback()->isPlaying());
    QCOMPARE(marked(), QStringList{"b"});
    QTRY_VERIFY(playback()->position() > 0);
}

void TestPlaylistScreen::deleteInTheFilterRemovesLetters()
{
    showWith({"a", "b"});
    type(Qt::Key_Slash);
    typeText(QStringLiteral("xa"));
    type(Qt::Key_Home);
    type(Qt::Key_Delete);
    QCOMPARE(filter()->text(), QStringLiteral("a"));
    QCOMPARE(playlist()->count(), 2);
}

void TestPlaylistScreen::arrowsLeadToTheButtons()
{
    showWith({"a", "b"});
    type(Qt::Key_Right);
    QVERIFY(screen()->panel()->hasFocus());
    QCOMPARE(screen()->panel()->getFocus(), QStringLiteral("add"));
    type(Qt::Key_Right);
    QCOMPARE(screen()->panel()->getFocus(), QStringLiteral("remove"));
    type(Qt::Key_Return);
    QCOMPARE(shown(), QStringList{"b"});
    QVERIFY(view()->hasFocus());
    type(Qt::Key_Left);
    QVERIFY(screen()->panel()->hasFocus());
    type(Qt::Key_Up);
    QVERIFY(view()->hasFocus());
}

void TestPlaylistScreen::readingShowsProgress()
{
    QByteArray list;
    for (int i = 0; i < 100000; ++i)
        list += "song " + QByteArray::number(i) + ".ogg\n";
    const QString file = m_sounds.file("progress.m3u", list);
    m_window->showPlaylist();
    // Whether the text told of more and more, and the list grew with it.
    int last = -1;
    int steps = 0;
    connect(m_window->loader(), &PlaylistLoader::progressed, this, [&] {
        QTimer::singleShot(0, this, [&] {
            const QString text = screen()->statusText();
            if (!text.contains(QStringLiteral("progress.m3u")) || state("add") != Hidden || state("cancel") == Hidden)
                return;
            const int found = playlist()->count();
            steps += found > last && text.contains(QStringLiteral("found"));
            last = found;
        });
    });
    m_window->loader()->add({file});
    QTRY_COMPARE_WITH_TIMEOUT(playlist()->count(), 100000, patience);
    QTRY_VERIFY_WITH_TIMEOUT(!m_window->loader()->isLoading(), patience);
    QVERIFY2(steps >= 3, qPrintable(QString::number(steps)));
    QTRY_VERIFY(screen()->statusText().contains(QStringLiteral("entries")));
    QCOMPARE(state("cancel"), Hidden);
    QVERIFY(state("add") != Hidden);
    QCOMPARE(static_cast<int>(view()->count()), 100000);
}

void TestPlaylistScreen::readingCanBeStopped()
{
    QByteArray list;
    for (int i = 0; i < 500000; ++i)
        list += "song " + QByteArray::number(i) + ".ogg\n";
    m_window->showPlaylist();
    m_window->loader()->add({m_sounds.file("long.m3u", list)});
    QTRY_VERIFY(playlist()->count() > 0);
    QTRY_VERIFY(state("cancel") != Hidden);
    tap(QStringLiteral("cancel"));
    QVERIFY(!m_window->loader()->isLoading());
    const int found = playlist()->count();
    QVERIFY(found > 0 && found < 500000);
    QTRY_COMPARE(state("cancel"), Hidden);
    QTest::qWait(50);
    QCOMPARE(playlist()->count(), found);
    QVERIFY(!playlist()->isGrowing());
}

void TestPlaylistScreen::stoppedByKeysTheFocusStaysOnTheButton()
{
    QByteArray list;
    for (int i = 0; i < 500000; ++i)
        list += "song " + QByteArray::number(i) + ".ogg\n";
    showWith({"a"});
    type(Qt::Key_Right);
    m_window->loader()->add({m_sounds.file("long.m3u", list)});
    QTRY_COMPARE(state("cancel"), Focus);
    QCOMPARE(screen()->panel()->getFocus(), QStringLiteral("cancel"));
    type(Qt::Key_Return);
    QVERIFY(!m_window->loader()->isLoading());
    QTRY_COMPARE(state("add"), Focus);
}

void TestPlaylistScreen::unreadablePlaylistIsTold()
{
    showWith({"a", "b"});
    m_window->loader()->add({m_sounds.file("damaged.m3u", "\x01\x02\x03\n\x04\n")});
    QTRY_VERIFY(screen()->statusText().contains(QStringLiteral("damaged")));
    QTRY_VERIFY(!m_window->loader()->isLoading());
    QCOMPARE(shown(), (QStringList{"a", "b"}));
    // What is opened in place of the list, and gives nothing, leaves it alone.
    m_window->loader()->open({m_directory->path()});
    QTRY_VERIFY(screen()->statusText().contains(QStringLiteral("nothing to play")));
    QCOMPARE(shown(), (QStringList{"a", "b"}));
}

void TestPlaylistScreen::messageGoesWhenTheUserActs()
{
    showWith({"a", "b"});
    m_window->setNotice(QStringLiteral("something went wrong"));
    QTRY_COMPARE(screen()->statusText(), QStringLiteral("something went wrong"));
    QVERIFY(m_window->windowTitle().contains(QStringLiteral("something went wrong")));
    type(Qt::Key_Down);
    QTRY_COMPARE(screen()->statusText(), QStringLiteral("2 entries"));
}

void TestPlaylistScreen::choosesWhatToAdd_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("key") << true;
    QTest::newRow("button") << false;
}

void TestPlaylistScreen::choosesWhatToAdd()
{
    QFETCH(bool, byKey);
    showWith({"a"});
    if (byKey)
        type(Qt::Key_Insert);
    else
        tap(QStringLiteral("add"));
    auto* dialog = m_window->findChild<QFileDialog*>();
    QVERIFY(dialog);
    QVERIFY(QTest::qWaitForWindowActive(dialog));
    auto* names = dialog->findChild<QLineEdit*>();
    QVERIFY(names);
    QTest::keyClicks(names, m_long);
    QTest::keyClick(names, Qt::Key_Return);
    QTRY_COMPARE(playlist()->count(), 2);
    QCOMPARE(playlist()->file(1), m_long);
    QVERIFY(!playback()->isPlaying());
}

void TestPlaylistScreen::addsAFolder()
{
    QVERIFY(QFile::copy(m_long, m_directory->filePath("1.wav")));
    QVERIFY(QFile::copy(m_long, m_directory->filePath("2.wav")));
    showWith({"a"});
    type(Qt::Key_Insert);
    auto* dialog = m_window->findChild<QFileDialog*>();
    QVERIFY(dialog);
    QVERIFY(QTest::qWaitForWindowActive(dialog));
    dialog->setDirectory(m_directory->path());
    auto* folder = dialog->findChild<QPushButton*>(QStringLiteral("folder"));
    QVERIFY(folder && folder->isVisible());
    QTest::mouseClick(folder, Qt::LeftButton);
    QTRY_COMPARE(shown(), (QStringList{"a", "1", "2"}));
    QTRY_VERIFY(!m_window->findChild<QFileDialog*>());
}

void TestPlaylistScreen::savesAsM3u_data()
{
    choosesWhatToAdd_data();
}

void TestPlaylistScreen::savesAsM3u()
{
    QFETCH(bool, byKey);
    showWith({"a", "b"});
    QTRY_COMPARE(state("save"), Normal);
    if (byKey)
        type(Qt::Key_S, Qt::ControlModifier);
    else
        tap(QStringLiteral("save"));
    auto* dialog = m_window->findChild<QFileDialog*>();
    QVERIFY(dialog);
    QVERIFY(QTest::qWaitForWindowActive(dialog));
    auto* names = dialog->findChild<QLineEdit*>();
    QVERIFY(names);
    // A name is there already, which typing replaces.
    QCOMPARE(names->text(), QStringLiteral("playlist.m3u8"));
    QTest::keyClicks(names, m_directory->filePath("mine"));
    QTest::keyClick(names, Qt::Key_Return);
    const QString file = m_directory->filePath("mine.m3u8");
    QTRY_VERIFY(QFile::exists(file));
    QTRY_COMPARE(screen()->statusText(), QStringLiteral("saved as mine.m3u8"));

    playlist()->replace({});
    m_window->loader()->open({file});
    QTRY_COMPARE(shown(), (QStringList{"a", "b"}));
    QCOMPARE(playback()->currentIndex(), 0);
    QCOMPARE(playback()->files(), (QStringList{m_long, m_long}));
}

void TestPlaylistScreen::saveThatFailsIsTold()
{
    showWith({"a"});
    type(Qt::Key_S, Qt::ControlModifier);
    auto* dialog = m_window->findChild<QFileDialog*>();
    QVERIFY(dialog);
    emit dialog->fileSelected(m_directory->filePath("none/mine.m3u8"));
    QTRY_VERIFY(screen()->statusText().startsWith(QStringLiteral("cannot save mine.m3u8: ")));
    QCOMPARE(shown(), QStringList{"a"});
}

void TestPlaylistScreen::emptyListIsNotSaved()
{
    m_window->showPlaylist();
    type(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(!m_window->findChild<QFileDialog*>());
}

void TestPlaylistScreen::manyEntriesOpen()
{
    QElapsedTimer clock;
    clock.start();
    fillMany();
    const qint64 filled = clock.restart();
    type(Qt::Key_P);
    settle();
    const qint64 opened = clock.elapsed();
    QVERIFY(showsPlaylist());
    qInfo("%d entries: filled in %lld ms, opened in %lld ms", many, filled, opened);
    QVERIFY2(filled < deadline, qPrintable(QString::number(filled)));
    QVERIFY2(opened < deadline, qPrintable(QString::number(opened)));
}

void TestPlaylistScreen::manyEntriesScroll()
{
    fillMany();
    m_window->showPlaylist();
    settle();
    qint64 slowest = 0;
    QElapsedTimer clock;
    for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_End, Qt::Key_Up, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_Down}) {
        for (int i = 0; i < 20; ++i) {
            clock.start();
            type(key);
            settle();
            slowest = std::max(slowest, clock.elapsed());
        }
        if (key == Qt::Key_End)
            QCOMPARE(view()->currentItem(), many - 1);
    }
    QCOMPARE(view()->currentItem(), 20);
    for (int i = 0; i < 50; ++i) {
        const QPointF at = view()->mapTo(m_window.get(), QPointF(100, 100));
        QWheelEvent event(at, m_window->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        clock.start();
        QCoreApplication::sendEvent(m_window->windowHandle(), &event);
        settle();
        slowest = std::max(slowest, clock.elapsed());
    }
    QVERIFY(view()->contentsY() > 1000);
    clock.start();
    type(Qt::Key_End, Qt::ShiftModifier);
    settle();
    const qint64 selected = clock.elapsed();
    QCOMPARE(view()->selectedCount(), many - 20);
    qInfo("%d entries: slowest step %lld ms, to the end with Shift %lld ms", many, slowest, selected);
    QVERIFY2(slowest < deadline / 4, qPrintable(QString::number(slowest)));
    QVERIFY2(selected < deadline, qPrintable(QString::number(selected)));
}

void TestPlaylistScreen::manyEntriesFilter()
{
    fillMany();
    m_window->showPlaylist();
    settle();
    type(Qt::Key_Slash);
    qint64 slowest = 0;
    // The same letter again and again leaves many; the last one leaves few.
    for (const char* text : {"s", "so", "song", "song 7", "song 77", "song 777", "song 7777", "song 777", "song", ""}) {
        filter()->setText(QString::fromLatin1(text));
        QElapsedTimer clock;
        clock.start();
        view()->setFilter(QString::fromLatin1(text));
        settle();
        slowest = std::max(slowest, clock.elapsed());
    }
    QCOMPARE(static_cast<int>(view()->count()), many);
    qInfo("%d entries: slowest filter %lld ms", many, slowest);
    QVERIFY2(slowest < deadline, qPrintable(QString::number(slowest)));
    typeText(QStringLiteral("number 99999"));
    QTRY_COMPARE(static_cast<int>(view()->count()), 1);
}

void TestPlaylistScreen::manyEntriesLettersLeadToNames()
{
    fillMany();
    m_window->showPlaylist();
    settle();
    QElapsedTimer clock;
    clock.start();
    typeText(QStringLiteral("z99995"));
    const qint64 found = clock.restart();
    QCOMPARE(view()->currentItem(), 99995);
    view()->clearInputString();
    typeText(QStringLiteral("#"));
    const qint64 missed = clock.elapsed();
    qInfo("%d entries: 6 letters %lld ms, a failing letter %lld ms", many, found, missed);
    QVERIFY2(found < deadline, qPrintable(QString::number(found)));
    QVERIFY2(missed < deadline, qPrintable(QString::number(missed)));
}

void TestPlaylistScreen::manyEntriesAreRemoved()
{
    fillMany();
    m_window->showPlaylist();
    settle();
    {
        const QSignalBlocker blocker(view());
        for (int row = 0; row < many; row += 2)
            view()->setSelected(row, true);
    }
    QElapsedTimer clock;
    clock.start();
    type(Qt::Key_Delete);
    settle();
    const qint64 half = clock.restart();
    QCOMPARE(static_cast<int>(view()->count()), many / 2);
    type(Qt::Key_A, Qt::ControlModifier);
    settle();
    const qint64 selected = clock.restart();
    type(Qt::Key_Delete);
    settle();
    const qint64 rest = clock.elapsed();
    QCOMPARE(static_cast<int>(view()->count()), 0);
    qInfo("%d entries: half removed in %lld ms, rest selected in %lld ms and removed in %lld ms", many, half, selected,
          rest);
    QVERIFY2(half < deadline, qPrintable(QString::number(half)));
    QVERIFY2(selected < deadline, qPrintable(QString::number(selected)));
    QVERIFY2(rest < deadline, qPrintable(QString::number(rest)));
}

void TestPlaylistScreen::manyEntriesPlayOn()
{
    fillMany();
    QList<PlaylistEntry> entries = playlist()->entries();
    entries[70000].file = m_long;
    entries[70001].file = m_long;
    playlist()->replace(entries);
    m_window->showPlaylist();
    playback()->playAt(70000);
    settle();
    QElapsedTimer clock;
    clock.start();
    playback()->next();
    settle();
    const qint64 stepped = clock.elapsed();
    QCOMPARE(playback()->currentIndex(), 70001);
    QVERIFY(view()->item(70001)->pixmap());
    QVERIFY(!view()->item(70000)->pixmap());
    qInfo("%d entries: on to the next in %lld ms", many, stepped);
    QVERIFY2(stepped < deadline, qPrintable(QString::number(stepped)));
}

void TestPlaylistScreen::makeSkin(const QTemporaryDir& root, const QByteArray& config)
{
    const QString skin = root.filePath(QStringLiteral("pics/bare/"));
    QVERIFY(QDir().mkpath(skin));
    QVERIFY(QFile::copy(QString::fromLocal8Bit(m_dataDirectory) + QStringLiteral("pics/night/player_bg.png"),
                        skin + QStringLiteral("player_bg.png")));
    QFile file(skin + QStringLiteral("config"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(config);
    file.close();
    qputenv("QPEDIR", root.path().toLocal8Bit());
    m_window = std::make_unique<PlayerWindow>(QStringLiteral("bare"));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestPlaylistScreen::skinMayLackTheScreen()
{
    const QTemporaryDir root;
    makeSkin(root, "[Player]\nbackground = player_bg.png\n");
    playback()->open({m_long});
    type(Qt::Key_P);
    QVERIFY(!showsPlaylist());
    QVERIFY(m_window->playingScreen()->isVisible());
    playlist()->append({{m_long, QString(), -1, false}});
    playlist()->remove({0});
    type(Qt::Key_Escape);
    QVERIFY(!m_window->isVisible());
}

void TestPlaylistScreen::skinMayGiveNothingButThePanel()
{
    const QTemporaryDir root;
    makeSkin(root, "[Player]\nbackground = player_bg.png\n"
                   "[Playlist]\nbackground = player_bg.png\nmark = none.png\ntext_color = nonsense\n"
                   "row_height = -2147483648\nlist_x = 2147483647\nlist_width = -5\nfilter_x = 5\n");
    fill({"a", "b", "c"});
    type(Qt::Key_P);
    QVERIFY(showsPlaylist());
    QCOMPARE(view()->geometry(), QRect(0, 0, 480, 272));
    QVERIFY(!filter());
    type(Qt::Key_Down);
    type(Qt::Key_Return);
    QCOMPARE(playback()->currentIndex(), 1);
    type(Qt::Key_Slash);
    type(Qt::Key_Right);
    type(Qt::Key_Down);
    type(Qt::Key_Delete);
    QCOMPARE(playlist()->count(), 2);
    settle();
    type(Qt::Key_Escape);
    QVERIFY(!showsPlaylist());
}

QTEST_MAIN(TestPlaylistScreen)
#include "tst_playlistscreen.moc"
