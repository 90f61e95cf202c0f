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
    EXPECT_EQ(fake.autostart.entry, rootDirectory() + QStringLiteral("ZebekSuite.exe"));
    fake.autostart.entry = QStringLiteral("anything else, put there by hand");
    EXPECT_TRUE(options.AutoRunOnStartup());
    options.AutoRunOnStartup.Let(false);
    EXPECT_FALSE(fake.autostart.entry);
    EXPECT_TRUE(fake.boxes.boxes.empty());

    EXPECT_FALSE(SetRunOnStartup(false));
    EXPECT_EQ(recordCount(), 1);
    EXPECT_EQ(lastRecord().module, QStringLiteral("System Module"));
    EXPECT_EQ(lastRecord().routine, QStringLiteral("SetRunOnStartup"));
    EXPECT_EQ(lastRecord().id, QStringLiteral("None"));
    EXPECT_EQ(lastRecord().number, 2);
    EXPECT_EQ(lastRecord().description, platform::systemMessage(2));
    ASSERT_EQ(fake.boxes.boxes.size(), 1U);
    EXPECT_EQ(fake.boxes.boxes[0].style, 16);
    EXPECT_EQ(fake.boxes.boxes[0].text,
              QStringLiteral("An error has occured in SetRunOnStartup of System Module (-):"
                             "\r\n\r\n    2 : No such file or directory"));

    // Without the right to change it, it can still be looked at.
    fake.autostart.changeFails = 5;
    EXPECT_FALSE(GetRunOnStartup());
    EXPECT_EQ(recordCount(), 1);
    EXPECT_FALSE(SetRunOnStartup(true));
    EXPECT_EQ(lastRecord().number, 5);
    fake.autostart.entry = QStringLiteral("there");
    EXPECT_TRUE(SetRunOnStartup(false));
    fake.autostart.queryFails = 5;
    EXPECT_FALSE(GetRunOnStartup());
    EXPECT_EQ(lastRecord().routine, QStringLiteral("GetRunOnStartup"));
    EXPECT_EQ(recordCount(), 4);

    root->Quit();
    EXPECT_TRUE(read(QStringLiteral("ZebekSuiteOptions.xml"))
                    .contains("<AutoRunOnStartup>True</AutoRunOnStartup>"))
        << "the file keeps the value that it was loaded with";
}

TEST_F(basSystemTest, OnLinuxItIsADesktopEntry)
{
    platform::LinuxAutostart autostart(fake.files, path(QStringLiteral("autostart")));
    EXPECT_EQ(autostart.query(), 2U);
    EXPECT_EQ(autostart.remove(), 2U);
    EXPECT_EQ(autostart.write(QStringLiteral("/games/Ghost \"R\" $x 50%\\ü/ZebekSuite.exe")), 0U);
    EXPECT_EQ(autostart.query(), 0U);
    EXPECT_EQ(QString::fromUtf8(read(QStringLiteral("autostart/ZEBEK.EXE.desktop"))),
              QStringLiteral("[Desktop Entry]\nType=Application\nName=Zebek Suite\n"
                             "Exec=\"/games/Ghost \\\\\"R\\\\\" \\\\$x 50%%\\\\\\\\ü/"
                             "ZebekSuite.exe\"\nTerminal=false\n"));
    fake.files.failAt = FailingFiles::Always;
    EXPECT_EQ(autostart.write(QStringLiteral("/other")), 112U);
    EXPECT_EQ(autostart.remove(), 112U);
    fake.files.failAt = 0;
    EXPECT_EQ(autostart.remove(), 0U);
    EXPECT_EQ(autostart.query(), 2U);
    EXPECT_EQ(platform::LinuxAutostart(fake.files, path(QStringLiteral("GhostRecon.exe"))).query(),
              3U);
}
