#include "server/ctlServerStatus.h"

#include "core/basAddress.h"
#include "core/basMain.h"
#include "core/basTraps.h"
#include "core/clsZebek.h"
#include "platform/Failure.h"
#include "platform/Machine.h"

#include <QHostInfo>
#include <QNetworkInterface>
#include <QNetworkProxy>

#include <cstdlib>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

constexpr Module Here{"Server Status Control", "None"};
constexpr quint16 QueryPort = 2348;
constexpr int TimeoutMilliseconds = 5000;
constexpr std::string_view Request("\xC0\xDE\xF1\x11\x42\x06\x00\xF5\x03\x00\x00\x00\x00", 13);

constexpr int SecondsUnlimited = 9990;
constexpr int SecondsUnknown = 9999;

int floorDivision(int dividend, int divisor)
{
    return dividend >= 0 ? dividend / divisor : -((divisor - 1 - dividend) / divisor);
}

/// At least two digits, behind the sign.
QString twoDigits(int number)
{
    const QString digits = u"%1"_s.arg(std::abs(number), 2, 10, QChar(u'0'));
    return number < 0 ? u'-' + digits : digits;
}

} // namespace

ctlServerStatus::ctlServerStatus() : m_ip(fnPrimaryAddress().toString()), m_address(m_ip)
{
    setWinsock(std::make_unique<QUdpSocket>());
    setTimer(std::make_unique<platform::Timer>(gRoot->Machine().clock, [this] { TimerFired(); }));
}

ctlServerStatus::~ctlServerStatus()
{
    wsck->close();
}

void ctlServerStatus::setWinsock(std::unique_ptr<QUdpSocket> socket)
{
    socket->close();
    // Not asked for at all: the system may look for one in the network, and a server is near.
    socket->setProxy(QNetworkProxy::NoProxy);
    QObject::connect(socket.get(), &QUdpSocket::readyRead, [this] { wsck_DataArrival(); });
    wsck = std::move(socket);
}

void ctlServerStatus::setTimer(std::unique_ptr<platform::Timer> timer)
{
    tmrRequestTimeout = std::move(timer);
}

void ctlServerStatus::setIP(const QString &ip)
{
    m_ip = ip;
    m_address = QHostAddress(ip);
    if (m_address.isNull()) {
        for (const QHostAddress &address : QHostInfo::fromName(ip).addresses()) {
            if (address.protocol() == QAbstractSocket::IPv4Protocol) {
                m_address = address;
                break;
            }
        }
    }
    m_ipIsOwn = false;
}

void ctlServerStatus::takeOwnAddress()
{
    if (m_ipIsOwn &&
        (m_address.isLoopback() || !QNetworkInterface::allAddresses().contains(m_address))) {
        m_address = fnPrimaryAddress();
        m_ip = m_address.toString();
    }
}

void ctlServerStatus::Refresh()
{
    if (m_status == ServerQueryStatus::Probing) {
        return;
    }
    const bool sent = trapRepeated(Here("Refresh"), [this] {
        sendRequest();
        return true;
    });
    m_status = sent ? ServerQueryStatus::Probing : ServerQueryStatus::Unknown;
    tmrRequestTimeout->setInterval(sent ? TimeoutMilliseconds : 0);
    tmrRequestTimeout->setEnabled(true);
}

void ctlServerStatus::sendRequest()
{
    takeOwnAddress();
    if (m_address.isNull()) {
        throw platform::Failure(platform::Failure::InvalidCall, m_ip + u": No such host"_s);
    }
    const bool ready = wsck->state() == QAbstractSocket::BoundState ||
                       wsck->bind(QHostAddress(QHostAddress::AnyIPv4), 0);
    if (ready) {
        discardUnasked();
    }
    if (!ready || wsck->writeDatagram(Request.data(), Request.size(), m_address, QueryPort) < 0) {
        const int error = wsck->error();
        const QString text =
            u"The server at %1 cannot be asked: %2"_s.arg(m_ip, wsck->errorString());
        wsck->close(); // the next request takes a new socket
        throw platform::Failure(error, text);
    }
}

/// An unread datagram would keep the socket silent, and would count as the answer.
void ctlServerStatus::discardUnasked()
{
    while (wsck->hasPendingDatagrams()) {
        wsck->readDatagram(nullptr, 0);
    }
}

void ctlServerStatus::TimerFired()
{
    tmrRequestTimeout->setInterval(0);
    if (m_status == ServerQueryStatus::Probing && wsck->hasPendingDatagrams()) {
        DataArrival(wsck->pendingDatagramSize());
    }
    if (m_status == ServerQueryStatus::Probing) {
        m_status = ServerQueryStatus::Dead;
        wsck->close();
        m_timedOut(tmrRequestTimeout->lateness());
    }
}

void ctlServerStatus::wsck_DataArrival()
{
    if (tmrRequestTimeout->Interval() != 0) {
        DataArrival(wsck->pendingDatagramSize());
    }
}

void ctlServerStatus::DataArrival(qint64 bytesTotal)
{
    QByteArray datagram(qMax<qint64>(bytesTotal, 0), '\0');
    const qint64 length = wsck->readDatagram(datagram.data(), datagram.size());
    if (length < 0) {
        return; // Windows tells in this way that nobody listens at the other end
    }
    m_status = ServerQueryStatus::Responding;
    tmrRequestTimeout->setEnabled(false);
    trap(Here("DataArrival"), [&] {
        datagram.truncate(length);
        if (datagram.size() < ServerStatusReply::MinimumSize) {
            return;
        }
        m_reply = ServerStatusReply::parse(datagram);
        tmrRequestTimeout->setInterval(0);
    });
}

void ctlServerStatus::StopMonitoring()
{
    tmrRequestTimeout->setInterval(0);
    m_status = ServerQueryStatus::Unknown;
}

QString ctlServerStatus::PlayerCountString() const
{
    return u"%1/%2"_s.arg(PlayerCount()).arg(m_reply.maximumPlayers - serverItself());
}

QString ctlServerStatus::Length() const
{
    return QString::number(m_reply.matchLength);
}

bool ctlServerStatus::playing() const
{
    return m_reply.matchState == "Playing"_L1;
}

int ctlServerStatus::SecondsRemaining() const
{
    if (playing()) {
        return m_reply.matchLength != 0 ? secondsLeft() : SecondsUnlimited;
    }
    return m_reply.matchState == "Joining"_L1 ? 0 : SecondsUnknown;
}

QString ctlServerStatus::TimeRemaining() const
{
    if (!playing()) {
        const bool joining = m_reply.matchState == "Joining"_L1;
        return joining ? m_reply.matchState : u"n/a"_s;
    }
    if (m_reply.matchLength == 0) {
        return u"--:--"_s;
    }
    const int minutes = floorDivision(secondsLeft(), 60);
    return u"%1:%2"_s.arg(twoDigits(minutes), twoDigits(secondsLeft() - 60 * minutes));
}
