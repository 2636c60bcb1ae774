#include "link/CommPort.h"
