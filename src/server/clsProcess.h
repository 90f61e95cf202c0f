#pragma once

#include "platform/Windows.h"

#include <QString>

/// One process of the operating system: created from a command line, or attached to through one
/// of its windows. It owns the open handle, which is closed exactly once. An object is used for
/// one process. No operation throws; a failure is recorded and reads as false.
class clsProcess
{
public:
    enum class Attempt { Single, OneOfMany };

    clsProcess() = default;
    clsProcess(const clsProcess &) = delete;
    clsProcess &operator=(const clsProcess &) = delete;
    ~clsProcess();

    /// Of an attached process the full path of its executable, of a created one its command line.
    const QString &Path() const { return m_path; }
    /// 0 when no process is held.
    platform::ProcessId PID() const { return m_id; }

    /// Lets go of the process; it runs on.
    void Clear();
    /// Starts a process from a command line by Windows' rules for quotes and holds it. Why that
    /// failed is recorded; in a series of attempts, each reason once.
    bool Create(const QString &commandLine, Attempt attempt = Attempt::Single);
    /// Why Create() failed.
    const QString &failure() const { return m_failure; }
    /// A series of attempts is over.
    static void forgetAttempts();
    /// Holds the process that owns the window.
    bool GetFromHwnd(platform::WindowHandle window);
    /// The exit code of the held process; platform::StillActiveCode while it runs.
    std::uint32_t exitCode() const;
    /// Whether the held process has not ended.
    bool StillActive() const;
    /// Asks the first of the process's windows to close, waits up to 5 s (nothing else happens
    /// meanwhile), then ends the process by force. True when it is ended; the object is empty
    /// afterwards either way.
    bool StopProcess();

private:
    bool GetFromHwndPSAPI(platform::ProcessId id);
    bool GetFromHwndToolhelp(platform::ProcessId id);
    bool terminateStubborn() const;
    void CloseHandle();

    QString m_path;
    QString m_failure;
    platform::ProcessId m_id = 0;
    platform::ProcessHandle m_handle = platform::NoProcess;
};
