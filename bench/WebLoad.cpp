#include "WebLoad.h"

#include "figures.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <netinet/in.h>
#include <sys/epoll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int Events = 512;

sockaddr_in addressOf(quint16 port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

/// Connects at once or, for one that does not block, later.
int connectedSocket(quint16 port, int flags)
{
    const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | flags, 0);
    const sockaddr_in address = addressOf(port);
    if (connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0 &&
        errno != EINPROGRESS) {
        close(descriptor);
        throw std::runtime_error("a connection was refused");
    }
    return descriptor;
}

class Load
{
public:
    Load(quint16 port, QByteArray request, int connections)
        : m_port(port), m_request(std::move(request)), m_connections(connections)
    {
    }

    LoadResult run(double seconds)
    {
        m_timer.start();
        for (Connection &connection : m_connections) {
            open(connection);
        }
        while (milliseconds(m_timer) < seconds * 1000) {
            std::array<epoll_event, Events> events{};
            const int count = epoll_wait(m_poll, events.data(), Events, 100);
            for (int event = 0; event < count; ++event) {
                handle(events.at(event));
            }
        }
        for (const Connection &connection : m_connections) {
            close(connection.descriptor);
        }
        close(m_poll);
        return m_result;
    }

private:
    struct Connection
    {
        int descriptor = -1;
        double opened = 0;
        bool sent = false;
        qint64 received = 0;
    };

    void open(Connection &connection)
    {
        connection = {connectedSocket(m_port, SOCK_NONBLOCK), milliseconds(m_timer), false, 0};
        epoll_event event{EPOLLIN | EPOLLOUT, {.ptr = &connection}};
        epoll_ctl(m_poll, EPOLL_CTL_ADD, connection.descriptor, &event);
    }

    void handle(const epoll_event &event)
    {
        Connection &connection = *static_cast<Connection *>(event.data.ptr);
        if (!connection.sent && (event.events & EPOLLOUT) != 0) {
            connection.sent = true;
            epoll_event change{EPOLLIN, {.ptr = &connection}};
            epoll_ctl(m_poll, EPOLL_CTL_MOD, connection.descriptor, &change);
            if (write(connection.descriptor, m_request.constData(), m_request.size()) < 0) {
                finish(connection, false);
                return;
            }
        }
        if ((event.events & (EPOLLIN | EPOLLHUP | EPOLLERR)) != 0) {
            receive(connection);
        }
    }

    void receive(Connection &connection)
    {
        std::array<char, 65536> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
        for (;;) {
            const ssize_t bytes = read(connection.descriptor, buffer.data(), buffer.size());
            if (bytes < 0 && errno == EAGAIN) {
                return;
            }
            if (bytes <= 0) {
                finish(connection, bytes == 0 && connection.received > 0);
                return;
            }
            connection.received += bytes;
        }
    }

    void finish(Connection &connection, bool answered)
    {
        ++(answered ? m_result.answered : m_result.failed);
        m_result.slowestMilliseconds =
            std::max(m_result.slowestMilliseconds, milliseconds(m_timer) - connection.opened);
        close(connection.descriptor);
        open(connection);
    }

    quint16 m_port;
    QByteArray m_request;
    std::vector<Connection> m_connections;
    int m_poll = epoll_create1(EPOLL_CLOEXEC);
    QElapsedTimer m_timer;
    LoadResult m_result;
};

[[noreturn]] void serve(int listener, const QByteArray &answer)
{
    std::array<char, 65536> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
    const int poll = epoll_create1(EPOLL_CLOEXEC);
    const auto watch = [poll](int descriptor) {
        epoll_event event{EPOLLIN, {.fd = descriptor}};
        epoll_ctl(poll, EPOLL_CTL_ADD, descriptor, &event);
    };
    watch(listener);
    for (;;) {
        std::array<epoll_event, Events> events{};
        const int count = epoll_wait(poll, events.data(), Events, -1);
        for (int event = 0; event < count; ++event) {
            const int descriptor = events.at(event).data.fd;
            if (descriptor == listener) {
                watch(accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
            } else {
                if (read(descriptor, buffer.data(), buffer.size()) > 0) {
                    static_cast<void>(
                        send(descriptor, answer.constData(), answer.size(), MSG_NOSIGNAL));
                }
                close(descriptor);
            }
        }
    }
}

} // namespace

LoadResult runLoad(quint16 port, const QByteArray &request, int connections, double seconds)
{
    return Load(port, request, connections).run(seconds);
}

QByteArray fetchContent(quint16 port, const QByteArray &request)
{
    const int descriptor = connectedSocket(port, 0);
    require(write(descriptor, request.constData(), request.size()) == request.size(),
            "a request cannot be sent");
    QByteArray answer;
    QByteArray buffer(65536, '\0');
    ssize_t bytes = 0;
    while ((bytes = read(descriptor, buffer.data(), buffer.size())) > 0) {
        answer.append(buffer.constData(), bytes);
    }
    close(descriptor);
    return answer;
}

qint64 fetch(quint16 port, const QByteArray &request)
{
    const int descriptor = connectedSocket(port, 0);
    require(write(descriptor, request.constData(), request.size()) == request.size(),
            "a request cannot be sent");
    QByteArray buffer(qsizetype{1024} * 1024, '\0');
    qint64 all = 0;
    ssize_t bytes = 0;
    while ((bytes = read(descriptor, buffer.data(), buffer.size())) > 0) {
        all += bytes;
    }
    close(descriptor);
    return all;
}

pid_t startBareServer(quint16 port, const QByteArray &answer)
{
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = addressOf(port);
    constexpr int Backlog = 1024;
    require(bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0 &&
                listen(listener, Backlog) == 0,
            "the bare server cannot listen");
    const pid_t process = fork();
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        serve(listener, answer);
    }
    close(listener);
    return process;
}

PeakMemory::PeakMemory(QString process)
    : m_watcher([this, process = std::move(process)] {
          while (!m_ends) {
              m_peak = std::max<double>(m_peak, privateKiB(process));
              std::this_thread::sleep_for(std::chrono::milliseconds(20)); // it holds the process up
          }
      })
{
}

PeakMemory::~PeakMemory()
{
    m_ends = true;
    m_watcher.join();
}
