#include "StatusResponder.h"

#include "EventLog.h"
#include "StatusReply.h"

#include <QNetworkProxy>
#include <QTimer>

#include <utility>

using namespace Qt::StringLiterals;

StatusResponder::StatusResponder(EventLog &log, ReplySource source)
    : m_log(log), m_source(std::move(source))
{
    m_socket.setProxy(QNetworkProxy::NoProxy); // who asks is near
    connect(&m_socket, &QUdpSocket::readyRead, this, &StatusResponder::readRequests);
}

bool StatusResponder::listen()
{
    return m_socket.bind(QHostAddress::AnyIPv4, Port, QUdpSocket::DontShareAddress);
}

void StatusResponder::readRequests()
{
    const QByteArray expected = statusRequest();
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram request = m_socket.receiveDatagram();
        if (request.data() != expected) {
            continue;
        }
        if (m_delay > 0) {
            answerLater(request);
        } else {
            answer(request);
        }
    }
}

/// Several requests may wait at once, hence a timer for each.
void StatusResponder::answerLater(const QNetworkDatagram &request)
{
    auto *const timer = new QTimer(this);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    connect(timer, &QTimer::timeout, this, [this, timer, request] {
        timer->deleteLater();
        answer(request);
    });
    timer->start(m_delay);
}

void StatusResponder::answer(const QNetworkDatagram &request)
{
    if (!m_ready || m_muted) {
        m_log.record(u"query-unanswered"_s);
        return;
    }
    if (m_socket.writeDatagram(m_source(), request.senderAddress(),
                               static_cast<quint16>(request.senderPort())) < 0) {
        m_log.record(u"query-unanswered"_s);
        return;
    }
    ++m_answered;
    m_log.record(u"query"_s);
}
