// The shared constants are inline variables defined in Constants.h, so that every file
// sees them initialised before its own static objects. This file keeps the header in the
// core library's sources, where it is compiled once on its own to check it stands alone.
#include "app/Constants.h"
