#include "core/frmGlobal.h"

#include "core/basAddress.h"
#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "platform/Failure.h"
#include "platform/LostPeer.h"
#include "platform/Machine.h"
#include "server/ctlGRServer.h"
#include "ui/frmMain.h"
#include "web/ConnectionSocket.h"
#include "web/Listener.h"
#include "web/clsWebSite.h"

#include <limits>

namespace {

constexpr int LastHeartbeatCount = 601;
/// Heartbeats from one look at the game server to the next.
constexpr int SupervisionTicks = 6;

} // namespace

frmGlobal::frmGlobal()
    : uctlGRServer(std::make_unique<ctlGRServer>()),
      tmrHeartbeat(gRoot->Machine().clock, [this] { tmrHeartbeat_Timer(); }),
      tmrReplays(gRoot->Machine().clock), wsckNewConnections(std::make_unique<Listener>())
{
    LoadConnection(0);
    QObject::connect(wsckNewConnections.get(), &QTcpServer::newConnection,
                     [this] { wsckNewConnections_ConnectionRequest(); });
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
    wsckConnections.at(index) =
        std::make_unique<ConnectionSocket>([this, index] { wsckConnections_DataArrival(index); },
                                           [this] { wsckNewConnections_ConnectionRequest(); });
}

QString frmGlobal::DefaultLocalIP() const
{
    return fnPrimaryAddress().toString();
}

void frmGlobal::StopWebServer()
{
    wsckNewConnections->close();
    m_webServerRunning = false;
}

void frmGlobal::StartWebServer()
{
    Trap({"Global Controls", "StartWebServer", "None"}, [this] {
        const clsOptions &options = *gRoot->Options();
        if (m_webServerRunning || options.AdminUserName().isEmpty() ||
            options.AdminPassword().isEmpty() || options.RemoteAccessPort() == 0) {
            return;
        }
        wsckNewConnections->close();
        Listen(options.RemoteAccessPort());
        m_webServerRunning = true;
    });
}

void frmGlobal::Listen(std::int32_t port)
{
    if (port < 0 || port > std::numeric_limits<quint16>::max()) {
        throw platform::Failure(platform::Failure::Overflow,
                                QStringLiteral("%1 is not a port").arg(port));
    }
    if (!wsckNewConnections->listen(QHostAddress::Any, static_cast<quint16>(port))) {
        throw platform::Failure(wsckNewConnections->serverError(),
                                QStringLiteral("Port %1: %2")
                                    .arg(QString::number(port), wsckNewConnections->errorString()));
    }
    platform::noticeLostPeer(wsckNewConnections->socketDescriptor());
}

void frmGlobal::wsckNewConnections_ConnectionRequest()
{
    const auto free = [](const auto &element) { return element && element->isFree(); };
    while (wsckNewConnections->hasPendingConnections()) {
        const auto element =
            std::find_if(std::next(wsckConnections.begin()), wsckConnections.end(), free);
        if (element == wsckConnections.end()) {
            return;
        }
        (*element)->accept(
            std::unique_ptr<QTcpSocket>(wsckNewConnections->nextPendingConnection()));
    }
}

void frmGlobal::wsckConnections_DataArrival(std::size_t index)
{
    const std::string id = std::to_string(index);
    Trap({"Global Controls", "Connection_DataArrival", id.c_str()},
         [&] { gRoot->WebSite()->ParseRequest(*wsckConnections.at(index)); });
}

void frmGlobal::tmrHeartbeat_Timer()
{
    constexpr Routine tick{"Global Controls", "tmrHeartbeat_Timer", "None"};
    m_heartbeatCount = m_heartbeatCount < LastHeartbeatCount ? m_heartbeatCount + 1 : 1;
    Trap(tick, [] { gRoot->MainWindow()->PushUpdate(); });
    if (m_heartbeatCount % SupervisionTicks == 0) {
        Trap(tick, [] { gRoot->WebSite()->Page(QStringLiteral("PublicStatus"))->setStale(true); });
        Trap(tick, [this] { uctlGRServer->Supervise(); });
        // QTcpServer stops for good when the system has no more descriptors for a moment.
        if (wsckNewConnections->isListening()) {
            wsckNewConnections->resumeAccepting();
        }
    }
}
