#ifndef SKINWIDGETS_EXAMPLES_GALLERY_SCROLLBARPAGE_H
#define SKINWIDGETS_EXAMPLES_GALLERY_SCROLLBARPAGE_H

#include "page.h"

// The scroll bar with each of its parts pressed and in the lengths that a thumb can have, on dark and on light ground.
class ScrollBarPage : public Page
{
    Q_OBJECT

public:
    explicit ScrollBarPage(QWidget* parent);

private:
    void addStates(const QString& caption, const QColor& ground, int row);
    void addLive();
    void addCloseUps();
};

#endif
