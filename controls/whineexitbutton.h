#ifndef SKINWIDGETS_CONTROLS_WHINEEXITBUTTON_H
#define SKINWIDGETS_CONTROLS_WHINEEXITBUTTON_H

#include "toolkit/qbutton.h"

#include <QPixmap>

/*
 * A push button of three pictures: one for normal, focused and pressed each. The picture that shows is the widget's
 * background picture. Signals are those of QAbstractButton.
 *
 * The application fills in the pictures after construction; until then, and where a picture is null, nothing is drawn.
 * The button is not resized to them. A disabled button shows the normal picture. A press by the program
 * (setDown()) emits no signal and shows nothing. Any signal's receiver may delete the button; a button group does not
 * hear of a release because the focus left.
 */
class SKINWIDGETS_EXPORT WhineExitButton : public QButton
{
    Q_OBJECT

public:
    // Has no pictures yet. Draws itself pressed and released with its signals pressed() and released(), before
    // receivers that are connected later hear of them.
    explicit WhineExitButton(QWidget* parent = nullptr, const char* name = nullptr, WFlags f = 0);
    ~WhineExitButton() override;

    // Takes the three pictures and shows the one that fits.
    void setPictures(const QPixmap& normal, const QPixmap& focus, const QPixmap& pressed);
    // Takes the pictures close_normal, close_focus and close_press, 20 x 21 pixels, that the library carries.
    void setBuiltinPictures();

public slots:
    // Shows the pressed picture.
    void draw_pressed();
    // Shows the focused picture where the button has the keyboard focus, the normal one otherwise.
    void draw_released();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

    // What is shown idle, with the keyboard focus and pressed; null: nothing.
    QPixmap normalPixmap;
    QPixmap focusPixmap;
    QPixmap pressedPixmap;
};

#endif
