#include "platform/LostPeer.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

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

} // namespace platform
