#include "web/WebServer.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "platform/Failure.h"
#include "platform/MessageBoxes.h"
#include "web/clsWebSite.h"

#include <limits>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr Module Here{"Global Controls", "None"};
constexpr Routine Start = Here("StartWebServer");
constexpr Routine LookAfter = Here("LookAfterWebServer");

WebServerProblem::Kind kindOf(const platform::Failure &failureToListen)
{
    switch (failureToListen.number()) {
    case QAbstractSocket::AddressInUseError:
        return WebServerProblem::Kind::PortTaken;
    case QAbstractSocket::SocketAccessError:
        return WebServerProblem::Kind::NotAllowed;
    default:
        return WebServerProblem::Kind::Other;
    }
}

} // namespace

WebServer::WebServer()
    : wsckNewConnections([this] {
          m_told = true;
          wsckNewConnections_ConnectionRequest();
      })
{
    loadConnection(0);
}

void WebServer::loadConnections()
{
    for (std::size_t index = 1; index < wsckConnections.size(); ++index) {
        if (!runWithRetry(
                Here("Load"), [&] { loadConnection(index); }, platform::CancelsAlone)) {
            return;
        }
    }
}

void WebServer::loadConnection(std::size_t index)
{
    wsckConnections.at(index) =
        std::make_unique<ConnectionSocket>([this, index] { wsckConnections_DataArrival(index); },
                                           [this] { wsckNewConnections_ConnectionRequest(); });
}

WebServerProblem WebServer::problem() const
{
    using enum WebServerProblem::Kind;
    const clsOptions &options = *gRoot->Options();
    const bool mended = (m_problem.kind == NoLogIn && options.hasLogIn()) ||
                        (m_problem.kind == NoPort && options.RemoteAccessPort() != m_problem.port);
    return mended ? WebServerProblem() : m_problem;
}

void WebServer::stop()
{
    m_problem = {};
    wsckNewConnections.close();
    m_running = false;
    m_wantedPort.reset();
}

void WebServer::start()
{
    if (m_running) {
        return;
    }
    m_wantedPort.reset();
    const clsOptions &options = *gRoot->Options();
    const std::int32_t port = options.RemoteAccessPort();
    if (!options.hasLogIn()) {
        m_problem = {WebServerProblem::Kind::NoLogIn};
    } else if (port == 0) {
        m_problem = {WebServerProblem::Kind::NoPort};
    } else {
        m_wantedPort = port;
        noteSuccess(Start); // who presses the button again is told again
        listen(port);
    }
}

void WebServer::listen(std::int32_t port)
{
    m_problem = {};
    m_untoldLooks = 0;
    m_running = trapRepeated(Start, [&] {
        if (port < 0 || port > std::numeric_limits<quint16>::max()) {
            m_problem = {WebServerProblem::Kind::NoPort, port};
            throw platform::Failure(platform::Failure::Overflow, u"%1 is not a port"_s.arg(port));
        }
        try {
            wsckNewConnections.listen(static_cast<quint16>(port));
        } catch (const platform::Failure &failure) {
            m_problem = {kindOf(failure), port, failure.description()};
            throw;
        }
        return true;
    });
}

bool WebServer::wsckNewConnections_ConnectionRequest()
{
    return trapRepeated(Here("ConnectionRequest"), [this] {
        bool taken = false;
        while (ConnectionSocket *const element = elementForAnother()) {
            std::unique_ptr<QTcpSocket> connection = wsckNewConnections.next();
            if (!connection) {
                wsckNewConnections.setAccepting(true);
                return taken;
            }
            element->accept(std::move(connection));
            taken = true;
        }
        wsckNewConnections.setAccepting(false); // until an element is free, or silent for long
        return taken;
    });
}

/// Null when none is free or would make place.
ConnectionSocket *WebServer::elementForAnother() const
{
    constexpr qint64 LongWithoutAnswer = 30000;
    constexpr qint64 LongAnswer = 60000;
    ConnectionSocket *silent = nullptr;
    ConnectionSocket *slow = nullptr; // to take its answer, the oldest of those
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
        if (element->isAnswered() && element->age() >= LongAnswer &&
            (slow == nullptr || element->age() > slow->age())) {
            slow = element;
        }
    }
    return silent != nullptr ? silent : slow;
}

void WebServer::lookAfter()
{
    constexpr qint64 LongestStop = 60000;
    for (const auto &element : wsckConnections) {
        if (element && !element->isFree() && element->isAnswered() &&
            element->silence() >= LongestStop) {
            element->close(); // it takes nothing of its answer
        }
    }
    if (m_wantedPort && gRoot->Options()->hasLogIn() && !wsckNewConnections.isListening()) {
        listen(*m_wantedPort);
    }
    lookAfterListener();
}

/// A connection that comes just before a look is found by it before it is told of: once is chance.
void WebServer::lookAfterListener()
{
    const bool isToTell = wsckNewConnections.isAccepting();
    const bool taken = wsckNewConnections_ConnectionRequest();
    if (std::exchange(m_told, false)) {
        noteSuccess(LookAfter);
        m_untoldLooks = 0;
    } else if (isToTell && taken && ++m_untoldLooks == 2) {
        recordNewFailure(LookAfter, {platform::Failure::Unexpected,
                                     u"The system does not tell of connections that wait"_s});
        listen(*m_wantedPort);
    }
}

void WebServer::wsckConnections_DataArrival(std::size_t index)
{
    const std::string id = std::to_string(index);
    trap({Here.name, "Connection_DataArrival", id.c_str()},
         [&] { gRoot->WebSite()->ParseRequest(*wsckConnections.at(index)); });
}
