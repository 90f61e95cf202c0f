#pragma once

#include <QString>

#include <optional>
#include <sys/types.h>

/// Windows programs, which Wine runs on this system.
namespace platform {

/// Whether the file is a Windows executable: it begins with the bytes "MZ".
bool isWindowsProgram(const QString &path);

/// The Windows program that a process of Wine runs. The process itself runs Wine's loader, which
/// maps the program's file. Nothing when the process has mapped none.
std::optional<QString> programMappedBy(pid_t process);

} // namespace platform
