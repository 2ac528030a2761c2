#include "skinbase/panel.h"
