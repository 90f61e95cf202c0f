#pragma once

#include "core/iGlobalForm.h"
#include "platform/Timer.h"
#include "server/ctlGRServer.h"
#include "web/WebServer.h"

#include <QString>

/// The hidden form: owner of the periodic timers, the supervisor and the web server.
class frmGlobal final : public iGlobalForm
{
public:
    frmGlobal();

    /// Counts heartbeats from 1 and makes the web server's pool.
    void Form_Load();

    /// Every tick refreshes the visible panel; every sixth, about every 3 s, marks the public page
    /// stale and lets the supervisor and the web server look after what they have. A failure in one
    /// duty is recorded and hinders neither the others nor the next tick.
    void tmrHeartbeat_Timer();

    QString DefaultLocalIP() const override;
    bool WebServerRunning() const override;
    WebServerProblem webServerProblem() const override;
    void StopWebServer() override;
    void StartWebServer() override;

    // Of the interface, without a user here: the heartbeat's ticks, 1 to 601 and again from 1.
    int HeartbeatCount() const { return m_heartbeatCount; }

    ctlGRServer uctlGRServer;
    WebServer webServer;
    platform::Timer tmrHeartbeat;
    /// Ticks for the statistics tracker.
    platform::Timer tmrReplays;

private:
    int m_heartbeatCount = 1;
};
