#include "platform/StandardError.h"

#include <climits>
#include <poll.h>
#include <unistd.h>

namespace platform {

void tellOnStandardError(const QString &text)
{
    const QByteArray line = text.toLocal8Bit().left(PIPE_BUF - 1) + '\n';
    pollfd event{STDERR_FILENO, POLLOUT, 0};
    // A pipe that is ready takes so much without waiting.
    if (::poll(&event, 1, 0) > 0 && (event.revents & POLLOUT) != 0) {
        static_cast<void>(
            !::write(STDERR_FILENO, line.constData(), static_cast<size_t>(line.size())));
    }
}

} // namespace platform
