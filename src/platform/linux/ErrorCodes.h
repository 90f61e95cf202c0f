#pragma once

#include <cstdint>
#include <optional>

/// Error codes of Windows, in which the system's failures are reported everywhere, and the errno
/// values that mean the same here.
namespace platform {

/// The code for an errno; ERROR_GEN_FAILURE (31) for one without a counterpart.
std::uint32_t windowsCode(int error);
/// The errno for a code; nothing for one without a counterpart.
std::optional<int> errorOf(std::uint32_t windowsCode);

} // namespace platform
