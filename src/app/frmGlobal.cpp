#include "app/frmGlobal.h"

#include "core/basAddress.h"
#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "core/iMainWindow.h"
#include "platform/Machine.h"
#include "web/clsWebSite.h"

frmGlobal::frmGlobal()
    : tmrHeartbeat(gRoot->Machine().clock, [this] { tmrHeartbeat_Timer(); }),
      tmrReplays(gRoot->Machine().clock)
{
}

void frmGlobal::Form_Load()
{
    m_heartbeatCount = 1;
    webServer.loadConnections();
}

QString frmGlobal::DefaultLocalIP() const
{
    return fnPrimaryAddress().toString();
}

bool frmGlobal::WebServerRunning() const
{
    return webServer.isRunning();
}

WebServerProblem frmGlobal::webServerProblem() const
{
    return webServer.problem();
}

void frmGlobal::StopWebServer()
{
    webServer.stop();
}

void frmGlobal::StartWebServer()
{
    webServer.start();
}

void frmGlobal::tmrHeartbeat_Timer()
{
    constexpr int LastHeartbeatCount = 601;
    constexpr int SupervisionTicks = 6; ///< from one look at the game server to the next
    constexpr Routine Tick{"Global Controls", "tmrHeartbeat_Timer", "None"};
    m_heartbeatCount = m_heartbeatCount < LastHeartbeatCount ? m_heartbeatCount + 1 : 1;
    trap(Tick, [] { gRoot->MainWindow()->PushUpdate(); });
    if (m_heartbeatCount % SupervisionTicks == 0) {
        trap(Tick, [] { gRoot->WebSite()->Page(PageKey::PublicStatus).setStale(true); });
        trap(Tick, [this] { uctlGRServer.supervise(); });
        trap(Tick, [this] { webServer.lookAfter(); });
    }
}
