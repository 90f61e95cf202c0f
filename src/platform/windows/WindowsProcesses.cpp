#include "platform/windows/WindowsProcesses.h"

#include "platform/CommandLine.h"
#include "platform/windows/Ansi.h"
#include "platform/windows/ProcessList.h"
#include "platform/windows/SystemFailure.h"

#include <QDir>
#include <QFileInfo>

#include <windows.h>

#include <array>
#include <psapi.h>

namespace platform {

namespace {

HANDLE handleOf(ProcessHandle process)
{
    // NOLINTNEXTLINE(performance-no-int-to-ptr): it was made from one
    return reinterpret_cast<HANDLE>(process);
}

} // namespace

ProcessId WindowsProcesses::start(const QString &commandLine)
{
    const QString program = splitCommandLine(commandLine).first();
    const QByteArray directory =
        toAnsi(QDir::toNativeSeparators(QFileInfo(program).absolutePath()));
    QByteArray text = toAnsi(commandLine); // the system may write into it
    if (!isAnsi(commandLine)) {
        throw systemFailure(ERROR_NO_UNICODE_TRANSLATION, commandLine);
    }

    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION process{};
    // The server does not have the low priority that a task scheduler may have given to the tool.
    if (CreateProcessA(nullptr, text.data(), nullptr, nullptr, FALSE, NORMAL_PRIORITY_CLASS,
                       nullptr, directory.constData(), &startup, &process) == 0) {
        throw lastFailure(program);
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<ProcessId>(process.dwProcessId);
}

ProcessHandle WindowsProcesses::open(ProcessId id)
{
    constexpr DWORD FullAccess = 0x1F0FFF; // what every version of the system knows as all
    return reinterpret_cast<ProcessHandle>(OpenProcess(FullAccess, FALSE, static_cast<DWORD>(id)));
}

void WindowsProcesses::close(ProcessHandle process)
{
    CloseHandle(handleOf(process));
}

std::optional<std::uint32_t> WindowsProcesses::exitCode(ProcessHandle process)
{
    DWORD code = 0;
    return GetExitCodeProcess(handleOf(process), &code) != 0 ? std::optional<std::uint32_t>(code)
                                                             : std::nullopt;
}

bool WindowsProcesses::wait(ProcessHandle process, int milliseconds)
{
    return WaitForSingleObject(handleOf(process), static_cast<DWORD>(milliseconds)) ==
           WAIT_OBJECT_0;
}

bool WindowsProcesses::terminate(ProcessHandle process)
{
    constexpr int EndMilliseconds = 1000;
    if (TerminateProcess(handleOf(process), 0) == 0) {
        return wait(process, 0); // one that has ended by itself cannot be terminated
    }
    wait(process, EndMilliseconds); // so that a search for the server does not find it any more
    return true;
}

std::optional<QString> WindowsProcesses::executablePath(ProcessHandle process)
{
    HMODULE executable = nullptr; // the first of a process's modules
    DWORD needed = 0;
    if (EnumProcessModules(handleOf(process), &executable, sizeof(HMODULE), &needed) == 0) {
        return std::nullopt;
    }
    std::array<char, 1024> path{};
    const DWORD length = GetModuleFileNameExA(handleOf(process), executable, path.data(),
                                              static_cast<DWORD>(path.size()));
    return length > 0 ? std::optional(fromAnsi(path.data(), static_cast<qsizetype>(length)))
                      : std::nullopt;
}

std::vector<ProcessId> WindowsProcesses::running()
{
    std::vector<DWORD> ids(1024);
    DWORD bytes = 0;
    const auto listed = [&] {
        const auto room = static_cast<DWORD>(ids.size() * sizeof ids.front());
        return EnumProcesses(ids.data(), room, &bytes) == 0 || bytes < room;
    };
    while (!listed()) { // a list that fills all the room may be cut
        ids.resize(2 * ids.size());
    }
    ids.resize(bytes / sizeof ids.front());
    return {ids.begin(), ids.end()};
}

std::optional<QString> WindowsProcesses::program(ProcessId id)
{
    auto *const process =
        OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(id));
    if (process == nullptr) {
        return std::nullopt;
    }
    std::array<char, 1024> path{};
    auto length = static_cast<DWORD>(path.size());
    const bool known = QueryFullProcessImageNameA(process, 0, path.data(), &length) != 0;
    CloseHandle(process);
    return known ? std::optional(fromAnsi(path.data(), static_cast<qsizetype>(length)))
                 : std::nullopt;
}

std::optional<std::vector<ProcessEntry>> WindowsProcesses::snapshot()
{
    const auto list = processList();
    if (!list) {
        return std::nullopt;
    }
    std::vector<ProcessEntry> result;
    for (const PROCESSENTRY32W &entry : *list) {
        result.push_back({static_cast<ProcessId>(entry.th32ProcessID),
                          QString::fromWCharArray(entry.szExeFile)});
    }
    return result;
}

std::int32_t WindowsProcesses::systemVersion()
{
    return static_cast<std::int32_t>(GetVersion());
}

} // namespace platform
