#include "settings/mWinInit.h"
