#include "core/SingleInstance.h"

#include "platform/Foreground.h"

#include <QCryptographicHash>
#include <QLocalSocket>

namespace {

/// The first one may be busy; its system accepts the connection all the same.
constexpr int ConnectMilliseconds = 1000;

} // namespace

SingleInstance::SingleInstance(const QString &directory)
    : m_name(QStringLiteral("zebek-suite-") +
             QString::fromLatin1(
                 QCryptographicHash::hash(directory.toUtf8(), QCryptographicHash::Sha1).toHex()))
{
    m_server.setSocketOptions(QLocalServer::AbstractNamespaceOption);
}

bool SingleInstance::claim(std::function<void()> onSecondStart)
{
    QObject::connect(&m_server, &QLocalServer::newConnection,
                     [this, onSecondStart = std::move(onSecondStart)] {
                         while (QLocalSocket *const other = m_server.nextPendingConnection()) {
                             other->deleteLater();
                         }
                         onSecondStart();
                     });
    // Asked before listening, for on Windows two may listen to one name; and again when another
    // one was quicker. Where no name can be claimed at all, a tool that runs is worth more.
    return !tellTheFirst() && (m_server.listen(m_name) || !tellTheFirst());
}

bool SingleInstance::tellTheFirst() const
{
    QLocalSocket socket;
    socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    platform::letOthersComeToFront();
    // More than reading Windows does not allow to another user.
    socket.connectToServer(m_name, QIODevice::ReadOnly);
    return socket.waitForConnected(ConnectMilliseconds);
}
