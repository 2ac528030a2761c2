#include "media/volumeskin.h"

#include "media/sliderskin.h"
#include "skinbase/skinreader.h"

#include <QEvent>
#include <QPointer>

#include <algorithm>

using skinwidgets::SkinReader;

namespace
{

// The button that is seen while the sound is off, and the one that is seen while it is on.
constexpr QLatin1String muteOn("mute_on");
constexpr QLatin1String muteOff("mute_off");

int boundedCoordinate(int number)
{
    return std::clamp(number, -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

} // namespace

VolumeSkin::VolumeSkin(QWidget* parent, const char* name, unsigned int flags) : SkinBase(parent, name, flags)
{
    setFocusPolicy(Qt::NoFocus);
    SkinBase::do_configloading(objectName());
    init_volumeskin(objectName());
    init_event();
}

VolumeSkin::~VolumeSkin()
{
    // The slider goes with the panel's other children, later than this class.
    if (slider)
        disconnect(slider, &QObject::destroyed, this, &VolumeSkin::forgetSlider);
}

void VolumeSkin::init_volumeskin(QString name)
{
    const QString sliderName = name + QLatin1String("_SLIDER");
    SkinReader skin(this);
    skin.setGroup(sliderName);
    const QString back = skin.picturePath(QStringLiteral("back_image"));
    const QString bar = skin.picturePath(QStringLiteral("bar_image"));
    delete slider;
    slider = new SliderSkin(back, bar, this, sliderName.toLatin1().constData());
    connect(slider, &QObject::destroyed, this, &VolumeSkin::forgetSlider);
    slider->move(boundedCoordinate(skin.number(QStringLiteral("xpos"))),
                 boundedCoordinate(skin.number(QStringLiteral("ypos"))));
    // A slider without size has nothing beneath it; a picture's null piece would be the whole picture.
    const QRect place = slider->geometry();
    slider->setBackgroundImage(backgroundImage && !place.isEmpty() ? backgroundImage->copy(place) : QImage());
    muted = false;
}

void VolumeSkin::init_event()
{
    if (slider) {
        slider->installEventFilter(this);
        // In this order: the panel shows the level before the application hears of it.
        connect(slider, SIGNAL(seekReleased(unsigned int)), this, SLOT(set_volumeValue(unsigned int)));
        connect(slider, SIGNAL(seekReleased(unsigned int)), this, SIGNAL(app_volumes(unsigned int)));
    }
    connect(this, SIGNAL(button_clicked(const QObject*, const QString)), this,
            SLOT(button_event(const QObject*, const QString)));
}

void VolumeSkin::set_volumeRange(int min, int max, int pageStep)
{
    if (slider)
        slider->setValueInit(min, max, pageStep);
}

void VolumeSkin::set_volumeValue(unsigned int v)
{
    const QPointer<VolumeSkin> self(this);
    // While the slider is dragged it takes no value, and has the one that the moves gave it.
    if (slider)
        slider->setValue(static_cast<int>(v));
    if (self)
        change_volumebutton();
}

void VolumeSkin::forgetSlider()
{
    slider = nullptr;
}

int VolumeSkin::level() const
{
    return slider ? slider->value() : 0;
}

void VolumeSkin::change_volumebutton()
{
    if (!releaseMuteButton())
        return;
    if (!muted && level() != 0)
        switchButton(muteOn, muteOff);
    else
        switchButton(muteOff, muteOn);
}

void VolumeSkin::change_muteButton(bool mute)
{
    if (!releaseMuteButton())
        return;
    if (mute)
        switchButton(muteOff, muteOn);
    else
        switchButton(muteOn, muteOff);
}

bool VolumeSkin::releaseMuteButton()
{
    // Changing a held button's state would release it, and the click could change what is to be shown.
    const QPointer<VolumeSkin> self(this);
    for (const QLatin1String name : {muteOn, muteOff}) {
        if (buttonHeld)
            releaseButton(name);
        if (!self)
            return false;
    }
    return true;
}

void VolumeSkin::switchButton(const QString& hidden, const QString& shown)
{
    hideButton(hidden);
    showFocus(shown);
    // The focus does not come to a button that has it already, nor away from a third one that is held.
    const SkinButton* button = buttonMap.value(shown);
    if (button && button->state == Hidden)
        showNormal(shown);
}

void VolumeSkin::button_event(const QObject* /*sender*/, const QString name)
{
    if (level() == 0)
        return;
    muted = name == muteOff;
    const QPointer<VolumeSkin> self(this);
    emit app_mute(muted);
    if (self)
        change_volumebutton();
}

bool VolumeSkin::eventFilter(QObject* obj, QEvent* e)
{
    if (slider && obj == slider && e->type() == QEvent::FocusIn)
        setFocus();
    return false;
}

void VolumeSkin::setAlphaOverride(unsigned char alpha)
{
    if (slider)
        slider->setAlphaOverride(alpha);
    SkinBase::setAlphaOverride(alpha);
}

void VolumeSkin::setBackgroundPixmap(const QPixmap& pm)
{
    SkinBase::setBackgroundPixmap(pm);
    // Intended: the same pixmap, though the slider takes the piece that lies at its place on the panel.
    if (slider)
        slider->setBackgroundPixmap(pm);
}
