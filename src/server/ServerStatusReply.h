#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <vector>

/// What the game server tells about itself.
struct ServerStatusReply
{
    struct Player
    {
        QString key; ///< "R" and the position in the server's list, from 1
        QString name;
    };

    /// Shorter datagrams are a sign of life only.
    static constexpr qsizetype MinimumSize = 25;

    /// Reads a datagram of at least MinimumSize bytes. What a datagram that ends too early lacks
    /// is empty or 0. Text is one byte a character (ISO 8859-1); numbers of several bytes have the
    /// least significant first. The layout:
    ///
    ///     25 bytes  not interpreted
    ///     string    server name, map, mission, game type
    ///      2 bytes  not interpreted
    ///      4 bytes  maximum players (the first byte counts)
    ///      4 bytes  player count (the first byte counts)
    ///     string    a player's name, player count times
    ///     17 bytes  not interpreted
    ///     string    version, mods
    ///      1 byte   dedicated
    ///      4 bytes  elapsed seconds (float)
    ///      4 bytes  match state (the first byte counts): 3 joining, 4 playing
    ///      4 bytes  not interpreted
    ///     string    message of the day
    ///      4 bytes  not interpreted
    ///      4 bytes  match length in seconds (float)
    ///
    /// A string is a length of 4 bytes, of which the first counts, and that many bytes of text
    /// with its closing NUL; without a NUL it is empty. A float is an IEEE-754 single whose sign
    /// does not count, taken to the nearest integer.
    static ServerStatusReply parse(const QByteArray &datagram);

    QString name;
    QString map;
    QString mission;
    QString gameType;
    std::int32_t maximumPlayers = 0;
    std::int32_t playerCount = 0;
    /// Without the first listed one on a dedicated server, which is the server itself.
    std::vector<Player> players;
    QString version;
    QString mods;
    bool dedicated = false;
    std::int32_t elapsedSeconds = 0;
    QString matchState; ///< "Joining", "Playing" or "Unknown"
    QString motd;
    std::int32_t matchLength = 0; ///< seconds
};
