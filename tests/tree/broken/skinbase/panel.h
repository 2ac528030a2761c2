#include "skinbase/secret.h"
