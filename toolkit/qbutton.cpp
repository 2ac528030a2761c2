#include "toolkit/qbutton.h"

#include <QPainter>

QButton::QButton(QWidget* parent, const char* name, WFlags f) : ToolkitWidget(parent, name, f) {}

QButton::~QButton() = default;

void QButton::drawButton(QPainter*) {}

void QButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawButton(&painter);
}
