#pragma once

#include <QString>

#include <cstdint>

/// The system's message text for a Windows error code, at most 4096 characters; empty for a code
/// without one. The text keeps the line end that the system gives it.
QString FormatAPIResultMessage(std::uint32_t code);
