#ifndef SKINWIDGETS_PLAYER_PLAYLIST_SOUNDTYPES_H
#define SKINWIDGETS_PLAYER_PLAYLIST_SOUNDTYPES_H

#include <QString>
#include <QStringList>

// Which files are for the player, told by their names alone.
namespace soundtypes
{

// By a list of endings, else by what the system's types say about the ending. Playlists are no sounds.
bool isSound(const QString& file);
// M3U and M3U8.
bool isPlaylist(const QString& file);

// For file dialogs: what can be opened, and what a playlist can be saved as.
QString openFilter();
QString saveFilter();

} // namespace soundtypes

#endif
