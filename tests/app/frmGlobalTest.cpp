#include "support/ToolTest.h"

using frmGlobalTest = ToolTest;

struct FailingPanel final : ctlPanel
{
    void FillFields() override {}
    void PushUpdate() override { throw platform::Failure(9, u"a panel that fails"_s); }
};

TEST_F(frmGlobalTest, AFailureInATickIsRecordedAndHindersNeitherTheOtherDutyNorTheNextTick)
{
    root->Start();
    root->MainWindow()->hostPanel(frmMain::Main, std::make_unique<FailingPanel>());
    const FakeSystem::Id first = server().Process()->PID();
    fake.system.end(first);
    fake.clock.advance(3000);
    EXPECT_EQ(recordCount(), 6);
    EXPECT_EQ(lastRecord(), u"Global Controls|tmrHeartbeat_Timer|None|9"_s);
    ASSERT_TRUE(server().Connected());
    EXPECT_NE(server().Process()->PID(), first);
    EXPECT_FALSE(server().ProcessLocated());
}
