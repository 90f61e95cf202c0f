#include "platform/LostPeer.h"

#include <winsock2.h>

#include <mstcpip.h>

namespace platform {

void noticeLostPeer(qintptr listener)
{
    constexpr ULONG Milliseconds = 1;
    tcp_keepalive settings{};
    settings.onoff = 1;
    settings.keepalivetime = 60'000 * Milliseconds;
    settings.keepaliveinterval = 6'000 * Milliseconds; // ten times, which is the system's number
    DWORD returned = 0;
    // A connection that fails later, after the system's own much longer time, does no harm.
    static_cast<void>(WSAIoctl(static_cast<SOCKET>(listener), SIO_KEEPALIVE_VALS, &settings,
                               sizeof settings, nullptr, 0, &returned, nullptr, nullptr));
}

} // namespace platform
