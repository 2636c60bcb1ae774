#include "app/Electrode.h"
