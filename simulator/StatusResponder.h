#pragma once

#include <QByteArray>
#include <QNetworkDatagram>
#include <QObject>
#include <QUdpSocket>

#include <functional>

class EventLog;

/// Answers the status query on UDP port 2348 of all interfaces. Whatever is not exactly the
/// request is dropped without a word.
class StatusResponder : public QObject
{
public:
    static constexpr quint16 Port = 2348;
    using ReplySource = std::function<QByteArray()>;

    /// The source is asked for the datagram at the moment it is sent.
    StatusResponder(EventLog &log, ReplySource source);

    /// False when another program has the port.
    bool listen();

    void setReady(bool ready) { m_ready = ready; } ///< not ready: requests stay unanswered
    void mute() { m_muted = true; }                ///< no answer from now on, ever
    void setDelay(int milliseconds) { m_delay = milliseconds; }

    quint64 answered() const { return m_answered; }

private:
    void readRequests();
    void answer(const QNetworkDatagram &request);
    void answerLater(const QNetworkDatagram &request);

    EventLog &m_log;
    ReplySource m_source;
    QUdpSocket m_socket;
    bool m_ready = true;
    bool m_muted = false;
    int m_delay = 0; ///< milliseconds from a request to its reply
    quint64 m_answered = 0;
};
