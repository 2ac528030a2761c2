#include "player/mediabackend.h"
#include "player/messagefilter.h"
#include "player/playback.h"
#include "player/soundfiles.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <memory>

class TestPlayback : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void startsEmpty();
    void openIgnoresAnEmptyList();
    void keepsRealTime();
    void standsStillInPause();
    void stopRewinds();
    void searchesWithinTheFile();
    void opensAtAPosition();
    void startPositionIsForOneFile();
    void clampsTheVolume_data();
    void clampsTheVolume();
    void volumeIsLoudnessAndMuteIsApart();
    void stepsAroundTheEnds();
    void playsAfterQuickTurns();
    void playsAfterQuickSteps();
    void receiverMayStepOnAnySignal();
    void stepsKeepPaused();
    void playsTheListToItsEnd();
    void playsAgainAfterTheEnd();
    void passesOverUnplayableFiles_data();
    void passesOverUnplayableFiles();
    void passesOverBackwardsWhenSteppingBack();
    void givesUpWhereNothingPlays();
    void unplayableFilesDoNotBlock();
    void triesAFailedFileAgain();
    void receiverMayOpenOtherFilesOnFailure();
    void receiverMayDeleteOnFailure();
    void endOfTheListIsToldOnce();
    void repeatedListBeginsAnew();
    void repeatedFilePlaysAgain();
    void repeatedListWithoutASoundStops_data();
    void repeatedListWithoutASoundStops();
    void repeatedListPassesOverUnplayableFiles();
    void shuffledListPlaysEachOnce();
    void stepsFollowTheShuffledOrder();
    void removedFileGivesWayToTheShuffledOrder();
    void orderSignalsTellOfChangesOnly();
    void receiverMayDeleteAtTheEnd();
    void playsAnyEntry();
    void removalBeforeTheCurrentEntryLeavesIt();
    void removedCurrentEntryGivesWay_data();
    void removedCurrentEntryGivesWay();
    void removalOfTheLastEntryStops();
    void emptiedListUnloads();
    void replacedListUnloads();
    void goesOnWithAppendedEntries();
    void waitsForAGrowingList();
    void endOfGrowingEndsPlayback();
    void notesLengthsAndWhatIsMissing();
    void longListOfMissingFilesComesToAnEnd();
    void receiverMayDeleteOnRemoval();

private:
    QString shippedSound() const { return qEnvironmentVariable("QPEDIR") + QStringLiteral("sounds/night_walk.ogg"); }

    SoundFiles m_sounds;
    QString m_long;
    QString m_short;
    QString m_brief;
    QString m_text;
};

void TestPlayback::initTestCase()
{
    mediabackend::choose();
    installMessageFilter();
    m_long = m_sounds.tone("long.wav", 20000);
    m_short = m_sounds.tone("short.wav", 300);
    m_brief = m_sounds.tone("brief.wav", 200);
    m_text = m_sounds.text("text.wav");
}

void TestPlayback::startsEmpty()
{
    Playback playback;
    QSignalSpy playing(&playback, &Playback::playingChanged);
    playback.play();
    playback.next();
    playback.previous();
    playback.pause();
    playback.stop();
    playback.setPosition(100);
    QVERIFY(!playback.isPlaying());
    QCOMPARE(playing.count(), 0);
    QCOMPARE(playback.currentFile(), QString());
    QCOMPARE(playback.currentIndex(), -1);
    QCOMPARE(playback.position(), 0);
    QCOMPARE(playback.duration(), 0);
}

void TestPlayback::openIgnoresAnEmptyList()
{
    Playback playback;
    playback.open({m_long});
    playback.open({});
    QVERIFY(playback.isPlaying());
    QCOMPARE(playback.files(), QStringList{m_long});
}

void TestPlayback::keepsRealTime()
{
    Playback playback;
    QSignalSpy positions(&playback, &Playback::positionChanged);
    playback.open({shippedSound()});
    QTRY_VERIFY(playback.position() > 0);
    QTRY_VERIFY(qAbs(playback.duration() - 20800) < 100);

    QElapsedTimer clock;
    clock.start();
    const qint64 start = playback.position();
    QTRY_VERIFY(playback.position() >= start + 1500);
    const qint64 played = playback.position() - start;
    QVERIFY2(qAbs(clock.elapsed() - played) < 500,
             qPrintable(QStringLiteral("%1 ms took %2 ms").arg(played).arg(clock.elapsed())));
    // Often enough for a display of seconds that never skips one.
    QVERIFY(positions.count() >= 5);
}

void TestPlayback::standsStillInPause()
{
    Playback playback;
    playback.open({m_long});
    QTRY_VERIFY(playback.position() > 200);
    QSignalSpy playing(&playback, &Playback::playingChanged);
    playback.pause();
    QVERIFY(!playback.isPlaying());
    const qint64 position = playback.position();
    QTest::qWait(500);
    QCOMPARE(playback.position(), position);
    playback.play();
    QTRY_VERIFY(playback.position() > position + 100);
    // It went on from there instead of beginning anew.
    QVERIFY(playback.position() < position + 5000);
    QCOMPARE(playing, (QList<QVariantList>{{false}, {true}}));
}

void TestPlayback::stopRewinds()
{
    Playback playback;
    playback.open({m_long});
    QTRY_VERIFY(playback.position() > 0);
    playback.stop();
    QVERIFY(!playback.isPlaying());
    QTRY_COMPARE(playback.position(), 0);
    QTest::qWait(300);
    QCOMPARE(playback.position(), 0);
    playback.play();
    QTRY_VERIFY(playback.position() > 0);
    QVERIFY(playback.position() < 5000);
}

void TestPlayback::searchesWithinTheFile()
{
    Playback playback;
    playback.open({m_long});
    QTRY_VERIFY(playback.position() > 0);
    playback.setPosition(10000);
    QTRY_VERIFY(playback.position() > 10000);
    QVERIFY(playback.position() < 15000);
    playback.setPosition(-5);
    QTRY_VERIFY(playback.position() < 5000);
    playback.setPosition(1000000000);
    QTRY_VERIFY(!playback.isPlaying());
}

void TestPlayback::opensAtAPosition()
{
    Playback playback;
    playback.open({m_long}, 8000);
    QTRY_VERIFY(playback.position() > 8000);
    QVERIFY(playback.position() < 13000);
    QVERIFY(playback.isPlaying());
    // Beyond the end is the end.
    playback.open({m_short}, 1000000);
    QTRY_VERIFY(!playback.isPlaying());
}

void TestPlayback::startPositionIsForOneFile()
{
    Playback playback;
    playback.open({m_text, m_long}, 8000);
    QTRY_COMPARE(playback.currentIndex(), 1);
    QTRY_VERIFY(playback.position() > 0);
    QVERIFY(playback.position() < 5000);
}

void TestPlayback::clampsTheVolume_data()
{
    QTest::addColumn<int>("asked");
    QTest::addColumn<int>("given");
    QTest::newRow("silent") << 0 << 0;
    QTest::newRow("third") << 33 << 33;
    QTest::newRow("below") << -1 << 0;
    QTest::newRow("above") << 101 << 100;
}

void TestPlayback::clampsTheVolume()
{
    QFETCH(int, asked);
    QFETCH(int, given);
    Playback playback;
    playback.setVolume(50);
    QSignalSpy changes(&playback, &Playback::volumeChanged);
    playback.setVolume(asked);
    playback.setVolume(asked);
    QCOMPARE(playback.volume(), given);
    QCOMPARE(changes, (QList<QVariantList>{{given}}));
}

void TestPlayback::volumeIsLoudnessAndMuteIsApart()
{
    Playback playback;
    QCOMPARE(playback.output()->volume(), 1.0f);
    float before = 1;
    for (const int volume : {90, 50, 10, 0}) {
        playback.setVolume(volume);
        const float amplitude = playback.output()->volume();
        QVERIFY(amplitude < before && 100 * amplitude <= float(volume));
        before = amplitude;
    }
    QCOMPARE(before, 0.0f);
    playback.setVolume(50);
    playback.setMuted(true);
    QVERIFY(playback.isMuted() && playback.output()->isMuted());
    QCOMPARE(playback.volume(), 50);
    // A file gets a new output.
    const QAudioOutput* output = playback.output();
    playback.open({m_long});
    QVERIFY(playback.output() != output);
    QVERIFY(playback.output()->isMuted());
    playback.setMuted(false);
    QVERIFY(!playback.isMuted() && !playback.output()->isMuted());
}

void TestPlayback::stepsAroundTheEnds()
{
    Playback playback;
    const QString second = m_sounds.tone("second.wav", 20000);
    playback.open({m_long, second, m_long});
    QSignalSpy current(&playback, &Playback::currentChanged);
    playback.previous();
    QCOMPARE(playback.currentIndex(), 2);
    playback.next();
    QCOMPARE(playback.currentIndex(), 0);
    playback.next();
    QCOMPARE(playback.currentIndex(), 1);
    QCOMPARE(current, (QList<QVariantList>{{m_long}, {m_long}, {second}}));
    QVERIFY(playback.isPlaying());
    QTRY_VERIFY(playback.position() > 0);
}

void TestPlayback::playsAfterQuickTurns()
{
    Playback playback;
    playback.open({shippedSound()});
    playback.pause();
    playback.play();
    playback.stop();
    playback.play();
    playback.pause();
    playback.play();
    QVERIFY(playback.isPlaying());
    QTRY_VERIFY(playback.position() > 200);
}

void TestPlayback::playsAfterQuickSteps()
{
    // Each step comes while the file before it is still loading.
    Playback playback;
    playback.open({m_long, shippedSound(), m_long});
    for (int i = 0; i < 10; ++i)
        playback.next();
    QCOMPARE(playback.currentFile(), shippedSound());
    QTRY_VERIFY(playback.position() > 0);
    QTRY_VERIFY(qAbs(playback.duration() - 20800) < 100);
}

void TestPlayback::receiverMayStepOnAnySignal()
{
    Playback playback;
    int steps = 0;
    const auto step = [&] {
        if (steps++ < 4)
            playback.next();
    };
    connect(&playback, &Playback::durationChanged, &playback, step);
    connect(&playback, &Playback::positionChanged, &playback, step);
    playback.open({m_long, shippedSound()});
    QTRY_VERIFY(steps > 4);
    QTRY_VERIFY(playback.position() > 0);
    QCOMPARE(playback.currentIndex(), 0);
}

void TestPlayback::stepsKeepPaused()
{
    Playback playback;
    playback.open({m_long, m_short});
    QTRY_VERIFY(playback.position() > 0);
    playback.pause();
    playback.next();
    QVERIFY(!playback.isPlaying());
    QTRY_COMPARE(playback.duration(), 300);
    QTest::qWait(300);
    QCOMPARE(playback.position(), 0);
    QCOMPARE(playback.currentIndex(), 1);
}

void TestPlayback::playsTheListToItsEnd()
{
    Playback playback;
    QSignalSpy current(&playback, &Playback::currentChanged);
    QSignalSpy playing(&playback, &Playback::playingChanged);
    playback.open({m_short, m_brief});
    QTRY_COMPARE(playing, (QList<QVariantList>{{true}, {false}}));
    QCOMPARE(current, (QList<QVariantList>{{m_short}, {m_brief}}));
    QCOMPARE(playback.currentIndex(), 1);
    QTRY_COMPARE(playback.position(), 0);
}

void TestPlayback::playsAgainAfterTheEnd()
{
    Playback playback;
    QSignalSpy playing(&playback, &Playback::playingChanged);
    playback.open({m_short});
    QTRY_COMPARE(playing.count(), 2);
    QSignalSpy positions(&playback, &Playback::positionChanged);
    playback.play();
    QTRY_VERIFY(positions.count() > 0 && playback.position() > 0);
    QTRY_COMPARE(playing, (QList<QVariantList>{{true}, {false}, {true}, {false}}));
}

void TestPlayback::passesOverUnplayableFiles_data()
{
    QTest::addColumn<QString>("bad");
    const QString empty = m_sounds.path("empty.ogg");
    QVERIFY(QFile(empty).open(QIODevice::WriteOnly));
    QTest::newRow("text") << m_text;
    QTest::newRow("empty") << empty;
    QTest::newRow("missing") << m_sounds.path("missing.ogg");
    QTest::newRow("directory") << QFileInfo(m_text).path();
    QTest::newRow("device without end") << QStringLiteral("/dev/zero");
}

void TestPlayback::passesOverUnplayableFiles()
{
    QFETCH(QString, bad);
    Playback playback;
    QSignalSpy failed(&playback, &Playback::fileFailed);
    playback.open({bad, m_long});
    QTRY_COMPARE(playback.currentFile(), m_long);
    QTRY_VERIFY(playback.position() > 0);
    QVERIFY(playback.isPlaying());
    QCOMPARE(failed.count(), 1);
    QCOMPARE(failed[0][0].toString(), bad);
    QVERIFY(!failed[0][1].toString().isEmpty());
}

void TestPlayback::passesOverBackwardsWhenSteppingBack()
{
    Playback playback;
    playback.open({m_long, m_text, m_long});
    playback.previous();
    QCOMPARE(playback.currentIndex(), 2);
    playback.previous();
    QTRY_COMPARE(playback.currentIndex(), 0);
    QTRY_VERIFY(playback.position() > 0);
}

void TestPlayback::givesUpWhereNothingPlays()
{
    Playback playback;
    QSignalSpy failed(&playback, &Playback::fileFailed);
    QSignalSpy playing(&playback, &Playback::playingChanged);
    const QString missing = m_sounds.path("missing.ogg");
    playback.open({m_text, missing, m_text});
    QTRY_COMPARE(playing, (QList<QVariantList>{{true}, {false}}));
    QCOMPARE(failed.count(), 3);
    // A step of the user tries every file once more, around the end.
    playback.next();
    QTRY_COMPARE(failed.count(), 6);
    QTest::qWait(100);
    QCOMPARE(failed.count(), 6);
}

void TestPlayback::unplayableFilesDoNotBlock()
{
    QStringList files;
    for (int i = 0; i < 8; ++i)
        files << m_text;
    qint64 longestTurn = 0;
    QElapsedTimer turn;
    QTimer ticks;
    connect(&ticks, &QTimer::timeout, this, [&] { longestTurn = std::max(longestTurn, turn.restart()); });
    Playback playback;
    playback.open(files << m_long);
    turn.start();
    ticks.start(5);
    // Long enough for the players of the others to be released.
    QTRY_VERIFY_WITH_TIMEOUT(playback.position() > 2000, 60000);
    // Each of them could hold up everything for a second.
    QVERIFY2(longestTurn < 4000, qPrintable(QString::number(longestTurn)));
}

void TestPlayback::triesAFailedFileAgain()
{
    const QString late = m_sounds.path("late.wav");
    Playback playback;
    QSignalSpy failed(&playback, &Playback::fileFailed);
    playback.open({late});
    QTRY_COMPARE(failed.count(), 1);
    QTRY_VERIFY(!playback.isPlaying());
    m_sounds.tone("late.wav", 20000);
    playback.play();
    QTRY_VERIFY(playback.position() > 0);
    QCOMPARE(failed.count(), 1);
}

void TestPlayback::receiverMayOpenOtherFilesOnFailure()
{
    Playback playback;
    connect(&playback, &Playback::fileFailed, &playback, [&] { playback.open({m_long}); });
    playback.open({m_text, m_short});
    QTRY_COMPARE(playback.currentFile(), m_long);
    QTRY_VERIFY(playback.position() > 0);
}

void TestPlayback::receiverMayDeleteOnFailure()
{
    auto playback = std::make_unique<Playback>();
    QSignalSpy destroyed(playback.get(), &QObject::destroyed);
    connect(playback.get(), &Playback::fileFailed, this, [&] { playback.reset(); });
    playback->open({m_text, m_short});
    QTRY_COMPARE(destroyed.count(), 1);
}

void TestPlayback::endOfTheListIsToldOnce()
{
    Playback playback;
    QSignalSpy finished(&playback, &Playback::finished);
    playback.open({m_brief, m_brief});
    QTRY_COMPARE(finished.count(), 1);
    QVERIFY(!playback.isPlaying());
    playback.play();
    playback.stop();
    playback.open({m_text});
    QTRY_VERIFY(!playback.isPlaying());
    QCOMPARE(finished.count(), 1);
}

void TestPlayback::repeatedListBeginsAnew()
{
    Playback playback;
    playback.setRepeated(true);
    QSignalSpy current(&playback, &Playback::currentChanged);
    QSignalSpy finished(&playback, &Playback::finished);
    QSignalSpy playing(&playback, &Playback::playingChanged);
    const QString other = m_sounds.tone("other.wav", 200);
    playback.open({m_brief, other});
    QTRY_VERIFY(current.count() >= 5);
    QCOMPARE(current.mid(0, 5), (QList<QVariantList>{{m_brief}, {other}, {m_brief}, {other}, {m_brief}}));
    QCOMPARE(playing, (QList<QVariantList>{{true}}));
    QCOMPARE(finished.count(), 0);
    playback.setRepeated(false);
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(playback.currentFile(), other);
}

void TestPlayback::repeatedFilePlaysAgain()
{
    Playback playback;
    playback.setRepeated(true);
    QSignalSpy current(&playback, &Playback::currentChanged);
    playback.open({m_brief});
    QTRY_VERIFY(current.count() >= 3);
    QVERIFY(playback.isPlaying());
}

void TestPlayback::repeatedListWithoutASoundStops_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<bool>("shuffle");
    const QString silent = m_sounds.tone("silent.wav", 0);
    const QString missing = m_sounds.path("missing.wav");
    for (const bool shuffle : {false, true}) {
        const char* const suffix = shuffle ? ", shuffled" : "";
        QTest::addRow("unplayable%s", suffix) << QStringList{m_text} << shuffle;
        QTest::addRow("unplayable ones%s", suffix) << QStringList{m_text, missing, m_text} << shuffle;
        QTest::addRow("without length%s", suffix) << QStringList{silent} << shuffle;
        QTest::addRow("without length or unplayable%s", suffix) << QStringList{silent, missing, silent} << shuffle;
    }
}

void TestPlayback::repeatedListWithoutASoundStops()
{
    QFETCH(QStringList, files);
    QFETCH(bool, shuffle);
    Playback playback;
    playback.setRepeated(true);
    playback.setShuffled(shuffle);
    QSignalSpy current(&playback, &Playback::currentChanged);
    playback.open(files);
    QTRY_VERIFY(!playback.isPlaying());
    QVERIFY2(current.count() <= files.size() + 1, qPrintable(QString::number(current.count())));
}

void TestPlayback::repeatedListPassesOverUnplayableFiles()
{
    Playback playback;
    playback.setRepeated(true);
    QSignalSpy failed(&playback, &Playback::fileFailed);
    QSignalSpy current(&playback, &Playback::currentChanged);
    playback.open({m_text, m_brief, m_sounds.path("missing.wav")});
    QTRY_VERIFY(failed.count() >= 4);
    QVERIFY(playback.isPlaying());
    QVERIFY(current.contains(QVariantList{m_brief}));
}

void TestPlayback::shuffledListPlaysEachOnce()
{
    QStringList files;
    for (int i = 0; i < 6; ++i)
        files << m_sounds.tone(QStringLiteral("shuffled %1.wav").arg(i), 100);
    Playback playback;
    playback.setShuffled(true);
    QSignalSpy current(&playback, &Playback::currentChanged);
    QSignalSpy finished(&playback, &Playback::finished);
    playback.open(files);
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 30000);
    QStringList played;
    for (const QVariantList& change : current)
        played << change.first().toString();
    QCOMPARE(played.first(), files.first());
    played.sort();
    QCOMPARE(played, files);
}

void TestPlayback::stepsFollowTheShuffledOrder()
{
    QStringList files;
    for (int i = 0; i < 20; ++i)
        files << m_sounds.path(QStringLiteral("missing %1.wav").arg(i));
    Playback playback;
    // That a file is missing is found out only when control returns to the event loop.
    playback.open(files);
    playback.setShuffled(true);
    // What plays goes on.
    QCOMPARE(playback.currentIndex(), 0);
    QList<int> heard{0};
    for (int i = 0; i < 10; ++i) {
        playback.next();
        QVERIFY(!heard.contains(playback.currentIndex()));
        heard << playback.currentIndex();
    }
    QVERIFY(heard != (QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    for (int i = 9; i >= 0; --i) {
        playback.previous();
        QCOMPARE(playback.currentIndex(), heard.at(i));
    }
    playback.setShuffled(false);
    playback.next();
    QCOMPARE(playback.currentIndex(), 1);
}

void TestPlayback::removedFileGivesWayToTheShuffledOrder()
{
    Playback playback;
    playback.setShuffled(true);
    playback.open({m_long, m_long, m_long, m_long, m_long});
    playback.next();
    playback.playlist()->remove({playback.currentIndex()});
    QVERIFY(playback.isPlaying());
    // The one before stays where going back leads to.
    QVERIFY(playback.currentIndex() > 0);
    playback.previous();
    QCOMPARE(playback.currentIndex(), 0);
    playback.playlist()->append({{m_short, QString(), -1, false}});
    playback.playlist()->remove({0, 1, 2, 3});
    QCOMPARE(playback.currentFile(), m_short);
    playback.playlist()->remove({0});
    QCOMPARE(playback.currentIndex(), -1);
    QVERIFY(!playback.isPlaying());
}

void TestPlayback::orderSignalsTellOfChangesOnly()
{
    Playback playback;
    QSignalSpy shuffled(&playback, &Playback::shuffledChanged);
    QSignalSpy repeated(&playback, &Playback::repeatedChanged);
    QSignalSpy muted(&playback, &Playback::mutedChanged);
    for (const bool on : {false, true, true, false}) {
        playback.setShuffled(on);
        playback.setRepeated(on);
        playback.setMuted(on);
        QCOMPARE(playback.isShuffled(), on);
        QCOMPARE(playback.isRepeated(), on);
        QCOMPARE(playback.isMuted(), on);
    }
    const QList<QVariantList> changes{{true}, {false}};
    QCOMPARE(shuffled, changes);
    QCOMPARE(repeated, changes);
    QCOMPARE(muted, changes);
}

void TestPlayback::receiverMayDeleteAtTheEnd()
{
    auto playback = std::make_unique<Playback>();
    QSignalSpy destroyed(playback.get(), &QObject::destroyed);
    connect(playback.get(), &Playback::playingChanged, this, [&](bool playing) {
        if (!playing)
            playback.reset();
    });
    playback->open({m_brief});
    QTRY_COMPARE(destroyed.count(), 1);
}

void TestPlayback::playsAnyEntry()
{
    Playback playback;
    playback.openEntries({{m_long, QString(), -1, false}, {m_short, QString(), -1, false}}, 1);
    QCOMPARE(playback.currentFile(), m_short);
    playback.playAt(0);
    QCOMPARE(playback.currentFile(), m_long);
    playback.playAt(2);
    playback.playAt(-1);
    QCOMPARE(playback.currentIndex(), 0);
    playback.pause();
    playback.playAt(1);
    QVERIFY(playback.isPlaying());
}

void TestPlayback::removalBeforeTheCurrentEntryLeavesIt()
{
    Playback playback;
    playback.open({m_short, m_short, m_long, m_short});
    playback.playAt(2);
    QTRY_VERIFY(playback.position() > 200);
    QSignalSpy changed(&playback, &Playback::currentChanged);
    playback.playlist()->remove({0, 1, 3});
    QCOMPARE(playback.currentIndex(), 0);
    QCOMPARE(playback.currentFile(), m_long);
    QCOMPARE(changed.count(), 0);
    QVERIFY(playback.position() > 200);
}

void TestPlayback::removedCurrentEntryGivesWay_data()
{
    QTest::addColumn<QList<int>>("removed");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("was");
    QTest::newRow("it alone") << QList<int>{1} << 1 << 2;
    QTest::newRow("and before") << QList<int>{0, 1} << 0 << 2;
    QTest::newRow("and behind") << QList<int>{1, 2} << 1 << 3;
    QTest::newRow("all but the last") << QList<int>{0, 1, 2} << 0 << 3;
}

void TestPlayback::removedCurrentEntryGivesWay()
{
    QFETCH(QList<int>, removed);
    QFETCH(int, index);
    QFETCH(int, was);
    Playback playback;
    const QStringList files{m_sounds.tone("0.wav", 5000), m_long, m_sounds.tone("2.wav", 5000),
                            m_sounds.tone("3.wav", 5000)};
    playback.open(files);
    playback.playAt(1);
    QSignalSpy changed(&playback, &Playback::currentChanged);
    playback.playlist()->remove(removed);
    QCOMPARE(playback.currentIndex(), index);
    QCOMPARE(playback.currentFile(), files.at(was));
    QCOMPARE(changed, (QList<QVariantList>{{files.at(was)}}));
    QVERIFY(playback.isPlaying());
    QTRY_VERIFY(playback.position() > 0);
}

void TestPlayback::removalOfTheLastEntryStops()
{
    Playback playback;
    playback.open({m_short, m_long});
    playback.playAt(1);
    QSignalSpy playing(&playback, &Playback::playingChanged);
    playback.playlist()->remove({1});
    QVERIFY(!playback.isPlaying());
    QCOMPARE(playing, (QList<QVariantList>{{false}}));
    QCOMPARE(playback.currentFile(), m_short);
    playback.play();
    QTRY_VERIFY(playback.position() > 0);
}

void TestPlayback::emptiedListUnloads()
{
    Playback playback;
    playback.open({m_long, m_short});
    QTRY_VERIFY(playback.position() > 0);
    QSignalSpy changed(&playback, &Playback::currentChanged);
    playback.playlist()->remove({0, 1});
    QVERIFY(!playback.isPlaying());
    QCOMPARE(playback.currentIndex(), -1);
    QCOMPARE(changed, (QList<QVariantList>{{QString()}}));
    QCOMPARE(playback.duration(), 0);
    playback.play();
    playback.next();
    QVERIFY(!playback.isPlaying());
}

void TestPlayback::replacedListUnloads()
{
    Playback playback;
    playback.open({m_long});
    playback.playlist()->replace({{m_short, QString(), -1, false}});
    QCOMPARE(playback.currentIndex(), -1);
    QVERIFY(!playback.isPlaying());
    playback.play();
    QCOMPARE(playback.currentFile(), m_short);
}

void TestPlayback::goesOnWithAppendedEntries()
{
    Playback playback;
    playback.open({m_short});
    playback.playlist()->append({{m_long, QString(), -1, false}});
    QTRY_COMPARE(playback.currentFile(), m_long);
    QVERIFY(playback.isPlaying());
}

void TestPlayback::waitsForAGrowingList()
{
    Playback playback;
    playback.open({m_brief});
    playback.playlist()->setGrowing(true);
    QTRY_VERIFY(playback.position() > 0);
    QTest::qWait(1000);
    QVERIFY(playback.isPlaying());
    QCOMPARE(playback.currentFile(), m_brief);
    playback.playlist()->append({{m_long, QString(), -1, false}});
    QTRY_COMPARE(playback.currentFile(), m_long);
    QVERIFY(playback.isPlaying());
}

void TestPlayback::endOfGrowingEndsPlayback()
{
    Playback playback;
    playback.open({m_brief});
    playback.playlist()->setGrowing(true);
    QTRY_VERIFY(playback.position() > 0);
    QTest::qWait(1000);
    QVERIFY(playback.isPlaying());
    playback.playlist()->setGrowing(false);
    QTRY_VERIFY(!playback.isPlaying());
}

void TestPlayback::notesLengthsAndWhatIsMissing()
{
    Playback playback;
    playback.open({m_sounds.path("none.wav"), m_long});
    QTRY_COMPARE(playback.playlist()->at(1).seconds, 20);
    QVERIFY(playback.playlist()->at(0).isMissing);
    QVERIFY(!playback.playlist()->at(1).isMissing);
    // It may be there again later.
    playback.playAt(0);
    m_sounds.tone("none.wav", 2000);
    playback.playAt(0);
    QVERIFY(!playback.playlist()->at(0).isMissing);
    QTRY_VERIFY(playback.position() > 0);
}

void TestPlayback::longListOfMissingFilesComesToAnEnd()
{
    Playback playback;
    QSignalSpy failed(&playback, &Playback::fileFailed);
    QStringList files;
    for (int i = 0; i < 5000; ++i)
        files << m_sounds.path(QStringLiteral("missing %1.wav").arg(i));
    files << m_long;
    playback.open(files);
    QTRY_COMPARE_WITH_TIMEOUT(playback.currentFile(), m_long, 30000);
    QCOMPARE(failed.count(), 5000);
}

void TestPlayback::receiverMayDeleteOnRemoval()
{
    auto* playback = new Playback;
    playback->open({m_long, m_short});
    connect(playback, &Playback::currentChanged, this, [&playback] { delete std::exchange(playback, nullptr); });
    playback->playlist()->remove({0});
    QVERIFY(!playback);
}

QTEST_GUILESS_MAIN(TestPlayback)
#include "tst_playback.moc"
