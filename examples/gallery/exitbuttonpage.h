#ifndef SKINWIDGETS_EXAMPLES_GALLERY_EXITBUTTONPAGE_H
#define SKINWIDGETS_EXAMPLES_GALLERY_EXITBUTTONPAGE_H

#include "page.h"

// The exit button with the pictures that the library carries.
class ExitButtonPage : public Page
{
    Q_OBJECT

public:
    explicit ExitButtonPage(QWidget* parent);

private:
    void addStates();
    void addLive();
};

#endif
