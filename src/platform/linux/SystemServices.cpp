#include "platform/SystemServices.h"

#include "platform/linux/ErrorCodes.h"

#include <QDesktopServices>
#include <QUrl>

#include <climits>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <system_error>
#include <unistd.h>

namespace platform {

bool openOnDesktop(const QString &path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

QByteArray pathKey(const QString &path)
{
    return path.toUtf8();
}

QString systemMessage(std::uint32_t code)
{
    const std::optional<int> error = errorOf(code);
    return error ? QString::fromStdString(std::generic_category().message(*error)) : QString();
}

void secureStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) < 0) {
            static_cast<void>(::open("/dev/null", O_RDWR)); // as the lowest that is free: this one
        }
    }
    // Writing to a pipe without a reader, or beyond a limit, is a failure like others.
    for (const int signal : {SIGPIPE, SIGXFSZ}) {
        static_cast<void>(std::signal(signal, SIG_IGN));
    }
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

void tellOnStandardOutput(const QString &text)
{
    static_cast<void>(std::fputs((text.toLocal8Bit() + '\n').constData(), stdout));
    static_cast<void>(std::fflush(stdout));
}

/// The window manager decides.
void letOthersComeToFront() {}

} // namespace platform
