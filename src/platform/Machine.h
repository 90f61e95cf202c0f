#pragma once

#include "platform/Autostart.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/Hooks.h"
#include "platform/MessageBoxes.h"
#include "platform/ProcessEnd.h"
#include "platform/Processes.h"
#include "platform/Windows.h"

namespace platform {

/// The services of the machine that Qt lacks or that a test must be able to make fail.
struct Machine
{
    Autostart &autostart;
    Clock &clock;
    Files &files;
    Hooks &hooks;
    MessageBoxes &messageBoxes;
    ProcessEnd &processEnd;
    Processes &processes;
    Windows &windows;
};

/// The services of the system that the program was built for. They live as long as the program.
const Machine &nativeMachine();

} // namespace platform
