#pragma once

#include <QSocketNotifier>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>
#include <memory>

/// Listens for the web site's connections on all addresses of the machine. A connection is accepted
/// only when somebody takes it; until then it and what it sends stay with the system.
class Listener
{
public:
    /// `waiting` is called while a connection waits.
    explicit Listener(std::function<void()> waiting);

    /// Throws platform::Failure, with Qt's number, where the port cannot be had.
    void listen(quint16 port);
    void close();
    bool isListening() const { return m_server.isListening(); }

    /// The next connection that waits; null without one. Throws platform::Failure when the system
    /// cannot accept one: the listener is then closed, for its socket would say so again at once.
    std::unique_ptr<QTcpSocket> next();
    /// Whether `waiting` is called.
    void setAccepting(bool accepting);
    bool isAccepting() const { return m_notifier && m_notifier->isEnabled(); }

private:
    std::function<void()> m_waiting;
    QTcpServer m_server;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
