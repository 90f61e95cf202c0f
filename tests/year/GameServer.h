#pragma once

#include "Supervision.h"
#include "support/FakeMachine.h"

#include <QNetworkDatagram>
#include <QUdpSocket>

/// The game server: the tool's or one started by hand, as willing as the steps say.
class GameServer
{
public:
    struct Mood
    {
        bool hangs = false;
        int slowness = 0; ///< seconds until a new one has a window, and as many until it answers
        // Each until a moment:
        qint64 refusesStarts = 0;
        qint64 hasNoDisplay = 0; ///< what runs on it ends
        qint64 cannotBeForced = 0;
    };
    Mood mood;

    GameServer(QString program, FakeSystem &system, const TurnedClock &clock)
        : m_program(std::move(program)), m_system(system), m_clock(clock)
    {
        require(m_socket.bind(QHostAddress(QHostAddress::LocalHost), 2348), "no free port");
    }

    /// Some close on request, some have to be forced.
    void hang(bool closesOnRequest)
    {
        mood.hangs = true;
        if (m_server != 0) {
            m_system.processes.at(m_server).closesOnRequest = closesOnRequest;
        }
    }
    void end()
    {
        for (const FakeSystem::Id id : m_system.running()) {
            m_system.end(id);
            m_ended = true;
        }
    }
    void startByHand()
    {
        if (m_server == 0 && isOver(mood.hasNoDisplay)) {
            m_system.addServer(m_program);
        }
    }

    /// Lets a new server be as the steps have said, and sees how it is.
    Sight look()
    {
        if (!isOver(mood.hasNoDisplay)) {
            end();
        }
        const std::vector<FakeSystem::Id> running = m_system.running();
        require(running.size() <= 1, "two servers of one directory");
        const int server = running.empty() ? 0 : running.front();
        if (std::exchange(m_server, server) != server) {
            begin();
        }
        if (server != 0) {
            m_system.processes.at(server).terminates = isOver(mood.cannotBeForced);
            if (m_system.windows.empty() && isOver(m_hasWindow)) {
                m_system.addWindow(QStringLiteral("Ghost Recon"), server);
            }
        }
        m_system.startFails = !isOver(mood.refusesStarts);
        return {.now = m_clock.milliseconds(),
                .running = server,
                .started = static_cast<int>(std::exchange(m_system.commandLines, {}).size()),
                .endedByOthers = std::exchange(m_ended, false),
                .answers = answers(),
                .window = !m_system.windows.empty(),
                .startable = !m_system.startFails && isOver(mood.hasNoDisplay),
                .refused = m_system.startFails,
                .stoppable = isOver(mood.cannotBeForced)};
    }
    bool answers() const { return m_server != 0 && !mood.hangs && isOver(m_isLoaded); }
    /// Takes what it has been asked, and answers, or not. False where that was nothing.
    bool take(bool answer)
    {
        bool asked = false;
        for (; m_socket.hasPendingDatagrams(); asked = true) {
            m_asked = m_socket.receiveDatagram();
            if (answer) {
                m_socket.writeDatagram(m_asked.makeReply(QByteArray(200, '\1')));
            }
        }
        return asked;
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
        take(false);
        mood.hangs = false;
        m_hasWindow = m_clock.milliseconds() + 1000LL * mood.slowness;
        m_isLoaded = m_hasWindow + 1000LL * mood.slowness;
        if (mood.slowness > 0) {
            m_system.windows.clear();
        }
    }
    bool isOver(qint64 moment) const { return m_clock.milliseconds() >= moment; }

    QString m_program;
    FakeSystem &m_system;
    const TurnedClock &m_clock;
    QUdpSocket m_socket;
    QNetworkDatagram m_asked;
    int m_server = 0; ///< its process, or 0
    bool m_ended = false;
    qint64 m_hasWindow = 0;
    qint64 m_isLoaded = 0;
};
