#include "server/ServerStatusReply.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Status replies of any content: nothing is read outside the datagram (the sanitizers watch), and
/// what comes out keeps its promises.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto datagram =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const ServerStatusReply reply = ServerStatusReply::parse(datagram);
    const std::size_t listed = reply.players.size() + (reply.dedicated && reply.playerCount > 0);
    if (listed != static_cast<std::size_t>(reply.playerCount) || reply.maximumPlayers < 0 ||
        reply.maximumPlayers > 255 || reply.matchLength < 0 || reply.elapsedSeconds < 0) {
        std::abort();
    }
    return 0;
}
