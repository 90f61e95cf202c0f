#include "platform/SystemServices.h"

#include "platform/linux/ErrorCodes.h"

#include <QDesktopServices>
#include <QUrl>

#include <climits>
#include <poll.h>
#include <system_error>
#include <unistd.h>

namespace platform {

bool showFolder(const QString &folder)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

QString systemMessage(std::uint32_t code)
{
    const std::optional<int> error = errorOf(code);
    return error ? QString::fromStdString(std::generic_category().message(*error)) : QString();
}

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

/// The window manager decides.
void letOthersComeToFront() {}

} // namespace platform
