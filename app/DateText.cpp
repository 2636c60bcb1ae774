#include "app/DateText.h"
