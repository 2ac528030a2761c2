#include "controls/whineexitbutton.h"

#include "toolkit/builtinpictures.h"

#include <QFocusEvent>
#include <QPointer>

namespace
{

QPixmap builtinPixmap(const char* name)
{
    return QPixmap::fromImage(QImage::fromData(skinwidgets::findBuiltinImage(name)));
}

} // namespace

WhineExitButton::WhineExitButton(QWidget* parent, const char* name, WFlags f) : QButton(parent, name, f)
{
    connect(this, SIGNAL(pressed()), this, SLOT(draw_pressed()));
    connect(this, SIGNAL(released()), this, SLOT(draw_released()));
}

WhineExitButton::~WhineExitButton() = default;

void WhineExitButton::setPictures(const QPixmap& normal, const QPixmap& focus, const QPixmap& pressed)
{
    normalPixmap = normal;
    focusPixmap = focus;
    pressedPixmap = pressed;
    if (isDown())
        draw_pressed();
    else
        draw_released();
}

void WhineExitButton::setBuiltinPictures()
{
    setPictures(builtinPixmap("close_normal"), builtinPixmap("close_focus"), builtinPixmap("close_press"));
}

void WhineExitButton::draw_pressed()
{
    setBackgroundPixmap(pressedPixmap);
}

void WhineExitButton::draw_released()
{
    setBackgroundPixmap(hasFocus() ? focusPixmap : normalPixmap);
}

void WhineExitButton::focusInEvent(QFocusEvent* event)
{
    QButton::focusInEvent(event);
    setBackgroundPixmap(focusPixmap);
}

void WhineExitButton::focusOutEvent(QFocusEvent* event)
{
    const QPointer<WhineExitButton> self(this);
    QButton::focusOutEvent(event);
    if (self)
        setBackgroundPixmap(normalPixmap);
}
