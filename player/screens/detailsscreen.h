#ifndef SKINWIDGETS_PLAYER_SCREENS_DETAILSSCREEN_H
#define SKINWIDGETS_PLAYER_SCREENS_DETAILSSCREEN_H

#include "player/details/tracktext.h"
#include "player/screens/screen.h"

#include <QImage>
#include <QString>

class DetailsView;
class Playback;

/*
 * The screen with the details of the current file, from the section Details of the skin: its tags, its cover, and the
 * lyrics or notes beside it, which follow playback where they tell of times. It reads them while it shows.
 *
 * The cover is the one in the file, else a picture beside it, else the skin's. The skin supplies the button close. The
 * group Details of its config has besides:
 *
 *     view_x, view_y, view_width, view_height       where the details are on the panel; the whole panel where missing
 *     title_x, title_y, title_width, title_height   the screen's title; none where missing
 *     cover                                         picture for files without one, 104 x 104 pixels
 *     title_color, text_color, label_color, accent_color   of the texts, as #rrggbb
 *
 * Keys:
 *
 *     Up, Down, Page Up, Page Down, Home, End   scroll
 *     Escape, Back, I                           close
 */
class DetailsScreen : public Screen
{
    Q_OBJECT

public:
    // The playback belongs to somebody else.
    DetailsScreen(const Playback* playback, QWidget* parent);
    ~DetailsScreen() override;

    DetailsView* view() const { return m_view; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    void createView();
    void addAllKeys();
    void showFile();
    void showTags();

    const Playback* m_playback;
    DetailsView* m_view;
    // What the view shows.
    QString m_file;
    QImage m_coverBeside;
};

#endif
