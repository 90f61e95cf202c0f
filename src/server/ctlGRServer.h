#pragma once

#include "core/iMainWindow.h"
#include "platform/Timer.h"
#include "server/RepeatedEnds.h"
#include "server/clsProcess.h"
#include "server/ctlServerStatus.h"

#include <QString>

#include <memory>
#include <optional>

/// How the game server fares, for somebody who looks in.
enum class ServerHealth {
    Unknown, ///< nobody wants one, or it has not been asked yet
    Well,    ///< it answers
    Ailing,  ///< it does not run or answer, and is going to be restarted
    Down     ///< the same, and nothing is going to be done
};

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
/// A hung server is restarted when the dead timer ticks while it seems dead and a request is, or
/// stays, unanswered, whatever the two intervals: the restart that falls due during a request is
/// carried out when that one has had no answer either. At most it takes 5 s, a polling interval,
/// ServerTimeout and 5 s from the first unanswered request on. A timer that comes late by more than
/// a polling interval (and a quarter of a second) proves nothing, for this program itself may have
/// been stopped, and neither does a time in which no request could be sent: the server is then
/// asked once more.
///
/// There are never two servers of one directory: a held one that is active is not started again,
/// and before a start the running processes are looked through for this directory's program. One
/// without a window yet is waited for, ServerStartupTimeout at most; beside another user's, which
/// cannot be taken over, none is started.
///
/// What supervise() restarts and the restart of a hung server are owed: one that fails is tried
/// again at every look, until it succeeds, the server is found, somebody stops it, or the option
/// goes off.
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

    void setCMDLineArgs(const QString &arguments) { m_commandLineArguments = arguments; }
    /// The full path that the executable of a found server must have.
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

    ServerHealth health() const;
    /// Why there is no server, or one could not be stopped, for people; empty where all is as it
    /// is wanted.
    const QString &problem() const { return m_problem; }

    // Of the interface, without a user here.
    const QString &CMDLineArgs() const { return m_commandLineArguments; }
    const QString &EXEPath() const { return m_executablePath; }

    /// Starts the server unless one is held and active. Takes over a running one: in any case where
    /// its process shows that it is this directory's, with `in_blnCheckForServer` by its window
    /// alone. True also while one that has no window yet is waited for.
    bool StartGRServer(bool in_blnCheckForServer);
    /// Stops the held server; blocks for up to 5 s. When it cannot be stopped an empty process
    /// stays held. Nothing is owed any more.
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
    /// One look at the server, at every sixth heartbeat: restarts one that has ended, adopts one
    /// that was started by hand, does what is owed, and sets timers going that a setting of 0 had
    /// stopped.
    void supervise();

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
    /// What is to be done at the next look, while no server is held.
    enum class Owed { Nothing, Start, RestartOfEnded, RestartOfHung };
    /// What is known of a server that does not answer.
    struct Silence
    {
        bool seemsDead = false;
        qint64 since = 0;        ///< the clock's millisecond
        bool told = false;       ///< the hook, where nothing is going to be done
        bool restartDue = false; ///< as soon as the request that is outstanding has had no answer
        bool inDoubt = false;    ///< this program may have been the one that was late
        bool askedAgain = false; ///< because of that
    };
    /// The process without a window that is waited for, and the clock's millisecond until which.
    struct Waiting
    {
        platform::ProcessId process;
        qint64 until;
    };

    void readLastAnswer();
    void tellLongSilence();
    void forgetSilence();
    bool start(bool checkForServer, clsProcess::Attempt attempt);
    void requestTimedOut(qint64 lateness);
    void restartHungServer();
    void startOwed(Owed reason);
    bool payOwed();
    bool isStillOwed() const;
    bool waitsForWindow(platform::ProcessId process);
    bool create(clsProcess::Attempt attempt);
    void noteEnd();
    bool stopProcess();
    void tellRestart(RestartReason reason) const;
    void armIdleTimers();
    bool runsProgram(platform::ProcessId process) const;
    std::optional<platform::ProcessId> runningServer() const;

    QString m_commandLineArguments;
    QString m_executablePath;
    bool m_created = false;
    bool m_monitoring = false;
    bool m_pollingStarted = false;
    bool m_hasAnswered = false;
    QString m_problem;
    Silence m_silence;
    Owed m_owed = Owed::Nothing;
    std::optional<Waiting> m_waiting;
    RepeatedEnds m_ends;
    std::unique_ptr<clsProcess> m_process;
};
