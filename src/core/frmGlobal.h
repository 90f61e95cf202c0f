#pragma once

#include "platform/Timer.h"

#include <QTcpSocket>

#include <array>
#include <memory>

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

    /// Every tick refreshes the visible panel; every sixth, about every 3 s, looks after the game
    /// server: restarts one that has ended, adopts one that was started by hand. A failure in one
    /// duty is recorded and hinders neither the other nor the next tick.
    void tmrHeartbeat_Timer();

    /// Ticks of the heartbeat, 1 to 601 and again from 1.
    int HeartbeatCount() const { return m_heartbeatCount; }

    const std::unique_ptr<ctlGRServer> uctlGRServer;
    platform::Timer tmrHeartbeat;
    /// Ticks for the statistics tracker.
    platform::Timer tmrReplays;
    /// Element 0 is there from the beginning, 1 to 100 from Form_Load on.
    std::array<std::unique_ptr<QTcpSocket>, 101> wsckConnections;

protected:
    /// Makes one element of the pool. Throws when the system has no more of what it takes.
    virtual void LoadConnection(std::size_t index);

private:
    void SuperviseServer();

    int m_heartbeatCount = 1;
};
