#ifndef SKINWIDGETS_TOOLKIT_APPLICATION_H
#define SKINWIDGETS_TOOLKIT_APPLICATION_H

#include "toolkit/export.h"

#include <QString>

namespace skinwidgets
{

// The name under which an application's pictures are found: the object name of the application object; where that is
// empty, the application name. Empty without an application object.
SKINWIDGETS_EXPORT QString applicationName();

} // namespace skinwidgets

#endif
