#ifndef SKINWIDGETS_PLAYER_PLAYLIST_PLAYLISTITEM_H
#define SKINWIDGETS_PLAYER_PLAYLIST_PLAYLISTITEM_H

#include "listbox/listboxskinitem.h"

#include <QColor>
#include <QFont>
#include <QPixmap>

struct PlaylistEntry;

// How the entries of a playlist look.
struct PlaylistLook {
    QColor text = QColor(0xe3, 0xea, 0xf5);
    // Numbers, lengths, and files that are missing.
    QColor label = QColor(0x7f, 0x90, 0xab);
    // The current entry.
    QColor accent = QColor(0xff, 0xa2, 0x4d);
    // On the highlight.
    QColor selected = QColor(0xff, 0xff, 0xff);
    // Stands in place of the current entry's number.
    QPixmap mark;
    // Of numbers and lengths.
    QFont labelFont;
    // Pixels.
    int rowHeight = 24;
    int numberWidth = 24;
};

/*
 * An entry of a playlist in a list box: its number, its name, cut at the end where there is no room, and its length.
 * The current entry is a picture item: it has the mark for its picture. What is missing says so.
 *
 * It is as wide as the list box.
 */
class PlaylistItem : public ListBoxSkinPixmap
{
public:
    // The look belongs to somebody else and outlives the item. Counted from 0.
    PlaylistItem(const PlaylistLook* look, int index, const PlaylistEntry& entry);

    int index() const { return m_index; }
    // None of these repaints.
    void setIndex(int index) { m_index = index; }
    void setEntry(const PlaylistEntry& entry);
    void setCurrentEntry(bool current) { m_isCurrentEntry = current; }

    // Null but for the current entry.
    const QPixmap* pixmap() const override;
    int height(const ListBoxSkin* listbox) const override;
    int width(const ListBoxSkin* listbox) const override;
    void paint(QPainter* painter) override;

private:
    void paintNumber(QPainter* painter, const QRect& column) const;
    void paintOutline(QPainter* painter, const QRect& row) const;
    QString lengthText() const;

    const PlaylistLook* m_look;
    int m_index;
    int m_seconds = -1;
    bool m_isMissing = false;
    bool m_isCurrentEntry = false;
};

#endif
