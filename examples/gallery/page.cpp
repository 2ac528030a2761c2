#include "page.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace
{

void addFont(QWidget* widget, qreal scale, QFont::Weight weight)
{
    QFont font = widget->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setWeight(weight);
    widget->setFont(font);
}

} // namespace

Page::Page(const QString& heading, const QString& description, QWidget* parent)
    : QWidget(parent),
      m_grid(new QGridLayout)
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 22, 28, 26);
    layout->setSpacing(6);
    auto* const title = new QLabel(heading, this);
    addFont(title, 1.7, QFont::Bold);
    layout->addWidget(title);
    auto* const text = new QLabel(description, this);
    text->setWordWrap(true);
    text->setForegroundRole(QPalette::PlaceholderText);
    layout->addWidget(text);
    layout->addSpacing(12);
    m_grid->setSpacing(14);
    layout->addLayout(m_grid);
    layout->addStretch(1);
}

QLabel* Page::makeLabel(const QString& text, QWidget* parent)
{
    auto* const label = new QLabel(text, parent);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

QBoxLayout* Page::addFrame(const QString& caption, int row, int column)
{
    auto* const card = new QFrame(this);
    // Skin widgets without a background of their own are composed over this colour.
    QPalette colours = card->palette();
    colours.setBrush(QPalette::Window, colours.base());
    card->setPalette(colours);
    card->setAutoFillBackground(true);
    auto* const layout = new QVBoxLayout(card);
    layout->setContentsMargins(16, 12, 16, 16);
    layout->setSpacing(12);
    auto* const label = new QLabel(caption, card);
    addFont(label, 1, QFont::DemiBold);
    layout->addWidget(label);
    m_grid->addWidget(card, row, column);
    return layout;
}

QWidget* Page::addCard(const QString& caption, int row, int column)
{
    QBoxLayout* const layout = addFrame(caption, row, column);
    auto* const place = new QWidget(layout->parentWidget());
    layout->addWidget(place, 1);
    m_grid->setColumnStretch(column, 1);
    return place;
}

QGridLayout* Page::addTable(const QString& caption, int row, int column)
{
    auto* const table = new QGridLayout;
    table->setHorizontalSpacing(22);
    table->setVerticalSpacing(10);
    addFrame(caption, row, column)->addLayout(table, 1);
    return table;
}

void Page::placeIn(QWidget* widget)
{
    auto* const layout = new QVBoxLayout(widget->parentWidget());
    layout->setContentsMargins(0, 0, 0, 0);
    widget->setFixedSize(widget->size());
    layout->addWidget(widget, 1, Qt::AlignCenter);
}
