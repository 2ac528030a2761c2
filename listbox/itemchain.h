#ifndef SKINWIDGETS_LISTBOX_ITEMCHAIN_H
#define SKINWIDGETS_LISTBOX_ITEMCHAIN_H

#include "listbox/textwidths.h"
#include "toolkit/toolkit.h"

#include <QSize>

#include <memory>
#include <vector>

class ListBoxSkin;
class ListBoxSkinItem;

namespace skinwidgets
{

// What an item's width has beside its text and picture, and the height of a cell with a line of text.
constexpr int itemMargins = 6;
inline int lineHeight(const QFontMetrics& metrics)
{
    return metrics.lineSpacing() + 2;
}

class ItemChain;

// Order by code points.
bool textLess(const QString& a, const QString& b);

// A run of neighbours in the chain, and what was measured of them.
struct ItemChunk {
    ItemChain* chain = nullptr;
    // Its place among the chunks; -1 while its items are being deleted.
    int slot = -1;
    // The measurement that the sizes below come from; 0 for none.
    unsigned int measurement = 0;
    // Not all is known: items are new, or want to be asked at every layout.
    bool asksAgain = false;
    int widest = 0;
    int lowest = 0;
    int highest = 0;
    // How many items are selected, and where the chunk stands among those with selected items; -1 nowhere.
    int selected = 0;
    int selectedPlace = -1;
    // One for each item; empty while all are as high as the lowest.
    std::vector<int> heights;
    std::vector<ListBoxSkinItem*> items;
};

/*
 * The items of a list box: a doubly linked chain, and beside it an index that finds an item by its position, and the
 * position of an item, without walking. The index knows how many items are selected and the sizes of all.
 *
 * Positions count from 0. Items are owned.
 */
class ItemChain
{
public:
    explicit ItemChain(ListBoxSkin* box);
    ~ItemChain();
    Q_DISABLE_COPY(ItemChain)

    ListBoxSkin* box() const { return m_box; }
    int count() const { return m_count; }
    ListBoxSkinItem* head() const { return m_head; }
    ListBoxSkinItem* last() const { return m_last; }
    // Counts the insertions, removals and sortings.
    unsigned int version() const { return m_version; }

    // Null outside.
    ListBoxSkinItem* at(qint64 index) const;
    // -1 for null and for items that are not in this chain.
    int indexOf(const ListBoxSkinItem* item) const;
    bool contains(const ListBoxSkinItem* item) const;

    // The item must be in no chain, the index between 0 and count().
    void insert(ListBoxSkinItem* item, int index);
    // The item must be in the chain. Its own links stay as they are.
    void remove(ListBoxSkinItem* item);
    // Deletes all items in order, those under construction excepted, which become free.
    void deleteAll();
    // To be called for an item in no chain whose place is being taken by the deletion of others.
    static void leaveDoomed(ListBoxSkinItem* item);
    // Lets go of all items without deleting them.
    void abandon();
    // By text, in code points; equal texts stay in order.
    void sort(bool ascending);

    // How many items are selected.
    int selectedCount() const { return m_selected; }
    // True where that was a change.
    bool select(ListBoxSkinItem* item, bool selected);
    // All items that can be selected; those that change are to be painted.
    void selectAll(bool selected);
    void invertSelection();
    // Calls visit(item, index) for all selected items, in any order. It may deselect the item.
    template <class Visit>
    void visitSelected(const Visit& visit) const;

    // To be called when fonts have come or gone: the same font may measure otherwise now.
    void forgetFont();
    // Measures what needs it. False where an item that was asked changed the chain.
    bool measure();
    static void forgetSize(ListBoxSkinItem* item);
    int widest() const { return m_widest; }
    int lowest() const { return m_lowest; }
    int highest() const { return m_highest; }
    // Calls visit(width, height) for the first items in order, as measured.
    template <class Visit>
    void visitSizes(int items, const Visit& visit) const;

private:
    struct Entry {
        std::unique_ptr<ItemChunk> chunk;
        int start = 0;
        int count = 0;
    };

    // Items found together with their chunk.
    struct Spot {
        int slot;
        int offset;
    };

    Spot spotOf(int index) const;
    void bringStartsUpToDate() const;
    void startsChangedAfter(int slot);
    int insertChunk(int slot);
    void removeChunk(int slot);
    Spot makeRoom(Spot spot);
    void splitChunk(int slot);
    void link(ListBoxSkinItem* item, ListBoxSkinItem* before, ListBoxSkinItem* after);
    void setSelectedIn(ItemChunk& chunk, int selected);
    template <class Wanted>
    void selectIn(ItemChunk& chunk, const ItemChunk* following, const Wanted& wanted);
    void chunkChanged(ItemChunk& chunk);
    bool measureChunk(ItemChunk& chunk);
    void sumUpSizes();
    static bool isSelected(const ListBoxSkinItem* item);
    static int widthAt(const ItemChunk& chunk, size_t offset);

    ListBoxSkin* m_box;
    ListBoxSkinItem* m_head = nullptr;
    ListBoxSkinItem* m_last = nullptr;
    int m_count = 0;
    int m_selected = 0;
    std::vector<ItemChunk*> m_selectedChunks;
    unsigned int m_version = 0;

    mutable std::vector<Entry> m_entries;
    // How many entries have a valid start.
    mutable int m_validStarts = 0;

    // Items that deleteAll() has still to delete, linked by their own links, and their chunks.
    ListBoxSkinItem* m_doomed = nullptr;
    std::vector<Entry> m_graveyard;
    int m_deleting = 0;

    // Counts what makes known sizes worthless: another font, another strut.
    unsigned int m_measurement = 1;
    std::unique_ptr<TextWidths> m_widths;
    QFont m_font;
    QSize m_strut;
    bool m_sizesKnown = false;
    bool m_asksAgain = false;
    int m_widest = 0;
    int m_lowest = 0;
    int m_highest = 0;
};

template <class Visit>
void ItemChain::visitSizes(int items, const Visit& visit) const
{
    for (const Entry& entry : m_entries) {
        const ItemChunk& chunk = *entry.chunk;
        for (size_t i = 0; i < chunk.items.size(); ++i) {
            if (items-- <= 0)
                return;
            visit(widthAt(chunk, i), chunk.heights.empty() ? chunk.lowest : chunk.heights[i]);
        }
    }
}

template <class Visit>
void ItemChain::visitSelected(const Visit& visit) const
{
    bringStartsUpToDate();
    const std::vector<ItemChunk*> chunks = m_selectedChunks;
    for (const ItemChunk* chunk : chunks) {
        const int start = m_entries[size_t(chunk->slot)].start;
        for (size_t i = 0; i < chunk->items.size() && chunk->selected > 0; ++i)
            if (isSelected(chunk->items[i]))
                visit(chunk->items[i], start + int(i));
    }
}

} // namespace skinwidgets

#endif
