#include "platform/linux/LinuxProcessEnd.h"

#include "platform/linux/SystemFailure.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sys/eventfd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// Readable once a signal came; a signal handler can reach no object of ours.
int signalEvent = -1;

void noteSignal(int /*signal*/)
{
    const int saved = errno;
    eventfd_write(signalEvent, 1);
    errno = saved;
}

} // namespace

void LinuxProcessEnd::end()
{
    std::_Exit(EXIT_SUCCESS);
}

void LinuxProcessEnd::onRequest(std::function<void()> quit)
{
    signalEvent = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (signalEvent < 0) {
        throw systemFailure(errno, u"eventfd"_s);
    }
    m_notifier = std::make_unique<QSocketNotifier>(signalEvent, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, [quit = std::move(quit)] {
        eventfd_t count = 0;
        eventfd_read(signalEvent, &count);
        quit();
    });

    struct sigaction action = {};
    action.sa_handler = noteSignal;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction before = {};
        if (::sigaction(signal, nullptr, &before) != 0 ||
            (before.sa_handler != SIG_IGN && // as nohup has it
             ::sigaction(signal, &action, nullptr) != 0)) {
            throw systemFailure(errno, u"sigaction"_s);
        }
    }
}

} // namespace platform
