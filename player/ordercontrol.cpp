#include "player/ordercontrol.h"

#include "controls/imagebutton.h"
#include "player/playback.h"

namespace
{

void show(ImageButton* button, bool on)
{
    if (button->toggledState() != on)
        button->changeToggleState(on);
}

} // namespace

OrderControl::OrderControl(Playback* playback, ImageButton* shuffle, ImageButton* repeat) : m_playback(playback)
{
    if (shuffle) {
        show(shuffle, playback->isShuffled());
        connect(shuffle, &ImageButton::toggled, playback, &Playback::setShuffled);
        connect(playback, &Playback::shuffledChanged, shuffle, [shuffle](bool on) { show(shuffle, on); });
    }
    if (repeat) {
        show(repeat, playback->isRepeated());
        connect(repeat, &ImageButton::toggled, playback, &Playback::setRepeated);
        connect(playback, &Playback::repeatedChanged, repeat, [repeat](bool on) { show(repeat, on); });
    }
}

void OrderControl::toggleShuffle()
{
    m_playback->setShuffled(!m_playback->isShuffled());
}

void OrderControl::toggleRepeat()
{
    m_playback->setRepeated(!m_playback->isRepeated());
}
