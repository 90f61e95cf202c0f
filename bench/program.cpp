#include "figures.h"
#include "platform/linux/LinuxWindows.h"
#include "program/GameDirectory.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QThread>

#include <algorithm>
#include <csignal>
#include <map>

using namespace Qt::StringLiterals;

// The whole tool with a simulated game server: start, end, standing by, its web site under load.
// Argument: how many seconds of standing by.

namespace {

constexpr int LimitMilliseconds = 15000;
constexpr int Rounds = 10;

class Program
{
public:
    /// The server is asked for its status a second after the tool has it, and then every so often.
    explicit Program(const QByteArray &pollingMilliseconds)
    {
        m_game.writeOptions("<AllowRemoteAccess>True</AllowRemoteAccess><AdminUserName>a"
                            "</AdminUserName><AdminPassword>b</AdminPassword>"
                            "<ServerStartupTimeout>1</ServerStartupTimeout><ServerPollingFreq>" +
                            pollingMilliseconds + "</ServerPollingFreq>");
    }

    /// Starts the tool and returns the milliseconds until its window is on the screen.
    double start()
    {
        QElapsedTimer timer;
        timer.start();
        m_game.startTool();
        while ((m_window = mainWindow()) == 0) {
            require(timer.elapsed() < LimitMilliseconds, "the main window did not appear");
            QThread::usleep(1000);
        }
        const double result = elapsedMilliseconds(timer);
        // It is at work, and not still starting, once it asks the server.
        const qsizetype asked = queries();
        require(waitUntil([&] { return queries() > asked; }, LimitMilliseconds),
                "the server was not asked for its status");
        return result;
    }

    /// Asks the tool to end and returns the milliseconds until its process is gone.
    double end(bool byItsWindow)
    {
        QElapsedTimer timer;
        timer.start();
        if (byItsWindow) {
            m_windows.postClose(m_window);
        } else {
            signalProcess(tool(), SIGTERM);
        }
        require(m_game.tool().waitForFinished(LimitMilliseconds), "the tool did not end");
        const double result = elapsedMilliseconds(timer);
        require(m_game.tool().exitCode() == 0, "the tool did not end well");
        return result;
    }

    qsizetype queries() const { return m_game.events("query"); }
    Pid tool() { return m_game.tool().processId(); }

private:
    platform::WindowHandle mainWindow()
    {
        const std::vector<platform::WindowHandle> all = m_windows.topLevel();
        const auto found = std::find_if(all.begin(), all.end(), [this](auto window) {
            return m_windows.owner(window) == tool() &&
                   m_windows.caption(window, 100) == u"Zebek Suite"_s;
        });
        return found == all.end() ? 0 : *found;
    }

    GameDirectory m_game;
    platform::LinuxWindows m_windows;
    platform::WindowHandle m_window = 0;
};

void printMedianAndWorst(const std::string &what, const std::vector<double> &figures, double goal)
{
    const std::string count = std::to_string(figures.size());
    printFigure(what + ", median of " + count, medianOf(figures), "ms", goal);
    printFigure(what + ", worst of " + count, std::ranges::max(figures), "ms", goal);
}

void measureStartAndEnd()
{
    Program program("100");
    // Makes the files warm and starts the server, which the others find running.
    program.start();
    program.end(false);
    std::vector<double> starts;
    std::vector<double> terminations;
    std::vector<double> closings;
    for (int round = 0; round < Rounds; ++round) {
        starts.push_back(program.start());
        terminations.push_back(program.end(false));
        starts.push_back(program.start());
        closings.push_back(program.end(true));
    }
    printMedianAndWorst("Start to the visible window", starts, 300);
    printMedianAndWorst("End on SIGTERM", terminations, 100);
    printMedianAndWorst("End on closing the window", closings, 100);
}

/// What a thread has used since it began.
struct Usage
{
    double nanoseconds = 0; ///< of a processor
    double wakeUps = 0;     ///< how often it waited for something
};

std::map<QString, Usage> usageByThread(Pid process)
{
    std::map<QString, Usage> result;
    const QDir tasks(u"/proc/%1/task"_s.arg(process));
    for (const QString &task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString folder = tasks.filePath(task);
        const QByteArray times = contentOf(folder + u"/schedstat"_s);
        result[task] = {times.split(' ').front().toDouble(),
                        numberIn(folder + u"/status"_s, "voluntary_ctxt_switches")};
    }
    return result;
}

/// By thread, since Qt ends its spare ones after half a minute: what such a one used before must
/// not be taken from what the others used since.
Usage difference(std::map<QString, Usage> before, const std::map<QString, Usage> &after)
{
    Usage sum;
    for (const auto &[thread, usage] : after) {
        sum.nanoseconds += usage.nanoseconds - before[thread].nanoseconds;
        sum.wakeUps += usage.wakeUps - before[thread].wakeUps;
    }
    return sum;
}

void measureStandingBy(unsigned seconds)
{
    Program program("3000");
    program.start();
    const qsizetype asked = program.queries();
    const auto before = usageByThread(program.tool());
    QThread::sleep(seconds);
    const Usage used = difference(before, usageByThread(program.tool()));
    require(program.queries() - asked >= (seconds - 1) / 3,
            "the server was not asked all the time");

    const std::string title = "Standing by for " + std::to_string(seconds) + " s: ";
    const QString id = QString::number(program.tool());
    printFigure(title + "processor", 100 * used.nanoseconds / 1e9 / seconds, "%", 0.3);
    printFigure(title + "wake-ups", used.wakeUps / seconds, "/s");
    printFigure(title + "private memory", privateKiB(id) / 1024, "MiB", 25);
    printFigure(title + "its written part", writtenKiB(id) / 1024, "MiB");
    printFigure(title + "resident memory", residentKiB(id) / 1024, "MiB");
}

/// A figure of ab's report.
double figureIn(const QString &report, const char *line)
{
    const auto found = QRegularExpression(QLatin1String(line) + u"\\s+([0-9.]+)"_s,
                                          QRegularExpression::MultilineOption)
                           .match(report);
    require(found.hasMatch(), "ab does not tell a figure");
    return found.captured(1).toDouble();
}

/// The public page, with a new connection for each request. ab (Debian: apache2-utils) takes the
/// site's answers, which are without a status line.
void measureSite(int connections)
{
    Program program("3000");
    program.start();
    const auto before = usageByThread(program.tool());
    QProcess ab;
    ab.start(u"ab"_s, {u"-q"_s, u"-n20000"_s, u"-c%1"_s.arg(connections), u"http://127.0.0.1/"_s});
    require(ab.waitForFinished(-1) && ab.exitCode() == 0, "ab did not succeed");
    const Usage used = difference(before, usageByThread(program.tool()));
    const QString report = QString::fromLatin1(ab.readAllStandardOutput());
    const double answered = figureIn(report, "^Complete requests:");
    require(answered > 0 && figureIn(report, "^Failed requests:") == 0 &&
                figureIn(report, "^Total transferred:") > answered * 1000,
            "a request was not answered");

    const std::string title = "Web site, " + std::to_string(connections) + " connections: ";
    printFigure(title + "requests", figureIn(report, "^Requests per second:"), "/s");
    printFigure(title + "processor a request", used.nanoseconds / 1000 / answered, "us");
    printFigure(title + "slowest answer", figureIn(report, "^ *100%"), "ms", 200);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const unsigned seconds = QByteArray(argc > 1 ? argv[1] : "60").toUInt();
    return reportingFailure([seconds] {
        measureStartAndEnd();
        measureStandingBy(seconds);
        measureSite(64);
        measureSite(400);
        return true;
    });
}
