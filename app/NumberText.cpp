#include "app/NumberText.h"
