#include "scrollbarpage.h"

#include "scroll/scrollbarskin.h"

#include <QGridLayout>
#include <QLabel>

namespace
{

constexpr int barHeight = 220;
// A close-up is as high as a bar and three times as large.
constexpr int zoom = 3;

// A bar in a state of the stylus that it keeps, whatever happens.
class ShownBar : public ScrollBarSkin
{
public:
    ShownBar(QWidget* parent, int page, int value, ScrollBarControl pressed) : ScrollBarSkin(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setSteps(1, page);
        setRange(0, 100);
        setValue(value);
        setFixedSize(sizeHint().width(), barHeight);
        m_shown = pressed;
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        pressedControl = m_shown;
        ScrollBarSkin::paintEvent(event);
    }

private:
    ScrollBarControl m_shown = None;
};

struct Example {
    const char* caption;
    int page;
    int value;
    ScrollBarControl pressed;
};

const Example examples[] = {
    {"Idle", 40, 30, None},      {"Line up", 40, 30, SubLine},   {"Page up", 40, 30, SubPage},
    {"Dragged", 40, 30, Slider}, {"Page down", 40, 30, AddPage}, {"Line down", 40, 30, AddLine},
    {"Start", 20, 0, None},      {"End", 20, 100, None},         {"Long", 400, 50, None},
    {"Least", 0, 50, None},
};

void setGround(QWidget* card, const QColor& ground)
{
    QPalette colours = card->palette();
    colours.setColor(QPalette::Window, ground);
    const bool isDark = ground.lightness() < 128;
    colours.setColor(QPalette::WindowText, isDark ? QColor(0xe8, 0xed, 0xf4) : QColor(0x1a, 0x20, 0x2b));
    colours.setColor(QPalette::PlaceholderText, isDark ? QColor(0x9a, 0xa8, 0xba) : QColor(0x4a, 0x55, 0x66));
    card->setPalette(colours);
}

} // namespace

ScrollBarPage::ScrollBarPage(QWidget* parent)
    : Page(
          tr("Scroll bar"),
          tr("Drawn from pictures that the library carries, so it looks the same in every skin. A pressed button and a "
             "dragged thumb glow."),
          parent)
{
    addStates(tr("On dark ground"), QColor(0x10, 0x14, 0x1b), 0);
    addStates(tr("On light ground"), QColor(0xf4, 0xf5, 0xf7), 1);
    addLive();
    addCloseUps();
}

void ScrollBarPage::addStates(const QString& caption, const QColor& ground, int row)
{
    QGridLayout* const table = addTable(caption, row, 0);
    QWidget* const card = table->parentWidget();
    setGround(card, ground);
    int column = 0;
    for (const Example& example : examples) {
        table->addWidget(makeLabel(tr(example.caption), card), 0, column, Qt::AlignCenter);
        auto* const bar = new ShownBar(card, example.page, example.value, example.pressed);
        table->addWidget(bar, 1, column, Qt::AlignCenter);
        ++column;
    }
    auto* const single = new ShownBar(card, 40, 0, None);
    single->setRange(0, 0);
    auto* const disabled = new ShownBar(card, 40, 30, None);
    disabled->setEnabled(false);
    table->addWidget(makeLabel(tr("One value"), card), 0, column, Qt::AlignCenter);
    table->addWidget(single, 1, column, Qt::AlignCenter);
    table->addWidget(makeLabel(tr("Disabled"), card), 0, column + 1, Qt::AlignCenter);
    table->addWidget(disabled, 1, column + 1, Qt::AlignCenter);
}

void ScrollBarPage::addLive()
{
    QGridLayout* const table = addTable(tr("To operate"), 0, 1);
    QWidget* const card = table->parentWidget();
    auto* const bar = new ScrollBarSkin(card);
    bar->setSteps(5, 50);
    bar->setRange(0, 200);
    bar->setFixedSize(bar->sizeHint().width(), barHeight);
    QLabel* const value = makeLabel(QString(), card);
    value->setFixedWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("0000")));
    value->setAlignment(Qt::AlignCenter);
    connect(bar, &ScrollBarSkin::valueChanged, value, qOverload<int>(&QLabel::setNum));
    bar->setValue(70);
    table->addWidget(value, 0, 0, Qt::AlignCenter);
    table->addWidget(bar, 1, 0, Qt::AlignCenter);
}

void ScrollBarPage::addCloseUps()
{
    QGridLayout* const table = addTable(tr("Close up: idle, dragged, buttons pressed"), 1, 1);
    QWidget* const card = table->parentWidget();
    int column = 0;
    for (const ScrollBarControl pressed : {None, Slider, SubLine, AddLine}) {
        ShownBar bar(nullptr, 100, 30, pressed);
        bar.setFixedSize(bar.width(), barHeight / zoom);
        auto* const label = new QLabel(card);
        label->setPixmap(bar.grab().scaled(bar.size() * zoom));
        table->addWidget(label, 0, column++, Qt::AlignCenter);
    }
}
