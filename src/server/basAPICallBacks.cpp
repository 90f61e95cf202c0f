#include "server/basAPICallBacks.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"

bool TerminateAppEnum(platform::WindowHandle window, const platform::ProcessId *process)
{
    bool goOn = true;
    trap({"API Callbacks", "TerminateAppEnum", "None"}, [&] {
        platform::Windows &windows = gRoot->Machine().windows;
        // No process has the id 0, which is what a window without a known owner tells.
        if (*process != 0 && windows.owner(window) == *process) {
            goOn = false;
            windows.postClose(window);
        }
    });
    return goOn;
}
