#pragma once

#include "platform/Failure.h"

namespace platform {

/// The failure of a system call: its errno and "WHAT: the system's text".
Failure systemFailure(int error, const QString &what);

} // namespace platform
