#ifndef SKINWIDGETS_PLAYER_PLAYLIST_PLAYLIST_H
#define SKINWIDGETS_PLAYER_PLAYLIST_PLAYLIST_H

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

struct PlaylistEntry {
    // An absolute path, or an address that is no file here.
    QString file;
    // What a playlist file calls it, empty where none does.
    QString title;
    // The length, -1 until known.
    int seconds = -1;
    // There was no such file when somebody looked last.
    bool isMissing = false;

    // The title, else the file's name without its directory and ending. Valid as long as the entry is unchanged.
    QStringView name() const;
};

/*
 * What there is to play, in order: a list that tells of every change. Indexes count from 0.
 *
 * It may hold the same file several times, and files that do not exist. It is growing while somebody is still reading
 * what is to be appended.
 */
class Playlist : public QObject
{
    Q_OBJECT

public:
    explicit Playlist(QObject* parent = nullptr);

    int count() const { return static_cast<int>(m_entries.size()); }
    bool isEmpty() const { return m_entries.isEmpty(); }
    bool contains(int index) const { return index >= 0 && index < count(); }
    // The index has to be inside.
    const PlaylistEntry& at(int index) const { return m_entries.at(index); }
    const QList<PlaylistEntry>& entries() const { return m_entries; }
    // Empty outside.
    QString file(int index) const;
    QStringList files() const;
    // The first entry with that file, -1 where there is none.
    int indexOf(const QString& file) const;
    bool isGrowing() const { return m_isGrowing; }

public slots:
    void replace(const QList<PlaylistEntry>& entries);
    void append(const QList<PlaylistEntry>& entries);
    // In any order; those outside and doubles are ignored.
    void remove(QList<int> indexes);
    void setGrowing(bool growing);
    // About one entry; ignored outside.
    void setSeconds(int index, int seconds);
    void setMissing(int index, bool missing);

signals:
    // Everything is different.
    void replaced();
    // These are at the end now.
    void appended(int first, int count);
    // These are gone; the indexes ascend and are those from before.
    void removed(const QList<int>& indexes);
    // After each of the three.
    void countChanged(int count);
    // Seconds or missing.
    void entryChanged(int index);
    void growingChanged(bool growing);

private:
    QList<PlaylistEntry> m_entries;
    bool m_isGrowing = false;
};

#endif
