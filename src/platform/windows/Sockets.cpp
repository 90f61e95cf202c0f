#include "platform/Sockets.h"

#include "platform/windows/SystemFailure.h"

#include <winsock2.h>

#include <mstcpip.h>

using namespace Qt::StringLiterals;

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

std::optional<qintptr> acceptConnection(qintptr listener)
{
    auto descriptor = INVALID_SOCKET;
    int error = 0;
    do {
        descriptor = accept(static_cast<SOCKET>(listener), nullptr, nullptr);
        error = descriptor == INVALID_SOCKET ? WSAGetLastError() : 0;
    } while (error == WSAECONNRESET); // a peer has gone again
    if (error != 0 && error != WSAEWOULDBLOCK) {
        throw systemFailure(static_cast<DWORD>(error), u"A connection cannot be accepted"_s);
    }
    return error != 0 ? std::nullopt : std::optional(static_cast<qintptr>(descriptor));
}

qint64 processServing(qintptr descriptor)
{
    ULONG id = 0;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): Qt makes it from one
    return GetNamedPipeServerProcessId(reinterpret_cast<HANDLE>(descriptor), &id) != 0 ? id : 0;
}

QString adviceOnTakenPort()
{
    return u"Often that is the system's own web service, the \"World Wide Web Publishing "
           "Service\". Stop it, or enter another port and press Start."_s;
}

QString adviceOnForbiddenPort()
{
    return u"Windows keeps it for itself or for its own web service, the \"World Wide Web "
           "Publishing Service\". Stop that, or enter another port and press Start."_s;
}

} // namespace platform
