#include "media/sliderskin.h"
#include "media/timeskin.h"
#include "media/volumeskin.h"
#include "player/mediabackend.h"
#include "player/messagefilter.h"
#include "player/playerwindow.h"
#include "player/seekcontrol.h"
#include "player/soundfiles.h"

#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <memory>

namespace
{

// These read what is there for subclasses.
class SliderReader : public SliderSkin
{
public:
    // Where the used markers lie, from left to right.
    static QList<int> markersOf(const SliderSkin* slider)
    {
        QList<int> places;
        for (const SliderMarker& marker : slider->*&SliderReader::markers)
            if (marker.used)
                places << marker.rect.center().x();
        std::sort(places.begin(), places.end());
        return places;
    }
    static bool isActive(const SliderSkin* slider) { return slider->*&SliderReader::state != Inactive; }
    static int shown(const SliderSkin* slider) { return slider->*&SliderReader::sliderVal; }
};

class TimeReader : public TimeSkin
{
public:
    static QString text(const TimeSkin* display)
    {
        QString text;
        for (const TimeDigit& digit : display->*&TimeReader::digits)
            text += QString::number(digit.current);
        return text;
    }
};

class VolumeReader : public VolumeSkin
{
public:
    static SliderSkin* levelOf(const VolumeSkin* panel) { return panel->*&VolumeReader::slider; }
    static const SkinButton* button(const VolumeSkin* panel, const QString& name)
    {
        return (panel->*&VolumeReader::buttonMap).value(name);
    }
};

QString clockText(qint64 milliseconds)
{
    const qint64 seconds = milliseconds / 1000;
    return QStringLiteral("%1%2%3")
        .arg(seconds / 3600, 2, 10, QLatin1Char('0'))
        .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

// Counts reported positions that playing in real time does not explain.
class JumpCounter : public QObject
{
public:
    explicit JumpCounter(Playback* playback) : m_expected(playback->position())
    {
        m_clock.start();
        connect(playback, &Playback::positionChanged, this, [this](qint64 position) {
            if (qAbs(position - m_expected - m_clock.restart()) > 1500)
                ++m_count;
            m_expected = position;
        });
    }
    int count() const { return m_count; }

private:
    QElapsedTimer m_clock;
    qint64 m_expected;
    int m_count = 0;
};

} // namespace

/* The media widgets of the player's window, by real keys and a real pointer. */
class TestMediaWidgets : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void liesOnItsBedWithoutASeam_data();
    void liesOnItsBedWithoutASeam();
    void startsDisabledAndAudible();
    void playsSeeksPausesMutesAndResumes();
    void pressOnTheGrooveSeeks();
    void stopAfterAGroovePressShowsTheStart();
    void keysSeek_data();
    void keysSeek();
    void otherFileEndsADrag();
    void unplayableFileDisablesTheSlider();
    void keysChangeTheVolume();
    void pointerChangesTheVolume();
    void pressOnTheVolumeGrooveEndsSilence();
    void muteByKeyAndByPointerAgree();
    void volumeZeroShowsMute();
    void volumeAndMuteOutliveTheFile();
    void bookmarksByKeys_data();
    void bookmarksByKeys();
    void deleteRemovesTheNearestBookmark();
    void atMostTenBookmarks();
    void bookmarksBelongToTheirFile();
    void dialogKeepsItsKeys();
    void skinMayLackWidgets_data();
    void skinMayLackWidgets();

private:
    Playback* playback() const { return m_window->playback(); }
    SliderSkin* seek() const { return m_window->seekSlider(); }
    SliderSkin* level() const { return VolumeReader::levelOf(m_window->volumePanel()); }
    QString time() const { return TimeReader::text(m_window->timeDisplay()); }
    bool showsMute() const
    {
        const VolumeSkin* panel = m_window->volumePanel();
        const bool on = VolumeReader::button(panel, QStringLiteral("mute_on"))->state != Hidden;
        const bool off = VolumeReader::button(panel, QStringLiteral("mute_off"))->state != Hidden;
        // They take turns.
        return QTest::qVerify(on != off, "on != off", "", __FILE__, __LINE__) && on;
    }
    void type(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(m_window->windowHandle(), key, modifiers);
    }
    // Where a value's bar has its middle, in window coordinates.
    QPoint barAt(const SliderSkin* slider, int value) const
    {
        const QPoint middle(slider->positionFromValue(value) + slider->barRect().width() / 2, slider->height() / 2);
        return slider->mapTo(m_window.get(), middle);
    }
    QPoint bar(const SliderSkin* slider) const { return slider->mapTo(m_window.get(), slider->barRect().center()); }
    void press(const QPoint& at) { QTest::mousePress(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier, at); }
    void move(const QPoint& to) { QTest::mouseMove(m_window->windowHandle(), to); }
    void release(const QPoint& at)
    {
        QTest::mouseRelease(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier, at);
    }
    void tapMute()
    {
        const VolumeSkin* panel = m_window->volumePanel();
        const SkinButton* button = VolumeReader::button(panel, QStringLiteral("mute_on"));
        const QPoint at = panel->mapTo(m_window.get(), QPoint(button->xpos + 16, button->ypos + 16));
        press(at);
        release(at);
    }
    // Plays a file, stopped at a position that does not move any more.
    void pauseAt(const QString& file, qint64 position)
    {
        playback()->open({file}, position);
        QTRY_VERIFY(playback()->position() > position);
        playback()->pause();
        pausedAt(playback()->position());
    }
    // Seeks in pause.
    void seekTo(qint64 position)
    {
        playback()->setPosition(position);
        QTRY_COMPARE(playback()->position(), position);
        pausedAt(position);
    }
    void pausedAt(qint64 position)
    {
        QTRY_COMPARE(seek()->value(), int(position));
        QCOMPARE(time(), clockText(position));
    }
    QString shippedSound() const { return qEnvironmentVariable("QPEDIR") + QStringLiteral("sounds/night_walk.ogg"); }

    SoundFiles m_sounds;
    QString m_long;
    QString m_text;
    QByteArray m_dataDirectory;
    std::unique_ptr<PlayerWindow> m_window;
};

void TestMediaWidgets::initTestCase()
{
    mediabackend::choose();
    installMessageFilter();
    m_long = m_sounds.tone("long.wav", 40000);
    m_text = m_sounds.text("text.wav");
    m_dataDirectory = qgetenv("QPEDIR");
}

void TestMediaWidgets::init()
{
    m_window = std::make_unique<PlayerWindow>(QStringLiteral("night"));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QVERIFY(m_window->seekSlider() && m_window->timeDisplay() && m_window->volumePanel());
}

void TestMediaWidgets::cleanup()
{
    m_window.reset();
    qputenv("QPEDIR", m_dataDirectory);
}

void TestMediaWidgets::liesOnItsBedWithoutASeam_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QRect>("place");
    QTest::newRow("slider") << QStringLiteral("Seek") << QRect(12, 147, 456, 30);
    QTest::newRow("time") << QStringLiteral("Time") << QRect(145, 100, 147, 36);
    QTest::newRow("volume") << QStringLiteral("Volume") << QRect(312, 96, 156, 44);
}

void TestMediaWidgets::liesOnItsBedWithoutASeam()
{
    QFETCH(QString, name);
    QFETCH(QRect, place);
    const auto* widget = m_window->panel()->findChild<SkinBase*>(name);
    QVERIFY(widget);
    QCOMPARE(widget->geometry(), place);
    const auto colours = [](const QPixmap& picture) { return picture.toImage().convertToFormat(QImage::Format_RGB32); };
    QCOMPARE(colours(*widget->backgroundPixmap()), colours(*m_window->panel()->backgroundPixmap()).copy(place));
}

void TestMediaWidgets::startsDisabledAndAudible()
{
    QVERIFY(!SliderReader::isActive(seek()));
    QCOMPARE(time(), QStringLiteral("000000"));
    QCOMPARE(playback()->volume(), 70);
    QCOMPARE(level()->value(), 70);
    QVERIFY(!showsMute());

    QSignalSpy released(seek(), &SliderSkin::seekReleased);
    press(barAt(seek(), 50));
    release(barAt(seek(), 50));
    type(Qt::Key_PageDown);
    QCOMPARE(released.count(), 0);
    QCOMPARE(seek()->value(), 0);
}

void TestMediaWidgets::playsSeeksPausesMutesAndResumes()
{
    playback()->open({shippedSound()});
    QTRY_VERIFY(playback()->position() > 1000);
    QVERIFY(playback()->duration() > 20000);
    QCOMPARE(seek()->maxValue(), int(playback()->duration()));
    QVERIFY(qAbs(seek()->value() - playback()->position()) < 500);
    QCOMPARE(time().left(4), QStringLiteral("0000"));

    QSignalSpy released(seek(), &SliderSkin::seekReleased);
    const JumpCounter jumps(playback());
    const qint64 before = playback()->position();
    press(bar(seek()));
    for (const int value : {4000, 9000, 13000})
        move(barAt(seek(), value));
    // Playback goes on under the drag, and the drag shows its own time.
    const int target = SliderReader::shown(seek());
    QVERIFY(qAbs(target - 13000) < 100);
    QTRY_VERIFY(playback()->position() > before + 300);
    QVERIFY(playback()->position() < 9000);
    QCOMPARE(SliderReader::shown(seek()), target);
    QCOMPARE(time(), clockText(target));
    QCOMPARE(jumps.count(), 0);

    release(barAt(seek(), 13000));
    QCOMPARE(released, (QList<QVariantList>{{unsigned(target)}}));
    QTRY_VERIFY(playback()->position() >= target);
    QVERIFY(playback()->position() < target + 1000);
    QElapsedTimer clock;
    clock.start();
    const qint64 from = playback()->position();
    QTRY_VERIFY(playback()->position() > from + 1000);
    QVERIFY(qAbs(playback()->position() - from - clock.elapsed()) < 400);
    QCOMPARE(jumps.count(), 1);
    QVERIFY(qAbs(seek()->value() - playback()->position()) < 500);

    type(Qt::Key_Return);
    QVERIFY(!playback()->isPlaying());
    pausedAt(playback()->position());
    type(Qt::Key_M);
    QVERIFY(playback()->output()->isMuted());
    QVERIFY(showsMute());
    type(Qt::Key_Down);
    QCOMPARE(level()->value(), 65);
    const qint64 paused = playback()->position();
    type(Qt::Key_Return);
    QTRY_VERIFY(playback()->position() > paused + 300);
    QVERIFY(playback()->output()->isMuted());
    QCOMPARE(released.count(), 1);
    QCOMPARE(jumps.count(), 1);
}

void TestMediaWidgets::pressOnTheGrooveSeeks()
{
    pauseAt(m_long, 3000);
    QSignalSpy released(seek(), &SliderSkin::seekReleased);
    press(barAt(seek(), 30000));
    const int target = SliderReader::shown(seek());
    QCOMPARE(time(), clockText(target));
    QVERIFY(playback()->position() < 10000);
    release(barAt(seek(), 30000));
    QCOMPARE(released, (QList<QVariantList>{{unsigned(target)}}));
    QTRY_COMPARE(playback()->position(), target);
    pausedAt(target);
}

void TestMediaWidgets::stopAfterAGroovePressShowsTheStart()
{
    pauseAt(m_long, 0);
    playback()->stop();
    QTRY_COMPARE(seek()->value(), 0);
    press(barAt(seek(), 30000));
    release(barAt(seek(), 30000));
    QTRY_VERIFY(seek()->value() > 0);
    playback()->stop();
    QTRY_COMPARE(seek()->value(), 0);
    QCOMPARE(seek()->barRect().left(), 0);
    QCOMPARE(time(), QStringLiteral("000000"));
}

void TestMediaWidgets::keysSeek_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<qint64>("from");
    QTest::addColumn<qint64>("to");
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    const Qt::KeyboardModifiers shift = Qt::ShiftModifier;
    QTest::newRow("Page Down") << int(Qt::Key_PageDown) << none << qint64(12000) << qint64(22000);
    QTest::newRow("Page Up") << int(Qt::Key_PageUp) << none << qint64(12000) << qint64(2000);
    QTest::newRow("Shift+Right") << int(Qt::Key_Right) << shift << qint64(12000) << qint64(22000);
    QTest::newRow("Shift+Left") << int(Qt::Key_Left) << shift << qint64(12000) << qint64(2000);
    QTest::newRow("before the start") << int(Qt::Key_PageUp) << none << qint64(4000) << qint64(0);
}

void TestMediaWidgets::keysSeek()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(qint64, from);
    QFETCH(qint64, to);
    pauseAt(m_long, 0);
    seekTo(from);
    const QString focused = m_window->panel()->getFocus();
    type(static_cast<Qt::Key>(key), modifiers);
    QTRY_COMPARE(playback()->position(), to);
    pausedAt(to);
    QCOMPARE(m_window->panel()->getFocus(), focused);
}

void TestMediaWidgets::otherFileEndsADrag()
{
    pauseAt(m_long, 2000);
    QSignalSpy released(seek(), &SliderSkin::seekReleased);
    press(bar(seek()));
    move(barAt(seek(), 30000));
    playback()->open({shippedSound()});
    QTRY_VERIFY(playback()->position() > 100);
    QVERIFY(qAbs(seek()->value() - playback()->position()) < 500);
    release(barAt(seek(), 15000));
    QCOMPARE(released.count(), 0);
}

void TestMediaWidgets::unplayableFileDisablesTheSlider()
{
    pauseAt(m_long, 2000);
    QVERIFY(SliderReader::isActive(seek()));
    playback()->open({m_text});
    QTRY_VERIFY(!playback()->isPlaying());
    QVERIFY(!SliderReader::isActive(seek()));
    QCOMPARE(seek()->barRect().left(), 0);
    type(Qt::Key_B);
    QCOMPARE(m_window->seekControl()->bookmarks(), QList<qint64>());
}

void TestMediaWidgets::keysChangeTheVolume()
{
    const auto reported = [this] {
        return qRound(100 * QAudio::convertVolume(playback()->output()->volume(), QAudio::LinearVolumeScale,
                                                  QAudio::LogarithmicVolumeScale));
    };
    type(Qt::Key_Up);
    QCOMPARE(playback()->volume(), 75);
    QCOMPARE(level()->value(), 75);
    QCOMPARE(reported(), 75);
    // Three quarters as loud is far less than three quarters of the amplitude.
    QVERIFY(playback()->output()->volume() < 0.4);
    for (int i = 0; i < 3; ++i)
        type(Qt::Key_Down);
    QCOMPARE(level()->value(), 60);
    QCOMPARE(reported(), 60);
    for (int i = 0; i < 10; ++i)
        type(Qt::Key_Up);
    QCOMPARE(level()->value(), 100);
    QCOMPARE(playback()->output()->volume(), 1.0f);
}

void TestMediaWidgets::pointerChangesTheVolume()
{
    QSignalSpy changes(playback(), &Playback::volumeChanged);
    press(bar(level()));
    move(barAt(level(), 50));
    move(barAt(level(), 30));
    QCOMPARE(changes.count(), 0);
    release(barAt(level(), 30));
    QCOMPARE(changes.count(), 1);
    QVERIFY(qAbs(playback()->volume() - 30) <= 1);
    QCOMPARE(level()->value(), playback()->volume());
    QCOMPARE(playback()->output()->volume(),
             QAudio::convertVolume(playback()->volume() / 100.0f, QAudio::LogarithmicVolumeScale,
                                   QAudio::LinearVolumeScale));
    // The focus stays with the buttons.
    QVERIFY(m_window->panel()->hasFocus());
}

void TestMediaWidgets::pressOnTheVolumeGrooveEndsSilence()
{
    playback()->setVolume(0);
    QVERIFY(showsMute());
    press(barAt(level(), 50));
    release(barAt(level(), 50));
    QVERIFY(playback()->volume() > 30);
    QTRY_COMPARE(level()->value(), playback()->volume());
    QVERIFY(!showsMute());
}

void TestMediaWidgets::muteByKeyAndByPointerAgree()
{
    type(Qt::Key_M);
    QVERIFY(playback()->output()->isMuted());
    QVERIFY(showsMute());
    tapMute();
    QVERIFY(!playback()->output()->isMuted());
    QVERIFY(!showsMute());
    tapMute();
    QVERIFY(playback()->output()->isMuted());
    QVERIFY(showsMute());
    // Another volume does not bring the sound back.
    type(Qt::Key_Up);
    QCOMPARE(level()->value(), 75);
    QVERIFY(playback()->output()->isMuted());
    QVERIFY(showsMute());
    type(Qt::Key_M);
    QVERIFY(!playback()->output()->isMuted());
    QVERIFY(!showsMute());
}

void TestMediaWidgets::volumeZeroShowsMute()
{
    for (int i = 0; i < 15; ++i)
        type(Qt::Key_Down);
    QCOMPARE(playback()->output()->volume(), 0.0f);
    QCOMPARE(level()->value(), 0);
    QVERIFY(showsMute());
    type(Qt::Key_M);
    tapMute();
    QVERIFY(!playback()->output()->isMuted());
    type(Qt::Key_Up);
    QCOMPARE(level()->value(), 5);
    QVERIFY(!showsMute());
}

void TestMediaWidgets::volumeAndMuteOutliveTheFile()
{
    playback()->open({m_long, shippedSound()});
    type(Qt::Key_Down);
    type(Qt::Key_M);
    const float volume = playback()->output()->volume();
    playback()->next();
    QTRY_VERIFY(playback()->position() > 0);
    QCOMPARE(playback()->output()->volume(), volume);
    QVERIFY(playback()->output()->isMuted());
    QVERIFY(showsMute());
}

void TestMediaWidgets::bookmarksByKeys_data()
{
    QTest::addColumn<int>("setKey");
    QTest::addColumn<int>("removeKey");
    QTest::newRow("B, Delete") << int(Qt::Key_B) << int(Qt::Key_Delete);
    QTest::newRow("Insert, Backspace") << int(Qt::Key_Insert) << int(Qt::Key_Backspace);
}

void TestMediaWidgets::bookmarksByKeys()
{
    QFETCH(int, setKey);
    QFETCH(int, removeKey);
    const auto set = static_cast<Qt::Key>(setKey);
    const auto remove = static_cast<Qt::Key>(removeKey);
    pauseAt(m_long, 0);
    seekTo(10000);
    type(set);
    QCOMPARE(SliderReader::markersOf(seek()).size(), 1);
    // Over the middle of the bar, as far as whole pixels go.
    QVERIFY(qAbs(SliderReader::markersOf(seek()).first() - seek()->barRect().center().x()) <= 1);
    // The same place again is no second bookmark.
    type(set);
    QCOMPARE(m_window->seekControl()->bookmarks(), QList<qint64>{10000});

    seekTo(20000);
    type(set);
    QCOMPARE(SliderReader::markersOf(seek()).size(), 2);
    type(remove);
    QCOMPARE(m_window->seekControl()->bookmarks(), QList<qint64>{10000});
    QCOMPARE(SliderReader::markersOf(seek()).size(), 1);
    type(set);
    type(remove, Qt::ShiftModifier);
    QCOMPARE(m_window->seekControl()->bookmarks(), QList<qint64>());
    QCOMPARE(SliderReader::markersOf(seek()).size(), 0);
    type(remove);
    QCOMPARE(SliderReader::markersOf(seek()).size(), 0);
}

void TestMediaWidgets::deleteRemovesTheNearestBookmark()
{
    pauseAt(m_long, 0);
    for (const int position : {30000, 10000, 20000}) {
        seekTo(position);
        type(Qt::Key_B);
    }
    const QList<int> all = SliderReader::markersOf(seek());
    QCOMPARE(all.size(), 3);
    seekTo(13000);
    type(Qt::Key_Delete);
    QCOMPARE(m_window->seekControl()->bookmarks(), (QList<qint64>{30000, 20000}));
    QCOMPARE(SliderReader::markersOf(seek()), (QList<int>{all[1], all[2]}));
    // As far from one as from the other: the one set first.
    seekTo(25000);
    type(Qt::Key_Delete);
    QCOMPARE(m_window->seekControl()->bookmarks(), QList<qint64>{20000});
    QCOMPARE(SliderReader::markersOf(seek()), QList<int>{all[1]});
}

void TestMediaWidgets::atMostTenBookmarks()
{
    pauseAt(m_long, 0);
    for (int i = 1; i <= 11; ++i) {
        seekTo(i * 3000);
        type(Qt::Key_B);
    }
    QCOMPARE(m_window->seekControl()->bookmarks().size(), 10);
    QCOMPARE(m_window->seekControl()->bookmarks().last(), 30000);
    QCOMPARE(SliderReader::markersOf(seek()).size(), 10);
    type(Qt::Key_Delete);
    type(Qt::Key_B);
    QCOMPARE(m_window->seekControl()->bookmarks().last(), 33000);
    QCOMPARE(SliderReader::markersOf(seek()).size(), 10);
}

void TestMediaWidgets::bookmarksBelongToTheirFile()
{
    pauseAt(m_long, 0);
    seekTo(10000);
    type(Qt::Key_B);
    const QList<int> markers = SliderReader::markersOf(seek());
    pauseAt(shippedSound(), 1000);
    QCOMPARE(m_window->seekControl()->bookmarks(), QList<qint64>());
    QCOMPARE(SliderReader::markersOf(seek()), QList<int>());
    pauseAt(m_long, 1000);
    QCOMPARE(m_window->seekControl()->bookmarks(), QList<qint64>{10000});
    QCOMPARE(SliderReader::markersOf(seek()), markers);
}

void TestMediaWidgets::dialogKeepsItsKeys()
{
    m_window->chooseFiles();
    auto* dialog = m_window->findChild<QFileDialog*>();
    QVERIFY(QTest::qWaitForWindowActive(dialog));
    auto* names = dialog->findChild<QLineEdit*>();
    for (const Qt::Key key : {Qt::Key_M, Qt::Key_B})
        QTest::keyClick(dialog->windowHandle(), key);
    QTest::keyClick(dialog->windowHandle(), Qt::Key_Backspace);
    QCOMPARE(names->text(), QStringLiteral("m"));
    QVERIFY(!playback()->isMuted());
}

void TestMediaWidgets::skinMayLackWidgets_data()
{
    QTest::addColumn<QByteArray>("config");
    const QByteArray groups = "[Seek]\nback_image = seek_back.png\nbar_image = seek_bar.png\n"
                              "[Time]\nnumber_image = numbers.png\ncolon_image = colon.png\nspacing = 1\n"
                              "[Volume]\nbackground = volume_bg.png\n";
    const QByteArray places = "[Screen]\nseek_x = 1\nseek_y = 1\ntime_x = 1\ntime_y = 1\nvolume_x = 1\nvolume_y = 1\n";
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("groups without places") << groups;
    QTest::newRow("places without groups") << places;
    QTest::newRow("half a place") << groups + "[Screen]\nseek_x = 1\ntime_y = 1\nvolume_x = 1\n";
    QTest::newRow("groups without pictures") << places + "[Seek]\nback_image = none.png\n[Time]\nspacing = 9\n"
                                                         "[Volume]\n[Volume_SLIDER]\nxpos = 1\n";
}

void TestMediaWidgets::skinMayLackWidgets()
{
    QFETCH(QByteArray, config);
    QTemporaryDir root;
    const QString skin = root.filePath(QStringLiteral("pics/bare/"));
    QVERIFY(QDir().mkpath(skin));
    const QString night = QString::fromLocal8Bit(m_dataDirectory) + QStringLiteral("pics/night/");
    for (const QString& picture : QDir(night).entryList({QStringLiteral("*.png")}))
        QVERIFY(QFile::copy(night + picture, skin + picture));
    QFile file(skin + QStringLiteral("config"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[Player]\nbackground = player_bg.png\n" + config);
    file.close();
    const QString sound = shippedSound();
    qputenv("QPEDIR", root.path().toLocal8Bit());

    m_window = std::make_unique<PlayerWindow>(QStringLiteral("bare"));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QVERIFY(m_window->isSkinned());
    QCOMPARE(m_window->panel()->findChildren<QWidget*>().size(), 0);
    QVERIFY(!m_window->seekSlider() && !m_window->timeDisplay() && !m_window->volumePanel());

    // The keys work all the same.
    playback()->open({sound}, 2000);
    QTRY_VERIFY(playback()->position() > 2000);
    type(Qt::Key_PageDown);
    QTRY_VERIFY(playback()->position() > 12000);
    type(Qt::Key_Up);
    QCOMPARE(playback()->volume(), 75);
    type(Qt::Key_M);
    QVERIFY(playback()->output()->isMuted());
    type(Qt::Key_M);
    QVERIFY(!playback()->output()->isMuted());
    type(Qt::Key_B);
    QCOMPARE(m_window->seekControl()->bookmarks().size(), 1);
    type(Qt::Key_Delete);
    QCOMPARE(m_window->seekControl()->bookmarks().size(), 0);
}

QTEST_MAIN(TestMediaWidgets)
#include "tst_mediawidgets.moc"
