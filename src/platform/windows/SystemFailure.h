#pragma once

#include "platform/Failure.h"

namespace platform {

/// The failure of the system call just made: its error code and "WHAT: the system's text".
Failure lastFailure(const QString &what);

} // namespace platform
