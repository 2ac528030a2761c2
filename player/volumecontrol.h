#ifndef SKINWIDGETS_PLAYER_VOLUMECONTROL_H
#define SKINWIDGETS_PLAYER_VOLUMECONTROL_H

#include <QObject>
#include <QPointer>
#include <QTimer>

class Playback;
class VolumeSkin;

/* Keeps a volume panel and the volume of a playback at the same level, 0 to 100, and mutes by panel or by key. */
class VolumeControl : public QObject
{
    Q_OBJECT

public:
    // The panel belongs to somebody else and may be null. It shows the playback's volume at once.
    VolumeControl(Playback* playback, VolumeSkin* panel);

public slots:
    // Makes the sound louder or softer by this much. Muted sound stays muted.
    void changeBy(int steps);
    // Has the effect of a press of the panel's mute button: none where the volume is 0.
    void toggleMute();

private:
    void takeVolume(unsigned int volume);
    void showVolume();

    Playback* m_playback;
    QPointer<VolumeSkin> m_panel;
    QTimer m_releasedTimer;
};

#endif
