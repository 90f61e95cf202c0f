#pragma once

#include "platform/Processes.h"

#include <sys/types.h>
#include <vector>

namespace platform {

/// Processes by process file descriptors (pidfd), which name one process for good; a handle is
/// such a descriptor. The system keeps no exit code for a process that is not our child, so an
/// ended one reports 0; one that a signal ended reports 128 and the signal's number, as shells do.
class LinuxProcesses final : public Processes
{
public:
    ProcessId start(const QString &commandLine) override;
    ProcessHandle open(ProcessId id) override;
    void close(ProcessHandle process) override;
    std::optional<std::uint32_t> exitCode(ProcessHandle process) override;
    bool wait(ProcessHandle process, int milliseconds) override;
    bool terminate(ProcessHandle process) override;
    std::optional<QString> executablePath(ProcessHandle process) override;
    std::vector<ProcessId> running() override;
    std::optional<QString> program(ProcessId id) override;
    std::optional<std::vector<ProcessEntry>> snapshot() override { return std::nullopt; }
    std::int32_t systemVersion() override { return 0; }

private:
    void reapEndedChildren();

    std::vector<pid_t> m_children;
};

} // namespace platform
