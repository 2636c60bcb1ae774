#include "chem/Measure.h"
