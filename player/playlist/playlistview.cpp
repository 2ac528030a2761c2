#include "player/playlist/playlistview.h"

#include "player/playback.h"

#include "scroll/scrollbarskin.h"

#include <QFontMetrics>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>
#include <memory>
#include <utility>

PlaylistView::PlaylistView(Playback* playback, QWidget* parent, const char* name)
    : ListBoxSkin(parent, name),
      m_playback(playback)
{
    setFrameStyle(NoFrame);
    setSelectionMode(Extended);
    setStaticBackground(true);
    setLook(PlaylistLook());

    const Playlist* playlist = playback->playlist();
    connect(playlist, &Playlist::replaced, this, &PlaylistView::rebuild);
    connect(playlist, &Playlist::appended, this, &PlaylistView::showAppended);
    connect(playlist, &Playlist::removed, this, &PlaylistView::showRemoved);
    connect(playlist, &Playlist::entryChanged, this, &PlaylistView::showEntry);
    connect(playback, &Playback::currentChanged, this, &PlaylistView::markCurrent);
    connect(this, qOverload<>(&ListBoxSkin::selectionChanged), this, &PlaylistView::shownChanged);
    connect(this, qOverload<ListBoxSkinItem*>(&ListBoxSkin::selected), this, [this](ListBoxSkinItem* item) {
        if (item)
            emit entryChosen(static_cast<PlaylistItem*>(item)->index());
    });
}

PlaylistView::~PlaylistView() = default;

void PlaylistView::setLook(const PlaylistLook& look)
{
    m_look = look;
    fixedRowHeight = look.rowHeight;
    verticalScrollBar()->setLineStep(look.rowHeight);
    rebuild();
}

void PlaylistView::setFilter(const QString& text)
{
    m_filter = PlaylistFilter(text);
    rebuild();
}

QList<int> PlaylistView::selectedEntries() const
{
    QList<int> indexes;
    for (const PlaylistItem* item = firstEntry(); item; item = next(item))
        if (item->selected())
            indexes.append(item->index());
    return indexes;
}

int PlaylistView::selectedCount() const
{
    int selected = 0;
    for (const ListBoxSkinItem* item = firstItem(); item; item = item->next())
        selected += item->selected();
    return selected;
}

void PlaylistView::showCurrentEntry()
{
    ListBoxSkinItem* item = itemFor(m_playback->currentIndex());
    selectAlone(item ? item : firstItem());
}

void PlaylistView::contentsWheelEvent(QWheelEvent* event)
{
    scrollBy(0, -m_wheel.pixels(*event, m_look.rowHeight));
    event->accept();
}

// Items ascend by index; without a filter the index is the place.
PlaylistItem* PlaylistView::itemFor(int index) const
{
    const auto at = [this](int place) { return static_cast<PlaylistItem*>(item(place)); };
    int low = 0;
    int high = static_cast<int>(count());
    if (index >= 0 && index < high && at(index)->index() == index)
        return at(index);
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (at(middle)->index() < index)
            low = middle + 1;
        else
            high = middle;
    }
    PlaylistItem* found = at(low);
    return found && found->index() == index ? found : nullptr;
}

void PlaylistView::selectAlone(ListBoxSkinItem* item)
{
    {
        const QSignalBlocker blocker(this);
        selectAll(false);
        setCurrentItem(item);
        setSelected(item, true);
    }
    emit shownChanged();
}

void PlaylistView::showEntries(int first, int count)
{
    const QList<PlaylistEntry>& entries = m_playback->playlist()->entries();
    for (int index = first; index < first + count; ++index) {
        if (!m_filter.isEmpty() && !m_filter.matches(entries.at(index).name()))
            continue;
        auto item = std::make_unique<PlaylistItem>(&m_look, index, entries.at(index));
        item->setCurrentEntry(index == m_marked);
        insertItem(item.release());
    }
}

void PlaylistView::rebuild()
{
    const auto* current = static_cast<PlaylistItem*>(item(currentItem()));
    const int kept = current ? current->index() : m_playback->currentIndex();
    {
        const QSignalBlocker blocker(this);
        m_marked = m_playback->currentIndex();
        updateNumberWidth();
        clear();
        showEntries(0, m_playback->playlist()->count());
        clearInputString();
    }
    ListBoxSkinItem* item = itemFor(kept);
    selectAlone(item ? item : firstItem());
}

void PlaylistView::showAppended(int first, int count)
{
    {
        const QSignalBlocker blocker(this);
        updateNumberWidth();
        showEntries(first, count);
    }
    emit shownChanged();
}

void PlaylistView::showRemoved(const QList<int>& indexes)
{
    m_marked = m_playback->currentIndex();
    int firstPlace = -1;
    {
        const QSignalBlocker blocker(this);
        auto gone = indexes.begin();
        int place = 0;
        for (PlaylistItem* item = firstEntry(); item;) {
            PlaylistItem* following = next(item);
            while (gone != indexes.end() && *gone < item->index())
                ++gone;
            const int shift = static_cast<int>(gone - indexes.begin());
            if (gone != indexes.end() && *gone == item->index()) {
                if (firstPlace < 0)
                    firstPlace = place;
                delete item;
            } else {
                item->setIndex(item->index() - shift);
                item->setCurrentEntry(item->index() == m_marked);
                ++place;
            }
            item = following;
        }
        updateNumberWidth();
    }
    triggerUpdate(true);
    if (firstPlace >= 0)
        selectAlone(item(std::min(firstPlace, static_cast<int>(count()) - 1)));
    else
        emit shownChanged();
}

void PlaylistView::showEntry(int index)
{
    PlaylistItem* item = itemFor(index);
    if (!item)
        return;
    item->setEntry(m_playback->playlist()->at(index));
    updateItem(item);
}

void PlaylistView::markCurrent()
{
    const int before = std::exchange(m_marked, m_playback->currentIndex());
    for (const int index : {before, m_marked}) {
        PlaylistItem* item = itemFor(index);
        if (!item)
            continue;
        item->setCurrentEntry(index == m_marked);
        updateItem(item);
    }
}

void PlaylistView::updateNumberWidth()
{
    const int digits = static_cast<int>(QString::number(m_playback->playlist()->count()).size());
    const int width = QFontMetrics(m_look.labelFont).horizontalAdvance(QString(std::max(digits, 2), QLatin1Char('0')));
    if (m_look.numberWidth == width)
        return;
    m_look.numberWidth = width;
    triggerUpdate(false);
    viewport()->update();
}
