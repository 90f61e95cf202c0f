#pragma once

#include <QString>

#include <cstdint>

namespace platform {

/// The system's text for a Windows error code, in the words of the system that runs; empty for a
/// code that it has no text for. The text may end in a line break.
QString systemMessage(std::uint32_t code);

} // namespace platform
