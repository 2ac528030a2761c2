#ifndef SKINWIDGETS_CONTROLS_LABELSKIN_H
#define SKINWIDGETS_CONTROLS_LABELSKIN_H

#include "toolkit/toolkitlabel.h"

#include <QColor>

/*
 * A label without a ground of its own: only the pixels that its text or picture covers belong to the widget. Clicks
 * beside them go to what lies beneath, and a label without contents shows nothing.
 *
 * The mask follows text, font, size, alignment and picture. ToolkitLabel tells when it does so after a change through
 * a plain QLabel or QWidget pointer. Text fills every pixel of the mask with its colour, without soft edges that would
 * mix it with another one, so that it reads on any ground. The background colour shows where a pixel of a picture is
 * not opaque. A frame is not shown.
 */
class SKINWIDGETS_EXPORT LabelSkin : public ToolkitLabel
{
    Q_OBJECT

public:
    // Has no contents, so nothing shows yet, and an automatic mask, which setAutoMask(false) would take away.
    explicit LabelSkin(QWidget* parent = nullptr, const char* name = nullptr, unsigned int flags = 0);
    ~LabelSkin() override;

    // The label's own colours for its background and its text, in each state of the widget. A colour that is not valid
    // counts as opaque black.
    void set_bgColor(QColor c);
    void set_textColor(QColor c);

    // Makes the pixels that the contents cover the mask, and repaints at once.
    void updateMask() override;

protected:
    void drawContents(QPainter* painter) override;
};

#endif
