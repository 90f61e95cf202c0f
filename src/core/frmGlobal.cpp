#include "core/frmGlobal.h"

#include "core/basAddress.h"
#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "platform/Failure.h"
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

constexpr Routine Start{"Global Controls", "StartWebServer", "None"};

} // namespace

frmGlobal::frmGlobal()
    : uctlGRServer(std::make_unique<ctlGRServer>()),
      tmrHeartbeat(gRoot->Machine().clock, [this] { tmrHeartbeat_Timer(); }),
      tmrReplays(gRoot->Machine().clock), wsckNewConnections(std::make_unique<Listener>(
                                              [this] { wsckNewConnections_ConnectionRequest(); }))
{
    LoadConnection(0);
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
    m_wantedPort.reset();
}

void frmGlobal::StartWebServer()
{
    if (m_webServerRunning) {
        return;
    }
    m_wantedPort.reset();
    const clsOptions &options = *gRoot->Options();
    const std::int32_t port = options.RemoteAccessPort();
    if (options.HasLogIn() && port != 0) {
        m_wantedPort = port;
        NoteSuccess(Start); // who presses the button again is told again
        Listen(port);
    }
}

void frmGlobal::Listen(std::int32_t port)
{
    m_webServerRunning = TrapRepeated(Start, [&] {
        if (port < 0 || port > std::numeric_limits<quint16>::max()) {
            throw platform::Failure(platform::Failure::Overflow,
                                    QStringLiteral("%1 is not a port").arg(port));
        }
        wsckNewConnections->listen(static_cast<quint16>(port));
        return true;
    });
}

void frmGlobal::wsckNewConnections_ConnectionRequest()
{
    TrapRepeated({"Global Controls", "ConnectionRequest", "None"}, [this] {
        while (ConnectionSocket *const element = ElementForAnother()) {
            std::unique_ptr<QTcpSocket> connection = wsckNewConnections->next();
            if (!connection) {
                wsckNewConnections->setAccepting(true);
                return;
            }
            element->accept(std::move(connection));
        }
        wsckNewConnections->setAccepting(false); // until an element is free, or silent for long
    });
}

/// Null when none is free or would make place.
ConnectionSocket *frmGlobal::ElementForAnother() const
{
    constexpr qint64 LongWithoutAnswer = 30000;
    ConnectionSocket *silent = nullptr;
    for (std::size_t index = 1; index < wsckConnections.size(); ++index) {
        ConnectionSocket *const element = wsckConnections[index].get();
        if (element == nullptr) {
            continue; // it could not be made
        }
        if (element->isFree()) {
            return element;
        }
        if (!element->isAnswered() && !element->isHandled() &&
            element->age() >= LongWithoutAnswer &&
            (silent == nullptr || element->silence() > silent->silence())) {
            silent = element;
        }
    }
    return silent;
}

void frmGlobal::LookAfterWebServer()
{
    constexpr qint64 LongestStop = 60000;
    for (const auto &element : wsckConnections) {
        if (element && !element->isFree() && element->isAnswered() &&
            element->silence() >= LongestStop) {
            element->close(); // it takes nothing of its answer
        }
    }
    if (m_wantedPort && gRoot->Options()->HasLogIn() && !wsckNewConnections->isListening()) {
        Listen(*m_wantedPort);
    }
    wsckNewConnections_ConnectionRequest();
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
        Trap(tick, [this] { LookAfterWebServer(); });
    }
}
