#include "app/Mcommon.h"
