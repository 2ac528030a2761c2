#ifndef SKINWIDGETS_PLAYER_PLAYBACK_H
#define SKINWIDGETS_PLAYER_PLAYBACK_H

#include "player/playlist/playlist.h"
#include "player/playorder.h"

#include <QAudioOutput>
#include <QMediaMetaData>
#include <QMediaPlayer>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <vector>

/*
 * Plays the files of its playlist one after the other. Times are milliseconds. The volume is 0 to 100 in steps that
 * sound alike, as loudness is heard.
 *
 * At the end of a file the next one plays, as they stand in the playlist or shuffled as PlayOrder does it; after the
 * last one the list begins anew where it is repeated, else playback stops there, rewound. A file that cannot be played
 * is reported once each time it is tried and passed over: forwards to the end of the list, or, when the user stepped on
 * to it, in the direction of the step; where the list has no end, no more in turn than it has entries. When no file is
 * left to try, playback stops. At the end of a list that is still growing it waits for more.
 *
 * When the current entry is removed from the playlist, the one that takes its place goes on in its stead, or the next
 * one where the list is shuffled; behind the last one playback stops.
 */
class Playback : public QObject
{
    Q_OBJECT

public:
    explicit Playback(QObject* parent = nullptr);
    ~Playback() override;

    // Without a device the files still play in real time, silently.
    static bool hasSoundDevice();

    // Any change of it is taken notice of. Replacing it unloads the current file.
    Playlist* playlist() { return &m_playlist; }
    const Playlist* playlist() const { return &m_playlist; }
    // Replaces the playlist and plays one of it from a position, or from its start where it cannot be searched. An
    // empty list is ignored.
    void openEntries(const QList<PlaylistEntry>& entries, int index = 0, qint64 position = 0);
    void open(const QStringList& files, qint64 position = 0);
    // Plays an entry of the playlist from a position. An index outside is ignored.
    void playAt(int index, qint64 position = 0);
    QStringList files() const { return m_playlist.files(); }
    // The file that plays or would play, and its index; empty and -1 where there is none.
    QString currentFile() const;
    int currentIndex() const { return m_current; }
    // What the playlist calls it; empty where it has no title there.
    QString currentTitle() const;

    // From play() until the user or the end of the list stops it; a file that is still loading counts.
    bool isPlaying() const { return m_playing; }
    qint64 position() const { return m_player->position(); }
    // 0 until known.
    qint64 duration() const { return m_player->duration(); }
    bool isSeekable() const { return m_player->isSeekable(); }
    // The tags of the file and its sound as far as they are known; empty while it loads.
    QMediaMetaData metaData() const;
    int volume() const { return m_volume; }
    bool isMuted() const { return m_muted; }
    bool isShuffled() const { return m_order.isShuffled(); }
    bool isRepeated() const { return m_order.isRepeated(); }
    // Of the file that plays now; every file has an output of its own. Never null.
    const QAudioOutput* output() const { return m_player->audioOutput(); }

public slots:
    // The first file of the playlist where none is current.
    void play();
    void pause();
    // Stops and rewinds the current file.
    void stop();
    // Step to a neighbour in the list, around its ends, or in the shuffled order; what was playing goes on playing
    // there.
    void next();
    void previous();
    // Clamped to the file's length; ignored where the file cannot be searched.
    void setPosition(qint64 position);
    // Clamped to 0 to 100.
    void setVolume(int volume);
    // Keeps the volume.
    void setMuted(bool muted);
    // Neither changes what plays now.
    void setShuffled(bool shuffled);
    void setRepeated(bool repeated);

signals:
    void playingChanged(bool playing);
    // Empty where no file is current any more.
    void currentChanged(const QString& file);
    void positionChanged(qint64 position);
    void durationChanged(qint64 duration);
    void seekableChanged(bool seekable);
    void volumeChanged(int volume);
    void mutedChanged(bool muted);
    void shuffledChanged(bool shuffled);
    void repeatedChanged(bool repeated);
    // The last file of the list has ended, and playback has stopped.
    void finished();
    // May come several times for one file, with more each time.
    void metaDataChanged();
    // Emitted before the next file is tried.
    void fileFailed(const QString& file, const QString& reason);

private:
    enum StartMode { Continue, Reload };
    // How the next file is chosen: as at the end of a file, or as for the user's steps.
    enum Direction { Onwards, Forwards, Backwards };

    void start(StartMode mode, qint64 position = 0);
    void renewPlayer();
    void retirePlayer();
    void releaseRetired();
    void load(int index, qint64 position = 0);
    void loadSource();
    void unload();
    void step(Direction direction);
    void loadNeighbour();
    int entryInsteadOfRemoved();
    void fail(const QString& reason);
    void seekToStart();
    void mediaStatusChanged(QMediaPlayer::MediaStatus status);
    void leaveFile();
    void leaveFailedFile();
    void leaveFinishedFile();
    void goOn();
    void setDirection(Direction direction);
    bool triedAll() const;
    void setPlaying(bool playing);

    void entriesReplaced();
    void entriesRemoved(const QList<int>& indexes);
    void leaveRemoved();
    void takeMore();
    void storeDuration(qint64 duration);

    Playlist m_playlist;
    int m_current = -1;
    PlayOrder m_order;
    bool m_playing = false;
    int m_volume = 100;
    bool m_muted = false;
    // Where the current file is to start once it can be searched, 0 once it has.
    qint64 m_startPosition = 0;
    bool m_failed = false;
    QString m_failure;
    // Where to go from a file that fails, and how many have failed or had no sound in turn.
    Direction m_direction = Onwards;
    int m_failedInTurn = 0;
    // At the end of a list that is still growing.
    bool m_awaitsMore = false;
    // The current entry has been removed, and the one in its place is not loaded yet.
    bool m_isRemoved = false;

    // Never null.
    std::unique_ptr<QMediaPlayer> m_player;
    // Players of earlier files, silent, until they may be destroyed.
    std::vector<std::unique_ptr<QMediaPlayer>> m_retired;
    QTimer m_retireTimer;
    // The backend reports ends and failures from within its own work, where its source must not change.
    QTimer m_leaveTimer;
};

#endif
