#ifndef SKINWIDGETS_PLAYER_PLAYLIST_PLAYLISTKEEPER_H
#define SKINWIDGETS_PLAYER_PLAYLIST_PLAYLISTKEEPER_H

#include <QObject>
#include <QString>
#include <QTimer>

class Playback;
class PlaylistLoader;

/*
 * Keeps the playlist between two starts of the program, with the entry that is current.
 *
 * The directory has the playlist as playlist.m3u8 and where it was as position.ini. Both are written whole or not at
 * all, some seconds after a change and when this object goes, and only when they differ from what is there. An empty
 * playlist is kept as none.
 *
 * What was there and has not come back whole, because it is damaged or something else was opened, is not lost at once:
 * it is renamed to playlist-before.m3u8 before another list takes its place.
 */
class PlaylistKeeper : public QObject
{
    Q_OBJECT

public:
    // Where the system wants the user's data of the application.
    static QString standardDirectory();

    // Playback and loader belong to somebody else and live longer.
    PlaylistKeeper(Playback* playback, PlaylistLoader* loader, const QString& directory, QObject* parent = nullptr);
    ~PlaylistKeeper() override;

    // A playlist of this file alone is kept as none: what plays where there is nothing else.
    void setUnkeptFile(const QString& file) { m_unkeptFile = file; }
    // False where nothing is kept, and nothing happens; else it comes back in the background and plays.
    bool restore();

public slots:
    void save();

signals:
    void failed(const QString& message);

private:
    void saveLater();
    QString savePlaylist();
    bool putAside() const;
    void savePosition() const;

    Playback* m_playback;
    PlaylistLoader* m_loader;
    QString m_directory;
    QString m_unkeptFile;
    QTimer m_timer;
    // The kept file holds what the playlist holds or held.
    bool m_isOurs = false;
    bool m_listChanged = false;
    // Of entries: lengths, and what is missing. They wait for other changes or the end.
    bool m_detailsChanged = false;
    bool m_positionChanged = false;
};

#endif
