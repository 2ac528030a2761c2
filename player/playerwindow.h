#ifndef SKINWIDGETS_PLAYER_PLAYERWINDOW_H
#define SKINWIDGETS_PLAYER_PLAYERWINDOW_H

#include "player/playback.h"

#include <QHash>
#include <QPointer>
#include <QSet>
#include <QWidget>

#include <functional>
#include <memory>

class Config;
class QFileDialog;
class SeekControl;
class SkinBase;
class SliderSkin;
class TimeSkin;
class VolumeControl;
class VolumeSkin;

/*
 * The player: one panel from the section Player of a skin, as large as its background, over a Playback.
 *
 * The skin supplies the buttons prev, play, pause, stop, next and open. Play and pause take turns: the one that does
 * not apply is hidden, and the keyboard focus passes to the one that takes its place. With a single file prev and next
 * are disabled. What cannot be played is told on stderr, once a file, and in the title. The panel has the keyboard
 * focus, and play or pause is its first focused button. Escape closes.
 *
 * The group Screen of the skin's config places the media widgets, which are named by their groups, on the panel:
 *
 *     seek_x, seek_y       SliderSkin "Seek": where playback is, with a marker for each bookmark
 *     time_x, time_y       TimeSkin "Time": the playing time
 *     volume_x, volume_y   VolumeSkin "Volume"
 *
 * A widget without its place or its group is left out; its keys work all the same. Keys anywhere in the window:
 *
 *     Page Up, Shift+Left; Page Down, Shift+Right   seek 10 seconds backwards; forwards
 *     Up, Down; M                                   volume by 5; mute
 *     B, Insert                                     set a bookmark at the current position
 *     Delete, Backspace; with Shift                 remove the nearest bookmark; all of the file
 */
class PlayerWindow : public QWidget
{
    Q_OBJECT

public:
    // The skin's name becomes the object name, by which the panel finds its pictures.
    explicit PlayerWindow(const QString& skin, QWidget* parent = nullptr);
    ~PlayerWindow() override;

    // The names that the constructor finds a skin for, in alphabetical order.
    static QStringList skins();

    // False where the skin has no section Player or its background cannot be read.
    bool isSkinned() const;

    SkinBase* panel() const { return m_panel; }
    // Null where the skin has none.
    SliderSkin* seekSlider() const { return m_seekSlider; }
    TimeSkin* timeDisplay() const { return m_timeDisplay; }
    VolumeSkin* volumePanel() const { return m_volumePanel; }
    Playback* playback() { return &m_playback; }
    const SeekControl* seekControl() const { return m_seek.get(); }

public slots:
    // Lets the user choose files, which then play. Returns at once; a dialog that is open already is brought forward.
    void chooseFiles();

protected:
    void showEvent(QShowEvent* event) override;

private:
    template <typename Widget>
    Widget* createOnPanel(const Config& screen, const QString& key, const char* group);
    void createMediaWidgets();
    void createShortcuts();
    void buttonClicked(const QObject* panel, const QString& button);
    void playingChanged(bool playing);
    void currentChanged(const QString& file);
    void fileFailed(const QString& file, const QString& reason);
    void filesChosen(const QStringList& files);
    void dialogClosed();
    void showPlayOrPause(bool playing);
    void enableSteps(bool enable);
    void updateTitle();

    SkinBase* m_panel;
    SliderSkin* m_seekSlider = nullptr;
    TimeSkin* m_timeDisplay = nullptr;
    VolumeSkin* m_volumePanel = nullptr;
    Playback m_playback;
    std::unique_ptr<SeekControl> m_seek;
    std::unique_ptr<VolumeControl> m_volume;
    QHash<QString, std::function<void()>> m_actions;
    QPointer<QFileDialog> m_dialog;
    // What the title tells besides the file, until the user does something.
    QString m_notice;
    // Told on stderr already, however often they are tried.
    QSet<QString> m_reportedFiles;
    bool m_showsPause = false;
    bool m_stepsEnabled = true;
};

#endif
