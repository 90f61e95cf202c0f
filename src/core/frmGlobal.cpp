#include "core/frmGlobal.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"
#include "server/ctlGRServer.h"
#include "ui/frmMain.h"

namespace {

constexpr int LastHeartbeatCount = 601;
/// Heartbeats from one look at the game server to the next.
constexpr int SupervisionTicks = 6;

} // namespace

frmGlobal::frmGlobal()
    : uctlGRServer(std::make_unique<ctlGRServer>()),
      tmrHeartbeat(gRoot->Machine().clock, [this] { tmrHeartbeat_Timer(); }),
      tmrReplays(gRoot->Machine().clock)
{
    wsckConnections.front() = std::make_unique<QTcpSocket>();
}

frmGlobal::~frmGlobal() = default;

void frmGlobal::Form_Load()
{
    m_heartbeatCount = 1;
    for (std::size_t index = 1; index < wsckConnections.size(); ++index) {
        if (!RunWithRetry({"Global Controls", "Load", "None"}, [&] { LoadConnection(index); })) {
            return;
        }
    }
}

void frmGlobal::LoadConnection(std::size_t index)
{
    wsckConnections.at(index) = std::make_unique<QTcpSocket>();
}

void frmGlobal::tmrHeartbeat_Timer()
{
    constexpr Routine tick{"Global Controls", "tmrHeartbeat_Timer", "None"};
    m_heartbeatCount = m_heartbeatCount < LastHeartbeatCount ? m_heartbeatCount + 1 : 1;
    Trap(tick, [] { gRoot->MainWindow()->PushUpdate(); });
    if (m_heartbeatCount % SupervisionTicks == 0) {
        Trap(tick, [this] { SuperviseServer(); });
    }
}

void frmGlobal::SuperviseServer()
{
    const clsOptions &options = *gRoot->Options();
    if (!uctlGRServer->Connected()) {
        if (options.FindGRServer()) {
            uctlGRServer->FindGRServer();
        }
        return;
    }
    if (!uctlGRServer->Process()->StillActive()) {
        uctlGRServer->Disconnect();
        if (options.AutoRestartOnProcessStop()) {
            uctlGRServer->StartGRServer(true);
        }
    }
}
