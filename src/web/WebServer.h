#pragma once

#include "core/WebServerProblem.h"
#include "web/ConnectionSocket.h"
#include "web/Listener.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

/// The web server: listens, and gives what it accepts to a fixed pool of connection elements. Each
/// of them takes one request, which the web site answers.
class WebServer
{
public:
    WebServer();

    /// Makes the elements 1 to 100. A failing one is shown with Retry and Cancel; Cancel leaves it
    /// and the ones after it missing.
    void loadConnections();

    bool isRunning() const { return m_running; }
    /// Why the last start, or attempt to listen again, has failed, as far as that still holds.
    WebServerProblem problem() const;
    /// Open connections are left to finish.
    void stop();
    /// Listens on the port of the settings, on all addresses. Nothing when it runs already, and
    /// without a user name, a password or a port. One that fails, now or later, is tried again at
    /// every lookAfter() until it is stopped; each reason is recorded once.
    void start();
    /// Listens again where that has failed, or where connections wait of which the system does not
    /// tell, and ends connections whose peer takes nothing of its answer for 60 s. To be called
    /// every few seconds.
    void lookAfter();

    /// Gives waiting connections to free elements, the lowest first. Where none is free, of those
    /// unanswered for 30 s the longest silent makes place; a byte now and then saves none. Without
    /// such a one the oldest answer makes place that has been on its way for 60 s.
    /// Connections that find no element wait on, neither accepted nor refused. True when one has
    /// been taken.
    bool wsckNewConnections_ConnectionRequest();
    void wsckConnections_DataArrival(std::size_t index);

    Listener wsckNewConnections;
    /// Element 0 is there from the beginning and takes no connection.
    std::array<std::unique_ptr<ConnectionSocket>, 101> wsckConnections;

private:
    /// Makes one element of the pool. Throws when the system has no more of what it takes.
    void loadConnection(std::size_t index);
    void listen(std::int32_t port);
    ConnectionSocket *elementForAnother() const;
    void lookAfterListener();

    bool m_running = false;
    WebServerProblem m_problem;
    /// The port that is, or is to be, listened on; nothing while the web server is stopped.
    std::optional<std::int32_t> m_wantedPort;
    bool m_told = false;   ///< of a connection, since the last look
    int m_untoldLooks = 0; ///< at which connections were found, since one was told of
};
