#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace platform {

/// The system's number of a process; 0 is none.
using ProcessId = std::int32_t;

/// An open process; it stays that one process even when the system gives its id to another.
using ProcessHandle = std::intptr_t;
inline constexpr ProcessHandle NoProcess = 0;

/// The exit code of a process that has not ended.
inline constexpr std::uint32_t StillActiveCode = 259;

struct ProcessEntry
{
    ProcessId id;
    QString executable;
};

/// The system's processes.
class Processes
{
public:
    virtual ~Processes() = default;

    /// Starts a program from a command line by Windows' rules for quotes, in the directory of the
    /// program, as a process that outlives this one and inherits nothing open from it.
    /// Throws Failure with the reason when it cannot be started.
    virtual ProcessId start(const QString &commandLine) = 0;

    /// Opens a process with full access; NoProcess when it is gone or refused.
    virtual ProcessHandle open(ProcessId id) = 0;
    virtual void close(ProcessHandle process) = 0;

    /// StillActiveCode while the process runs, else its exit code, or 0 where the system keeps
    /// none; nothing when the handle is refused.
    virtual std::optional<std::uint32_t> exitCode(ProcessHandle process) = 0;
    /// Waits for the end of the process; true when it ended in time.
    virtual bool wait(ProcessHandle process, int milliseconds) = 0;
    /// Ends the process by force with exit code 0; false when that is refused.
    virtual bool terminate(ProcessHandle process) = 0;

    /// The full path of the program that the process runs; nothing when it cannot be had.
    virtual std::optional<QString> executablePath(ProcessHandle process) = 0;
    /// All processes that run now. Throws Failure where they cannot be had.
    virtual std::vector<ProcessId> running() = 0;
    /// The full path of the program that a process runs, be it another user's, as far as the system
    /// tells it; nothing when it does not.
    virtual std::optional<QString> program(ProcessId id) = 0;
    /// All processes with the names of their programs; nothing when the system gives no list.
    /// Asked only where systemVersion() tells of the 9x family.
    virtual std::optional<std::vector<ProcessEntry>> snapshot() = 0;
    /// The system's version number; negative on the 9x family of Windows, which lacks
    /// executablePath().
    virtual std::int32_t systemVersion() = 0;
};

} // namespace platform
