#include "web/ConnectionSocket.h"

#include <utility>

namespace {

/// As many bytes are taken at once at most; a longer request is cut. A form with hundreds of
/// replays has a quarter of this.
constexpr qint64 LargestRequest = 256LL * 1024;

} // namespace

ConnectionSocket::ConnectionSocket(Event dataArrival, Event closed)
    : m_dataArrival(std::move(dataArrival)), m_closed(std::move(closed))
{
}

ConnectionSocket::~ConnectionSocket()
{
    if (m_socket) {
        m_socket->disconnect(this);
    }
    delete m_socket.release(); // with the form, so outside of any signal
}

void ConnectionSocket::accept(std::unique_ptr<QTcpSocket> connection)
{
    close();
    connection->setParent(nullptr);
    m_socket.reset(connection.release());
    m_answered = false;
    m_socket->setReadBufferSize(LargestRequest);
    connect(m_socket.get(), &QTcpSocket::readyRead, this, &ConnectionSocket::received);
    connect(m_socket.get(), &QTcpSocket::bytesWritten, this, &ConnectionSocket::written);
    connect(m_socket.get(), &QTcpSocket::errorOccurred, this, &ConnectionSocket::close);
    connect(m_socket.get(), &QTcpSocket::disconnected, this, &ConnectionSocket::close);
    if (m_socket->state() != QAbstractSocket::ConnectedState) {
        received(); // no signal will tell that it has ended before
    }
}

/// Nothing more is read before this is handled and, if it is answered, ever: a peer that has said
/// all it has to say may close its half of the connection, and reading that end would make
/// QTcpSocket drop the answer. So its buffer is full from here on, which it must be told within its
/// signal to stop reading at once. The data is handled from the event loop, since a handler may
/// show a message box: the box's own loop must not delete the socket while the socket's code is on
/// the stack.
void ConnectionSocket::received()
{
    m_socket->setReadBufferSize(m_socket->bytesAvailable());
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
        m_dataArrival();
    }
    if (!waits()) {
        return;
    }
    if (!isOpen()) {
        close();
    } else {
        m_socket->readAll();
        m_socket->setReadBufferSize(LargestRequest);
    }
}

QByteArray ConnectionSocket::data() const
{
    return m_socket ? m_socket->peek(m_socket->bytesAvailable()) : QByteArray();
}

void ConnectionSocket::send(const QByteArrayList &answer)
{
    if (!m_socket || std::exchange(m_answered, true)) {
        return;
    }
    for (const QByteArray &part : answer) {
        m_socket->write(part);
    }
    if (m_socket->bytesToWrite() == 0) {
        close(); // no byte, no signal that it has been written
        return;
    }
    m_socket->flush(); // what the handler does after the answer does not hold it up
}

void ConnectionSocket::written()
{
    if (m_socket->bytesToWrite() == 0) {
        dropUnread();
        close();
    }
}

void ConnectionSocket::close()
{
    if (!m_socket) {
        return;
    }
    m_socket->disconnect(this);
    m_socket->close();
    m_socket.reset();
    m_closed();
}

/// Closing with unread data resets the connection, and an answer that is on its way is lost.
void ConnectionSocket::dropUnread()
{
    constexpr int Rounds = 16; // a peer that never stops sending does not stop us
    m_socket->disconnect(this);
    m_socket->setReadBufferSize(0);
    for (int round = 0; round < Rounds && m_socket->state() == QAbstractSocket::ConnectedState &&
                        m_socket->waitForReadyRead(0);
         ++round) {
        m_socket->readAll();
    }
}
