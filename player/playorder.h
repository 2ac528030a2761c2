#ifndef SKINWIDGETS_PLAYER_PLAYORDER_H
#define SKINWIDGETS_PLAYER_PLAYORDER_H

#include <QList>
#include <QRandomGenerator>

/*
 * The order in which the entries of a list play: as they stand, or shuffled; once, or again and again.
 *
 * Shuffled, the entries come in rounds. Each comes once in a round, and the first of a round is not the last of the one
 * before, where there is another one. Going back leads through what came before, and forwards again through the same;
 * before the first of it come entries of the same round. Entries are numbers from 0.
 */
class PlayOrder
{
public:
    // The seed decides what comes when; the same one gives the same order.
    explicit PlayOrder(quint32 seed = QRandomGenerator::global()->generate());

    int count() const { return m_count; }
    // -1 where there is none.
    int current() const { return m_current; }
    bool isShuffled() const { return m_isShuffled; }
    bool isRepeated() const { return m_isRepeated; }

    // Shuffling begins a round with the current entry.
    void setShuffled(bool shuffled);
    void setRepeated(bool repeated) { m_isRepeated = repeated; }

    // Another list, without a current entry. A count below 0 is 0.
    void reset(int count);
    // Longer at its end; what is new takes part in the round.
    void append(int count);
    // The entries have these numbers, which ascend, before. Without the current one there is none until it is set.
    void remove(const QList<int>& entries);
    // The entry is played out of turn: it has been in this round, and going back leads to where it was called from.
    // Ignored where it is current already; one outside makes that there is none.
    void setCurrent(int entry);

    // Whether the list or the round has been played, so that advance() would begin anew or end.
    bool isAtEnd() const;

    // Each goes to another entry and returns its number, or -1 where there is none to go to and nothing changes.
    //
    // What plays when the current one has ended: -1 at the end, unless it is repeated.
    int advance();
    // What the user gets who asks for the neighbour: around the ends, or into the next round.
    int next();
    int previous();

private:
    int go(int entry);
    int drawn(int except);
    int drawnForAnyRound();
    void beginRound();
    void remember(int entry);
    void renumber(QList<int>& entries, const QList<int>& removed) const;

    QRandomGenerator m_random;
    int m_count = 0;
    int m_current = -1;
    bool m_isShuffled = false;
    bool m_isRepeated = false;
    // Shuffled: those that have not been in this round, in no order, and those that were, with the current one's place.
    QList<int> m_remaining;
    QList<int> m_history;
    qsizetype m_place = -1;
};

#endif
