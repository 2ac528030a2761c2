#include "player/playlist/playlistfilter.h"

#include <QStringList>

#include <algorithm>

PlaylistFilter::PlaylistFilter(const QString& text)
{
    const QStringList words = text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& word : words)
        m_words.append(QStringMatcher(word, Qt::CaseInsensitive));
}

bool PlaylistFilter::matches(QStringView name) const
{
    return std::all_of(m_words.begin(), m_words.end(),
                       [name](const QStringMatcher& word) { return word.indexIn(name) >= 0; });
}
