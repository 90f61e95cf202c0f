#include "support/ToolTest.h"

using clsZebekTest = ToolTest;

TEST_F(clsZebekTest, TellsTheOperatorWhenTheGameIsNotThereAndLeavesNoTrace)
{
    QFile::remove(path(u"GhostRecon.exe"_s));
    QDir(directory.path()).mkdir(u"GhostRecon.exe"_s); // a folder is no program
    root->Start();
    EXPECT_EQ(fake.boxes.boxes,
              QStringList{u"Ghost Recon Not Found|16|Please place the 'ZebekSuite.exe' in your "
                          "Ghost Recon Directory and run it from there"_s});
    EXPECT_EQ(fake.processEnd.ends, 1);
    EXPECT_EQ(QDir(directory.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              (QStringList{u"GhostRecon.exe"_s, u"Mods"_s, u"modsset.txt"_s, u"options.xml"_s}));
}

TEST_F(clsZebekTest, StartsTheServerOfItsDirectoryAndTheHeartbeat)
{
    root->Start();
    EXPECT_TRUE(fake.boxes.boxes.empty());
    EXPECT_EQ(root->RootDirectory(), rootDirectory());
    EXPECT_EQ(root->StatsCacheFileName(), rootDirectory() + u"ZEBEKSCache.dat"_s);
    EXPECT_TRUE(QFileInfo(path(u"Replays"_s)).isDir());
    EXPECT_TRUE(root->MainWindow()->isVisible());
    EXPECT_EQ(server().EXEPath(), rootDirectory() + u"GhostRecon.exe"_s);
    EXPECT_EQ(fake.system.commandLines,
              QStringList{u"\"%1GhostRecon.exe\" -autoserve "_s.arg(rootDirectory())});
    EXPECT_EQ(root->GlobalForm()->tmrHeartbeat.Interval(), 500);
    EXPECT_NE(root->GlobalForm()->webServer.wsckConnections.back(), nullptr);

    startWith({}); // takes over a running server, if it may look for one
    EXPECT_TRUE(server().ProcessLocated());
    startWith("<FindGRServer>False</FindGRServer>"); // which is no reason for a second one
    EXPECT_TRUE(server().ProcessLocated());
    EXPECT_EQ(fake.system.commandLines.size(), 1);
    startWith("<AutoStartGRServer>0</AutoStartGRServer>");
    EXPECT_FALSE(server().Connected());
}

TEST_F(clsZebekTest, AFailingStepIsRepeatedOnRetryAndEndsTheStartOnCancel)
{
    write(u"Replays"_s, "a file where the folder belongs");
    fake.boxes.answers = {platform::RetryButton, platform::CancelButton};
    root->Start();
    ASSERT_EQ(fake.boxes.boxes.size(), 2);
    EXPECT_TRUE(fake.boxes.boxes.front().startsWith(
        u"Do'h!!|21|An error has occured in Start of Zebek (Root Object):\r\n\r\n    75 : "_s));
    EXPECT_EQ(root->Errors(), nullptr);
    EXPECT_EQ(root->GlobalForm(), nullptr);

    newTool();
    fake.boxes.answers = {platform::RetryButton};
    fake.boxes.whileOpen = [this] { QFile::remove(path(u"Replays"_s)); };
    root->Start();
    EXPECT_EQ(root->GlobalForm()->tmrHeartbeat.Interval(), 500);
}

TEST_F(clsZebekTest, QuitSavesTheOptionsOnceAndLeavesTheServerAlone)
{
    root->Start();
    const FakeSystem::Id id = server().Process()->PID();
    root->Options()->ReplayCount.Let(7);
    // The box about the full disk runs an event loop, in which the operator closes the window.
    fake.files.failAt = 1;
    fake.boxes.answers = {platform::RetryButton};
    fake.boxes.whileOpen = [this] { root->MainWindow()->close(); };
    QTest::mouseClick(child<QPushButton>("cmdQuit"), Qt::LeftButton);
    EXPECT_EQ(fake.boxes.boxes.size(), 1);
    EXPECT_EQ(fake.processEnd.ends, 1);
    EXPECT_TRUE(read(OptionsFile).contains("<ReplayCount>7</ReplayCount>"));
    EXPECT_FALSE(fake.system.processes.at(id).ended);
    EXPECT_TRUE(fake.system.closeRequests.empty());
}

TEST_F(clsZebekTest, ASignalSavesTheOptionsAndEndsItWithoutAsking)
{
    startIdle();
    root->Options()->ReplayCount.Let(7);
    root->QuitUnattended();
    EXPECT_TRUE(read(OptionsFile).contains("<ReplayCount>7</ReplayCount>"));
    fake.files.failAt = FailingFiles::Always;
    // While the operator is asked about the full disk, too.
    fake.boxes.whileOpen = [this] { root->QuitUnattended(); };
    root->Quit();
    EXPECT_EQ(fake.boxes.boxes.size(), 1);
    EXPECT_EQ(fake.processEnd.ends, 3);
}
