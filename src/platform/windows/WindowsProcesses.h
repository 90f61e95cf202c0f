#pragma once

#include "platform/Processes.h"

namespace platform {

/// Processes by the system's own handles and ids.
class WindowsProcesses final : public Processes
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
    std::optional<std::vector<ProcessEntry>> snapshot() override;
    std::int32_t systemVersion() override;
};

} // namespace platform
