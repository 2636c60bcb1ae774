#include "app/CodePage.h"
