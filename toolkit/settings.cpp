#include "toolkit/toolkit.h"

#include <QCoreApplication>
#include <QEvent>

bool qt_left_hand_scrollbars = false;

namespace
{

QSize strutSize(0, 0);

} // namespace

QSize globalStrut()
{
    return strutSize;
}

void setGlobalStrut(const QSize& strut)
{
    strutSize = strut.expandedTo(QSize(0, 0));
}

void syncX()
{
    // Paint events and no others: QGuiApplication::sync() would let input and timers in.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
}
