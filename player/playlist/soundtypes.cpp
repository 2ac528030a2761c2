#include "player/playlist/soundtypes.h"

#include <QCoreApplication>
#include <QHash>
#include <QMimeDatabase>

namespace
{

const QStringList soundEndings = {
    QStringLiteral("ogg"),  QStringLiteral("oga"), QStringLiteral("opus"), QStringLiteral("flac"),
    QStringLiteral("wav"),  QStringLiteral("mp3"), QStringLiteral("m4a"),  QStringLiteral("aac"),
    QStringLiteral("aiff"), QStringLiteral("wma"), QStringLiteral("mka"),
};
const QStringList playlistEndings = {QStringLiteral("m3u"), QStringLiteral("m3u8")};
// Lists of sounds that the system's types may call audio, too.
const QStringList otherListEndings = {
    QStringLiteral("pls"), QStringLiteral("xspf"), QStringLiteral("asx"), QStringLiteral("wax"),
    QStringLiteral("wvx"), QStringLiteral("ram"),  QStringLiteral("wpl"),
};

// Unlike QFileInfo::suffix() this does not count a leading dot as the beginning of an ending.
QString ending(const QString& file)
{
    const qsizetype slash = file.lastIndexOf(QLatin1Char('/'));
    const qsizetype dot = file.lastIndexOf(QLatin1Char('.'));
    return dot > slash + 1 ? file.mid(dot + 1).toLower() : QString();
}

bool isSoundEnding(const QString& ending)
{
    if (soundEndings.contains(ending))
        return true;
    if (ending.isEmpty() || playlistEndings.contains(ending) || otherListEndings.contains(ending))
        return false;
    const QMimeType type =
        QMimeDatabase().mimeTypeForFile(QLatin1String("sound.") + ending, QMimeDatabase::MatchExtension);
    return type.name().startsWith(QLatin1String("audio/")) && !type.inherits(QStringLiteral("text/plain"));
}

QString patterns(const QStringList& endings)
{
    return QLatin1String("*.") + endings.join(QLatin1String(" *."));
}

} // namespace

bool soundtypes::isSound(const QString& file)
{
    // The system's types take long to ask, and folders hold many files of one type.
    static QHash<QString, bool> known;
    constexpr qsizetype mostKnown = 1000;
    const QString asked = ending(file);
    const auto found = known.constFind(asked);
    if (found != known.constEnd())
        return *found;
    if (known.size() >= mostKnown)
        known.clear();
    return *known.insert(asked, isSoundEnding(asked));
}

bool soundtypes::isPlaylist(const QString& file)
{
    return playlistEndings.contains(ending(file));
}

QString soundtypes::openFilter()
{
    return QCoreApplication::translate("soundtypes", "Sounds and playlists (%1)")
        .arg(patterns(soundEndings + playlistEndings));
}

QString soundtypes::saveFilter()
{
    return QCoreApplication::translate("soundtypes", "Playlists (%1)")
        .arg(patterns({QStringLiteral("m3u8"), QStringLiteral("m3u")}));
}
