#include "WebLoad.h"
#include "WindowPing.h"
#include "figures.h"
#include "program/GameDirectory.h"

#include <QCoreApplication>
#include <QTcpSocket>

#include <array>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

// The web site under load, beside two servers of the same bytes: nginx with one worker and without
// keep-alive, and a bare loop that accepts, reads, writes and closes.
// Argument: how many seconds each measurement of requests takes.

namespace {

constexpr quint16 ToolPort = 80;
constexpr quint16 NginxPort = 8081;
constexpr quint16 BarePort = 8082;
constexpr int StartMilliseconds = 20000;
constexpr int Rounds = 3;
constexpr qint64 ReplayBytes = 100LL * 1024 * 1024;

/// The processor time that a process has taken.
double processorMilliseconds(qint64 process)
{
    const QByteArray stat = contentOf(QStringLiteral("/proc/%1/stat").arg(process));
    const QList<QByteArray> fields = stat.sliced(stat.lastIndexOf(')') + 2).split(' ');
    constexpr int UserTime = 11;
    return (fields[UserTime].toDouble() + fields[UserTime + 1].toDouble()) * 1000 /
           static_cast<double>(sysconf(_SC_CLK_TCK));
}

bool answers(quint16 port)
{
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), port);
    return socket.waitForConnected(100);
}

struct Server
{
    const char *name;
    quint16 port;
    QByteArray request;
    qint64 process = 0;
    std::vector<double> requestsPerSecond;
    std::vector<double> microsecondsPerRequest;
    double slowest = 0;

    void measure(int connections, double seconds)
    {
        const double before = processorMilliseconds(process);
        const LoadResult result = runLoad(port, request, connections, seconds);
        require(result.failed == 0, "a request was not answered");
        const auto answered = static_cast<double>(result.answered);
        requestsPerSecond.push_back(answered / seconds);
        microsecondsPerRequest.push_back((processorMilliseconds(process) - before) * 1000 /
                                         answered);
        slowest = std::max(slowest, result.slowestMilliseconds);
    }
    void print(int connections) const
    {
        const std::string what =
            std::string(name) + ", " + std::to_string(connections) + " connections: ";
        printFigure(what + "requests a second", medianOf(requestsPerSecond), "/s");
        printFigure(what + "processor time a request", medianOf(microsecondsPerRequest), "us");
        printFigure(what + "slowest answer", slowest, "ms");
    }
};

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
            "a file cannot be written");
}

void startNginx(QProcess &nginx, const QString &directory)
{
    const QString configuration = directory + QStringLiteral("/nginx.conf");
    writeFile(configuration, QStringLiteral("daemon off; master_process off;\n"
                                            "pid %1/nginx.pid; error_log /dev/null;\n"
                                            "events { worker_connections 1024; }\n"
                                            "http { access_log off; keepalive_timeout 0;\n"
                                            "default_type text/html; sendfile on;\n"
                                            "server { listen %2 backlog=1024; root %1; } }\n")
                                 .arg(directory)
                                 .arg(NginxPort)
                                 .toUtf8());
    nginx.start(QStringLiteral("nginx"), {QStringLiteral("-c"), configuration});
    require(waitUntil([] { return answers(NginxPort); }, StartMilliseconds), "nginx did not start");
}

/// Downloads the replay and returns MiB a second.
double download(const Server &server, const QByteArray &target)
{
    QElapsedTimer timer;
    timer.start();
    const qint64 bytes = fetch(server.port, "GET " + target + " HTTP/1.0\r\nHost: a\r\n\r\n");
    require(bytes >= ReplayBytes, "the replay did not arrive whole");
    return static_cast<double>(bytes) / 1024 / 1024 / (milliseconds(timer) / 1000);
}

void measureRequests(std::array<Server, 3> &servers, int connections, double seconds)
{
    for (Server &server : servers) {
        server.requestsPerSecond.clear();
        server.microsecondsPerRequest.clear();
        server.slowest = 0;
    }
    for (int round = 0; round < Rounds; ++round) {
        for (Server &server : servers) {
            server.measure(connections, seconds);
        }
    }
    for (const Server &server : servers) {
        server.print(connections);
    }
    const Server &tool = servers[0];
    const Server &nginx = servers[1];
    printFigure("  nginx's requests for one of ours",
                medianOf(nginx.requestsPerSecond) / medianOf(tool.requestsPerSecond), "", 1);
    printFigure("  our processor time for nginx's",
                medianOf(tool.microsecondsPerRequest) / medianOf(nginx.microsecondsPerRequest), "",
                1.5);
    printFigure("  our slowest answer", tool.slowest, "ms", 200);
}

/// Requests that make no sense, and are recorded or counted, beside good ones.
void measureJunk(const Server &tool, double seconds)
{
    constexpr int Connections = 64;
    Server good{tool.name, tool.port, tool.request, tool.process, {}, {}};
    Server junk{"junk", tool.port, "GET / HTTP/1.1\r\n", tool.process, {}, {}};
    for (int round = 0; round < Rounds; ++round) {
        good.measure(Connections, seconds);
        junk.measure(Connections, seconds);
    }
    junk.print(Connections);
    printFigure("  its processor time for that of a good request",
                medianOf(junk.microsecondsPerRequest) / medianOf(good.microsecondsPerRequest), "",
                1.2);

    // The names differ, since the reading ends at one that comes twice.
    QByteArray form = "GET / HTTP/1.1\r\nHost: a\r\n\r\n";
    for (int field = 0; form.size() < 35000; ++field) {
        form += QByteArray::number(field, 36) + "=%&";
    }
    QElapsedTimer timer;
    timer.start();
    require(!fetchContent(tool.port, form).isEmpty(), "a request was not answered");
    printFigure("answer to 35 KB of broken form fields", milliseconds(timer), "ms", 200);
}

void measureDownload(const std::array<Server, 3> &servers, const QString &tool)
{
    PeakMemory peak(tool);
    printFigure("download of 100 MiB: the tool", download(servers[0], "/GETFILEsecret/large.rpf"),
                "MiB/s");
    printFigure("  its private memory at most", peak.mebibytes(), "MiB");
    printFigure("download of 100 MiB: nginx", download(servers[1], "/large.rpf"), "MiB/s");
}

bool measure(double seconds)
{
    GameDirectory game(QStringLiteral("zebek")); // nginx takes no quotes in a path
    game.writeOptions("<AllowRemoteAccess>True</AllowRemoteAccess><AdminUserName>a</AdminUserName>"
                      "<AdminPassword>secret</AdminPassword><ServerStartupTimeout>1"
                      "</ServerStartupTimeout>",
                      "-match-length 600 -joining 0");
    game.startTool();
    require(
        waitUntil([&] { return answers(ToolPort) && game.events("query") > 1; }, StartMilliseconds),
        "the tool did not start");
    const QByteArray get = "GET /index.html HTTP/1.0\r\nHost: a\r\n\r\n";
    const QByteArray page = fetchContent(ToolPort, get);
    writeFile(game.path(QStringLiteral("index.html")), page);
    std::printf("the public page has %d bytes\n", static_cast<int>(page.size()));

    QProcess nginx;
    startNginx(nginx, game.path());
    const pid_t bare = startBareServer(BarePort, page);
    std::array<Server, 3> servers{{{"the tool", ToolPort, get, game.tool().processId(), {}, {}},
                                   {"nginx", NginxPort, get, nginx.processId(), {}, {}},
                                   {"bare loop", BarePort, get, bare, {}, {}}}};
    {
        WindowPing ping(QStringLiteral("Zebek Suite"));
        for (const int connections : {64, 400}) {
            measureRequests(servers, connections, seconds);
        }
        printFigure("the window's longest pause under this load", ping.longestMilliseconds(), "ms",
                    100);
    }
    measureJunk(servers[0], seconds);
    writeFile(game.path(QStringLiteral("Replays/large.rpf")), QByteArray(ReplayBytes, 'r'));
    QFile::link(game.path(QStringLiteral("Replays/large.rpf")),
                game.path(QStringLiteral("large.rpf")));
    measureDownload(servers, QString::number(game.tool().processId()));
    signalProcess(bare, SIGKILL);
    waitpid(bare, nullptr, 0);
    nginx.terminate();
    nginx.waitForFinished();
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const double seconds = argc > 1 ? QByteArray(argv[1]).toDouble() : 5;
    return reportingFailure([seconds] { return measure(seconds); });
}
