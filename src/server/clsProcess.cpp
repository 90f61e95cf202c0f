#include "server/clsProcess.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/Failure.h"
#include "platform/Machine.h"
#include "server/basAPICallBacks.h"
#include "server/basWINAPI.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// How long a process may take to close on request, in milliseconds.
constexpr int CloseMilliseconds = 5000;

constexpr Module Here{"Process Class", "Unknown"};

constexpr Routine Creation = Here("Create", HookEvent::StartFailed);

platform::Processes &processes()
{
    return gRoot->Machine().processes;
}

} // namespace

clsProcess::~clsProcess()
{
    CloseHandle();
}

void clsProcess::CloseHandle()
{
    const platform::ProcessHandle handle = std::exchange(m_handle, platform::NoProcess);
    if (handle != platform::NoProcess) {
        processes().close(handle);
    }
}

void clsProcess::Clear()
{
    CloseHandle();
    m_id = 0;
    m_path.clear();
}

bool clsProcess::Create(const QString &commandLine, Attempt attempt)
{
    const auto create = withReason(m_failure, [&] {
        Clear();
        const platform::ProcessId id = processes().start(commandLine);
        const platform::ProcessHandle handle = id == 0 ? platform::NoProcess : processes().open(id);
        if (handle == platform::NoProcess) {
            throw platform::Failure(platform::Failure::PathAccess,
                                    u"%1: The process cannot be opened"_s.arg(commandLine));
        }
        m_path = commandLine;
        m_id = id;
        m_handle = handle;
        return true;
    });
    return attempt == Attempt::Single ? trap(Creation, create) : trapRepeated(Creation, create);
}

void clsProcess::forgetAttempts()
{
    noteSuccess(Creation);
}

bool clsProcess::GetFromHwnd(platform::WindowHandle window)
{
    return trap(Here("GetFromHwnd"), [&] {
        Clear();
        const platform::ProcessId id = gRoot->Machine().windows.owner(window);
        if (id == 0) {
            return false;
        }
        return fnIsWindowsNT() ? GetFromHwndPSAPI(id) : GetFromHwndToolhelp(id);
    });
}

bool clsProcess::GetFromHwndPSAPI(platform::ProcessId id)
{
    m_handle = processes().open(id);
    if (m_handle == platform::NoProcess) {
        return false;
    }
    const std::optional<QString> path = processes().executablePath(m_handle);
    if (!path || path->isEmpty()) {
        CloseHandle();
        return false;
    }
    m_path = *path;
    m_id = id;
    return true;
}

bool clsProcess::GetFromHwndToolhelp(platform::ProcessId id)
{
    const auto entries = processes().snapshot();
    if (!entries) {
        return false;
    }
    const auto entry =
        std::find_if(entries->begin(), entries->end(),
                     [id](const platform::ProcessEntry &candidate) { return candidate.id == id; });
    if (entry == entries->end() || entry->executable.isEmpty()) {
        return false;
    }
    m_path = entry->executable;
    m_id = id;
    // A refused handle is no failure here: the process then counts as not active.
    m_handle = processes().open(id);
    return true;
}

std::uint32_t clsProcess::exitCode() const
{
    return trap(Here("StillActive"), [this] { return processes().exitCode(m_handle).value_or(0); });
}

bool clsProcess::StillActive() const
{
    return exitCode() == platform::StillActiveCode;
}

bool clsProcess::StopProcess()
{
    const bool stopped = trap(Here("StopProcess"), [this] {
        // The id of a process that has ended may be another one's by now.
        if (!processes().wait(m_handle, 0)) {
            for (const platform::WindowHandle window : gRoot->Machine().windows.topLevel()) {
                if (!TerminateAppEnum(window, &m_id)) {
                    break;
                }
            }
        }
        return processes().wait(m_handle, CloseMilliseconds) || terminateStubborn();
    });
    Clear();
    return stopped;
}

bool clsProcess::terminateStubborn() const
{
    const bool terminated = processes().terminate(m_handle);
    // What keeps it may be the system's message about it, which bears the program's name.
    for (const platform::WindowHandle window : fnFindWindows(u"GhostRecon.exe"_s)) {
        gRoot->Machine().windows.postClose(window);
    }
    return terminated;
}
