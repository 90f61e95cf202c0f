#include "server/clsProcess.h"

#include "server/basWINAPI.h"
#include "support/ToolTest.h"

namespace {

const QString Game = QStringLiteral("/games/GhostRecon.exe");

class clsProcessTest : public ToolTest
{
protected:
    clsProcessTest()
    {
        writeOptions("<AutoStartGRServer>False</AutoStartGRServer>");
        root->Start();
    }
    ~clsProcessTest() override
    {
        EXPECT_TRUE(fake.system.handles.empty()) << "a handle was never closed";
        EXPECT_EQ(fake.system.wrongCloses, 0) << "a handle was closed twice";
    }

    FakeSystem &system = fake.system;
};

} // namespace

TEST_F(clsProcessTest, ACreatedProcessIsItsCommandLineAndAnAttachedOneItsPath)
{
    const QString line = QStringLiteral("\"%1\" -autoserve").arg(Game);
    clsProcess created;
    EXPECT_FALSE(created.StillActive());
    ASSERT_TRUE(created.Create(line));
    EXPECT_EQ(created.Path(), line);
    EXPECT_TRUE(created.StillActive());

    clsProcess attached;
    ASSERT_TRUE(attached.GetFromHwnd(system.windows.front().handle));
    EXPECT_EQ(attached.Path(), Game);
    EXPECT_EQ(attached.PID(), created.PID());
    attached.Clear();
    EXPECT_EQ(attached.PID(), 0);
    EXPECT_EQ(attached.Path(), QString());
    EXPECT_FALSE(attached.StillActive());

    system.end(created.PID());
    EXPECT_FALSE(created.StillActive());
}

TEST_F(clsProcessTest, AProcessThatCannotBeHeldIsNone)
{
    system.startFails = true;
    clsProcess process;
    EXPECT_FALSE(process.Create(QStringLiteral("\"/nowhere\"")));
    EXPECT_EQ(lastRecord().module, QStringLiteral("Process Class"));
    EXPECT_EQ(lastRecord().routine, QStringLiteral("Create"));
    EXPECT_EQ(lastRecord().id, QStringLiteral("Unknown"));
    EXPECT_EQ(lastRecord().number, 2);

    const platform::ProcessId refused = system.addServer(Game);
    system.processes.at(refused).opens = false;
    EXPECT_FALSE(process.GetFromHwnd(system.windows.front().handle));
    system.processes.at(refused).opens = true;
    system.processes.at(refused).path.clear();
    EXPECT_FALSE(process.GetFromHwnd(system.windows.front().handle));
    EXPECT_FALSE(process.GetFromHwnd(99999));
    EXPECT_EQ(process.PID(), 0);
}

TEST_F(clsProcessTest, TheExitCode259ReadsAsStillActive)
{
    const platform::ProcessId id = system.addServer(Game);
    clsProcess process;
    ASSERT_TRUE(process.GetFromHwnd(system.windows.front().handle));
    system.processes.at(id).exitCode = 259;
    system.end(id);
    EXPECT_TRUE(process.StillActive());
}

TEST_F(clsProcessTest, OnThe9xFamilyTheProcessListGivesThePath)
{
    system.version = -1;
    const platform::ProcessId id = system.addServer(Game);
    const platform::WindowHandle window = system.windows.front().handle;
    clsProcess process;
    ASSERT_TRUE(process.GetFromHwnd(window));
    EXPECT_EQ(process.Path(), Game);
    EXPECT_TRUE(process.StillActive());

    system.processes.at(id).opens = false;
    clsProcess withoutHandle;
    EXPECT_TRUE(withoutHandle.GetFromHwnd(window));
    EXPECT_EQ(withoutHandle.PID(), id);
    EXPECT_FALSE(withoutHandle.StillActive());

    clsProcess none;
    system.processes.at(id).path.clear();
    EXPECT_FALSE(none.GetFromHwnd(window));
    system.snapshotWorks = false;
    EXPECT_FALSE(none.GetFromHwnd(window));
}

TEST_F(clsProcessTest, StoppingAsksTheTopmostWindowAndWaits)
{
    clsProcess process;
    ASSERT_TRUE(process.Create(QStringLiteral("\"%1\"").arg(Game)));
    const platform::ProcessId id = process.PID();
    system.processes.at(id).closesOnRequest = false;
    system.addWindow(QStringLiteral("Console"), id);
    const platform::ProcessId other = system.addServer(Game);
    system.addWindow(QStringLiteral("Error - GhostRecon.exe"), other);
    system.addWindow(QStringLiteral("ghostrecon.exe"), other);

    EXPECT_TRUE(process.StopProcess());

    EXPECT_EQ(system.waits, (std::vector<int>{0, 5000}));
    EXPECT_EQ(system.terminations, 1);
    EXPECT_TRUE(system.processes.at(id).ended);
    EXPECT_FALSE(system.processes.at(other).ended);
    for (const FakeSystem::Window &window : system.windows) {
        EXPECT_EQ(window.closeRequests,
                  window.caption == QStringLiteral("Error - GhostRecon.exe") ? 1 : 0)
            << window.caption.toStdString();
    }
    EXPECT_EQ(process.PID(), 0);
    EXPECT_EQ(process.Path(), QString());
}

TEST_F(clsProcessTest, OnlyTheFirstOfSeveralWindowsIsAskedAndAWillingProcessIsNotTerminated)
{
    clsProcess process;
    ASSERT_TRUE(process.Create(QStringLiteral("\"%1\"").arg(Game)));
    const platform::ProcessId id = process.PID();
    system.addWindow(QStringLiteral("Console"), id);
    // Looked at before the process ends and its windows are gone with it.
    system.processes.at(id).closesOnRequest = false;
    system.processes.at(id).terminates = false;
    EXPECT_FALSE(process.StopProcess());
    EXPECT_EQ(system.windows.at(0).closeRequests, 1);
    EXPECT_EQ(system.windows.at(1).closeRequests, 0);
    EXPECT_EQ(process.PID(), 0) << "the object is empty even when stopping failed";

    system.processes.at(id).closesOnRequest = true;
    clsProcess willing;
    ASSERT_TRUE(willing.GetFromHwnd(system.windows.front().handle));
    EXPECT_TRUE(willing.StopProcess());
    EXPECT_EQ(system.terminations, 1);
    EXPECT_FALSE(willing.StopProcess()) << "an empty object has nothing to stop";
}

TEST_F(clsProcessTest, AnIdThatAnotherProcessTookOverIsLeftAlone)
{
    clsProcess process;
    ASSERT_TRUE(process.Create(QStringLiteral("\"%1\"").arg(Game)));
    system.end(process.PID());
    system.addWindow(QStringLiteral("Somebody else's"), process.PID());
    EXPECT_TRUE(process.StopProcess());
    EXPECT_EQ(system.windows.front().closeRequests, 0);
}

TEST_F(clsProcessTest, WindowsAreFoundByPartOfTheirCaptionInStackingOrder)
{
    const auto exact = system.addWindow(QStringLiteral("Ghost Recon"), 1);
    system.addWindow(QStringLiteral("ghost recon"), 1);
    const auto longer = system.addWindow(QStringLiteral("The Ghost Recon Console"), 1);
    system.addWindow(QString(600, QLatin1Char('x')) + QStringLiteral("Ghost Recon"), 1);
    EXPECT_EQ(fnFindWindows(QStringLiteral("Ghost Recon")),
              (std::vector<platform::WindowHandle>{longer, exact}));

    system.vanishing = true;
    EXPECT_TRUE(fnFindWindows(QStringLiteral("Ghost Recon")).empty());
    EXPECT_EQ(recordCount(), 0);
    system.listingFails = true;
    EXPECT_TRUE(fnFindWindows(QStringLiteral("Ghost Recon")).empty());
    EXPECT_EQ(lastRecord().module, QStringLiteral("WINAPI"));
    EXPECT_EQ(lastRecord().routine, QStringLiteral("fnFindWindows"));
}
