#pragma once

#include "platform/Timer.h"

#include <QString>

#include <array>
#include <memory>
#include <optional>

class ConnectionSocket;
class Listener;
class ctlGRServer;

/// The hidden form: owner of the periodic timers, the supervisor and the web server's sockets.
class frmGlobal
{
public:
    frmGlobal();
    frmGlobal(const frmGlobal &) = delete;
    frmGlobal &operator=(const frmGlobal &) = delete;
    virtual ~frmGlobal();

    /// Makes the pool of connection sockets. A failing one is shown with Retry and Cancel; Cancel
    /// leaves it and the ones after it missing.
    void Form_Load();

    /// Every tick refreshes the visible panel; every sixth, about every 3 s, lets the supervisor
    /// look after the game server. A failure in one duty is recorded and hinders neither the other
    /// nor the next tick.
    void tmrHeartbeat_Timer();

    /// The address under which this machine is reached, to show it.
    QString DefaultLocalIP() const;
    bool WebServerRunning() const { return m_webServerRunning; }
    /// Open connections are left to finish.
    void StopWebServer();
    /// Listens on the port of the settings, on all addresses. Nothing when it runs already, and
    /// without a user name, a password or a port. One that fails, now or later, is tried again at
    /// every sixth heartbeat until it is stopped; each reason is recorded once.
    void StartWebServer();

    /// Gives connections that wait to free elements, the lowest first. Where none is free, of those
    /// that have had no answer for at least 30 s the one that has been silent the longest makes
    /// place: a few bytes now and then hold none. Those that find none wait on, and are neither
    /// accepted nor refused.
    void wsckNewConnections_ConnectionRequest();
    void wsckConnections_DataArrival(std::size_t index);

    /// Ticks of the heartbeat, 1 to 601 and again from 1.
    int HeartbeatCount() const { return m_heartbeatCount; }

    const std::unique_ptr<ctlGRServer> uctlGRServer;
    platform::Timer tmrHeartbeat;
    /// Ticks for the statistics tracker.
    platform::Timer tmrReplays;
    const std::unique_ptr<Listener> wsckNewConnections;
    /// Element 0 is there from the beginning and takes no connection; 1 to 100 are from Form_Load
    /// on.
    std::array<std::unique_ptr<ConnectionSocket>, 101> wsckConnections;

private:
    /// Makes one element of the pool. Throws when the system has no more of what it takes.
    void LoadConnection(std::size_t index);
    void Listen(std::int32_t port);
    ConnectionSocket *ElementForAnother() const;
    void LookAfterWebServer();

    int m_heartbeatCount = 1;
    bool m_webServerRunning = false;
    /// The port that is, or is to be, listened on; nothing while the web server is stopped.
    std::optional<std::int32_t> m_wantedPort;
};
