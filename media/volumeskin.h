#ifndef SKINWIDGETS_MEDIA_VOLUMESKIN_H
#define SKINWIDGETS_MEDIA_VOLUMESKIN_H

#include "skinbase/skinbase.h"

class SliderSkin;

/*
 * A volume panel: a level slider and two buttons that take turns, "mute_off" while sound is on and "mute_on" while it
 * is muted or the level is 0.
 *
 * What a skin supplies: the panel's own group, named by its object name, as SkinBase describes it, with buttons of
 * these names; and the group NAME_SLIDER:
 *
 *     back_image, bar_image   picture files, the slider's strips as SliderSkin describes them
 *     xpos, ypos              top-left corner of the slider on the panel in pixels, -1 where missing
 *
 * A skin without that group gives a slider without size at (-1, -1). After construction the slider is inactive and
 * both buttons are as the skin left them, until set_volumeValue() is called. Any signal's receiver may delete the panel
 * or its slider; a panel without slider stands at level 0.
 */
class SKINWIDGETS_EXPORT VolumeSkin : public SkinBase
{
    Q_OBJECT

public:
    // Loads the groups of its object name.
    explicit VolumeSkin(QWidget* parent = nullptr, const char* name = nullptr, unsigned int flags = 0);
    ~VolumeSkin() override;

    // Creates the slider from the group name + "_SLIDER" in place of the one before; init_event() connects it. Both are
    // the constructor's work.
    void init_volumeskin(QString name);
    void init_event();

    // Range and page step of the slider, as SliderSkin::setValueInit() takes them.
    void set_volumeRange(int min, int max, int pageStep);

    // Shows the button that fits muted state and level. A held mute button is released first, which counts as a click.
    void change_volumebutton();
    // Shows the button of a muted or sounding panel, until the next change of level or state.
    void change_muteButton(bool mute);

    void setAlphaOverride(unsigned char alpha) override;
    void setBackgroundPixmap(const QPixmap& pm) override;

signals:
    // The stylus let go of the slider at this level, which the panel shows already.
    void app_volumes(unsigned int volume);
    // A press of a mute button took the sound away or brought it back. Emitted before the buttons change.
    void app_mute(bool mute);

public slots:
    // Sets the level, bounded to the slider's range. Ignored while the stylus drags the slider. Emits no signal of the
    // panel. Counts as the int with the same bits, so that numbers beyond the ints are levels below 0.
    void set_volumeValue(unsigned int v);
    // Acts on a click: "mute_off" mutes, any other button brings the sound back. Clicks at level 0 do nothing.
    void button_event(const QObject* sender, const QString name);
    // Takes the keyboard focus over from the slider.
    bool eventFilter(QObject* obj, QEvent* e) override;

protected:
    // The child widget; null once somebody deleted it.
    SliderSkin* slider = nullptr;
    // The user muted the sound. A level of 0 alone does not.
    bool muted = false;

private:
    void forgetSlider();
    int level() const;
    bool releaseMuteButton();
    void switchButton(const QString& hidden, const QString& shown);
};

#endif
