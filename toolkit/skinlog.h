#ifndef SKINWIDGETS_TOOLKIT_SKINLOG_H
#define SKINWIDGETS_TOOLKIT_SKINLOG_H

#include <QLoggingCategory>

// Tells skin authors what is missing or odd in a skin; switched on with QT_LOGGING_RULES="skinwidgets.skin=true".
Q_DECLARE_LOGGING_CATEGORY(skinLog)

#endif
