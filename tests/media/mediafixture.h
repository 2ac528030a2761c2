#ifndef SKINWIDGETS_TESTS_MEDIA_MEDIAFIXTURE_H
#define SKINWIDGETS_TESTS_MEDIA_MEDIAFIXTURE_H

#include "media/sliderskin.h"
#include "quiettest.h"
#include "widgetfixture.h"

#include <QPaintEvent>
#include <QPointer>
#include <QStringList>

#include <memory>

// What the tests of the media widgets share: one list for everything that happens, sliders whose data is in the open,
// and skins whose places are round numbers.
namespace mediatest
{

using namespace widgettest;

// A test class with an installation of their own for all its tests.
class InstalledTest : public QuietTest
{
protected:
    // The skins that the tests find installed.
    virtual void installSkins() = 0;

    void setUp() override
    {
        installation = std::make_unique<Installation>();
        installSkins();
    }
    void tearDown() override { installation.reset(); }

    std::unique_ptr<Installation> installation;
};

// One list in which signals of all senders, repaints and calls of virtual operations stand in the order in which they
// happened.
class Recorder : public QObject
{
public:
    QStringList log;

    // The signals of a slider; who stands before each line.
    void watchSignals(SliderSkin* slider, const QString& who = {})
    {
        connect(slider, &SliderSkin::valueChanged, this,
                [this, who](unsigned int value) { add(who + QStringLiteral("valueChanged(%1)").arg(value)); });
        connect(slider, &SliderSkin::sliderPressed, this, [this, who] { add(who + "sliderPressed()"); });
        connect(slider, &SliderSkin::sliderMoved, this,
                [this, who](int value) { add(who + QStringLiteral("sliderMoved(%1)").arg(value)); });
        connect(slider, &SliderSkin::seekReleased, this,
                [this, who](unsigned int value) { add(who + QStringLiteral("seekReleased(%1)").arg(value)); });
    }
    // Every rectangle of every paint event of a widget.
    void watchPaints(QWidget* widget) { widget->installEventFilter(this); }
    void add(const QString& line) { log << line; }
    QStringList take() { return std::exchange(log, {}); }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            for (const QRect& rect : static_cast<QPaintEvent*>(event)->region())
                add("paint " + rectText(rect));
        return false;
    }
};

// A slider whose data is in the open. With a trace it also tells which of its virtual operations are called.
class Slider : public SliderSkin
{
public:
    using SliderSkin::SliderSkin;

    using SliderSkin::alphaOverride;
    using SliderSkin::backgroundImage;
    using SliderSkin::backImage;
    using SliderSkin::barImage;
    using SliderSkin::barPressedImage;
    using SliderSkin::clickOffset;
    using SliderSkin::configured;
    using SliderSkin::fillImage;
    using SliderSkin::grooveImage;
    using SliderSkin::markerImages;
    using SliderSkin::markers;
    using SliderSkin::orient;
    using SliderSkin::prevValue;
    using SliderSkin::sliderPos;
    using SliderSkin::sliderStartVal;
    using SliderSkin::sliderVal;
    using SliderSkin::state;

    using SliderSkin::paintEvent;
    using SliderSkin::rangeChange;
    using SliderSkin::valueChange;

    struct Blit {
        QImage picture;
        QRect area;
        QRect pictureRect;
        QImage before;
        int depth;
    };

    Recorder* trace = nullptr;
    QList<Blit> blits;
    QList<QImage> composed;
    int maskUpdates = 0;

    void setState(int number) { state = static_cast<decltype(state)>(number); }

    void setValue(int v) override
    {
        tell(QStringLiteral("setValue(%1)").arg(v));
        SliderSkin::setValue(v);
    }
    void redrawButtonImages() override
    {
        tell(QStringLiteral("redrawButtonImages()"));
        SliderSkin::redrawButtonImages();
    }
    void redrawImage(QImage& picture, int x, int y) override
    {
        tell("redrawImage " + rectText(QRect(QPoint(x, y), picture.size())));
        composed << picture;
        SliderSkin::redrawImage(picture, x, y);
    }
    void drawClippedImage(QPixmap* target, QImage picture, const QRect& area, const QRect& pictureRect) override
    {
        blits.append({picture, area, pictureRect, target->toImage(), target->depth()});
        SliderSkin::drawClippedImage(target, picture, area, pictureRect);
    }
    void updateMask() override
    {
        ++maskUpdates;
        tell(QStringLiteral("updateMask() at %1").arg(sliderPos));
        SliderSkin::updateMask();
    }

private:
    void tell(const QString& line)
    {
        if (trace)
            trace->add(line);
    }
};

// Two pictures side by side, and as many columns more as wanted.
inline QImage halves(const QImage& left, const QImage& right, int surplus = 0)
{
    QImage picture(left.width() + right.width() + surplus, left.height(), QImage::Format_ARGB32);
    picture.fill(0xff123456);
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x)
            picture.setPixel(x, y, left.pixel(x, y));
        for (int x = 0; x < right.width(); ++x)
            picture.setPixel(left.width() + x, y, right.pixel(x, y));
    }
    return picture;
}

// The skin of a window with sliders whose bars move over 190 pixels: "Seek" lies, 200 x 20 with a bar of 10 x 12,
// "Level" stands, 20 x 200 with a bar of 12 x 10. No two pixels of a picture are equal, and none of two pictures.
struct SliderSkins {
    static constexpr int span = 190;

    static QImage groove() { return pattern(200, 20, 10); }
    static QImage fill() { return pattern(200, 20, 20); }
    static QImage bar() { return pattern(10, 12, 30); }
    static QImage barPressed() { return pattern(10, 12, 40); }
    static QImage standingGroove() { return pattern(20, 200, 50); }
    static QImage standingFill() { return pattern(20, 200, 60); }
    static QImage standingBar() { return pattern(12, 10, 70); }
    static QImage standingBarPressed() { return pattern(12, 10, 80); }
    static QImage marker(int kind)
    {
        const QSize sizes[] = {{6, 4}, {7, 5}, {15, 20}};
        return pattern(sizes[kind].width(), sizes[kind].height(), 90 + 10 * kind);
    }

    static void install(const Installation& installation, const QString& window = QStringLiteral("player"))
    {
        installation.picture(window, "seek_back.png", halves(groove(), fill()));
        installation.picture(window, "seek_bar.png", halves(bar(), barPressed()));
        installation.picture(window, "level_back.png", halves(standingGroove(), standingFill()));
        installation.picture(window, "level_bar.png", halves(standingBar(), standingBarPressed()));
        for (int kind = 0; kind < 3; ++kind)
            installation.picture(window, QStringLiteral("marker_%1.png").arg(kind + 1), marker(kind));
        installation.config(window, "[Seek]\nback_image = seek_back.png\nbar_image = seek_bar.png\n"
                                    "marker_1 = marker_1.png\nmarker_2 = marker_2.png\nmarker_3 = marker_3.png\n"
                                    "[Level]\nback_image = level_back.png\nbar_image = level_bar.png\n"
                                    "marker_1 = marker_1.png\nmarker_2 = marker_2.png\nmarker_3 = marker_3.png\n");
    }
};

// A shown window with one of the sliders of SliderSkins, range 0 to 19, so that value v stands at pixel 10 v.
class SliderStage
{
public:
    explicit SliderStage(const char* group = "Seek") : slider(&window, group)
    {
        slider.setRange(0, 19);
        slider.setSteps(1, 3);
    }

    // From here on everything is recorded.
    bool begin()
    {
        if (!window.expose())
            return false;
        recorder.watchSignals(&slider);
        recorder.watchPaints(&slider);
        return true;
    }
    // The same with an active slider that shows a value.
    bool begin(int value)
    {
        slider.setValue(value);
        return begin();
    }
    QStringList take() { return recorder.take(); }
    // Where the bar's leading edge is reached by a coordinate along the axis.
    QPoint at(int along, int across = 5) const
    {
        return slider.orient == 0 ? QPoint(along, across) : QPoint(across, along);
    }

    Window window;
    Recorder recorder;
    Slider slider;
};

} // namespace mediatest

#endif
