#include "scroll/clipperwidget.h"

DQClipperWidget::DQClipperWidget(QWidget* parent, const char* name, WFlags f) : ViewportWidget(parent, name, f) {}

DQClipperWidget::~DQClipperWidget() = default;

bool DQClipperWidget::focusNextPrevChild(bool next)
{
    return moving || ViewportWidget::focusNextPrevChild(next);
}
