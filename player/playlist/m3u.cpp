#include "player/playlist/m3u.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace
{

const QLatin1String header("#EXTM3U");
const QLatin1String infoTag("#EXTINF:");
// No path or title is longer; far above what plays.
constexpr int mostSeconds = 1000000000;

QString decoded(const QByteArray& line)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(line);
    return utf8.hasError() ? QString::fromLatin1(line) : text;
}

bool hasControls(const QByteArray& line)
{
    return std::any_of(line.begin(), line.end(), [](char c) { return static_cast<uchar>(c) < ' ' && c != '\t'; });
}

// Something like http://; a single letter is a drive elsewhere.
bool isAddress(const QString& text)
{
    const qsizetype colon = text.indexOf(QLatin1String("://"));
    return colon > 1 && std::all_of(text.begin(), text.begin() + colon,
                                    [](QChar c) { return c.isLetterOrNumber() || c == QLatin1Char('+'); });
}

bool exists(const QString& file)
{
    return QFileInfo::exists(file);
}

// Lists name files that have no title, too, for other players expect a name beside a length.
bool isOwnName(const PlaylistEntry& entry)
{
    const PlaylistEntry untitled{entry.file, QString(), -1, false};
    return untitled.name().toString().simplified() == entry.title;
}

// A path as a line that is read back as the same path.
QString lineFor(const QString& file, const QString& folder)
{
    // A name with a line break can only be written as an address.
    if (std::any_of(file.begin(), file.end(), [](QChar c) { return c < QLatin1Char(' '); }))
        return QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded);
    if (!file.startsWith(folder))
        return file;
    const QString name = file.mid(folder.size());
    const bool readsDifferently = name.startsWith(QLatin1Char('#')) || name.startsWith(QLatin1Char('/')) ||
                                  name.trimmed().isEmpty() || isAddress(name);
    return readsDifferently ? QLatin1String("./") + name : name;
}

} // namespace

m3u::Reader::Reader(const QString& file) : m_file(file), m_directory(QFileInfo(file).absolutePath())
{
    // A device could be read without end.
    if (!QFileInfo(file).isFile())
        m_error = QObject::tr("no such file");
    else if (!m_file.open(QIODevice::ReadOnly))
        m_error = m_file.errorString();
}

m3u::Reader::Line m3u::Reader::readLine(PlaylistEntry& entry)
{
    if (!m_file.isOpen() || m_file.atEnd())
        return End;
    // The toolkit gives one byte less than asked for.
    QByteArray line = m_file.readLine(maxLineLength + 1);
    if (line.isEmpty()) {
        m_error = m_file.errorString();
        return End;
    }
    const bool isFirst = std::exchange(m_isFirst, false);
    const bool isWhole = line.endsWith('\n') || m_file.atEnd();
    const bool skips = std::exchange(m_skips, !isWhole);
    if (!isWhole && !skips)
        ++m_damagedCount;
    if (skips || !isWhole)
        return Other;

    if (line.endsWith('\n'))
        line.chop(1);
    if (line.endsWith('\r'))
        line.chop(1);
    if (isFirst && line.startsWith("\xef\xbb\xbf"))
        line.remove(0, 3);
    if (hasControls(line)) {
        ++m_damagedCount;
        return Other;
    }
    return readText(decoded(line), entry);
}

m3u::Reader::Line m3u::Reader::readText(const QString& line, PlaylistEntry& entry)
{
    if (line.startsWith(infoTag)) {
        readInfo(QStringView(line).mid(infoTag.size()));
        return Other;
    }
    if (line.startsWith(QLatin1Char('#')) || line.trimmed().isEmpty())
        return Other;
    entry.file = resolved(line);
    entry.title = std::exchange(m_title, QString());
    if (!entry.title.isEmpty() && isOwnName(entry))
        entry.title.clear();
    entry.seconds = std::exchange(m_seconds, -1);
    entry.isMissing = !exists(entry.file);
    return Entry;
}

// Seconds, maybe attributes after a blank, a comma, the title.
void m3u::Reader::readInfo(QStringView info)
{
    const qsizetype comma = info.indexOf(QLatin1Char(','));
    const QStringView length = info.left(comma < 0 ? info.size() : comma).trimmed();
    const qsizetype blank = length.indexOf(QLatin1Char(' '));
    bool ok = false;
    const double seconds = length.left(blank < 0 ? length.size() : blank).toDouble(&ok);
    // Written so that it is false for what is not a number, too.
    m_seconds = ok && seconds >= 0 && seconds < mostSeconds ? qRound(seconds) : -1;
    m_title = comma < 0 ? QString() : info.mid(comma + 1).trimmed().left(maxTitleLength).toString();
}

QString m3u::Reader::resolved(const QString& line) const
{
    if (isAddress(line.trimmed())) {
        const QUrl address(line.trimmed());
        return address.isLocalFile() ? QDir::cleanPath(address.toLocalFile()) : line.trimmed();
    }
    const QDir directory(m_directory);
    const QString asWritten = QDir::cleanPath(directory.absoluteFilePath(line));
    if (exists(asWritten))
        return asWritten;
    for (QString other : {line.trimmed(), line.trimmed().replace(QLatin1Char('\\'), QLatin1Char('/'))}) {
        other = QDir::cleanPath(directory.absoluteFilePath(other));
        if (exists(other))
            return other;
    }
    return asWritten;
}

QByteArray m3u::text(const QList<PlaylistEntry>& entries, const QString& directory)
{
    const QString absolute = QDir::cleanPath(QDir(directory).absolutePath());
    const QString folder = absolute.endsWith(QLatin1Char('/')) ? absolute : absolute + QLatin1Char('/');
    QByteArray lines = QByteArray(header.data(), header.size()) + '\n';
    for (const PlaylistEntry& entry : entries) {
        if (!entry.title.isEmpty() || entry.seconds >= 0) {
            lines.append(infoTag.data(), infoTag.size());
            lines.append(QByteArray::number(entry.seconds)).append(',');
            lines.append(entry.name().toString().simplified().toUtf8()).append('\n');
        }
        lines.append(lineFor(entry.file, folder).toUtf8()).append('\n');
    }
    return lines;
}

QString m3u::write(const QString& file, const QList<PlaylistEntry>& entries)
{
    return write(file, text(entries, QFileInfo(file).absolutePath()));
}

QString m3u::write(const QString& file, const QByteArray& text)
{
    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly) || out.write(text) != text.size() || !out.commit())
        return out.errorString();
    return QString();
}
