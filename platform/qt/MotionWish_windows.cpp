#include "platform/qt/MotionWish.h"

#include <windows.h>

namespace platform {

bool UserWantsLessMotion() {
    BOOL animated = TRUE;
    return SystemParametersInfoW(SPI_GETCLIENTAREAANIMATION, 0, &animated, 0) && !animated;
}

} // namespace platform
