#include "player/screens/playingscreen.h"

#include "media/sliderskin.h"
#include "media/timeskin.h"
#include "media/volumeskin.h"
#include "player/playback.h"
#include "player/seekcontrol.h"
#include "player/skinfiles.h"
#include "player/volumecontrol.h"
#include "skinbase/skinbase.h"

namespace
{

const QString playButton = QStringLiteral("play");
const QString pauseButton = QStringLiteral("pause");
const QString prevButton = QStringLiteral("prev");
const QString nextButton = QStringLiteral("next");

constexpr int volumeStep = 5;
constexpr qint64 seekStep = 10000;

} // namespace

PlayingScreen::PlayingScreen(Playback* playback, QWidget* parent) : Screen("Player", parent), m_playback(playback)
{
    createMediaWidgets();
    m_seek = std::make_unique<SeekControl>(playback, m_seekSlider, m_timeDisplay);
    m_volume = std::make_unique<VolumeControl>(playback, m_volumePanel);
    connect(playback, &Playback::playingChanged, this, &PlayingScreen::showPlayOrPause);
    connect(playback->playlist(), &Playlist::countChanged, this, [this](int count) { enableSteps(count > 1); });

    addButtons();
    addAllKeys();
    panel()->hideButton(pauseButton);
    panel()->showFocus(playButton);
    enableSteps(false);
}

PlayingScreen::~PlayingScreen() = default;

template <typename Widget>
Widget* PlayingScreen::createOnPanel(const Config& places, const QString& key, const char* group)
{
    if (!places.hasKey(key + QLatin1String("_x")) || !places.hasKey(key + QLatin1String("_y")))
        return nullptr;
    auto widget = std::make_unique<Widget>(panel(), group);
    if (widget->size().isEmpty())
        return nullptr;
    widget->move(skinfiles::point(places, key));
    widget->setAlphaOverride(255);
    widget->setBackgroundPixmap(*panel()->backgroundPixmap());
    return widget.release();
}

void PlayingScreen::createMediaWidgets()
{
    if (!panel()->backgroundPixmap())
        return;
    const Config places = skinfiles::group(this, QStringLiteral("Screen"));
    m_seekSlider = createOnPanel<SliderSkin>(places, QStringLiteral("seek"), "Seek");
    m_timeDisplay = createOnPanel<TimeSkin>(places, QStringLiteral("time"), "Time");
    m_volumePanel = createOnPanel<VolumeSkin>(places, QStringLiteral("volume"), "Volume");
}

void PlayingScreen::addButtons()
{
    addButton(prevButton, [this] { m_playback->previous(); });
    addButton(playButton, [this] { m_playback->play(); });
    addButton(pauseButton, [this] { m_playback->pause(); });
    addButton(QStringLiteral("stop"), [this] { m_playback->stop(); });
    addButton(nextButton, [this] { m_playback->next(); });
    addButton(QStringLiteral("open"), [this] { emit openRequested(); });
    addButton(QStringLiteral("playlist"), [this] { emit playlistRequested(); });
    addButton(QStringLiteral("details"), [this] { emit detailsRequested(); });
}

void PlayingScreen::addAllKeys()
{
    addKeys({Qt::Key_Escape}, Once, [this] { emit closeRequested(); });
    addKeys({Qt::Key_P}, Once, [this] { emit playlistRequested(); });
    addKeys({Qt::Key_I}, Once, [this] { emit detailsRequested(); });
    addKeys({Qt::Key_PageUp, Qt::SHIFT | Qt::Key_Left}, WhileHeld, [this] { m_seek->seekBy(-seekStep); });
    addKeys({Qt::Key_PageDown, Qt::SHIFT | Qt::Key_Right}, WhileHeld, [this] { m_seek->seekBy(seekStep); });
    addKeys({Qt::Key_Up}, WhileHeld, [this] { m_volume->changeBy(volumeStep); });
    addKeys({Qt::Key_Down}, WhileHeld, [this] { m_volume->changeBy(-volumeStep); });
    addKeys({Qt::Key_M}, Once, [this] { m_volume->toggleMute(); });
    addKeys({Qt::Key_B, Qt::Key_Insert}, Once, [this] { m_seek->setBookmark(); });
    addKeys({Qt::Key_Delete, Qt::Key_Backspace}, Once, [this] { m_seek->removeNearestBookmark(); });
    addKeys({Qt::SHIFT | Qt::Key_Delete, Qt::SHIFT | Qt::Key_Backspace}, Once,
            [this] { m_seek->removeAllBookmarks(); });
}

void PlayingScreen::showPlayOrPause(bool playing)
{
    if (m_showsPause == playing)
        return;
    m_showsPause = playing;
    const QString shown = playing ? pauseButton : playButton;
    const QString hidden = playing ? playButton : pauseButton;
    const bool hadFocus = panel()->getFocus() == hidden;
    // A held button is released by this and reports a click; it asks for what has happened already.
    panel()->hideButton(hidden);
    if (hadFocus)
        panel()->showFocus(shown);
    else
        panel()->showNormal(shown);
}

void PlayingScreen::enableSteps(bool enable)
{
    if (m_stepsEnabled == enable)
        return;
    m_stepsEnabled = enable;
    for (const QString& button : {prevButton, nextButton}) {
        if (enable)
            panel()->showNormal(button);
        else
            panel()->disableButton(button);
    }
}
