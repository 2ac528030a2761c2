#include "volumepage.h"

#include "media/sliderskin.h"
#include "media/volumeskin.h"

#include <QLabel>

namespace
{

const char section[] = "Volume";
constexpr int loudest = 30;

} // namespace

class VolumePage::Example : public VolumeSkin
{
public:
    explicit Example(QWidget* parent) : VolumeSkin(parent, section)
    {
        setAlphaOverride(255);
        set_volumeRange(0, loudest, 5);
    }

    void click(const QString& button)
    {
        pressButton(button);
        releaseButton(button);
    }

    void hold(const QString& button) { pressButton(button); }
};

VolumePage::VolumePage(QWidget* parent)
    : Page(tr("Volume panel"),
           tr("A panel with a slider and two buttons of which one shows: the one that mutes while sound is on, the "
              "other one while it is muted or the level is 0."),
           parent)
{
    addExample(tr("Level 20, sound on"), 0, 0)->set_volumeValue(20);
    Example* const muted = addExample(tr("Level 12, muted by a click"), 0, 1);
    muted->set_volumeValue(12);
    muted->click(QStringLiteral("mute_off"));
    addExample(tr("Level 0"), 0, 2)->set_volumeValue(0);
    Example* const held = addExample(tr("Mute button held down"), 1, 0);
    held->set_volumeValue(16);
    held->hold(QStringLiteral("mute_off"));
    Example* const shown = addExample(tr("Shown as muted, level 30"), 1, 1);
    shown->set_volumeValue(loudest);
    shown->change_muteButton(true);
    addExample(tr("As built: no level yet"), 1, 2);
}

VolumePage::Example* VolumePage::addExample(const QString& caption, int row, int column)
{
    auto* const panel = new Example(addCard(caption, row, column));
    placeIn(panel);
    return panel;
}
