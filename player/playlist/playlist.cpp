#include "player/playlist/playlist.h"

#include <QPointer>

#include <algorithm>
#include <utility>

QStringView PlaylistEntry::name() const
{
    if (!title.isEmpty())
        return title;
    const QStringView whole = QStringView(file).mid(file.lastIndexOf(QLatin1Char('/')) + 1);
    const qsizetype dot = whole.lastIndexOf(QLatin1Char('.'));
    return dot > 0 ? whole.left(dot) : whole;
}

Playlist::Playlist(QObject* parent) : QObject(parent) {}

QString Playlist::file(int index) const
{
    return contains(index) ? m_entries.at(index).file : QString();
}

QStringList Playlist::files() const
{
    QStringList files;
    files.reserve(count());
    for (const PlaylistEntry& entry : m_entries)
        files << entry.file;
    return files;
}

int Playlist::indexOf(const QString& file) const
{
    const auto hasFile = [&file](const PlaylistEntry& entry) { return entry.file == file; };
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), hasFile);
    return found == m_entries.end() ? -1 : static_cast<int>(found - m_entries.begin());
}

void Playlist::replace(const QList<PlaylistEntry>& entries)
{
    m_entries = entries;
    const QPointer<Playlist> self(this);
    emit replaced();
    if (self)
        emit countChanged(count());
}

void Playlist::append(const QList<PlaylistEntry>& entries)
{
    if (entries.isEmpty())
        return;
    const int first = count();
    m_entries.append(entries);
    const QPointer<Playlist> self(this);
    emit appended(first, static_cast<int>(entries.size()));
    if (self)
        emit countChanged(count());
}

void Playlist::remove(QList<int> indexes)
{
    indexes.removeIf([this](int index) { return !contains(index); });
    std::sort(indexes.begin(), indexes.end());
    indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
    if (indexes.isEmpty())
        return;

    auto next = indexes.cbegin();
    int kept = 0;
    for (int index = 0; index < count(); ++index) {
        if (next != indexes.cend() && *next == index)
            ++next;
        else
            m_entries[kept++] = std::move(m_entries[index]);
    }
    m_entries.resize(kept);

    const QPointer<Playlist> self(this);
    emit removed(indexes);
    if (self)
        emit countChanged(count());
}

void Playlist::setGrowing(bool growing)
{
    if (m_isGrowing == growing)
        return;
    m_isGrowing = growing;
    emit growingChanged(growing);
}

void Playlist::setSeconds(int index, int seconds)
{
    if (!contains(index) || m_entries.at(index).seconds == seconds)
        return;
    m_entries[index].seconds = seconds;
    emit entryChanged(index);
}

void Playlist::setMissing(int index, bool missing)
{
    if (!contains(index) || m_entries.at(index).isMissing == missing)
        return;
    m_entries[index].isMissing = missing;
    emit entryChanged(index);
}
