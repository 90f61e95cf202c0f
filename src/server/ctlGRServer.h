#pragma once

#include "platform/Timer.h"
#include "server/clsProcess.h"
#include "server/ctlServerStatus.h"

#include <QString>

#include <memory>

/// Supervises the game's dedicated server: finds a running one or starts one, watches it through
/// the status query, and restarts one that no longer answers when the options ask for it.
///
///     state                  process  monitoring  polling started  timers armed
///     idle                   none     no          no               none
///     grace period           held     yes         no               start-up
///     polling                held     yes         yes              polling; dead while a restart
///                                                                  is pending
///     held, not monitoring   held     no          no               none
///
/// The options are read when they are needed, so that a change counts from the next use on. No
/// operation throws; a failure is recorded and reads as false.
class ctlGRServer
{
public:
    ctlGRServer();
    ctlGRServer(const ctlGRServer &) = delete;
    ctlGRServer &operator=(const ctlGRServer &) = delete;
    ~ctlGRServer() = default;

    const QString &CMDLineArgs() const { return m_commandLineArguments; }
    void setCMDLineArgs(const QString &arguments) { m_commandLineArguments = arguments; }
    /// The full path that the executable of a found server must have.
    const QString &EXEPath() const { return m_executablePath; }
    void setEXEPath(const QString &path) { m_executablePath = path; }

    bool Connected() const { return m_process != nullptr; }
    /// The held process, or null.
    const clsProcess *Process() const { return m_process.get(); }
    /// True for a process that was found, false for one that was started here.
    bool ProcessLocated() const { return !m_created; }
    ServerQueryStatus Status() const;
    /// The status query, for those who show the server's details.
    const ctlServerStatus &StatusObject() const { return uctlServerStatus; }

    QString StatusText() const;
    QString ProcessStatusText() const;
    QString NetworkStatusText() const;

    /// Starts the server, or with `in_blnCheckForServer` takes over a running one if there is one.
    bool StartGRServer(bool in_blnCheckForServer);
    /// Stops the held server; blocks for up to 5 s. When it cannot be stopped an empty process
    /// stays held.
    bool StopGRServer();
    /// Takes over a running server; of several the lowest in stacking order. Changes nothing when
    /// there is none.
    bool FindGRServer();
    /// Whether the window is a server's of this directory; `out_objProcess` is then its process,
    /// else null.
    bool IsHwndGRServer(platform::WindowHandle in_hwnd,
                        std::unique_ptr<clsProcess> &out_objProcess);
    void StartMonitoring();
    void StopMonitoring();
    /// Lets go of the server, which runs on.
    void Disconnect();

    void tmrStartupTimeout_Timer();
    void tmrPollingFrequency_Timer();
    void tmrDead_Timer();

    /// The start-up grace period.
    platform::Timer tmrStartupTimeout;
    platform::Timer tmrPollingFrequency;
    /// How long a server may seem dead before it is restarted.
    platform::Timer tmrDead;
    ctlServerStatus uctlServerStatus;

private:
    void readLastAnswer();

    QString m_commandLineArguments;
    QString m_executablePath;
    bool m_created = false;
    bool m_monitoring = false;
    bool m_pollingStarted = false;
    bool m_seemsDead = false;
    std::unique_ptr<clsProcess> m_process;
};
