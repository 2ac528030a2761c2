#include "toolkit/skinlog.h"

Q_LOGGING_CATEGORY(skinLog, "skinwidgets.skin", QtWarningMsg)
