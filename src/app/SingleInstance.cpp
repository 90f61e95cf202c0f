#include "app/SingleInstance.h"

#include "platform/Sockets.h"
#include "platform/SystemServices.h"

#include <QCryptographicHash>
#include <QLocalSocket>
#include <QTimer>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// The first one may be busy; its system accepts the connection all the same.
constexpr int ConnectMilliseconds = 1000;
constexpr int AnswerMilliseconds = 3000;

/// The other one closes the connection; on Windows it would lose the answer if we did.
void answer(QLocalSocket &other)
{
    QObject::connect(&other, &QLocalSocket::disconnected, &other, &QObject::deleteLater);
    auto *const patience = new QTimer(&other);
    QObject::connect(patience, &QTimer::timeout, &other, &QObject::deleteLater);
    patience->start(2 * AnswerMilliseconds);
    other.write("1");
    other.flush();
}

} // namespace

SingleInstance::SingleInstance(const QString &directory)
    : m_name(u"zebek-suite-"_s +
             QLatin1String(
                 QCryptographicHash::hash(platform::pathKey(directory), QCryptographicHash::Sha1)
                     .toHex()))
{
    m_server.setSocketOptions(QLocalServer::AbstractNamespaceOption);
}

SingleInstance::Claim SingleInstance::claim(std::function<void()> onSecondStart)
{
    QObject::connect(&m_server, &QLocalServer::newConnection,
                     [this, onSecondStart = std::move(onSecondStart)] {
                         while (QLocalSocket *const other = m_server.nextPendingConnection()) {
                             answer(*other);
                         }
                         onSecondStart();
                     });
    // Asked before listening, for on Windows two may listen to one name; and again when another
    // one was quicker. Where no name can be claimed at all, a tool that runs is worth more.
    Claim claim = tellTheFirst();
    if (claim == Claim::First && !m_server.listen(m_name)) {
        claim = tellTheFirst();
        if (claim == Claim::First && m_server.serverError() == QAbstractSocket::AddressInUseError) {
            claim = Claim::Ignored; // as many wait for it already as the system lets
        }
    }
    return claim;
}

SingleInstance::Claim SingleInstance::tellTheFirst()
{
    QLocalSocket socket;
    socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    platform::letOthersComeToFront();
    // On Windows another user may do no more than read.
    socket.connectToServer(m_name, QIODevice::ReadOnly);
    if (!socket.waitForConnected(ConnectMilliseconds)) {
        return Claim::First;
    }
    m_firstProcess = platform::processServing(socket.socketDescriptor());
    return socket.waitForReadyRead(AnswerMilliseconds) ? Claim::Second : Claim::Ignored;
}
