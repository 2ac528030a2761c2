#ifndef SKINWIDGETS_PLAYER_PLAYLIST_PLAYLISTREADER_H
#define SKINWIDGETS_PLAYER_PLAYLIST_PLAYLISTREADER_H

#include "player/playlist/playlist.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <vector>

/*
 * Finds out what is to be played of files, folders and playlist files, in the background: it works for a few
 * milliseconds at a time between other events, and reports what it has found after each.
 *
 * Files come in the order in which they are given, whatever they are. Of a folder the sound files come first and its
 * folders then, both sorted as people do, numbers by value; hidden ones are left out. Of a playlist file everything
 * comes, folders and playlist files that it names in their place. A folder or playlist file is read once for each path
 * that is given, so links and playlists that lead in a circle come to an end.
 */
class PlaylistReader : public QObject
{
    Q_OBJECT

public:
    // Reading ends with this many entries.
    static constexpr int maxEntries = 1000000;
    // Folders within folders, playlists within playlists; deeper ones are left out.
    static constexpr int maxDepth = 256;

    explicit PlaylistReader(QObject* parent = nullptr);
    ~PlaylistReader() override;

    // Reads the paths after what is being read. Returns at once.
    void read(const QStringList& paths);
    // Reads a playlist file whose entries are taken as they are, each one a file. Returns at once.
    void readPlain(const QString& playlist);
    // Drops what is being read, without a signal.
    void cancel();

    bool isReading() const { return m_timer.isActive(); }
    // Entries since reading began.
    int foundCount() const { return m_foundCount; }
    // The folder or playlist file that is being read.
    QString place() const;

signals:
    void found(const QList<PlaylistEntry>& entries);
    // After each portion of work.
    void progressed();
    // A folder or playlist file that cannot be read, or not whole; reading goes on.
    void failed(const QString& path, const QString& reason);
    // With nothing left to read.
    void finished();

private:
    class Source;
    class Paths;
    class Folder;
    class M3uFile;
    // Those whose contents have been taken since one of the given paths was begun, by their real paths.
    using Visited = QSet<QString>;

    void begin(std::unique_ptr<Source> source);
    void work();
    void take(const PlaylistEntry& entry);
    void takeAnything(const QString& path, const PlaylistEntry& entry);
    void enterFolder(const QString& path);
    void enterPlaylist(const QString& path);
    bool isNew(const QString& path);
    void reportFailures();

    // Those at the end are read first. All but the first come from the one before.
    std::vector<std::unique_ptr<Source>> m_sources;
    QStringList m_waiting;
    Visited m_visited;
    QList<PlaylistEntry> m_batch;
    QList<std::pair<QString, QString>> m_failures;
    int m_foundCount = 0;
    QTimer m_timer;
};

#endif
