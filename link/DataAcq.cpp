#include "link/DataAcq.h"
