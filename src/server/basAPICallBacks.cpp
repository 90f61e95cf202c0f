#include "server/basAPICallBacks.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"

bool TerminateAppEnum(platform::WindowHandle window, const platform::ProcessId *process)
{
    bool goOn = true;
    Trap({"API Callbacks", "TerminateAppEnum", "None"}, [&] {
        platform::Windows &windows = gRoot->Machine().windows;
        if (windows.owner(window) == *process) {
            goOn = false;
            windows.postClose(window);
        }
    });
    return goOn;
}
