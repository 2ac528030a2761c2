#ifndef SKINWIDGETS_EXAMPLES_GALLERY_PICTURELABELPAGE_H
#define SKINWIDGETS_EXAMPLES_GALLERY_PICTURELABELPAGE_H

#include "page.h"

// Picture labels over the player's background: alignments, a base picture, and transparent pictures.
class PictureLabelPage : public Page
{
    Q_OBJECT

public:
    explicit PictureLabelPage(QWidget* parent);

private:
    void addExamples();
    void addCover();
};

#endif
