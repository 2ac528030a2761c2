#ifndef SKINWIDGETS_PLAYER_DETAILS_TRACKTEXT_H
#define SKINWIDGETS_PLAYER_DETAILS_TRACKTEXT_H

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

/*
 * The lyrics or notes that lie beside a sound file: song.lrc, else song.txt, beside song.ogg.
 *
 * A file is UTF-8, or what its byte order mark tells, or else Latin-1. Of a file larger than largestFile the bytes
 * beyond are left out together with the line that they cut. A file with zero bytes or with many control characters is
 * no text.
 */
struct TrackText {
    enum State { Missing, Unreadable, NoText, Empty, Complete, Shortened };

    // Bytes.
    static constexpr qint64 largestFile = qint64(1024) * 1024;

    State state = Missing;
    // Without the directory; empty where there is none.
    QString fileName;
    // Lines separated by line feeds, without any other control character and without blank lines at either end.
    QString text;
    // When each line of the text begins, in milliseconds and rising; empty where the file does not tell.
    QList<qint64> times;

    bool hasText() const { return !text.isEmpty(); }
    // The line that is due, -1 before the first one and in a text without times.
    int lineAt(qint64 position) const;

    static TrackText beside(const QString& soundFile);
    static TrackText read(const QString& file);
};

// The steps of reading, apart from the disk.
namespace tracktext
{

// The characters of a file, or nothing where the bytes are no text. isWhole is false for bytes that may end within a
// character.
std::optional<QString> decoded(const QByteArray& bytes, bool isWhole);

// With line feeds for every kind of line end, spaces for tabs, and no other control character.
QString cleaned(const QString& text);

// Takes the marks of an .lrc file out of a cleaned text: the stamps [mm:ss.xx], of which a line may have several, the
// stamps <mm:ss.xx> of single words, and the headings such as [ar:name]. The lines come in the order of their times; a
// line without a stamp stays behind the one that it follows. [offset:+ms] makes all lines come that much earlier. A
// text without stamps keeps its order and has no times.
void readStamps(TrackText& text);

} // namespace tracktext

#endif
