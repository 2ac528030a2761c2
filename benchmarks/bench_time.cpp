#include "compare.h"
#include "media/timeskin.h"
#include "stage.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QTemporaryDir>
#include <QTime>
#include <benchmark/benchmark.h>

namespace
{

constexpr QSize figureSize(20, 36);
constexpr int colonWidth = 10;
// Six figures, two colons and seven gaps.
constexpr QSize displaySize(6 * figureSize.width() + 2 * colonWidth + 7, figureSize.height());

QImage picture(int width)
{
    QImage image(width, figureSize.height(), QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgba(x & 255, y * 7, 90, 180));
    return image;
}

class Skin
{
public:
    Skin()
    {
        QDir(m_directory.path()).mkpath(QStringLiteral("pics/bench"));
        picture(figureSize.width() * 10).save(path("numbers.png"));
        picture(colonWidth).save(path("colon.png"));
        picture(displaySize.width()).save(path("ground.png"));
        QFile config(path("config"));
        if (!config.open(QIODevice::WriteOnly))
            qFatal("cannot write the skin of the benchmark");
        config.write("[Time]\nnumber_image=numbers.png\ncolon_image=colon.png\nspacing=1\n");
    }

    QString root() const { return m_directory.path(); }
    QString path(const char* file) const { return m_directory.filePath(QLatin1String("pics/bench/") + file); }

private:
    QTemporaryDir m_directory;
};

const Skin& skin()
{
    static const Skin one;
    return one;
}

// A second passes, and everything that this asks for is painted.
template <class Show>
void tick(benchmark::State& state, QWidget* display, const Show& show)
{
    showAndSettle(display->window());
    const PaintCounter paints(display);
    unsigned int seconds = 0;
    for (auto _ : state) {
        seconds = (seconds + 1) % (24 * 60 * 60);
        show(seconds);
        QCoreApplication::sendPostedEvents();
    }
    if (paints.count() < state.iterations())
        state.SkipWithError("the display is not painted");
}

void timeTick(benchmark::State& state)
{
    QWidget window;
    window.setObjectName(QStringLiteral("bench"));
    const QByteArray before = qgetenv("QPEDIR");
    qputenv("QPEDIR", skin().root().toUtf8());
    auto* const display = new TimeSkin(&window, "Time");
    qputenv("QPEDIR", before);
    display->setAlphaOverride(255);
    if (display->size() != displaySize)
        state.SkipWithError("the display has no figures");
    window.resize(displaySize);
    tick(state, display, [display](unsigned int seconds) { display->update_time(seconds); });
}

void styledLabelTick(benchmark::State& state)
{
    QLabel label;
    label.setStyleSheet(QStringLiteral("QLabel { background: url(%1); font: 28px; }").arg(skin().path("ground.png")));
    label.setAlignment(Qt::AlignCenter);
    label.resize(displaySize);
    tick(state, &label, [&label](unsigned int seconds) {
        label.setText(QTime(0, 0).addSecs(int(seconds)).toString(QStringLiteral("HH:mm:ss")));
    });
}

BENCHMARK(timeTick)->Unit(benchmark::kMicrosecond);
BENCHMARK(styledLabelTick)->Unit(benchmark::kMicrosecond);

const bool tickCompared = compare({"time tick, 147x36 / QLabel, sheet", "timeTick", "styledLabelTick"});

} // namespace
