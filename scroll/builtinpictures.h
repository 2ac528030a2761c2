#ifndef SKINWIDGETS_SCROLL_BUILTINPICTURES_H
#define SKINWIDGETS_SCROLL_BUILTINPICTURES_H

// The table lies where the stand-alone controls reach it, too.
#include "toolkit/builtinpictures.h"

#endif
