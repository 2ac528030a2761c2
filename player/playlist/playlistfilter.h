#ifndef SKINWIDGETS_PLAYER_PLAYLIST_PLAYLISTFILTER_H
#define SKINWIDGETS_PLAYER_PLAYLIST_PLAYLISTFILTER_H

#include <QList>
#include <QString>
#include <QStringMatcher>

/* Finds the names that contain all words of a text somewhere, in upper or lower case. */
class PlaylistFilter
{
public:
    explicit PlaylistFilter(const QString& text = QString());

    // Without words everything matches.
    bool isEmpty() const { return m_words.isEmpty(); }
    bool matches(QStringView name) const;

private:
    QList<QStringMatcher> m_words;
};

#endif
