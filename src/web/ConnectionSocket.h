#pragma once

#include "platform/Timer.h"
#include "web/FileContent.h"
#include "web/IncomingRequest.h"

#include <QObject>
#include <QPointer>
#include <QTcpSocket>

#include <functional>
#include <memory>

/// One element of the web server's pool. It stays while connections come and go on it: one at a
/// time, each for one request and its answer.
///
/// A request is handed on as soon as it is whole by its own account (IncomingRequest), or when
/// nothing more of it has come for 250 ms, and then as it is. Files are sent in pieces, as the peer
/// takes them.
class ConnectionSocket : public QObject
{
    Q_DISABLE_COPY_MOVE(ConnectionSocket)

public:
    using Event = std::function<void()>;

    /// `dataArrival`: a request has arrived. `closed`: the element is free again.
    ConnectionSocket(Event dataArrival, Event closed);
    ~ConnectionSocket() override;

    bool isFree() const { return m_socket == nullptr; }
    bool isAnswered() const { return m_answered; }
    /// Whether a request of the connection is being handled.
    bool isHandled() const { return m_handled != nullptr; }
    /// For how many milliseconds nothing has come from the peer or, of an answered one, nothing of
    /// the answer has been taken.
    qint64 silence() const;
    /// For how many milliseconds the connection has been here or, of an answered one, the answer
    /// has been on its way.
    qint64 age() const;
    /// Takes a connection over, ending the one before.
    void accept(std::unique_ptr<QTcpSocket> connection);

    /// What a `dataArrival` tells of.
    const QByteArray &data() const { return m_request.data(); }
    /// Sends the answer, a text or a text, a file and another text, and then closes. Nothing more
    /// is read from now on. Only the first answer on a connection counts, and only while its
    /// request is handled.
    void send(const QByteArray &head, std::unique_ptr<FileContent> content = nullptr,
              const QByteArray &tail = {});
    void close();

private:
    /// The connection's signals may still be on the stack when it is let go.
    struct LaterDeleter
    {
        void operator()(QTcpSocket *socket) const { socket->deleteLater(); }
    };

    void awaitRequest();
    void received();
    void handOn();
    void arrived(const QPointer<QTcpSocket> &connection);
    void written();
    void sendMore();
    bool writeNextPiece();
    void dropUnread();
    bool letGo();
    void noteActivity();

    Event m_dataArrival;
    Event m_closed;
    std::unique_ptr<QTcpSocket, LaterDeleter> m_socket;
    IncomingRequest m_request;
    platform::Timer m_pause; ///< since the last piece of a request that is not whole
    qint64 m_begun = 0;
    qint64 m_lastActivity = 0;
    QPointer<QTcpSocket> m_handled; ///< whose request is being handled
    bool m_answered = false;
    bool m_sending = false;
    // What is still to be sent.
    QByteArray m_head;
    std::unique_ptr<FileContent> m_content;
    QByteArray m_tail;
};
