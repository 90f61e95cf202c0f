#include "web/ConnectionSocket.h"

#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"
#include "web/Website.h"

#include <QScopedValueRollback>

#include <utility>

namespace {

constexpr int PauseMilliseconds = 250;

platform::Clock &machineClock()
{
    return gRoot->Machine().clock;
}

} // namespace

ConnectionSocket::ConnectionSocket(Event dataArrival, Event closed)
    : m_dataArrival(std::move(dataArrival)), m_closed(std::move(closed)),
      m_pause(machineClock(), [this] { handOn(); })
{
}

ConnectionSocket::~ConnectionSocket()
{
    if (m_socket) {
        m_socket->disconnect(this);
    }
    delete m_socket.release(); // with the form, so outside of any signal
}

qint64 ConnectionSocket::silence() const
{
    return machineClock().milliseconds() - m_lastActivity;
}

qint64 ConnectionSocket::age() const
{
    return machineClock().milliseconds() - m_begun;
}

void ConnectionSocket::noteActivity()
{
    m_lastActivity = machineClock().milliseconds();
}

void ConnectionSocket::accept(std::unique_ptr<QTcpSocket> connection)
{
    letGo(); // and not close(), which would have the element given away
    m_socket.reset(connection.release());
    m_answered = false;
    noteActivity();
    m_begun = m_lastActivity;
    awaitRequest();
    connect(m_socket.get(), &QTcpSocket::readyRead, this, &ConnectionSocket::received);
    connect(m_socket.get(), &QTcpSocket::bytesWritten, this, &ConnectionSocket::written);
    connect(m_socket.get(), &QTcpSocket::errorOccurred, this, &ConnectionSocket::close);
    connect(m_socket.get(), &QTcpSocket::disconnected, this, &ConnectionSocket::close);
}

/// What is read stays in the socket's buffer, too: that of a whole request fills it (see handOn()).
void ConnectionSocket::awaitRequest()
{
    m_request = {};
    m_socket->setReadBufferSize(IncomingRequest::Largest);
    m_socket->startTransaction();
}

void ConnectionSocket::received()
{
    noteActivity();
    m_request.append(m_socket->readAll());
    if (m_request.isWhole()) {
        handOn();
    } else {
        m_pause.setInterval(PauseMilliseconds);
    }
}

/// Stops reading until the request is handled, and for good if it is answered: a peer may close its
/// half of the connection after the request, and reading that end would make QTcpSocket drop the
/// answer. To stop at once, the socket must be told within its signal that its buffer is full. The
/// request is handled from the event loop, since a handler may show a message box, whose own loop
/// must not delete the socket while the socket's code is on the stack.
void ConnectionSocket::handOn()
{
    m_pause.setInterval(0);
    m_socket->setReadBufferSize(m_request.data().size());
    QMetaObject::invokeMethod(
        this, [this, connection = QPointer(m_socket.get())] { arrived(connection); },
        Qt::QueuedConnection);
}

void ConnectionSocket::arrived(const QPointer<QTcpSocket> &connection)
{
    // It may have ended, and the element may have the next one.
    const auto waits = [&] { return connection && connection == m_socket.get() && !m_answered; };
    const auto isOpen = [&] { return m_socket->state() == QAbstractSocket::ConnectedState; };
    if (waits() && isOpen()) {
        const QScopedValueRollback handling(m_handled, connection);
        m_dataArrival();
    }
    if (!waits()) {
        return;
    }
    if (!isOpen()) {
        close();
    } else {
        m_socket->commitTransaction();
        awaitRequest();
    }
}

void ConnectionSocket::send(const QByteArray &head, std::unique_ptr<FileContent> content,
                            const QByteArray &tail)
{
    // A handler that showed a message box may outlive its connection.
    if (!m_socket || m_handled != m_socket.get() || std::exchange(m_answered, true)) {
        return;
    }
    m_head = head;
    m_content = std::move(content);
    m_tail = tail;
    noteActivity();
    m_begun = m_lastActivity;
    sendMore();
}

void ConnectionSocket::written()
{
    noteActivity();
    if (!m_sending) {
        sendMore();
    }
}

/// Gives the system what it takes at once, lest what the handler does next hold the answer up, but
/// only so many pieces that other connections wait a little.
void ConnectionSocket::sendMore()
{
    constexpr int PiecesAtOnce = 16;
    const QScopedValueRollback sending(m_sending, true); // flushing tells at once what is written
    const QPointer connection(m_socket.get());
    for (int piece = 0; piece < PiecesAtOnce; ++piece) {
        if (m_socket->bytesToWrite() > 0) {
            return; // written() goes on
        }
        if (!writeNextPiece()) {
            dropUnread();
            close();
            return;
        }
        m_socket->flush();
        if (connection != m_socket.get()) {
            return; // it has failed, and the element may have the next one
        }
    }
    QMetaObject::invokeMethod(
        this,
        [this, connection] {
            if (connection && connection == m_socket.get()) {
                sendMore();
            }
        },
        Qt::QueuedConnection);
}

/// False when all is written, or when the file cannot be read any further.
bool ConnectionSocket::writeNextPiece()
{
    QByteArray piece = std::exchange(m_head, {});
    if (piece.isEmpty() && m_content) {
        const bool read = trap(Website("SendFile"), [&] {
            piece = m_content->next();
            return true;
        });
        if (!read) {
            return false;
        }
    }
    if (piece.isEmpty()) {
        m_content.reset();
        piece = std::exchange(m_tail, {});
    }
    m_socket->write(piece);
    return !piece.isEmpty();
}

void ConnectionSocket::close()
{
    if (letGo()) {
        m_closed();
    }
}

/// False where there is no connection.
bool ConnectionSocket::letGo()
{
    m_pause.setInterval(0);
    m_request = {};
    m_content.reset();
    if (!m_socket) {
        return false;
    }
    m_socket->disconnect(this);
    m_socket->close();
    m_socket.reset();
    return true;
}

/// Closing with unread data resets the connection, and an answer that is on its way is lost.
void ConnectionSocket::dropUnread()
{
    constexpr int Rounds = 16; // a peer that never stops sending does not stop us
    m_socket->disconnect(this);
    m_socket->commitTransaction();
    m_socket->setReadBufferSize(0);
    for (int round = 0; round < Rounds && m_socket->state() == QAbstractSocket::ConnectedState &&
                        m_socket->waitForReadyRead(0);
         ++round) {
        m_socket->readAll();
    }
}
