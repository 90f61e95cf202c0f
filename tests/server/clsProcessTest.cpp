#include "server/clsProcess.h"

#include "server/basWINAPI.h"
#include "support/RootTest.h"

const QString Game = u"/games/GhostRecon.exe"_s;
const QString CommandLine = u"\"/games/GhostRecon.exe\" -autoserve"_s;

class clsProcessTest : public ServicesTest
{
protected:
    clsProcessTest() { startIdle(); }
    void TearDown() override
    {
        EXPECT_TRUE(fake.system.handles.empty()) << "a handle was never closed";
        EXPECT_EQ(fake.system.wrongCloses, 0) << "a handle was closed twice";
    }
    FakeSystem::Window topmost() const { return fake.system.windows.front().handle; }

    FakeSystem &system = fake.system;
};

TEST_F(clsProcessTest, AProcessThatCannotBeHeldIsNone)
{
    system.startFails = true;
    clsProcess process;
    EXPECT_FALSE(process.Create(CommandLine));
    EXPECT_EQ(lastRecord(), u"Process Class|Create|Unknown|2"_s);

    FakeSystem::Process &refused = system.processes.at(system.addServer(Game));
    refused.opens = false;
    EXPECT_FALSE(process.GetFromHwnd(topmost()));
    refused.opens = true;
    refused.path.clear();
    EXPECT_FALSE(process.GetFromHwnd(topmost()));
    EXPECT_FALSE(process.GetFromHwnd(99999));
    EXPECT_EQ(process.PID(), 0);
}

TEST_F(clsProcessTest, StoppingAsksTheTopmostWindowAndThenTerminates)
{
    clsProcess process;
    ASSERT_TRUE(process.Create(CommandLine));
    FakeSystem::Process &stubborn = system.processes.at(process.PID());
    const FakeSystem::Window asked = system.addWindow(u"Console"_s, process.PID());
    system.addServer(Game);
    const FakeSystem::Window message = system.addWindow(u"Error - GhostRecon.exe"_s, 1);
    system.addWindow(u"ghostrecon.exe"_s, 1);
    stubborn.closesOnRequest = stubborn.terminates = false;
    EXPECT_FALSE(process.StopProcess());
    EXPECT_EQ(system.closeRequests, (std::vector{asked, message}));
    EXPECT_EQ(system.waits, (std::vector{0, 5000}));
    EXPECT_EQ(process.PID(), 0) << "the object is empty even when stopping failed";
    EXPECT_EQ(process.Path(), QString());
    system.addWindow(u"Of nobody"_s, 0);
    EXPECT_FALSE(process.StopProcess()) << "an empty object has nothing to stop";
    EXPECT_EQ(system.closeRequests.size(), 3U) << "only the message is asked again";
}

TEST_F(clsProcessTest, WindowsAreFoundByPartOfTheirCaptionInStackingOrder)
{
    const auto exact = system.addWindow(u"Ghost Recon"_s, 1);
    system.addWindow(u"ghost recon"_s, 1);
    const auto longer = system.addWindow(u"The Ghost Recon Console"_s, 1);
    system.addWindow(QString(600, u'x') + u"Ghost Recon"_s, 1);
    EXPECT_EQ(fnFindWindows(u"Ghost Recon"_s), (std::vector{longer, exact}));

    system.vanishing = true;
    EXPECT_TRUE(fnFindWindows(u"Ghost Recon"_s).empty());
    EXPECT_EQ(recordCount(), 0);
    system.listingFails = true;
    EXPECT_TRUE(fnFindWindows(u"Ghost Recon"_s).empty());
    EXPECT_EQ(lastRecord(), u"WINAPI|fnFindWindows|None|51"_s);
}
