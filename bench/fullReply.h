#pragma once

#include "StatusReply.h"

/// A status reply of a dedicated server in the middle of a match of 16 players.
inline QByteArray fullReply()
{
    ServerStatus status{.serverName = QStringLiteral("Friday evening, all welcome"),
                        .map = QStringLiteral("m02_caves"),
                        .mission = QStringLiteral("Caves at dawn"),
                        .gameType = QStringLiteral("Last Man Standing"),
                        .maximumPlayers = 17,
                        .players = {QStringLiteral("Host")},
                        .version = QStringLiteral("1.4.0.0"),
                        .mods = QStringLiteral("Origmiss,Coastline,NightWatch"),
                        .matchState = MatchState::Playing,
                        .elapsedSeconds = 125,
                        .messageOfTheDay = QStringLiteral("Be fair. Next match at nine."),
                        .matchLengthSeconds = 600};
    while (status.players.size() < status.maximumPlayers) {
        status.players.append(QStringLiteral("[TEAM] Player %1").arg(status.players.size()));
    }
    return statusReply(status, ReplyShape::Whole);
}
