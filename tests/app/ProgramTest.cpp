#include "support/ToolTest.h"

using ProgramTest = ToolTest;

TEST_F(ProgramTest, TellsTheOperatorWhenTheGameIsNotThereAndLeavesNoTrace)
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

TEST_F(ProgramTest, AFailingStepIsRepeatedOnRetryAndEndsTheStartOnCancel)
{
    write(u"Replays"_s, "a file where the folder belongs");
    fake.boxes.answers = {platform::RetryButton, platform::CancelButton};
    root->Start();
    ASSERT_EQ(fake.boxes.boxes.size(), 2);
    EXPECT_EQ(fake.boxes.alone, platform::RetriesAlone);
    EXPECT_TRUE(fake.boxes.boxes.front().startsWith(
        u"Do'h!!|21|An error has occured in Start of Zebek (Root Object):\r\n\r\n    75 : The "
        "folder \"%1\" cannot be created: File exists"_s.arg(rootDirectory() + u"Replays"_s)));
    EXPECT_EQ(root->Errors(), nullptr);
    EXPECT_EQ(root->GlobalForm(), nullptr);

    newTool();
    fake.boxes.answers = {platform::RetryButton};
    fake.boxes.whileOpen = [this] { QFile::remove(path(u"Replays"_s)); };
    root->Start();
    EXPECT_EQ(root->GlobalForm()->tmrHeartbeat.Interval(), 500);
}

TEST_F(ProgramTest, NeitherAServerThatCannotBeStartedNorABadSettingHoldsItUp)
{
    fake.system.startFails = true;
    startWith("<RemoteAccessPort>99999</RemoteAccessPort>");
    EXPECT_EQ(root->GlobalForm()->tmrHeartbeat.Interval(), 500);
    EXPECT_TRUE(fake.boxes.boxes.empty());
    QApplication::processEvents();
    EXPECT_EQ(fake.boxes.boxes.size(), 1);
    fake.clock.advance(6000);
    EXPECT_EQ(recordCount(), 1);
    fake.system.startFails = false;
    fake.clock.advance(3000);
    EXPECT_FALSE(server().Connected()) << "a first start that fails is not tried again";
}

TEST_F(ProgramTest, QuitSavesTheOptionsOnceAndLeavesTheServerAlone)
{
    root->Start();
    const FakeSystem::Id id = server().Process()->PID();
    root->Options()->ReplayCount.Let(7);
    // The box about the full disk runs an event loop, in which the web site changes a setting and
    // the operator closes the window.
    fake.files.failAt = 1;
    fake.boxes.answers = {platform::RetryButton};
    fake.boxes.whileOpen = [this] {
        root->Options()->ReplayCount.Ex(8);
        root->MainWindow()->close();
    };
    QTest::mouseClick(child<QPushButton>("cmdQuit"), Qt::LeftButton);
    EXPECT_EQ(fake.boxes.boxes.size(), 1);
    EXPECT_EQ(fake.processEnd.ends, 1);
    EXPECT_TRUE(read(OptionsFile).contains("<ReplayCount>8</ReplayCount>"));
    EXPECT_FALSE(fake.system.processes.at(id).ended);
    EXPECT_TRUE(fake.system.closeRequests.empty());
}
