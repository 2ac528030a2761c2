#ifndef SKINWIDGETS_EXAMPLES_GALLERY_TIMEPAGE_H
#define SKINWIDGETS_EXAMPLES_GALLERY_TIMEPAGE_H

#include "page.h"

// Times from the first to the last that fits, and one that runs.
class TimePage : public Page
{
    Q_OBJECT

public:
    explicit TimePage(QWidget* parent);

private:
    void addTime(const QString& caption, unsigned int seconds, int row, int column);
    void addClock(int row, int column);
};

#endif
