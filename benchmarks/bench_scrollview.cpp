#include "compare.h"
#include "scroll/scrollbarskin.h"
#include "scroll/scrollviewskin.h"
#include "stage.h"

#include <QCoreApplication>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <benchmark/benchmark.h>

#include <functional>

namespace
{

constexpr QSize viewSize(480, 272);
constexpr QSize childSize(420, 80);
// From one child to the next.
constexpr int distance = 100;
constexpr int step = 20;

class Child : public QWidget
{
public:
    Child(QWidget* parent, int number) : QWidget(parent), m_colour(QColor::fromHsv(number * 37 % 360, 160, 200))
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        resize(childSize);
    }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), m_colour); }

private:
    QColor m_colour;
};

// By a line at each step, to the end and back, with everything painted that this asks for. As many children are in
// sight for any number of them.
template <class Bar, class Extra>
void scrollSteps(benchmark::State& state, Bar* bar, int end, const Extra& extra)
{
    int y = end / 2;
    int direction = step;
    for (auto _ : state) {
        y += direction;
        if (y >= end || y <= 0)
            direction = -direction;
        bar->setValue(y);
        QCoreApplication::sendPostedEvents();
        extra();
    }
}

void scrollView(
    benchmark::State& state, int children, const std::function<void()>& extra = [] {})
{
    ScrollViewSkin view;
    view.enableClipper(true);
    view.resize(viewSize.width(), viewSize.height());
    for (int i = 0; i < children; ++i)
        view.addChild(new Child(view.clipper(), i), 10, i * distance);
    view.resizeContents(childSize.width(), children * distance);
    showAndSettle(&view);
    scrollSteps(state, view.verticalScrollBar(), children * distance - viewSize.height(), extra);
}

void scrollView10000Children(benchmark::State& state)
{
    scrollView(state, 10000);
}

// The same with 9000 children less, whose visibility is tested all the same: once where Qt looks for what covers their
// parent and once where it paints its children.
void scrollView1000ChildrenAndTests(benchmark::State& state)
{
    QWidget parent;
    for (int i = 0; i < 9000; ++i)
        (new Child(&parent, i))->hide();
    scrollView(state, 1000, [&parent] {
        for (int pass = 0; pass < 2; ++pass)
            for (const QObject* child : parent.children())
                benchmark::DoNotOptimize(child->isWidgetType() && static_cast<const QWidget*>(child)->isHidden());
    });
}

void scrollArea10000Children(benchmark::State& state)
{
    QScrollArea area;
    area.resize(viewSize);
    auto* const contents = new QWidget;
    contents->resize(childSize.width(), 10000 * distance);
    for (int i = 0; i < 10000; ++i)
        (new Child(contents, i))->move(10, i * distance);
    area.setWidget(contents);
    showAndSettle(&area);
    scrollSteps(state, area.verticalScrollBar(), 10000 * distance - viewSize.height(), [] {});
}

BENCHMARK(scrollView10000Children)->Unit(benchmark::kMicrosecond);
BENCHMARK(scrollView1000ChildrenAndTests)->Unit(benchmark::kMicrosecond);
BENCHMARK(scrollArea10000Children)->Unit(benchmark::kMicrosecond);

const bool areaCompared =
    compare({"scroll step, 10000 children / QScrollArea", "scrollView10000Children", "scrollArea10000Children", 1.0});
// Children out of sight cost the tests whether they are, at each paint and when the clipper is centred anew.
const bool numbersCompared = compare(
    {"scroll step, 10000 children / 1000 and tests", "scrollView10000Children", "scrollView1000ChildrenAndTests", 1.5});

} // namespace
