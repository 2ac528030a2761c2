#ifndef SKINWIDGETS_EXAMPLES_GALLERY_VOLUMEPAGE_H
#define SKINWIDGETS_EXAMPLES_GALLERY_VOLUMEPAGE_H

#include "page.h"

// The volume panel with sound, muted, at level 0 and as it is before it has a level.
class VolumePage : public Page
{
    Q_OBJECT

public:
    explicit VolumePage(QWidget* parent);

private:
    class Example;

    Example* addExample(const QString& caption, int row, int column);
};

#endif
