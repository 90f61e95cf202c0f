#include "platform/windows/WindowsAutostart.h"
#include "platform/windows/WindowsProcesses.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>

#include <algorithm>
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

TEST(WindowsProcesses, StartsFindsAndEndsThem)
{
    platform::WindowsProcesses processes;
    EXPECT_GE(processes.systemVersion(), 0);
    const auto self = static_cast<platform::ProcessId>(QCoreApplication::applicationPid());
    const platform::ProcessHandle own = processes.open(self);
    const QString program = QDir::toNativeSeparators(QCoreApplication::applicationFilePath());
    EXPECT_EQ(processes.executablePath(own), program);
    processes.close(own);
    const auto all = processes.snapshot().value_or(std::vector<platform::ProcessEntry>());
    EXPECT_TRUE(std::any_of(all.begin(), all.end(), [&](const platform::ProcessEntry &entry) {
        return entry.id == self && program.endsWith(entry.executable, Qt::CaseInsensitive);
    }));

    const QString command = qEnvironmentVariable("COMSPEC");
    const auto run = [&](const QString &arguments) {
        return processes.open(processes.start(u"\"%1\" %2"_s.arg(command, arguments)));
    };
    const platform::ProcessHandle ending = run(u"/c exit 3"_s);
    EXPECT_TRUE(processes.wait(ending, 20000));
    EXPECT_EQ(processes.exitCode(ending), 3U);
    EXPECT_FALSE(processes.executablePath(ending));
    processes.close(ending);
    const platform::ProcessHandle waiting = run(u"/c for /l %x in (1,0,2) do @rem"_s);
    EXPECT_FALSE(processes.wait(waiting, 200));
    EXPECT_EQ(processes.exitCode(waiting), platform::StillActiveCode);
    EXPECT_TRUE(processes.terminate(waiting));
    EXPECT_TRUE(processes.wait(waiting, 20000));
    EXPECT_EQ(processes.exitCode(waiting), 0U);
    processes.close(waiting);
    EXPECT_ANY_THROW(processes.start(uR"("C:\nowhere\GhostRecon.exe" -autoserve)"_s));
    EXPECT_EQ(processes.open(0), platform::NoProcess);
    EXPECT_EQ(processes.exitCode(platform::NoProcess), std::nullopt);
}
