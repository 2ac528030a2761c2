#ifndef SKINWIDGETS_TOOLKIT_QBUTTON_H
#define SKINWIDGETS_TOOLKIT_QBUTTON_H

#include "toolkit/export.h"
#include "toolkit/toolkitwidget.h"

#include <QAbstractButton>

class QPainter;

/*
 * A button without a look of its own: it shows its background picture and nothing else, no focus frame either.
 * Pressing, toggling, repeating and their signals are those of QAbstractButton. Any signal's receiver may delete the
 * button; a button group does not hear of a release because the focus left.
 */
class SKINWIDGETS_EXPORT QButton : public ToolkitWidget<QAbstractButton>
{
    Q_OBJECT

public:
    // Shows nothing until it has a background picture.
    explicit QButton(QWidget* parent = nullptr, const char* name = nullptr, WFlags f = 0);
    ~QButton() override;

protected:
    // Draws the button over its background, in widget coordinates. Draws nothing by default.
    virtual void drawButton(QPainter* painter);

    void paintEvent(QPaintEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

#endif
