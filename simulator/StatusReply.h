#pragma once

#include "Switches.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The byte that names the phase of a match in a status reply.
enum class MatchState : quint8 { Joining = 3, Playing = 4 };

/// What the server tells about itself when it is asked.
struct ServerStatus
{
    QString serverName;
    QString map;
    QString mission;
    QString gameType;
    int maximumPlayers = 0; ///< the dedicated server's own entry included, 0 to 255
    QStringList players;    ///< a dedicated server is the first of them; at most 255
    QString version;
    QString mods;
    bool dedicated = true;
    MatchState matchState = MatchState::Joining;
    double elapsedSeconds = 0; ///< since the match began
    QString messageOfTheDay;
    double matchLengthSeconds = 0; ///< 0: no limit
};

/// The request that a reply answers: these 13 bytes and nothing else.
QByteArray statusRequest();

/// The reply datagram:
///
///     25 bytes   header: the request's first four bytes, then zeros
///     string     server name, map, mission, game type
///     2 bytes    zeros
///     int        maximum number of players
///     int        number of players, then as many strings: their names
///     17 bytes   zeros
///     string     version, mods
///     1 byte     1: dedicated, 0: not
///     float      elapsed seconds
///     int        match state
///     4 bytes    zeros
///     string     message of the day
///     4 bytes    zeros
///     float      match length in seconds
///
/// An int is 4 bytes, the least significant first; a float is IEEE 754 single precision in the
/// same order. A string is an int with its length and as many bytes of Windows-1252; the last of
/// them is a NUL, which the length counts. Readers look at the first byte of the length only, so
/// a string has at most 254 characters.
///
/// Spoilt on purpose a reply is Short: its first 10 bytes; Truncated: cut in the middle of the
/// map's name; Huge: 2000 pseudo random bytes.
QByteArray statusReply(const ServerStatus &status, ReplyShape shape);
