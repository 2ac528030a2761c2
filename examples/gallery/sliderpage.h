#ifndef SKINWIDGETS_EXAMPLES_GALLERY_SLIDERPAGE_H
#define SKINWIDGETS_EXAMPLES_GALLERY_SLIDERPAGE_H

#include "page.h"

// The seek slider in every state, lying and standing, with each kind of marker.
class SliderPage : public Page
{
    Q_OBJECT

public:
    explicit SliderPage(QWidget* parent);

private:
    void addLying();
    void addStanding();
};

#endif
