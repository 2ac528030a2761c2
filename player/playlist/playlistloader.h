#ifndef SKINWIDGETS_PLAYER_PLAYLIST_PLAYLISTLOADER_H
#define SKINWIDGETS_PLAYER_PLAYLIST_PLAYLISTLOADER_H

#include "player/playlist/playlistreader.h"

#include <QObject>
#include <QString>
#include <QStringList>

class Playback;

/*
 * Fills the playlist of a playback from files, folders and playlist files, in the background. The playlist is growing
 * for so long.
 */
class PlaylistLoader : public QObject
{
    Q_OBJECT

public:
    // The playback belongs to somebody else.
    explicit PlaylistLoader(Playback* playback, QObject* parent = nullptr);

    bool isLoading() const { return m_reader.isReading(); }
    // The playlist is still coming back as it was kept; what it holds now is only a part of it.
    bool isRestoring() const { return isLoading() && m_task == Restore; }
    int foundCount() const { return m_reader.foundCount(); }
    // The name of the folder or playlist that is being read, empty between them.
    QString placeName() const;

public slots:
    // Replaces the playlist by what is found, and plays the first of it from a position in milliseconds, as soon as
    // there is something. What is being loaded is dropped. Where nothing is found the playlist stays.
    void open(const QStringList& paths, qint64 position = 0);
    // Appends what is found.
    void add(const QStringList& paths);
    // Replaces the playlist by that of a file, and plays the entry with that index as soon as it is there, if it is the
    // file; else the file as soon as all are there, else what comes nearest to the index.
    void restore(const QString& playlist, int index, const QString& file);
    // What has been found stays.
    void cancel();

signals:
    // Loading began, went on or came to an end.
    void progressed();
    // The playlist has come back as it was kept, with nothing left out.
    void restored();
    // What the user should know.
    void failed(const QString& message);

private:
    enum Task { Open, Add, Restore };

    void begin(Task task);
    void fail(const QString& path, const QString& reason);
    void take(const QList<PlaylistEntry>& entries);
    void playRestored();
    void finish();

    Playback* m_playback;
    PlaylistReader m_reader;
    Task m_task = Add;
    // The first path that was asked for.
    QString m_path;
    qint64 m_position = 0;
    // What is to play of the list that is coming back; -1 once it does.
    int m_restoredIndex = -1;
    QString m_restoredFile;
    bool m_isWhole = true;
};

#endif
