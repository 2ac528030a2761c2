#include "toolkit/qbutton.h"

#include <QFocusEvent>
#include <QPainter>
#include <QPointer>

QButton::QButton(QWidget* parent, const char* name, WFlags f) : ToolkitWidget(parent, name, f) {}

QButton::~QButton() = default;

void QButton::drawButton(QPainter*) {}

void QButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawButton(&painter);
}

void QButton::focusOutEvent(QFocusEvent* event)
{
    // Without the focus a held button is let go. The base's handler would do so too, but goes on working on a button
    // that a receiver of released() may have deleted.
    if (isDown() && event->reason() != Qt::PopupFocusReason) {
        const QPointer<QButton> self(this);
        setDown(false);
        emit released();
        if (!self)
            return;
    }
    ToolkitWidget::focusOutEvent(event);
}
