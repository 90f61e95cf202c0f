#pragma once

#include "platform/Windows.h"

/// For each top-level window in turn: asks the first one that belongs to the process to close.
/// Returns whether the enumeration goes on.
bool TerminateAppEnum(platform::WindowHandle window, const platform::ProcessId *process);
