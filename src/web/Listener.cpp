#include "web/Listener.h"

#include "platform/Failure.h"
#include "platform/Sockets.h"

#include <QNetworkProxy>

#include <utility>

using namespace Qt::StringLiterals;

Listener::Listener(std::function<void()> waiting) : m_waiting(std::move(waiting))
{
    constexpr int Backlog = 1024;
    m_server.setListenBacklogSize(Backlog);
    m_server.setProxy(QNetworkProxy::NoProxy); // the visitors come here
}

void Listener::listen(quint16 port)
{
    close();
    if (!m_server.listen(QHostAddress::Any, port)) {
        throw platform::Failure(
            m_server.serverError(),
            u"Port %1: %2"_s.arg(QString::number(port), m_server.errorString()));
    }
    m_server.pauseAccepting();
    platform::noticeLostPeer(m_server.socketDescriptor());
    m_notifier =
        std::make_unique<QSocketNotifier>(m_server.socketDescriptor(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, [this] { m_waiting(); });
}

void Listener::close()
{
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater(); // its signal may be on the stack
    }
    m_server.close();
}

std::unique_ptr<QTcpSocket> Listener::next()
{
    if (!isListening()) {
        return nullptr;
    }
    try {
        const std::optional<qintptr> descriptor =
            platform::acceptConnection(m_server.socketDescriptor());
        if (!descriptor) {
            return nullptr;
        }
        auto connection = std::make_unique<QTcpSocket>();
        connection->setSocketDescriptor(*descriptor);
        return connection;
    } catch (const platform::Failure &) {
        close();
        throw;
    }
}

void Listener::setAccepting(bool accepting)
{
    if (m_notifier) {
        m_notifier->setEnabled(accepting);
    }
}
