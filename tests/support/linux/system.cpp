#include "support/system.h"

#include <csignal>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

void finishSending(qintptr socket)
{
    ::shutdown(static_cast<int>(socket), SHUT_WR);
}

bool withholdDescriptors(bool withhold)
{
#ifdef __SANITIZE_ADDRESS__ // whose own checks open pipes, and take a failure for an error
    return false;
#endif
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    const int free = ::dup(STDERR_FILENO); // the lowest one
    limit.rlim_cur = withhold ? static_cast<rlim_t>(free) : limit.rlim_max;
    ::close(free);
    return setrlimit(RLIMIT_NOFILE, &limit) == 0;
}

qsizetype heapInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<qsizetype>(heap.uordblks) + static_cast<qsizetype>(heap.hblkhd);
}

bool limitFileSize(qint64 bytes)
{
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN)); // so that the write itself tells
    const rlimit limit{bytes < 0 ? RLIM_INFINITY : static_cast<rlim_t>(bytes), RLIM_INFINITY};
    return ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
}
