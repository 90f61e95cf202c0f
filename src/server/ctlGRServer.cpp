#include "server/ctlGRServer.h"

#include "core/basGamePath.h"
#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "core/iMainWindow.h"
#include "platform/Failure.h"
#include "platform/Machine.h"
#include "server/basWINAPI.h"

#include <QRegularExpression>
#include <QScopeGuard>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 MillisecondsPerSecond = 1000;

constexpr Module Here{"GR Server Class", "Unknown"};

constexpr Routine Starting = Here("StartGRServer", HookEvent::StartFailed);

QString windowCaption()
{
    return u"Ghost Recon"_s;
}

QString commandLine()
{
    // Only where the system is not Windows can a path hold a quote.
    const QString program = fnGamePath(u"GhostRecon.exe"_s).replace(u'"', u"\"\""_s);
    // Those of a settings file laid out by hand, or of a form, may stand on lines of their own.
    static const QRegularExpression lineBreak(u"\r\n|\n|\r"_s);
    const QString arguments =
        QString(gRoot->Options()->ServerCommandLineArgs()).replace(lineBreak, u" "_s);
    return u"\"%1\" -autoserve %2"_s.arg(program, arguments);
}

/// A process of this directory's program that this user may not open.
platform::Failure foreignServer(platform::ProcessId id)
{
    return {platform::Failure::PathAccess,
            u"This directory's server runs as process %1 of another user. It cannot be "
            "taken over, and none is started beside it"_s.arg(id)};
}

QString cannotStart(const QString &reason)
{
    return u"The game server could not be started. "_s + reason;
}

HookValue pidOf(const clsProcess &process)
{
    return {"pid", QString::number(process.PID())};
}

/// By more than any machine is late now and then.
bool isLate(qint64 milliseconds)
{
    constexpr qint64 Jitter = 250;
    return milliseconds > std::max<qint64>(gRoot->Options()->ServerPollingFrequency(), Jitter);
}

bool canBeOpened(platform::ProcessId id)
{
    platform::Processes &processes = gRoot->Machine().processes;
    const platform::ProcessHandle handle = processes.open(id);
    if (handle == platform::NoProcess) {
        return false;
    }
    const bool known = processes.executablePath(handle).has_value();
    processes.close(handle);
    return known;
}

} // namespace

ctlGRServer::ctlGRServer()
    : tmrStartupTimeout(gRoot->Machine().clock, [this] { tmrStartupTimeout_Timer(); }),
      tmrPollingFrequency(gRoot->Machine().clock, [this] { tmrPollingFrequency_Timer(); }),
      tmrDead(gRoot->Machine().clock, [this] { tmrDead_Timer(); })
{
    tmrPollingFrequency.setEnabled(false);
    uctlServerStatus.setTimedOut([this](qint64 lateness) { requestTimedOut(lateness); });
}

ServerQueryStatus ctlGRServer::Status() const
{
    return Connected() ? uctlServerStatus.Status() : ServerQueryStatus::Unknown;
}

QString ctlGRServer::StatusText() const
{
    if (!Connected()) {
        return u"Not Checking"_s;
    }
    switch (Status()) {
    case ServerQueryStatus::Unknown:
        return u"Unknown"_s;
    case ServerQueryStatus::Probing:
        return m_silence.seemsDead ? u"Probing Server (Seems to be dead)"_s : u"Probing Server"_s;
    case ServerQueryStatus::Responding:
        return u"Server Responding"_s;
    case ServerQueryStatus::Dead:
        return u"Server Dead"_s;
    }
    return {};
}

QString ctlGRServer::NetworkStatusText() const
{
    return u"Network Status: "_s + (Connected() ? StatusText() : u"Not Monitoring"_s);
}

QString ctlGRServer::ProcessStatusText() const
{
    if (!Connected()) {
        return u"No Process information"_s;
    }
    return u"%1%2) :%3"_s.arg(ProcessLocated() ? u"GR Process found (ID="_s
                                               : u"GR Process created (ID="_s,
                              QString::number(m_process->PID()),
                              m_process->StillActive() ? u"Running"_s : u"Not Active"_s);
}

ServerHealth ctlGRServer::health() const
{
    using enum ServerHealth;
    const auto eitherWay = [](bool willBeRestarted) { return willBeRestarted ? Ailing : Down; };
    if (m_owed == Owed::Start) {
        return Unknown; // it is still loading
    }
    if (!Connected()) {
        return isStillOwed() || !m_problem.isEmpty() ? eitherWay(isStillOwed()) : Unknown;
    }
    const clsOptions &options = *gRoot->Options();
    if (!m_process->StillActive()) {
        return eitherWay(options.AutoRestartOnProcessStop());
    }
    switch (Status()) {
    case ServerQueryStatus::Unknown:
        return Unknown;
    case ServerQueryStatus::Responding:
        return Well;
    case ServerQueryStatus::Probing:
        if (!m_silence.seemsDead) {
            return m_hasAnswered ? Well : Unknown;
        }
        [[fallthrough]];
    case ServerQueryStatus::Dead:
        break;
    }
    return eitherWay(options.AutoRestartGRServer() && options.ServerTimeout() > 0);
}

bool ctlGRServer::StartGRServer(bool in_blnCheckForServer)
{
    return start(in_blnCheckForServer, clsProcess::Attempt::Single);
}

bool ctlGRServer::start(bool checkForServer, clsProcess::Attempt attempt)
{
    const auto findOrCreate = [&] {
        if (Connected() && m_process->StillActive()) {
            return true;
        }
        const std::optional<platform::ProcessId> running = runningServer();
        if ((checkForServer || running) && FindGRServer()) {
            return true;
        }
        if (!running) {
            return create(attempt);
        }
        if (!canBeOpened(*running) && runsProgram(*running)) {
            m_problem = foreignServer(*running).description();
            recordNewFailure(Here("FindGRServer", HookEvent::StartFailed), foreignServer(*running));
            return false;
        }
        return waitsForWindow(*running) || create(attempt);
    };
    QString reason;
    const bool started = attempt == clsProcess::Attempt::Single
                             ? trap(Starting, withReason(reason, findOrCreate))
                             : trapRepeated(Starting, withReason(reason, findOrCreate));
    if (!reason.isEmpty()) {
        m_problem = cannotStart(reason);
    }
    return started;
}

bool ctlGRServer::runsProgram(platform::ProcessId process) const
{
    return gRoot->Machine().processes.program(process) == m_executablePath;
}

/// The process of this directory's program, whether it has a window or not.
std::optional<platform::ProcessId> ctlGRServer::runningServer() const
{
    for (const platform::ProcessId id : gRoot->Machine().processes.running()) {
        if (runsProgram(id)) {
            return id;
        }
    }
    return std::nullopt;
}

bool ctlGRServer::waitsForWindow(platform::ProcessId process)
{
    const qint64 now = gRoot->Machine().clock.milliseconds();
    if (!m_waiting || m_waiting->process != process) {
        m_waiting = {process,
                     now + gRoot->Options()->ServerStartupTimeout() * MillisecondsPerSecond};
    }
    if (now >= m_waiting->until) {
        return false;
    }
    if (m_owed == Owed::Nothing) {
        m_owed = Owed::Start;
    }
    return true;
}

bool ctlGRServer::create(clsProcess::Attempt attempt)
{
    m_process = std::make_unique<clsProcess>();
    if (!m_process->Create(commandLine(), attempt)) {
        m_problem = cannotStart(m_process->failure());
        Disconnect();
        return false;
    }
    m_created = true;
    const Owed paid = m_owed;
    StartMonitoring();
    tellHook(HookEvent::Started, {pidOf(*m_process)});
    if (paid == Owed::RestartOfEnded) {
        tellRestart(RestartReason::HadEnded);
    } else if (paid == Owed::RestartOfHung) {
        tellRestart(RestartReason::DidNotAnswer);
    }
    return true;
}

void ctlGRServer::tellRestart(RestartReason reason) const
{
    if (iMainWindow *const window = gRoot->MainWindow()) {
        window->notifyRestart(reason);
    }
    tellHook(HookEvent::Restarted,
             {pidOf(*m_process),
              {"reason", reason == RestartReason::HadEnded ? u"ended"_s : u"hung"_s}});
}

bool ctlGRServer::StopGRServer()
{
    return trap(Here("StopGRServer"), [this] {
        m_owed = Owed::Nothing;
        m_problem.clear();
        if (!Connected()) {
            return false;
        }
        const platform::ProcessId id = m_process->PID();
        if (!stopProcess()) {
            m_problem = u"The game server, process %1, could not be stopped."_s.arg(id);
            return false;
        }
        StopMonitoring();
        uctlServerStatus.StopMonitoring();
        m_process.reset();
        return true;
    });
}

/// Takes some seconds where the server does not close its window.
bool ctlGRServer::stopProcess()
{
    iMainWindow *const window = gRoot->MainWindow();
    if (window == nullptr) {
        return m_process->StopProcess();
    }
    window->setBusy(true);
    const auto restore = qScopeGuard([window] { window->setBusy(false); });
    return m_process->StopProcess();
}

bool ctlGRServer::FindGRServer()
{
    return trap(Here("FindGRServer"), [this] {
        bool found = false;
        for (const platform::WindowHandle window : fnFindWindows(windowCaption())) {
            std::unique_ptr<clsProcess> process;
            if (IsHwndGRServer(window, process)) {
                found = true;
                m_process = std::move(process);
                StartMonitoring();
                m_created = false;
            }
        }
        if (found) {
            tellHook(HookEvent::Found, {pidOf(*m_process)});
        }
        return found;
    });
}

bool ctlGRServer::IsHwndGRServer(platform::WindowHandle in_hwnd,
                                 std::unique_ptr<clsProcess> &out_objProcess)
{
    out_objProcess.reset();
    return trap(Here("IsHwndGRServer"), [&] {
        if (fnGetWindowCaption(in_hwnd) != windowCaption()) {
            return false;
        }
        auto process = std::make_unique<clsProcess>();
        if (!process->GetFromHwnd(in_hwnd)) {
            const platform::ProcessId owner = gRoot->Machine().windows.owner(in_hwnd);
            if (runsProgram(owner)) {
                recordNewFailure(Here("FindGRServer"), foreignServer(owner));
            }
            return false;
        }
        if (process->Path() != m_executablePath) {
            return false;
        }
        out_objProcess = std::move(process);
        return true;
    });
}

void ctlGRServer::StartMonitoring()
{
    trap(Here("StartMonitoring"), [this] {
        m_monitoring = true;
        m_silence = {};
        m_owed = Owed::Nothing;
        m_problem.clear();
        m_hasAnswered = false;
        clsProcess::forgetAttempts();
        uctlServerStatus.setStatus(ServerQueryStatus::Unknown);
        m_pollingStarted = false;
        tmrPollingFrequency.setInterval(0);
        tmrDead.setInterval(0);
        tmrStartupTimeout.setInterval(gRoot->Options()->ServerStartupTimeout() *
                                      MillisecondsPerSecond);
        if (iMainWindow *const window = gRoot->MainWindow()) {
            window->loadMods(); // which the server has now
        }
    });
}

void ctlGRServer::StopMonitoring()
{
    trap(Here("StopMonitoring"), [this] {
        m_monitoring = false;
        m_pollingStarted = false;
        m_silence.restartDue = false;
        tmrStartupTimeout.setInterval(0);
        tmrPollingFrequency.setInterval(0);
        tmrDead.setInterval(0);
    });
}

void ctlGRServer::Disconnect()
{
    trap(Here("Disconnect"), [this] {
        StopMonitoring();
        m_process.reset();
    });
}

void ctlGRServer::supervise()
{
    const clsOptions &options = *gRoot->Options();
    if (!Connected()) {
        if (!payOwed() && options.FindGRServer()) {
            FindGRServer();
        }
    } else if (m_process->StillActive()) {
        armIdleTimers();
    } else {
        noteEnd();
        Disconnect();
        if (options.AutoRestartOnProcessStop()) {
            startOwed(m_owed == Owed::RestartOfHung ? m_owed : Owed::RestartOfEnded);
        } else if (m_problem.isEmpty()) {
            m_problem = gRoot->Machine().clock.now().toString(
                u"'The game server has ended. It ran until 'yyyy-MM-dd' at 'HH:mm'.'"_s);
        }
    }
}

/// False where nothing is owed.
bool ctlGRServer::payOwed()
{
    if (!isStillOwed()) {
        m_owed = Owed::Nothing;
        return false;
    }
    if (m_owed != Owed::Start) {
        start(true, clsProcess::Attempt::OneOfMany);
    } else if (!StartGRServer(true)) {
        m_owed = Owed::Nothing; // a start that somebody asked for is not tried on
    }
    return true;
}

bool ctlGRServer::isStillOwed() const
{
    const clsOptions &options = *gRoot->Options();
    switch (m_owed) {
    case Owed::Nothing:
        return false;
    case Owed::Start:
        return true;
    case Owed::RestartOfEnded:
        return options.AutoRestartOnProcessStop();
    case Owed::RestartOfHung:
        return options.AutoRestartGRServer();
    }
    return false;
}

void ctlGRServer::startOwed(Owed reason)
{
    m_owed = reason;
    start(true, clsProcess::Attempt::OneOfMany);
}

void ctlGRServer::noteEnd()
{
    if (m_process->PID() == 0) {
        return; // one that could not be stopped
    }
    const QString exitCode = m_created ? QString::number(m_process->exitCode()) : u"unknown"_s;
    tellHook(HookEvent::Ended, {pidOf(*m_process), {"exit-code", exitCode}});
    const int ends = m_ends.note(gRoot->Machine().clock.milliseconds());
    if (ends == 0) {
        return;
    }
    recordFailure(Here("Supervise", HookEvent::Looping),
                  {platform::Failure::Unexpected,
                   u"The game server has ended %1 times within 30 s, the last time with "
                   "the exit code %2. Start it once by hand in a terminal to see why"_s.arg(
                       QString::number(ends), exitCode)});
}

/// A setting may have been 0 for a moment, while another number was typed.
void ctlGRServer::armIdleTimers()
{
    if (!m_monitoring) {
        return;
    }
    const clsOptions &options = *gRoot->Options();
    if (!m_pollingStarted && tmrStartupTimeout.Interval() == 0) {
        tmrStartupTimeout.setInterval(options.ServerStartupTimeout() * MillisecondsPerSecond);
    } else if (m_pollingStarted && tmrPollingFrequency.Interval() == 0) {
        tmrPollingFrequency.setInterval(options.ServerPollingFrequency());
    }
}

void ctlGRServer::tmrStartupTimeout_Timer()
{
    if (!m_monitoring) {
        return;
    }
    m_pollingStarted = true;
    tmrPollingFrequency.setInterval(gRoot->Options()->ServerPollingFrequency());
    tmrPollingFrequency.setEnabled(true);
    tmrStartupTimeout.setInterval(0);
}

void ctlGRServer::tmrPollingFrequency_Timer()
{
    if (!m_monitoring || !m_pollingStarted) {
        tmrPollingFrequency.setInterval(0);
        return;
    }
    if (uctlServerStatus.Status() != ServerQueryStatus::Probing) {
        readLastAnswer();
        uctlServerStatus.Refresh();
        if (uctlServerStatus.Status() == ServerQueryStatus::Unknown) {
            m_silence.inDoubt = true; // a server that cannot be asked is not silent
        }
    }
    // Armed last: a dead timer due at the same instant as a later tick then comes first and need
    // not wait for the outcome of that tick's request.
    tmrPollingFrequency.setInterval(gRoot->Options()->ServerPollingFrequency());
}

void ctlGRServer::readLastAnswer()
{
    const clsOptions &options = *gRoot->Options();
    if (uctlServerStatus.Status() == ServerQueryStatus::Responding) {
        m_hasAnswered = true;
        forgetSilence();
    } else if (uctlServerStatus.Status() == ServerQueryStatus::Dead) {
        if (!std::exchange(m_silence.seemsDead, true)) {
            m_silence.since = gRoot->Machine().clock.milliseconds();
        }
        if (!options.AutoRestartGRServer()) {
            tellLongSilence();
        } else if (tmrDead.Interval() == 0) {
            // An armed timer runs on: its delay counts from the first silence.
            tmrDead.setInterval(options.ServerTimeout() * MillisecondsPerSecond);
        }
    }
}

/// Of a server that nobody is going to restart.
void ctlGRServer::tellLongSilence()
{
    const qint64 silence = gRoot->Machine().clock.milliseconds() - m_silence.since;
    if (silence >= gRoot->Options()->ServerTimeout() * MillisecondsPerSecond &&
        !std::exchange(m_silence.told, true)) {
        tellHook(HookEvent::Hung, {pidOf(*m_process)});
    }
}

void ctlGRServer::forgetSilence()
{
    m_silence = {};
    tmrDead.setInterval(0);
}

void ctlGRServer::tmrDead_Timer()
{
    if (!m_monitoring || !m_silence.seemsDead) {
        return;
    }
    m_silence.inDoubt = m_silence.inDoubt || isLate(tmrDead.lateness());
    if (uctlServerStatus.Status() == ServerQueryStatus::Probing) {
        m_silence.restartDue = true;
    } else if (uctlServerStatus.Status() == ServerQueryStatus::Dead) {
        restartHungServer();
    }
}

void ctlGRServer::requestTimedOut(qint64 lateness)
{
    m_silence.inDoubt = m_silence.inDoubt || isLate(lateness);
    if (m_silence.restartDue) {
        restartHungServer();
    }
}

void ctlGRServer::restartHungServer()
{
    if (m_silence.inDoubt && !std::exchange(m_silence.askedAgain, true)) {
        m_silence.restartDue = true;
        uctlServerStatus.Refresh();
    } else if (gRoot->Options()->AutoRestartGRServer()) {
        tellHook(HookEvent::Hung, {pidOf(*m_process)});
        const bool stopped = StopGRServer();
        m_owed = Owed::RestartOfHung; // also where it could not be stopped
        if (stopped) {
            startOwed(m_owed);
        }
    }
}
