#include "platform/linux/LinuxAutostart.h"

#include "platform/SystemServices.h"
#include "support/FakeMachine.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(LinuxAutostart, IsADesktopEntry)
{
    const QTemporaryDir directory;
    const QString folder = directory.filePath(u"autostart"_s);
    FailingFiles files;
    platform::LinuxAutostart autostart(files, folder);
    EXPECT_EQ(autostart.query(), 2U);
    EXPECT_EQ(platform::systemMessage(2), u"No such file or directory"_s);
    EXPECT_EQ(autostart.remove(), 2U);
    EXPECT_EQ(autostart.write(u"/games/Ghost \"R\" $x 50%\\ü/ZebekSuite.exe"_s), 0U);
    EXPECT_EQ(autostart.query(), 0U);
    EXPECT_EQ(QString::fromUtf8(platform::readFile(folder + u"/ZEBEK.EXE.desktop"_s)),
              u"[Desktop Entry]\nType=Application\nName=Zebek Suite\n"
              "Exec=\"/games/Ghost \\\\\"R\\\\\" \\\\$x 50%%\\\\\\\\ü/"
              "ZebekSuite.exe\"\nTerminal=false\n"_s);
    files.failAt = FailingFiles::Always;
    EXPECT_EQ(autostart.write(u"/other"_s), 112U);
    EXPECT_EQ(autostart.remove(), 112U);
    files.failAt = 0;
    EXPECT_EQ(platform::LinuxAutostart(files, folder + u"/ZEBEK.EXE.desktop"_s).query(), 3U);
    EXPECT_EQ(autostart.remove(), 0U);
    EXPECT_EQ(autostart.query(), 2U);
}
