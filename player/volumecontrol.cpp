#include "player/volumecontrol.h"

#include "media/volumeskin.h"
#include "player/playback.h"

namespace
{

constexpr int pageStep = 10;

} // namespace

VolumeControl::VolumeControl(Playback* playback, VolumeSkin* panel) : m_playback(playback), m_panel(panel)
{
    m_releasedTimer.setObjectName(QStringLiteral("volume released"));
    m_releasedTimer.setSingleShot(true);
    connect(&m_releasedTimer, &QTimer::timeout, this, &VolumeControl::showVolume);
    connect(playback, &Playback::volumeChanged, this, &VolumeControl::showVolume);
    if (!panel)
        return;
    connect(panel, &VolumeSkin::app_volumes, this, &VolumeControl::takeVolume);
    connect(panel, &VolumeSkin::app_mute, playback, &Playback::setMuted);
    panel->set_volumeRange(0, 100, pageStep);
    showVolume();
}

void VolumeControl::changeBy(int steps)
{
    m_playback->setVolume(m_playback->volume() + steps);
}

void VolumeControl::toggleMute()
{
    if (m_playback->volume() == 0)
        return;
    const bool mute = !m_playback->isMuted();
    if (m_panel)
        m_panel->button_event(m_panel, mute ? QStringLiteral("mute_off") : QStringLiteral("mute_on"));
    else
        m_playback->setMuted(mute);
}

void VolumeControl::takeVolume(unsigned int volume)
{
    m_playback->setVolume(static_cast<int>(volume));
    // The panel takes no level before it has told everybody of the slider's release.
    m_releasedTimer.start(0);
}

void VolumeControl::showVolume()
{
    if (m_panel)
        m_panel->set_volumeValue(static_cast<unsigned int>(m_playback->volume()));
}
