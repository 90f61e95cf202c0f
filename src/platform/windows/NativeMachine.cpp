#include "platform/DesktopMessageBoxes.h"
#include "platform/HookRunner.h"
#include "platform/Machine.h"
#include "platform/SystemClock.h"
#include "platform/SystemFiles.h"
#include "platform/windows/WindowsAutostart.h"
#include "platform/windows/WindowsProcessEnd.h"
#include "platform/windows/WindowsProcesses.h"
#include "platform/windows/WindowsWindows.h"

namespace platform {

const Machine &nativeMachine()
{
    static WindowsAutostart autostart;
    static SystemClock clock;
    static SystemFiles files;
    static HookRunner hooks;
    static DesktopMessageBoxes messageBoxes;
    static WindowsProcessEnd processEnd;
    static WindowsProcesses processes;
    static WindowsWindows windows;
    static const Machine machine{autostart,    clock,      files,     hooks,
                                 messageBoxes, processEnd, processes, windows};
    return machine;
}

} // namespace platform
