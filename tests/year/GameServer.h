#pragma once

#include "Later.h"
#include "Supervision.h"
#include "support/FakeMachine.h"

#include <QNetworkDatagram>
#include <QUdpSocket>

/// The game server: the tool's or one started by hand, as willing as the steps say.
class GameServer
{
public:
    GameServer(QString program, FakeSystem &system, const TurnedClock &clock, Later &later)
        : m_program(std::move(program)), m_system(system), m_clock(clock), m_later(later)
    {
        require(m_socket.bind(QHostAddress(QHostAddress::LocalHost), 2348), "no free port");
    }

    /// Some close on request, some have to be forced.
    void hang(bool closesOnRequest)
    {
        m_hangs = true;
        if (m_server != 0) {
            m_system.processes.at(m_server).closesOnRequest = closesOnRequest;
        }
    }
    void recover() { m_hangs = false; }
    void end()
    {
        for (const FakeSystem::Id id : m_system.running()) {
            m_system.end(id);
            m_ended = true;
        }
    }
    void startByHand()
    {
        if (m_server == 0 && now() >= m_displayBack) {
            m_system.addServer(m_program);
        }
    }
    /// From now on one takes so many seconds until it has a window, and as many until it answers.
    void slow(int seconds) { m_slowness = seconds; }
    void refuseStarts(int seconds) { m_refusesUntil = in(seconds); }
    void letNotStop(int seconds) { m_unstoppableUntil = in(seconds); }
    /// What runs on the display ends.
    void loseDisplay(int seconds) { m_displayBack = in(seconds); }
    void beWell()
    {
        m_slowness = 0;
        m_hangs = false;
        m_refusesUntil = m_unstoppableUntil = m_displayBack = 0;
    }

    /// Lets a new server be as the steps have said, and sees how it is.
    void look(Sight &sight)
    {
        if (now() < m_displayBack) {
            end();
        }
        std::erase_if(m_system.processes, [this](const auto &process) {
            return process.second.ended && !m_system.handles.contains(-process.first);
        });
        const std::vector<FakeSystem::Id> running = m_system.running();
        const int server = running.empty() ? 0 : running.back();
        if (std::exchange(m_server, server) != server && server != 0) {
            begin();
        }
        sight.servers = static_cast<int>(running.size());
        sight.running = server;
        sight.started = static_cast<int>(std::exchange(m_system.commandLines, {}).size());
        sight.endedByOthers = std::exchange(m_ended, false);
        sight.answers = answers();
        sight.window = !m_system.windows.empty();
        sight.stoppable = now() >= m_unstoppableUntil;
        sight.startable = now() >= std::max(m_refusesUntil, m_displayBack);
        sight.refused = m_system.startFails = startsAreRefused();
        if (server != 0) {
            m_system.processes.at(server).terminates = sight.stoppable;
        }
        m_system.waits.clear();
        m_system.closeRequests.clear();
    }
    bool answers() const { return m_server != 0 && m_server == m_loaded && !m_hangs; }
    bool startsAreRefused() const { return now() < m_refusesUntil; }
    /// Whether there was something to answer.
    bool answerAll()
    {
        bool answered = false;
        for (; m_socket.hasPendingDatagrams(); answered = true) {
            m_asked = m_socket.receiveDatagram();
            m_socket.writeDatagram(m_asked.makeReply(QByteArray(200, '\1')));
        }
        return answered;
    }
    /// What it has been asked and not answered.
    void forget()
    {
        while (m_socket.hasPendingDatagrams()) {
            m_asked = m_socket.receiveDatagram();
        }
    }
    /// To where the last request came from.
    void sendJunk(const QByteArray &datagram)
    {
        if (m_asked.senderPort() > 0) {
            m_socket.writeDatagram(m_asked.makeReply(datagram));
        }
    }

private:
    void begin()
    {
        forget();
        m_hangs = false;
        m_loaded = m_slowness == 0 ? m_server : 0;
        if (m_slowness > 0) {
            m_system.windows.clear();
            m_later.in(1000LL * m_slowness, [this, server = m_server] {
                if (m_server == server) {
                    m_system.addWindow(QStringLiteral("Ghost Recon"), server);
                }
            });
            m_later.in(2000LL * m_slowness, [this, server = m_server] { m_loaded = server; });
        }
    }
    qint64 now() const { return m_clock.milliseconds(); }
    qint64 in(int seconds) const { return now() + 1000LL * seconds; }

    QString m_program;
    FakeSystem &m_system;
    const TurnedClock &m_clock;
    Later &m_later;
    QUdpSocket m_socket;
    QNetworkDatagram m_asked;
    int m_server = 0; ///< its process, or 0
    int m_loaded = 0; ///< the process that answers by now
    bool m_hangs = false;
    bool m_ended = false;
    int m_slowness = 0;
    qint64 m_refusesUntil = 0;
    qint64 m_unstoppableUntil = 0;
    qint64 m_displayBack = 0;
};
