#include "platform/FirstInstance.h"

#include <windows.h>

namespace platform {

void letOthersComeToFront()
{
    AllowSetForegroundWindow(ASFW_ANY); // refused where there is nothing to let
}

qint64 processServing(qintptr descriptor)
{
    ULONG id = 0;
    return GetNamedPipeServerProcessId(reinterpret_cast<HANDLE>(descriptor), &id) != 0 ? id : 0;
}

} // namespace platform
