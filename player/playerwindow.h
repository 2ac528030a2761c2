#ifndef SKINWIDGETS_PLAYER_PLAYERWINDOW_H
#define SKINWIDGETS_PLAYER_PLAYERWINDOW_H

#include "player/playback.h"

#include <QHash>
#include <QPointer>
#include <QSet>
#include <QWidget>

#include <functional>

class QFileDialog;
class SkinBase;

/*
 * The player: one panel from the section Player of a skin, as large as its background, over a Playback.
 *
 * The skin supplies the buttons prev, play, pause, stop, next and open. Play and pause take turns: the one that does
 * not apply is hidden, and the keyboard focus passes to the one that takes its place. With a single file prev and next
 * are disabled. What cannot be played is told on stderr, once a file, and in the title. The panel has the keyboard
 * focus, and play or pause is its first focused button. Escape closes.
 */
class PlayerWindow : public QWidget
{
    Q_OBJECT

public:
    // The skin's name becomes the object name, by which the panel finds its pictures.
    explicit PlayerWindow(const QString& skin, QWidget* parent = nullptr);

    // The names that the constructor finds a skin for, in alphabetical order.
    static QStringList skins();

    // False where the skin has no section Player or its background cannot be read.
    bool isSkinned() const;

    SkinBase* panel() const { return m_panel; }
    Playback* playback() { return &m_playback; }

public slots:
    // Lets the user choose files, which then play. Returns at once; a dialog that is open already is brought forward.
    void chooseFiles();

protected:
    void showEvent(QShowEvent* event) override;

private:
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
    Playback m_playback;
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
