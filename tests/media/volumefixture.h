#ifndef SKINWIDGETS_TESTS_MEDIA_VOLUMEFIXTURE_H
#define SKINWIDGETS_TESTS_MEDIA_VOLUMEFIXTURE_H

#include "media/mediafixture.h"
#include "media/volumeskin.h"

// A volume panel of 120 x 40 pixels: its two buttons take turns at the left, its slider lies at (60, 14). The slider's
// bar moves over 40 pixels, so that with the range 0 to 10 value v stands at pixel 4 v.
namespace mediatest
{

struct VolumeSkins {
    static constexpr QRgb buttonMask = 0xffff8000;
    static constexpr QPoint button{10, 10};

    static QImage background(int alpha = 255) { return pattern(120, 40, 150, alpha); }
    // Every kind of alpha.
    static QImage shaded(int width, int height, int seed)
    {
        QImage picture(width, height, QImage::Format_ARGB32);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                picture.setPixel(x, y, qRgba(4 * x, 20 * y, seed, (x + y) % 4 * 85));
        return picture;
    }
    static QImage groove() { return shaded(50, 12, 10); }
    static QImage fill() { return shaded(50, 12, 20); }
    static QImage bar() { return shaded(10, 8, 30); }
    static QImage barPressed() { return shaded(10, 8, 40); }
    static QImage muteOff() { return strip(20, 20, {0xff110000, 0xff220000, 0xff330000, 0xff440000}); }
    static QImage muteOn() { return strip(20, 20, {0xff001100, 0xff002200, 0xff003300, 0xff004400}); }

    static constexpr auto panelGroups = "[Volume]\nbackground = bg.png\nmaskimage = mask.png\ncount = 2\n"
                                        "[Volume_BUTTON0]\nname = mute_off\nimage = off.png\nxpos = 4\nypos = 4\n"
                                        "mask = ffff8000\n"
                                        "[Volume_BUTTON1]\nname = mute_on\nimage = on.png\nxpos = 4\nypos = 4\n"
                                        "mask = ffff8000\n";
    static constexpr auto sliderGroup = "[Volume_SLIDER]\nback_image = back.png\nbar_image = bar.png\nxpos = 60\n"
                                        "ypos = 14\nmarker_1 = bar.png\n";

    static void install(const Installation& installation, const QString& window = QStringLiteral("player"))
    {
        QImage mask = plain(120, 40, 0xff000000);
        for (int y = 4; y < 24; ++y)
            for (int x = 4; x < 24; ++x)
                mask.setPixel(x, y, buttonMask);
        installation.picture(window, "bg.png", background());
        installation.picture(window, "mask.png", mask);
        installation.picture(window, "off.png", muteOff());
        installation.picture(window, "on.png", muteOn());
        installation.picture(window, "back.png", halves(groove(), fill()));
        installation.picture(window, "bar.png", halves(bar(), barPressed()));
        installation.config(window, QByteArray(panelGroups) + sliderGroup);
    }
};

// A panel whose data is in the open. With a trace it also tells which of its virtual operations are called.
class Volume : public VolumeSkin
{
public:
    using VolumeSkin::VolumeSkin;

    using VolumeSkin::alphaOverride;
    using VolumeSkin::backgroundImage;
    using VolumeSkin::buttonHeld;
    using VolumeSkin::buttonMap;
    using VolumeSkin::muted;
    using VolumeSkin::slider;

    Recorder* trace = nullptr;
    std::function<void()> whenRebuilt;

    int state(const QString& name) const { return buttonMap.value(name)->state; }

    void hideButton(QString name) override
    {
        tell("hideButton(" + name + ")");
        VolumeSkin::hideButton(name);
    }
    void showFocus(QString name) override
    {
        tell("showFocus(" + name + ")");
        VolumeSkin::showFocus(name);
    }
    void redrawButtonImages() override
    {
        if (whenRebuilt)
            whenRebuilt();
        VolumeSkin::redrawButtonImages();
    }

private:
    void tell(const QString& line)
    {
        if (trace)
            trace->add(line);
    }
};

// The protected data of a slider that somebody else made.
struct OpenSlider : SliderSkin {
    static const QImage* background(const SliderSkin* slider) { return slider->*(&OpenSlider::backgroundImage); }
    static QImage groove(const SliderSkin* slider) { return slider->*(&OpenSlider::grooveImage); }
    static QImage fill(const SliderSkin* slider) { return slider->*(&OpenSlider::fillImage); }
    static QImage bar(const SliderSkin* slider) { return slider->*(&OpenSlider::barImage); }
    static QImage marker(const SliderSkin* slider) { return (slider->*(&OpenSlider::markerImages))[0]; }
    static int stateOf(const SliderSkin* slider) { return slider->*(&OpenSlider::state); }
    static int shown(const SliderSkin* slider) { return slider->*(&OpenSlider::sliderVal); }
    static int position(const SliderSkin* slider) { return slider->*(&OpenSlider::sliderPos); }
};

// A window with the panel, range 0 to 10, page step 2, in the state in which it was constructed.
class VolumeStage
{
public:
    VolumeStage() { panel.set_volumeRange(0, 10, 2); }

    // From here on everything but repaints is recorded.
    void begin()
    {
        panel.trace = &recorder;
        QObject::connect(&panel, &VolumeSkin::app_volumes, &recorder,
                         [this](unsigned int v) { recorder.add(QStringLiteral("app_volumes(%1)").arg(v)); });
        QObject::connect(&panel, &VolumeSkin::app_mute, &recorder,
                         [this](bool mute) { recorder.add(mute ? "app_mute(true)" : "app_mute(false)"); });
        QObject::connect(&panel, &SkinBase::button_clicked, &recorder,
                         [this](const QObject*, const QString& name) { recorder.add("button_clicked(" + name + ")"); });
        recorder.watchSignals(panel.slider, "slider: ");
    }
    // The same with a level set and the button that belongs to it shown.
    void begin(unsigned int level)
    {
        panel.set_volumeValue(level);
        begin();
    }
    QStringList take() { return recorder.take(); }
    QString shownButton() const
    {
        QStringList visible;
        for (const SkinButton* button : std::as_const(panel.buttonMap))
            if (button->state != Hidden)
                visible << button->name;
        return visible.join('+');
    }

    Window window;
    Recorder recorder;
    Volume panel{&window, "Volume"};
};

} // namespace mediatest

#endif
