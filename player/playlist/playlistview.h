#ifndef SKINWIDGETS_PLAYER_PLAYLIST_PLAYLISTVIEW_H
#define SKINWIDGETS_PLAYER_PLAYLIST_PLAYLISTVIEW_H

#include "listbox/listbox_skin.h"
#include "player/playlist/playlistfilter.h"
#include "player/playlist/playlistitem.h"
#include "player/wheelscroll.h"

class Playback;

/*
 * Shows the playlist of a playback, or what of it matches a filter, and follows its changes. The current entry bears
 * its mark. Several entries can be selected.
 */
class PlaylistView : public ListBoxSkin
{
    Q_OBJECT

public:
    // The playback belongs to somebody else.
    explicit PlaylistView(Playback* playback, QWidget* parent = nullptr, const char* name = nullptr);
    ~PlaylistView() override;

    void setLook(const PlaylistLook& look);
    void setFilter(const QString& text);
    // Indexes in the playlist, ascending.
    QList<int> selectedEntries() const;
    int selectedCount() const;
    // Selects the current entry alone and scrolls to it; the first one where it is not shown.
    void showCurrentEntry();

signals:
    // A double click, or Return: an index in the playlist.
    void entryChosen(int index);
    // What is shown or selected has changed.
    void shownChanged();

protected:
    void contentsWheelEvent(QWheelEvent* event) override;

private:
    PlaylistItem* itemFor(int index) const;
    PlaylistItem* firstEntry() const { return static_cast<PlaylistItem*>(firstItem()); }
    static PlaylistItem* next(const PlaylistItem* item) { return static_cast<PlaylistItem*>(item->next()); }
    void showEntries(int first, int count);
    void selectAlone(ListBoxSkinItem* item);
    void rebuild();
    void showAppended(int first, int count);
    void showRemoved(const QList<int>& indexes);
    void showEntry(int index);
    void markCurrent();
    void updateNumberWidth();

    Playback* m_playback;
    PlaylistLook m_look;
    PlaylistFilter m_filter;
    // The index that bears the mark, -1 for none.
    int m_marked = -1;
    WheelScroll m_wheel;
};

#endif
