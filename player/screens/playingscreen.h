#ifndef SKINWIDGETS_PLAYER_SCREENS_PLAYINGSCREEN_H
#define SKINWIDGETS_PLAYER_SCREENS_PLAYINGSCREEN_H

#include "player/screens/screen.h"

#include <memory>

class Config;
class ImageButton;
class InfoText;
class LabelImage;
class MessageLabel;
class NowPlaying;
class OrderControl;
class Playback;
class SeekControl;
class SliderSkin;
class TimeSkin;
class TitleBar;
class VolumeControl;
class VolumeSkin;

/*
 * The screen that operates playback, from the section Player of the skin.
 *
 * The skin supplies the buttons prev, play, pause, stop, next, open, playlist and details. Play and pause take turns:
 * the one that does not apply is hidden, and the keyboard focus passes to the one that takes its place. With a single
 * file prev and next are disabled. Play or pause is the first focused button.
 *
 * The group Screen of the skin's config places the media widgets, which are named by their groups, on the panel:
 *
 *     seek_x, seek_y       SliderSkin "Seek": where playback is, with a marker for each bookmark
 *     time_x, time_y       TimeSkin "Time": the playing time
 *     volume_x, volume_y   VolumeSkin "Volume"
 *
 * and what has its pictures below the application's name:
 *
 *     title_x, title_y       TitleBar: title and name of the file, and the button that closes the player
 *     shuffle_x, shuffle_y   ImageButton "shuffle", a toggle button
 *     repeat_x, repeat_y     ImageButton "repeat", a toggle button
 *
 * and texts and pictures, which have KEY_width and KEY_height besides:
 *
 *     cover_x ...     LabelImage: the cover of what plays, else the picture that the key cover names
 *     info_x ...      title, artist and album in title_color, artist_color and album_color; messages in their place,
 *                     in message_color
 *     message_x ...   another place for messages
 *
 * A widget without its place or its pictures is left out; its keys work all the same. What volume, mute, shuffle and
 * repeat come to and the end of the playlist are told as messages. Keys:
 *
 *     Page Up, Shift+Left; Page Down, Shift+Right   seek 10 seconds backwards; forwards
 *     Up, Down; M                                   volume by 5; mute
 *     S; R                                          shuffle; repeat
 *     B, Insert                                     set a bookmark at the current position
 *     Delete, Backspace; with Shift                 remove the nearest bookmark; all of the file
 *     P                                             the playlist
 *     I                                             the details of the file
 *     Escape                                        close
 */
class PlayingScreen : public Screen
{
    Q_OBJECT

public:
    // The playback belongs to somebody else.
    PlayingScreen(Playback* playback, QWidget* parent);
    ~PlayingScreen() override;

    // Null where the skin has none.
    SliderSkin* seekSlider() const { return m_seekSlider; }
    TimeSkin* timeDisplay() const { return m_timeDisplay; }
    VolumeSkin* volumePanel() const { return m_volumePanel; }
    TitleBar* titleBar() const { return m_titleBar; }
    ImageButton* shuffleButton() const { return m_shuffle; }
    ImageButton* repeatButton() const { return m_repeat; }
    LabelImage* cover() const { return m_cover; }
    InfoText* info() const { return m_info; }
    MessageLabel* message() const { return m_message; }
    const SeekControl* seekControl() const { return m_seek.get(); }

public slots:
    // Shows a message for a while, where the skin has a place for it.
    void showMessage(const QString& message);

signals:
    void openRequested();
    void playlistRequested();
    void detailsRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    template <typename Widget>
    Widget* createOnPanel(const Config& places, const QString& key, const char* group);
    void createMediaWidgets();
    void createTitleBar(const Config& places);
    ImageButton* createToggle(const Config& places, const char* name);
    void createCover(const Config& places);
    void createInfo(const Config& places);
    void createMessage(const Config& places);
    QRect placeOnPanel(const Config& places, const QString& key) const;
    void tellChanges();
    void addButtons();
    void addAllKeys();
    void showPlayOrPause(bool playing);
    void enableSteps(bool enable);

    Playback* m_playback;
    SliderSkin* m_seekSlider = nullptr;
    TimeSkin* m_timeDisplay = nullptr;
    VolumeSkin* m_volumePanel = nullptr;
    TitleBar* m_titleBar = nullptr;
    ImageButton* m_shuffle = nullptr;
    ImageButton* m_repeat = nullptr;
    LabelImage* m_cover = nullptr;
    InfoText* m_info = nullptr;
    MessageLabel* m_message = nullptr;
    std::unique_ptr<SeekControl> m_seek;
    std::unique_ptr<VolumeControl> m_volume;
    std::unique_ptr<OrderControl> m_order;
    std::unique_ptr<NowPlaying> m_nowPlaying;
    bool m_showsPause = false;
    bool m_stepsEnabled = true;
};

#endif
