#include "compare.h"
#include "skinbase/skinbase.h"
#include "stage.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QPushButton>
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

QRect buttonPlace(int number)
{
    return {QPoint(8 + number % 6 * 78, 8 + number / 6 * 64), buttonSize};
}

QRgb buttonMask(int number)
{
    return qRgb(number, 255, 0);
}

QImage maskPicture()
{
    QImage mask(panelSize, QImage::Format_RGB32);
    mask.fill(Qt::black);
    QPainter painter(&mask);
    for (int i = 0; i < buttonCount; ++i)
        painter.fillRect(buttonPlace(i), QColor(buttonMask(i)));
    return mask;
}

// A skin of the size of the smallest screen, with a row-and-column field of buttons. Each button has its own picture
// file, as it has in a real skin. The style sheet of the other side needs the pictures of a strip one by one.
class Skin
{
public:
    Skin()
    {
        qputenv("QPEDIR", m_directory.path().toUtf8());
        QDir(m_directory.path()).mkpath(QStringLiteral("pics/bench"));
        gradient(panelSize, 255).save(path("background.png"));
        maskPicture().save(path("mask.png"));
        const QImage strip = gradient(QSize(buttonSize.width() * 4, buttonSize.height()), 200);
        for (int i = 0; i < buttonCount; ++i)
            strip.save(path("button%1.png", i));
        for (int k = 0; k < 4; ++k)
            strip.copy(QRect(QPoint(k * buttonSize.width(), 0), buttonSize)).save(path("state%1.png", k));
        writeConfig();
    }

    QString path(const char* file) const { return m_directory.filePath(QLatin1String("pics/bench/") + file); }
    QString path(const char* file, int number) const { return path(file).arg(number); }

private:
    void writeConfig() const
    {
        QFile file(path("config"));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write the skin of the benchmark");
        QTextStream config(&file);
        config << "[Panel]\nbackground=background.png\nmaskimage=mask.png\ncount=" << buttonCount << "\n";
        for (int i = 0; i < buttonCount; ++i)
            config << "[Panel_BUTTON" << i << "]\nname=b" << i << "\nimage=button" << i
                   << ".png\nxpos=" << buttonPlace(i).x() << "\nypos=" << buttonPlace(i).y()
                   << "\nmask=" << QString::number(buttonMask(i), 16) << "\n";
    }

    QTemporaryDir m_directory;
};

const Skin& skin()
{
    static const Skin one;
    return one;
}

std::unique_ptr<SkinBase> loadedPanel()
{
    skin();
    auto panel = std::make_unique<SkinBase>(nullptr, "bench");
    panel->do_configloading("Panel");
    panel->setAlphaOverride(255);
    return panel;
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

// A window with the same pictures: buttons that a style sheet dresses, on a background picture.
class StyledPanel : public QWidget
{
public:
    StyledPanel()
    {
        setObjectName(QStringLiteral("panel"));
        setAttribute(Qt::WA_StyledBackground);
        resize(panelSize);
        setStyleSheet(QStringLiteral("#panel { background: url(%1); }"
                                     "QPushButton { border: none; background: url(%2); }"
                                     "QPushButton:focus { background: url(%4); }"
                                     "QPushButton:pressed { background: url(%3); }"
                                     "QPushButton:disabled { background: url(%5); }")
                          .arg(skin().path("background.png"), skin().path("state%1.png", 0),
                               skin().path("state%1.png", 1), skin().path("state%1.png", 2),
                               skin().path("state%1.png", 3)));
        for (int i = 0; i < buttonCount; ++i) {
            auto* const button = new QPushButton(this);
            button->setGeometry(buttonPlace(i));
            m_buttons.append(button);
        }
    }

    QPushButton* button(int number) const { return m_buttons.at(number); }

private:
    QList<QPushButton*> m_buttons;
};

// A press and its release, with everything painted that each of them asks for. target takes the events.
void pressAndRelease(benchmark::State& state, QWidget* target, const QPointF& at, const int& clicks)
{
    const PaintCounter paints(target);
    for (auto _ : state) {
        sendMouse(target, QEvent::MouseButtonPress, at);
        QCoreApplication::sendPostedEvents();
        sendMouse(target, QEvent::MouseButtonRelease, at);
        QCoreApplication::sendPostedEvents();
    }
    if (clicks < state.iterations() || paints.count() < 2 * state.iterations())
        state.SkipWithError("the button is not clicked or not painted");
}

// From the middle of the panel, so that the margin that is repainted with a button is of middle size, too.
constexpr int pressedButton = 8;

void panelPress(benchmark::State& state)
{
    const auto panel = loadedPanel();
    showAndSettle(panel.get());
    int clicks = 0;
    QObject::connect(panel.get(), &SkinBase::button_clicked, panel.get(), [&] { ++clicks; });
    pressAndRelease(state, panel.get(), buttonPlace(pressedButton).center(), clicks);
}

void styledPanelPress(benchmark::State& state)
{
    const StyledPanel panel;
    QPushButton* const button = panel.button(pressedButton);
    showAndSettle(button->window());
    int clicks = 0;
    QObject::connect(button, &QPushButton::clicked, button, [&] { ++clicks; });
    pressAndRelease(state, button, button->rect().center(), clicks);
}

void panelAlpha(benchmark::State& state)
{
    const auto panel = loadedPanel();
    uchar alpha = 0;
    for (auto _ : state)
        panel->setAlphaOverride(alpha++);
}

// Every pixel that has to be composed anew for another alpha is copied once: the background and all state pictures.
void plainCopyOfPictures(benchmark::State& state)
{
    const QImage background = gradient(panelSize, 255);
    const QImage picture = gradient(buttonSize, 200);
    for (auto _ : state) {
        benchmark::DoNotOptimize(background.copy());
        for (int i = 0; i < buttonCount * 4; ++i)
            benchmark::DoNotOptimize(picture.copy());
    }
}

// The same pictures laid over the background, which is what makes up most of the work.
void plainBlendOfPictures(benchmark::State& state)
{
    const QImage background = gradient(panelSize, 255).convertToFormat(QImage::Format_RGB32);
    const QImage picture = gradient(buttonSize, 200);
    for (auto _ : state) {
        benchmark::DoNotOptimize(background.copy());
        for (int i = 0; i < buttonCount; ++i)
            for (int k = 0; k < 4; ++k) {
                QImage composed = background.copy(buttonPlace(i));
                QPainter(&composed).drawImage(0, 0, picture);
                benchmark::DoNotOptimize(composed);
            }
    }
}

void panelLoad(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(loadedPanel());
}

// The files of the skin are decoded and nothing is done with them.
void plainLoad(benchmark::State& state)
{
    const Skin& files = skin();
    for (auto _ : state) {
        benchmark::DoNotOptimize(QImage(files.path("background.png")));
        benchmark::DoNotOptimize(QImage(files.path("mask.png")));
        for (int i = 0; i < buttonCount; ++i)
            benchmark::DoNotOptimize(QImage(files.path("button%1.png", i)));
    }
}

// Style sheet and buttons, ready to be shown. Qt keeps pictures of a style sheet, so only the first one decodes them.
void styledPanelLoad(benchmark::State& state)
{
    for (auto _ : state) {
        const StyledPanel panel;
        panel.ensurePolished();
        for (int i = 0; i < buttonCount; ++i)
            panel.button(i)->ensurePolished();
    }
}

BENCHMARK(panelRepaint)->Unit(benchmark::kMicrosecond);
BENCHMARK(plainCopyRepaint)->Unit(benchmark::kMicrosecond);
BENCHMARK(panelPress)->Unit(benchmark::kMicrosecond);
BENCHMARK(styledPanelPress)->Unit(benchmark::kMicrosecond);
BENCHMARK(panelAlpha)->Unit(benchmark::kMicrosecond);
BENCHMARK(plainCopyOfPictures)->Unit(benchmark::kMicrosecond);
BENCHMARK(plainBlendOfPictures)->Unit(benchmark::kMicrosecond);
BENCHMARK(panelLoad)->Unit(benchmark::kMicrosecond);
BENCHMARK(plainLoad)->Unit(benchmark::kMicrosecond);
BENCHMARK(styledPanelLoad)->Unit(benchmark::kMicrosecond);

const bool repaintCompared =
    compare({"panel repaint, 480x272, 24 buttons / plain copy", "panelRepaint", "plainCopyRepaint", 3.0});
const bool pressCompared = compare({"button press / QPushButton, sheet", "panelPress", "styledPanelPress"});
const bool alphaCompared = compare({"setAlphaOverride / plain copy", "panelAlpha", "plainCopyOfPictures"});
const bool blendCompared = compare({"setAlphaOverride / QPainter's blending", "panelAlpha", "plainBlendOfPictures"});
const bool loadCompared = compare({"panel load / decoding its pictures", "panelLoad", "plainLoad"});
const bool styledLoadCompared = compare({"panel load / 24 QPushButtons, sheet", "panelLoad", "styledPanelLoad"});

} // namespace
