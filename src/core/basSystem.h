#pragma once

#include <QString>

#include <cstdint>

/// Whether the tool is started whenever a user logs on to the machine. A failure is recorded and
/// shown in a message box, and reads as no. The setting is kept by the system only.
bool GetRunOnStartup();

/// Switches that setting; the result is the state that holds afterwards. A failure is recorded and
/// shown; switching off what is not on is one (code 2).
bool SetRunOnStartup(bool in_blnState);

/// The system's message text for a Windows error code, at most 4095 characters; empty for a code
/// without one. The text keeps the line end that the system gives it.
QString FormatAPIResultMessage(std::uint32_t code);
