#include "app/Program.h"
#include "app/frmGlobal.h"
#include "core/basMain.h"
#include "figures.h"
#include "fullReply.h"
#include "server/ctlGRServer.h"
#include "support/FakeMachine.h"
#include "ui/frmMain.h"

#include <QApplication>
#include <QNetworkDatagram>
#include <QTemporaryDir>

#include <malloc.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// Whether the tool's memory grows with its work. Simulated time makes hours of supervision pass in
// seconds; the status query goes over a real socket to a game server that is played here.

namespace {

constexpr int Heartbeats = 20000;
constexpr int HeartbeatMilliseconds = 500;
constexpr int Replies = 5000; // a poll at every fourth heartbeat
const QByteArray Options = "<options><ServerStartupTimeout>1</ServerStartupTimeout>"
                           "<ServerPollingFreq>2000</ServerPollingFreq></options>";

/// A block of the heap takes at least 32 bytes: one lost at every reply makes 156 KiB, one at every
/// look after the server (each sixth heartbeat) 104 KiB. Without any loss a few pages may come or
/// go, depending on where in the heap blocks happen to lie.
constexpr double LargestGrowthKiB = 64;

class Endurance
{
public:
    Endurance()
    {
        m_fake.files.create(m_directory.filePath(u"GhostRecon.exe"_s), {}, {});
        m_fake.files.create(m_directory.filePath(u"ZebekSuiteOptions.xml"_s), Options, {});
        gRoot = &m_root;
        m_root.Start();
        require(query().IP() == u"127.0.0.1"_s &&
                    m_game.bind(QHostAddress(QHostAddress::LocalHost), 2348),
                "run this through tests/isolated, where the loopback address is the only one");
        QObject::connect(&m_game, &QUdpSocket::readyRead, [this] {
            m_game.writeDatagram(m_game.receiveDatagram().makeReply(m_reply));
        });
    }

    /// Returns how many replies the tool took meanwhile.
    int run(int heartbeats)
    {
        int replies = 0;
        for (int count = 0; count < heartbeats; ++count) {
            m_fake.clock.advance(HeartbeatMilliseconds);
            replies += asking() ? 1 : 0;
            QCoreApplication::processEvents();
            // The clock stands still and times nothing out; main() limits the real time.
            while (asking()) {
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            }
        }
        return replies;
    }

private:
    const ctlServerStatus &query() const { return m_root.Server().StatusObject(); }
    bool asking() const { return query().Status() == ServerQueryStatus::Probing; }

    QTemporaryDir m_directory;
    FakeMachine m_fake;
    Program m_root{m_fake.machine, m_directory.path()};
    QUdpSocket m_game;
    QByteArray m_reply = fullReply();
};

struct Memory
{
    int trimmed = ::malloc_trim(0); // what was freed and is kept for later is no growth
    double own = privateKiB(u"self"_s);
    double written = writtenKiB(u"self"_s);
};

bool endures()
{
    Endurance endurance;
    endurance.run(Heartbeats / 10); // warm
    const Memory before;
    const int replies = endurance.run(Heartbeats);
    const Memory after;
    require(replies >= Replies, "there were too few replies");
    const double growth = after.written - before.written;
    printFigure("Private memory when warm", before.own, "KiB");
    printFigure("Private memory 20,000 heartbeats, 5,000 replies on", after.own, "KiB");
    printFigure("Growth of its written part", growth, "KiB", LargestGrowthKiB);
    return growth < LargestGrowthKiB;
}

} // namespace

int main(int argc, char *argv[])
{
    constexpr unsigned LimitSeconds = 300;
    ::alarm(LimitSeconds);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return reportingFailure(endures);
}
