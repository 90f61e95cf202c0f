#include "platform/Foreground.h"

#include <windows.h>

namespace platform {

void letOthersComeToFront()
{
    AllowSetForegroundWindow(ASFW_ANY); // refused where there is nothing to let
}

} // namespace platform
