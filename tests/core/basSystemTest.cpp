#include "core/basSystem.h"

#include "platform/SystemMessage.h"
#include "platform/linux/LinuxAutostart.h"
#include "support/ToolTest.h"

using basSystemTest = ToolTest;

TEST_F(basSystemTest, SwitchesTheStartAtLogOnAndReportsFailuresOnce)
{
    root->Start();
    const clsOptions &options = *root->Options();
    EXPECT_FALSE(options.AutoRunOnStartup());
    EXPECT_TRUE(SetRunOnStartup(true));
    EXPECT_TRUE(SetRunOnStartup(true));
    EXPECT_EQ(fake.autostart.entry, rootDirectory() + u"ZebekSuite.exe"_s);
    fake.autostart.entry = u"anything else, put there by hand"_s;
    EXPECT_TRUE(options.AutoRunOnStartup());
    options.AutoRunOnStartup.Let(false);
    EXPECT_FALSE(fake.autostart.entry);
    EXPECT_TRUE(fake.boxes.boxes.empty());

    EXPECT_FALSE(SetRunOnStartup(false));
    EXPECT_EQ(recordCount(), 1);
    EXPECT_EQ(lastRecord(), u"System Module|SetRunOnStartup|None|2"_s);
    EXPECT_TRUE(read(ErrorLog).contains(platform::systemMessage(2).toUtf8()));
    EXPECT_EQ(fake.boxes.boxes,
              QStringList{u"Do'h!!|16|An error has occured in SetRunOnStartup of System Module (-):"
                          "\r\n\r\n    2 : No such file or directory"_s});

    // Without the right to change it, it can still be looked at.
    fake.autostart.changeFails = 5;
    EXPECT_FALSE(GetRunOnStartup());
    EXPECT_EQ(recordCount(), 1);
    EXPECT_FALSE(SetRunOnStartup(true));
    EXPECT_EQ(lastRecord(), u"System Module|SetRunOnStartup|None|5"_s);
    fake.autostart.entry = u"there"_s;
    EXPECT_TRUE(SetRunOnStartup(false));
    fake.autostart.queryFails = 5;
    EXPECT_FALSE(GetRunOnStartup());
    EXPECT_EQ(lastRecord(), u"System Module|GetRunOnStartup|None|5"_s);
    EXPECT_EQ(recordCount(), 4);

    root->Quit();
    EXPECT_TRUE(read(OptionsFile).contains("<AutoRunOnStartup>True<"))
        << "the file keeps the value that it was loaded with";
}

TEST_F(basSystemTest, OnLinuxItIsADesktopEntry)
{
    platform::LinuxAutostart autostart(fake.files, path(u"autostart"_s));
    EXPECT_EQ(autostart.query(), 2U);
    EXPECT_EQ(autostart.remove(), 2U);
    EXPECT_EQ(autostart.write(u"/games/Ghost \"R\" $x 50%\\ü/ZebekSuite.exe"_s), 0U);
    EXPECT_EQ(autostart.query(), 0U);
    EXPECT_EQ(QString::fromUtf8(read(u"autostart/ZEBEK.EXE.desktop"_s)),
              u"[Desktop Entry]\nType=Application\nName=Zebek Suite\n"
              "Exec=\"/games/Ghost \\\\\"R\\\\\" \\\\$x 50%%\\\\\\\\ü/"
              "ZebekSuite.exe\"\nTerminal=false\n"_s);
    fake.files.failAt = FailingFiles::Always;
    EXPECT_EQ(autostart.write(u"/other"_s), 112U);
    EXPECT_EQ(autostart.remove(), 112U);
    fake.files.failAt = 0;
    EXPECT_EQ(autostart.remove(), 0U);
    EXPECT_EQ(autostart.query(), 2U);
    EXPECT_EQ(platform::LinuxAutostart(fake.files, path(u"GhostRecon.exe"_s)).query(), 3U);
}
