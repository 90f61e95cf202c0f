#include "platform/Sockets.h"

#include "platform/linux/SystemFailure.h"

#include <cerrno>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

using namespace Qt::StringLiterals;

namespace platform {

void noticeLostPeer(qintptr listener)
{
    constexpr int Seconds = 1;
    constexpr struct
    {
        int level;
        int option;
        int value;
    } settings[] = {
        {SOL_SOCKET, SO_KEEPALIVE, 1},
        {IPPROTO_TCP, TCP_KEEPIDLE, 60 * Seconds},
        {IPPROTO_TCP, TCP_KEEPINTVL, 10 * Seconds},
        {IPPROTO_TCP, TCP_KEEPCNT, 6},
    };
    for (const auto &setting : settings) {
        // A connection that fails later, after the system's own much longer time, does no harm.
        static_cast<void>(setsockopt(static_cast<int>(listener), setting.level, setting.option,
                                     &setting.value, sizeof setting.value));
    }
}

std::optional<qintptr> acceptConnection(qintptr listener)
{
    int descriptor = -1;
    do {
        descriptor = ::accept4(static_cast<int>(listener), nullptr, nullptr, SOCK_CLOEXEC);
    } while (descriptor < 0 && (errno == EINTR || errno == ECONNABORTED)); // a peer has gone again
    if (descriptor < 0 && errno != EAGAIN) {
        throw systemFailure(errno, u"A connection cannot be accepted"_s);
    }
    return descriptor < 0 ? std::nullopt : std::optional<qintptr>(descriptor);
}

qint64 processServing(qintptr descriptor)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(static_cast<int>(descriptor), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0
               ? peer.pid
               : 0;
}

QString adviceOnTakenPort()
{
    return u"End that program, or enter another port and press Start."_s;
}

QString adviceOnForbiddenPort()
{
    return u"Those below 1024 take a right. Enter one from 1024 on, behind a front server, and "
           "press Start, or give the right with \"setcap cap_net_bind_service=+ep "
           "ZebekSuite.exe\", again after every "
           "update of that file."_s;
}

} // namespace platform
