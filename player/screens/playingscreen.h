#ifndef SKINWIDGETS_PLAYER_SCREENS_PLAYINGSCREEN_H
#define SKINWIDGETS_PLAYER_SCREENS_PLAYINGSCREEN_H

#include "player/screens/screen.h"

#include <memory>

class Config;
class Playback;
class SeekControl;
class SliderSkin;
class TimeSkin;
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
 * A widget without its place or its group is left out; its keys work all the same. Keys:
 *
 *     Page Up, Shift+Left; Page Down, Shift+Right   seek 10 seconds backwards; forwards
 *     Up, Down; M                                   volume by 5; mute
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
    const SeekControl* seekControl() const { return m_seek.get(); }

signals:
    void openRequested();
    void playlistRequested();
    void detailsRequested();

private:
    template <typename Widget>
    Widget* createOnPanel(const Config& places, const QString& key, const char* group);
    void createMediaWidgets();
    void addButtons();
    void addAllKeys();
    void showPlayOrPause(bool playing);
    void enableSteps(bool enable);

    Playback* m_playback;
    SliderSkin* m_seekSlider = nullptr;
    TimeSkin* m_timeDisplay = nullptr;
    VolumeSkin* m_volumePanel = nullptr;
    std::unique_ptr<SeekControl> m_seek;
    std::unique_ptr<VolumeControl> m_volume;
    bool m_showsPause = false;
    bool m_stepsEnabled = true;
};

#endif
