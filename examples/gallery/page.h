#ifndef SKINWIDGETS_EXAMPLES_GALLERY_PAGE_H
#define SKINWIDGETS_EXAMPLES_GALLERY_PAGE_H

#include <QWidget>

class QBoxLayout;
class QGridLayout;
class QLabel;

/*
 * One page of the gallery: a heading, a sentence about the widget and a grid of examples with captions.
 *
 * A page must stand in the gallery's window before it creates skin widgets, as they look for the skin that the window
 * is named after.
 */
class Page : public QWidget
{
    Q_OBJECT

public:
    Page(const QString& heading, const QString& description, QWidget* parent);

protected:
    // A card in the page's grid; returns the place in which the example is created, see placeIn().
    QWidget* addCard(const QString& caption, int row, int column);
    // A card that holds a grid of its own, as wide as that needs.
    QGridLayout* addTable(const QString& caption, int row, int column);

    // Centres a widget of fixed size in the place that is its parent.
    static void placeIn(QWidget* widget);

    static QLabel* makeLabel(const QString& text, QWidget* parent);

private:
    QBoxLayout* addFrame(const QString& caption, int row, int column);

    QGridLayout* m_grid;
};

#endif
