#include "platform/System.h"
