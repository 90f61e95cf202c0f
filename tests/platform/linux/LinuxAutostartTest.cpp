#include "platform/linux/LinuxAutostart.h"

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
    const QString own = directory.filePath(u"own/autostart"_s);
    platform::LinuxAutostart autostart(files, folder, own);
    EXPECT_EQ(autostart.query(), 2U);
    EXPECT_EQ(autostart.write(u"/games/Ghost \"R\" $x 50%\\ü/ZebekSuite.exe"_s), 0U);
    EXPECT_EQ(autostart.query(), 0U);
    EXPECT_EQ(QString::fromUtf8(platform::readFile(folder + u"/ZEBEK.EXE.desktop"_s)),
              u"[Desktop Entry]\nType=Application\nName=Zebek Suite\n"
              "Exec=\"/games/Ghost \\\\\"R\\\\\" \\\\$x 50%%\\\\\\\\ü/"
              "ZebekSuite.exe\"\nTerminal=false\n"_s);

    // Nobody may make a folder in that of the kernel.
    platform::LinuxAutostart withoutRight(files, u"/sys/zebek/autostart"_s, own);
    EXPECT_EQ(withoutRight.query(), 2U);
    EXPECT_EQ(withoutRight.write(u"/own"_s), 0U);
    EXPECT_EQ(withoutRight.query(), 0U);
    EXPECT_EQ(autostart.write(u"/for all"_s), 0U); // and none beside it
    EXPECT_EQ(withoutRight.query() + withoutRight.remove(), 4U);
    EXPECT_EQ(withoutRight.write(u"/own"_s) + autostart.remove(), 0U); // both
    EXPECT_EQ(autostart.query() + withoutRight.query(), 4U);
}
