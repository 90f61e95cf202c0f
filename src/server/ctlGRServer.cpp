#include "server/ctlGRServer.h"

#include "core/basGamePath.h"
#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"
#include "server/basWINAPI.h"

namespace {

constexpr qint64 MillisecondsPerSecond = 1000;

constexpr Routine routine(const char *name)
{
    return {"GR Server Class", name, "Unknown"};
}

QString windowCaption()
{
    return QStringLiteral("Ghost Recon");
}

QString commandLine()
{
    // Only where the system is not Windows can a path hold a quote.
    const QString program =
        fnGamePath(QStringLiteral("GhostRecon.exe")).replace(u'"', QStringLiteral("\"\""));
    return QStringLiteral("\"%1\" -autoserve %2")
        .arg(program, gRoot->Options()->ServerCommandLineArgs());
}

} // namespace

ctlGRServer::ctlGRServer()
    : tmrStartupTimeout(gRoot->Machine().clock, [this] { tmrStartupTimeout_Timer(); }),
      tmrPollingFrequency(gRoot->Machine().clock, [this] { tmrPollingFrequency_Timer(); }),
      tmrDead(gRoot->Machine().clock, [this] { tmrDead_Timer(); })
{
    tmrPollingFrequency.setEnabled(false);
}

ServerQueryStatus ctlGRServer::Status() const
{
    return Connected() ? uctlServerStatus.Status() : ServerQueryStatus::Unknown;
}

QString ctlGRServer::StatusText() const
{
    if (!Connected()) {
        return QStringLiteral("Not Checking");
    }
    switch (Status()) {
    case ServerQueryStatus::Unknown:
        return QStringLiteral("Unknown");
    case ServerQueryStatus::Probing:
        return m_seemsDead ? QStringLiteral("Probing Server (Seems to be dead)")
                           : QStringLiteral("Probing Server");
    case ServerQueryStatus::Responding:
        return QStringLiteral("Server Responding");
    case ServerQueryStatus::Dead:
        return QStringLiteral("Server Dead");
    }
    return {};
}

QString ctlGRServer::NetworkStatusText() const
{
    return QStringLiteral("Network Status: ") +
           (Connected() ? StatusText() : QStringLiteral("Not Monitoring"));
}

QString ctlGRServer::ProcessStatusText() const
{
    if (!Connected()) {
        return QStringLiteral("No Process information");
    }
    return QStringLiteral("%1%2) :%3")
        .arg(ProcessLocated() ? QStringLiteral("GR Process found (ID=")
                              : QStringLiteral("GR Process created (ID="),
             QString::number(m_process->PID()),
             m_process->StillActive() ? QStringLiteral("Running") : QStringLiteral("Not Active"));
}

bool ctlGRServer::StartGRServer(bool in_blnCheckForServer)
{
    return Trap(routine("StartGRServer"), [&] {
        if (in_blnCheckForServer && FindGRServer()) {
            return true;
        }
        m_process = std::make_unique<clsProcess>();
        if (!m_process->Create(commandLine())) {
            Disconnect();
            return false;
        }
        m_created = true;
        StartMonitoring();
        return true;
    });
}

bool ctlGRServer::StopGRServer()
{
    return Trap(routine("StopGRServer"), [this] {
        if (!Connected() || !m_process->StopProcess()) {
            return false;
        }
        StopMonitoring();
        uctlServerStatus.StopMonitoring();
        m_process.reset();
        return true;
    });
}

bool ctlGRServer::FindGRServer()
{
    return Trap(routine("FindGRServer"), [this] {
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
        return found;
    });
}

bool ctlGRServer::IsHwndGRServer(platform::WindowHandle in_hwnd,
                                 std::unique_ptr<clsProcess> &out_objProcess)
{
    out_objProcess.reset();
    return Trap(routine("IsHwndGRServer"), [&] {
        if (fnGetWindowCaption(in_hwnd) != windowCaption()) {
            return false;
        }
        auto process = std::make_unique<clsProcess>();
        if (!process->GetFromHwnd(in_hwnd) || process->Path() != m_executablePath) {
            return false;
        }
        out_objProcess = std::move(process);
        return true;
    });
}

void ctlGRServer::StartMonitoring()
{
    Trap(routine("StartMonitoring"), [this] {
        m_monitoring = true;
        m_seemsDead = false;
        uctlServerStatus.setStatus(ServerQueryStatus::Unknown);
        m_pollingStarted = false;
        tmrPollingFrequency.setInterval(0);
        tmrDead.setInterval(0);
        tmrStartupTimeout.setInterval(gRoot->Options()->ServerStartupTimeout() *
                                      MillisecondsPerSecond);
    });
}

void ctlGRServer::StopMonitoring()
{
    Trap(routine("StopMonitoring"), [this] {
        m_monitoring = false;
        m_pollingStarted = false;
        tmrStartupTimeout.setInterval(0);
        tmrPollingFrequency.setInterval(0);
        tmrDead.setInterval(0);
    });
}

void ctlGRServer::Disconnect()
{
    Trap(routine("Disconnect"), [this] {
        StopMonitoring();
        m_process.reset();
    });
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
    }
    // Last, so that a dead timer that falls due at the same instant as a later tick comes first
    // and still sees the server dead: the tick's next request would hide it.
    tmrPollingFrequency.setInterval(gRoot->Options()->ServerPollingFrequency());
}

void ctlGRServer::readLastAnswer()
{
    const clsOptions &options = *gRoot->Options();
    if (uctlServerStatus.Status() == ServerQueryStatus::Responding) {
        m_seemsDead = false;
        tmrDead.setInterval(0);
    } else if (uctlServerStatus.Status() == ServerQueryStatus::Dead) {
        m_seemsDead = true;
        // An armed timer runs on: its delay counts from the first silence.
        if (tmrDead.Interval() == 0 && options.AutoRestartGRServer()) {
            tmrDead.setInterval(options.ServerTimeout() * MillisecondsPerSecond);
        }
    }
}

void ctlGRServer::tmrDead_Timer()
{
    if (uctlServerStatus.Status() != ServerQueryStatus::Dead || !m_monitoring || !m_seemsDead) {
        return;
    }
    if (gRoot->Options()->AutoRestartGRServer() && StopGRServer()) {
        StartGRServer(true);
    }
}
