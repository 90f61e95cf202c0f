#include "server/ctlGRServer.h"

#include "support/RootTest.h"

using enum ServerQueryStatus;

/// The process that the first start makes.
constexpr FakeSystem::Id First = 1001;
const QString Created = u"GR Process created (ID=1001) :Running|"_s;
const QString Idle = u"No Process information|Not Checking|0 0 0"_s;

class ctlGRServerTest : public ServicesTest
{
protected:
    ctlGRServerTest()
    {
        startWith("<ServerCommandLineArgs>-map \"a b\" 1</ServerCommandLineArgs>");
        m_server.emplace();
        m_server->setEXEPath(rootDirectory() + u"GhostRecon.exe"_s);
    }

    ctlGRServer &server() { return *m_server; }
    void startPolling()
    {
        ASSERT_TRUE(server().StartGRServer(false));
        server().tmrStartupTimeout_Timer();
    }
    /// The timer ticks while the query is in that state.
    void pollAs(ServerQueryStatus status)
    {
        server().uctlServerStatus.setStatus(status);
        server().tmrPollingFrequency_Timer();
    }
    void deadTimerAs(ServerQueryStatus status)
    {
        server().uctlServerStatus.setStatus(status);
        server().tmrDead_Timer();
    }
    /// The next looks of the heartbeat.
    void look(int times = 1)
    {
        for (int count = 0; count < times; ++count) {
            fake.clock.advance(3000);
            server().supervise();
        }
    }
    /// How long a hung server is left alone after the first request that it does not answer.
    qint64 millisecondsOfHang()
    {
        startPolling();
        const FakeSystem::Id hung = heldId();
        while (server().Status() != Probing) {
            fake.clock.advance(10);
        }
        const qint64 begin = fake.clock.milliseconds();
        while (heldId() == hung && fake.clock.milliseconds() - begin < 300000) {
            fake.clock.advance(10);
        }
        return fake.clock.milliseconds() - begin;
    }
    FakeSystem::Id heldId() { return server().Process()->PID(); }
    QString timers()
    {
        return u"%1 %2 %3"_s.arg(server().tmrStartupTimeout.Interval())
            .arg(server().tmrPollingFrequency.Interval())
            .arg(server().tmrDead.Interval());
    }
    QString state()
    {
        EXPECT_EQ(server().NetworkStatusText(),
                  u"Network Status: "_s +
                      (server().Connected() ? server().StatusText() : u"Not Monitoring"_s));
        return QStringList{server().ProcessStatusText(), server().StatusText(), timers()}.join(
            u'|');
    }

private:
    std::optional<ctlGRServer> m_server;
};

TEST_F(ctlGRServerTest, ARunningServerOfThisDirectoryIsTakenOver)
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

    fake.system.end(1002);
    fake.system.end(1003);
    server().StopGRServer();
    fake.system.addServer(u"/elsewhere/GhostRecon.exe"_s);
    fake.system.addServer(server().EXEPath(), u"Ghost Recon Console"_s);
    look();
    EXPECT_EQ(state(), Idle) << "another directory's server, and another window of this one's";
}

TEST_F(ctlGRServerTest, AHungServerIsRestartedInTimeWithAllSettings)
{
    for (const int polling : {1, 250, 500, 1000, 1700, 2500, 3000, 4000, 5000, 7000, 32767}) {
        for (const int timeout : {1, 4, 5, 7, 10, 30, 64}) {
            root->Options()->ServerPollingFrequency.Ex(polling);
            root->Options()->ServerTimeout.Ex(timeout);
            const qint64 hang = millisecondsOfHang();
            EXPECT_GE(hang, 5000 + timeout * 1000) << polling << '/' << timeout;
            EXPECT_LE(hang, 5000 + polling + timeout * 1000 + 5010) << polling << '/' << timeout;
            server().StopGRServer();
        }
    }
}

TEST_F(ctlGRServerTest, APollThatFallsDueTogetherWithAnotherTimerComesAfterIt)
{
    for (const int seconds : {5, 10}) { // the request's time-out; the dead timer
        root->Options()->ServerPollingFrequency.Ex(seconds * 1000);
        root->Options()->ServerTimeout.Ex(seconds);
        EXPECT_EQ(millisecondsOfHang(), 2 * seconds * 1000);
        server().StopGRServer();
    }
}

TEST_F(ctlGRServerTest, AZeroThatWasTypedOnTheWayStopsNoTimerForGood)
{
    startPolling();
    root->Options()->ServerPollingFrequency.Let(0);
    pollAs(Responding);
    look();
    EXPECT_EQ(timers(), u"0 0 0"_s);
    root->Options()->ServerPollingFrequency.Let(5000);
    look();
    EXPECT_EQ(timers(), u"0 5000 0"_s);

    root->Options()->ServerStartupTimeout.Let(0);
    server().StartMonitoring();
    look();
    EXPECT_EQ(timers(), u"0 0 0"_s);
    root->Options()->ServerStartupTimeout.Let(7);
    look();
    EXPECT_EQ(timers(), u"7000 0 0"_s);
}

TEST_F(ctlGRServerTest, NoServerIsStartedBesideAnotherUsers)
{
    fake.system.processes.at(fake.system.addServer(server().EXEPath())).opens = false;
    EXPECT_FALSE(server().StartGRServer(true));
    EXPECT_FALSE(server().StartGRServer(false));
    look(20);
    EXPECT_EQ(recordCount(), 1) << "told once";
    EXPECT_EQ(lastRecord(), u"GR Server Class|FindGRServer|Unknown|75"_s);
    EXPECT_EQ(fake.system.commandLines.size(), 0);
}

TEST_F(ctlGRServerTest, AServerThatEndsAgainAndAgainIsToldOnceAnHour)
{
    ASSERT_TRUE(server().StartGRServer(true));
    for (int end = 1; end <= 1300; ++end) {
        fake.system.processes.at(heldId()).exitCode = 127;
        fake.system.end(heldId());
        look();
        ASSERT_EQ(recordCount(), end < 3 ? 0 : (end < 3 + 1200 ? 1 : 2)) << end;
    }
    EXPECT_TRUE(read(ErrorLog).contains("ended 3 times within 30 s, the last time with the exit "
                                        "code 127. Start it once by hand"));
}

TEST_F(ctlGRServerTest, TheHookIsToldOfWhatBecomesOfTheServer)
{
    const auto told = [this] { return std::exchange(fake.hooks.events, {}).join(u' '); };
    startPolling();
    EXPECT_EQ(told(), u"started|pid=1001"_s);
    fake.system.processes.at(First).exitCode = 3;
    fake.system.end(First);
    look();
    EXPECT_EQ(told(), u"ended|pid=1001|exit-code=3 started|pid=1002 "
                      "restarted|pid=1002|reason=ended"_s);
    server().tmrStartupTimeout_Timer();
    pollAs(Dead);
    EXPECT_EQ(told(), QString());
    deadTimerAs(Dead);
    EXPECT_EQ(told(), u"hung|pid=1002 started|pid=1003 restarted|pid=1003|reason=hung"_s);

    // One that nobody restarts is told of once, when it would have been.
    root->Options()->AutoRestartGRServer.Let(false);
    server().tmrStartupTimeout_Timer();
    for (int poll = 0; poll <= 12; ++poll) {
        pollAs(Dead);
        fake.clock.advance(3000);
        EXPECT_EQ(told(), poll == 10 ? u"hung|pid=1003"_s : QString()) << poll;
    }

    server().StopGRServer();
    fake.system.addServer(server().EXEPath());
    look();
    EXPECT_EQ(told(), u"found|pid=1004"_s);
    fake.system.startFails = true;
    fake.system.end(1004);
    look(3);
    EXPECT_EQ(told(), u"ended|pid=1004|exit-code=unknown start-failed|module=Process Class|"
                      "routine=Create|number=2|reason=No such file or directory"_s);
    fake.system.startFails = false;
    look();
    told();
    for (int ends = 0; ends < 3; ++ends) {
        fake.system.end(heldId());
        look();
    }
    EXPECT_EQ(told().count(u"looping|module=GR Server Class|routine=Supervise|"_s), 1);
}

TEST_F(ctlGRServerTest, ARequestThatCannotBeSentDoesNotCountAgainstTheServer)
{
    startPolling();
    fake.clock.advance(9000); // silent
    EXPECT_EQ(timers(), u"0 3000 30000"_s);
    for (const auto &[address, records] :
         {std::pair(u"255.255.255.255"_s, 1), std::pair(u"no.such.host.invalid"_s, 2)}) {
        server().uctlServerStatus.setIP(address);
        fake.clock.advance(120000);
        EXPECT_EQ(state(), Created + u"Unknown|0 3000 30000"_s);
        EXPECT_EQ(recordCount(), records) << "one for each reason";
    }
    EXPECT_EQ(lastRecord().section(u'|', 0, 2), u"Server Status Control|Refresh|None"_s);
    server().uctlServerStatus.setIP(u"127.0.0.1"_s);
    // What was unanswered before does not suffice, but is not forgotten either.
    const qint64 hang = millisecondsOfHang();
    EXPECT_GE(hang, 10000);
    EXPECT_LE(hang, 36000 + 5000);
}
