#include "player/playback.h"

#include <QAudioDevice>
#include <QFile>
#include <QFileInfo>
#include <QMediaDevices>
#include <QPointer>
#include <QUrl>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace
{

using namespace std::chrono_literals;

constexpr auto restTime = 1s;
// A folder of files that cannot be played goes by faster than that.
constexpr size_t mostRetired = 16;

// What has failed holds nothing that would have to be let go of, and the backend would wait a second for it.
void unloadPlayer(QMediaPlayer* player)
{
    if (player->mediaStatus() != QMediaPlayer::InvalidMedia)
        player->setSource(QUrl());
}

// The factor for the samples that sounds as loud as a volume says.
float amplitude(int volume)
{
    return QAudio::convertVolume(static_cast<float>(volume) / 100, QAudio::LogarithmicVolumeScale,
                                 QAudio::LinearVolumeScale);
}

} // namespace

Playback::Playback(QObject* parent) : QObject(parent)
{
    m_leaveTimer.setObjectName(QStringLiteral("leave file"));
    m_leaveTimer.setSingleShot(true);
    connect(&m_leaveTimer, &QTimer::timeout, this, &Playback::leaveFile);

    m_retireTimer.setObjectName(QStringLiteral("release players"));
    m_retireTimer.setSingleShot(true);
    connect(&m_retireTimer, &QTimer::timeout, this, &Playback::releaseRetired);

    connect(&m_playlist, &Playlist::replaced, this, [this] { m_order.reset(m_playlist.count()); });
    connect(&m_playlist, &Playlist::appended, this, [this](int, int count) { m_order.append(count); });
    connect(&m_playlist, &Playlist::removed, this, [this](const QList<int>& gone) { m_order.remove(gone); });
    connect(&m_playlist, &Playlist::replaced, this, &Playback::entriesReplaced);
    connect(&m_playlist, &Playlist::removed, this, &Playback::entriesRemoved);
    // By then everybody else knows the new indexes.
    connect(&m_playlist, &Playlist::countChanged, this, &Playback::leaveRemoved);
    connect(&m_playlist, &Playlist::appended, this, &Playback::takeMore);
    connect(&m_playlist, &Playlist::growingChanged, this, &Playback::takeMore);
    renewPlayer();
}

Playback::~Playback()
{
    // There is no event loop that could be waited for; pausing first would only begin what has to be waited for.
    m_player->disconnect(this);
    unloadPlayer(m_player.get());
    releaseRetired();
}

void Playback::renewPlayer()
{
    if (m_player)
        retirePlayer();
    m_player = std::make_unique<QMediaPlayer>();
    auto* output = new QAudioOutput(m_player.get());
    output->setVolume(amplitude(m_volume));
    output->setMuted(m_muted);
    m_player->setAudioOutput(output);
    connect(m_player.get(), &QMediaPlayer::positionChanged, this, &Playback::positionChanged);
    connect(m_player.get(), &QMediaPlayer::durationChanged, this, &Playback::durationChanged);
    connect(m_player.get(), &QMediaPlayer::durationChanged, this, &Playback::storeDuration);
    connect(m_player.get(), &QMediaPlayer::seekableChanged, this, &Playback::seekableChanged);
    connect(m_player.get(), &QMediaPlayer::metaDataChanged, this, &Playback::metaDataChanged);
    connect(m_player.get(), &QMediaPlayer::tracksChanged, this, &Playback::metaDataChanged);
    connect(m_player.get(), &QMediaPlayer::seekableChanged, this, &Playback::seekToStart);
    connect(m_player.get(), &QMediaPlayer::durationChanged, this, &Playback::seekToStart);
    connect(m_player.get(), &QMediaPlayer::mediaStatusChanged, this, &Playback::mediaStatusChanged);
    connect(m_player.get(), &QMediaPlayer::errorOccurred, this,
            [this](QMediaPlayer::Error, const QString& reason) { fail(reason); });
}

// Taken apart while it still seeks or loads, a player blocks for a second or crashes; silent, it may come to rest
// first. This may also be a call from one of its signals.
void Playback::retirePlayer()
{
    m_player->disconnect(this);
    m_player->audioOutput()->setMuted(true);
    // At the end of a file it rests already, and pausing would begin what it then has to be waited for.
    if (m_player->mediaStatus() != QMediaPlayer::EndOfMedia)
        m_player->pause();
    if (m_retired.size() >= mostRetired)
        m_retired.erase(m_retired.begin());
    m_retired.push_back(std::move(m_player));
    m_retireTimer.start(restTime);
}

void Playback::releaseRetired()
{
    for (const auto& player : m_retired)
        unloadPlayer(player.get());
    m_retired.clear();
}

bool Playback::hasSoundDevice()
{
    return !QMediaDevices::defaultAudioOutput().isNull();
}

QString Playback::currentFile() const
{
    return m_playlist.file(m_current);
}

QString Playback::currentTitle() const
{
    return m_playlist.contains(m_current) ? m_playlist.at(m_current).title : QString();
}

QMediaMetaData Playback::metaData() const
{
    QMediaMetaData all = m_player->metaData();
    // Where the backend keeps the tags depends on the kind of file: with the file or with its sound track.
    const QList<QMediaMetaData> tracks = m_player->audioTracks();
    if (tracks.isEmpty())
        return all;
    for (const QMediaMetaData::Key key : tracks.first().keys())
        if (!all.value(key).isValid())
            all.insert(key, tracks.first().value(key));
    return all;
}

void Playback::openEntries(const QList<PlaylistEntry>& entries, int index, qint64 position)
{
    if (entries.isEmpty())
        return;
    // What plays gives way to what comes, without a pause between.
    m_current = -1;
    const QPointer<Playback> self(this);
    m_playlist.replace(entries);
    if (self)
        playAt(index, position);
}

void Playback::open(const QStringList& files, qint64 position)
{
    QList<PlaylistEntry> entries;
    entries.reserve(files.size());
    for (const QString& file : files)
        entries.append({file, QString(), -1, false});
    openEntries(entries, 0, position);
}

void Playback::playAt(int index, qint64 position)
{
    if (!m_playlist.contains(index))
        return;
    m_current = index;
    start(Reload, position);
}

void Playback::play()
{
    if (m_playlist.isEmpty() || m_playing)
        return;
    if (m_current < 0)
        playAt(0);
    else
        start(m_failed ? Reload : Continue);
}

void Playback::pause()
{
    if (!m_playing)
        return;
    if (!m_failed)
        m_player->pause();
    setPlaying(false);
}

void Playback::stop()
{
    m_leaveTimer.stop();
    m_awaitsMore = false;
    if (!m_failed) {
        m_player->stop();
        // At the end of a file the backend has stopped already and stays there.
        m_player->setPosition(0);
    }
    setPlaying(false);
}

void Playback::next()
{
    step(Forwards);
}

void Playback::previous()
{
    step(Backwards);
}

void Playback::setPosition(qint64 position)
{
    if (m_player->isSeekable())
        m_player->setPosition(qBound<qint64>(0, position, duration()));
}

void Playback::setVolume(int volume)
{
    const int bounded = qBound(0, volume, 100);
    if (m_volume == bounded)
        return;
    m_volume = bounded;
    m_player->audioOutput()->setVolume(amplitude(m_volume));
    emit volumeChanged(m_volume);
}

void Playback::setMuted(bool muted)
{
    if (m_muted == muted)
        return;
    m_muted = muted;
    m_player->audioOutput()->setMuted(muted);
    emit mutedChanged(muted);
}

void Playback::setShuffled(bool shuffled)
{
    if (isShuffled() == shuffled)
        return;
    m_order.setShuffled(shuffled);
    emit shuffledChanged(shuffled);
}

void Playback::setRepeated(bool repeated)
{
    if (isRepeated() == repeated)
        return;
    m_order.setRepeated(repeated);
    emit repeatedChanged(repeated);
}

void Playback::seekToStart()
{
    if (m_startPosition <= 0 || !isSeekable() || duration() <= 0)
        return;
    setPosition(std::exchange(m_startPosition, 0));
}

void Playback::step(Direction direction)
{
    if (m_playlist.count() < 2)
        return;
    setDirection(direction);
    loadNeighbour();
}

void Playback::loadNeighbour()
{
    load(m_direction == Backwards ? m_order.previous() : m_order.next());
}

void Playback::start(StartMode mode, qint64 position)
{
    const bool wasPlaying = m_playing;
    m_playing = true;
    setDirection(Onwards);
    const QPointer<Playback> self(this);
    if (mode == Reload)
        load(m_current, position);
    else
        m_player->play();
    if (self && m_playing && !wasPlaying)
        emit playingChanged(true);
}

void Playback::load(int index, qint64 position)
{
    m_current = index;
    m_order.setCurrent(index);
    m_leaveTimer.stop();
    m_awaitsMore = false;
    // The backend stalls where its source changes while it still loads, and takes a second to let go of one that
    // failed; a player of its own for every file avoids both, and late reports about the file before. Files that are
    // not there need none: a list may have thousands of them.
    if (m_player->sourceDevice() || QFileInfo(currentFile()).isFile())
        renewPlayer();
    m_failed = false;
    m_startPosition = position;

    loadSource();
    emit currentChanged(currentFile());
}

// A list from which everything has gone.
void Playback::unload()
{
    const bool wasLoaded = std::exchange(m_current, -1) >= 0;
    m_order.setCurrent(-1);
    const bool wasPlaying = std::exchange(m_playing, false);
    m_leaveTimer.stop();
    m_awaitsMore = false;
    m_failed = false;
    if (m_player->sourceDevice())
        renewPlayer();
    const QPointer<Playback> self(this);
    if (wasLoaded)
        emit currentChanged(QString());
    if (self && wasPlaying && !m_playing)
        emit playingChanged(false);
}

void Playback::loadSource()
{
    const QString name = currentFile();
    const bool exists = QFileInfo(name).isFile();
    m_playlist.setMissing(m_current, !exists);
    if (!exists) {
        fail(tr("no such file"));
        return;
    }
    auto* file = new QFile(name, m_player.get());
    if (!file->open(QIODevice::ReadOnly)) {
        fail(file->errorString());
        return;
    }
    // The backend seeks to the start while it loads, which can block for ever when data comes in at that moment. A
    // device is not read before control returns to the event loop.
    m_player->setSourceDevice(file, QUrl::fromLocalFile(name));
    if (m_playing && !m_failed)
        m_player->play();
}

void Playback::fail(const QString& reason)
{
    // Backends report one broken file several times; the first reason is the telling one.
    if (m_failed)
        return;
    m_failed = true;
    m_failure = reason.isEmpty() ? tr("unknown kind of file") : reason;
    m_leaveTimer.start();
}

void Playback::mediaStatusChanged(QMediaPlayer::MediaStatus status)
{
    if (status == QMediaPlayer::InvalidMedia)
        fail(m_player->errorString());
    else if (status == QMediaPlayer::EndOfMedia && !m_failed)
        m_leaveTimer.start();
}

void Playback::leaveFile()
{
    if (m_failed)
        leaveFailedFile();
    else
        leaveFinishedFile();
}

void Playback::leaveFailedFile()
{
    const QPointer<Playback> self(this);
    emit fileFailed(currentFile(), m_failure);
    // A receiver may have opened something else, which clears the failure or asks for this function again.
    if (!self || !m_failed || m_leaveTimer.isActive())
        return;
    ++m_failedInTurn;
    if (m_direction == Onwards)
        goOn();
    else if (triedAll())
        stop();
    else
        loadNeighbour();
}

void Playback::leaveFinishedFile()
{
    // A file without sound ends at once. Where all are like that and the list is repeated, it would go on for ever.
    const int silent = std::max(duration(), position()) > 0 ? 0 : m_failedInTurn + 1;
    setDirection(Onwards);
    m_failedInTurn = silent;
    goOn();
}

void Playback::setDirection(Direction direction)
{
    m_direction = direction;
    m_failedInTurn = 0;
}

// Steps go around the list, and so does a list that is repeated: then there is no end that ends the trying.
bool Playback::triedAll() const
{
    const bool isEndless = m_direction != Onwards || (isRepeated() && !m_playlist.isGrowing());
    return isEndless && m_failedInTurn >= m_playlist.count();
}

void Playback::goOn()
{
    const bool awaitsMore = m_order.isAtEnd() && m_playlist.isGrowing();
    const int next = awaitsMore || triedAll() ? -1 : m_order.advance();
    if (next >= 0) {
        load(next);
        return;
    }
    m_awaitsMore = awaitsMore;
    if (awaitsMore)
        return;
    const QPointer<Playback> self(this);
    const bool hasFailed = m_failed;
    stop();
    if (self && !hasFailed)
        emit finished();
}

void Playback::takeMore()
{
    if (m_awaitsMore)
        goOn();
}

void Playback::entriesReplaced()
{
    if (m_current >= 0)
        unload();
}

void Playback::entriesRemoved(const QList<int>& indexes)
{
    if (m_current < 0)
        return;
    const auto place = std::lower_bound(indexes.begin(), indexes.end(), m_current);
    m_isRemoved = place != indexes.end() && *place == m_current;
    m_current -= static_cast<int>(std::distance(indexes.begin(), place));
}

void Playback::leaveRemoved()
{
    if (!std::exchange(m_isRemoved, false))
        return;
    if (m_playlist.isEmpty()) {
        unload();
        return;
    }
    setDirection(Onwards);
    const int next = entryInsteadOfRemoved();
    const bool stops = next < 0 && std::exchange(m_playing, false);
    const QPointer<Playback> self(this);
    load(next < 0 ? m_playlist.count() - 1 : next);
    if (self && stops && !m_playing)
        emit playingChanged(false);
}

// -1 behind the last one.
int Playback::entryInsteadOfRemoved()
{
    if (isShuffled())
        return m_order.advance();
    if (m_playlist.contains(m_current))
        return m_current;
    return isRepeated() ? 0 : -1;
}

void Playback::storeDuration(qint64 duration)
{
    if (duration > 0)
        m_playlist.setSeconds(m_current, static_cast<int>(std::min<qint64>(duration / 1000, 1000000000)));
}

void Playback::setPlaying(bool playing)
{
    if (m_playing == playing)
        return;
    m_playing = playing;
    emit playingChanged(playing);
}
