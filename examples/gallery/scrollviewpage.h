#ifndef SKINWIDGETS_EXAMPLES_GALLERY_SCROLLVIEWPAGE_H
#define SKINWIDGETS_EXAMPLES_GALLERY_SCROLLVIEWPAGE_H

#include "page.h"

// The scroll view with contents that are drawn and contents that are widgets, with its frames, margins and bar modes.
class ScrollViewPage : public Page
{
    Q_OBJECT

public:
    explicit ScrollViewPage(QWidget* parent);

private:
    void addContents();
    void addBarModes();
};

#endif
