#include "platform/DesktopMessageBoxes.h"
#include "platform/HookRunner.h"
#include "platform/Machine.h"
#include "platform/SystemClock.h"
#include "platform/SystemFiles.h"
#include "platform/linux/LinuxAutostart.h"
#include "platform/linux/LinuxProcessEnd.h"
#include "platform/linux/LinuxProcesses.h"
#include "platform/linux/LinuxWindows.h"

namespace platform {

const Machine &nativeMachine()
{
    static SystemClock clock;
    static SystemFiles files;
    static LinuxAutostart autostart(files);
    static HookRunner hooks;
    static DesktopMessageBoxes messageBoxes;
    static LinuxProcessEnd processEnd;
    static LinuxProcesses processes;
    static LinuxWindows windows;
    static const Machine machine{autostart,    clock,      files,     hooks,
                                 messageBoxes, processEnd, processes, windows};
    return machine;
}

} // namespace platform
