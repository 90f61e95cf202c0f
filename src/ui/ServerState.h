#pragma once

#include "core/iMainWindow.h"
#include "server/ctlGRServer.h"

#include <QString>

/// What the window's footer, its icon and the tray show of the game server.
struct ServerState
{
    ServerHealth health = ServerHealth::Unknown;
    QString process = {};
    QString network = {};
    QString problem = {};     ///< why there is no server, or it could not be stopped
    QString lastRestart = {}; ///< in words; empty without one

    bool operator==(const ServerState &) const = default;
};

/// Without the restarts, which the supervisor only tells of.
ServerState serverState();

/// The health in words, for those who do not see its colour.
QString wordsOf(ServerHealth health);

QString wordsOf(RestartReason reason);
