#include "support/ToolTest.h"

#include <QFileInfo>

using clsZebekTest = ToolTest;

TEST_F(clsZebekTest, TellsTheOperatorWhenTheGameIsNotThereAndLeavesNoTrace)
{
    QFile::remove(path(QStringLiteral("GhostRecon.exe")));
    QDir(directory.path()).mkdir(QStringLiteral("GhostRecon.exe")); // a folder is no program

    root->Start();

    ASSERT_EQ(fake.boxes.boxes.size(), 1U);
    const FakeMessageBoxes::Box &box = fake.boxes.boxes.front();
    EXPECT_EQ(box.text, QStringLiteral("Please place the 'ZebekSuite.exe' in your Ghost Recon "
                                       "Directory and run it from there"));
    EXPECT_EQ(box.title, QStringLiteral("Ghost Recon Not Found"));
    EXPECT_EQ(box.style, 16);
    EXPECT_EQ(fake.processEnd.ends, 1);
    EXPECT_EQ(QDir(directory.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
}

TEST_F(clsZebekTest, StartsTheServerOfItsDirectoryAndTheHeartbeat)
{
    root->Start();

    EXPECT_TRUE(fake.boxes.boxes.empty());
    EXPECT_EQ(root->RootDirectory(), rootDirectory());
    EXPECT_EQ(root->StatsCacheFileName(), rootDirectory() + QStringLiteral("ZEBEKSCache.dat"));
    EXPECT_TRUE(QFileInfo(path(QStringLiteral("Replays"))).isDir());
    EXPECT_TRUE(root->MainWindow()->isVisible());
    EXPECT_EQ(server().EXEPath(), rootDirectory() + QStringLiteral("GhostRecon.exe"));
    EXPECT_EQ(fake.system.commandLines,
              QStringList{QStringLiteral("\"%1GhostRecon.exe\" -autoserve ").arg(rootDirectory())});
    EXPECT_EQ(root->GlobalForm()->tmrHeartbeat.Interval(), 500);
    for (const auto &socket : root->GlobalForm()->wsckConnections) {
        EXPECT_NE(socket, nullptr);
    }
}

TEST_F(clsZebekTest, AutoStartTakesOverARunningServerOnlyWhenItMayLookForOne)
{
    fake.system.addServer(rootDirectory() + QStringLiteral("GhostRecon.exe"));
    root->Start();
    EXPECT_TRUE(server().ProcessLocated());
    EXPECT_TRUE(fake.system.commandLines.isEmpty());

    writeOptions("<FindGRServer>False</FindGRServer>");
    newTool();
    root->Start();
    EXPECT_FALSE(server().ProcessLocated());
    EXPECT_EQ(fake.system.commandLines.size(), 1);

    writeOptions("<AutoStartGRServer>0</AutoStartGRServer>");
    newTool();
    root->Start();
    EXPECT_FALSE(server().Connected());
}

TEST_F(clsZebekTest, AFailingStepIsRepeatedOnRetryAndEndsTheStartOnCancel)
{
    write(QStringLiteral("Replays"), "a file where the folder belongs");
    fake.boxes.answers = {platform::RetryButton, platform::CancelButton};

    root->Start();

    ASSERT_EQ(fake.boxes.boxes.size(), 2U);
    const FakeMessageBoxes::Box &box = fake.boxes.boxes.front();
    EXPECT_EQ(box.title, QStringLiteral("Do'h!!"));
    EXPECT_EQ(box.style, 5 + 16);
    EXPECT_TRUE(box.text.startsWith(
        QStringLiteral("An error has occured in Start of Zebek (Root Object):\r\n\r\n    75 : ")))
        << box.text.toStdString();
    EXPECT_EQ(root->Errors(), nullptr);
    EXPECT_EQ(root->GlobalForm(), nullptr);

    newTool();
    fake.boxes.answers = {platform::RetryButton};
    fake.boxes.whileOpen = [this] { QFile::remove(path(QStringLiteral("Replays"))); };
    root->Start();
    EXPECT_EQ(root->GlobalForm()->tmrHeartbeat.Interval(), 500);
}

TEST_F(clsZebekTest, QuitSavesTheOptionsOnceAndLeavesTheServerAlone)
{
    root->Start();
    const platform::ProcessId id = server().Process()->PID();
    root->Options()->ReplayCount.Let(7);
    // The box about the full disk runs an event loop, in which the operator closes the window.
    fake.files.failAt = 1;
    fake.boxes.answers = {platform::RetryButton};
    fake.boxes.whileOpen = [this] { root->Quit(); };

    root->Quit();

    EXPECT_EQ(fake.boxes.boxes.size(), 1U);
    EXPECT_EQ(fake.processEnd.ends, 1);
    EXPECT_TRUE(
        read(QStringLiteral("ZebekSuiteOptions.xml")).contains("<ReplayCount>7</ReplayCount>"));
    EXPECT_FALSE(fake.system.processes.at(id).ended);
    EXPECT_EQ(fake.system.closeRequests(id), 0);
}

namespace {

class FormWithFailingSocket final : public frmGlobal
{
public:
    int attempts = 0;

protected:
    void LoadConnection(std::size_t index) override
    {
        if (index == 42) {
            ++attempts;
            throw platform::Failure(24, QStringLiteral("Too many open files"));
        }
        frmGlobal::LoadConnection(index);
    }
};

} // namespace

TEST_F(clsZebekTest, ASocketThatCannotBeLoadedIsTriedAgainAndThenTheRestIsMissing)
{
    FormWithFailingSocket form;
    fake.boxes.answers = {platform::RetryButton, platform::CancelButton};

    form.Form_Load();

    EXPECT_EQ(form.attempts, 2);
    EXPECT_TRUE(fake.boxes.boxes.at(0).text.startsWith(
        QStringLiteral("An error has occured in Load of Global Controls (None):")));
    EXPECT_NE(form.wsckConnections.at(41), nullptr);
    EXPECT_EQ(form.wsckConnections.at(42), nullptr);
    EXPECT_EQ(form.wsckConnections.at(43), nullptr);
}
