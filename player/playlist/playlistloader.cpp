#include "player/playlist/playlistloader.h"

#include "player/playback.h"

#include <QFileInfo>
#include <QPointer>

#include <algorithm>
#include <utility>

PlaylistLoader::PlaylistLoader(Playback* playback, QObject* parent) : QObject(parent), m_playback(playback)
{
    connect(&m_reader, &PlaylistReader::found, this, &PlaylistLoader::take);
    connect(&m_reader, &PlaylistReader::progressed, this, &PlaylistLoader::progressed);
    connect(&m_reader, &PlaylistReader::finished, this, &PlaylistLoader::finish);
    connect(&m_reader, &PlaylistReader::failed, this, &PlaylistLoader::fail);
}

QString PlaylistLoader::placeName() const
{
    return QFileInfo(m_reader.place()).fileName();
}

void PlaylistLoader::begin(Task task)
{
    m_task = task;
    m_isWhole = true;
    m_restoredIndex = -1;
    m_playback->playlist()->setGrowing(true);
    emit progressed();
}

void PlaylistLoader::open(const QStringList& paths, qint64 position)
{
    if (paths.isEmpty())
        return;
    m_reader.cancel();
    m_path = paths.first();
    m_position = position;
    m_reader.read(paths);
    begin(Open);
}

void PlaylistLoader::add(const QStringList& paths)
{
    if (paths.isEmpty())
        return;
    const bool goesOn = isLoading();
    m_reader.read(paths);
    if (goesOn)
        return;
    m_path = paths.first();
    begin(Add);
}

void PlaylistLoader::restore(const QString& playlist, int index, const QString& file)
{
    m_reader.cancel();
    m_playback->playlist()->replace({});
    m_path = playlist;
    m_reader.readPlain(playlist);
    begin(Restore);
    m_restoredIndex = std::max(index, 0);
    m_restoredFile = file;
}

void PlaylistLoader::cancel()
{
    if (!isLoading())
        return;
    m_reader.cancel();
    m_task = Add;
    m_restoredIndex = -1;
    const QPointer<PlaylistLoader> self(this);
    m_playback->playlist()->setGrowing(false);
    if (self)
        emit progressed();
}

void PlaylistLoader::fail(const QString& path, const QString& reason)
{
    m_isWhole = false;
    emit failed(tr("cannot read %1: %2").arg(path, reason));
}

void PlaylistLoader::take(const QList<PlaylistEntry>& entries)
{
    if (m_task == Open) {
        m_task = Add;
        m_playback->openEntries(entries, 0, std::exchange(m_position, 0));
        return;
    }
    const QPointer<PlaylistLoader> self(this);
    m_playback->playlist()->append(entries);
    if (!self || m_restoredIndex < 0)
        return;
    if (m_playback->playlist()->file(m_restoredIndex) == m_restoredFile)
        playRestored();
}

void PlaylistLoader::playRestored()
{
    const Playlist* playlist = m_playback->playlist();
    int index = std::exchange(m_restoredIndex, -1);
    // The user was faster.
    if (m_playback->currentIndex() >= 0)
        return;
    if (playlist->file(index) != m_restoredFile) {
        const int same = playlist->indexOf(m_restoredFile);
        index = same >= 0 ? same : std::min(index, playlist->count() - 1);
    }
    m_playback->playAt(index);
}

void PlaylistLoader::finish()
{
    const bool foundNothing = m_task == Open;
    const bool isRestored = m_task == Restore && m_isWhole;
    m_task = Add;
    const QPointer<PlaylistLoader> self(this);
    if (m_restoredIndex >= 0)
        playRestored();
    if (self)
        m_playback->playlist()->setGrowing(false);
    if (self && isRestored)
        emit restored();
    if (self && foundNothing)
        emit failed(tr("nothing to play in %1").arg(m_path));
    if (self)
        emit progressed();
}
