#pragma once

#include <QByteArrayList>
#include <QObject>
#include <QPointer>
#include <QTcpSocket>

#include <functional>
#include <memory>

/// One element of the web server's pool. It stays while connections come and go on it: one at a
/// time, each for one request and its answer.
class ConnectionSocket : public QObject
{
    Q_DISABLE_COPY_MOVE(ConnectionSocket)

public:
    using Event = std::function<void()>;

    /// `dataArrival`: data has arrived. `closed`: the element is free again.
    ConnectionSocket(Event dataArrival, Event closed);
    ~ConnectionSocket() override;

    bool isFree() const { return m_socket == nullptr; }
    /// Takes a connection over, ending the one before.
    void accept(std::unique_ptr<QTcpSocket> connection);

    /// What a `dataArrival` tells of. It is gone afterwards.
    QByteArray data() const;
    /// Sends the answer, one part after the other and none of them copied, and then closes. Nothing
    /// more is read from now on. Only the first answer on a connection counts.
    void send(const QByteArrayList &answer);
    void close();

private:
    /// The connection's signals may still be on the stack when it is let go.
    struct LaterDeleter
    {
        void operator()(QTcpSocket *socket) const { socket->deleteLater(); }
    };

    void received();
    void arrived(const QPointer<QTcpSocket> &connection);
    void written();
    void dropUnread();

    Event m_dataArrival;
    Event m_closed;
    std::unique_ptr<QTcpSocket, LaterDeleter> m_socket;
    bool m_answered = false;
};
