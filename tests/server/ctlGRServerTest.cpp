#include "server/ctlGRServer.h"

#include "support/ToolTest.h"

using enum ServerQueryStatus;

/// The process that the first start makes.
constexpr FakeSystem::Id First = 1001;
const QString Created = u"GR Process created (ID=1001) :Running|"_s;
const QString Idle = u"No Process information|Not Checking|0 0 0"_s;

class ctlGRServerTest : public ToolTest
{
protected:
    ctlGRServerTest()
    {
        startWith("<AutoStartGRServer>False</AutoStartGRServer>"
                  "<ServerCommandLineArgs>-map \"a b\" 1</ServerCommandLineArgs>");
        root->GlobalForm()->tmrHeartbeat.setInterval(0); // it has tests of its own
    }

    void startPolling()
    {
        ASSERT_TRUE(server().StartGRServer(false));
        server().tmrStartupTimeout_Timer();
    }
    /// The timer ticks while the query is in that state.
    void pollAs(ServerQueryStatus status) const
    {
        server().uctlServerStatus.setStatus(status);
        server().tmrPollingFrequency_Timer();
    }
    void deadTimerAs(ServerQueryStatus status) const
    {
        server().uctlServerStatus.setStatus(status);
        server().tmrDead_Timer();
    }
    void setStubborn(bool stubborn)
    {
        fake.system.processes.at(First).closesOnRequest = false;
        fake.system.processes.at(First).terminates = !stubborn;
    }
    FakeSystem::Id heldId() const { return server().Process()->PID(); }
    QString timers() const
    {
        return u"%1 %2 %3"_s.arg(server().tmrStartupTimeout.Interval())
            .arg(server().tmrPollingFrequency.Interval())
            .arg(server().tmrDead.Interval());
    }
    QString state() const
    {
        EXPECT_EQ(server().NetworkStatusText(),
                  u"Network Status: "_s +
                      (server().Connected() ? server().StatusText() : u"Not Monitoring"_s));
        return QStringList{server().ProcessStatusText(), server().StatusText(), timers()}.join(
            u'|');
    }
};

TEST_F(ctlGRServerTest, IdleThenGraceThenPollingThenHeldThenIdle)
{
    EXPECT_EQ(state(), Idle);
    EXPECT_FALSE(server().StopGRServer());
    ASSERT_TRUE(server().StartGRServer(true));
    EXPECT_EQ(fake.system.commandLines.last(),
              u"\"%1GhostRecon.exe\" -autoserve -map \"a b\" 1"_s.arg(rootDirectory()));
    EXPECT_EQ(state(), Created + u"Unknown|30000 0 0"_s);
    server().tmrStartupTimeout_Timer();
    EXPECT_EQ(state(), Created + u"Unknown|0 3000 0"_s);
    root->Options()->ServerPollingFrequency.Let(1234);
    server().tmrPollingFrequency_Timer();
    EXPECT_EQ(state(), Created + u"Probing Server|0 1234 0"_s);

    server().StopMonitoring();
    EXPECT_EQ(state(), Created + u"Probing Server|0 0 0"_s) << "the query keeps its state";
    server().StartMonitoring();
    EXPECT_EQ(state(), Created + u"Unknown|30000 0 0"_s);
    pollAs(Dead);
    server().Disconnect();
    EXPECT_EQ(state(), Idle);
    EXPECT_EQ(server().Status(), Unknown);
    EXPECT_FALSE(fake.system.processes.at(First).ended);
}

TEST_F(ctlGRServerTest, ARunningServerIsTakenOverAndAFailedStartHoldsNone)
{
    startPolling();
    fake.system.end(First);
    EXPECT_EQ(state(), u"GR Process created (ID=1001) :Not Active|Unknown|0 3000 0"_s);
    fake.system.addServer(server().EXEPath());
    fake.system.addServer(server().EXEPath());
    EXPECT_TRUE(server().StartGRServer(true));
    EXPECT_EQ(state(), u"GR Process found (ID=1002) :Running|Unknown|30000 0 0"_s)
        << "the last one examined is held";
    EXPECT_EQ(fake.system.commandLines.size(), 1);

    fake.system.startFails = true;
    EXPECT_FALSE(server().StartGRServer(false));
    EXPECT_EQ(state(), Idle);
    EXPECT_EQ(recordCount(), 1);
}

TEST_F(ctlGRServerTest, SilenceArmsTheDeadTimerOnceAndAnAnswerDisarmsIt)
{
    startPolling();
    pollAs(Dead);
    EXPECT_EQ(state(), Created + u"Probing Server (Seems to be dead)|0 3000 30000"_s);
    root->Options()->ServerTimeout.Let(7);
    pollAs(Probing); // a request that is still outstanding says nothing
    pollAs(Dead);    // an armed timer runs on
    EXPECT_EQ(timers(), u"0 3000 30000"_s);
    pollAs(Responding);
    EXPECT_EQ(state(), Created + u"Probing Server|0 3000 0"_s);
    root->Options()->AutoRestartGRServer.Let(false);
    pollAs(Dead);
    EXPECT_EQ(timers(), u"0 3000 0"_s);
}

TEST_F(ctlGRServerTest, TheDeadTimerRestartsOnlyADeadServerThatCanBeStopped)
{
    startPolling();
    pollAs(Dead);
    deadTimerAs(Probing);
    root->Options()->AutoRestartGRServer.Let(false);
    deadTimerAs(Dead);
    EXPECT_EQ(heldId(), First);
    root->Options()->AutoRestartGRServer.Let(true);
    // A server that cannot be stopped is tried again after the same delay.
    setStubborn(true);
    server().tmrDead_Timer();
    EXPECT_EQ(state(), u"GR Process created (ID=0) :Not Active|Server Dead|0 3000 30000"_s);
    EXPECT_EQ(fake.system.commandLines.size(), 1);

    ASSERT_TRUE(server().FindGRServer());
    EXPECT_EQ(state(), u"GR Process found (ID=1001) :Running|Unknown|30000 0 0"_s);
    setStubborn(false);
    server().tmrStartupTimeout_Timer();
    pollAs(Dead);
    deadTimerAs(Dead);
    EXPECT_EQ(state(), u"GR Process created (ID=1002) :Running|Unknown|30000 0 0"_s);
    server().uctlServerStatus.setStatus(Responding);
    EXPECT_TRUE(server().StopGRServer());
    EXPECT_EQ(state(), Idle);
    EXPECT_EQ(server().uctlServerStatus.Status(), Unknown);
}

TEST_F(ctlGRServerTest, WithDefaultSettingsEachOfManyHangsIsRestartedAtTheFirstMultiple)
{
    ASSERT_TRUE(server().StartGRServer(true));
    for (int hang = 0; hang < 20; ++hang) {
        // 30 s grace, first request at 33 s, dead at 38 s and seen at 39 s, restarted 30 s later.
        fake.clock.advance(68999);
        ASSERT_EQ(heldId(), First + hang);
        fake.clock.advance(1);
        ASSERT_EQ(heldId(), First + hang + 1);
        EXPECT_TRUE(fake.system.processes.at(First + hang).ended);
    }
}
