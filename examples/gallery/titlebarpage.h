#ifndef SKINWIDGETS_EXAMPLES_GALLERY_TITLEBARPAGE_H
#define SKINWIDGETS_EXAMPLES_GALLERY_TITLEBARPAGE_H

#include "page.h"

// The title bar with its texts, and with its close button in each state.
class TitleBarPage : public Page
{
    Q_OBJECT

public:
    explicit TitleBarPage(QWidget* parent);

private:
    void addTexts();
    void addCloseButton();
    void addLive();
};

#endif
