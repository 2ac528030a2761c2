#ifndef SKINWIDGETS_EXAMPLES_GALLERY_BUTTONSPAGE_H
#define SKINWIDGETS_EXAMPLES_GALLERY_BUTTONSPAGE_H

#include "page.h"

// Every button of the player panel in each of its states, and the panel as an application shows it.
class ButtonsPage : public Page
{
    Q_OBJECT

public:
    explicit ButtonsPage(QWidget* parent);

private:
    void addStates();
    void addPanel();
};

#endif
