#ifndef SKINWIDGETS_TOOLKIT_EXPORT_H
#define SKINWIDGETS_TOOLKIT_EXPORT_H

#include <QtGlobal>

// Everything in the shared library is hidden unless a declaration carries this mark.
#if defined(SKINWIDGETS_STATIC)
#define SKINWIDGETS_EXPORT
#elif defined(SKINWIDGETS_BUILDING_LIBRARY)
#define SKINWIDGETS_EXPORT Q_DECL_EXPORT
#else
#define SKINWIDGETS_EXPORT Q_DECL_IMPORT
#endif

#endif
