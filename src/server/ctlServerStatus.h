#pragma once

#include "platform/Timer.h"
#include "server/ServerStatusReply.h"

#include <QHostAddress>
#include <QUdpSocket>

#include <functional>
#include <memory>
#include <utility>

enum class ServerQueryStatus {
    Unknown = 0,    ///< nothing asked since monitoring began, or monitoring stopped
    Probing = 1,    ///< a request was sent and no reply has come yet
    Responding = 2, ///< a reply came for the last request
    Dead = 3,       ///< no reply within 5 s of the last request
};

/// Asks the running game server for its status over UDP, one request at a time, and keeps the last
/// answer. The request goes to port 2348 and is 13 fixed bytes; the reply is ServerStatusReply.
class ctlServerStatus
{
public:
    ctlServerStatus();
    ctlServerStatus(const ctlServerStatus &) = delete;
    ctlServerStatus &operator=(const ctlServerStatus &) = delete;
    ~ctlServerStatus();

    ServerQueryStatus Status() const { return m_status; }
    void setStatus(ServerQueryStatus status) { m_status = status; }

    /// Replaces the socket; the new one is closed.
    void setWinsock(std::unique_ptr<QUdpSocket> socket);
    /// Replaces the time-out timer, whose tick must call TimerFired().
    void setTimer(std::unique_ptr<platform::Timer> timer);

    const QString &Name() const { return m_reply.name; }
    const QString &Map() const { return m_reply.map; }
    const QString &Mission() const { return m_reply.mission; }
    const QString &GameType() const { return m_reply.gameType; }
    const QString &Version() const { return m_reply.version; }
    const QString &Mods() const { return m_reply.mods; }
    const QString &MOTD() const { return m_reply.motd; }
    const std::vector<ServerStatusReply::Player> &Players() const { return m_reply.players; }
    /// Without the server itself where it is dedicated.
    int PlayerCount() const { return m_reply.playerCount - serverItself(); }
    /// Players and places, as in "4/8".
    QString PlayerCountString() const;
    /// The match's length in seconds, as decimal text.
    QString Length() const;
    /// "mm:ss", "--:--" in a match without a limit, "Joining", or "n/a".
    QString TimeRemaining() const;

    // Of the interface, without a user here. No reply carries the values that are only stored.
    /// The address asked: this machine's own, taken anew when the machine has it no longer, until
    /// one is set, dotted or as a host name (looked up at once).
    const QString &IP() const { return m_ip; }
    void setIP(const QString &ip);
    void setName(const QString &name) { m_reply.name = name; }
    bool Dedicated() const { return m_reply.dedicated; }
    const QString &Password() const { return m_password; }
    void setPassword(const QString &password) { m_password = password; }
    int Ping() const { return m_ping; }
    void setPing(int ping) { m_ping = ping; }
    bool PingStale() const { return m_pingStale; }
    void setPingStale(bool stale) { m_pingStale = stale; }
    bool LoadedFromGame() const { return m_loadedFromGame; }
    void setLoadedFromGame(bool loaded) { m_loadedFromGame = loaded; }
    /// 0 while players join, 9990 in a match without a limit, 9999 when unknown.
    int SecondsRemaining() const;
    /// A ping is not measured.
    void RefreshPing() const {}

    /// Sends a request unless one is outstanding. What arrived meanwhile unasked is dropped. One
    /// that cannot be sent says nothing about the server: the status is then Unknown, and each new
    /// reason is recorded once.
    void Refresh();
    /// The outstanding request was not answered in time, unless an answer waits that this program,
    /// itself late, has not looked at yet.
    void TimerFired();
    /// What is called when a request was not answered in time, with the milliseconds by which that
    /// is noticed too late.
    void setTimedOut(std::function<void(qint64)> timedOut) { m_timedOut = std::move(timedOut); }
    /// Takes the waiting datagram, of `bytesTotal` bytes. Any datagram is a sign of life.
    void DataArrival(qint64 bytesTotal);
    /// Forgets the outstanding request.
    void StopMonitoring();

    /// A datagram waits: takes it while a request is outstanding, else leaves it unread.
    void wsck_DataArrival();

private:
    int serverItself() const { return m_reply.dedicated ? 1 : 0; }
    bool playing() const;
    int secondsLeft() const { return m_reply.matchLength - m_reply.elapsedSeconds; }
    void sendRequest();
    void takeOwnAddress();
    void discardUnasked();

    ServerQueryStatus m_status = ServerQueryStatus::Unknown;
    std::unique_ptr<QUdpSocket> wsck;
    std::unique_ptr<platform::Timer> tmrRequestTimeout;
    QString m_ip;
    QHostAddress m_address; ///< null for a host name that is not known: it cannot be asked
    bool m_ipIsOwn = true;
    std::function<void(qint64)> m_timedOut = [](qint64) {};
    ServerStatusReply m_reply;
    QString m_password;
    int m_ping = 0;
    bool m_pingStale = false;
    bool m_loadedFromGame = false;
};
