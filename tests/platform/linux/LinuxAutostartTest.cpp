#include "platform/linux/LinuxAutostart.h"

#include "platform/SystemServices.h"
#include "support/ToolTest.h"

using LinuxAutostartTest = ToolTest;

TEST_F(LinuxAutostartTest, ItIsADesktopEntry)
{
    platform::LinuxAutostart autostart(fake.files, path(u"autostart"_s));
    EXPECT_EQ(autostart.query(), 2U);
    EXPECT_EQ(platform::systemMessage(2), u"No such file or directory"_s);
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
