#include "support/ToolTest.h"

using frmGlobalTest = ToolTest;

namespace {

class RecordingPanel final : public ctlPanel
{
public:
    explicit RecordingPanel(int &updates) : m_updates(updates) {}
    void FillFields() override {}
    void PushUpdate() override
    {
        ++m_updates;
        throw platform::Failure(9, QStringLiteral("a panel that fails"));
    }

private:
    int &m_updates;
};

} // namespace

TEST_F(frmGlobalTest, LooksAfterTheServerOnMultiplesOfSixOnly)
{
    writeOptions("<AutoStartGRServer>False</AutoStartGRServer>");
    root->Start();
    frmGlobal &form = *root->GlobalForm();

    // Each adopted server is let go at once, so that the next look adopts it again.
    fake.system.addServer(server().EXEPath());
    std::vector<int> looks;
    for (int tick = 0; tick < 1205; ++tick) {
        fake.clock.advance(500);
        ASSERT_GE(form.HeartbeatCount(), 1);
        ASSERT_LE(form.HeartbeatCount(), 601);
        if (server().Connected()) {
            looks.push_back(form.HeartbeatCount());
            server().Disconnect();
        }
    }
    // 100 multiples from 6 to 600, 1 to 601 and round again, 7 ticks across the turn.
    ASSERT_EQ(looks.size(), 200U);
    for (std::size_t index = 0; index < looks.size(); ++index) {
        EXPECT_EQ(looks[index], static_cast<int>(index % 100 + 1) * 6);
    }
}

TEST_F(frmGlobalTest, RestartsAServerThatEndedWhenAskedTo)
{
    root->Start();
    const platform::ProcessId first = server().Process()->PID();
    fake.system.end(first);
    fake.clock.advance(3000);
    ASSERT_TRUE(server().Connected());
    EXPECT_NE(server().Process()->PID(), first);
    EXPECT_FALSE(server().ProcessLocated());

    root->Options()->AutoRestartOnProcessStop.Let(false);
    fake.system.end(server().Process()->PID());
    fake.clock.advance(3500);
    EXPECT_FALSE(server().Connected());

    // One that the operator starts by hand is taken over, if it may be looked for.
    fake.system.addServer(server().EXEPath());
    root->Options()->FindGRServer.Let(false);
    fake.clock.advance(3500);
    EXPECT_FALSE(server().Connected());
    root->Options()->FindGRServer.Let(true);
    fake.clock.advance(3500);
    EXPECT_TRUE(server().ProcessLocated());
    EXPECT_TRUE(server().Connected());
    EXPECT_EQ(recordCount(), 0);
}

TEST_F(frmGlobalTest, AFailureInATickIsRecordedAndHindersNeitherTheOtherDutyNorTheNextTick)
{
    root->Start();
    int updates = 0;
    root->MainWindow()->HostPanel(frmMain::Main, std::make_unique<RecordingPanel>(updates));
    const platform::ProcessId first = server().Process()->PID();
    fake.system.end(first);

    fake.clock.advance(3000);

    EXPECT_EQ(updates, 6);
    EXPECT_EQ(recordCount(), 6);
    const Record record = lastRecord();
    EXPECT_EQ(record.module, QStringLiteral("Global Controls"));
    EXPECT_EQ(record.routine, QStringLiteral("tmrHeartbeat_Timer"));
    EXPECT_EQ(record.id, QStringLiteral("None"));
    EXPECT_EQ(record.number, 9);
    EXPECT_NE(server().Process()->PID(), first);
}
