#include "compare.h"
#include "skinbase/skinbase.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QTextStream>
#include <benchmark/benchmark.h>

#include <memory>

namespace
{

constexpr QSize panelSize(480, 272);
constexpr int buttonCount = 24;
constexpr QSize buttonSize(56, 48);

QImage gradient(const QSize& size, uchar alpha)
{
    QImage image(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgba(x, y, x ^ y, alpha));
    return image;
}

// A skin of the size of the smallest screen, with a row-and-column field of buttons.
class Skin
{
public:
    Skin()
    {
        qputenv("QPEDIR", m_directory.path().toUtf8());
        const QDir pictures(m_directory.filePath("pics/bench"));
        pictures.mkpath(".");
        gradient(panelSize, 255).save(pictures.filePath("background.png"));
        gradient(QSize(buttonSize.width() * 4, buttonSize.height()), 200).save(pictures.filePath("button.png"));
        QFile file(pictures.filePath("config"));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write the skin of the benchmark");
        QTextStream config(&file);
        config << "[Panel]\nbackground=background.png\nmaskimage=background.png\ncount=" << buttonCount << "\n";
        for (int i = 0; i < buttonCount; ++i)
            config << "[Panel_BUTTON" << i << "]\nname=b" << i << "\nimage=button.png\nxpos=" << 8 + i % 6 * 78
                   << "\nypos=" << 8 + i / 6 * 64 << "\nmask=ff0000ff\n";
    }

private:
    QTemporaryDir m_directory;
};

std::unique_ptr<SkinBase> loadedPanel()
{
    static const Skin skin;
    auto panel = std::make_unique<SkinBase>(nullptr, "bench");
    panel->do_configloading("Panel");
    panel->setAlphaOverride(255);
    return panel;
}

void showAndSettle(QWidget* widget)
{
    widget->show();
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
}

// The least that painting these pixels can cost: one copy of one ready picture.
class PlainCopy : public QWidget
{
public:
    PlainCopy()
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        resize(panelSize);
    }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).drawImage(0, 0, m_picture); }

private:
    QImage m_picture = gradient(panelSize, 255).convertToFormat(QImage::Format_RGB32);
};

void panelRepaint(benchmark::State& state)
{
    const auto panel = loadedPanel();
    showAndSettle(panel.get());
    for (auto _ : state)
        panel->QWidget::repaint();
}

void plainCopyRepaint(benchmark::State& state)
{
    PlainCopy copy;
    showAndSettle(&copy);
    for (auto _ : state)
        copy.repaint();
}

void panelAlpha(benchmark::State& state)
{
    const auto panel = loadedPanel();
    uchar alpha = 0;
    for (auto _ : state)
        panel->setAlphaOverride(alpha++);
}

void panelPress(benchmark::State& state)
{
    const auto panel = loadedPanel();
    showAndSettle(panel.get());
    for (auto _ : state) {
        panel->pressButton("b3");
        QCoreApplication::processEvents();
        panel->releaseButton("b3");
        QCoreApplication::processEvents();
    }
}

void panelLoad(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(loadedPanel());
}

BENCHMARK(panelRepaint)->Unit(benchmark::kMicrosecond);
BENCHMARK(plainCopyRepaint)->Unit(benchmark::kMicrosecond);
BENCHMARK(panelAlpha)->Unit(benchmark::kMicrosecond);
BENCHMARK(panelPress)->Unit(benchmark::kMicrosecond);
BENCHMARK(panelLoad)->Unit(benchmark::kMicrosecond);

const bool repaintCompared =
    compare({"panel repaint, 480x272, 24 buttons / plain copy", "panelRepaint", "plainCopyRepaint", 3.0});

} // namespace
