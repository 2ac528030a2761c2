#ifndef SKINWIDGETS_EXAMPLES_GALLERY_TEXTLABELPAGE_H
#define SKINWIDGETS_EXAMPLES_GALLERY_TEXTLABELPAGE_H

#include "page.h"

// Text labels on grounds of different kinds, with what a mask can be made of.
class TextLabelPage : public Page
{
    Q_OBJECT

public:
    explicit TextLabelPage(QWidget* parent);

private:
    void addGround(const QString& caption, const QPixmap& ground, int row, int column);
    void addContents();
};

#endif
