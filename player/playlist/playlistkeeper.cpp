#include "player/playlist/playlistkeeper.h"

#include "player/playback.h"
#include "player/playlist/m3u.h"
#include "player/playlist/playlistloader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace
{

constexpr auto saveDelay = 3s;

const QString indexKey = QStringLiteral("current/index");
const QString fileKey = QStringLiteral("current/file");

QString listFile(const QString& directory)
{
    return directory + QStringLiteral("/playlist.m3u8");
}

QString positionFile(const QString& directory)
{
    return directory + QStringLiteral("/position.ini");
}

QString asideFile(const QString& directory)
{
    return directory + QStringLiteral("/playlist-before.m3u8");
}

bool holds(const QString& file, const QByteArray& bytes)
{
    QFile kept(file);
    return kept.open(QIODevice::ReadOnly) && kept.size() == bytes.size() && kept.readAll() == bytes;
}

} // namespace

QString PlaylistKeeper::standardDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
}

PlaylistKeeper::PlaylistKeeper(Playback* playback, PlaylistLoader* loader, const QString& directory, QObject* parent)
    : QObject(parent),
      m_playback(playback),
      m_loader(loader),
      m_directory(directory)
{
    m_timer.setObjectName(QStringLiteral("save playlist"));
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &PlaylistKeeper::save);
    const auto listChanged = [this] {
        m_listChanged = true;
        saveLater();
    };
    connect(playback->playlist(), &Playlist::countChanged, this, listChanged);
    connect(playback->playlist(), &Playlist::entryChanged, this, [this] { m_detailsChanged = true; });
    connect(loader, &PlaylistLoader::restored, this, [this] { m_isOurs = true; });
    connect(playback, &Playback::currentChanged, this, [this] {
        m_positionChanged = true;
        saveLater();
    });
}

PlaylistKeeper::~PlaylistKeeper()
{
    m_listChanged = m_listChanged || m_detailsChanged;
    save();
}

bool PlaylistKeeper::restore()
{
    const QString file = listFile(m_directory);
    if (!QFileInfo::exists(file))
        return false;
    const QSettings position(positionFile(m_directory), QSettings::IniFormat);
    m_loader->restore(file, position.value(indexKey).toInt(), position.value(fileKey).toString());
    return true;
}

void PlaylistKeeper::saveLater()
{
    if (!m_timer.isActive())
        m_timer.start(saveDelay);
}

void PlaylistKeeper::save()
{
    // Half a list must not replace the whole one.
    if (m_loader->isRestoring()) {
        saveLater();
        return;
    }
    m_timer.stop();
    const bool listChanged = std::exchange(m_listChanged, false);
    const bool positionChanged = std::exchange(m_positionChanged, false);
    const QString problem = listChanged ? savePlaylist() : QString();
    // A removal moves the current entry, too.
    if (listChanged || positionChanged)
        savePosition();
    // Tried again with the next change, and at the end.
    m_listChanged = !problem.isEmpty();
    if (!problem.isEmpty())
        emit failed(tr("cannot keep the playlist: %1").arg(problem));
}

QString PlaylistKeeper::savePlaylist()
{
    const QString file = listFile(m_directory);
    const Playlist* playlist = m_playback->playlist();
    const bool isNone = playlist->isEmpty() || (playlist->count() == 1 && playlist->file(0) == m_unkeptFile);
    const QByteArray text = isNone ? QByteArray() : m3u::text(playlist->entries(), m_directory);
    if (isNone ? !QFileInfo::exists(file) : holds(file, text)) {
        m_isOurs = true;
        return QString();
    }
    if (!QDir().mkpath(m_directory))
        return tr("no directory %1").arg(m_directory);
    if (!m_isOurs && !putAside())
        return tr("%1 is in the way").arg(file);
    m_isOurs = true;
    if (!isNone)
        return m3u::write(file, text);
    QFile::remove(file);
    return QString();
}

bool PlaylistKeeper::putAside() const
{
    const QString file = listFile(m_directory);
    if (!QFileInfo::exists(file))
        return true;
    QFile::remove(asideFile(m_directory));
    return QFile::rename(file, asideFile(m_directory));
}

void PlaylistKeeper::savePosition() const
{
    if (!QFileInfo(m_directory).isDir())
        return;
    QSettings position(positionFile(m_directory), QSettings::IniFormat);
    position.setValue(indexKey, m_playback->currentIndex());
    position.setValue(fileKey, m_playback->currentFile());
}
