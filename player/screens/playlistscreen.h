#ifndef SKINWIDGETS_PLAYER_SCREENS_PLAYLISTSCREEN_H
#define SKINWIDGETS_PLAYER_SCREENS_PLAYLISTSCREEN_H

#include "player/screens/screen.h"

#include <QSet>
#include <QString>
#include <QTimer>

class Config;
class Playback;
class PlaylistLoader;
class PlaylistView;
class QLabel;
class QLineEdit;

/*
 * The screen that shows and changes the playlist, from the section Playlist of the skin.
 *
 * A double click or Return plays an entry; letters lead to the next entry that begins with them. The filter line
 * narrows the list to the names that contain its words. A line of text tells how many entries there are and are
 * selected, what is being read, and what went wrong.
 *
 * The skin supplies the buttons close, add, cancel, remove, save and clear. Add and cancel take turns: cancel, which
 * ends the reading of folders, is there while something is read. Clear is there while the filter line holds something.
 * The group Playlist of its config has besides, each with _x, _y, _width and _height:
 *
 *     list        where the list is on the panel; the whole panel where missing
 *     title       the screen's title; none where missing
 *     status      the line of text; none where missing
 *     filter      the filter line; none where missing
 *
 * and
 *
 *     row_height  of an entry, 24 where missing
 *     mark        picture that marks the current entry
 *     title_color, text_color, label_color, accent_color   of the texts, as #rrggbb
 *
 * Keys:
 *
 *     Up, Down, Page Up, Page Down, Home, End   move in the list; with Shift they select
 *     Space, Ctrl+A                             select or not this entry; select all
 *     Return                                    play the entry
 *     Delete                                    remove the selected entries
 *     Insert                                    add files or folders
 *     Ctrl+S                                    save the playlist
 *     /, Ctrl+F                                 to the filter line; Return and Down lead back
 *     Left, Right                               to the buttons; Up and Down lead back
 *     Escape                                    empty the filter line, then close
 *     Back                                      close
 */
class PlaylistScreen : public Screen
{
    Q_OBJECT

public:
    // Playback and loader belong to somebody else.
    PlaylistScreen(Playback* playback, PlaylistLoader* loader, QWidget* parent);
    ~PlaylistScreen() override;

    PlaylistView* view() const { return m_view; }
    // Null where the skin has no place for it.
    QLineEdit* filterLine() const { return m_filter; }
    QString statusText() const { return m_statusText; }

public slots:
    // Stands in the line of text until the user does something.
    void showMessage(const QString& message);

signals:
    void addRequested();
    void saveRequested();

protected:
    void showEvent(QShowEvent* event) override;

private:
    enum Absence { Hide, Disable };

    void createView(const Config& group);
    void createTexts(const Config& group);
    void createFilter(const Config& group);
    void addButtons();
    void addAllKeys();
    void addKeyOn(QWidget* widget, Qt::Key key, const Action& action);

    void toFilter();
    void toList();
    void filterChanged();
    void applyFilter();
    void clearFilter();
    void escape();
    void removeSelected();
    void operate();
    void updateLater();
    void refresh();
    void updateButtons();
    void setAvailable(const QString& button, bool available, Absence absence);
    QString entriesText() const;

    Playback* m_playback;
    PlaylistLoader* m_loader;
    PlaylistView* m_view;
    QLabel* m_status = nullptr;
    QLabel* m_hint = nullptr;
    QLineEdit* m_filter = nullptr;
    QString m_message;
    QString m_statusText;
    // Waits for a pause in typing where the list is long.
    QTimer m_filterTimer;
    // So that many changes show once.
    QTimer m_updateTimer;
    // Buttons that are hidden or disabled.
    QSet<QString> m_absent;
};

#endif
