#ifndef SKINWIDGETS_EXAMPLES_GALLERY_LISTBOXPAGE_H
#define SKINWIDGETS_EXAMPLES_GALLERY_LISTBOXPAGE_H

#include "page.h"

class ListBoxSkin;

// The list box in its selection modes, with and without the keyboard focus, with pictures and in columns.
class ListBoxPage : public Page
{
    Q_OBJECT

public:
    explicit ListBoxPage(QWidget* parent);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void addModes();
    void addContents();
    void addColumns();

    ListBoxSkin* m_focused = nullptr;
};

#endif
