#ifndef SKINWIDGETS_EXAMPLES_GALLERY_IMAGEBUTTONPAGE_H
#define SKINWIDGETS_EXAMPLES_GALLERY_IMAGEBUTTONPAGE_H

#include "page.h"

// The close button and the toggle buttons in each of their states and positions, and some to operate.
class ImageButtonPage : public Page
{
    Q_OBJECT

public:
    explicit ImageButtonPage(QWidget* parent);

private:
    void addStates();
    void addPanel();
};

#endif
