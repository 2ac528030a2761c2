#ifndef SKINWIDGETS_TOOLKIT_WIDGETFLAGS_H
#define SKINWIDGETS_TOOLKIT_WIDGETFLAGS_H

#include "toolkit/toolkit.h"

class QWidget;

namespace skinwidgets
{

// The window flags of today that the old widget flags mean; attributes are not among them.
SKINWIDGETS_EXPORT Qt::WindowFlags windowFlagsFor(WFlags flags);

// Gives the widget the window flags, the modality and the attributes that the old widget flags mean. Flags that mean
// nothing today (how an old window system clipped or saved its windows) change nothing.
SKINWIDGETS_EXPORT void applyWidgetFlags(QWidget* widget, WFlags flags);

} // namespace skinwidgets

#endif
