#include "scrollviewpage.h"

#include "ground.h"
#include "scroll/scrollbarskin.h"
#include "scroll/scrollviewskin.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>

namespace
{

constexpr QSize fieldSize(65, 40);
constexpr int boxWidth = 7;
// Four fields and a bar, five fields and a bar.
constexpr QSize largeSize(280, 214);
// Three fields each way in a panel.
constexpr QSize smallSize(197, 122);
// Four rows in a panel of that height.
constexpr int rowHeight = 53;

// A chessboard whose fields tell where they lie in the contents.
class Board : public ScrollViewSkin
{
public:
    // The contents are so many fields wide and high.
    Board(QWidget* parent, const QSize& size, const QSize& fields) : ScrollViewSkin(parent)
    {
        setFixedSize(size);
        QFont small = font();
        small.setPointSizeF(small.pointSizeF() * 0.85);
        setFont(small);
        resizeContents(fields.width() * fieldSize.width(), fields.height() * fieldSize.height());
    }
    void scrollToField(int column, int row) { setContentsPos(column * fieldSize.width(), row * fieldSize.height()); }

protected:
    using ScrollViewSkin::drawContents;
    void drawContents(QPainter* painter, int cx, int cy, int cw, int ch) override
    {
        const QRect area = QRect(cx, cy, cw, ch) & QRect(0, 0, contentsWidth(), contentsHeight());
        for (int row = area.top() / fieldSize.height(); row * fieldSize.height() <= area.bottom(); ++row)
            for (int column = area.left() / fieldSize.width(); column * fieldSize.width() <= area.right(); ++column)
                drawField(painter, row, column);
    }

private:
    static void drawField(QPainter* painter, int row, int column)
    {
        const QRect field(QPoint(column * fieldSize.width(), row * fieldSize.height()), fieldSize);
        painter->fillRect(field, (row + column) % 2 == 0 ? QColor(0x22, 0x30, 0x48) : QColor(0x2d, 0x3f, 0x5e));
        painter->setPen(QColor(0xb8, 0xc6, 0xdc));
        painter->drawText(field, Qt::AlignCenter, QStringLiteral("%1, %2").arg(field.x()).arg(field.y()));
    }
};

QStringList trackNames()
{
    return {QStringLiteral("Morning Light"), QStringLiteral("Slow River"),    QStringLiteral("Paper Boats"),
            QStringLiteral("Night Train"),   QStringLiteral("Glass Gardens"), QStringLiteral("The Long Way Home"),
            QStringLiteral("Signal"),        QStringLiteral("Winter Coat"),   QStringLiteral("Second Floor")};
}

// A line of the child widgets' example: a picture and a text.
QWidget* makeRow(const QPixmap& picture, const QString& text, QWidget* parent)
{
    auto* const row = new QWidget(parent);
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(10, 4, 10, 4);
    layout->setSpacing(12);
    auto* const image = new QLabel(row);
    image->setPixmap(picture);
    layout->addWidget(image);
    layout->addWidget(new QLabel(text, row), 1);
    row->setFixedHeight(rowHeight);
    return row;
}

QWidget* makeCorner(QWidget* parent)
{
    auto* const corner = new QWidget(parent);
    corner->setAutoFillBackground(true);
    QPalette colours = corner->palette();
    colours.setColor(QPalette::Window, QColor(0xff, 0x6a, 0x00));
    corner->setPalette(colours);
    return corner;
}

void setFrameColours(QWidget* widget)
{
    QPalette colours = widget->palette();
    colours.setColor(QPalette::Light, QColor(0x5a, 0x6e, 0x90));
    colours.setColor(QPalette::Mid, QColor(0x3a, 0x4a, 0x66));
    colours.setColor(QPalette::Dark, QColor(0x16, 0x1c, 0x28));
    widget->setPalette(colours);
}

ScrollViewSkin* makeTrackView(QWidget* parent)
{
    auto* const view = new ScrollViewSkin(parent);
    view->setFixedSize(largeSize);
    view->setHScrollBarMode(ScrollViewSkin::AlwaysOff);
    const QPixmap cover =
        skinPicture(parent, QStringLiteral("cover")).scaled(40, 40, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    const int width = largeSize.width() - 2 * view->frameWidth() - view->verticalScrollBar()->sizeHint().width();
    int y = 0;
    for (const QString& name : trackNames()) {
        QWidget* const row = makeRow(cover, name, view->viewport());
        row->setFixedWidth(width);
        view->addChild(row, 0, y);
        y += rowHeight;
    }
    view->resizeContents(width, y);
    view->setContentsPos(0, rowHeight);
    return view;
}

ScrollViewSkin* makeFramedView(QWidget* parent)
{
    const QSize size(4 * fieldSize.width() + 2 * boxWidth, largeSize.height());
    auto* const view = new Board(parent, size, QSize(20, 40));
    view->setVScrollBarMode(ScrollViewSkin::AlwaysOff);
    view->setHScrollBarMode(ScrollViewSkin::AlwaysOff);
    view->setFrameStyle(QFrame::Box | QFrame::Raised);
    view->setLineWidth(2);
    view->setMidLineWidth(boxWidth - 4);
    setFrameColours(view);
    view->scrollToField(1, 1);
    return view;
}

struct BarExample {
    const char* caption;
    ScrollViewSkin::ScrollBarMode mode;
    // Fields.
    QSize contents;
};

const BarExample barExamples[] = {
    {"Auto, fits", ScrollViewSkin::Auto, {2, 2}},
    {"Auto, too high", ScrollViewSkin::Auto, {2, 9}},
    {"Auto, too wide", ScrollViewSkin::Auto, {9, 2}},
    {"Always on, fits", ScrollViewSkin::AlwaysOn, {2, 2}},
    {"Always off, too large", ScrollViewSkin::AlwaysOff, {9, 9}},
};

} // namespace

ScrollViewPage::ScrollViewPage(QWidget* parent)
    : Page(tr("Scroll view"),
           tr("A part of larger contents, which are drawn, are widgets, or both. The bar at the right is drawn from "
              "pictures, the one at the bottom by the widget style. All views can be operated."),
           parent)
{
    addContents();
    addBarModes();
}

void ScrollViewPage::addContents()
{
    QGridLayout* const table = addTable(tr("Contents, frames and margins"), 0, 0);
    QWidget* const card = table->parentWidget();
    const auto add = [&](ScrollViewSkin* view, const QString& caption, int column) {
        table->addWidget(makeLabel(caption, card), 0, column, Qt::AlignCenter);
        table->addWidget(view, 1, column, Qt::AlignCenter);
    };

    auto* const drawn = new Board(card, largeSize, QSize(20, 40));
    drawn->setFrameStyle(QFrame::NoFrame);
    drawn->setCornerWidget(makeCorner(drawn));
    drawn->scrollToField(4, 9);
    add(drawn, tr("Drawn, with a corner widget"), 0);

    add(makeTrackView(card), tr("Child widgets, sunken panel"), 1);
    add(makeFramedView(card), tr("Raised box"), 2);

    auto* const margins = new Board(card, largeSize, QSize(8, 8));
    margins->setFrameStyle(QFrame::NoFrame);
    // Three fields each way are left.
    margins->setMargins(32, 40, 33, 40);
    margins->scrollToField(8, 8);
    add(margins, tr("Margins, scrolled to the end"), 3);
}

void ScrollViewPage::addBarModes()
{
    QGridLayout* const table = addTable(tr("When bars show"), 1, 0);
    QWidget* const card = table->parentWidget();
    int column = 0;
    for (const BarExample& example : barExamples) {
        auto* const view = new Board(card, smallSize, example.contents);
        view->setVScrollBarMode(example.mode);
        view->setHScrollBarMode(example.mode);
        table->addWidget(makeLabel(tr(example.caption), card), 0, column, Qt::AlignCenter);
        table->addWidget(view, 1, column++, Qt::AlignCenter);
    }
}
