#include "compare.h"
#include "listbox/listbox_skin.h"
#include "stage.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QListWidget>
#include <QTimer>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <string>

#include <malloc.h>

// A list box against the list widget of today, with the same texts in viewports of the same size. Ours measures every
// item; theirs measures one of them with uniform item sizes, and all of them without. The scroll bars, which take no
// part in this, are there from the start.
namespace
{

constexpr QSize listSize(300, 400);
// Longer lists than this take their measured list too long.
constexpr int mostMeasured = 100'000;
// Enough for a median, and for the whole run to stay within minutes.
constexpr int repetitions = 5;

QString textAt(int index)
{
    return QStringLiteral("%1 - Some artist - A title of song %2.mp3").arg(index, 6).arg(index * 7919LL % 100003);
}

const QStringList& texts(int number)
{
    static QStringList all;
    while (all.size() < number)
        all << textAt(int(all.size()));
    return all;
}

class Ours
{
public:
    static constexpr const char* name = "listbox";

    Ours()
    {
        m_box.resize(listSize.width(), listSize.height());
        m_box.setSelectionMode(ListBoxSkin::Extended);
        m_box.setVScrollBarMode(ListBoxSkin::AlwaysOn);
        m_box.show();
        settle();
    }
    // Layout and paint all that is due. Timers would bring it in a moment; the wait for them is not what is measured.
    void settle()
    {
        finish(m_resizing, &ListBoxSkin::adjustItems);
        finish(m_updating, &ListBoxSkin::refreshSlot);
        finish(m_showing, &ListBoxSkin::ensureCurrentVisible);
        QCoreApplication::processEvents();
    }
    // The text is a copy of its own, as when it comes from a file.
    void append(const QString& text) { m_box.insertItem(QString(text.constData(), text.size())); }
    void insert(const QString& text, int index) { m_box.insertItem(text, index); }
    void remove(int index) { m_box.removeItem(index); }
    void change(const QString& text, int index) { m_box.changeItem(text, index); }
    void scrollToTop() { m_box.setContentsPos(0, 0); }
    void makeLastCurrent() { m_box.setCurrentItem(int(m_box.count()) - 1); }
    void selectAll() { m_box.selectAll(true); }
    void deselect() { m_box.selectAll(false); }
    void clear() { m_box.clear(); }
    QWidget* widget() { return &m_box; }
    QWidget* viewport() { return m_box.viewport(); }
    int paintEvents() const { return m_counter.count(); }

private:
    QTimer* timer(const char* timerName) const { return m_box.findChild<QTimer*>(QLatin1String(timerName)); }
    void finish(QTimer* timer, void (ListBoxSkin::*slot)())
    {
        if (!timer->isActive())
            return;
        timer->stop();
        (m_box.*slot)();
    }

    ListBoxSkin m_box;
    PaintCounter m_counter{m_box.viewport()};
    QTimer* m_resizing = timer("listbox resize timer");
    QTimer* m_updating = timer("listbox update timer");
    QTimer* m_showing = timer("listbox visible timer");
};

class Theirs
{
public:
    static constexpr const char* name = "listwidget";

    explicit Theirs(bool uniform = true)
    {
        m_list.setUniformItemSizes(uniform);
        m_list.resize(listSize);
        m_list.setSelectionMode(QAbstractItemView::ExtendedSelection);
        m_list.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        m_list.show();
        settle();
    }
    void settle()
    {
        m_list.executeDelayedItemsLayout();
        QCoreApplication::processEvents();
    }
    void append(const QString& text) { m_list.addItem(QString(text.constData(), text.size())); }
    void insert(const QString& text, int index) { m_list.insertItem(index, text); }
    void remove(int index) { delete m_list.takeItem(index); }
    void change(const QString& text, int index) { m_list.item(index)->setText(text); }
    void scrollToTop() { m_list.scrollToTop(); }
    void makeLastCurrent() { m_list.setCurrentRow(m_list.count() - 1); }
    void selectAll() { m_list.selectAll(); }
    void deselect() { m_list.clearSelection(); }
    void clear() { m_list.clear(); }
    QWidget* widget() { return &m_list; }
    QWidget* viewport() { return m_list.viewport(); }
    int paintEvents() const { return m_counter.count(); }

private:
    struct ListWidget : QListWidget {
        using QListWidget::executeDelayedItemsLayout;
    };
    ListWidget m_list;
    PaintCounter m_counter{m_list.viewport()};
};

class TheirsMeasured : public Theirs
{
public:
    static constexpr const char* name = "listwidgetMeasured";

    TheirsMeasured() : Theirs(false) {}
};

template <class List>
void fill(List& list, int number)
{
    for (int i = 0; i < number; ++i)
        list.append(texts(number)[i]);
}

// A list that is filled once and stays.
template <class List>
List& keptList(int number)
{
    static std::map<int, std::unique_ptr<List>> all;
    // Widgets must not outlive the application object.
    if (all.empty())
        qAddPostRoutine([] { all.clear(); });
    std::unique_ptr<List>& list = all[number];
    if (!list) {
        list = std::make_unique<List>();
        fill(*list, number);
        list->settle();
    }
    return *list;
}

template <class Work>
void measure(benchmark::State& state, const Work& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
}

// For work that has to show.
template <class List, class Work>
void measurePainted(benchmark::State& state, const List& list, const Work& work)
{
    const int before = list.paintEvents();
    measure(state, work);
    if (list.paintEvents() == before)
        state.SkipWithError("nothing was painted");
}

size_t allocated()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

template <class List>
void append(benchmark::State& state, int number)
{
    texts(number);
    for (auto _ : state) {
        List list;
        list.settle();
        const size_t before = allocated();
        measurePainted(state, list, [&] {
            fill(list, number);
            list.settle();
        });
        state.counters["bytes"] = double(allocated() - before) / number;
    }
}

template <class List>
void insertAtFront(benchmark::State& state, int number)
{
    auto& list = keptList<List>(number);
    list.scrollToTop();
    list.settle();
    for (auto _ : state) {
        measurePainted(state, list, [&] {
            list.insert(QStringLiteral("new"), 0);
            list.settle();
        });
        list.remove(0);
        list.settle();
    }
}

template <class List>
void removeFirst(benchmark::State& state, int number)
{
    auto& list = keptList<List>(number);
    list.scrollToTop();
    list.settle();
    for (auto _ : state) {
        measurePainted(state, list, [&] {
            list.remove(0);
            list.settle();
        });
        list.insert(textAt(0), 0);
        list.settle();
    }
}

template <class List>
void press(List& list, int key, const QString& text = {})
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(list.widget(), &event);
}

template <class List>
void pressKeys(benchmark::State& state, int number, int there, int back)
{
    auto& list = keptList<List>(number);
    list.makeLastCurrent();
    list.settle();
    for (auto _ : state) {
        measurePainted(state, list, [&] {
            for (const int key : {there, back}) {
                press(list, key);
                list.settle();
            }
        });
    }
}

template <class List>
void pressUpAndDown(benchmark::State& state, int number)
{
    pressKeys<List>(state, number, Qt::Key_Up, Qt::Key_Down);
}

template <class List>
void pressPriorAndNext(benchmark::State& state, int number)
{
    pressKeys<List>(state, number, Qt::Key_PageUp, Qt::Key_PageDown);
}

template <class List>
void repaint(benchmark::State& state, int number)
{
    auto& list = keptList<List>(number);
    for (auto _ : state)
        measurePainted(state, list, [&] { list.viewport()->repaint(); });
}

template <class List>
void selectAll(benchmark::State& state, int number)
{
    auto& list = keptList<List>(number);
    for (auto _ : state) {
        list.deselect();
        list.settle();
        measure(state, [&] { list.selectAll(); });
    }
    list.deselect();
    list.settle();
}

template <class List>
void typeInVain(benchmark::State& state, int number)
{
    auto& list = keptList<List>(number);
    for (auto _ : state)
        measure(state, [&] { press(list, Qt::Key_AsciiTilde, QStringLiteral("~")); });
}

template <class List>
void clear(benchmark::State& state, int number)
{
    List list;
    for (auto _ : state) {
        fill(list, number);
        list.settle();
        measure(state, [&] { list.clear(); });
    }
}

template <class List>
void removeFromMiddle(benchmark::State& state, int number)
{
    auto& list = keptList<List>(number);
    for (auto _ : state) {
        measure(state, [&] {
            list.remove(number / 2);
            list.settle();
        });
        list.insert(textAt(number / 2), number / 2);
        list.settle();
    }
}

template <class List>
void changeText(benchmark::State& state, int number)
{
    auto& list = keptList<List>(number);
    list.scrollToTop();
    list.settle();
    for (auto _ : state) {
        measurePainted(state, list, [&] {
            list.change(QStringLiteral("another text"), 3);
            list.settle();
        });
        list.change(textAt(3), 3);
        list.settle();
    }
}

using Work = void (*)(benchmark::State&, int);

// What happens once takes one iteration of each repetition, or a few, so that lists of any length take about as long.
int iterations(bool everyItem, int number)
{
    constexpr int most = 20;
    constexpr int itemsInTotal = 200'000;
    return everyItem ? std::clamp(itemsInTotal / number, 1, most) : most;
}

std::string benchmarkName(const char* list, const char* operation, int number)
{
    return std::string(list) + '/' + operation + '/' + std::to_string(number);
}

template <class List>
std::string add(const char* operation, Work work, int number, bool everyItem)
{
    const std::string name = benchmarkName(List::name, operation, number);
    benchmark::RegisterBenchmark(name.c_str(), [work, number](benchmark::State& state) { work(state, number); })
        ->UseManualTime()
        ->Iterations(iterations(everyItem, number))
        ->Repetitions(repetitions)
        ->Unit(benchmark::kMicrosecond);
    return name;
}

std::string title(const char* operation, int number)
{
    return "list box, " + std::string(operation) + ", " + std::to_string(number);
}

// A limit of 0 promises nothing.
void addComparison(const char* operation, Work ours, Work theirs, int number, double limit, bool everyItem = true)
{
    const std::string first = add<Ours>(operation, ours, number, everyItem);
    const std::string second = add<Theirs>(operation, theirs, number, everyItem);
    compare({title(operation, number), first, second, limit});
}

void addAll(int number)
{
    const std::string append = benchmarkName(Ours::name, "append all", number);
    addComparison("append all", ::append<Ours>, ::append<Theirs>, number, 1.0);
    compare({title("bytes an item", number), append, benchmarkName(Theirs::name, "append all", number), 0.7, "bytes"});
    if (number <= mostMeasured)
        compare({title("append, all measured", number), append,
                 add<TheirsMeasured>("append all", ::append<TheirsMeasured>, number, true), 1.0 / 6});
    addComparison("insert at the front", insertAtFront<Ours>, insertAtFront<Theirs>, number, 0.5);
    addComparison("remove the first", removeFirst<Ours>, removeFirst<Theirs>, number, 0);
    addComparison("remove from the middle", removeFromMiddle<Ours>, removeFromMiddle<Theirs>, number, 0);
    addComparison("change a text", changeText<Ours>, changeText<Theirs>, number, 0);
    addComparison("Up and Down", pressUpAndDown<Ours>, pressUpAndDown<Theirs>, number, 1.0, false);
    addComparison("Prior and Next", pressPriorAndNext<Ours>, pressPriorAndNext<Theirs>, number, 1.0, false);
    addComparison("repaint", repaint<Ours>, repaint<Theirs>, number, 0.5, false);
    addComparison("select all", selectAll<Ours>, selectAll<Theirs>, number, 1.0);
    addComparison("type in vain", typeInVain<Ours>, typeInVain<Theirs>, number, 1.0);
    addComparison("clear", clear<Ours>, clear<Theirs>, number, 1.0);
}

// Keys cost the same in a list of any length.
void addSameCost(const char* operation)
{
    compare({"list box, " + std::string(operation) + ", 1000000 against 1000",
             benchmarkName(Ours::name, operation, 1'000'000), benchmarkName(Ours::name, operation, 1000), 1.3});
}

bool addEverything()
{
    for (const int number : {1000, 10'000, 100'000, 1'000'000})
        addAll(number);
    addSameCost("Up and Down");
    addSameCost("Prior and Next");
    return true;
}

const bool added = addEverything();

} // namespace
