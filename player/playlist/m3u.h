#ifndef SKINWIDGETS_PLAYER_PLAYLIST_M3U_H
#define SKINWIDGETS_PLAYER_PLAYLIST_M3U_H

#include "player/playlist/playlist.h"

#include <QByteArray>
#include <QFile>

/*
 * Playlist files: M3U, with or without #EXTM3U and #EXTINF lines, for files with endings m3u and m3u8 alike.
 */
namespace m3u
{

// A line with more bytes than this is skipped.
constexpr int maxLineLength = 32768;
// A title with more characters than this is cut.
constexpr int maxTitleLength = 1000;

/*
 * Reads a playlist file line by line, so that a long one can be read in portions.
 *
 * Lines end with LF or CR LF. Each is read as UTF-8, or as Latin-1 where it is not; lines with control characters are
 * skipped, so that a file of another kind gives next to nothing. Paths count from the playlist's directory; those that
 * do not exist as written are tried without the blanks around them, and with slashes for backslashes. file: addresses
 * are paths, too; other addresses stay as they are and count as missing. A title that says no more than the file's name
 * is none.
 */
class Reader
{
public:
    enum Line { Entry, Other, End };

    explicit Reader(const QString& file);

    // Why it cannot be read, or not to its end; empty where it can.
    QString error() const { return m_error; }
    // Lines so far that were too long or hold what no text does.
    int damagedCount() const { return m_damagedCount; }
    // Reads a line or a part of one.
    Line readLine(PlaylistEntry& entry);

private:
    Line readText(const QString& line, PlaylistEntry& entry);
    void readInfo(QStringView info);
    QString resolved(const QString& line) const;

    QFile m_file;
    QString m_error;
    QString m_directory;
    bool m_isFirst = true;
    bool m_skips = false;
    int m_damagedCount = 0;
    // From an #EXTINF line, for the next entry.
    QString m_title;
    int m_seconds = -1;
};

// What a playlist file in that directory holds: UTF-8 lines that end with LF. Files in the directory and below are
// named relative to it.
QByteArray text(const QList<PlaylistEntry>& entries, const QString& directory);

// Writes a playlist file whole or not at all. Returns why it could not, empty where it could.
QString write(const QString& file, const QList<PlaylistEntry>& entries);
// The same with what text() gave.
QString write(const QString& file, const QByteArray& text);

} // namespace m3u

#endif
