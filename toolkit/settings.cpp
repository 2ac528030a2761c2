#include "toolkit/toolkit.h"

#include <QGuiApplication>

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
    if (qGuiApp)
        QGuiApplication::sync();
}
