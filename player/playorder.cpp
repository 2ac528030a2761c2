#include "player/playorder.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace
{

// A player that runs for months would go on collecting.
constexpr qsizetype longestHistory = 10000;

} // namespace

PlayOrder::PlayOrder(quint32 seed) : m_random(seed) {}

void PlayOrder::setShuffled(bool shuffled)
{
    if (m_isShuffled == shuffled)
        return;
    m_isShuffled = shuffled;
    m_history.clear();
    m_place = -1;
    beginRound();
    if (!m_isShuffled || m_current < 0)
        return;
    m_remaining.removeOne(m_current);
    remember(m_current);
}

void PlayOrder::reset(int count)
{
    m_count = std::max(count, 0);
    m_current = -1;
    m_history.clear();
    m_place = -1;
    beginRound();
}

void PlayOrder::append(int count)
{
    const int first = m_count;
    m_count += std::max(count, 0);
    if (!m_isShuffled)
        return;
    for (int entry = first; entry < m_count; ++entry)
        m_remaining.append(entry);
}

void PlayOrder::remove(const QList<int>& entries)
{
    const auto isGone = [&entries](int entry) { return std::binary_search(entries.begin(), entries.end(), entry); };
    const QList<int> before = m_history.first(m_place + 1);
    m_place -= std::count_if(before.begin(), before.end(), isGone);
    renumber(m_history, entries);
    renumber(m_remaining, entries);
    QList<int> current{m_current};
    renumber(current, entries);
    m_current = current.value(0, -1);
    m_count -= static_cast<int>(entries.size());
}

// Leaves out what is removed, and lets the others move up.
void PlayOrder::renumber(QList<int>& entries, const QList<int>& removed) const
{
    QList<int> kept;
    for (const int entry : std::as_const(entries)) {
        const auto place = std::lower_bound(removed.begin(), removed.end(), entry);
        if (place == removed.end() || *place != entry)
            kept.append(entry - static_cast<int>(place - removed.begin()));
    }
    entries = kept;
}

void PlayOrder::setCurrent(int entry)
{
    if (m_current == entry)
        return;
    if (entry < 0 || entry >= m_count) {
        m_current = -1;
        return;
    }
    if (m_isShuffled) {
        m_remaining.removeOne(entry);
        // What was to come again by going forwards is given up.
        m_history.resize(m_place + 1);
        remember(entry);
    }
    m_current = entry;
}

bool PlayOrder::isAtEnd() const
{
    if (m_isShuffled)
        return m_remaining.isEmpty() && m_place + 1 >= m_history.size();
    return m_current + 1 >= m_count;
}

int PlayOrder::advance()
{
    return isAtEnd() && !m_isRepeated ? -1 : next();
}

int PlayOrder::next()
{
    if (m_count == 0)
        return -1;
    if (!m_isShuffled)
        return go((m_current + 1) % m_count);
    if (m_place + 1 < m_history.size())
        return go(m_history.at(++m_place));
    const int entry = drawnForAnyRound();
    remember(entry);
    return go(entry);
}

int PlayOrder::previous()
{
    if (m_count == 0)
        return -1;
    if (!m_isShuffled)
        return go((std::max(m_current, 0) + m_count - 1) % m_count);
    // Where the current entry was removed, the place is that of the one before it.
    if (m_current < 0 && m_place >= 0)
        return go(m_history.at(m_place));
    if (m_place > 0)
        return go(m_history.at(--m_place));
    m_history.prepend(drawnForAnyRound());
    m_place = 0;
    return go(m_history.first());
}

int PlayOrder::go(int entry)
{
    m_current = entry;
    return entry;
}

void PlayOrder::beginRound()
{
    m_remaining.resize(m_isShuffled ? m_count : 0);
    std::iota(m_remaining.begin(), m_remaining.end(), 0);
}

int PlayOrder::drawnForAnyRound()
{
    if (!m_remaining.isEmpty())
        return drawn(-1);
    beginRound();
    return drawn(m_count > 1 ? m_current : -1);
}

// Takes one of the remaining, but not that one.
int PlayOrder::drawn(int except)
{
    const qsizetype excepted = except < 0 ? -1 : m_remaining.indexOf(except);
    const qsizetype choices = m_remaining.size() - (excepted < 0 ? 0 : 1);
    if (excepted >= 0)
        m_remaining.swapItemsAt(excepted, choices);
    const auto choice = static_cast<qsizetype>(m_random.bounded(static_cast<int>(choices)));
    const int entry = m_remaining.at(choice);
    m_remaining.swapItemsAt(choice, m_remaining.size() - 1);
    m_remaining.removeLast();
    return entry;
}

// As the newest in the history.
void PlayOrder::remember(int entry)
{
    m_history.append(entry);
    if (m_history.size() > longestHistory)
        m_history.removeFirst();
    m_place = m_history.size() - 1;
}
