#include "compare.h"
#include "media/sliderskin.h"
#include "stage.h"

#include <QCoreApplication>
#include <QPainter>
#include <QSlider>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace
{

constexpr QSize grooveSize(440, 30);
constexpr QSize barSize(24, 30);
constexpr int mostValue = 400;

QImage halves(const QSize& half, uchar alpha, int hue)
{
    QImage image(half.width() * 2, half.height(), QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgba(x & 255, y * 8, x < half.width() ? hue : 255 - hue, alpha));
    return image;
}

// The same pixels for both: strips for ours, single pictures for the style sheet.
class Pictures
{
public:
    Pictures()
    {
        save(halves(grooveSize, 255, 40), "back");
        save(halves(barSize, 200, 90), "bar");
    }
    QString path(const QString& name) const { return m_directory.filePath(name + ".png"); }

private:
    void save(const QImage& strip, const QString& name)
    {
        const int width = strip.width() / 2;
        strip.save(path(name));
        strip.copy(0, 0, width, strip.height()).save(path(name + "0"));
        strip.copy(width, 0, width, strip.height()).save(path(name + "1"));
    }

    QTemporaryDir m_directory;
};

const Pictures& pictures()
{
    static const Pictures all;
    return all;
}

QString styleSheet()
{
    return QStringLiteral("QSlider::groove:horizontal { border-image: url(%1); height: %4px; }"
                          "QSlider::sub-page:horizontal { border-image: url(%2); }"
                          "QSlider::handle:horizontal { border-image: url(%3); width: %5px; margin: 0; }")
        .arg(pictures().path("back0"), pictures().path("back1"), pictures().path("bar1"))
        .arg(grooveSize.height())
        .arg(barSize.width());
}

// One step: the pointer moves by a pixel, and everything that this asks for is painted.
void dragToAndFro(benchmark::State& state, QWidget* slider)
{
    showAndSettle(slider);
    sendMouse(slider, QEvent::MouseButtonPress, QPoint(barSize.width() / 2, 15));
    int x = 0;
    int step = 1;
    for (auto _ : state) {
        x += step;
        if (x == mostValue || x == 0)
            step = -step;
        sendMouse(slider, QEvent::MouseMove, QPoint(barSize.width() / 2 + x, 15));
        QCoreApplication::sendPostedEvents();
    }
    sendMouse(slider, QEvent::MouseButtonRelease, QPoint(barSize.width() / 2 + x, 15));
}

void sliderDragStep(benchmark::State& state)
{
    SliderSkin slider(pictures().path("back"), pictures().path("bar"));
    slider.setValueInit(0, mostValue, 10);
    slider.setValue(0);
    dragToAndFro(state, &slider);
}

void styledSliderDragStep(benchmark::State& state)
{
    QSlider slider(Qt::Horizontal);
    slider.setStyleSheet(styleSheet());
    slider.setRange(0, mostValue);
    slider.resize(grooveSize);
    dragToAndFro(state, &slider);
}

BENCHMARK(sliderDragStep)->Unit(benchmark::kMicrosecond);
BENCHMARK(styledSliderDragStep)->Unit(benchmark::kMicrosecond);

const bool dragCompared =
    compare({"slider drag step, 440x30 / QSlider, style sheet", "sliderDragStep", "styledSliderDragStep", 1.0 / 3});

} // namespace
