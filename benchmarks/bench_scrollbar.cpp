#include "compare.h"
#include "scroll/builtinpictures.h"
#include "scroll/scrollbarskin.h"
#include "stage.h"

#include <QCoreApplication>
#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace
{

// A trough of 360 pixels with a thumb of 60: 300 pixels to drag it over, a value for each.
constexpr QSize barSize(20, 400);
constexpr int mostValue = 300;
constexpr int page = 60;
constexpr int grip = 40;

// The library's own pictures as files, for the style sheet of the other bar.
class Pictures
{
public:
    Pictures()
    {
        for (const auto* record = skinwidgets::builtinPictures; record->data; ++record)
            save(record->name);
    }
    QString path(const char* name) const { return m_directory.filePath(QLatin1String(name) + ".png"); }

private:
    void save(const char* name)
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(skinwidgets::findBuiltinImage(name)) < 0)
            qFatal("cannot write %s", qPrintable(file.fileName()));
    }

    QTemporaryDir m_directory;
};

// Backgrounds that are repeated, not scaled: the cheapest rules that give about the same look.
QString styleSheet(const Pictures& pictures)
{
    return QStringLiteral("QScrollBar:vertical { background: url(%1) repeat-y; width: 20px; margin: 20px 0 20px 0;"
                          " border: none; }"
                          "QScrollBar::handle:vertical { background: url(%2) repeat-y; margin: 0 6px 0 6px; }"
                          "QScrollBar::sub-line:vertical { background: url(%3); height: 20px;"
                          " subcontrol-position: top; subcontrol-origin: margin; }"
                          "QScrollBar::add-line:vertical { background: url(%4); height: 20px;"
                          " subcontrol-position: bottom; subcontrol-origin: margin; }")
        .arg(pictures.path("scroll_bg_middle"), pictures.path("scroll_thumb_center_focus"),
             pictures.path("scroll_sub_normal"), pictures.path("scroll_add_normal"));
}

// One step: the pointer moves by a pixel, and everything that this asks for is painted.
void dragToAndFro(benchmark::State& state, QWidget* bar)
{
    bar->resize(barSize);
    showAndSettle(bar);
    sendMouse(bar, QEvent::MouseButtonPress, QPointF(barSize.width() / 2, grip));
    int y = 0;
    int step = 1;
    for (auto _ : state) {
        y += step;
        if (y == mostValue || y == 0)
            step = -step;
        sendMouse(bar, QEvent::MouseMove, QPointF(barSize.width() / 2, grip + y));
        QCoreApplication::sendPostedEvents();
    }
    sendMouse(bar, QEvent::MouseButtonRelease, QPointF(barSize.width() / 2, grip + y));
}

// A benchmark that measures nothing is worse than none.
void checkDragged(benchmark::State& state, int changes)
{
    if (changes < state.iterations())
        state.SkipWithError("the thumb does not follow the pointer");
}

void scrollBarDragStep(benchmark::State& state)
{
    ScrollBarSkin bar;
    bar.setSteps(1, page);
    bar.setRange(0, mostValue);
    int changes = 0;
    QObject::connect(&bar, &ScrollBarSkin::valueChanged, &bar, [&] { ++changes; });
    dragToAndFro(state, &bar);
    // Each value is told twice.
    checkDragged(state, changes / 2);
}

void styledScrollBarDragStep(benchmark::State& state)
{
    const Pictures pictures;
    QScrollBar bar(Qt::Vertical);
    bar.setStyleSheet(styleSheet(pictures));
    bar.setPageStep(page);
    bar.setRange(0, mostValue);
    int changes = 0;
    QObject::connect(&bar, &QScrollBar::valueChanged, &bar, [&] { ++changes; });
    dragToAndFro(state, &bar);
    checkDragged(state, changes);
}

BENCHMARK(scrollBarDragStep)->Unit(benchmark::kMicrosecond);
BENCHMARK(styledScrollBarDragStep)->Unit(benchmark::kMicrosecond);

const bool dragCompared = compare(
    {"scroll bar drag step, 20x400 / QScrollBar, sheet", "scrollBarDragStep", "styledScrollBarDragStep", 1.0 / 2});

} // namespace
