#include "listbox/itemchain.h"

#include "listbox/listbox_skin.h"
#include "listbox/listboxskinitem.h"

#include <algorithm>
#include <limits>
#include <typeinfo>
#include <utility>

namespace skinwidgets
{

namespace
{

constexpr size_t chunkSize = 256;
// How far ahead items are fetched that are all going to be changed: memory is what that waits for.
constexpr size_t itemsAhead = 24;

// In UTF-16 surrogates come before the last plain characters, though they stand for later ones.
char16_t inCodePointOrder(char16_t unit)
{
    if (unit < 0xd800)
        return unit;
    return unit < 0xe000 ? char16_t(unit + 0x2000) : char16_t(unit - 0x0800);
}

} // namespace

bool textLess(const QString& a, const QString& b)
{
    const auto* first = reinterpret_cast<const char16_t*>(a.utf16());
    const auto* second = reinterpret_cast<const char16_t*>(b.utf16());
    const qsizetype common = std::min(a.size(), b.size());
    for (qsizetype i = 0; i < common; ++i)
        if (first[i] != second[i])
            return inCodePointOrder(first[i]) < inCodePointOrder(second[i]);
    return a.size() < b.size();
}

ItemChain::ItemChain(ListBoxSkin* box) : m_box(box) {}

ItemChain::~ItemChain()
{
    abandon();
}

void ItemChain::bringStartsUpToDate() const
{
    const int entries = int(m_entries.size());
    for (; m_validStarts < entries; ++m_validStarts) {
        const Entry* before = m_validStarts > 0 ? &m_entries[size_t(m_validStarts) - 1] : nullptr;
        m_entries[size_t(m_validStarts)].start = before ? before->start + before->count : 0;
    }
}

void ItemChain::startsChangedAfter(int slot)
{
    m_validStarts = std::min(m_validStarts, slot + 1);
}

ItemChain::Spot ItemChain::spotOf(int index) const
{
    bringStartsUpToDate();
    const auto after = std::upper_bound(m_entries.begin(), m_entries.end(), index,
                                        [](int wanted, const Entry& entry) { return wanted < entry.start; });
    const int slot = int(after - m_entries.begin()) - 1;
    return {slot, index - m_entries[size_t(slot)].start};
}

ListBoxSkinItem* ItemChain::at(qint64 index) const
{
    if (index < 0 || index >= m_count)
        return nullptr;
    const Spot spot = spotOf(int(index));
    return m_entries[size_t(spot.slot)].chunk->items[size_t(spot.offset)];
}

bool ItemChain::contains(const ListBoxSkinItem* item) const
{
    return item && item->chained && item->place.chunk->chain == this && item->place.chunk->slot >= 0;
}

int ItemChain::indexOf(const ListBoxSkinItem* item) const
{
    if (!contains(item))
        return -1;
    bringStartsUpToDate();
    const ItemChunk& chunk = *item->place.chunk;
    const auto found = std::find(chunk.items.begin(), chunk.items.end(), item);
    return m_entries[size_t(chunk.slot)].start + int(found - chunk.items.begin());
}

int ItemChain::insertChunk(int slot)
{
    Entry entry;
    entry.chunk = std::make_unique<ItemChunk>();
    entry.chunk->chain = this;
    m_entries.insert(m_entries.begin() + slot, std::move(entry));
    for (size_t i = size_t(slot); i < m_entries.size(); ++i)
        m_entries[i].chunk->slot = int(i);
    startsChangedAfter(slot - 1);
    return slot;
}

void ItemChain::removeChunk(int slot)
{
    m_entries.erase(m_entries.begin() + slot);
    for (size_t i = size_t(slot); i < m_entries.size(); ++i)
        m_entries[i].chunk->slot = int(i);
    startsChangedAfter(slot - 1);
}

void ItemChain::splitChunk(int slot)
{
    insertChunk(slot + 1);
    Entry& full = m_entries[size_t(slot)];
    Entry& other = m_entries[size_t(slot) + 1];
    std::vector<ListBoxSkinItem*>& from = full.chunk->items;
    const auto middle = from.begin() + std::ptrdiff_t(from.size() / 2);
    other.chunk->items.assign(middle, from.end());
    from.erase(middle, from.end());
    int selected = 0;
    for (ListBoxSkinItem* item : other.chunk->items) {
        item->place.chunk = other.chunk.get();
        selected += int(item->s);
    }
    setSelectedIn(*full.chunk, full.chunk->selected - selected);
    setSelectedIn(*other.chunk, selected);
    other.count = int(other.chunk->items.size());
    full.count = int(from.size());
    // The known widths are of the measurement that the chunk had.
    other.chunk->measurement = full.chunk->measurement;
    chunkChanged(*full.chunk);
    chunkChanged(*other.chunk);
    startsChangedAfter(slot);
}

// The spot where an item goes that shall stand there. A full chunk at either end of the chain is left full, so that
// appending fills all chunks.
ItemChain::Spot ItemChain::makeRoom(Spot spot)
{
    const int size = m_entries[size_t(spot.slot)].count;
    if (size_t(size) < chunkSize)
        return spot;
    if (spot.slot == 0 && spot.offset == 0)
        return {insertChunk(0), 0};
    if (spot.slot == int(m_entries.size()) - 1 && spot.offset == size)
        return {insertChunk(spot.slot + 1), 0};
    splitChunk(spot.slot);
    const int half = m_entries[size_t(spot.slot)].count;
    return spot.offset <= half ? spot : Spot{spot.slot + 1, spot.offset - half};
}

void ItemChain::link(ListBoxSkinItem* item, ListBoxSkinItem* before, ListBoxSkinItem* after)
{
    item->p = before;
    item->n = after;
    (before ? before->n : m_head) = item;
    (after ? after->p : m_last) = item;
}

void ItemChain::insert(ListBoxSkinItem* item, int index)
{
    Spot spot{};
    if (m_entries.empty())
        spot = {insertChunk(0), 0};
    else if (index == m_count)
        spot = makeRoom({int(m_entries.size()) - 1, m_entries.back().count});
    else
        spot = makeRoom(spotOf(index));

    ListBoxSkinItem* after = index == 0 ? m_head : index == m_count ? nullptr : at(index);
    link(item, after ? after->p : m_last, after);

    Entry& entry = m_entries[size_t(spot.slot)];
    ItemChunk& chunk = *entry.chunk;
    if (chunk.items.size() == chunk.items.capacity())
        chunk.items.reserve(std::min(chunkSize, std::max<size_t>(4, chunk.items.size() * 2)));
    chunk.items.insert(chunk.items.begin() + spot.offset, item);
    ++entry.count;
    ++m_count;
    ++m_version;
    item->place.chunk = &chunk;
    item->chained = true;
    item->measuredWidth = -1;
    setSelectedIn(chunk, chunk.selected + int(item->s));
    startsChangedAfter(spot.slot);
    chunkChanged(chunk);
}

void ItemChain::remove(ListBoxSkinItem* item)
{
    (item->p ? item->p->n : m_head) = item->n;
    (item->n ? item->n->p : m_last) = item->p;

    ItemChunk& chunk = *item->place.chunk;
    Entry& entry = m_entries[size_t(chunk.slot)];
    chunk.items.erase(std::find(chunk.items.begin(), chunk.items.end(), item));
    --entry.count;
    --m_count;
    ++m_version;
    setSelectedIn(chunk, chunk.selected - int(item->s));
    item->chained = false;
    item->place.box = m_box;
    startsChangedAfter(chunk.slot);
    chunkChanged(chunk);
    if (chunk.items.empty())
        removeChunk(chunk.slot);
}

// A destructor of an item may delete other items, insert new ones and call this again. The items wait in a list of
// their own, so each of those finds everything in order.
void ItemChain::deleteAll()
{
    for (Entry& entry : m_entries) {
        entry.chunk->slot = -1;
        m_graveyard.push_back(std::move(entry));
    }
    m_entries.clear();
    m_validStarts = 0;
    if (m_last) {
        m_last->n = m_doomed;
        if (m_doomed)
            m_doomed->p = m_last;
        m_doomed = m_head;
    }
    m_head = nullptr;
    m_last = nullptr;
    m_count = 0;
    m_selected = 0;
    m_selectedChunks.clear();
    m_sizesKnown = false;
    ++m_version;

    ++m_deleting;
    // Each round takes one out.
    while (ListBoxSkinItem* item = m_doomed) {
        leaveDoomed(item); // NOLINT(clang-analyzer-cplusplus.NewDelete)
        item->p = nullptr;
        item->n = nullptr;
        if (!item->constructing)
            delete item;
        else
            item->place.box = nullptr;
    }
    if (--m_deleting == 0)
        m_graveyard.clear();
}

void ItemChain::leaveDoomed(ListBoxSkinItem* item)
{
    if (!item->chained || item->place.chunk->slot >= 0)
        return;
    ItemChain* chain = item->place.chunk->chain;
    (item->p ? item->p->n : chain->m_doomed) = item->n;
    if (item->n)
        item->n->p = item->p;
    item->chained = false;
    item->place.box = chain->m_box;
}

void ItemChain::abandon()
{
    for (Entry& entry : m_entries) {
        for (ListBoxSkinItem* item : entry.chunk->items) {
            item->chained = false;
            item->place.box = nullptr;
        }
    }
    m_entries.clear();
    m_validStarts = 0;
    m_head = nullptr;
    m_last = nullptr;
    m_count = 0;
    m_selected = 0;
    m_selectedChunks.clear();
}

void ItemChain::sort(bool ascending)
{
    std::vector<std::pair<QString, ListBoxSkinItem*>> sorted;
    sorted.reserve(size_t(m_count));
    for (ListBoxSkinItem* item = m_head; item; item = item->n)
        sorted.emplace_back(item->text(), item);
    std::stable_sort(sorted.begin(), sorted.end(), [ascending](const auto& a, const auto& b) {
        return ascending ? textLess(a.first, b.first) : textLess(b.first, a.first);
    });

    const bool widthsValid = std::all_of(m_entries.begin(), m_entries.end(), [this](const Entry& entry) {
        return entry.chunk->measurement == m_measurement;
    });
    m_head = nullptr;
    m_last = nullptr;
    ++m_version;
    auto next = sorted.begin();
    for (Entry& entry : m_entries) {
        int selected = 0;
        chunkChanged(*entry.chunk);
        for (ListBoxSkinItem*& item : entry.chunk->items) {
            item = (next++)->second;
            item->place.chunk = entry.chunk.get();
            if (!widthsValid)
                item->measuredWidth = -1;
            selected += int(item->s);
            link(item, m_last, nullptr);
        }
        setSelectedIn(*entry.chunk, selected);
    }
}

bool ItemChain::select(ListBoxSkinItem* item, bool selected)
{
    if (item->s == unsigned(selected))
        return false;
    item->s = selected;
    ItemChunk& chunk = *item->place.chunk;
    setSelectedIn(chunk, chunk.selected + (selected ? 1 : -1));
    return true;
}

void ItemChain::setSelectedIn(ItemChunk& chunk, int selected)
{
    m_selected += selected - chunk.selected;
    chunk.selected = selected;
    const bool listed = chunk.selectedPlace >= 0;
    if (listed == (selected > 0))
        return;
    if (!listed) {
        chunk.selectedPlace = int(m_selectedChunks.size());
        m_selectedChunks.push_back(&chunk);
        return;
    }
    // The last one takes its place.
    m_selectedChunks.back()->selectedPlace = chunk.selectedPlace;
    m_selectedChunks[size_t(chunk.selectedPlace)] = m_selectedChunks.back();
    m_selectedChunks.pop_back();
    chunk.selectedPlace = -1;
}

template <class Wanted>
void ItemChain::selectIn(ItemChunk& chunk, const ItemChunk* following, const Wanted& wanted)
{
    int selected = 0;
    const size_t count = chunk.items.size();
    for (size_t i = 0; i < count; ++i) {
        ListBoxSkinItem* item = chunk.items[i];
        if (i + itemsAhead < count)
            __builtin_prefetch(&chunk.items[i + itemsAhead]->measuredWidth, 1);
        else if (following && i + itemsAhead - count < following->items.size())
            __builtin_prefetch(&following->items[i + itemsAhead - count]->measuredWidth, 1);
        if (!item->hasEntry || item->isSelectable()) {
            const bool before = item->s;
            const bool after = wanted(before);
            item->s = after;
            item->dirty |= unsigned(before != after);
            item->paintedAcross &= unsigned(before == after);
        }
        selected += int(item->s);
    }
    setSelectedIn(chunk, selected);
}

void ItemChain::selectAll(bool selected)
{
    if (!selected) {
        const std::vector<ItemChunk*> chunks = m_selectedChunks;
        for (size_t i = 0; i < chunks.size(); ++i)
            selectIn(*chunks[i], i + 1 < chunks.size() ? chunks[i + 1] : nullptr, [](bool) { return false; });
        return;
    }
    for (size_t i = 0; i < m_entries.size(); ++i)
        if (m_entries[i].chunk->selected != m_entries[i].count)
            selectIn(*m_entries[i].chunk, i + 1 < m_entries.size() ? m_entries[i + 1].chunk.get() : nullptr,
                     [](bool) { return true; });
}

void ItemChain::invertSelection()
{
    for (const Entry& entry : m_entries)
        selectIn(*entry.chunk, nullptr, [](bool before) { return !before; });
}

bool ItemChain::isSelected(const ListBoxSkinItem* item)
{
    return item->s;
}

void ItemChain::chunkChanged(ItemChunk& chunk)
{
    chunk.asksAgain = true;
    m_asksAgain = true;
}

void ItemChain::forgetSize(ListBoxSkinItem* item)
{
    item->measuredWidth = -1;
    if (item->chained)
        item->place.chunk->chain->chunkChanged(*item->place.chunk);
}

int ItemChain::widthAt(const ItemChunk& chunk, size_t offset)
{
    return chunk.items[offset]->measuredWidth;
}

void ItemChain::forgetFont()
{
    m_widths.reset();
    TextWidths::forgetFonts();
}

bool ItemChain::measure()
{
    if (!m_widths || m_font != m_box->font() || m_strut != globalStrut()) {
        m_font = m_box->font();
        m_strut = globalStrut();
        m_widths = std::make_unique<TextWidths>(m_font, m_box->fontMetrics());
        ++m_measurement;
        m_asksAgain = true;
    }
    if (m_sizesKnown && !m_asksAgain)
        return true;

    const unsigned int version = m_version;
    m_asksAgain = false;
    for (const Entry& entry : m_entries) {
        ItemChunk& chunk = *entry.chunk;
        if (chunk.measurement == m_measurement && !chunk.asksAgain)
            continue;
        // Once an item has changed the chain, the entries may be others.
        if (!measureChunk(chunk) || version != m_version) {
            m_asksAgain = true;
            return false;
        }
    }
    sumUpSizes();
    return true;
}

// Only items of the library's own two classes are known to change their size with text, font and strut alone. Others
// are asked at every layout.
bool ItemChain::measureChunk(ItemChunk& chunk)
{
    const bool widthsValid = chunk.measurement == m_measurement;
    const unsigned int version = m_version;
    const int textHeight = std::max(lineHeight(m_widths->metrics()), m_strut.height());
    // Until the end is reached.
    chunk.asksAgain = true;
    bool asksAgain = false;
    chunk.measurement = m_measurement;
    chunk.widest = 0;
    chunk.lowest = std::numeric_limits<int>::max();
    chunk.highest = 0;
    chunk.heights.clear();
    std::vector<int> heights;
    for (size_t i = 0; i < chunk.items.size(); ++i) {
        ListBoxSkinItem* item = chunk.items[i];
        const bool known = widthsValid && item->measuredWidth >= 0;
        int height = textHeight;
        if (typeid(*item) == typeid(ListBoxSkinText)) {
            if (!known)
                item->measuredWidth = std::max(m_widths->width(item->txt) + itemMargins, m_strut.width());
        } else if (typeid(*item) == typeid(ListBoxSkinPixmap)) {
            height = std::max({item->pixmap()->height(), item->txt.isEmpty() ? 0 : textHeight, m_strut.height()});
            if (!known) {
                const int text = item->txt.isEmpty() ? 0 : m_widths->width(item->txt);
                item->measuredWidth = std::max(item->pixmap()->width() + text + itemMargins, m_strut.width());
            }
        } else {
            height = std::max(item->height(m_box), 0);
            const int width = version == m_version ? std::max(item->width(m_box), 0) : 0;
            // The item, and the chunk, may be gone.
            if (version != m_version)
                return false;
            item->measuredWidth = width;
            asksAgain = true;
        }
        if (heights.empty() && i > 0 && height != chunk.lowest)
            heights.assign(i, chunk.lowest);
        if (!heights.empty())
            heights.push_back(height);
        chunk.widest = std::max(chunk.widest, item->measuredWidth);
        chunk.lowest = std::min(chunk.lowest, height);
        chunk.highest = std::max(chunk.highest, height);
    }
    heights.shrink_to_fit();
    chunk.heights = std::move(heights);
    chunk.asksAgain = asksAgain;
    m_asksAgain |= asksAgain;
    return true;
}

void ItemChain::sumUpSizes()
{
    m_sizesKnown = true;
    m_widest = 0;
    m_highest = 0;
    m_lowest = m_entries.empty() ? 0 : std::numeric_limits<int>::max();
    for (const Entry& entry : m_entries) {
        m_widest = std::max(m_widest, entry.chunk->widest);
        m_lowest = std::min(m_lowest, entry.chunk->lowest);
        m_highest = std::max(m_highest, entry.chunk->highest);
    }
}

} // namespace skinwidgets
