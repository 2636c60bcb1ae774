#include "files/FileOpr.h"
