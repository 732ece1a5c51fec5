#include "app/Constants.h"
