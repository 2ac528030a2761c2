#ifndef SKINWIDGETS_PLAYER_PLAYERWINDOW_H
#define SKINWIDGETS_PLAYER_PLAYERWINDOW_H

#include "player/playback.h"
#include "player/playlist/playlistloader.h"
#include "player/screens/detailsscreen.h"
#include "player/screens/playingscreen.h"
#include "player/screens/playlistscreen.h"

#include <QPointer>
#include <QSet>
#include <QWidget>

class OpenDialog;
class QFileDialog;
class QStackedLayout;

/*
 * The player: screens that take turns over one Playback, in a window as large as the playing screen.
 *
 * It starts with the playing screen, whose closing closes the window; any other screen's closing leads back to it. A
 * screen that the skin has no section for is not shown. What cannot be played is told on stderr, once a file, and in
 * the title.
 */
class PlayerWindow : public QWidget
{
    Q_OBJECT

public:
    // The skin's name becomes the object name, by which the panels find their pictures.
    explicit PlayerWindow(const QString& skin, QWidget* parent = nullptr);
    ~PlayerWindow() override;

    // The names that the constructor finds a skin for, in alphabetical order.
    static QStringList skins();

    // False where the playing screen is not.
    bool isSkinned() const { return m_playing->isSkinned(); }

    Playback* playback() { return &m_playback; }
    PlaylistLoader* loader() { return &m_loader; }
    // The screen that shows, or will once the window does.
    Screen* currentScreen() const;
    PlayingScreen* playingScreen() const { return m_playing; }
    DetailsScreen* detailsScreen() const { return m_details; }
    PlaylistScreen* playlistScreen() const { return m_playlist; }
    // Those of the playing screen.
    SkinBase* panel() const { return m_playing->panel(); }
    SliderSkin* seekSlider() const { return m_playing->seekSlider(); }
    TimeSkin* timeDisplay() const { return m_playing->timeDisplay(); }
    VolumeSkin* volumePanel() const { return m_playing->volumePanel(); }
    const SeekControl* seekControl() const { return m_playing->seekControl(); }

public slots:
    // Let the user choose files or folders, to play or to add to the playlist, or a file to save the playlist in. They
    // return at once; a dialog that is open already is brought forward instead.
    void chooseFiles();
    void chooseMoreFiles();
    void chooseSaveFile();
    void showDetails();
    void showPlaylist();
    // Tells something in the title and on the screens: until the user does something, on the playing screen for a
    // while.
    void setNotice(const QString& notice);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void addScreen(Screen* screen);
    void showScreen(Screen* screen);
    void currentChanged();
    void fileFailed(const QString& file, const QString& reason);
    bool raiseDialog();
    void openDialog(QFileDialog* dialog);
    OpenDialog* createOpenDialog(const QString& title);
    void savePlaylist(const QString& file);
    void dialogClosed();
    void clearNotice();
    void updateTitle();

    // Before the screens, which use it to their end.
    Playback m_playback;
    PlaylistLoader m_loader{&m_playback};
    QStackedLayout* m_screens;
    PlayingScreen* m_playing;
    PlaylistScreen* m_playlist;
    DetailsScreen* m_details;
    QPointer<QFileDialog> m_dialog;
    // What the title tells besides the file, until the user does something.
    QString m_notice;
    // Told on stderr already, however often they are tried.
    QSet<QString> m_reportedFiles;
};

#endif
