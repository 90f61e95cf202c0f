#include "platform/windows/WindowsAutostart.h"

#include <QSettings>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(WindowsAutostart, IsAValueOfTheMachinesRunKey)
{
    const QString key = uR"(HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Run)"_s;
    QSettings run(key, QSettings::NativeFormat);
    const QVariant before = run.value(u"ZEBEK.EXE"_s);
    platform::WindowsAutostart autostart;
    const QString program = uR"(C:\Games\Ghost Recon ü\ZebekSuite.exe)"_s;
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(autostart.write(program), 0U);
        EXPECT_EQ(autostart.query(), 0U);
        EXPECT_EQ(QSettings(key, QSettings::NativeFormat).value(u"ZEBEK.EXE"_s), program);
    }
    EXPECT_EQ(autostart.remove(), 0U);
    EXPECT_EQ(autostart.query(), 2U);
    EXPECT_EQ(autostart.remove(), 2U);
    if (before.isValid()) {
        run.setValue(u"ZEBEK.EXE"_s, before);
    }
}
