#pragma once

#include <windows.h>

#include <optional>
#include <tlhelp32.h>
#include <vector>

namespace platform {

/// What the system tells of all its processes; nothing where it cannot.
inline std::optional<std::vector<PROCESSENTRY32W>> processList()
{
    auto *const processes = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (processes == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    std::vector<PROCESSENTRY32W> result;
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(processes, &entry); more != 0;
         more = Process32NextW(processes, &entry)) {
        result.push_back(entry);
    }
    CloseHandle(processes);
    return result;
}

} // namespace platform
