#pragma once

#include "platform/Failure.h"

#include <cstdint>

namespace platform {

/// The failure with a system error code and "WHAT: the system's text".
Failure systemFailure(std::uint32_t code, const QString &what);
/// The same of the system call just made.
Failure lastFailure(const QString &what);

} // namespace platform
