#include "server/ctlGRServer.h"

#include "support/ToolTest.h"

namespace {

class ctlGRServerTest : public ToolTest
{
protected:
    ctlGRServerTest()
    {
        writeOptions("<AutoStartGRServer>False</AutoStartGRServer>"
                     "<ServerCommandLineArgs>-map \"a b\" 1</ServerCommandLineArgs>");
        root->Start();
        // The heartbeat has tests of its own.
        root->GlobalForm()->tmrHeartbeat.setInterval(0);
    }

    void setStatus(ServerQueryStatus status) const { server().uctlServerStatus.setStatus(status); }
    void expectTimers(int startup, int polling, int dead) const
    {
        EXPECT_EQ(server().tmrStartupTimeout.Interval(), startup);
        EXPECT_EQ(server().tmrPollingFrequency.Interval(), polling);
        EXPECT_EQ(server().tmrDead.Interval(), dead);
    }
    void startPolling() const
    {
        ASSERT_TRUE(server().StartGRServer(false));
        server().tmrStartupTimeout_Timer();
    }
};

} // namespace

TEST_F(ctlGRServerTest, IdleThenGraceThenPollingThenHeldThenIdle)
{
    EXPECT_EQ(server().StatusText(), QStringLiteral("Not Checking"));
    EXPECT_EQ(server().NetworkStatusText(), QStringLiteral("Network Status: Not Monitoring"));
    EXPECT_EQ(server().ProcessStatusText(), QStringLiteral("No Process information"));
    EXPECT_FALSE(server().StopGRServer());
    expectTimers(0, 0, 0);
    EXPECT_FALSE(server().tmrPollingFrequency.Enabled());

    ASSERT_TRUE(server().StartGRServer(true));
    EXPECT_EQ(
        fake.system.commandLines.last(),
        QStringLiteral("\"%1GhostRecon.exe\" -autoserve -map \"a b\" 1").arg(rootDirectory()));
    EXPECT_EQ(server().ProcessStatusText(),
              QStringLiteral("GR Process created (ID=%1) :Running").arg(server().Process()->PID()));
    EXPECT_EQ(server().NetworkStatusText(), QStringLiteral("Network Status: Unknown"));
    expectTimers(30000, 0, 0);

    server().tmrStartupTimeout_Timer();
    expectTimers(0, 3000, 0);
    EXPECT_TRUE(server().tmrPollingFrequency.Enabled());
    root->Options()->ServerPollingFrequency.Let(1234);
    server().tmrPollingFrequency_Timer();
    expectTimers(0, 1234, 0);
    EXPECT_EQ(server().StatusText(), QStringLiteral("Probing Server"));

    server().StopMonitoring();
    expectTimers(0, 0, 0);
    EXPECT_EQ(server().Status(), ServerQueryStatus::Probing) << "the query keeps its state";
    server().tmrPollingFrequency.setInterval(5);
    server().tmrPollingFrequency_Timer();
    server().tmrStartupTimeout_Timer();
    expectTimers(0, 0, 0);

    server().StartMonitoring();
    expectTimers(30000, 0, 0);
    const platform::ProcessId id = server().Process()->PID();
    server().Disconnect();
    expectTimers(0, 0, 0);
    EXPECT_FALSE(server().Connected());
    EXPECT_EQ(server().Status(), ServerQueryStatus::Unknown);
    EXPECT_FALSE(fake.system.processes.at(id).ended);
}

TEST_F(ctlGRServerTest, StoppingEndsTheServerOrKeepsTheEmptyProcess)
{
    startPolling();
    const platform::ProcessId id = server().Process()->PID();
    fake.system.processes.at(id).closesOnRequest = false;
    fake.system.processes.at(id).terminates = false;
    EXPECT_FALSE(server().StopGRServer());
    EXPECT_TRUE(server().Connected());
    EXPECT_EQ(server().ProcessStatusText(),
              QStringLiteral("GR Process created (ID=0) :Not Active"));
    expectTimers(0, 3000, 0);

    ASSERT_TRUE(server().FindGRServer());
    EXPECT_EQ(server().ProcessStatusText(),
              QStringLiteral("GR Process found (ID=%1) :Running").arg(id));
    fake.system.processes.at(id).terminates = true;
    setStatus(ServerQueryStatus::Responding);
    EXPECT_TRUE(server().StopGRServer());
    EXPECT_FALSE(server().Connected());
    EXPECT_EQ(server().uctlServerStatus.Status(), ServerQueryStatus::Unknown);
    expectTimers(0, 0, 0);
}

TEST_F(ctlGRServerTest, OnlyAServerOfThisDirectoryWithTheExactCaptionIsTakenOver)
{
    fake.system.addServer(QStringLiteral("/elsewhere/GhostRecon.exe"));
    fake.system.addWindow(QStringLiteral("Ghost Recon Console"),
                          fake.system.addProcess({server().EXEPath()}));
    startPolling();
    fake.system.end(server().Process()->PID());
    const clsProcess *const held = server().Process();
    EXPECT_FALSE(server().FindGRServer());
    EXPECT_EQ(server().Process(), held) << "a failed search changes nothing";
    expectTimers(0, 3000, 0);

    const platform::ProcessId lowest = fake.system.addServer(server().EXEPath());
    fake.system.addServer(server().EXEPath());
    EXPECT_TRUE(server().StartGRServer(true));
    EXPECT_EQ(server().Process()->PID(), lowest) << "the last one examined is held";
    EXPECT_TRUE(server().ProcessLocated());
    EXPECT_EQ(fake.system.commandLines.size(), 1);
    expectTimers(30000, 0, 0);
}

TEST_F(ctlGRServerTest, AServerThatCannotBeStartedLeavesItIdle)
{
    startPolling();
    fake.system.startFails = true;
    EXPECT_FALSE(server().StartGRServer(false));
    EXPECT_FALSE(server().Connected());
    expectTimers(0, 0, 0);
    EXPECT_EQ(recordCount(), 1);
}

TEST_F(ctlGRServerTest, SilenceArmsTheDeadTimerOnceAndAnAnswerDisarmsIt)
{
    startPolling();
    setStatus(ServerQueryStatus::Dead);
    EXPECT_EQ(server().StatusText(), QStringLiteral("Server Dead"));
    server().tmrPollingFrequency_Timer();
    expectTimers(0, 3000, 30000);
    EXPECT_EQ(server().NetworkStatusText(),
              QStringLiteral("Network Status: Probing Server (Seems to be dead)"));

    // A request that is still outstanding says nothing.
    server().tmrPollingFrequency_Timer();
    expectTimers(0, 3000, 30000);

    root->Options()->ServerTimeout.Let(7);
    setStatus(ServerQueryStatus::Dead);
    server().tmrPollingFrequency_Timer();
    expectTimers(0, 3000, 30000); // an armed timer runs on

    setStatus(ServerQueryStatus::Responding);
    EXPECT_EQ(server().StatusText(), QStringLiteral("Server Responding"));
    server().tmrPollingFrequency_Timer();
    expectTimers(0, 3000, 0);
    EXPECT_EQ(server().StatusText(), QStringLiteral("Probing Server"));

    root->Options()->AutoRestartGRServer.Let(false);
    setStatus(ServerQueryStatus::Dead);
    server().tmrPollingFrequency_Timer();
    expectTimers(0, 3000, 0);
}

TEST_F(ctlGRServerTest, TheDeadTimerActsOnlyWhileTheServerIsDead)
{
    startPolling();
    const platform::ProcessId first = server().Process()->PID();
    setStatus(ServerQueryStatus::Dead);
    server().tmrPollingFrequency_Timer();
    server().tmrDead_Timer(); // status is now Probing
    EXPECT_EQ(server().Process()->PID(), first);

    setStatus(ServerQueryStatus::Dead);
    root->Options()->AutoRestartGRServer.Let(false);
    server().tmrDead_Timer();
    EXPECT_EQ(server().Process()->PID(), first);
    root->Options()->AutoRestartGRServer.Let(true);

    // A server that cannot be stopped is tried again after the same delay.
    fake.system.processes.at(first).closesOnRequest = false;
    fake.system.processes.at(first).terminates = false;
    server().tmrDead_Timer();
    EXPECT_EQ(server().tmrDead.Interval(), 30000);
    EXPECT_EQ(fake.system.commandLines.size(), 1);

    ASSERT_TRUE(server().FindGRServer());
    fake.system.processes.at(first).terminates = true;
    server().tmrStartupTimeout_Timer();
    setStatus(ServerQueryStatus::Dead);
    server().tmrPollingFrequency_Timer();
    setStatus(ServerQueryStatus::Dead);
    server().tmrDead_Timer();
    EXPECT_NE(server().Process()->PID(), first);
    EXPECT_FALSE(server().ProcessLocated());
    expectTimers(30000, 0, 0);
}

TEST_F(ctlGRServerTest, WithDefaultSettingsEachOfManyHangsIsRestartedAtTheFirstMultiple)
{
    ASSERT_TRUE(server().StartGRServer(true));
    for (int hang = 1; hang <= 20; ++hang) {
        const platform::ProcessId id = server().Process()->PID();
        const qint64 start = fake.clock.elapsed();
        while (server().Process()->PID() == id && fake.clock.elapsed() < start + 200000) {
            fake.clock.advance(100);
        }
        // 30 s grace, first request at 33 s, dead at 38 s and seen at 39 s, restarted 30 s later.
        EXPECT_EQ(fake.clock.elapsed() - start, 69000) << hang;
        EXPECT_TRUE(fake.system.processes.at(id).ended);
    }
    EXPECT_EQ(fake.system.commandLines.size(), 21);
}

TEST_F(ctlGRServerTest, AnIntervalOfZeroNeverFires)
{
    for (auto *const setting :
         {&root->Options()->ServerStartupTimeout, &root->Options()->ServerPollingFrequency,
          &root->Options()->ServerTimeout}) {
        const int before = (*setting)();
        setting->Let(0);
        ASSERT_TRUE(server().StartGRServer(false));
        const platform::ProcessId id = server().Process()->PID();
        fake.clock.advance(500000);
        EXPECT_EQ(server().Process()->PID(), id);
        setting->Let(before);
    }
    root->Options()->ServerStartupTimeout.Let(2147483647);
    server().StartMonitoring();
    EXPECT_EQ(server().tmrStartupTimeout.Interval(), 2147483647);
    root->Options()->ServerStartupTimeout.Let(-5);
    server().StartMonitoring();
    EXPECT_EQ(server().tmrStartupTimeout.Interval(), 0);
}
